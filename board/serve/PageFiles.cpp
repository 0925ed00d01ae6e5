/* SPDX-License-Identifier: MIT */
#include "board/serve/PageFiles.h"

#include <QDir>
#include <QFile>

/// Nothing in a program asks a static library for its resources by itself.
static void provideFiles()
{
    Q_INIT_RESOURCE(page);
}

static QByteArray typeOf(const QString& rcName)
{
    if (rcName.endsWith(QLatin1String(".html")))
        return "text/html; charset=utf-8";
    if (rcName.endsWith(QLatin1String(".css")))
        return "text/css; charset=utf-8";
    if (rcName.endsWith(QLatin1String(".svg")))
        return "image/svg+xml";
    return "text/javascript; charset=utf-8";
}

QHash<QByteArray, CWebServer::SFile> pageFiles()
{
    provideFiles();
    QHash<QByteArray, CWebServer::SFile> cFiles;
    const QDir cFolder(QStringLiteral(":/page"));
    for (const QString& rcName : cFolder.entryList(QDir::Files)) {
        QFile cFile(cFolder.filePath(rcName));
        if (cFile.open(QIODevice::ReadOnly))
            cFiles['/' + rcName.toLatin1()] = {typeOf(rcName), cFile.readAll()};
    }
    return cFiles;
}
