/* SPDX-License-Identifier: MIT */
#include "board/picture/CTestPicture.h"

#include "board/layout/board_layout.h"
#include "board/picture/CGlyphSheet.h"

namespace
{

const QRgb BLACK = 0xff000000;
const QRgb WHITE = 0xffffffff;
const QRgb FIELD = 0xff3c4450;
const QRgb GRID = 0xff6c7684;
const QRgb LABEL = 0xffd0d8e0;
const QRgb DARK = 0xff14181c;
const QRgb POINTER = 0xffffc000;

const int CELL = 40;   // distance of the grid's lines
const int BORDER = 16; // between the two frames
const int RADIUS = 248;
const int LEFT = VIDEO_WIDTH / 2 - RADIUS;
const int DIAMETER = 2 * RADIUS;

// Lines of the circle's contents, from top to bottom.
const int SIZE_TOP = 64;
const int BARS_TOP = 112;
const int STEPS_TOP = 192;
const int RAMP_TOP = 232;
const int CROSS_TOP = 256;
const int GRATINGS_TOP = 320;
const int NUMBERS_TOP = 392;
const int POINTER_TOP = 416;
const int FRAME_TOP = 464;

// What the figures of the overlay's letters take of their cells.
const int INK_LEFT = 2;
const int INK_TOP = 2;
const int GLYPH_WIDTH = 8;
const int GLYPH_HEIGHT = 14;
const int GLYPH_PITCH = 12;

QRgb grey(int iLevel)
{
    return qRgb(iLevel, iLevel, iLevel);
}

} // namespace

QImage CTestPicture::frame(int iFrame)
{
    return CTestPicture(qMax(0, iFrame)).m_cImage;
}

CTestPicture::CTestPicture(int iFrame)
    : m_cImage(VIDEO_WIDTH, VIDEO_HEIGHT, QImage::Format_RGB32), m_iFrame(iFrame)
{
    drawBackground();
    drawBorder();
    drawCoordinates();
    drawCorners();
    m_bInCircle = true;
    drawCircleContents();
    m_bInCircle = false;
    drawRing();
}

void CTestPicture::drawBackground()
{
    m_cImage.fill(FIELD);
    for (int x = CELL; x < VIDEO_WIDTH; x += CELL)
        fill(x, 0, 1, VIDEO_HEIGHT, GRID);
    for (int y = CELL; y < VIDEO_HEIGHT; y += CELL)
        fill(0, y, VIDEO_WIDTH, 1, GRID);
}

void CTestPicture::drawBorder()
{
    for (int x = 0; x < VIDEO_WIDTH; ++x)
        for (int y = 0; y < VIDEO_HEIGHT; ++y) {
            const bool bInside =
                x >= BORDER && x < VIDEO_WIDTH - BORDER && y >= BORDER && y < VIDEO_HEIGHT - BORDER;
            if (!bInside)
                plot(x, y, (x / CELL + y / CELL) % 2 == 0 ? DARK : grey(0xb0));
        }
    frameRectangle(0, 0, VIDEO_WIDTH, VIDEO_HEIGHT, WHITE);
    frameRectangle(BORDER, BORDER, VIDEO_WIDTH - 2 * BORDER, VIDEO_HEIGHT - 2 * BORDER, WHITE);
}

void CTestPicture::drawCoordinates()
{
    const int SCALE = 1;
    const int DISTANCE = 4; // from the lines that a number belongs to
    for (int x = 2 * CELL; x < VIDEO_WIDTH - 2 * CELL; x += 2 * CELL) {
        drawText(x + DISTANCE, BORDER + DISTANCE, SCALE, QString::number(x), LABEL);
        drawText(x + DISTANCE, VIDEO_HEIGHT - BORDER - DISTANCE - SCALE * GLYPH_HEIGHT, SCALE,
                 QString::number(x), LABEL);
    }
    for (int y = 2 * CELL; y < VIDEO_HEIGHT - 2 * CELL; y += 2 * CELL) {
        drawText(BORDER + DISTANCE, y + DISTANCE, SCALE, QString::number(y), LABEL);
        drawText(VIDEO_WIDTH - BORDER - DISTANCE - 3 * SCALE * GLYPH_PITCH, y + DISTANCE, SCALE,
                 QString::number(y), LABEL);
    }
}

