/* SPDX-License-Identifier: MIT */
/* haldenctl: the daemon from the shell. */
#include "ctl/CSession.h"
#include "ctl/CommandTable.h"
#include "ctl/ExitStatus.h"
#include "ctl/Help.h"
#include "ctl/LineOptions.h"

#include <QCommandLineParser>
#include <QCoreApplication>

#include <cstdio>

#include <unistd.h>

namespace
{

/// Qt's warnings are for developers: the user gets one line, of ours.
void ignoreMessage(QtMsgType /*eType*/, const QMessageLogContext& /*rcContext*/, const QString& /*rcText*/) {}

/// Whether help is asked for behind the command; behind -- it would be a text.
bool asksForHelp(const QStringList& rcCommand)
{
    const int iHelp = rcCommand.indexOf(QStringLiteral("--help"));
    const int iTexts = rcCommand.indexOf(QStringLiteral("--"));
    return iHelp >= 0 && (iTexts < 0 || iHelp < iTexts);
}

int print(const QString& rcText)
{
    fputs(rcText.toUtf8().constData(), stdout);
    return eDone;
}

int refuse(const QString& rcText)
{
    COutput({}).error(rcText);
    return eWrongUse;
}

CSession::SSettings settingsFrom(const QCommandLineParser& rcParser)
{
    CSession::SSettings sSettings;
    sSettings.sPlace = {rcParser.value(QStringLiteral("host")), rcParser.value(QStringLiteral("bus"))};
    sSettings.sStyle.bJson = rcParser.isSet(QStringLiteral("json"));
    sSettings.sStyle.bQuiet = rcParser.isSet(QStringLiteral("quiet"));
    sSettings.sStyle.bColor = isatty(STDOUT_FILENO) != 0 && qEnvironmentVariableIsEmpty("NO_COLOR") &&
                              !rcParser.isSet(QStringLiteral("no-color"));
    sSettings.bForce = rcParser.isSet(QStringLiteral("force"));
    return sSettings;
}

} // namespace

int main(int iCount, char** ppszArguments)
{
    qInstallMessageHandler(ignoreMessage);
    QCoreApplication cApplication(iCount, ppszArguments);

    QCommandLineParser cParser;
    cParser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    for (const SCommandOption& rsOption : globalOptions())
        cParser.addOption(lineOption(rsOption));
    if (!cParser.parse(QCoreApplication::arguments()))
        return refuse(withoutDot(cParser.errorText()) + QStringLiteral("; see haldenctl --help"));
    const QStringList cCommand = cParser.positionalArguments();
    if (cParser.isSet(QStringLiteral("version")))
        return print(QStringLiteral("haldenctl " HALDEND_VERSION "\n"));
    if (cParser.isSet(QStringLiteral("help")) || asksForHelp(cCommand))
        return print(helpText(cCommand));
    if (cCommand.isEmpty())
        return refuse(QStringLiteral("a command is missing; see haldenctl --help"));

    CSession cSession(settingsFrom(cParser));
    cSession.run(cCommand);
    return cSession.finish();
}
