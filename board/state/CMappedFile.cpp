/* SPDX-License-Identifier: MIT */
#include "board/state/CMappedFile.h"

bool CMappedFile::open(const QString& rcPath, qint64 iBytes, QString& rcError)
{
    close();
    m_cFile.setFileName(rcPath);
    if (!m_cFile.open(QIODevice::ReadWrite | QIODevice::ExistingOnly | QIODevice::Unbuffered)) {
        rcError = QStringLiteral("%1: %2").arg(rcPath, m_cFile.errorString());
        return false;
    }
    if (m_cFile.size() < iBytes) {
        rcError = QStringLiteral("%1: %2 bytes, a board has %3").arg(rcPath).arg(m_cFile.size()).arg(iBytes);
        m_cFile.close();
        return false;
    }
    m_pu8Data = m_cFile.map(0, iBytes);
    if (m_pu8Data == nullptr)
        rcError = QStringLiteral("%1: %2").arg(rcPath, m_cFile.errorString());
    m_cFile.close();
    return m_pu8Data != nullptr;
}

void CMappedFile::close()
{
    if (m_pu8Data != nullptr)
        m_cFile.unmap(m_pu8Data);
    m_pu8Data = nullptr;
}
