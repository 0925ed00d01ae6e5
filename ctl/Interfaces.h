/* SPDX-License-Identifier: MIT */
/* The daemon's methods and signals, read from the interface files of dbus/, which are compiled in. */
#ifndef HALDEND_CTL_INTERFACES_H
#define HALDEND_CTL_INTERFACES_H

#include <QList>
#include <QString>
#include <QStringList>

struct SMember {
    QString cName;
    QStringList cInNames; ///< of a method's arguments, and of a signal's
    QStringList cInTypes; ///< D-Bus signatures
    QStringList cOutNames;
    QStringList cOutTypes;
    bool bSignal = false;
};

extern const QString SERVICE;       ///< of the daemon
extern const QString CODEC_SERVICE; ///< that records and plays

constexpr const char* OVERLAY = "videooverlay";
constexpr const char* PROCESSING = "videoprocessing";

QStringList objectNames();

/// "videodisplay" stands at /videodisplay and has the interface velmar.haldend.videodisplay.
QString pathOf(const QString& rcObject);
QString interfaceOf(const QString& rcObject);

/// Methods and signals of an object, in the order of its file. Empty for other names.
QList<SMember> membersOf(const QString& rcObject);

#endif
