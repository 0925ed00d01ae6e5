/* SPDX-License-Identifier: MIT */
#include "tests/model/CDaemonModel.h"

#include "overlay/UnsupportedOperations.h"
#include "tests/model/Locales.h"
#include "tests/model/Timers.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace
{

const unsigned int COUNTER_ID = 102;
const int COUNTER_S = 1;
const int INPUT_S = 1;
const int DURATION_MAX_S = 9999;
const int UNKNOWN_POSITION = 255;

enum ECounter { OWNER, HOURS, MINUTES, SECONDS, FRAMES };
enum ERecorder { RECORDING = 1, RECORDING_PAUSED, PLAYBACK, PLAYBACK_PAUSED };

const QByteArray NOTHING = "";

QByteArray number(int iValue)
{
    return describeValue(iValue);
}

QByteArray flag(bool bValue)
{
    return describeValue(bValue);
}

QByteArray list(const QVariantList& rcValues)
{
    QByteArray cText = "av";
    for (const QVariant& rcValue : rcValues)
        cText += ' ' + describeValue(rcValue);
    return cText;
}

unsigned int handleOf(const QVariantList& rcArguments)
{
    return static_cast<unsigned int>(rcArguments[0].toInt());
}

int low8(const QVariant& rcValue)
{
    return rcValue.toInt() & 0xff;
}

quint32 color(const QVariant& rcValue)
{
    return static_cast<quint32>(rcValue.toInt());
}

/// Everything but the marker of the byte order, which the conversion from UTF-8 drops at the begin of a text.
QString received(const QVariant& rcUtf8)
{
    const QString cText = QString::fromUtf8("x" + rcUtf8.toByteArray()).mid(1);
    return cText.startsWith(QChar(QChar::ByteOrderMark)) ? cText.mid(1) : cText;
}

#define FEATURE_NAME(method, passedOnTo, operation, parameters, arguments) #method,
const std::set<QByteArray> WITHOUT_EFFECT = {OVERLAY_FEATURES_AS_SLOTS(FEATURE_NAME) "set_text_format",
                                             "set_video_layer_enabled",
                                             "set_video_rotation",
                                             "set_video_restart",
                                             "set_video_mode",
                                             "set_video_position",
                                             "print_hardware_config",
                                             "fpga_enter_playback_mode",
                                             "fpga_enter_recording_mode",
                                             "fpga_enable_video_restore",
                                             "fpga_disable_video_restore",
                                             "fpga_enable_frame_generator",
                                             "fpga_disable_frame_generator"};
#undef FEATURE_NAME

const std::set<QByteArray> COMMANDS = {
    "start_video_recording", "pause_video_recording", "resume_video_recording", "stop_video_recording",
    "start_video_playback",  "pause_video_playback",  "resume_video_playback",  "stop_video_playback",
    "save_video_image",      "display_video_image",   "clear_video_image"};

} // namespace

const char* const CDaemonModel::WORLD = "world";

