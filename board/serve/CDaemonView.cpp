/* SPDX-License-Identifier: MIT */
#include "board/serve/CDaemonView.h"

#include "ctl/CBus.h"
#include "ctl/Interfaces.h"

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>

#include <cmath>
#include <limits>
#include <memory>

namespace
{

const int TICK_MS = 1000;
const int SOON_MS = 10;        // changes of one moment are asked for together
const int FIRST_HANDLES = 200; // asked for at the start; the daemon gives out the lowest
const int MORE_HANDLES = 16;   // behind the highest one, later
const int OPEN_QUESTIONS = 60; // the bus limits the calls that a client has open
const int CALL_MS = 60000;     // a command waits for the codec service
const int CLOSE_MS = 1000;     // the daemon may be busy
const int QUESTION_MS = 60000;
const QString DISPLAY = QStringLiteral("videodisplay");

QDBusConnection connection(const char* pszFor)
{
    return QDBusConnection::connectToBus(QDBusConnection::SystemBus,
                                         QStringLiteral("halden-board-") + QLatin1String(pszFor));
}

QDBusMessage question(const QString& rcObject, const char* pszMethod, const QVariantList& rcArguments = {})
{
    QDBusMessage cMessage = QDBusMessage::createMethodCall(SERVICE, pathOf(rcObject), interfaceOf(rcObject),
                                                           QLatin1String(pszMethod));
    cMessage.setArguments(rcArguments);
    return cMessage;
}

QJsonArray jsonOf(const QList<int>& rcNumbers)
{
    QJsonArray cArray;
    for (const int iNumber : rcNumbers)
        cArray << iNumber;
    return cArray;
}

QJsonValue jsonOf(const QVariant& rcValue)
{
    if (rcValue.userType() == QMetaType::QString || rcValue.userType() == QMetaType::Bool ||
        rcValue.userType() == QMetaType::Int)
        return QJsonValue::fromVariant(rcValue);
    return jsonOf(numbersOf(rcValue));
}

QVariant first(const QDBusMessage& rcAnswer)
{
    return rcAnswer.type() == QDBusMessage::ReplyMessage ? rcAnswer.arguments().value(0) : QVariant();
}

/// The argument of that D-Bus type; invalid if it has another one, or is too large.
QVariant argumentOf(const QJsonValue& rcValue, const QString& rcType)
{
    if (rcType == QLatin1String("i") && rcValue.isDouble()) {
        const double dValue = rcValue.toDouble();
        const bool bInteger = std::floor(dValue) == dValue && dValue >= std::numeric_limits<int>::min() &&
                              dValue <= std::numeric_limits<int>::max();
        return bInteger ? QVariant(static_cast<int>(dValue)) : QVariant();
    }
    if (rcType == QLatin1String("b") && rcValue.isBool())
        return rcValue.toBool();
    if (rcType == QLatin1String("s") && rcValue.isString())
        return rcValue.toString();
    return QVariant();
}

/// The arguments of the method, or a text that says what is wrong.
QString readArguments(const QString& rcObject, const QString& rcMethod, const QJsonArray& rcValues,
                      QVariantList& rcArguments)
{
    for (const SMember& rsMember : membersOf(rcObject)) {
        if (rsMember.bSignal || rsMember.cName != rcMethod)
            continue;
        if (rsMember.cInTypes.size() != rcValues.size())
            return QStringLiteral("%1 takes %2 arguments").arg(rcMethod).arg(rsMember.cInTypes.size());
        for (int i = 0; i < rcValues.size(); ++i) {
            rcArguments << argumentOf(rcValues[i], rsMember.cInTypes[i]);
            if (!rcArguments.last().isValid())
                return QStringLiteral("%1: %2 is of the type %3")
                    .arg(rcMethod, rsMember.cInNames[i], rsMember.cInTypes[i]);
        }
        return QString();
    }
    return QStringLiteral("no such method: %1.%2").arg(rcObject, rcMethod);
}

bool isNoText(const QList<int>& rcPosition)
{
    return rcPosition == QList<int>{255, 255, 255};
}

} // namespace

