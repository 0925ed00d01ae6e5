/* SPDX-License-Identifier: MIT */
/* haldenctl check-registers: register files without the daemon. */
#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/CRegisterFile.h"
#include "ctl/CommandHandlers.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonArray>

#include <optional>

namespace
{

const QString USUAL_FOLDER = QStringLiteral("/usr/etc/cnfs");

/// The file of every chip in a folder; another path as it is.
QStringList filesOf(const QString& rcPath)
{
    if (!QFileInfo(rcPath).isDir())
        return {rcPath};
    QStringList cFiles;
    for (const QString& rcChip : CRegisterFile::chipWords())
        cFiles << QDir(rcPath).filePath(rcChip + QStringLiteral(".cnf"));
    return cFiles;
}

QString valueText(const std::optional<std::uint32_t>& rcValue)
{
    return rcValue ? QStringLiteral("%1 (0x%2)").arg(*rcValue).arg(*rcValue, 0, 16) : QStringLiteral("-");
}

QJsonValue valueJson(const std::optional<std::uint32_t>& rcValue)
{
    return rcValue ? QJsonValue(static_cast<double>(*rcValue)) : QJsonValue(QJsonValue::Null);
}

std::optional<std::uint32_t> valueIn(const QMap<QString, std::uint32_t>& rcValues, const QString& rcName)
{
    const auto it = rcValues.constFind(rcName);
    return it != rcValues.constEnd() ? std::optional<std::uint32_t>(*it) : std::nullopt;
}

void compare(CCommandRun& rcRun, const QString& rcFirst, const QString& rcSecond, QJsonArray& rcDifferences)
{
    const CRegisterFile cFirst(rcFirst);
    const CRegisterFile cSecond(rcSecond);
    for (const CRegisterFile* pcFile : {&cFirst, &cSecond})
        if (!pcFile->isReadable())
            throw CFailure(
                eFailed,
                QStringLiteral("%1: can't be read; see haldenctl check-registers %1").arg(pcFile->path()));
    const QMap<QString, std::uint32_t> cValues = cFirst.values();
    const QMap<QString, std::uint32_t> cOthers = cSecond.values();
    QStringList cNames = cValues.keys() + cOthers.keys();
    cNames.sort();
    cNames.removeDuplicates();
    for (const QString& rcName : cNames) {
        const auto cValue = valueIn(cValues, rcName);
        const auto cOther = valueIn(cOthers, rcName);
        if (cValue == cOther)
            continue;
        rcRun.tell(QStringLiteral("%1 %2 %3 %4")
                       .arg(cFirst.chip().leftJustified(8), rcName.leftJustified(20),
                            valueText(cValue).leftJustified(24), valueText(cOther)));
        rcDifferences << QJsonObject{
            {QStringLiteral("chip"),  cFirst.chip()    },
            {QStringLiteral("field"), rcName           },
            {QStringLiteral("a"),     valueJson(cValue)},
            {QStringLiteral("b"),     valueJson(cOther)}
        };
    }
}

void showDifferences(CCommandRun& rcRun, const QStringList& rcPaths)
{
    if (rcPaths.size() != 2)
        throw CFailure(eWrongUse, QStringLiteral("--diff takes two folders or two files"));
    const QStringList cFirst = filesOf(rcPaths[0]);
    const QStringList cSecond = filesOf(rcPaths[1]);
    if (cFirst.size() != cSecond.size())
        throw CFailure(eWrongUse, QStringLiteral("--diff takes two folders or two files, not one of each"));
    QJsonArray cDifferences;
    for (int i = 0; i < cFirst.size(); ++i)
        compare(rcRun, cFirst[i], cSecond[i], cDifferences);
    if (cDifferences.isEmpty())
        rcRun.say(QStringLiteral("no difference"));
    rcRun.set("differences", cDifferences);
}

} // namespace

void runCheckRegisters(CCommandRun& rcRun)
{
    QStringList cPaths = rcRun.arguments().rest();
    if (rcRun.arguments().has("diff")) {
        showDifferences(rcRun, cPaths);
        return;
    }
    if (cPaths.isEmpty())
        cPaths << USUAL_FOLDER;
    QJsonArray cFindings;
    for (const QString& rcPath : cPaths)
        for (const QString& rcFile : filesOf(rcPath)) {
            const CRegisterFile cFile(rcFile);
            for (const CRegisterFile::SFinding& rsFinding : cFile.findings()) {
                const QString cPlace = rsFinding.iLine != 0
                                           ? QStringLiteral("%1:%2").arg(rsFinding.cFile).arg(rsFinding.iLine)
                                           : rsFinding.cFile;
                rcRun.tell(QStringLiteral("%1: %2").arg(cPlace, rsFinding.cText));
                cFindings << QJsonObject{
                    {QStringLiteral("file"), rsFinding.cFile},
                    {QStringLiteral("line"), rsFinding.iLine},
                    {QStringLiteral("text"), rsFinding.cText}
                };
            }
        }
    rcRun.set("findings", cFindings);
    if (cFindings.isEmpty())
        rcRun.say(QStringLiteral("nothing to find fault with"));
    else
        rcRun.setStatus(eFailed);
}
