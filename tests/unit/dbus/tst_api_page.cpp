/* SPDX-License-Identifier: MIT */
/* The rendered docs/dbus-api.md against the interface files. */
#include "overlay/UnsupportedOperations.h"
#include "tests/support/CChildProcess.h"

#include <QFile>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QtTest>

namespace
{

/// A method or a signal of an interface file.
struct SMember {
    QString cPath;
    QString cInterface;
    QString cName;
    bool bSignal = false;
    QStringList cArguments;
    QHash<QString, QString> cTexts; ///< of the comment, by argument, white space simplified
};

/// The parts of the page under a heading.
struct SSection {
    QStringList cParagraphs;
    QList<QStringList> cLists;
    QStringList cCode;
};

// The texts of a comment: those after "@name:", up to the next of them, an empty line, or the end.
QHash<QString, QString> textsOf(const QString& rcComment)
{
    static const QRegularExpression ARGUMENT(QStringLiteral("@(\\w+):(.*?)(?=\\n\\s*@|\\n\\s*\\n|\\s*$)"),
                                             QRegularExpression::DotMatchesEverythingOption);
    QHash<QString, QString> cTexts;
    for (auto cMatches = ARGUMENT.globalMatch(rcComment); cMatches.hasNext();) {
        const QRegularExpressionMatch cMatch = cMatches.next();
        cTexts.insert(cMatch.captured(1), cMatch.captured(2).simplified());
    }
    return cTexts;
}

void readMembers(const QString& rcFile, QList<SMember>& rcMembers)
{
    QFile cFile(rcFile);
    QVERIFY2(cFile.open(QIODevice::ReadOnly), qPrintable(rcFile));
    QXmlStreamReader cXml(&cFile);
    SMember sMember;
    while (!cXml.atEnd()) {
        cXml.readNext();
        const QString cName = cXml.attributes().value(QStringLiteral("name")).toString();
        if (cXml.isComment()) {
            sMember.cTexts = textsOf(cXml.text().toString());
        } else if (cXml.isStartElement() && cXml.name() == QLatin1String("node")) {
            sMember.cPath = cName;
        } else if (cXml.isStartElement() && cXml.name() == QLatin1String("interface")) {
            sMember.cInterface = cName;
        } else if (cXml.isStartElement() && cXml.name() == QLatin1String("arg")) {
            rcMembers.last().cArguments << cName;
        } else if (cXml.isStartElement() && cXml.name() != QLatin1String("annotation")) {
            sMember.cName = cName;
            sMember.bSignal = cXml.name() == QLatin1String("signal");
            rcMembers << sMember;
            sMember.cTexts.clear();
        }
    }
    QVERIFY2(!cXml.hasError(), qPrintable(cXml.errorString()));
}

// The text of the element that the reader stands at, lines joined by blanks; code by its text alone.
QString textOf(QXmlStreamReader& rcXml)
{
    QString cText;
    for (int iDepth = 1; iDepth > 0 && !rcXml.atEnd();) {
        rcXml.readNext();
        if (rcXml.isStartElement())
            ++iDepth;
        else if (rcXml.isEndElement())
            --iDepth;
        else if (rcXml.isCharacters() && !rcXml.isWhitespace())
            cText += rcXml.text();
        if (rcXml.isStartElement() && rcXml.name() == QLatin1String("softbreak"))
            cText += QLatin1Char('\n');
    }
    return cText;
}

// The page in cmark's XML, by its headings.
QHash<QString, SSection> sectionsOf(const QByteArray& rcPage)
{
    QHash<QString, SSection> cSections;
    QString cHeading;
    QXmlStreamReader cXml(rcPage);
    while (!cXml.atEnd()) {
        if (cXml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (cXml.name() == QLatin1String("heading"))
            cHeading = textOf(cXml);
        else if (cXml.name() == QLatin1String("list"))
            cSections[cHeading].cLists << QStringList();
        else if (cXml.name() == QLatin1String("item"))
            cSections[cHeading].cLists.last() << textOf(cXml).simplified();
        else if (cXml.name() == QLatin1String("code_block"))
            cSections[cHeading].cCode << textOf(cXml).trimmed();
        else if (cXml.name() == QLatin1String("paragraph"))
            cSections[cHeading].cParagraphs << textOf(cXml);
    }
    return cSections;
}

QStringList unsupportedMethods()
{
#define NAMED(method, passedOnTo, operation, parameters, arguments) QStringLiteral(#method),
    return {OVERLAY_FEATURES_AS_SLOTS(NAMED)};
#undef NAMED
}

} // namespace

class TestApiPage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void each_example_is_a_block_of_code();
    void nothing_else_is_a_block_of_code();
    void each_argument_is_an_item_with_its_whole_text();
    void each_argument_is_in_the_signature();
    void each_result_of_the_video_commands_is_an_item();
    void unsupported_methods_are_rows_of_one_table();

private:
    QList<SMember> described() const;

    QList<SMember> m_cMembers;
    QHash<QString, SSection> m_cSections;
};

