/* SPDX-License-Identifier: MIT */
/* Prints the bus interfaces as Markdown, from their XML files and the comments in them: docs/dbus-api.md.
 * Checks that page, and brings it up to date.
 *
 * The first line of a comment names the interface, the method or the signal that follows it. A line "@name:
 * text" describes an argument; the text goes on to the next such line or an empty one. The rest is Markdown.
 *
 * Only the methods of overlay/UnsupportedOperations.h go without a comment each. They become a table; a
 * comment in front of the first of them is its heading and introduction. They have to agree with that list.
 */
#include "overlay/UnsupportedOperations.h"

#include <QFile>
#include <QMap>
#include <QString>
#include <QStringList>
#include <QTextStream>
#include <QVector>
#include <QXmlStreamReader>

#include <cstdio>

namespace
{

const char TITLE[] = R"(# The bus interfaces

The daemon owns the name `velmar.haldend` on the system bus. It has one object for each interface; the last part of the
interface's name is the object's path. There are no properties. This page is made from the files `dbus/*.xml`, from
which clients can generate code.

## How to read this page

In `get_text_position(i text_handle) → av xye` the arguments are in parentheses, and the result is behind the arrow. The
letters are D-Bus types:

| Type | Meaning | In Qt |
| --- | --- | --- |
| `i` | signed integer of 32 bits | `int` |
| `b` | truth value | `bool` |
| `s` | text | `QString` |
| `av` | array of variants; the result's description says what they hold | `QVariantList` |

**No reply**: Call it with the no-reply flag. Without the flag (`busctl`'s default) you get an empty reply once the call
is done. The daemon carries out calls in the order in which you send them.

The examples can be used as they stand. With `./run` source the file `env` that it names, which sets the bus. The
line below an example is the output of `busctl`: the type of the answer, then its value. The values are those of a daemon
with a window of 360 × 288 pixels, one visible text, and a codec service that confirms every command. The text has the
handle 1, the id 102, and says "Manhole 17".

### Arguments of other types

The daemon refuses a call whose arguments have other types than the method's. It answers with the error
`org.freedesktop.DBus.Error.UnknownMethod`, and does nothing.

A Qt client doesn't see the error of a method that sends no reply: `QDBusInterface::call()` doesn't wait for one, so the
call seems to succeed. `QDBusInterface::call(QDBus::Block, ...)` waits, and returns the error. `busctl monitor` shows the call
with the types that it has, and the error.

### Texts that have to be drawn again

Two calls leave visible texts wrong on the screen:

- `reload_hardware_config` empties and hides the overlay, and loads the first glyph set. If you use another set, call
  `adjust_character_set_to_locale`. Then call `show_overlay` and `set_osd_transparency`.
- `adjust_character_set_to_locale` shows the new set's glyphs for the old codes. Call `set_osd_transparency`.

`set_osd_transparency` has one effect on this board: it draws all visible texts again.
)";

struct SArgument {
    QString cName;
    QString cType;
    QString cHelp;
    bool bOut = false;
};

/// A comment, with the name in its first line.
struct SComment {
    QString cName;
    QMap<QString, QString> cArguments; ///< texts by name, lines joined
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

/// A method that the board accepts and doesn't support, with its parameters, such as "(int x, int y)".
struct SUnsupported {
    const char* pszMethod;
    const char* pszParameters;
};

#define LISTED(method, passedOnTo, operation, parameters, arguments) {#method, #parameters},
const SUnsupported UNSUPPORTED[] = {OVERLAY_FEATURES_AS_SLOTS(LISTED)};
#undef LISTED

const SUnsupported* unsupported(const QString& rcMethod)
{
    for (const SUnsupported& rsUnsupported : UNSUPPORTED)
        if (rcMethod == QLatin1String(rsUnsupported.pszMethod))
            return &rsUnsupported;
    return nullptr;
}

int indentation(const QString& rcLine)
{
    int iColumn = 0;
    while (iColumn < rcLine.size() && rcLine[iColumn] == QLatin1Char(' '))
        ++iColumn;
    return iColumn;
}

SComment parsedComment(const QString& rcText)
{
    SComment sComment;
    QString cArgument; // the one that the text belongs to
    QString cParagraph;
    int iIndentation = 0;
    for (const QString& rcRaw : rcText.split(QLatin1Char('\n'))) {
        const QString cLine = rcRaw.trimmed();
        if (cLine.isEmpty()) {
            sComment.cParagraphs << cParagraph;
            cParagraph.clear();
            cArgument.clear();
        } else if (sComment.cName.isEmpty()) {
            sComment.cName = cLine.chopped(cLine.endsWith(QLatin1Char(':')) ? 1 : 0);
            iIndentation = indentation(rcRaw);
        } else if (cLine.startsWith(QLatin1Char('@'))) {
            const int iColon = cLine.indexOf(QLatin1Char(':'));
            cArgument = cLine.mid(1, iColon - 1);
            sComment.cArguments.insert(cArgument, cLine.mid(iColon + 1).trimmed());
        } else if (!cArgument.isEmpty()) {
            sComment.cArguments[cArgument] += QLatin1Char(' ') + cLine;
        } else {
            // Items of lists keep their indentation.
            cParagraph += rcRaw.mid(qMin(iIndentation, indentation(rcRaw))) + QLatin1Char('\n');
        }
    }
    sComment.cParagraphs << cParagraph;
    sComment.cParagraphs.removeAll(QString());
    return sComment;
}

SMember parsedMember(QXmlStreamReader& rcXml)
{
    SMember sMember;
    sMember.bSignal = rcXml.name() == QLatin1String("signal");
    sMember.cName = rcXml.attributes().value(QStringLiteral("name")).toString();
    while (rcXml.readNextStartElement()) {
        const QXmlStreamAttributes cAttributes = rcXml.attributes();
        const QString cName = cAttributes.value(QStringLiteral("name")).toString();
        SArgument sArgument;
        sArgument.cName = cName;
        sArgument.cType = cAttributes.value(QStringLiteral("type")).toString();
        // A signal's arguments go out, with or without a direction in the file.
        sArgument.bOut =
            sMember.bSignal || cAttributes.value(QStringLiteral("direction")) == QLatin1String("out");
        if (rcXml.name() == QLatin1String("annotation"))
            sMember.bNoReply = sMember.bNoReply || cName.endsWith(QLatin1String(".NoReply"));
        else
            sMember.cArguments << sArgument;
        rcXml.skipCurrentElement();
    }
    return sMember;
}

/// Adds the texts of the comment to the member. Each argument needs a text, and each text an argument.
void document(SMember& rsMember, SComment sComment, QXmlStreamReader& rcXml)
{
    if (sComment.cName != rsMember.cName)
        rcXml.raiseError(QStringLiteral("no documentation in front of ") + rsMember.cName);
    rsMember.cParagraphs = sComment.cParagraphs;
    for (SArgument& rsArgument : rsMember.cArguments) {
        rsArgument.cHelp = sComment.cArguments.take(rsArgument.cName);
        if (rsArgument.cHelp.isEmpty())
            rcXml.raiseError(QStringLiteral("no text for %1 of %2").arg(rsArgument.cName, rsMember.cName));
    }
    if (!sComment.cArguments.isEmpty())
        rcXml.raiseError(
            QStringLiteral("%1 has no argument %2").arg(rsMember.cName, sComment.cArguments.firstKey()));
}

/// A method's parameters as its slot has them: "(int x, int y)".
QString slotParameters(const SMember& rsMember)
{
    static const QMap<QString, QString> TYPES = {
        {QStringLiteral("i"), QStringLiteral("int")    },
        {QStringLiteral("b"), QStringLiteral("bool")   },
        {QStringLiteral("s"), QStringLiteral("QString")}
    };
    QStringList cList;
    for (const SArgument& rsArgument : rsMember.cArguments)
        cList << TYPES.value(rsArgument.cType, rsArgument.cType) + QLatin1Char(' ') + rsArgument.cName;
    return QLatin1Char('(') + cList.join(QLatin1String(", ")) + QLatin1Char(')');
}

/// A sensible value for an example.
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

/// The values in busctl's output, behind the type: those of the table, otherwise 0 or true.
QString sampleValue(const QString& rcMethod, const QString& rcType)
{
    static const struct {
        const char* pszMethod;
        const char* pszValue;
    } asValues[] = {
        {"get_displayed_video_width",             "360"                    },
        {"get_displayed_video_height",            "288"                    },
        {"get_max_text_line_width",               "53"                     },
        {"get_max_text_line_count",               "26"                     },
        {"create_text",                           "2"                      },
        {"get_text_handle_by_id",                 "1"                      },
        {"get_text_id",                           "102"                    },
        {"get_text_string",                       "\"Manhole 17\""         },
        {"get_text_position",                     "3 i 20 i 12 i 30"       },
        {"get_text_format",                       "1"                      },
        {"get_text_length",                       "30"                     },
        {"get_text_colors",                       "2 i 12 i 5"             },
        {"get_videocounter",                      "5 i 1 i 0 i 12 i 30 i 0"},
        {"query_video_recording_time",            "3 u 0 u 0 u 0"          },
        {"get_video_recording_average_data_rate", "22"                     },
        {"clear_video_image",                     "2"                      },
        {"is_video_input_available",              "false"                  },
    };
    for (const auto& rsValue : asValues)
        if (rcMethod == QLatin1String(rsValue.pszMethod))
            return QLatin1String(rsValue.pszValue);
    return rcType == QLatin1String("b") ? QStringLiteral("true") : QStringLiteral("0");
}

/// A type as code. For an array of variants also their number and type, taken from the sample.
QString shownType(const QString& rcMethod, const QString& rcType)
{
    if (rcType != QLatin1String("av"))
        return QStringLiteral("`%1`").arg(rcType);
    const QStringList cSample = sampleValue(rcMethod, rcType).split(QLatin1Char(' '));
    return QStringLiteral("`av`, %1 variants that hold `%2`").arg(cSample.value(0), cSample.value(1));
}

QString argumentList(const SMember& rsMember, bool bOut)
{
    QStringList cList;
    for (const SArgument& rsArgument : rsMember.cArguments)
        if (rsArgument.bOut == bOut)
            cList << rsArgument.cType + QLatin1Char(' ') + rsArgument.cName;
    return cList.join(QLatin1String(", "));
}

QString signature(const SMember& rsMember)
{
    const QString cOut = argumentList(rsMember, true);
    if (rsMember.bSignal)
        return QStringLiteral("`%1(%2)`: signal").arg(rsMember.cName, cOut);
    return QStringLiteral("`%1(%2)%3`%4")
        .arg(rsMember.cName, argumentList(rsMember, false),
             cOut.isEmpty() ? QString() : QStringLiteral(" → ") + cOut,
             rsMember.bNoReply ? QStringLiteral(": no reply") : QString());
}

/// Method, types and values, in busctl's order.
QString exampleArguments(const SMember& rsMember)
{
    QString cTypes;
    QString cValues;
    for (const SArgument& rsArgument : rsMember.cArguments) {
        if (rsArgument.bOut)
            continue;
        cTypes += rsArgument.cType;
        cValues += QLatin1Char(' ') + exampleValue(rsArgument);
    }
    return cTypes.isEmpty() ? rsMember.cName : rsMember.cName + QLatin1Char(' ') + cTypes + cValues;
}

/// A fenced block, because an indented one would belong to the list above it.
QString example(const QString& rcPath, const QString& rcInterface, const SMember& rsMember)
{
    return QStringLiteral("\n```sh\nbusctl call velmar.haldend %1 %2 %3\n```\n")
        .arg(rcPath, rcInterface, exampleArguments(rsMember));
}

QString memberText(const QString& rcPath, const QString& rcInterface, const SMember& rsMember)
{
    QString cText = QStringLiteral("\n### %1\n\n%2\n").arg(rsMember.cName, signature(rsMember));
    for (const QString& rcParagraph : rsMember.cParagraphs)
        cText += QLatin1Char('\n') + rcParagraph;
    if (!rsMember.cArguments.isEmpty())
        cText += QLatin1Char('\n');
    QString cAnswer;
    for (const SArgument& rsArgument : rsMember.cArguments) {
        cText += QStringLiteral("- `%1` (%2): %3\n")
                     .arg(rsArgument.cName, shownType(rsMember.cName, rsArgument.cType), rsArgument.cHelp);
        if (rsArgument.bOut)
            cAnswer = rsArgument.cType + QLatin1Char(' ') + sampleValue(rsMember.cName, rsArgument.cType);
    }
    if (rsMember.bSignal)
        return cText;
    cText += example(rcPath, rcInterface, rsMember);
    return cAnswer.isEmpty() ? cText : cText + QStringLiteral("\nAnswer: `%1`\n").arg(cAnswer);
}

/// Head of the table of unsupported methods, and one of its rows.
QString tableHead(const SComment& rsComment, const QString& rcExample)
{
    return QStringLiteral("\n### %1\n\n%2%3\n| Method | For `busctl` |\n| --- | --- |\n")
        .arg(rsComment.cName, rsComment.cParagraphs.join(QLatin1Char('\n')), rcExample);
}

QString tableRow(const SMember& rsMember)
{
    return QStringLiteral("| `%1(%2)` | `%3` |\n")
        .arg(rsMember.cName, argumentList(rsMember, false), exampleArguments(rsMember));
}

/// Turns one interface file into Markdown.
class CInterfaceReader
{
public:
    /// The Markdown of the file; an error message in rcError if it can't be read or is incomplete.
    QString text(QFile& rcFile, QString& rcError);

