/* SPDX-License-Identifier: MIT */
#include "tests/storm/CStorm.h"

#include "tests/support/CRawBusClient.h"
#include "tests/support/FasterClock.h"
#include "tests/support/Timeouts.h"

#include <QDBusConnectionInterface>
#include <QFile>

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace
{

const int CLOCK_FACTOR = 50;
const int CLIENTS = 4;
const int UNDER_WAY = 64; // calls of a client
const int CALLS_A_HAPPENING = 40;
const int RESTS = 40; // of a life that is measured
const int CALLS_A_SHORT_LIFE = 25000;
const int RELOADS = 100;
const int UNREAD_CALLS = 20;
const int UNREAD_MAX = 400;
const int COMPLAINT_MAX = 4000; // characters

// What the life of a daemon may grow by behind its first third, and what a reload keeps by design.
const qint64 GROWTH_KB = 2048; // as much freed memory may lie idle
const qint64 RELOAD_KB = 100;  // with the sanitizer's own

// Freed memory goes back soon, so that what stays is what isn't freed. Leaks are looked for in the other lives: that needs
// whole stacks, which take long.
const char* const MEASURED_OPTIONS =
    "verify_asan_link_order=0:fast_unwind_on_malloc=1:detect_leaks=0:quarantine_size_mb=1:"
    "thread_local_quarantine_size_kb=64:allocator_release_to_os_interval_ms=100";

const QString SERVICE = QStringLiteral("velmar.haldend");
const QString OVERLAY = QStringLiteral("/videooverlay");

const board_operation FAULTS[] = {
    BOARD_OPERATION_FPGA_OPEN,  BOARD_OPERATION_FPGA_READ,       BOARD_OPERATION_FPGA_WRITE,
    BOARD_OPERATION_FPGA_SEEK,  BOARD_OPERATION_FPGA_IOCTL_READ, BOARD_OPERATION_FPGA_IOCTL_WRITE,
    BOARD_OPERATION_LIME_OPEN,  BOARD_OPERATION_LIME_MAP,        BOARD_OPERATION_I2C_OPEN,
    BOARD_OPERATION_I2C_SLAVE,  BOARD_OPERATION_I2C_READ,        BOARD_OPERATION_I2C_WRITE,
    BOARD_OPERATION_DISK_WRITE, BOARD_OPERATION_CNFS_WRITE};

// What a sanitizer, Qt or the C library say when something is wrong.
const char* const COMPLAINTS[] = {"Sanitizer", "runtime error:",   "QObject", "QDBus",  "QTimer",
                                  "QString",   "terminate called", "corrupt", "free()", "malloc()"};

} // namespace

CStorm::CStorm(const QVector<CInterfaces::SMethod>& rcMethods, quint32 u32Seed)
    : m_cMethods(rcMethods), m_cDraw(rcMethods, m_cFiles.path(), u32Seed), m_cClients(CLIENTS)
{
}

void CStorm::run(int iCalls)
{
    const int iLong = iCalls / 2;
    live({iLong, iLong * 3 / 4, RELOADS / 2, true});
    const int iLives = std::max(1, (iCalls - iLong) / CALLS_A_SHORT_LIFE);
    for (int i = 0; i < iLives; ++i)
        live({(iCalls - iLong) / iLives, 0, RELOADS / 2 / iLives, false});
}

void CStorm::live(const SLife& rsLife)
{
    begin(rsLife.bMeasured);
    std::vector<qint64> cKilobytes;
    const int iCallsARest = std::max(1, rsLife.iCalls / RESTS);
    const int iCallsAReload = std::max(1, rsLife.iCalls / (rsLife.iReloads + 1));
    for (int iCall = 1; iCall <= rsLife.iCalls; ++iCall) {
        call();
        if (m_cDraw.below(CALLS_A_HAPPENING) == 0)
            happen(iCall > rsLife.iCallsBeforeTrouble);
        if (iCall % iCallsAReload == 0 && iCall / iCallsAReload <= rsLife.iReloads)
            reload();
        if (rsLife.bMeasured && iCall % iCallsARest == 0) {
            rest(false);
            cKilobytes.push_back(m_pcScene->daemon().kilobytes("RssAnon:"));
        }
    }
    rest(true);
    if (rsLife.bMeasured)
        checkMemory(cKilobytes, rsLife.iReloads);
    end();
}

void CStorm::begin(bool bMeasured)
{
    ++m_sCounts.iLives;
    m_pcScene = std::make_unique<CScene>();
    m_pcCodec = std::make_unique<CCodecProcess>();
    m_pcCodec->useClock(fasterClock(CLOCK_FACTOR));
    CDaemonProcess& rcDaemon = m_pcScene->daemon();
    rcDaemon.setRedirections(
        QStringLiteral(">/dev/null 2>>'%1'").arg(m_cFiles.filePath(QStringLiteral("errors"))));
    if (bMeasured)
        rcDaemon.setVariable(QStringLiteral("ASAN_OPTIONS"), QLatin1String(MEASURED_OPTIONS));
    if (!m_pcScene->prepare())
        complain("no scene");
    rcDaemon.useClock(fasterClock(CLOCK_FACTOR));
    m_cOwner.clear();
    if (!m_pcCodec->start(m_pcScene->bus().address(), m_pcScene->board().directory()) || !m_pcScene->start())
        complain("no start");
    for (CStormClient& rcClient : m_cClients)
        if (!rcClient.start(m_pcScene->bus().address()))
            complain("no client");
    m_cOwner = rcDaemon.client().interface()->serviceOwner(SERVICE).value();
}

