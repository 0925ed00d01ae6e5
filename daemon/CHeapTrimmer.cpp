#include "daemon/CHeapTrimmer.h"

#include <algorithm>

#include <malloc.h>

namespace
{

const int INTERVAL_MS = 2000;
const size_t WORTH_A_TRIM = 8 * 1024 * 1024; // bytes

} // namespace

CHeapTrimmer::CHeapTrimmer() : m_uiKnownFree(0)
{
    // Very coarse: on full seconds, as the poll of the input signal, which wakes the process anyway.
    startTimer(INTERVAL_MS, Qt::VeryCoarseTimer);
}

void CHeapTrimmer::timerEvent(QTimerEvent* /*pcEvent*/)
{
    const size_t uiFree = mallinfo2().fordblks;
    // A trim leaves the heap's count as it is, so only what was freed since then is worth another.
    m_uiKnownFree = std::min(m_uiKnownFree, uiFree);
    if (uiFree - m_uiKnownFree < WORTH_A_TRIM)
        return;
    malloc_trim(0);
    m_uiKnownFree = mallinfo2().fordblks;
}