const CDaemonModel::SRow CDaemonModel::ROWS[] = {
    {"adjust_character_set_to_locale",        &CDaemonModel::setLocale        },
    {"show_overlay",                          &CDaemonModel::showOverlay      },
    {"hide_overlay",                          &CDaemonModel::hideOverlay      },
    {"is_overlay_visible",                    &CDaemonModel::isOverlayVisible },
    {"get_max_text_line_width",               &CDaemonModel::lineWidth        },
    {"get_max_text_line_count",               &CDaemonModel::lineCount        },
    {"set_osd_transparency",                  &CDaemonModel::setTransparency  },
    {"create_text",                           &CDaemonModel::createText       },
    {"destroy_text",                          &CDaemonModel::destroyText      },
    {"destroy_all_texts",                     &CDaemonModel::destroyAllTexts  },
    {"show_text",                             &CDaemonModel::showText         },
    {"hide_text",                             &CDaemonModel::hideText         },
    {"show_all_texts",                        &CDaemonModel::showAllTexts     },
    {"hide_all_texts",                        &CDaemonModel::hideAllTexts     },
    {"set_text_string",                       &CDaemonModel::setString        },
    {"set_text_position",                     &CDaemonModel::setPosition      },
    {"set_text_colors",                       &CDaemonModel::setColors        },
    {"set_text_id",                           &CDaemonModel::setId            },
    {"get_text_handle_by_id",                 &CDaemonModel::handleById       },
    {"get_text_id",                           &CDaemonModel::id               },
    {"get_text_string",                       &CDaemonModel::string           },
    {"is_text_visible",                       &CDaemonModel::isVisible        },
    {"get_text_position",                     &CDaemonModel::position         },
    {"get_text_length",                       &CDaemonModel::end              },
    {"get_text_format",                       &CDaemonModel::format           },
    {"get_text_colors",                       &CDaemonModel::colors           },
    {"draw_temp_text",                        &CDaemonModel::drawTemporary    },
    {"clear_temp_texts",                      &CDaemonModel::clearTemporary   },
    {"videocounter_start",                    &CDaemonModel::startCounter     },
    {"videocounter_pause",                    &CDaemonModel::pauseCounter     },
    {"videocounter_resume",                   &CDaemonModel::resumeCounter    },
    {"videocounter_stop",                     &CDaemonModel::stopCounter      },
    {"set_videocounter",                      &CDaemonModel::setCounter       },
    {"get_videocounter",                      &CDaemonModel::counter          },
    {"is_videocounter_active",                &CDaemonModel::isCounterActive  },
    {"query_video_recording_time",            &CDaemonModel::recordedTime     },
    {"get_video_input_type",                  &CDaemonModel::inputType        },
    {"is_video_input_available",              &CDaemonModel::isInputAvailable },
    {"set_video_input_enabled",               &CDaemonModel::setInputEnabled  },
    {"get_video_recording_average_data_rate", &CDaemonModel::dataRate         },
    {"is_video_recording_running",            &CDaemonModel::isRecording      },
    {"is_video_recording_paused",             &CDaemonModel::isRecordingPaused},
    {"is_video_playback_running",             &CDaemonModel::isPlaying        },
    {"is_video_playback_paused",              &CDaemonModel::isPlaybackPaused },
    {"set_video_size",                        &CDaemonModel::setVideoSize     },
    {"get_displayed_video_width",             &CDaemonModel::videoWidth       },
    {"get_displayed_video_height",            &CDaemonModel::videoHeight      },
    {"reload_hardware_config",                &CDaemonModel::reload           },
};

CDaemonModel::CDaemonModel()
{
    m_cTimers.start(INPUT_TIMER, INPUT_S);
}

void CDaemonModel::setFiles(const QByteArray& rcFilm, const QByteArray& rcStill)
{
    m_cFilm = rcFilm;
    m_cStill = rcStill;
    m_cRecorder.setFile(rcFilm, 0);
    m_cRecorder.setFile(rcStill, -1);
    m_cRecorder.setFolder("/");
}

QByteArray CDaemonModel::apply(const SCall& rsCall)
{
    if (rsCall.cPath == WORLD)
        return applyWorld(rsCall);
    if (isWithoutEffect(rsCall.cMethod))
        return NOTHING;
    if (COMMANDS.count(rsCall.cMethod) != 0)
        return number(
            m_cRecorder.command(rsCall.cMethod, rsCall.cArguments.value(0).toByteArray(), m_cTimers));
    for (const SRow& rsRow : ROWS)
        if (rsCall.cMethod == rsRow.pszMethod)
            return (this->*rsRow.pfMethod)(rsCall.cArguments);
    return {};
}

bool CDaemonModel::isWithoutEffect(const QByteArray& rcMethod) const
{
    return WITHOUT_EFFECT.count(rcMethod) != 0;
}

// Seconds pass, in which the film grows or not; the codec service confirms from now on, or refuses; the camera is
// plugged in or not.
QByteArray CDaemonModel::applyWorld(const SCall& rsCall)
{
    if (rsCall.cMethod == "pass") {
        if (rsCall.cArguments[1].toBool())
            m_cRecorder.growFile(m_cFilm);
        m_cTimers.pass(rsCall.cArguments[0].toInt(),
                       [this](const CTimersModel::SPurpose& rsPurpose) { onTimer(rsPurpose); });
    } else if (rsCall.cMethod == "codec") {
        m_cRecorder.setConfirming(rsCall.cArguments[0].toBool());
    } else {
        m_bPlugged = rsCall.cArguments[0].toBool();
    }
    return NOTHING;
}

void CDaemonModel::onTimer(const CTimersModel::SPurpose& rsPurpose)
{
    switch (rsPurpose.iKind) {
    case COUNTER_KIND:
        tick();
        break;
    case TEXT_KIND:
        destroy(rsPurpose.uHandle);
        break;
    case FILE_KIND:
        m_cRecorder.lookAtFile(m_cTimers);
        break;
    default:
        if (m_bSignal != m_bPlugged)
            m_cSignals << "video_input_type_changed " + number(m_bPlugged ? 0 : 1);
        m_bSignal = m_bPlugged;
    }
}

