/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_VIDEO_EVIDEOPROCESSORRESULT_H
#define HALDEND_VIDEO_EVIDEOPROCESSORRESULT_H

#include "platform/CMultimediaPlatform.h"

/// How a command of the video processor ended; its signals use the same values. The values are those on the
/// bus.
enum EVideoProcessorResult {
    eVideoProcessorResultOk = 0,
    eVideoProcessorResultError = 1,            ///< codec service, stalled recording file or image transfer
    eVideoProcessorResultInvalidState = 2,     ///< not allowed now; also every answer of clearVideoImage()
    eVideoProcessorResultFileOpenError = 3,    ///< the image file could not be opened
    eVideoProcessorResultFileReadError = 4,    ///< the image file could not be read whole
    eVideoProcessorResultFileWriteError = 5,   ///< the image file could not be written whole
    eVideoProcessorResultMaxLengthReached = 6, ///< the recording was stopped at its maximum length
};

/// The video processor's result for that of a still image operation; an unknown one becomes
/// eVideoProcessorResultError.
EVideoProcessorResult
ConvertImageOpResultToVideoProcessorResult(CMultimediaPlatform::EImageOpResult eImageOpResult);

#endif
