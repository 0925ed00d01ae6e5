/* SPDX-License-Identifier: MIT */
/* haldend, the multimedia daemon of the video board: options, daemonising, start, event loop, end. */
#include "daemon/CEventLogger.h"
#include "daemon/CMultimediaDaemon.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/* Opens the null device on the standard descriptors that are closed. Otherwise the next files would get their
 * numbers, and the echo of the log would go into one of them: a byte in the socket of a signal ends the
 * daemon. */
static void OpenStandardDescriptors()
{
    // A file gets the lowest free number; the lower ones are open by then.
    for (int iDescriptor = STDIN_FILENO; iDescriptor <= STDERR_FILENO; ++iDescriptor)
        if (fcntl(iDescriptor, F_GETFD) < 0)
            open("/dev/null", O_RDWR);
}

/* Has Qt make its own event loop for each thread, and not GLib's, which takes a system call more each time that
 * the thread wakes up. Qt asks the environment only; the daemon starts no other program. */
static void UseEventLoopOfQt()
{
    qputenv("QT_NO_GLIB", "1");
}

static void PrintCommandLineParameters()
{
    puts("Usage: haldend [-i] [-f] [-l] [-d]");
    puts("       -i <I2C device: device name, e.g. /dev/i2c-1");
    puts("       -f <FPGA framebuffer device: device name, e.g. /dev/fpgamem");
    puts("       -l <Lime framebuffer device: device name, e.g. /dev/fb0");
    puts("       -d: start as daemon");
}

/* Detaches the process. False only if the fork fails; the parent doesn't return.
 *
 * Kept: one fork only, and the standard descriptors stay open. The board's init system collects the echo of
 * the log on standard error. */
static bool Daemonize()
{
    const pid_t iPid = fork();
    if (iPid < 0)
        return false;
    if (iPid > 0)
        exit(0);
    setsid();
    [[maybe_unused]] const int iChanged = chdir("/");
    umask(0);
    return true;
}

[[noreturn]] static void Terminate()
{
    CEventLogger::logMessage(CEventLogger::eLogLevelError, "Error starting haldend.");
    exit(-1);
}

static void logError(const char* pszMessage)
{
    CEventLogger::logMessage(CEventLogger::eLogLevelError, pszMessage);
}

int main(int argc, char** argv)
{
    OpenStandardDescriptors();
    CEventLogger::initialize("haldend", CEventLogger::eLogLevelInformational);
    // The program that started the daemon may stop reading its log long before the daemon ends.
    signal(SIGPIPE, SIG_IGN);

    const char* pszI2CPort = nullptr;
    const char* pszFPGAFrameBuffer = nullptr;
    const char* pszLimeFrameBuffer = nullptr;
    bool bDaemonize = false;

    int iOption = 0;
    while ((iOption = getopt(argc, argv, "di:f:l:-h")) != -1) {
        switch (iOption) {
        case 'd':
            bDaemonize = true;
            break;
        case 'i':
            pszI2CPort = optarg;
            break;
        case 'f':
            pszFPGAFrameBuffer = optarg;
            break;
        case 'l':
            pszLimeFrameBuffer = optarg;
            break;
        case 'h':
            PrintCommandLineParameters();
            return 0;
        default:
            Terminate();
        }
    }

    bool bComplete = true;
    if (pszI2CPort == nullptr) {
        logError("I2C port not specified.");
        bComplete = false;
    }
    if (pszFPGAFrameBuffer == nullptr) {
        logError("FPGA framebuffer device not specified.");
        bComplete = false;
    }
    if (pszLimeFrameBuffer == nullptr) {
        logError("Lime framebuffer device not specified.");
        bComplete = false;
    }
    if (!bComplete)
        Terminate();

    // After a failed fork the daemon serves in the foreground.
    if (bDaemonize)
        Daemonize();

    CEventLogger::logMessage(CEventLogger::eLogLevelInformational, "Starting haldend...");
    UseEventLoopOfQt();
    QCoreApplication cApplication(argc, argv);
    if (!CMultimediaDaemon::performStartup(pszI2CPort, pszFPGAFrameBuffer, pszLimeFrameBuffer))
        Terminate();

    const int iResult = QCoreApplication::exec();

    CEventLogger::logMessage(CEventLogger::eLogLevelInformational, "Terminating haldend...");
    CMultimediaDaemon::performShutdown();
    return iResult;
}
