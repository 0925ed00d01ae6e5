/* SPDX-License-Identifier: MIT */
/* The door to the display controller and its mapping, on real files. */
#include "hw/fpga_device.h"
#include "hw/lime_device.h"
#include "hw/lime_map.h"
#include "hw/lime_mmio.h"

#include <cstdlib>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace
{

/* A sparse file of the given length, gone with the object. */
class device_file
{
public:
    explicit device_file(off_t length) : m_fd(mkstemp(m_path)) { EXPECT_EQ(0, ftruncate(m_fd, length)); }
    ~device_file()
    {
        close(m_fd);
        unlink(m_path);
    }
    int fd() const { return m_fd; }
    const char* path() const { return m_path; }

private:
    char m_path[32] = "/tmp/tst_lime_mmio_XXXXXX";
    int m_fd;
};

/* The number of the process's mappings of files with that in their names. */
int mappings_of(const std::string& name)
{
    std::ifstream mappings("/proc/self/maps");
    int count = 0;
    for (std::string line; std::getline(mappings, line);)
        count += line.find(name) != std::string::npos ? 1 : 0;
    return count;
}

off_t whole_length()
{
    return static_cast<off_t>(lime_map_length());
}

TEST(lime_map, covers_8192_pages)
{
    EXPECT_EQ(static_cast<size_t>(getpagesize()) * 8192, lime_map_length());
}

TEST(lime_map, refuses_a_descriptor_that_is_not_open)
{
    EXPECT_EQ(nullptr, lime_map(-1));
}

TEST(lime_map, refuses_a_file_one_byte_short)
{
    const device_file file(whole_length() - 1);
    EXPECT_EQ(nullptr, lime_map(file.fd()));
}

TEST(lime_map, refuses_an_empty_file)
{
    const device_file file(0);
    EXPECT_EQ(nullptr, lime_map(file.fd()));
}

/* A device has no length. */
TEST(lime_map, maps_a_device)
{
    const int device = open("/dev/zero", O_RDWR | O_CLOEXEC);
    void* base = lime_map(device);
    EXPECT_NE(nullptr, base);
    lime_unmap(base);
    close(device);
}

TEST(lime_map, leaves_no_mapping_behind)
{
    const device_file file(whole_length());
    void* base = lime_map(file.fd());
    ASSERT_NE(nullptr, base);
    EXPECT_EQ(1, mappings_of("tst_lime_mmio_"));
    lime_unmap(base);
    EXPECT_EQ(0, mappings_of("tst_lime_mmio_"));
}

TEST(lime_device, leaves_no_mapping_behind)
{
    const device_file file(whole_length());
    ASSERT_EQ(0, init_lime_framebuffer(file.path()));
    EXPECT_EQ(1, mappings_of("tst_lime_mmio_"));
    destroy_lime_framebuffer();
    EXPECT_EQ(0, mappings_of("tst_lime_mmio_"));
    EXPECT_EQ(-1, fbfd);
}

TEST(lime_map, unmaps_nothing_quietly)
{
    lime_unmap(nullptr);
    const device_file file(whole_length());
    void* base = lime_map(file.fd());
    ASSERT_NE(nullptr, base);
    lime_unmap(base);
}

TEST(lime_mmio, stores_land_in_the_file_and_are_loaded_back)
{
    const device_file file(whole_length());
    void* base = lime_map(file.fd());
    ASSERT_NE(nullptr, base);

    lime_store(base, LIME_CAPT_WINDOW, 4, 0x0fd50eb1);
    EXPECT_EQ(0x0fd50eb1u, lime_load(base, LIME_CAPT_WINDOW, 4));
    EXPECT_EQ(0u, lime_load(base, LIME_CAPT_WINDOW, 0));
    EXPECT_EQ(0u, lime_load(base, LIME_CAPT_WINDOW, 8));

    uint32_t in_file = 0;
    ASSERT_EQ(static_cast<ssize_t>(sizeof(in_file)),
              pread(file.fd(), &in_file, sizeof(in_file), LIME_CAPT_WINDOW + 4));
    EXPECT_EQ(0x0fd50eb1u, in_file);
    lime_unmap(base);
}

TEST(lime_mmio, without_a_mapping_drops_stores_and_loads_zero)
{
    lime_store(nullptr, LIME_DISP_WINDOW, 0x100, 0xffffffff);
    EXPECT_EQ(0u, lime_load(nullptr, LIME_DISP_WINDOW, 0x100));
}

TEST(lime_mmio, keeps_away_from_memory_behind_the_mapping)
{
    const device_file file(whole_length());
    void* base = lime_map(file.fd());
    ASSERT_NE(nullptr, base);
    const auto last = static_cast<uint32_t>(lime_map_length() - 4 - LIME_PIO_WINDOW);

    lime_store(base, LIME_PIO_WINDOW, last, 0x12345678);
    EXPECT_EQ(0x12345678u, lime_load(base, LIME_PIO_WINDOW, last));

    for (const uint32_t beyond : {last + 4, uint32_t{0x10000000}, uint32_t{0xfffffffc}}) {
        lime_store(base, LIME_PIO_WINDOW, beyond, 0xffffffff);
        EXPECT_EQ(0u, lime_load(base, LIME_PIO_WINDOW, beyond)) << std::hex << beyond;
    }
    EXPECT_EQ(0x12345678u, lime_load(base, LIME_PIO_WINDOW, last));
    lime_unmap(base);
}

} // namespace
