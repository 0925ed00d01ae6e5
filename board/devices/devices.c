/* The three devices: what their operations do, which faults meet them, and how the trace shows them.
 *
 * Registers are reached through mappings of the files, block transfers are the kernel's on the file itself;
 * both see the same memory.
 */
#include "board/devices/devices.h"

#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <string.h>

NEXT(close, int, int)

/* Requests of the FPGA's driver, as the target's processor encodes them: the kernel's macros give other
 * numbers elsewhere. Six in a row transfer a register, in both directions, at three widths. */
enum { FPGA_TRANSFERS = 6, FPGA_WIDTHS = 3 };
static const uint32_t FPGA_READ_8 = 0xc0086b00;
static const uint32_t FPGA_PLAIN = 0x20006b07;

static const uint32_t FPGA_STORE_TRIGGER = 0xff0008; /* a register: bit 0 written as 1 */

/* The argument of the register requests. */
struct fpga_record {
    uint32_t address;
    uint32_t value;
};
_Static_assert(sizeof(struct fpga_record) == 8, "the requests say 8 bytes");

struct device_traits {
    enum board_operation open;
    enum board_operation seek;
    enum board_operation read;
    enum board_operation write;
    enum board_operation map;
};

static const struct device_traits* traits(enum device device)
{
    static const struct device_traits all[DEVICE_COUNT] = {
        [DEVICE_FPGA] = {BOARD_OPERATION_FPGA_OPEN,  BOARD_OPERATION_FPGA_SEEK, BOARD_OPERATION_FPGA_READ,
                         BOARD_OPERATION_FPGA_WRITE, BOARD_OPERATION_NONE},
        [DEVICE_LIME] = {.open = BOARD_OPERATION_LIME_OPEN, .map = BOARD_OPERATION_LIME_MAP},
        [DEVICE_I2C] = {.open = BOARD_OPERATION_I2C_OPEN     },
    };
    return &all[device];
}

static int64_t device_bytes(enum device device)
{
    return device == DEVICE_FPGA ? (int64_t)BOARD_FPGA_BYTES : (int64_t)board_lime_bytes();
}

/* The result of a system call. */
static int outcome(int error)
{
    if (error == 0)
        return 0;
    errno = error;
    return -1;
}

/* --- Open, close, map --- */

int device_open(enum device device, int descriptor)
{
    const struct board* board = board_current();
    int error = fault_take(board, traits(device)->open, NULL);
    if (tracing(board)) {
        struct line line;
        line_start(&line, device, "open");
        if (error == 0) {
            line_text(&line, " =");
            line_number(&line, descriptor);
        }
        line_finish(&line, board, error);
    }
    if (error == 0) {
        if (device == DEVICE_FPGA)
            position_begin(descriptor);
        return descriptor;
    }
    descriptor_forget(descriptor);
    next_close()(descriptor);
    return outcome(error);
}

void device_close(enum device device)
{
    const struct board* board = board_current();
    if (!tracing(board))
        return;
    struct line line;
    line_start(&line, device, "close");
    line_finish(&line, board, 0);
}

int device_map(enum device device)
{
    return fault_take(board_current(), traits(device)->map, NULL);
}

void device_mapped(enum device device, size_t length, int error)
{
    const struct board* board = board_current();
    if (!tracing(board))
        return;
    struct line line;
    line_start(&line, device, "map");
    line_number(&line, (int64_t)length);
    line_finish(&line, board, error);
}

/* --- Block transfers --- */

static void trace_transfer(const struct board* board, enum device device, const char* operation, size_t count,
                           const void* buffer, ssize_t result)
{
    if (!tracing(board))
        return;
    struct line line;
    line_start(&line, device, operation);
    line_number(&line, (int64_t)count);
    if (result >= 0) {
        line_text(&line, " =");
        line_number(&line, result);
    }
    if (result > 0)
        line_bytes(&line, buffer, (size_t)result);
    line_finish(&line, board, result < 0 ? errno : 0);
}

int64_t device_seek(enum device device, int descriptor, int64_t offset, int whence)
{
    const struct board* board = board_current();
    int error = device == DEVICE_I2C ? ESPIPE : fault_take(board, traits(device)->seek, NULL);
    int64_t position = error == 0 ? position_seek(descriptor, offset, whence) : outcome(error);
    if (device == DEVICE_I2C)
        judge_operation(board, device, "seek", "no such operation");
    if (tracing(board)) {
        struct line line;
        line_start(&line, device, "seek");
        if (position < 0 && offset < 0)
            line_number(&line, offset);
        else
            line_hex(&line, (uint64_t)(position < 0 ? offset : position), 8);
        line_finish(&line, board, position < 0 ? errno : 0);
    }
    return position;
}

