/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_PLATFORM_CMULTIMEDIAPLATFORM_H
#define HALDEND_PLATFORM_CMULTIMEDIAPLATFORM_H

class QString;

/// The board as the rest of the daemon sees it: sets the video hardware up from the chips' register files, at
/// start and on request; switches sync, freeze and modes; keeps still images in files. All members are
/// static; there is no object. Use it from the event loop's thread.
///
/// Switches return nothing; hardware failures are not reported.
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

    /// Keeps the three device paths and sets the hardware up. The strings are not copied and must live as
    /// long as the process. Returns the result of reinitialize().
    [[nodiscard]] static int initialize(const char* pszI2CPort, const char* pszFPGAFrameBuffer,
                                        const char* pszLimeFrameBuffer);

    /// Sets the hardware up with the paths of initialize() and the register files as they are now. Tries
    /// every step whatever failed before, and logs each failure. Returns 1 if all steps succeeded, else 0.
    ///
    /// Every call leaks: it opens the devices again, maps the controller again and leaves the old
    /// configuration. On the 32-bit target some tens of reloads fill the address space; from then on mapping
    /// fails, and is logged.
    [[nodiscard]] static int reinitialize();

    /// Deletes the Lime instance. Devices and mappings stay open until the process ends.
    static void finalize();

    /// \name Picture
    /// @{

    /// Shows a frame that the FPGA generates (true) or the input signal (false). Used while there is no
    /// signal.
    static void setVideoInternalSync(bool bOn);

    /// Stores the current picture in the FPGA, which blocks for 0.1 s, and shows the stored one if bShow is
    /// true.
    static void freezeVideoPicture(bool bShow);

    /// Shows the stored picture (true) or the live one (false).
    static void freezeVideoPictureDisplay(bool bOn);

    /// Connects the codec's picture to the outputs, or the live one.
    ///
    /// Kept: the next switch of overlay, sync or freeze brings back the mode of the start
    /// (fpga/overlay_switches.h). Clients that switch the overlay during playback see the live picture.
    static void enterVideoPlaybackMode();
    static void enterVideoRecordingMode();

    /// @}

    /// Windows bitmaps of 720 x 576 pixels of 32 bits, 1,658,934 bytes, bottom line first: see
    /// VideoImageFile.h. A FIFO, a socket or a terminal counts as a file that can't be opened, because it
    /// would block the daemon.

    /// Saves the FPGA's stored picture; a new file has mode 0644, an old one is emptied first.
    ///
    /// Kept: a pause of 1 s follows the sync of the file. Clients rely on the picture being on the medium
    /// when they are told that it is saved.
    [[nodiscard]] static EImageOpResult saveVideoImage(const QString& rcPath);

    /// Writes a saved picture to the FPGA and shows it. If it fails, the FPGA's picture is unchanged.
    [[nodiscard]] static EImageOpResult loadVideoImage(const QString& rcPath);

    /// @}

    /// \name Register files, fixed paths
    /// @{
    static const char* getFPGAConfigFile();
    static const char* getLimeConfigFile();
    static const char* getSAA7113ConfigFile();
    static const char* getSAA7129ConfigFile();
    /// @}

private:
    // Steps of reinitialize(), in its order; false if the step failed.
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
