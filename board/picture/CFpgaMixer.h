/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_PICTURE_CFPGAMIXER_H
#define HALDEND_BOARD_PICTURE_CFPGAMIXER_H

#include <QImage>

class CBoard;

/// Composes the output of the overlay FPGA, from the memory of a board alone.
///
/// This is the virtual board's model of the FPGA, not a statement about the hardware. All of it is in
/// coordinates of the 720 x 576 frame; a field line is two frame lines, the first field the even ones.
///
/// - Source: the first that applies: (1) stored frame, if the control set's restore bit is set; (2) the
///   codec's playback, if both por bits of CTRL are set; (3) the frame generator's colour, if fgon is set;
///   (4) the camera behind the decoder, or black.
/// - Graphic layer: the page that the display register names, 720 x 288 field lines, by its palette.
/// - Text layer: 53 x 26 cells of the page that TEMO names, the first at TSXP (pixels), TSYP (field lines),
///   TESZ pixels wide and field lines high; even frame lines show a glyph's first half, odd ones its second.
/// - Cursor: its shape's width and height, at its position in pixels and frame lines.
///
/// Text covers graphics, or with graphic priority graphics cover text; the cursor covers both. Colours are
/// mixed by their alpha, in integers: the same picture on every host.
class CFpgaMixer
{
public:
    /// The FPGA's outputs: A for the monitor, C for the recorder.
    enum EControlSet { CONTROL_A, CONTROL_C };

    /// Keeps a reference to the board, which must be open.
    explicit CFpgaMixer(const CBoard& rcBoard);

    /// The frame now, 720 x 576, Format_RGB32.
    QImage mix(EControlSet eSet);

private:
    void source(quint32 u32Control, bool bRestore);
    void storedFrame();
    void graphicLayer();
    void textLayer();
    void textRow(int iLine, int iTop, const char* pszCells);
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
