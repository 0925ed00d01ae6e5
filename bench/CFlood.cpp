/* SPDX-License-Identifier: MIT */
#include "bench/CFlood.h"

#include "tests/support/CRawBusClient.h"

#include <utility>

CFlood::CFlood(const QString& rcBusAddress, std::vector<QByteArray> cPieces, bool bPolite)
    : m_cBusAddress(rcBusAddress),
      m_cPieces(std::move(cPieces)),
      m_bPolite(bPolite),
      m_cThread([this] { run(); })
{
}

CFlood::~CFlood()
{
    stop();
}

bool CFlood::stop()
{
    m_bStop = true;
    if (m_cThread.joinable())
        m_cThread.join();
    return !m_bFailed;
}

void CFlood::run()
{
    CRawBusClient cClient;
    bool bGoesOn = cClient.start(m_cBusAddress);
    for (std::size_t i = 0; bGoesOn && !m_bStop; ++i) {
        const QByteArray& rcPiece = m_cPieces[i % m_cPieces.size()];
        bGoesOn = cClient.send(rcPiece) &&
                  (!m_bPolite || cClient.call(QStringLiteral("/videodisplay"),
                                              QStringLiteral("get_displayed_video_width")));
        m_iBytes += rcPiece.size();
    }
    m_bFailed = !bGoesOn;
}
