/* SPDX-License-Identifier: MIT */
/* Traces with names: registers by field, cells by letter and colour. */
#include "board/trace/CTraceNames.h"
#include "fpga/font_tables.h"

#include <QtTest>

class TestCTraceNames : public QObject
{
    Q_OBJECT

private slots:
    void names_a_line_data();
    void names_a_line();
    void remembers_position_and_chip();
    void counts_on_from_a_transfer();
    void takes_the_letters_of_the_glyph_set_that_was_loaded();
    void leaves_other_lines_as_they_are_data();
    void leaves_other_lines_as_they_are();
};

void TestCTraceNames::names_a_line_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("named");
    QTest::newRow("fields") << "fpga write32 0x00ff0000 0x00820000"
                            << "fpga write32 CTRL fgon=1 cto=1";
    QTest::newRow("no field") << "fpga read32 0x00ff0000 = 0x00000000"
                              << "fpga read32 CTRL 0";
    QTest::newRow("wide field") << "fpga write32 0x00ff0004 0x0100ff80"
                                << "fpga write32 FGCC fgm=1 col=65408";
    QTest::newRow("failed") << "fpga read32 0x00ff0000 ! EIO"
                            << "fpga read32 CTRL ! EIO";
    QTest::newRow("text page") << "fpga write32 0x00ff1a0c 0x00300e00"
                               << "fpga write32 TEMO page 1";
    QTest::newRow("no text page") << "fpga write32 0x00ff1a0c 0x00300e02"
                                  << "fpga write32 TEMO res1=48 tebo=3586";
    QTest::newRow("graphic page") << "fpga write32 0x00ff1008 0x00000668"
                                  << "fpga write32 graphic page shown page 2";
    QTest::newRow("no table") << "fpga write32 0x00ff0008 0x00000001"
                              << "fpga write32 store trigger 0x00000001";
    QTest::newRow("palette") << "fpga write32 0x00ff1804 0xffffffff"
                             << "fpga write32 text colour 1 0xffffffff";
    QTest::newRow("seek") << "fpga seek 0x00300298"
                          << "fpga seek cell 12,5";
    QTest::newRow("glyph") << "fpga seek 0x00201040"
                           << "fpga seek glyph 65";
    QTest::newRow("graphics") << "fpga seek 0x000336d1"
                              << "fpga seek graphic page 1 pixel 1,1";
    QTest::newRow("background") << "fpga seek 0x00ff187c"
                                << "fpga seek text background colour 15";
    QTest::newRow("frame, second field") << "fpga seek 0x010ca800"
                                         << "fpga seek stored frame pixel 0,1";
    QTest::newRow("cell") << "fpga write 2 @ 0x00300298 = 2 : 41 15"
                          << "fpga write cell \"A\" white on navy at 12,5";
    QTest::newRow("cells")
        << "fpga write 6 @ 0x00301000 = 6 : 41 1f 22 1f 42 c0"
        << "fpga write cells \"A\\\"\" white on black at text page 1 0,4, cell \"B\" yellow on "
           "transparent at text page 1 2,4";
    QTest::newRow("row after row")
        << "fpga write 4 @ 0x0030007e = 4 : 41 15 42 15"
        << "fpga write cell \"A\" white on navy at 63,0, cell \"B\" white on navy at 0,1";
    QTest::newRow("cut off") << "fpga write 20 @ 0x00300000 = 20 : 41 15 ..."
                             << "fpga write cell \"A\" white on navy at 0,0, ...";
    QTest::newRow("nothing") << "fpga write 3584 @ 0x00300000 = 3584 : 00*3584"
                             << "fpga write 3584 bytes of 0 from cell 0,0";
    QTest::newRow("snapshot") << "fpga bytes @ 0x00ff1800 : 01*4"
                              << "fpga bytes 4 bytes from text colour 0";
    QTest::newRow("display controller") << "lime display 0x00000124 0x00c8012c"
                                        << "lime L1WXY l1wx=200 l1wy=300";
    QTest::newRow("chip") << "i2c slave 0x25"
                          << "i2c slave saa7113";
    QTest::newRow("no chip") << "i2c slave 0x26"
                             << "i2c slave 0x26";
    QTest::newRow("chip's register") << "i2c write 0x0a @ 0x25 0x7d"
                                     << "i2c write LUBR lubr=125";
    QTest::newRow("all of a chip") << "i2c bytes @ 0x25 : 00*255 41"
                                   << "i2c bytes 256 bytes from saa7113 0x00";
    QTest::newRow("status") << "i2c read 0x1f @ 0x25 = 0x40"
                            << "i2c read SBVD hlvln_hlck=1";
}

