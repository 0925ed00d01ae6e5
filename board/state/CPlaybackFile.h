/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_STATE_CPLAYBACKFILE_H
#define HALDEND_BOARD_STATE_CPLAYBACKFILE_H

#include "board/state/CMappedFile.h"

#include <QImage>
#include <QString>

class CBoard;

/// The frame of the film that the codec stand-in plays back, on its way to the picture: a file of the board, which
/// exists while a film is played.
///
/// It holds two frames in turns, so a reader always gets a whole one.
class CPlaybackFile
{
public:
    CPlaybackFile() = default;
    ~CPlaybackFile(); ///< removes the file

    CPlaybackFile(const CPlaybackFile&) = delete;
    CPlaybackFile& operator=(const CPlaybackFile&) = delete;

    /// Makes the file, without a frame yet. The board outlives it. False if it can't; rcError says why.
    [[nodiscard]] bool create(const CBoard& rcBoard, QString& rcError);

    /// The frame from now on: 720 x 576, Format_RGB32.
    void show(const QImage& rcFrame);

    /// The frame now, 720 x 576, Format_RGB32. Null if no film is played back on the board.
    static QImage frame(const CBoard& rcBoard);

    /// Removes what a stand-in that was killed left.
    static void remove(const CBoard& rcBoard);

private:
    CMappedFile m_cFile;
    QString m_cPath;
    const CBoard* m_pcBoard = nullptr;
};

#endif
