/* SPDX-License-Identifier: MIT */
/* halden-board check-codec, on codec services that fit and that don't. */
#include "board/create/CBoardMaker.h"
#include "board/state/CBoard.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/Timeouts.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace
{

// Longer than the stand-in's file takes to grow, so short that a test doesn't last.
const QString GROWTH_MS = QStringLiteral("500");
const QString ANSWER_MS = QStringLiteral("1500");
const quint32 SLOW_MS = 350; // what is reported as slow begins at 300

const QString FITS = QStringLiteral("The daemon can work with this codec service.");

} // namespace

class TestCheckCodec : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void the_stand_in_fits();
    void a_slow_service_fits_and_is_called_slow();
    void what_does_not_fit_is_named_data();
    void what_does_not_fit_is_named();
    void a_service_that_is_not_there_is_named();
    void calls_are_those_of_the_daemon();
    void a_file_that_exists_is_refused();

private:
    /// The exit status, -1 if it crashed or hung.
    int check();
    bool startCodec() { return m_cCodec->start(m_cBus->address(), m_cBoard.directory()); }

    std::unique_ptr<QTemporaryDir> m_cDirectory;
    std::unique_ptr<CPrivateBus> m_cBus;
    std::unique_ptr<CCodecProcess> m_cCodec;
    CBoard m_cBoard;
    QString m_cFile;
    QStringList m_cLines;
    QString m_cErrors;
};

void TestCheckCodec::init()
{
    m_cCodec.reset();
    m_cDirectory = std::make_unique<QTemporaryDir>();
    m_cBus = std::make_unique<CPrivateBus>();
    m_cCodec = std::make_unique<CCodecProcess>();
    m_cFile = m_cDirectory->filePath(QStringLiteral("film.ts"));
    const QString cBoard = m_cDirectory->filePath(QStringLiteral("board"));
    QString cError;
    QVERIFY2(CBoardMaker::create(cBoard, cError) && m_cBoard.open(cBoard), qPrintable(cError));
    QVERIFY2(m_cBus->start(), qPrintable(m_cBus->error()));
}

int TestCheckCodec::check()
{
    CChildProcess cProcess;
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert(QStringLiteral("DBUS_SYSTEM_BUS_ADDRESS"), m_cBus->address());
    cProcess.setProcessEnvironment(cEnvironment);
    cProcess.start(QStringLiteral(HALDEND_BOARD_TOOL),
                   {"check-codec", m_cFile, "--growth", GROWTH_MS, "--answer", ANSWER_MS});
    if (!cProcess.waitForFinished(TIMEOUT_PROCESS_MS) || cProcess.exitStatus() != QProcess::NormalExit)
        return -1;
    m_cLines =
        QString::fromUtf8(cProcess.readAllStandardOutput()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    m_cErrors = QString::fromUtf8(cProcess.readAllStandardError());
    return cProcess.exitCode();
}

void TestCheckCodec::the_stand_in_fits()
{
    QVERIFY2(startCodec(), m_cCodec->describe());
    QCOMPARE(check(), 0);
    QCOMPARE(m_cLines.takeLast(), FITS);
    QVERIFY(m_cLines.size() >= 12);
    for (const QString& rcLine : m_cLines)
        QVERIFY2(rcLine.startsWith(QLatin1String("ok")), qPrintable(rcLine));
    QCOMPARE(m_cBoard.codecState().eActivity, SCodecState::IDLE);
    QVERIFY(QFileInfo(m_cFile).exists());
}

void TestCheckCodec::a_slow_service_fits_and_is_called_slow()
{
    QVERIFY2(startCodec(), m_cCodec->describe());
    m_cBoard.setCodecDelay(SLOW_MS);
    QCOMPARE(check(), 0);
    QCOMPARE(m_cLines.last(), FITS);
    QVERIFY(m_cLines.filter(QStringLiteral("until then the daemon serves no client")).size() >= 8);
}

void TestCheckCodec::what_does_not_fit_is_named_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QString>("line");
    QTest::newRow("refuses") << int(BOARD_CODEC_REFUSE)
                             << "WRONG  /Record record: velmar.mobilygen.Failed: refused";
    QTest::newRow("hangs") << int(BOARD_CODEC_HANG) << "WRONG  /Record record: no answer in 1500 ms";
    QTest::newRow("stalls") << int(BOARD_CODEC_STALL) << "WRONG  file after 500 ms more: still has 0 bytes";
    QTest::newRow("makes no file") << int(BOARD_CODEC_LOSE)
                                   << "WRONG  file after 500 ms more: " + QStringLiteral("/");
    QTest::newRow("dies") << int(BOARD_CODEC_DIE) << "WRONG  /Record record: ";
}

void TestCheckCodec::what_does_not_fit_is_named()
{
    QFETCH(int, mode);
    QFETCH(QString, line);
    QVERIFY2(startCodec(), m_cCodec->describe());
    m_cBoard.setCodecMode(static_cast<board_codec_mode>(mode));
    QCOMPARE(check(), 1);
    QVERIFY2(m_cLines.last().startsWith(line), qPrintable(m_cLines.join(QLatin1Char('\n'))));
    QVERIFY(m_cErrors.contains(QLatin1String("couldn't work with this codec service")));
}

void TestCheckCodec::a_service_that_is_not_there_is_named()
{
    QCOMPARE(check(), 1);
    QVERIFY2(m_cLines.last().startsWith(QLatin1String("WRONG  velmar.mobilygen: nothing owns the name")),
             qPrintable(m_cLines.join(QLatin1Char('\n'))));
}

void TestCheckCodec::calls_are_those_of_the_daemon()
{
    QVERIFY2(startCodec(), m_cCodec->describe());
    QCOMPARE(check(), 0);
    const QString cRecord = QStringLiteral("/Record record \"%1\" 3 interface=-").arg(m_cFile);
    QCOMPARE(
        m_cBoard.codecCalls(),
        (QStringList{cRecord, "/Record pause interface=-", "/Record resume interface=-",
                     "/Record stop interface=-", cRecord, "/Record stop interface=- no-reply", cRecord,
                     "/Record stop interface=-", QStringLiteral("/Play play \"%1\" interface=-").arg(m_cFile),
                     "/Play pause interface=-", "/Play resume interface=-", "/Play stop interface=-"}));
}

void TestCheckCodec::a_file_that_exists_is_refused()
{
    QFile cFile(m_cFile);
    QVERIFY(cFile.open(QIODevice::WriteOnly) && cFile.write("a film") == 6);
    cFile.close();
    QCOMPARE(check(), 2);
    QVERIFY(m_cErrors.contains(QLatin1String("exists already")));
    QCOMPARE(cFile.size(), 6);
}

QTEST_GUILESS_MAIN(TestCheckCodec)
#include "tst_check_codec.moc"
