/* SPDX-License-Identifier: MIT */
#include "board/serve/CLivePicture.h"

#include "board/picture/CBoardPicture.h"

#include <QtEndian>

static const int LEAST_MS = 40; // between two pictures on average: 25 a second
static const int HEADER_BYTES = 8;

CLivePicture::CLivePicture(const CBoard& rcBoard, CJpegEncoder& rcEncoder, EKind eKind)
    : m_rcBoard(rcBoard), m_rcEncoder(rcEncoder), m_eKind(eKind)
{
    m_cClock.start();
}

void CLivePicture::update()
{
    if (!m_bOld || m_cClock.elapsed() < m_i64Due)
        return;
    m_bOld = false;
    // One that comes a little late doesn't delay all after it: the camera's frames would outrun the pictures.
    m_i64Due = qMax(m_i64Due + LEAST_MS, m_cClock.elapsed());
    const QImage cPicture =
        m_eKind == RECORDED ? CBoardPicture::recorded(m_rcBoard) : CBoardPicture::monitor(m_rcBoard);
    if (cPicture == m_cLast)
        return;
    const QByteArray cJpeg = m_rcEncoder.encode(cPicture);
    if (cJpeg.isEmpty())
        return;
    m_cLast = cPicture;
    ++m_u32Number;
    m_cMessage = QByteArray(HEADER_BYTES, '\0');
    qToBigEndian(m_u32Number, m_cMessage.data());
    m_cMessage[4] = static_cast<char>(m_eKind);
    m_cMessage += cJpeg;
}
