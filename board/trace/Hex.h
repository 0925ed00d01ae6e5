/* SPDX-License-Identifier: MIT */
/* Numbers as traces show them. */
#ifndef HALDEND_BOARD_HEX_H
#define HALDEND_BOARD_HEX_H

#include <QString>

inline QString hex(quint32 u32Value, int iDigits)
{
    return QStringLiteral("0x%1").arg(u32Value, iDigits, 16, QLatin1Char('0'));
}

#endif
