/* SPDX-License-Identifier: MIT */
#include "board/film/CFilmReader.h"

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

const int READ_BUFFER_BYTES = 65536;
const qint64 SECOND_US = 1000000;
const qint64 FRAME_US = SECOND_US / VIDEO_FRAME_RATE;
const qint64 LONGEST_US = 10 * SECOND_US; // of a frame; more is a leap of the time stamps
const AVRational MICROSECONDS = {1, static_cast<int>(SECOND_US)};

// Kinds of files that hold their video themselves. Play lists and the like aren't among them: they make the libraries
// open other files.
const char* const FORMATS =
    "mpegts,mpeg,mpegvideo,mov,mp4,m4a,3gp,3g2,mj2,avi,matroska,webm,ogg,flv,asf,dv,mxf,gxf,nut,"
    "h264,hevc,m4v,ivf,wtv,yuv4mpegpipe,swf,gif,apng";
const char* const NO_PROTOCOLS = "none";

// Larger frames than any camera's, and still no danger to memory.
const char* const MOST_PIXELS = "36000000";

int readFile(void* pvFile, uint8_t* pu8Buffer, int iBytes)
{
    const ssize_t iRead = ::read(*static_cast<int*>(pvFile), pu8Buffer, static_cast<size_t>(iBytes));
    if (iRead == 0)
        return AVERROR_EOF;
    return iRead > 0 ? static_cast<int>(iRead) : AVERROR(errno);
}

int64_t seekFile(void* pvFile, int64_t iOffset, int iWhence)
{
    const int iFile = *static_cast<int*>(pvFile);
    struct stat sFile = {};
    if ((iWhence & AVSEEK_SIZE) != 0)
        return ::fstat(iFile, &sFile) == 0 ? sFile.st_size : AVERROR(errno);
    const off_t iAt = ::lseek(iFile, iOffset, iWhence & ~AVSEEK_FORCE);
    return iAt >= 0 ? iAt : AVERROR(errno);
}

/// A plain file for reading, or -1; nothing that could wait. rcError says why.
int openFile(const QString& rcPath, QString& rcError)
{
    // Not QFile, which encodes names as the environment says.
    const int iFile = ::open(rcPath.toUtf8().constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (iFile < 0) {
        rcError = reasonOf(errno);
        return -1;
    }
    struct stat sFile = {};
    if (::fstat(iFile, &sFile) == 0 && S_ISREG(sFile.st_mode))
        return iFile;
    ::close(iFile);
    rcError = QStringLiteral("not a plain file");
    return -1;
}

bool isInterlaced(const AVFrame& rsFrame)
{
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(58, 7, 100)
    return (rsFrame.flags & AV_FRAME_FLAG_INTERLACED) != 0;
#else
    return rsFrame.interlaced_frame != 0;
#endif
}

int64_t durationOf(const AVFrame& rsFrame)
{
#if LIBAVUTIL_VERSION_INT >= AV_VERSION_INT(58, 2, 100)
    return rsFrame.duration;
#else
    return rsFrame.pkt_duration;
#endif
}

/// What a frame without a mark has: sets of low resolution are of one kind, high ones of another.
AVColorSpace colorsOf(const AVFrame& rsFrame)
{
    if (rsFrame.colorspace != AVCOL_SPC_UNSPECIFIED && rsFrame.colorspace != AVCOL_SPC_RGB)
        return rsFrame.colorspace;
    return rsFrame.height < 720 ? AVCOL_SPC_BT470BG : AVCOL_SPC_BT709;
}

SPlanes planesOf(const AVFrame& rsFrame)
{
    SPlanes sPlanes;
    for (int i = 0; i < 4; ++i) {
        sPlanes.apu8Data[i] = rsFrame.data[i];
        sPlanes.aiStride[i] = rsFrame.linesize[i];
    }
    sPlanes.iWidth = rsFrame.width;
    sPlanes.iHeight = rsFrame.height;
    sPlanes.eFormat = static_cast<AVPixelFormat>(rsFrame.format);
    sPlanes.eColors = colorsOf(rsFrame);
    sPlanes.bFullRange = rsFrame.color_range == AVCOL_RANGE_JPEG;
    return sPlanes;
}

} // namespace

