/* SPDX-License-Identifier: MIT */
#include "board/film/CFilmWriter.h"

#include "board/film/CFrameScaler.h"
#include "board/film/Ffmpeg.h"
#include "hw/video_geometry.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Ffmpeg;

namespace
{

// 22 million bytes a minute are 2.93 million bits a second; the transport stream takes the rest. The least rate
// matters as much as the largest: without it a picture that stands still takes a third.
const int BITS_PER_SECOND = 2800000;
const int VBV_BITS = 1835008; // the standard's largest at this size
const int GROUP_FRAMES = 12;
const AVRational FRAME_TIME = {1, VIDEO_FRAME_RATE};
const AVRational PIXEL_ASPECT = {16, 15};
const int MUX_DELAY_US = 700000; // from a frame's bytes to its display

// More than a frame: so each frame goes in one write.
const int WRITE_BUFFER_BYTES = 1 << 20;

void setInterlaced(AVFrame& rsFrame)
{
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(58, 7, 100)
    rsFrame.flags |= AV_FRAME_FLAG_INTERLACED | AV_FRAME_FLAG_TOP_FIELD_FIRST;
#else
    rsFrame.interlaced_frame = 1;
    rsFrame.top_field_first = 1;
#endif
}

/// The colours that PAL has.
template <typename T>
void setColors(T& rsTarget)
{
    rsTarget.color_range = AVCOL_RANGE_MPEG;
    rsTarget.color_primaries = AVCOL_PRI_BT470BG;
    rsTarget.color_trc = AVCOL_TRC_GAMMA28;
    rsTarget.colorspace = AVCOL_SPC_BT470BG;
}

SPlanes planesOf(AVFrame& rsFrame)
{
    SPlanes sPlanes;
    for (int i = 0; i < 4; ++i) {
        sPlanes.apu8Data[i] = rsFrame.data[i];
        sPlanes.aiStride[i] = rsFrame.linesize[i];
    }
    sPlanes.iWidth = rsFrame.width;
    sPlanes.iHeight = rsFrame.height;
    sPlanes.eFormat = static_cast<AVPixelFormat>(rsFrame.format);
    sPlanes.eColors = AVCOL_SPC_BT470BG;
    return sPlanes;
}

} // namespace

/// What is open of a film. Destroyed, it closes the file.
struct CFilmWriter::SFilm {
    explicit SFilm(int iOpenFile) : iFile(iOpenFile) {}
    ~SFilm()
    {
        avformat_free_context(psFormat);
        pcStream.reset();
        ::close(iFile);
    }

    SFilm(const SFilm&) = delete;
    SFilm& operator=(const SFilm&) = delete;

    bool open(QString& rcError);
    bool openEncoder(QString& rcError);
    bool openFormat(QString& rcError);
    bool writePackets(QString& rcError);
    bool writePacket(QString& rcError);
    bool isWritten(int iResult, QString& rcError);
    int append(const uint8_t* pu8Bytes, int iBytes);

    int iFile;
    AVFormatContext* psFormat = nullptr;
    CPointer<AVIOContext> pcStream;
    CPointer<AVCodecContext> pcEncoder;
    CPointer<AVPacket> pcPacket{av_packet_alloc()};
    CPointer<AVFrame> pcFrame{av_frame_alloc()};
    CFrameScaler cScaler;
    int iErrno = 0;      ///< of bytes in the last call of the libraries that could not be written
    QString cLostReason; ///< of the frame that is missing in the group of frames; empty if none is
};

namespace
{

template <typename TFilm>
int writeFile(void* pvFilm, uint8_t* pu8Bytes, int iBytes)
{
    return static_cast<TFilm*>(pvFilm)->append(pu8Bytes, iBytes);
}

#if LIBAVFORMAT_VERSION_MAJOR >= 61
template <typename TFilm>
int writeFile(void* pvFilm, const uint8_t* pu8Bytes, int iBytes)
{
    return static_cast<TFilm*>(pvFilm)->append(pu8Bytes, iBytes);
}
#endif

} // namespace

