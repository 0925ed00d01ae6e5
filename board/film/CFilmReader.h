/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_FILM_CFILMREADER_H
#define HALDEND_BOARD_FILM_CFILMREADER_H

#include "board/film/IFilmReader.h"

#include <memory>

/// Reads films by FFmpeg's libraries.
class CFilmReader final : public IFilmReader
{
public:
    CFilmReader();
    ~CFilmReader() override;

    [[nodiscard]] bool open(const QString& rcPath) override;
    void close() override;
    bool isOpen() const override { return m_pcFilm != nullptr; }
    bool next() override;
    [[nodiscard]] bool rewind() override;
    qint64 time() const override { return m_iTime; }
    qint64 duration() const override { return m_iDuration; }
    QImage picture() override;
    QString errorString() const override { return m_cError; }

private:
    struct SFilm;

    bool fail(const QString& rcReason);

    QString m_cPath;
    QString m_cError;
    std::unique_ptr<SFilm> m_pcFilm;
    qint64 m_iTime = 0;
    qint64 m_iDuration = 0;
};

#endif
