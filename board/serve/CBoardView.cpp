/* SPDX-License-Identifier: MIT */
#include "board/serve/CBoardView.h"

#include "board/judge/CJudgements.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "hw/fpga_map.h"
#include "hw/lime_registers.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

namespace
{

const int TRACE_LINES = 200;
const qint64 TRACE_BYTES = 64 * 1024; // looked at, at most, at a time
const int FAULT_CALLS = 1000000;

int high12(quint32 u32Register)
{
    return static_cast<int>(u32Register >> 16 & 0xfff);
}

int low12(quint32 u32Register)
{
    return static_cast<int>(u32Register & 0xfff);
}

QJsonObject place(double dX, double dY, double dWidth, double dHeight)
{
    return {
        {QStringLiteral("x"),          dX     },
        {QStringLiteral("y"),          dY     },
        {QStringLiteral("cellWidth"),  dWidth },
        {QStringLiteral("cellHeight"), dHeight},
    };
}

QString hex(quint32 u32Value, int iDigits)
{
    return QStringLiteral("0x%1").arg(u32Value, iDigits, 16, QLatin1Char('0'));
}

/// The 16 colours of a palette of the FPGA, for style sheets.
QJsonArray colors(const CBoard& rcBoard, quint32 u32Palette)
{
    QJsonArray cColors;
    for (quint32 i = 0; i < 16; ++i) {
        const quint32 u32Color = rcBoard.fpgaRegister(u32Palette + 4 * i);
        cColors << QStringLiteral("#%1%2")
                       .arg(u32Color & 0xffffff, 6, 16, QLatin1Char('0'))
                       .arg(u32Color >> 24, 2, 16, QLatin1Char('0'));
    }
    return cColors;
}

QJsonObject fieldObject(const CChipRegisters::SField& rsField)
{
    return {
        {QStringLiteral("name"),     rsField.cName                                             },
        {QStringLiteral("value"),    static_cast<double>(rsField.u32Value)                     },
        {QStringLiteral("file"),     static_cast<double>(rsField.u32FileValue)                 },
        {QStringLiteral("reserved"),
         rsField.bReserved && rsField.u32Value == 0 && rsField.u32FileValue == rsField.u32Value},
    };
}

QJsonObject registerObject(const CChipRegisters::SRegister& rsRegister)
{
    QJsonArray cFields;
    for (const CChipRegisters::SField& rsField : rsRegister.cFields)
        cFields << fieldObject(rsField);
    const int iDigits = rsRegister.iBits / 4;
    return {
        {QStringLiteral("name"),                                      rsRegister.cName         },
        {QStringLiteral("window"),                                    rsRegister.cWindow       },
        {QStringLiteral("address"),                                   hex(rsRegister.u32Address, 8)},
        {QStringLiteral("value"),                                                           hex(rsRegister.u32Value,                                                              iDigits)},
        {QStringLiteral("file"),
         rsRegister.bInFile ? QJsonValue(hex(rsRegister.u32FileValue,               iDigits)) : QJsonValue()},
        {QStringLiteral("differs"), rsRegister.differs()},
        {QStringLiteral("help"),                                   rsRegister.cHelp                                       },
        {QStringLiteral("fields"),                                      cFields            },
    };
}

QJsonArray faultObjects(const CBoard& rcBoard)
{
    QJsonArray cFaults;
    for (const CBoard::SFault& rsFault : rcBoard.faults())
        cFaults << QJsonObject{
            {QStringLiteral("operation"), CBoard::operationName(rsFault.eOperation)                        },
            {QStringLiteral("pass"),      static_cast<double>(rsFault.u32Nth - 1)                          },
            {QStringLiteral("left"),
             rsFault.u32Count == BOARD_FAULT_FOREVER ? QJsonValue() : static_cast<double>(rsFault.u32Count)},
            {QStringLiteral("short"),     rsFault.bShort                                                   },
            {QStringLiteral("hits"),      static_cast<double>(rsFault.u32Hits)                             },
        };
    return cFaults;
}

} // namespace

/// One chip, and its register file as last read.
struct CBoardView::SChip {
    explicit SChip(const CBoard& rcBoard, const QString& rcName)
        : cFile(QStringLiteral("%1/%2.cnf").arg(rcBoard.path(BOARD_CNFS), rcName)),
          cRegisters(rcBoard, rcName)
    {
    }

    /// Reads the file if it has changed. Returns its fault, or nothing if it is good.
    QString readFile()
    {
        const QFileInfo cInfo(cFile);
        if (cRead.isValid() && cInfo.lastModified() == cRead)
            return cFault;
        cRead = cInfo.lastModified();
        cFault.clear();
        if (!cRegisters.readFile(cFault))
            return cFault;
        cFault.clear();
        return cFault;
    }

