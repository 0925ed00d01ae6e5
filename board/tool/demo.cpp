/* SPDX-License-Identifier: MIT */
/* halden-board: the command that starts the demonstration of an installation. */
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <unistd.h>

namespace
{

const char* const USAGE =
    "Usage: halden-board demo [--at DIR] [--verbose]\n"
    "       halden-board demo restart daemon|codec [--at DIR]\n"
    "       halden-board demo --once DIR\n"
    "\n"
    "Starts a private bus, a virtual board, the codec stand-in and the installed daemon, prints "
    "what to try, and runs\n"
    "until Ctrl-C. With --once it goes through a tour, leaves its pictures in the folder DIR, which "
    "it empties first, and\n"
    "ends.\n";

/// Becomes the program. Returns only if that fails.
void becomeDemo(const QString& rcProgram, const QStringList& rcArguments)
{
    std::vector<QByteArray> cWords{QFile::encodeName(rcProgram)};
    for (const QString& rcArgument : rcArguments)
        cWords.push_back(QFile::encodeName(rcArgument));
    std::vector<char*> cVector;
    cVector.reserve(cWords.size() + 1);
    for (QByteArray& rcWord : cWords)
        cVector.push_back(rcWord.data());
    cVector.push_back(nullptr);
    execv(cVector.front(), cVector.data());
}

int fail(const QString& rcMessage)
{
    std::fprintf(stderr, "halden-board: %s\n", qPrintable(rcMessage));
    return CCommandLine::FAILURE;
}

/// Checks the arguments, and makes the folders in them absolute. False if they are wrong.
bool readArguments(QStringList& rcArguments)
{
    bool bOnce = false;
    for (int i = 0; i < rcArguments.size(); ++i) {
        const QString cWord = rcArguments.at(i);
        if (cWord == QLatin1String("--once") || cWord == QLatin1String("--at")) {
            bOnce = bOnce || cWord == QLatin1String("--once");
            if (++i == rcArguments.size() || rcArguments.at(i).isEmpty())
                return false;
            rcArguments.replace(i, QFileInfo(rcArguments.at(i)).absoluteFilePath());
        } else if (cWord == QLatin1String("restart")) {
            const QString cProgram = rcArguments.value(++i);
            if (i != 1 || (cProgram != QLatin1String("daemon") && cProgram != QLatin1String("codec")))
                return false;
        } else if (cWord != QLatin1String("--verbose")) {
            return false;
        }
    }
    return !bOnce || rcArguments.size() == 2;
}

} // namespace

int commandDemo(const QStringList& rcArguments)
{
    QStringList cArguments = rcArguments;
    const QDir cPrefix(
        QDir::cleanPath(QCoreApplication::applicationDirPath() + QStringLiteral("/" HALDEND_PREFIX)));
    const bool bHelp =
        cArguments.value(0) == QLatin1String("--help") || cArguments.value(0) == QLatin1String("-h");
    if (bHelp || !readArguments(cArguments)) {
        std::fputs(USAGE, bHelp ? stdout : stderr);
        return bHelp ? CCommandLine::SUCCESS : CCommandLine::USAGE;
    }
    if (cArguments.value(0) == QLatin1String("--once"))
        cArguments.replace(0, cPrefix.filePath(QStringLiteral(HALDEND_TOUR_SCRIPT)));
    const QString cTour = cPrefix.filePath(QStringLiteral(HALDEND_INSTALLED_TOUR));
    if (!QFileInfo(cTour).isExecutable())
        return fail(
            QStringLiteral("there is no %1; in the source tree, ./run is the demonstration").arg(cTour));
    // The tour finds all else from the prefix.
    if (!QDir::setCurrent(cPrefix.path()))
        return fail(
            QStringLiteral("%1: %2").arg(cPrefix.path(), QString::fromLocal8Bit(std::strerror(errno))));
    becomeDemo(cTour, cArguments);
    return fail(QStringLiteral("%1: %2").arg(cTour, QString::fromLocal8Bit(std::strerror(errno))));
}
