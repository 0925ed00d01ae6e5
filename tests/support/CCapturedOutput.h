/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CCAPTUREDOUTPUT_H
#define HALDEND_TESTS_CCAPTUREDOUTPUT_H

#include <QByteArray>
#include <QTemporaryFile>

/// Catches what this process writes to one of its standard descriptors, from construction to take() or the
/// end of the object.
class CCapturedOutput
{
public:
    /// iDescriptor: 1 standard output, 2 standard error.
    explicit CCapturedOutput(int iDescriptor);
    ~CCapturedOutput();

    CCapturedOutput(const CCapturedOutput&) = delete;
    CCapturedOutput& operator=(const CCapturedOutput&) = delete;

    /// Ends the capture and returns what was written.
    QByteArray take();

private:
    QTemporaryFile m_cFile;
    int m_iDescriptor;
    int m_iSaved; ///< the descriptor's file while it is captured, -1 after that
};

#endif
