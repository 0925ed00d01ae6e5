#ifndef HALDEND_VIDEO_EVIDEOPROCESSORRESULT_H
#define HALDEND_VIDEO_EVIDEOPROCESSORRESULT_H

#include "platform/CMultimediaPlatform.h"

/// How a command of the video processor ended, and what its signals report. The values travel on the bus.
enum EVideoProcessorResult {
    eVideoProcessorResultOk = 0,
    eVideoProcessorResultError = 1,            ///< codec service, stalled recording file or image transfer
    eVideoProcessorResultInvalidState = 2,     ///< not allowed now; and what clearing an image always gives
    eVideoProcessorResultFileOpenError = 3,    ///< the image file could not be opened
    eVideoProcessorResultFileReadError = 4,    ///< the image file could not be read whole
    eVideoProcessorResultFileWriteError = 5,   ///< the image file could not be written whole
    eVideoProcessorResultMaxLengthReached = 6, ///< the recording was stopped at its maximum length
};

/// What a still image operation gave, as a result of the video processor; what isn't known is an error.
EVideoProcessorResult
ConvertImageOpResultToVideoProcessorResult(CMultimediaPlatform::EImageOpResult eImageOpResult);

#endif
