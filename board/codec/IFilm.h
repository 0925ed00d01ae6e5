/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_IFILM_H
#define HALDEND_BOARD_CODEC_IFILM_H

/// What the codec stand-in records or plays back, from the start of it to its end, which is the destruction.
class IFilm
{
public:
    IFilm() = default;
    virtual ~IFilm() = default;

    IFilm(const IFilm&) = delete;
    IFilm& operator=(const IFilm&) = delete;

    /// Stands still: when this returns, nothing is written or shown until resume().
    virtual void pause() = 0;
    virtual void resume() = 0;

    /// Called each TICK_MS while it isn't paused.
    virtual void tick() = 0;

    /// Recorded or played back so far, 25 a second.
    virtual int frames() const = 0;

    static const int TICK_MS = 200;
};

#endif
