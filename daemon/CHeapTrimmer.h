/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DAEMON_CHEAPTRIMMER_H
#define HALDEND_DAEMON_CHEAPTRIMMER_H

#include <QElapsedTimer>
#include <QObject>

#include <cstddef>

/// Returns the memory of a burst of calls to the system. Before the event loop waits, and at most every two seconds,
/// it checks whether much has been freed since the last time. It never wakes the process: the check of the input
/// signal does that each second. To be made after the application.
class CHeapTrimmer : public QObject
{
    Q_OBJECT

public:
    CHeapTrimmer();

private slots:
    void trim();

private:
    QElapsedTimer m_cSinceCheck;
    size_t m_uiKnownFree; ///< bytes free in the heap at the last trim, or the least since then
};

#endif
