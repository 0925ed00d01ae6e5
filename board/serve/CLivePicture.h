/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_CLIVEPICTURE_H
#define HALDEND_BOARD_SERVE_CLIVEPICTURE_H

#include "board/serve/CJpegEncoder.h"

#include <QElapsedTimer>
#include <QImage>

class CBoard;

/// One of the pictures that leave a board, as the message that browsers get. It is made when somebody wants it, once for
/// all of them.
class CLivePicture
{
public:
    enum EKind { MONITOR, RECORDED };

    /// Keeps references to both.
    CLivePicture(const CBoard& rcBoard, CJpegEncoder& rcEncoder, EKind eKind);

    /// The board has changed: the picture may be another one.
    void setOld() { m_bOld = true; }

    /// Makes the picture if it may be another one and the last was made 40 ms ago or earlier.
    void update();

    /// Of the picture: grows when it really is another one; 0 before the first.
    quint32 number() const { return m_u32Number; }

    /// The number (32 bits, the most significant byte first), the kind (one byte), three zero bytes, the JPEG.
    QByteArray message() const { return m_cMessage; }

private:
    const CBoard& m_rcBoard;
    CJpegEncoder& m_rcEncoder;
    EKind m_eKind;
    bool m_bOld = true;
    QElapsedTimer m_cClock;
    qint64 m_i64Due = 0; ///< when the next picture may be made, on the clock
    QImage m_cLast;
    quint32 m_u32Number = 0;
    QByteArray m_cMessage;
};

#endif
