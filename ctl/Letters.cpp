/* SPDX-License-Identifier: MIT */
#include "ctl/Letters.h"

#include "fpga/font_tables.h"
#include "overlay/CIso8859_16Codec.h"

#include <QStringList>
#include <QTextCodec>

namespace
{

struct SGlyphSet {
    const char* pszName;
    const char* pszLocale; ///< one that loads it
    int iMib;              ///< of its encoding
    const font_unicode_tab& rsCharacters;
};

const SGlyphSet SETS[] = {
    {"western",       "de_DE", 111,                   font_unicode_tab_iso8859_15},
    {"south-eastern", "pl_PL", CIso8859_16Codec::MIB, font_unicode_tab_iso8859_16},
    {"Cyrillic",      "ru_RU", 8,                     font_unicode_tab_iso8859_5 },
};
const int SET_COUNT = 3;
const unsigned ALL_SETS = (1U << SET_COUNT) - 1;

/// The daemon encodes a letter with the set's encoding, and shows the glyph of that code.
bool hasLetter(const SGlyphSet& rsSet, QChar cLetter)
{
    QTextCodec::ConverterState sState(QTextCodec::ConvertInvalidToNull);
    const QByteArray cCode = QTextCodec::codecForMib(rsSet.iMib)->fromUnicode(&cLetter, 1, &sState);
    if (sState.invalidChars != 0 || cCode.size() != 1)
        return false;
    // Blanks have no glyph and are right all the same.
    return cLetter == QLatin1Char(' ') || cLetter == QChar::Nbsp ||
           rsSet.rsCharacters.characters[static_cast<unsigned char>(cCode[0])] != 0;
}

/// A bit for each set that has the letter.
unsigned setsWith(QChar cLetter)
{
    unsigned uSets = 0;
    for (int iSet = 0; iSet < SET_COUNT; ++iSet)
        if (hasLetter(SETS[iSet], cLetter))
            uSets |= 1U << iSet;
    return uSets;
}

QString nameSets(unsigned uSets)
{
    QStringList cNames;
    for (int iSet = 0; iSet < SET_COUNT; ++iSet)
        if ((uSets >> iSet & 1U) != 0)
            cNames << QStringLiteral("%1 (haldenctl overlay locale %2)")
                          .arg(QLatin1String(SETS[iSet].pszName), QLatin1String(SETS[iSet].pszLocale));
    return cNames.join(QStringLiteral(" or "));
}

QString warning(const QString& rcLetters, unsigned uSets)
{
    if (rcLetters.isEmpty())
        return {};
    if (uSets == 0)
        return QStringLiteral("no set of letters has all of \"%1\": some are shown as ?").arg(rcLetters);
    return QStringLiteral("\"%1\" needs these letters: %2; which are in use can't be asked for")
        .arg(rcLetters, nameSets(uSets));
}

} // namespace

SLetters checkLetters(const QString& rcText)
{
    CIso8859_16Codec::provide();
    SLetters sLetters;
    QString cSomewhere;
    unsigned uCommon = ALL_SETS;
    for (const QChar cLetter : rcText) {
        // Every set has these, and most texts are made of them.
        if (cLetter >= QLatin1Char(' ') && cLetter <= QLatin1Char('~'))
            continue;
        const unsigned uSets = setsWith(cLetter);
        if (uSets == 0 && !sLetters.cNowhere.contains(cLetter))
            sLetters.cNowhere += cLetter;
        if (uSets != 0 && uSets != ALL_SETS && !cSomewhere.contains(cLetter))
            cSomewhere += cLetter;
        if (uSets != 0)
            uCommon &= uSets;
    }
    sLetters.cWarning = warning(cSomewhere, uCommon);
    return sLetters;
}
