/* SPDX-License-Identifier: MIT */
#include "board/film/CFilmMaker.h"

#include "board/film/CFilmReader.h"
#include "board/film/CFilmWriter.h"

std::unique_ptr<IFilmReader> CFilmMaker::makeReader()
{
    return std::make_unique<CFilmReader>();
}

std::unique_ptr<IFilmWriter> CFilmMaker::makeWriter()
{
    return std::make_unique<CFilmWriter>();
}
