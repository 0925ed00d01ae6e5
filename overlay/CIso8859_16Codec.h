/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_CISO8859_16CODEC_H
#define HALDEND_OVERLAY_CISO8859_16CODEC_H

#include <QHash>
#include <QTextCodec>

/// ISO 8859-16, which Qt lacks. Codes 160-255 are those of glyph set 2; the codes below are those of ASCII
/// and of the control characters, as in all parts of ISO 8859.
///
/// Every code is a character. A UTF-16 code unit without a code becomes a question mark, or a zero if the
/// caller's state asks for that. The result has as many bytes as the text has units, like that of Qt's own
/// single-byte codecs.
class CIso8859_16Codec : public QTextCodec
{
public:
    /// The number of ISO 8859-16 in the IANA's list of character sets.
    static const int MIB = 112;

    /// Adds the codec to Qt's list, which owns it until the process ends. Does nothing if Qt has one.
    static void provide();

    QByteArray name() const override;
    int mibEnum() const override;

protected:
    QString convertToUnicode(const char* pszBytes, int iLength, ConverterState* psState) const override;
    QByteArray convertFromUnicode(const QChar* pcText, int iLength, ConverterState* psState) const override;

private:
    CIso8859_16Codec();

    QHash<ushort, char> m_cCodes; ///< of the characters from code 160 on
};

#endif
