/* SPDX-License-Identifier: MIT */
/* The text page of a recorded FPGA, for tests of drawing code. */
#ifndef HALDEND_TESTS_RECORDEDPAGE_H
#define HALDEND_TESTS_RECORDEDPAGE_H

#include "fpga/screen.h"
#include "hw/fpga_map.h"
#include "tests/support/hw/fpga_recorder.h"

#include <QByteArray>

/// An empty page and a screen on it, for the life of the object.
class CRecordedPage
{
public:
    CRecordedPage()
    {
        fpga_recorder_reset();
        init_screen(&m_sScreen, nullptr);
        fpga_recorded().clear();
    }
    ~CRecordedPage() { current_screen = nullptr; }

    CRecordedPage(const CRecordedPage&) = delete;
    CRecordedPage& operator=(const CRecordedPage&) = delete;

    /// The byte address of a cell.
    static uint32_t address(int iColumn, int iRow)
    {
        return FPGA_TEXT_PAGES + static_cast<uint32_t>(iColumn + iRow * 64) * 2;
    }

    /// The character codes of the visible columns of a row. An untouched cell is a zero.
    static QByteArray codes(int iRow) { return everySecondByte(iRow, 0); }

    /// The colour bytes of the same cells.
    static QByteArray colors(int iRow) { return everySecondByte(iRow, 1); }

    /// Returns the recorded accesses, and forgets them.
    static fpga_accesses take()
    {
        fpga_accesses cAccesses;
        cAccesses.swap(fpga_recorded());
        return cAccesses;
    }

private:
    static const int COLUMNS = 53;

    static QByteArray everySecondByte(int iRow, int iFirst)
    {
        QByteArray cBytes;
        for (int iColumn = 0; iColumn < COLUMNS; ++iColumn)
            cBytes.append(static_cast<char>(fpga_memory()[address(iColumn, iRow) + iFirst]));
        return cBytes;
    }

    screen m_sScreen = {};
};

/// Columns iFrom to iTo - 1 of a row, written cell by cell.
struct SWritten {
    int iRow;
    int iFrom;
    int iTo;
};

/// The accesses that write these cells, in this order.
inline fpga_accesses accessesOf(std::initializer_list<SWritten> cStretches)
{
    fpga_accesses cAccesses;
    for (const SWritten& rsStretch : cStretches)
        for (int iColumn = rsStretch.iFrom; iColumn < rsStretch.iTo; ++iColumn)
            cAccesses.push_back({write_memory, CRecordedPage::address(iColumn, rsStretch.iRow), 2});
    return cAccesses;
}

#endif
