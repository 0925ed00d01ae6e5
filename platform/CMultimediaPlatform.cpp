/* SPDX-License-Identifier: MIT */
#include "platform/CMultimediaPlatform.h"

#include "daemon/CEventLogger.h"
#include "fpga/overlay_switches.h"
#include "fpga/screen.h"
#include "fpga/video_image.h"
#include "hw/fpga_device.h"
#include "hw/lime_device.h"
#include "hw/open_path.h"
#include "hw/saa71xx_device.h"
#include "platform/Lime.h"
#include "platform/VideoImageFile.h"
#include "regdb/chip_regs.h"
#include "regdb/config_file.h"
#include "regdb/registers.h"

#include <QFile>

#include <memory>
#include <new>

#include <fcntl.h>
#include <unistd.h>

const char* CMultimediaPlatform::m_pszI2CPort = nullptr;
const char* CMultimediaPlatform::m_pszFPGAFrameBuffer = nullptr;
const char* CMultimediaPlatform::m_pszLimeFrameBuffer = nullptr;

namespace
{

const useconds_t STORE_TIME_US = 100000; // what the FPGA needs to store a picture
const unsigned int SETTLE_TIME_S = 1;    // for the medium, after the sync

/// The only screen record of the process. The overlay library keeps a pointer to it.
screen sScreen;

/// Writes a chip's registers as its file says. False if the file can't be read; then nothing is written.
bool programChip(const chip_regs& rsChip, const char* pszFile)
{
    if (read_config_from_file(&rsChip, pszFile, 1) != 0)
        return false;
    write_all_regs(&rsChip);
    return true;
}

/// The same for a chip on the I2C bus, which is open only for that time.
bool programI2CChip(const char* pszPort, int iSlave, const chip_regs& rsChip, const char* pszFile)
{
    if (open_saa71xx_device(pszPort, iSlave) != 0)
        return false;
    const bool bProgrammed = programChip(rsChip, pszFile);
    close_saa71xx_device();
    return bProgrammed;
}

/// Opens the path as open_data_file() does.
bool openImageFile(QFile& rcFile, const QString& rcPath, QIODevice::OpenModeFlag eMode)
{
    const int iAccess = eMode == QIODevice::ReadOnly ? O_RDONLY : O_WRONLY;
    const int iDescriptor = open_data_file(QFile::encodeName(rcPath).constData(), iAccess);
    return iDescriptor >= 0 && rcFile.open(iDescriptor, eMode, QFileDevice::AutoCloseHandle);
}

/// A black picture; null if there is no memory, because the target can run out of addresses.
std::unique_ptr<char[]> allocateImage()
{
    return std::unique_ptr<char[]>(new (std::nothrow) char[VIDEO_IMAGE_SIZE]());
}

unsigned char* pixels(const std::unique_ptr<char[]>& rcImage)
{
    return reinterpret_cast<unsigned char*>(rcImage.get());
}

} // namespace

int CMultimediaPlatform::initialize(const char* pszI2CPort, const char* pszFPGAFrameBuffer,
                                    const char* pszLimeFrameBuffer)
{
    m_pszI2CPort = pszI2CPort;
    m_pszFPGAFrameBuffer = pszFPGAFrameBuffer;
    m_pszLimeFrameBuffer = pszLimeFrameBuffer;
    return reinitialize();
}

int CMultimediaPlatform::reinitialize()
{
    static const struct {
        bool (*pfnStep)();
        const char* pszFailure;
    } asSteps[] = {
        {checkLimeTable, "Error: Lime regs bit size"          },
        {checkFPGATable, "Error: FPGA regs bit size"          },
        {openLime,       "Error initializing Lime framebuffer"},
        {openFPGA,       "Error initializing FPGA framebuffer"},
        {initOverlay,    "Error initializing FPGA"            },
        {initSAA7113,    "Error initializing SAA7113"         },
        {initSAA7129,    "Error initializing SAA7129"         },
        {initFPGA,       "Error initializing FPGA"            },
        {initLime,       "Error initializing Lime"            },
    };

    for (config_t* psConfig : {&config_fpga, &config_lime, &config_saa7113, &config_saa7129})
        config_init(psConfig);

    int iResult = 1;
    for (const auto& rsStep : asSteps) {
        if (rsStep.pfnStep())
            continue;
        CEventLogger::logMessage(CEventLogger::eLogLevelError, rsStep.pszFailure);
        iResult = 0;
    }
    return iResult;
}

