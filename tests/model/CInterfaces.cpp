/* SPDX-License-Identifier: MIT */
#include "tests/model/CInterfaces.h"

#include <QFile>
#include <QXmlStreamReader>

#include <algorithm>
#include <iterator>

namespace
{

const char* const OBJECTS[] = {"/debug", "/videodisplay", "/videooverlay", "/videoprocessing"};

QByteArray attribute(const QXmlStreamReader& rcReader, const char* pszName)
{
    return rcReader.attributes().value(QLatin1String(pszName)).toUtf8();
}

bool readInterface(const QString& rcFile, const char* pszPath, QVector<CInterfaces::SMethod>& rcMethods)
{
    QFile cFile(rcFile);
    if (!cFile.open(QIODevice::ReadOnly))
        return false;
    QXmlStreamReader cReader(&cFile);
    bool bMethod = false;
    while (!cReader.atEnd()) {
        cReader.readNext();
        const QStringRef cElement = cReader.name();
        if (cElement == QLatin1String("method"))
            bMethod = cReader.isStartElement();
        if (!cReader.isStartElement() || !bMethod)
            continue;
        if (cElement == QLatin1String("method")) {
            rcMethods << CInterfaces::SMethod();
            rcMethods.last().cPath = pszPath;
            rcMethods.last().cName = attribute(cReader, "name");
        } else if (cElement == QLatin1String("annotation")) {
            rcMethods.last().bReply = attribute(cReader, "name") != "org.freedesktop.DBus.Method.NoReply";
        } else if (cElement == QLatin1String("arg")) {
            const bool bOut = attribute(cReader, "direction") == "out";
            (bOut ? rcMethods.last().cOut : rcMethods.last().cIn)
                << CInterfaces::SArgument{attribute(cReader, "name"), attribute(cReader, "type")};
        }
    }
    return !cReader.hasError();
}

} // namespace

bool CInterfaces::SMethod::isGetter() const
{
    static const char* const BEGINS[] = {"get_", "is_", "query_"};
    return std::any_of(std::begin(BEGINS), std::end(BEGINS),
                       [this](const char* pszBegin) { return cName.startsWith(pszBegin); });
}

QVector<CInterfaces::SMethod> CInterfaces::read(const char* pszFolder)
{
    QVector<SMethod> cMethods;
    for (const char* pszPath : OBJECTS) {
        const QString cFile = QStringLiteral("%1/velmar.haldend.%2.xml")
                                  .arg(QLatin1String(pszFolder), QLatin1String(pszPath + 1));
        if (!readInterface(cFile, pszPath, cMethods))
            return {};
    }
    return cMethods;
}
