/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_VIDEO_CVIDEOASYNCRESULTEVENT_H
#define HALDEND_VIDEO_CVIDEOASYNCRESULTEVENT_H

#include "video/EVideoProcessorResult.h"

#include <QEvent>

/// Carries the result of an action that no call waits for to a later turn of the event loop, which sends it
/// as a signal.
class CVideoAsyncResultEvent : public QEvent
{
public:
    static const QEvent::Type TYPE = static_cast<QEvent::Type>(QEvent::User + 1);

    explicit CVideoAsyncResultEvent(EVideoProcessorResult eResult);
    ~CVideoAsyncResultEvent() override;

    CVideoAsyncResultEvent(const CVideoAsyncResultEvent&) = delete;
    CVideoAsyncResultEvent& operator=(const CVideoAsyncResultEvent&) = delete;

    EVideoProcessorResult result() const { return m_eResult; }

private:
    EVideoProcessorResult m_eResult;
};

#endif
