/* SPDX-License-Identifier: MIT */
#include "tests/compare/CBoardRecord.h"

#include "board/state/CBoard.h"
#include "tests/support/SparseFile.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>

#include <cstring>
#include <stdexcept>

namespace
{

[[noreturn]] void fail(const QString& rcWhat)
{
    throw std::runtime_error(rcWhat.toStdString());
}

QByteArray read(const QString& rcFile)
{
    QFile cFile(rcFile);
    if (!cFile.open(QIODevice::ReadOnly))
        fail(rcFile + QStringLiteral(": ") + cFile.errorString());
    return cFile.readAll();
}

QByteArray pixels(const QImage& rcPicture)
{
    QByteArray cBytes = "P6\n" + QByteArray::number(rcPicture.width()) + ' ' +
                        QByteArray::number(rcPicture.height()) + "\n255\n";
    const QImage cPlain = rcPicture.convertToFormat(QImage::Format_RGB888);
    for (int iLine = 0; iLine < cPlain.height(); ++iLine)
        cBytes.append(reinterpret_cast<const char*>(cPlain.constScanLine(iLine)), cPlain.width() * 3);
    return cBytes;
}

} // namespace

CBoardRecord::CBoardRecord(CBoard& rcBoard, const QString& rcFolder)
    : m_rcBoard(rcBoard), m_cFolder(QDir(rcFolder).absolutePath())
{
    QDir cFolder(m_cFolder);
    bool bMade = cFolder.removeRecursively();
    for (const char* pszPart : {"fpga", "lime", "trace", "pictures", "files"})
        bMade = bMade && cFolder.mkpath(QLatin1String(pszPart));
    if (!bMade)
        fail(rcFolder + QStringLiteral(": can't be made"));
    m_rcBoard.setTracing(true);
}

QByteArray CBoardRecord::contents(const char* pszFile) const
{
    return read(m_rcBoard.path(pszFile));
}

void CBoardRecord::take()
{
    m_cFpga = contents(BOARD_FPGA);
    m_cLime = contents(BOARD_LIME);
    m_cTrace = trace();
    m_rcBoard.clearTrace();
}

// From the order of the daemon's processor.
QByteArray CBoardRecord::words(QByteArray cMemory) const
{
    const QByteArray cControl = contents(BOARD_CONTROL);
    board_control sControl;
    if (cControl.size() < static_cast<int>(sizeof sControl))
        fail(QStringLiteral("the control file is too short"));
    std::memcpy(&sControl, cControl.constData(), sizeof sControl);
    if (board_load(&sControl.lime_order) == BOARD_ORDER_LITTLE)
        return cMemory;
    for (int iWord = 0; iWord + 4 <= cMemory.size(); iWord += 4)
        qToLittleEndian(qFromBigEndian<quint32>(cMemory.constData() + iWord), cMemory.data() + iWord);
    return cMemory;
}

// Without the look for a signal that the daemon takes every second, and with one number for all descriptors.
QByteArray CBoardRecord::trace() const
{
    static const QRegularExpression cDescriptor(QStringLiteral(" open = \\d+$"));
    QString cText;
    for (QString cLine : m_rcBoard.traceLines())
        if (!cLine.startsWith(QLatin1String("i2c read 0x1f ")))
            cText += cLine.replace(cDescriptor, QStringLiteral(" open = N")) + QLatin1Char('\n');
    return cText.toUtf8();
}

void CBoardRecord::add(const QString& rcName, const QImage& rcPicture)
{
    write(QStringLiteral("fpga/") + rcName, m_cFpga);
    write(QStringLiteral("lime/") + rcName, words(m_cLime));
    write(QStringLiteral("trace/") + rcName, m_cTrace);
    write(QStringLiteral("pictures/%1.ppm").arg(rcName), pixels(rcPicture));
}

void CBoardRecord::addFile(const QString& rcFile)
{
    QByteArray cBytes = read(rcFile);
    if (rcFile.endsWith(QLatin1String(".cnf"))) {
        static const QRegularExpression cDate(QStringLiteral("^# Date:.*$"),
                                              QRegularExpression::MultilineOption);
        cBytes = QString::fromLatin1(cBytes).remove(cDate).toLatin1();
    }
    write(QStringLiteral("files/") + QFileInfo(rcFile).fileName(), cBytes);
}

void CBoardRecord::write(const QString& rcName, const QByteArray& rcBytes) const
{
    const QString cFile = m_cFolder + QLatin1Char('/') + rcName;
    if (!writeSparse(cFile, rcBytes))
        fail(cFile + QStringLiteral(": can't be written"));
}
