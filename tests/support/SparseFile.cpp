/* SPDX-License-Identifier: MIT */
#include "tests/support/SparseFile.h"

#include <QFile>

#include <cstring>

bool writeSparse(const QString& rcFile, const QByteArray& rcBytes)
{
    const int BLOCK = 4096;
    static const QByteArray cZeros(BLOCK, '\0');
    QFile cFile(rcFile);
    bool bWritten = cFile.open(QIODevice::WriteOnly) && cFile.resize(rcBytes.size());
    for (int iAt = 0; bWritten && iAt < rcBytes.size(); iAt += BLOCK) {
        const int iBytes = qMin(BLOCK, rcBytes.size() - iAt);
        const char* const pData = rcBytes.constData() + iAt;
        if (std::memcmp(pData, cZeros.constData(), static_cast<size_t>(iBytes)) != 0)
            bWritten = cFile.seek(iAt) && cFile.write(pData, iBytes) == iBytes;
    }
    return bWritten && cFile.flush();
}
