/* SPDX-License-Identifier: MIT */
#include "ctl/CSession.h"

#include "ctl/CArguments.h"
#include "ctl/CCommandRun.h"
#include "ctl/CFailure.h"
#include "ctl/CommandTable.h"
#include "ctl/Suggestion.h"

namespace
{

/// So many commands may be on their way.
const std::size_t STEPS_MAX = 128;

QString unknownCommand(const QStringList& rcWords)
{
    QStringList cNames;
    QStringList cFollowing;
    for (const SCommand& rsCommand : commandTable()) {
        const QString cName = QString::fromLatin1(rsCommand.pszWords);
        cNames << cName << cName.section(QLatin1Char(' '), 0, 0);
        if (cName.startsWith(rcWords.value(0) + QLatin1Char(' ')))
            cFollowing << cName.section(QLatin1Char(' '), 1);
    }
    if (!cFollowing.isEmpty())
        return QStringLiteral("%1 takes one of: %2").arg(rcWords[0], cFollowing.join(QStringLiteral(", ")));
    const QString cSaid = rcWords.mid(0, 2).join(QLatin1Char(' '));
    QString cNearest = nearestName(cSaid, cNames);
    if (cNearest.isEmpty())
        cNearest = nearestName(rcWords.value(0), cNames);
    return QStringLiteral("there is no command %1%2")
        .arg(cSaid, cNearest.isEmpty() ? QStringLiteral("; see haldenctl --help")
                                       : QStringLiteral(", did you mean %1?").arg(cNearest));
}

/// These options hold for all commands of a file.
void refuseSettings(const CArguments& rcArguments)
{
    for (const char* pszName : {"host", "bus", "json", "no-color", "quiet"})
        if (rcArguments.has(pszName))
            throw CFailure(
                eWrongUse,
                QStringLiteral("--%1 has to stand on the command line").arg(QLatin1String(pszName)));
}

} // namespace

CSession::CSession(const SSettings& rsSettings) : m_sSettings(rsSettings), m_cOutput(rsSettings.sStyle) {}

CSession::~CSession() = default;

CBus& CSession::bus()
{
    if (!m_pcBus)
        m_pcBus = std::make_unique<CBus>(m_sSettings.sPlace);
    return *m_pcBus;
}

void CSession::apply(const CArguments& rcArguments)
{
    if (rcArguments.has("host"))
        m_sSettings.sPlace.cHost = rcArguments.text("host");
    if (rcArguments.has("bus"))
        m_sSettings.sPlace.cAddress = rcArguments.text("bus");
    m_sSettings.sStyle.bJson = m_sSettings.sStyle.bJson || rcArguments.has("json");
    m_sSettings.sStyle.bQuiet = m_sSettings.sStyle.bQuiet || rcArguments.has("quiet");
    m_sSettings.sStyle.bColor = m_sSettings.sStyle.bColor && !rcArguments.has("no-color");
    m_sSettings.bForce = m_sSettings.bForce || rcArguments.has("force");
    m_cOutput = COutput(m_sSettings.sStyle);
}

void CSession::count(int iStatus)
{
    if (m_iStatus == eDone)
        m_iStatus = iStatus;
}

static void report(CCommandRun& rcRun, const std::function<void()>& rcWork)
{
    try {
        rcWork();
    } catch (const CFailure& rcFailure) {
        rcRun.fail(rcFailure);
    }
}

void CSession::begin(CCommandRun& rcRun, const SCommand* psCommand, const QStringList& rcWords, int iWords,
                     int iLine)
{
    if (psCommand == nullptr)
        throw CFailure(eWrongUse, unknownCommand(rcWords));
    const CArguments cArguments(*psCommand, rcWords.mid(iWords), m_sSettings.bForce);
    if (iLine == 0)
        apply(cArguments);
    else
        refuseSettings(cArguments);
    rcRun.take(cArguments);
    psCommand->pfnRun(rcRun);
}

void CSession::run(const QStringList& rcWords, int iLine)
{
    int iWords = 0;
    const SCommand* psCommand = findCommand(rcWords, iWords);
    const auto pcRun = std::make_shared<CCommandRun>(*this, psCommand, iLine);
    report(*pcRun, [&] {
        try {
            begin(*pcRun, psCommand, rcWords, iWords, iLine);
        } catch (const CFailure&) {
            // The commands before it report first.
            drain();
            throw;
        }
    });
    if (pcRun->isOnItsWay())
        return;
    drain();
    pcRun->finish();
    count(pcRun->status());
}

void CSession::later(const std::shared_ptr<CCommandRun>& rpcRun, const QList<SAsked>& rcAsked,
                     CFinish fnFinish)
{
    m_cSteps.push_back({rpcRun, rcAsked, std::move(fnFinish)});
    if (m_cSteps.size() > STEPS_MAX)
        finishFirst();
}

void CSession::finishFirst()
{
    const SStep sStep = m_cSteps.front();
    m_cSteps.pop_front();
    report(*sStep.pcRun, [&] {
        QList<QVariantList> cAnswers;
        for (const SAsked& rsAsked : sStep.cAsked)
            cAnswers << bus().wait(rsAsked);
        sStep.fnFinish(*sStep.pcRun, cAnswers);
    });
    sStep.pcRun->finish();
    count(sStep.pcRun->status());
}

void CSession::drain()
{
    while (!m_cSteps.empty())
        finishFirst();
}

int CSession::finish()
{
    drain();
    return m_iStatus;
}
