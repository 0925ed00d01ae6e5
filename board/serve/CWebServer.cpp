/* SPDX-License-Identifier: MIT */
#include "board/serve/CWebServer.h"

#include "board/serve/Guard.h"

#include <libwebsockets.h>

namespace
{

const unsigned CONNECTIONS = 400;    // more of them wait until one is closed
const size_t BROWSERS = 32;          // with an open WebSocket
const int MESSAGE_BYTES = 16 * 1024; // the longest that a browser may send
const int MESSAGES_WAITING = 1000;
const unsigned short HTTP_HEADER_BYTES = 4096;
const int KEEP_ALIVE_SECONDS = 5;
const quint16 PING_SECONDS = 10; // without a sign of life
const quint16 VANISHED_SECONDS = 20;
const int FILE_PART_BYTES = 32 * 1024; // sent at once

const QByteArray SECURITY[][2] = {
    {"x-content-type-options:",       "nosniff"    },
    {"referrer-policy:",              "no-referrer"},
    {"cross-origin-opener-policy:",   "same-origin"},
    {"cross-origin-resource-policy:", "same-origin"},
    {"cache-control:",                "no-store"   },
};

/// The only things that the page may load are this server's files and its WebSocket; nothing may frame it.
QByteArray contentPolicy(const QByteArray& rcHost)
{
    return "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob:; connect-src "
           "'self' "
           "ws://" +
           rcHost + "; base-uri 'none'; form-action 'none'; frame-ancestors 'none'";
}

QByteArray header(lws* psConnection, lws_token_indexes eToken)
{
    const int iLength = lws_hdr_total_length(psConnection, eToken);
    if (iLength <= 0)
        return QByteArray();
    QByteArray cValue(iLength + 1, '\0');
    const int iCopied = lws_hdr_copy(psConnection, cValue.data(), iLength + 1, eToken);
    cValue.resize(qMax(0, iCopied));
    return cValue;
}

int refuse(lws* psConnection, unsigned uStatus)
{
    lws_return_http_status(psConnection, uStatus, nullptr);
    return -1;
}

} // namespace

/// The library's way in.
struct SWebCallbacks {
    static int call(lws* psConnection, lws_callback_reasons eReason, void* /*pvSession*/, void* pvData,
                    size_t uBytes);
    static const lws_protocols PROTOCOLS[];
};

const lws_protocols SWebCallbacks::PROTOCOLS[] = {
    {"http",        call,    0, 0,             0, nullptr, 0},
    {"halden-live", call,    0, MESSAGE_BYTES, 1, nullptr, 0},
    {nullptr,       nullptr, 0, 0,             0, nullptr, 0}
};

int SWebCallbacks::call(lws* psConnection, lws_callback_reasons eReason, void* /*pvSession*/, void* pvData,
                        size_t uBytes)
{
    lws_context* psContext = psConnection != nullptr ? lws_get_context(psConnection) : nullptr;
    if (psContext == nullptr)
        return 0;
    auto& rcServer = *static_cast<CWebServer*>(lws_context_user(psContext));
    const QByteArray cData(static_cast<const char*>(pvData),
                           pvData != nullptr ? static_cast<int>(uBytes) : 0);
    switch (eReason) {
    case LWS_CALLBACK_HTTP:
        return rcServer.startFile(psConnection, cData);
    case LWS_CALLBACK_HTTP_WRITEABLE:
        return rcServer.sendFile(psConnection);
    case LWS_CALLBACK_HTTP_BODY:
        return -1;
    case LWS_CALLBACK_FILTER_PROTOCOL_CONNECTION:
        return rcServer.isWelcome(psConnection) ? 0 : refuse(psConnection, HTTP_STATUS_FORBIDDEN);
    case LWS_CALLBACK_ESTABLISHED:
        rcServer.open(psConnection);
        return 0;
    case LWS_CALLBACK_RECEIVE:
        return rcServer.take(psConnection, cData);
    case LWS_CALLBACK_SERVER_WRITEABLE:
        return rcServer.give(psConnection);
    case LWS_CALLBACK_CLOSED:
    case LWS_CALLBACK_CLOSED_HTTP:
    case LWS_CALLBACK_WSI_DESTROY:
        rcServer.close(psConnection);
        return 0;
    case LWS_CALLBACK_EVENT_WAIT_CANCELLED:
        rcServer.wakeWriters();
        return 0;
    default:
        return 0;
    }
}

