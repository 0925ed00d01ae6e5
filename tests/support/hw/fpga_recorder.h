/* SPDX-License-Identifier: MIT */
/* A recorder in the place of the FPGA: defines the device primitives of hw/fpga_device.h, and so replaces
 * them in the program that links it.
 *
 * Memory and registers hold what was written; everything is recorded in order. Accesses outside the
 * FPGA's address space are recorded and go nowhere.
 */
#ifndef HALDEND_TESTS_FPGA_RECORDER_H
#define HALDEND_TESTS_FPGA_RECORDER_H

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

enum fpga_access_kind { read_register, write_register, read_memory, write_memory };

/* One device primitive. value is a register's value, or the number of bytes of a block. */
struct fpga_access {
    fpga_access_kind kind;
    uint32_t addr;
    uint32_t value;
};

bool operator==(const fpga_access& a, const fpga_access& b);
std::ostream& operator<<(std::ostream& out, const fpga_access& access);

using fpga_accesses = std::vector<fpga_access>;

/* What was done since the last fpga_recorder_reset(), in order. */
fpga_accesses& fpga_recorded();

/* The address space, byte by byte; registers little-endian, like everything in it. */
std::vector<unsigned char>& fpga_memory();

/* Forgets the record and zeroes the memory. */
void fpga_recorder_reset();

/* A register's value, without a trace in the record. */
uint32_t fpga_register(uint32_t addr);
void fpga_set_register(uint32_t addr, uint32_t value);

/* The len bytes of the memory at addr. */
std::vector<unsigned char> fpga_bytes(uint32_t addr, size_t len);

#endif
