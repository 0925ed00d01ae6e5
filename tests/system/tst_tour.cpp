/* The tour of ./run --once, step by step, each picture against its golden one. */
#include "board/picture/CBoardPicture.h"
#include "tests/golden.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CScene.h"
#include "tests/support/Timeouts.h"

#include <QDBusMessage>
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

class TestTour : public QObject
{
    Q_OBJECT

public slots:
    void onSignal(const QDBusMessage& rcMessage)
    {
        m_cSignals << QStringLiteral("%1 %2 %3")
                          .arg(rcMessage.path().mid(1), rcMessage.member(),
                               rcMessage.arguments().value(0).toString());
    }

private slots:
    void initTestCase();
    void cleanupTestCase();
    void steps_data();
    void steps();

private:
    QByteArray run(const QString& rcProgram, const QStringList& rcArguments);
    QByteArray call(const QStringList& rcArguments);
    void setField(const QString& rcChip, const QString& rcField, const QString& rcValue);
    void compare(const QString& rcName);

    CScene m_cScene;
    CCodecProcess m_cCodec;
    QStringList m_cSignals;
    QTemporaryDir m_cPictures;
    QHash<QString, QImage> m_acPictures;
    QImage m_cShot;
};

void TestTour::initTestCase()
{
    QVERIFY2(m_cScene.prepare(), m_cScene.describe());
    QVERIFY2(m_cCodec.start(m_cScene.bus().address(), m_cScene.board().directory()), m_cCodec.describe());
    QVERIFY2(m_cScene.start(), m_cScene.describe());
    for (const char* pszObject : {"videooverlay", "videoprocessing"})
        QVERIFY(m_cScene.daemon().client().connect(QStringLiteral("velmar.haldend"),
                                                   QStringLiteral("/%1").arg(pszObject),
                                                   QStringLiteral("velmar.haldend.%1").arg(pszObject),
                                                   QString(), this, SLOT(onSignal(QDBusMessage))));
}

void TestTour::cleanupTestCase()
{
    QCOMPARE(m_cScene.end(), QString());
}

// One row for each step; each step needs those before it.
void TestTour::steps_data()
{
    QTest::addColumn<QString>("step");
    QFile cFile(QStringLiteral(TOUR));
    QVERIFY(cFile.open(QIODevice::ReadOnly));
    int iLine = 0;
    for (const QString& rcLine : QString::fromUtf8(cFile.readAll()).split(QLatin1Char('\n'))) {
        ++iLine;
        if (!rcLine.isEmpty() && !rcLine.startsWith(QLatin1Char('#')))
            QTest::addRow("%d %s", iLine, qPrintable(rcLine.left(60))) << rcLine;
    }
}

QByteArray TestTour::run(const QString& rcProgram, const QStringList& rcArguments)
{
    QProcess cProcess;
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert(QStringLiteral(BOARD_VARIABLE), m_cScene.board().directory());
    cProcess.setProcessEnvironment(cEnvironment);
    cProcess.start(rcProgram, rcArguments);
    if (!cProcess.waitForFinished(TIMEOUT_PROCESS_MS) || cProcess.exitCode() != 0)
        return "failed: " + cProcess.readAllStandardError();
    return cProcess.readAllStandardOutput().trimmed();
}

QByteArray TestTour::call(const QStringList& rcArguments)
{
    const QString cInterface = rcArguments.value(0);
    return run(QStringLiteral("busctl"),
               QStringList{QStringLiteral("--address=") + m_cScene.bus().address(), QStringLiteral("call"),
                           QStringLiteral("velmar.haldend"), QLatin1Char('/') + cInterface,
                           QStringLiteral("velmar.haldend.") + cInterface} +
                   rcArguments.mid(1));
}

void TestTour::setField(const QString& rcChip, const QString& rcField, const QString& rcValue)
{
    QFile cFile(m_cScene.board().path(BOARD_CNFS) + QStringLiteral("/%1.cnf").arg(rcChip));
    QVERIFY(cFile.open(QIODevice::ReadWrite));
    QString cText = QString::fromUtf8(cFile.readAll());
    QVERIFY(cText.contains(QRegularExpression(QStringLiteral(" %1 = [^;]*;").arg(rcField))));
    cText.replace(QRegularExpression(QStringLiteral(" %1 = [^;]*;").arg(rcField)),
                  QStringLiteral(" %1 = %2;").arg(rcField, rcValue));
    QVERIFY(cFile.resize(0) && cFile.seek(0) && cFile.write(cText.toUtf8()) > 0);
}

void TestTour::compare(const QString& rcName)
{
    m_acPictures[rcName] = CBoardPicture::monitor(m_cScene.board());
    QCOMPARE(differenceFromGolden(m_acPictures[rcName], QStringLiteral("tour_") + rcName), QString());
}

void TestTour::steps()
{
    QFETCH(QString, step);
    const QString cCommand = step.section(QLatin1Char(' '), 0, 0);
    const QString cRest = step.section(QLatin1Char(' '), 1);
    QStringList cArguments = QProcess::splitCommand(cRest.section(QStringLiteral(" = "), 0, 0));
    cArguments.replaceInStrings(QStringLiteral("$pictures"), m_cPictures.path());
    if (cCommand == QLatin1String("call")) {
        const QByteArray cAnswer = call(cArguments);
        QVERIFY2(!cAnswer.startsWith("failed"), cAnswer.constData());
    } else if (cCommand == QLatin1String("wait")) {
        QTRY_COMPARE_WITH_TIMEOUT(call(cArguments), cRest.section(QStringLiteral(" = "), 1).toUtf8(),
                                  TIMEOUT_CALL_MS);
    } else if (cCommand == QLatin1String("board")) {
        const QByteArray cAnswer = run(QStringLiteral(HALDEND_BOARD_TOOL), cArguments);
        QVERIFY2(!cAnswer.startsWith("failed"), cAnswer.constData());
    } else if (cCommand == QLatin1String("signal")) {
        QTRY_VERIFY_WITH_TIMEOUT(m_cSignals.contains(cRest), TIMEOUT_PROCESS_MS);
        m_cSignals = m_cSignals.mid(m_cSignals.indexOf(cRest) + 1);
    } else if (cCommand == QLatin1String("set")) {
        setField(cArguments.value(0), cArguments.value(1), cArguments.value(2));
    } else if (cCommand == QLatin1String("picture")) {
        compare(cRest);
    } else if (cCommand == QLatin1String("shot")) {
        QTRY_VERIFY_WITH_TIMEOUT(CBoardPicture::monitor(m_cScene.board()) != m_cShot, TIMEOUT_CALL_MS);
        m_cShot = CBoardPicture::monitor(m_cScene.board());
    } else if (cCommand == QLatin1String("until")) {
        QTRY_VERIFY_WITH_TIMEOUT(CBoardPicture::monitor(m_cScene.board()) == m_acPictures.value(cRest),
                                 TIMEOUT_CALL_MS);
    } else {
        QCOMPARE(cCommand, QStringLiteral("say"));
    }
}

QTEST_GUILESS_MAIN(TestTour)

#include "tst_tour.moc"
