/* SPDX-License-Identifier: MIT */
#include "board/trace/STraceOperation.h"

namespace
{

const int MOST_BYTES = 64 << 20;

const QLatin1String CUT_OFF("...");

/// "41" is a byte, "00*512" a run of equal ones.
bool appendBytes(const QString& rcWord, QByteArray& rcBytes)
{
    bool bByte = false;
    bool bCount = true;
    const int iByte = rcWord.section(QLatin1Char('*'), 0, 0).toInt(&bByte, 16);
    const int iCount =
        rcWord.contains(QLatin1Char('*')) ? rcWord.section(QLatin1Char('*'), 1).toInt(&bCount) : 1;
    if (!bByte || !bCount || iByte < 0 || iByte > 0xff || iCount < 1 || iCount > MOST_BYTES - rcBytes.size())
        return false;
    rcBytes.append(iCount, static_cast<char>(iByte));
    return true;
}

bool takeDevice(const QString& rcName, STraceOperation& rsOperation)
{
    const QStringList cNames = {QStringLiteral("fpga"), QStringLiteral("lime"), QStringLiteral("i2c")};
    rsOperation.eDevice = static_cast<STraceOperation::EDevice>(cNames.indexOf(rcName));
    return cNames.contains(rcName);
}

/// A sign stands in front of each part behind the arguments: the word behind it belongs to the part.
bool takeWord(QChar cSign, const QString& rcWord, STraceOperation& rsOperation)
{
    switch (cSign.toLatin1()) {
    case '@':
        rsOperation.u32Place = STraceOperation::number(rcWord);
        return rsOperation.u32Place.has_value();
    case '=':
        rsOperation.cResult = rcWord;
        return true;
    case ':':
        rsOperation.bCutOff = rcWord == CUT_OFF;
        return rsOperation.bCutOff || appendBytes(rcWord, rsOperation.cBytes);
    case '!':
        rsOperation.cError = rcWord;
        return true;
    default:
        rsOperation.cArguments << rcWord;
        return true;
    }
}

} // namespace

std::optional<quint32> STraceOperation::number(const QString& rcText)
{
    bool bNumber = false;
    const quint32 u32Number = rcText.toUInt(&bNumber, 0);
    return bNumber ? std::optional<quint32>(u32Number) : std::nullopt;
}

int STraceOperation::registerBytes() const
{
    if (eDevice != FPGA)
        return 0;
    for (const char* pszAccess : {"read", "write"})
        if (cName.startsWith(QLatin1String(pszAccess)))
            return cName.midRef(static_cast<int>(qstrlen(pszAccess))).toInt() / 8;
    return 0;
}

std::optional<STraceOperation> STraceOperation::parse(const QString& rcLine)
{
    const QStringList cWords = rcLine.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    STraceOperation sOperation;
    if (cWords.size() < 2 || !takeDevice(cWords[0], sOperation))
        return std::nullopt;
    sOperation.cName = cWords[1];
    QChar cSign;
    for (const QString& rcWord : cWords.mid(2)) {
        if (rcWord.size() == 1 && QStringLiteral("@=:!").contains(rcWord))
            cSign = rcWord[0];
        else if (!takeWord(cSign, rcWord, sOperation))
            return std::nullopt;
        else if (cSign != QLatin1Char(':'))
            cSign = QChar();
    }
    return sOperation;
}
