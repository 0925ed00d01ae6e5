/* SPDX-License-Identifier: MIT */
#include "board/state/CBoard.h"

#include "board/camera/decoder.h"
#include "board/camera/frames.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QtEndian>

#include <cerrno>
#include <cstring>

#include <sys/file.h>

namespace
{

struct SOperation {
    const char* pszName;
    int iError;
};

#define OPERATION_ROW(identifier, name, error) {name, error},
const SOperation OPERATIONS[BOARD_OPERATION_COUNT] = {
    {"", 0},
    BOARD_OPERATIONS(OPERATION_ROW)
};
#undef OPERATION_ROW

static_assert(static_cast<unsigned>(BOARD_OPERATION_COUNT) <= BOARD_FAULT_SLOTS, "a slot for each operation");

#define CODEC_MODE_NAME(identifier, name) name,
const char* const CODEC_MODES[BOARD_CODEC_MODE_COUNT] = {BOARD_CODEC_MODES(CODEC_MODE_NAME)};
#undef CODEC_MODE_NAME

} // namespace

bool CBoard::map(CMappedFile& rcFile, const char* pszFile, qint64 iBytes)
{
    return rcFile.open(path(pszFile), iBytes, m_cError);
}

bool CBoard::open(const QString& rcDirectory)
{
    close();
    m_cDirectory = QDir(rcDirectory).absolutePath();
    m_cEncodedDirectory = QFile::encodeName(m_cDirectory);
    m_cError.clear();
    bool bUsable = map(m_cControl, BOARD_CONTROL, sizeof(board_control));
    if (bUsable &&
        (board_load(&control()->magic) != BOARD_MAGIC || board_load(&control()->version) != BOARD_VERSION)) {
        m_cError =
            QStringLiteral("%1: not the control file of a board of this version").arg(path(BOARD_CONTROL));
        bUsable = false;
    }
    bUsable = bUsable && map(m_cFpga, BOARD_FPGA, BOARD_FPGA_BYTES) &&
              map(m_cLime, BOARD_LIME, static_cast<qint64>(board_lime_bytes())) &&
              map(m_cI2c, BOARD_I2C, BOARD_I2C_BYTES) && map(m_cCamera, BOARD_CAMERA, BOARD_CAMERA_BYTES) &&
              map(m_cFrames, BOARD_FRAMES, BOARD_FRAMES_BYTES);
    if (!bUsable)
        close();
    return bUsable;
}

void CBoard::close()
{
    for (CMappedFile* pcFile : {&m_cControl, &m_cFpga, &m_cLime, &m_cI2c, &m_cCamera, &m_cFrames})
        pcFile->close();
    m_cCodecClaim.close();
}

QString CBoard::path(const char* pszFile) const
{
    return m_cDirectory + QLatin1Char('/') + QLatin1String(pszFile);
}

board_control* CBoard::control() const
{
    return reinterpret_cast<board_control*>(m_cControl.data());
}

// Display controller

quint32 CBoard::changes() const
{
    return isOpen() ? board_load(&control()->changes) : 0;
}

void CBoard::noteChange() const
{
    if (isOpen())
        board_note_change(control());
}

bool CBoard::limeSwapped() const
{
    return board_load(&control()->lime_order) != board_own_order();
}

static bool isLimeRegister(CBoard::ELimeWindow eWindow, quint32 u32Offset)
{
    return u32Offset < LIME_WINDOWS_END - eWindow && u32Offset % 4 == 0;
}

quint32 CBoard::limeRegister(ELimeWindow eWindow, quint32 u32Offset) const
{
    if (!isOpen() || !isLimeRegister(eWindow, u32Offset))
        return 0;
    const auto* pu32Word = reinterpret_cast<const quint32*>(m_cLime.data() + eWindow + u32Offset);
    const quint32 u32Word = __atomic_load_n(pu32Word, __ATOMIC_ACQUIRE);
    return limeSwapped() ? qbswap(u32Word) : u32Word;
}

