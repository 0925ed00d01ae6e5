#ifndef HALDEND_OVERLAY_CVIDEOOVERLAYBACKEND_H
#define HALDEND_OVERLAY_CVIDEOOVERLAYBACKEND_H

#include "overlay/COverlayTextPlaces.h"
#include "overlay/EOverlayTextColor.h"
#include "overlay/IVideoOverlay.h"

#include <QHash>

class QTextCodec;

/// The overlay of this board: texts as cells of the FPGA's text layer, 53 columns by 26 rows, one cell a
/// character. Nothing else is there to be overlaid: the graphic operations do nothing, and those of
/// UnsupportedOperations.h say so on standard output.
///
/// A text is cut at the right edge; its end wraps at 256 before that. What stands outside the layer is not
/// drawn, but remembered like any other text. A text drawn later hides those beneath it. When it goes, what it
/// has hidden on its row is drawn again; texts between its old and its new place on one row may lose cells that
/// nobody draws again.
///
/// A UTF-16 code unit that the letters of the locale lack is a question mark: a character outside the basic plane
/// is two.
class CVideoOverlayBackEnd : public IVideoOverlay
{
public:
    /// Touches no hardware: the letters are those of the FPGA's start, the overlay counts as disabled.
    CVideoOverlayBackEnd();

    CVideoOverlayBackEnd(const CVideoOverlayBackEnd&) = delete;
    CVideoOverlayBackEnd& operator=(const CVideoOverlayBackEnd&) = delete;

    /// What was last set here, whatever the FPGA shows.
    bool isOverlayEnabled() const override;

    /// Switches the graphic and the text layer; the hardware cursor stays as it is.
    void setOverlayEnabled(bool bEnabled) override;

    void drawText(const COverlayText& rcText) override;
    void clearText(const COverlayText& rcText) override;
    void drawGraphic(const COverlayGraphic& rcGraphic) override;
    void clearGraphic(const COverlayGraphic& rcGraphic) override;

    /// The locale's country decides, its language doesn't: see Alphabets.h. The glyph memory is written only
    /// when the set changes.
    void loadCharacterSetForLocale(const QString& rcLocaleName) override;

    unsigned int getMaxTextLineWidth() const override;
    unsigned int getMaxTextLineCount() const override;

#define DECLARATION(method, passedOnBy, operation, parameters, arguments) void operation parameters override;
    OVERLAY_FEATURES_AS_OPERATIONS(DECLARATION)
#undef DECLARATION

    void setOsdTransparency(int iValue) override;

    virtual ~CVideoOverlayBackEnd();

private:
    /// Where a text was last drawn. A new record's place lies on no row.
    struct TOverlayTextData : COverlayTextPlaces::SPlace {
        quint64 u64Turn; ///< of the first drawing since the text was last cleared, among all texts
    };

    /// Erases columns fromX to toX - 1 of a row, as far as they are on the layer: the picture shows there again.
    void clearText(unsigned short fromX, unsigned short toX, unsigned short y);

    /// Writes the first characters of a text into columns fromX to toX - 1 of a row.
    void drawText(unsigned short fromX, unsigned short toX, unsigned short y, const COverlayText& rcText);

    QTextCodec& textCodec();

    /// One byte a code unit of the string.
    QByteArray codesOf(const QString& rcString);

    /// The text's record, a new one if it has none.
    TOverlayTextData* obtainTextData(const COverlayText& rcText);

    /// Keeps where a text stands now.
    void setPlace(TOverlayTextData& rsData, const COverlayTextPlaces::SPlace& rsPlace,
                  const COverlayText& rcText);

    /// Draws again what shares the row with a region that was erased and touches it. rsRegion is the record of the
    /// text that was there, which itself is left out.
    void redrawCollidingTexts(const TOverlayTextData& rsRegion);

    // Columns and rows are the same numbers to clients and on the layer, only wider here.
    unsigned short globalCoordinateToInternalCoordinate(unsigned char u8Coordinate) const;
    unsigned char internalCoordinateToGlobalCoordinate(unsigned short u16Coordinate) const;

    bool isValidPoint(unsigned short x, unsigned short y) const;

    /// The colour byte of a cell. Colours above 15 lose their upper bits or spill over.
    unsigned char makeColor(EOverlayTextColor eForeground, EOverlayTextColor eBackground) const;

    QHash<const COverlayText*, TOverlayTextData*>* m_pcTextDataHash; ///< owned, and so are its values
    QTextCodec* m_pcTextCodec;                                       ///< Qt's; null until it is needed
    bool m_bOverlayEnabled;
    COverlayTextPlaces m_cPlaces; ///< of those in the hash that have cells
    quint64 m_u64NextTurn;
};

#endif
