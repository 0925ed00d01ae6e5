/* SPDX-License-Identifier: MIT */
/* When the heap is trimmed, with a clock and a heap that do as they are told. */
#include "daemon/CHeapTrimmer.h"

#include <QAbstractEventDispatcher>
#include <QtTest>

#include <malloc.h>

class TestCHeapTrimmer : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void looks_at_the_heap_every_two_seconds();
    void trims_what_is_worth_it();
    void only_what_is_freed_later_counts();
    void what_is_used_and_freed_again_counts();

private:
    int checksAt(qint64 iMilliseconds);
    bool trimsWith(size_t uiFree);

    QScopedPointer<CHeapTrimmer> m_pcTrimmer;
};

static const size_t MIB = 1024 * 1024;

static qint64 s_iElapsed;
static size_t s_uiFree;
static int s_iChecks;
static int s_iTrims;

extern "C" {
// In the place of QElapsedTimer::start() and elapsed().
void __wrap__ZN13QElapsedTimer5startEv(QElapsedTimer* /*pcTimer*/)
{
    s_iElapsed = 0;
}

qint64 __wrap__ZNK13QElapsedTimer7elapsedEv(const QElapsedTimer* /*pcTimer*/)
{
    return s_iElapsed;
}

struct mallinfo2 __wrap_mallinfo2()
{
    ++s_iChecks;
    struct mallinfo2 sInfo = {};
    sInfo.fordblks = s_uiFree;
    return sInfo;
}

// What is given back stays in the count of free bytes, as in the C library.
int __wrap_malloc_trim(size_t uiPad)
{
    s_iTrims += uiPad == 0 ? 1 : 100;
    return 1;
}
}

void TestCHeapTrimmer::init()
{
    s_iElapsed = -1;
    s_uiFree = 0;
    s_iChecks = 0;
    s_iTrims = 0;
    m_pcTrimmer.reset(new CHeapTrimmer);
    QCOMPARE(s_iElapsed, qint64{0});
}

static void waitForEvents()
{
    QMetaObject::invokeMethod(QAbstractEventDispatcher::instance(), "aboutToBlock");
}

// How often it looks at the heap when the event loop is about to wait, so long after the last time.
int TestCHeapTrimmer::checksAt(qint64 iMilliseconds)
{
    s_iElapsed = iMilliseconds;
    s_iChecks = 0;
    waitForEvents();
    return s_iChecks;
}

// Whether it trims a heap of so many free bytes.
bool TestCHeapTrimmer::trimsWith(size_t uiFree)
{
    const int iBefore = s_iTrims;
    s_uiFree = uiFree;
    s_iElapsed = 2000;
    waitForEvents();
    return s_iTrims == iBefore + 1;
}

void TestCHeapTrimmer::looks_at_the_heap_every_two_seconds()
{
    QCOMPARE(checksAt(0), 0);
    QCOMPARE(checksAt(1999), 0);
    QCOMPARE(checksAt(2000), 1);
    QCOMPARE(s_iElapsed, qint64{0});
    QCOMPARE(checksAt(1999), 0);
    QCOMPARE(checksAt(100000), 1);
    QCOMPARE(s_iTrims, 0);
}

void TestCHeapTrimmer::trims_what_is_worth_it()
{
    QVERIFY(!trimsWith(8 * MIB - 1));
    QVERIFY(trimsWith(8 * MIB));
}

void TestCHeapTrimmer::only_what_is_freed_later_counts()
{
    QVERIFY(trimsWith(20 * MIB));
    QVERIFY(!trimsWith(20 * MIB));
    QVERIFY(!trimsWith(28 * MIB - 1));
    QVERIFY(trimsWith(28 * MIB));
}

void TestCHeapTrimmer::what_is_used_and_freed_again_counts()
{
    QVERIFY(trimsWith(20 * MIB));
    QVERIFY(!trimsWith(2 * MIB));
    QVERIFY(!trimsWith(10 * MIB - 1));
    QVERIFY(trimsWith(10 * MIB));
}

QTEST_GUILESS_MAIN(TestCHeapTrimmer)

#include "tst_CHeapTrimmer.moc"
