/* SPDX-License-Identifier: MIT */
/* FFmpeg's libraries for this folder: their headers, owners of their objects, their errors as text. */
#ifndef HALDEND_BOARD_FILM_FFMPEG_H
#define HALDEND_BOARD_FILM_FFMPEG_H

#include <QString>

#include <memory>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/opt.h>
#include <libavutil/pixdesc.h>
#include <libswscale/swscale.h>
}

namespace Ffmpeg
{

struct SDelete {
    void operator()(AVCodecContext* psContext) const { avcodec_free_context(&psContext); }
    void operator()(AVFrame* psFrame) const { av_frame_free(&psFrame); }
    void operator()(AVPacket* psPacket) const { av_packet_free(&psPacket); }
    void operator()(SwsContext* psScaler) const { sws_freeContext(psScaler); }
    /// With its buffer, which the libraries may have replaced.
    void operator()(AVIOContext* psStream) const
    {
        av_freep(&psStream->buffer);
        avio_context_free(&psStream);
    }
};

template <typename T>
using CPointer = std::unique_ptr<T, SDelete>;

/// Keeps the libraries from writing to standard error: their results tell of failures.
void beQuiet();

/// An error of the libraries, which is negative, in their words.
QString text(int iError);

/// An error of the system.
QString reasonOf(int iErrno);

} // namespace Ffmpeg

#endif
