/* SPDX-License-Identifier: MIT */
/* halden-codec: the codec service's stand-in, on the system bus and on the board that HALDEN_BOARD names. */
#include "board/codec/CCodecService.h"
#include "board/film/CFilms.h"
#include "board/state/CBoard.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <cstring>

static int fail(const QString& rcMessage)
{
    std::fprintf(stderr, "halden-codec: %s\n", qPrintable(rcMessage));
    return EXIT_FAILURE;
}

int main(int argc, char* argv[])
{
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::puts("halden-codec " HALDEND_VERSION);
        return EXIT_SUCCESS;
    }
    const bool bNoVideo = argc == 2 && std::strcmp(argv[1], "--no-video") == 0;
    if (argc > 1 && !bNoVideo) {
        std::fputs("Usage: halden-codec [--no-video | --version]\n\n"
                   "Works on the board in the directory named by " BOARD_VARIABLE
                   ", and on the system bus. Records films, and plays films\nback; with --no-video it writes "
                   "text, and "
                   "shows colour bars.\nControl it with: halden-board codec\n",
                   stderr);
        return 2;
    }
    QCoreApplication cApplication(argc, argv);
    CBoard cBoard;
    if (!cBoard.open(qEnvironmentVariable(BOARD_VARIABLE)))
        return fail(cBoard.errorString());
    CCodecService cService(cBoard, !bNoVideo && CFilms::areThere());
    QString cError;
    if (!cService.start(cError))
        return fail(cError);
    // It ends with its bus, even if its user forgets to end it.
    QDBusConnection::systemBus().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                                         QStringLiteral("org.freedesktop.DBus.Local"),
                                         QStringLiteral("Disconnected"), &cApplication, SLOT(quit()));
    return QCoreApplication::exec();
}
