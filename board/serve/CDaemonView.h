/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_CDAEMONVIEW_H
#define HALDEND_BOARD_SERVE_CDAEMONVIEW_H

#include "board/serve/CBusLog.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusServiceWatcher>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QVariantList>

#include <deque>
#include <functional>

/// What the daemon says of itself: its state and its texts, kept up to date while somebody watches. And the way to call
/// it, as any client does. The daemon may go and come back.
///
/// The daemon has no list of its texts. So all low handles are asked for once; from then on the bus log tells which text
/// a client has changed. Without a log they are asked for each second.
class CDaemonView : public QObject
{
    Q_OBJECT

public:
    explicit CDaemonView(QObject* pcParent = nullptr);

    /// Before the end: waits for the answers that are under way, for a second at most. Qt's thread of the bus must not
    /// deliver any to an object that goes.
    void close();

    CBusLog& log() { return m_cLog; }

    /// Whether somebody watches: otherwise nothing is asked for.
    void setWatched(bool bWatched);

    /// As sent by the signals below; empty before the first answers.
    QJsonObject status() const { return m_cStatus; }
    QJsonArray texts() const;

    /// Calls one of the daemon's methods. fnDone gets {"answer": [...]} or {"error": "in words"}, perhaps before call()
    /// returns. The arguments have to be the method's.
    void call(const QString& rcObject, const QString& rcMethod, const QJsonArray& rcArguments,
              const std::function<void(const QJsonObject&)>& rcDone);

signals:
    /// {"daemon": true, "overlay": true, "width": 688, "height": 573, "counter": [sender, h, m, s, f], "active": false,
    ///  "recording": false, "recordingPaused": false, "recordingTime": [h, m, s], "rate": 22, "playing": false,
    ///  "playingPaused": false, "input": 0, "codec": true}; only "daemon" while it is away.
    void statusChanged(const QJsonObject& rcStatus);

    /// [{"handle": 1, "id": 0, "text": "Manhole 17", "x": 20, "y": 2, "end": 30, "foreground": 12, "background": 5,
    ///   "shown": true, "counter": false}, ...], by handle.
    void textsChanged(const QJsonArray& rcTexts);

private slots:
    void onCounter(const QDBusMessage& rcMessage);
    void onInput(const QDBusMessage& rcMessage);
    void onRecordingError(const QDBusMessage& rcMessage);

private:
    using FAnswers = std::function<void(const QList<QDBusMessage>&)>;

    struct SQuestion {
        QDBusMessage cCall;
        std::function<void(const QDBusMessage&)> fnDone;
    };

    void onOwnerChanged(const QString& rcOwner);
    void onCarriedOut(const CBusLog::SCall& rsCall);
    void onTick();
    void ask(const QList<QDBusMessage>& rcQuestions, const FAnswers& rcDone);
    void sendQuestions();
    void askStatus();
    void findTexts(int iFirst, int iLast);
    void lookAtTexts(const QList<int>& rcHandles);
    void lookLater(const QList<int>& rcHandles);
    void lookAtAllLater();
    void setStatus(const QJsonObject& rcStatus);

    QDBusConnection m_cWatching; ///< asks for states; not in the log
    QDBusConnection m_cActing;   ///< carries out what users want; in the log
    CBusLog m_cLog;
    QDBusServiceWatcher m_cWatcher;
    QTimer m_cTick;
    QTimer m_cSoon;
    bool m_bDaemon = false;
    bool m_bWatched = false;
    bool m_bAsked = false; ///< for the status, and not all is answered
    bool m_bAskAgain = false;
    std::deque<SQuestion> m_cQuestions; ///< that aren't sent yet
    int m_iOpenQuestions = 0;
    int m_iOpenCalls = 0;
    QSet<int> m_cLater; ///< handles to look at soon
    bool m_bAllLater = false;
    QMap<int, QJsonObject> m_cTexts;
    QJsonObject m_cStatus;
};

#endif
