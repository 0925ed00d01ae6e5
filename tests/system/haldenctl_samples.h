/* SPDX-License-Identifier: MIT */
/* Arguments for every command of haldenctl, for tests that go through the whole table. */
#ifndef HALDEND_TESTS_HALDENCTL_SAMPLES_H
#define HALDEND_TESTS_HALDENCTL_SAMPLES_H

#include <QMap>
#include <QString>
#include <QStringList>

/// The words of a command and what may stand behind them, in the order of the table: text 1 exists then.
inline QStringList sampleOfCommand(const QString& rcCommand)
{
    // clang-format off
    static const QMap<QString, QString> cSamples{
        {"doctor text",           "1"},
        {"display size",          "360 288"},
        {"display position",      "3 4"},
        {"overlay locale",        "de_DE"},
        {"text new",              "x --color 1,2 --id 5"},
        {"text set",              "1 y"},
        {"text move",             "1 3,4"},
        {"text color",            "1 red"},
        {"text id",               "--id 5 6"},
        {"text show",             "1"},
        {"text hide",             "1"},
        {"text delete",           "1"},
        {"text get",              "--id 6"},
        {"message",               "x"},
        {"counter set",           "1:2:3"},
        {"record start",          "film.ts"},
        {"play start",            "film.ts"},
        {"image save",            "a.bmp"},
        {"image show",            "a.bmp"},
        {"debug print",           "fpga"},
        {"debug frame-generator", "on"},
        {"debug video-restore",   "off"},
        {"call",                  "videooverlay get_text_position 1"},
    };
    // clang-format on
    return rcCommand.split(QLatin1Char(' ')) +
           cSamples.value(rcCommand).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

#endif
