# SPDX-License-Identifier: MIT
# bash completion for haldenctl                                            -*- shell-script -*-

# begin generated
_haldenctl_commands=(
    "status"
    "doctor text"
    "doctor picture"
    "doctor recording"
    "doctor board"
    "doctor"
    "display size"
    "display position"
    "display on"
    "display off"
    "overlay show"
    "overlay hide"
    "overlay locale"
    "overlay redraw"
    "text new"
    "text set"
    "text move"
    "text color"
    "text id"
    "text show"
    "text hide"
    "text delete"
    "text get"
    "text list"
    "text show-all"
    "text hide-all"
    "text delete-all"
    "message clear"
    "message"
    "counter set"
    "counter start"
    "counter pause"
    "counter resume"
    "counter stop"
    "counter get"
    "counter show"
    "counter follow"
    "record start"
    "record pause"
    "record resume"
    "record stop"
    "record time"
    "play start"
    "play pause"
    "play resume"
    "play stop"
    "image save"
    "image show"
    "image clear"
    "input on"
    "input off"
    "input type"
    "debug print"
    "debug reload"
    "debug save"
    "debug play-mode"
    "debug record-mode"
    "debug frame-generator"
    "debug video-restore"
    "call"
    "monitor"
    "wait"
    "colors"
    "check-registers"
    "-"
)
declare -gA _haldenctl_arguments=(
    ["status"]=""
    ["doctor text"]="handle"
    ["doctor picture"]=""
    ["doctor recording"]="file"
    ["doctor board"]=""
    ["doctor"]=""
    ["display size"]="- -"
    ["display position"]="- -"
    ["display on"]=""
    ["display off"]=""
    ["overlay show"]=""
    ["overlay hide"]=""
    ["overlay locale"]="-"
    ["overlay redraw"]=""
    ["text new"]="-"
    ["text set"]="handle -"
    ["text move"]="handle -"
    ["text color"]="handle colors"
    ["text id"]="handle -"
    ["text show"]="handle"
    ["text hide"]="handle"
    ["text delete"]="handle"
    ["text get"]="handle"
    ["text list"]=""
    ["text show-all"]=""
    ["text hide-all"]=""
    ["text delete-all"]=""
    ["message clear"]=""
    ["message"]="-"
    ["counter set"]="-"
    ["counter start"]=""
    ["counter pause"]=""
    ["counter resume"]=""
    ["counter stop"]=""
    ["counter get"]=""
    ["counter show"]=""
    ["counter follow"]=""
    ["record start"]="file"
    ["record pause"]=""
    ["record resume"]=""
    ["record stop"]=""
    ["record time"]=""
    ["play start"]="file"
    ["play pause"]=""
    ["play resume"]=""
    ["play stop"]=""
    ["image save"]="file"
    ["image show"]="file"
    ["image clear"]=""
    ["input on"]=""
    ["input off"]=""
    ["input type"]=""
    ["debug print"]="fpga,lime,saa7113,saa7129"
    ["debug reload"]=""
    ["debug save"]=""
    ["debug play-mode"]=""
    ["debug record-mode"]=""
    ["debug frame-generator"]="on,off"
    ["debug video-restore"]="on,off"
    ["call"]="debug,videodisplay,videooverlay,videoprocessing method -"
    ["monitor"]=""
    ["wait"]=""
    ["colors"]=""
    ["check-registers"]="file..."
    ["-"]=""
)
declare -gA _haldenctl_options=(
    ["doctor text"]="--id"
    ["doctor board"]="--register-files"
    ["doctor"]="--up-to --register-files"
    ["text new"]="--at --color --id --hidden"
    ["text set"]="--id"
    ["text move"]="--id"
    ["text color"]="--id"
    ["text id"]="--id"
    ["text show"]="--id"
    ["text hide"]="--id"
    ["text delete"]="--id"
    ["text get"]="--id"
    ["text list"]="--up-to"
    ["message"]="--at --color --seconds"
    ["counter set"]="--sender"
    ["counter start"]="--sender"
    ["counter pause"]="--sender"
    ["counter resume"]="--sender"
    ["counter stop"]="--sender"
    ["counter show"]="--at"
    ["image save"]="--wait"
    ["wait"]="--for --timeout"
    ["check-registers"]="--diff"
)
declare -gA _haldenctl_option_values=(
    [--at]="-"
    [--bus]="-"
    [--color]="colors"
    [--for]="running,recording,idle,input,no-input"
    [--host]="-"
    [--id]="-"
    [--register-files]="file"
    [--seconds]="-"
    [--sender]="-"
    [--timeout]="-"
    [--up-to]="-"
)
declare -gA _haldenctl_methods=(
    [videodisplay]="set_video_layer_enabled set_video_size set_video_rotation set_video_restart set_video_mode set_video_position get_displayed_video_width get_displayed_video_height"
    [videooverlay]="get_max_text_line_width get_max_text_line_count adjust_character_set_to_locale is_overlay_visible show_overlay hide_overlay set_osd_transparency create_text destroy_text destroy_all_texts get_text_handle_by_id get_text_id set_text_id get_text_string set_text_string is_text_visible show_text hide_text show_all_texts hide_all_texts get_text_position set_text_position get_text_format set_text_format get_text_length get_text_colors set_text_colors draw_temp_text clear_temp_texts toggle_crosshair_visibility change_crosshair_color change_crosshair_position change_crosshair_shape toggle_camerahorizon_visibility change_camerahorizon_color change_camerahorizon_gridcolor change_camerahorizon_position change_camerahorizon_shape toggle_logo_visibility toggle_logo_animation change_logo_file change_logo_position toggle_roi_visibility change_roi_color change_roi_position change_roi_size set_roi_draw_point_1 set_roi_draw_point_2 change_roi_shape draw_roi toggle_crawlerroll_visibility change_crawlerroll_color change_crawlerroll_shape change_crawlerroll_position toggle_crawlerpitch_visibility change_crawlerpitch_color change_crawlerpitch_shape change_crawlerpitch_position toggle_spyhole_visibility change_spyhole_color change_spyhole_position change_spyhole_shape change_video_position move_video_position change_font videocounter_start videocounter_pause videocounter_resume videocounter_stop is_videocounter_active get_videocounter set_videocounter"
    [videoprocessing]="start_video_recording pause_video_recording resume_video_recording stop_video_recording is_video_recording_running is_video_recording_paused query_video_recording_time get_video_recording_average_data_rate start_video_playback pause_video_playback resume_video_playback stop_video_playback is_video_playback_running is_video_playback_paused save_video_image display_video_image clear_video_image is_video_input_available get_video_input_type set_video_input_enabled"
    [debug]="reload_hardware_config save_hardware_config print_hardware_config fpga_enter_playback_mode fpga_enter_recording_mode fpga_enable_video_restore fpga_disable_video_restore fpga_enable_frame_generator fpga_disable_frame_generator"
)
_haldenctl_global_options="--host --bus --json --no-color --quiet --force --help --version"
_haldenctl_colors="transparent white dark-red dark-green teal navy purple teal-2 grey@part silver red green yellow navy@half magenta black"
# end generated

