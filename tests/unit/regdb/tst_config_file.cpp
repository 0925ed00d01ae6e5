/* SPDX-License-Identifier: MIT */
/* Register files: reading, writing, printing, and every fault that a file can have. */
#include "regdb/config_file.h"
#include "regdb/config_guard.h"
#include "regdb/debug_print.h"
#include "tests/unit/regdb/small_chip.h"

#include <atomic>
#include <csignal>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/* The seconds that the program gets from time(), if not 0. */
static time_t told_time;

extern "C" time_t time(time_t* /*copy*/) noexcept
{
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    return told_time != 0 ? told_time : now.tv_sec;
}

namespace
{

class config_file : public small_chip
{
protected:
    void SetUp() override
    {
        small_chip::SetUp();
        char name[] = "/tmp/tst_config_file_XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(name));
        folder = name;
    }
    void TearDown() override
    {
        std::filesystem::remove_all(folder);
        small_chip::TearDown();
    }

    std::string path(const char* name = "chip.cnf") const { return folder + "/" + name; }

    std::string make(const std::string& text, const char* name = "chip.cnf") const
    {
        std::ofstream(path(name)) << text;
        return path(name);
    }

    /* Reads and applies; stores the printed lines. */
    int read(const std::string& file, int apply = 1)
    {
        testing::internal::CaptureStderr();
        const int result = read_config_from_file(&chip, file.c_str(), apply);
        printed = testing::internal::GetCapturedStderr();
        return result;
    }

    std::string written(int read_first)
    {
        EXPECT_EQ(0, write_config_to_file(&chip, path().c_str(), read_first));
        std::ifstream file(path());
        std::stringstream text;
        text << file.rdbuf();
        return text.str();
    }

    /* Permission bits. */
    static unsigned mode_of(const std::string& file)
    {
        struct stat status = {};
        EXPECT_EQ(0, stat(file.c_str(), &status));
        return status.st_mode & 07777;
    }

    void expect_refused(const std::string& file)
    {
        EXPECT_EQ(-1, read(file));
        EXPECT_EQ("Errormessage in configfile: " + file + ", Linenumber:0\nfile I/O error\n", printed);
        EXPECT_EQ(0u, value("SRIC"));
        EXPECT_EQ(1, set_bitfield_by_name(&chip, "SRIC", "sinr", 0));
    }