CDaemonView::CDaemonView(QObject* pcParent)
    : QObject(pcParent),
      m_cWatching(connection("watching")),
      m_cActing(connection("acting")),
      m_cLog(m_cWatching),
      m_cWatcher(SERVICE, m_cWatching, QDBusServiceWatcher::WatchForOwnerChange)
{
    m_cLog.nameConnection(m_cActing.baseService(), QStringLiteral("this page"));
    connect(&m_cLog, &CBusLog::carriedOut, this, &CDaemonView::onCarriedOut);
    connect(&m_cWatcher, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString&, const QString& rcOwner) { onOwnerChanged(rcOwner); });
    m_cWatching.connect(SERVICE, pathOf(OVERLAY), interfaceOf(OVERLAY),
                        QStringLiteral("videocounter_changed"), this, SLOT(onCounter(QDBusMessage)));
    m_cWatching.connect(SERVICE, pathOf(PROCESSING), interfaceOf(PROCESSING),
                        QStringLiteral("video_input_type_changed"), this, SLOT(onInput(QDBusMessage)));
    m_cWatching.connect(SERVICE, pathOf(PROCESSING), interfaceOf(PROCESSING),
                        QStringLiteral("video_recording_error"), this, SLOT(onRecordingError(QDBusMessage)));
    connect(&m_cTick, &QTimer::timeout, this, &CDaemonView::onTick);
    m_cSoon.setSingleShot(true);
    connect(&m_cSoon, &QTimer::timeout, this, [this] {
        askStatus();
        const QList<int> cHandles = m_bAllLater ? m_cTexts.keys() + m_cLater.values() : m_cLater.values();
        if (m_bAllLater)
            findTexts(1, (m_cTexts.isEmpty() ? 0 : m_cTexts.lastKey()) + MORE_HANDLES);
        else
            lookAtTexts(cHandles);
        m_cLater.clear();
        m_bAllLater = false;
    });
    m_bDaemon = m_cWatching.isConnected() && m_cWatching.interface()->isServiceRegistered(SERVICE);
    m_cStatus = {
        {QStringLiteral("daemon"), m_bDaemon}
    };
}

void CDaemonView::close()
{
    m_cQuestions.clear();
    m_bDaemon = false;
    QTimer cEnd;
    cEnd.setSingleShot(true);
    cEnd.start(CLOSE_MS);
    while (m_iOpenQuestions + m_iOpenCalls + m_cLog.openQuestions() > 0 && cEnd.isActive())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QDBusConnection::disconnectFromBus(m_cWatching.name());
    QDBusConnection::disconnectFromBus(m_cActing.name());
}

QJsonArray CDaemonView::texts() const
{
    QJsonArray cTexts;
    for (const QJsonObject& rcText : m_cTexts)
        cTexts << rcText;
    return cTexts;
}

void CDaemonView::setWatched(bool bWatched)
{
    if (bWatched == m_bWatched)
        return;
    m_bWatched = bWatched;
    if (!bWatched) {
        m_cTick.stop();
        return;
    }
    m_cTick.start(TICK_MS);
    askStatus();
    findTexts(1, FIRST_HANDLES);
}

void CDaemonView::onOwnerChanged(const QString& rcOwner)
{
    m_bDaemon = !rcOwner.isEmpty();
    m_bAsked = false;
    m_cTexts.clear();
    emit textsChanged(texts());
    setStatus({
        {QStringLiteral("daemon"), m_bDaemon}
    });
    if (m_bDaemon && m_bWatched) {
        askStatus();
        findTexts(1, FIRST_HANDLES);
    }
}

void CDaemonView::onTick()
{
    askStatus();
    if (!m_cLog.isListening())
        findTexts(1, (m_cTexts.isEmpty() ? 0 : m_cTexts.lastKey()) + MORE_HANDLES);
}

void CDaemonView::setStatus(const QJsonObject& rcStatus)
{
    if (rcStatus == m_cStatus)
        return;
    m_cStatus = rcStatus;
    emit statusChanged(m_cStatus);
}

// What others do

void CDaemonView::onCounter(const QDBusMessage& rcMessage)
{
    QJsonArray cCounter = m_cStatus[QStringLiteral("counter")].toArray();
    if (cCounter.size() == 5)
        for (int i = 0; i < rcMessage.arguments().size() && i < 4; ++i)
            cCounter[i + 1] = rcMessage.arguments()[i].toInt();
    QJsonObject cStatus = m_cStatus;
    cStatus[QStringLiteral("counter")] = cCounter;
    setStatus(cStatus);
    for (auto pText = m_cTexts.constBegin(); pText != m_cTexts.constEnd(); ++pText)
        if (pText.value()[QStringLiteral("counter")].toBool())
            lookLater({pText.key()});
}

void CDaemonView::onInput(const QDBusMessage& rcMessage)
{
    QJsonObject cStatus = m_cStatus;
    cStatus[QStringLiteral("input")] = rcMessage.arguments().value(0).toInt();
    setStatus(cStatus);
}

void CDaemonView::onRecordingError(const QDBusMessage& /*rcMessage*/)
{
    lookLater({});
}

