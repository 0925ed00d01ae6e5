/* SPDX-License-Identifier: MIT */
/* The rows of the chip tables: constants that the compiler checks, and the mutable copies made from them.
 *
 * Field values change at run time, and the compiler can only check constants. So the fields of a register are
 * constant rows first, in datasheet order and without an end: fills() checks them, with_end() makes the array
 * that the register's entry points to.
 *
 * Include it outside of any C linkage block: it has templates.
 */
#ifndef HALDEND_REGDB_TABLE_ROWS_H
#define HALDEND_REGDB_TABLE_ROWS_H

#include "regdb/reg_types.h"

#include <cstddef>
#include <iterator>
#include <string_view>

/* The last entry of a register's fields, and of a chip's registers. */
constexpr reg_bf end_of_fields = {nullptr, 0, 0, ""};
constexpr reg_bf_group end_of_table = {0, 0, nullptr, 0, 0, nullptr, 0, nullptr};

/* The fields of a register and the end entry, laid out as an array of reg_bf. */
template <std::size_t N>
struct field_array {
    reg_bf row[N + 1];
};

template <std::size_t N>
constexpr field_array<N> with_end(const reg_bf (&rows)[N])
{
    field_array<N> fields{};
    for (std::size_t i = 0; i < N; ++i)
        fields.row[i] = rows[i];
    fields.row[N] = end_of_fields;
    return fields;
}

/* The fields of an 8-bit register that isn't split: one field of eight bits. */
constexpr field_array<1> byte_field(const char* name, const char* help)
{
    const reg_bf rows[] = {
        {name, 0, 8, help}
    };
    return with_end(rows);
}

/* Whether the fields add up to that width in bits, none is empty, and every value fits its field. */
template <std::size_t N>
[[nodiscard]] constexpr bool fills(const reg_bf (&rows)[N], int width)
{
    for (const reg_bf& field : rows) {
        if (field.len == 0 || (uint64_t{field.value} >> field.len) != 0)
            return false;
        width -= field.len;
    }
    return width == 0;
}

/* The mask of a field in its 32-bit register; 0 if there is no such field. */
template <std::size_t N>
constexpr uint32_t field_bits(const reg_bf (&rows)[N], std::string_view name)
{
    int left = 32;
    for (const reg_bf& field : rows) {
        left -= field.len;
        if (name == field.name)
            return static_cast<uint32_t>((uint64_t{1} << field.len) - 1) << left;
    }
    return 0;
}

/* The value storage (left-aligned) of an 8-bit register that holds the byte. */
constexpr uint32_t byte_value(uint8_t byte)
{
    return uint32_t{byte} << 24;
}

#endif