CWebServer::CWebServer(const QHash<QByteArray, SFile>& rcFiles, QObject* pcParent)
    : QObject(pcParent), m_cFiles(rcFiles)
{
}

CWebServer::~CWebServer()
{
    if (m_psContext == nullptr)
        return;
    {
        const std::lock_guard<std::mutex> cGuard(m_cLock);
        m_bStop = true;
    }
    lws_cancel_service(m_psContext);
    m_cThread.join();
    lws_context_destroy(m_psContext);
}

bool CWebServer::listen(const QByteArray& rcAddress, int iPort)
{
    static const quint32 NO_RETRY = 0;
    static lws_retry_bo_t s_sLife = {&NO_RETRY, 0, 0, PING_SECONDS, VANISHED_SECONDS, 0};
    m_cAddress = rcAddress;
    lws_set_log_level(0, nullptr);
    lws_context_creation_info sInfo = {};
    sInfo.port = iPort;
    sInfo.iface = m_cAddress.constData();
    sInfo.protocols = SWebCallbacks::PROTOCOLS;
    sInfo.user = this;
    sInfo.gid = -1;
    sInfo.uid = -1;
    sInfo.server_string = "halden-board";
    sInfo.options = LWS_SERVER_OPTION_FAIL_UPON_UNABLE_TO_BIND | LWS_SERVER_OPTION_VALIDATE_UTF8;
    if (!rcAddress.contains(':'))
        sInfo.options |= LWS_SERVER_OPTION_DISABLE_IPV6;
    sInfo.max_http_header_data = HTTP_HEADER_BYTES;
    sInfo.max_http_header_pool = CONNECTIONS;
    sInfo.fd_limit_per_thread = CONNECTIONS;
    sInfo.timeout_secs = static_cast<unsigned>(m_iHalfOpenSeconds);
    sInfo.timeout_secs_ah_idle = static_cast<unsigned>(m_iHalfOpenSeconds);
    sInfo.keepalive_timeout = KEEP_ALIVE_SECONDS;
    sInfo.retry_and_idle_policy = &s_sLife;
    m_psContext = lws_create_context(&sInfo);
    lws_vhost* psHost = m_psContext != nullptr ? lws_get_vhost_by_name(m_psContext, "default") : nullptr;
    m_iPort = psHost != nullptr ? lws_get_vhost_listen_port(psHost) : 0;
    if (m_iPort <= 0) {
        if (m_psContext != nullptr)
            lws_context_destroy(m_psContext);
        m_psContext = nullptr;
        return false;
    }
    m_cThread = std::thread(&CWebServer::serve, this);
    return true;
}

template <class FUNCTION>
void CWebServer::put(quint64 u64Browser, FUNCTION fnPut)
{
    {
        const std::lock_guard<std::mutex> cGuard(m_cLock);
        const auto pOutbox = m_cOutboxes.find(u64Browser);
        if (pOutbox == m_cOutboxes.end())
            return;
        fnPut(pOutbox->second);
    }
    lws_cancel_service(m_psContext);
}

void CWebServer::sendState(quint64 u64Browser, const QByteArray& rcTopic, const QByteArray& rcJson)
{
    put(u64Browser, [&](COutbox& rcOutbox) { rcOutbox.putState(rcTopic, rcJson); });
}

void CWebServer::sendLine(quint64 u64Browser, const QByteArray& rcTopic, const QByteArray& rcJson)
{
    put(u64Browser, [&](COutbox& rcOutbox) { rcOutbox.putLine(rcTopic, rcJson); });
}

