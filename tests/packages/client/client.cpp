/* SPDX-License-Identifier: MIT */
/* A client as an integrator writes it: sets the size of the live video, and asks for it. */
#include <QCoreApplication>

#include <CHaldendVideoDisplayProxy.h>

int main(int argc, char** argv)
{
    QCoreApplication cApplication(argc, argv);
    CHaldendVideoDisplayProxy cDisplay("velmar.haldend", "/videodisplay", QDBusConnection::systemBus());
    cDisplay.set_video_size(360, 288);
    QDBusPendingReply<int> cWidth = cDisplay.get_displayed_video_width();
    cWidth.waitForFinished();
    return cWidth.isValid() && cWidth.value() == 360 ? 0 : 1;
}
