/* SPDX-License-Identifier: MIT */
/* Which letters the overlay's three glyph sets have. */
#ifndef HALDEND_CTL_LETTERS_H
#define HALDEND_CTL_LETTERS_H

#include <QString>

/// The letters of a text that some glyph set lacks.
struct SLetters {
    QString cNowhere; ///< letters that no set has, each once
    QString cWarning; ///< for the user, if letters are missing in some sets; else empty
};

SLetters checkLetters(const QString& rcText);

#endif