/// What is open of a film. Destroyed, it closes the file.
struct CFilmReader::SFilm {
    explicit SFilm(int iOpenFile) : iFile(iOpenFile) {}
    ~SFilm()
    {
        avformat_close_input(&psFormat);
        pcStream.reset();
        ::close(iFile);
    }

    SFilm(const SFilm&) = delete;
    SFilm& operator=(const SFilm&) = delete;

    bool open(QString& rcError);
    bool openFormat(QString& rcError);
    bool openDecoder(QString& rcError);
    bool decode();
    bool send();

    /// Time stamps in microseconds.
    qint64 inMicroseconds(int64_t iStamps) const
    {
        return av_rescale_q(iStamps, psVideo->time_base, MICROSECONDS);
    }

    /// How long a frame lasts that doesn't say so itself.
    qint64 usualDuration() const
    {
        const AVRational sRate = psVideo->avg_frame_rate;
        return sRate.num > 0 && sRate.den > 0 ? av_rescale(SECOND_US, sRate.den, sRate.num) : FRAME_US;
    }

    int iFile;
    AVFormatContext* psFormat = nullptr;
    CPointer<AVIOContext> pcStream;
    AVStream* psVideo = nullptr;
    CPointer<AVCodecContext> pcDecoder;
    CPointer<AVPacket> pcPacket{av_packet_alloc()};
    CPointer<AVFrame> pcFrame{av_frame_alloc()};
    CFrameScaler cScaler;
    int64_t iFirst = AV_NOPTS_VALUE; ///< the first frame's time stamp; moved on where the stamps leap
    bool bFrame = false;             ///< pcFrame has one
};

bool CFilmReader::SFilm::openFormat(QString& rcError)
{
    auto* pu8Buffer = static_cast<unsigned char*>(av_malloc(READ_BUFFER_BYTES));
    pcStream.reset(avio_alloc_context(pu8Buffer, READ_BUFFER_BYTES, 0, &iFile, readFile, nullptr, seekFile));
    psFormat = avformat_alloc_context();
    psFormat->pb = pcStream.get();
    AVDictionary* psOptions = nullptr;
    av_dict_set(&psOptions, "format_whitelist", FORMATS, 0);
    av_dict_set(&psOptions, "protocol_whitelist", NO_PROTOCOLS, 0);
    int iResult = avformat_open_input(&psFormat, nullptr, nullptr, &psOptions);
    av_dict_free(&psOptions);
    if (iResult >= 0)
        iResult = avformat_find_stream_info(psFormat, nullptr);
    if (iResult < 0)
        rcError = QStringLiteral("no film that can be read (%1)").arg(text(iResult));
    return iResult >= 0;
}

bool CFilmReader::SFilm::openDecoder(QString& rcError)
{
    const AVCodec* psCodec = nullptr;
    const int iVideo = av_find_best_stream(psFormat, AVMEDIA_TYPE_VIDEO, -1, -1, &psCodec, 0);
    // The picture on the cover of a piece of music is no video.
    if (iVideo < 0 || (psFormat->streams[iVideo]->disposition & AV_DISPOSITION_ATTACHED_PIC) != 0) {
        rcError = iVideo == AVERROR_DECODER_NOT_FOUND ? QStringLiteral("its video can't be decoded")
                                                      : QStringLiteral("has no video");
        return false;
    }
    for (unsigned i = 0; i < psFormat->nb_streams; ++i)
        psFormat->streams[i]->discard = AVDISCARD_ALL;
    psVideo = psFormat->streams[iVideo];
    psVideo->discard = AVDISCARD_DEFAULT;
    pcDecoder.reset(avcodec_alloc_context3(psCodec));
    pcDecoder->thread_count = 1;
    pcDecoder->pkt_timebase = psVideo->time_base;
    AVDictionary* psOptions = nullptr;
    av_dict_set(&psOptions, "max_pixels", MOST_PIXELS, 0);
    int iResult = avcodec_parameters_to_context(pcDecoder.get(), psVideo->codecpar);
    if (iResult >= 0)
        iResult = avcodec_open2(pcDecoder.get(), psCodec, &psOptions);
    av_dict_free(&psOptions);
    if (iResult < 0)
        rcError = QStringLiteral("its video can't be decoded (%1)").arg(text(iResult));
    return iResult >= 0;
}

