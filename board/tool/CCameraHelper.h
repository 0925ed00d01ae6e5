/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TOOL_CCAMERAHELPER_H
#define HALDEND_BOARD_TOOL_CCAMERAHELPER_H

#include <QString>
#include <QStringList>

class CBoard;

/// halden-camera for a board: its start, and news of it. It lies beside this program, and lives until another source is
/// chosen or the board's folder goes.
class CCameraHelper
{
public:
    /// The board must outlive this.
    explicit CCameraHelper(CBoard& rcBoard) : m_rcBoard(rcBoard) {}

    /// Chooses its frames as the camera's source, starts it, and waits until it has opened the film or the device.
    /// False if it has not; errorString() says why.
    [[nodiscard]] bool start(const QString& rcKind, const QString& rcName);

    /// What it was started for, such as "film /tmp/a.ts"; empty if it never was.
    QString what() const;

    /// Its last words; empty if there are none.
    QString lastWords() const;

    QString errorString() const { return m_cError; }

private:
    bool fail(const QString& rcReason);
    int openLocked(const char* pszFile, int iFlags, quint32 u32Byte);
    bool launch(const QStringList& rcCommand, int iLock, int iLog);
    QStringList logLines() const;

    CBoard& m_rcBoard;
    QString m_cError;
};

#endif
