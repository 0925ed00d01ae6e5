/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CFILMMETER_H
#define HALDEND_BENCH_CFILMMETER_H

#include "tests/support/CDaemonProcess.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/CTemporaryBoard.h"

#include <QImage>
#include <QString>
#include <QVector>

/// What is compared: the virtual board, and what the work can be held against.
enum EFilmSide { eBoardFilm, eReferenceFilm, FILM_SIDES };

/// What is measured: milliseconds of processor time a frame.
enum EFilmFigure {
    eRender, ///< the recorded picture; the reference is a plain copy of a frame
    eEncode, ///< a frame into a film; the reference is the program ffmpeg on the same pictures
    FILM_FIGURES
};

/// Measures what a recorded frame costs, on a board whose picture has texts, a counter and a message on it.
class CFilmMeter
{
public:
    /// Brings the board up, and takes a second of its pictures. Throws std::runtime_error if that fails.
    CFilmMeter();

    CFilmMeter(const CFilmMeter&) = delete;
    CFilmMeter& operator=(const CFilmMeter&) = delete;

    /// Throws std::runtime_error when the work wasn't done.
    double measure(EFilmSide eSide, EFilmFigure eFigure);

private:
    void bringUp();
    void takePictures();

    double render();
    double copy();
    double encode();
    double encodeByProgram();

    QString path(const char* pszName) const { return m_cFolder.filePath(QLatin1String(pszName)); }

    CMemoryFolder m_cFolder;
    CPrivateBus m_cBus;
    CTemporaryBoard m_cBoard;
    CDaemonProcess m_cDaemon;
    QVector<QImage> m_cPictures;
};

#endif
