#ifndef HALDEND_BENCH_CVIRTUALBOARD_H
#define HALDEND_BENCH_CVIRTUALBOARD_H

#include <cstdint>
#include <string>
#include <vector>

class CTemporaryDirectory;

/// The hardware under measurement: a virtual board with its trace off.
class CVirtualBoard
{
public:
    /// Makes it. Throws when that fails.
    explicit CVirtualBoard(const CTemporaryDirectory& rcDirectory);

    const std::string& path() const { return m_cPath; }

    /// What puts a program onto the board, as NAME=value.
    std::vector<std::string> environment() const;

    /// Path of a device of it: "i2c-1", "fpgamem", "fb0".
    std::string device(const std::string& rcName) const { return m_cPath + "/" + rcName; }

    /// What the display controller holds as the video window's place: y << 16 | x.
    std::uint32_t videoPosition() const;

private:
    std::string m_cPath;
};

#endif
