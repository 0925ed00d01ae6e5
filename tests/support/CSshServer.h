/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CSSHSERVER_H
#define HALDEND_TESTS_CSSHSERVER_H

#include "tests/support/CChildProcess.h"

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

/// A real sshd on the loopback, with keys and a port of its own, that lets the user of the test in.
class CSshServer
{
public:
    CSshServer() = default;
    ~CSshServer();

    CSshServer(const CSshServer&) = delete;
    CSshServer& operator=(const CSshServer&) = delete;

    /// False if it doesn't come up; error() says why.
    bool start();

    /// A program that is called like ssh and reaches this server as the host "board", and no other.
    QString client() const { return m_cFolder.filePath(QStringLiteral("ssh")); }

    QString error() const { return m_cError; }

private:
    bool makeKey(const char* pszName);
    bool write(const char* pszName, const QString& rcText);

    QTemporaryDir m_cFolder;
    CChildProcess m_cProcess;
    QString m_cError;
};

#endif
