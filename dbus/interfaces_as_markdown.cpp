/* Prints the bus interfaces as Markdown, from their XML files and the comments in them: docs/dbus-api.md. Checks that
 * the file says the same, and brings it up to date.
 */
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <QVector>
#include <QXmlStreamReader>

#include <cstdio>

namespace
{

const char TITLE[] =
    "# The bus interfaces\n"
    "\n"
    "The daemon owns the name `velmar.haldend` on the system bus. It has an object for each interface; an "
    "object's path is "
    "the\n"
    "last part of its interface's name. This page is made from the files `dbus/*.xml`, which also say what a "
    "client may\n"
    "generate its code from. They are complete: there are no properties.\n"
    "\n"
    "**No reply** means that a caller that marks its call so gets none, and none is to be waited for. One "
    "that insists, "
    "like\n"
    "`busctl` without `--expect-reply=no`, gets an empty one when the call has been carried out. Calls are "
    "carried out in "
    "the\n"
    "order in which they are sent. A call whose arguments are of other types than its method's is answered "
    "with the error\n"
    "`org.freedesktop.DBus.Error.UnknownMethod`.\n"
    "\n"
    "The examples can be used as they stand. With `./run` set `DBUS_SYSTEM_BUS_ADDRESS` to what it prints.\n";

struct SArgument {
    QString cName;
    QString cType;
    QString cHelp;
    bool bOut = false;
};

/// What a comment says: its first line names what it is about.
struct SComment {
    QString cName;
    QVector<QPair<QString, QString>> cArguments;
    QStringList cParagraphs;
};

/// A method or a signal.
struct SMember {
    bool bSignal = false;
    bool bNoReply = false;
    QString cName;
    QVector<SArgument> cArguments;
    QStringList cParagraphs;
};

SComment parsedComment(const QString& rcText)
{
    SComment sComment;
    QString cParagraph;
    for (const QString& rcRaw : rcText.trimmed().split(QLatin1Char('\n'))) {
        const QString cLine = rcRaw.trimmed();
        if (sComment.cName.isEmpty()) {
            sComment.cName = cLine.chopped(cLine.endsWith(QLatin1Char(':')) ? 1 : 0);
        } else if (cLine.startsWith(QLatin1Char('@'))) {
            const int iColon = cLine.indexOf(QLatin1Char(':'));
            sComment.cArguments << qMakePair(cLine.mid(1, iColon - 1), cLine.mid(iColon + 1).trimmed());
        } else if (cLine.isEmpty()) {
            sComment.cParagraphs << cParagraph;
            cParagraph.clear();
        } else {
            cParagraph += cLine + QLatin1Char('\n');
        }
    }
    sComment.cParagraphs << cParagraph;
    sComment.cParagraphs.removeAll(QString());
    return sComment;
}

QString helpOf(const SComment& rsComment, const QString& rcArgument)
{
    for (const auto& rcPair : rsComment.cArguments)
        if (rcPair.first == rcArgument)
            return rcPair.second;
    return {};
}

SMember parsedMember(QXmlStreamReader& rcXml, const SComment& rsComment)
{
    SMember sMember;
    sMember.bSignal = rcXml.name() == QLatin1String("signal");
    sMember.cName = rcXml.attributes().value(QStringLiteral("name")).toString();
    if (rsComment.cName == sMember.cName)
        sMember.cParagraphs = rsComment.cParagraphs;
    else
        rcXml.raiseError(QStringLiteral("no documentation in front of ") + sMember.cName);
    while (rcXml.readNextStartElement()) {
        const QXmlStreamAttributes cAttributes = rcXml.attributes();
        const QString cName = cAttributes.value(QStringLiteral("name")).toString();
        if (rcXml.name() == QLatin1String("annotation"))
            sMember.bNoReply = sMember.bNoReply || cName.endsWith(QLatin1String(".NoReply"));
        else
            sMember.cArguments << SArgument{
                cName, cAttributes.value(QStringLiteral("type")).toString(), helpOf(rsComment, cName),
                cAttributes.value(QStringLiteral("direction")) == QLatin1String("out")};
        rcXml.skipCurrentElement();
    }
    return sMember;
}

QString typeName(const QString& rcType)
{
    static const struct {
        const char* pszType;
        const char* pszName;
    } asNames[] = {
        {"i",  "int"         },
        {"u",  "unsigned int"},
        {"b",  "bool"        },
        {"s",  "string"      },
        {"av", "list of int" },
        {"ai", "array of int"},
    };
    for (const auto& rsName : asNames)
        if (rcType == QLatin1String(rsName.pszType))
            return QLatin1String(rsName.pszName);
    return rcType;
}

/// Something sensible for an example.
QString exampleValue(const SArgument& rsArgument)
{
    static const struct {
        const char* pszArgument;
        const char* pszValue;
    } asValues[] = {
        {"width",            "360"            },
        {"height",           "288"            },
        {"x",                "340"            },
        {"y",                "270"            },
        {"xpos",             "20"             },
        {"ypos",             "12"             },
        {"id",               "102"            },
        {"foreground_color", "12"             },
        {"background_color", "5"              },
        {"display_duration", "5"              },
        {"text",             "\"Manhole 17\"" },
        {"locale_code",      "ru_RU"          },
        {"hardware_name",    "fpga"           },
        {"sender",           "1"              },
        {"minutes",          "12"             },
        {"seconds",          "30"             },
        {"hours",            "0"              },
        {"frames",           "0"              },
        {"name",             "Sans"           },
        {"filename",         "/tmp/inspection"},
        {"filePath",         "/tmp/logo.png"  },
    };
    for (const auto& rsValue : asValues)
        if (rsArgument.cName == QLatin1String(rsValue.pszArgument))
            return QLatin1String(rsValue.pszValue);
    if (rsArgument.cType == QLatin1String("b"))
        return QStringLiteral("true");
    return rsArgument.cType == QLatin1String("s") ? QStringLiteral("\"\"") : QStringLiteral("1");
}

QString argumentList(const SMember& rsMember, bool bOut)
{
    QStringList cList;
    for (const SArgument& rsArgument : rsMember.cArguments)
        if (rsArgument.bOut == bOut)
            cList << rsArgument.cName + QLatin1String(": ") + typeName(rsArgument.cType);
    return cList.join(QLatin1String(", "));
}

QString example(const QString& rcPath, const QString& rcInterface, const SMember& rsMember)
{
    QString cTypes;
    QString cValues;
    for (const SArgument& rsArgument : rsMember.cArguments) {
        if (rsArgument.bOut)
            continue;
        cTypes += rsArgument.cType;
        cValues += QLatin1Char(' ') + exampleValue(rsArgument);
    }
    const QString cCall =
        QStringLiteral("busctl call velmar.haldend %1 %2 %3").arg(rcPath, rcInterface, rsMember.cName);
    return cTypes.isEmpty() ? cCall : cCall + QLatin1Char(' ') + cTypes + cValues;
}

QString memberText(const QString& rcPath, const QString& rcInterface, const SMember& rsMember)
{
    const QString cOut = argumentList(rsMember, true);
    QString cText = QStringLiteral("\n### %1\n\n`").arg(rsMember.cName);
    if (rsMember.bSignal)
        cText += QStringLiteral("%1(%2)`: signal\n").arg(rsMember.cName, cOut);
    else
        cText += QStringLiteral("%1(%2)%3`%4\n")
                     .arg(rsMember.cName, argumentList(rsMember, false),
                          cOut.isEmpty() ? QString() : QStringLiteral(" → ") + cOut,
                          rsMember.bNoReply ? QStringLiteral(": no reply") : QString());
    for (const QString& rcParagraph : rsMember.cParagraphs)
        cText += QLatin1Char('\n') + rcParagraph;
    QString cArguments;
    for (const SArgument& rsArgument : rsMember.cArguments)
        if (!rsArgument.cHelp.isEmpty())
            cArguments += QStringLiteral("- `%1`: %2\n").arg(rsArgument.cName, rsArgument.cHelp);
    if (!cArguments.isEmpty())
        cText += QLatin1Char('\n') + cArguments;
    if (!rsMember.bSignal)
        cText += QStringLiteral("\n    %1\n").arg(example(rcPath, rcInterface, rsMember));
    return cText;
}

/// The Markdown of one file; an error message in rcError if it can't be read.
QString interfaceText(const QString& rcFile, QString& rcError)
{
    QFile cFile(rcFile);
    if (!cFile.open(QIODevice::ReadOnly)) {
        rcError = rcFile + QLatin1String(": ") + cFile.errorString();
        return {};
    }
    QXmlStreamReader cXml(&cFile);
    QString cPath;
    QString cInterface;
    QString cText;
    SComment sComment;
    while (!cXml.atEnd()) {
        cXml.readNext();
        if (cXml.isComment())
            sComment = parsedComment(cXml.text().toString());
        if (!cXml.isStartElement())
            continue;
        const QString cName = cXml.attributes().value(QStringLiteral("name")).toString();
        if (cXml.name() == QLatin1String("node")) {
            cPath = cName;
        } else if (cXml.name() == QLatin1String("interface")) {
            cInterface = cName;
            cText = QStringLiteral("\n## %1: %2\n\n%3")
                        .arg(cPath, cInterface, sComment.cParagraphs.join(QLatin1Char('\n')));
        } else {
            cText += memberText(cPath, cInterface, parsedMember(cXml, sComment));
        }
    }
    if (cXml.hasError())
        rcError = QStringLiteral("%1:%2: %3").arg(rcFile).arg(cXml.lineNumber()).arg(cXml.errorString());
    return cText;
}

QByteArray contents(const QString& rcFile)
{
    QFile cFile(rcFile);
    return cFile.open(QIODevice::ReadOnly) ? cFile.readAll() : QByteArray();
}

int fail(const QString& rcMessage)
{
    QTextStream(stderr) << rcMessage << '\n';
    return 1;
}

int refresh(const QString& rcFile, const QByteArray& rcWanted)
{
    QFile cFile(rcFile);
    const bool bWritten =
        cFile.open(QIODevice::WriteOnly) && cFile.write(rcWanted) == rcWanted.size() && cFile.flush();
    return bWritten ? 0 : fail(rcFile + QLatin1String(": ") + cFile.errorString());
}

} // namespace

int main(int argc, char** argv)
{
    QStringList cArguments;
    for (int i = 1; i < argc; ++i)
        cArguments << QString::fromLocal8Bit(argv[i]);
    const QString cOption = cArguments.value(0);
    const bool bCheck = cOption == QLatin1String("--check");
    if (cArguments.size() < 3 || (!bCheck && cOption != QLatin1String("--refresh"))) {
        fail(QStringLiteral("usage: interfaces_as_markdown --check|--refresh DOCUMENT XML..."));
        return 2;
    }
    QString cText = QLatin1String(TITLE);
    for (const QString& rcXml : cArguments.mid(2)) {
        QString cError;
        cText += interfaceText(rcXml, cError);
        if (!cError.isEmpty())
            return fail(cError);
    }
    const QByteArray cWanted = cText.toUtf8();
    if (!bCheck)
        return refresh(cArguments[1], cWanted);
    if (contents(cArguments[1]) == cWanted)
        return 0;
    return fail(
        QStringLiteral("%1: not what the interface files say; bring it up to date with\n    %2 --refresh %3")
            .arg(cArguments[1], QString::fromLocal8Bit(argv[0]), cArguments.mid(1).join(QLatin1Char(' '))));
}
