/* SPDX-License-Identifier: MIT */
/* Any bytes as a graphic image, drawn anywhere on any page: palette and pixels land where they belong, and the caller's
 * buffer has its pixels shifted by the base.
 *
 * The first seven bytes of an input are page, base, x and y; the next six the image's header, whose sizes are cut to what an
 * engine can draw often; the rest is palette and pixels, again and again up to the size that the header announces.
 */
#include "fpga/graphic_layer.h"
#include "fpga/screen.h"
#include "hw/fpga_map.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/fuzz_target.h"
#include "tests/fuzz/input_reader.h"
#include "tests/support/hw/fpga_recorder.h"

#include <algorithm>
#include <string>
#include <vector>

namespace
{

const size_t HEADER = 8;

using bytes = std::vector<unsigned char>;

struct image {
    uint32_t width;
    uint32_t height;
    uint32_t colors;
    bytes file;

    size_t pixels() const { return HEADER + size_t{4} * colors; }
};

struct placement {
    uint32_t x;
    uint32_t y;
    int page;
    uint32_t base;

    bool exists() const { return page >= 0 && page < static_cast<int>(FPGA_PAGES); }
};

void put_16(bytes& file, size_t at, uint32_t value)
{
    file[at] = static_cast<unsigned char>(value);
    file[at + 1] = static_cast<unsigned char>(value >> 8);
}

/* The caller owes the function all bytes that the header announces: so they are here, and not one more. */
image image_of(input_reader& reader)
{
    image read = {reader.below(1000), reader.below(400), reader.below(300), {}};
    read.file.resize(read.pixels() + size_t{read.width} * read.height);
    put_16(read.file, 0, read.width);
    put_16(read.file, 2, read.height);
    put_16(read.file, 4, read.colors);
    const std::string part = reader.rest();
    for (size_t i = HEADER; i < read.file.size() && !part.empty(); ++i)
        read.file[i] = static_cast<unsigned char>(part[(i - HEADER) % part.size()]);
    return read;
}

/* Where the first pixel belongs. A place beyond the page is a place in the memory behind it. */
size_t first_address(const placement& place)
{
    return FPGA_GRAPHIC_PAGES + static_cast<size_t>(place.page) * FPGA_GRAPHIC_PAGE_STRIDE +
           size_t{place.y + current_screen->graphic_y_offset} * VIDEO_WIDTH + place.x +
           current_screen->graphic_x_offset;
}

/* The memory from there on, as the image leaves it. */
bytes with_image(bytes memory, const bytes& pixels, const image& drawn)
{
    for (size_t row = 0; row < drawn.height; ++row)
        std::copy_n(pixels.begin() + static_cast<std::ptrdiff_t>(row * drawn.width), drawn.width,
                    memory.begin() + static_cast<std::ptrdiff_t>(row * VIDEO_WIDTH));
    return memory;
}

void expect_palette(const image& drawn, const bytes& before, uint32_t base)
{
    for (size_t i = 0; i < drawn.colors; ++i) {
        const unsigned char* entry = &before[HEADER + 4 * i];
        const bytes written = fpga_bytes(FPGA_GRAPHIC_PALETTE + 4 * (base + static_cast<uint32_t>(i)), 4);
        EXPECT(std::equal(written.begin(), written.end(), entry));
    }
}

void draw(image& drawn, const placement& place)
{
    const bytes before = drawn.file;
    if (!place.exists()) {
        EXPECT(write_graphic_image_xy(place.x, place.y, drawn.file.data(), place.page, place.base) == -1);
        EXPECT(fpga_recorded().empty() && drawn.file == before);
        return;
    }
    const auto begin = static_cast<uint32_t>(first_address(place));
    const size_t length = size_t{drawn.height} * VIDEO_WIDTH + drawn.width;
    bytes expected = before;
    for (size_t i = drawn.pixels(); i < expected.size(); ++i)
        expected[i] = static_cast<unsigned char>(expected[i] + place.base);
    const bytes memory = with_image(
        fpga_bytes(begin, length),
        bytes(expected.begin() + static_cast<std::ptrdiff_t>(drawn.pixels()), expected.end()), drawn);

    write_graphic_image_xy(place.x, place.y, drawn.file.data(), place.page, place.base);
    EXPECT(fpga_recorded().size() == drawn.colors + drawn.height);
    EXPECT(drawn.file == expected);
    expect_palette(drawn, before, place.base);
    EXPECT(fpga_bytes(begin, length) == memory);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    input_reader reader(data, size);
    screen record = {};
    init_screen(&record, nullptr);
    fpga_recorded().clear();
    const int page = static_cast<int>(reader.below(11)) - 1;
    const uint32_t base = reader.number(1);
    const placement place = {reader.below(1000), reader.below(500), page, base};
    image drawn = image_of(reader);
    draw(drawn, place);
    current_screen = nullptr;
    return INPUT_TAKEN;
}
