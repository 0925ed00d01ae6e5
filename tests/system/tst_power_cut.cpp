/* SPDX-License-Identifier: MIT */
/* The power goes while a file is written. The tests look at the file that is left, and at the next start.
 *
 * The daemon ends at the write that would pass a limit, and the file keeps all bytes up to it: the limit of a file's size,
 * whose signal ends a process as suddenly as SIGKILL does.
 */
#include "tests/support/CVideoScene.h"

#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <csignal>

#include <sys/resource.h>

class TestPowerCut : public QObject
{
    Q_OBJECT

private slots:
    void while_a_still_is_saved_data();
    void while_a_still_is_saved();
    void while_register_files_are_saved_data();
    void while_register_files_are_saved();
};

static const qint64 IMAGE_BYTES = 54 + 4 * 720 * 576;
static const QStringList FILES = {QStringLiteral("lime.cnf"), QStringLiteral("fpga.cnf"),
                                  QStringLiteral("saa7113.cnf"), QStringLiteral("saa7129.cnf")};

static bool limitFiles(CDaemonProcess& rcDaemon, qint64 iBytes)
{
    const rlimit sLimit = {static_cast<rlim_t>(iBytes), RLIM_INFINITY};
    return prlimit(static_cast<pid_t>(rcDaemon.pid()), RLIMIT_FSIZE, &sLimit, nullptr) == 0;
}

static QByteArray contents(const QString& rcPath)
{
    QFile cFile(rcPath);
    return cFile.open(QIODevice::ReadOnly) ? cFile.readAll() : QByteArray();
}

void TestPowerCut::while_a_still_is_saved_data()
{
    QTest::addColumn<qint64>("bytes");
    // Before, between and behind the headers, in the first and in the last line.
    for (const qint64 iBytes : {qint64(0), qint64(14), qint64(54), qint64(16384), IMAGE_BYTES - 1})
        QTest::addRow("%lld bytes", static_cast<long long>(iBytes)) << iBytes;
}

// The old image is gone. The next start knows nothing of it, shows no part of it, and saves over it.
void TestPowerCut::while_a_still_is_saved()
{
    QFETCH(qint64, bytes);
    CVideoScene cScene;
    QVERIFY2(cScene.start(), cScene.describe());
    const QString cFile = cScene.file("a.bmp");
    QFile cOld(cFile);
    QVERIFY(cOld.open(QIODevice::WriteOnly));
    QVERIFY(cOld.resize(2 * IMAGE_BYTES));
    cOld.close();
    QVERIFY(limitFiles(cScene.daemon(), bytes));
    QCOMPARE(cScene.call("save_video_image", cFile), VideoResult::OK);
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    QVERIFY(cScene.daemon().crashed());
    QCOMPARE(QFileInfo(cFile).size(), bytes);

    QVERIFY2(cScene.CScene::start(), cScene.describe());
    const QByteArray cStored = cScene.board().fpgaMemory(0x1000000, 4 * 720 * 576);
    QCOMPARE(cScene.call("display_video_image", cFile), VideoResult::FILE_READ_ERROR);
    QVERIFY(cScene.board().fpgaMemory(0x1000000, 4 * 720 * 576) == cStored);
    QCOMPARE(cScene.call("clear_video_image"), VideoResult::INVALID_STATE);
    QCOMPARE(cScene.call("save_video_image", cFile), VideoResult::OK);
    QTRY_COMPARE(cScene.signalled(), QStringList{QStringLiteral("video_image_saved 0")});
    QCOMPARE(QFileInfo(cFile).size(), IMAGE_BYTES);
    QCOMPARE(cScene.end(), QString());
}

void TestPowerCut::while_register_files_are_saved_data()
{
    QTest::addColumn<int>("file");
    QTest::addColumn<int>("bytes");
    QTest::addColumn<bool>("starts");
    // An empty file is whole to its reader. One that breaks off in a comment isn't.
    QTest::newRow("display controller, nothing written") << 0 << 0 << true;
    QTest::newRow("display controller, in the first register") << 0 << 400 << false;
    QTest::newRow("FPGA, nothing written") << 1 << 0 << true;
    QTest::newRow("FPGA, in the comment at the top") << 1 << 60 << false;
    QTest::newRow("FPGA, in a register") << 1 << 1000 << false;
    QTest::newRow("decoder, nothing written") << 2 << 0 << true;
    QTest::newRow("decoder, in a register") << 2 << 1000 << false;
    QTest::newRow("encoder, in a register") << 3 << 1000 << false;
}

// The files before it are saved, those behind it are as before. The default files bring all of it back.
void TestPowerCut::while_register_files_are_saved()
{
    QFETCH(int, file);
    QFETCH(int, bytes);
    QFETCH(bool, starts);
    CScene cScene;
    QVERIFY2(cScene.start(), cScene.describe());
    QList<QByteArray> cBefore;
    const QString cFolder = cScene.board().path(BOARD_CNFS) + QLatin1Char('/');
    for (int i = 0; i < FILES.size(); ++i) {
        const QString cPath = cFolder + FILES[i];
        cBefore << contents(cPath);
        // The limit is for all files: those that are saved before it are out of its reach.
        if (i < file)
            QVERIFY(QFile::remove(cPath) && QFile::link(QStringLiteral("/dev/null"), cPath));
    }
    QVERIFY(limitFiles(cScene.daemon(), bytes));
    cScene.daemon().send(QStringLiteral("/debug"), QStringLiteral("save_hardware_config"), {});
    QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
    QVERIFY(cScene.daemon().crashed());
    for (int i = 0; i < FILES.size(); ++i) {
        const QString cPath = cFolder + FILES[i];
        if (i == file)
            QCOMPARE(QFileInfo(cPath).size(), qint64(bytes));
        else if (i > file)
            QCOMPARE(contents(cPath), cBefore[i]);
    }

    const auto cRestore = [&](int i) {
        QFile::remove(cFolder + FILES[i]);
        QFile cFile(cFolder + FILES[i]);
        return cFile.open(QIODevice::WriteOnly) && cFile.write(cBefore[i]) == cBefore[i].size();
    };
    for (int i = 0; i < file; ++i)
        QVERIFY(cRestore(i));
    if (!starts) {
        cScene.daemon().start();
        QVERIFY2(cScene.daemon().waitForEnd(), cScene.describe());
        QCOMPARE(cScene.daemon().exitCode(), 255);
        const QString cFault = QStringLiteral("Errormessage in configfile: /usr/etc/cnfs/") + FILES[file];
        QVERIFY2(cScene.daemon().unexpectedOutput().join(QLatin1Char('\n')).contains(cFault),
                 cScene.describe());
        (void)cScene.daemon().takeUnexpectedOutput();
        QVERIFY(cRestore(file));
    }
    QVERIFY2(cScene.start(), cScene.describe());
    QVERIFY(cScene.daemon().endBySignal(SIGTERM));
    QCOMPARE(cScene.daemon().exitCode(), 0);
}

QTEST_GUILESS_MAIN(TestPowerCut)

#include "tst_power_cut.moc"