void TestCTraceNames::names_a_line()
{
    QFETCH(QString, line);
    QFETCH(QString, named);
    QCOMPARE(CTraceNames().named(line), named);
}

void TestCTraceNames::remembers_position_and_chip()
{
    CTraceNames cNames;
    QCOMPARE(cNames.named("fpga write 2 = 2 : 41 15"), QString("fpga write 2 bytes at an unknown place"));
    cNames.named("fpga seek 0x00300298");
    QCOMPARE(cNames.named("fpga write 2 = 2 : 41 15"),
             QString("fpga write cell \"A\" white on navy at 12,5"));
    QCOMPARE(cNames.named("i2c read 0x01 = 0x08"), QString("i2c read 0x01 = 0x08"));
    cNames.named("i2c slave 0x25");
    QCOMPARE(cNames.named("i2c read 0x01 = 0x08"), QString("i2c read INDE1 indel=8"));
    cNames.named("i2c slave 0x44 ! EBUSY");
    QCOMPARE(cNames.named("i2c read 0x01 = 0x08"), QString("i2c read INDE1 indel=8"));
}

void TestCTraceNames::counts_on_from_a_transfer()
{
    CTraceNames cNames;
    cNames.named("fpga seek 0x00300000");
    cNames.named("fpga read 4 = 4 : 41 15 42 15");
    QCOMPARE(cNames.named("fpga write 2 = 2 : 43 15"), QString("fpga write cell \"C\" white on navy at 2,0"));
    QCOMPARE(cNames.named("fpga write 2 ! EIO"), QString("fpga write 2 ! EIO"));
    QCOMPARE(cNames.named("fpga write 2 = 2 : 44 15"), QString("fpga write cell \"D\" white on navy at 3,0"));
}

void TestCTraceNames::takes_the_letters_of_the_glyph_set_that_was_loaded()
{
    CTraceNames cNames;
    const QString cCell = QStringLiteral("fpga write 2 @ 0x00300000 = 2 : d6 15");
    QCOMPARE(cNames.named(cCell), QString::fromUtf8("fpga write cell \"Ö\" white on navy at 0,0"));
    QStringList cBytes;
    for (int i = 0; i < 16384; ++i)
        cBytes << QString("%1").arg(font_sets[2].glyphs->rows[i ^ 1], 2, 16, QLatin1Char('0'));
    // In two lines, as a long transfer comes.
    cNames.named("fpga bytes @ 0x00200000 : " + cBytes.mid(0, 8000).join(' '));
    QCOMPARE(cNames.named(cCell), QString::fromUtf8("fpga write cell \"Ö\" white on navy at 0,0"));
    cNames.named("fpga bytes @ 0x00201f40 : " + cBytes.mid(8000).join(' '));
    QCOMPARE(cNames.named(cCell), QString::fromUtf8("fpga write cell \"ж\" white on navy at 0,0"));
}

void TestCTraceNames::leaves_other_lines_as_they_are_data()
{
    QTest::addColumn<QString>("line");
    for (const char* pszLine :
         {"", "fpga", "fpga open = 5", "fpga close", "fpga ioctl 0x20006b07", "lime map 33554432",
          "fpga write32 0x00ff0010 0x00000001", "i2c transfer 0x03 ! EOPNOTSUPP",
          "i2c read 0x80 @ 0x25 = 0x00", "fpga write 2 = 2 : 4x", "fpga write 2 = 2 : 00*99999999",
          "fpga write 2 = 2 : 00*0", "fpga write 2 @ here", "a line of another file", "lime nothing 0x0 0x1",
          "lime display 0x00000124x 0x0"})
        QTest::newRow(pszLine) << pszLine;
}

void TestCTraceNames::leaves_other_lines_as_they_are()
{
    QFETCH(QString, line);
    QCOMPARE(CTraceNames().named(line), line);
}

QTEST_APPLESS_MAIN(TestCTraceNames)

#include "tst_CTraceNames.moc"
