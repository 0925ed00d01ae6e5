/* SPDX-License-Identifier: MIT */
/* The daemon's reference in Qt: one object with one adaptor on the system bus, and nothing else, unless it is given
 * one of the roles in which something stands behind it.
 *
 * Usage: bare_qt_service BUS-NAME [overlay FPGA-DEVICE | processing FPGA-DEVICE | poll I2C-DEVICE | codec] */
#include "CHaldendVideoDisplayAdaptor.h"
#include "CHaldendVideoOverlayAdaptor.h"
#include "CHaldendVideoProcessingAdaptor.h"
#include "bench/CBareCodec.h"
#include "bench/CBarePoll.h"
#include "bench/CBareVideoDisplay.h"
#include "bench/CBareVideoOverlay.h"
#include "bench/CBareVideoProcessing.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QtDebug>

#include <cstring>

namespace
{

bool registerObject(const char* pszPath, QObject* pcObject, QDBusConnection::RegisterOptions cOptions)
{
    return QDBusConnection::systemBus().registerObject(QString::fromLatin1(pszPath), pcObject, cOptions);
}

bool play(const char* pszRole, const char* pszDevice, QObject* pcParent)
{
    if (strcmp(pszRole, "overlay") == 0) {
        auto* pcVideoOverlay = new CBareVideoOverlay(pszDevice, pcParent);
        new CHaldendVideoOverlayAdaptor(pcVideoOverlay);
        return registerObject("/videooverlay", pcVideoOverlay, QDBusConnection::ExportAdaptors);
    }
    if (strcmp(pszRole, "processing") == 0) {
        auto* pcVideoProcessing = new CBareVideoProcessing(pszDevice, pcParent);
        new CHaldendVideoProcessingAdaptor(pcVideoProcessing);
        return registerObject("/videoprocessing", pcVideoProcessing, QDBusConnection::ExportAdaptors);
    }
    if (strcmp(pszRole, "poll") == 0)
        return (new CBarePoll(pszDevice, pcParent))->start();
    return strcmp(pszRole, "codec") == 0 &&
           registerObject("/Record", new CBareCodec(pcParent), QDBusConnection::ExportAllSlots);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication cApplication(argc, argv);
    if (argc < 2 || argc > 4) {
        qCritical("Usage: bare_qt_service BUS-NAME [overlay FPGA-DEVICE | processing FPGA-DEVICE | poll "
                  "I2C-DEVICE | codec]");
        return 2;
    }

    CBareVideoDisplay cVideoDisplay;
    new CHaldendVideoDisplayAdaptor(&cVideoDisplay);
    if (!registerObject("/videodisplay", &cVideoDisplay, QDBusConnection::ExportAdaptors) ||
        (argc > 2 && !play(argv[2], argc == 4 ? argv[3] : "", &cApplication)) ||
        !QDBusConnection::systemBus().registerService(QString::fromLocal8Bit(argv[1]))) {
        qCritical("bare_qt_service: cannot get onto the bus");
        return 1;
    }
    return QCoreApplication::exec();
}