    /// The unsupported methods in the file.
    QStringList listed() const { return m_cListed; }

private:
    void readMember();
    void addRow(const SMember& rsMember);

    QXmlStreamReader m_cXml;
    SComment m_sComment; ///< the last one, until it is used
    QString m_cPath;
    QString m_cInterface;
    QString m_cText;
    QStringList m_cListed;
};

void CInterfaceReader::addRow(const SMember& rsMember)
{
    const QString cParameters = slotParameters(rsMember);
    const QString cExpected = QLatin1String(unsupported(rsMember.cName)->pszParameters);
    if (cParameters != cExpected || !rsMember.bNoReply)
        m_cXml.raiseError(
            QStringLiteral("%1 isn't %1%2 without reply, as overlay/UnsupportedOperations.h has it")
                .arg(rsMember.cName, cExpected));
    if (m_cListed.isEmpty())
        m_cText += tableHead(m_sComment, example(m_cPath, m_cInterface, rsMember));
    else if (!m_sComment.cName.isEmpty())
        m_cXml.raiseError(QStringLiteral("a comment within the table, in front of ") + rsMember.cName);
    m_cText += tableRow(rsMember);
    m_cListed << rsMember.cName;
}

void CInterfaceReader::readMember()
{
    SMember sMember = parsedMember(m_cXml);
    if (unsupported(sMember.cName) != nullptr) {
        addRow(sMember);
    } else {
        document(sMember, m_sComment, m_cXml);
        m_cText += memberText(m_cPath, m_cInterface, sMember);
    }
    m_sComment = SComment();
}

QString CInterfaceReader::text(QFile& rcFile, QString& rcError)
{
    m_cXml.setDevice(&rcFile);
    while (!m_cXml.atEnd()) {
        m_cXml.readNext();
        if (m_cXml.isComment())
            m_sComment = parsedComment(m_cXml.text().toString());
        if (!m_cXml.isStartElement())
            continue;
        const QString cName = m_cXml.attributes().value(QStringLiteral("name")).toString();
        if (m_cXml.name() == QLatin1String("node")) {
            m_cPath = cName;
        } else if (m_cXml.name() == QLatin1String("interface")) {
            m_cInterface = cName;
            m_cText = QStringLiteral("\n## %1: %2\n\n%3")
                          .arg(m_cPath, cName, m_sComment.cParagraphs.join(QLatin1Char('\n')));
            m_sComment = SComment();
        } else {
            readMember();
        }
    }
    if (m_cXml.hasError())
        rcError = QStringLiteral("%1:%2: %3")
                      .arg(rcFile.fileName())
                      .arg(m_cXml.lineNumber())
                      .arg(m_cXml.errorString());
    return m_cText;
}

/// The page; an error message in rcError if a file can't be read or is incomplete.
QString pageText(const QStringList& rcFiles, QString& rcError)
{
    QString cText = QString::fromUtf8(TITLE);
    QStringList cListed;
    for (const QString& rcFile : rcFiles) {
        QFile cFile(rcFile);
        if (!cFile.open(QIODevice::ReadOnly)) {
            rcError = rcFile + QLatin1String(": ") + cFile.errorString();
            return {};
        }
        CInterfaceReader cReader;
        cText += cReader.text(cFile, rcError);
        if (!rcError.isEmpty())
            return {};
        cListed << cReader.listed();
    }
    for (const SUnsupported& rsUnsupported : UNSUPPORTED)
        if (!cListed.contains(QLatin1String(rsUnsupported.pszMethod)))
            rcError =
                QStringLiteral("%1 of overlay/UnsupportedOperations.h is in none of the interface files")
                    .arg(QLatin1String(rsUnsupported.pszMethod));
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
    QString cError;
    const QString cText = pageText(cArguments.mid(2), cError);
    if (!cError.isEmpty())
        return fail(cError);
    const QByteArray cWanted = cText.toUtf8();
    if (!bCheck)
        return refresh(cArguments[1], cWanted);
    if (contents(cArguments[1]) == cWanted)
        return 0;
    return fail(
        QStringLiteral("%1: not what the interface files say; bring it up to date with\n    %2 --refresh %3")
            .arg(cArguments[1], QString::fromLocal8Bit(argv[0]), cArguments.mid(1).join(QLatin1Char(' '))));
}
