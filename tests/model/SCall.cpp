/* SPDX-License-Identifier: MIT */
#include "tests/model/SCall.h"

#include <QByteArrayList>

QByteArray describeText(const QByteArray& rcUtf8)
{
    QByteArray cText = "s \"";
    for (const char cByte : rcUtf8) {
        const auto u8Byte = static_cast<unsigned char>(cByte);
        const bool bPlain = u8Byte >= ' ' && u8Byte < 0x7f && cByte != '"' && cByte != '\\';
        cText += bPlain ? QByteArray(1, cByte) : "\\x" + QByteArray(1, cByte).toHex();
    }
    return cText + '"';
}

QByteArray describeValue(const QVariant& rcValue)
{
    switch (static_cast<int>(rcValue.type())) {
    case QVariant::Bool:
        return rcValue.toBool() ? "b true" : "b false";
    case QVariant::UInt:
        return "u " + QByteArray::number(rcValue.toUInt());
    case QVariant::ByteArray:
        return describeText(rcValue.toByteArray());
    default:
        return "i " + QByteArray::number(rcValue.toInt());
    }
}

QByteArray SCall::describe() const
{
    QByteArrayList cTexts;
    for (const QVariant& rcArgument : cArguments)
        cTexts << describeValue(rcArgument).mid(2);
    return cPath + ' ' + cMethod + '(' + cTexts.join(", ") + ')';
}
