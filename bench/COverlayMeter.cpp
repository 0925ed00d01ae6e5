/* SPDX-License-Identifier: MIT */
#include "bench/COverlayMeter.h"

#include "fpga/font.h"
#include "fpga/font_tables.h"
#include "fpga/video_image.h"
#include "hw/fpga_device.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <numeric>
#include <stdexcept>

#include <unistd.h>

namespace
{

using CClock = std::chrono::steady_clock;

const std::size_t LINES = VIDEO_HEIGHT;
const std::size_t LINE_WORDS = VIDEO_WIDTH;
const std::size_t FRAME_WORDS = LINES * LINE_WORDS;

// Short against the moods of the machine, long against the clock. A frame goes once, because writing one leaves
// another in the buffer. Glyph sets go in whole turns, so that the first is never the one that is loaded already.
const int FRAME_CALLS = 1;
const int GLYPH_CALLS = 100 * FONT_SETS;
const int TEXT_CALLS = 50;

const int CELLS = VIDEO_TEXT_COLUMNS;
const unsigned char CELL_COLOR = 0x15; // of a text that nobody has coloured

// Makes the compiler believe that somebody reads the bytes.
void use(const void* pvBytes)
{
    asm volatile("" : : "r"(pvBytes) : "memory");
}

unsigned char* bytes(std::vector<std::uint32_t>& rcWords)
{
    return reinterpret_cast<unsigned char*>(rcWords.data());
}

void seek(std::uint32_t u32Address)
{
    if (lseek(fbfd, u32Address, SEEK_SET) != u32Address)
        throw std::runtime_error("the FPGA can't be positioned");
}

void readAt(std::uint32_t u32Address, void* pvBytes, std::size_t uLength)
{
    seek(u32Address);
    if (read(fbfd, pvBytes, uLength) != static_cast<ssize_t>(uLength))
        throw std::runtime_error("the FPGA can't be read");
}

void writeAt(std::uint32_t u32Address, const void* pvBytes, std::size_t uLength)
{
    seek(u32Address);
    if (write(fbfd, pvBytes, uLength) != static_cast<ssize_t>(uLength))
        throw std::runtime_error("the FPGA can't be written");
}

using CGlyphs = std::array<unsigned char, FONT_MAP_LENGTH>;

// Without the promise that the two don't overlap the compiler goes byte by byte, which no reference may.
void swapPairs(const unsigned char* __restrict pu8From, unsigned char* __restrict pu8To)
{
    for (std::size_t i = 0; i < FONT_MAP_LENGTH; i += 2) {
        pu8To[i] = pu8From[i + 1];
        pu8To[i + 1] = pu8From[i];
    }
}

// Where a line of the library's buffer, bottom line first, is in the FPGA, field after field.
std::size_t storedLine(std::size_t iLine)
{
    const std::size_t iFrameLine = LINES - 1 - iLine;
    return iFrameLine / 2 + iFrameLine % 2 * VIDEO_FIELD_LINES;
}

using CFrame = std::vector<std::uint32_t>;

bool isSameLine(const CFrame& rcOne, std::size_t iLine, const CFrame& rcOther, std::size_t iOtherLine)
{
    return std::equal(&rcOne[iLine * LINE_WORDS], &rcOne[iLine * LINE_WORDS] + LINE_WORDS,
                      &rcOther[iOtherLine * LINE_WORDS]);
}

} // namespace

/// How an operation is measured, the two of each in the order of ESide. A check says whether the calls have done
/// their work, given that the preparation left a state in which they hadn't.
struct COverlayMeter::SProcedure {
    int iCalls;
    void (COverlayMeter::*pfPrepare)();
    void (COverlayMeter::*pfCall[SIDES])(int);
    bool (COverlayMeter::*pfCheck[SIDES])();
};

