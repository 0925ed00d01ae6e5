/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FEED_IFRAMESOURCE_H
#define HALDEND_BOARD_FEED_IFRAMESOURCE_H

#include <QRgb>
#include <QString>

/// Where halden-camera gets its frames from.
class IFrameSource
{
public:
    enum EResult {
        NEW,   ///< a frame
        NONE,  ///< no other frame than the last one yet
        FAILED ///< and never again; errorString() says why
    };

    IFrameSource() = default;
    virtual ~IFrameSource() = default;

    IFrameSource(const IFrameSource&) = delete;
    IFrameSource& operator=(const IFrameSource&) = delete;

    /// False if there is nothing to get; errorString() says why.
    [[nodiscard]] virtual bool open() = 0;

    /// Puts the frame of a number, from 0, 25 a second, into 720 x 576 pixels. Numbers may leap. A source that has a
    /// pace of its own waits for its next frame, a tenth of a second at most, and takes no notice of the number.
    virtual EResult take(quint32 u32Frame, QRgb* puPixels) = 0;

    /// Without a look for a while: the source lets go of what it can have again. take() goes on.
    virtual void rest() = 0;

    QString errorString() const { return m_cError; }

protected:
    bool fail(const QString& rcReason)
    {
        m_cError = rcReason;
        return false;
    }

private:
    QString m_cError;
};

#endif
