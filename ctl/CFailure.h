/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_CFAILURE_H
#define HALDEND_CTL_CFAILURE_H

#include "ctl/ExitStatus.h"

#include <QString>

#include <exception>

/// Why a command could not be carried out: one line for the user, and the exit status. Thrown by handlers and by what
/// they call; caught where a command is run.
class CFailure : public std::exception
{
public:
    CFailure(EExitStatus eStatus, QString cText);

    EExitStatus status() const { return m_eStatus; }
    const QString& text() const { return m_cText; }
    const char* what() const noexcept override { return m_cUtf8.constData(); }

private:
    EExitStatus m_eStatus;
    QString m_cText;
    QByteArray m_cUtf8;
};

#endif