void TestApiPage::initTestCase()
{
    for (const char* pszName : {"videodisplay", "videooverlay", "videoprocessing", "debug"})
        readMembers(
            QStringLiteral(HALDEND_INTERFACE_DIR "/velmar.haldend.%1.xml").arg(QLatin1String(pszName)),
            m_cMembers);
    CChildProcess cProcess;
    cProcess.start(QStringLiteral("cmark"),
                   {QStringLiteral("--to"), QStringLiteral("xml"), QStringLiteral(API_DOCUMENT)});
    QVERIFY2(cProcess.waitForFinished(), "There is no cmark, the Markdown renderer.");
    QCOMPARE(cProcess.exitCode(), 0);
    m_cSections = sectionsOf(cProcess.readAllStandardOutput());
}

// All but the rows of the table.
QList<SMember> TestApiPage::described() const
{
    const QStringList cUnsupported = unsupportedMethods();
    QList<SMember> cDescribed;
    for (const SMember& rsMember : m_cMembers)
        if (!cUnsupported.contains(rsMember.cName))
            cDescribed << rsMember;
    return cDescribed;
}

void TestApiPage::each_example_is_a_block_of_code()
{
    for (const SMember& rsMember : described()) {
        const QStringList cCode = m_cSections[rsMember.cName].cCode;
        QVERIFY2(cCode.size() == (rsMember.bSignal ? 0 : 1), qPrintable(rsMember.cName));
        const QString cCall = QStringLiteral("busctl call velmar.haldend %1 %2 %3")
                                  .arg(rsMember.cPath, rsMember.cInterface, rsMember.cName);
        if (!rsMember.bSignal)
            QVERIFY2(cCode.first().startsWith(cCall), qPrintable(cCode.first()));
    }
}

void TestApiPage::nothing_else_is_a_block_of_code()
{
    int iExamples = 1; // that of the table
    for (const SMember& rsMember : described())
        iExamples += rsMember.bSignal ? 0 : 1;
    int iBlocks = 0;
    for (const SSection& rsSection : qAsConst(m_cSections))
        iBlocks += rsSection.cCode.size();
    QCOMPARE(iBlocks, iExamples);
}

void TestApiPage::each_argument_is_an_item_with_its_whole_text()
{
    for (const SMember& rsMember : described()) {
        const QList<QStringList> cLists = m_cSections[rsMember.cName].cLists;
        QVERIFY2(cLists.size() == (rsMember.cArguments.isEmpty() ? 0 : 1), qPrintable(rsMember.cName));
        if (cLists.isEmpty())
            continue;
        QVERIFY2(cLists.first().size() == rsMember.cArguments.size(), qPrintable(rsMember.cName));
        for (int i = 0; i < rsMember.cArguments.size(); ++i) {
            const QString cArgument = rsMember.cArguments[i];
            const QString cItem = cLists.first()[i];
            QVERIFY2(rsMember.cTexts.contains(cArgument), qPrintable(rsMember.cName));
            QVERIFY2(cItem.startsWith(cArgument) && cItem.endsWith(rsMember.cTexts[cArgument]),
                     qPrintable(rsMember.cName + QLatin1String(": ") + cItem));
        }
    }
}

// It is the first thing under the heading.
void TestApiPage::each_argument_is_in_the_signature()
{
    for (const SMember& rsMember : described()) {
        const QString cSignature = m_cSections[rsMember.cName].cParagraphs.value(0);
        QVERIFY2(cSignature.startsWith(rsMember.cName + QLatin1Char('(')), qPrintable(cSignature));
        for (const QString& rcArgument : rsMember.cArguments)
            QVERIFY2(cSignature.contains(QRegularExpression(QStringLiteral("\\b%1\\b").arg(rcArgument))),
                     qPrintable(cSignature));
    }
}

void TestApiPage::each_result_of_the_video_commands_is_an_item()
{
    const QList<QStringList> cLists =
        m_cSections[QStringLiteral("/videoprocessing: velmar.haldend.videoprocessing")].cLists;
    QCOMPARE(cLists.size(), 1);
    QCOMPARE(cLists.first().size(), 7);
    for (int i = 0; i < 7; ++i)
        QVERIFY2(cLists.first()[i].startsWith(QStringLiteral("%1: ").arg(i)), qPrintable(cLists.first()[i]));
}

void TestApiPage::unsupported_methods_are_rows_of_one_table()
{
    QStringList cRows;
    for (const SSection& rsSection : qAsConst(m_cSections))
        for (const QString& rcParagraph : rsSection.cParagraphs)
            if (rcParagraph.contains(QLatin1String("| toggle_crosshair_visibility")))
                cRows = rcParagraph.split(QLatin1Char('\n'));
    QStringList cMethods = unsupportedMethods();
    QCOMPARE(cRows.size(), 2 + cMethods.size());
    QStringList cNames;
    for (const QString& rcRow : cRows.mid(2))
        cNames << rcRow.section(QLatin1Char(' '), 1, 1).section(QLatin1Char('('), 0, 0);
    cNames.sort();
    cMethods.sort();
    QCOMPARE(cNames, cMethods);
}

QTEST_GUILESS_MAIN(TestApiPage)

#include "tst_api_page.moc"