    QString cFile;
    CChipRegisters cRegisters;
    QDateTime cRead;
    QString cFault;
};

CBoardView::CBoardView(CBoard& rcBoard) : m_rcBoard(rcBoard)
{
    for (const QString& rcName : CChipRegisters::chipNames())
        m_cChips[rcName] = new SChip(rcBoard, rcName);
}

CBoardView::~CBoardView()
{
    qDeleteAll(m_cChips);
}

QJsonObject CBoardView::geometry() const
{
    const quint32 u32Size = m_rcBoard.fpgaRegister(FPGA_TESZ);
    const double dWidth = u32Size >> 8 & 0x1f;
    const double dHeight = 2 * (u32Size & 0x3f);
    const double dX = m_rcBoard.fpgaRegister(FPGA_TSXP) & 0xfff;
    const double dY = 2 * (m_rcBoard.fpgaRegister(FPGA_TSYP) & 0x1ff);
    const quint32 u32Scale = m_rcBoard.limeRegister(CBoard::LIME_CAPTURE, LIME_CSC);
    const quint32 u32Place = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L1WXY);
    const quint32 u32Horizontal = u32Scale & 0xffff;
    const quint32 u32Vertical = u32Scale >> 16;
    const double dScaleX = u32Horizontal == 0 ? 0 : 2048.0 / u32Horizontal;
    const double dScaleY = u32Vertical == 0 ? 0 : 2048.0 / u32Vertical;
    return {
        {QStringLiteral("monitor"),    place(low12(u32Place) + dX * dScaleX,      high12(u32Place) + dY * dScaleY,
         dWidth * dScaleX, dHeight * dScaleY)},
        {QStringLiteral("recorded"),          place(dX,                                                   dY,                                                         dWidth, dHeight)},
        {QStringLiteral("foreground"),                          colors(m_rcBoard,           FPGA_TEXT_FOREGROUND)},
        {QStringLiteral("background"), colors(m_rcBoard, FPGA_TEXT_BACKGROUND)},
    };
}

QJsonObject CBoardView::cells() const
{
    const quint32 u32Page = m_rcBoard.fpgaRegister(FPGA_TEMO);
    QByteArray cCells;
    for (quint32 u32Row = 0; u32Row < VIDEO_TEXT_ROWS; ++u32Row)
        cCells += m_rcBoard.fpgaMemory(u32Page + u32Row * FPGA_TEXT_ROW_BYTES,
                                       VIDEO_TEXT_COLUMNS * FPGA_TEXT_CELL_BYTES);
    return {
        {QStringLiteral("cells"), QString::fromLatin1(cCells.toBase64())}
    };
}

QJsonObject CBoardView::switches() const
{
    QJsonArray cModes;
    for (int iMode = 0; iMode < BOARD_CODEC_MODE_COUNT; ++iMode)
        cModes << CBoard::codecModeName(static_cast<board_codec_mode>(iMode));
    QJsonArray cOperations;
    for (int iOperation = 1; iOperation < BOARD_OPERATION_COUNT; ++iOperation)
        cOperations << CBoard::operationName(static_cast<board_operation>(iOperation));
    const SCodecState sCodec = m_rcBoard.codecState();
    return {
        {QStringLiteral("plugged"),    m_rcBoard.isCameraPlugged()                                 },
        {QStringLiteral("tracing"),    m_rcBoard.isTracing()                                       },
        {QStringLiteral("codecMode"),  CBoard::codecModeName(m_rcBoard.codecMode())                },
        {QStringLiteral("codecDelay"), static_cast<double>(m_rcBoard.codecDelay())                 },
        {QStringLiteral("codecState"), sCodec.activityName()                                       },
        {QStringLiteral("codecFrame"), sCodec.iFrame                                               },
        {QStringLiteral("codecFile"),  sCodec.cFile                                                },
        {QStringLiteral("faults"),     faultObjects(m_rcBoard)                                     },
        {QStringLiteral("modes"),      cModes                                                      },
        {QStringLiteral("operations"), cOperations                                                 },
        {QStringLiteral("sources"),    QJsonArray{QStringLiteral("moving"), QStringLiteral("test")}},
    };
}

QJsonObject CBoardView::chip(const QString& rcChip)
{
    SChip* psChip = m_cChips.value(rcChip);
    if (psChip == nullptr)
        return QJsonObject();
    const QString cFault = psChip->readFile();
    QJsonArray cRegisters;
    for (const CChipRegisters::SRegister& rsRegister : psChip->cRegisters.registers())
        cRegisters << registerObject(rsRegister);
    return {
        {QStringLiteral("chip"),      rcChip    },
        {QStringLiteral("fault"),     cFault    },
        {QStringLiteral("registers"), cRegisters},
    };
}

