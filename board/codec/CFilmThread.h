/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_CFILMTHREAD_H
#define HALDEND_BOARD_CODEC_CFILMTHREAD_H

#include "board/codec/CFilmClock.h"
#include "board/codec/IFilm.h"

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

/// A film that goes on in a thread of its own, a frame at a time, so that the bus is answered at the same time. The thread
/// sleeps between frames, and while the film is paused.
class CFilmThread : public IFilm
{
public:
    ~CFilmThread() override;

    void pause() override;
    void resume() override;
    void tick() override {}
    int frames() const override { return m_iFrames; }

protected:
    using CPosition = CFilmClock::CPosition;

    /// As the time of the next frame: there is none.
    static constexpr CPosition NEVER = CPosition::max();

    CFilmThread() = default;

    /// Starts the clock and the thread; the first frame is due at the position given.
    void start(CPosition cFirst);

    /// Ends the thread. Every destructor of a class that has a frame() calls it. Returns the position of the end.
    CPosition end();

    /// Does the work of a frame that is due; cNow is the position now. Returns when the next one is due. This one has
    /// nothing to do.
    virtual CPosition frame(CPosition /*cNow*/) { return NEVER; }

    void countFrame() { ++m_iFrames; }

private:
    void run(CPosition cDue);
    static CFilmClock::CTime now() { return std::chrono::steady_clock::now(); }

    std::thread m_cThread;
    std::mutex m_cMutex; ///< for the next four
    std::condition_variable m_cChanged;
    CFilmClock m_cClock{now()};
    bool m_bWorking = false; ///< on a frame, without the mutex
    bool m_bEnd = false;
    std::atomic<int> m_iFrames{0};
};

#endif
