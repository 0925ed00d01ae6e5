/* SPDX-License-Identifier: MIT */
/* halden-board: the camera's picture. */
#include "board/picture/CTestPicture.h"
#include "board/state/CBoard.h"
#include "board/tool/CCameraHelper.h"
#include "board/tool/CCommandLine.h"
#include "board/tool/Commands.h"

#include <QImageReader>

#include <cstdio>
#include <limits>

namespace
{

/// A command line that was understood, and its board.
struct SRequest {
    CCommandLine& rcLine;
    CBoard& rcBoard;
    QString cArgument; ///< behind the source's name
    int iFrame;        ///< CBoard::RUNNING without --frame
};

int showTestPicture(const SRequest& rsRequest)
{
    rsRequest.rcBoard.setCamera(CTestPicture::frame(qMax(0, rsRequest.iFrame)));
    return rsRequest.rcLine.exitStatus();
}

int drive(const SRequest& rsRequest)
{
    rsRequest.rcBoard.setMovingCamera(rsRequest.iFrame);
    return rsRequest.rcLine.exitStatus();
}

int startHelper(const SRequest& rsRequest, const char* pszKind)
{
    CCameraHelper cHelper(rsRequest.rcBoard);
    return cHelper.start(QLatin1String(pszKind), rsRequest.cArgument)
               ? rsRequest.rcLine.exitStatus()
               : rsRequest.rcLine.fail(cHelper.errorString());
}

int showFilm(const SRequest& rsRequest)
{
    return startHelper(rsRequest, "film");
}

int showDevice(const SRequest& rsRequest)
{
    return startHelper(rsRequest, "device");
}

int showSource(const SRequest& rsRequest)
{
    const CBoard& rcBoard = rsRequest.rcBoard;
    const CCameraHelper cHelper(rsRequest.rcBoard);
    QString cText = QStringLiteral("still picture");
    if (rcBoard.cameraSource() == BOARD_CAMERA_MOVING)
        cText = QStringLiteral("moving, frame %1").arg(rcBoard.cameraFrame());
    else if (rcBoard.cameraSource() == BOARD_CAMERA_FRAMES && rcBoard.isCameraAlive())
        cText = QStringLiteral("%1, frame %2").arg(cHelper.what()).arg(rcBoard.cameraFrame());
    else if (rcBoard.cameraSource() == BOARD_CAMERA_FRAMES)
        cText = QStringLiteral("%1, ended %2").arg(cHelper.what(), cHelper.lastWords()).trimmed();
    std::puts(qPrintable(rcBoard.isCameraPlugged() ? cText : cText + QStringLiteral(", unplugged")));
    return rsRequest.rcLine.exitStatus();
}

int unplug(const SRequest& rsRequest)
{
    rsRequest.rcBoard.setCameraPlugged(false);
    return rsRequest.rcLine.exitStatus();
}

int plug(const SRequest& rsRequest)
{
    rsRequest.rcBoard.setCameraPlugged(true);
    return rsRequest.rcLine.exitStatus();
}

int showFile(const SRequest& rsRequest)
{
    QImageReader cReader(rsRequest.cArgument);
    const QImage cImage = cReader.read();
    if (cImage.isNull())
        return rsRequest.rcLine.fail(
            QStringLiteral("%1: %2").arg(rsRequest.cArgument, cReader.errorString()));
    rsRequest.rcBoard.setCamera(cImage);
    return rsRequest.rcLine.exitStatus();
}

struct SAction {
    const char* pszName;
    int iArguments; ///< behind the name
    bool bFrame;    ///< takes --frame
    int (*pfnRun)(const SRequest& rsRequest);
};

const SAction ACTIONS[] = {
    {"test",   0, true,  showTestPicture},
    {"moving", 0, true,  drive          },
    {"film",   1, false, showFilm       },
    {"device", 1, false, showDevice     },
    {"show",   0, false, showSource     },
    {"unplug", 0, false, unplug         },
    {"plug",   0, false, plug           },
};

/// What to do when the first word is the name of no action: it is a file.
const SAction FILE_ACTION = {"", 0, false, showFile};

const SAction& actionOf(const QString& rcWord)
{
    for (const SAction& rsAction : ACTIONS)
        if (rcWord == QLatin1String(rsAction.pszName))
            return rsAction;
    return FILE_ACTION;
}

const QString FRAME = QStringLiteral("frame");

/// --frame, or RUNNING. False, with a message, if it doesn't fit.
bool takeFrame(CCommandLine& rcLine, const SAction& rsAction, int& riFrame)
{
    quint32 u32Frame = 0;
    riFrame = CBoard::RUNNING;
    if (!rcLine.number(FRAME, 0, 0, u32Frame))
        return false;
    if (!rcLine.isSet(FRAME))
        return true;
    riFrame = static_cast<int>(u32Frame);
    if (!rsAction.bFrame)
        rcLine.refuse(QStringLiteral("--frame is for the test picture and the moving camera"));
    else if (u32Frame >= static_cast<quint32>(std::numeric_limits<int>::max()))
        rcLine.refuse(QStringLiteral("--frame: too large"));
    return rcLine.exitStatus() == CCommandLine::SUCCESS;
}

} // namespace

int commandCamera(const QStringList& rcArguments)
{
    CCommandLine cLine(QStringLiteral("camera"),
                       QStringLiteral("Chooses the camera's picture, and plugs the camera in and out."));
    cLine.addArgument(
        QStringLiteral("moving | test | FILE | film FILE | device DEVICE | show | unplug | plug"),
        QStringLiteral(
            "let the camera see a drive through a pipe, the test picture, the picture in FILE, the "
            "film in FILE again and again, or what the video device DEVICE captures, all scaled to "
            "720 x 576; tell what it sees; unplug or plug the camera"));
    cLine.addValue(FRAME, QStringLiteral("N"),
                   QStringLiteral("only the frame N, from 0, of the moving camera or of the test picture"));
    if (!cLine.parse(rcArguments, 1, 2))
        return cLine.exitStatus();
    const QStringList cWords = cLine.arguments();
    const SAction& rsAction = actionOf(cWords.first());
    if (cWords.size() > rsAction.iArguments + 1)
        return cLine.refuse(QStringLiteral("unexpected argument '%1'").arg(cWords.last()));
    if (cWords.size() <= rsAction.iArguments)
        return cLine.refuse(QStringLiteral("an argument is missing"));
    int iFrame = CBoard::RUNNING;
    CBoard cBoard;
    if (!takeFrame(cLine, rsAction, iFrame) || !cLine.openBoard(cBoard))
        return cLine.exitStatus();
    return rsAction.pfnRun({cLine, cBoard, cWords.last(), iFrame});
}
