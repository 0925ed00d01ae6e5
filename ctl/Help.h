/* SPDX-License-Identifier: MIT */
/* The help, made from the command table. */
#ifndef HALDEND_CTL_HELP_H
#define HALDEND_CTL_HELP_H

#include <QString>
#include <QStringList>

/// Of all commands, or of those that begin with the words.
QString helpText(const QStringList& rcWords);

#endif