/// All of the bytes or none of them: half a frame would spoil the next one. The libraries never see a failure, because
/// they would write nothing more after it.
int CFilmWriter::SFilm::append(const uint8_t* pu8Bytes, int iBytes)
{
    struct stat sBefore = {};
    const bool bKnown = ::fstat(iFile, &sBefore) == 0;
    for (int iDone = 0; iDone < iBytes;) {
        const ssize_t iWritten = ::write(iFile, pu8Bytes + iDone, static_cast<size_t>(iBytes - iDone));
        if (iWritten > 0) {
            iDone += static_cast<int>(iWritten);
        } else if (errno != EINTR) {
            iErrno = errno;
            // What was written stays if this fails too.
            if (bKnown && iDone > 0 && ::ftruncate(iFile, sBefore.st_size) != 0)
                iErrno = errno;
            break;
        }
    }
    return iBytes;
}

bool CFilmWriter::SFilm::openEncoder(QString& rcError)
{
    const AVCodec* psCodec = avcodec_find_encoder(AV_CODEC_ID_MPEG2VIDEO);
    if (psCodec == nullptr) {
        rcError = QStringLiteral("FFmpeg's libraries have no encoder for MPEG-2");
        return false;
    }
    pcEncoder.reset(avcodec_alloc_context3(psCodec));
    AVCodecContext& rsEncoder = *pcEncoder;
    rsEncoder.width = VIDEO_WIDTH;
    rsEncoder.height = VIDEO_HEIGHT;
    rsEncoder.pix_fmt = AV_PIX_FMT_YUV420P;
    rsEncoder.time_base = FRAME_TIME;
    rsEncoder.framerate = av_inv_q(FRAME_TIME);
    rsEncoder.sample_aspect_ratio = PIXEL_ASPECT;
    rsEncoder.field_order = AV_FIELD_TT;
    rsEncoder.flags |= AV_CODEC_FLAG_INTERLACED_DCT | AV_CODEC_FLAG_INTERLACED_ME;
    setColors(rsEncoder);
    rsEncoder.bit_rate = BITS_PER_SECOND;
    rsEncoder.rc_min_rate = BITS_PER_SECOND;
    rsEncoder.rc_max_rate = BITS_PER_SECOND;
    rsEncoder.rc_buffer_size = VBV_BITS;
    rsEncoder.gop_size = GROUP_FRAMES;
    rsEncoder.max_b_frames = 0; // each frame is in the file a frame later
    rsEncoder.thread_count = 1;
    const int iResult = avcodec_open2(pcEncoder.get(), psCodec, nullptr);
    if (iResult < 0)
        rcError = QStringLiteral("the encoder refuses to start (%1)").arg(text(iResult));
    return iResult >= 0;
}

bool CFilmWriter::SFilm::openFormat(QString& rcError)
{
    auto* pu8Buffer = static_cast<unsigned char*>(av_malloc(WRITE_BUFFER_BYTES));
    pcStream.reset(
        avio_alloc_context(pu8Buffer, WRITE_BUFFER_BYTES, 1, this, nullptr, writeFile<SFilm>, nullptr));
    int iResult = avformat_alloc_output_context2(&psFormat, nullptr, "mpegts", nullptr);
    AVStream* psStream = iResult < 0 ? nullptr : avformat_new_stream(psFormat, nullptr);
    if (psStream != nullptr) {
        psFormat->pb = pcStream.get();
        psFormat->flags |= AVFMT_FLAG_CUSTOM_IO | AVFMT_FLAG_FLUSH_PACKETS;
        psFormat->max_delay = MUX_DELAY_US;
        psStream->time_base = FRAME_TIME;
        psStream->avg_frame_rate = av_inv_q(FRAME_TIME);
        iResult = avcodec_parameters_from_context(psStream->codecpar, pcEncoder.get());
        if (iResult >= 0)
            iResult = avformat_write_header(psFormat, nullptr);
    }
    if (psStream == nullptr || iResult < 0)
        rcError = QStringLiteral("the transport stream can't be begun (%1)").arg(text(iResult));
    return psStream != nullptr && iResult >= 0;
}

bool CFilmWriter::SFilm::open(QString& rcError)
{
    if (!openEncoder(rcError) || !openFormat(rcError))
        return false;
    AVFrame& rsFrame = *pcFrame;
    rsFrame.format = pcEncoder->pix_fmt;
    rsFrame.width = pcEncoder->width;
    rsFrame.height = pcEncoder->height;
    setColors(rsFrame);
    setInterlaced(rsFrame);
    const int iResult = av_frame_get_buffer(&rsFrame, 0);
    if (iResult < 0)
        rcError = text(iResult);
    return iResult >= 0;
}

