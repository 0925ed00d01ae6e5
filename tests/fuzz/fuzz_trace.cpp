/* SPDX-License-Identifier: MIT */
/* Any bytes as a trace: replayed on a board, and given names. A line is refused with a reason, or carried out without one. The
 * board keeps what the inputs before wrote; no reason depends on that. */
#include "board/create/CBoardMaker.h"
#include "board/state/CBoard.h"
#include "board/trace/CTraceNames.h"
#include "board/trace/CTraceReplay.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/memory_board.h"

#include <QString>
#include <QStringList>

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static memory_board board;
    QString error;
    CTraceReplay replay(board.state());
    EXPECT(replay.open(error));
    CTraceNames names;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<int>(size));
    for (const QString& line : text.split(QLatin1Char('\n'))) {
        EXPECT(replay.apply(line, error) == error.isEmpty());
        EXPECT(line.isEmpty() || !names.named(line).isEmpty());
    }
    return INPUT_TAKEN;
}
