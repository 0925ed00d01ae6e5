/* SPDX-License-Identifier: MIT */
#include "board/serve/CLiveView.h"

#include "board/serve/Guard.h"
#include "board/state/CBoard.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>

namespace
{

const int LOOK_MS = 10;            // between two looks whether the board has changed
const int SLOW_LOOK_MS = 200;      // between two looks at registers, switches and lists
const int IDLE_LOOK_MS = 1000;     // between two looks whether the board is there, while no browser watches
const int OPEN_CALLS = 32;         // of one browser
const int FIRST_TRACE_LINES = 200; // that a browser gets at first

QByteArray textOf(const QJsonObject& rcObject)
{
    return QJsonDocument(rcObject).toJson(QJsonDocument::Compact);
}

QJsonObject typed(const char* pszType, QJsonObject cObject)
{
    cObject[QStringLiteral("type")] = QLatin1String(pszType);
    return cObject;
}

QJsonObject textsMessage(const QJsonArray& rcTexts)
{
    QJsonObject cTexts;
    cTexts[QStringLiteral("texts")] = rcTexts;
    return typed("texts", cTexts);
}

QByteArray traceLine(quint64 u64Number, const QString& rcLine)
{
    return textOf({
        {QStringLiteral("n"),    static_cast<double>(u64Number)},
        {QStringLiteral("line"), rcLine                        },
    });
}

} // namespace

CLiveView::CLiveView(CBoard& rcBoard, CWebServer& rcServer, const QByteArray& rcToken)
    : m_rcBoard(rcBoard),
      m_rcServer(rcServer),
      m_cToken(rcToken),
      m_cFollower(rcBoard),
      m_cBoardView(rcBoard),
      m_cMonitor(rcBoard, m_cEncoder, CLivePicture::MONITOR),
      m_cRecorded(rcBoard, m_cEncoder, CLivePicture::RECORDED)
{
    connect(&rcServer, &CWebServer::joined, this, &CLiveView::onJoined);
    connect(&rcServer, &CWebServer::left, this, &CLiveView::onLeft);
    connect(&rcServer, &CWebServer::received, this, &CLiveView::onReceived);
    connect(&m_cDaemon, &CDaemonView::statusChanged, this, [this](const QJsonObject& rcStatus) {
        sendIfChanged("status", typed("status", rcStatus), nullptr);
    });
    connect(&m_cDaemon, &CDaemonView::textsChanged, this,
            [this](const QJsonArray& rcTexts) { sendIfChanged("texts", textsMessage(rcTexts), nullptr); });
    connect(&m_cDaemon.log(), &CBusLog::entry, this, [this](const QJsonObject& rcEntry) {
        const QByteArray cLine = textOf(rcEntry);
        for (const auto& rcBrowser : m_cBrowsers)
            if (rcBrowser.second.bCalls)
                m_rcServer.sendLine(rcBrowser.first, "calls", cLine);
    });
    m_cLook.setTimerType(Qt::PreciseTimer);
    m_cLook.setInterval(LOOK_MS);
    connect(&m_cLook, &QTimer::timeout, this, &CLiveView::onLook);
    m_cSlowLook.start(IDLE_LOOK_MS);
    connect(&m_cSlowLook, &QTimer::timeout, this, &CLiveView::onSlowLook);
}

CLiveView::~CLiveView()
{
    m_cDaemon.close();
}

// Browsers

void CLiveView::onJoined(quint64 u64Browser)
{
    m_cBrowsers[u64Browser] = SBrowser();
    m_cLook.start();
    m_cSlowLook.start(SLOW_LOOK_MS);
    m_cDaemon.setWatched(true);
}

void CLiveView::onLeft(quint64 u64Browser)
{
    m_cBrowsers.erase(u64Browser);
    if (!m_cBrowsers.empty())
        return;
    m_cLook.stop();
    m_cSlowLook.start(IDLE_LOOK_MS);
    m_cDaemon.setWatched(false);
}

void CLiveView::onReceived(quint64 u64Browser, const QByteArray& rcText)
{
    const auto pBrowser = m_cBrowsers.find(u64Browser);
    if (pBrowser == m_cBrowsers.end())
        return;
    const QJsonObject cMessage = QJsonDocument::fromJson(rcText).object();
    const QString cType = cMessage[QStringLiteral("type")].toString();
    if (cType == QLatin1String("ack")) {
        pBrowser->second.bInFlight = false;
        offerPicture(u64Browser);
    } else if (cType == QLatin1String("hello")) {
        greet(u64Browser, cMessage);
    } else if (cType == QLatin1String("watch")) {
        watch(u64Browser, cMessage);
    } else if (cType == QLatin1String("call") || cType == QLatin1String("order")) {
        carryOut(u64Browser, cMessage);
    }
}