/// The result of a call of the libraries and of the writes in it.
bool CFilmWriter::SFilm::isWritten(int iResult, QString& rcError)
{
    if (iErrno != 0)
        rcError = reasonOf(iErrno);
    else if (iResult < 0)
        rcError = text(iResult);
    const bool bWritten = iErrno == 0 && iResult >= 0;
    iErrno = 0;
    return bWritten;
}

/// Without a frame of its group a frame is no use. So after a loss the film goes on with the next group.
bool CFilmWriter::SFilm::writePacket(QString& rcError)
{
    if ((pcPacket->flags & AV_PKT_FLAG_KEY) != 0)
        cLostReason.clear();
    if (cLostReason.isEmpty() && !isWritten(av_write_frame(psFormat, pcPacket.get()), rcError))
        cLostReason = rcError;
    if (!cLostReason.isEmpty())
        rcError = cLostReason;
    return cLostReason.isEmpty();
}

/// What the encoder has ready.
bool CFilmWriter::SFilm::writePackets(QString& rcError)
{
    bool bWritten = true;
    while (avcodec_receive_packet(pcEncoder.get(), pcPacket.get()) >= 0) {
        pcPacket->stream_index = 0;
        pcPacket->duration = 1;
        av_packet_rescale_ts(pcPacket.get(), FRAME_TIME, psFormat->streams[0]->time_base);
        bWritten = writePacket(rcError) && bWritten;
        av_packet_unref(pcPacket.get());
    }
    return bWritten;
}

CFilmWriter::CFilmWriter()
{
    beQuiet();
}

CFilmWriter::~CFilmWriter()
{
    close();
}

bool CFilmWriter::fail(const QString& rcReason)
{
    m_cError = QStringLiteral("%1: %2").arg(m_cPath, rcReason);
    return false;
}

bool CFilmWriter::open(const QString& rcPath)
{
    close();
    m_cPath = rcPath;
    m_cError.clear();
    m_iFrames = 0;
    // Not QFile, which encodes names as the environment says.
    const int iFile =
        ::open(rcPath.toUtf8().constData(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0666);
    if (iFile < 0)
        return fail(reasonOf(errno));
    m_pcFilm = std::make_unique<SFilm>(iFile);
    QString cReason;
    if (m_pcFilm->open(cReason))
        return true;
    m_pcFilm.reset();
    return fail(cReason);
}

bool CFilmWriter::close()
{
    if (m_pcFilm == nullptr)
        return true;
    QString cReason;
    bool bWritten = true;
    if (m_iFrames > 0) {
        avcodec_send_frame(m_pcFilm->pcEncoder.get(), nullptr);
        bWritten = m_pcFilm->writePackets(cReason);
        bWritten = m_pcFilm->isWritten(av_write_trailer(m_pcFilm->psFormat), cReason) && bWritten;
    }
    m_pcFilm.reset();
    return bWritten || fail(cReason);
}

bool CFilmWriter::write(const QImage& rcPicture)
{
    if (m_pcFilm == nullptr)
        return false;
    AVFrame& rsFrame = *m_pcFilm->pcFrame;
    // The encoder may still have the frame before.
    if (av_frame_make_writable(&rsFrame) < 0 || rcPicture.format() != QImage::Format_RGB32 ||
        !m_pcFilm->cScaler.convert(SPlanes::ofPicture(rcPicture, rcPicture.constBits()), planesOf(rsFrame),
                                   true))
        return fail(QStringLiteral("a picture that can't be converted"));
    return encode();
}

bool CFilmWriter::repeat()
{
    return m_pcFilm != nullptr && m_iFrames > 0 && encode();
}

bool CFilmWriter::encode()
{
    m_pcFilm->pcFrame->pts = m_iFrames++;
    const int iResult = avcodec_send_frame(m_pcFilm->pcEncoder.get(), m_pcFilm->pcFrame.get());
    QString cReason = iResult < 0 ? text(iResult) : QString();
    return (m_pcFilm->writePackets(cReason) && iResult >= 0) || fail(cReason);
}
