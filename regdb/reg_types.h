/* SPDX-License-Identifier: MIT */
/* The records of the register database: registers, their bit fields, and the descriptor of a chip.
 *
 * They have a header of their own because both sides need them: the tables of regdb/ name the access
 * functions of hw/, and those take a table's entry.
 *
 * A register's value is stored left-aligned in 32 bits: a 32-bit register uses all of them, a 16-bit register
 * the most significant half, an 8-bit register the most significant byte. It is read with shifts only, so
 * that the byte order of the host doesn't matter.
 *
 * None of the records owns what its pointers name: tables, fields and texts live as long as the process.
 */
#ifndef HALDEND_REGDB_REG_TYPES_H
#define HALDEND_REGDB_REG_TYPES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

struct config_t;

/* One bit field. An array of them ends with an entry whose name is null. */
struct reg_bf {
    const char* name; /* lower case by convention */
    uint32_t value;   /* right-aligned: a 3-bit field holds 0..7 */
    uint8_t len;      /* width in bits */
    const char* help; /* empty for reserved fields */
};

/* One register. A table of them ends with an entry whose name is null. */
struct reg_bf_group {
    char base;         /* window: Lime 'D' display, 'C' capture, 'H' host, 'P' pio; other chips 'X' */
    uint32_t addr;     /* FPGA: device address; Lime: byte offset in its window; SAA: I2C sub-address */
    const char* name;  /* upper case by convention */
    int32_t size;      /* width in bits: 8, 16 or 32 */
    uint32_t value;    /* left-aligned, see above */
    struct reg_bf* bf; /* fields, the most significant first */
    uint8_t valid;     /* 0: the chip's write function refuses the register */
    const char* help;
};

/* One chip. The configuration object mirrors the bit-field values of its register file. */
struct chip_regs {
    struct config_t* config;
    struct reg_bf_group* regs;
    int (*read)(struct reg_bf_group* reg);  /* loads the chip's register into value; returns 1 */
    int (*write)(struct reg_bf_group* reg); /* returns -1 if valid is 0, else writes value and returns 1 */
};

/* Whether the register is 8, 16 or 32 bits wide. Composing, splitting and printing skip others. */
static inline int reg_has_known_width(const struct reg_bf_group* reg)
{
    return reg->size == 8 || reg->size == 16 || reg->size == 32;
}

/* A field's value as register files and printers show it. The register must have a known width.
 *
 * Kept: in 8- and 16-bit registers the shift leaves 0. The saved files of all boards are written so; the
 * register's comment in the file has the true value. */
static inline uint32_t reg_shown_field(const struct reg_bf_group* reg, const struct reg_bf* bf)
{
    return bf->value >> (32 - reg->size);
}

/* The value at the register's width, right-aligned; 0 for an unknown width. */
static inline uint32_t reg_value(const struct reg_bf_group* reg)
{
    switch (reg->size) {
    case 32:
        return reg->value;
    case 16:
        return reg->value >> 16;
    case 8:
        return reg->value >> 24;
    default:
        return 0;
    }
}

#ifdef __cplusplus
}
#endif

#endif
