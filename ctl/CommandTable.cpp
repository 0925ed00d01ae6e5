/* SPDX-License-Identifier: MIT */
#include "ctl/CommandTable.h"

#include "ctl/CommandHandlers.h"
#include "ctl/Grid.h"

#include <climits>
#include <iterator>

namespace
{

constexpr int PIXELS_MAX = 4095; // the display controller has 12 bits
constexpr int HANDLE_MAX = INT_MAX;
constexpr int SECONDS_MAX = 9999;
constexpr int LIST_MAX = 65535;

// clang-format off
constexpr SArgument WIDTH     = {"W", eNumber, 1, PIXELS_MAX};
constexpr SArgument HEIGHT    = {"H", eNumber, 1, PIXELS_MAX};
constexpr SArgument X         = {"X", eNumber, 0, PIXELS_MAX};
constexpr SArgument Y         = {"Y", eNumber, 0, PIXELS_MAX};
constexpr SArgument LOCALE    = {"NAME", eText};
constexpr SArgument STRING    = {"STRING", eLetters};
constexpr SArgument HANDLE    = {"HANDLE", eHandle, 1, HANDLE_MAX};
constexpr SArgument POSITION  = {"X,Y", ePosition};
constexpr SArgument COLORS    = {"FG[,BG]", eColors};
constexpr SArgument ID        = {"N", eNumber, INT_MIN, INT_MAX};
constexpr SArgument TIME      = {"H:M:S[:F]", eTime};
constexpr SArgument FILENAME  = {"FILE", eFile};
constexpr SArgument ANY_FILE  = {"FILE", eFile, 0, 0, nullptr, true};
constexpr SArgument CHIP      = {"CHIP", eWord, 0, 0, "fpga lime saa7113 saa7129"};
constexpr SArgument STATE     = {"on|off", eSwitch};
constexpr SArgument OBJECT    = {"OBJECT", eWord, 0, 0, "debug videodisplay videooverlay videoprocessing"};
constexpr SArgument METHOD    = {"METHOD", eText};
constexpr SArgument REST      = {"ARGUMENT", eRest};
constexpr SArgument PATHS     = {"DIR|FILE", eRest};

constexpr SCommandOption AT       = {"at", {"X,Y", ePosition}, "column 0 to 52 and row 0 to 25"};
constexpr SCommandOption COLOR    = {"color", {"FG[,BG]", eColors}, "colours, by number or name; see haldenctl colors"};
constexpr SCommandOption NEW_ID   = {"id", {"N", eNumber, INT_MIN, INT_MAX}, "number to find the text by"};
constexpr SCommandOption BY_ID    = {"id", {"N", eNumber, INT_MIN, INT_MAX}, "the text with this id, in place of a handle"};
constexpr SCommandOption HIDDEN   = {"hidden", {nullptr, eText}, "don't show it yet"};
constexpr SCommandOption UP_TO    = {"up-to", {"N", eNumber, 1, LIST_MAX}, "highest handle to ask for; default 200"};
constexpr SCommandOption SECONDS  = {"seconds", {"N", eNumber, 1, SECONDS_MAX}, "how long it stays, 1 to 9999; default 5"};
constexpr SCommandOption SENDER   = {"sender", {"N", eNumber, INT_MIN, INT_MAX}, "who controls the counter, 0 or 1; default: its owner"};
constexpr SCommandOption WAIT     = {"wait", {nullptr, eText}, "until the picture is in the file"};
constexpr SCommandOption FOR      = {"for", {"WHAT", eWord, 0, 0, "running recording idle input no-input"}, "running (default), recording, idle, input or no-input"};
constexpr SCommandOption TIMEOUT  = {"timeout", {"S", eNumber, 1, 1000000}, "give up after S seconds; default: never"};
constexpr SCommandOption DIFF     = {"diff", {nullptr, eText}, "show two folders or files side by side"};
constexpr SCommandOption CNFS     = {"register-files", {"DIR", eFile}, "folder of the register files; default /usr/etc/cnfs"};

constexpr SCommand COMMANDS[] = {
    {"status", {}, {},
     "videooverlay.is_overlay_visible videodisplay.get_displayed_video_width videodisplay.get_displayed_video_height "
     "videooverlay.is_videocounter_active videooverlay.get_videocounter videoprocessing.is_video_recording_running "
     "videoprocessing.is_video_recording_paused videoprocessing.query_video_recording_time "
     "videoprocessing.get_video_recording_average_data_rate videoprocessing.is_video_playback_running "
     "videoprocessing.is_video_playback_paused videoprocessing.get_video_input_type",
     runStatus, "What the daemon does, on one screen"},
    {"doctor text", {&HANDLE}, {&BY_ID},
     "videooverlay.get_text_handle_by_id videooverlay.get_text_id videooverlay.get_text_format "
     "videooverlay.get_text_position videooverlay.get_text_string videooverlay.get_text_colors "
     "videooverlay.is_text_visible videooverlay.is_overlay_visible videoprocessing.is_video_playback_running "
     "videoprocessing.is_video_playback_paused",
     runDoctorText, "Why a text isn't seen"},
    {"doctor picture", {}, {},
     "videodisplay.get_displayed_video_width videodisplay.get_displayed_video_height "
     "videoprocessing.get_video_input_type videoprocessing.is_video_playback_running "
     "videoprocessing.is_video_playback_paused",
     runDoctorPicture, "Why there is no live picture"},
    {"doctor recording", {&ANY_FILE}, {},
     "videoprocessing.is_video_recording_running videoprocessing.is_video_recording_paused "
     "videoprocessing.is_video_playback_running videoprocessing.is_video_playback_paused "
     "videoprocessing.get_video_recording_average_data_rate",
     runDoctorRecording, "Why a recording doesn't start or go on; FILE is where it is to go"},
    {"doctor board", {}, {&CNFS}, "", runDoctorBoard, "Device nodes, register files, bus name and policy"},
    {"doctor", {}, {&UP_TO, &CNFS}, "", runDoctor, "All of that, for every text"},

    {"display size", {&WIDTH, &HEIGHT}, {}, "videodisplay.set_video_size", runPlain,
     "Scale the live video to W pixels by H lines, 1 to 4095"},
    {"display position", {&X, &Y}, {}, "videodisplay.set_video_position", runPlain,
     "Place the live video, 0 to 4095 from the left and from the top"},
    {"display on", {}, {}, "videodisplay.set_video_layer_enabled", runOn, "Show the live video"},
    {"display off", {}, {}, "videodisplay.set_video_layer_enabled", runOff, "Show the background in its place"},

    {"overlay show", {}, {}, "videooverlay.show_overlay", runPlain, "Show texts and graphics"},
    {"overlay hide", {}, {}, "videooverlay.hide_overlay", runPlain, "Hide texts and graphics"},
    {"overlay locale", {&LOCALE}, {}, "videooverlay.adjust_character_set_to_locale", runPlain,
     "Load the letters of a country, such as ru_RU"},
    {"overlay redraw", {}, {}, "videooverlay.set_osd_transparency", runRedraw, "Draw all visible texts again"},

    {"text new", {&STRING}, {&AT, &COLOR, &NEW_ID, &HIDDEN},
     "videooverlay.create_text videooverlay.set_text_string videooverlay.set_text_position "
     "videooverlay.set_text_colors videooverlay.set_text_id videooverlay.show_text",
     runTextNew, "Make a text and show it; prints its handle"},
    {"text set", {&HANDLE, &STRING}, {&BY_ID}, "videooverlay.set_text_string videooverlay.get_text_handle_by_id "
     "videooverlay.get_text_position", runTextSet, "Change what a text says"},
    {"text move", {&HANDLE, &POSITION}, {&BY_ID}, "videooverlay.set_text_position videooverlay.get_text_handle_by_id "
     "videooverlay.get_text_position videooverlay.get_text_string", runTextMove,
     "Move a text to column X, 0 to 52, and row Y, 0 to 25"},
    {"text color", {&HANDLE, &COLORS}, {&BY_ID}, "videooverlay.set_text_colors videooverlay.get_text_handle_by_id "
     "videooverlay.get_text_position videooverlay.get_text_colors", runTextColor,
     "Recolour a text; without BG the background stays"},
    {"text id", {&HANDLE, &ID}, {&BY_ID}, "videooverlay.set_text_id videooverlay.get_text_handle_by_id "
     "videooverlay.get_text_position", runTextId, "Give a text a number to find it by"},
    {"text show", {&HANDLE}, {&BY_ID}, "videooverlay.show_text videooverlay.get_text_handle_by_id "
     "videooverlay.get_text_position", runTextPlain, "Show a text"},
    {"text hide", {&HANDLE}, {&BY_ID}, "videooverlay.hide_text videooverlay.get_text_handle_by_id "
     "videooverlay.get_text_position", runTextPlain, "Take a text off the screen"},
    {"text delete", {&HANDLE}, {&BY_ID}, "videooverlay.destroy_text videooverlay.get_text_handle_by_id "
     "videooverlay.get_text_position", runTextPlain, "Take a text off the screen and forget it"},
    {"text get", {&HANDLE}, {&BY_ID},
     "videooverlay.get_text_handle_by_id videooverlay.get_text_string videooverlay.get_text_position "
     "videooverlay.get_text_colors videooverlay.get_text_id videooverlay.get_text_format videooverlay.is_text_visible",
     runTextGet, "What a text says, where, in which colours, and whether it is shown"},
    {"text list", {}, {&UP_TO},
     "videooverlay.get_text_string videooverlay.get_text_position videooverlay.get_text_colors "
     "videooverlay.get_text_id videooverlay.get_text_format videooverlay.is_text_visible",
     runTextList, "All texts, asked for handle by handle"},
    {"text show-all", {}, {}, "videooverlay.show_all_texts", runPlain, "Show all texts"},
    {"text hide-all", {}, {}, "videooverlay.hide_all_texts", runPlain, "Take all texts off the screen"},
    {"text delete-all", {}, {}, "videooverlay.destroy_all_texts", runPlain, "Forget all texts, messages too"},

    {"message clear", {}, {}, "videooverlay.clear_temp_texts", runPlain, "Take away all messages"},
    {"message", {&STRING}, {&AT, &COLOR, &SECONDS}, "videooverlay.draw_temp_text", runMessage,
     "Show a message that goes away by itself"},

    {"counter set", {&TIME}, {&SENDER}, "videooverlay.set_videocounter videooverlay.get_videocounter "
     "videooverlay.is_videocounter_active", runCounterSet, "Set the video counter"},
    {"counter start", {}, {&SENDER}, "videooverlay.videocounter_start videooverlay.get_videocounter "
     "videooverlay.is_videocounter_active", runCounterStart, "Start it from the time that it has"},
    {"counter pause", {}, {&SENDER}, "videooverlay.videocounter_pause videooverlay.get_videocounter "
     "videooverlay.is_videocounter_active", runCounterControl, "Halt it; it stays active"},
    {"counter resume", {}, {&SENDER}, "videooverlay.videocounter_resume videooverlay.get_videocounter "
     "videooverlay.is_videocounter_active", runCounterControl, "Go on counting"},
    {"counter stop", {}, {&SENDER}, "videooverlay.videocounter_stop videooverlay.get_videocounter "
     "videooverlay.is_videocounter_active", runCounterControl, "Stop it; its time stays"},
    {"counter get", {}, {}, "videooverlay.get_videocounter videooverlay.is_videocounter_active", runCounterGet,
     "Its time, its owner, and whether it is active"},
    {"counter show", {}, {&AT},
     "videooverlay.get_text_handle_by_id videooverlay.create_text videooverlay.set_text_id "
     "videooverlay.set_text_position videooverlay.set_text_string videooverlay.show_text videooverlay.is_videocounter_active videooverlay.get_videocounter",
     runCounterShow, "Make the text with the id 102, which shows the counter"},
    {"counter follow", {}, {}, "", runCounterFollow, "Its time as it changes, until Ctrl-C"},

    {"record start", {&FILENAME}, {}, "videoprocessing.start_video_recording", runVideo, "Record to a file"},
    {"record pause", {}, {}, "videoprocessing.pause_video_recording", runVideo, "Pause the recording"},
    {"record resume", {}, {}, "videoprocessing.resume_video_recording", runVideo, "Go on recording"},
    {"record stop", {}, {}, "videoprocessing.stop_video_recording", runVideo, "End the recording"},
    {"record time", {}, {}, "videoprocessing.query_video_recording_time", runRecordTime,
     "How long the recording is, pauses not counted"},
    {"play start", {&FILENAME}, {}, "videoprocessing.start_video_playback", runVideo, "Play a file"},
    {"play pause", {}, {}, "videoprocessing.pause_video_playback", runVideo, "Pause the playback"},
    {"play resume", {}, {}, "videoprocessing.resume_video_playback", runVideo, "Go on playing"},
    {"play stop", {}, {}, "videoprocessing.stop_video_playback", runVideo, "End the playback"},
    {"image save", {&FILENAME}, {&WAIT}, "videoprocessing.save_video_image", runImageSave,
     "Save the picture of this moment as a bitmap"},
    {"image show", {&FILENAME}, {}, "videoprocessing.display_video_image", runVideo,
     "Show a saved picture in the place of the live one"},
    {"image clear", {}, {}, "videoprocessing.clear_video_image", runImageClear, "Show the live picture again"},
    {"input on", {}, {}, "videoprocessing.set_video_input_enabled", runInputOn, "Show the camera while its signal is there"},
    {"input off", {}, {}, "videoprocessing.set_video_input_enabled", runInputOff, "Show the frame generator whatever the camera does"},
    {"input type", {}, {}, "videoprocessing.get_video_input_type", runInputType, "Whether a camera signal is there"},

    {"debug print", {&CHIP}, {}, "debug.print_hardware_config", runPlain,
     "Print a chip's registers on the daemon's standard error"},
    {"debug reload", {}, {}, "debug.reload_hardware_config", runPlain,
     "Read the register files again and program the chips; empties the overlay"},
    {"debug save", {}, {}, "debug.save_hardware_config", runPlain,
     "Write the registers over the register files; keep copies first"},
    {"debug play-mode", {}, {}, "debug.fpga_enter_playback_mode", runPlain, "Let the FPGA show what is played back"},
    {"debug record-mode", {}, {}, "debug.fpga_enter_recording_mode", runPlain, "Let the FPGA show what is recorded"},
    {"debug frame-generator", {&STATE}, {},
     "debug.fpga_enable_frame_generator debug.fpga_disable_frame_generator", runEitherWay,
     "Show the FPGA's own frame in place of the input, or the input again"},
    {"debug video-restore", {&STATE}, {}, "debug.fpga_enable_video_restore debug.fpga_disable_video_restore",
     runEitherWay, "Show the stored picture in place of the live one, or the live one again"},

    {"call", {&OBJECT, &METHOD, &REST}, {}, "", runCall, "Call any method; a list is written 1,2,3"},
    {"monitor", {}, {}, "", runMonitor, "Signals as they come, and the daemon's coming and going, until Ctrl-C"},
    {"wait", {}, {&FOR, &TIMEOUT},
     "videoprocessing.is_video_recording_running videoprocessing.is_video_recording_paused "
     "videoprocessing.is_video_playback_running videoprocessing.is_video_playback_paused "
     "videoprocessing.get_video_input_type",
     runWait, "Wait until the daemon is on the bus, or until it does something"},
    {"colors", {}, {}, "", runColors, "The sixteen colours and their names"},
    {"check-registers", {&PATHS}, {&DIFF}, "", runCheckRegisters,
     "Look for mistakes in register files, without the daemon; default /usr/etc/cnfs"},
    {"-", {}, {}, "", runBatch, "Commands from standard input, one a line"},
};

constexpr SCommandOption GLOBAL_OPTIONS[] = {
    {"host", {"[USER@]HOST", eText}, "the daemon on another machine, reached by ssh"},
    {"bus", {"ADDRESS", eText}, "another bus than the system bus; with --host that machine's"},
    {"json", {nullptr, eText}, "one JSON object a command"},
    {"no-color", {nullptr, eText}, "no colours on the terminal"},
    {"quiet", {nullptr, eText}, "no confirmations and no warnings"},
    {"force", {nullptr, eText}, "send what would be refused: ranges and letters"},
    {"help", {nullptr, eText}, "help for haldenctl, or for a command"},
    {"version", {nullptr, eText}, "the version"},
};
// clang-format on

bool startsWithWords(const QStringList& rcWords, const QStringList& rcName)
{
    return rcWords.mid(0, rcName.size()) == rcName;
}

QString synopsisOf(const SArgument& rsArgument)
{
    QString cName = QString::fromLatin1(rsArgument.pszName);
    if (rsArgument.eType == eHandle)
        cName += QStringLiteral("|--id N");
    if (rsArgument.eType == eRest)
        return QStringLiteral("[%1...]").arg(cName);
    return rsArgument.bOptional ? QStringLiteral("[%1]").arg(cName) : cName;
}

QString synopsisOf(const SCommandOption& rsOption)
{
    QString cText = QStringLiteral("--") + QLatin1String(rsOption.pszName);
    if (rsOption.sValue.pszName != nullptr)
        cText += QLatin1Char(' ') + QLatin1String(rsOption.sValue.pszName);
    return QStringLiteral("[%1]").arg(cText);
}

} // namespace

