/* SPDX-License-Identifier: MIT */
/* halden-camera: delivers the frames of a film or of a video device to a board, while somebody looks at them.
 * halden-board starts it, with the lock that board/camera/frames.h tells of. */
#include "board/feed/CFeeder.h"
#include "board/feed/CFilmSource.h"
#include "board/feed/CVideoDevice.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>
#include <memory>

namespace
{

const char* const USAGE = "Usage: halden-camera BOARD CHOICE film FILE\n"
                          "       halden-camera BOARD CHOICE device DEVICE\n"
                          "       halden-camera --version\n"
                          "\n"
                          "Delivers frames to the board in the folder BOARD, while somebody looks at them. "
                          "halden-board starts it:\n"
                          "CHOICE is the number of the source that it has chosen.\n";

std::unique_ptr<IFrameSource> makeSource(const QString& rcKind, const QString& rcName)
{
    if (rcKind == QLatin1String("film"))
        return std::make_unique<CFilmSource>(rcName);
    if (rcKind == QLatin1String("device"))
        return std::make_unique<CVideoDevice>(rcName);
    return nullptr;
}

int fail(const QString& rcReason)
{
    std::fprintf(stderr, "%s\n", qPrintable(rcReason));
    return 1;
}

int feed(const QStringList& rcArguments)
{
    CBoard cBoard;
    const std::unique_ptr<IFrameSource> pcSource = makeSource(rcArguments[2], rcArguments[3]);
    if (pcSource == nullptr || !cBoard.open(rcArguments[0]))
        return fail(pcSource == nullptr ? QString::fromLatin1(USAGE) : cBoard.errorString());
    CFeeder cFeeder(cBoard, *pcSource, rcArguments[1].toUInt());
    return pcSource->open() && cFeeder.run() ? 0 : fail(pcSource->errorString());
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication cApplication(argc, argv);
    const QStringList cArguments = QCoreApplication::arguments().mid(1);
    if (cArguments == QStringList{QStringLiteral("--version")}) {
        std::puts("halden-camera " HALDEND_VERSION);
        return 0;
    }
    if (cArguments.size() != 4) {
        std::fputs(USAGE, stderr);
        return 2;
    }
    return feed(cArguments);
}
