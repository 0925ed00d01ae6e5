/* SPDX-License-Identifier: MIT */
#include "board/create/CBoardMaker.h"

#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"

#include <QDir>
#include <QFile>

namespace
{

QString join(const QString& rcDirectory, const char* pszFile)
{
    return rcDirectory + QLatin1Char('/') + QLatin1String(pszFile);
}

bool createFile(const QString& rcDirectory, const char* pszFile, qint64 iBytes, QString& rcError)
{
    QFile cFile(join(rcDirectory, pszFile));
    if (cFile.open(QIODevice::WriteOnly | QIODevice::NewOnly) && cFile.resize(iBytes))
        return true;
    rcError = QStringLiteral("%1: %2").arg(cFile.fileName(), cFile.errorString());
    return false;
}

bool createDirectory(const QString& rcDirectory, QString& rcError)
{
    const QDir cDirectory(rcDirectory);
    if (cDirectory.exists() && !cDirectory.isEmpty()) {
        rcError = QStringLiteral("%1: exists and isn't empty").arg(rcDirectory);
        return false;
    }
    if (cDirectory.mkpath(QStringLiteral(BOARD_CNFS)))
        return true;
    rcError = QStringLiteral("%1: can't be created").arg(rcDirectory);
    return false;
}

bool copyRegisterFiles(const QString& rcDirectory, QString& rcError)
{
    const QDir cDefaults(QStringLiteral(":/cnfs"));
    for (const QString& rcName : cDefaults.entryList()) {
        QFile cFile(join(rcDirectory, BOARD_CNFS) + QLatin1Char('/') + rcName);
        QFile cDefault(cDefaults.filePath(rcName));
        const QByteArray cText = cDefault.open(QIODevice::ReadOnly) ? cDefault.readAll() : QByteArray();
        if (!cFile.open(QIODevice::WriteOnly) || cFile.write(cText) != cText.size() || !cFile.flush()) {
            rcError = QStringLiteral("%1: %2").arg(cFile.fileName(), cFile.errorString());
            return false;
        }
    }
    return true;
}

} // namespace

// Forces the resources to be linked, which a static library leaves out otherwise. The macro must be outside
// of any namespace.
static void initResources()
{
    Q_INIT_RESOURCE(register_files);
}

bool CBoardMaker::create(const QString& rcDirectory, QString& rcError)
{
    initResources();
    if (!createDirectory(rcDirectory, rcError) ||
        !createFile(rcDirectory, BOARD_FPGA, BOARD_FPGA_BYTES, rcError) ||
        !createFile(rcDirectory, BOARD_LIME, static_cast<qint64>(board_lime_bytes()), rcError) ||
        !createFile(rcDirectory, BOARD_I2C, BOARD_I2C_BYTES, rcError) ||
        !createFile(rcDirectory, BOARD_CAMERA, BOARD_CAMERA_BYTES, rcError) ||
        !createFile(rcDirectory, BOARD_FRAMES, BOARD_FRAMES_BYTES, rcError) ||
        !createFile(rcDirectory, BOARD_CAMERA_LOCK, 0, rcError) ||
        !createFile(rcDirectory, BOARD_TRACE, 0, rcError) ||
        !createFile(rcDirectory, BOARD_JUDGEMENTS, 0, rcError) ||
        !createFile(rcDirectory, BOARD_CODEC_STATE, 0, rcError) ||
        !createFile(rcDirectory, BOARD_CODEC_LOG, 0, rcError) ||
        !createFile(rcDirectory, BOARD_CONTROL, sizeof(board_control), rcError) ||
        !copyRegisterFiles(rcDirectory, rcError))
        return false;
    CMappedFile cFile;
    if (!cFile.open(join(rcDirectory, BOARD_CONTROL), sizeof(board_control), rcError))
        return false;
    auto* pcControl = reinterpret_cast<board_control*>(cFile.data());
    board_store(&pcControl->magic, BOARD_MAGIC);
    board_store(&pcControl->version, BOARD_VERSION);
    board_store(&pcControl->lime_order, board_own_order());
    CBoard cBoard;
    if (!cBoard.open(rcDirectory)) {
        rcError = cBoard.errorString();
        return false;
    }
    cBoard.setCamera(CTestPicture::frame(0));
    return true;
}
