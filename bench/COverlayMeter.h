/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_COVERLAYMETER_H
#define HALDEND_BENCH_COVERLAYMETER_H

#include "fpga/screen.h"
#include "overlay/COverlayText.h"
#include "overlay/CVideoOverlayBackEnd.h"

#include <cstdint>
#include <string>
#include <vector>

/// What is compared: the overlay library, and the least that gets the same bytes over.
enum ESide {
    eLibrary,
    eLeast, ///< the same seek and transfer, and one pass over the bytes in the simplest form
    SIDES
};

/// What is measured of them: microseconds a call.
enum EOperation {
    eFrameRead,  ///< the stored frame out of the FPGA; the least is the read and one copy
    eFrameWrite, ///< a frame into the FPGA; the least is one copy and the write
    eGlyphSet,   ///< another glyph set into the FPGA; the least is a byte-pair swap and the write
    eTextLine,   ///< a text of 53 cells on the screen; the least is a seek and a write a cell
    OPERATIONS
};

/// Measures the overlay library on the virtual board on which this process runs: the board's library is
/// preloaded, HALDEN_BOARD names the board. What image and glyph memory hold is overwritten. One at a time,
/// because the library has one device and remembers the glyph set that it loaded last.
class COverlayMeter
{
public:
    /// Opens the FPGA. Throws std::runtime_error if the device doesn't behave like a board's.
    explicit COverlayMeter(const std::string& rcDevice);
    ~COverlayMeter();

    COverlayMeter(const COverlayMeter&) = delete;
    COverlayMeter& operator=(const COverlayMeter&) = delete;

    /// Microseconds a call; glyph sets, which take little, are loaded some hundred times in a row. Throws
    /// std::runtime_error when the calls didn't do what they are measured for.
    double measure(ESide eSide, EOperation eOperation);

private:
    struct SProcedure;
    static const SProcedure PROCEDURES[OPERATIONS];

    void prepareFrame();
    void clearGlyphs();
    void clearTextLine();

    void readFrame(int iCall);
    void writeFrame(int iCall);
    void loadGlyphs(int iCall);
    void drawTextLine(int iCall);

    void readFrameLeast(int iCall);
    void writeFrameLeast(int iCall);
    void loadGlyphsLeast(int iCall);
    void drawTextLineLeast(int iCall);

    bool isFrameMirrored();
    bool isFrameSplit();
    bool isFrameAlike();
    bool areGlyphsLast();
    bool isTextLineThere();

    // All of them for the whole run: allocations of our own would warm or cool the library's.
    std::vector<std::uint32_t> m_cFrame;   ///< what the calls get
    std::vector<std::uint32_t> m_cScratch; ///< where the copies of the least go
    std::vector<std::uint32_t> m_cStored;  ///< what the FPGA holds, for the checks
    std::uint32_t m_u32Pattern;            ///< first word of the next frame
    screen m_sScreen;
    CVideoOverlayBackEnd m_cBackEnd;
    COverlayText m_cText; ///< of a whole line
};

#endif