void CWebServer::sendPicture(quint64 u64Browser, const QByteArray& rcPicture)
{
    put(u64Browser, [&](COutbox& rcOutbox) { rcOutbox.putPicture(rcPicture); });
}

// From here on: the network's thread

void CWebServer::serve()
{
    while (lws_service(m_psContext, 0) >= 0) {
        const std::lock_guard<std::mutex> cGuard(m_cLock);
        if (m_bStop)
            return;
    }
}

int CWebServer::startFile(lws* psConnection, const QByteArray& rcPath)
{
    const QByteArray cHost = header(psConnection, WSI_TOKEN_HOST);
    const QByteArray cOrigin = header(psConnection, WSI_TOKEN_ORIGIN);
    if (!isGoodHost(cHost, m_cAddress) || (!cOrigin.isEmpty() && !isGoodOrigin(cOrigin, cHost)))
        return refuse(psConnection, HTTP_STATUS_FORBIDDEN);
    if (lws_hdr_total_length(psConnection, WSI_TOKEN_GET_URI) <= 0)
        return refuse(psConnection, HTTP_STATUS_METHOD_NOT_ALLOWED);
    const auto pFile = m_cFiles.constFind(rcPath == "/" ? "/index.html" : rcPath);
    if (pFile == m_cFiles.constEnd())
        return refuse(psConnection, HTTP_STATUS_NOT_FOUND);

    unsigned char au8Headers[LWS_PRE + 2048];
    unsigned char* pu8Begin = au8Headers + LWS_PRE;
    unsigned char* pu8At = pu8Begin;
    unsigned char* pu8End = au8Headers + sizeof au8Headers;
    const auto add = [&](const QByteArray& rcName, const QByteArray& rcValue) {
        return lws_add_http_header_by_name(psConnection,
                                           reinterpret_cast<const unsigned char*>(rcName.constData()),
                                           reinterpret_cast<const unsigned char*>(rcValue.constData()),
                                           rcValue.size(), &pu8At, pu8End) == 0;
    };
    bool bDone =
        lws_add_http_common_headers(psConnection, HTTP_STATUS_OK, pFile->cType.constData(),
                                    static_cast<lws_filepos_t>(pFile->cBytes.size()), &pu8At, pu8End) == 0 &&
        add("content-security-policy:", contentPolicy(cHost));
    for (const auto& racHeader : SECURITY)
        bDone = bDone && add(racHeader[0], racHeader[1]);
    if (!bDone || lws_finalize_write_http_header(psConnection, pu8Begin, &pu8At, pu8End) != 0)
        return -1;
    SPeer& rsPeer = m_cPeers[psConnection];
    rsPeer.pcFile = &*pFile;
    rsPeer.iSent = 0;
    lws_callback_on_writable(psConnection);
    return 0;
}

int CWebServer::sendFile(lws* psConnection)
{
    const auto pPeer = m_cPeers.find(psConnection);
    if (pPeer == m_cPeers.end() || pPeer->second.pcFile == nullptr)
        return -1;
    SPeer& rsPeer = pPeer->second;
    const QByteArray cPart = rsPeer.pcFile->cBytes.mid(rsPeer.iSent, FILE_PART_BYTES);
    rsPeer.iSent += cPart.size();
    const bool bLast = rsPeer.iSent >= rsPeer.pcFile->cBytes.size();
    QByteArray cBuffer = QByteArray(LWS_PRE, '\0') + cPart;
    if (lws_write(psConnection, reinterpret_cast<unsigned char*>(cBuffer.data()) + LWS_PRE,
                  static_cast<size_t>(cPart.size()), bLast ? LWS_WRITE_HTTP_FINAL : LWS_WRITE_HTTP) < 0)
        return -1;
    if (bLast)
        return lws_http_transaction_completed(psConnection) != 0 ? -1 : 0;
    lws_callback_on_writable(psConnection);
    return 0;
}

