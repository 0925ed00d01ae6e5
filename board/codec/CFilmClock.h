/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_CFILMCLOCK_H
#define HALDEND_BOARD_CODEC_CFILMCLOCK_H

#include <chrono>

/// The time of a film, on CLOCK_MONOTONIC: runs from the start on, and stands still while it is paused.
class CFilmClock
{
public:
    using CTime = std::chrono::steady_clock::time_point;
    using CPosition = std::chrono::nanoseconds; ///< from the start of the film

    explicit CFilmClock(CTime cNow) : m_cOrigin(cNow) {}

    void pause(CTime cNow);
    void resume(CTime cNow);
    bool isPaused() const { return m_bPaused; }

    CPosition position(CTime cNow) const { return (m_bPaused ? m_cPaused : cNow) - m_cOrigin; }

    /// When a position comes, if there is no pause before it.
    CTime timeOf(CPosition cPosition) const { return m_cOrigin + cPosition; }

private:
    CTime m_cOrigin; ///< when it would have started without its pauses
    CTime m_cPaused;
    bool m_bPaused = false;
};

inline void CFilmClock::pause(CTime cNow)
{
    if (!m_bPaused)
        m_cPaused = cNow;
    m_bPaused = true;
}

inline void CFilmClock::resume(CTime cNow)
{
    if (m_bPaused)
        m_cOrigin += cNow - m_cPaused;
    m_bPaused = false;
}

#endif
