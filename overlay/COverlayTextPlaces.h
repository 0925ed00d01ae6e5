#ifndef HALDEND_OVERLAY_COVERLAYTEXTPLACES_H
#define HALDEND_OVERLAY_COVERLAYTEXTPLACES_H

#include <QMap>
#include <QVector>

class COverlayText;

/// Where the drawn texts stand. Texts of one place are kept together, and the places of a row next to each other:
/// to find those whose cells were erased takes as long as there are places on the row, however many texts there
/// are. Texts without a cell on the layer are not kept, because nothing of them can be drawn again.
class COverlayTextPlaces
{
public:
    /// Cells startX to endX - 1 of row y. A place without cells may end before it begins.
    struct SPlace {
        unsigned short startX;
        unsigned short y;
        unsigned short endX;
    };

    /// Enters and removes a text, which is known by the number of its turn. Places end at the right edge at the latest.
    void insert(const SPlace& rsPlace, quint64 u64Turn, const COverlayText& rcText);
    void remove(const SPlace& rsPlace, quint64 u64Turn);

    /// The texts that have to be drawn again when a region has been erased, in the order of their turns. Those that
    /// begin where the region ends are among them, those that end where it begins are not.
    QVector<const COverlayText*> collidingWith(const SPlace& rsRegion) const;

private:
    using CTexts = QMap<quint64, const COverlayText*>; ///< by turn

    static bool hasCells(const SPlace& rsPlace);
    static bool isColliding(const SPlace& rsPlace, const SPlace& rsRegion);

    QMap<SPlace, CTexts> m_cPlaces;
};

/// By rows first.
bool operator<(const COverlayTextPlaces::SPlace& rsOne, const COverlayTextPlaces::SPlace& rsOther);

#endif