SRows<SCommand> commandTable()
{
    return {std::begin(COMMANDS), std::end(COMMANDS)};
}

SRows<SCommandOption> globalOptions()
{
    return {std::begin(GLOBAL_OPTIONS), std::end(GLOBAL_OPTIONS)};
}

const SCommand* findCommand(const QStringList& rcWords, int& riWords)
{
    const SCommand* psFound = nullptr;
    riWords = 0;
    for (const SCommand& rsCommand : commandTable()) {
        const QStringList cName = QString::fromLatin1(rsCommand.pszWords).split(QLatin1Char(' '));
        if (cName.size() > riWords && startsWithWords(rcWords, cName)) {
            psFound = &rsCommand;
            riWords = cName.size();
        }
    }
    return psFound;
}

QList<const SArgument*> argumentsOf(const SCommand& rsCommand)
{
    QList<const SArgument*> cArguments;
    for (const SArgument* psArgument : rsCommand.apsArguments)
        if (psArgument != nullptr)
            cArguments << psArgument;
    return cArguments;
}

QList<const SCommandOption*> optionsOf(const SCommand& rsCommand)
{
    QList<const SCommandOption*> cOptions;
    for (const SCommandOption* psOption : rsCommand.apsOptions)
        if (psOption != nullptr)
            cOptions << psOption;
    return cOptions;
}

QString synopsisOf(const SCommand& rsCommand)
{
    QStringList cParts{QString::fromLatin1(rsCommand.pszWords)};
    for (const SArgument* psArgument : argumentsOf(rsCommand))
        cParts << synopsisOf(*psArgument);
    for (const SCommandOption* psOption : optionsOf(rsCommand))
        if (!takesHandle(rsCommand) || qstrcmp(psOption->pszName, "id") != 0)
            cParts << synopsisOf(*psOption);
    return cParts.join(QLatin1Char(' '));
}

bool takesHandle(const SCommand& rsCommand)
{
    return rsCommand.apsArguments[0] != nullptr && rsCommand.apsArguments[0]->eType == eHandle;
}