// In the order of EOperation.
const COverlayMeter::SProcedure COverlayMeter::PROCEDURES[OPERATIONS] = {
    {FRAME_CALLS,
     &COverlayMeter::prepareFrame,
     {&COverlayMeter::readFrame, &COverlayMeter::readFrameLeast},
     {&COverlayMeter::isFrameMirrored, &COverlayMeter::isFrameAlike}   },
    {FRAME_CALLS,
     &COverlayMeter::prepareFrame,
     {&COverlayMeter::writeFrame, &COverlayMeter::writeFrameLeast},
     {&COverlayMeter::isFrameSplit, &COverlayMeter::isFrameAlike}      },
    {GLYPH_CALLS,
     &COverlayMeter::clearGlyphs,
     {&COverlayMeter::loadGlyphs, &COverlayMeter::loadGlyphsLeast},
     {&COverlayMeter::areGlyphsLast, &COverlayMeter::areGlyphsLast}    },
    {TEXT_CALLS,
     &COverlayMeter::clearTextLine,
     {&COverlayMeter::drawTextLine, &COverlayMeter::drawTextLineLeast},
     {&COverlayMeter::isTextLineThere, &COverlayMeter::isTextLineThere}},
};

COverlayMeter::COverlayMeter(const std::string& rcDevice)
    : m_cFrame(FRAME_WORDS), m_cScratch(FRAME_WORDS), m_cStored(FRAME_WORDS), m_u32Pattern(0), m_sScreen()
{
    m_cText.setText(QString(CELLS, QLatin1Char('x')));
    if (init_fpga_framebuffer(rcDevice.c_str()) != 0)
        throw std::runtime_error(rcDevice + ": can't be opened");
    // A plain file knows no requests.
    if (set_ioctl(0, 0, nullptr) != 0) {
        destroy_fpga_framebuffer();
        throw std::runtime_error(rcDevice + ": no device of a board, or the board's library isn't preloaded");
    }
    init_screen(&m_sScreen, nullptr);
}

COverlayMeter::~COverlayMeter()
{
    destroy_fpga_framebuffer();
}

double COverlayMeter::measure(ESide eSide, EOperation eOperation)
{
    const SProcedure& rsProcedure = PROCEDURES[eOperation];
    (this->*rsProcedure.pfPrepare)();
    const CClock::time_point cStart = CClock::now();
    for (int i = 0; i < rsProcedure.iCalls; ++i)
        (this->*rsProcedure.pfCall[eSide])(i);
    const std::chrono::duration<double, std::micro> cTime = CClock::now() - cStart;
    if (!(this->*rsProcedure.pfCheck[eSide])())
        throw std::runtime_error("what was measured didn't do its work");
    return cTime.count() / rsProcedure.iCalls;
}

// Never the same frame twice, so that one that was moved before can't pass for this one. The library's working memory
// is warm: the C library keeps such a block from the third call on.
void COverlayMeter::prepareFrame()
{
    get_video_image_from_fpga(bytes(m_cScratch), 0, VIDEO_IMAGE_SIZE);
    std::iota(m_cScratch.begin(), m_cScratch.end(), m_u32Pattern);
    m_u32Pattern += FRAME_WORDS;
    writeAt(FPGA_VIDEO_IMAGE, m_cScratch.data(), VIDEO_IMAGE_SIZE);
    std::iota(m_cFrame.begin(), m_cFrame.end(), m_u32Pattern);
    m_u32Pattern += FRAME_WORDS;
}

void COverlayMeter::clearGlyphs()
{
    const CGlyphs cBlank = {};
    writeAt(FPGA_GLYPHS, cBlank.data(), cBlank.size());
}

void COverlayMeter::clearTextLine()
{
    const std::array<unsigned char, 2 * CELLS> cBlank = {};
    writeAt(FPGA_TEXT_PAGES, cBlank.data(), cBlank.size());
}

void COverlayMeter::readFrame(int /*iCall*/)
{
    get_video_image_from_fpga(bytes(m_cFrame), 0, VIDEO_IMAGE_SIZE);
}

