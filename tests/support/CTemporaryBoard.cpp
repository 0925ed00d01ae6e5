/* SPDX-License-Identifier: MIT */
#include "tests/support/CTemporaryBoard.h"

#include "board/create/CBoardMaker.h"
#include "tests/support/Preload.h"

bool CTemporaryBoard::make()
{
    const QString cDirectory = m_cFolder.filePath(QStringLiteral("board"));
    if (!CBoardMaker::create(cDirectory, m_cError))
        return false;
    if (m_cBoard.open(cDirectory))
        return true;
    m_cError = m_cBoard.errorString();
    return false;
}

void CTemporaryBoard::addTo(QProcessEnvironment& rcEnvironment, const QString& rcDirectory)
{
    rcEnvironment.insert(QStringLiteral(BOARD_VARIABLE), rcDirectory);
    preload(rcEnvironment, QStringLiteral(HALDEND_BOARD_PRELOAD));
}

QStringList CTemporaryBoard::deviceOptions(const QString& rcDirectory)
{
    return {QStringLiteral("-i"), rcDirectory + QStringLiteral("/" BOARD_I2C),
            QStringLiteral("-f"), rcDirectory + QStringLiteral("/" BOARD_FPGA),
            QStringLiteral("-l"), rcDirectory + QStringLiteral("/" BOARD_LIME)};
}
