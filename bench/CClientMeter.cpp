/* SPDX-License-Identifier: MIT */
#include "bench/CClientMeter.h"

#include <chrono>
#include <fstream>
#include <stdexcept>

namespace
{

using CClock = std::chrono::steady_clock;

const int TEXTS = 1000;
const int CALLS_A_TEXT = 2; // haldenctl asks for the text's place too, to tell what is cut off
const int TIMEOUT_MS = 60000;

double millisecondsSince(CClock::time_point cStart)
{
    return std::chrono::duration<double, std::milli>(CClock::now() - cStart).count();
}

} // namespace

CClientMeter::CClientMeter(CStage& rcStage)
    : m_rcStage(rcStage), m_pcDaemon(rcStage.start(eDaemon)), m_cCommands(rcStage.file("commands"))
{
    run({BENCH_HALDENCTL, "text", "new", "x"});
    std::ofstream cFile(m_cCommands);
    for (int iText = 0; iText < TEXTS; ++iText)
        cFile << "text set 1 \"number " << iText << "\"\n";
    if (!cFile.flush())
        throw std::runtime_error("the file of commands can't be written");
}

double CClientMeter::run(const std::vector<std::string>& rcArguments) const
{
    QStringList cArguments;
    for (const std::string& rcArgument : rcArguments)
        cArguments << QString::fromStdString(rcArgument);
    QProcessEnvironment cEnvironment;
    cEnvironment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    cEnvironment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    cEnvironment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"),
                        QString::fromStdString(m_rcStage.busAddress()));
    CChildProcess cProcess;
    cProcess.setProcessEnvironment(cEnvironment);
    cProcess.setProcessChannelMode(QProcess::MergedChannels);
    cProcess.setStandardOutputFile(QString::fromStdString(m_rcStage.file("client.log")), QIODevice::Append);
    const CClock::time_point cBegin = CClock::now();
    cProcess.start(cArguments.takeFirst(), cArguments);
    if (!cProcess.waitForFinished(TIMEOUT_MS) || cProcess.exitCode() != 0)
        throw std::runtime_error(rcArguments.front() + " fails");
    return millisecondsSince(cBegin);
}

double CClientMeter::setTexts() const
{
    const CClock::time_point cBegin = CClock::now();
    for (int iCall = 0; iCall < TEXTS * CALLS_A_TEXT; ++iCall)
        m_rcStage.client().get(m_pcDaemon->cBusName, "videodisplay", "get_displayed_video_width");
    return millisecondsSince(cBegin);
}

CFigures CClientMeter::measure(EClient eClient)
{
    CFigures cFigures(CLIENT_FIGURES);
    if (eClient == eHaldenctl) {
        cFigures[eOneCall] = run({BENCH_HALDENCTL, "status"});
        cFigures[eTexts] = run({"sh", "-c", "exec \"$0\" - <\"$1\"", BENCH_HALDENCTL, m_cCommands});
    } else {
        cFigures[eOneCall] =
            run({"busctl", "--address=" + m_rcStage.busAddress(), "call", m_pcDaemon->cBusName,
                 "/videodisplay", "velmar.haldend.videodisplay", "get_displayed_video_width"});
        cFigures[eTexts] = setTexts();
    }
    return cFigures;
}
