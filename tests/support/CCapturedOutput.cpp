/* SPDX-License-Identifier: MIT */
#include "tests/support/CCapturedOutput.h"

#include <cstdio>

#include <unistd.h>

CCapturedOutput::CCapturedOutput(int iDescriptor) : m_iDescriptor(iDescriptor), m_iSaved(-1)
{
    fflush(nullptr);
    if (!m_cFile.open())
        return;
    m_iSaved = dup(iDescriptor);
    dup2(m_cFile.handle(), iDescriptor);
}

CCapturedOutput::~CCapturedOutput()
{
    take();
}

QByteArray CCapturedOutput::take()
{
    if (m_iSaved < 0)
        return {};
    fflush(nullptr);
    dup2(m_iSaved, m_iDescriptor);
    close(m_iSaved);
    m_iSaved = -1;
    m_cFile.seek(0);
    return m_cFile.readAll();
}
