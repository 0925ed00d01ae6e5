/* SPDX-License-Identifier: MIT */
#include "tests/support/CFilmProbe.h"

#include "tests/support/CChildProcess.h"
#include "tests/support/Timeouts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace
{

const double FRAME_SECONDS = 0.04;
const double STAMP_SECONDS = 1.0 / 90000; // the stamps of transport streams

/// Without it the programs take part of the name for a protocol.
QString urlOf(const QString& rcFile)
{
    return QStringLiteral("file:") + rcFile;
}

/// What it printed on standard output; rcErrors: on standard error, or how it failed.
QByteArray run(const QString& rcProgram, const QStringList& rcArguments, QByteArray& rcErrors)
{
    CChildProcess cProcess;
    cProcess.start(rcProgram, rcArguments);
    const bool bEnded =
        cProcess.waitForStarted(TIMEOUT_PROCESS_MS) && cProcess.waitForFinished(TIMEOUT_PROCESS_MS);
    rcErrors = cProcess.readAllStandardError();
    if (!bEnded || cProcess.exitStatus() != QProcess::NormalExit || cProcess.exitCode() != 0)
        rcErrors += rcProgram.toUtf8() + " failed";
    return cProcess.readAllStandardOutput();
}

} // namespace

CFilmProbe::CFilmProbe(const QString& rcFile)
{
    QByteArray cErrors;
    const QByteArray cOutput =
        run(QStringLiteral(FFPROBE_PROGRAM),
            {QStringLiteral("-v"), QStringLiteral("warning"), QStringLiteral("-select_streams"),
             QStringLiteral("v"), QStringLiteral("-of"), QStringLiteral("json"),
             QStringLiteral("-show_streams"), QStringLiteral("-show_packets"), urlOf(rcFile)},
            cErrors);
    m_cComplaints = QString::fromUtf8(cErrors);
    const QJsonObject cFilm = QJsonDocument::fromJson(cOutput).object();
    const QJsonObject cVideo = cFilm[QLatin1String("streams")].toArray().first().toObject();
    for (const QString& rcField : cVideo.keys())
        m_cVideo.insert(rcField, cVideo[rcField].toVariant().toString());
    m_dDuration = m_cVideo.value(QStringLiteral("duration")).toDouble();
    for (const auto& rcPacket : cFilm[QLatin1String("packets")].toArray())
        m_cTimes << rcPacket.toObject()[QLatin1String("pts_time")].toString().toDouble();
    std::sort(m_cTimes.begin(), m_cTimes.end());

    run(QStringLiteral(FFMPEG_PROGRAM),
        {QStringLiteral("-v"), QStringLiteral("warning"), QStringLiteral("-nostdin"), QStringLiteral("-i"),
         urlOf(rcFile), QStringLiteral("-f"), QStringLiteral("null"), QStringLiteral("-")},
        cErrors);
    m_cComplaints += QString::fromUtf8(cErrors);
}

QString CFilmProbe::gap() const
{
    for (int i = 1; i < m_cTimes.size(); ++i) {
        const double dStep = m_cTimes[i] - m_cTimes[i - 1];
        if (std::abs(dStep - FRAME_SECONDS) > 1.5 * STAMP_SECONDS)
            return QStringLiteral("frame %1 comes %2 s after the one before").arg(i).arg(dStep);
    }
    return {};
}

QByteArray CFilmProbe::decoded(const QString& rcFile, int iFirst, int iCount)
{
    QByteArray cErrors;
    QByteArray cFrames = run(QStringLiteral(FFMPEG_PROGRAM),
                             {QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-nostdin"),
                              QStringLiteral("-i"), urlOf(rcFile), QStringLiteral("-vf"),
                              QStringLiteral("trim=start_frame=%1").arg(iFirst), QStringLiteral("-frames:v"),
                              QString::number(iCount), QStringLiteral("-f"), QStringLiteral("rawvideo"),
                              QStringLiteral("-pix_fmt"), QStringLiteral("yuv420p"), QStringLiteral("-")},
                             cErrors);
    if (!cErrors.isEmpty())
        qWarning("%s", cErrors.constData());
    return cFrames;
}

bool CFilmProbe::make(const QStringList& rcArguments)
{
    QByteArray cErrors;
    run(QStringLiteral(FFMPEG_PROGRAM),
        QStringList{QStringLiteral("-v"), QStringLiteral("error"), QStringLiteral("-nostdin"),
                    QStringLiteral("-y")} +
            rcArguments,
        cErrors);
    if (!cErrors.isEmpty())
        qWarning("%s", cErrors.constData());
    return cErrors.isEmpty();
}
