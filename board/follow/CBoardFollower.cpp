/* SPDX-License-Identifier: MIT */
#include "board/follow/CBoardFollower.h"

#include "board/state/CBoard.h"
#include "hw/lime_registers.h"

namespace
{

/// The display controller's registers: parts of its windows, by byte offset.
struct SRange {
    CBoard::ELimeWindow eWindow;
    quint32 u32First;
    quint32 u32End;
};

const int GRAPHIC_LOOKS = 10; // layer 0's memory is large: one look in so many includes it

const SRange RANGES[] = {
    {CBoard::LIME_HOST,    0x0000, 0x0100},
    {CBoard::LIME_DISPLAY, 0x0000, 0x01b8},
    {CBoard::LIME_CAPTURE, 0x0000, 0x0050},
    {CBoard::LIME_CAPTURE, 0x4000, 0x4008},
};

} // namespace

CBoardFollower::CBoardFollower(const CBoard& rcBoard) : m_rcBoard(rcBoard) {}

bool CBoardFollower::look()
{
    QVector<quint32> cWords = words();
    const bool bWords = m_iLooks == 0 || cWords != m_cWords;
    const bool bGraphic = (bWords || m_iLooks % GRAPHIC_LOOKS == 0) && lookAtGraphic();
    m_cWords.swap(cWords);
    m_iLooks = m_iLooks % GRAPHIC_LOOKS + 1;
    return bWords || bGraphic;
}

QVector<quint32> CBoardFollower::words() const
{
    QVector<quint32> cWords;
    cWords.reserve(m_cWords.size());
    cWords << m_rcBoard.changes();
    if (m_rcBoard.cameraSource() != BOARD_CAMERA_STILL && m_rcBoard.hasSignal())
        cWords << m_rcBoard.cameraFrame();
    for (const SRange& rsRange : RANGES)
        for (quint32 u32Offset = rsRange.u32First; u32Offset < rsRange.u32End; u32Offset += 4)
            cWords << m_rcBoard.limeRegister(rsRange.eWindow, u32Offset);
    return cWords;
}

/// Compares the memory of layer 0 while it is on. True if it has changed.
bool CBoardFollower::lookAtGraphic()
{
    const quint32 u32Mode = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_DCM1);
    if ((u32Mode & LIME_DCM1_DISPLAY) == 0 || (u32Mode & LIME_DCM1_LAYER(0)) == 0)
        return false;
    const quint32 u32Stride = (m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L0M) >> 16 & 0xff) * 64;
    const quint32 u32Origin = m_rcBoard.limeRegister(CBoard::LIME_DISPLAY, LIME_L0OA) & 0x03ffffff;
    const QByteArray cGraphic = m_rcBoard.limeMemory(u32Origin, static_cast<int>(u32Stride) * VIDEO_HEIGHT);
    if (cGraphic == m_cGraphic)
        return false;
    m_cGraphic = QByteArray(cGraphic.constData(), cGraphic.size());
    return true;
}
