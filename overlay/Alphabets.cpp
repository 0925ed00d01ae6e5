/* SPDX-License-Identifier: MIT */
#include "overlay/Alphabets.h"

#include "overlay/CIso8859_16Codec.h"

const SAlphabet LATIN_9 = {1, 111};

namespace
{

const SAlphabet LATIN_10 = {2, CIso8859_16Codec::MIB};
const SAlphabet CYRILLIC = {3, 8};

struct SCountryRow {
    QLocale::Country eCountry;
    const SAlphabet& rsAlphabet;
};

// clang-format off
const SCountryRow COUNTRIES[] = {
    {QLocale::Belarus,           CYRILLIC},
    {QLocale::Bulgaria,          CYRILLIC},
    {QLocale::Kazakhstan,        CYRILLIC},
    {QLocale::Kyrgyzstan,        CYRILLIC},
    {QLocale::Mongolia,          CYRILLIC},
    {QLocale::RussianFederation, CYRILLIC},
    {QLocale::Tajikistan,        CYRILLIC},
    {QLocale::Ukraine,           CYRILLIC},

    {QLocale::Albania,           LATIN_10},
    {QLocale::Croatia,           LATIN_10},
    {QLocale::Hungary,           LATIN_10},
    {QLocale::Poland,            LATIN_10},
    {QLocale::Romania,           LATIN_10},
    {QLocale::Slovenia,          LATIN_10},
    {QLocale::Serbia,            LATIN_10},
};
// clang-format on

} // namespace

SAlphabet alphabetOf(QLocale::Country eCountry)
{
    for (const SCountryRow& rsRow : COUNTRIES)
        if (rsRow.eCountry == eCountry)
            return rsRow.rsAlphabet;
    return LATIN_9;
}
