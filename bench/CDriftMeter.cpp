/* SPDX-License-Identifier: MIT */
#include "bench/CDriftMeter.h"

#include "bench/Measures.h"
#include "tests/support/CInterruption.h"
#include "tests/support/Timeouts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTimer>

namespace
{

const int PAUSE_MS = 100; // between two looks for an interruption

void call(const QDBusConnection& rcBus, const char* pszMethod, const QVariantList& rcArguments = {})
{
    QDBusMessage cCall = QDBusMessage::createMethodCall(
        QStringLiteral("velmar.mobilygen"), QStringLiteral("/Record"), QString(), QLatin1String(pszMethod));
    cCall.setArguments(rcArguments);
    const QDBusMessage cAnswer = rcBus.call(cCall, QDBus::Block, TIMEOUT_CALL_MS);
    expect(cAnswer.type() == QDBusMessage::ReplyMessage, cAnswer.errorMessage());
}

void letPass(qint64 iMilliseconds)
{
    QElapsedTimer cTimer;
    cTimer.start();
    while (cTimer.elapsed() < iMilliseconds) {
        CInterruption::check();
        QEventLoop cLoop;
        QTimer::singleShot(static_cast<int>(qMin<qint64>(PAUSE_MS, iMilliseconds - cTimer.elapsed())),
                           Qt::PreciseTimer, &cLoop, &QEventLoop::quit);
        cLoop.exec();
    }
}

double lengthOf(const QString& rcFile)
{
    QProcess cProbe;
    cProbe.start(QStringLiteral("ffprobe"),
                 {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-show_entries"),
                  QStringLiteral("format=duration"), QStringLiteral("-of"), QStringLiteral("csv=p=0"),
                  rcFile});
    const bool bDone = cProbe.waitForFinished(-1) && cProbe.exitCode() == 0;
    expect(bDone, QStringLiteral("ffprobe can't read the film"));
    return QString::fromLatin1(cProbe.readAllStandardOutput()).section(QLatin1Char('\n'), 0, 0).toDouble();
}

} // namespace

SDrift CDriftMeter::record(int iSeconds)
{
    expect(m_cBus.start(), m_cBus.error());
    expect(m_cBoard.make(), m_cBoard.error());
    m_cCodec.useVideo();
    expect(m_cCodec.start(m_cBus.address(), m_cBoard.board().directory()),
           QString::fromUtf8(m_cCodec.describe()));
    const QDBusConnection cBus = QDBusConnection::connectToBus(m_cBus.address(), QStringLiteral("drift"));
    const QString cFile = m_cFolder.filePath(QStringLiteral("film.ts"));
    call(cBus, "record", {cFile, 3});
    QElapsedTimer cClock;
    cClock.start();
    letPass(iSeconds * 1000LL);
    call(cBus, "stop");
    SDrift sDrift = {};
    sDrift.dClock = static_cast<double>(cClock.nsecsElapsed()) / 1e9;
    const double dBefore = childrensSeconds();
    m_cCodec.end();
    sDrift.dProcessor = childrensSeconds() - dBefore;
    sDrift.cSaid = m_cCodec.process().readAll().toStdString();
    sDrift.dFilm = lengthOf(cFile);
    return sDrift;
}
