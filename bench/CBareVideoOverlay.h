/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CBAREVIDEOOVERLAY_H
#define HALDEND_BENCH_CBAREVIDEOOVERLAY_H

#include "hw/fpga_map.h"
#include "hw/video_geometry.h"

#include <QObject>
#include <QString>

#include <fcntl.h>
#include <unistd.h>

/// What the daemon's service object of "/videooverlay" would be if there were nothing behind it but the device: the
/// few slots that are measured, under the same generated adaptor. A call's price here is Qt's and the device's.
class CBareVideoOverlay : public QObject
{
    Q_OBJECT

public:
    CBareVideoOverlay(const char* pszDevice, QObject* pcParent)
        : QObject(pcParent), m_iDevice(open(pszDevice, O_RDWR | O_CLOEXEC))
    {
    }

public slots:
    int get_max_text_line_width() { return VIDEO_TEXT_COLUMNS; }
    int create_text() { return ++m_iTexts; }

    /// A seek and a write of two bytes a character, as far as a row goes.
    void set_text_string(int, const QString& text)
    {
        const QByteArray cCodes = text.left(VIDEO_TEXT_COLUMNS).toLatin1();
        for (int i = 0; i < cCodes.size(); ++i) {
            const char acCell[] = {cCodes[i], 0x15};
            lseek(m_iDevice, FPGA_TEXT_PAGES + FPGA_TEXT_CELL_BYTES * static_cast<unsigned>(i), SEEK_SET);
            if (write(m_iDevice, acCell, sizeof acCell) != sizeof acCell)
                qWarning("bare_qt_service: the device can't be written");
        }
    }

private:
    int m_iDevice;
    int m_iTexts = 0;
};

#endif
