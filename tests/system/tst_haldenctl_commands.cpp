/* SPDX-License-Identifier: MIT */
/* haldenctl against the daemon: every method is reached, and every command does what it says. */
#include "ctl/CommandTable.h"
#include "ctl/Interfaces.h"
#include "tests/support/CBusMonitor.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CHaldenctl.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Timeouts.h"
#include "tests/system/haldenctl_samples.h"

#include <QElapsedTimer>
#include <QFileInfo>
#include <QSet>
#include <QtTest>

#include <csignal>

namespace
{

/// "debug.reload_hardware_config" of every method there is.
QSet<QString> allMethods()
{
    QSet<QString> cMethods;
    for (const QString& rcObject : objectNames())
        for (const SMember& rsMember : membersOf(rcObject))
            if (!rsMember.bSignal)
                cMethods << rcObject + QLatin1Char('.') + rsMember.cName;
    return cMethods;
}

/// The methods of the daemon that were called, as dbus-monitor saw it.
QSet<QString> calledMethods(const QByteArray& rcSeen)
{
    QSet<QString> cMethods;
    static const QRegularExpression cCall(
        QStringLiteral("^method call .*interface=velmar\\.haldend\\.(\\w+); member=(\\w+)$"),
        QRegularExpression::MultilineOption);
    QRegularExpressionMatchIterator cMatches = cCall.globalMatch(QString::fromUtf8(rcSeen));
    while (cMatches.hasNext()) {
        const QRegularExpressionMatch cMatch = cMatches.next();
        cMethods << cMatch.captured(1) + QLatin1Char('.') + cMatch.captured(2);
    }
    return cMethods;
}

/// A word that each type takes.
QString sampleOf(const QString& rcType)
{
    return rcType == QLatin1String("s") ? QStringLiteral("fpga") : QStringLiteral("1");
}

} // namespace

class TestHaldenctlCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void a_call_reaches_every_method();
    void a_row_names_what_its_command_calls();
    void places_the_window();
    void works_on_texts();
    void finds_texts_by_id();
    void lists_texts_far_beyond_what_a_bus_takes_at_once();
    void tells_what_is_cut();
    void shows_messages();
    void steers_the_counter();
    void records_and_plays();
    void saves_an_image_and_waits();
    void reports_an_image_that_could_not_be_written();
    void names_files_absolutely();
    void follows_the_counter();
    void monitors_signals_and_the_daemon();
    void waits_for_what_was_said();
    void a_file_of_commands_is_carried_out_in_order();
    void a_file_of_commands_names_the_lines_that_failed();
    void a_thousand_texts_take_no_time();

private:
    int ctl(const QStringList& rcArguments, const QByteArray& rcInput = QByteArray())
    {
        return m_pcCtl->run(rcArguments, rcInput);
    }
    QVariant get(const char* pszObject, const char* pszMethod, const QVariantList& rcArguments = {})
    {
        return m_pcScene->daemon()
            .call(QLatin1Char('/') + QLatin1String(pszObject), QLatin1String(pszMethod), rcArguments)
            .arguments()
            .value(0);
    }

    std::unique_ptr<CVideoScene> m_pcScene;
    std::unique_ptr<CHaldenctl> m_pcCtl;
};

void TestHaldenctlCommands::init()
{
    m_pcScene = std::make_unique<CVideoScene>();
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
    m_pcCtl = std::make_unique<CHaldenctl>(m_pcScene->bus().address());
    m_pcCtl->setFolder(m_pcScene->file(""));
}

void TestHaldenctlCommands::cleanup()
{
    if (m_pcScene->daemon().process().state() == QProcess::Running && m_pcScene->daemon().settle())
        QCoreApplication::processEvents();
    for (const QString& rcLine : m_pcScene->daemon().unexpectedOutput())
        if (rcLine.startsWith(QLatin1String("DEBUG_print")) || rcLine.contains(QLatin1String("=L:(")) ||
            rcLine.startsWith(QLatin1String("QMetaObject::invokeMethod: No such method")))
            m_pcScene->announce(rcLine);
    QCOMPARE(m_pcScene->end(), QString());
    m_pcScene.reset();
}

