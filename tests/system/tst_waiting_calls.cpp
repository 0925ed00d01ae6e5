/* SPDX-License-Identifier: MIT */
/* More calls than the daemon can carry out at once: it reads them all, answers later, and returns the
 * memory. */
#include "tests/support/CRawBusClient.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Timeouts.h"

#include <QDBusUnixFileDescriptor>
#include <QtTest>

#include <sys/resource.h>
#include <unistd.h>

class TestWaitingCalls : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void do_not_make_it_deaf_data();
    void do_not_make_it_deaf();
    void with_descriptors_do_not_throw_it_off_the_bus();

private:
    bool letItWait(const char* pszCommand);

    QScopedPointer<CVideoScene> m_pcScene;
};

/// By default the bus library stops reading at that many bytes of calls that aren't carried out yet.
static const qint64 LIBRARY_LIMIT = 63 * 1024 * 1024;

/// The sanitizers' allocator holds freed memory back.
#ifdef __SANITIZE_ADDRESS__
static const bool SANITIZED = true;
#else
static const bool SANITIZED = false;
#endif

void TestWaitingCalls::init()
{
    m_pcScene.reset(new CVideoScene);
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

void TestWaitingCalls::cleanup()
{
    QCOMPARE(m_pcScene->end(), QString());
}

// Makes the daemon wait for the codec, which is stopped: a save asks it to pause a recording. Calls queue up
// from now on.
bool TestWaitingCalls::letItWait(const char* pszCommand)
{
    m_pcScene->codec().hold();
    m_pcScene->ask(pszCommand, m_pcScene->file("a file"));
    return m_pcScene->daemon().receives();
}

void TestWaitingCalls::do_not_make_it_deaf_data()
{
    QTest::addColumn<bool>("save");
    QTest::addColumn<int>("calls");
    QTest::addColumn<int>("characters");
    QTest::newRow("100 of 1 MB during a save") << true << 100 << 1000000;
    QTest::newRow("100 of 1 MB") << false << 100 << 1000000;
    QTest::newRow("1,000 of 1 MB") << false << 1000 << 1000000;
    QTest::newRow("26,000 of 2.5 kB") << false << 26000 << 2500;
}

void TestWaitingCalls::do_not_make_it_deaf()
{
    QFETCH(bool, save);
    QFETCH(int, calls);
    QFETCH(int, characters);
    CDaemonProcess& rcDaemon = m_pcScene->daemon();
    CRawBusClient cClient;
    QVERIFY(cClient.start(m_pcScene->bus().address()));
    const int iHandle = rcDaemon.call(QStringLiteral("/videooverlay"), QStringLiteral("create_text"))
                            .arguments()
                            .value(0)
                            .toInt();
    QVERIFY(iHandle != 0);
    const qint64 iBefore = rcDaemon.kilobytes("VmRSS:");
    QVERIFY(!save || m_pcScene->enterState(CVideoScene::RECORDING));
    QVERIFY(letItWait(save ? "save_video_image" : "start_video_recording"));

    const qint64 iBytes = cClient.flood(iHandle, characters, calls);
    QVERIFY2(iBytes > LIBRARY_LIMIT, QByteArray::number(iBytes));
    cClient.ping(); // waits for all; without an answer the getter below has none either
    m_pcScene->codec().goOn();

    const QDBusMessage cAnswer =
        rcDaemon.call(QStringLiteral("/videodisplay"), QStringLiteral("get_displayed_video_width"));
    QVERIFY2(cAnswer.type() == QDBusMessage::ReplyMessage, qPrintable(cAnswer.errorMessage()));
    if (SANITIZED)
        return;
    const qint64 iPeak = rcDaemon.kilobytes("VmHWM:");
    QVERIFY(iBefore > 0 && (iPeak - iBefore) * 1024 > LIBRARY_LIMIT / 2);
    QTRY_VERIFY_WITH_TIMEOUT(rcDaemon.kilobytes("VmRSS:") - iBefore < (iPeak - iBefore) / 4,
                             TIMEOUT_PROCESS_MS);
}

// No method takes one, but the bus library holds a call's descriptors until the call has been carried out.
void TestWaitingCalls::with_descriptors_do_not_throw_it_off_the_bus()
{
    const int CALLS = 80;
    const int DESCRIPTORS = 16; // the bus's limit for one message
    CDaemonProcess& rcDaemon = m_pcScene->daemon();
    const QVariant cDescriptor = QVariant::fromValue(QDBusUnixFileDescriptor(STDIN_FILENO));
    QVariantList cArguments;
    for (int iDescriptor = 0; iDescriptor < DESCRIPTORS; ++iDescriptor)
        cArguments << cDescriptor;
    const rlimit sDescriptors = {1024, 1024}; // the usual limit
    QCOMPARE(prlimit(static_cast<pid_t>(rcDaemon.pid()), RLIMIT_NOFILE, &sDescriptors, nullptr), 0);
    QVERIFY(letItWait("start_video_recording"));
    for (int iCall = 0; iCall < CALLS; ++iCall)
        rcDaemon.send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_size"), cArguments);
    const bool bReceived = rcDaemon.receives();
    m_pcScene->codec().goOn();
    QVERIFY(rcDaemon.settle());
    QVERIFY(bReceived);
}

QTEST_GUILESS_MAIN(TestWaitingCalls)

#include "tst_waiting_calls.moc"
