/* SPDX-License-Identifier: MIT */
#include "tests/support/CPlatformBoard.h"

#include "fpga/font.h"
#include "hw/lime_device.h"
#include "platform/CMultimediaPlatform.h"

CPlatformBoard::CPlatformBoard()
    : m_cI2C((*this)->path(BOARD_I2C).toLocal8Bit()),
      m_cFpga((*this)->path(BOARD_FPGA).toLocal8Bit()),
      m_cLime((*this)->path(BOARD_LIME).toLocal8Bit())
{
    // The glyph set is remembered for the process, and the board is new.
    load_font(-1);
}

CPlatformBoard::~CPlatformBoard()
{
    // Each bring-up maps the controller's 64 MB once more, and 32 bits hold no fifty of them.
    destroy_lime_framebuffer();
}

int CPlatformBoard::initialize() const
{
    return CMultimediaPlatform::initialize(m_cI2C.constData(), m_cFpga.constData(), m_cLime.constData());
}

QString CPlatformBoard::registerFile(const char* pszName)
{
    return (*this)->path(BOARD_CNFS) + QLatin1Char('/') + QLatin1String(pszName);
}
