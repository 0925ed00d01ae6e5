/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_CBOARDVIEW_H
#define HALDEND_BOARD_SERVE_CBOARDVIEW_H

#include "board/registers/CChipRegisters.h"
#include "board/trace/CTraceNames.h"

#include <QDateTime>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>
#include <QScopedPointer>

class CBoard;

/// The board as JSON, for the page, and what the page may do to it.
class CBoardView
{
public:
    /// Keeps a reference to the board, which must be open.
    explicit CBoardView(CBoard& rcBoard);
    ~CBoardView();

    /// Where the cells are on each picture, in pixels, and the colours of the palettes:
    /// {"monitor": PLACE, "recorded": PLACE, "foreground": ["#rrggbbaa", ...], "background": [...]}; PLACE is
    /// {"x", "y", "cellWidth", "cellHeight"}, where the overlay's upper left cell begins and how large a cell is.
    QJsonObject geometry() const;

    /// The displayed text page: 26 rows of 53 cells of two bytes, code and colours, in base64.
    QJsonObject cells() const;

    /// Camera, codec stand-in, trace and faults, with their choices.
    QJsonObject switches() const;

    /// {"chip", "fault": of the register file, or empty, "registers": [{"name", "window", "address", "value",
    ///  "file", "differs", "help", "fields": [{"name", "value", "file"}, ...]}, ...]}. Numbers are texts: 0x... .
    QJsonObject chip(const QString& rcChip);

    QJsonArray judgements() const;

    /// The lines that the trace has got since the last call, with names, the last 200 at most.
    QStringList newTraceLines();

    /// Carries out what a browser asks for: {"do": "camera", "what": "moving" | "test" | "plug" | "unplug", "frame"},
    /// {"do": "codec", "mode"}, {"do": "codec-delay", "ms"}, {"do": "trace", "on"}, {"do": "clear-trace"},
    /// {"do": "clear-judgements"}, {"do": "fault", "operation", "nth", "count", "short"}, {"do": "clear-faults"}.
    /// Returns its fault, or nothing if it is good.
    QString carryOut(const QJsonObject& rcOrder);

private:
    struct SChip;

    QString carryOutCamera(const QJsonObject& rcOrder);
    QString carryOutFault(const QJsonObject& rcOrder);

    CBoard& m_rcBoard;
    QHash<QString, SChip*> m_cChips;
    qint64 m_i64Trace = 0; ///< read so far, in bytes
    CTraceNames m_cNames;
};

#endif
