/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CCALLER_H
#define HALDEND_TESTS_CCALLER_H

#include "tests/model/SCall.h"

#include <QByteArrayList>
#include <QHash>
#include <QString>
#include <QVector>

struct DBusConnection;
struct DBusMessage;

/// A client of the daemon on the bus library itself: it sends many calls before it waits, it sees answers and signals in
/// the order in which they came, and it can vanish without a word.
class CCaller
{
public:
    CCaller() = default;
    ~CCaller();

    CCaller(const CCaller&) = delete;
    CCaller& operator=(const CCaller&) = delete;

    /// Becomes a member of the bus, and hears the daemon's signals. False if it isn't let in.
    bool start(const QString& rcBusAddress);

    /// Sends a call that wants no reply.
    void send(const SCall& rsCall);

    /// Sends a call, whose serial number this is, and doesn't wait.
    quint32 post(const SCall& rsCall);

    /// Writes what isn't sent yet, and reads nothing.
    void write();

    /// Writes what isn't sent yet, and takes in what has come; waits for that if nothing has. False if the bus has closed
    /// the connection.
    bool receive(int iMilliseconds);

    /// The answers that came, by the serial numbers of their calls.
    QHash<quint32, QByteArray> takeAnswers();

    /// Sends calls, and waits for all answers: "" for an empty one, else types and values, as in "av i 1 i 5", or
    /// "error " and its name.
    QVector<QByteArray> ask(const QVector<SCall>& rcCalls);
    QByteArray ask(const SCall& rsCall) { return ask(QVector<SCall>{rsCall})[0]; }

    /// The signals that came before the last answer, as in "video_image_saved i 0".
    QByteArrayList takeSignals();

private:
    void take(DBusMessage* psMessage);

    DBusConnection* m_psConnection = nullptr;
    QHash<quint32, QByteArray> m_cAnswers;
    QByteArrayList m_cSignals;
};

#endif
