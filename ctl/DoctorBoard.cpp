/* SPDX-License-Identifier: MIT */
/* Devices, register files, bus name and policy. */
#include "ctl/CCommandRun.h"
#include "ctl/CDiagnosis.h"
#include "ctl/CFailure.h"
#include "ctl/CRegisterFile.h"
#include "ctl/Interfaces.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace
{

struct SDevice {
    char cOption; ///< of the daemon
    const char* pszUsual;
    const char* pszWhat;
};

const SDevice DEVICES[] = {
    {'i', "/dev/i2c-1",   "I2C bus of decoder and encoder"       },
    {'f', "/dev/fpgamem", "FPGA"                                 },
    {'l', "/dev/fb0",     "framebuffer of the display controller"},
};

/// The arguments of the process; empty if they can't be read.
QList<QByteArray> commandLineOf(uint uProcess)
{
    QFile cFile(QStringLiteral("/proc/%1/cmdline").arg(uProcess));
    return cFile.open(QIODevice::ReadOnly) ? cFile.readAll().split('\0') : QList<QByteArray>();
}

/// The device that the daemon was given, or the usual one.
QString pathOf(const SDevice& rsDevice, const QList<QByteArray>& rcCommandLine)
{
    const int iOption = rcCommandLine.indexOf(QByteArray("-") + rsDevice.cOption);
    return iOption > 0 && iOption + 1 < rcCommandLine.size() ? QFile::decodeName(rcCommandLine[iOption + 1])
                                                             : QString::fromLatin1(rsDevice.pszUsual);
}

void diagnoseDevice(CDiagnosis& rcDiagnosis, const SDevice& rsDevice, const QString& rcPath)
{
    const QFileInfo cDevice(rcPath);
    if (!cDevice.exists())
        rcDiagnosis.wrong(
            "no-device",
            QStringLiteral("there is no %1 (%2): look for its driver, and at the options of haldend")
                .arg(rcPath, QLatin1String(rsDevice.pszWhat)));
    else if ((cDevice.permissions() & (QFile::ReadOwner | QFile::WriteOwner)) !=
             (QFile::ReadOwner | QFile::WriteOwner))
        rcDiagnosis.wrong("device-mode",
                          QStringLiteral("%1 (%2) isn't readable and writable for its owner %3")
                              .arg(rcPath, QLatin1String(rsDevice.pszWhat), cDevice.owner()));
}

void diagnoseRegisterFiles(CDiagnosis& rcDiagnosis, const QString& rcFolder)
{
    for (const QString& rcChip : CRegisterFile::chipWords()) {
        const QString cPath = QDir(rcFolder).filePath(rcChip + QStringLiteral(".cnf"));
        const CRegisterFile cFile(cPath);
        if (!cFile.isReadable())
            rcDiagnosis.wrong("register-file",
                              QStringLiteral("%1 %2").arg(cPath, cFile.findings().value(0).cText));
        else if (!cFile.findings().isEmpty())
            rcDiagnosis.wrong("register-line",
                              QStringLiteral("%1 has %2 questionable lines: haldenctl check-registers %1")
                                  .arg(cPath)
                                  .arg(cFile.findings().size()));
    }
}

/// The daemon's process; 0 if it isn't on the bus.
uint diagnoseName(CCommandRun& rcRun, CDiagnosis& rcDiagnosis)
{
    if (!rcRun.flag(rcRun.bus().askBus("NameHasOwner", {SERVICE}))) {
        rcDiagnosis.wrong(
            "no-daemon",
            QStringLiteral("nothing owns the name %1: start haldend, and read its log if it ends again")
                .arg(SERVICE));
        return 0;
    }
    const uint uProcess =
        rcRun.wait(rcRun.bus().askBus("GetConnectionUnixProcessID", {SERVICE})).value(0).toUInt();
    const uint uUser = rcRun.wait(rcRun.bus().askBus("GetConnectionUnixUser", {SERVICE})).value(0).toUInt();
    rcRun.say(QStringLiteral("board: %1 is process %2 of user %3").arg(SERVICE).arg(uProcess).arg(uUser));
    rcRun.set("owner", QJsonObject{
                           {QStringLiteral("process"), static_cast<int>(uProcess)},
                           {QStringLiteral("user"),    static_cast<int>(uUser)   }
    });
    return uProcess;
}

bool mayCall(CCommandRun& rcRun, const char* pszObject)
{
    try {
        rcRun.wait(rcRun.bus().askIntrospection(pszObject));
        return true;
    } catch (const CFailure& rcFailure) {
        if (rcFailure.status() == eNotAllowed)
            return false;
        throw;
    }
}

void diagnosePolicy(CCommandRun& rcRun, CDiagnosis& rcDiagnosis)
{
    if (!mayCall(rcRun, "videodisplay"))
        rcDiagnosis.wrong(
            "policy", QStringLiteral("you may not call haldend: be root, or a member of the group haldend"));
    else if (!mayCall(rcRun, "debug"))
        rcDiagnosis.possible("policy-debug",
                             QStringLiteral("you want /debug, and may not call it: that is root's alone"));
}

} // namespace

void diagnoseBoard(CCommandRun& rcRun, CDiagnosis& rcDiagnosis)
{
    rcDiagnosis.lookAt(QStringLiteral("board"));
    const uint uProcess = diagnoseName(rcRun, rcDiagnosis);
    if (uProcess != 0)
        diagnosePolicy(rcRun, rcDiagnosis);
    if (rcRun.bus().isRemote()) {
        rcDiagnosis.possible(
            "remote",
            QStringLiteral("a device or a register file is wrong: run haldenctl doctor board there"));
        return;
    }
    const QList<QByteArray> cCommandLine = commandLineOf(uProcess);
    for (const SDevice& rsDevice : DEVICES)
        diagnoseDevice(rcDiagnosis, rsDevice, pathOf(rsDevice, cCommandLine));
    diagnoseRegisterFiles(rcDiagnosis, rcRun.arguments().has("register-files")
                                           ? rcRun.arguments().text("register-files")
                                           : QStringLiteral("/usr/etc/cnfs"));
}
