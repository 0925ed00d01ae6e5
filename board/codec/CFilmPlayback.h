/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_CFILMPLAYBACK_H
#define HALDEND_BOARD_CODEC_CFILMPLAYBACK_H

#include "board/codec/CFilmThread.h"
#include "board/film/IFilmReader.h"
#include "board/state/CPlaybackFile.h"

#include <memory>

class CBoard;

/// Plays a film back, each frame at its own time, into the board's playback file. The last frame stays until the
/// playback is ended. Frames for which the thread comes too late are left out.
class CFilmPlayback : public CFilmThread
{
public:
    ~CFilmPlayback() override; ///< ends the playback

    /// Opens the film and shows its first frame. Null if that fails; rcError says why.
    static std::unique_ptr<CFilmPlayback> start(const CBoard& rcBoard, const QString& rcFile,
                                                QString& rcError);

protected:
    CPosition frame(CPosition cNow) override;

private:
    CFilmPlayback() = default;

    bool open(const CBoard& rcBoard, const QString& rcFile, QString& rcError);
    void show();
    CPosition next();

    std::unique_ptr<IFilmReader> m_pcReader;
    CPlaybackFile m_cFile;
    int m_iLeftOut = 0; ///< frames since the last one that was shown
};

#endif
