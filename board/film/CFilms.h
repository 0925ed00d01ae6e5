/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_CFILMS_H
#define HALDEND_BOARD_FILM_CFILMS_H

#include "board/film/IFilmReader.h"
#include "board/film/IFilmWriter.h"

#include <memory>

/// Films for programs that may never need one. FFmpeg's libraries, with a hundred others that they bring, take longer to
/// load than such a program takes to start. So they are behind a module, which is loaded for the first film.
class CFilms
{
public:
    /// Whether the module is there. It isn't where the board was built without FFmpeg's libraries.
    static bool areThere();

    /// A reader or a writer of the film, open. Null if the module can't be loaded or the film can't be opened; rcError
    /// says why.
    static std::unique_ptr<IFilmReader> openReader(const QString& rcPath, QString& rcError);
    static std::unique_ptr<IFilmWriter> openWriter(const QString& rcPath, QString& rcError);
};

#endif
