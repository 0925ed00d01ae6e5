/* SPDX-License-Identifier: MIT */
#include "overlay/CIso8859_16Codec.h"

#include "fpga/font_tables.h"

namespace
{

// Below it, code and character are the same number.
const int FIRST_OWN_CODE = 160;

} // namespace

CIso8859_16Codec::CIso8859_16Codec()
{
    for (int iCode = FIRST_OWN_CODE; iCode < 256; ++iCode)
        m_cCodes.insert(font_unicode_tab_iso8859_16.characters[iCode], static_cast<char>(iCode));
}

void CIso8859_16Codec::provide()
{
    // A codec adds itself to Qt's list, which owns it.
    if (QTextCodec::codecForMib(MIB) == nullptr)
        new CIso8859_16Codec;
}

QByteArray CIso8859_16Codec::name() const
{
    return QByteArrayLiteral("ISO-8859-16");
}

int CIso8859_16Codec::mibEnum() const
{
    return MIB;
}

QString CIso8859_16Codec::convertToUnicode(const char* pszBytes, int iLength,
                                           ConverterState* /*psState*/) const
{
    QString cText = QString::fromLatin1(pszBytes, iLength);
    for (QChar& rcCharacter : cText)
        if (rcCharacter.unicode() >= FIRST_OWN_CODE)
            rcCharacter = font_unicode_tab_iso8859_16.characters[rcCharacter.unicode()];
    return cText;
}

QByteArray CIso8859_16Codec::convertFromUnicode(const QChar* pcText, int iLength,
                                                ConverterState* psState) const
{
    const bool bNull = psState != nullptr && (psState->flags & ConvertInvalidToNull) != 0;
    int iInvalid = 0;
    QByteArray cBytes(iLength, bNull ? '\0' : '?');
    for (int i = 0; i < iLength; ++i) {
        const ushort u16Character = pcText[i].unicode();
        const auto it = m_cCodes.constFind(u16Character);
        if (u16Character < FIRST_OWN_CODE)
            cBytes[i] = static_cast<char>(u16Character);
        else if (it != m_cCodes.constEnd())
            cBytes[i] = *it;
        else
            ++iInvalid;
    }
    if (psState != nullptr)
        psState->invalidChars += iInvalid;
    return cBytes;
}
