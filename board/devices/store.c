/* The FPGA's store trigger: keeps the live picture in the image memory.
 *
 * The image memory holds a frame as two fields: the even frame lines first, then the odd ones. What is live is
 * the camera, or the frame generator's colour while that is on.
 */
#include "board/devices/devices.h"

#include <string.h>

enum { LINE_BYTES = 4 * BOARD_WIDTH, FIELD_LINES = BOARD_HEIGHT / 2 };

static const uint32_t CTRL = 0xff0000;
static const uint32_t CTRL_FRAME_GENERATOR = 1u << 23;
static const uint32_t FGCC = 0xff0004;
static const uint32_t IMAGE = 0x1000000;
static const uint32_t OPAQUE = 0xff000000;

static uint32_t fpga_word(const struct board* board, uint32_t address)
{
    uint32_t word;
    memcpy(&word, board->fpga + address, sizeof word);
    return le32toh(word);
}

static void fill_line(uint8_t* line, uint32_t pixel)
{
    uint32_t word = htole32(pixel);
    for (unsigned x = 0; x < BOARD_WIDTH; x++)
        memcpy(line + 4 * x, &word, sizeof word);
}

void store_live_picture(const struct board* board)
{
    bool generated = (fpga_word(board, CTRL) & CTRL_FRAME_GENERATOR) != 0;
    uint8_t status = board->i2c[BOARD_I2C_DECODER * 256 + BOARD_DECODER_STATUS];
    bool camera = !generated && (status & BOARD_STATUS_NO_LOCK) == 0;
    uint32_t color = OPAQUE | (generated ? fpga_word(board, FGCC) : 0);
    for (size_t y = 0; y < BOARD_HEIGHT; y++) {
        uint8_t* stored = board->fpga + IMAGE + (y / 2 + y % 2 * FIELD_LINES) * LINE_BYTES;
        if (camera)
            memcpy(stored, board->camera + y * LINE_BYTES, LINE_BYTES);
        else
            fill_line(stored, color);
    }
}
