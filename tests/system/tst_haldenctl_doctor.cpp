/* SPDX-License-Identifier: MIT */
/* Each thing that haldenctl doctor finds is brought about here, and found. */
#include "board/picture/CBoardPicture.h"
#include "tests/support/CHaldenctl.h"
#include "tests/support/CVideoScene.h"

#include <QFile>
#include <QJsonArray>
#include <QtTest>

class TestHaldenctlDoctor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void a_text_that_is_seen();
    void a_text_that_is_not_seen_data();
    void a_text_that_is_not_seen();
    void a_text_that_is_covered();
    void a_text_that_a_reload_took_away();
    void a_text_under_a_playback();
    void no_such_text();
    void the_picture();
    void the_recording();
    void the_file_of_a_recording();
    void the_board();
    void the_board_without_the_daemon();
    void everything();

private:
    /// The findings of a topic: the codes of what is wrong, and of what may be with "perhaps " before them.
    QStringList doctor(const QStringList& rcArguments);
    QString registerFiles() const { return m_pcScene->board().directory() + QStringLiteral("/cnfs"); }
    int ctl(const QStringList& rcArguments) { return m_pcCtl->run(rcArguments); }

    std::unique_ptr<CVideoScene> m_pcScene;
    std::unique_ptr<CHaldenctl> m_pcCtl;
    int m_iStatus = 0;
};

void TestHaldenctlDoctor::init()
{
    m_pcScene = std::make_unique<CVideoScene>();
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
    m_pcCtl = std::make_unique<CHaldenctl>(m_pcScene->bus().address());
}

void TestHaldenctlDoctor::cleanup()
{
    if (m_pcScene->daemon().process().state() == QProcess::Running)
        QCOMPARE(m_pcScene->end(), QString());
    m_pcScene.reset();
}

QStringList TestHaldenctlDoctor::doctor(const QStringList& rcArguments)
{
    m_iStatus = ctl(QStringList{"--json", "doctor"} + rcArguments);
    const QJsonArray cFindings = m_pcCtl->object().value("findings").toArray();
    QStringList cCodes;
    for (const QJsonValue& rcFinding : cFindings)
        cCodes << (rcFinding["known"].toBool() ? QString() : QStringLiteral("perhaps ")) +
                      rcFinding["code"].toString();
    return cCodes;
}

void TestHaldenctlDoctor::a_text_that_is_seen()
{
    QCOMPARE(ctl({"overlay", "show"}), 0);
    QCOMPARE(ctl({"text", "new", "Manhole 17", "--at", "20,2", "--id", "7"}), 0);
    QCOMPARE(doctor({"text", "1"}), QStringList({"perhaps still", "perhaps reload"}));
    QCOMPARE(m_iStatus, 0);
    QCOMPARE(doctor({"text", "--id", "7"}), QStringList({"perhaps still", "perhaps reload"}));
    QCOMPARE(ctl({"doctor", "text", "1"}), 0);
    QVERIFY(m_pcCtl->output().endsWith("nothing wrong that can be seen from here"));
}

void TestHaldenctlDoctor::a_text_that_is_not_seen_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("hidden") << QStringList{"text", "hide", "1"} << "hidden"
                            << "it is hidden: haldenctl text show 1";
    QTest::newRow("overlay off") << QStringList{"overlay", "hide"} << "overlay-hidden"
                                 << "the overlay is off: haldenctl overlay show";
    QTest::newRow("empty") << QStringList{"text", "set", "1", ""} << "empty"
                           << "it says nothing: haldenctl text set 1 STRING";
    QTest::newRow("blank") << QStringList{"text", "set", "1", "   "} << "blank"
                           << "it says only blanks: haldenctl text set 1 STRING";
    QTest::newRow("outside")
        << QStringList{"text", "move", "1", "60,3", "--force"} << "outside"
        << "nothing of \"Manhole 17\" is seen: 60,3 is outside of the 53 x 26 cells: haldenctl text "
           "move 1 X,Y";
    QTest::newRow("cut off")
        << QStringList{"text", "move", "1", "50,3"} << "cut-off"
        << "\"hole 17\" is cut off: from column 50 on 3 of the 10 letters fit: haldenctl text move 1 "
           "X,Y";
    QTest::newRow("same colours") << QStringList{"text", "color", "1", "teal,teal-2"} << "same-colors"
                                  << "letters and background are both teal: haldenctl text color 1 FG,BG";
    QTest::newRow("transparent") << QStringList{"text", "color", "1", "transparent,navy"} << "transparent"
                                 << "its letters are transparent: haldenctl text color 1 FG,BG";
    QTest::newRow("no letters") << QStringList{"text", "set", "1", "\u65e5", "--force"} << "no-letters"
                                << "the overlay has no letters for \"\u65e5\": haldenctl text set 1 STRING";
    QTest::newRow("other letters")
        << QStringList{"text", "set", "1", "\u0416"} << "perhaps letters"
        << "\"\u0416\" needs these letters: Cyrillic (haldenctl overlay locale ru_RU); which are "
           "in use can't be asked for";
}