void CBoard::setLimeRegister(ELimeWindow eWindow, quint32 u32Offset, quint32 u32Value)
{
    if (!isOpen() || !isLimeRegister(eWindow, u32Offset))
        return;
    auto* pu32Word = reinterpret_cast<quint32*>(m_cLime.data() + eWindow + u32Offset);
    __atomic_store_n(pu32Word, limeSwapped() ? qbswap(u32Value) : u32Value, __ATOMIC_RELEASE);
    board_note_change(control());
}

static bool isLimeMemory(quint32 u32Address)
{
    return u32Address < LIME_HOST_WINDOW && u32Address % 2 == 0;
}

quint16 CBoard::limeMemory16(quint32 u32Address) const
{
    if (!isOpen() || !isLimeMemory(u32Address))
        return 0;
    const quint16 u16Word = *reinterpret_cast<const quint16*>(m_cLime.data() + u32Address);
    return limeSwapped() ? qbswap(u16Word) : u16Word;
}

void CBoard::limeMemory16(quint32 u32Address, int iCount, quint16* pu16Words) const
{
    for (int i = 0; i < iCount; ++i)
        pu16Words[i] = limeMemory16(u32Address + 2 * static_cast<quint32>(i));
}

void CBoard::setLimeMemory16(quint32 u32Address, quint16 u16Value)
{
    if (!isOpen() || !isLimeMemory(u32Address))
        return;
    auto* pu16Word = reinterpret_cast<quint16*>(m_cLime.data() + u32Address);
    *pu16Word = limeSwapped() ? qbswap(u16Value) : u16Value;
    board_note_change(control());
}

QByteArray CBoard::limeMemory(quint32 u32Address, int iBytes) const
{
    if (!isOpen() || iBytes < 0 || u32Address >= LIME_HOST_WINDOW)
        return QByteArray();
    const int iMost = static_cast<int>(LIME_HOST_WINDOW - u32Address);
    return QByteArray::fromRawData(reinterpret_cast<const char*>(m_cLime.data() + u32Address),
                                   qMin(iBytes, iMost));
}

// FPGA

quint32 CBoard::fpgaRegister(quint32 u32Address) const
{
    if (!isOpen() || u32Address > BOARD_FPGA_BYTES - 4)
        return 0;
    return qFromLittleEndian<quint32>(m_cFpga.data() + u32Address);
}

void CBoard::setFpgaRegister(quint32 u32Address, quint32 u32Value)
{
    if (!isOpen() || u32Address > BOARD_FPGA_BYTES - 4)
        return;
    qToLittleEndian(u32Value, m_cFpga.data() + u32Address);
    board_note_change(control());
}

QByteArray CBoard::fpgaMemory(quint32 u32Address, int iBytes) const
{
    if (!isOpen() || iBytes < 0 || u32Address > BOARD_FPGA_BYTES ||
        static_cast<quint32>(iBytes) > BOARD_FPGA_BYTES - u32Address)
        return QByteArray();
    return QByteArray(reinterpret_cast<const char*>(m_cFpga.data() + u32Address), iBytes);
}

// I2C chips

quint8 CBoard::i2cRegister(quint8 u8Chip, quint8 u8Sub) const
{
    return isOpen() && u8Chip < 128 ? m_cI2c.data()[u8Chip * 256 + u8Sub] : quint8(0);
}

void CBoard::setI2cRegister(quint8 u8Chip, quint8 u8Sub, quint8 u8Value)
{
    if (!isOpen() || u8Chip >= 128)
        return;
    m_cI2c.data()[u8Chip * 256 + u8Sub] = u8Value;
    board_note_change(control());
}

bool CBoard::isChipSilent(quint8 u8Chip) const
{
    return !isOpen() || u8Chip >= 128 || chip_is_zeroed(m_cI2c.data() + u8Chip * 256);
}

// Camera

