/* SPDX-License-Identifier: MIT */
/* The stored video frame, copied between the FPGA's image memory and a buffer. */
#include "fpga/video_image.h"

#include "hw/fpga_device.h"
#include "hw/fpga_map.h"
#include "hw/video_geometry.h"

#include <cstdlib>
#include <cstring>

/* Both buffers are size bytes long. */
static void copy_line(unsigned char* to, size_t to_line, const unsigned char* from, size_t from_line,
                      size_t size)
{
    const size_t lines = size / VIDEO_LINE_BYTES;
    if (to_line < lines && from_line < lines)
        memcpy(to + to_line * VIDEO_LINE_BYTES, from + from_line * VIDEO_LINE_BYTES, VIDEO_LINE_BYTES);
}

int get_video_image_from_fpga(unsigned char* buffer, int /*unused*/, size_t size)
{
    auto* work = static_cast<unsigned char*>(calloc(1, size));
    if (work == nullptr)
        return -1;
    read_fpga_block(FPGA_VIDEO_IMAGE, buffer, size);
    for (size_t i = 0; i < VIDEO_FIELD_LINES; ++i) {
        copy_line(work, 2 * i, buffer, i, size);
        copy_line(work, 2 * i + 1, buffer, VIDEO_FIELD_LINES + i, size);
    }
    for (size_t k = 0; k < VIDEO_HEIGHT - 1; ++k)
        copy_line(buffer, k, work, VIDEO_HEIGHT - 1 - k, size);
    free(work);
    return 0;
}

void write_video_image_to_fpga(unsigned char* buffer, int /*unused*/, size_t size)
{
    /* Zeroed, because its last line is sent without being filled: a picture must not show other memory. */
    auto* work = static_cast<unsigned char*>(calloc(1, size));
    if (work == nullptr)
        return;
    for (size_t k = 0; k < VIDEO_HEIGHT - 1; ++k)
        copy_line(work, k, buffer, VIDEO_HEIGHT - 1 - k, size);
    for (size_t i = 0; i < VIDEO_FIELD_LINES; ++i) {
        copy_line(buffer, i, work, 2 * i, size);
        copy_line(buffer, VIDEO_FIELD_LINES + i, work, 2 * i + 1, size);
    }
    write_fpga_block(FPGA_VIDEO_IMAGE, buffer, size);
    free(work);
}
