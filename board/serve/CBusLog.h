/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_CBUSLOG_H
#define HALDEND_BOARD_SERVE_CBUSLOG_H

#include <QDBusConnection>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QObject>
#include <QSet>

#include <memory>

class QSocketNotifier;
struct DBusConnection;
struct DBusMessage;

/// Listens to what the daemon's clients and the daemon say on the bus, as a monitor: calls with their answers, and
/// signals. A bus that refuses monitors leaves it without a word.
class CBusLog : public QObject
{
    Q_OBJECT

public:
    /// A call to the daemon, once it is answered, or at once if no answer is wanted.
    struct SCall {
        QString cObject; ///< such as "videooverlay"
        QString cMethod;
        QJsonArray cArguments;
        QJsonArray cAnswer;
    };

    /// rcBus: a connection to the same bus, which asks who is behind a name; its own calls are left out.
    explicit CBusLog(const QDBusConnection& rcBus, QObject* pcParent = nullptr);
    ~CBusLog() override;

    /// False if the bus has no ear for it: no log.
    bool isListening() const { return m_psMonitor != nullptr; }

    /// The names of connections that aren't those of their processes.
    void nameConnection(const QString& rcUnique, const QString& rcName) { m_cNames[rcUnique] = rcName; }

    /// Questions to the bus that aren't answered.
    int openQuestions() const { return m_iOpenQuestions; }

    /// The last entries, the oldest first.
    QList<QJsonObject> entries() const { return m_cEntries; }

signals:
    /// A new entry, or more about one with the same "n".
    ///
    /// {"n": 7, "time": "12:30:05.250", "who": "busctl", "what": "videooverlay.show_text", "arguments": "1",
    ///  "answer": "", "error": true, "ms": 0.4, "kind": "call" | "signal" | "codec"}; without "ms" the call isn't
    /// answered yet, and after one that wants no answer "answer" is missing too.
    void entry(const QJsonObject& rcEntry);
    void carriedOut(const CBusLog::SCall& rsCall);

private:
    struct SOpen {
        QJsonObject cEntry;
        SCall sCall;
        qint64 i64Begin = 0; ///< nanoseconds
        bool bOurs = false;
    };

    void listen();
    void read();
    void hear(DBusMessage* psMessage);
    void hearCall(DBusMessage* psMessage);
    void hearAnswer(DBusMessage* psMessage);
    void hearSignal(DBusMessage* psMessage);
    QString nameOf(const QString& rcUnique);
    void add(QJsonObject& rcEntry);
    void change(const QJsonObject& rcEntry);

    QDBusConnection m_cBus;
    DBusConnection* m_psMonitor = nullptr;
    std::unique_ptr<QSocketNotifier> m_pcNotifier;
    QHash<QString, QString> m_cNames; ///< by unique name
    QHash<QString, SOpen> m_cOpen;    ///< by caller and serial
    QList<QJsonObject> m_cEntries;
    int m_iLast = 0;
    int m_iOpenQuestions = 0;
};

#endif
