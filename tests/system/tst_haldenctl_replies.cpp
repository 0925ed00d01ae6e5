/* SPDX-License-Identifier: MIT */
/* haldenctl and a daemon that answers otherwise than ours: methods without a result stay without a reply. */
#include "tests/support/CChildProcess.h"
#include "tests/support/CHaldenctl.h"
#include "tests/support/CPrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QtTest>

namespace
{

const char* const SERVICE_NAME = "velmar.haldend";
const char* const CONNECTION = "stand-in";

/// Takes every call. Answers those that are told to, and no other.
class CStandIn : public QDBusVirtualObject
{
public:
    QString introspect(const QString&) const override { return {}; }

    bool handleMessage(const QDBusMessage& rcMessage, const QDBusConnection& rcConnection) override
    {
        m_cCalls << rcMessage.member();
        if (m_cAnswers.contains(rcMessage.member()))
            rcConnection.send(rcMessage.createReply(m_cAnswers.value(rcMessage.member())));
        else
            rcMessage.setDelayedReply(true);
        return true;
    }

    void answer(const QString& rcMethod, const QVariant& rcAnswer) { m_cAnswers.insert(rcMethod, rcAnswer); }
    QStringList calls() const { return m_cCalls; }

private:
    QMap<QString, QVariant> m_cAnswers;
    QStringList m_cCalls;
};

} // namespace

class TestHaldenctlReplies : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void a_getter_marks_the_order_where_no_reply_comes();
    void calls_that_are_answered_need_no_getter();
    void doctor_finds_a_window_without_size();
    void a_result_that_is_not_known();

private:
    /// Runs it to its end, while this process answers.
    int run(const QStringList& rcArguments);

    std::unique_ptr<CPrivateBus> m_pcBus;
    std::unique_ptr<CStandIn> m_pcStandIn;
    QString m_cOutput;
    QString m_cErrors;
};

void TestHaldenctlReplies::init()
{
    m_pcBus = std::make_unique<CPrivateBus>();
    m_pcStandIn = std::make_unique<CStandIn>();
    QVERIFY(m_pcBus->start());
    QDBusConnection cConnection = QDBusConnection::connectToBus(m_pcBus->address(), CONNECTION);
    QVERIFY(cConnection.registerVirtualObject("/", m_pcStandIn.get(), QDBusConnection::SubPath));
    QVERIFY(cConnection.registerService(SERVICE_NAME));
}

void TestHaldenctlReplies::cleanup()
{
    QDBusConnection::disconnectFromBus(CONNECTION);
    m_pcStandIn.reset();
    m_pcBus.reset();
}

int TestHaldenctlReplies::run(const QStringList& rcArguments)
{
    CHaldenctl cCtl(m_pcBus->address());
    CChildProcess cProcess;
    cCtl.start(cProcess, rcArguments);
    const bool bEnded = QTest::qWaitFor([&] { return cProcess.state() == QProcess::NotRunning; }, 20000);
    m_cOutput = QString::fromUtf8(cProcess.readAllStandardOutput());
    m_cErrors = QString::fromUtf8(cProcess.readAllStandardError());
    return bEnded ? cProcess.exitCode() : -1;
}

void TestHaldenctlReplies::a_getter_marks_the_order_where_no_reply_comes()
{
    m_pcStandIn->answer("get_displayed_video_width", 688);
    QCOMPARE(run({"overlay", "show"}), 0);
    QCOMPARE(m_pcStandIn->calls(), QStringList({"show_overlay", "get_displayed_video_width"}));
    QCOMPARE(m_cErrors, QString());
}

void TestHaldenctlReplies::calls_that_are_answered_need_no_getter()
{
    m_pcStandIn->answer("show_overlay", QVariant(true));
    QCOMPARE(run({"overlay", "show"}), 0);
    QCOMPARE(m_pcStandIn->calls(), QStringList({"show_overlay"}));
}

// Ours has no such window: it ignores the size.
void TestHaldenctlReplies::doctor_finds_a_window_without_size()
{
    m_pcStandIn->answer("get_displayed_video_width", 0);
    m_pcStandIn->answer("get_displayed_video_height", 288);
    m_pcStandIn->answer("get_video_input_type", 0);
    m_pcStandIn->answer("is_video_playback_running", false);
    m_pcStandIn->answer("is_video_playback_paused", false);
    QCOMPARE(run({"doctor", "picture"}), 1);
    QVERIFY2(m_cOutput.startsWith("picture: the window has the size 0: haldenctl display size 720 576\n"),
             qPrintable(m_cOutput));
}

void TestHaldenctlReplies::a_result_that_is_not_known()
{
    m_pcStandIn->answer("stop_video_recording", 9);
    QCOMPARE(run({"record", "stop"}), 1);
    QCOMPARE(m_cErrors, QString("haldenctl: an answer that this client doesn't know (9): update it\n"));
}

QTEST_GUILESS_MAIN(TestHaldenctlReplies)

#include "tst_haldenctl_replies.moc"
