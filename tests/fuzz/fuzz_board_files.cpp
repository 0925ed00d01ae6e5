/* SPDX-License-Identifier: MIT */
/* Any bytes in the files of a virtual board, and all that the tools read from one.
 *
 * The first byte of an input says which picture is drawn too, if any: it takes longer than all else. Then come up to four
 * changes: the number of a file, a place in it in four bytes, a length in two, and so many bytes to write there. The file
 * ends behind them if the length has its highest bit set.
 */
#include "board/judge/CJudgements.h"
#include "board/picture/CBoardPicture.h"
#include "board/state/CBoard.h"
#include "board/state/CPlaybackFile.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/input_reader.h"
#include "tests/fuzz/memory_board.h"

#include <QImage>

#include <memory>
#include <string>
#include <vector>

namespace
{

const char* const FILES[] = {BOARD_CONTROL,   BOARD_TRACE,    BOARD_JUDGEMENTS, BOARD_CODEC_STATE,
                             BOARD_CODEC_LOG, BOARD_PLAYBACK, BOARD_FPGA,       BOARD_LIME,
                             BOARD_I2C,       BOARD_CAMERA};

const size_t MOST_CHANGES = 4;
const uint32_t CUT = 0x8000;

/* Writes a part of the input into a file, and puts the old bytes back at the end of its life. */
class changed_file
{
public:
    changed_file(const CBoard& board, input_reader& reader)
        : file(board.path(FILES[reader.below(std::size(FILES))])), existed(file.exists())
    {
        EXPECT(file.open(QIODevice::ReadWrite));
        length = file.size();
        offset = reader.number(4) % (length + 1);
        const uint32_t count = reader.number(2);
        const std::string bytes = reader.bytes(count % CUT);
        const auto size = static_cast<qint64>(bytes.size());
        EXPECT(file.seek(offset));
        before = count < CUT ? file.read(size) : file.readAll();
        EXPECT(file.seek(offset) && file.write(bytes.data(), size) == size && file.flush());
        if (count >= CUT)
            EXPECT(file.resize(offset + size));
    }
    ~changed_file()
    {
        if (!existed) {
            EXPECT(file.remove());
            return;
        }
        EXPECT(file.resize(length) && file.seek(offset));
        EXPECT(file.write(before) == before.size());
        file.close();
    }
    changed_file(const changed_file&) = delete;
    changed_file& operator=(const changed_file&) = delete;

private:
    QFile file;
    bool existed;
    qint64 length;
    qint64 offset;
    QByteArray before;
};

void read_all(const CBoard& board)
{
    (void)board.traceLines();
    (void)board.codecCalls();
    (void)board.codecState();
    (void)board.codecMode();
    (void)board.faults();
    (void)board.cameraSource();
    (void)board.hasSignal();
    (void)CJudgements::of(board);
    const QImage frame = CPlaybackFile::frame(board);
    EXPECT(frame.isNull() || (frame.width() == VIDEO_WIDTH && frame.height() == VIDEO_HEIGHT));
}

enum drawn { NO_PICTURE, MONITOR, RECORDED };

void draw(const CBoard& board, drawn choice)
{
    const QImage picture = choice == MONITOR ? CBoardPicture::monitor(board) : CBoardPicture::recorded(board);
    EXPECT(picture.width() == VIDEO_WIDTH && picture.height() == VIDEO_HEIGHT);
}

void open_and_read(const QString& path, drawn choice)
{
    CBoard board;
    if (!board.open(path)) {
        EXPECT(!board.errorString().isEmpty());
        return;
    }
    read_all(board);
    if (choice != NO_PICTURE)
        draw(board, choice);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static memory_board whole;
    input_reader reader(data, size);
    const auto choice = static_cast<drawn>(reader.below(RECORDED + 1));
    std::vector<std::unique_ptr<changed_file>> changes;
    while (!reader.at_end() && changes.size() < MOST_CHANGES)
        changes.push_back(std::make_unique<changed_file>(whole.state(), reader));
    open_and_read(whole.path(), choice);
    /* The last change first: two can be in the same place. */
    while (!changes.empty())
        changes.pop_back();
    return INPUT_TAKEN;
}