QJsonArray CBoardView::judgements() const
{
    return QJsonArray::fromStringList(CJudgements::of(m_rcBoard));
}

QStringList CBoardView::newTraceLines()
{
    QFile cFile(m_rcBoard.path(BOARD_TRACE));
    if (!cFile.open(QIODevice::ReadOnly) || cFile.size() == m_i64Trace)
        return QStringList();
    if (cFile.size() < m_i64Trace)
        m_i64Trace = 0; // it was cleared
    const qint64 i64Begin = qMax(m_i64Trace, cFile.size() - TRACE_BYTES);
    cFile.seek(i64Begin);
    QByteArray cNew = cFile.read(TRACE_BYTES);
    cNew.truncate(cNew.lastIndexOf('\n') + 1);
    const bool bSkipped = i64Begin > m_i64Trace;
    m_i64Trace = i64Begin + cNew.size();
    if (bSkipped)
        cNew.remove(0, cNew.indexOf('\n') + 1);
    QStringList cLines = QString::fromUtf8(cNew).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    m_cNames.useGlyphsOf(m_rcBoard);
    for (QString& rcLine : cLines)
        rcLine = m_cNames.named(rcLine);
    return cLines.mid(qMax(0, cLines.size() - TRACE_LINES));
}

QString CBoardView::carryOut(const QJsonObject& rcOrder)
{
    const QString cWhat = rcOrder[QStringLiteral("do")].toString();
    if (cWhat == QLatin1String("camera"))
        return carryOutCamera(rcOrder);
    if (cWhat == QLatin1String("fault"))
        return carryOutFault(rcOrder);
    if (cWhat == QLatin1String("clear-faults")) {
        m_rcBoard.clearFaults();
    } else if (cWhat == QLatin1String("codec")) {
        const board_codec_mode eMode = CBoard::codecModeByName(rcOrder[QStringLiteral("mode")].toString());
        if (eMode == BOARD_CODEC_MODE_COUNT)
            return QStringLiteral("no such mode of the codec stand-in");
        m_rcBoard.setCodecMode(eMode);
    } else if (cWhat == QLatin1String("codec-delay")) {
        m_rcBoard.setCodecDelay(
            static_cast<quint32>(qBound(0, rcOrder[QStringLiteral("ms")].toInt(), 60000)));
    } else if (cWhat == QLatin1String("trace")) {
        m_rcBoard.setTracing(rcOrder[QStringLiteral("on")].toBool());
    } else if (cWhat == QLatin1String("clear-trace")) {
        return m_rcBoard.clearTrace() ? QString() : QStringLiteral("the trace can't be cleared");
    } else if (cWhat == QLatin1String("clear-judgements")) {
        return m_rcBoard.clearJudgements() ? QString() : QStringLiteral("the judgements can't be cleared");
    } else {
        return QStringLiteral("no such order: %1").arg(cWhat);
    }
    return QString();
}

QString CBoardView::carryOutCamera(const QJsonObject& rcOrder)
{
    const QString cWhat = rcOrder[QStringLiteral("what")].toString();
    if (cWhat == QLatin1String("moving"))
        m_rcBoard.setMovingCamera();
    else if (cWhat == QLatin1String("test"))
        m_rcBoard.setCamera(CTestPicture::frame(rcOrder[QStringLiteral("frame")].toInt()));
    else if (cWhat == QLatin1String("plug") || cWhat == QLatin1String("unplug"))
        m_rcBoard.setCameraPlugged(cWhat == QLatin1String("plug"));
    else
        return QStringLiteral("no such camera: %1").arg(cWhat);
    return QString();
}

QString CBoardView::carryOutFault(const QJsonObject& rcOrder)
{
    CBoard::SFault sFault;
    sFault.eOperation = CBoard::operationByName(rcOrder[QStringLiteral("operation")].toString());
    if (sFault.eOperation == BOARD_OPERATION_NONE)
        return QStringLiteral("no such operation");
    sFault.u32Nth = static_cast<quint32>(qBound(1, rcOrder[QStringLiteral("nth")].toInt(1), FAULT_CALLS));
    const int iCount = rcOrder[QStringLiteral("count")].toInt();
    sFault.u32Count = iCount > 0 ? static_cast<quint32>(iCount) : BOARD_FAULT_FOREVER;
    sFault.bShort = rcOrder[QStringLiteral("short")].toBool();
    m_rcBoard.setFault(sFault);
    return QString();
}
