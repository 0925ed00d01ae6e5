/* SPDX-License-Identifier: MIT */
#include "tests/support/CSshServer.h"

#include "tests/support/Timeouts.h"

#include <QDir>
#include <QFile>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <pwd.h>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

/// One that nothing listens at.
int freePort()
{
    const int iSocket = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in sAddress = {};
    sAddress.sin_family = AF_INET;
    sAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t iLength = sizeof sAddress;
    auto* const psAddress = reinterpret_cast<sockaddr*>(&sAddress);
    const bool bBound =
        bind(iSocket, psAddress, iLength) == 0 && getsockname(iSocket, psAddress, &iLength) == 0;
    close(iSocket);
    return bBound ? ntohs(sAddress.sin_port) : 0;
}

} // namespace

CSshServer::~CSshServer()
{
    if (m_cProcess.state() == QProcess::NotRunning)
        return;
    m_cProcess.terminate();
    m_cProcess.waitForFinished(TIMEOUT_PROCESS_MS);
}

bool CSshServer::makeKey(const char* pszName)
{
    CChildProcess cMaker;
    cMaker.start(QStringLiteral("ssh-keygen"),
                 {QStringLiteral("-q"), QStringLiteral("-t"), QStringLiteral("ed25519"), QStringLiteral("-N"),
                  QString(), QStringLiteral("-f"), m_cFolder.filePath(QLatin1String(pszName))});
    return cMaker.waitForFinished(TIMEOUT_PROCESS_MS) && cMaker.exitCode() == 0;
}

bool CSshServer::write(const char* pszName, const QString& rcText)
{
    QFile cFile(m_cFolder.filePath(QLatin1String(pszName)));
    return cFile.open(QIODevice::WriteOnly) && cFile.write(rcText.toUtf8()) > 0 &&
           cFile.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

bool CSshServer::start()
{
    const int iPort = freePort();
    const QString cFolder = m_cFolder.path();
    // Run by root sshd demands this folder of the package, which the machine's own service would make.
    if (geteuid() == 0)
        QDir().mkpath(QStringLiteral("/run/sshd"));
    if (!makeKey("host") || !makeKey("user") ||
        !write("sshd_config",
               QStringLiteral("Port %1\nListenAddress 127.0.0.1\nHostKey %2/host\nAuthorizedKeysFile "
                              "%2/user.pub\nStrictModes no\nPidFile none\nUsePAM no\nPermitRootLogin yes\n")
                   .arg(iPort)
                   .arg(cFolder)) ||
        !write("ssh_config",
               QStringLiteral("Host board\n HostName 127.0.0.1\n Port %1\n User %2\n IdentityFile %3/user\n"
                              " StrictHostKeyChecking no\n UserKnownHostsFile /dev/null\n LogLevel ERROR\n"
                              " BatchMode yes\n")
                   .arg(iPort)
                   .arg(QLatin1String(getpwuid(geteuid())->pw_name), cFolder)) ||
        !write("ssh", QStringLiteral("#!/bin/sh\nexec ssh -F %1/ssh_config \"$@\"\n").arg(cFolder))) {
        m_cError = QStringLiteral("keys or configuration can't be made");
        return false;
    }
    m_cProcess.start(QStringLiteral(SSHD_PROGRAM),
                     {QStringLiteral("-D"), QStringLiteral("-e"), QStringLiteral("-f"),
                      m_cFolder.filePath(QStringLiteral("sshd_config"))});
    m_cProcess.setReadChannel(QProcess::StandardError);
    while (!m_cError.contains(QLatin1String("Server listening"))) {
        if (!m_cProcess.waitForReadyRead(TIMEOUT_PROCESS_MS))
            return false;
        m_cError += QString::fromUtf8(m_cProcess.readAllStandardError());
    }
    return true;
}
