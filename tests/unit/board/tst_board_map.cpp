/* SPDX-License-Identifier: MIT */
/* The judge's map of the board, compared with the register tables and the overlay's address map. */
#include "board/judge/map.h"
#include "hw/fpga_map.h"
#include "hw/lime_registers.h"
#include "hw/saa71xx_registers.h"
#include "regdb/chip_regs.h"

#include <QMap>
#include <QSet>
#include <QTest>

Q_DECLARE_METATYPE(const reg_bf_group*)

using CRegisters = QMap<quint32, quint32>; // declared bits by address

class TestBoardMap : public QObject
{
    Q_OBJECT

private slots:
    void has_the_registers_of_the_fpga();
    void has_the_palettes_of_the_fpga();
    void has_the_memory_of_the_fpga();
    void has_the_registers_of_the_i2c_chips_data();
    void has_the_registers_of_the_i2c_chips();
    void has_the_windows_of_the_display_controller();
    void has_the_registers_of_the_display_controller();
};

/// The bits of all fields that aren't reserved.
static quint32 declaredBits(const reg_bf_group& rcRegister)
{
    quint32 u32Bits = 0;
    int iLeft = rcRegister.size;
    for (const reg_bf* psField = rcRegister.bf; psField->name != nullptr; ++psField) {
        iLeft -= psField->len;
        if (qstrncmp(psField->name, "res", 3) != 0)
            u32Bits |= static_cast<quint32>((quint64(1) << psField->len) - 1) << iLeft;
    }
    return u32Bits;
}

void TestBoardMap::has_the_registers_of_the_fpga()
{
#define ADD(address, bits) cMap.insert(address, bits);
    CRegisters cMap;
    MAP_FPGA_REGISTERS(ADD)
#undef ADD
    CRegisters cExpected;
    for (const reg_bf_group* psRow = regs_fpga; psRow->name != nullptr; ++psRow)
        cExpected.insert(psRow->addr, declaredBits(*psRow));
    // The pages lie above the reach of the register file's field.
    cExpected[FPGA_TEMO] |= FPGA_TEXT_PAGES;
    for (const quint32 u32Address : {FPGA_STORE_VIDEO, FPGA_CURSOR_X, FPGA_CURSOR_Y, FPGA_CURSOR_SIZE,
                                     FPGA_CURSOR_COLOR, FPGA_GRAPHIC_SHOW})
        cExpected.insert(u32Address, 0xffffffff);
    QCOMPARE(cMap, cExpected);
    QCOMPARE(cMap.firstKey(), MAP_FPGA_REGISTERS_BEGIN);
    QCOMPARE(cMap.lastKey() + 4, MAP_FPGA_REGISTERS_END);
}

void TestBoardMap::has_the_palettes_of_the_fpga()
{
    QCOMPARE(MAP_FPGA_PALETTES_BEGIN, FPGA_GRAPHIC_PALETTE);
    QCOMPARE(FPGA_TEXT_FOREGROUND, FPGA_GRAPHIC_PALETTE + 256 * 4); // pixels have 8 bits
    QCOMPARE(FPGA_TEXT_BACKGROUND, FPGA_TEXT_FOREGROUND + 16 * 4);
    QCOMPARE(MAP_FPGA_PALETTES_END, FPGA_TEXT_BACKGROUND + 16 * 4);
}

void TestBoardMap::has_the_memory_of_the_fpga()
{
#define ADD(begin, end) cMap.insert(begin, end);
    CRegisters cMap;
    MAP_FPGA_MEMORY(ADD)
#undef ADD
    const CRegisters cExpected = {
        {FPGA_GRAPHIC_PAGES,   FPGA_GRAPHIC_PAGES + FPGA_PAGES * FPGA_GRAPHIC_PAGE_STRIDE},
        {FPGA_GLYPHS,          FPGA_GLYPHS + 16384                                       },
        {FPGA_TEXT_PAGES,      FPGA_TEXT_PAGES + FPGA_PAGES * FPGA_TEXT_PAGE_STRIDE      },
        {FPGA_CURSOR_IMAGE,    FPGA_CURSOR_IMAGE + 512                                   },
        {FPGA_GRAPHIC_PALETTE, MAP_FPGA_PALETTES_END                                     },
        {FPGA_VIDEO_IMAGE,     FPGA_VIDEO_IMAGE + 1658880                                },
    };
    QCOMPARE(cMap, cExpected);
}

void TestBoardMap::has_the_registers_of_the_i2c_chips_data()
{
    QTest::addColumn<uint>("slave");
    QTest::addColumn<const reg_bf_group*>("table");
    QTest::newRow("decoder") << MAP_I2C_DECODER << static_cast<const reg_bf_group*>(regs_saa7113);
    QTest::newRow("encoder") << MAP_I2C_ENCODER << static_cast<const reg_bf_group*>(regs_saa7129);
}

void TestBoardMap::has_the_registers_of_the_i2c_chips()
{
    QFETCH(uint, slave);
    QFETCH(const reg_bf_group*, table);
    QCOMPARE(slave, uint(table == regs_saa7113 ? SAA7113_SLAVE : SAA7129_SLAVE));
    QSet<quint32> cMap;
    const auto add = [&cMap, slave](uint uiChip, quint32 u32First, quint32 u32Last) {
        for (quint32 u32Sub = u32First; u32Sub <= u32Last; ++u32Sub)
            if (uiChip == slave)
                cMap << u32Sub;
    };
#define ADD(chip, first, last) add(chip, first, last);
    MAP_I2C_REGISTERS(ADD)
#undef ADD
    QSet<quint32> cExpected;
    for (const reg_bf_group* psRow = table; psRow->name != nullptr; ++psRow)
        cExpected << psRow->addr;
    QCOMPARE(cMap, cExpected);
}

void TestBoardMap::has_the_windows_of_the_display_controller()
{
    QCOMPARE(MAP_LIME_HOST, LIME_HOST_WINDOW);
    QCOMPARE(MAP_LIME_DISPLAY, LIME_DISP_WINDOW);
    QCOMPARE(MAP_LIME_CAPTURE, LIME_CAPT_WINDOW);
    QCOMPARE(MAP_LIME_DRAW, LIME_DRAW_WINDOW);
    QCOMPARE(MAP_LIME_PIO, LIME_PIO_WINDOW);
    QCOMPARE(MAP_LIME_END, LIME_WINDOWS_END);
}

void TestBoardMap::has_the_registers_of_the_display_controller()
{
#define ADD(window, offset, bits) cMap.insert((window) + (offset), bits);
    CRegisters cMap;
    MAP_LIME_REGISTERS(ADD)
#undef ADD
    CRegisters cExpected;
    for (const reg_bf_group* psRow = regs_lime; psRow->name != nullptr; ++psRow) {
        QVERIFY2(psRow->base == 'D' || psRow->base == 'C', psRow->name);
        const quint32 u32Window = psRow->base == 'D' ? MAP_LIME_DISPLAY : MAP_LIME_CAPTURE;
        cExpected[u32Window + psRow->addr] |= declaredBits(*psRow);
    }
    // The switch of layer 5's transparency.
    cExpected.insert(MAP_LIME_DISPLAY + 0x1b4, 0x80000000);
    QCOMPARE(cMap, cExpected);
}

QTEST_APPLESS_MAIN(TestBoardMap)
#include "tst_board_map.moc"
