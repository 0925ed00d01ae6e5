/* SPDX-License-Identifier: MIT */
#include "video/CVideoAsyncResultEvent.h"

CVideoAsyncResultEvent::CVideoAsyncResultEvent(EVideoProcessorResult eResult)
    : QEvent(TYPE), m_eResult(eResult)
{
}

CVideoAsyncResultEvent::~CVideoAsyncResultEvent() = default;
