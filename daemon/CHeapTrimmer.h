#ifndef HALDEND_DAEMON_CHEAPTRIMMER_H
#define HALDEND_DAEMON_CHEAPTRIMMER_H

#include <QObject>

#include <cstddef>

/// Returns the memory of a burst of calls to the system. Checks every two seconds whether much has been freed
/// since the last time, so that ordinary calls cost nothing.
class CHeapTrimmer : public QObject
{
    Q_OBJECT

public:
    CHeapTrimmer();

protected:
    void timerEvent(QTimerEvent* pcEvent) override;

private:
    size_t m_uiKnownFree; ///< bytes free in the heap at the last trim, or the least since then
};

#endif