bool CMultimediaPlatform::checkLimeTable()
{
    return check_all_regs(&crp_lime) == 0;
}

bool CMultimediaPlatform::checkFPGATable()
{
    return check_all_regs(&crp_fpga) == 0;
}

// Before openFPGA(): both store their descriptor in fbfd, which has to end up as the FPGA's.
bool CMultimediaPlatform::openLime()
{
    return init_lime_framebuffer(m_pszLimeFrameBuffer) == 0;
}

bool CMultimediaPlatform::openFPGA()
{
    return init_fpga_framebuffer(m_pszFPGAFrameBuffer) == 0;
}

bool CMultimediaPlatform::initOverlay()
{
    return init_fpga() == 0;
}

bool CMultimediaPlatform::initSAA7113()
{
    return programI2CChip(m_pszI2CPort, SAA7113_SLAVE, crp_saa7113, getSAA7113ConfigFile());
}

bool CMultimediaPlatform::initSAA7129()
{
    return programI2CChip(m_pszI2CPort, SAA7129_SLAVE, crp_saa7129, getSAA7129ConfigFile());
}

bool CMultimediaPlatform::initFPGA()
{
    const bool bProgrammed = programChip(crp_fpga, getFPGAConfigFile());
    init_screen(&sScreen, nullptr);
    return bProgrammed;
}

bool CMultimediaPlatform::initLime()
{
    const bool bProgrammed = programChip(crp_lime, getLimeConfigFile());
    Lime::instance();
    Lime::reinit_framebuffer_device(m_pszLimeFrameBuffer);
    Lime::lime_set_background_color(0, 0, 0);
    return bProgrammed;
}

void CMultimediaPlatform::finalize()
{
    delete &Lime::instance();
}

void CMultimediaPlatform::setVideoInternalSync(bool bOn)
{
    if (bOn)
        frame_generator_on();
    else
        frame_generator_off();
}

void CMultimediaPlatform::freezeVideoPicture(bool bShow)
{
    store_video();
    usleep(STORE_TIME_US);
    if (bShow)
        video_restore_on();
}

void CMultimediaPlatform::freezeVideoPictureDisplay(bool bOn)
{
    if (bOn)
        video_restore_on();
    else
        video_restore_off();
}

void CMultimediaPlatform::enterVideoPlaybackMode()
{
    fpga_play_mode();
}

void CMultimediaPlatform::enterVideoRecordingMode()
{
    fpga_rec_mode();
}

CMultimediaPlatform::EImageOpResult CMultimediaPlatform::saveVideoImage(const QString& rcPath)
{
    const std::unique_ptr<char[]> cImage = allocateImage();
    if (cImage == nullptr || get_video_image_from_fpga(pixels(cImage), 0, VIDEO_IMAGE_SIZE) != 0)
        return eImageOpResultHardwareError;
    QFile cFile;
    if (!openImageFile(cFile, rcPath, QIODevice::WriteOnly))
        return eImageOpResultFileOpenError;
    const EImageOpResult eResult = WriteVideoImageBufferToFile(cFile, cImage.get(), VIDEO_IMAGE_SIZE);
    fsync(cFile.handle());
    cFile.close();
    sleep(SETTLE_TIME_S);
    return eResult;
}

CMultimediaPlatform::EImageOpResult CMultimediaPlatform::loadVideoImage(const QString& rcPath)
{
    QFile cFile;
    if (!openImageFile(cFile, rcPath, QIODevice::ReadOnly))
        return eImageOpResultFileOpenError;
    const std::unique_ptr<char[]> cImage = allocateImage();
    if (cImage == nullptr)
        return eImageOpResultFileReadError;
    const EImageOpResult eResult = ReadFileIntoVideoImageBuffer(cFile, cImage.get(), VIDEO_IMAGE_SIZE);
    if (eResult == eImageOpResultOk) {
        write_video_image_to_fpga(pixels(cImage), 0, VIDEO_IMAGE_SIZE);
        video_restore_on();
    }
    return eResult;
}

const char* CMultimediaPlatform::getFPGAConfigFile()
{
    return "/usr/etc/cnfs/fpga.cnf";
}

const char* CMultimediaPlatform::getLimeConfigFile()
{
    return "/usr/etc/cnfs/lime.cnf";
}

const char* CMultimediaPlatform::getSAA7113ConfigFile()
{
    return "/usr/etc/cnfs/saa7113.cnf";
}

const char* CMultimediaPlatform::getSAA7129ConfigFile()
{
    return "/usr/etc/cnfs/saa7129.cnf";
}
