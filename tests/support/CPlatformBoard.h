/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CPLATFORMBOARD_H
#define HALDEND_TESTS_CPLATFORMBOARD_H

#include "tests/support/CAttachedBoard.h"

#include <QByteArray>

/// A virtual board that the platform is set up on, for the life of the object.
class CPlatformBoard : public CAttachedBoard
{
public:
    CPlatformBoard();
    ~CPlatformBoard();

    /// CMultimediaPlatform::initialize() on this board's devices. Returns what it returns.
    int initialize() const;

    /// Path of a register file.
    QString registerFile(const char* pszName);

private:
    // The platform doesn't copy them.
    QByteArray m_cI2C;
    QByteArray m_cFpga;
    QByteArray m_cLime;
};

#endif