static const char* transfer_name(enum device device, bool writing)
{
    if (device == DEVICE_I2C)
        return writing ? "send" : "receive";
    return writing ? "write" : "read";
}

/* Before the transfer moves the position. Returns it. */
static int64_t judge_transfer(const struct board* board, enum device device, int descriptor, bool writing,
                              size_t count)
{
    int64_t position = position_of(descriptor);
    if (device == DEVICE_FPGA)
        judge_block(board, transfer_name(device, writing), position, count);
    return position;
}

static ssize_t read_inside(const struct board* board, enum device device, int descriptor, void* buffer,
                           size_t count)
{
    judge_transfer(board, device, descriptor, false, count);
    return position_read(descriptor, buffer, count);
}

ssize_t device_read(enum device device, int descriptor, void* buffer, size_t count)
{
    const struct board* board = board_current();
    bool shortened = false;
    int error = device == DEVICE_I2C ? EOPNOTSUPP : fault_take(board, traits(device)->read, &shortened);
    ssize_t result = error == 0
                         ? read_inside(board, device, descriptor, buffer, shortened ? count / 2 : count)
                         : outcome(error);
    if (device == DEVICE_I2C)
        judge_operation(board, device, transfer_name(device, false), "no such operation");
    trace_transfer(board, device, transfer_name(device, false), count, buffer, result);
    return result;
}

/* A device has an end, behind which a file would grow. */
static ssize_t write_inside(const struct board* board, enum device device, int descriptor, const void* buffer,
                            size_t count)
{
    int64_t room = device_bytes(device) - judge_transfer(board, device, descriptor, true, count);
    if (count > 0 && room <= 0)
        return outcome(ENOSPC);
    return position_write(descriptor, buffer, (uint64_t)room < count ? (size_t)room : count);
}

ssize_t device_write(enum device device, int descriptor, const void* buffer, size_t count)
{
    const struct board* board = board_current();
    bool shortened = false;
    int error = device == DEVICE_I2C ? EOPNOTSUPP : fault_take(board, traits(device)->write, &shortened);
    ssize_t result = error == 0
                         ? write_inside(board, device, descriptor, buffer, shortened ? count / 2 : count)
                         : outcome(error);
    if (device == DEVICE_I2C)
        judge_operation(board, device, transfer_name(device, true), "no such operation");
    trace_transfer(board, device, transfer_name(device, true), count, buffer, result);
    return result;
}

/* --- Requests --- */

static void trace_register(const struct board* board, enum device device, const char* operation,
                           uint32_t address, unsigned address_digits, const char* separator, uint32_t value,
                           unsigned value_digits, int error)
{
    struct line line;
    line_start(&line, device, operation);
    line_hex(&line, address, address_digits);
    if (separator != NULL) {
        line_text(&line, separator);
        line_hex(&line, value, value_digits);
    }
    line_finish(&line, board, error);
}

static const char* reason_of(int error)
{
    switch (error) {
    case EFAULT:
        return "its record is missing";
    case EOPNOTSUPP:
        return "no such size";
    default:
        return "no such request";
    }
}

static int refuse(const struct board* board, enum device device, const char* operation, uint32_t number,
                  unsigned digits, int error)
{
    judge_request(board, device, operation, number, digits, reason_of(error));
    if (tracing(board))
        trace_register(board, device, operation, number, digits, NULL, 0, 0, error);
    return outcome(error);
}

static uint32_t load_little(const uint8_t* memory, unsigned bytes)
{
    uint32_t word = 0;
    uint16_t half = 0;
    switch (bytes) {
    case 4:
        memcpy(&word, memory, sizeof word);
        return le32toh(word);
    case 2:
        memcpy(&half, memory, sizeof half);
        return le16toh(half);
    default:
        return *memory;
    }
}

static void store_little(uint8_t* memory, unsigned bytes, uint32_t value)
{
    uint32_t word = htole32(value);
    uint16_t half = htole16((uint16_t)value);
    switch (bytes) {
    case 4:
        memcpy(memory, &word, sizeof word);
        break;
    case 2:
        memcpy(memory, &half, sizeof half);
        break;
    default:
        *memory = (uint8_t)value;
        break;
    }
}

static void fpga_store(const struct board* board, unsigned bytes, const struct fpga_record* record)
{
    store_little(board->fpga + record->address, bytes, record->value);
    if (record->address == FPGA_STORE_TRIGGER && (record->value & 1) != 0)
        store_live_picture(board);
}

