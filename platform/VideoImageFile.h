/* SPDX-License-Identifier: MIT */
/* A still image as a file: a Windows bitmap (BITMAPFILEHEADER and BITMAPINFOHEADER, 54 bytes together) and
 * the FPGA's image behind it.
 *
 * 720 x 576 pixels of 32 bits, uncompressed, bottom line first as in every bitmap. Multi-byte fields of the
 * header are little-endian. Pixels are written as they were read from the FPGA.
 */
#ifndef HALDEND_PLATFORM_VIDEOIMAGEFILE_H
#define HALDEND_PLATFORM_VIDEOIMAGEFILE_H

#include "platform/CMultimediaPlatform.h"

class QFile;

/// Writes the header and len bytes of pixels to an open file, from its current position. The header always
/// says 720 x 576. Returns eImageOpResultOk or eImageOpResultFileWriteError.
[[nodiscard]] CMultimediaPlatform::EImageOpResult WriteVideoImageBufferToFile(QFile& rcFile, const char* buf,
                                                                              unsigned int len);

/// Reads len bytes of pixels from an open file, behind its header. The header isn't checked, and bytes behind
/// the pixels are ignored. Returns eImageOpResultOk, or eImageOpResultFileReadError if the file is too short
/// or can't be read.
[[nodiscard]] CMultimediaPlatform::EImageOpResult ReadFileIntoVideoImageBuffer(QFile& rcFile, char* buf,
                                                                               unsigned int len);

#endif
