/* SPDX-License-Identifier: MIT */
#include "board/registers/CChipRegisters.h"

#include "regdb/chip_regs.h"
#include "regdb/config_file.h"
#include "regdb/config_guard.h"
#include "regdb/registers.h"

#include <QFile>

struct CChipRegisters::SChip {
    const char* pszName;
    const chip_regs* psRegisters;
    quint32 (*pfnValue)(const CBoard& rcBoard, const reg_bf_group& rcRow);
};

namespace
{

struct SWindow {
    char cLetter;
    CBoard::ELimeWindow eWindow;
    const char* pszName;
};

const SWindow WINDOWS[] = {
    {'D', CBoard::LIME_DISPLAY, "display"},
    {'C', CBoard::LIME_CAPTURE, "capture"},
    {'H', CBoard::LIME_HOST,    "host"   },
    {'P', CBoard::LIME_PIO,     "pio"    },
};

const SWindow* windowOf(const reg_bf_group& rcRow)
{
    for (const SWindow& rcWindow : WINDOWS)
        if (rcWindow.cLetter == rcRow.base)
            return &rcWindow;
    return nullptr;
}

quint32 fpgaValue(const CBoard& rcBoard, const reg_bf_group& rcRow)
{
    return rcBoard.fpgaRegister(rcRow.addr);
}

quint32 limeValue(const CBoard& rcBoard, const reg_bf_group& rcRow)
{
    const SWindow* pcWindow = windowOf(rcRow);
    return pcWindow != nullptr ? rcBoard.limeRegister(pcWindow->eWindow, rcRow.addr) : 0;
}

template <quint8 u8Slave>
quint32 i2cValue(const CBoard& rcBoard, const reg_bf_group& rcRow)
{
    return rcBoard.i2cRegister(u8Slave, static_cast<quint8>(rcRow.addr));
}

bool isReserved(const reg_bf& rcField)
{
    return rcField.help[0] == '\0' && qstrncmp(rcField.name, "res", 3) == 0;
}

} // namespace

const CChipRegisters::SChip CChipRegisters::CHIPS[] = {
    {"fpga",    &crp_fpga,    fpgaValue              },
    {"lime",    &crp_lime,    limeValue              },
    {"saa7113", &crp_saa7113, i2cValue<SAA7113_SLAVE>},
    {"saa7129", &crp_saa7129, i2cValue<SAA7129_SLAVE>},
};

QStringList CChipRegisters::chipNames()
{
    QStringList cNames;
    for (const SChip& rcChip : CHIPS)
        cNames << QLatin1String(rcChip.pszName);
    return cNames;
}

CChipRegisters::CChipRegisters(const CBoard& rcBoard, const QString& rcChip)
    : m_rcBoard(rcBoard), m_rcChip(CHIPS[chipNames().indexOf(rcChip)])
{
}

bool CChipRegisters::readFile(QString& rcError)
{
    const QString cPath =
        QStringLiteral("%1/%2.cnf").arg(m_rcBoard.path(BOARD_CNFS), QLatin1String(m_rcChip.pszName));
    const QByteArray cName = QFile::encodeName(cPath);
    config_t* psConfig = m_rcChip.psRegisters->config;
    int iLine = 0;
    m_bFileRead = false;
    if (!QFile::exists(cPath)) {
        rcError = QStringLiteral("%1: missing").arg(cPath);
    } else if (const char* pszFault = config_file_fault(cName.constData(), &iLine)) {
        rcError =
            iLine != 0
                ? QStringLiteral("%1:%2: %3").arg(cPath).arg(iLine).arg(QLatin1String(pszFault))
                : QStringLiteral("%1: the file or one that it includes is not a regular file").arg(cPath);
    } else if (config_read_file(psConfig, cName.constData()) != CONFIG_TRUE) {
        rcError = QStringLiteral("%1:%2: %3")
                      .arg(cPath)
                      .arg(config_error_line(psConfig))
                      .arg(QString::fromLocal8Bit(config_error_text(psConfig)));
        config_destroy(psConfig);
    } else {
        set_all_regs_from_config(m_rcChip.psRegisters);
        m_bFileRead = true;
    }
    return m_bFileRead;
}

/// Not the decoder's status, whose writes the decoder ignores.
bool CChipRegisters::isWrittenByDaemon(const reg_bf_group& rcRow) const
{
    const bool bStatus = m_rcChip.psRegisters == &crp_saa7113 && rcRow.addr == SAA7113_STATUS;
    return m_bFileRead && rcRow.valid != 0 && !bStatus;
}

/// Uses the table's row to compose the file's value and to split the board's, and restores it.
CChipRegisters::SRegister CChipRegisters::lookAt(reg_bf_group& rcRow) const
{
    const SWindow* pcWindow = windowOf(rcRow);
    SRegister cRegister;
    cRegister.cName = QLatin1String(rcRow.name);
    cRegister.cWindow = QLatin1String(pcWindow != nullptr ? pcWindow->pszName : m_rcChip.pszName);
    cRegister.u32Address = rcRow.addr;
    cRegister.iBits = rcRow.size;
    cRegister.cHelp = QLatin1String(rcRow.help);
    cRegister.u32Value = m_rcChip.pfnValue(m_rcBoard, rcRow);
    cRegister.bInFile = isWrittenByDaemon(rcRow);
    make_reg_value(&rcRow);
    cRegister.u32FileValue = reg_value(&rcRow);
    for (const reg_bf* psField = rcRow.bf; psField->name != nullptr; ++psField)
        cRegister.cFields << SField{QLatin1String(psField->name), isReserved(*psField), 0, psField->value};
    set_reg_value_by_name(m_rcChip.psRegisters, rcRow.name, cRegister.u32Value << (32 - rcRow.size));
    for (int i = 0; i < cRegister.cFields.size(); ++i) {
        cRegister.cFields[i].u32Value = rcRow.bf[i].value;
        rcRow.bf[i].value = cRegister.cFields[i].u32FileValue;
    }
    make_reg_value(&rcRow);
    return cRegister;
}

QVector<CChipRegisters::SRegister> CChipRegisters::registers() const
{
    QVector<SRegister> cRegisters;
    for (reg_bf_group* psRow = m_rcChip.psRegisters->regs; psRow->name != nullptr; ++psRow)
        cRegisters << lookAt(*psRow);
    return cRegisters;
}
