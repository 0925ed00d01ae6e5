/* SPDX-License-Identifier: MIT */
#include "board/tour/CTour.h"

#include "board/picture/CBoardPicture.h"
#include "board/state/CBoard.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CInterruption.h"
#include "tests/support/Timeouts.h"

#include <QDBusPendingCallWatcher>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>

namespace
{

const QString SERVICE = QStringLiteral("velmar.haldend");
const int PAUSE_MS = 50; // between two looks at what is waited for

// Looks until it is so. False if it doesn't come about in time, or the tour is interrupted.
bool waitUntil(const std::function<bool()>& fnIsSo)
{
    const QDeadlineTimer cDeadline(TIMEOUT_PROCESS_MS);
    while (!fnIsSo()) {
        if (cDeadline.hasExpired() || CInterruption::caught() != 0)
            return false;
        QEventLoop cLoop;
        QTimer::singleShot(PAUSE_MS, &cLoop, &QEventLoop::quit);
        cLoop.exec();
    }
    return true;
}

// By the signature's letters, as busctl takes them. False if they don't fit.
bool parseArguments(const QString& rcSignature, const QStringList& rcWords, QVariantList& rcArguments)
{
    bool bFits = rcSignature.size() == rcWords.size();
    for (int i = 0; bFits && i < rcWords.size(); ++i) {
        const QString& rcWord = rcWords[i];
        if (rcSignature[i] == QLatin1Char('s'))
            rcArguments << rcWord;
        else if (rcSignature[i] == QLatin1Char('i'))
            rcArguments << rcWord.toInt(&bFits);
        else if (rcSignature[i] == QLatin1Char('b') &&
                 (rcWord == QLatin1String("true") || rcWord == QLatin1String("false")))
            rcArguments << (rcWord == QLatin1String("true"));
        else
            bFits = false;
    }
    return bFits;
}

// As busctl prints it. Empty if there is none.
QString formatAnswer(const QDBusMessage& rcReply)
{
    if (rcReply.arguments().isEmpty())
        return {};
    const QString cValue = rcReply.arguments().constFirst().toString();
    return rcReply.signature() == QLatin1String("s") ? QStringLiteral("s \"%1\"").arg(cValue)
                                                     : rcReply.signature() + QLatin1Char(' ') + cValue;
}

} // namespace

const CTour::SCommand CTour::COMMANDS[10] = {
    {"say",     &CTour::say           },
    {"call",    &CTour::call          },
    {"wait",    &CTour::wait          },
    {"board",   &CTour::board         },
    {"frames",  &CTour::waitForFrames },
    {"signal",  &CTour::waitForSignal },
    {"set",     &CTour::setField      },
    {"picture", &CTour::takePicture   },
    {"until",   &CTour::waitForPicture},
    {"shot",    &CTour::takeShot      },
};

QVector<CTour::SStep> CTour::read(const QString& rcScript)
{
    QVector<SStep> cSteps;
    QFile cFile(rcScript);
    if (!cFile.open(QIODevice::ReadOnly))
        return cSteps;
    int iLine = 0;
    for (const QString& rcLine : QString::fromUtf8(cFile.readAll()).split(QLatin1Char('\n'))) {
        ++iLine;
        if (!rcLine.isEmpty() && !rcLine.startsWith(QLatin1Char('#')))
            cSteps.append({iLine, rcLine});
    }
    return cSteps;
}

CTour::CTour(const QDBusConnection& rcConnection, CBoard& rcBoard, const QString& rcPictures,
             CPrinter fnPrint)
    : m_cConnection(rcConnection), m_rcBoard(rcBoard), m_cPictures(rcPictures), m_fnPrint(std::move(fnPrint))
{
    for (const char* pszObject : {"videodisplay", "videooverlay", "videoprocessing", "debug"})
        m_cConnection.connect(SERVICE, QStringLiteral("/%1").arg(QLatin1String(pszObject)),
                              SERVICE + QLatin1Char('.') + QLatin1String(pszObject), QString(), this,
                              SLOT(onSignal(QDBusMessage)));
}

QString CTour::carryOut(const QString& rcStep)
{
    const QString cName = rcStep.section(QLatin1Char(' '), 0, 0);
    for (const SCommand& rsCommand : COMMANDS)
        if (cName == QLatin1String(rsCommand.pszName))
            return (this->*rsCommand.pfnCarryOut)(rcStep.section(QLatin1Char(' '), 1));
    return QStringLiteral("not understood: ") + rcStep;
}

void CTour::onSignal(const QDBusMessage& rcMessage)
{
    m_cSignals << QStringLiteral("%1 %2 %3")
                      .arg(rcMessage.path().mid(1), rcMessage.member(),
                           rcMessage.arguments().value(0).toString());
    m_fnPrint(QStringLiteral("   signal ") + m_cSignals.constLast());
}

QStringList CTour::words(const QString& rcText) const
{
    QStringList cWords = QProcess::splitCommand(rcText);
    cWords.replaceInStrings(QStringLiteral("$pictures"), m_cPictures);
    return cWords;
}

QString CTour::say(const QString& rcText)
{
    m_fnPrint(QStringLiteral("\n== ") + rcText);
    return {};
}