# The next word of each command that begins with the words typed.
_haldenctl_next_words()
{
    local typed=$1 command rest
    for command in "${_haldenctl_commands[@]}"; do
        [[ -z $typed || $command == "$typed "* ]] || continue
        rest=${command#"${typed:+$typed }"}
        printf '%s\n' "${rest%% *}"
    done | sort -u
}

# The words that may stand in the place of an argument of this type.
_haldenctl_values()
{
    case $1 in
        handle)
            haldenctl --quiet "${bus[@]}" text list 2>/dev/null | while read -r handle _; do printf '%s\n' "$handle"; done
            ;;
        colors)
            local first=
            [[ $cur == *,* ]] && first=${cur%,*},
            printf "$first%s\n" $_haldenctl_colors
            ;;
        method) printf '%s\n' ${_haldenctl_methods[$2]} ;;
        file) compgen -f -- "$cur" ;;
        '' | -) ;; # the user's own words
        *) printf '%s\n' ${1//,/ } ;;
    esac
}

_haldenctl()
{
    local cur prev words cword
    _init_completion -n @: || return
    local typed=() bus=() command= taken=0 i word count

    # The words without the options and their values.
    for ((i = 1; i < cword; ++i)); do
        word=${words[i]}
        if [[ $word == --* ]]; then
            if [[ -n ${_haldenctl_option_values[$word]} ]]; then
                [[ $word == --host || $word == --bus ]] && bus+=("$word" "${words[i + 1]}")
                ((++i))
            fi
            continue
        fi
        typed+=("$word")
    done
    for ((count = ${#typed[@]}; count > 0; --count)); do
        if [[ -n ${_haldenctl_arguments[${typed[*]:0:count}]+x} ]]; then
            command=${typed[*]:0:count}
            taken=$count
            break
        fi
    done

    local candidates arguments=()
    [[ -n $command ]] && arguments=(${_haldenctl_arguments[$command]})
    if [[ -n $prev && -n ${_haldenctl_option_values[$prev]} ]]; then
        candidates=$(_haldenctl_values "${_haldenctl_option_values[$prev]}")
    elif [[ $cur == -* ]]; then
        candidates=$(printf '%s\n' ${command:+${_haldenctl_options[$command]}} $_haldenctl_global_options)
    else
        i=$((${#typed[@]} - taken))
        # The first words may be a command, and begin others.
        [[ -z $command || $i == 0 ]] && candidates=$(_haldenctl_next_words "${typed[*]}")
        [[ ${arguments[0]} == handle && " ${words[*]} " == *" --id "* ]] && ((++i))
        [[ $i -gt 0 && $i -ge ${#arguments[@]} && ${arguments[*]} == *... ]] && i=$((${#arguments[@]} - 1))
        candidates+=$'\n'$(_haldenctl_values "${arguments[i]%...}" "${words[cword - 1]}")
    fi
    local IFS=$'\n'
    COMPREPLY=($(compgen -W "$candidates" -- "$cur"))
    # Behind an @ the shell has begun another word.
    COMPREPLY=("${COMPREPLY[@]#"${cur%"${cur##*@}"}"}")
} &&
    complete -o filenames -F _haldenctl haldenctl
