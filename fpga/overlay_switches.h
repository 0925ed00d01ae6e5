/* What the FPGA mixes into the picture: switches and modes of the CTRL register.
 *
 * The switches change the screen record's shadow of CTRL and write all of it; they never read the register.
 * They act on control sets A (monitor) and C (recording) together; the priority exists in A only. The modes
 * read and write the register and leave the shadow alone, so the next switch brings back the mode that
 * init_screen() found.
 *
 * All return the register write's result; the switches return -1 without a screen.
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

/* Graphics over text instead of under it. */
int graphic_priority_on(void);
int graphic_priority_off(void);
int graphic_priority_toggle(void);

/* The stored video image in the place of the live one. */
int video_restore_on(void);
int video_restore_off(void);
int video_restore_toggle(void);

/* The FPGA's own frame instead of an external signal's. */
int frame_generator_on(void);
int frame_generator_off(void);
int frame_generator_toggle(void);

/* What the FPGA shows: what is recorded, or what is played back. */
int fpga_rec_mode(void);
int fpga_play_mode(void);

/* Stores the current video picture in the image memory. */
int store_video(void);

#ifdef __cplusplus
}
#endif

#endif
