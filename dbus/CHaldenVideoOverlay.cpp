/* SPDX-License-Identifier: MIT */
#include "dbus/CHaldenVideoOverlay.h"

#include "CHaldendVideoOverlayAdaptor.h"
#include "daemon/CEventLogger.h"
#include "dbus/DBusRegistration.h"
#include "overlay/CVideoOverlayFrontEnd.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QTimer>

#include <cstdio>

namespace
{

const unsigned int COUNTER_TEXT_ID = 102;
const int COUNTER_INTERVAL_MS = 1000;
const unsigned int COUNTER_LAST_SENDER = 1; // the highest one that may start the counter

// Kept: the counter itself runs to 59 only, but clients may set 60 minutes and 60 seconds.
const int HOURS_MAX = 100;
const int MINUTES_MAX = 60;
const int SECONDS_MAX = 60;
const int FRAMES_MAX = 100;
const int LAST_SECOND = 59;
const int LAST_MINUTE = 59;

const int FORMAT_COUNTER = 1;
const int FORMAT_NONE = 255;

unsigned int handle(int iValue)
{
    return static_cast<unsigned int>(iValue);
}

int number(unsigned int uiValue)
{
    return static_cast<int>(uiValue);
}

EOverlayTextColor color(int iValue)
{
    return static_cast<EOverlayTextColor>(iValue);
}

unsigned char low8(int iValue)
{
    return static_cast<unsigned char>(iValue & 0xff);
}

void logInformation(const char* pszMessage)
{
    CEventLogger::logMessage(CEventLogger::eLogLevelInformational, pszMessage);
}

} // namespace

CHaldenVideoOverlay::CHaldenVideoOverlay(CVideoOverlayFrontEnd& rcFrontEnd)
    : m_rcFrontEnd(rcFrontEnd),
      m_pcAdaptor(nullptr),
      m_iCounterOwner(0),
      m_bCounterActive(false),
      m_iHours(0),
      m_iMinutes(0),
      m_iSeconds(0),
      m_iFrames(0),
      m_pcCounterTimer(new QTimer)
{
    m_pcCounterTimer->setTimerType(Qt::PreciseTimer);
    m_pcCounterTimer->setInterval(COUNTER_INTERVAL_MS);
    connect(m_pcCounterTimer, SIGNAL(timeout()), this, SLOT(onVideoTimerTimeout()));
}

CHaldenVideoOverlay::~CHaldenVideoOverlay()
{
    delete m_pcCounterTimer;
}

bool CHaldenVideoOverlay::setupDBusConnection()
{
    return registerDBusObject(*this, m_pcAdaptor, QStringLiteral("/videooverlay"));
}

// Overlay

void CHaldenVideoOverlay::adjust_character_set_to_locale(const QString& locale_code)
{
    logInformation("CHaldenVideoOverlay::adjust_character_set_to_locale");
    logInformation(locale_code.toLatin1().constData());
    m_rcFrontEnd.loadCharacterSetForLocale(locale_code);
}

int CHaldenVideoOverlay::get_max_text_line_count()
{
    return number(m_rcFrontEnd.getMaxTextLineCount());
}

int CHaldenVideoOverlay::get_max_text_line_width()
{
    return number(m_rcFrontEnd.getMaxTextLineWidth());
}

bool CHaldenVideoOverlay::is_overlay_visible()
{
    return m_rcFrontEnd.isVideoOverlayEnabled();
}

void CHaldenVideoOverlay::show_overlay()
{
    m_rcFrontEnd.setVideoOverlayEnabled(true);
}

void CHaldenVideoOverlay::hide_overlay()
{
    m_rcFrontEnd.setVideoOverlayEnabled(false);
}

void CHaldenVideoOverlay::set_osd_transparency(int i_osd_transparency)
{
    printf("CHaldenVideoOverlay: set_osd_transparency(i_osd_trans=%d)\n", i_osd_transparency);
    m_rcFrontEnd.setOsdTransparency(i_osd_transparency);
}

