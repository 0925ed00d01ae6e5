/* The daemon's reference in Qt: one object with one adaptor on the system bus, and nothing else.
 *
 * Usage: bare_qt_service BUS-NAME */
#include "CHaldendVideoDisplayAdaptor.h"
#include "bench/CBareVideoDisplay.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QtDebug>

int main(int argc, char** argv)
{
    QCoreApplication cApplication(argc, argv);
    if (argc != 2) {
        qCritical("Usage: bare_qt_service BUS-NAME");
        return 2;
    }

    CBareVideoDisplay cVideoDisplay;
    new CHaldendVideoDisplayAdaptor(&cVideoDisplay);
    QDBusConnection cBus = QDBusConnection::systemBus();
    if (!cBus.registerObject(QStringLiteral("/videodisplay"), &cVideoDisplay) ||
        !cBus.registerService(QString::fromLocal8Bit(argv[1]))) {
        qCritical("bare_qt_service: cannot get onto the bus");
        return 1;
    }
    return QCoreApplication::exec();
}
