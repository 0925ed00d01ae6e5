/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_CTEXTFILM_H
#define HALDEND_BOARD_CODEC_CTEXTFILM_H

#include "board/codec/IFilm.h"

#include <QString>

#include <memory>

class CBoard;

/// A film without video, which costs next to nothing: a file that grows by text while it records, or a count of frames
/// while any file is played back.
class CTextFilm : public IFilm
{
public:
    ~CTextFilm() override;

    /// Makes or empties the file. Null if that fails; rcError says why. Keeps a reference to the board, which has the
    /// codec's mode.
    static std::unique_ptr<CTextFilm> record(const CBoard& rcBoard, const QString& rcFile, QString& rcError);

    /// A recording whose file is lost.
    static std::unique_ptr<CTextFilm> recordNothing(const CBoard& rcBoard);

    /// Needs a file that can be read. Null if it can't; rcError says why.
    static std::unique_ptr<CTextFilm> play(const CBoard& rcBoard, const QString& rcFile, QString& rcError);

    void pause() override {}
    void resume() override {}
    void tick() override;
    int frames() const override { return m_iFrames; }

private:
    CTextFilm(const CBoard& rcBoard, bool bRecording) : m_rcBoard(rcBoard), m_bRecording(bRecording) {}

    static std::unique_ptr<CTextFilm> open(std::unique_ptr<CTextFilm> pcFilm, int iFlags,
                                           const QString& rcFile, QString& rcError);
    void grow();

    const CBoard& m_rcBoard;
    bool m_bRecording;
    QString m_cName;
    int m_iFile = -1;
    int m_iFrames = 0;
};

#endif
