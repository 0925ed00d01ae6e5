/* A still image as a file: a Windows bitmap with a fixed header of 54 bytes and the FPGA's image behind it.
 *
 * 720 x 576 pixels of 32 bits, uncompressed, bottom line first, which is the order that a bitmap has anyway.
 * Multi-byte fields of the header are little-endian. Pixels are written as they were read from the FPGA.
 */
#ifndef HALDEND_PLATFORM_VIDEOIMAGEFILE_H
#define HALDEND_PLATFORM_VIDEOIMAGEFILE_H

#include "platform/CMultimediaPlatform.h"

class QFile;

/// Writes the header and len bytes of pixels to a file that is open.
CMultimediaPlatform::EImageOpResult WriteVideoImageBufferToFile(QFile& rcFile, const char* buf,
                                                                unsigned int len);

/// Reads len bytes of pixels from a file that is open. The header isn't looked at, and what follows the
/// pixels is ignored.
CMultimediaPlatform::EImageOpResult ReadFileIntoVideoImageBuffer(QFile& rcFile, char* buf, unsigned int len);

#endif
