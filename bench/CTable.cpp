/* SPDX-License-Identifier: MIT */
#include "bench/CTable.h"

#include <algorithm>

namespace
{

// Characters, not bytes: the units aren't all ASCII.
std::size_t width(const std::string& rcText)
{
    return static_cast<std::size_t>(std::count_if(rcText.begin(), rcText.end(), [](char cByte) {
        return (static_cast<unsigned char>(cByte) & 0xc0) != 0x80;
    }));
}

} // namespace

std::vector<std::size_t> CTable::widths() const
{
    std::vector<std::size_t> cWidths(m_cRows.front().size());
    for (const CRow& rcRow : m_cRows)
        for (std::size_t i = 0; i < rcRow.size(); ++i)
            cWidths[i] = std::max(cWidths[i], width(rcRow[i]));
    return cWidths;
}

std::string CTable::text() const
{
    const std::vector<std::size_t> cWidths = widths();
    std::string cText;
    for (const CRow& rcRow : m_cRows) {
        for (std::size_t i = 0; i < rcRow.size(); ++i) {
            cText += i == 0 ? "" : "  ";
            cText += rcRow[i];
            if (i + 1 < rcRow.size())
                cText.append(cWidths[i] - width(rcRow[i]), ' ');
        }
        cText += '\n';
    }
    return cText;
}
