/* SPDX-License-Identifier: MIT */
/* halden-board: the command that builds a board from a trace. */
#include "board/picture/CBoardPicture.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/CReplayedBoard.h"
#include "board/tool/Commands.h"
#include "board/trace/CTraceNames.h"

#include <QImageReader>
#include <QSaveFile>

#include <cstdio>
#include <iostream>
#include <limits>
#include <string>

namespace
{

const QString INTO = QStringLiteral("into");
const QString UNTIL = QStringLiteral("until");
const QString STEP = QStringLiteral("step");
const QString PICTURE = QStringLiteral("picture");
const QString RECORDED = QStringLiteral("recorded");
const QString CAMERA = QStringLiteral("camera");

/// Replaced whole: a viewer never sees half a picture.
bool save(const QImage& rcPicture, const QString& rcPath, QString& rcError)
{
    QSaveFile cFile(rcPath);
    if (cFile.open(QIODevice::WriteOnly) && rcPicture.save(&cFile, "PNG") && cFile.commit())
        return true;
    rcError = QStringLiteral("%1: %2").arg(rcPath, cFile.errorString());
    return false;
}

bool savePictures(const CCommandLine& rcLine, const CBoard& rcBoard, QString& rcError)
{
    return (!rcLine.isSet(PICTURE) ||
            save(CBoardPicture::monitor(rcBoard), rcLine.value(PICTURE), rcError)) &&
           (!rcLine.isSet(RECORDED) ||
            save(CBoardPicture::recorded(rcBoard), rcLine.value(RECORDED), rcError));
}

bool useCamera(const QString& rcFile, CBoard& rcBoard, QString& rcError)
{
    if (rcFile.isEmpty())
        return true;
    QImageReader cReader(rcFile);
    const QImage cImage = cReader.read();
    if (cImage.isNull())
        rcError = QStringLiteral("%1: %2").arg(rcFile, cReader.errorString());
    rcBoard.setCamera(cImage);
    return !cImage.isNull();
}

/// Line by line: each is shown, and carried out after a line end on standard input. The end of the input ends it.
bool step(CReplayedBoard& rcReplayed, const CCommandLine& rcLine, int iUntil, QString& rcError)
{
    CTraceNames cNames;
    std::string cAnswer;
    while (rcReplayed.position() < qMin(iUntil, rcReplayed.lines().size())) {
        const QString cNamed = cNames.named(rcReplayed.lines().at(rcReplayed.position()));
        std::printf("%d %s\n", rcReplayed.position() + 1, cNamed.toUtf8().constData());
        std::fflush(stdout);
        if (!std::getline(std::cin, cAnswer))
            return true;
        if (!rcReplayed.step(rcError) || !savePictures(rcLine, rcReplayed.board(), rcError))
            return false;
    }
    return true;
}

} // namespace

int commandReplay(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("replay"),
        QStringLiteral(
            "Builds a board from a full trace (trace full, or HALDEN_BOARD_PASS), and shows its picture. "
            "Camera and codec aren't in a trace: the new board has the test picture."));
    cLine.addArgument(QStringLiteral("TRACE"), QStringLiteral("the trace, or a board that has one"));
    cLine.addValue(INTO, QStringLiteral("DIR"),
                   QStringLiteral("keep the new board in this directory, which must be new or empty"));
    cLine.addValue(UNTIL, QStringLiteral("N"), QStringLiteral("only the first N lines"));
    cLine.addFlag(STEP, QStringLiteral("show each line with names, and carry it out when Enter is pressed"));
    cLine.addValue(PICTURE, QStringLiteral("OUT.png"), QStringLiteral("write the picture on the monitor"));
    cLine.addValue(RECORDED, QStringLiteral("OUT.png"), QStringLiteral("write the picture that is recorded"));
    cLine.addValue(CAMERA, QStringLiteral("FILE"), QStringLiteral("the camera sees this picture"));
    quint32 u32Until = 0;
    const auto u32Most = static_cast<quint32>(std::numeric_limits<int>::max());
    if (!cLine.parse(rcArguments, 1, 1) || !cLine.number(UNTIL, 0, u32Most, u32Until))
        return cLine.exitStatus();
    const int iUntil = static_cast<int>(qMin(u32Until, u32Most));
    CReplayedBoard cReplayed;
    QString cError;
    const bool bReplayed =
        cReplayed.open(cLine.arguments().first(), cLine.value(INTO), cError) &&
        useCamera(cLine.value(CAMERA), cReplayed.board(), cError) &&
        (cLine.isSet(STEP) ? step(cReplayed, cLine, iUntil, cError) : cReplayed.run(iUntil, cError)) &&
        savePictures(cLine, cReplayed.board(), cError);
    if (!bReplayed)
        return cLine.fail(cError);
    std::printf("%d of %d lines\n", cReplayed.position(), cReplayed.lines().size());
    return cLine.exitStatus();
}
