/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_DBUS_CHALDENVIDEOOVERLAY_H
#define HALDEND_DBUS_CHALDENVIDEOOVERLAY_H

#include "overlay/UnsupportedOperations.h"

#include <QObject>
#include <QString>
#include <QVariantList>

class CHaldendVideoOverlayAdaptor;
class CVideoOverlayFrontEnd;
class QTimer;

/// Service object of "/videooverlay": texts over the picture, and the video counter. The slots are the bus
/// methods of the same names, documented in velmar.haldend.videooverlay.xml. Handles, ids and colours are
/// forwarded unchecked; of positions only the low 8 bits are.
///
/// The video counter belongs to this object. One client at a time controls it, under the number that it gives
/// as sender. The counter writes itself into the text with the id 102, which a client creates, and sends a
/// signal once a second.
///
/// Kept: there is no slot set_text_format. The interface offers the method, and callers rely only on the call
/// being accepted.
class CHaldenVideoOverlay : public QObject
{
    Q_OBJECT

public:
    /// Keeps a reference: the front end must outlive this object.
    explicit CHaldenVideoOverlay(CVideoOverlayFrontEnd& rcFrontEnd);
    ~CHaldenVideoOverlay() override;

    /// Registers the object on the system bus, once. Returns false if that fails or was done before.
    [[nodiscard]] bool setupDBusConnection();

    /// The counter's text: hours in 3 places, minutes and seconds in 2 each, "  1:02:03".
    QString GetVideoCounterTextString();

    /// Whether the counter counts: it is active and not paused.
    bool isCounterRunning() const;

public slots:
    void adjust_character_set_to_locale(const QString& locale_code);
    void clear_temp_texts();
    int create_text();
    void destroy_all_texts();
    void destroy_text(int text_handle);
    void draw_temp_text(const QString& text, int foreground_color, int background_color, int xpos, int ypos,
                        int display_duration);
    int get_max_text_line_count();
    int get_max_text_line_width();
    QVariantList get_text_colors(int text_handle);
    int get_text_format(int text_handle);
    int get_text_handle_by_id(int id);
    int get_text_id(int text_handle);
    int get_text_length(int text_handle);
    QVariantList get_text_position(int text_handle);
    QString get_text_string(int text_handle);
    void hide_all_texts();
    void hide_overlay();
    void hide_text(int text_handle);
    bool is_overlay_visible();
    bool is_text_visible(int text_handle);
    void set_text_colors(int text_handle, int foreground_color, int background_color);
    void set_osd_transparency(int i_osd_transparency);
    void set_text_id(int text_handle, int id);
    void set_text_position(int text_handle, int xpos, int ypos);
    void set_text_string(int text_handle, const QString& text);
    void show_all_texts();
    void show_overlay();
    void show_text(int text_handle);

#define FEATURE_SLOT(method, passedOnTo, operation, parameters, arguments) void method parameters;
    OVERLAY_FEATURES_AS_SLOTS(FEATURE_SLOT)
#undef FEATURE_SLOT

    bool is_videocounter_active();
    void videocounter_start(int sender);
    void videocounter_pause(int sender);
    void videocounter_resume(int sender);
    void videocounter_stop(int sender);
    QVariantList get_videocounter();
    void set_videocounter(int sender, int hours, int minutes, int seconds, int frames);

    // Not on the bus

    /// Sends the counter's signal.
    void onVideocounterChanged(int hours, int minutes, int seconds, int frames);

    /// Counts one second, shows the counter and sends its signal.
    void onVideoTimerTimeout();

private:
    bool isCounterOwner(int sender) const
    {
        return m_bCounterActive && sender == m_iCounterOwner;
    }
    void showCounter();

    CVideoOverlayFrontEnd& m_rcFrontEnd;
    CHaldendVideoOverlayAdaptor* m_pcAdaptor; ///< Qt child, null until the object is registered
    int m_iCounterOwner;
    bool m_bCounterActive; ///< started and not stopped; a pause changes nothing
    int m_iHours;
    int m_iMinutes;
    int m_iSeconds;
    int m_iFrames;            ///< stored and reported, never counted
    QTimer* m_pcCounterTimer; ///< owned; runs while the counter does
};

#endif