void CLiveView::greet(quint64 u64Browser, const QJsonObject& rcMessage)
{
    SBrowser& rsBrowser = m_cBrowsers[u64Browser];
    rsBrowser.bMayChange = isSameToken(rcMessage[QStringLiteral("token")].toString().toLatin1(), m_cToken);
    m_rcServer.sendState(u64Browser, "hello",
                         textOf(typed("hello", {
                                                   {QStringLiteral("mayChange"), rsBrowser.bMayChange         },
                                                   {QStringLiteral("log"),       m_cDaemon.log().isListening()},
                                                   {QStringLiteral("board"),     m_rcBoard.directory()        },
    })));
    sendIfChanged("status", typed("status", m_cDaemon.status()), nullptr);
    sendIfChanged("texts", textsMessage(m_cDaemon.texts()), nullptr);
    sendIfChanged("geometry", typed("geometry", m_cBoardView.geometry()), nullptr);
    sendIfChanged("switches", typed("switches", m_cBoardView.switches()), nullptr);
    for (const char* pszTopic : {"status", "texts", "geometry", "switches"})
        sendKnown(u64Browser, pszTopic);
}

void CLiveView::watch(quint64 u64Browser, const QJsonObject& rcMessage)
{
    SBrowser& rsBrowser = m_cBrowsers[u64Browser];
    const SBrowser sBefore = rsBrowser;
    const QString cPicture = rcMessage[QStringLiteral("picture")].toString();
    rsBrowser.bPicture = cPicture == QLatin1String("monitor") || cPicture == QLatin1String("recorded");
    rsBrowser.eKind = cPicture == QLatin1String("recorded") ? CLivePicture::RECORDED : CLivePicture::MONITOR;
    rsBrowser.bBoard = rcMessage[QStringLiteral("board")].toBool();
    rsBrowser.bCalls = rcMessage[QStringLiteral("calls")].toBool();
    rsBrowser.bCells = rcMessage[QStringLiteral("cells")].toBool();
    if (!rsBrowser.bPicture || rsBrowser.eKind != sBefore.eKind)
        rsBrowser.u32Sent = 0;
    if (rsBrowser.bCalls && !sBefore.bCalls)
        for (const QJsonObject& rcEntry : m_cDaemon.log().entries())
            m_rcServer.sendLine(u64Browser, "calls", textOf(rcEntry));
    if (rsBrowser.bBoard && !sBefore.bBoard) {
        const quint64 u64First = m_u64TraceLine - static_cast<quint64>(m_cTrace.size());
        for (int i = 0; i < m_cTrace.size(); ++i)
            m_rcServer.sendLine(u64Browser, "trace",
                                traceLine(u64First + static_cast<quint64>(i) + 1, m_cTrace[i]));
        for (const QString& rcChip : CChipRegisters::chipNames())
            sendKnown(u64Browser, "chip " + rcChip.toLatin1());
        sendKnown(u64Browser, "judgements");
    }
    if (rsBrowser.bCells && !sBefore.bCells)
        sendKnown(u64Browser, "cells");
    m_bChanged = true;
    picture(rsBrowser.eKind).setOld();
    offerPicture(u64Browser);
}

void CLiveView::carryOut(quint64 u64Browser, const QJsonObject& rcMessage)
{
    const QJsonValue cId = rcMessage[QStringLiteral("id")];
    SBrowser& rsBrowser = m_cBrowsers[u64Browser];
    if (!rsBrowser.bMayChange) {
        answer(u64Browser, cId,
               {
                   {QStringLiteral("error"), QStringLiteral("the token is missing or wrong")}
        });
        return;
    }
    if (rsBrowser.iOpen >= OPEN_CALLS) {
        answer(u64Browser, cId,
               {
                   {QStringLiteral("error"), QStringLiteral("too many calls at once")}
        });
        return;
    }
    if (rcMessage[QStringLiteral("type")] == QLatin1String("order")) {
        const QString cWrong = m_cBoardView.carryOut(rcMessage);
        answer(u64Browser, cId,
               cWrong.isEmpty() ? QJsonObject{{QStringLiteral("answer"), QJsonArray()}}
                                : QJsonObject{{QStringLiteral("error"), cWrong}});
        onSlowLook();
        return;
    }
    ++rsBrowser.iOpen;
    m_cDaemon.call(rcMessage[QStringLiteral("object")].toString(),
                   rcMessage[QStringLiteral("method")].toString(),
                   rcMessage[QStringLiteral("arguments")].toArray(),
                   [this, u64Browser, cId](const QJsonObject& rcAnswer) {
                       const auto pBrowser = m_cBrowsers.find(u64Browser);
                       if (pBrowser == m_cBrowsers.end())
                           return;
                       --pBrowser->second.iOpen;
                       answer(u64Browser, cId, rcAnswer);
                   });
}

