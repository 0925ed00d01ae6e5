/* SPDX-License-Identifier: MIT */
/* How the words behind haldenctl call become values. */
#ifndef HALDEND_CTL_CALLCOMMAND_H
#define HALDEND_CTL_CALLCOMMAND_H

#include <QString>
#include <QVariant>

/// The value of a D-Bus type: s, b, i, or av for a list of numbers, written 1,2,3. Throws CFailure if the word isn't
/// one.
QVariant valueFrom(const QString& rcWord, const QString& rcType);

#endif
