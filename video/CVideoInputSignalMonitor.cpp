/* SPDX-License-Identifier: MIT */
#include "video/CVideoInputSignalMonitor.h"

#include "hw/saa71xx_device.h"
#include "platform/CMultimediaPlatform.h"
#include "regdb/chip_regs.h"
#include "regdb/config_mirror.h"
#include "regdb/registers.h"

#include <cstdio>

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace
{

const int POLL_INTERVAL_MS = 1000;

} // namespace

CVideoInputSignalMonitor::CVideoInputSignalMonitor()
    : m_iI2CHandle(-1), m_bVideoInputSignalAvailable(false), m_bVideoInputAutoSyncEnabled(true)
{
}

CVideoInputSignalMonitor::~CVideoInputSignalMonitor()
{
    close(m_iI2CHandle);
}

bool CVideoInputSignalMonitor::initialize(const char* pszDevice)
{
    m_iI2CHandle = open(pszDevice, O_RDWR);
    if (m_iI2CHandle < 0) {
        fputs("Cannot open saa7113-device\n", stderr);
        return false;
    }
    if (ioctl(m_iI2CHandle, I2C_SLAVE, SAA7113_SLAVE) < 0) {
        fputs("i2c communication broken\n", stderr);
        close(m_iI2CHandle);
        m_iI2CHandle = -1;
        return false;
    }
    checkSignalAndSetSync();
    startTimer(POLL_INTERVAL_MS, Qt::PreciseTimer);
    return true;
}

bool CVideoInputSignalMonitor::isVideoInputSignalAvailable()
{
    reg_bf_group* psStatus = search_reg_bf_group_by_name(&crp_saa7113, "SBVD");
    if (psStatus == nullptr)
        return false;
    const reg_bf* psNotLocked = search_reg_bf_by_name(psStatus, "hlvln_hlck");
    if (psNotLocked == nullptr)
        return false;
    const uint32_t u32Byte = readRegister(static_cast<uint8_t>(psStatus->addr));
    psStatus->value = (psStatus->value & 0x00ffffff) | u32Byte << 24;
    make_bitfield_value(psStatus);
    update_config_setting_from_reg(&crp_saa7113, psStatus);
    return psNotLocked->value == 0;
}

void CVideoInputSignalMonitor::setVideoInputAutoSyncEnabled(bool bOn)
{
    if (bOn == m_bVideoInputAutoSyncEnabled)
        return;
    m_bVideoInputAutoSyncEnabled = bOn;
    if (bOn)
        checkSignalAndSetSync();
}

void CVideoInputSignalMonitor::timerEvent(QTimerEvent* /*pcEvent*/)
{
    const bool bAvailable = isVideoInputSignalAvailable();
    if (bAvailable == m_bVideoInputSignalAvailable)
        return;
    if (m_bVideoInputAutoSyncEnabled)
        CMultimediaPlatform::setVideoInternalSync(!bAvailable);
    m_bVideoInputSignalAvailable = bAvailable;
    emit videoInputTypeChanged(bAvailable ? eVideoInputTypeExternal : eVideoInputTypeInternal);
}

void CVideoInputSignalMonitor::checkSignalAndSetSync()
{
    m_bVideoInputSignalAvailable = isVideoInputSignalAvailable();
    CMultimediaPlatform::setVideoInternalSync(!m_bVideoInputSignalAvailable);
}

// The register's byte, 0xff if the decoder can't be read.
uint32_t CVideoInputSignalMonitor::readRegister(uint8_t u8Sub) const
{
    i2c_smbus_data uData = {};
    i2c_smbus_ioctl_data sTransfer = {I2C_SMBUS_READ, u8Sub, I2C_SMBUS_BYTE_DATA, &uData};
    return ioctl(m_iI2CHandle, I2C_SMBUS, &sTransfer) < 0 ? 0xff : uData.byte;
}
