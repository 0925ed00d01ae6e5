/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_CFILMMAKER_H
#define HALDEND_BOARD_FILM_CFILMMAKER_H

#include "board/film/IFilmMaker.h"

#include <QObject>

/// The module of films, by FFmpeg's libraries.
class CFilmMaker : public QObject, public IFilmMaker
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "haldend.board.IFilmMaker")
    Q_INTERFACES(IFilmMaker)

public:
    std::unique_ptr<IFilmReader> makeReader() override;
    std::unique_ptr<IFilmWriter> makeWriter() override;
};

#endif
