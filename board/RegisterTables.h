/* The registers that halden-board lists, with their fields: data, and nothing else.
 *
 * Rows stand in the order of the hardware's register tables. A row's fields are written as name:bits, most
 * significant first, and add up to 32 bits; reserved ones have no name.
 */
#ifndef HALDEND_BOARD_REGISTERTABLES_H
#define HALDEND_BOARD_REGISTERTABLES_H

#include <QtGlobal>

struct SRegisterRow {
    const char* pszName;
    char cWindow;       ///< display controller: 'D' display, 'C' capture; FPGA: 'X'
    quint32 u32Address; ///< offset in the window, or address
    const char* pszHelp;
    const char* pszFields;
};

/// Rows end with one without a name.
extern const SRegisterRow LIME_REGISTERS[];
extern const SRegisterRow FPGA_REGISTERS[];

#endif