bool CWebServer::isWelcome(lws* psConnection) const
{
    const QByteArray cHost = header(psConnection, WSI_TOKEN_HOST);
    size_t uBrowsers = 0;
    for (const auto& rcPeer : m_cPeers)
        uBrowsers += rcPeer.second.u64Browser != 0 ? 1 : 0;
    return isGoodHost(cHost, m_cAddress) && isGoodOrigin(header(psConnection, WSI_TOKEN_ORIGIN), cHost) &&
           lws_get_protocol(psConnection) != nullptr &&
           qstrcmp(lws_get_protocol(psConnection)->name, SWebCallbacks::PROTOCOLS[1].name) == 0 &&
           uBrowsers < BROWSERS;
}

void CWebServer::open(lws* psConnection)
{
    SPeer& rsPeer = m_cPeers[psConnection];
    rsPeer.u64Browser = ++m_u64Last;
    {
        const std::lock_guard<std::mutex> cGuard(m_cLock);
        m_cOutboxes[rsPeer.u64Browser];
    }
    QMetaObject::invokeMethod(
        this, [this, u64Browser = rsPeer.u64Browser] { emit joined(u64Browser); }, Qt::QueuedConnection);
}

void CWebServer::close(lws* psConnection)
{
    const auto pPeer = m_cPeers.find(psConnection);
    if (pPeer == m_cPeers.end())
        return;
    const quint64 u64Browser = pPeer->second.u64Browser;
    m_cPeers.erase(pPeer);
    if (u64Browser == 0)
        return;
    {
        const std::lock_guard<std::mutex> cGuard(m_cLock);
        m_cOutboxes.erase(u64Browser);
    }
    QMetaObject::invokeMethod(
        this, [this, u64Browser] { emit left(u64Browser); }, Qt::QueuedConnection);
}

int CWebServer::take(lws* psConnection, const QByteArray& rcPart)
{
    SPeer& rsPeer = m_cPeers[psConnection];
    rsPeer.cReceived += rcPart;
    if (rsPeer.cReceived.size() > MESSAGE_BYTES || lws_frame_is_binary(psConnection) != 0)
        return -1;
    if (lws_is_final_fragment(psConnection) == 0 || lws_remaining_packet_payload(psConnection) != 0)
        return 0;
    if (++m_iWaiting > MESSAGES_WAITING)
        return -1;
    QMetaObject::invokeMethod(
        this,
        [this, u64Browser = rsPeer.u64Browser, cText = rsPeer.cReceived] {
            --m_iWaiting;
            emit received(u64Browser, cText);
        },
        Qt::QueuedConnection);
    rsPeer.cReceived.clear();
    return 0;
}

int CWebServer::give(lws* psConnection)
{
    COutbox::SMessage sMessage;
    bool bMore = false;
    {
        const std::lock_guard<std::mutex> cGuard(m_cLock);
        const auto pOutbox = m_cOutboxes.find(m_cPeers[psConnection].u64Browser);
        if (pOutbox == m_cOutboxes.end())
            return 0;
        sMessage = pOutbox->second.take();
        bMore = !pOutbox->second.isEmpty();
    }
    if (sMessage.cPayload.isEmpty())
        return 0;
    QByteArray cBuffer = QByteArray(LWS_PRE, '\0') + sMessage.cPayload;
    if (lws_write(psConnection, reinterpret_cast<unsigned char*>(cBuffer.data()) + LWS_PRE,
                  static_cast<size_t>(sMessage.cPayload.size()),
                  sMessage.bBinary ? LWS_WRITE_BINARY : LWS_WRITE_TEXT) < 0)
        return -1;
    if (bMore)
        lws_callback_on_writable(psConnection);
    return 0;
}

void CWebServer::wakeWriters()
{
    const std::lock_guard<std::mutex> cGuard(m_cLock);
    for (const auto& rcPeer : m_cPeers) {
        const auto pOutbox = m_cOutboxes.find(rcPeer.second.u64Browser);
        if (pOutbox != m_cOutboxes.end() && !pOutbox->second.isEmpty())
            lws_callback_on_writable(rcPeer.first);
    }
}
