/* SPDX-License-Identifier: MIT */
#include "board/film/CFilms.h"

#include "board/film/IFilmMaker.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QPluginLoader>

namespace
{

// Seen from a program's folder: that of a build tree, and those of installed programs.
const char* const PLACES[] = {".", HALDEND_FILMS_FROM_BIN, HALDEND_FILMS_FROM_PROGRAMS};

/// The module's file. Empty if there is none.
QString moduleFile()
{
    const QDir cHere(QCoreApplication::applicationDirPath());
    for (const char* pszPlace : PLACES) {
        const QString cFile =
            QDir(cHere.filePath(QLatin1String(pszPlace))).filePath(QStringLiteral(HALDEND_FILMS_MODULE));
        if (QFileInfo::exists(cFile))
            return QDir::cleanPath(cFile);
    }
    return QString();
}

/// The module, which stays loaded. Null if that fails.
IFilmMaker* module(QString& rcError)
{
    const QString cFile = moduleFile();
    if (cFile.isEmpty()) {
        rcError = QStringLiteral(HALDEND_FILMS_MODULE ": missing; built without films (FFmpeg's libraries)");
        return nullptr;
    }
    QPluginLoader cLoader(cFile);
    IFilmMaker* pcModule = qobject_cast<IFilmMaker*>(cLoader.instance());
    if (pcModule == nullptr)
        rcError = cLoader.isLoaded() ? QStringLiteral("%1: not the module of films").arg(cFile)
                                     : cLoader.errorString();
    return pcModule;
}

/// The film, if it can be opened. Null otherwise; rcError says why.
template <typename T>
std::unique_ptr<T> opened(std::unique_ptr<T> pcFilm, const QString& rcPath, QString& rcError)
{
    if (pcFilm->open(rcPath))
        return pcFilm;
    rcError = pcFilm->errorString();
    return nullptr;
}

} // namespace

bool CFilms::areThere()
{
    return !moduleFile().isEmpty();
}

std::unique_ptr<IFilmReader> CFilms::openReader(const QString& rcPath, QString& rcError)
{
    IFilmMaker* pcModule = module(rcError);
    return pcModule != nullptr ? opened(pcModule->makeReader(), rcPath, rcError) : nullptr;
}

std::unique_ptr<IFilmWriter> CFilms::openWriter(const QString& rcPath, QString& rcError)
{
    IFilmMaker* pcModule = module(rcError);
    return pcModule != nullptr ? opened(pcModule->makeWriter(), rcPath, rcError) : nullptr;
}
