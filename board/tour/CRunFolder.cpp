/* SPDX-License-Identifier: MIT */
#include "board/tour/CRunFolder.h"

#include "board/create/CBoardMaker.h"

#include <QDir>
#include <QFileInfo>

#include <sys/file.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace
{

/// For a shell.
QString quoted(QString cText)
{
    return QLatin1Char('\'') + cText.replace(QLatin1Char('\''), QLatin1String("'\\''")) + QLatin1Char('\'');
}

} // namespace

QString CRunFolder::defaultPath()
{
    const QString cMemory = QStringLiteral("/dev/shm");
    return QStringLiteral("%1/haldend-run-%2")
        .arg(QFileInfo(cMemory).isWritable() ? cMemory : QDir::tempPath())
        .arg(geteuid());
}

CRunFolder::CRunFolder(const QString& rcPath, bool bKeep)
    : m_cPath(QDir(rcPath).absolutePath()), m_bKeep(bKeep)
{
}

CRunFolder::~CRunFolder()
{
    m_cBoard.close();
    if (!m_bTaken)
        return;
    QFile::remove(socket());
    if (!m_bKeep)
        QDir(m_cPath).removeRecursively();
}

bool CRunFolder::fail(const QString& rcError)
{
    m_cError = rcError;
    return false;
}

bool CRunFolder::take()
{
    // One that goes at the end must be no link: all that is in it goes, too. In a place for everybody, others could
    // have made one.
    if (!m_bKeep && QFileInfo(m_cPath).isSymLink())
        return fail(QStringLiteral("%1 is a link").arg(m_cPath));
    const mode_t uMask = umask(077);
    const bool bMade = QDir().mkpath(m_cPath);
    umask(uMask);
    if (!bMade)
        return fail(QStringLiteral("%1: can't be made").arg(m_cPath));
    if (QFileInfo(m_cPath).ownerId() != geteuid())
        return fail(QStringLiteral("%1 belongs to another user").arg(m_cPath));
    if (QFile::encodeName(socket()).size() >= static_cast<int>(sizeof(sockaddr_un::sun_path)))
        return fail(QStringLiteral("%1: the name is too long for the bus").arg(m_cPath));
    m_cLock.setFileName(file("lock"));
    if (!m_cLock.open(QIODevice::ReadWrite))
        return fail(QStringLiteral("%1: %2").arg(m_cLock.fileName(), m_cLock.errorString()));
    if (flock(m_cLock.handle(), LOCK_EX | LOCK_NB) != 0)
        return fail(QStringLiteral(HALDEND_RUN
                                   " is at work in %1 already, as process %2; end it, or choose another "
                                   "folder: " HALDEND_RUN " --at DIR")
                        .arg(m_cPath, QString::fromLatin1(m_cLock.readAll()).trimmed()));
    m_bTaken = true;
    return m_cLock.resize(0) && m_cLock.write(QByteArray::number(getpid()) + '\n') > 0 && m_cLock.flush();
}

bool CRunFolder::openBoard()
{
    const QString cBoard = file("board");
    if (!m_bKeep)
        QDir(cBoard).removeRecursively();
    QString cError;
    const bool bNew = !QFileInfo::exists(cBoard);
    if (bNew && !CBoardMaker::create(cBoard, cError))
        return fail(cError);
    if (!m_cBoard.open(cBoard))
        return fail(
            QStringLiteral("%1; to begin with a new board, remove %2").arg(m_cBoard.errorString(), cBoard));
    // A board that stays keeps the camera that was chosen.
    if (bNew)
        m_cBoard.setMovingCamera();
    return true;
}

bool CRunFolder::open()
{
    if (!take())
        return false;
    // The bus of a run that was killed leaves its socket.
    QFile::remove(socket());
    return openBoard();
}

bool CRunFolder::writeEnvironment(const QString& rcBusAddress, const QStringList& rcPrograms)
{
    QFile cFile(file("env"));
    const QString cText = QStringLiteral("# haldend on a virtual board: . %1\n"
                                         "export DBUS_SYSTEM_BUS_ADDRESS=%2\n"
                                         "export HALDEN_BOARD=%3\n"
                                         "PATH=%4:$PATH\n")
                              .arg(cFile.fileName(), quoted(rcBusAddress), quoted(file("board")),
                                   quoted(rcPrograms.join(QLatin1Char(':'))));
    return (cFile.open(QIODevice::WriteOnly | QIODevice::Truncate) && cFile.write(cText.toUtf8()) > 0 &&
            cFile.flush()) ||
           fail(QStringLiteral("%1: %2").arg(cFile.fileName(), cFile.errorString()));
}
