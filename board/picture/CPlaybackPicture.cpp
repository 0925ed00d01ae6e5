/* SPDX-License-Identifier: MIT */
#include "board/picture/CPlaybackPicture.h"

#include "board/layout/board_layout.h"
#include "board/picture/CGlyphSheet.h"
#include "board/state/CBoard.h"
#include "board/state/CPlaybackFile.h"

namespace
{

const QRgb PLAYED_BLACK = 0xff000000;
const QRgb BAND = 0xff101830;
const QRgb INK = 0xffffffff;
const QRgb BARS[] = {0xffc0c0c0, 0xffc0c000, 0xff00c0c0, 0xff00c000,
                     0xffc000c0, 0xffc00000, 0xff0000c0, 0xff202020};

const int BAR_WIDTH = VIDEO_WIDTH / 8;
const int SPEED = 4; // pixels a frame
const int BAND_TOP = 208;
const int BAND_BOTTOM = 368;
const int LINE_HEIGHT = 48;
const int SCALE = 2; // of the glyphs
const int MOST_CHARACTERS = 28;

QRgb* playedLine(QImage& rcImage, int iLine)
{
    return reinterpret_cast<QRgb*>(rcImage.scanLine(iLine));
}

void drawBars(QImage& rcImage, int iFrame)
{
    const int iShift = static_cast<int>(qint64(iFrame) * SPEED % VIDEO_WIDTH);
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        for (int x = 0; x < VIDEO_WIDTH; ++x)
            playedLine(rcImage, y)[x] =
                y < BAND_TOP || y >= BAND_BOTTOM ? BARS[(x + iShift) % VIDEO_WIDTH / BAR_WIDTH] : BAND;
}

void drawCentered(QImage& rcImage, int iTop, const QString& rcText)
{
    const QImage cText = CGlyphSheet::textLine(rcText, INK, BAND);
    const int iLeft = (VIDEO_WIDTH - SCALE * cText.width()) / 2;
    for (int y = 0; y < SCALE * cText.height(); ++y)
        for (int x = 0; x < SCALE * cText.width(); ++x)
            playedLine(rcImage, iTop + y)[iLeft + x] = cText.pixel(x / SCALE, y / SCALE);
}

/// The name without its folder; of a long name only the end, which tells more.
QString shown(const QString& rcFile)
{
    const QString cName = rcFile.section(QLatin1Char('/'), -1);
    return cName.size() <= MOST_CHARACTERS ? cName : QStringLiteral("...") + cName.right(MOST_CHARACTERS - 3);
}

bool isPlaying(const SCodecState& rsState)
{
    return rsState.eActivity == SCodecState::PLAYING || rsState.eActivity == SCodecState::PLAYING_PAUSED;
}

} // namespace

QImage CPlaybackPicture::frame(const CBoard& rcBoard)
{
    const SCodecState sState = rcBoard.codecState();
    const QImage cFilm = isPlaying(sState) ? CPlaybackFile::frame(rcBoard) : QImage();
    return cFilm.isNull() ? frame(sState) : cFilm;
}

QImage CPlaybackPicture::frame(const SCodecState& rsState)
{
    QImage cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32);
    if (!isPlaying(rsState)) {
        cImage.fill(PLAYED_BLACK);
        return cImage;
    }
    const bool bPaused = rsState.eActivity == SCodecState::PLAYING_PAUSED;
    const int iFrame = qMax(0, rsState.iFrame);
    drawBars(cImage, iFrame);
    const QString LINES[] = {bPaused ? QStringLiteral("PLAYBACK PAUSED") : QStringLiteral("PLAYBACK"),
                             shown(rsState.cFile), QStringLiteral("%1").arg(iFrame, 6, 10, QLatin1Char('0'))};
    int iTop = BAND_TOP + 12;
    for (const QString& rcLine : LINES) {
        drawCentered(cImage, iTop, rcLine);
        iTop += LINE_HEIGHT;
    }
    return cImage;
}