// Texts

int CHaldenVideoOverlay::create_text()
{
    return number(m_rcFrontEnd.createText());
}

void CHaldenVideoOverlay::destroy_text(int text_handle)
{
    m_rcFrontEnd.destroyText(handle(text_handle));
}

void CHaldenVideoOverlay::destroy_all_texts()
{
    m_rcFrontEnd.destroyAllTexts();
}

int CHaldenVideoOverlay::get_text_handle_by_id(int id)
{
    return number(m_rcFrontEnd.getTextHandleById(static_cast<unsigned int>(id)));
}

int CHaldenVideoOverlay::get_text_id(int text_handle)
{
    return number(m_rcFrontEnd.getTextId(handle(text_handle)));
}

void CHaldenVideoOverlay::set_text_id(int text_handle, int id)
{
    m_rcFrontEnd.setTextId(handle(text_handle), static_cast<unsigned int>(id));
}

QString CHaldenVideoOverlay::get_text_string(int text_handle)
{
    return m_rcFrontEnd.getTextStr(handle(text_handle));
}

void CHaldenVideoOverlay::set_text_string(int text_handle, const QString& text)
{
    m_rcFrontEnd.setTextStr(handle(text_handle), text);
}

bool CHaldenVideoOverlay::is_text_visible(int text_handle)
{
    return m_rcFrontEnd.isTextVisible(handle(text_handle));
}

void CHaldenVideoOverlay::show_text(int text_handle)
{
    m_rcFrontEnd.showText(handle(text_handle));
}

void CHaldenVideoOverlay::hide_text(int text_handle)
{
    m_rcFrontEnd.hideText(handle(text_handle));
}

void CHaldenVideoOverlay::show_all_texts()
{
    m_rcFrontEnd.showAllTexts();
}

void CHaldenVideoOverlay::hide_all_texts()
{
    m_rcFrontEnd.hideAllTexts();
}

QVariantList CHaldenVideoOverlay::get_text_position(int text_handle)
{
    const unsigned int uiHandle = handle(text_handle);
    return {int(m_rcFrontEnd.getTextXPos(uiHandle)), int(m_rcFrontEnd.getTextYPos(uiHandle)),
            int(m_rcFrontEnd.getTextEndPos(uiHandle))};
}

void CHaldenVideoOverlay::set_text_position(int text_handle, int xpos, int ypos)
{
    m_rcFrontEnd.setTextPosition(handle(text_handle), low8(xpos), low8(ypos));
}

int CHaldenVideoOverlay::get_text_format(int text_handle)
{
    return m_rcFrontEnd.getTextId(handle(text_handle)) == COUNTER_TEXT_ID ? FORMAT_COUNTER : FORMAT_NONE;
}

// Kept: the column behind the text, not its length. Clients have always got that.
int CHaldenVideoOverlay::get_text_length(int text_handle)
{
    return m_rcFrontEnd.getTextEndPos(handle(text_handle));
}

QVariantList CHaldenVideoOverlay::get_text_colors(int text_handle)
{
    const unsigned int uiHandle = handle(text_handle);
    return {int(m_rcFrontEnd.getTextForegroundColor(uiHandle)),
            int(m_rcFrontEnd.getTextBackgroundColor(uiHandle))};
}

void CHaldenVideoOverlay::set_text_colors(int text_handle, int foreground_color, int background_color)
{
    m_rcFrontEnd.setTextColors(handle(text_handle), color(foreground_color), color(background_color));
}

// Temporary texts

void CHaldenVideoOverlay::draw_temp_text(const QString& text, int foreground_color, int background_color,
                                         int xpos, int ypos, int display_duration)
{
    logInformation("CHaldenVideoOverlay::draw_temp_text");
    logInformation(text.toLatin1().constData());
    logInformation(text.toUtf8().constData());
    m_rcFrontEnd.drawTemporaryText(text, color(foreground_color), color(background_color), low8(xpos),
                                   low8(ypos), static_cast<unsigned int>(display_duration));
}