void CTestPicture::drawCorners()
{
    const int SCALE = 3;
    const int WIDTH = 46;
    const int HEIGHT = 54;
    const int FAR_X = VIDEO_WIDTH - BORDER - WIDTH;
    const int FAR_Y = VIDEO_HEIGHT - BORDER - HEIGHT;
    const QPoint cCorners[] = {
        {BORDER, BORDER},
        {FAR_X,  BORDER},
        {FAR_X,  FAR_Y },
        {BORDER, FAR_Y }
    };
    int iNumber = 1;
    for (const QPoint& rcCorner : cCorners) {
        fill(rcCorner.x(), rcCorner.y(), WIDTH, HEIGHT, DARK);
        frameRectangle(rcCorner.x(), rcCorner.y(), WIDTH, HEIGHT, WHITE);
        drawText(rcCorner.x() + (WIDTH - SCALE * GLYPH_WIDTH) / 2,
                 rcCorner.y() + (HEIGHT - SCALE * GLYPH_HEIGHT) / 2, SCALE, QString::number(iNumber++),
                 WHITE);
    }
}

void CTestPicture::drawCircleContents()
{
    fill(LEFT, 0, DIAMETER, BARS_TOP, grey(0xe8));
    drawCenteredText(VIDEO_WIDTH / 2, SIZE_TOP, 2, QStringLiteral("%1x%2").arg(VIDEO_WIDTH).arg(VIDEO_HEIGHT),
                     DARK);
    drawBars();
    drawGreys();
    drawCross();
    drawGratings();
    drawPointer();
    fill(LEFT, FRAME_TOP, DIAMETER, VIDEO_HEIGHT - FRAME_TOP, DARK);
    drawCenteredText(VIDEO_WIDTH / 2, FRAME_TOP + 14, 2,
                     QStringLiteral("%1").arg(m_iFrame, 6, 10, QLatin1Char('0')), POINTER);
}

void CTestPicture::drawBars()
{
    const QRgb BARS[] = {WHITE,      0xffffff00, 0xff00ffff, 0xff00ff00,
                         0xffff00ff, 0xffff0000, 0xff0000ff, BLACK};
    const int WIDTH = DIAMETER / 8;
    int x = LEFT;
    for (const QRgb uColor : BARS) {
        fill(x, BARS_TOP, WIDTH, STEPS_TOP - BARS_TOP, uColor);
        x += WIDTH;
    }
}

void CTestPicture::drawGreys()
{
    const int STEPS = 16;
    const int WIDTH = DIAMETER / STEPS;
    for (int iStep = 0; iStep < STEPS; ++iStep)
        fill(LEFT + iStep * WIDTH, STEPS_TOP, WIDTH, RAMP_TOP - STEPS_TOP, grey(iStep * 255 / (STEPS - 1)));
    for (int x = 0; x < DIAMETER; ++x)
        fill(LEFT + x, RAMP_TOP, 1, CROSS_TOP - RAMP_TOP, grey(255 - x * 255 / (DIAMETER - 1)));
}

void CTestPicture::drawCross()
{
    const int CENTER_X = VIDEO_WIDTH / 2;
    const int CENTER_Y = VIDEO_HEIGHT / 2;
    fill(LEFT, CROSS_TOP, DIAMETER, GRATINGS_TOP - CROSS_TOP, BLACK);
    fill(LEFT, CENTER_Y - 1, DIAMETER, 2, WHITE);
    fill(CENTER_X - 1, CROSS_TOP, 2, GRATINGS_TOP - CROSS_TOP, WHITE);
    for (int i = 10; i < RADIUS; i += 10) {
        const int iTick = i % 50 == 0 ? 12 : 5;
        fill(CENTER_X - 1 - i, CENTER_Y - iTick, 2, 2 * iTick, WHITE);
        fill(CENTER_X - 1 + i, CENTER_Y - iTick, 2, 2 * iTick, WHITE);
    }
}

