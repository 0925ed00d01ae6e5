/* SPDX-License-Identifier: MIT */
#include "bench/CFilmMeter.h"

#include "bench/Measures.h"
#include "board/film/CFilmReader.h"
#include "board/film/CFilmWriter.h"
#include "board/picture/CBoardPicture.h"
#include "board/tour/CTour.h"

#include <QFile>

#include <csignal>
#include <ctime>
#include <functional>

namespace
{

const int PICTURES = VIDEO_FRAME_RATE;
const int TURNS = 8; // of the pictures, in a film: the start of the program is to count little
const int FRAMES = TURNS * PICTURES;

// The picture of an inspection, in the words of the tour.
const char* const STEPS[] = {
    "call videooverlay show_overlay",
    "call videooverlay create_text",
    "call videooverlay set_text_string is 1 \"Inspection 2026-0417  Client: Municipal works  DN 300\"",
    "call videooverlay set_text_colors iii 1 1 5",
    "call videooverlay show_text i 1",
    "call videooverlay create_text",
    "call videooverlay set_text_string is 2 \"Manhole 17 to 18, 3 EUR\"",
    "call videooverlay set_text_position iii 2 0 1",
    "call videooverlay show_text i 2",
    "call videooverlay create_text",
    "call videooverlay set_text_id ii 3 102",
    "call videooverlay set_text_position iii 3 44 25",
    "call videooverlay set_videocounter iiiii 0 0 12 34 0",
    "call videooverlay show_text i 3",
    "call videooverlay videocounter_start i 0",
    "call videooverlay draw_temp_text siiiii \" Crack at 3 o'clock \" 15 12 16 12 3600",
};

double seconds(const timespec& rsTime)
{
    return static_cast<double>(rsTime.tv_sec) + static_cast<double>(rsTime.tv_nsec) / 1e9;
}

double ownSeconds()
{
    timespec sTime = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &sTime);
    return seconds(sTime);
}

double millisecondsEach(double dSeconds, int iFrames)
{
    return dSeconds * 1000 / iFrames;
}

int framesOf(const QString& rcFile)
{
    CFilmReader cFilm;
    expect(cFilm.open(rcFile), cFilm.errorString());
    int iFrames = 0;
    while (cFilm.next())
        ++iFrames;
    return iFrames;
}

} // namespace

CFilmMeter::CFilmMeter()
{
    bringUp();
    takePictures();
}

void CFilmMeter::bringUp()
{
    expect(m_cBus.start(), m_cBus.error());
    expect(m_cBoard.make(), m_cBoard.error());
    m_cDaemon.setBusAddress(m_cBus.address());
    m_cDaemon.useBoard(m_cBoard.board().directory());
    expect(m_cDaemon.startAndWaitForName(), QString::fromUtf8(m_cDaemon.describe()));
    CTour cTour(m_cDaemon.client(), m_cBoard.board(), m_cFolder.path(), [](const QString&) {});
    for (const char* pszStep : STEPS) {
        const QString cWrong = cTour.carryOut(QString::fromUtf8(pszStep));
        expect(cWrong.isEmpty(), QString::fromUtf8(pszStep) + QStringLiteral(": ") + cWrong);
    }
    // The overlay stays as it is.
    expect(m_cDaemon.endBySignal(SIGTERM), QStringLiteral("the daemon doesn't end"));
}

// For the program: raw, one behind the other.
void CFilmMeter::takePictures()
{
    QFile cRaw(path("pictures.raw"));
    expect(cRaw.open(QIODevice::WriteOnly), cRaw.errorString());
    for (int i = 0; i < PICTURES; ++i) {
        m_cBoard.board().setMovingCamera(i);
        m_cPictures << CBoardPicture::recorded(m_cBoard.board());
        const qint64 iBytes = m_cPictures.last().sizeInBytes();
        expect(cRaw.write(reinterpret_cast<const char*>(m_cPictures.last().constBits()), iBytes) == iBytes,
               cRaw.errorString());
    }
}

double CFilmMeter::measure(EFilmSide eSide, EFilmFigure eFigure)
{
    if (eFigure == eRender)
        return eSide == eBoardFilm ? render() : copy();
    return eSide == eBoardFilm ? encode() : encodeByProgram();
}

double CFilmMeter::render()
{
    const double dStart = ownSeconds();
    for (int i = 0; i < PICTURES; ++i) {
        m_cBoard.board().setMovingCamera(i);
        expect(!CBoardPicture::recorded(m_cBoard.board()).isNull(), QStringLiteral("no picture"));
    }
    return millisecondsEach(ownSeconds() - dStart, PICTURES);
}

double CFilmMeter::copy()
{
    const double dStart = ownSeconds();
    for (const QImage& rcPicture : m_cPictures)
        expect(!rcPicture.copy().isNull(), QStringLiteral("no copy"));
    return millisecondsEach(ownSeconds() - dStart, PICTURES);
}

double CFilmMeter::encode()
{
    const QString cFile = path("ours.ts");
    const double dStart = ownSeconds();
    CFilmWriter cFilm;
    bool bDone = cFilm.open(cFile);
    for (int i = 0; bDone && i < FRAMES; ++i)
        bDone = cFilm.write(m_cPictures[i % PICTURES]);
    bDone = bDone && cFilm.close();
    const double dTime = ownSeconds() - dStart;
    expect(bDone, cFilm.errorString());
    expect(framesOf(cFile) == FRAMES, QStringLiteral("frames are missing"));
    return millisecondsEach(dTime, FRAMES);
}

double CFilmMeter::encodeByProgram()
{
    const QString cFile = path("theirs.ts");
    const QString cArguments =
        QStringLiteral(
            "-v error -nostdin -y -f rawvideo -pix_fmt bgr0 -video_size 720x576 -framerate 25 -stream_loop "
            "%1 "
            "-i %2 -vf scale=interl=1:out_color_matrix=bt601,setfield=tff -c:v mpeg2video -pix_fmt yuv420p "
            "-flags +ildct+ilme -aspect 4:3 -b:v 2800000 -minrate 2800000 -maxrate 2800000 -bufsize 1835008 "
            "-g 12 -bf 0 -threads 1 -f mpegts %3")
            .arg(TURNS - 1)
            .arg(path("pictures.raw"), cFile);
    const double dStart = childrensSeconds();
    CChildProcess cProgram;
    cProgram.start(QStringLiteral("ffmpeg"), cArguments.split(QLatin1Char(' ')));
    const bool bDone = cProgram.waitForFinished(-1) && cProgram.exitCode() == 0;
    const double dTime = childrensSeconds() - dStart;
    expect(bDone, QStringLiteral("ffmpeg: ") + QString::fromUtf8(cProgram.readAllStandardError()));
    expect(framesOf(cFile) == FRAMES, QStringLiteral("ffmpeg's frames are missing"));
    return millisecondsEach(dTime, FRAMES);
}
