#include "platform/CMultimediaPlatform.h"

#include "daemon/CEventLogger.h"
#include "hw/lime_device.h"
#include "platform/Lime.h"

const char* CMultimediaPlatform::m_pszI2CPort = nullptr;
const char* CMultimediaPlatform::m_pszFPGAFrameBuffer = nullptr;
const char* CMultimediaPlatform::m_pszLimeFrameBuffer = nullptr;

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
    int iResult = 1;
    if (init_lime_framebuffer(m_pszLimeFrameBuffer) != 0) {
        CEventLogger::logMessage(CEventLogger::eLogLevelError, "Error initializing Lime framebuffer");
        iResult = 0;
    }
    initLime();
    return iResult;
}

void CMultimediaPlatform::initLime()
{
    Lime::instance();
    Lime::reinit_framebuffer_device(m_pszLimeFrameBuffer);
    Lime::lime_set_background_color(0, 0, 0);
}

void CMultimediaPlatform::finalize()
{
    delete &Lime::instance();
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