void TestHaldenctlDoctor::a_text_that_is_not_seen()
{
    QFETCH(QStringList, command);
    QFETCH(QString, code);
    QFETCH(QString, text);
    QCOMPARE(ctl({"overlay", "show"}), 0);
    QCOMPARE(ctl({"text", "new", "Manhole 17", "--at", "20,2"}), 0);
    QCOMPARE(ctl(command), 0);
    const QStringList cCodes = doctor({"text", "1"});
    QVERIFY2(cCodes.contains(code), m_pcCtl->describe());
    QCOMPARE(cCodes.size(), 3);
    QCOMPARE(m_iStatus, code.startsWith("perhaps") ? 0 : 1);
    ctl({"doctor", "text", "1"});
    QVERIFY2(m_pcCtl->output().contains(text), m_pcCtl->describe());
}

void TestHaldenctlDoctor::a_text_that_is_covered()
{
    QCOMPARE(ctl({"overlay", "show"}), 0);
    QCOMPARE(ctl({"text", "new", "Manhole 17", "--at", "20,2"}), 0);
    QCOMPARE(ctl({"text", "new", "12345", "--at", "28,2"}), 0);
    QCOMPARE(ctl({"text", "new", "behind it", "--at", "33,2"}), 0);
    QCOMPARE(doctor({"text", "1"}), QStringList({"covered", "perhaps still", "perhaps reload"}));
    QCOMPARE(m_iStatus, 1);
    ctl({"doctor", "text", "1"});
    QVERIFY2(m_pcCtl->output().startsWith("text 1: text 2 (\"12345\") has the columns 28 to 29 too"),
             m_pcCtl->describe());
    QCOMPARE(doctor({"text", "3"}), QStringList({"perhaps still", "perhaps reload"}));
    QCOMPARE(ctl({"text", "hide", "2"}), 0);
    QCOMPARE(doctor({"text", "1"}), QStringList({"perhaps still", "perhaps reload"}));
}

// The recipe that is told works.
void TestHaldenctlDoctor::a_text_that_a_reload_took_away()
{
    QCOMPARE(ctl({"overlay", "show"}), 0);
    QCOMPARE(ctl({"text", "new", "Manhole 17", "--at", "20,2"}), 0);
    const QImage cBefore = CBoardPicture::monitor(m_pcScene->board());
    QCOMPARE(ctl({"debug", "reload"}), 0);
    QVERIFY(CBoardPicture::monitor(m_pcScene->board()) != cBefore);
    QVERIFY(doctor({"text", "1"}).contains("perhaps reload"));
    QCOMPARE(ctl({"overlay", "show"}), 0);
    QCOMPARE(ctl({"overlay", "redraw"}), 0);
    QCOMPARE(CBoardPicture::monitor(m_pcScene->board()), cBefore);
}

void TestHaldenctlDoctor::a_text_under_a_playback()
{
    QCOMPARE(ctl({"overlay", "show"}), 0);
    QCOMPARE(ctl({"text", "new", "x"}), 0);
    QVERIFY(m_pcScene->enterState(CVideoScene::PLAYBACK_PAUSED));
    QCOMPARE(doctor({"text", "1"}), QStringList({"perhaps playback", "perhaps still", "perhaps reload"}));
}

void TestHaldenctlDoctor::no_such_text()
{
    QCOMPARE(doctor({"text", "3"}), QStringList("no-text"));
    QCOMPARE(m_iStatus, 1);
    QCOMPARE(ctl({"doctor", "text", "--id", "5"}), 1);
    QCOMPARE(m_pcCtl->errors(), QString("haldenctl: there is no text with the id 5"));
}

void TestHaldenctlDoctor::the_picture()
{
    const QStringList cPossible{"perhaps position", "perhaps layer", "perhaps input", "perhaps generator",
                                "perhaps still"};
    QCOMPARE(doctor({"picture"}), cPossible);
    QCOMPARE(m_iStatus, 0);
    QVERIFY(m_pcScene->enterState(CVideoScene::PLAYBACK));
    QCOMPARE(doctor({"picture"}), QStringList("playback") + cPossible);
    QCOMPARE(m_iStatus, 1);
    QCOMPARE(ctl({"play", "stop"}), 0);
    m_pcScene->board().setCameraPlugged(false);
    QTRY_VERIFY(!m_pcScene->signalled().isEmpty());
    QCOMPARE(doctor({"picture"}), QStringList("no-input") + cPossible);
}

