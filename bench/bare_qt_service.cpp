/* The daemon's reference in Qt: one object with one adaptor on the system bus, and nothing else. With an FPGA device a
 * second one, for the overlay.
 *
 * Usage: bare_qt_service BUS-NAME [FPGA-DEVICE] */
#include "CHaldendVideoDisplayAdaptor.h"
#include "CHaldendVideoOverlayAdaptor.h"
#include "bench/CBareVideoDisplay.h"
#include "bench/CBareVideoOverlay.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QtDebug>

int main(int argc, char** argv)
{
    QCoreApplication cApplication(argc, argv);
    if (argc != 2 && argc != 3) {
        qCritical("Usage: bare_qt_service BUS-NAME [FPGA-DEVICE]");
        return 2;
    }

    CBareVideoDisplay cVideoDisplay;
    new CHaldendVideoDisplayAdaptor(&cVideoDisplay);
    QDBusConnection cBus = QDBusConnection::systemBus();
    CBareVideoOverlay cVideoOverlay(argc == 3 ? argv[2] : "");
    if (argc == 3) {
        new CHaldendVideoOverlayAdaptor(&cVideoOverlay);
        cBus.registerObject(QStringLiteral("/videooverlay"), &cVideoOverlay);
    }
    if (!cBus.registerObject(QStringLiteral("/videodisplay"), &cVideoDisplay) ||
        !cBus.registerService(QString::fromLocal8Bit(argv[1]))) {
        qCritical("bare_qt_service: cannot get onto the bus");
        return 1;
    }
    return QCoreApplication::exec();
}
