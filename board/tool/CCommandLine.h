/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TOOL_CCOMMANDLINE_H
#define HALDEND_BOARD_TOOL_CCOMMANDLINE_H

#include <QCommandLineParser>
#include <QString>
#include <QStringList>

class CBoard;

/// The command line of one command of halden-board: its options and arguments, help, and the exit statuses
/// that all commands share.
///
/// A command describes itself, calls parse(), and ends with exitStatus() if that returns false:
///
///     CCommandLine cLine(QStringLiteral("create"), QStringLiteral("Makes a board."));
///     cLine.addArgument(QStringLiteral("DIR"), QStringLiteral("directory, made if missing"));
///     if (!cLine.parse(rcArguments, 1, 1))
///         return cLine.exitStatus();
class CCommandLine
{
public:
    enum EExitStatus { SUCCESS = 0, FAILURE = 1, USAGE = 2 };

    CCommandLine(const QString& rcCommand, const QString& rcDescription);

    void addArgument(const QString& rcSyntax, const QString& rcDescription);
    void addFlag(const QString& rcName, const QString& rcDescription);
    void addValue(const QString& rcName, const QString& rcValueName, const QString& rcDescription);

    /// rcArguments: everything behind the command's name. The limits are for the arguments that are no
    /// options; iMost < 0 is no limit. Returns false if the command is over, because it printed its help or
    /// reported a wrong line.
    [[nodiscard]] bool parse(const QStringList& rcArguments, int iLeast, int iMost);

    /// Opens the board of the option --board or of the environment. False, with a message, if there is none.
    [[nodiscard]] bool openBoard(CBoard& rcBoard);

    int exitStatus() const { return m_eExitStatus; }

    QStringList arguments() const { return m_cParser.positionalArguments(); }
    bool isSet(const QString& rcName) const { return m_cParser.isSet(rcName); }
    QString value(const QString& rcName) const { return m_cParser.value(rcName); }

    /// The option's value as a number of at least u32Least, u32Default if it isn't set. False, with a
    /// message, if it is no such number.
    [[nodiscard]] bool number(const QString& rcName, quint32 u32Least, quint32 u32Default,
                              quint32& ru32Value);

    /// Writes a message; the command goes on.
    static void warn(const QString& rcMessage);

    /// Write a message, and return the status to end with.
    int refuse(const QString& rcMessage);
    int fail(const QString& rcMessage);

private:
    QString m_cCommand;
    QCommandLineParser m_cParser;
    EExitStatus m_eExitStatus = SUCCESS;
};

#endif
