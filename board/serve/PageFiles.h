/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_PAGEFILES_H
#define HALDEND_BOARD_SERVE_PAGEFILES_H

#include "board/serve/CWebServer.h"

#include <QByteArray>
#include <QHash>

/// The page and all that it loads, by path.
QHash<QByteArray, CWebServer::SFile> pageFiles();

#endif