void TestHaldenctlDoctor::the_recording()
{
    const QString cError = QStringLiteral("perhaps error-state");
    QCOMPARE(doctor({"recording"}), QStringList({cError, "perhaps folder"}));
    QCOMPARE(m_iStatus, 0);
    QVERIFY(m_pcScene->enterState(CVideoScene::RECORDING_PAUSED));
    QCOMPARE(doctor({"recording"}), QStringList({"paused", "perhaps folder"}));
    QCOMPARE(m_iStatus, 1);
    QCOMPARE(ctl({"record", "stop"}), 0);
    QVERIFY(m_pcScene->enterState(CVideoScene::PLAYBACK));
    QCOMPARE(doctor({"recording"}), QStringList({"playback", cError, "perhaps folder"}));
    QCOMPARE(ctl({"play", "stop"}), 0);
    m_pcScene->codec().end();
    QCOMPARE(doctor({"recording"}), QStringList({"no-codec", cError, "perhaps folder"}));
    QCOMPARE(m_iStatus, 1);
}

void TestHaldenctlDoctor::the_file_of_a_recording()
{
    const QString cFolder = m_pcScene->file("films");
    QCOMPARE(doctor({"recording", cFolder + "/film.ts"}), QStringList({"perhaps error-state", "no-folder"}));
    QVERIFY(QDir().mkdir(cFolder));
    QFile::setPermissions(cFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QStringList cCodes = doctor({"recording", cFolder + "/film.ts"});
    QVERIFY2(cCodes.contains("perhaps folder-owner"), m_pcCtl->describe());
    QVERIFY(m_pcCtl->object().contains("minutes"));
    QFile::setPermissions(cFolder, QFile::Permissions(0x7777));
    QVERIFY(!doctor({"recording", cFolder + "/film.ts"}).contains("perhaps folder-owner"));
    // A file system without space.
    const QStringList cNowhere = doctor({"recording", "/proc/film.ts"});
    QVERIFY2(cNowhere.contains("space"), m_pcCtl->describe());
    QVERIFY(doctor({"recording", "/sys/film.ts"}).contains("space"));
}

void TestHaldenctlDoctor::the_board()
{
    QCOMPARE(doctor({"board", "--register-files", registerFiles()}), QStringList());
    QCOMPARE(m_iStatus, 0);
    ctl({"doctor", "board", "--register-files", registerFiles()});
    QVERIFY2(
        m_pcCtl->output().startsWith(
            QStringLiteral("board: velmar.haldend is process %1 of user ").arg(m_pcScene->daemon().pid())),
        m_pcCtl->describe());
    QFile cFile(registerFiles() + "/fpga.cnf");
    QVERIFY(cFile.open(QIODevice::Append));
    cFile.write("SIRC: { sinr = 1; };\n");
    cFile.close();
    QVERIFY(QFile::remove(registerFiles() + "/lime.cnf"));
    QCOMPARE(doctor({"board", "--register-files", registerFiles()}),
             QStringList({"register-line", "register-file"}));
    QCOMPARE(m_iStatus, 1);
    const QString cDevice = m_pcScene->board().directory() + "/i2c-1";
    QVERIFY(QFile::setPermissions(cDevice, QFile::ReadOwner));
    QVERIFY(doctor({"board", "--register-files", registerFiles()}).contains("device-mode"));
    QVERIFY(QFile::rename(cDevice, cDevice + ".gone"));
    QVERIFY(doctor({"board", "--register-files", registerFiles()}).contains("no-device"));
    QVERIFY(QFile::rename(cDevice + ".gone", cDevice));
    QVERIFY(QFile::setPermissions(cDevice, QFile::ReadOwner | QFile::WriteOwner));
}

void TestHaldenctlDoctor::the_board_without_the_daemon()
{
    QCOMPARE(m_pcScene->end(), QString());
    const QStringList cCodes = doctor({"board", "--register-files", registerFiles()});
    QCOMPARE(cCodes.value(0), QString("no-daemon"));
    QCOMPARE(m_iStatus, 1);
    QVERIFY(doctor({"--register-files", registerFiles()}).contains("no-daemon"));
    QCOMPARE(m_iStatus, 1);
}

void TestHaldenctlDoctor::everything()
{
    QCOMPARE(ctl({"text", "new", "one", "--at", "20,2"}), 0);
    QCOMPARE(ctl({"text", "new", "two", "--hidden"}), 0);
    QCOMPARE(ctl({"text", "new", "  "}), 0);
    const QStringList cCodes = doctor({"--register-files", registerFiles()});
    QCOMPARE(cCodes.filter("overlay-hidden").size(), 1);
    QCOMPARE(cCodes.filter("blank").size(), 1);
    // One that is hidden may be meant to be.
    QVERIFY(!cCodes.contains("hidden"));
    QVERIFY(cCodes.contains("perhaps position") && cCodes.contains("perhaps error-state"));
    QCOMPARE(m_iStatus, 1);
}

QTEST_GUILESS_MAIN(TestHaldenctlDoctor)

#include "tst_haldenctl_doctor.moc"