void COverlayMeter::drawTextLine(int /*iCall*/)
{
    m_cBackEnd.drawText(m_cText);
}

void COverlayMeter::readFrameLeast(int /*iCall*/)
{
    readAt(FPGA_VIDEO_IMAGE, m_cScratch.data(), VIDEO_IMAGE_SIZE);
    memcpy(m_cFrame.data(), m_cScratch.data(), VIDEO_IMAGE_SIZE);
    use(m_cFrame.data());
}

void COverlayMeter::writeFrame(int /*iCall*/)
{
    write_video_image_to_fpga(bytes(m_cFrame), 0, VIDEO_IMAGE_SIZE);
}

void COverlayMeter::writeFrameLeast(int /*iCall*/)
{
    memcpy(m_cScratch.data(), m_cFrame.data(), VIDEO_IMAGE_SIZE);
    writeAt(FPGA_VIDEO_IMAGE, m_cScratch.data(), VIDEO_IMAGE_SIZE);
}

void COverlayMeter::loadGlyphs(int iCall)
{
    load_font(iCall % FONT_SETS + 1);
}

void COverlayMeter::loadGlyphsLeast(int iCall)
{
    CGlyphs cSwapped;
    swapPairs(font_sets[iCall % FONT_SETS].glyphs->rows, cSwapped.data());
    writeAt(FPGA_GLYPHS, cSwapped.data(), cSwapped.size());
}

void COverlayMeter::drawTextLineLeast(int /*iCall*/)
{
    const unsigned char au8Cell[] = {'x', CELL_COLOR};
    for (int i = 0; i < CELLS; ++i) {
        lseek(fbfd, FPGA_TEXT_PAGES + 2 * i, SEEK_SET);
        if (write(fbfd, au8Cell, sizeof au8Cell) != sizeof au8Cell)
            throw std::runtime_error("the FPGA can't be written");
    }
}

// The last line of the buffer is outside the reversal.
bool COverlayMeter::isFrameMirrored()
{
    readAt(FPGA_VIDEO_IMAGE, m_cStored.data(), VIDEO_IMAGE_SIZE);
    bool bMirrored = isSameLine(m_cFrame, LINES - 1, m_cStored, LINES - 1);
    for (std::size_t i = 0; i < LINES - 1; ++i)
        bMirrored = bMirrored && isSameLine(m_cFrame, i, m_cStored, storedLine(i));
    return bMirrored;
}

// The buffer holds what was sent, so the frame that it was is made once more. Its first line isn't sent.
bool COverlayMeter::isFrameSplit()
{
    std::iota(m_cScratch.begin(), m_cScratch.end(), m_u32Pattern - static_cast<std::uint32_t>(FRAME_WORDS));
    bool bSplit = isFrameAlike();
    for (std::size_t i = 1; i < LINES; ++i)
        bSplit = bSplit && isSameLine(m_cScratch, i, m_cStored, storedLine(i));
    return bSplit;
}

bool COverlayMeter::isFrameAlike()
{
    readAt(FPGA_VIDEO_IMAGE, m_cStored.data(), VIDEO_IMAGE_SIZE);
    return m_cStored == m_cFrame;
}

bool COverlayMeter::areGlyphsLast()
{
    CGlyphs cStored;
    CGlyphs cSwapped;
    readAt(FPGA_GLYPHS, cStored.data(), cStored.size());
    swapPairs(font_sets[FONT_SETS - 1].glyphs->rows, cSwapped.data());
    return cStored == cSwapped;
}

bool COverlayMeter::isTextLineThere()
{
    std::array<unsigned char, 2 * CELLS> cStored;
    readAt(FPGA_TEXT_PAGES, cStored.data(), cStored.size());
    bool bThere = true;
    for (std::size_t i = 0; i < cStored.size(); i += 2)
        bThere = bThere && cStored[i] == 'x' && cStored[i + 1] == CELL_COLOR;
    return bThere;
}
