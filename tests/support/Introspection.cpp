/* SPDX-License-Identifier: MIT */
/* Introspection data in a form that two of them can be compared in. */
#include "tests/support/Introspection.h"

#include <QMap>
#include <QXmlStreamReader>

// An element with its attributes in the order of their names: "arg direction=in name=width type=i".
static QString describeElement(const QXmlStreamReader& rcReader)
{
    QMap<QString, QString> cAttributes;
    for (const QXmlStreamAttribute& rcAttribute : rcReader.attributes())
        cAttributes.insert(rcAttribute.name().toString(), rcAttribute.value().toString());
    QString cText = rcReader.name().toString();
    for (auto cIterator = cAttributes.constBegin(); cIterator != cAttributes.constEnd(); ++cIterator)
        cText += QStringLiteral(" %1=%2").arg(cIterator.key(), cIterator.value());
    return cText;
}

// Reads to the end of the interface element that the reader stands at.
static QStringList describeMembers(QXmlStreamReader& rcReader)
{
    QStringList cLines;
    int iDepth = 0;
    while (iDepth >= 0 && !rcReader.atEnd()) {
        rcReader.readNext();
        if (rcReader.isStartElement())
            cLines << QString(iDepth++ * 2, QLatin1Char(' ')) + describeElement(rcReader);
        else if (rcReader.isEndElement())
            --iDepth;
    }
    return cLines;
}

QStringList describeInterface(const QByteArray& rcXml, const QString& rcInterface)
{
    QXmlStreamReader cReader(rcXml);
    QStringList cLines;
    while (!cReader.atEnd()) {
        cReader.readNext();
        if (cReader.isStartElement() && cReader.name() == QLatin1String("interface") &&
            cReader.attributes().value(QLatin1String("name")) == rcInterface)
            cLines = describeMembers(cReader);
    }
    if (cReader.hasError())
        return {QStringLiteral("broken XML: ") + cReader.errorString()};
    return cLines;
}