    std::string folder;
    std::string printed;
};

TEST_F(config_file, sets_the_fields_it_names)
{
    EXPECT_EQ(0, read(make("sric: { SINR = 3; rinr = 0x5; };\nHALF: { low = 7; };\n")));
    EXPECT_EQ("", printed);
    EXPECT_EQ(0x00000305u, value("SRIC"));
    EXPECT_EQ(0x00070000u, value("HALF"));
    EXPECT_EQ(1, regs[0].valid);
    EXPECT_EQ(std::vector<std::string>{}, chip_log);
}

TEST_F(config_file, that_names_nothing_makes_nothing_valid)
{
    EXPECT_EQ(0, read(make("")));
    EXPECT_EQ(0, regs[0].valid);
    write_all_regs(&chip);
    EXPECT_EQ((std::vector<std::string>{"write BYTE", "write ODD"}), chip_log);
}

TEST_F(config_file, without_apply_is_only_kept)
{
    EXPECT_EQ(0, read(make("SRIC: { sinr = 3; };"), 0));
    EXPECT_EQ(0u, value("SRIC"));
    EXPECT_EQ(3, mirrored("SRIC.sinr"));
}

TEST_F(config_file, skips_what_it_does_not_know)
{
    EXPECT_EQ(0, read(make("NONE: { sinr = 3; };\nSRIC: { none = 1; rinr = 4; };\nsolo = 5;\n"
                           "array = [1, 2];\nlist = (1, { SRIC = 2; });\ntext = \"SRIC\";\n")));
    EXPECT_EQ(4u, value("SRIC"));
}

TEST_F(config_file, takes_other_types_as_0)
{
    EXPECT_EQ(0, read(make("SRIC: { sinr = \"3\"; rinr = [1, 2]; res1 = { sinr = 1; }; };")));
    EXPECT_EQ(0u, value("SRIC"));
    EXPECT_EQ(1, regs[0].valid);
}

TEST_F(config_file, cuts_large_and_negative_numbers_to_the_field)
{
    EXPECT_EQ(0, read(make("SRIC: { rinr = -1; };\n")));
    EXPECT_EQ(0xffu, field("SRIC", "rinr"));
}

TEST_F(config_file, with_a_group_twice_is_an_error)
{
    EXPECT_EQ(-1, read(make("SRIC: { sinr = 1; };\nSRIC: { sinr = 2; };\n")));
    EXPECT_NE(std::string::npos, printed.find("Linenumber:2\n"));
}

TEST_F(config_file, that_does_not_exist_is_reported)
{
    expect_refused("/nonexistent/chip.cnf");
}

TEST_F(config_file, sets_nothing_without_a_configuration_or_a_name)
{
    const chip_regs without = {nullptr, regs, read_small_chip, write_small_chip};
    set_all_regs_from_config(&without);
    ASSERT_EQ(CONFIG_TRUE, config_read_string(&config, "list = ( { sinr = 1; } );"));
    set_reg_by_name_from_config_setting(&chip, config_lookup(&config, "list.[0]"));
    EXPECT_EQ(0, regs[0].valid);
}

TEST_F(config_file, that_is_a_folder_is_reported)
{
    expect_refused(folder);
}

TEST_F(config_file, that_is_a_fifo_is_reported_without_waiting)
{
    ASSERT_EQ(0, mkfifo(path().c_str(), 0600));
    expect_refused(path());
}

/* Only the check before the library reads: the library can't be kept from later changes. */
TEST_F(config_file, that_turns_into_a_fifo_is_looked_at_without_waiting)
{
    const std::string file = make("");
    const std::string fifo = path("fifo");
    ASSERT_EQ(0, mkfifo(fifo.c_str(), 0600));
    std::atomic<bool> swapping(true);
    std::thread swapper([&] {
        while (swapping)
            renameat2(AT_FDCWD, file.c_str(), AT_FDCWD, fifo.c_str(), RENAME_EXCHANGE);
    });
    const int enough = 1000;
    int safe = 0;
    int unsafe = 0;
    while (safe < enough || unsafe < enough) {
        int line = 0;
        ++(config_file_fault(file.c_str(), &line) == nullptr ? safe : unsafe);
    }
    swapping = false;
    swapper.join();
}

/* A lease: without O_NONBLOCK the kernel waits for its holder, for 45 s if that does nothing. */
TEST_F(config_file, whose_opening_would_wait_is_reported_without_waiting)
{
    std::signal(SIGIO, SIG_IGN); /* the notification of the holder */
    const int holder = open(make("").c_str(), O_RDWR | O_CLOEXEC);
    ASSERT_EQ(0, fcntl(holder, F_SETLEASE, F_WRLCK));
    expect_refused(path());
    close(holder);
    EXPECT_EQ(0, read(path()));
}

/* The kernel's log says that it is a regular file, and waits if it has no message. */
TEST_F(config_file, whose_reading_would_wait_is_reported_without_waiting)
{
    expect_refused("/proc/kmsg");
}

TEST_F(config_file, that_includes_a_folder_is_reported_and_the_process_lives)
{
    expect_refused(make("@include \"" + folder + "\"\n"));
    expect_refused(make("SRIC: { sinr = 1; };\n \t@include \t\"" + folder + "\"\n"));
    make("@include \"" + folder + "\"\n", "inner.cnf");
    expect_refused(make("@include \"" + path("inner.cnf") + "\"\n"));
}

TEST_F(config_file, that_includes_another_has_what_that_has)
{
    make("SRIC: { sinr = 3; };\n", "inner.cnf");
    EXPECT_EQ(0, read(make("@include \"" + path("inner.cnf") + "\"\nHALF: { low = 1; };\n")));
    EXPECT_EQ(0x00000300u, value("SRIC"));
    EXPECT_EQ(0x00010000u, value("HALF"));
}

TEST_F(config_file, that_includes_itself_is_an_error)
{
    std::string lines;
    for (int i = 0; i < 50; ++i)
        lines += "@include \"" + path() + "\"\n";
    EXPECT_EQ(-1, read(make(lines)));
}

TEST_F(config_file, with_an_error_is_reported_with_its_line)
{
    EXPECT_EQ(-1, read(make("\n\n\n\n\n\nSRIC: { sinr = ; };\n")));
    EXPECT_EQ("Errormessage in configfile: " + path() + ", Linenumber:7\nsyntax error\n", printed);
}

TEST_F(config_file, truncated_anywhere_is_read_or_reported)
{
    const std::string whole =
        "SRIC: // comment\n{ sinr = 3; /* more */ rinr = 0x5; };\nHALF: { low = 7; };\n";
    for (size_t length = 0; length <= whole.size(); ++length) {
        const int result = read(make(whole.substr(0, length)));
        EXPECT_EQ(result == 0, printed.empty()) << length;
        EXPECT_EQ(0, read_all_regs(&chip)) << length;
    }
}

TEST_F(config_file, of_ten_megabytes_of_comments_is_read)
{
    std::string text;
    for (int i = 0; i < 200000; ++i)
        text += "# fifty characters of comment, again and again ....\n";
    EXPECT_EQ(0, read(make(text + "SRIC: { sinr = 3; };\n")));
    EXPECT_EQ(0x00000300u, value("SRIC"));
}

/* The same text with every digit 0. */
std::string with_zeros(std::string text)
{
    for (char& c : text)
        c = c >= '0' && c <= '9' ? '0' : c;
    return text;
}

TEST_F(config_file, is_written_in_its_layout)
{
    set_bitfield_by_name(&chip, "SRIC", "sinr", 3);
    set_bitfield_by_name(&chip, "SRIC", "rinr", 1);
    set_bitfield_by_name(&chip, "HALF", "low", 0xabc);
    set_bitfield_by_name(&chip, "BYTE", "bottom", 0x55);
    std::string text = written(0);
    const size_t date = text.find("# Date:");
    ASSERT_EQ(std::string("\n#\n# All Registername must be written in upper-case an,\n"
                          "# All Bitfields must be written in Lowercases\n#\n"),
              text.substr(0, date));
    text = text.substr(date);
    const size_t length = text.find('\n');
    EXPECT_EQ("# Date:00.00.0000 - 00:00", with_zeros(text.substr(0, length)));
    EXPECT_EQ("\n\n"
              "SRIC:  // REG-Function:(Store Image control) REG-Addr:(X:0x00000000) Val:(0x00000301)\n"
              "{\n"
              "      res1 = 0   ;  // (16) (0x00000000)      \n"
              "      sinr = 3   ;  // (08) (0x00000003)   Store\n"
              "      rinr = 1   ;  // (08) (0x00000001)   Restore\n"
              "};\n\n"
              "HALF:  // REG-Function:(Half) REG-Addr:(C:0x00000001) Val:(0x0abc)\n"
              "{\n"
              "      high = 0   ;  // (04) (0x0000)  High\n"
              "       low = 0   ;  // (12) (0x0000)   Low\n"
              "};\n\n"
              "BYTE:  // REG-Function:(Byte) REG-Addr:(D:0x00000002) Val:(0x55)\n"
              "{\n"
              "       top = 0   ;  // (01) (0x00)   Top\n"
              "    bottom = 0   ;  // (07) (0x00)  Rest\n"
              "};\n\n"
              "};\n\n",
              text.substr(length));
    EXPECT_EQ(std::vector<std::string>{}, chip_log);
}

TEST_F(config_file, has_its_date_after_january_2038_too)
{
    const std::pair<int64_t, const char*> dates[] = {
        {1795343640,          "# Date:22.11.2026 - 10:34\n"},
        {INT64_C(1) << 31,    "# Date:19.01.2038 - 03:14\n"},
        {INT64_C(4102489999), "# Date:01.01.2100 - 12:33\n"},
    };
    for (const auto& [seconds, line] : dates) {
        told_time = static_cast<time_t>(seconds);
        EXPECT_NE(std::string::npos, written(0).find(line)) << line << written(0).substr(0, 200);
    }
    told_time = 0;
}

TEST_F(config_file, has_the_local_day_and_time)
{
    setenv("TZ", "EAST-05:30", 1);
    tzset();
    told_time = 1614898449; // 2021-03-04 22:54:09 UTC
    const std::string text = written(0);
    told_time = 0;
    unsetenv("TZ");
    tzset();
    EXPECT_NE(std::string::npos, text.find("\n# Date:05.03.2021 - 04:24\n\n")) << text.substr(0, 200);
}

TEST_F(config_file, is_written_after_a_read_of_the_chip_if_asked_to)
{
    chip_memory[0] = 0x00000707;
    EXPECT_NE(std::string::npos, written(1).find("Val:(0x00000707)"));
    EXPECT_EQ(4u, chip_log.size());
}

TEST_F(config_file, that_is_written_comes_back)
{
    set_bitfield_by_name(&chip, "SRIC", "sinr", 3);
    regs[3] = {};
    written(0);
    set_bitfield_by_name(&chip, "SRIC", "sinr", 9);
    EXPECT_EQ(0, read(path()));
    EXPECT_EQ(0x00000300u, value("SRIC"));
}

TEST_F(config_file, that_can_not_be_written_is_reported)
{
    EXPECT_EQ(-1, write_config_to_file(&chip, "/nonexistent/chip.cnf", 1));
    EXPECT_EQ(-1, write_config_to_file(&chip, folder.c_str(), 1));
    EXPECT_EQ(std::vector<std::string>{}, chip_log);
}

TEST_F(config_file, is_not_written_into_a_fifo)
{
    ASSERT_EQ(0, mkfifo(path().c_str(), 0600));
    EXPECT_EQ(-1, write_config_to_file(&chip, path().c_str(), 0));
}

TEST_F(config_file, replaces_a_longer_one_and_keeps_its_mode)
{
    const std::string whole = written(0);
    make(whole + std::string(10000, '#'));
    ASSERT_EQ(0, chmod(path().c_str(), 0600));
    EXPECT_EQ(whole.size(), written(0).size());
    EXPECT_EQ(0600U, mode_of(path()));
}

TEST_F(config_file, that_is_new_has_its_mode_whatever_the_umask)
{
    for (const mode_t mask : {0000U, 0022U, 0077U}) {
        std::filesystem::remove(path());
        const mode_t before = umask(mask);
        EXPECT_EQ(0, write_config_to_file(&chip, path().c_str(), 0));
        EXPECT_EQ(mask, umask(before));
        EXPECT_EQ(0644U, mode_of(path()));
    }
}

TEST_F(config_file, on_a_full_disk_gives_what_closing_gives)
{
    EXPECT_EQ(EOF, write_config_to_file(&chip, "/dev/full", 0));
}

std::string printed_by(void (*print)(const chip_regs*, const char*), const chip_regs* chip, const char* name)
{
    testing::internal::CaptureStderr();
    print(chip, name);
    return testing::internal::GetCapturedStderr();
}

TEST_F(config_file, registers_are_printed_by_width)
{
    regs[0].value = 0x301;
    regs[1].value = 0xabcd0000;
    regs[2].value = 0x55000000;
    EXPECT_EQ("DEBUG_print_reg_by_name-> Reg--B(X):A(00000000):V(00000301) N[Store Image control]\n",
              printed_by(DEBUG_print_reg_by_name, &chip, "sric"));
    EXPECT_EQ("DEBUG_print_reg_by_name-> Reg--B(C):A(00000001):V(abcd) N[Half]\n",
              printed_by(DEBUG_print_reg_by_name, &chip, "HALF"));
    EXPECT_EQ("DEBUG_print_reg_by_name-> Reg--B(D):A(00000002):V(55) N[Byte]\n",
              printed_by(DEBUG_print_reg_by_name, &chip, "BYTE"));
    EXPECT_EQ("", printed_by(DEBUG_print_reg_by_name, &chip, "ODD"));
    EXPECT_EQ("DEBUG_print_reg_by_name -> Register-Name not found\n",
              printed_by(DEBUG_print_reg_by_name, &chip, "NONE"));
}

TEST_F(config_file, fields_are_printed_by_width)
{
    regs[0].value = 0x301;
    make_bitfield_value(&regs[0]);
    regs[2].value = 0x55000000;
    make_bitfield_value(&regs[2]);
    EXPECT_EQ("DEBUG_print_bitfields_by_name:SRIC| Reg-Base-(X):A-off-(00000000):V-v32-(00000301) "
              "N-help-[Store Image control]\n"
              "           res1=L:(16):V(00000000)\n"
              "           sinr=L:( 8):V(00000003)\n"
              "           rinr=L:( 8):V(00000001)\n",
              printed_by(DEBUG_print_bitfields_by_name, &chip, "SRIC"));
    EXPECT_EQ("DEBUG_print_bitfields_by_name:HALF| Reg-Base-(C):A-off-(00000001):V-v16-(0000) N-help-[Half]\n"
              "           high=L:( 4):V(0000)\n"
              "            low=L:(12):V(0000)\n",
              printed_by(DEBUG_print_bitfields_by_name, &chip, "HALF"));
    EXPECT_EQ("DEBUG_print_bitfields_by_name:BYTE| Reg-Base-(D):A-off-(00000002):V-v08-(55) N-help-[Byte]\n"
              "            top=L:( 1):V(00)\n"
              "         bottom=L:( 7):V(00)\n",
              printed_by(DEBUG_print_bitfields_by_name, &chip, "BYTE"));
    EXPECT_EQ("", printed_by(DEBUG_print_bitfields_by_name, &chip, "ODD"));
    EXPECT_EQ("DEBUG_print_reg_by_name -> Register-Name not found\n",
              printed_by(DEBUG_print_bitfields_by_name, &chip, "NONE"));
}

TEST_F(config_file, all_registers_are_printed_in_table_order)
{
    testing::internal::CaptureStderr();
    DEBUG_print_all_regs(&chip, 0);
    DEBUG_print_all_regs(&chip, 1);
    const std::string text = testing::internal::GetCapturedStderr();
    EXPECT_LT(text.find("N[Store Image control]"), text.find("N[Half]"));
    EXPECT_LT(text.find("N[Byte]"), text.find("SRIC| "));
    EXPECT_LT(text.find("SRIC| "), text.find("BYTE| "));
}

bool is_safe(const std::string& file)
{
    int line = -1;
    const char* fault = config_file_fault(file.c_str(), &line);
    EXPECT_EQ(0, line);
    return fault == nullptr;
}

TEST(config_guard, looks_at_includes_as_the_library_does)
{
    char name[] = "/tmp/tst_config_guard_XXXXXX";
    ASSERT_NE(nullptr, mkdtemp(name));
    const std::string file = std::string(name) + "/file";
    const auto safe = [&file](const std::string& text) {
        std::ofstream(file) << text;
        return is_safe(file);
    };
    EXPECT_TRUE(safe("x = \"@include /\";\n"));
    EXPECT_TRUE(safe("a @include \"/\"\n"));
    EXPECT_TRUE(safe("#includ@ \"/\"\n"));
    EXPECT_TRUE(safe("@include '/\"\n"));
    EXPECT_TRUE(safe("@include\n"));
    EXPECT_TRUE(safe("@include \"/nonexistent/file\"\n"));
    EXPECT_FALSE(safe("@include \"/\"\n"));
    EXPECT_FALSE(safe("@include \"/\\tmp\"\n"));
    EXPECT_FALSE(safe("@include \"/"));
    /* A name goes on behind the end of its line for the library alone. */
    EXPECT_FALSE(safe(std::string(20, '\n') + "@include \"two\nlines\"\n"));
    EXPECT_FALSE(safe("@include \"x\\\n\"\n"));
    EXPECT_FALSE(is_safe("/dev/null"));
    std::filesystem::remove_all(name);
}

} // namespace
