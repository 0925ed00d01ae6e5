/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CFAKECODEC_H
#define HALDEND_TESTS_CFAKECODEC_H

#include <QDBusConnection>
#include <QDBusVirtualObject>
#include <QMutex>
#include <QString>
#include <QStringList>
#include <QThread>

#include <functional>

/// The codec service in a thread and on a connection of its own, for tests of those who call it from the test's
/// thread and wait. Confirms every call, or refuses every one, or isn't there.
class CFakeCodec
{
public:
    CFakeCodec() = default;
    ~CFakeCodec();

    CFakeCodec(const CFakeCodec&) = delete;
    CFakeCodec& operator=(const CFakeCodec&) = delete;

    /// Comes to the bus and takes its name. False if that fails.
    bool start(const QString& rcBusAddress);

    void setConfirming(bool bConfirming) { m_cObject.setConfirming(bConfirming); }

    /// Gives up the name, or takes it again.
    void setPresent(bool bPresent);

    /// What to do at each call before it is confirmed, in the codec's thread.
    void setAtCall(std::function<void()> fnAtCall) { m_cObject.setAtCall(std::move(fnAtCall)); }

    /// The calls since the last time, one a line: "/Record record(si) /tmp/a, 3"; one that names an interface
    /// has it in front. All that this process sent to it on the system bus has arrived.
    QStringList takeCalls();

private:
    class CObject : public QDBusVirtualObject
    {
    public:
        QString introspect(const QString&) const override { return {}; }
        bool handleMessage(const QDBusMessage& rcMessage, const QDBusConnection& rcConnection) override;

        void setConfirming(bool bConfirming);
        void setAtCall(std::function<void()> fnAtCall);
        QStringList takeCalls();

    private:
        QMutex m_cMutex;
        QStringList m_cCalls;
        bool m_bConfirming = true;
        std::function<void()> m_fnAtCall;
    };

    QThread m_cThread;
    CObject m_cObject;
};

#endif
