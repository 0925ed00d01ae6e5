/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_CFILMWRITER_H
#define HALDEND_BOARD_FILM_CFILMWRITER_H

#include "board/film/IFilmWriter.h"

#include <memory>

/// Writes films by FFmpeg's libraries.
class CFilmWriter final : public IFilmWriter
{
public:
    CFilmWriter();
    ~CFilmWriter() override;

    [[nodiscard]] bool open(const QString& rcPath) override;
    bool close() override;
    bool isOpen() const override { return m_pcFilm != nullptr; }
    bool write(const QImage& rcPicture) override;
    bool repeat() override;
    int frames() const override { return m_iFrames; }
    QString errorString() const override { return m_cError; }

private:
    struct SFilm;

    bool fail(const QString& rcReason);
    bool encode();

    QString m_cPath;
    QString m_cError;
    std::unique_ptr<SFilm> m_pcFilm;
    int m_iFrames = 0;
};

#endif
