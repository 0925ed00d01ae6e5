/* SPDX-License-Identifier: MIT */
#include "tests/model/CTextLayerModel.h"

#include "fpga/font_tables.h"

#include <algorithm>

namespace
{

const int COLUMNS = 53;
const int ROWS = 26;
const std::size_t MAX_TEXTS = 65535;
const int NOWHERE = 65535;
const int FIRST_OWN_CODE = 160; // of a glyph set; below it, code and character are the same number

bool collide(int iStart, int iEnd, int iRegionStart, int iRegionEnd)
{
    if (iStart >= iRegionStart && iRegionStart > iEnd)
        return true;
    if (iRegionStart >= iEnd && iRegionEnd >= iEnd)
        return false;
    if (iRegionStart < iEnd && iEnd <= iRegionEnd)
        return true;
    return iStart <= iRegionEnd;
}

} // namespace

const CTextLayerModel::SText* CTextLayerModel::find(unsigned int uHandle) const
{
    const auto it = m_cTexts.find(uHandle);
    return it != m_cTexts.end() ? &it->second : nullptr;
}

unsigned int CTextLayerModel::create()
{
    if (m_cTexts.size() == MAX_TEXTS)
        return 0;
    const unsigned int uHandle = m_cTexts.empty() ? 1 : m_cTexts.rbegin()->first + 1;
    m_cTexts[uHandle] = SText();
    return uHandle;
}

void CTextLayerModel::destroy(unsigned int uHandle)
{
    hide(uHandle);
    m_cTexts.erase(uHandle);
}

void CTextLayerModel::show(unsigned int uHandle)
{
    const auto it = m_cTexts.find(uHandle);
    if (it == m_cTexts.end() || it->second.bVisible)
        return;
    it->second.bVisible = true;
    draw(uHandle);
}

void CTextLayerModel::hide(unsigned int uHandle)
{
    const auto it = m_cTexts.find(uHandle);
    if (it == m_cTexts.end() || !it->second.bVisible)
        return;
    it->second.bVisible = false;
    clear(uHandle);
}

void CTextLayerModel::drawIfVisible(unsigned int uHandle)
{
    const SText* psText = find(uHandle);
    if (psText != nullptr && psText->bVisible)
        draw(uHandle);
}

void CTextLayerModel::setId(unsigned int uHandle, quint32 u32Id)
{
    const auto it = m_cTexts.find(uHandle);
    if (it != m_cTexts.end())
        it->second.u32Id = u32Id;
}

unsigned int CTextLayerModel::handleById(quint32 u32Id) const
{
    for (const auto& rcEntry : m_cTexts)
        if (rcEntry.second.u32Id == u32Id)
            return rcEntry.first;
    return 0;
}

void CTextLayerModel::write(int x, int y, int iCode, int iColor)
{
    const auto uAt = static_cast<std::size_t>(y * 64 + x) * 2;
    m_cPage[uAt] = static_cast<unsigned char>(iCode);
    m_cPage[uAt + 1] = static_cast<unsigned char>(iColor);
}

void CTextLayerModel::erase(int fromX, int toX, int y)
{
    for (int x = fromX; x < toX && x < COLUMNS && y < ROWS; ++x)
        write(x, y, ' ', 0);
}

void CTextLayerModel::writeText(const SRecord& rsRecord)
{
    const SText& rsText = m_cTexts[rsRecord.uHandle];
    const int iColor = static_cast<int>((rsText.u32Foreground << 4 | rsText.u32Background) & 0xff);
    for (int x = rsRecord.startX; x < rsRecord.endX && rsRecord.y < ROWS; ++x)
        write(x, rsRecord.y, codeOf(rsText.cString[x - rsRecord.startX]), iColor);
}

std::vector<CTextLayerModel::SRecord>::iterator CTextLayerModel::record(unsigned int uHandle)
{
    return std::find_if(m_cRecords.begin(), m_cRecords.end(),
                        [=](const SRecord& rs) { return rs.uHandle == uHandle; });
}

void CTextLayerModel::redraw(const SRecord& rsRegion)
{
    for (const SRecord& rs : m_cRecords) {
        if (rs.uHandle == rsRegion.uHandle || rs.y != rsRegion.y ||
            !collide(rs.startX, rs.endX, rsRegion.startX, rsRegion.endX))
            continue;
        writeText(rs);
        ++m_iRedrawn;
    }
}

void CTextLayerModel::draw(unsigned int uHandle)
{
    const SText& rsText = m_cTexts[uHandle];
    const SRecord sNew = {uHandle, rsText.x, rsText.y, std::min(rsText.end(), COLUMNS)};
    auto it = record(uHandle);
    if (it == m_cRecords.end())
        it = m_cRecords.insert(it, {uHandle, NOWHERE, NOWHERE, NOWHERE});
    if (it->y == sNew.y) {
        erase(sNew.endX, it->endX, sNew.y);
        erase(it->startX, sNew.startX, sNew.y);
    } else {
        erase(it->startX, it->endX, it->y);
    }
    const bool bSame = it->startX == sNew.startX && it->endX == sNew.endX && it->y == sNew.y;
    if (it->startX != 255 && !bSame)
        redraw(*it);
    *it = sNew;
    writeText(sNew);
}

void CTextLayerModel::clear(unsigned int uHandle)
{
    const auto it = record(uHandle);
    const SRecord sOld = *it;
    erase(sOld.startX, sOld.endX, sOld.y);
    m_cRecords.erase(it);
    redraw(sOld);
}

// A cell each: half of a character beyond the first 65,536 is a character without a code.
int CTextLayerModel::codeOf(QChar cCharacter) const
{
    const int iCharacter = cCharacter.unicode();
    if (iCharacter < FIRST_OWN_CODE)
        return iCharacter;
    const std::uint16_t* pu16Characters = font_sets[m_iGlyphSet - 1].unicode->characters;
    const std::uint16_t* pu16End = pu16Characters + 256;
    const std::uint16_t* pu16Found = std::find(pu16Characters + FIRST_OWN_CODE, pu16End, iCharacter);
    return pu16Found != pu16End ? static_cast<int>(pu16Found - pu16Characters) : '?';
}
