#include "overlay/COverlayTextPlaces.h"

#include <algorithm>
#include <tuple>

bool operator<(const COverlayTextPlaces::SPlace& rsOne, const COverlayTextPlaces::SPlace& rsOther)
{
    return std::tie(rsOne.y, rsOne.startX, rsOne.endX) < std::tie(rsOther.y, rsOther.startX, rsOther.endX);
}

void COverlayTextPlaces::insert(const SPlace& rsPlace, quint64 u64Turn, const COverlayText& rcText)
{
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

// In this order: a place whose end has wrapped lies before its beginning, and the answer for it depends on what is
// asked first.
bool COverlayTextPlaces::isColliding(const SPlace& rsPlace, const SPlace& rsRegion)
{
    if (rsPlace.startX >= rsRegion.startX && rsRegion.startX > rsPlace.endX)
        return true;
    if (rsRegion.startX >= rsPlace.endX) {
        if (rsRegion.endX >= rsPlace.endX)
            return false;
    } else if (rsPlace.endX <= rsRegion.endX) {
        return true;
    }
    return rsPlace.startX <= rsRegion.endX;
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
