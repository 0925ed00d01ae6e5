/* SPDX-License-Identifier: MIT */
/* The commands of halden-board. Each takes the words behind its name and returns the exit status. */
#ifndef HALDEND_BOARD_TOOL_COMMANDS_H
#define HALDEND_BOARD_TOOL_COMMANDS_H

#include <QStringList>

int commandCamera(const QStringList& rcArguments);
int commandCheckCodec(const QStringList& rcArguments);
int commandCodec(const QStringList& rcArguments);
int commandCompare(const QStringList& rcArguments);
int commandCreate(const QStringList& rcArguments);
int commandDemo(const QStringList& rcArguments);
int commandFault(const QStringList& rcArguments);
int commandGlyphs(const QStringList& rcArguments);
int commandJudgements(const QStringList& rcArguments);
int commandPicture(const QStringList& rcArguments);
int commandRegisters(const QStringList& rcArguments);
int commandReplay(const QStringList& rcArguments);
int commandServe(const QStringList& rcArguments);
int commandSignal(const QStringList& rcArguments);
int commandTrace(const QStringList& rcArguments);

/// Calls the function at once, then several times a second, until it returns false or SIGINT or SIGTERM
/// comes, the usual end of commands that follow something.
void repeatUntilStopped(bool (*pfnStep)(void* pvContext), void* pvContext);

#endif