static int fpga_transfer(const struct board* board, bool writing, unsigned bytes, struct fpga_record* record)
{
    int error =
        fault_take(board, writing ? BOARD_OPERATION_FPGA_IOCTL_WRITE : BOARD_OPERATION_FPGA_IOCTL_READ, NULL);
    if (error != 0)
        return error;
    judge_register(board, writing, bytes, record->address, record->value);
    if (record->address > BOARD_FPGA_BYTES - bytes)
        return EINVAL;
    if (writing)
        fpga_store(board, bytes, record);
    else
        record->value = load_little(board->fpga + record->address, bytes);
    return 0;
}

static int fpga_plain(const struct board* board)
{
    if (tracing(board))
        trace_register(board, DEVICE_FPGA, "ioctl", FPGA_PLAIN, 8, NULL, 0, 0, 0);
    return 0;
}

static int fpga_ioctl(const struct board* board, uint32_t request, struct fpga_record* record)
{
    static const char* const names[FPGA_TRANSFERS] = {"read8",  "read16",  "read32",
                                                      "write8", "write16", "write32"};
    uint32_t number = request - FPGA_READ_8;
    if (request == FPGA_PLAIN)
        return fpga_plain(board);
    if (number >= FPGA_TRANSFERS)
        return refuse(board, DEVICE_FPGA, "ioctl", request, 8, ENOTTY);
    if (record == NULL)
        return refuse(board, DEVICE_FPGA, "ioctl", request, 8, EFAULT);
    bool writing = number >= FPGA_WIDTHS;
    unsigned bytes = 1u << number % FPGA_WIDTHS;
    int error = fpga_transfer(board, writing, bytes, record);
    if (tracing(board))
        trace_register(board, DEVICE_FPGA, names[number], record->address, 8,
                       writing      ? ""
                       : error == 0 ? " ="
                                    : NULL,
                       record->value, 2 * bytes, error);
    return outcome(error);
}

static int i2c_choose(const struct board* board, int descriptor, uintptr_t slave)
{
    int error = fault_take(board, BOARD_OPERATION_I2C_SLAVE, NULL);
    if (error == 0 && slave > 0x7f) {
        judge_request(board, DEVICE_I2C, "slave", (uint32_t)slave, 2, "no such address");
        error = EINVAL;
    }
    if (error == 0)
        descriptor_set_slave(descriptor, (unsigned)slave);
    if (tracing(board))
        trace_register(board, DEVICE_I2C, "slave", (uint32_t)slave, 2, NULL, 0, 0, error);
    return outcome(error);
}

/* The decoder's status is its own to write. */
static bool read_only(unsigned chip, unsigned sub_address)
{
    return chip == BOARD_I2C_DECODER && sub_address == BOARD_DECODER_STATUS;
}

static int i2c_byte(const struct board* board, unsigned chip, const struct i2c_smbus_ioctl_data* transfer)
{
    bool writing = transfer->read_write == I2C_SMBUS_WRITE;
    int error = fault_take(board, writing ? BOARD_OPERATION_I2C_WRITE : BOARD_OPERATION_I2C_READ, NULL);
    if (error != 0)
        return error;
    judge_byte(board, writing, chip, transfer->command);
    if (chip != BOARD_I2C_DECODER && chip != BOARD_I2C_ENCODER)
        return ENXIO;
    uint8_t* cell = board->i2c + chip * 256 + transfer->command;
    if (!writing)
        transfer->data->byte = *cell;
    else if (!read_only(chip, transfer->command))
        *cell = transfer->data->byte;
    return 0;
}

static int i2c_transfer(const struct board* board, int descriptor,
                        const struct i2c_smbus_ioctl_data* transfer)
{
    if (transfer == NULL || transfer->data == NULL)
        return refuse(board, DEVICE_I2C, "ioctl", I2C_SMBUS, 8, EFAULT);
    if (transfer->size != I2C_SMBUS_BYTE_DATA)
        return refuse(board, DEVICE_I2C, "transfer", transfer->size, 2, EOPNOTSUPP);
    bool writing = transfer->read_write == I2C_SMBUS_WRITE;
    int error = i2c_byte(board, descriptor_slave(descriptor), transfer);
    if (tracing(board))
        trace_register(board, DEVICE_I2C, writing ? "write" : "read", transfer->command, 2,
                       writing      ? ""
                       : error == 0 ? " ="
                                    : NULL,
                       transfer->data->byte, 2, error);
    return outcome(error);
}

int device_ioctl(enum device device, int descriptor, uint32_t request, void* argument)
{
    const struct board* board = board_current();
    if (device == DEVICE_FPGA)
        return fpga_ioctl(board, request, argument);
    if (device == DEVICE_I2C && request == I2C_SLAVE)
        return i2c_choose(board, descriptor, (uintptr_t)argument);
    if (device == DEVICE_I2C && request == I2C_SMBUS)
        return i2c_transfer(board, descriptor, argument);
    return refuse(board, device, "ioctl", request, 8, ENOTTY);
}