void CLiveView::answer(quint64 u64Browser, const QJsonValue& rcId, QJsonObject cAnswer)
{
    cAnswer[QStringLiteral("id")] = rcId;
    m_rcServer.sendLine(u64Browser, "answers", textOf(cAnswer));
}

// Pictures

void CLiveView::onLook()
{
    if (m_cFollower.look()) {
        m_bChanged = true;
        m_cMonitor.setOld();
        m_cRecorded.setOld();
    }
    offerPictures();
}

void CLiveView::offerPictures()
{
    for (const auto& rcBrowser : m_cBrowsers)
        offerPicture(rcBrowser.first);
}

/// Sends the newest picture to a browser that shows the last one.
void CLiveView::offerPicture(quint64 u64Browser)
{
    SBrowser& rsBrowser = m_cBrowsers[u64Browser];
    if (!rsBrowser.bPicture || rsBrowser.bInFlight)
        return;
    CLivePicture& rcPicture = picture(rsBrowser.eKind);
    rcPicture.update();
    if (rcPicture.number() == rsBrowser.u32Sent)
        return;
    rsBrowser.u32Sent = rcPicture.number();
    rsBrowser.bInFlight = true;
    m_rcServer.sendPicture(u64Browser, rcPicture.message());
}

// States

bool CLiveView::anybody(bool SBrowser::*pbWants) const
{
    for (const auto& rcBrowser : m_cBrowsers)
        if (pbWants == nullptr || rcBrowser.second.*pbWants)
            return true;
    return false;
}

/// To all browsers, or to those that want it.
void CLiveView::sendIfChanged(const QByteArray& rcTopic, const QJsonObject& rcState, bool SBrowser::*pbWants)
{
    const QByteArray cText = textOf(rcState);
    QByteArray& rcLast = m_cStates[rcTopic];
    if (cText == rcLast)
        return;
    rcLast = cText;
    for (const auto& rcBrowser : m_cBrowsers)
        if (pbWants == nullptr || rcBrowser.second.*pbWants)
            m_rcServer.sendState(rcBrowser.first, rcTopic, cText);
}

/// What others have got already.
void CLiveView::sendKnown(quint64 u64Browser, const QByteArray& rcTopic)
{
    const auto pState = m_cStates.find(rcTopic);
    if (pState != m_cStates.end() && !pState->second.isEmpty())
        m_rcServer.sendState(u64Browser, rcTopic, pState->second);
}

void CLiveView::onSlowLook()
{
    if (!QFile::exists(m_rcBoard.path(BOARD_CONTROL))) {
        emit boardGone();
        return;
    }
    if (m_cBrowsers.empty())
        return;
    sendIfChanged("switches", typed("switches", m_cBoardView.switches()), nullptr);
    if (anybody(&SBrowser::bBoard))
        sendTrace();
    if (!m_bChanged)
        return;
    m_bChanged = false;
    sendIfChanged("geometry", typed("geometry", m_cBoardView.geometry()), nullptr);
    if (anybody(&SBrowser::bCells))
        sendIfChanged("cells", typed("cells", m_cBoardView.cells()), &SBrowser::bCells);
    if (!anybody(&SBrowser::bBoard))
        return;
    for (const QString& rcChip : CChipRegisters::chipNames())
        sendIfChanged("chip " + rcChip.toLatin1(), typed("chip", m_cBoardView.chip(rcChip)),
                      &SBrowser::bBoard);
    sendIfChanged("judgements",
                  typed("judgements",
                        {
                            {QStringLiteral("judgements"), m_cBoardView.judgements()}
    }),
                  &SBrowser::bBoard);
}

void CLiveView::sendTrace()
{
    for (const QString& rcLine : m_cBoardView.newTraceLines()) {
        m_cTrace << rcLine;
        if (m_cTrace.size() > FIRST_TRACE_LINES)
            m_cTrace.removeFirst();
        const QByteArray cLine = traceLine(++m_u64TraceLine, rcLine);
        for (const auto& rcBrowser : m_cBrowsers)
            if (rcBrowser.second.bBoard)
                m_rcServer.sendLine(rcBrowser.first, "trace", cLine);
    }
}
