/* SPDX-License-Identifier: MIT */
/* Mistakes in register files, one by one, and what is told of them. */
#include "ctl/CRegisterFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

class TestCRegisterFile : public QObject
{
    Q_OBJECT

private slots:
    void finds_nothing_in_the_default_files();
    void finds_a_mistake_data();
    void finds_a_mistake();
    void finds_a_register_that_is_missing();
    void finds_a_register_that_is_not_to_be_written();
    void finds_saved_files();
    void finds_mistakes_in_what_is_included();
    void finds_what_cannot_be_read();
    void knows_a_chip_by_its_registers();
    void gives_the_values_in_the_spelling_of_the_table();

private:
    QString write(const char* pszName, const QByteArray& rcText)
    {
        QFile cFile(m_cFolder.filePath(QString::fromLatin1(pszName)));
        if (cFile.open(QIODevice::WriteOnly))
            cFile.write(rcText);
        return cFile.fileName();
    }

    QTemporaryDir m_cFolder;
};

/// "LINE: TEXT" of each.
static QStringList linesOf(const CRegisterFile& rcFile)
{
    QStringList cLines;
    for (const CRegisterFile::SFinding& rsFinding : rcFile.findings())
        cLines << QStringLiteral("%1: %2").arg(rsFinding.iLine).arg(rsFinding.cText);
    return cLines;
}

static QByteArray defaultFile(const char* pszName)
{
    QFile cFile(QStringLiteral(PACKAGING_DIR "/cnfs/") + QLatin1String(pszName));
    return cFile.open(QIODevice::ReadOnly) ? cFile.readAll() : QByteArray();
}

void TestCRegisterFile::finds_nothing_in_the_default_files()
{
    for (const QString& rcChip : CRegisterFile::chipWords()) {
        const CRegisterFile cFile(QStringLiteral(PACKAGING_DIR "/cnfs/%1.cnf").arg(rcChip));
        QVERIFY(cFile.isReadable());
        QCOMPARE(linesOf(cFile), QStringList());
        QCOMPARE(cFile.chip(), rcChip);
        QVERIFY(cFile.values().size() > 5);
    }
}

void TestCRegisterFile::finds_a_mistake_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QStringList>("found");
    const auto cRow = [](const char* pszName, const char* pszText, const QStringList& rcFound) {
        QTest::newRow(pszName) << QByteArray(pszText) << rcFound;
    };
    cRow("nothing", "SRIC: { sinr = 3; };\n", {});
    cRow("capitals", "sric: { SINR = 3; };\n", {});
    cRow("unknown register", "\nFGCD: { col = 1; };\n",
         {"2: fpga has no register FGCD (did you mean FGCC?): the group does nothing"});
    cRow("far from any register", "UNHEARD_OF: { col = 1; };\n",
         {"1: fpga has no register UNHEARD_OF: the group does nothing"});
    cRow("unknown field", "FGCC: {\n coll = 1;\n};\n",
         {"2: FGCC has no field coll (did you mean col?): the line does nothing"});
    cRow("too wide", "TSYP: { tsy = 600; };\n",
         {"1: tsy = 600 doesn't fit into its 9 bits (0 to 511): by itself it makes res1 1, tsy 88"});
    cRow("negative", "SRIC: { rinr = -1; };\n",
         {"1: rinr = -1 doesn't fit into its 8 bits (0 to 255): by itself it makes res1 65535, sinr 255, "
          "rinr 255"});
    cRow("64 bits", "FGCC: { col = 4294967297L; };\n",
         {"1: col = 4294967297 doesn't fit into 32 bits: what it becomes differs between processors"});
    cRow("text", "SRIC: { sinr = \"3\"; };\n",
         {"1: sinr is given a text where a whole number belongs: it becomes 0"});
    cRow("fraction", "SRIC: { sinr = 1.5; };\n",
         {"1: sinr is given a fraction where a whole number belongs: it becomes 0"});
    cRow("truth value", "SRIC: { sinr = true; };\n",
         {"1: sinr is given a truth value where a whole number belongs: it becomes 0"});
    cRow("list", "SRIC: { sinr = [1, 2]; };\n",
         {"1: sinr is given a group or list where a whole number belongs: it becomes 0"});
    cRow("outside of a register", "sinr = 3;\n", {"1: sinr stands outside of a register: it does nothing"});
    cRow("register twice", "SRIC: { sinr = 3; };\nsric: { rinr = 3; };\n",
         {"2: SRIC was set in line 1 already: this line wins where they differ"});
    cRow("field twice", "SRIC: { sinr = 3;\n SINR = 4; };\n",
         {"2: SRIC.sinr was set in line 1 already: this line wins where they differ"});
    cRow("same spelling twice", "SRIC: { sinr = 3;\n sinr = 4; };\n",
         {"2: duplicate setting name: haldend doesn't start with it, and a reload leaves the chip as it is"});
    cRow("no fields", "SRIC: { };\n", {"1: SRIC has no fields: the register counts as not named"});
    cRow("syntax", "SRIC: {\n sinr = ;\n};\n",
         {"2: syntax error: haldend doesn't start with it, and a reload leaves the chip as it is"});
}