/// A call that changes texts makes them be looked at; any that isn't a question, the state.
void CDaemonView::onCarriedOut(const CBusLog::SCall& rsCall)
{
    static const QStringList ALL = {QStringLiteral("destroy_all_texts"), QStringLiteral("show_all_texts"),
                                    QStringLiteral("hide_all_texts"), QStringLiteral("clear_temp_texts"),
                                    QStringLiteral("draw_temp_text")};
    const QString& rcMethod = rsCall.cMethod;
    if (!m_bWatched || rcMethod.startsWith(QLatin1String("get_")) ||
        rcMethod.startsWith(QLatin1String("is_")) || rcMethod.startsWith(QLatin1String("query_")))
        return;
    QList<int> cHandles;
    if (rsCall.cObject == OVERLAY) {
        if (rcMethod == QLatin1String("create_text"))
            cHandles << rsCall.cAnswer[0].toInt();
        else if (rcMethod.contains(QLatin1String("_text")))
            cHandles << rsCall.cArguments[0].toInt();
        if (ALL.contains(rcMethod))
            lookAtAllLater();
        if (rcMethod == QLatin1String("draw_temp_text"))
            QTimer::singleShot(rsCall.cArguments[5].toInt() * 1000 + 100, this, &CDaemonView::lookAtAllLater);
    }
    cHandles.removeAll(0);
    lookLater(cHandles);
}

void CDaemonView::lookLater(const QList<int>& rcHandles)
{
    for (const int iHandle : rcHandles)
        m_cLater << iHandle;
    if (!m_cSoon.isActive())
        m_cSoon.start(SOON_MS);
}

void CDaemonView::lookAtAllLater()
{
    m_bAllLater = true;
    lookLater({});
}

// Questions

/// Asks all of it, as fast as the bus allows. rcDone gets the answers in the order of the questions.
void CDaemonView::ask(const QList<QDBusMessage>& rcQuestions, const FAnswers& rcDone)
{
    if (rcQuestions.isEmpty())
        return;
    struct SAnswers {
        QList<QDBusMessage> cAnswers;
        int iMissing;
    };
    auto pcAnswers = std::make_shared<SAnswers>();
    pcAnswers->iMissing = rcQuestions.size();
    for (int i = 0; i < rcQuestions.size(); ++i) {
        pcAnswers->cAnswers << QDBusMessage();
        m_cQuestions.push_back({rcQuestions[i], [pcAnswers, i, rcDone](const QDBusMessage& rcAnswer) {
                                    pcAnswers->cAnswers[i] = rcAnswer;
                                    if (--pcAnswers->iMissing == 0)
                                        rcDone(pcAnswers->cAnswers);
                                }});
    }
    sendQuestions();
}

void CDaemonView::sendQuestions()
{
    while (!m_cQuestions.empty() && m_iOpenQuestions < OPEN_QUESTIONS) {
        const SQuestion sQuestion = m_cQuestions.front();
        m_cQuestions.pop_front();
        ++m_iOpenQuestions;
        auto* pcWatcher =
            new QDBusPendingCallWatcher(m_cWatching.asyncCall(sQuestion.cCall, QUESTION_MS), this);
        connect(pcWatcher, &QDBusPendingCallWatcher::finished, this, [this, pcWatcher, sQuestion] {
            pcWatcher->deleteLater();
            --m_iOpenQuestions;
            sQuestion.fnDone(pcWatcher->reply());
            sendQuestions();
        });
    }
}

void CDaemonView::askStatus()
{
    if (!m_bDaemon || !m_bWatched)
        return;
    m_bAskAgain = m_bAsked;
    if (m_bAsked)
        return;
    m_bAsked = true;
    QDBusMessage cCodec = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
    cCodec << CODEC_SERVICE;
    static const char* const NAMES[] = {
        "overlay",       "width", "height",  "counter",       "active", "recording", "recordingPaused",
        "recordingTime", "rate",  "playing", "playingPaused", "input",  "codec"};
    ask({question(OVERLAY, "is_overlay_visible"), question(DISPLAY, "get_displayed_video_width"),
         question(DISPLAY, "get_displayed_video_height"), question(OVERLAY, "get_videocounter"),
         question(OVERLAY, "is_videocounter_active"), question(PROCESSING, "is_video_recording_running"),
         question(PROCESSING, "is_video_recording_paused"),
         question(PROCESSING, "query_video_recording_time"),
         question(PROCESSING, "get_video_recording_average_data_rate"),
         question(PROCESSING, "is_video_playback_running"), question(PROCESSING, "is_video_playback_paused"),
         question(PROCESSING, "get_video_input_type"), cCodec},
        [this](const QList<QDBusMessage>& rcAnswers) {
            const bool bRelevant = m_bAsked;
            m_bAsked = false;
            QJsonObject cStatus{
                {QStringLiteral("daemon"), true}
            };
            for (int i = 0; i < rcAnswers.size(); ++i) {
                if (rcAnswers[i].type() != QDBusMessage::ReplyMessage)
                    return;
                cStatus[QLatin1String(NAMES[i])] = jsonOf(first(rcAnswers[i]));
            }
            if (bRelevant && m_bDaemon)
                setStatus(cStatus);
            if (m_bAskAgain)
                askStatus();
        });
}

