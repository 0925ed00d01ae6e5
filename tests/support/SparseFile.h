/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_SPARSEFILE_H
#define HALDEND_TESTS_SPARSEFILE_H

#include <QByteArray>
#include <QString>

/// Writes a file that takes no room for blocks of zeros, such as a copy of a board's memory. False if that fails.
bool writeSparse(const QString& rcFile, const QByteArray& rcBytes);

#endif
