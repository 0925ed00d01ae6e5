/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CTABLE_H
#define HALDEND_BENCH_CTABLE_H

#include <string>
#include <vector>

/// A table of texts in UTF-8, every column as wide as its widest cell.
class CTable
{
public:
    using CRow = std::vector<std::string>;

    explicit CTable(const CRow& rcHeading) : m_cRows{rcHeading} {}

    /// A row has as many cells as the heading.
    void add(const CRow& rcRow) { m_cRows.push_back(rcRow); }

    /// Lines to print, the last one ended too.
    std::string text() const;

private:
    std::vector<std::size_t> widths() const;

    std::vector<CRow> m_cRows;
};

#endif
