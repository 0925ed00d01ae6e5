#ifndef HALDEND_PLATFORM_CMULTIMEDIAPLATFORM_H
#define HALDEND_PLATFORM_CMULTIMEDIAPLATFORM_H

class QString;

/// The board as the rest of the daemon sees it: brings the video hardware up from the chips' register files,
/// at start and again on request, switches sync, freeze and modes, and keeps still images in files. All
/// members are static; there is no object.
///
/// What the hardware layer can't do it doesn't report: the switches have no result.
class CMultimediaPlatform
{
public:
    /// How a still image operation ended.
    enum EImageOpResult {
        eImageOpResultOk = 0,
        eImageOpResultHardwareError = 1,  ///< the image could not be fetched from the FPGA
        eImageOpResultFileOpenError = 2,  ///< the file could not be opened
        eImageOpResultFileReadError = 3,  ///< the file could not be read, or is too short
        eImageOpResultFileWriteError = 4, ///< the file could not be written, or not all of it
    };

    CMultimediaPlatform() = delete;

    /// Keeps the three device paths, which are not copied and have to live as long as the process, and
    /// brings the hardware up. Returns what reinitialize() returns.
    static int initialize(const char* pszI2CPort, const char* pszFPGAFrameBuffer,
                          const char* pszLimeFrameBuffer);

    /// Brings the hardware up with the paths of initialize() and the register files as they are now. Every
    /// step is tried whatever failed before it, each failure is logged. Returns 1 if all steps succeeded,
    /// else 0.
    ///
    /// Again and again it takes more: the devices are opened anew beside those that are open, the register
    /// tables map the display controller once more, and the old configurations are left as they are. On the
    /// 32-bit target some tens of reloads fill the address space; from then on mapping fails, and is logged.
    static int reinitialize();

    /// Deletes the Lime instance. The devices stay open until the process ends.
    static void finalize();

    /// \name Picture
    /// @{

    /// The FPGA's own frame in the place of the input signal, used while there is none.
    static void setVideoInternalSync(bool bOn);

    /// Stores the picture of this moment in the FPGA, 0.1 s, and shows the stored one if bShow.
    static void freezeVideoPicture(bool bShow);

    /// Shows the stored picture, or the live one again.
    static void freezeVideoPictureDisplay(bool bOn);

    static void enterVideoPlaybackMode();
    static void enterVideoRecordingMode();

    /// @}

    /// \name Still images
    /// Windows bitmaps of 720 x 576 pixels of 32 bits, 1,658,934 bytes, bottom line first: see
    /// VideoImageFile.h. A FIFO, a socket and a terminal count as files that can't be opened, because they would hold
    /// up the daemon.
    /// @{

    /// Saves the FPGA's stored picture; a new file has mode 0644. Takes 1 s longer than the writing itself.
    static EImageOpResult saveVideoImage(const QString& rcPath);

    /// Puts a saved picture into the FPGA, and shows it. If that fails the FPGA's picture is as before.
    static EImageOpResult loadVideoImage(const QString& rcPath);

    /// @}

    /// \name Register files, fixed paths
    /// @{
    static const char* getFPGAConfigFile();
    static const char* getLimeConfigFile();
    static const char* getSAA7113ConfigFile();
    static const char* getSAA7129ConfigFile();
    /// @}

private:
    // Steps of reinitialize(), in its order: false if the step failed.
    static bool checkLimeTable();
    static bool checkFPGATable();
    static bool openLime();
    static bool openFPGA();
    static bool initOverlay();
    static bool initSAA7113();
    static bool initSAA7129();
    static bool initFPGA();
    static bool initLime();

    static const char* m_pszI2CPort;
    static const char* m_pszFPGAFrameBuffer;
    static const char* m_pszLimeFrameBuffer;
};

#endif
