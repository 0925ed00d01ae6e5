/* SPDX-License-Identifier: MIT */
/* The classes of this folder where FFmpeg's libraries are missing: no film can be opened. */
#include "board/film/CFilmReader.h"
#include "board/film/CFilmWriter.h"

static const char* const MISSING = "built without films (FFmpeg's libraries)";

struct CFilmReader::SFilm {
};

CFilmReader::CFilmReader() = default;
CFilmReader::~CFilmReader() = default;

bool CFilmReader::isBuiltIn()
{
    return false;
}

bool CFilmReader::fail(const QString& rcReason)
{
    m_cError = QStringLiteral("%1: %2").arg(m_cPath, rcReason);
    return false;
}

bool CFilmReader::open(const QString& rcPath)
{
    m_cPath = rcPath;
    return fail(QLatin1String(MISSING));
}

void CFilmReader::close() {}

bool CFilmReader::next()
{
    return false;
}

bool CFilmReader::rewind()
{
    return fail(QLatin1String(MISSING));
}

QImage CFilmReader::picture()
{
    return QImage();
}

struct CFilmWriter::SFilm {
};

CFilmWriter::CFilmWriter() = default;
CFilmWriter::~CFilmWriter() = default;

bool CFilmWriter::isBuiltIn()
{
    return false;
}

bool CFilmWriter::fail(const QString& rcReason)
{
    m_cError = QStringLiteral("%1: %2").arg(m_cPath, rcReason);
    return false;
}

bool CFilmWriter::open(const QString& rcPath)
{
    m_cPath = rcPath;
    return fail(QLatin1String(MISSING));
}

bool CFilmWriter::close()
{
    return true;
}

bool CFilmWriter::write(const QImage& /*rcPicture*/)
{
    return false;
}

bool CFilmWriter::repeat()
{
    return false;
}

bool CFilmWriter::encode()
{
    return false;
}
