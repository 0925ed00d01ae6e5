/* SPDX-License-Identifier: MIT */
/* The examples of docs/dbus-api.md, run as a reader would, and the page's statements on calls that don't
 * fit. */
#include "tests/support/CBusMonitor.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Timeouts.h"

#include <QDBusInterface>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

class TestApiExamples : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void can_be_used_as_they_stand_data();
    void can_be_used_as_they_stand();
    void a_call_that_does_not_fit_fails_only_for_those_who_wait();

private:
    void startScene();
    void endScene();
    void prepareAnswer(const QString& rcMethod);

    QScopedPointer<CVideoScene> m_pcScene;
};

void TestApiExamples::initTestCase()
{
    startScene();
}

void TestApiExamples::cleanupTestCase()
{
    endScene();
}

void TestApiExamples::startScene()
{
    m_pcScene.reset(new CVideoScene);
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

void TestApiExamples::endScene()
{
    // The output of print_hardware_config.
    QCoreApplication::processEvents();
    for (const QString& rcLine : m_pcScene->daemon().unexpectedOutput())
        if (rcLine.startsWith(QLatin1String("DEBUG_print")) || rcLine.contains(QLatin1String("=L:(")))
            m_pcScene->announce(rcLine);
    QCOMPARE(m_pcScene->end(), QString());
}

// The daemon that gives the page's answers: a window, a text, and a codec service in the state that the
// method needs.
void TestApiExamples::prepareAnswer(const QString& rcMethod)
{
    endScene();
    startScene();
    static const struct {
        const char* pszMethod;
        CVideoScene::EState eState;
    } asStates[] = {
        {"pause_video_recording",      CVideoScene::RECORDING       },
        {"resume_video_recording",     CVideoScene::RECORDING_PAUSED},
        {"stop_video_recording",       CVideoScene::RECORDING       },
        {"is_video_recording_running", CVideoScene::RECORDING       },
        {"is_video_recording_paused",  CVideoScene::RECORDING_PAUSED},
        {"pause_video_playback",       CVideoScene::PLAYBACK        },
        {"resume_video_playback",      CVideoScene::PLAYBACK_PAUSED },
        {"stop_video_playback",        CVideoScene::PLAYBACK        },
        {"is_video_playback_running",  CVideoScene::PLAYBACK        },
        {"is_video_playback_paused",   CVideoScene::PLAYBACK_PAUSED },
        {"clear_video_image",          CVideoScene::IMAGE           },
    };
    for (const auto& rsState : asStates)
        if (rcMethod == QLatin1String(rsState.pszMethod))
            QVERIFY2(m_pcScene->enterState(rsState.eState), m_pcScene->describe());
    if (rcMethod == QLatin1String("start_video_playback")) {
        QFile cFilm(m_pcScene->file("inspection"));
        QVERIFY(cFilm.open(QIODevice::WriteOnly) && cFilm.write("film") > 0);
    }
    if (rcMethod == QLatin1String("display_video_image")) {
        QCOMPARE(m_pcScene->call("save_video_image", m_pcScene->file("inspection")), VideoResult::OK);
        QTRY_COMPARE_WITH_TIMEOUT(m_pcScene->signalled(), QStringList{QStringLiteral("video_image_saved 0")},
                                  TIMEOUT_CALL_MS);
    }
    const QString cOverlay = QStringLiteral("/videooverlay");
    const int iHandle =
        m_pcScene->daemon().call(cOverlay, QStringLiteral("create_text")).arguments().value(0).toInt();
    const QList<QPair<QString, QVariantList>> cCalls = {
        {QStringLiteral("set_videocounter"),  {1, 0, 12, 30, 0}                      },
        {QStringLiteral("set_text_id"),       {iHandle, 102}                         },
        {QStringLiteral("set_text_string"),   {iHandle, QStringLiteral("Manhole 17")}},
        {QStringLiteral("set_text_position"), {iHandle, 20, 12}                      },
        {QStringLiteral("set_text_colors"),   {iHandle, 12, 5}                       },
        {QStringLiteral("show_text"),         {iHandle}                              },
        {QStringLiteral("show_overlay"),      {}                                     },
    };
    for (const auto& rcCall : cCalls)
        m_pcScene->daemon().send(cOverlay, rcCall.first, rcCall.second);
    if (rcMethod == QLatin1String("is_videocounter_active"))
        m_pcScene->daemon().send(cOverlay, QStringLiteral("videocounter_start"), {1});
    m_pcScene->daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_size"), {360, 288});
}

void TestApiExamples::can_be_used_as_they_stand_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("answer");
    QFile cFile(QStringLiteral(API_DOCUMENT));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    static const QRegularExpression ANSWER(QStringLiteral("^Answer: `(.+)`$"));
    static const QRegularExpression TABLE_ROW(QStringLiteral("^\\| `\\w+\\(.*\\)` \\| `(.+)` \\|$"));
    QList<QPair<QString, QString>> cExamples;
    while (!cFile.atEnd()) {
        const QString cLine = QString::fromUtf8(cFile.readLine()).trimmed();
        if (cLine.startsWith(QLatin1String("busctl ")))
            cExamples << qMakePair(cLine, QString());
        else if (ANSWER.match(cLine).hasMatch())
            cExamples.last().second = ANSWER.match(cLine).captured(1);
        else if (TABLE_ROW.match(cLine).hasMatch()) // method and arguments, for the example above it
            cExamples << qMakePair(cExamples.last().first.section(QLatin1Char(' '), 0, 4) + QLatin1Char(' ') +
                                       TABLE_ROW.match(cLine).captured(1),
                                   QString());
    }
    for (const auto& rcExample : qAsConst(cExamples))
        QTest::newRow(qPrintable(rcExample.first.section(QLatin1Char(' '), 5)))
            << rcExample.first << rcExample.second;
}

