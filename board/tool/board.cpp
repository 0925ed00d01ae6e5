/* SPDX-License-Identifier: MIT */
/* halden-board: commands that make a board or change its surroundings. */
#include "board/create/CBoardMaker.h"
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <QImageReader>

#include <limits>

int commandCreate(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("create"),
        QStringLiteral("Makes a board: a directory with the files that stand for its devices."));
    cLine.addArgument(QStringLiteral("DIR"), QStringLiteral("the directory; must be new or empty"));
    if (!cLine.parse(rcArguments, 1, 1))
        return cLine.exitStatus();
    QString cError;
    return CBoardMaker::create(cLine.arguments().first(), cError) ? cLine.exitStatus() : cLine.fail(cError);
}

static int showFile(CCommandLine& rcLine, CBoard& rcBoard, const QString& rcFile)
{
    QImageReader cReader(rcFile);
    const QImage cImage = cReader.read();
    if (cImage.isNull())
        return rcLine.fail(QStringLiteral("%1: %2").arg(rcFile, cReader.errorString()));
    rcBoard.setCamera(cImage);
    return rcLine.exitStatus();
}

int commandCamera(const QStringList& rcArguments)
{
    const QString FRAME = QStringLiteral("frame");
    CCommandLine cLine(QStringLiteral("camera"),
                       QStringLiteral("Chooses the camera's picture, and plugs the camera in and out."));
    cLine.addArgument(QStringLiteral("test | FILE | unplug | plug"),
                      QStringLiteral("show the test picture, or the picture in FILE scaled to 720 x 576; or "
                                     "unplug or plug the camera"));
    cLine.addValue(FRAME, QStringLiteral("N"),
                   QStringLiteral("frame of the test picture, from 0; its pointer moves with the frames"));
    quint32 u32Frame = 0;
    if (!cLine.parse(rcArguments, 1, 1) || !cLine.number(FRAME, 0, 0, u32Frame))
        return cLine.exitStatus();
    const QString cWhat = cLine.arguments().first();
    const bool bTest = cWhat == QLatin1String("test");
    if (cLine.isSet(FRAME) && !bTest)
        return cLine.refuse(QStringLiteral("--frame is for the test picture"));
    if (u32Frame > static_cast<quint32>(std::numeric_limits<int>::max()))
        return cLine.refuse(QStringLiteral("--frame: too large"));
    CBoard cBoard;
    if (!cLine.openBoard(cBoard))
        return cLine.exitStatus();
    if (bTest)
        cBoard.setCamera(CTestPicture::frame(static_cast<int>(u32Frame)));
    else if (cWhat == QLatin1String("unplug") || cWhat == QLatin1String("plug"))
        cBoard.setCameraPlugged(cWhat == QLatin1String("plug"));
    else
        return showFile(cLine, cBoard, cWhat);
    return cLine.exitStatus();
}

int commandSignal(const QStringList& rcArguments)
{
    CCommandLine cLine(
        QStringLiteral("signal"),
        QStringLiteral(
            "Switches the input signal of the video decoder, as plugging and unplugging the camera "
            "does."));
    cLine.addArgument(QStringLiteral("on | off"), QStringLiteral("switch the signal on or off"));
    if (!cLine.parse(rcArguments, 1, 1))
        return cLine.exitStatus();
    const QString cWhat = cLine.arguments().first();
    if (cWhat != QLatin1String("on") && cWhat != QLatin1String("off"))
        return cLine.refuse(QStringLiteral("'%1' is none of on, off").arg(cWhat));
    CBoard cBoard;
    if (cLine.openBoard(cBoard))
        cBoard.setCameraPlugged(cWhat == QLatin1String("on"));
    return cLine.exitStatus();
}
