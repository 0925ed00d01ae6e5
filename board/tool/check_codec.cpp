/* SPDX-License-Identifier: MIT */
/* halden-board: the command that tries a real codec service. */
#include "board/tool/CCodecCheck.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <QFileInfo>

#include <cstdio>

static void print(const QString& rcLine)
{
    std::puts(rcLine.toUtf8().constData());
    std::fflush(stdout);
}

int commandCheckCodec(const QStringList& rcArguments)
{
    const QString ANSWER = QStringLiteral("answer");
    const QString GROWTH = QStringLiteral("growth");
    const CCodecCheck::SLimits sUsual;
    CCommandLine cLine(
        QStringLiteral("check-codec"),
        QStringLiteral("Calls the codec service on the system bus as the daemon does, and says what the "
                       "daemon couldn't work "
                       "with. Needs no board. Run it as the daemon's user, while the daemon doesn't run."));
    cLine.addArgument(QStringLiteral("FILE"), QStringLiteral("a new file for the recording; it stays"));
    cLine.addValue(
        ANSWER, QStringLiteral("MS"),
        QStringLiteral("how long a call may take; default: the daemon's %1").arg(sUsual.iAnswerMs));
    cLine.addValue(GROWTH, QStringLiteral("MS"),
                   QStringLiteral("how long the file may stay as it is; default: the daemon's %1")
                       .arg(sUsual.iGrowthMs));
    quint32 u32Answer = 0;
    quint32 u32Growth = 0;
    if (!cLine.parse(rcArguments, 1, 1) ||
        !cLine.number(ANSWER, 1, static_cast<quint32>(sUsual.iAnswerMs), u32Answer) ||
        !cLine.number(GROWTH, 1, static_cast<quint32>(sUsual.iGrowthMs), u32Growth))
        return cLine.exitStatus();
    const QFileInfo cFile(cLine.arguments().at(0));
    if (cFile.exists())
        return cLine.refuse(QStringLiteral("%1 exists already").arg(cFile.filePath()));
    CCodecCheck::SLimits sLimits;
    sLimits.iAnswerMs = static_cast<int>(u32Answer);
    sLimits.iGrowthMs = static_cast<int>(u32Growth);
    CCodecCheck cCheck(QDBusConnection::systemBus(), sLimits, print);
    if (!cCheck.run(cFile.absoluteFilePath()))
        return cLine.fail(QStringLiteral("the daemon couldn't work with this codec service"));
    print(QStringLiteral("The daemon can work with this codec service."));
    return cLine.exitStatus();
}
