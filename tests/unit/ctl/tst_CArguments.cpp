/* SPDX-License-Identifier: MIT */
/* What is refused before it is sent, and how words are read. */
#include "ctl/CArguments.h"
#include "ctl/CFailure.h"

#include <QDir>
#include <QProcess>
#include <QtTest>

class TestCArguments : public QObject
{
    Q_OBJECT

private slots:
    void refuses_data();
    void refuses();
    void sends_all_the_same_by_force_data();
    void sends_all_the_same_by_force();
    void reads_every_type();
    void takes_options_of_all_commands_behind_the_words();
};

/// A command and its arguments as they were typed.
static CArguments parse(const QString& rcLine, bool bForce = false)
{
    const QStringList cWords = QProcess::splitCommand(rcLine);
    int iWords = 0;
    const SCommand* psCommand = findCommand(cWords, iWords);
    if (psCommand == nullptr)
        qFatal("no command: %s", qPrintable(rcLine));
    return CArguments(*psCommand, cWords.mid(iWords), bForce);
}

static QString refusalOf(const QString& rcLine, bool bForce = false)
{
    try {
        parse(rcLine, bForce);
    } catch (const CFailure& rcFailure) {
        return rcFailure.status() == eWrongUse ? rcFailure.text() : QStringLiteral("wrong status");
    }
    return {};
}

void TestCArguments::refuses_data()
{
    QTest::addColumn<QString>("text");
    const auto cRow = [](const char* pszLine, const char* pszText) { QTest::newRow(pszLine) << pszText; };
    cRow("display size 360", "H is missing; usage: haldenctl display size W H");
    cRow("display size 360 288 1", "1 is too much; usage: haldenctl display size W H");
    cRow("display size 0 288", "W has to be from 1 to 4095, not 0");
    cRow("display size 4096 288", "W has to be from 1 to 4095, not 4096");
    cRow("display size 360 big", "H has to be a whole number, not big");
    cRow("display position 4096 0", "X has to be from 0 to 4095, not 4096");
    cRow("display position -- -1 0", "X has to be from 0 to 4095, not -1");
    cRow("text move 1 53,0", "53,0 is outside of the grid: columns are 0 to 52, rows 0 to 25");
    cRow("text move 1 0,26", "0,26 is outside of the grid: columns are 0 to 52, rows 0 to 25");
    cRow("text move 1 3", "a position is COLUMN,ROW such as 20,12, not 3");
    cRow("text move 0 3,4", "HANDLE has to be from 1 to 2147483647, not 0");
    cRow("text set 1", "STRING is missing; usage: haldenctl text set HANDLE|--id N STRING");
    cRow("text set --id 1", "STRING is missing; usage: haldenctl text set HANDLE|--id N STRING");
    cRow("text set --id x y", "N has to be a whole number, not x");
    cRow("text new x --at 1,99", "1,99 is outside of the grid: columns are 0 to 52, rows 0 to 25");
    cRow("text new x --loud",
         "Unknown option 'loud'; usage: haldenctl text new STRING [--at X,Y] [--color FG[,BG]] "
         "[--id N] [--hidden]");
    cRow("text color 1 16", "16 is no colour; haldenctl colors shows all sixteen");
    cRow("text color 1 yelow",
         "yelow is no colour (did you mean yellow?); haldenctl colors shows all sixteen");
    cRow("text color 1 1,2,3", "colours are FG or FG,BG, not 1,2,3");
    cRow("text new \u65e5", "the overlay has no letter for \u65e5 (U+65E5)");
    cRow("message x --seconds 0", "N has to be from 1 to 9999, not 0");
    cRow("message x --seconds 10000", "N has to be from 1 to 9999, not 10000");
    cRow("counter set 1:2", "a time is H:M:S or H:M:S:F, not 1:2");
    cRow("counter set 101:0:0", "hours has to be from 0 to 100, not 101");
    cRow("counter set 0:61:0", "minutes has to be from 0 to 60, not 61");
    cRow("counter set 0:0:61", "seconds has to be from 0 to 60, not 61");
    cRow("counter set 0:0:0:101", "frames has to be from 0 to 100, not 101");
    cRow("debug print cpu", "cpu is none of: fpga, lime, saa7113, saa7129");
    cRow("debug frame-generator maybe", "maybe is neither on nor off");
    cRow("wait --for ever", "ever is none of: running, recording, idle, input, no-input");
    cRow("record start", "FILE is missing; usage: haldenctl record start FILE");
}

void TestCArguments::refuses()
{
    QFETCH(QString, text);
    QCOMPARE(refusalOf(QString::fromUtf8(QTest::currentDataTag())), text);
}

void TestCArguments::sends_all_the_same_by_force_data()
{
    QTest::addColumn<int>("unused");
    for (const char* pszLine :
         {"display size 0 70000", "display position -- -1 0", "text move 1 300,-1", "text color 1 300,4000",
          "text new \u65e5", "message x --seconds 0", "counter set 250:75:61:120"})
        QTest::newRow(pszLine) << 0;
}

void TestCArguments::sends_all_the_same_by_force()
{
    const QString cLine = QString::fromUtf8(QTest::currentDataTag());
    QVERIFY(!refusalOf(cLine).isEmpty());
    QCOMPARE(refusalOf(cLine, true), QString());
}

void TestCArguments::reads_every_type()
{
    QCOMPARE(parse("display size 360 288").values(), (QVariantList{360, 288}));
    QCOMPARE(parse("text move 1 20,12").position("X,Y"), QPoint(20, 12));
    QCOMPARE(parse("text color 1 Yellow,navy@half").colors("FG[,BG]").iForeground, 12);
    QCOMPARE(parse("text color 1 Yellow,navy@half").colors("FG[,BG]").iBackground, 13);
    QCOMPARE(parse("text color 1 10").colors("FG[,BG]").iBackground, NO_COLOR);
    QCOMPARE(parse("counter set 1:2:3").numbers("H:M:S[:F]"), (QList<int>{1, 2, 3, 0}));
    QCOMPARE(parse("record start film.ts").text("FILE"), QDir::current().filePath("film.ts"));
    QCOMPARE(parse("record start /a/b.ts").text("FILE"), QString("/a/b.ts"));
    for (const char* pszWord : {"on", "ON", "true", "1"})
        QCOMPARE(parse(QString("debug frame-generator %1").arg(pszWord)).number("on|off"), 1);
    for (const char* pszWord : {"off", "false", "0"})
        QCOMPARE(parse(QString("debug frame-generator %1").arg(pszWord)).number("on|off"), 0);
    QCOMPARE(parse("call videooverlay videocounter_start -1").rest(), QStringList("-1"));
    QCOMPARE(parse("text set -- 1 --at").text("STRING"), QString("--at"));
    QVERIFY(parse("text new x --hidden").has("hidden"));
    QVERIFY(!parse("text new x").has("hidden"));
}

void TestCArguments::takes_options_of_all_commands_behind_the_words()
{
    QVERIFY(parse("status --json").has("json"));
    QCOMPARE(parse("status --host root@board").text("host"), QString("root@board"));
    QVERIFY(parse("display size 0 0 --force").isForced());
}

QTEST_GUILESS_MAIN(TestCArguments)

#include "tst_CArguments.moc"
