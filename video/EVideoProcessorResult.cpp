/* SPDX-License-Identifier: MIT */
#include "video/EVideoProcessorResult.h"

EVideoProcessorResult
ConvertImageOpResultToVideoProcessorResult(CMultimediaPlatform::EImageOpResult eImageOpResult)
{
    switch (eImageOpResult) {
    case CMultimediaPlatform::eImageOpResultOk:
        return eVideoProcessorResultOk;
    case CMultimediaPlatform::eImageOpResultFileOpenError:
        return eVideoProcessorResultFileOpenError;
    case CMultimediaPlatform::eImageOpResultFileReadError:
        return eVideoProcessorResultFileReadError;
    case CMultimediaPlatform::eImageOpResultFileWriteError:
        return eVideoProcessorResultFileWriteError;
    case CMultimediaPlatform::eImageOpResultHardwareError:
        break;
    }
    return eVideoProcessorResultError;
}
