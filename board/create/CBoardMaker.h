/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CREATE_CBOARDMAKER_H
#define HALDEND_BOARD_CREATE_CBOARDMAKER_H

#include <QString>

/// Makes virtual boards.
class CBoardMaker
{
public:
    /// Makes a board that the daemon can be started on: all devices zero, the default register files, the
    /// camera plugged in and showing the test picture. Creates parent folders too. False if the directory
    /// isn't empty or can't be written; rcError says why.
    [[nodiscard]] static bool create(const QString& rcDirectory, QString& rcError);
};

#endif
