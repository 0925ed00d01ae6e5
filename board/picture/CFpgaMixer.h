#ifndef HALDEND_BOARD_PICTURE_CFPGAMIXER_H
#define HALDEND_BOARD_PICTURE_CFPGAMIXER_H

#include <QImage>

class CBoard;

/// Composes what the overlay FPGA puts out, from the memory of a board, and from nothing else.
///
/// This is the model that the virtual board has of the FPGA, not a statement about the hardware. All of it is
/// in coordinates of the 720 x 576 frame; a field line is two frame lines, the first field the even ones.
///
/// - Source: the camera; in its place the frame generator's colour while CTRL has fgon set; in its place what the
///   codec plays back while CTRL has both por bits set; in its place the stored frame while the control set's
///   restore bit is set.
/// - Graphic layer: the page that the display register names, 720 x 288 field lines, by its palette.
/// - Text layer: 53 x 26 cells of the page that TEMO names, the first at TSXP (pixels), TSYP (field lines),
///   TESZ pixels wide and field lines high; even frame lines show a glyph's first half, odd ones its second.
/// - Cursor: its shape's width and height, at its position in pixels and frame lines.
///
/// Text covers graphics, the other way round with graphic priority; the cursor covers both. Colours are mixed
/// by their alpha, in integers: the same picture on every host.
class CFpgaMixer
{
public:
    /// Which of the FPGA's outputs: the monitor's or the recorder's.
    enum EControlSet { CONTROL_A, CONTROL_C };

    /// Keeps a reference to the board, which has to be open.
    explicit CFpgaMixer(const CBoard& rcBoard);

    /// The frame now, 720 x 576, Format_RGB32.
    QImage mix(EControlSet eSet);

private:
    void source(quint32 u32Control, bool bRestore);
    void storedFrame();
    void graphicLayer();
    void textLayer();
    void textRow(int iLine, int iTop, const QByteArray& rcCells);
    void cursor();

    const CBoard& m_rcBoard;
    QImage m_cFrame;

    // The text layer while it is drawn
    QByteArray m_cGlyphs;
    QRgb m_auForeground[16];
    QRgb m_auBackground[16];
    int m_iCellWidth;
    int m_iCellHeight; ///< field lines
    int m_iTextLeft;
};

#endif