void CStorm::end()
{
    // What a board says of a daemon whose accesses were made to fail is no concern of this.
    m_pcScene->board().clearJudgements();
    m_pcUnread.reset();
    const QString cWrong = m_pcScene->end();
    if (!cWrong.isEmpty())
        complain(cWrong.toUtf8());
    checkErrors();
    m_pcCodec->end();
}

void CStorm::call()
{
    CStormClient& rcClient = m_cClients[static_cast<std::size_t>(m_cDraw.below(CLIENTS))];
    rcClient.post(m_cDraw.draw());
    ++m_sCounts.iCalls;
    if (!rcClient.receive(UNDER_WAY))
        complain(rcClient.error());
}

// All answers are there, and all texts gone.
void CStorm::rest(bool bFinal)
{
    CBoard& rcBoard = m_pcScene->board();
    rcBoard.clearFaults();
    if (bFinal)
        rcBoard.setCodecMode(BOARD_CODEC_OK);
    CDaemonProcess& rcDaemon = m_pcScene->daemon();
    if (bFinal) {
        // The board judges what clients have put there without a limit. A reload maps it again if that had failed.
        rcDaemon.send(QStringLiteral("/debug"), QStringLiteral("reload_hardware_config"), {});
        rcDaemon.send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_position"), {0, 0});
    }
    rcDaemon.send(OVERLAY, QStringLiteral("destroy_all_texts"), {});
    if (!rcDaemon.settle())
        complain("the daemon doesn't answer");
    for (CStormClient& rcClient : m_cClients)
        if (!rcClient.receive(0))
            complain(rcClient.error());
    checkName();
    checkErrors();
}

void CStorm::happen(bool bCodecTrouble)
{
    switch (m_cDraw.below(10)) {
    case 0:
        return vanish();
    case 1:
        return sendNoText();
    case 2:
        return sendHalf();
    case 3:
        return sendHuge();
    case 4:
        return dontRead();
    case 5:
        return m_pcScene->board().clearFaults();
    case 6:
        return m_pcScene->board().setCameraPlugged(m_cDraw.percent(50));
    case 7:
        return changeCodec(bCodecTrouble);
    default:
        return fail();
    }
}

void CStorm::vanish()
{
    ++m_sCounts.iVanished;
    CStormClient& rcClient = m_cClients[static_cast<std::size_t>(m_cDraw.below(CLIENTS))];
    for (int i = 0; i < 10; ++i)
        rcClient.post(m_cDraw.draw());
    if (!rcClient.start(m_pcScene->bus().address()))
        complain("no client");
}

// The bus throws such a client out.
void CStorm::sendNoText()
{
    CRawBusClient cClient;
    if (!cClient.start(m_pcScene->bus().address()))
        complain("no raw client");
    if (cClient.call(OVERLAY, QStringLiteral("adjust_character_set_to_locale"), "\xff\xfe\xc0\x80") ||
        !cClient.isDropped())
        complain("text that is none was let through");
    ++m_sCounts.iDropped;
}

void CStorm::sendHalf()
{
    CRawBusClient cClient;
    if (!cClient.start(m_pcScene->bus().address()) || !cClient.sendHalf())
        complain("no raw client");
    ++m_sCounts.iVanished;
}

void CStorm::sendHuge()
{
    ++m_sCounts.iHuge;
    CStormClient& rcClient = m_cClients[static_cast<std::size_t>(m_cDraw.below(CLIENTS))];
    const int iHandle = 1 + m_cDraw.below(16);
    const auto methodOf = [this](const char* pszName) {
        return std::find_if(m_cMethods.begin(), m_cMethods.end(),
                            [=](const CInterfaces::SMethod& rs) { return rs.cName == pszName; });
    };
    rcClient.post({
        {"/videooverlay", "set_text_string", {iHandle, m_cDraw.hugeText()}},
        &*methodOf("set_text_string"),
        false
    });
    rcClient.post({
        {"/videooverlay", "get_text_string", {iHandle}},
        &*methodOf("get_text_string"), false
    });
    rcClient.post({
        {"/videooverlay", "set_text_string", {iHandle, QByteArray("short")}},
        &*methodOf("set_text_string"),
        false
    });
    m_sCounts.iCalls += 3;
}

void CStorm::dontRead()
{
    if (m_pcUnread == nullptr || m_sCounts.iUnread % UNREAD_MAX == 0) {
        m_pcUnread = std::make_unique<CCaller>();
        if (!m_pcUnread->start(m_pcScene->bus().address()))
            complain("no client");
    }
    for (int i = 0; i < UNREAD_CALLS; ++i)
        m_pcUnread->post({"/videooverlay", "get_text_string", {1 + i}});
    m_pcUnread->write();
    m_sCounts.iUnread += UNREAD_CALLS;
    m_sCounts.iCalls += UNREAD_CALLS;
}

