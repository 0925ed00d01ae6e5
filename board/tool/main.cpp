/* SPDX-License-Identifier: MIT */
/* halden-board: makes virtual boards, shows what programs do to them, and controls them. */
#include "board/tool/Commands.h"

#include <QCoreApplication>

#include <cstdio>

namespace
{

struct SCommand {
    const char* pszName;
    const char* pszSyntax;
    const char* pszHelp;
    int (*pfnRun)(const QStringList& rcArguments);
};

const SCommand COMMANDS[] = {
    {"demo",        "[--once DIR]",                    "starts all of the installation",    commandDemo      },
    {"create",      "DIR",                             "makes a board",                     commandCreate    },
    {"picture",     "OUT.png [--follow] [--recorded]", "writes the monitor's picture",      commandPicture   },
    {"serve",       "[--port N] [--listen ADDRESS]",   "shows the board in a browser",      commandServe     },
    {"glyphs",      "SET OUT.png",                     "draws a glyph set's contact sheet", commandGlyphs    },
    {"registers",   "[NAME...] [--changed]",           "lists registers and their fields",  commandRegisters },
    {"trace",       "on | full | off | show | follow", "notes device operations",           commandTrace     },
    {"replay",      "TRACE [--until N | --step] ...",  "builds a board from a trace",       commandReplay    },
    {"compare",     "A B",                             "names the first difference",        commandCompare   },
    {"judgements",  "[show | clear]",                  "shows forbidden operations",        commandJudgements},
    {"camera",      "moving | film FILE | FILE | ...", "chooses the camera's picture",      commandCamera    },
    {"signal",      "on | off",                        "switches the video signal",         commandSignal    },
    {"codec",       "MODE | slow MS | log | clear",    "controls the codec stand-in",       commandCodec     },
    {"check-codec", "FILE",                            "tries a real codec service",        commandCheckCodec},
    {"fault",       "OPERATION | list | clear",        "makes operations fail",             commandFault     },
};

void printUsage(FILE* pcStream)
{
    std::fputs("Usage: halden-board [--board DIR] COMMAND ...\n"
               "       halden-board --version\n\n",
               pcStream);
    for (const SCommand& rcCommand : COMMANDS)
        std::fprintf(pcStream, "  %-11s %-33s %s\n", rcCommand.pszName, rcCommand.pszSyntax,
                     rcCommand.pszHelp);
    std::fputs("\nThe board is the directory given by --board, otherwise by the variable HALDEN_BOARD.\n"
               "More on a command: halden-board COMMAND --help\n",
               pcStream);
}

bool isHelp(const QString& rcArgument)
{
    return rcArgument == QLatin1String("--help") || rcArgument == QLatin1String("-h");
}

int run(QStringList cArguments)
{
    QStringList cBoardOption;
    if (!cArguments.isEmpty() && cArguments.first().startsWith(QLatin1String("--board"))) {
        cBoardOption << cArguments.takeFirst();
        if (!cBoardOption.first().contains(QLatin1Char('=')) && !cArguments.isEmpty())
            cBoardOption << cArguments.takeFirst();
    }
    if (cArguments.isEmpty()) {
        printUsage(stderr);
        return 2;
    }
    const QString cName = cArguments.takeFirst();
    if (isHelp(cName)) {
        printUsage(stdout);
        return 0;
    }
    if (cName == QLatin1String("--version")) {
        std::puts("halden-board " HALDEND_VERSION);
        return 0;
    }
    for (const SCommand& rcCommand : COMMANDS)
        if (cName == QLatin1String(rcCommand.pszName))
            return rcCommand.pfnRun(cBoardOption + cArguments);
    std::fprintf(stderr, "halden-board: unknown command '%s'\n", qPrintable(cName));
    printUsage(stderr);
    return 2;
}

} // namespace

int main(int argc, char* argv[])
{
    QCoreApplication cApplication(argc, argv);
    return run(QCoreApplication::arguments().mid(1));
}
