/* SPDX-License-Identifier: MIT */
#include "board/film/Ffmpeg.h"

#include <cstring>

void Ffmpeg::beQuiet()
{
    av_log_set_level(AV_LOG_QUIET);
}

QString Ffmpeg::text(int iError)
{
    char szText[AV_ERROR_MAX_STRING_SIZE] = "";
    av_strerror(iError, szText, sizeof szText);
    return QString::fromLocal8Bit(szText);
}

QString Ffmpeg::reasonOf(int iErrno)
{
    return QString::fromLocal8Bit(std::strerror(iErrno));
}
