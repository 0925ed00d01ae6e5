/* SPDX-License-Identifier: MIT */
/* Switches and modes of the FPGA's CTRL register: which layers it mixes into the picture, and which video it
 * shows.
 *
 * A switch acts on control sets A (monitor) and C (recording) together; the priority exists in A only.
 * Switches change the shadow of CTRL in the screen record and write all of it; they never read the register.
 * A toggle goes by the bit of set A.
 *
 * All functions return the result of the register write: 0, or -1 with errno. Switches return -1 without a
 * screen record.
 *
 * Kept: the modes read and write the register and leave the shadow alone. So the next switch brings back the
 * mode that init_screen() found, which clients see that switch the overlay during playback.
 */
#ifndef HALDEND_FPGA_OVERLAY_SWITCHES_H
#define HALDEND_FPGA_OVERLAY_SWITCHES_H

#ifdef __cplusplus
extern "C" {
#endif

/* The text layer. */
int text_overlay_on(void);
int text_overlay_off(void);
int text_overlay_toggle(void);

/* The graphic layer. */
int graphic_overlay_on(void);
int graphic_overlay_off(void);
int graphic_overlay_toggle(void);

/* The hardware cursor. */
int cursor_overlay_on(void);
int cursor_overlay_off(void);
int cursor_overlay_toggle(void);

/* Graphics cover text; otherwise text covers graphics. */
int graphic_priority_on(void);
int graphic_priority_off(void);
int graphic_priority_toggle(void);

/* The stored video frame in place of the live video. */
int video_restore_on(void);
int video_restore_off(void);
int video_restore_toggle(void);

/* A frame that the FPGA generates in place of the input signal's, for when no camera is there. */
int frame_generator_on(void);
int frame_generator_off(void);
int frame_generator_toggle(void);

/* Record mode passes the live video on, play mode the picture of the codec. */
int fpga_rec_mode(void);
int fpga_play_mode(void);

/* Stores the current video frame in the image memory. */
int store_video(void);

#ifdef __cplusplus
}
#endif

#endif
