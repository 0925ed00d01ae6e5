/* SPDX-License-Identifier: MIT */
/* halden-demo: draws on the overlay through the overlay library, as the daemon does.
 *
 * Start it like the daemon, with the board library preloaded and HALDEN_BOARD set; `halden-board picture`
 * shows the result. Each scene begins with an empty overlay.
 */
#include "board/picture/CGlyphSheet.h"
#include "board/picture/SentencePages.h"
#include "fpga/box.h"
#include "fpga/cursor.h"
#include "fpga/font.h"
#include "fpga/graphic_layer.h"
#include "fpga/overlay_switches.h"
#include "fpga/screen.h"
#include "fpga/text_layer.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"

#include <QByteArray>
#include <QString>

#include <cstdio>
#include <cstring>
#include <vector>

namespace
{

const unsigned int WHITE_ON_GREY = 0x18;
const unsigned int YELLOW_ON_NAVY = 0xcd;
const unsigned int BLACK_ON_SILVER = 0xf9;

void writeText(int iSet, const char* pszText, unsigned int uX, unsigned int uY, unsigned int uColor)
{
    write_text_xyc(CGlyphSheet::encoded(iSet, QString::fromUtf8(pszText)).constData(), uX, uY, uColor);
}

void drawSentences(int iSet)
{
    load_font(iSet);
    for (unsigned int uRow = 0; uRow < SENTENCE_PAGE_ROWS; ++uRow) {
        const SSentenceRow& rsRow = SENTENCES[iSet - 1][uRow];
        const QByteArray cCodes = CGlyphSheet::encoded(iSet, QString::fromUtf8(rsRow.pszText));
        write_text_xyc(cCodes.leftJustified(VIDEO_TEXT_COLUMNS, ' ').constData(), 0, uRow, rsRow.u8Color);
    }
    text_overlay_on();
}

void drawText1()
{
    drawSentences(1);
}

void drawText2()
{
    drawSentences(2);
}

void drawText3()
{
    drawSentences(3);
}

void drawFrames()
{
    write_box(2, 1, 49, 10, WHITE_ON_GREY, 0);
    writeText(1, "╔═════════════════════╦═════════════════════════╗", 2, 1, WHITE_ON_GREY);
    writeText(1, "║ Double lines        ║ meet without gaps       ║", 2, 2, WHITE_ON_GREY);
    writeText(1, "╠═════════════════════╬═════════════════════════╣", 2, 3, WHITE_ON_GREY);
    writeText(1, "║ across cells        ║ in both directions      ║", 2, 4, WHITE_ON_GREY);
    writeText(1, "╚═════════════════════╩═════════════════════════╝", 2, 5, WHITE_ON_GREY);
    writeText(1, "┌─────────────────────┬─────────────────────────┐", 2, 7, YELLOW_ON_NAVY);
    writeText(1, "│ Single lines        │ as well                 │", 2, 8, YELLOW_ON_NAVY);
    writeText(1, "├─────────────────────┼─────────────────────────┤", 2, 9, YELLOW_ON_NAVY);
    writeText(1, "└─────────────────────┴─────────────────────────┘", 2, 10, YELLOW_ON_NAVY);
    writeText(1, "Boxes of code page 437 show the letters that stand", 2, 12, BLACK_ON_SILVER);
    writeText(1, "at its codes in the glyph sets:                   ", 2, 13, BLACK_ON_SILVER);
    write_box(4, 15, 20, 4, WHITE_ON_GREY, 1);
    write_box(28, 15, 20, 4, WHITE_ON_GREY, 2);
    text_overlay_on();
}

/* A disc in sixteen shades, with a palette of its own, in the image format of the overlay library. */
std::vector<unsigned char> shadedDisc()
{
    const int WIDTH = 160;
    const int HEIGHT = 80;
    const int SHADES = 16;
    std::vector<unsigned char> cImage = {WIDTH, 0, HEIGHT, 0, SHADES + 1, 0, 0, 0};
    const unsigned char au8Nothing[] = {0, 0, 0, 0};
    cImage.insert(cImage.end(), au8Nothing, au8Nothing + 4);
    for (int i = 0; i < SHADES; ++i) {
        const auto u8Light = static_cast<unsigned char>(255 - 12 * i);
        const unsigned char au8Entry[] = {static_cast<unsigned char>(40 + 8 * i),
                                          static_cast<unsigned char>(u8Light / 2), u8Light, 0xe0};
        cImage.insert(cImage.end(), au8Entry, au8Entry + 4);
    }
    for (int y = 0; y < HEIGHT; ++y)
        for (int x = 0; x < WIDTH; ++x) {
            const int iRadius = (x - 80) * (x - 80) + 4 * (y - 40) * (y - 40);
            cImage.push_back(static_cast<unsigned char>(iRadius < 6400 ? 1 + iRadius / 400 : 0));
        }
    return cImage;
}

void drawGraphic()
{
    write_graphic_window(20, 20, 280, 60, 26, 0);
    write_graphic_window(60, 50, 280, 60, 23, 0);
    write_graphic_window(100, 80, 280, 60, 24, 0);
    std::vector<unsigned char> cImage = shadedDisc();
    write_graphic_image_xy(440, 60, cImage.data(), 0, 64);
    for (unsigned int uLine = 0; uLine < 4; ++uLine)
        write_graphic_pixel_xy(60, 180 + 8 * uLine, 10 + uLine, 600, 0);
    writeText(1, " Text over graphics ", 10, 8, WHITE_ON_GREY);
    show_graphic_page(0);
    graphic_overlay_on();
    text_overlay_on();
}

void drawCursor()
{
    writeText(1, " The arrow points here ", 22, 10, WHITE_ON_GREY);
    text_cursor_parameters sParameters = {42, 28, 12, 20, 0, 0, 52, 25, 1, cursor_shapes};
    text_cursor sCursor = {};
    init_text_cursor(&sCursor, &sParameters);
    set_cursor_xy(33, 11, &sCursor);
    text_overlay_on();
    cursor_overlay_on();
}

struct SScene {
    const char* pszName;
    const char* pszHelp;
    void (*pfnDraw)();
};

const SScene SCENES[] = {
    {"text1",   "a page of sentences in glyph set 1, ISO 8859-15",  drawText1  },
    {"text2",   "the same for set 2, ISO 8859-16",                  drawText2  },
    {"text3",   "the same for set 3, ISO 8859-5",                   drawText3  },
    {"frames",  "frames of box pieces",                             drawFrames },
    {"graphic", "windows, lines and an image, with text over them", drawGraphic},
    {"cursor",  "the arrow cursor",                                 drawCursor },
};

/* The overlay of a board at rest: 53 x 26 cells of 12 x 10 pixels a field, centred in the visible part of the
 * graphic layer. */
void prepareOverlay(screen& rsScreen)
{
    init_fpga();
    fpga_device_write_reg(FPGA_CTRL, 0);
    fpga_device_write_reg(FPGA_TSXP, 42);
    fpga_device_write_reg(FPGA_TSYP, 14);
    fpga_device_write_reg(FPGA_TESZ, 12 << 8 | 10);
    init_screen(&rsScreen, nullptr);
    show_text_page(0);
}

int usage()
{
    std::fputs("Usage: halden-demo SCENE | --version\n\n", stderr);
    for (const SScene& rsScene : SCENES)
        std::fprintf(stderr, "  %-10s %s\n", rsScene.pszName, rsScene.pszHelp);
    std::fputs("\nDraws on the board in the directory named by HALDEN_BOARD. Preload libhaldenboard.so.\n",
               stderr);
    return 2;
}

bool openBoard()
{
    return init_fpga_framebuffer((qgetenv("HALDEN_BOARD") + "/fpgamem").constData()) == 0;
}

int showScene(const SScene& rsScene)
{
    if (!openBoard())
        return 1;
    screen sScreen = {};
    prepareOverlay(sScreen);
    rsScene.pfnDraw();
    destroy_fpga_framebuffer();
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::puts("halden-demo " HALDEND_VERSION);
        return 0;
    }
    for (const SScene& rsScene : SCENES)
        if (argc == 2 && std::strcmp(rsScene.pszName, argv[1]) == 0)
            return showScene(rsScene);
    return usage();
}
