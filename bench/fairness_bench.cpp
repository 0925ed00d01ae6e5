/* SPDX-License-Identifier: MIT */
/* How long a client's getter takes while another client floods the daemon, on a bus and a virtual board of its own. */
#include "bench/BenchProgram.h"
#include "bench/CFlood.h"
#include "bench/CTable.h"
#include "hw/video_geometry.h"
#include "tests/support/CDaemonProcess.h"
#include "tests/support/CInterruption.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/CRawBusClient.h"
#include "tests/support/CTemporaryBoard.h"

#include <QElapsedTimer>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace
{

const int GETTERS_DEFAULT = 500;
const int FIRST_WAIT_MS = 1000; // so long the flood lasts before the first getter
const qint64 LIMIT_MS = 20000;  // a row ends then, however many getters were answered
const double GOAL_MS = 100;
const double GOAL_SHARE = 0.99;

const int TEXTS = 65535;
const int COLUMNS = VIDEO_TEXT_COLUMNS;
const int ROWS = VIDEO_TEXT_ROWS;
const int CALLS_A_PIECE = 50;
const int HUGE = 1000000;

std::vector<QByteArray> nothing()
{
    return {};
}

std::vector<QByteArray> strings()
{
    return {CRawBusClient::oneWayCall("set_text_string", {1}, QByteArray(20, 'x')).repeated(CALLS_A_PIECE)};
}

// So that each text goes to another cell each time.
std::vector<QByteArray> moves()
{
    std::vector<QByteArray> cPieces;
    for (int iRound = 0; iRound < 2; ++iRound)
        for (int i = 0; i < TEXTS; ++i) {
            if (i % CALLS_A_PIECE == 0)
                cPieces.emplace_back();
            cPieces.back() += CRawBusClient::oneWayCall("set_text_position",
                                                        {i + 1, (i + iRound) % COLUMNS, i / COLUMNS % ROWS});
        }
    return cPieces;
}

std::vector<QByteArray> hugeStrings()
{
    return {CRawBusClient::oneWayCall("set_text_string", {1}, QByteArray(HUGE, 'x'))};
}

struct SFloodRow {
    const char* pszName;
    int iTexts;
    std::vector<QByteArray> (*pfnPieces)();
    bool bPolite;
};

const SFloodRow FLOODS[] = {
    {"nothing",                           1,     nothing,     false},
    {"one-way calls without end",         1,     strings,     false},
    {"the same, a getter after each 50",  1,     strings,     true },
    {"65,535 texts moved without end",    TEXTS, moves,       false},
    {"the same, a getter after each 50",  TEXTS, moves,       true },
    {"strings of a megabyte without end", 1,     hugeStrings, false},
    {"the same, a getter after each",     1,     hugeStrings, true },
};

/// One row's daemon.
class CScenery
{
public:
    CScenery()
    {
        if (!m_cBus.startUnderPolicy() || !m_cBoard.make())
            throw std::runtime_error((m_cBus.error() + m_cBoard.error()).toStdString());
        m_cDaemon.setBusAddress(m_cBus.address());
        m_cDaemon.useBoard(m_cBoard.board().directory());
        m_cDaemon.setRedirections(QStringLiteral(">/dev/null 2>&1"));
        if (!m_cDaemon.startAndWaitForName())
            throw std::runtime_error(m_cDaemon.describe().toStdString());
    }

    /// Visible texts of one letter, side by side in all cells.
    void makeTexts(int iTexts)
    {
        CRawBusClient cClient;
        if (!cClient.start(m_cBus.address()))
            throw std::runtime_error("no client");
        QByteArray cCalls;
        for (int i = 0; i < iTexts; ++i)
            cCalls +=
                CRawBusClient::oneWayCall("create_text", {}) +
                CRawBusClient::oneWayCall("set_text_position", {i + 1, i % COLUMNS, i / COLUMNS % ROWS}) +
                CRawBusClient::oneWayCall("set_text_string", {i + 1}, "x") +
                CRawBusClient::oneWayCall("show_text", {i + 1});
        if (!cClient.send(cCalls) || !m_cDaemon.settle())
            throw std::runtime_error("no texts");
    }

    QString address() const { return m_cBus.address(); }

    /// Milliseconds to the answer; negative if there is none.
    double ask()
    {
        QElapsedTimer cClock;
        cClock.start();
        const QDBusMessage cReply =
            m_cDaemon.call(QStringLiteral("/videodisplay"), QStringLiteral("get_displayed_video_width"));
        return cReply.type() == QDBusMessage::ReplyMessage ? static_cast<double>(cClock.nsecsElapsed()) / 1e6
                                                           : -1;
    }

    qint64 peakKilobytes() const { return m_cDaemon.kilobytes("VmHWM:"); }

private:
    CPrivateBus m_cBus;
    CTemporaryBoard m_cBoard;
    CDaemonProcess m_cDaemon;
};

std::string milliseconds(double dValue)
{
    char acText[32];
    std::snprintf(acText, sizeof acText, "%.1f ms", dValue);
    return acText;
}

CTable::CRow measureRow(const SFloodRow& rsRow, int iGetters)
{
    CScenery cScenery;
    cScenery.makeTexts(rsRow.iTexts);
    const std::vector<QByteArray> cPieces = rsRow.pfnPieces();
    std::unique_ptr<CFlood> pcFlood;
    if (!cPieces.empty())
        pcFlood = std::make_unique<CFlood>(cScenery.address(), cPieces, rsRow.bPolite);
    QElapsedTimer cClock;
    cClock.start();
    if (pcFlood != nullptr)
        std::this_thread::sleep_for(std::chrono::milliseconds(FIRST_WAIT_MS));
    std::vector<double> cTimes;
    bool bAnswered = true;
    while (bAnswered && static_cast<int>(cTimes.size()) < iGetters && cClock.elapsed() < LIMIT_MS) {
        CInterruption::check();
        const double dTime = cScenery.ask();
        bAnswered = dTime >= 0;
        cTimes.push_back(bAnswered ? dTime : static_cast<double>(LIMIT_MS));
    }
    const double dSeconds = static_cast<double>(cClock.elapsed()) / 1000;
    const bool bFlooded = pcFlood == nullptr || pcFlood->stop();
    const double dRate = pcFlood == nullptr ? 0 : static_cast<double>(pcFlood->bytes()) / 1e6 / dSeconds;
    std::sort(cTimes.begin(), cTimes.end());
    const auto iWithin = std::upper_bound(cTimes.begin(), cTimes.end(), GOAL_MS) - cTimes.begin();
    const double dShare = static_cast<double>(iWithin) / static_cast<double>(cTimes.size());
    char acRate[32];
    std::snprintf(acRate, sizeof acRate, "%.1f MB/s%s", dRate, bFlooded ? "" : " (stopped)");
    char acShare[32];
    std::snprintf(acShare, sizeof acShare, "%.1f %%", 100 * dShare);
    return {rsRow.pszName,
            acRate,
            std::to_string(cTimes.size()),
            milliseconds(cTimes[cTimes.size() / 2]),
            milliseconds(cTimes[cTimes.size() * 99 / 100]),
            milliseconds(cTimes.back()),
            acShare,
            std::to_string(cScenery.peakKilobytes() / 1024) + " MB",
            dShare >= GOAL_SHARE ? "met" : "missed"};
}

void measure(int iGetters)
{
    CTable cTable({"another client sends", "flood", "getters", "median", "99 of 100", "worst",
                   "within 100 ms", "peak memory", "goal 99 %"});
    for (const SFloodRow& rsRow : FLOODS)
        cTable.add(measureRow(rsRow, iGetters));
    std::printf("%s", cTable.text().c_str());
    warnOfOtherBuilds();
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    int iGetters = GETTERS_DEFAULT;
    CBenchProgram cProgram(
        iCount, ppszArguments,
        QStringLiteral("Measures a client's getter while another client floods the daemon."));
    cProgram.addNumber(QStringLiteral("getters"), 100, 100000, iGetters,
                       QStringLiteral("Getters a row, 500 by default; fewer if they take long."));
    return cProgram.run([&iGetters] { measure(iGetters); });
}
