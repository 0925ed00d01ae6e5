/* SPDX-License-Identifier: MIT */
/* The command table against the interface files, and the help against the table. */
#include "ctl/CommandTable.h"
#include "ctl/Help.h"
#include "ctl/Interfaces.h"

#include <QSet>
#include <QtTest>

class TestCommandTable : public QObject
{
    Q_OBJECT

private slots:
    void every_row_is_whole();
    void every_call_is_a_method();
    void the_longest_command_is_found();
    void the_help_has_everything();
};

void TestCommandTable::every_row_is_whole()
{
    QSet<QString> cNames;
    for (const SCommand& rsCommand : commandTable()) {
        const QString cName = QString::fromLatin1(rsCommand.pszWords);
        QVERIFY2(!cNames.contains(cName), rsCommand.pszWords);
        cNames << cName;
        QVERIFY2(rsCommand.pfnRun != nullptr && qstrlen(rsCommand.pszHelp) > 0, rsCommand.pszWords);
        // Behind a rest, or behind what may be missing, nothing can follow.
        const QList<const SArgument*> cArguments = argumentsOf(rsCommand);
        for (int i = 0; i + 1 < cArguments.size(); ++i)
            QVERIFY2(!cArguments[i]->bOptional && cArguments[i]->eType != eRest, rsCommand.pszWords);
    }
    QVERIFY(cNames.size() > 50);
}

void TestCommandTable::every_call_is_a_method()
{
    QSet<QString> cMethods;
    for (const QString& rcObject : objectNames())
        for (const SMember& rsMember : membersOf(rcObject))
            if (!rsMember.bSignal)
                cMethods << rcObject + QLatin1Char('.') + rsMember.cName;
    QCOMPARE(cMethods.size(), 109);
    for (const SCommand& rsCommand : commandTable())
        for (const QString& rcCall :
             QString::fromLatin1(rsCommand.pszCalls).split(QLatin1Char(' '), Qt::SkipEmptyParts))
            QVERIFY2(cMethods.contains(rcCall), qPrintable(rcCall));
}

void TestCommandTable::the_longest_command_is_found()
{
    int iWords = 0;
    QCOMPARE(findCommand({"message", "clear"}, iWords)->pszHelp, "Take away all messages");
    QCOMPARE(iWords, 2);
    QCOMPARE(findCommand({"message", "clean"}, iWords)->pszWords, "message");
    QCOMPARE(iWords, 1);
    QVERIFY(findCommand({"text"}, iWords) == nullptr);
    QVERIFY(findCommand({}, iWords) == nullptr);
}

void TestCommandTable::the_help_has_everything()
{
    const QString cHelp = helpText({});
    for (const SCommand& rsCommand : commandTable()) {
        QVERIFY2(cHelp.contains(QStringLiteral("  %1\n").arg(synopsisOf(rsCommand))), rsCommand.pszWords);
        QVERIFY2(cHelp.contains(QLatin1String(rsCommand.pszHelp)), rsCommand.pszHelp);
        const QString cOwn = helpText(QString::fromLatin1(rsCommand.pszWords).split(QLatin1Char(' ')));
        for (const SCommandOption* psOption : optionsOf(rsCommand))
            QVERIFY2(cOwn.contains(QStringLiteral("--") + QLatin1String(psOption->pszName)) &&
                         cOwn.contains(QLatin1String(psOption->pszHelp)),
                     rsCommand.pszWords);
    }
    for (const SCommandOption& rsOption : globalOptions())
        QVERIFY2(cHelp.contains(QLatin1String(rsOption.pszHelp)), rsOption.pszHelp);
    const QString cGroup = helpText({"text"});
    QVERIFY(cGroup.contains("text new STRING") && !cGroup.contains("display size"));
}

QTEST_GUILESS_MAIN(TestCommandTable)

#include "tst_CommandTable.moc"
