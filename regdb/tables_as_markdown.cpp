/* SPDX-License-Identifier: MIT */
/* Prints the register tables of the four chips as Markdown, for docs/register-files.md; checks that page, and
 * brings it up to date.
 */
#include "regdb/chip_regs.h"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

static const char BEGIN[] = "<!-- begin generated -->\n";
static const char END[] = "<!-- end generated -->\n";

static std::string hex(uint32_t number, int digits)
{
    char text[16];
    std::snprintf(text, sizeof text, "0x%0*x", digits, number);
    return text;
}

/* A help text without its outer blanks, which mean nothing outside of register files. */
static std::string trimmed(const std::string& text)
{
    const size_t first = text.find_first_not_of(' ');
    return first == std::string::npos ? "" : text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/* A row of a Markdown table. */
static std::string row(const std::vector<std::string>& cells)
{
    std::string text = "|";
    for (const std::string& cell : cells)
        text += cell.empty() ? " |" : " " + cell + " |";
    return text + "\n";
}

static std::string code(const std::string& text)
{
    return "`" + text + "`";
}

/* "[31:26]", or "[5]" for a single bit. */
static std::string bits(int top, int len)
{
    const std::string last = len > 1 ? ":" + std::to_string(top - len + 1) : "";
    return "[" + std::to_string(top) + last + "]";
}

/* Hexadecimal above 16 bits: those fields are addresses and colours. */
static std::string values(int len)
{
    const uint32_t largest = UINT32_MAX >> (32 - len);
    return len > 16 ? "0-" + hex(largest, 1) : "0-" + std::to_string(largest);
}

/* Reserved fields are left out; the gaps in the bit numbers show where they are. */
static bool is_reserved(const reg_bf& bf)
{
    return std::strncmp(bf.name, "res", 3) == 0 && *bf.help == 0;
}

static std::string field_rows(const reg_bf_group& reg)
{
    std::string text;
    int top = reg.size - 1;
    for (const reg_bf* bf = reg.bf; bf->name != nullptr; top -= bf->len, ++bf) {
        if (!is_reserved(*bf))
            text += row({"", "", code(bf->name), bits(top, bf->len), values(bf->len), trimmed(bf->help)});
    }
    return text;
}

/* Registers with several fields: a row for the register, then one for each field. */
static std::string wide_registers(const reg_bf_group* reg, const char* address_of, int digits)
{
    std::string text = row({"Register", address_of, "Field", "Bits", "Values", ""}) +
                       row({"---", "---", "---", "---", "---", "---"});
    for (; reg->name != nullptr; ++reg) {
        const std::string window = reg->base == 'X' ? "" : std::string(1, reg->base) + " ";
        text += row({"**" + code(reg->name) + "**", window + hex(reg->addr, digits), "", "", "",
                     "**" + trimmed(reg->help) + "**"});
        text += field_rows(*reg);
    }
    return text;
}

static std::string fields_of_byte(const reg_bf_group& reg)
{
    std::string text;
    int top = reg.size - 1;
    for (const reg_bf* bf = reg.bf; bf->name != nullptr; top -= bf->len, ++bf)
        text += (text.empty() ? "" : ", ") + code(bf->name) + (bf->len < 8 ? " " + bits(top, bf->len) : "");
    return text;
}

/* Registers of a byte: a row each. */
static std::string byte_registers(const reg_bf_group* reg)
{
    std::string text = row({"Register", "Sub-address", "Field", "Table value", "Written at start", ""}) +
                       row({"---", "---", "---", "---", "---", "---"});
    for (; reg->name != nullptr; ++reg)
        text += row({code(reg->name), hex(reg->addr, 2), fields_of_byte(*reg), hex(reg_value(reg), 2),
                     reg->valid != 0 ? "yes" : "no", trimmed(reg->help)});
    return text;
}

static std::string tables()
{
    return "\n### FPGA\n\n32 bits. Written only when a file names them.\n\n" +
           wide_registers(regs_fpga, "Address", 8) +
           "\n### Lime display controller\n\n32 bits. Written only when a file names them. The letter is the "
           "window: C "
           "capture, D display.\n\n" +
           wide_registers(regs_lime, "Window, offset", 4) + "\n### SAA7113 video decoder\n\n8 bits.\n\n" +
           byte_registers(regs_saa7113) + "\n### SAA7129 video encoder\n\n8 bits.\n\n" +
           byte_registers(regs_saa7129) + "\n";
}

static std::string contents(const char* path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

/* The page with the tables put between its marks; empty if the marks are missing. */
static std::string refreshed(const std::string& text)
{
    const size_t begin = text.find(BEGIN);
    const size_t end = text.find(END);
    if (begin == std::string::npos || end == std::string::npos || end < begin)
        return {};
    return text.substr(0, begin + std::strlen(BEGIN)) + tables() + text.substr(end);
}

/* Compares the page with the tables; writes it if refresh is true. Returns the exit status. */
static int compare(const char* program, const char* path, bool refresh)
{
    const std::string text = contents(path);
    const std::string wanted = refreshed(text);
    if (wanted.empty()) {
        std::cerr << path << ": can't be read, or has no marks around its generated part\n";
        return 1;
    }
    if (wanted == text)
        return 0;
    if (refresh)
        return (std::ofstream(path) << wanted).flush() ? 0 : 1;
    std::cerr << path << ": not what the register tables say; bring it up to date with\n    " << program
              << " --refresh " << path << "\n";
    return 1;
}

int main(int argc, char** argv)
{
    const std::string option = argc > 1 ? argv[1] : "";
    if (argc == 1)
        std::cout << tables();
    else if (argc == 3 && (option == "--check" || option == "--refresh"))
        return compare(argv[0], argv[2], option == "--refresh");
    else
        std::cerr << "usage: " << argv[0] << " [--check FILE | --refresh FILE]\n";
    return argc == 1 ? 0 : 2;
}