void CHaldenVideoOverlay::clear_temp_texts()
{
    m_rcFrontEnd.clearTemporaryTexts();
}

// Features that this board doesn't have

#define FEATURE_FORWARD(method, passedOnTo, operation, parameters, arguments) \
    void CHaldenVideoOverlay::method parameters                               \
    {                                                                         \
        m_rcFrontEnd.passedOnTo arguments;                                    \
    }
// Strings are shared, so a move would only lengthen the rows of the table.
OVERLAY_FEATURES_AS_SLOTS(FEATURE_FORWARD) // NOLINT(performance-unnecessary-value-param)
#undef FEATURE_FORWARD

// Video counter

bool CHaldenVideoOverlay::is_videocounter_active()
{
    return m_bCounterActive;
}

bool CHaldenVideoOverlay::isCounterRunning() const
{
    return m_pcCounterTimer->isActive();
}

void CHaldenVideoOverlay::videocounter_start(int sender)
{
    if (m_bCounterActive || static_cast<unsigned int>(sender) > COUNTER_LAST_SENDER)
        return;
    m_iCounterOwner = sender;
    m_bCounterActive = true;
    m_pcCounterTimer->start();
}

void CHaldenVideoOverlay::videocounter_pause(int sender)
{
    if (isCounterOwner(sender))
        m_pcCounterTimer->stop();
}

void CHaldenVideoOverlay::videocounter_resume(int sender)
{
    if (isCounterOwner(sender))
        m_pcCounterTimer->start();
}

void CHaldenVideoOverlay::videocounter_stop(int sender)
{
    if (!isCounterOwner(sender))
        return;
    m_bCounterActive = false;
    m_pcCounterTimer->stop();
}

QVariantList CHaldenVideoOverlay::get_videocounter()
{
    return {m_iCounterOwner, m_iHours, m_iMinutes, m_iSeconds, m_iFrames};
}

void CHaldenVideoOverlay::set_videocounter(int sender, int hours, int minutes, int seconds, int frames)
{
    if (m_bCounterActive && sender != m_iCounterOwner)
        return;
    m_iCounterOwner = sender;
    m_iHours = qMin(hours, HOURS_MAX);
    m_iMinutes = qMin(minutes, MINUTES_MAX);
    m_iSeconds = qMin(seconds, SECONDS_MAX);
    m_iFrames = qMin(frames, FRAMES_MAX);
    showCounter();
}

void CHaldenVideoOverlay::onVideoTimerTimeout()
{
    if (++m_iSeconds > LAST_SECOND) {
        m_iSeconds = 0;
        if (++m_iMinutes > LAST_MINUTE) {
            m_iMinutes = 0;
            ++m_iHours;
        }
    }
    showCounter();
    onVideocounterChanged(m_iHours, m_iMinutes, m_iSeconds, m_iFrames);
}

// Sent by hand, because the object declares no Qt signal that the adaptor could relay.
void CHaldenVideoOverlay::onVideocounterChanged(int hours, int minutes, int seconds, int frames)
{
    QDBusMessage cSignal = QDBusMessage::createSignal(QStringLiteral("/videooverlay"),
                                                      QStringLiteral("velmar.haldend.videooverlay"),
                                                      QStringLiteral("videocounter_changed"));
    cSignal << hours << minutes << seconds << frames;
    QDBusConnection::systemBus().send(cSignal);
}

void CHaldenVideoOverlay::showCounter()
{
    m_rcFrontEnd.setTextStr(m_rcFrontEnd.getTextHandleById(COUNTER_TEXT_ID), GetVideoCounterTextString());
}

QString CHaldenVideoOverlay::GetVideoCounterTextString()
{
    return QStringLiteral("%1:%2:%3")
        .arg(m_iHours, 3, 10, QLatin1Char(' '))
        .arg(m_iMinutes, 2, 10, QLatin1Char('0'))
        .arg(m_iSeconds, 2, 10, QLatin1Char('0'));
}
