/* SPDX-License-Identifier: MIT */
/* The options of the command table for Qt's parser. */
#ifndef HALDEND_CTL_LINEOPTIONS_H
#define HALDEND_CTL_LINEOPTIONS_H

#include <QCommandLineOption>
#include <QString>

struct SCommandOption;

QCommandLineOption lineOption(const SCommandOption& rsOption);

/// Qt's messages are sentences; ours go on behind them.
QString withoutDot(QString cText);

#endif
