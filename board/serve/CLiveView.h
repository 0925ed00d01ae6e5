/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_CLIVEVIEW_H
#define HALDEND_BOARD_SERVE_CLIVEVIEW_H

#include "board/follow/CBoardFollower.h"
#include "board/serve/CBoardView.h"
#include "board/serve/CDaemonView.h"
#include "board/serve/CJpegEncoder.h"
#include "board/serve/CLivePicture.h"
#include "board/serve/CWebServer.h"

#include <QElapsedTimer>
#include <QJsonObject>
#include <QObject>
#include <QTimer>

#include <map>

class CBoard;

/// A board and its daemon in browsers. While none is there, nothing is looked at.
///
/// Browsers send JSON objects with a "type":
///   {"type": "hello", "token"}                                      before any change
///   {"type": "watch", "picture": "monitor" | "recorded" | "none", "board", "calls", "cells"}
///   {"type": "ack", "n"}                                            the picture is shown: the next one, please
///   {"type": "call", "id", "object", "method", "arguments"}         to the daemon; needs the token
///   {"type": "order", "id", ...}                                    to the board, see CBoardView; needs the token
///
/// They get pictures (CLivePicture) as binary messages, and JSON objects: "hello", "status", "texts", "geometry",
/// "switches", "cells", "chip", "judgements", "trace", "calls", and "answer" with the "id" of a call or order.
class CLiveView : public QObject
{
    Q_OBJECT

public:
    /// Keeps references to the board, which must be open, and to the server. Only browsers that know the token may
    /// change something.
    CLiveView(CBoard& rcBoard, CWebServer& rcServer, const QByteArray& rcToken);
    ~CLiveView() override;

signals:
    void boardGone();

private:
    struct SBrowser {
        bool bMayChange = false;
        bool bBoard = false;
        bool bCalls = false;
        bool bCells = false;
        bool bPicture = false;
        CLivePicture::EKind eKind = CLivePicture::MONITOR;
        bool bInFlight = false; ///< a picture that isn't confirmed
        quint32 u32Sent = 0;    ///< number of the picture that was sent last
        int iOpen = 0;          ///< calls that aren't answered
    };

    void onJoined(quint64 u64Browser);
    void onLeft(quint64 u64Browser);
    void onReceived(quint64 u64Browser, const QByteArray& rcText);
    void onLook();
    void onSlowLook();

    void greet(quint64 u64Browser, const QJsonObject& rcMessage);
    void watch(quint64 u64Browser, const QJsonObject& rcMessage);
    void carryOut(quint64 u64Browser, const QJsonObject& rcMessage);
    void answer(quint64 u64Browser, const QJsonValue& rcId, QJsonObject cAnswer);

    CLivePicture& picture(CLivePicture::EKind eKind)
    {
        return eKind == CLivePicture::RECORDED ? m_cRecorded : m_cMonitor;
    }
    void offerPicture(quint64 u64Browser);
    void offerPictures();
    bool anybody(bool SBrowser::*pbWants) const;
    void sendIfChanged(const QByteArray& rcTopic, const QJsonObject& rcState, bool SBrowser::*pbWants);
    void sendKnown(quint64 u64Browser, const QByteArray& rcTopic);
    void sendTrace();

    CBoard& m_rcBoard;
    CWebServer& m_rcServer;
    const QByteArray m_cToken;
    CBoardFollower m_cFollower;
    CBoardView m_cBoardView;
    CDaemonView m_cDaemon;
    CJpegEncoder m_cEncoder;
    CLivePicture m_cMonitor;
    CLivePicture m_cRecorded;
    QTimer m_cLook;
    QTimer m_cSlowLook;
    bool m_bChanged = true; ///< since the last slow look
    std::map<quint64, SBrowser> m_cBrowsers;
    std::map<QByteArray, QByteArray> m_cStates; ///< as last sent, by topic
    quint64 m_u64TraceLine = 0;
    QStringList m_cTrace;
};

#endif
