/* SPDX-License-Identifier: MIT */
#include "board/tool/CCommandLine.h"

#include "board/state/CBoard.h"

#include <cstdio>

namespace
{

const QString BOARD = QStringLiteral("board");
const QString HELP = QStringLiteral("help");

} // namespace

CCommandLine::CCommandLine(const QString& rcCommand, const QString& rcDescription) : m_cCommand(rcCommand)
{
    m_cParser.setApplicationDescription(rcDescription);
    m_cParser.addPositionalArgument(rcCommand, QString(), rcCommand);
    addValue(BOARD, QStringLiteral("DIR"),
             QStringLiteral("the board's directory; default: the variable " BOARD_VARIABLE));
    m_cParser.addOption({
        {QStringLiteral("h"), HELP},
        QStringLiteral("shows this help")
    });
}

void CCommandLine::addArgument(const QString& rcSyntax, const QString& rcDescription)
{
    // The list of arguments would break a choice in the middle of its words.
    const bool bChoice = rcSyntax.contains(QLatin1Char('|'));
    m_cParser.addPositionalArgument(bChoice ? QStringLiteral("ACTION") : rcSyntax, rcDescription, rcSyntax);
}

void CCommandLine::addFlag(const QString& rcName, const QString& rcDescription)
{
    m_cParser.addOption({rcName, rcDescription});
}

void CCommandLine::addValue(const QString& rcName, const QString& rcValueName, const QString& rcDescription)
{
    m_cParser.addOption({rcName, rcDescription, rcValueName});
}

bool CCommandLine::parse(const QStringList& rcArguments, int iLeast, int iMost)
{
    if (!m_cParser.parse(QStringList(QStringLiteral("halden-board")) + rcArguments)) {
        refuse(m_cParser.errorText());
        return false;
    }
    if (m_cParser.isSet(HELP)) {
        std::fputs(qPrintable(m_cParser.helpText()), stdout);
        return false;
    }
    const int iCount = arguments().size();
    if (iCount < iLeast)
        refuse(QStringLiteral("an argument is missing"));
    else if (iMost >= 0 && iCount > iMost)
        refuse(QStringLiteral("unexpected argument '%1'").arg(arguments().at(iMost)));
    return m_eExitStatus == SUCCESS;
}

bool CCommandLine::openBoard(CBoard& rcBoard)
{
    const QString cDirectory = isSet(BOARD) ? value(BOARD) : qEnvironmentVariable(BOARD_VARIABLE);
    if (cDirectory.isEmpty())
        refuse(QStringLiteral("which board? Give --board DIR, or set " BOARD_VARIABLE));
    else if (!rcBoard.open(cDirectory))
        fail(rcBoard.errorString());
    return m_eExitStatus == SUCCESS;
}

bool CCommandLine::number(const QString& rcName, quint32 u32Least, quint32 u32Default, quint32& ru32Value)
{
    ru32Value = u32Default;
    if (!isSet(rcName))
        return true;
    bool bNumber = false;
    ru32Value = value(rcName).toUInt(&bNumber, 0);
    if (bNumber && ru32Value >= u32Least)
        return true;
    refuse(
        QStringLiteral("--%1: '%2' is not a number of at least %3").arg(rcName, value(rcName)).arg(u32Least));
    return false;
}

int CCommandLine::refuse(const QString& rcMessage)
{
    std::fprintf(stderr, "halden-board: %s\nTry: halden-board %s --help\n", qPrintable(rcMessage),
                 qPrintable(m_cCommand));
    m_eExitStatus = USAGE;
    return m_eExitStatus;
}

void CCommandLine::warn(const QString& rcMessage)
{
    std::fprintf(stderr, "halden-board: %s\n", qPrintable(rcMessage));
}

int CCommandLine::fail(const QString& rcMessage)
{
    warn(rcMessage);
    m_eExitStatus = FAILURE;
    return m_eExitStatus;
}