// Signals that come before the answer are taken before it.
QString CTour::ask(const QStringList& rcWords, QString& rcAnswer)
{
    QVariantList cArguments;
    if (rcWords.size() < 2 || !parseArguments(rcWords.value(2), rcWords.mid(3), cArguments))
        return QStringLiteral("no such call: ") + rcWords.join(QLatin1Char(' '));
    QDBusMessage cCall = QDBusMessage::createMethodCall(SERVICE, QLatin1Char('/') + rcWords[0],
                                                        SERVICE + QLatin1Char('.') + rcWords[0], rcWords[1]);
    cCall.setArguments(cArguments);
    const QDBusPendingCallWatcher cWatcher(m_cConnection.asyncCall(cCall, TIMEOUT_CALL_MS));
    QEventLoop cLoop;
    connect(&cWatcher, &QDBusPendingCallWatcher::finished, &cLoop, &QEventLoop::quit);
    cLoop.exec();
    const QDBusMessage cReply = cWatcher.reply();
    if (cReply.type() != QDBusMessage::ReplyMessage)
        return rcWords[1] + QStringLiteral(": ") + cReply.errorMessage();
    rcAnswer = formatAnswer(cReply);
    return {};
}

QString CTour::call(const QString& rcRest)
{
    m_fnPrint(QStringLiteral("   ") + rcRest);
    QString cAnswer;
    QString cWrong = ask(words(rcRest), cAnswer);
    if (!cAnswer.isEmpty())
        m_fnPrint(cAnswer);
    return cWrong;
}

QString CTour::wait(const QString& rcRest)
{
    const QString cEqual = QStringLiteral(" = ");
    const QString cExpected = rcRest.section(cEqual, 1);
    QString cAnswer;
    QString cWrong;
    const bool bSo = waitUntil([&] {
        cWrong = ask(words(rcRest.section(cEqual, 0, 0)), cAnswer);
        return !cWrong.isEmpty() || cAnswer == cExpected;
    });
    return bSo ? cWrong : QStringLiteral("still %1 instead of %2").arg(cAnswer, cExpected);
}

QString CTour::board(const QString& rcRest)
{
    CChildProcess cTool;
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert(QStringLiteral(BOARD_VARIABLE), m_rcBoard.directory());
    cTool.setProcessEnvironment(cEnvironment);
    cTool.setProcessChannelMode(QProcess::MergedChannels);
    cTool.start(QStringLiteral(HALDEND_BOARD_TOOL), words(rcRest));
    const bool bDone = cTool.waitForFinished(TIMEOUT_PROCESS_MS) && cTool.exitCode() == 0;
    QString cOutput = QString::fromUtf8(cTool.readAll());
    if (cOutput.endsWith(QLatin1Char('\n')))
        cOutput.chop(1);
    if (!bDone)
        return cOutput.isEmpty() ? cTool.errorString() : cOutput;
    if (!cOutput.isEmpty())
        m_fnPrint(cOutput);
    return {};
}

QString CTour::waitForFrames(const QString& rcRest)
{
    const int iFrames = rcRest.toInt();
    const bool bSo = waitUntil([&] { return m_rcBoard.codecState().iFrame >= iFrames; });
    return bSo ? QString() : QStringLiteral("still fewer frames than ") + rcRest;
}

QString CTour::waitForSignal(const QString& rcRest)
{
    if (!waitUntil([&] { return m_cSignals.contains(rcRest); }))
        return QStringLiteral("didn't come: ") + rcRest;
    m_cSignals = m_cSignals.mid(m_cSignals.indexOf(rcRest) + 1);
    return {};
}

QString CTour::setField(const QString& rcRest)
{
    const QStringList cWords = words(rcRest);
    QFile cFile(m_rcBoard.path(BOARD_CNFS) + QStringLiteral("/%1.cnf").arg(cWords.value(0)));
    const QRegularExpression cField(
        QStringLiteral("^( *%1 = )[^;]*;").arg(QRegularExpression::escape(cWords.value(1))),
        QRegularExpression::MultilineOption);
    if (cWords.size() != 3 || !cFile.open(QIODevice::ReadWrite | QIODevice::ExistingOnly))
        return QStringLiteral("no such chip: ") + rcRest;
    QString cText = QString::fromUtf8(cFile.readAll());
    if (!cText.contains(cField))
        return QStringLiteral("no such field: ") + rcRest;
    cText.replace(cField, QStringLiteral("\\1%1;").arg(cWords[2]));
    const QByteArray cBytes = cText.toUtf8();
    if (!cFile.resize(0) || !cFile.seek(0) || cFile.write(cBytes) != cBytes.size() || !cFile.flush())
        return cFile.fileName() + QStringLiteral(": ") + cFile.errorString();
    return {};
}

QString CTour::keep(const QString& rcName, const QImage& rcPicture)
{
    m_acPictures[rcName] = rcPicture;
    const QString cFile = QStringLiteral("%1/%2-%3.png")
                              .arg(m_cPictures)
                              .arg(m_cFiles.size() + 1, 2, 10, QLatin1Char('0'))
                              .arg(rcName);
    if (!rcPicture.save(cFile, "PNG"))
        return cFile + QStringLiteral(": can't be written");
    m_cFiles << cFile;
    return {};
}

QString CTour::takePicture(const QString& rcName)
{
    return keep(rcName, CBoardPicture::monitor(m_rcBoard));
}

QString CTour::waitForPicture(const QString& rcName)
{
    if (!m_acPictures.contains(rcName))
        return QStringLiteral("no such picture: ") + rcName;
    const bool bShown = waitUntil([&] { return CBoardPicture::monitor(m_rcBoard) == picture(rcName); });
    return bShown ? QString() : QStringLiteral("isn't shown: ") + rcName;
}

QString CTour::takeShot(const QString& rcName)
{
    QImage cNow;
    const bool bMoved = waitUntil([&] {
        cNow = CBoardPicture::monitor(m_rcBoard);
        return cNow != m_cShot;
    });
    if (!bMoved)
        return QStringLiteral("doesn't move");
    m_cShot = cNow;
    return keep(rcName, cNow);
}
