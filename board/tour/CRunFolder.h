/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TOUR_CRUNFOLDER_H
#define HALDEND_BOARD_TOUR_CRUNFOLDER_H

#include "board/state/CBoard.h"

#include <QFile>
#include <QString>

/// The folder of a run: its board, its bus, its picture, and an env file to source. Only one run works in it at a
/// time, told by a lock that goes with the process, so a killed run leaves nothing that is in the way of the next.
class CRunFolder
{
public:
    /// Of a run that names none: in memory, one for each user.
    static QString defaultPath();

    /// bKeep: the board is there again at the next run. Otherwise it is new each time, and the folder goes with the
    /// object.
    CRunFolder(const QString& rcPath, bool bKeep);
    ~CRunFolder();

    CRunFolder(const CRunFolder&) = delete;
    CRunFolder& operator=(const CRunFolder&) = delete;

    /// Takes the folder, makes what is missing, and opens the board. False if that fails, or another run has it;
    /// error() says which.
    [[nodiscard]] bool open();

    /// Writes the env file. rcPrograms: folders for PATH.
    [[nodiscard]] bool writeEnvironment(const QString& rcBusAddress, const QStringList& rcPrograms);

    QString path() const { return m_cPath; }
    QString file(const char* pszName) const { return m_cPath + QLatin1Char('/') + QLatin1String(pszName); }
    QString socket() const { return file("bus"); }
    CBoard& board() { return m_cBoard; }
    QString error() const { return m_cError; }

private:
    bool take();
    bool openBoard();
    bool fail(const QString& rcError);

    QString m_cPath;
    bool m_bKeep;
    QFile m_cLock;
    bool m_bTaken = false;
    CBoard m_cBoard;
    QString m_cError;
};

#endif
