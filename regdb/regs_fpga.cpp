/* SPDX-License-Identifier: MIT */
/* The overlay FPGA's registers, by device address.
 *
 * Only registers that register files set are here: the store trigger, the displayed graphic page, the
 * palettes and the cursor are reached by address alone (hw/fpga_map.h).
 *
 * Kept: help texts letter by letter, blanks included, because saved register files show them.
 */
#include "hw/fpga_map.h"
#include "regdb/chip_regs.h"
#include "regdb/table_rows.h"

extern "C" {

constexpr reg_bf ctrl[] = {
    {"res1", 0, 6, ""                               },
    {"por",  0, 2, "controll of play or rec-mode"   },
    {"fgon", 0, 1, "Self sync on/off"               },
    {"res2", 0, 2, ""                               },
    {"cvr",  0, 1, "Ctrl C Videorestore control bit"},
    {"res3", 0, 1, ""                               },
    {"cco",  0, 1, "Ctrl C Cursor control bit"      },
    {"cto",  0, 1, "Ctrl C Textoverlay control bit" },
    {"cgo",  0, 1, "Ctrl C Grphic overlay control"  },
    {"res4", 0, 3, ""                               },
    {"bvr",  0, 1, "Ctrl B Videorestore control bit"},
    {"bgp",  0, 1, "Ctrl B Graphic priority bit"    },
    {"bco",  0, 1, "Ctrl B Cursor control bit"      },
    {"bto",  0, 1, "Ctrl B Textoverlay control bit" },
    {"bgo",  0, 1, "Ctrl B Grphic overlay control"  },
    {"res5", 0, 3, ""                               },
    {"avr",  0, 1, "Ctrl A Videorestore control bit"},
    {"agp",  0, 1, "Ctrl A Graphic priority bit"    },
    {"aco",  0, 1, "Ctrl A Cursor control bit"      },
    {"ato",  0, 1, "Ctrl A Textoverlay control bit" },
    {"ago",  0, 1, "Ctrl A Grphic overlay control"  },
};
static_assert(fills(ctrl, 32));
static_assert(field_bits(ctrl, "ago") == FPGA_CTRL_AGO);
static_assert(field_bits(ctrl, "ato") == FPGA_CTRL_ATO);
static_assert(field_bits(ctrl, "aco") == FPGA_CTRL_ACO);
static_assert(field_bits(ctrl, "agp") == FPGA_CTRL_AGP);
static_assert(field_bits(ctrl, "avr") == FPGA_CTRL_AVR);
static_assert(field_bits(ctrl, "cgo") == FPGA_CTRL_CGO);
static_assert(field_bits(ctrl, "cto") == FPGA_CTRL_CTO);
static_assert(field_bits(ctrl, "cco") == FPGA_CTRL_CCO);
static_assert(field_bits(ctrl, "cvr") == FPGA_CTRL_CVR);
static_assert(field_bits(ctrl, "fgon") == FPGA_CTRL_FGON);
static_assert(field_bits(ctrl, "por") == FPGA_CTRL_POR);
auto bf_ctrl = with_end(ctrl);

constexpr reg_bf fgcc[] = {
    {"res1", 0, 7,  ""                             },
    {"fgm",  0, 1,  " Self sync Mode 1=NTSC, 0=PAL"},
    {"col",  0, 24, " Self Sync backgound color"   },
};
static_assert(fills(fgcc, 32));
auto bf_fgcc = with_end(fgcc);

constexpr reg_bf sric[] = {
    {"res1", 0, 16, ""                          },
    {"sinr", 0, 8,  " Store Videimage Nr:0-7"   },
    {"rinr", 0, 8,  " Restore Videoimage Nr:0-7"},
};
static_assert(fills(sric, 32));
auto bf_sric = with_end(sric);

constexpr reg_bf tsxp[] = {
    {"res1", 0, 20, ""                                },
    {"tsx",  0, 12, " Text start x position on screen"},
};
static_assert(fills(tsxp, 32));
auto bf_tsxp = with_end(tsxp);

constexpr reg_bf tsyp[] = {
    {"res1", 0, 23, ""                                },
    {"tsy",  0, 9,  " Text start y position on screen"},
};
static_assert(fills(tsyp, 32));
auto bf_tsyp = with_end(tsyp);

constexpr reg_bf tesz[] = {
    {"res1", 0, 16, ""                      },
    {"res2", 0, 3,  ""                      },
    {"tesh", 0, 5,  " Text size h in pixels"},
    {"res3", 0, 2,  ""                      },
    {"tesv", 0, 6,  " Text size v in lines" },
};
static_assert(fills(tesz, 32));
auto bf_tesz = with_end(tesz);

constexpr reg_bf temo[] = {
    {"res1", 0, 16, ""                        },
    {"tebo", 0, 16, " Text memory byte offset"},
};
static_assert(fills(temo, 32));
auto bf_temo = with_end(temo);

reg_bf_group regs_fpga[] = {
    {'X', FPGA_CTRL, "CTRL", 32, 0, bf_ctrl.row, 0, "FPGA Display-Control-Register"   },
    {'X', FPGA_FGCC, "FGCC", 32, 0, bf_fgcc.row, 0, "Framegenerator control and color"},
    {'X', FPGA_SRIC, "SRIC", 32, 0, bf_sric.row, 0, "Store Image control"             },
    {'X', FPGA_TSXP, "TSXP", 32, 0, bf_tsxp.row, 0, "Text start x position"           },
    {'X', FPGA_TSYP, "TSYP", 32, 0, bf_tsyp.row, 0, "Text start y position"           },
    {'X', FPGA_TESZ, "TESZ", 32, 0, bf_tesz.row, 0, "Text size H in lines, W in pixel"},
    {'X', FPGA_TEMO, "TEMO", 32, 0, bf_temo.row, 0, "Text memory byte offset"         },
    end_of_table,
};
static_assert(std::size(regs_fpga) == 7 + 1, "7 registers and the end of the table");
}
