/* SPDX-License-Identifier: MIT */
#include "board/trace/RegisterNames.h"

#include "board/state/CBoard.h"
#include "board/trace/Hex.h"
#include "regdb/chip_regs.h"

namespace
{

struct SWindow {
    char cLetter; ///< in the table
    quint32 u32Window;
    const char* pszName;
};

const SWindow WINDOWS[] = {
    {'H', CBoard::LIME_HOST,    "host"   },
    {'D', CBoard::LIME_DISPLAY, "display"},
    {'C', CBoard::LIME_CAPTURE, "capture"},
    {'-', CBoard::LIME_DRAW,    "draw"   },
    {'P', CBoard::LIME_PIO,     "pio"    },
};

struct SNamedAddress {
    quint32 u32Address;
    const char* pszName;
};

/// Registers of the FPGA that are in no table.
const SNamedAddress OTHERS[] = {
    {FPGA_STORE_VIDEO,  "store trigger"     },
    {FPGA_CURSOR_X,     "cursor x"          },
    {FPGA_CURSOR_Y,     "cursor y"          },
    {FPGA_CURSOR_SIZE,  "cursor size"       },
    {FPGA_CURSOR_COLOR, "cursor colour"     },
    {FPGA_GRAPHIC_SHOW, "graphic page shown"},
};

quint32 windowOf(const reg_bf_group& rsRow)
{
    for (const SWindow& rsWindow : WINDOWS)
        if (rsWindow.cLetter == rsRow.base)
            return rsWindow.u32Window;
    return 0;
}

void appendTable(const reg_bf_group* psRow, SRegisterPlace::EKind eKind, quint32 u32Chip,
                 QVector<SRegisterName>& rcNames)
{
    for (; psRow->name != nullptr; ++psRow) {
        const quint32 u32Base = eKind == SRegisterPlace::LIME ? windowOf(*psRow) : u32Chip;
        const bool bMisplaced = eKind == SRegisterPlace::LIME && qstrcmp(psRow->name, "L5ETC") == 0;
        const quint32 u32Address = bMisplaced ? LIME_L5ETC : psRow->addr;
        rcNames.append({
            QLatin1String(psRow->name), {eKind, u32Base, u32Address},
             psRow
        });
    }
}

QVector<SRegisterName> allNames()
{
    QVector<SRegisterName> cNames;
    appendTable(regs_fpga, SRegisterPlace::FPGA, 0, cNames);
    for (const SNamedAddress& rsOther : OTHERS)
        cNames.append({
            QLatin1String(rsOther.pszName), {SRegisterPlace::FPGA, 0, rsOther.u32Address},
             nullptr
        });
    appendTable(regs_lime, SRegisterPlace::LIME, 0, cNames);
    appendTable(regs_saa7113, SRegisterPlace::I2C, SAA7113_SLAVE, cNames);
    appendTable(regs_saa7129, SRegisterPlace::I2C, SAA7129_SLAVE, cNames);
    return cNames;
}

/// What addresses in registers stand for; empty for other registers.
QString pageText(const SRegisterName& rsName, quint32 u32Value)
{
    const bool bText = rsName.sPlace.u32Address == FPGA_TEMO;
    if (rsName.sPlace.eKind != SRegisterPlace::FPGA ||
        (!bText && rsName.sPlace.u32Address != FPGA_GRAPHIC_SHOW))
        return QString();
    const quint32 u32Address = bText ? u32Value - FPGA_TEXT_PAGES : u32Value << 8;
    const quint32 u32Stride = bText ? FPGA_TEXT_PAGE_STRIDE : FPGA_GRAPHIC_PAGE_STRIDE;
    if (u32Address % u32Stride != 0 || u32Address / u32Stride >= FPGA_PAGES)
        return QString();
    return QStringLiteral("page %1").arg(u32Address / u32Stride);
}

} // namespace

const QVector<SRegisterName>& registerNames()
{
    static const QVector<SRegisterName> cNames = allNames();
    return cNames;
}

const SRegisterName* registerName(const SRegisterPlace& rsPlace)
{
    for (const SRegisterName& rsName : registerNames())
        if (rsName.sPlace.eKind == rsPlace.eKind && rsName.sPlace.u32Base == rsPlace.u32Base &&
            rsName.sPlace.u32Address == rsPlace.u32Address)
            return &rsName;
    return nullptr;
}

QString registerFields(const SRegisterName& rsName, quint32 u32Value)
{
    QString cPage = pageText(rsName, u32Value);
    if (!cPage.isEmpty())
        return cPage;
    if (u32Value == 0)
        return QStringLiteral("0");
    if (rsName.psRow == nullptr)
        return hex(u32Value, 8);
    QStringList cFields;
    int iLeft = rsName.psRow->size;
    for (const reg_bf* psField = rsName.psRow->bf; psField->name != nullptr; ++psField) {
        iLeft -= psField->len;
        const quint64 u64Value = u32Value >> iLeft & ((quint64(1) << psField->len) - 1);
        if (u64Value != 0)
            cFields << QStringLiteral("%1=%2").arg(QLatin1String(psField->name)).arg(u64Value);
    }
    return cFields.join(QLatin1Char(' '));
}

QString registerText(const SRegisterName& rsName, quint32 u32Value)
{
    return rsName.cName + QLatin1Char(' ') + registerFields(rsName, u32Value);
}

quint32 limeWindow(const QString& rcName)
{
    for (const SWindow& rsWindow : WINDOWS)
        if (rcName == QLatin1String(rsWindow.pszName))
            return rsWindow.u32Window;
    return 0;
}

QString limeWindowName(quint32 u32Window)
{
    for (const SWindow& rsWindow : WINDOWS)
        if (u32Window == rsWindow.u32Window)
            return QLatin1String(rsWindow.pszName);
    return QString();
}

QString chipName(quint32 u32Chip)
{
    if (u32Chip == SAA7113_SLAVE)
        return QStringLiteral("saa7113");
    return u32Chip == SAA7129_SLAVE ? QStringLiteral("saa7129") : hex(u32Chip, 2);
}
