/* SPDX-License-Identifier: MIT */
/* Any texts in any letters: created, moved, shown, hidden, in any order, with strings of any code units.
 *
 * The cells of a text are its code units in the encoding of the locale, or question marks; the columns beside the visible ones
 * stay as they are; and after the end of all texts the page is blank.
 */
#include "fpga/screen.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"
#include "overlay/CIso8859_16Codec.h"
#include "overlay/COverlayObjectManager.h"
#include "overlay/CVideoOverlayBackEnd.h"
#include "overlay/CVideoOverlayFrontEnd.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/input_reader.h"
#include "tests/support/hw/fpga_recorder.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <algorithm>
#include <string>

namespace
{

const int STEPS = 60;
const unsigned int HANDLES = 6;

struct letters {
    const char* locale;
    int mib;
};
const letters LETTERS[] = {
    {"de_DE", 111                  },
    {"ro_RO", CIso8859_16Codec::MIB},
    {"ru_RU", 8                    },
    {"xx",    111                  }
};

const unsigned char* cell(unsigned int x, unsigned int y)
{
    return fpga_memory().data() + FPGA_TEXT_PAGES +
           (x + size_t{y} * FPGA_TEXT_ROW_CELLS) * FPGA_TEXT_CELL_BYTES;
}

/* Half of the strings are UTF-8, the others any code units. */
QString string_of(input_reader& reader)
{
    const uint32_t kind = reader.below(4);
    const std::string bytes = reader.bytes(reader.below(kind == 3 ? 600 : 70));
    if (kind < 2)
        return QString::fromUtf8(bytes.data(), static_cast<int>(bytes.size()));
    QString text;
    for (size_t i = 0; i + 1 < bytes.size(); i += 2)
        text += QChar(static_cast<unsigned char>(bytes[i]), static_cast<unsigned char>(bytes[i + 1]));
    return text;
}

/* One text alone on the page: each code unit is what the encoding has for it alone. */
void expect_encoded(const QString& text, const letters& chosen)
{
    COverlayObjectManager manager;
    CVideoOverlayBackEnd back_end;
    CVideoOverlayFrontEnd front_end(back_end, manager);
    front_end.loadCharacterSetForLocale(QString::fromLatin1(chosen.locale));
    const unsigned int handle = front_end.createText();
    front_end.setTextStr(handle, text);
    front_end.setTextColors(handle, EOverlayTextColor{3}, EOverlayTextColor{4});
    front_end.showText(handle);
    CIso8859_16Codec::provide();
    const QTextCodec& codec = *QTextCodec::codecForMib(chosen.mib);
    /* The end of a text is a byte. */
    const int shown = std::min(text.size() % 256, static_cast<int>(VIDEO_TEXT_COLUMNS));
    for (int x = 0; x < shown; ++x) {
        const unsigned char* place = cell(static_cast<unsigned int>(x), 0);
        const QByteArray code = codec.fromUnicode(QString(text[x])).leftJustified(1, '?');
        EXPECT(place[0] == static_cast<unsigned char>(code[0]));
        EXPECT(place[1] == 0x34);
    }
    front_end.destroyText(handle);
}

void change(input_reader& reader, CVideoOverlayFrontEnd& front_end)
{
    const unsigned int handle = reader.below(HANDLES);
    switch (reader.below(14)) {
    case 0:
    case 1:
        EXPECT(front_end.createText() != 0);
        break;
    case 2:
    case 3: {
        const QString text = string_of(reader);
        const bool known = front_end.getTextXPos(handle) != 255 || front_end.isTextVisible(handle);
        front_end.setTextStr(handle, text);
        EXPECT(!known || front_end.getTextStr(handle) == text);
        break;
    }
    case 4:
    case 5: {
        const auto x = static_cast<unsigned char>(reader.number(1));
        front_end.setTextPosition(handle, x, static_cast<unsigned char>(reader.below(40)));
        break;
    }
    case 6:
    case 7:
        front_end.showText(handle);
        break;
    case 8:
        front_end.hideText(handle);
        break;
    case 9:
        front_end.setTextColors(handle, EOverlayTextColor(reader.number(1)),
                                EOverlayTextColor(reader.number(1)));
        break;
    case 10:
        front_end.destroyText(handle);
        break;
    case 11:
        front_end.drawTemporaryText(string_of(reader), EOverlayTextColor{1}, EOverlayTextColor{2},
                                    static_cast<unsigned char>(reader.number(1)),
                                    static_cast<unsigned char>(reader.below(30)), reader.number(2));
        break;
    case 12:
        front_end.loadCharacterSetForLocale(QString::fromLatin1(LETTERS[reader.below(4)].locale));
        break;
    default:
        reader.below(2) == 0 ? front_end.showAllTexts() : front_end.hideAllTexts();
        break;
    }
}

bool is_blank(const unsigned char* place)
{
    return (place[0] == 0 || place[0] == ' ') && place[1] == 0;
}

void expect_blank()
{
    for (unsigned int y = 0; y < VIDEO_TEXT_ROWS; ++y)
        for (unsigned int x = 0; x < VIDEO_TEXT_COLUMNS; ++x)
            EXPECT(is_blank(cell(x, y)));
}

/* All of the page but its visible cells. */
void expect_untouched_beside()
{
    const unsigned int rows = FPGA_TEXT_PAGE_STRIDE / FPGA_TEXT_ROW_BYTES;
    for (unsigned int y = 0; y < rows; ++y)
        for (unsigned int x = y < VIDEO_TEXT_ROWS ? VIDEO_TEXT_COLUMNS : 0; x < FPGA_TEXT_ROW_CELLS; ++x)
            EXPECT(cell(x, y)[0] == 0 && cell(x, y)[1] == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static int count = 0;
    static QCoreApplication application(count, nullptr); // the timers of temporary texts need one
    input_reader reader(data, size);
    screen record = {};
    init_screen(&record, nullptr);
    const auto page = fpga_memory().begin() + FPGA_TEXT_PAGES;
    std::fill(page, page + FPGA_TEXT_PAGE_STRIDE, static_cast<unsigned char>(0));
    fpga_recorded().clear();

    const letters& chosen = LETTERS[reader.below(4)];
    expect_encoded(string_of(reader), chosen);
    {
        COverlayObjectManager manager;
        CVideoOverlayBackEnd back_end;
        CVideoOverlayFrontEnd front_end(back_end, manager);
        for (int step = 0; step < STEPS && !reader.at_end(); ++step)
            change(reader, front_end);
        front_end.hideAllTexts();
        expect_blank();
        front_end.destroyAllTexts();
    }
    expect_blank();
    expect_untouched_beside();
    current_screen = nullptr;
    return INPUT_TAKEN;
}
