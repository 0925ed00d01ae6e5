/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_CFILMRECORDING_H
#define HALDEND_BOARD_CODEC_CFILMRECORDING_H

#include "board/codec/CFilmThread.h"
#include "board/film/IFilmWriter.h"
#include "board/state/CBoard.h"

#include <memory>

/// Records the board's recorded picture: frame n is the picture n * 40 ms after the start, pauses left out. If the
/// thread comes too late for a frame, the one before stands in for it, and is counted: the film is as long as the time.
///
/// Obeys the codec's mode "stall": nothing is written then, and what was missed isn't in the film.
class CFilmRecording : public CFilmThread
{
public:
    ~CFilmRecording() override; ///< ends the film

    /// Makes or empties the file, and starts. Null if that fails; rcError says why.
    static std::unique_ptr<CFilmRecording> start(const CBoard& rcBoard, const QString& rcFile,
                                                 QString& rcError);

protected:
    CPosition frame(CPosition cNow) override;

private:
    CFilmRecording() = default;

    bool openBoard(const QString& rcDirectory, QString& rcError);
    void write(bool bRepeat);
    void catchUp(CPosition cEnd);
    void tell(bool bWritten);
    int next() const { return m_pcWriter->frames() + m_iStalled; }

    CBoard m_cBoard; ///< the thread's own
    std::unique_ptr<IFilmWriter> m_pcWriter;
    QString m_cFile;
    int m_iStalled = 0;  ///< frames that the mode kept back
    int m_iRepeated = 0; ///< frames that stand in for one that came late
    int m_iInARow = 0;   ///< such frames since the last picture
    bool m_bFailed = false;
};

#endif
