/* SPDX-License-Identifier: MIT */
/* The tour of ./run --once, step by step, each picture against its golden one. */
#ifdef HALDEND_FILMS
#include "board/film/CFilmReader.h"
#endif
#include "board/picture/CBoardPicture.h"
#include "board/tour/CTour.h"
#include "board/trace/CBoardComparison.h"
#include "board/trace/CTraceReplay.h"
#include "board/trace/CTraceSnapshot.h"
#include "tests/golden.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CScene.h"
#include "tests/support/CellReader.h"

#include <QTemporaryDir>
#include <QtTest>

class TestTour : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void steps_data();
    void steps();
    void the_film_has_the_texts();
    void a_replay_of_the_trace_shows_the_last_pictures();
    void what_is_no_step_is_refused_data();
    void what_is_no_step_is_refused();

private:
    CScene m_cScene;
    CCodecProcess m_cCodec;
    QTemporaryDir m_cPictures;
    QScopedPointer<CTour> m_pcTour;
    QString m_cLastPicture;
    int m_iLinesOfLastPicture = 0; ///< of the trace, when it was taken
};

void TestTour::initTestCase()
{
    QVERIFY2(m_cScene.prepare(), m_cScene.describe());
    m_cCodec.useVideo();
    QVERIFY2(m_cCodec.start(m_cScene.bus().address(), m_cScene.board().directory()), m_cCodec.describe());
    QVERIFY(CTraceSnapshot::begin(m_cScene.board()));
    QVERIFY2(m_cScene.start(), m_cScene.describe());
    m_pcTour.reset(new CTour(m_cScene.daemon().client(), m_cScene.board(), m_cPictures.path(),
                             [](const QString& rcLine) { qInfo("%s", qPrintable(rcLine)); }));
}

void TestTour::cleanupTestCase()
{
    QCOMPARE(m_cScene.end(), QString());
}

// One row for each step; each step needs those before it.
void TestTour::steps_data()
{
    QTest::addColumn<QString>("step");
    const QVector<CTour::SStep> cSteps = CTour::read(QStringLiteral(TOUR));
    QVERIFY(!cSteps.isEmpty());
    for (const CTour::SStep& rsStep : cSteps)
        QTest::addRow("%d %s", rsStep.iLine, qPrintable(rsStep.cText.left(60))) << rsStep.cText;
}

void TestTour::steps()
{
    QFETCH(QString, step);
    QCOMPARE(m_pcTour->carryOut(step), QString());
    const QString cName = step.section(QStringLiteral("picture "), 1);
    if (!step.startsWith(QLatin1String("picture ")))
        return;
    QCOMPARE(differenceFromGolden(m_pcTour->picture(cName), QStringLiteral("tour_") + cName), QString());
    m_cLastPicture = cName;
    m_iLinesOfLastPicture = m_cScene.board().traceLines().size();
}

// The last one that was taken, in which the frame generator is the source, and what the monitor shows at the end. The
// trace has no camera: the replay gets the picture that it sees.
void TestTour::a_replay_of_the_trace_shows_the_last_pictures()
{
    CBoard& rcBoard = m_cScene.board();
    const QImage cEnd = CBoardPicture::monitor(rcBoard);
    QVERIFY(CTraceSnapshot::end(rcBoard));
    CTemporaryBoard cReplayed;
    QVERIFY(cReplayed.make());
    cReplayed.board().setCamera(rcBoard.cameraImage());
    CTraceReplay cReplay(cReplayed.board());
    QString cError;
    QVERIFY(cReplay.open(cError));
    int iLine = 0;
    for (const QString& rcLine : rcBoard.traceLines()) {
        QVERIFY2(cReplay.apply(rcLine, cError), qPrintable(rcLine.left(100) + ": " + cError));
        if (++iLine == m_iLinesOfLastPicture)
            QVERIFY(CBoardPicture::monitor(cReplayed.board()) == m_pcTour->picture(m_cLastPicture));
    }
    QVERIFY(iLine > m_iLinesOfLastPicture);
    QVERIFY(CBoardPicture::monitor(cReplayed.board()) == cEnd);
    QCOMPARE(CBoardComparison::firstDifference(rcBoard, cReplayed.board()), QString());
}

void TestTour::the_film_has_the_texts()
{
#ifdef HALDEND_FILMS // else the stand-in wrote text, and the steps have taken that
    CFilmReader cFilm;
    QVERIFY2(cFilm.open(m_cPictures.filePath(QStringLiteral("film.ts"))), qPrintable(cFilm.errorString()));
    int iFrames = 0;
    for (; cFilm.next(); ++iFrames)
        if (iFrames % 25 == 10)
            QCOMPARE(readCells(cFilm.picture(), 0, 0, 53, qRgb(255, 255, 255), qRgb(0, 0, 128)),
                     QByteArray("Inspection 2026-0417  Client: Municipal works  DN 300"));
    QVERIFY2(iFrames >= 75, qPrintable(QString::number(iFrames)));
#endif
}

void TestTour::what_is_no_step_is_refused_data()
{
    QTest::addColumn<QString>("step");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("no command") << "jump high"
                                << "not understood: jump high";
    QTest::newRow("no method") << "call videodisplay"
                               << "no such call: videodisplay";
    QTest::newRow("too few") << "call videodisplay set_video_size ii 360"
                             << "no such call: videodisplay set_video_size ii 360";
    QTest::newRow("no number") << "call videodisplay set_video_mode i one"
                               << "no such call: videodisplay set_video_mode i one";
    QTest::newRow("no field") << "set fpga nothing 1"
                              << "no such field: fpga nothing 1";
    QTest::newRow("no pattern") << "set fpga ( 1"
                                << "no such field: fpga ( 1";
    QTest::newRow("no chip") << "set nothing tsx 1"
                             << "no such chip: nothing tsx 1";
    QTest::newRow("no picture") << "until nothing"
                                << "no such picture: nothing";
    QTest::newRow("no board command") << "board jump"
                                      << "halden-board: unknown command 'jump'";
}

void TestTour::what_is_no_step_is_refused()
{
    QFETCH(QString, step);
    QFETCH(QString, refusal);
    QCOMPARE(m_pcTour->carryOut(step).section(QLatin1Char('\n'), 0, 0), refusal);
    QVERIFY(!QFile::exists(m_cScene.board().path(BOARD_CNFS "/nothing.cnf")));
}

QTEST_GUILESS_MAIN(TestTour)

#include "tst_tour.moc"