QByteArrayList CDaemonModel::takeSignals()
{
    QByteArrayList cSignals = m_cRecorder.takeSignals();
    cSignals << m_cSignals;
    m_cSignals.clear();
    return cSignals;
}

// The overlay

QByteArray CDaemonModel::setLocale(const CArguments& rcArguments)
{
    m_cTexts.setGlyphSet(glyphSetOfLocale(rcArguments[0].toByteArray()));
    return NOTHING;
}

QByteArray CDaemonModel::showOverlay(const CArguments& /*rcArguments*/)
{
    m_bOverlay = true;
    return NOTHING;
}

QByteArray CDaemonModel::hideOverlay(const CArguments& /*rcArguments*/)
{
    m_bOverlay = false;
    return NOTHING;
}

QByteArray CDaemonModel::isOverlayVisible(const CArguments& /*rcArguments*/)
{
    return flag(m_bOverlay);
}

QByteArray CDaemonModel::lineWidth(const CArguments& /*rcArguments*/)
{
    return number(53);
}

QByteArray CDaemonModel::lineCount(const CArguments& /*rcArguments*/)
{
    return number(26);
}

// Has no effect of its own, but draws all texts again.
QByteArray CDaemonModel::setTransparency(const CArguments& /*rcArguments*/)
{
    for (const auto& rcEntry : m_cTexts.texts())
        m_cTexts.drawIfVisible(rcEntry.first);
    return NOTHING;
}

// Texts

QByteArray CDaemonModel::createText(const CArguments& /*rcArguments*/)
{
    return number(static_cast<int>(m_cTexts.create()));
}

void CDaemonModel::destroy(unsigned int uHandle)
{
    m_cTimers.stop(textTimer(uHandle));
    m_cTexts.destroy(uHandle);
}

QByteArray CDaemonModel::destroyText(const CArguments& rcArguments)
{
    destroy(handleOf(rcArguments));
    return NOTHING;
}

QByteArray CDaemonModel::destroyAllTexts(const CArguments& /*rcArguments*/)
{
    while (!m_cTexts.texts().empty())
        destroy(m_cTexts.texts().begin()->first);
    return NOTHING;
}

QByteArray CDaemonModel::showText(const CArguments& rcArguments)
{
    m_cTexts.show(handleOf(rcArguments));
    return NOTHING;
}

QByteArray CDaemonModel::hideText(const CArguments& rcArguments)
{
    m_cTexts.hide(handleOf(rcArguments));
    return NOTHING;
}

QByteArray CDaemonModel::showAllTexts(const CArguments& /*rcArguments*/)
{
    for (const auto& rcEntry : m_cTexts.texts())
        m_cTexts.show(rcEntry.first);
    return NOTHING;
}

QByteArray CDaemonModel::hideAllTexts(const CArguments& /*rcArguments*/)
{
    for (const auto& rcEntry : m_cTexts.texts())
        m_cTexts.hide(rcEntry.first);
    return NOTHING;
}

QByteArray CDaemonModel::setString(const CArguments& rcArguments)
{
    const QString cString = received(rcArguments[1]);
    m_cTexts.change(handleOf(rcArguments),
                    [&cString](CTextLayerModel::SText& rsText) { rsText.cString = cString; });
    return NOTHING;
}

QByteArray CDaemonModel::setPosition(const CArguments& rcArguments)
{
    m_cTexts.change(handleOf(rcArguments), [&rcArguments](CTextLayerModel::SText& rsText) {
        rsText.x = low8(rcArguments[1]);
        rsText.y = low8(rcArguments[2]);
    });
    return NOTHING;
}

QByteArray CDaemonModel::setColors(const CArguments& rcArguments)
{
    m_cTexts.change(handleOf(rcArguments), [&rcArguments](CTextLayerModel::SText& rsText) {
        rsText.u32Foreground = color(rcArguments[1]);
        rsText.u32Background = color(rcArguments[2]);
    });
    return NOTHING;
}

QByteArray CDaemonModel::setId(const CArguments& rcArguments)
{
    m_cTexts.setId(handleOf(rcArguments), static_cast<quint32>(rcArguments[1].toInt()));
    return NOTHING;
}

QByteArray CDaemonModel::handleById(const CArguments& rcArguments)
{
    return number(static_cast<int>(m_cTexts.handleById(handleOf(rcArguments))));
}

