/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CMEMORYFOLDER_H
#define HALDEND_TESTS_CMEMORYFOLDER_H

#include <QTemporaryDir>

/// A folder that goes with the object, with all that is in it. In memory where the system offers that: the virtual
/// board's stores are to cost what stores cost, not what a disk costs.
class CMemoryFolder : public QTemporaryDir
{
public:
    /// Usable if isValid() says so.
    CMemoryFolder();
};

#endif