void CBoard::setCamera(const QImage& rcImage)
{
    if (!isOpen() || rcImage.isNull())
        return;
    QImage cImage = rcImage;
    if (cImage.size() != QSize(VIDEO_WIDTH, VIDEO_HEIGHT))
        cImage = cImage.scaled(VIDEO_WIDTH, VIDEO_HEIGHT, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    cImage = cImage.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        qToLittleEndian<quint32>(cImage.constScanLine(y), VIDEO_WIDTH,
                                 m_cCamera.data() + 4 * VIDEO_WIDTH * y);
    live_choose(control(), BOARD_CAMERA_STILL, 0);
    board_note_change(control());
}

void CBoard::setMovingCamera(int iFrame)
{
    if (!isOpen())
        return;
    live_choose(control(), BOARD_CAMERA_MOVING, iFrame < 0 ? 0 : static_cast<quint32>(iFrame) + 1);
    board_note_change(control());
}

quint32 CBoard::setCameraFrames()
{
    return isOpen() ? live_choose(control(), BOARD_CAMERA_FRAMES, 0) : 0;
}

bool CBoard::isCameraChosen(quint32 u32Choice) const
{
    return isOpen() && board_load(&camera()->choice) == u32Choice;
}

board_camera_source CBoard::cameraSource() const
{
    return isOpen() ? static_cast<board_camera_source>(board_load(&camera()->source)) : BOARD_CAMERA_STILL;
}

quint32 CBoard::cameraFrame() const
{
    return isOpen() ? live_frame_number(control()) : 0;
}

const moving* CBoard::movingTables() const
{
    if (!live_needs_moving(control()))
        return nullptr;
    if (m_pcMoving == nullptr) {
        m_pcMoving.reset(new std::max_align_t[moving_bytes() / sizeof(std::max_align_t) + 1]);
        moving_prepare(m_pcMoving.get());
    }
    return reinterpret_cast<const moving*>(m_pcMoving.get());
}

live CBoard::liveFiles() const
{
    return {m_cEncodedDirectory.constData(),
            control(),
            m_cI2c.data(),
            m_cCamera.data(),
            m_cFrames.data(),
            movingTables()};
}

QImage CBoard::cameraImage() const
{
    if (!isOpen())
        return QImage();
    QImage cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    const live sLive = liveFiles();
    live_camera(&sLive, reinterpret_cast<quint32*>(cImage.bits()));
    return cImage;
}

void CBoard::takeLivePicture(QRgb* puPixels) const
{
    if (!isOpen())
        return;
    const live sLive = liveFiles();
    live_picture(&sLive, puPixels);
}

bool CBoard::isCameraAlive() const
{
    return isOpen() && (cameraSource() != BOARD_CAMERA_FRAMES ||
                        frames_alive(control(), m_cEncodedDirectory.constData()));
}

bool CBoard::hasSignal() const
{
    if (!isOpen())
        return false;
    const live sLive = liveFiles();
    return live_has_signal(&sLive);
}

board_camera* CBoard::camera() const
{
    return isOpen() ? &control()->camera : nullptr;
}

void CBoard::setCameraPlugged(bool bPlugged)
{
    quint32 u32Status = i2cRegister(SAA7113_SLAVE, SAA7113_STATUS);
    u32Status = bPlugged ? u32Status & ~quint32(SAA7113_STATUS_NO_LOCK) : u32Status | SAA7113_STATUS_NO_LOCK;
    setI2cRegister(SAA7113_SLAVE, SAA7113_STATUS, static_cast<quint8>(u32Status));
}

bool CBoard::isCameraPlugged() const
{
    return isOpen() && (i2cRegister(SAA7113_SLAVE, SAA7113_STATUS) & SAA7113_STATUS_NO_LOCK) == 0;
}

// Trace

void CBoard::setTracing(bool bOn)
{
    if (!isOpen())
        return;
    const quint32 u32Count = board_load(&control()->trace) & ~BOARD_TRACE_MODE;
    board_store(&control()->trace, u32Count | (bOn ? BOARD_TRACE_ON : BOARD_TRACE_OFF));
}

void CBoard::setTracingFully()
{
    if (!isOpen())
        return;
    const quint32 u32Count = board_load(&control()->trace) & ~BOARD_TRACE_MODE;
    board_store(&control()->trace, (u32Count + BOARD_TRACE_COUNT) | BOARD_TRACE_FULL);
}

bool CBoard::isTracing() const
{
    return isOpen() && (board_load(&control()->trace) & BOARD_TRACE_MODE) != BOARD_TRACE_OFF;
}

bool CBoard::isTracingFully() const
{
    return isOpen() && (board_load(&control()->trace) & BOARD_TRACE_MODE) == BOARD_TRACE_FULL;
}

// One write, in append mode: the lines of programs stay whole.
bool CBoard::noteInTrace(const QStringList& rcLines)
{
    QFile cFile(path(BOARD_TRACE));
    const QByteArray cText = (rcLines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
    return rcLines.isEmpty() || (isOpen() && cFile.open(QIODevice::Append | QIODevice::Unbuffered) &&
                                 cFile.write(cText) == cText.size());
}

QStringList CBoard::linesOf(const char* pszFile) const
{
    QFile cFile(path(pszFile));
    if (!cFile.open(QIODevice::ReadOnly))
        return QStringList();
    return QString::fromUtf8(cFile.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QStringList CBoard::traceLines() const
{
    return linesOf(BOARD_TRACE);
}

bool CBoard::clearTrace()
{
    return isOpen() && QFile::resize(path(BOARD_TRACE), 0);
}

// Judgements

QStringList CBoard::notedJudgements() const
{
    return isOpen() ? linesOf(BOARD_JUDGEMENTS) : QStringList();
}

bool CBoard::clearJudgements()
{
    return isOpen() && QFile::resize(path(BOARD_JUDGEMENTS), 0);
}

// Faults

void CBoard::setFault(const SFault& rcFault)
{
    if (!isOpen() || rcFault.eOperation == BOARD_OPERATION_NONE ||
        rcFault.eOperation >= BOARD_OPERATION_COUNT)
        return;
    board_fault& rcSlot = control()->faults[rcFault.eOperation];
    const int iError = rcFault.iError != 0 ? rcFault.iError : OPERATIONS[rcFault.eOperation].iError;
    board_store(&rcSlot.fail, 0);
    board_store(&rcSlot.pass, rcFault.u32Nth > 0 ? rcFault.u32Nth - 1 : 0);
    board_store(&rcSlot.error, static_cast<quint32>(iError));
    board_store(&rcSlot.flags, rcFault.bShort ? BOARD_FAULT_SHORT : 0);
    board_store(&rcSlot.hits, 0);
    board_store(&rcSlot.fail, rcFault.u32Count);
}

void CBoard::clearFault(board_operation eOperation)
{
    if (!isOpen() || eOperation >= BOARD_OPERATION_COUNT)
        return;
    board_fault& rcSlot = control()->faults[eOperation];
    for (quint32* pu32Field : {&rcSlot.fail, &rcSlot.pass, &rcSlot.error, &rcSlot.flags, &rcSlot.hits})
        board_store(pu32Field, 0);
}

void CBoard::clearFaults()
{
    for (int iOperation = 0; iOperation < BOARD_OPERATION_COUNT; ++iOperation)
        clearFault(static_cast<board_operation>(iOperation));
}

QVector<CBoard::SFault> CBoard::faults() const
{
    QVector<SFault> cFaults;
    for (int iOperation = 1; isOpen() && iOperation < BOARD_OPERATION_COUNT; ++iOperation) {
        const board_fault& rcSlot = control()->faults[iOperation];
        SFault cFault;
        cFault.eOperation = static_cast<board_operation>(iOperation);
        cFault.u32Nth = board_load(&rcSlot.pass) + 1;
        cFault.u32Count = board_load(&rcSlot.fail);
        cFault.iError = static_cast<int>(board_load(&rcSlot.error));
        cFault.bShort = (board_load(&rcSlot.flags) & BOARD_FAULT_SHORT) != 0;
        cFault.u32Hits = board_load(&rcSlot.hits);
        if (cFault.iError != 0)
            cFaults << cFault;
    }
    return cFaults;
}

// Codec

void CBoard::setCodecMode(board_codec_mode eMode)
{
    if (isOpen() && eMode < BOARD_CODEC_MODE_COUNT)
        board_store(&control()->codec_mode, eMode);
}

board_codec_mode CBoard::codecMode() const
{
    return isOpen() ? static_cast<board_codec_mode>(board_load(&control()->codec_mode)) : BOARD_CODEC_OK;
}

void CBoard::setCodecDelay(quint32 u32Milliseconds)
{
    if (isOpen())
        board_store(&control()->codec_delay, u32Milliseconds);
}

quint32 CBoard::codecDelay() const
{
    return isOpen() ? board_load(&control()->codec_delay) : 0;
}

bool CBoard::setCodecState(const SCodecState& rsState)
{
    if (!isOpen())
        return false;
    // Replaced whole, so that readers never see half a state.
    QSaveFile cFile(path(BOARD_CODEC_STATE));
    const bool bDone =
        cFile.open(QIODevice::WriteOnly) && cFile.write(rsState.toText()) >= 0 && cFile.commit();
    board_note_change(control());
    return bDone;
}

SCodecState CBoard::codecState() const
{
    QFile cFile(path(BOARD_CODEC_STATE));
    return isOpen() && cFile.open(QIODevice::ReadOnly) ? SCodecState::fromText(cFile.readAll())
                                                       : SCodecState();
}

bool CBoard::noteCodecCall(const QString& rcLine)
{
    QFile cFile(path(BOARD_CODEC_LOG));
    return isOpen() && cFile.open(QIODevice::Append) && cFile.write(rcLine.toUtf8() + '\n') > 0;
}

QStringList CBoard::codecCalls() const
{
    return isOpen() ? linesOf(BOARD_CODEC_LOG) : QStringList();
}

bool CBoard::clearCodecCalls()
{
    return isOpen() && QFile::resize(path(BOARD_CODEC_LOG), 0);
}

// The lock goes with the process, even with a killed one. A look at it takes it for a moment: a claim waits for that.
bool CBoard::claimCodec()
{
    m_cCodecClaim.close();
    m_cCodecClaim.setFileName(path(BOARD_CODEC_LOG));
    return isOpen() && m_cCodecClaim.open(QIODevice::ReadOnly) && flock(m_cCodecClaim.handle(), LOCK_SH) == 0;
}

bool CBoard::codecRuns() const
{
    QFile cFile(path(BOARD_CODEC_LOG));
    return isOpen() && cFile.open(QIODevice::ReadOnly) && flock(cFile.handle(), LOCK_EX | LOCK_NB) != 0 &&
           errno == EWOULDBLOCK;
}

QString CBoard::codecModeName(board_codec_mode eMode)
{
    return eMode < BOARD_CODEC_MODE_COUNT ? QLatin1String(CODEC_MODES[eMode]) : QString();
}

board_codec_mode CBoard::codecModeByName(const QString& rcName)
{
    int iMode = 0;
    while (iMode < BOARD_CODEC_MODE_COUNT && rcName != QLatin1String(CODEC_MODES[iMode]))
        ++iMode;
    return static_cast<board_codec_mode>(iMode);
}

QString CBoard::operationName(board_operation eOperation)
{
    return eOperation < BOARD_OPERATION_COUNT ? QLatin1String(OPERATIONS[eOperation].pszName) : QString();
}

board_operation CBoard::operationByName(const QString& rcName)
{
    for (int iOperation = 1; iOperation < BOARD_OPERATION_COUNT; ++iOperation)
        if (rcName == QLatin1String(OPERATIONS[iOperation].pszName))
            return static_cast<board_operation>(iOperation);
    return BOARD_OPERATION_NONE;
}
