#ifndef HALDEND_DAEMON_CHEAPTRIMMER_H
#define HALDEND_DAEMON_CHEAPTRIMMER_H

#include <QObject>

#include <cstddef>

/// Gives the memory of a burst of calls back to the system. Looks every two seconds whether much has been freed
/// since the last time, so that ordinary calls pay nothing.
class CHeapTrimmer : public QObject
{
    Q_OBJECT

public:
    CHeapTrimmer();

protected:
    void timerEvent(QTimerEvent* pcEvent) override;

private:
    size_t m_uiKnownFree; ///< bytes free in the heap that were there at the last trim, at most
};

#endif
