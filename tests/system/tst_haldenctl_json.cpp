/* SPDX-License-Identifier: MIT */
/* What haldenctl --json prints, against the schema of docs/haldenctl.md. */
#include "ctl/CommandTable.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CHaldenctl.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Timeouts.h"
#include "tests/system/haldenctl_samples.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

class TestHaldenctlJson : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void the_schema_refuses_what_does_not_fit_data();
    void the_schema_refuses_what_does_not_fit();
    void every_command_fits();
    void failures_fit();
    void signals_fit();
    void numbers_have_words();
    void a_file_of_commands_prints_a_line_each();

private:
    /// The schema's complaints about these lines; empty if they fit.
    static QString misfits(const QByteArray& rcLines);

    /// Runs a command, and takes note of its line.
    int ctl(const QStringList& rcArguments, const QByteArray& rcInput = QByteArray())
    {
        const int iStatus = m_pcCtl->run(QStringList("--json") + rcArguments, rcInput);
        m_cLines += m_pcCtl->output().toUtf8() + '\n';
        return iStatus;
    }

    std::unique_ptr<CVideoScene> m_pcScene;
    std::unique_ptr<CHaldenctl> m_pcCtl;
    QByteArray m_cLines;
};

void TestHaldenctlJson::init()
{
    m_pcScene = std::make_unique<CVideoScene>();
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
    m_pcCtl = std::make_unique<CHaldenctl>(m_pcScene->bus().address());
    m_pcCtl->setFolder(m_pcScene->file(""));
    m_cLines.clear();
}

void TestHaldenctlJson::cleanup()
{
    QVERIFY(m_pcScene->daemon().settle());
    QCoreApplication::processEvents();
    for (const QString& rcLine : m_pcScene->daemon().unexpectedOutput())
        m_pcScene->announce(rcLine);
    QCOMPARE(m_pcScene->end(), QString());
}

QString TestHaldenctlJson::misfits(const QByteArray& rcLines)
{
    CChildProcess cPython;
    cPython.start(QStringLiteral(PYTHON), {QStringLiteral(CHECK_JSON), QStringLiteral(SCHEMA_DOCUMENT)});
    cPython.write(rcLines);
    cPython.closeWriteChannel();
    if (!cPython.waitForFinished(TIMEOUT_PROCESS_MS))
        return QStringLiteral("the check doesn't end");
    const QString cSaid = QString::fromUtf8(cPython.readAllStandardError());
    return cPython.exitCode() == 0 || !cSaid.isEmpty() ? cSaid : QStringLiteral("the check failed");
}

void TestHaldenctlJson::the_schema_refuses_what_does_not_fit_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("no status") << QByteArray(R"({"command":"overlay show"})");
    QTest::newRow("unknown name") << QByteArray(R"({"command":"overlay show","status":0,"colour":1})");
    QTest::newRow("status without its values") << QByteArray(R"({"command":"status","status":0})");
    QTest::newRow("no result") << QByteArray(R"({"command":"record stop","status":0})");
    QTest::newRow("error and success") << QByteArray(R"({"command":"status","status":0,"error":"x"})");
    QTest::newRow("unknown signal") << QByteArray(R"({"signal":"hello"})");
}

void TestHaldenctlJson::the_schema_refuses_what_does_not_fit()
{
    QFETCH(QByteArray, line);
    QVERIFY(!misfits(line + '\n').isEmpty());
}

void TestHaldenctlJson::every_command_fits()
{
    // These have no end, or print what others do.
    const QStringList cLeftOut{"counter follow", "monitor", "-"};
    QCOMPARE(ctl({"text", "new", "x"}), 0);
    int iCommands = 1;
    for (const SCommand& rsCommand : commandTable()) {
        const QString cName = QString::fromLatin1(rsCommand.pszWords);
        if (cLeftOut.contains(cName))
            continue;
        ++iCommands;
        const int iStatus = ctl(sampleOfCommand(cName));
        const QJsonObject cObject = m_pcCtl->object();
        QVERIFY2(cObject.value("command").toString() == cName, m_pcCtl->describe());
        QCOMPARE(cObject.value("status").toInt(-1), iStatus);
    }
    QCOMPARE(m_cLines.count('\n'), iCommands);
    QCOMPARE(misfits(m_cLines), QString());
}

