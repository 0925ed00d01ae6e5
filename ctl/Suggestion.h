/* SPDX-License-Identifier: MIT */
/* The name that a misspelt one may stand for. */
#ifndef HALDEND_CTL_SUGGESTION_H
#define HALDEND_CTL_SUGGESTION_H

#include <QString>
#include <QStringList>

/// The name that takes the fewest changes of single letters to get to; empty if none is near. Capitals don't count.
QString nearestName(const QString& rcName, const QStringList& rcNames);

/// " (did you mean NAME?)", or nothing.
QString suggestion(const QString& rcName, const QStringList& rcNames);

#endif