void TestHaldenctlCommands::a_call_reaches_every_method()
{
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_pcScene->bus().address()));
    QByteArray cCommands;
    for (const QString& rcObject : objectNames())
        for (const SMember& rsMember : membersOf(rcObject)) {
            if (rsMember.bSignal)
                continue;
            QStringList cWords{QStringLiteral("call"), rcObject, rsMember.cName};
            for (const QString& rcType : rsMember.cInTypes)
                cWords << sampleOf(rcType);
            cCommands += cWords.join(QLatin1Char(' ')).toUtf8() + '\n';
        }
    // Those that are not allowed now answer 2.
    QCOMPARE(ctl({"-"}, cCommands), 1);
    for (const QString& rcLine : m_pcCtl->errors().split(QLatin1Char('\n')))
        QVERIFY2(rcLine.contains(QLatin1String("(2)")) || rcLine.contains(QLatin1String("(3)")),
                 qPrintable(rcLine));
    QVERIFY(cMonitor.waitFor("member=fpga_disable_frame_generator"));
    QCOMPARE(allMethods().size(), 109);
    QCOMPARE(allMethods() - calledMethods(cMonitor.seen()), QSet<QString>());
}

void TestHaldenctlCommands::a_row_names_what_its_command_calls()
{
    // These have no end, or no calls of their own.
    const QStringList cLeftOut{"counter follow", "monitor", "call", "-"};
    QVERIFY(m_pcCtl->run({"text", "new", "x"}) == 0);
    for (const SCommand& rsCommand : commandTable()) {
        const QString cName = QString::fromLatin1(rsCommand.pszWords);
        if (cLeftOut.contains(cName))
            continue;
        CBusMonitor cMonitor;
        QVERIFY(cMonitor.start(m_pcScene->bus().address()));
        const int iStatus = ctl(sampleOfCommand(cName));
        // Some aren't allowed at their turn; none is misunderstood.
        QVERIFY2(iStatus == 0 || iStatus == 1, m_pcCtl->describe());
        QVERIFY(m_pcScene->daemon().settle());
        QVERIFY(cMonitor.waitFor("member=Introspect"));
        QSet<QString> cCalled = calledMethods(cMonitor.seen());
        for (const QString& rcCall : QString::fromLatin1(rsCommand.pszCalls).split(QLatin1Char(' ')))
            cCalled.remove(rcCall);
        if (cName == QLatin1String("doctor"))
            continue;
        QVERIFY2(cCalled.isEmpty(),
                 qPrintable(cName + QStringLiteral(" calls ") + cCalled.values().join(' ')));
    }
}

void TestHaldenctlCommands::places_the_window()
{
    QCOMPARE(ctl({"display", "size", "360", "288"}), 0);
    QCOMPARE(ctl({"display", "position", "340", "270"}), 0);
    QCOMPARE(m_pcCtl->output() + m_pcCtl->errors(), QString());
    QCOMPARE(m_pcScene->board().limeRegister(CBoard::LIME_DISPLAY, 0x124), 270U << 16 | 340U);
    QCOMPARE(get("videodisplay", "get_displayed_video_width"), QVariant(360));
    const std::uint32_t u32Layers = m_pcScene->board().limeRegister(CBoard::LIME_DISPLAY, 0x100);
    QCOMPARE(ctl({"display", "off"}), 0);
    QVERIFY(m_pcScene->board().limeRegister(CBoard::LIME_DISPLAY, 0x100) != u32Layers);
    QCOMPARE(ctl({"display", "on"}), 0);
    QCOMPARE(m_pcScene->board().limeRegister(CBoard::LIME_DISPLAY, 0x100), u32Layers);
}