QByteArray CDaemonModel::id(const CArguments& rcArguments)
{
    const CTextLayerModel::SText* psText = m_cTexts.find(handleOf(rcArguments));
    return number(psText != nullptr ? static_cast<int>(psText->u32Id) : 0);
}

QByteArray CDaemonModel::string(const CArguments& rcArguments)
{
    const CTextLayerModel::SText* psText = m_cTexts.find(handleOf(rcArguments));
    return describeText(psText != nullptr ? psText->cString.toUtf8() : QByteArray());
}

QByteArray CDaemonModel::isVisible(const CArguments& rcArguments)
{
    const CTextLayerModel::SText* psText = m_cTexts.find(handleOf(rcArguments));
    return flag(psText != nullptr && psText->bVisible);
}

QByteArray CDaemonModel::position(const CArguments& rcArguments)
{
    const CTextLayerModel::SText* psText = m_cTexts.find(handleOf(rcArguments));
    return psText != nullptr ? list({psText->x, psText->y, psText->end()})
                             : list({UNKNOWN_POSITION, UNKNOWN_POSITION, UNKNOWN_POSITION});
}

QByteArray CDaemonModel::end(const CArguments& rcArguments)
{
    const CTextLayerModel::SText* psText = m_cTexts.find(handleOf(rcArguments));
    return number(psText != nullptr ? psText->end() : UNKNOWN_POSITION);
}

QByteArray CDaemonModel::format(const CArguments& rcArguments)
{
    const CTextLayerModel::SText* psText = m_cTexts.find(handleOf(rcArguments));
    return number(psText != nullptr && psText->u32Id == COUNTER_ID ? 1 : 255);
}

QByteArray CDaemonModel::colors(const CArguments& rcArguments)
{
    const CTextLayerModel::SText* psText = m_cTexts.find(handleOf(rcArguments));
    return psText != nullptr
               ? list({static_cast<int>(psText->u32Foreground), static_cast<int>(psText->u32Background)})
               : list({0, 0});
}

QByteArray CDaemonModel::drawTemporary(const CArguments& rcArguments)
{
    const int iDuration = rcArguments[5].toInt();
    if (iDuration < 1 || iDuration > DURATION_MAX_S)
        return NOTHING;
    const unsigned int uHandle = m_cTexts.create();
    if (uHandle == 0)
        return NOTHING;
    m_cTexts.change(uHandle, [&rcArguments](CTextLayerModel::SText& rsText) {
        rsText.cString = received(rcArguments[0]);
        rsText.u32Foreground = color(rcArguments[1]);
        rsText.u32Background = color(rcArguments[2]);
        rsText.x = low8(rcArguments[3]);
        rsText.y = low8(rcArguments[4]);
    });
    m_cTexts.show(uHandle);
    m_cTimers.start(textTimer(uHandle), iDuration);
    return NOTHING;
}

QByteArray CDaemonModel::clearTemporary(const CArguments& /*rcArguments*/)
{
    for (const unsigned int uHandle : m_cTimers.handles(TEXT_KIND))
        destroy(uHandle);
    return NOTHING;
}

// The video counter

bool CDaemonModel::ownsCounter(const CArguments& rcArguments) const
{
    return m_bCounter && rcArguments[0].toInt() == m_aiCounter[OWNER];
}

QByteArray CDaemonModel::startCounter(const CArguments& rcArguments)
{
    const int iSender = rcArguments[0].toInt();
    if (m_bCounter || iSender < 0 || iSender > 1)
        return NOTHING;
    m_aiCounter[OWNER] = iSender;
    m_bCounter = true;
    m_cTimers.start(COUNTER_TIMER, COUNTER_S);
    return NOTHING;
}

QByteArray CDaemonModel::pauseCounter(const CArguments& rcArguments)
{
    if (ownsCounter(rcArguments))
        m_cTimers.stop(COUNTER_TIMER);
    return NOTHING;
}

QByteArray CDaemonModel::resumeCounter(const CArguments& rcArguments)
{
    if (ownsCounter(rcArguments))
        m_cTimers.start(COUNTER_TIMER, COUNTER_S);
    return NOTHING;
}

QByteArray CDaemonModel::stopCounter(const CArguments& rcArguments)
{
    pauseCounter(rcArguments);
    if (ownsCounter(rcArguments))
        m_bCounter = false;
    return NOTHING;
}