void CStorm::fail()
{
    ++m_sCounts.iFaults;
    CBoard::SFault sFault;
    sFault.eOperation = FAULTS[m_cDraw.below(static_cast<int>(std::size(FAULTS)))];
    sFault.u32Nth = static_cast<quint32>(m_cDraw.percent(50) ? 1 : 1 + m_cDraw.below(20));
    sFault.u32Count = static_cast<quint32>(1 + m_cDraw.below(50));
    sFault.bShort = m_cDraw.percent(30);
    m_pcScene->board().setFault(sFault);
}

// In a mode that ends it, or after that, it may have to be started again.
void CStorm::changeCodec(bool bTrouble)
{
    ++m_sCounts.iCodecModes;
    CBoard& rcBoard = m_pcScene->board();
    const int iMode = bTrouble ? m_cDraw.below(BOARD_CODEC_MODE_COUNT) : BOARD_CODEC_OK;
    rcBoard.setCodecMode(static_cast<board_codec_mode>(iMode));
    if (rcBoard.codecRuns())
        return;
    rcBoard.setCodecMode(BOARD_CODEC_OK);
    m_pcCodec->end();
    if (!m_pcCodec->start(m_pcScene->bus().address(), rcBoard.directory()))
        complain("no codec");
}

// Opens and maps the devices, which fail at no other time.
void CStorm::reload()
{
    if (m_cDraw.percent(50))
        fail();
    ++m_sCounts.iReloads;
    m_pcScene->daemon().send(QStringLiteral("/debug"), QStringLiteral("reload_hardware_config"), {});
}

void CStorm::checkName()
{
    const QString cOwner = m_pcScene->daemon().client().interface()->serviceOwner(SERVICE).value();
    if (cOwner != m_cOwner)
        complain("the name changed hands");
}

// Forgets what was looked at.
void CStorm::checkErrors()
{
    if (!complaint().isEmpty())
        complain("a complaint");
    QFile::resize(m_cFiles.filePath(QStringLiteral("errors")), 0);
}

// The first one on standard error, and what is around it.
QByteArray CStorm::complaint() const
{
    QFile cErrors(m_cFiles.filePath(QStringLiteral("errors")));
    if (!cErrors.open(QIODevice::ReadOnly))
        return "no standard error";
    const QByteArray cText = cErrors.readAll();
    for (const char* pszComplaint : COMPLAINTS)
        if (cText.contains(pszComplaint))
            return cText.mid(std::max(0, cText.indexOf(pszComplaint) - 200), COMPLAINT_MAX);
    return {};
}

// Compares what is left between bursts: the least of the middle third with the least of the last.
void CStorm::checkMemory(const std::vector<qint64>& rcKilobytes, int iReloads)
{
    const auto iThird = static_cast<std::ptrdiff_t>(rcKilobytes.size() / 3);
    const auto leastFrom = [&](std::ptrdiff_t iFrom, std::ptrdiff_t iTo) {
        return *std::min_element(rcKilobytes.begin() + iFrom, rcKilobytes.begin() + iTo);
    };
    const qint64 iBefore = leastFrom(iThird, 2 * iThird);
    const qint64 iAfter = leastFrom(2 * iThird, static_cast<std::ptrdiff_t>(rcKilobytes.size()));
    m_cMemory = "memory " + QByteArray::number(iBefore) + " kB in the second third of the long life, " +
                QByteArray::number(iAfter) + " kB in the last";
    if (iBefore < 0 || iAfter - iBefore > GROWTH_KB + iReloads * 2 / 3 * RELOAD_KB)
        complain(m_cMemory);
}

QByteArray CStorm::describe() const
{
    qint64 iAnswers = 0;
    qint64 iErrors = 0;
    for (const CStormClient& rcClient : m_cClients) {
        iAnswers += rcClient.answers();
        iErrors += rcClient.errors();
    }
    const auto n = [](qint64 iValue) { return QByteArray::number(iValue); };
    return n(m_sCounts.iCalls) + " calls, " + n(iAnswers) + " answers looked at, " + n(iErrors) +
           " of them errors for wrong types\n" + n(m_sCounts.iLives) + " lives, " + n(m_sCounts.iReloads) +
           " reloads, " + n(m_sCounts.iFaults) + " board faults, " + n(m_sCounts.iCodecModes) +
           " codec modes, " + n(m_sCounts.iVanished) + " clients vanished, " + n(m_sCounts.iDropped) +
           " thrown out by the bus, " + n(m_sCounts.iUnread) + " answers never read, " + n(m_sCounts.iHuge) +
           " texts of megabytes\n" + m_cMemory;
}

void CStorm::complain(const QByteArray& rcWhat)
{
    // They would end the program at the scene's end, and hide what is thrown here.
    if (m_pcScene != nullptr)
        m_pcScene->board().clearJudgements();
    throw std::runtime_error((rcWhat + "\nafter " + describe() + '\n' + complaint()).toStdString());
}
