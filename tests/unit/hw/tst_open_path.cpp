/* SPDX-License-Identifier: MIT */
/* Opening of files: which are opened, which are refused, and the contents afterwards. */
#include "hw/open_path.h"

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

class open_path_test : public testing::Test
{
protected:
    void SetUp() override
    {
        char name[] = "/tmp/tst_open_path_XXXXXX";
        ASSERT_NE(nullptr, mkdtemp(name));
        folder = name;
        std::ofstream(path("file")) << "text";
        ASSERT_EQ(0, mkfifo(path("fifo").c_str(), 0600));
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    std::string path(const char* name) const { return folder + "/" + name; }

    std::string contents(const char* name) const
    {
        std::ifstream file(path(name));
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

    /* Opens with open_path() and closes. Returns the file's type; 0 if it can't be opened. */
    static mode_t type_of(const std::string& file, int access = O_RDONLY)
    {
        struct stat status = {};
        const int descriptor = open_path(file.c_str(), access, &status);
        if (descriptor < 0)
            return 0;
        close(descriptor);
        return status.st_mode & S_IFMT;
    }

    /* Whether open_data_file() opens it; it is closed again. */
    static bool opens(const std::string& file, int access)
    {
        const int descriptor = open_data_file(file.c_str(), access);
        return descriptor >= 0 && close(descriptor) == 0;
    }

    std::string folder;
};

TEST_F(open_path_test, tells_what_is_there_without_waiting)
{
    EXPECT_EQ(mode_t{S_IFREG}, type_of(path("file")));
    EXPECT_EQ(mode_t{S_IFIFO}, type_of(path("fifo")));
    EXPECT_EQ(mode_t{S_IFIFO}, type_of(path("fifo"), O_RDWR));
    EXPECT_EQ(mode_t{S_IFDIR}, type_of(folder));
    EXPECT_EQ(mode_t{S_IFCHR}, type_of("/dev/null"));
    EXPECT_EQ(mode_t{0}, type_of(path("fifo"), O_WRONLY));
    EXPECT_EQ(ENXIO, errno);
    EXPECT_EQ(mode_t{0}, type_of(path("absent")));
    EXPECT_EQ(ENOENT, errno);
}

TEST_F(open_path_test, neither_waits_nor_hands_the_descriptor_on)
{
    struct stat status = {};
    const int descriptor = open_path(path("file").c_str(), O_RDONLY, &status);
    EXPECT_EQ(O_NONBLOCK, fcntl(descriptor, F_GETFL) & O_NONBLOCK);
    EXPECT_EQ(FD_CLOEXEC, fcntl(descriptor, F_GETFD));
    EXPECT_EQ(4, status.st_size);
    close(descriptor);
}

TEST_F(open_path_test, makes_a_file_but_empties_none)
{
    EXPECT_EQ(mode_t{S_IFREG}, type_of(path("new"), O_WRONLY));
    EXPECT_EQ(mode_t{S_IFREG}, type_of(path("file"), O_RDWR));
    EXPECT_EQ("text", contents("file"));
    EXPECT_EQ(mode_t{0}, type_of(path("other"), O_RDONLY));
    EXPECT_FALSE(std::filesystem::exists(path("other")));
}

TEST_F(open_path_test, finds_data_in_files_and_devices_alone)
{
    const int terminal = posix_openpt(O_RDWR | O_NOCTTY);
    ASSERT_EQ(0, grantpt(terminal));
    ASSERT_EQ(0, unlockpt(terminal));
    const std::string name = ptsname(terminal);
    for (const int access : {O_RDONLY, O_WRONLY, O_RDWR}) {
        EXPECT_TRUE(opens(path("file"), access));
        EXPECT_TRUE(opens("/dev/full", access));
        EXPECT_FALSE(opens(path("fifo"), access));
        EXPECT_FALSE(opens(folder, access));
        EXPECT_FALSE(opens(name, access));
    }
    close(terminal);
}

TEST_F(open_path_test, empties_a_file_of_data_that_is_written)
{
    EXPECT_TRUE(opens(path("file"), O_RDONLY));
    EXPECT_EQ("text", contents("file"));
    EXPECT_TRUE(opens(path("file"), O_WRONLY));
    EXPECT_EQ("", contents("file"));
}

/* The number of a closed standard input. */
TEST_F(open_path_test, a_descriptor_may_be_0)
{
    const int input = dup(STDIN_FILENO);
    close(STDIN_FILENO);
    EXPECT_EQ(0, open_data_file(path("file").c_str(), O_RDONLY));
    FILE* file = stream_of_descriptor(0, "r");
    ASSERT_NE(nullptr, file);
    EXPECT_EQ('t', fgetc(file));
    fclose(file);
    EXPECT_EQ(0, open_data_file(path("file").c_str(), O_RDONLY));
    EXPECT_EQ(nullptr, stream_of_descriptor(0, "no mode"));
    EXPECT_EQ(-1, fcntl(0, F_GETFD));
    if (input >= 0) {
        dup2(input, STDIN_FILENO);
        close(input);
    }
}

TEST_F(open_path_test, gives_a_stream_or_closes)
{
    EXPECT_EQ(nullptr, stream_of_descriptor(-1, "r"));
    const int descriptor = open_data_file(path("file").c_str(), O_RDONLY);
    EXPECT_EQ(nullptr, stream_of_descriptor(descriptor, "no mode"));
    EXPECT_EQ(-1, fcntl(descriptor, F_GETFD));
    FILE* file = stream_of_descriptor(open_data_file(path("file").c_str(), O_RDONLY), "r");
    ASSERT_NE(nullptr, file);
    EXPECT_EQ('t', fgetc(file));
    fclose(file);
}

} // namespace