QByteArray CDaemonModel::setCounter(const CArguments& rcArguments)
{
    static const int LIMITS[] = {0, 100, 60, 60, 100};
    if (m_bCounter && !ownsCounter(rcArguments))
        return NOTHING;
    m_aiCounter[OWNER] = rcArguments[0].toInt();
    for (int i = HOURS; i <= FRAMES; ++i)
        m_aiCounter[i] = std::min(rcArguments[i].toInt(), LIMITS[i]);
    showCounter();
    return NOTHING;
}

QByteArray CDaemonModel::counter(const CArguments& /*rcArguments*/)
{
    QVariantList cValues;
    for (const int iValue : m_aiCounter)
        cValues << iValue;
    return list(cValues);
}

QByteArray CDaemonModel::isCounterActive(const CArguments& /*rcArguments*/)
{
    return flag(m_bCounter);
}

void CDaemonModel::tick()
{
    ++m_aiCounter[SECONDS];
    for (const int i : {SECONDS, MINUTES}) {
        if (m_aiCounter[i] <= 59)
            break;
        m_aiCounter[i] = 0;
        ++m_aiCounter[i - 1];
    }
    showCounter();
    QByteArray cSignal = "videocounter_changed";
    for (int i = HOURS; i <= FRAMES; ++i)
        cSignal += ' ' + number(m_aiCounter[i]);
    m_cSignals << cSignal;
}

void CDaemonModel::showCounter()
{
    char acText[64];
    std::snprintf(acText, sizeof acText, "%3d:%02d:%02d", m_aiCounter[HOURS], m_aiCounter[MINUTES],
                  m_aiCounter[SECONDS]);
    m_cTexts.change(m_cTexts.handleById(COUNTER_ID),
                    [&acText](CTextLayerModel::SText& rsText) { rsText.cString = acText; });
}

// Recordings, and the input signal

QByteArray CDaemonModel::recordedTime(const CArguments& /*rcArguments*/)
{
    const unsigned int uiSeconds = m_cRecorder.recordedSeconds(m_cTimers);
    return list({uiSeconds / 3600, uiSeconds / 60 % 60, uiSeconds % 60});
}

QByteArray CDaemonModel::isRecording(const CArguments& /*rcArguments*/)
{
    return flag(m_cRecorder.isInState(RECORDING));
}

QByteArray CDaemonModel::isRecordingPaused(const CArguments& /*rcArguments*/)
{
    return flag(m_cRecorder.isInState(RECORDING_PAUSED));
}

QByteArray CDaemonModel::isPlaying(const CArguments& /*rcArguments*/)
{
    return flag(m_cRecorder.isInState(PLAYBACK));
}

QByteArray CDaemonModel::isPlaybackPaused(const CArguments& /*rcArguments*/)
{
    return flag(m_cRecorder.isInState(PLAYBACK_PAUSED));
}

QByteArray CDaemonModel::dataRate(const CArguments& /*rcArguments*/)
{
    return number(22);
}

QByteArray CDaemonModel::inputType(const CArguments& /*rcArguments*/)
{
    return number(m_bPlugged ? 0 : 1);
}

// The opposite of its name: clients know.
QByteArray CDaemonModel::isInputAvailable(const CArguments& /*rcArguments*/)
{
    return flag(!m_bPlugged);
}

QByteArray CDaemonModel::setInputEnabled(const CArguments& rcArguments)
{
    const bool bEnabled = rcArguments[0].toInt() != 0;
    if (bEnabled && !m_bAutoSync)
        m_bSignal = m_bPlugged;
    m_bAutoSync = bEnabled;
    return NOTHING;
}

// The rest

QByteArray CDaemonModel::setVideoSize(const CArguments& rcArguments)
{
    const int iWidth = rcArguments[0].toInt() & 0xffff;
    const int iHeight = rcArguments[1].toInt() & 0xffff;
    if (iWidth == 0 || iHeight == 0 || iWidth > 4095 || iHeight > 4095)
        return NOTHING;
    m_iWidth = iWidth == 720 ? 688 : iWidth;
    m_iHeight = iHeight;
    return NOTHING;
}

QByteArray CDaemonModel::videoWidth(const CArguments& /*rcArguments*/)
{
    return number(m_iWidth);
}

QByteArray CDaemonModel::videoHeight(const CArguments& /*rcArguments*/)
{
    return number(m_iHeight);
}

QByteArray CDaemonModel::reload(const CArguments& /*rcArguments*/)
{
    m_cTexts.clearPage();
    return NOTHING;
}
