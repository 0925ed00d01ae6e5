/* SPDX-License-Identifier: MIT */
/* Any bytes as a still image: read, put into the FPGA's memory, taken out, written, and read again.
 *
 * The first three bytes of an input are the file's length. The rest is the file, again and again up to that length: an
 * engine wouldn't get to the 1.6 MB of a whole one.
 */
#include "fpga/video_image.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"
#include "platform/VideoImageFile.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/input_reader.h"
#include "tests/support/hw/fpga_recorder.h"

#include <QFile>

#include <cstring>
#include <vector>

#include <sys/mman.h>
#include <unistd.h>

namespace
{

const size_t HEADERS = 54;
const size_t LONGEST = HEADERS + VIDEO_IMAGE_SIZE + 5000;
const size_t LINES = VIDEO_HEIGHT;
const size_t LINE = VIDEO_LINE_BYTES;

std::string file_of(input_reader& reader)
{
    const size_t length = reader.number(3) % LONGEST;
    const std::string part = reader.rest();
    std::string file;
    file.reserve(length + part.size());
    while (file.size() < length && !part.empty())
        file += part;
    file.resize(length);
    return file;
}

/* A file without a name, which the next opening of it empties. */
class nameless_file
{
public:
    nameless_file() : descriptor(memfd_create("still", MFD_CLOEXEC)) { EXPECT(descriptor >= 0); }
    ~nameless_file() { close(descriptor); }
    nameless_file(const nameless_file&) = delete;
    nameless_file& operator=(const nameless_file&) = delete;

    void fill(const std::string& content) const
    {
        EXPECT(ftruncate(descriptor, 0) == 0);
        EXPECT(pwrite(descriptor, content.data(), content.size(), 0) == static_cast<ssize_t>(content.size()));
        rewind();
    }

    void rewind() const { EXPECT(lseek(descriptor, 0, SEEK_SET) == 0); }

    std::string content() const
    {
        std::string text(LONGEST, '\0');
        const ssize_t got = pread(descriptor, text.data(), text.size(), 0);
        EXPECT(got >= 0);
        text.resize(static_cast<size_t>(got));
        return text;
    }

    int descriptor;
};

/* The line of the FPGA's memory that shows line k of the picture, counted from above: the fields are one behind the
 * other. */
const unsigned char* shown_line(size_t k)
{
    const size_t line = k / 2 + (k % 2 != 0 ? VIDEO_FIELD_LINES : 0);
    return fpga_memory().data() + FPGA_VIDEO_IMAGE + line * LINE;
}

void expect_shown(const std::string& file)
{
    const char* pixels = file.data() + HEADERS;
    /* Files have the lowest line first. The lowest one of all isn't shown. */
    for (size_t k = 0; k < LINES - 1; ++k)
        EXPECT(memcmp(shown_line(k), pixels + (LINES - 1 - k) * LINE, LINE) == 0);
    const std::string black(LINE, '\0');
    EXPECT(memcmp(shown_line(LINES - 1), black.data(), LINE) == 0);
}

void save_and_read_back(const nameless_file& still, const std::string& first)
{
    std::vector<char> pixels(VIDEO_IMAGE_SIZE);
    EXPECT(get_video_image_from_fpga(reinterpret_cast<unsigned char*>(pixels.data()), 0, pixels.size()) == 0);
    EXPECT(ftruncate(still.descriptor, 0) == 0);
    still.rewind();
    QFile file;
    EXPECT(file.open(still.descriptor, QIODevice::WriteOnly));
    EXPECT(WriteVideoImageBufferToFile(file, pixels.data(), static_cast<unsigned int>(pixels.size())) ==
           CMultimediaPlatform::eImageOpResultOk);
    file.close();
    const std::string second = still.content();
    EXPECT(second.size() == HEADERS + VIDEO_IMAGE_SIZE);
    EXPECT(second.compare(0, 2, "BM") == 0);
    /* All lines but the lowest and the topmost one come back. */
    EXPECT(second.compare(HEADERS + LINE, (LINES - 2) * LINE, first, HEADERS + LINE, (LINES - 2) * LINE) ==
           0);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const nameless_file still;
    input_reader reader(data, size);
    const std::string content = file_of(reader);
    still.fill(content);
    fpga_recorded().clear();

    std::vector<char> pixels(VIDEO_IMAGE_SIZE);
    QFile file;
    EXPECT(file.open(still.descriptor, QIODevice::ReadOnly));
    const bool read =
        ReadFileIntoVideoImageBuffer(file, pixels.data(), static_cast<unsigned int>(pixels.size())) ==
        CMultimediaPlatform::eImageOpResultOk;
    file.close();
    EXPECT(read == (content.size() >= HEADERS + VIDEO_IMAGE_SIZE));
    if (read) {
        write_video_image_to_fpga(reinterpret_cast<unsigned char*>(pixels.data()), 0, pixels.size());
        expect_shown(content);
        save_and_read_back(still, content);
    }
    return INPUT_TAKEN;
}