bool CFilmReader::SFilm::open(QString& rcError)
{
    return openFormat(rcError) && openDecoder(rcError);
}

/// Gives the decoder something to decode. False when all is given.
bool CFilmReader::SFilm::send()
{
    int iResult = av_read_frame(psFormat, pcPacket.get());
    if (iResult < 0)
        return avcodec_send_packet(pcDecoder.get(), nullptr) >= 0;
    // Whether it can be decoded shows when a frame is asked for.
    if (pcPacket->stream_index == psVideo->index)
        avcodec_send_packet(pcDecoder.get(), pcPacket.get());
    av_packet_unref(pcPacket.get());
    return true;
}

bool CFilmReader::SFilm::decode()
{
    // Into a frame of its own: at the end of the film the last one stays.
    const CPointer<AVFrame> pcNext(av_frame_alloc());
    for (;;) {
        const int iResult = avcodec_receive_frame(pcDecoder.get(), pcNext.get());
        if (iResult >= 0) {
            av_frame_unref(pcFrame.get());
            av_frame_move_ref(pcFrame.get(), pcNext.get());
            return true;
        }
        if (iResult == AVERROR_EOF || !send())
            return false;
    }
}

CFilmReader::CFilmReader()
{
    beQuiet();
}

CFilmReader::~CFilmReader() = default;

bool CFilmReader::fail(const QString& rcReason)
{
    close();
    m_cError = QStringLiteral("%1: %2").arg(m_cPath, rcReason);
    return false;
}

bool CFilmReader::open(const QString& rcPath)
{
    close();
    m_cPath = rcPath;
    m_cError.clear();
    QString cReason;
    const int iFile = openFile(rcPath, cReason);
    if (iFile < 0)
        return fail(cReason);
    m_pcFilm = std::make_unique<SFilm>(iFile);
    return m_pcFilm->open(cReason) || fail(cReason);
}

void CFilmReader::close()
{
    m_pcFilm.reset();
    m_iTime = 0;
    m_iDuration = 0;
}

// Not by a seek: there are kinds of files in which the libraries then miss the first frames.
bool CFilmReader::rewind()
{
    return open(QString(m_cPath));
}

bool CFilmReader::next()
{
    if (m_pcFilm == nullptr || !m_pcFilm->decode())
        return false;
    SFilm& rsFilm = *m_pcFilm;
    const int64_t iStamp = rsFilm.pcFrame->best_effort_timestamp;
    const qint64 iUsual = rsFilm.usualDuration();
    const qint64 iExpected = rsFilm.bFrame ? m_iTime + m_iDuration : 0;
    qint64 iTime = iExpected;
    if (iStamp != AV_NOPTS_VALUE) {
        if (rsFilm.iFirst == AV_NOPTS_VALUE)
            rsFilm.iFirst = iStamp;
        iTime = rsFilm.inMicroseconds(iStamp - rsFilm.iFirst);
        if (iTime < m_iTime || iTime > m_iTime + LONGEST_US) {
            rsFilm.iFirst = iStamp - av_rescale_q(iExpected, MICROSECONDS, rsFilm.psVideo->time_base);
            iTime = iExpected;
        }
    }
    const qint64 iDuration = rsFilm.inMicroseconds(durationOf(*rsFilm.pcFrame));
    m_iDuration = iDuration > 0 && iDuration <= LONGEST_US ? iDuration : iUsual;
    m_iTime = iTime;
    rsFilm.bFrame = true;
    return true;
}

QImage CFilmReader::picture()
{
    if (m_pcFilm == nullptr || !m_pcFilm->bFrame)
        return QImage();
    const AVFrame& rsFrame = *m_pcFilm->pcFrame;
    QImage cPicture(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    const SPlanes sFrom = planesOf(rsFrame);
    if (!m_pcFilm->cScaler.convert(sFrom, SPlanes::ofPicture(cPicture, cPicture.bits()),
                                   isInterlaced(rsFrame)))
        return QImage();
    return cPicture;
}
