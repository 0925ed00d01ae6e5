/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_IFILMMAKER_H
#define HALDEND_BOARD_FILM_IFILMMAKER_H

#include "board/film/IFilmReader.h"
#include "board/film/IFilmWriter.h"

#include <QtPlugin>

#include <memory>

/// What the module of films gives to the programs that load it.
class IFilmMaker
{
public:
    IFilmMaker() = default;
    virtual ~IFilmMaker() = default;

    IFilmMaker(const IFilmMaker&) = delete;
    IFilmMaker& operator=(const IFilmMaker&) = delete;

    virtual std::unique_ptr<IFilmReader> makeReader() = 0;
    virtual std::unique_ptr<IFilmWriter> makeWriter() = 0;
};

Q_DECLARE_INTERFACE(IFilmMaker, "haldend.board.IFilmMaker")

#endif
