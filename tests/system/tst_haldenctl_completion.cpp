/* SPDX-License-Identifier: MIT */
/* The bash completion, asked as bash asks it, against the command table. */
#include "ctl/Colors.h"
#include "ctl/CommandTable.h"
#include "ctl/Interfaces.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CHaldenctl.h"
#include "tests/support/CScene.h"
#include "tests/support/Timeouts.h"

#include <QFileInfo>
#include <QtTest>

// The shell starts several programs for each line.
const int TIMEOUT_COMPLETION_MS = 4 * TIMEOUT_PROCESS_MS;

class TestHaldenctlCompletion : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void offers_every_word_of_every_command();
    void offers_the_options_of_every_command();
    void offers_values_data();
    void offers_values();
    void offers_handles();

private:
    /// The words offered behind each of the lines.
    QList<QStringList> complete(const QStringList& rcLines);

    CScene m_cScene;
};

void TestHaldenctlCompletion::initTestCase()
{
    QVERIFY2(m_cScene.start(), m_cScene.describe());
}

void TestHaldenctlCompletion::cleanupTestCase()
{
    QCOMPARE(m_cScene.end(), QString());
}

QList<QStringList> TestHaldenctlCompletion::complete(const QStringList& rcLines)
{
    CChildProcess cBash;
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert("DBUS_SYSTEM_BUS_ADDRESS", m_cScene.bus().address());
    cEnvironment.insert("PATH", QFileInfo(QStringLiteral(HALDENCTL_EXECUTABLE)).path() + ":" +
                                    cEnvironment.value("PATH"));
    cBash.setProcessEnvironment(cEnvironment);
    cBash.setWorkingDirectory(QFileInfo(QStringLiteral(COMPLETION)).path());
    cBash.start("bash", {"--norc", COMPLETE, COMPLETION});
    cBash.write(rcLines.join('\n').toUtf8() + '\n');
    cBash.closeWriteChannel();
    QList<QStringList> cOffers;
    if (!cBash.waitForFinished(TIMEOUT_COMPLETION_MS))
        return cOffers;
    const QByteArray cErrors = cBash.readAllStandardError();
    if (!cErrors.isEmpty())
        QTest::qFail(cErrors.constData(), __FILE__, __LINE__);
    for (const QString& rcLine : QString::fromUtf8(cBash.readAllStandardOutput()).split('\n'))
        cOffers << rcLine.split(' ', Qt::SkipEmptyParts);
    cOffers.removeLast();
    return cOffers;
}

void TestHaldenctlCompletion::offers_every_word_of_every_command()
{
    QStringList cLines;
    QStringList cExpected;
    for (const SCommand& rsCommand : commandTable()) {
        QString cLine = QStringLiteral("haldenctl ");
        for (const QString& rcWord : QString::fromLatin1(rsCommand.pszWords).split(' ')) {
            cLines << cLine << cLine + rcWord.left(1);
            cExpected << rcWord << rcWord;
            cLine += rcWord + ' ';
        }
    }
    const QList<QStringList> cOffers = complete(cLines);
    QCOMPARE(cOffers.size(), cLines.size());
    for (int i = 0; i < cLines.size(); ++i)
        // A lone dash is the beginning of options.
        if (!cLines[i].endsWith(" -"))
            QVERIFY2(cOffers[i].contains(cExpected[i]), qPrintable(cLines[i] + ": " + cOffers[i].join(' ')));
}

void TestHaldenctlCompletion::offers_the_options_of_every_command()
{
    QStringList cLines;
    for (const SCommand& rsCommand : commandTable())
        cLines << QStringLiteral("haldenctl %1 --").arg(QLatin1String(rsCommand.pszWords));
    const QList<QStringList> cOffers = complete(cLines);
    QCOMPARE(cOffers.size(), cLines.size());
    int i = 0;
    for (const SCommand& rsCommand : commandTable()) {
        QStringList cExpected;
        for (const SCommandOption* psOption : optionsOf(rsCommand))
            cExpected << QStringLiteral("--") + QLatin1String(psOption->pszName);
        for (const SCommandOption& rsOption : globalOptions())
            cExpected << QStringLiteral("--") + QLatin1String(rsOption.pszName);
        QCOMPARE(cOffers[i++], cExpected);
    }
}

void TestHaldenctlCompletion::offers_values_data()
{
    QTest::addColumn<QStringList>("offers");
    QStringList cMethods;
    for (const SMember& rsMember : membersOf("debug"))
        cMethods << rsMember.cName;
    const auto cRow = [](const char* pszLine, const QStringList& rcOffers) {
        QTest::newRow(pszLine) << rcOffers;
    };
    cRow("haldenctl tex", {"text"});
    cRow("haldenctl doctor ", {"board", "picture", "recording", "text"});
    cRow("haldenctl text color 1 ", colorNames());
    cRow("haldenctl text color 1 yellow,na", {"yellow,navy", "yellow,navy@half"});
    cRow("haldenctl text color --id 5 bl", {"black"});
    cRow("haldenctl text new x --color ye", {"yellow"});
    cRow("haldenctl debug print ", {"fpga", "lime", "saa7113", "saa7129"});
    cRow("haldenctl debug frame-generator ", {"on", "off"});
    cRow("haldenctl wait --for no", {"no-input"});
    cRow("haldenctl --json wait --for r", {"running", "recording"});
    cRow("haldenctl call ", {"debug", "videodisplay", "videooverlay", "videoprocessing"});
    cRow("haldenctl call debug ", cMethods);
    cRow("haldenctl record start haldenctl.b", {"haldenctl.bash"});
    cRow("haldenctl check-registers haldend.8 haldenctl.b", {"haldenctl.bash"});
    cRow("haldenctl display size ", {});
    cRow("haldenctl status ", {});
}

void TestHaldenctlCompletion::offers_values()
{
    QFETCH(QStringList, offers);
    QCOMPARE(complete({QString::fromUtf8(QTest::currentDataTag())}), QList<QStringList>{offers});
}

void TestHaldenctlCompletion::offers_handles()
{
    CHaldenctl cCtl(m_cScene.bus().address());
    QCOMPARE(cCtl.run({"-"}, "text new a\ntext new b\ntext new c\ntext delete 2\n"), 0);
    const QStringList cHandles{"1", "3"};
    QCOMPARE(complete({"haldenctl text set ", "haldenctl text delete ", "haldenctl doctor text "}),
             (QList<QStringList>{cHandles, cHandles, cHandles}));
    QCOMPARE(complete({QStringLiteral("haldenctl --bus %1 text set ")
                           .arg(m_cScene.bus().address().section(',', 0, 0))}),
             (QList<QStringList>{cHandles}));
}

QTEST_GUILESS_MAIN(TestHaldenctlCompletion)

#include "tst_haldenctl_completion.moc"
