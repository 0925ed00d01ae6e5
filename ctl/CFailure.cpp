/* SPDX-License-Identifier: MIT */
#include "ctl/CFailure.h"

#include <utility>

CFailure::CFailure(EExitStatus eStatus, QString cText)
    : m_eStatus(eStatus), m_cText(std::move(cText)), m_cUtf8(m_cText.toUtf8())
{
}
