/* SPDX-License-Identifier: MIT */
#include "board/feed/CFeeder.h"

#include "board/camera/frames.h"
#include "board/camera/words.h"
#include "board/feed/IFrameSource.h"

#include <QFile>

#include <ctime>

#include <unistd.h>

namespace
{

const quint32 ATTENTION_FRAMES = 25; // after a look, frames until the source rests
const int REST_MS = 1000;            // between two looks for the folder

int millisecondsToNextFrame()
{
    timespec sNow;
    clock_gettime(CLOCK_MONOTONIC, &sNow);
    return 40 - static_cast<int>(sNow.tv_nsec / 1000000 % 40);
}

} // namespace

CFeeder::CFeeder(CBoard& rcBoard, IFrameSource& rcSource, quint32 u32Choice)
    : m_rcBoard(rcBoard), m_rcSource(rcSource), m_u32Choice(u32Choice), m_cPixels(VIDEO_WIDTH * VIDEO_HEIGHT)
{
}

bool CFeeder::run()
{
    board_store(&m_rcBoard.camera()->process, static_cast<quint32>(::getpid()));
    rest();
    while (!isOver()) {
        if (!isWatched())
            rest();
        else if (!deliver())
            return false;
    }
    return true;
}

bool CFeeder::isOver() const
{
    return !m_rcBoard.isCameraChosen(m_u32Choice) || !QFile::exists(m_rcBoard.path(BOARD_CONTROL));
}

bool CFeeder::isWatched()
{
    const quint32 u32Wanted = board_load(&m_rcBoard.camera()->wanted);
    const quint32 u32Frame = m_rcBoard.cameraFrame();
    if (u32Wanted != m_u32Wanted)
        m_u32LastLook = u32Frame;
    m_u32Wanted = u32Wanted;
    return u32Frame - m_u32LastLook < ATTENTION_FRAMES;
}

// A look that comes while the source goes to rest has changed the word, so that there is no waiting.
void CFeeder::rest()
{
    board_camera* psCamera = m_rcBoard.camera();
    m_rcSource.rest();
    frames_set(&psCamera->helper, FRAMES_RESTING);
    while (!isOver() && board_load(&psCamera->wanted) == m_u32Wanted)
        frames_wait(&psCamera->wanted, m_u32Wanted, REST_MS);
}

bool CFeeder::deliver()
{
    board_camera* psCamera = m_rcBoard.camera();
    const IFrameSource::EResult eResult = m_rcSource.take(m_rcBoard.cameraFrame(), m_cPixels.data());
    if (eResult == IFrameSource::NEW) {
        const quint32 u32Number = board_load(&psCamera->delivered) + 1;
        words_store(m_rcBoard.cameraFrames() + u32Number % BOARD_FRAME_PLACES * VIDEO_FRAME_BYTES,
                    m_cPixels.constData(), static_cast<std::size_t>(m_cPixels.size()));
        board_store(&psCamera->delivered, u32Number);
        frames_set(&psCamera->helper, FRAMES_RUNNING);
    } else if (eResult == IFrameSource::NONE) {
        // Waits for the choice, to see at once when it is over.
        frames_wait(&psCamera->choice, m_u32Choice, millisecondsToNextFrame());
    }
    return eResult != IFrameSource::FAILED;
}
