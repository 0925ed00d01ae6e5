#ifndef HALDEND_PLATFORM_CMULTIMEDIAPLATFORM_H
#define HALDEND_PLATFORM_CMULTIMEDIAPLATFORM_H

/// The board as the rest of the daemon sees it: brings the video hardware up, at start and again on
/// request, and names the chips' register files. All members are static; there is no object.
class CMultimediaPlatform
{
public:
    CMultimediaPlatform() = delete;

    /// Keeps the three device paths, which are not copied and have to live as long as the process, and
    /// brings the hardware up. Returns what reinitialize() returns.
    static int initialize(const char* pszI2CPort, const char* pszFPGAFrameBuffer,
                          const char* pszLimeFrameBuffer);

    /// Brings the hardware up with the paths of initialize(). Every step is tried whatever failed before
    /// it, each failure is logged. Returns 1 if all steps succeeded, else 0.
    static int reinitialize();

    /// Deletes the Lime instance. The devices stay open until the process ends.
    static void finalize();

    // Register files, fixed paths

    static const char* getFPGAConfigFile();
    static const char* getLimeConfigFile();
    static const char* getSAA7113ConfigFile();
    static const char* getSAA7129ConfigFile();

private:
    static void initLime();

    static const char* m_pszI2CPort;
    static const char* m_pszFPGAFrameBuffer;
    static const char* m_pszLimeFrameBuffer;
};

#endif
