/* SPDX-License-Identifier: MIT */
/* Any bytes as a register file, and all that the daemon does with one: read it, apply it, write the chip, read the
 * chip, mirror, print, save, and read what was saved.
 *
 * The first byte of an input chooses the chip, '0' to '3' for FPGA, display controller, decoder and encoder; the
 * rest is the file. What doesn't hold ends the process, after a line on standard error.
 */
#include "regdb/chip_regs.h"
#include "regdb/config_file.h"
#include "regdb/config_mirror.h"
#include "regdb/debug_print.h"
#include "regdb/registers.h"
#include "tests/fuzz/expect.h"
#include "tests/fuzz/fuzz_target.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

const char INPUT[] = "input.cnf";
const char SAVED[] = "saved.cnf";

/* A folder of the process's own, in which inputs are read: what they include is one of the few things in it. */
class working_folder
{
public:
    working_folder()
        : path(std::filesystem::temp_directory_path() / "fuzz_register_files.XXXXXX"),
          home(open(".", O_PATH | O_DIRECTORY | O_CLOEXEC))
    {
        EXPECT(mkdtemp(path.data()) != nullptr);
        std::ofstream(path + "/other.cnf")
            << "SRIC: { sinr = 3; };\nDLS: { dls0 = 1; };\nAIN1: { ainc1 = 9; };\n";
        EXPECT(mkdir((path + "/folder").c_str(), 0700) == 0);
        EXPECT(mkfifo((path + "/fifo").c_str(), 0600) == 0);
    }
    ~working_folder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path, ignored);
        close(home);
    }
    working_folder(const working_folder&) = delete;
    working_folder& operator=(const working_folder&) = delete;

    void enter() const { EXPECT(chdir(path.c_str()) == 0); }
    void leave() const { EXPECT(fchdir(home) == 0); }

private:
    std::string path;
    int home;
};

/* Whether the text includes by a path rather than a name: that could be any file of this machine. */
bool leaves_folder(std::string_view text)
{
    const std::string_view directive = "@include";
    for (size_t at = text.find(directive); at != text.npos; at = text.find(directive, at + 1)) {
        const size_t begin = text.find('"', at);
        if (begin == text.npos)
            return false;
        const size_t end = text.find('"', begin + 1);
        if (text.substr(begin, end - begin).find('/') != text.npos)
            return true;
    }
    return false;
}

/* What of a register changes at run time. */
struct register_state {
    explicit register_state(const reg_bf_group& reg) : value(reg.value), valid(reg.valid)
    {
        for (const reg_bf* bf = reg.bf; bf->name != nullptr; ++bf)
            fields.push_back(bf->value);
    }
    bool operator==(const register_state& other) const
    {
        return value == other.value && valid == other.valid && fields == other.fields;
    }

    uint32_t value;
    uint8_t valid;
    std::vector<uint32_t> fields;
};

std::vector<register_state> state_of(const chip_regs& chip)
{
    std::vector<register_state> state;
    for (const reg_bf_group* reg = chip.regs; reg->name != nullptr; ++reg)
        state.emplace_back(*reg);
    return state;
}

void restore(const chip_regs& chip, const std::vector<register_state>& state)
{
    for (size_t i = 0; i < state.size(); ++i) {
        reg_bf_group& reg = chip.regs[i];
        reg.value = state[i].value;
        reg.valid = state[i].valid;
        for (size_t field = 0; field < state[i].fields.size(); ++field)
            reg.bf[field].value = state[i].fields[field];
    }
}

bool is_composed(reg_bf_group reg)
{
    const uint32_t value = reg.value;
    make_reg_value(&reg);
    return reg.value == value;
}

/* What is written to a chip is composed, always; what is read from it is anything that fits its width. */
int write_nothing(reg_bf_group* reg)
{
    EXPECT(is_composed(*reg));
    return reg->valid != 0 ? 1 : -1;
}

int read_noise(reg_bf_group* reg)
{
    const int beside_view = 32 - reg->size;
    reg->value = (reg->addr + 1) * 2654435761U >> beside_view << beside_view;
    return 1;
}

void expect_fields_fit(const chip_regs& chip)
{
    for (const reg_bf_group* reg = chip.regs; reg->name != nullptr; ++reg)
        for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
            EXPECT((uint64_t{bf->value} >> bf->len) == 0);
}

void read_input(const chip_regs& chip)
{
    const std::vector<register_state> before = state_of(chip);
    const int result = read_config_from_file(&chip, INPUT, 1);
    EXPECT(result == 0 || (result == -1 && state_of(chip) == before));
    expect_fields_fit(chip);
    /* A register that the file doesn't name keeps its initial value, which is not that of its fields. */
    for (size_t i = 0; i < before.size(); ++i)
        EXPECT(register_state(chip.regs[i]) == before[i] || is_composed(chip.regs[i]));
}

int settings_in(const config_setting_t* setting)
{
    int count = 1;
    for (int i = 0; i < config_setting_length(setting); ++i)
        count += settings_in(config_setting_get_elem(setting, static_cast<unsigned int>(i)));
    return count;
}

/* The daemon does this for as long as it runs, so the second time mustn't add anything. */
void mirror(const chip_regs& chip)
{
    int settings[2] = {};
    for (int& count : settings) {
        for (const reg_bf_group* reg = chip.regs; reg->name != nullptr; ++reg)
            EXPECT(update_config_setting_from_reg(&chip, reg) == 1);
        count = settings_in(config_root_setting(chip.config));
    }
    EXPECT(settings[0] == settings[1]);
}

/* The fields as a file has them. */
std::vector<uint32_t> saved_fields(const chip_regs& chip)
{
    std::vector<uint32_t> fields;
    for (const reg_bf_group* reg = chip.regs; reg->name != nullptr; ++reg)
        for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
            fields.push_back(reg_shown_field(reg, bf));
    return fields;
}

void save_and_read_back(const chip_regs& chip)
{
    const std::vector<uint32_t> fields = saved_fields(chip);
    EXPECT(write_config_to_file(&chip, SAVED, 0) == 0);
    /* The display controller's file can't be read: some of its fields have a '#' in their names. */
    const int expected = chip.regs == regs_lime ? -1 : 0;
    EXPECT(read_config_from_file(&chip, SAVED, 1) == expected);
    size_t at = 0;
    for (const reg_bf_group* reg = chip.regs; reg->name != nullptr; ++reg)
        for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
            EXPECT(bf->value == fields[at++]);
}

void use(const chip_regs& chip)
{
    read_input(chip);
    EXPECT(write_all_regs(&chip) == 0);
    mirror(chip);
    DEBUG_print_all_regs(&chip, 0);
    DEBUG_print_all_regs(&chip, 1);
    save_and_read_back(chip);
    EXPECT(read_all_regs(&chip) == 0);
    expect_fields_fit(chip);
    EXPECT(write_all_regs(&chip) == 0);
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    static const chip_regs* const chips[] = {&crp_fpga, &crp_lime, &crp_saa7113, &crp_saa7129};
    static const working_folder folder;
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    if (input.empty() || leaves_folder(input))
        return INPUT_REFUSED;

    chip_regs chip = *chips[data[0] % 4];
    chip.read = read_noise;
    chip.write = write_nothing;
    const std::vector<register_state> initial = state_of(chip);
    folder.enter();
    std::ofstream(INPUT) << input.substr(1);
    config_init(chip.config);
    use(chip);
    config_destroy(chip.config);
    folder.leave();
    restore(chip, initial);
    return INPUT_TAKEN;
}
