/* SPDX-License-Identifier: MIT */
/* Locales, and the glyph sets of their countries. */
#ifndef HALDEND_TESTS_LOCALES_H
#define HALDEND_TESTS_LOCALES_H

#include <QByteArray>

#include <algorithm>
#include <iterator>

struct SLocaleRow {
    const char* pszName;
    int iGlyphSet;
};

const SLocaleRow LOCALES[] = {
    {"de_DE",   1},
    {"en_US",   1},
    {"C",       1},
    {"",        1},
    {"no such", 1},
    {"ro_RO",   2},
    {"pl_PL",   2},
    {"sq_AL",   2},
    {"hr_HR",   2},
    {"hu_HU",   2},
    {"sl_SI",   2},
    {"sr_RS",   2},
    {"ru_RU",   3},
    {"be_BY",   3},
    {"bg_BG",   3},
    {"uk_UA",   3},
};

/// Of the others: 1.
inline int glyphSetOfLocale(const QByteArray& rcName)
{
    const SLocaleRow* psRow = std::find_if(std::begin(LOCALES), std::end(LOCALES),
                                           [&](const SLocaleRow& rs) { return rcName == rs.pszName; });
    return psRow != std::end(LOCALES) ? psRow->iGlyphSet : 1;
}

#endif
