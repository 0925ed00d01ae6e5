/* SPDX-License-Identifier: MIT */
#include "overlay/COverlayTextPlaces.h"

#include "hw/video_geometry.h"

#include <algorithm>
#include <tuple>

bool operator==(const COverlayTextPlaces::SPlace& rsOne, const COverlayTextPlaces::SPlace& rsOther)
{
    return rsOne.y == rsOther.y && rsOne.startX == rsOther.startX && rsOne.endX == rsOther.endX;
}

bool operator<(const COverlayTextPlaces::SPlace& rsOne, const COverlayTextPlaces::SPlace& rsOther)
{
    return std::tie(rsOne.y, rsOne.startX, rsOne.endX) < std::tie(rsOther.y, rsOther.startX, rsOther.endX);
}

void COverlayTextPlaces::insert(const SPlace& rsPlace, quint64 u64Turn, const COverlayText& rcText)
{
    if (hasCells(rsPlace))
        m_cPlaces[rsPlace].insert(u64Turn, &rcText);
}

void COverlayTextPlaces::remove(const SPlace& rsPlace, quint64 u64Turn)
{
    const auto it = m_cPlaces.find(rsPlace);
    if (it == m_cPlaces.end())
        return;
    it->remove(u64Turn);
    if (it->isEmpty())
        m_cPlaces.erase(it);
}

bool COverlayTextPlaces::hasCells(const SPlace& rsPlace)
{
    return rsPlace.startX < rsPlace.endX && rsPlace.y < VIDEO_TEXT_ROWS;
}

// The end of a region may have wrapped to before its beginning; then only the texts around its end collide.
bool COverlayTextPlaces::isColliding(const SPlace& rsPlace, const SPlace& rsRegion)
{
    return rsPlace.startX <= rsRegion.endX && std::min(rsRegion.startX, rsRegion.endX) < rsPlace.endX;
}

QVector<const COverlayText*> COverlayTextPlaces::collidingWith(const SPlace& rsRegion) const
{
    CTexts cTexts;
    for (auto it = m_cPlaces.lowerBound({0, rsRegion.y, 0});
         it != m_cPlaces.constEnd() && it.key().y == rsRegion.y; ++it)
        if (isColliding(it.key(), rsRegion))
            cTexts.insert(*it);
    return cTexts.values().toVector();
}
