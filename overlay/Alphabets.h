/* What a country's language is written in, and how the overlay shows it. */
#ifndef HALDEND_OVERLAY_ALPHABETS_H
#define HALDEND_OVERLAY_ALPHABETS_H

#include <QLocale>

/// A glyph set and the encoding of its codes, which belong together.
struct SAlphabet {
    int iGlyphSet; ///< for load_font()
    int iMib;      ///< of the encoding, in the IANA's list of character sets
};

/// ISO 8859-15, which suits every country that isn't listed; the glyph set of a start.
extern const SAlphabet LATIN_9;

SAlphabet alphabetOf(QLocale::Country eCountry);

#endif
