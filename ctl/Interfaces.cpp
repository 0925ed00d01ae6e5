/* SPDX-License-Identifier: MIT */
#include "ctl/Interfaces.h"

#include <QFile>
#include <QXmlStreamReader>

const QString SERVICE = QStringLiteral("velmar.haldend");
const QString CODEC_SERVICE = QStringLiteral("velmar.mobilygen");

QStringList objectNames()
{
    return {QStringLiteral("videodisplay"), QStringLiteral("videooverlay"), QStringLiteral("videoprocessing"),
            QStringLiteral("debug")};
}

QString pathOf(const QString& rcObject)
{
    return QLatin1Char('/') + rcObject;
}

QString interfaceOf(const QString& rcObject)
{
    return SERVICE + QLatin1Char('.') + rcObject;
}

/// Nothing in a program asks a static library for its resources by itself.
static void provideFiles()
{
    Q_INIT_RESOURCE(interfaces);
}

static void addArgument(SMember& rsMember, const QXmlStreamAttributes& rcArgument)
{
    // A signal's argument has no direction, or "out": it comes in here.
    const bool bOut =
        !rsMember.bSignal && rcArgument.value(QLatin1String("direction")) == QLatin1String("out");
    (bOut ? rsMember.cOutNames : rsMember.cInNames) << rcArgument.value(QLatin1String("name")).toString();
    (bOut ? rsMember.cOutTypes : rsMember.cInTypes) << rcArgument.value(QLatin1String("type")).toString();
}

QList<SMember> membersOf(const QString& rcObject)
{
    QList<SMember> cMembers;
    provideFiles();
    QFile cFile(QStringLiteral(":/interfaces/%1.xml").arg(interfaceOf(rcObject)));
    if (!cFile.open(QIODevice::ReadOnly))
        return cMembers;
    QXmlStreamReader cReader(&cFile);
    while (!cReader.atEnd()) {
        cReader.readNext();
        if (!cReader.isStartElement())
            continue;
        if (cReader.name() == QLatin1String("method") || cReader.name() == QLatin1String("signal")) {
            SMember sMember;
            sMember.cName = cReader.attributes().value(QLatin1String("name")).toString();
            sMember.bSignal = cReader.name() == QLatin1String("signal");
            cMembers << sMember;
        } else if (cReader.name() == QLatin1String("arg") && !cMembers.isEmpty()) {
            addArgument(cMembers.last(), cReader.attributes());
        }
    }
    return cMembers;
}
