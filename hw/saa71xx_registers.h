/* SPDX-License-Identifier: MIT */
/* The video decoder (SAA7113) and the video encoder (SAA7129), as in their data sheets: 7-bit slave
 * addresses, and the registers that programs reach by number. The chips' tables in regdb/ have all registers.
 */
#ifndef HALDEND_HW_SAA71XX_REGISTERS_H
#define HALDEND_HW_SAA71XX_REGISTERS_H

#define SAA7113_SLAVE 0x25
#define SAA7129_SLAVE 0x44

#define SAA7113_STATUS         0x1f /* sub-address of the decoder's status, read-only */
#define SAA7113_STATUS_NO_LOCK 0x40 /* hlvln_hlck: no horizontal lock, so no camera signal */

#endif
