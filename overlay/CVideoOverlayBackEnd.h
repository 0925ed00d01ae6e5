/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_OVERLAY_CVIDEOOVERLAYBACKEND_H
#define HALDEND_OVERLAY_CVIDEOOVERLAYBACKEND_H

#include "overlay/COverlayTextPlaces.h"
#include "overlay/EOverlayTextColor.h"
#include "overlay/IVideoOverlay.h"

#include <QHash>

#include <memory>

class QTextCodec;
class QTextEncoder;

/// The overlay of this board: texts as cells of the FPGA's text layer, 53 columns by 26 rows, one cell a
/// character. The board can overlay nothing else: the graphic operations do nothing, and those of
/// UnsupportedOperations.h print on standard output that they are not implemented.
///
/// A text is cut at the right edge; its end wraps at 256 before that. A text outside the layer is not drawn,
/// but remembered like any other. A later text hides those beneath it. When a text goes, the back end draws
/// the texts that it hid on its row again.
///
/// A UTF-16 code unit that the locale's letters lack is shown as a question mark: a character outside the
/// basic plane is two of them.
///
/// Kept: when a text moves on its row, texts between its old and its new place may lose cells until their
/// next drawing. The pictures that clients get depend on it.
class CVideoOverlayBackEnd : public IVideoOverlay
{
public:
    /// Touches no hardware: the letters are those of the FPGA's start, and the overlay counts as disabled.
    CVideoOverlayBackEnd();

    CVideoOverlayBackEnd(const CVideoOverlayBackEnd&) = delete;
    CVideoOverlayBackEnd& operator=(const CVideoOverlayBackEnd&) = delete;

    /// The value last set here, whatever the FPGA shows.
    bool isOverlayEnabled() const override;

    /// Switches the graphic and the text layer; the hardware cursor is not switched.
    void setOverlayEnabled(bool bEnabled) override;

    void drawText(const COverlayText& rcText) override;
    void clearText(const COverlayText& rcText) override;
    void drawGraphic(const COverlayGraphic& rcGraphic) override;
    void clearGraphic(const COverlayGraphic& rcGraphic) override;

    /// Goes by the locale's country, not by its language: see Alphabets.h. Writes the glyph memory only if
    /// the set changes.
    void loadCharacterSetForLocale(const QString& rcLocaleName) override;

    unsigned int getMaxTextLineWidth() const override;
    unsigned int getMaxTextLineCount() const override;

#define DECLARATION(method, passedOnBy, operation, parameters, arguments) void operation parameters override;
    OVERLAY_FEATURES_AS_OPERATIONS(DECLARATION)
#undef DECLARATION

    void setOsdTransparency(int iValue) override;

    virtual ~CVideoOverlayBackEnd();

private:
    /// The place where a text was last drawn. A new record's place is on no row.
    struct TOverlayTextData : COverlayTextPlaces::SPlace {
        quint64 u64Turn; ///< of the first drawing since the text was last cleared, among all texts
    };

    /// Erases columns fromX to toX - 1 of a row, those that are on the layer: the video shows there again.
    void clearText(unsigned short fromX, unsigned short toX, unsigned short y);

    /// Writes the first characters of a text into columns fromX to toX - 1 of a row.
    void drawText(unsigned short fromX, unsigned short toX, unsigned short y, const COverlayText& rcText);

    /// The encoding of the locale's letters. Owned by Qt.
    QTextCodec& textCodec();

    /// The codes of a string in the locale's letters, one byte for each UTF-16 code unit.
    QByteArray codesOf(const QString& rcString);

    /// The text's record, a new one if it has none. The hash owns it.
    TOverlayTextData* obtainTextData(const COverlayText& rcText);

    /// Stores the place of a text, in its record and among the places.
    void setPlace(TOverlayTextData& rsData, const COverlayTextPlaces::SPlace& rsPlace,
                  const COverlayText& rcText);

    /// Draws the texts again that touch an erased region of a row. rsRegion is the record of the text that
    /// stood there; that text is left out.
    void redrawCollidingTexts(const TOverlayTextData& rsRegion);

    // Clients and the layer use the same columns and rows; the layer's type is wider.
    unsigned short globalCoordinateToInternalCoordinate(unsigned char u8Coordinate) const;
    unsigned char internalCoordinateToGlobalCoordinate(unsigned short u16Coordinate) const;

    bool isValidPoint(unsigned short x, unsigned short y) const;

    /// The colour byte of a cell, foreground << 4 | background.
    ///
    /// Kept: colours above 15 are not cut. They lose their upper bits or spill into the other colour, as
    /// clients see them.
    unsigned char makeColor(EOverlayTextColor eForeground, EOverlayTextColor eBackground) const;

    QHash<const COverlayText*, TOverlayTextData*>* m_pcTextDataHash; ///< owned, and so are its values
    QTextCodec* m_pcTextCodec;                                       ///< Qt's; null until it is needed
    std::unique_ptr<QTextEncoder> m_pcEncoder;                       ///< of it; to open one takes long
    bool m_bOverlayEnabled;
    COverlayTextPlaces m_cPlaces; ///< of those in the hash that have cells
    quint64 m_u64NextTurn;
};

#endif
