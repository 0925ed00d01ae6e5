/* SPDX-License-Identifier: MIT */
/* The table of descriptors.
 *
 * One atomic word a descriptor. The lower byte is the device. The bits above it are the chosen slave address
 * on the I2C bus, the number of the file's position on other devices. After a device descriptor is closed,
 * the upper byte keeps the device and the lower byte is 0. Descriptors behind the end of the table are looked
 * up every time, and have no slave address.
 */
#include "board/devices/devices.h"

#include <sys/stat.h>

enum { TABLE_SIZE = 65536, DEVICE_BITS = 8 };

static uint16_t s_entries[TABLE_SIZE];

static uint16_t* entry_of(int descriptor)
{
    return descriptor >= 0 && descriptor < TABLE_SIZE ? &s_entries[descriptor] : NULL;
}

static uint16_t load(const uint16_t* entry)
{
    return __atomic_load_n(entry, __ATOMIC_RELAXED);
}

static void store(uint16_t* entry, unsigned value)
{
    __atomic_store_n(entry, (uint16_t)value, __ATOMIC_RELAXED);
}

static enum device device_of_file(const struct board* board, const struct stat* status)
{
    struct file_identity identity = file_identity_of(status);
    for (int device = DEVICE_FPGA; device < DEVICE_COUNT; ++device)
        if (board->files[device].inode == identity.inode && board->files[device].device == identity.device)
            return (enum device)device;
    return DEVICE_NONE;
}

static enum device look_at(int descriptor)
{
    const struct board* board = board_current();
    enum device device = DEVICE_NONE;
    if (board != NULL) {
        int saved = errno;
        struct stat status;
        if (fstat(descriptor, &status) != 0) {
            errno = saved;
            return DEVICE_NONE;
        }
        device = device_of_file(board, &status);
    }
    uint16_t* entry = entry_of(descriptor);
    if (entry != NULL)
        store(entry, device);
    return device;
}

enum device descriptor_device(int descriptor)
{
    const uint16_t* entry = entry_of(descriptor);
    if (entry != NULL) {
        unsigned device = load(entry) & ((1u << DEVICE_BITS) - 1);
        if (device != DEVICE_UNKNOWN)
            return (enum device)device;
    }
    return descriptor < 0 ? DEVICE_NONE : look_at(descriptor);
}

void descriptor_forget(int descriptor)
{
    uint16_t* entry = entry_of(descriptor);
    if (entry != NULL)
        store(entry, DEVICE_UNKNOWN);
}

void descriptor_close(int descriptor, enum device device)
{
    uint16_t* entry = entry_of(descriptor);
    if (entry != NULL)
        store(entry, device == DEVICE_NONE ? DEVICE_UNKNOWN : (unsigned)device << DEVICE_BITS);
}

enum device descriptor_closed_device(int descriptor)
{
    const uint16_t* entry = entry_of(descriptor);
    unsigned value = entry != NULL ? load(entry) : 0;
    return (value & ((1u << DEVICE_BITS) - 1)) == DEVICE_UNKNOWN ? (enum device)(value >> DEVICE_BITS)
                                                                 : DEVICE_UNKNOWN;
}

void descriptor_forget_all(void)
{
    for (int descriptor = 0; descriptor < TABLE_SIZE; ++descriptor)
        if (load(&s_entries[descriptor]) != DEVICE_UNKNOWN)
            store(&s_entries[descriptor], DEVICE_UNKNOWN);
}

void descriptor_copy(int original, int copy)
{
    const uint16_t* from = entry_of(original);
    uint16_t* to = entry_of(copy);
    if (to != NULL)
        store(to, from != NULL ? load(from) : DEVICE_UNKNOWN);
}

static unsigned above_device(int descriptor)
{
    const uint16_t* entry = entry_of(descriptor);
    return entry != NULL ? (unsigned)load(entry) >> DEVICE_BITS : 0;
}

unsigned descriptor_slave(int descriptor)
{
    return above_device(descriptor);
}

void descriptor_set_slave(int descriptor, unsigned slave)
{
    uint16_t* entry = entry_of(descriptor);
    if (entry != NULL)
        store(entry, DEVICE_I2C | slave << DEVICE_BITS);
}

unsigned descriptor_position(int descriptor)
{
    return above_device(descriptor);
}

void descriptor_set_position(int descriptor, unsigned number)
{
    uint16_t* entry = entry_of(descriptor);
    if (entry != NULL)
        store(entry, (load(entry) & ((1u << DEVICE_BITS) - 1)) | number << DEVICE_BITS);
}