void CTestPicture::drawGratings()
{
    const int FIELDS = 6;
    const int GAP = 4;
    const int WIDTH = (DIAMETER - (FIELDS - 1) * GAP) / FIELDS;
    const int BOTTOM = NUMBERS_TOP - GAP;
    fill(LEFT, GRATINGS_TOP, DIAMETER, POINTER_TOP - GRATINGS_TOP, DARK);
    for (int iField = 0; iField < FIELDS; ++iField) {
        const int iLeft = LEFT + iField * (WIDTH + GAP);
        const int iPixels = iField % 3 + 1;
        const bool bVertical = iField < 3;
        for (int y = GRATINGS_TOP + GAP; y < BOTTOM; ++y)
            for (int x = iLeft; x < iLeft + WIDTH; ++x)
                plot(x, y, (bVertical ? x : y) / iPixels % 2 == 0 ? WHITE : BLACK);
        drawCenteredText(iLeft + WIDTH / 2, NUMBERS_TOP + 3, 1, QString::number(iPixels), LABEL);
    }
}

void CTestPicture::drawPointer()
{
    const int SPEED = 4; // pixels a frame
    const int WIDTH = 8;
    fill(LEFT, POINTER_TOP, DIAMETER, FRAME_TOP - POINTER_TOP, FIELD);
    for (int x = CELL; x < VIDEO_WIDTH; x += CELL)
        fill(x, POINTER_TOP, 1, FRAME_TOP - POINTER_TOP, GRID);
    const int iTravel = DIAMETER - WIDTH;
    const int iPlace = static_cast<int>((RADIUS + qint64(m_iFrame) * SPEED) % iTravel);
    fill(LEFT + iPlace, POINTER_TOP, WIDTH, FRAME_TOP - POINTER_TOP, POINTER);
}

void CTestPicture::drawRing()
{
    for (int y = 0; y < VIDEO_HEIGHT; ++y)
        for (int x = LEFT - 2; x < LEFT + DIAMETER + 2; ++x)
            if (isInCircle(x, y, RADIUS + 2) && !isInCircle(x, y, RADIUS - 1))
                plot(x, y, WHITE);
}

bool CTestPicture::isInCircle(int x, int y, int iRadius) const
{
    // Doubled coordinates: the centre lies between pixels.
    const int iX = 2 * x - (VIDEO_WIDTH - 1);
    const int iY = 2 * y - (VIDEO_HEIGHT - 1);
    return iX * iX + iY * iY < 4 * iRadius * iRadius;
}

void CTestPicture::plot(int x, int y, QRgb uColor)
{
    if (!m_bInCircle || isInCircle(x, y, RADIUS))
        reinterpret_cast<QRgb*>(m_cImage.scanLine(y))[x] = uColor;
}

void CTestPicture::fill(int x, int y, int iWidth, int iHeight, QRgb uColor)
{
    for (int iRow = y; iRow < y + iHeight; ++iRow)
        for (int iColumn = x; iColumn < x + iWidth; ++iColumn)
            plot(iColumn, iRow, uColor);
}

void CTestPicture::frameRectangle(int x, int y, int iWidth, int iHeight, QRgb uColor)
{
    fill(x, y, iWidth, 1, uColor);
    fill(x, y + iHeight - 1, iWidth, 1, uColor);
    fill(x, y, 1, iHeight, uColor);
    fill(x + iWidth - 1, y, 1, iHeight, uColor);
}

void CTestPicture::drawText(int x, int y, int iScale, const QString& rcText, QRgb uColor)
{
    const QImage cLine = CGlyphSheet::textLine(rcText, WHITE, BLACK);
    for (int iLine = 0; iLine < cLine.height(); ++iLine)
        for (int iColumn = 0; iColumn < cLine.width(); ++iColumn)
            if (cLine.pixel(iColumn, iLine) == WHITE)
                fill(x + (iColumn - INK_LEFT) * iScale, y + (iLine - INK_TOP) * iScale, iScale, iScale,
                     uColor);
}

void CTestPicture::drawCenteredText(int iCenterX, int y, int iScale, const QString& rcText, QRgb uColor)
{
    const int iWidth = (rcText.size() * GLYPH_PITCH - (GLYPH_PITCH - GLYPH_WIDTH)) * iScale;
    drawText(iCenterX - iWidth / 2, y, iScale, rcText, uColor);
}
