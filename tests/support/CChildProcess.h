/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CCHILDPROCESS_H
#define HALDEND_TESTS_CCHILDPROCESS_H

#include <QProcess>

/// A program that serves this one. It never outlives the object, nor this process, however that ends.
///
/// Tests start all their programs by it: Qt starts those of a plain QProcess by a system call that the emulator of the
/// target's processor doesn't know.
class CChildProcess : public QProcess
{
public:
    CChildProcess();

    /// Kills it if it runs.
    ~CChildProcess() override;

protected:
    void setupChildProcess() override;

private:
    qint64 m_iParent;
};

#endif