void TestCRegisterFile::finds_a_mistake()
{
    QFETCH(QByteArray, text);
    QFETCH(QStringList, found);
    QCOMPARE(linesOf(CRegisterFile(write("fpga.cnf", text))), found);
}

void TestCRegisterFile::finds_a_register_that_is_missing()
{
    QByteArray cText = defaultFile("saa7113.cnf");
    const int iBegin = cText.indexOf("LUBR:");
    QVERIFY(iBegin > 0);
    cText.remove(iBegin, cText.indexOf("};", iBegin) + 2 - iBegin);
    QCOMPARE(linesOf(CRegisterFile(write("saa7113.cnf", cText))),
             QStringList("0: doesn't name LUBR: written as 0 at a start"));
}

void TestCRegisterFile::finds_a_register_that_is_not_to_be_written()
{
    const QStringList cLines =
        linesOf(CRegisterFile(write("saa7113.cnf", "CVER: { cver = 1; };\n" + defaultFile("saa7113.cnf"))));
    QCOMPARE(cLines, QStringList("1: CVER can only be read: haldend will write it, which it else doesn't"));
}

void TestCRegisterFile::finds_saved_files()
{
    const QStringList cLime = linesOf(CRegisterFile(
        write("lime.cnf", "DCM2:  // REG-Function:(x) REG-Addr:(D:0x00000104) Val:(0x00000000)\n{\n"
                          "   res##id = 0   ;  // (30) (0x00000000)      \n};\n")));
    QCOMPARE(cLime.size(), 2);
    QVERIFY(cLime[0].startsWith("3: a saved file: res##id can't be read back"));
    QVERIFY(cLime[1].startsWith("4: syntax error"));
    const QStringList cDecoder = linesOf(CRegisterFile(
        write("saa7113.cnf", defaultFile("saa7113.cnf").replace("LUBR:", "lubr:") +
                                 "\nLUBR:  // REG-Function:(x) REG-Addr:(X:0x0000000a) Val:(0x80)\n{\n"
                                 "   lubr = 0   ;  // (08) (0x00)  x\n};\n")));
    QVERIFY2(cDecoder.join('\n').contains("a saved file: the values stand only in comments"),
             qPrintable(cDecoder.join('\n')));
}

void TestCRegisterFile::finds_mistakes_in_what_is_included()
{
    const QString cIncluded = write("colours.cnf", "\nFGCC: { coll = 1; };\n");
    const CRegisterFile cFile(write("fpga.cnf", "SRIC: { sinr = 300; };\n@include \"" + cIncluded.toUtf8() +
                                                    "\"\nTSXQ: { tsx = 1; };\n"));
    QCOMPARE(cFile.findings().size(), 3);
    QCOMPARE(cFile.findings()[0].cFile, cIncluded);
    QCOMPARE(cFile.findings()[0].iLine, 2);
    QCOMPARE(cFile.findings()[1].cFile, cFile.path());
    QCOMPARE(cFile.findings()[1].iLine, 1);
    QCOMPARE(cFile.findings()[2].iLine, 3);
}

void TestCRegisterFile::finds_what_cannot_be_read()
{
    const CRegisterFile cMissing(m_cFolder.filePath("none.cnf"));
    QVERIFY(!cMissing.isReadable());
    QVERIFY(linesOf(cMissing).value(0).startsWith("0: isn't there"));
    const QString cFifo = m_cFolder.filePath("fifo.cnf");
    QCOMPARE(mkfifo(qPrintable(cFifo), 0600), 0);
    const CRegisterFile cPipe(cFifo);
    QVERIFY(!cPipe.isReadable());
    QVERIFY(linesOf(cPipe).value(0).startsWith("0: it or what it includes is no regular file"));
    const CRegisterFile cLong(write("long.cnf", "\n# " + QByteArray(128 * 1024, 'x') + "\n"));
    QVERIFY(!cLong.isReadable());
    QVERIFY(linesOf(cLong).value(0).startsWith("2: has more than 128 KiB"));
}

void TestCRegisterFile::knows_a_chip_by_its_registers()
{
    QCOMPARE(CRegisterFile(write("mine.txt", defaultFile("saa7129.cnf"))).chip(), QString("saa7129"));
    QCOMPARE(CRegisterFile(write("old.txt", defaultFile("lime.cnf"))).chip(), QString("lime"));
}

void TestCRegisterFile::gives_the_values_in_the_spelling_of_the_table()
{
    const CRegisterFile cFile(
        write("fpga.cnf", "sric: { SINR = 3; };\nTSXP: { tsx = 0x2a; };\nFGCD: { col = 1; };\n"));
    QCOMPARE(cFile.values(), (QMap<QString, std::uint32_t>{
                                 {"SRIC.sinr", 3 },
                                 {"TSXP.tsx",  42}
    }));
}

QTEST_GUILESS_MAIN(TestCRegisterFile)

#include "tst_CRegisterFile.moc"
