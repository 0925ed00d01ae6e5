/* SPDX-License-Identifier: MIT */
#include "board/codec/CFilmThread.h"

CFilmThread::~CFilmThread()
{
    end();
}

void CFilmThread::start(CPosition cFirst)
{
    m_cClock = CFilmClock(now());
    m_cThread = std::thread(&CFilmThread::run, this, cFirst);
}

CFilmThread::CPosition CFilmThread::end()
{
    std::unique_lock<std::mutex> cLock(m_cMutex);
    m_bEnd = true;
    const CPosition cPosition = m_cClock.position(now());
    cLock.unlock();
    m_cChanged.notify_all();
    if (m_cThread.joinable())
        m_cThread.join();
    return cPosition;
}

void CFilmThread::pause()
{
    std::unique_lock<std::mutex> cLock(m_cMutex);
    m_cClock.pause(now());
    m_cChanged.notify_all();
    m_cChanged.wait(cLock, [this] { return !m_bWorking; });
}

void CFilmThread::resume()
{
    const std::lock_guard<std::mutex> cLock(m_cMutex);
    m_cClock.resume(now());
    m_cChanged.notify_all();
}

void CFilmThread::run(CPosition cDue)
{
    std::unique_lock<std::mutex> cLock(m_cMutex);
    while (!m_bEnd) {
        const CPosition cNow = m_cClock.position(now());
        if (m_cClock.isPaused() || cDue == NEVER) {
            m_cChanged.wait(cLock);
        } else if (cNow < cDue) {
            m_cChanged.wait_until(cLock, m_cClock.timeOf(cDue));
        } else {
            m_bWorking = true;
            cLock.unlock();
            cDue = frame(cNow);
            cLock.lock();
            m_bWorking = false;
            m_cChanged.notify_all();
        }
    }
}