void TestHaldenctlCommands::works_on_texts()
{
    QCOMPARE(ctl({"text", "new", "Manhole 17", "--at", "20,2", "--color", "yellow,navy@half", "--id", "7"}),
             0);
    QCOMPARE(m_pcCtl->output(), QString("1"));
    QCOMPARE(ctl({"text", "new", "--hidden", "--", "-5"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("2"));
    QCOMPARE(ctl({"text", "get", "1"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("    1  shown  at 20,2  yellow on navy@half  id 7  \"Manhole 17\""));
    QCOMPARE(ctl({"text", "set", "1", "Manhole 18"}), 0);
    QCOMPARE(ctl({"text", "move", "1", "3,4"}), 0);
    QCOMPARE(ctl({"text", "color", "1", "red"}), 0);
    QCOMPARE(ctl({"text", "id", "1", "8"}), 0);
    QCOMPARE(ctl({"text", "hide", "1"}), 0);
    QCOMPARE(ctl({"text", "list"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("    1  hidden at 3,4  red on navy@half  id 8  \"Manhole 18\"\n"
                                        "    2  hidden at 0,0  white on navy  \"-5\"\n"
                                        "handles 1 to 200 asked for, texts found: 2"));
    QCOMPARE(ctl({"text", "show-all"}), 0);
    QVERIFY(get("videooverlay", "is_text_visible", {2}).toBool());
    QCOMPARE(ctl({"text", "hide-all"}), 0);
    QVERIFY(!get("videooverlay", "is_text_visible", {2}).toBool());
    QCOMPARE(ctl({"text", "delete", "2"}), 0);
    QCOMPARE(ctl({"text", "show", "2"}), 1);
    QCOMPARE(m_pcCtl->errors(),
             QString("haldenctl: there is no text with the handle 2; see haldenctl text list"));
    QCOMPARE(ctl({"text", "delete-all"}), 0);
    QCOMPARE(ctl({"text", "list", "--up-to", "5", "--quiet"}), 0);
    QCOMPARE(m_pcCtl->output(), QString());
    QCOMPARE(ctl({"overlay", "show"}), 0);
    QVERIFY(get("videooverlay", "is_overlay_visible").toBool());
    QCOMPARE(ctl({"overlay", "hide"}), 0);
    QVERIFY(!get("videooverlay", "is_overlay_visible").toBool());
}

void TestHaldenctlCommands::finds_texts_by_id()
{
    QCOMPARE(ctl({"text", "new", "a", "--id", "40"}), 0);
    QCOMPARE(ctl({"text", "set", "--id", "40", "b"}), 0);
    QCOMPARE(ctl({"text", "move", "5,6", "--id", "40"}), 0);
    QCOMPARE(ctl({"text", "hide", "--id", "40"}), 0);
    QCOMPARE(ctl({"text", "get", "--id", "40"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("    1  hidden at 5,6  white on navy  id 40  \"b\""));
    QCOMPARE(ctl({"text", "delete", "--id", "41"}), 1);
    QCOMPARE(m_pcCtl->errors(), QString("haldenctl: there is no text with the id 41"));
}

void TestHaldenctlCommands::lists_texts_far_beyond_what_a_bus_takes_at_once()
{
    QByteArray cCommands;
    for (int iText = 0; iText < 150; ++iText)
        cCommands += "text new x\n";
    QCOMPARE(ctl({"-"}, cCommands), 0);
    QCOMPARE(ctl({"text", "list", "--up-to", "1000"}), 0);
    QCOMPARE(m_pcCtl->output().count(QLatin1Char('\n')), 150);
    QVERIFY(m_pcCtl->output().endsWith("handles 1 to 1000 asked for, texts found: 150"));
}

void TestHaldenctlCommands::tells_what_is_cut()
{
    QCOMPARE(ctl({"text", "new", "Manhole 17", "--at", "45,0"}), 0);
    QCOMPARE(m_pcCtl->errors(),
             QString("haldenctl: warning: \"17\" is cut off: from column 45 on 8 of the 10 letters fit"));
    QCOMPARE(ctl({"text", "set", "1", "Manhole"}), 0);
    QCOMPARE(m_pcCtl->errors(), QString());
    QCOMPARE(ctl({"text", "set", "1", "Manhole 18"}), 0);
    QVERIFY2(m_pcCtl->errors().contains("\"18\" is cut off"), m_pcCtl->describe());
    QCOMPARE(ctl({"text", "move", "1", "50,0", "--quiet"}), 0);
    QCOMPARE(m_pcCtl->errors(), QString());
    QCOMPARE(ctl({"text", "move", "1", "51,0"}), 0);
    QVERIFY2(m_pcCtl->errors().contains("\"nhole 18\" is cut off"), m_pcCtl->describe());
    QCOMPARE(ctl({"text", "move", "1", "60,0", "--force"}), 0);
    QVERIFY2(m_pcCtl->errors().contains("nothing of \"Manhole 18\" is seen"), m_pcCtl->describe());
}

void TestHaldenctlCommands::shows_messages()
{
    QCOMPARE(ctl({"message", "Saved", "--at", "24,13", "--color", "15,12", "--seconds", "9999"}), 0);
    QCOMPARE(get("videooverlay", "get_text_string", {1}), QVariant("Saved"));
    QCOMPARE(ctl({"text", "get", "1"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("    1  shown  at 24,13  black on yellow  \"Saved\""));
    QCOMPARE(ctl({"message", "clear"}), 0);
    QCOMPARE(get("videooverlay", "get_text_string", {1}), QVariant(QString()));
}

void TestHaldenctlCommands::steers_the_counter()
{
    QCOMPARE(ctl({"counter", "pause"}), 1);
    QCOMPARE(m_pcCtl->errors(), QString("haldenctl: the counter isn't active: haldenctl counter start"));
    QCOMPARE(ctl({"counter", "set", "0:12:30"}), 0);
    QCOMPARE(ctl({"counter", "show", "--at", "44,25"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("1"));
    QCOMPARE(get("videooverlay", "get_text_string", {1}), QVariant("  0:12:30"));
    QCOMPARE(ctl({"counter", "show"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("1"));
    QCOMPARE(ctl({"counter", "start", "--sender", "2"}), 2);
    QCOMPARE(ctl({"counter", "start", "--sender", "1"}), 0);
    QCOMPARE(ctl({"counter", "start"}), 1);
    QCOMPARE(ctl({"counter", "pause"}), 0);
    QCOMPARE(ctl({"counter", "set", "1:2:3:4", "--sender", "0"}), 1);
    QCOMPARE(m_pcCtl->errors(), QString("haldenctl: the counter is sender 1's, and ignores sender 0"));
    QCOMPARE(ctl({"counter", "set", "1:2:3:4"}), 0);
    QCOMPARE(ctl({"counter", "get"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("1:02:03, active, sender 1"));
    QCOMPARE(ctl({"counter", "resume"}), 0);
    QCOMPARE(ctl({"counter", "stop"}), 0);
    QCOMPARE(ctl({"counter", "get"}), 0);
    QVERIFY(m_pcCtl->output().endsWith("not active"));
}

void TestHaldenctlCommands::records_and_plays()
{
    QCOMPARE(ctl({"record", "start", "film.ts"}), 0);
    QCOMPARE(m_pcCtl->output(), QString("recording to ") + m_pcScene->file("film.ts"));
    QCOMPARE(ctl({"play", "start", "film.ts"}), 1);
    QCOMPARE(m_pcCtl->errors(), QString("haldenctl: not allowed now (2): a recording is running"));
    QCOMPARE(ctl({"record", "pause"}), 0);
    QVERIFY(m_pcScene->is("is_video_recording_paused"));
    QCOMPARE(ctl({"record", "time"}), 0);
    QVERIFY(m_pcCtl->output().startsWith("0:00:0"));
    QCOMPARE(ctl({"record", "resume"}), 0);
    QCOMPARE(ctl({"record", "stop", "--quiet"}), 0);
    QCOMPARE(m_pcCtl->output(), QString());
    QCOMPARE(ctl({"play", "start", "film.ts"}), 0);
    QCOMPARE(ctl({"play", "pause"}), 0);
    QCOMPARE(ctl({"play", "resume"}), 0);
    QCOMPARE(ctl({"play", "stop"}), 0);
    QCOMPARE(ctl({"play", "stop"}), 1);
    QVERIFY(m_pcCtl->errors().startsWith("haldenctl: not allowed now (2): there is nothing to do it to"));
    m_pcScene->board().setCodecMode(BOARD_CODEC_REFUSE);
    QCOMPARE(ctl({"record", "start", "film.ts"}), 1);
    QCOMPARE(m_pcCtl->errors(),
             QString("haldenctl: the codec service or the hardware failed (1): every command is "
                     "refused from now on: restart haldend"));
}

void TestHaldenctlCommands::saves_an_image_and_waits()
{
    QCOMPARE(ctl({"image", "save", "a.bmp", "--wait"}), 0);
    QCOMPARE(QFileInfo(m_pcScene->file("a.bmp")).size(), qint64{1658934});
    QCOMPARE(ctl({"image", "show", "a.bmp"}), 0);
    QCOMPARE(ctl({"image", "clear"}), 0);
    QCOMPARE(ctl({"image", "show", "none.bmp"}), 1);
    QVERIFY2(m_pcCtl->errors().startsWith("haldenctl: the image file can't be opened (3)"),
             m_pcCtl->describe());
    QCOMPARE(ctl({"image", "clear"}), 0);
    QCOMPARE(ctl({"record", "start", "film.ts"}), 0);
}

void TestHaldenctlCommands::reports_an_image_that_could_not_be_written()
{
    QCOMPARE(ctl({"image", "save", "nowhere/a.bmp", "--wait"}), 1);
    QVERIFY2(m_pcCtl->errors().startsWith("haldenctl: the image file can't be opened (3)"),
             m_pcCtl->describe());
}

void TestHaldenctlCommands::names_files_absolutely()
{
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_pcScene->bus().address()));
    QCOMPARE(ctl({"record", "start", "film.ts"}), 0);
    QVERIFY(cMonitor.waitFor("member=record"));
    QVERIFY(cMonitor.waitFor("string \"" + m_pcScene->file("film.ts").toUtf8() + "\""));
}

/// The lines that a process without end has said, when there are so many.
static QStringList linesOf(QProcess& rcProcess, int iLines)
{
    QStringList cLines;
    while (cLines.size() < iLines) {
        if (!rcProcess.canReadLine() && !rcProcess.waitForReadyRead(TIMEOUT_PROCESS_MS))
            return cLines;
        while (rcProcess.canReadLine())
            cLines << QString::fromUtf8(rcProcess.readLine()).trimmed();
    }
    return cLines;
}

void TestHaldenctlCommands::follows_the_counter()
{
    QCOMPARE(ctl({"counter", "set", "0:59:58"}), 0);
    CChildProcess cFollow;
    m_pcCtl->start(cFollow, {"counter", "follow"});
    QVERIFY(cFollow.waitForStarted());
    QCOMPARE(ctl({"counter", "start"}), 0);
    const QStringList cLines = linesOf(cFollow, 2);
    QVERIFY2(cLines.contains("counter 1:00:00"), qPrintable(cLines.join('\n')));
    cFollow.terminate();
    QVERIFY(cFollow.waitForFinished());
}

void TestHaldenctlCommands::monitors_signals_and_the_daemon()
{
    CChildProcess cMonitor;
    m_pcCtl->start(cMonitor, {"monitor"});
    QStringList cLines = linesOf(cMonitor, 1);
    QVERIFY2(cLines.value(0).endsWith("  haldend is on the bus"), qPrintable(cLines.value(0)));
    QVERIFY(QRegularExpression("^\\d\\d:\\d\\d:\\d\\d\\.\\d{3}  ").match(cLines.value(0)).hasMatch());
    QCOMPARE(ctl({"image", "save", "a.bmp"}), 0);
    QVERIFY2(linesOf(cMonitor, 1).value(0).endsWith("  image saved: done (0)"), "no signal");
    m_pcScene->board().setCameraPlugged(false);
    QVERIFY2(linesOf(cMonitor, 1).value(0).endsWith("  input none (1)"), "no signal");
    QVERIFY(m_pcScene->daemon().endBySignal(SIGTERM));
    QVERIFY2(linesOf(cMonitor, 1).value(0).endsWith("  haldend is gone"), "no signal");
    QVERIFY(m_pcScene->daemon().startAndWaitForName());
    QVERIFY2(linesOf(cMonitor, 1).value(0).endsWith("  haldend is on the bus"), "no signal");
    m_pcScene->bus().stop();
    QVERIFY(cMonitor.waitForFinished(TIMEOUT_PROCESS_MS));
    QCOMPARE(cMonitor.exitCode(), 3);
    QCOMPARE(cMonitor.readAllStandardError(), QByteArray("haldenctl: the bus is gone\n"));
}

void TestHaldenctlCommands::waits_for_what_was_said()
{
    QCOMPARE(ctl({"wait"}), 0);
    QCOMPARE(ctl({"wait", "--for", "idle"}), 0);
    QCOMPARE(ctl({"wait", "--for", "input"}), 0);
    QCOMPARE(ctl({"wait", "--for", "recording", "--timeout", "1"}), 1);
    QCOMPARE(m_pcCtl->errors(), QString("haldenctl: waited 1 s for recording"));
    CChildProcess cWait;
    m_pcCtl->start(cWait, {"wait", "--for", "no-input"});
    QVERIFY(cWait.waitForStarted());
    m_pcScene->board().setCameraPlugged(false);
    QVERIFY(cWait.waitForFinished(TIMEOUT_PROCESS_MS));
    QCOMPARE(cWait.exitCode(), 0);
    QVERIFY(m_pcScene->daemon().endBySignal(SIGTERM));
    m_pcCtl->start(cWait, {"wait", "--timeout", "20"});
    QVERIFY(cWait.waitForStarted());
    QVERIFY(m_pcScene->daemon().startAndWaitForName());
    // It may have ended while the daemon was waited for.
    QVERIFY(cWait.state() == QProcess::NotRunning || cWait.waitForFinished(TIMEOUT_PROCESS_MS));
    QCOMPARE(cWait.exitCode(), 0);
}

void TestHaldenctlCommands::a_file_of_commands_is_carried_out_in_order()
{
    QCOMPARE(ctl({"-"}, "# made by hand\n\ntext new \"Manhole 17\" --id 9\ntext set --id 9 \"Manhole 18\"\n"
                        "  text get --id 9\ntext set 1 b\ntext get 1\nrecord start film.ts\nrecord stop\n"),
             0);
    QCOMPARE(
        m_pcCtl->output(),
        QString("1\n    1  shown  at 0,0  white on navy  id 9  \"Manhole 18\"\n"
                "    1  shown  at 0,0  white on navy  id 9  \"b\"\nrecording to %1\nthe recording is ended")
            .arg(m_pcScene->file("film.ts")));
}

void TestHaldenctlCommands::a_file_of_commands_names_the_lines_that_failed()
{
    QCOMPARE(ctl({"-"}, "text set 5 x\ntext sett\noverlay show\ntext new \"\xd0\x96\"\ntext new x --json\n"),
             1);
    QCOMPARE(
        m_pcCtl->errors(),
        QString(
            "haldenctl: line 1: there is no text with the handle 5; see haldenctl text list\n"
            "haldenctl: line 2: text takes one of: new, set, move, color, id, show, hide, delete, get, list, "
            "show-all, hide-all, delete-all\n"
            "haldenctl: line 4: warning: \"\u0416\" needs these letters: Cyrillic (haldenctl overlay locale "
            "ru_RU); which are in use can't be asked for\n"
            "haldenctl: line 5: --json has to stand on the command line"));
    QVERIFY(get("videooverlay", "is_overlay_visible").toBool());
    QCOMPARE(ctl({"-"}, "-\n"), 2);
    QCOMPARE(m_pcCtl->errors(), QString("haldenctl: line 1: - can't stand in a file of commands"));
}

// Under a policy, on a busy machine and with sanitizers a hundred times the goal is still far from a call's time-out.
void TestHaldenctlCommands::a_thousand_texts_take_no_time()
{
    QCOMPARE(ctl({"text", "new", "x"}), 0);
    QByteArray cCommands;
    for (int iText = 0; iText < 1000; ++iText)
        cCommands += "text set 1 \"number " + QByteArray::number(iText) + "\"\n";
    QElapsedTimer cTimer;
    cTimer.start();
    QCOMPARE(ctl({"-"}, cCommands), 0);
    const qint64 iTook = cTimer.elapsed();
    QCOMPARE(m_pcCtl->errors(), QString());
    QCOMPARE(get("videooverlay", "get_text_string", {1}), QVariant("number 999"));
    qInfo("1000 texts: %lld ms", iTook);
    QVERIFY(iTook < 20000);
}

QTEST_GUILESS_MAIN(TestHaldenctlCommands)

#include "tst_haldenctl_commands.moc"