/// Asks which of these handles have a text, and then for all of those.
void CDaemonView::findTexts(int iFirst, int iLast)
{
    if (!m_bDaemon || !m_bWatched)
        return;
    QList<QDBusMessage> cQuestions;
    for (int iHandle = iFirst; iHandle <= iLast; ++iHandle)
        cQuestions << question(OVERLAY, "get_text_position", {iHandle});
    ask(cQuestions, [this, iFirst](const QList<QDBusMessage>& rcAnswers) {
        QSet<int> cHandles;
        for (const int iHandle : m_cTexts.keys())
            cHandles << iHandle;
        for (int i = 0; i < rcAnswers.size(); ++i) {
            const QList<int> cPosition = numbersOf(first(rcAnswers[i]));
            if (cPosition.size() == 3 && !isNoText(cPosition))
                cHandles << iFirst + i;
        }
        lookAtTexts(cHandles.values());
    });
}

void CDaemonView::lookAtTexts(const QList<int>& rcHandles)
{
    if (!m_bDaemon || !m_bWatched || rcHandles.isEmpty())
        return;
    QList<QDBusMessage> cQuestions;
    for (const int iHandle : rcHandles)
        for (const char* pszMethod : {"get_text_position", "get_text_string", "get_text_colors",
                                      "get_text_id", "get_text_format", "is_text_visible"})
            cQuestions << question(OVERLAY, pszMethod, {iHandle});
    ask(cQuestions, [this, rcHandles](const QList<QDBusMessage>& rcAnswers) {
        const QMap<int, QJsonObject> cBefore = m_cTexts;
        for (int i = 0; i < rcHandles.size(); ++i) {
            const QList<int> cPosition = numbersOf(first(rcAnswers[6 * i]));
            const QList<int> cColors = numbersOf(first(rcAnswers[6 * i + 2]));
            m_cTexts.remove(rcHandles[i]);
            if (cPosition.size() != 3 || isNoText(cPosition) || cColors.size() != 2)
                continue;
            m_cTexts[rcHandles[i]] = {
                {QStringLiteral("handle"),     rcHandles[i]                            },
                {QStringLiteral("x"),          cPosition[0]                            },
                {QStringLiteral("y"),          cPosition[1]                            },
                {QStringLiteral("end"),        cPosition[2]                            },
                {QStringLiteral("text"),       first(rcAnswers[6 * i + 1]).toString()  },
                {QStringLiteral("foreground"), cColors[0]                              },
                {QStringLiteral("background"), cColors[1]                              },
                {QStringLiteral("id"),         first(rcAnswers[6 * i + 3]).toInt()     },
                {QStringLiteral("counter"),    first(rcAnswers[6 * i + 4]).toInt() == 1},
                {QStringLiteral("shown"),      first(rcAnswers[6 * i + 5]).toBool()    },
            };
        }
        if (m_cTexts != cBefore)
            emit textsChanged(texts());
    });
}

// Calls

void CDaemonView::call(const QString& rcObject, const QString& rcMethod, const QJsonArray& rcArguments,
                       const std::function<void(const QJsonObject&)>& rcDone)
{
    QVariantList cArguments;
    const QString cWrong = readArguments(rcObject, rcMethod, rcArguments, cArguments);
    if (!cWrong.isEmpty()) {
        rcDone({
            {QStringLiteral("error"), cWrong}
        });
        return;
    }
    QDBusMessage cCall =
        QDBusMessage::createMethodCall(SERVICE, pathOf(rcObject), interfaceOf(rcObject), rcMethod);
    cCall.setArguments(cArguments);
    auto* pcWatcher = new QDBusPendingCallWatcher(m_cActing.asyncCall(cCall, CALL_MS), this);
    ++m_iOpenCalls;
    connect(pcWatcher, &QDBusPendingCallWatcher::finished, this, [this, pcWatcher, rcDone] {
        pcWatcher->deleteLater();
        --m_iOpenCalls;
        const QDBusMessage cReply = pcWatcher->reply();
        if (cReply.type() != QDBusMessage::ReplyMessage) {
            rcDone({
                {QStringLiteral("error"), cReply.errorMessage()}
            });
            return;
        }
        QJsonArray cAnswer;
        for (const QVariant& rcValue : cReply.arguments())
            cAnswer << jsonOf(rcValue);
        rcDone({
            {QStringLiteral("answer"), cAnswer}
        });
    });
}