void TestHaldenctlJson::failures_fit()
{
    QCOMPARE(ctl({"text", "show", "9"}), 1);
    QCOMPARE(m_pcCtl->object().value("error").toString(),
             QString("there is no text with the handle 9; see haldenctl text list"));
    QVERIFY(m_pcCtl->errors().startsWith("haldenctl: there is no text"));
    QCOMPARE(ctl({"display", "size", "0", "1"}), 2);
    QCOMPARE(ctl({"nonsense"}), 2);
    QCOMPARE(ctl({"record", "stop"}), 1);
    QCOMPARE(ctl({"--bus", "unix:path=/nonexistent", "status"}), 3);
    QCOMPARE(ctl({"text", "new", "a text that leaves the grid", "--at", "40,0"}), 0);
    QCOMPARE(m_pcCtl->object().value("warnings").toArray().size(), 1);
    QFile cFile(m_pcScene->file("fpga.cnf"));
    QVERIFY(cFile.open(QIODevice::WriteOnly));
    cFile.write("SRIC: { sinr = 300; };\n");
    cFile.close();
    QCOMPARE(ctl({"check-registers", "fpga.cnf"}), 1);
    const QString cDefault = m_pcScene->board().directory() + "/cnfs/fpga.cnf";
    QCOMPARE(ctl({"check-registers", "--diff", "fpga.cnf", cDefault}), 0);
    QVERIFY(!m_pcCtl->object().value("differences").toArray().isEmpty());
    QCOMPARE(m_cLines.count('\n'), 8);
    QCOMPARE(misfits(m_cLines), QString());
}

void TestHaldenctlJson::signals_fit()
{
    CChildProcess cMonitor;
    m_pcCtl->start(cMonitor, {"--json", "monitor"});
    QByteArray cLines;
    // Its whole line. How often the counter ticks until then depends on the machine.
    const auto cWaitFor = [&](const char* pszSignal) {
        while (!(cLines.contains(pszSignal) && cLines.endsWith('\n')) &&
               cMonitor.waitForReadyRead(TIMEOUT_PROCESS_MS))
            cLines += cMonitor.readAllStandardOutput();
        return cLines.contains(pszSignal);
    };
    QVERIFY(cWaitFor("running"));
    QCOMPARE(m_pcCtl->run({"counter", "start"}), 0);
    QVERIFY(cWaitFor("videocounter_changed"));
    QCOMPARE(m_pcCtl->run({"counter", "stop"}), 0);
    QCOMPARE(m_pcCtl->run({"image", "save", "a.bmp", "--wait"}), 0);
    QVERIFY(cWaitFor("video_image_saved"));
    m_pcScene->board().setCameraPlugged(false);
    QVERIFY2(cWaitFor("video_input_type_changed"), cLines.constData());
    cMonitor.terminate();
    QVERIFY(cMonitor.waitForFinished(TIMEOUT_PROCESS_MS));
    QCOMPARE(misfits(cLines), QString());
}

void TestHaldenctlJson::numbers_have_words()
{
    QCOMPARE(ctl({"text", "new", "x", "--color", "12,13"}), 0);
    QCOMPARE(ctl({"text", "get", "1"}), 0);
    const QJsonObject cText = m_pcCtl->object().value("text").toObject();
    QCOMPARE(cText["foreground"].toObject(), (QJsonObject{
                                                 {"number", 12      },
                                                 {"name",   "yellow"}
    }));
    QCOMPARE(ctl({"record", "stop"}), 1);
    QCOMPARE(m_pcCtl->object().value("result").toObject(), (QJsonObject{
                                                               {"number", 2            },
                                                               {"word",   "not-allowed"}
    }));
    QCOMPARE(ctl({"call", "videooverlay", "get_text_colors", "1"}), 0);
    QCOMPARE(m_pcCtl->object().value("answer").toObject()["colors"].toArray(), (QJsonArray{12, 13}));
}

void TestHaldenctlJson::a_file_of_commands_prints_a_line_each()
{
    QCOMPARE(ctl({"-"}, "overlay show\ntext set 4 x\n\ntext list\n"), 1);
    QCOMPARE(misfits(m_cLines), QString());
    QList<int> cNumbers;
    for (const QByteArray& rcLine : m_cLines.trimmed().split('\n'))
        cNumbers << QJsonDocument::fromJson(rcLine)["line"].toInt();
    QCOMPARE(cNumbers, (QList<int>{1, 2, 4}));
}

QTEST_GUILESS_MAIN(TestHaldenctlJson)

#include "tst_haldenctl_json.moc"
