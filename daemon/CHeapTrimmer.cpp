/* SPDX-License-Identifier: MIT */
#include "daemon/CHeapTrimmer.h"

#include <QAbstractEventDispatcher>

#include <algorithm>

#include <malloc.h>

namespace
{

const qint64 INTERVAL_MS = 2000;
const size_t WORTH_A_TRIM = 8 * 1024 * 1024; // bytes

} // namespace

CHeapTrimmer::CHeapTrimmer() : m_uiKnownFree(0)
{
    m_cSinceCheck.start();
    connect(QAbstractEventDispatcher::instance(), SIGNAL(aboutToBlock()), SLOT(trim()));
}

void CHeapTrimmer::trim()
{
    if (m_cSinceCheck.elapsed() < INTERVAL_MS)
        return;
    m_cSinceCheck.start();
    const size_t uiFree = mallinfo2().fordblks;
    // A trim doesn't lower the heap's count of free bytes, so only later frees are worth another trim.
    m_uiKnownFree = std::min(m_uiKnownFree, uiFree);
    if (uiFree - m_uiKnownFree < WORTH_A_TRIM)
        return;
    malloc_trim(0);
    m_uiKnownFree = mallinfo2().fordblks;
}
