/* SPDX-License-Identifier: MIT */
/* The video decoder (SAA7113) and the video encoder (SAA7129), as in their data sheets: 7-bit slave
 * addresses, and the registers that programs reach by number. The chips' tables in regdb/ have all registers.
 */
#ifndef HALDEND_HW_SAA71XX_REGISTERS_H
#define HALDEND_HW_SAA71XX_REGISTERS_H

#define SAA7113_SLAVE 0x25
#define SAA7129_SLAVE 0x44

/* The decoder's picture controls: sub-addresses, and the values of the data sheet's standard level. Contrast and
 * saturation are signed, in 64ths; hue is signed, in 256ths of the circle. */
#define SAA7113_BRIGHTNESS 0x0a /* LUBR */
#define SAA7113_CONTRAST   0x0b /* LUCON */
#define SAA7113_SATURATION 0x0c /* CRSAT */
#define SAA7113_HUE        0x0d /* CRHU */

#define SAA7113_BRIGHTNESS_STANDARD 128
#define SAA7113_CONTRAST_STANDARD   71
#define SAA7113_SATURATION_STANDARD 64

#define SAA7113_STATUS         0x1f /* sub-address of the decoder's status, read-only */
#define SAA7113_STATUS_NO_LOCK 0x40 /* hlvln_hlck: no horizontal lock, so no camera signal */

#endif
