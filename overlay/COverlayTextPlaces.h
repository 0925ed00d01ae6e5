/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_COVERLAYTEXTPLACES_H
#define HALDEND_OVERLAY_COVERLAYTEXTPLACES_H

#include <QMap>
#include <QVector>

class COverlayText;

/// The places of the drawn texts. Texts of one place are stored together, and the places of a row side by
/// side: to find the texts of erased cells takes as long as there are places on the row, however many texts
/// there are. Texts without a cell on the layer are not stored, because there is nothing of them to draw
/// again.
class COverlayTextPlaces
{
public:
    /// Cells startX to endX - 1 of row y. A place without cells may end before it begins.
    struct SPlace {
        unsigned short startX;
        unsigned short y;
        unsigned short endX;
    };

    /// Adds or removes a text, known by the number of its turn. A place ends at the right edge at the latest.
    /// The text stays its owner's and must live until it is removed.
    void insert(const SPlace& rsPlace, quint64 u64Turn, const COverlayText& rcText);
    void remove(const SPlace& rsPlace, quint64 u64Turn);

    /// The texts that have to be drawn again after a region was erased, in the order of their turns. Texts
    /// that begin where the region ends are among them; texts that end where it begins are not.
    QVector<const COverlayText*> collidingWith(const SPlace& rsRegion) const;

private:
    using CTexts = QMap<quint64, const COverlayText*>; ///< by turn

    static bool hasCells(const SPlace& rsPlace);
    static bool isColliding(const SPlace& rsPlace, const SPlace& rsRegion);

    QMap<SPlace, CTexts> m_cPlaces;
};

bool operator==(const COverlayTextPlaces::SPlace& rsOne, const COverlayTextPlaces::SPlace& rsOther);

/// Orders places by row first.
bool operator<(const COverlayTextPlaces::SPlace& rsOne, const COverlayTextPlaces::SPlace& rsOther);

#endif