void TestApiExamples::can_be_used_as_they_stand()
{
    QFETCH(QString, line);
    QFETCH(QString, answer);
    QStringList cArguments = QProcess::splitCommand(line);
    const QString cProgram = cArguments.takeFirst();
    const QString cMethod = cArguments.value(4);
    if (!answer.isEmpty())
        prepareAnswer(cMethod);
    for (const QString& rcSlot : {QStringLiteral("CHaldenVideoDisplay::set_video_restart(int)"),
                                  QStringLiteral("CHaldenVideoOverlay::set_text_format(int,int)")})
        if (rcSlot.contains(cMethod + QLatin1Char('(')))
            m_pcScene->announce(QStringLiteral("QMetaObject::invokeMethod: No such method ") + rcSlot);
    cArguments.replaceInStrings(QStringLiteral("/tmp/inspection"), m_pcScene->file("inspection"));
    QVERIFY(m_pcScene->daemon().settle());
    CChildProcess cProcess;
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), m_pcScene->bus().address());
    cProcess.setProcessEnvironment(cEnvironment);
    cProcess.start(cProgram, cArguments);
    QVERIFY(cProcess.waitForFinished(TIMEOUT_PROCESS_MS));
    QVERIFY2(cProcess.exitCode() == 0, cProcess.readAllStandardError().constData());
    // Empty for a method without a result.
    QCOMPARE(QString::fromUtf8(cProcess.readAllStandardOutput().trimmed()), answer);
}

// Qt doesn't wait for a method that the interface declares without a reply, unless it is told to. A bus
// monitor shows the call.
void TestApiExamples::a_call_that_does_not_fit_fails_only_for_those_who_wait()
{
    CBusMonitor cMonitor;
    QVERIFY(cMonitor.start(m_pcScene->bus().address()));
    const QString cSize = QStringLiteral("set_video_size");
    QDBusInterface cDisplay(QStringLiteral("velmar.haldend"), QStringLiteral("/videodisplay"),
                            QStringLiteral("velmar.haldend.videodisplay"), m_pcScene->daemon().client());
    QVERIFY(cDisplay.isValid());

    const QDBusMessage cUnseen = cDisplay.call(cSize, QStringLiteral("360"), QStringLiteral("288"));
    QVERIFY(cUnseen.type() != QDBusMessage::ErrorMessage);
    QVERIFY(cMonitor.waitFor("string \"288\""));
    QVERIFY(cMonitor.waitFor("error_name=org.freedesktop.DBus.Error.UnknownMethod"));

    const QDBusMessage cSeen =
        cDisplay.call(QDBus::Block, cSize, QStringLiteral("360"), QStringLiteral("288"));
    QCOMPARE(cSeen.errorName(), QStringLiteral("org.freedesktop.DBus.Error.UnknownMethod"));
    QVERIFY(cMonitor.end());
}

QTEST_GUILESS_MAIN(TestApiExamples)

#include "tst_api_examples.moc"
