/* SPDX-License-Identifier: MIT */
#include "board/tool/CCameraHelper.h"

#include "board/camera/frames.h"
#include "board/state/CBoard.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QVector>

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

const qint64 PATIENCE_MS = 5000; // for a film to be opened
const int WAIT_MS = 20;

/// In the child of a child, which has no parent to wait for it. Only calls that are safe after a fork.
void become(char* const* ppszCommand, int iLock, int iLog)
{
    const int iNull = ::open("/dev/null", O_RDWR | O_CLOEXEC);
    ::setsid();
    if (iNull < 0 || ::dup2(iNull, STDIN_FILENO) < 0 || ::dup2(iNull, STDOUT_FILENO) < 0 ||
        ::dup2(iLog, STDERR_FILENO) < 0 || ::fcntl(iLock, F_SETFD, 0) < 0)
        ::_exit(1);
    ::execv(ppszCommand[0], ppszCommand);
    ::_exit(1);
}

} // namespace

bool CCameraHelper::fail(const QString& rcReason)
{
    m_cError = rcReason;
    return false;
}

/// The file with a lock on one of its bytes, which lasts as long as any process has it open; -1 on failure.
int CCameraHelper::openLocked(const char* pszFile, int iFlags, quint32 u32Byte)
{
    const QByteArray cPath = QFile::encodeName(m_rcBoard.path(pszFile));
    const int iFile = ::open(cPath.constData(), iFlags | O_CLOEXEC, 0644);
    struct flock sLock = {};
    sLock.l_type = F_WRLCK;
    sLock.l_whence = SEEK_SET;
    sLock.l_start = u32Byte;
    sLock.l_len = 1;
    if (iFile >= 0 && ::fcntl(iFile, F_OFD_SETLK, &sLock) == 0)
        return iFile;
    fail(
        QStringLiteral("%1: %2").arg(QFile::decodeName(cPath), QString::fromLocal8Bit(std::strerror(errno))));
    if (iFile >= 0)
        ::close(iFile);
    return -1;
}

bool CCameraHelper::launch(const QStringList& rcCommand, int iLock, int iLog)
{
    QVector<QByteArray> cWords;
    QVector<char*> cPointers;
    for (const QString& rcWord : rcCommand)
        cWords << QFile::encodeName(rcWord);
    for (QByteArray& rcWord : cWords)
        cPointers << rcWord.data();
    cPointers << nullptr;
    const pid_t iChild = ::fork();
    if (iChild == 0) {
        if (::fork() == 0)
            become(cPointers.constData(), iLock, iLog);
        ::_exit(0);
    }
    int iStatus = 0;
    return (iChild > 0 && ::waitpid(iChild, &iStatus, 0) == iChild) ||
           fail(QString::fromLocal8Bit(std::strerror(errno)));
}

bool CCameraHelper::start(const QString& rcKind, const QString& rcName)
{
    const QDir cHere(QCoreApplication::applicationDirPath());
    QString cProgram = cHere.filePath(QStringLiteral("halden-camera"));
    if (!QFileInfo(cProgram).isExecutable())
        cProgram =
            QDir::cleanPath(cHere.filePath(QStringLiteral(HALDEND_PREFIX "/" HALDEND_INSTALLED_CAMERA)));
    if (!QFileInfo(cProgram).isExecutable())
        return fail(cProgram + QStringLiteral(": missing"));
    const QString cName = QFileInfo(rcName).absoluteFilePath();
    const quint32 u32Choice = m_rcBoard.setCameraFrames();
    QFile cLog(m_rcBoard.path(BOARD_CAMERA_LOG));
    if (!cLog.open(QIODevice::WriteOnly) || cLog.write((rcKind + ' ' + cName + '\n').toUtf8()) < 0 ||
        !cLog.flush())
        return fail(cLog.fileName() + QStringLiteral(": ") + cLog.errorString());
    const int iLock = openLocked(BOARD_CAMERA_LOCK, O_RDWR, u32Choice);
    if (iLock < 0)
        return false;
    const bool bLaunched = launch(
        {cProgram, m_rcBoard.directory(), QString::number(u32Choice), rcKind, cName}, iLock, cLog.handle());
    ::close(iLock);
    QElapsedTimer cTimer;
    cTimer.start();
    while (bLaunched && m_rcBoard.isCameraAlive() && !cTimer.hasExpired(PATIENCE_MS)) {
        const quint32* pu32State = &m_rcBoard.camera()->helper;
        if (board_load(pu32State) != FRAMES_STARTING)
            return true;
        frames_wait(pu32State, FRAMES_STARTING, WAIT_MS);
    }
    return bLaunched && fail(lastWords().isEmpty() ? cName + QStringLiteral(": no answer") : lastWords());
}

QStringList CCameraHelper::logLines() const
{
    QFile cLog(m_rcBoard.path(BOARD_CAMERA_LOG));
    if (!cLog.open(QIODevice::ReadOnly))
        return QStringList();
    return QString::fromUtf8(cLog.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString CCameraHelper::what() const
{
    return logLines().value(0);
}

QString CCameraHelper::lastWords() const
{
    const QStringList cLines = logLines();
    return cLines.size() > 1 ? cLines.last() : QString();
}
