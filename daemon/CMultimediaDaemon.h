/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DAEMON_CMULTIMEDIADAEMON_H
#define HALDEND_DAEMON_CMULTIMEDIADAEMON_H

class CBusWatch;
class CHaldenDebug;
class CHaldenVideoDisplay;
class CHaldenVideoOverlay;
class CHaldenVideoProcessing;
class CHeapTrimmer;
class COverlayObjectManager;
class CSignalHook;
class CVideoOverlayBackEnd;
class CVideoOverlayFrontEnd;
class CVideoProcessor;

/// The daemon: owns every subsystem object, sets the subsystems up in a fixed order and takes them down in
/// another. One per process, created by the first use, destroyed by performShutdown().
///
/// A step that fails is logged with the source text of its call. The later steps are not tried and nothing is
/// undone, because the process is about to end.
class CMultimediaDaemon
{
public:
    /// The name on the system bus.
    static const char* const DBUS_SERVICE;

    /// The daemon, created by the first call.
    static CMultimediaDaemon& getInstance();

    /// Sets everything up: signal hook, hardware, bus objects, and last the bus name, so that a client that
    /// sees the name finds all objects. Returns false if a step fails. The device names must live as long as
    /// the process.
    [[nodiscard]] static bool performStartup(const char* pszI2CPort, const char* pszFPGAFrameBuffer,
                                             const char* pszLimeFrameBuffer);

    /// Lets the video processor finish what it has accepted, and destroys the daemon, if there is one. The
    /// bus name goes with the process.
    static void performShutdown();

    /// The two halves of performStartup(). False if a step failed.
    [[nodiscard]] bool initSubsystems(const char* pszI2CPort, const char* pszFPGAFrameBuffer,
                                      const char* pszLimeFrameBuffer);
    [[nodiscard]] bool setupDBusConnections();

    CMultimediaDaemon(const CMultimediaDaemon&) = delete;
    CMultimediaDaemon& operator=(const CMultimediaDaemon&) = delete;

private:
    CMultimediaDaemon();
    ~CMultimediaDaemon();

    static bool registerServiceName();

    static CMultimediaDaemon* m_pcInstance;

    // In the order of creation; all owned
    CSignalHook* m_pcSignalHook;
    COverlayObjectManager* m_pcOverlayObjectManager;
    CVideoOverlayBackEnd* m_pcVideoOverlayBackEnd;
    CVideoOverlayFrontEnd* m_pcVideoOverlayFrontEnd;
    CVideoProcessor* m_pcVideoProcessor;
    CHaldenDebug* m_pcDebug;
    CHaldenVideoDisplay* m_pcVideoDisplay;
    CHaldenVideoOverlay* m_pcVideoOverlay;
    CHaldenVideoProcessing* m_pcVideoProcessing;
    CBusWatch* m_pcBusWatch;
    CHeapTrimmer* m_pcHeapTrimmer;
};

#endif
