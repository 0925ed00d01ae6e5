/* SPDX-License-Identifier: MIT */
/* A recorder in the place of the FPGA. */
#include "tests/support/hw/fpga_recorder.h"

#include "hw/fpga_device.h"

#include <algorithm>
#include <cstring>

static const size_t FPGA_SPACE = 0x1000000 + 1658880;

int fbfd = -1;

bool operator==(const fpga_access& a, const fpga_access& b)
{
    return a.kind == b.kind && a.addr == b.addr && a.value == b.value;
}

std::ostream& operator<<(std::ostream& out, const fpga_access& access)
{
    static const char* const names[] = {"read_register", "write_register", "read_memory", "write_memory"};
    return out << names[access.kind] << " " << std::hex << access.addr << " " << access.value << std::dec;
}

fpga_accesses& fpga_recorded()
{
    static fpga_accesses record;
    return record;
}

std::vector<unsigned char>& fpga_memory()
{
    static std::vector<unsigned char> memory(FPGA_SPACE);
    return memory;
}

void fpga_recorder_reset()
{
    fpga_recorded().clear();
    std::fill(fpga_memory().begin(), fpga_memory().end(), static_cast<unsigned char>(0));
}

static unsigned char* locate(uint32_t addr, size_t len)
{
    const bool inside = addr <= FPGA_SPACE && len <= FPGA_SPACE - addr;
    return inside ? fpga_memory().data() + addr : nullptr;
}

uint32_t fpga_register(uint32_t addr)
{
    const unsigned char* bytes = locate(addr, 4);
    uint32_t value = 0;
    for (int i = 3; bytes != nullptr && i >= 0; --i)
        value = value << 8 | bytes[i];
    return value;
}

void fpga_set_register(uint32_t addr, uint32_t value)
{
    unsigned char* bytes = locate(addr, 4);
    for (int i = 0; bytes != nullptr && i < 4; ++i, value >>= 8)
        bytes[i] = static_cast<unsigned char>(value);
}

std::vector<unsigned char> fpga_bytes(uint32_t addr, size_t len)
{
    const unsigned char* bytes = locate(addr, len);
    return bytes != nullptr ? std::vector<unsigned char>(bytes, bytes + len) : std::vector<unsigned char>();
}

uint32_t fpga_device_read_reg(uint32_t addr)
{
    const uint32_t value = fpga_register(addr);
    fpga_recorded().push_back({read_register, addr, value});
    return value;
}

int fpga_device_write_reg(uint32_t addr, uint32_t value)
{
    fpga_set_register(addr, value);
    fpga_recorded().push_back({write_register, addr, value});
    return 0;
}

int write_fpga_block(uint32_t offset, const void* buf, size_t len)
{
    unsigned char* bytes = locate(offset, len);
    if (bytes != nullptr && len != 0)
        memcpy(bytes, buf, len);
    fpga_recorded().push_back({write_memory, offset, static_cast<uint32_t>(len)});
    return 1;
}

int read_fpga_block(uint32_t offset, void* buf, size_t len)
{
    const unsigned char* bytes = locate(offset, len);
    if (bytes != nullptr && len != 0)
        memcpy(buf, bytes, len);
    fpga_recorded().push_back({read_memory, offset, static_cast<uint32_t>(len)});
    return 1;
}
