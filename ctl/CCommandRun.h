/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_CCOMMANDRUN_H
#define HALDEND_CTL_CCOMMANDRUN_H

#include "ctl/CArguments.h"
#include "ctl/CSession.h"
#include "ctl/ExitStatus.h"

#include <QJsonObject>
#include <QStringList>

#include <memory>
#include <optional>

class CFailure;

/// One command being carried out, and what it has to say.
class CCommandRun : public std::enable_shared_from_this<CCommandRun>
{
public:
    CCommandRun(CSession& rcSession, const SCommand* psCommand, int iLine);

    const CArguments& arguments() const { return *m_cArguments; }
    void take(const CArguments& rcArguments) { m_cArguments.emplace(rcArguments); }

    CBus& bus() { return m_rcSession.bus(); }
    CSession& session() { return m_rcSession; }

    /// Prints an answer, with --quiet too.
    void tell(const QString& rcText);

    /// Prints a confirmation, unless --quiet is set.
    void say(const QString& rcText);

    /// Prints a warning on standard error: the command works, but perhaps not as meant.
    void warn(const QString& rcText);

    /// A member of the answer's JSON object.
    void set(const char* pszName, const QJsonValue& rcValue);

    /// A line of an answer that has no end: text, or an object.
    void stream(const QString& rcText, const QJsonObject& rcObject);

    /// The status, where it isn't thrown; with no line on standard error.
    void setStatus(EExitStatus eStatus) { m_eStatus = eStatus; }
    int status() const { return m_eStatus; }

    /// Leaves the JSON object out: others have told it all.
    void setSilent() { m_bStreamed = true; }

    /// Waits for a call and for all commands before this one.
    QVariantList wait(const SAsked& rsAsked);
    int number(const SAsked& rsAsked) { return wait(rsAsked).value(0).toInt(); }
    bool flag(const SAsked& rsAsked) { return wait(rsAsked).value(0).toBool(); }
    QString text(const SAsked& rsAsked) { return wait(rsAsked).value(0).toString(); }
    QList<int> numbers(const SAsked& rsAsked) { return numbersOf(wait(rsAsked).value(0)); }

    /// Lets the next command begin. fnFinish looks at the answers when they are there; without it there is nothing to
    /// look at but errors.
    void whenAnswered(const QList<SAsked>& rcAsked, CSession::CFinish fnFinish = {});

    bool isOnItsWay() const { return m_bOnItsWay; }

    /// Takes note of the failure, and tells it.
    void fail(const CFailure& rcFailure);

    /// Prints what is left to print.
    void finish();

private:
    QString name() const;
    QString place() const;

    CSession& m_rcSession;
    const SCommand* m_psCommand; ///< null if there is no such command
    int m_iLine;
    std::optional<CArguments> m_cArguments;
    QJsonObject m_cObject;
    QStringList m_cWarnings;
    EExitStatus m_eStatus = eDone;
    bool m_bOnItsWay = false;
    bool m_bStreamed = false;
};

#endif
