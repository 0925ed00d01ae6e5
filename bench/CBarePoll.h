/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CBAREPOLL_H
#define HALDEND_BENCH_CBAREPOLL_H

#include <QObject>

#include <fcntl.h>
#include <linux/i2c-dev.h>
#include <linux/i2c.h>
#include <sys/ioctl.h>

/// The least that looks at the input signal: a timer of a second, and the decoder's status register read.
class CBarePoll : public QObject
{
    Q_OBJECT

public:
    CBarePoll(const char* pszDevice, QObject* pcParent)
        : QObject(pcParent), m_iDevice(open(pszDevice, O_RDWR | O_CLOEXEC))
    {
    }

    /// False if the decoder can't be read.
    bool start()
    {
        const int DECODER = 0x25;
        return ioctl(m_iDevice, I2C_SLAVE, DECODER) == 0 && read() && startTimer(1000, Qt::PreciseTimer) != 0;
    }

protected:
    void timerEvent(QTimerEvent*) override
    {
        if (!read())
            qWarning("bare_qt_service: the decoder can't be read");
    }

private:
    bool read() const
    {
        const quint8 STATUS = 0x1f;
        i2c_smbus_data uData = {};
        i2c_smbus_ioctl_data sTransfer = {I2C_SMBUS_READ, STATUS, I2C_SMBUS_BYTE_DATA, &uData};
        return ioctl(m_iDevice, I2C_SMBUS, &sTransfer) == 0;
    }

    int m_iDevice;
};

#endif
