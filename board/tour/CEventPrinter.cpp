/* SPDX-License-Identifier: MIT */
#include "board/tour/CEventPrinter.h"

#include <QProcess>
#include <QRegularExpression>
#include <QSharedPointer>
#include <QTime>

#include <cstdio>

#include <unistd.h>

namespace
{

const char* const COLORS[] = {"", "\033[32m", "\033[31m"};
const char* const DIM = "\033[2m";
const char* const BOLD = "\033[1m";
const char* const NORMAL = "\033[0m";

} // namespace

CEventPrinter::CEventPrinter()
    : m_bColor(isatty(STDOUT_FILENO) != 0 && qEnvironmentVariableIsEmpty("NO_COLOR"))
{
}

void CEventPrinter::print(const char* pszWho, const QString& rcWhat, EKind eKind)
{
    QString cWhat = rcWhat;
    for (QChar& rcCharacter : cWhat)
        if (rcCharacter.category() == QChar::Other_Control)
            rcCharacter = QLatin1Char('?');
    const QByteArray cTime = QTime::currentTime().toString(QStringLiteral("HH:mm:ss")).toLatin1();
    if (m_bColor)
        std::printf("%s%s%s %s%-7s%s %s%s%s\n", DIM, cTime.constData(), NORMAL, BOLD, pszWho, NORMAL,
                    COLORS[eKind], cWhat.toUtf8().constData(), NORMAL);
    else
        std::printf("%s %-7s %s\n", cTime.constData(), pszWho, cWhat.toUtf8().constData());
    std::fflush(stdout);
}

void CEventPrinter::printLines(const char* pszWho, QByteArray& rcPart, const QByteArray& rcNew)
{
    static const QRegularExpression cIdent(QStringLiteral("^[a-z-]+(\\[\\d+\\])?: "));
    QList<QByteArray> cLines = (rcPart + rcNew).split('\n');
    rcPart = cLines.takeLast();
    for (const QByteArray& rcLine : qAsConst(cLines))
        if (!rcLine.trimmed().isEmpty())
            print(pszWho, QString::fromUtf8(rcLine).remove(cIdent));
}

void CEventPrinter::follow(const char* pszWho, QProcess& rcProcess)
{
    rcProcess.setProcessChannelMode(QProcess::SeparateChannels);
    rcProcess.setStandardOutputFile(QProcess::nullDevice());
    const QSharedPointer<QByteArray> pcPart(new QByteArray);
    QObject::connect(&rcProcess, &QProcess::readyReadStandardError, [this, pszWho, pcPart, &rcProcess] {
        printLines(pszWho, *pcPart, rcProcess.readAllStandardError());
    });
}
