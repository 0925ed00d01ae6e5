/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CBAREVIDEODISPLAY_H
#define HALDEND_BENCH_CBAREVIDEODISPLAY_H

#include <QObject>

/// What the daemon's service object of "/videodisplay" would be if there were nothing behind it: the same
/// slots under the same generated adaptor, empty or giving a constant. A call's price here is Qt's alone.
class CBareVideoDisplay : public QObject
{
    Q_OBJECT

public slots:
    int get_displayed_video_height() { return 573; }
    int get_displayed_video_width() { return 688; }
    void set_video_layer_enabled(bool) {}
    void set_video_position(int, int) {}
    void set_video_size(int, int) {}
    void set_video_rotation(int) {}
    void set_video_mode(int) {}
};

#endif
