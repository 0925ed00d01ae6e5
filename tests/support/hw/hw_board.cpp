/* SPDX-License-Identifier: MIT */
/* A virtual board for the hardware layer's tests. */
#include "tests/support/hw/hw_board.h"

#include "board/preload/haldenboard.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

static void make_file(const std::string& path, size_t length)
{
    std::ofstream(path, std::ios::binary).close();
    std::filesystem::resize_file(path, length);
}

static board_control* make_control(const std::string& path)
{
    make_file(path, sizeof(board_control));
    const int fd = open(path.c_str(), O_RDWR);
    void* map = mmap(nullptr, sizeof(board_control), PROT_READ | PROT_WRITE, MAP_SHARED, fd, 0);
    close(fd);
    if (map == MAP_FAILED)
        abort();
    auto* control = static_cast<board_control*>(map);
    board_store(&control->magic, BOARD_MAGIC);
    board_store(&control->version, BOARD_VERSION);
    board_store(&control->lime_order, board_own_order());
    board_store(&control->trace, 1);
    return control;
}

hw_board::hw_board() : m_control(nullptr)
{
    char name[] = "/tmp/hw_board_XXXXXX";
    if (mkdtemp(name) == nullptr)
        abort();
    m_directory = name;
    make_file(path(BOARD_FPGA), BOARD_FPGA_BYTES);
    make_file(path(BOARD_LIME), board_lime_bytes());
    make_file(path(BOARD_I2C), BOARD_I2C_BYTES);
    make_file(path(BOARD_CAMERA), BOARD_CAMERA_BYTES);
    make_file(path(BOARD_FRAMES), BOARD_FRAMES_BYTES);
    make_file(path(BOARD_TRACE), 0);
    std::filesystem::create_directory(path(BOARD_CNFS));
    m_control = make_control(path(BOARD_CONTROL));
    if (haldenboard_attach(m_directory.c_str()) != 0) {
        perror("haldenboard_attach");
        abort();
    }
}

hw_board::~hw_board()
{
    haldenboard_detach();
    judge();
    munmap(m_control, sizeof(*m_control));
    std::filesystem::remove_all(m_directory);
}

std::string hw_board::path(const char* name) const
{
    return m_directory + "/" + name;
}

void hw_board::fail(board_operation operation, int error, uint32_t pass)
{
    board_fault& fault = m_control->faults[operation];
    board_store(&fault.fail, 0);
    board_store(&fault.pass, pass);
    board_store(&fault.error, static_cast<uint32_t>(error));
    board_store(&fault.flags, 0);
    board_store(&fault.fail, BOARD_FAULT_FOREVER);
}

std::vector<std::string> hw_board::lines(const char* name) const
{
    std::ifstream file(path(name));
    std::vector<std::string> all;
    for (std::string line; std::getline(file, line);)
        all.push_back(line);
    return all;
}

std::vector<std::string> hw_board::trace()
{
    std::vector<std::string> all = lines(BOARD_TRACE);
    const auto fresh = all.begin() + static_cast<std::ptrdiff_t>(m_trace_read);
    m_trace_read = all.size();
    return {fresh, all.end()};
}

void hw_board::judge() const
{
    const std::vector<std::string> all = lines(BOARD_JUDGEMENTS);
    const std::set<std::string> judged(all.begin(), all.end());
    for (const std::string& line : judged)
        if (m_announced.count(line) == 0)
            ADD_FAILURE() << "judged: " << line;
    for (const std::string& line : m_announced)
        if (judged.count(line) == 0)
            ADD_FAILURE() << "announced, but not judged: " << line;
}

/* Around the device stand-ins, whose doing these are not: the streams of the C++ library reach the kernel by
 * calls that are taken over too, but a test looks at the trace before or after, never across them. */
std::vector<unsigned char> hw_board::bytes(const char* name, uint32_t offset, size_t len) const
{
    std::vector<unsigned char> values(len);
    std::ifstream file(path(name), std::ios::binary);
    file.seekg(offset);
    file.read(reinterpret_cast<char*>(values.data()), static_cast<std::streamsize>(len));
    return values;
}

void hw_board::set_bytes(const char* name, uint32_t offset, const std::vector<unsigned char>& values)
{
    std::fstream file(path(name), std::ios::binary | std::ios::in | std::ios::out);
    file.seekp(offset);
    file.write(reinterpret_cast<const char*>(values.data()), static_cast<std::streamsize>(values.size()));
    file.close();
    trace();
}
