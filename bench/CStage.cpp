/* SPDX-License-Identifier: MIT */
#include "bench/CStage.h"

#include "bench/Measures.h"

#include <QFile>

#include <stdexcept>

namespace
{

struct SProgram {
    QString cBusName;
    QString cProgram;
    QStringList cArguments;
};

SProgram bareQtProgram(const QString& rcBusName, const QStringList& rcRole = {})
{
    return {rcBusName, QStringLiteral(BENCH_BARE_QT_SERVICE), QStringList(rcBusName) + rcRole};
}

SProgram program(EService eService, const CBoard& rcBoard)
{
    switch (eService) {
    case eBareQt:
        return bareQtProgram(QStringLiteral("velmar.bench.qt"));
    case eBareQtOverlay:
        return bareQtProgram(QStringLiteral("velmar.bench.overlay"),
                             {QStringLiteral("overlay"), rcBoard.path(BOARD_FPGA)});
    case eBareQtProcessing:
        return bareQtProgram(QStringLiteral("velmar.bench.processing"),
                             {QStringLiteral("processing"), rcBoard.path(BOARD_FPGA)});
    case eBareQtPoll:
        return bareQtProgram(QStringLiteral("velmar.bench.poll"),
                             {QStringLiteral("poll"), rcBoard.path(BOARD_I2C)});
    case eBareCodec:
        return bareQtProgram(QStringLiteral("velmar.mobilygen"), {QStringLiteral("codec")});
    default:
        return {QStringLiteral("velmar.haldend"), QStringLiteral(HALDEND_EXECUTABLE),
                CTemporaryBoard::deviceOptions(rcBoard.directory())};
    }
}

} // namespace

void SService::fail(const std::string& rcReason) const
{
    QFile cLog(cLogFile);
    const QByteArray cText = cLog.open(QIODevice::ReadOnly) ? cLog.readAll() : QByteArray();
    throw std::runtime_error(cBusName + ": " + rcReason + "\n" + cText.toStdString());
}

CStage::CStage()
{
    const bool bBus = m_cBus.start();
    expect(bBus, m_cBus.error());
    const bool bBoard = m_cBoard.make();
    expect(bBoard, m_cBoard.error());
    m_pcClient = std::make_unique<CBusClient>(m_cBus.address().toStdString());
}

std::string CStage::file(const std::string& rcName) const
{
    return m_cFolder.filePath(QString::fromStdString(rcName)).toStdString();
}

// Nothing inherited but PATH.
QProcessEnvironment CStage::environment() const
{
    QProcessEnvironment cEnvironment;
    cEnvironment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    cEnvironment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    cEnvironment.insert(QStringLiteral("TZ"), QStringLiteral("UTC"));
    cEnvironment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), m_cBus.address());
    CTemporaryBoard::addTo(cEnvironment, board().directory());
    return cEnvironment;
}

std::unique_ptr<SService> CStage::start(EService eService)
{
    const SProgram sProgram = program(eService, board());
    auto pcService = std::make_unique<SService>();
    pcService->cBusName = sProgram.cBusName.toStdString();
    pcService->cLogFile = m_cFolder.filePath(sProgram.cBusName + QStringLiteral(".log"));
    CChildProcess& rcProcess = pcService->cProcess;
    rcProcess.setProcessEnvironment(environment());
    rcProcess.setProcessChannelMode(QProcess::MergedChannels);
    rcProcess.setStandardOutputFile(pcService->cLogFile, QIODevice::Append);
    rcProcess.start(sProgram.cProgram, sProgram.cArguments);
    if (!m_pcClient->waitForName(pcService->cBusName, rcProcess))
        pcService->fail("no bus name in time");
    return pcService;
}
