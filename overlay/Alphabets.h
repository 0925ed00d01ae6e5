/* SPDX-License-Identifier: MIT */
/* The alphabets of countries, and how the overlay shows them. */
#ifndef HALDEND_OVERLAY_ALPHABETS_H
#define HALDEND_OVERLAY_ALPHABETS_H

#include <QLocale>

/// A glyph set and the encoding of its codes, which belong together.
struct SAlphabet {
    int iGlyphSet; ///< for load_font()
    int iMib;      ///< the encoding's number in the IANA's list of character sets
};

/// ISO 8859-15: the alphabet of every country that isn't listed, and of the FPGA's start.
extern const SAlphabet LATIN_9;

/// The country's alphabet, LATIN_9 if the country isn't listed.
SAlphabet alphabetOf(QLocale::Country eCountry);

#endif
