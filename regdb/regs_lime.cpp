/* SPDX-License-Identifier: MIT */
/* The display controller's registers: video capture, display control and the layers.
 *
 * Kept: the order, unsorted. Register files and everything that walks over all registers have this order.
 *
 * Kept: four oddities that the register files of the boards are written against.
 * - L5ETC has L1ETC's offset: a write of it reaches layer 1.
 * - The reserved fields of DCM2 and DCM3 are called res##id.
 * - The layer enables all say "Layer5 Enable".
 * - The fields of layer positions and window sizes are named with x and width first, while the chip has y and
 *   height in the upper half.
 *
 * The display clock delay is the only field of all chips that doesn't start at 0.
 */
#include "hw/lime_registers.h"
#include "regdb/chip_regs.h"
#include "regdb/table_rows.h"

extern "C" {

constexpr reg_bf vcm[] = {
    {"vie",  0, 1,  " Videoinput Enable, 1=Capture Video, 0=No Capture"           },
    {"vis",  0, 1,  " Videoinput Select, 1=RGB, 0=RBT656/601"                     },
    {"res5", 0, 1,  ""                                                            },
    {"vice", 0, 1,  " Videoclock Enable, 1=Disabled, 0=Enabled"                   },
    {"res4", 0, 2,  ""                                                            },
    {"cm",   0, 2,  " Capture Mode, 11=Capture, 00=No Capture"                    },
    {"res3", 0, 3,  ""                                                            },
    {"vi",   0, 1,  " Vertical Interpolation, 1=No Interpolation, 0=Interpolation"},
    {"res2", 0, 17, ""                                                            },
    {"nrgb", 0, 1,  " Native RGB-Input On, 1=Native, 0=RGB->YUV422"               },
    {"vs",   0, 1,  " VideoSelect, 1=PAL, 0=NTSC"                                 },
    {"res1", 0, 1,  ""                                                            },
};
static_assert(fills(vcm, 32));
auto ba_vcm = with_end(vcm);

constexpr reg_bf csc[] = {
    {"vsci", 0, 5,  "Vertical Scale Integer"   },
    {"vscf", 0, 11, "Vertical Scale Fraction"  },
    {"hsci", 0, 5,  "Horizontal Scale Integer" },
    {"hscf", 0, 11, "Horizontal Scale Fraction"},
};
static_assert(fills(csc, 32));
auto ba_csc = with_end(csc);

constexpr reg_bf cbm[] = {
    {"oo",   0, 1, " Odd Only Mode, 1=Odd Fields only, 0=Both Fields"                                   },
    {"sbuf", 0, 1, " Single Buffer Mode, 1=Single Buffer, 0=Ring Buffer"                                },
    {"crgb", 0, 1, " Capture RGB Write Format"                                                          },
    {"pau",  0, 1, " Pause, 1=Capture stopped, 0=Capture running"                                       },
    {"res1", 0, 4, ""                                                                                   },
    {"cbw",  0, 8, "Capture Buffer memory width, Sets memory width(stride) of capture buffer in 64bytes"},
    {"res2", 0, 1, ""                                                                                   },
    {"c24",  0, 1, " Capture 24bit Colour, 1=24bit/Pixel, 0=16bit/Pixel"                                },
    {"bed",  0, 1, " Big Endian Mode"                                                                   },
    {"csw",  0, 1, " Colour Swap"                                                                       },
    {"res3", 0, 1, ""                                                                                   },
    {"sss",  0, 3, " Single Shot Status"                                                                },
    {"ssm",  0, 3, " Single Shot Mode"                                                                  },
    {"hrv",  0, 1, " Horizontal Reverse, 1=Mirrored, 0=Normal"                                          },
    {"res4", 0, 3, ""                                                                                   },
    {"cbst", 0, 1, " Capture Burst Length, 1=Long Burst, 0=Normal Burst"                                },
};
static_assert(fills(cbm, 32));
auto ba_cbm = with_end(cbm);

constexpr reg_bf cboa[] = {
    {"res1", 0, 9,  ""                              },
    {"cboa", 0, 23, " Capture Buffer Origin Address"},
};
static_assert(fills(cboa, 32));
auto ba_cboa = with_end(cboa);

constexpr reg_bf cbla[] = {
    {"res1", 0, 9,  ""                             },
    {"cbla", 0, 23, " Capture Buffer Limit Address"},
};
static_assert(fills(cbla, 32));
auto ba_cbla = with_end(cbla);

constexpr reg_bf cihstr[] = {
    {"res1",   0, 4,  ""                               },
    {"cihstr", 0, 12, " Capture Image Horizontal Start"},
    {"res2",   0, 4,  ""                               },
    {"civstr", 0, 12, " Capture Image Vertical Start"  },
};
static_assert(fills(cihstr, 32));
auto ba_cihstr = with_end(cihstr);

constexpr reg_bf cihend[] = {
    {"res1",   0, 4,  ""                             },
    {"cihend", 0, 12, " Capture Image Horizontal End"},
    {"res2",   0, 4,  ""                             },
    {"civend", 0, 12, " Capture Image Vertical End"  },
};
static_assert(fills(cihend, 32));
auto ba_cihend = with_end(cihend);

constexpr reg_bf chp[] = {
    {"res1", 0, 22, ""                         },
    {"chp",  0, 10, " Capture Horizontal Pixel"},
};
static_assert(fills(chp, 32));
auto ba_chp = with_end(chp);

constexpr reg_bf cvp[] = {
    {"res1", 0, 6,  ""                            },
    {"cvpp", 0, 10, " Capture Vertical Pixel PAL" },
    {"res2", 0, 6,  ""                            },
    {"cvpn", 0, 10, " Capture Vertical Pixel NTSC"},
};
static_assert(fills(cvp, 32));
auto ba_cvp = with_end(cvp);

constexpr reg_bf cbda0[] = {
    {"res1",  0, 6,  ""                                 },
    {"cbda0", 0, 26, " Capture Buffer Display Address 0"},
};
static_assert(fills(cbda0, 32));
auto ba_cbda0 = with_end(cbda0);

constexpr reg_bf cbda1[] = {
    {"res1",  0, 6,  ""                                 },
    {"cbda1", 0, 26, " Capture Buffer Display Address 1"},
};
static_assert(fills(cbda1, 32));
auto ba_cbda1 = with_end(cbda1);

constexpr reg_bf cmss[] = {
    {"res1",  0, 4,  ""                                        },
    {"cmshp", 0, 12, " Capture Magnify Source Horizontal Pixel"},
    {"res2",  0, 4,  ""                                        },
    {"cmsvl", 0, 12, " Capture Magnify Source Vertical Line"   },
};
static_assert(fills(cmss, 32));
auto ba_cmss = with_end(cmss);

constexpr reg_bf cmds[] = {
    {"res1",  0, 4,  ""                                         },
    {"cmdhp", 0, 12, " Capture Magnify Display Horizontal Pixel"},
    {"res2",  0, 4,  ""                                         },
    {"cmdvl", 0, 12, " Capture Magnify Display Vertical Line"   },
};
static_assert(fills(cmds, 32));
auto ba_cmds = with_end(cmds);

constexpr reg_bf cdcn[] = {
    {"res1", 0, 3,  ""                         },
    {"bdcn", 0, 13, " Blanking Data Count NTSC"},
    {"res2", 0, 3,  ""                         },
    {"vdcn", 0, 13, " Valid Data Count NTSC"   },
};
static_assert(fills(cdcn, 32));
auto ba_cdcn = with_end(cdcn);

constexpr reg_bf cdcp[] = {
    {"res1", 0, 3,  ""                        },
    {"bdcp", 0, 13, " Blanking Data Count PAL"},
    {"res2", 0, 3,  ""                        },
    {"vdcp", 0, 13, " Valid Data Count PAL"   },
};
static_assert(fills(cdcp, 32));
auto ba_cdcp = with_end(cdcp);

constexpr reg_bf dcm1[] = {
    {"den",  0, 1, " Display Enable, 1=Output Display Signal, 0=No Output Signal"           },
    {"stop", 0, 1, " UNKNOWN"                                                               },
    {"res1", 0, 8, ""                                                                       },
    {"l5e",  0, 1, " Layer5 Enable, 1=Layer5 ON, 0=Layer5 OFF"                              },
    {"l4e",  0, 1, " Layer5 Enable, 1=Layer4 ON, 0=Layer4 OFF"                              },
    {"l3e",  0, 1, " Layer5 Enable, 1=Layer3 ON, 0=Layer3 OFF"                              },
    {"l2e",  0, 1, " Layer5 Enable, 1=Layer2 ON, 0=Layer2 OFF"                              },
    {"l1e",  0, 1, " Layer5 Enable, 1=Layer1 ON, 0=Layer1 OFF"                              },
    {"l0e",  0, 1, " Layer5 Enable, 1=Layer0 ON, 0=Layer0 OFF"                              },
    {"cks",  0, 1, " Clock Source, 1=External Clock, 0=Internal PLL"                        },
    {"res2", 0, 1, ""                                                                       },
    {"sc",   0, 6, " Scaling, Divider fuer DisplayClock"                                    },
    {"eeq",  0, 1, " Equalizing Pulse Enable, 1=Equalizing Pulse ON, 0=Equalizing Pulse OFF"},
    {"ode",  0, 1, " UNKNOWN"                                                               },
    {"res3", 0, 1, ""                                                                       },
    {"res4", 0, 1, ""                                                                       },
    {"sf",   0, 1, " Synchronisation Signal Format"                                         },
    {"esy",  0, 1, " External Synchronisation Enable, 1=External Sync, 0=Internal Sync"     },
    {"sync", 0, 2, " Syncronistation 11=Interlace Video, 10=Interlace, 0X=Non Interlace"    },
};
static_assert(fills(dcm1, 32));
static_assert(field_bits(dcm1, "den") == LIME_DCM1_DISPLAY);
static_assert(field_bits(dcm1, "l0e") == LIME_DCM1_LAYER(0));
static_assert(field_bits(dcm1, "l1e") == LIME_DCM1_LAYER(1));
static_assert(field_bits(dcm1, "l2e") == LIME_DCM1_LAYER(2));
static_assert(field_bits(dcm1, "l3e") == LIME_DCM1_LAYER(3));
static_assert(field_bits(dcm1, "l4e") == LIME_DCM1_LAYER(4));
static_assert(field_bits(dcm1, "l5e") == LIME_DCM1_LAYER(5));
auto ba_dcm1 = with_end(dcm1);

constexpr reg_bf dcm2[] = {
    {"res##id", 0, 30, ""              },
    {"ruf",     0, 1,  "look in manual"},
    {"rum",     0, 1,  "look at manual"},
};
static_assert(fills(dcm2, 32));
auto ba_dcm2 = with_end(dcm2);

constexpr reg_bf dcm3[] = {
    {"res##id", 0,  20, ""                       },
    {"res##id", 0,  1,  ""                       },
    {"pom",     0,  1,  "Parallel output mode"   },
    {"dcked",   0,  1,  "Display clock edge"     },
    {"dckinv",  0,  1,  "Display clock inversion"},
    {"res##id", 0,  2,  ""                       },
    {"dckd",    16, 6,  "Display clock delay"    },
};
static_assert(fills(dcm3, 32));
auto ba_dcm3 = with_end(dcm3);

constexpr reg_bf dls[] = {
    {"res1", 0, 8, ""                                          },
    {"dls5", 0, 4, " Display Layer Select, Layer at Position 5"},
    {"dls4", 0, 4, " Display Layer Select, Layer at Position 4"},
    {"dls3", 0, 4, " Display Layer Select, Layer at Position 3"},
    {"dls2", 0, 4, " Display Layer Select, Layer at Position 2"},
    {"dls1", 0, 4, " Display Layer Select, Layer at Position 1"},
    {"dls0", 0, 4, " Display Layer Select, Layer at Position 0"},
};
static_assert(fills(dls, 32));
auto ba_dls = with_end(dls);

constexpr reg_bf dbgc[] = {
    {"res1", 0, 8, ""                              },
    {"dbgr", 0, 8, "Display-Background-Color-Red"  },
    {"dbgg", 0, 8, "Display-Background-Color-Green"},
    {"dbgb", 0, 8, "Display-Background-Color-Blue" },
};
static_assert(fills(dbgc, 32));
auto ba_dbgc = with_end(dbgc);

constexpr reg_bf l0m[] = {
    {"l0c",  0, 1,  " L0-Layer - Colour Mode, 1=Direct Colour, 0=Indirect Colour"},
    {"res1", 0, 2,  ""                                                           },
    {"res2", 0, 5,  ""                                                           },
    {"l0w",  0, 8,  " L0-Layer - Width, Breite Layer in 64bytes"                 },
    {"res3", 0, 4,  ""                                                           },
    {"l0h",  0, 12, " L0-Layer - Height, Hoehe Layer (Value-1)"                  },
};
static_assert(fills(l0m, 32));
static_assert(field_bits(l0m, "l0c") == LIME_L0M_16_BIT);
auto ba_l0m = with_end(l0m);

constexpr reg_bf l0em[] = {
    {"l0ec", 0, 2,  " L0-Layer - Extended Colour Mode"  },
    {"res1", 0, 6,  ""                                  },
    {"l0pp", 0, 4,  " L0-Layer - Palette Base"          },
    {"res2", 0, 19, ""                                  },
    {"l0wp", 0, 1,  " L0-Layer - Window Position Enable"},
};
static_assert(fills(l0em, 32));
auto ba_l0em = with_end(l0em);

constexpr reg_bf l0oa[] = {
    {"res1", 0, 6,  ""                        },
    {"l0oa", 0, 26, " L0-Layer Origin Address"},
};
static_assert(fills(l0oa, 32));
auto ba_l0oa = with_end(l0oa);

constexpr reg_bf l0da[] = {
    {"res1", 0, 6,  ""                         },
    {"l0da", 0, 26, " L0-Layer Display Address"},
};
static_assert(fills(l0da, 32));
auto ba_l0da = with_end(l0da);

constexpr reg_bf l0dxy[] = {
    {"res1", 0, 4,  ""                            },
    {"l0dx", 0, 12, " L0-Layer Display Position X"},
    {"res2", 0, 4,  ""                            },
    {"l0dy", 0, 12, " L0-Layer Display Position Y"},
};
static_assert(fills(l0dxy, 32));
auto ba_l0dxy = with_end(l0dxy);

constexpr reg_bf l0wxy[] = {
    {"res1", 0, 4,  ""                           },
    {"l0wx", 0, 12, " L0-Layer Window Position X"},
    {"res2", 0, 4,  ""                           },
    {"l0wy", 0, 12, " L0-Layer Window Position Y"},
};
static_assert(fills(l0wxy, 32));
auto ba_l0wxy = with_end(l0wxy);

constexpr reg_bf l0wwh[] = {
    {"res1", 0, 4,  ""                      },
    {"l0ww", 0, 12, " L0-Layer Window Width"},
    {"res2", 0, 4,  ""                      },
    {"l0wh", 0, 12, " L0-Layer Window Hight"},
};
static_assert(fills(l0wwh, 32));
auto ba_l0wwh = with_end(l0wwh);

constexpr reg_bf l0bld[] = {
    {"res1", 0, 15, ""                                                                    },
    {"l0be", 0, 1,  " Layer-0 blend enable, 1=Blending ON, 0=Blending OFF"                },
    {"l0bs", 0, 1,  " Layer-0 blend select"                                               },
    {"l0bi", 0, 1,  " Layer-0 blend increment"                                            },
    {"l0pp", 0, 1,  " Layer-0 blend plane"                                                },
    {"res2", 0, 5,  ""                                                                    },
    {"l0br", 0, 8,  " Layer-0 blend ratio, set the bratio, normalerweise bratio=value/256"},
};
static_assert(fills(l0bld, 32));
auto ba_l0bld = with_end(l0bld);

constexpr reg_bf l0tc[] = {
    {"res",  0, 16, ""                               },
    {"l0zt", 0, 1,  " Layer -0 - Zero Transparency"  },
    {"l0tc", 0, 15, " Layer -0 - Transparency Colour"},
};
static_assert(fills(l0tc, 32));
static_assert(field_bits(l0tc, "l0zt") == LIME_L0TC_ZERO);
auto ba_l0tc = with_end(l0tc);

constexpr reg_bf l0etc[] = {
    {"l0etz", 0, 1,  " Layer -0 - Extended Zero Transparency"},
    {"res",   0, 7,  ""                                      },
    {"l0etc", 0, 24, " Layer -0 - Transparency Colour mode"  },
};
static_assert(fills(l0etc, 32));
static_assert(field_bits(l0etc, "l0etz") == LIME_LETC_ZERO);
auto ba_l0etc = with_end(l0etc);

constexpr reg_bf l1bld[] = {
    {"res1", 0, 15, ""                                                                    },
    {"l1be", 0, 1,  " Layer-1 blend enable, 1=Blending ON, 0=Blending OFF"                },
    {"l1bs", 0, 1,  " Layer-1 blend select"                                               },
    {"l1bi", 0, 1,  " Layer-1 blend increment"                                            },
    {"l1pp", 0, 1,  " Layer-1 blend plane"                                                },
    {"res2", 0, 5,  ""                                                                    },
    {"l1br", 0, 8,  " Layer-1 blend ratio, set the bratio, normalerweise bratio=value/256"},
};
static_assert(fills(l1bld, 32));
auto ba_l1bld = with_end(l1bld);

constexpr reg_bf l1em[] = {
    {"l1ec", 0, 2,  " L1-Layer - Extended Colour Mode"},
    {"res1", 0, 4,  ""                                },
    {"dm",   0, 2,  " L1-Layer - Display Magnify Mode"},
    {"l1pp", 0, 4,  " L1-Layer - Palette Base"        },
    {"res2", 0, 20, ""                                },
};
static_assert(fills(l1em, 32));
auto ba_l1em = with_end(l1em);

constexpr reg_bf l1m[] = {
    {"l1c",  0, 1,  " L1-Layer - Colour Mode, 1=Direct Colour, 0=Indirect Colour"    },
    {"l1yc", 0, 1,  " L1-Layer - YC Mode, 1=YC, 0=RGB"                               },
    {"l1cs", 0, 1,  " L1-Layer - Capture Synchronisation, 1=Captured Video, 0=Memory"},
    {"l1im", 0, 1,  " L1-Layer - Interlace Mode"                                     },
    {"res1", 0, 4,  ""                                                               },
    {"l1w",  0, 8,  " L1-Layer - Width, Breite Layer in 64bytes"                     },
    {"res3", 0, 16, ""                                                               },
};
static_assert(fills(l1m, 32));
auto ba_l1m = with_end(l1m);

constexpr reg_bf l1wxy[] = {
    {"res1", 0, 4,  ""                           },
    {"l1wx", 0, 12, " L1-Layer Window Position X"},
    {"res2", 0, 4,  ""                           },
    {"l1wy", 0, 12, " L1-Layer Window Position Y"},
};
static_assert(fills(l1wxy, 32));
auto ba_l1wxy = with_end(l1wxy);

constexpr reg_bf l1wwh[] = {
    {"res1", 0, 4,  ""                      },
    {"l1ww", 0, 12, " L1-Layer Window Width"},
    {"res2", 0, 4,  ""                      },
    {"l1wh", 0, 12, " L1-Layer Window Hight"},
};
static_assert(fills(l1wwh, 32));
auto ba_l1wwh = with_end(l1wwh);

constexpr reg_bf l1etc[] = {
    {"l1etz", 0, 1,  " Layer -1 - Extended Zero Transparency"},
    {"res",   0, 7,  ""                                      },
    {"l1etc", 0, 24, " Layer -1 - Transparency Colour mode"  },
};
static_assert(fills(l1etc, 32));
static_assert(field_bits(l1etc, "l1etz") == LIME_LETC_ZERO);
auto ba_l1etc = with_end(l1etc);

constexpr reg_bf l32tc[] = {
    {"l3zt", 0, 1,  " Layer -3 - Zero Transparency"  },
    {"l3tc", 0, 15, " Layer -3 - Transparency Colour"},
    {"l2zt", 0, 1,  " Layer -2 - Zero Transparency"  },
    {"l2tc", 0, 15, " Layer -2 - Transparency Colour"},
};
static_assert(fills(l32tc, 32));
auto ba_l32tc = with_end(l32tc);

constexpr reg_bf l2etc[] = {
    {"l2etz", 0, 1,  " Layer -2 - Extended Zero Transparency"},
    {"res",   0, 7,  ""                                      },
    {"l2etc", 0, 24, " Layer -2 - Transparency Colour mode"  },
};
static_assert(fills(l2etc, 32));
static_assert(field_bits(l2etc, "l2etz") == LIME_LETC_ZERO);
auto ba_l2etc = with_end(l2etc);

constexpr reg_bf l3etc[] = {
    {"l3etz", 0, 1,  " Layer -3 - Extended Zero Transparency"},
    {"res",   0, 7,  ""                                      },
    {"l3etc", 0, 24, " Layer -3 - Transparency Colour mode"  },
};
static_assert(fills(l3etc, 32));
static_assert(field_bits(l3etc, "l3etz") == LIME_LETC_ZERO);
auto ba_l3etc = with_end(l3etc);

constexpr reg_bf l4etc[] = {
    {"l4etz", 0, 1,  " Layer -4 - Extended Zero Transparency"},
    {"res",   0, 7,  ""                                      },
    {"l4etc", 0, 24, " Layer -4 - Transparency Colour mode"  },
};
static_assert(fills(l4etc, 32));
static_assert(field_bits(l4etc, "l4etz") == LIME_LETC_ZERO);
auto ba_l4etc = with_end(l4etc);

constexpr reg_bf l5etc[] = {
    {"l5etz", 0, 1,  " Layer -5 - Extended Zero Transparency"},
    {"res",   0, 7,  ""                                      },
    {"l5etc", 0, 24, " Layer -5 - Transparency Colour mode"  },
};
static_assert(fills(l5etc, 32));
static_assert(field_bits(l5etc, "l5etz") == LIME_LETC_ZERO);
auto ba_l5etc = with_end(l5etc);

reg_bf_group regs_lime[] = {
    {'C', LIME_VCM,    "VCM",    32, 0, ba_vcm.row,    0, "Video-Control-Mode"                  },
    {'C', LIME_CSC,    "CSC",    32, 0, ba_csc.row,    0, "Capture-Scale"                       },
    {'C', LIME_CBM,    "CBM",    32, 0, ba_cbm.row,    0, "Video-Capture-Buffer"                },
    {'C', LIME_CBOA,   "CBOA",   32, 0, ba_cboa.row,   0, "Video-Capture-Buffer-Origin-Address" },
    {'C', LIME_CBLA,   "CBLA",   32, 0, ba_cbla.row,   0, "Video-Capture-Buffer-Limit-Address"  },
    {'C', LIME_CIHSTR, "CIHSTR", 32, 0, ba_cihstr.row, 0, "Capture-Image-Hor/Vert-Start"        },
    {'C', LIME_CIHEND, "CIHEND", 32, 0, ba_cihend.row, 0, "Capture-Image-Hor/Vert-End"          },
    {'C', LIME_CHP,    "CHP",    32, 0, ba_chp.row,    0, "Capture-Horizontal-Pixel"            },
    {'C', LIME_CVP,    "CVP",    32, 0, ba_cvp.row,    0, "Capture-vertical-Pixel"              },
    {'C', LIME_CBDA0,  "CBDA0",  32, 0, ba_cbda0.row,  0, "Capture-buffer display address 0"    },
    {'C', LIME_CBDA1,  "CBDA1",  32, 0, ba_cbda1.row,  0, "Capture-buffer display address 1"    },
    {'C', LIME_CMSS,   "CMSS",   32, 0, ba_cmss.row,   0, "Capture-Magnify-Source-Size"         },
    {'C', LIME_CMDS,   "CMDS",   32, 0, ba_cmds.row,   0, "Capture-Magnify-Display-Size"        },
    {'C', LIME_CDCN,   "CDCN",   32, 0, ba_cdcn.row,   0, "Capture-Data-Count-NTSC"             },
    {'C', LIME_CDCP,   "CDCP",   32, 0, ba_cdcp.row,   0, "Capture-Data-Count-PAL"              },
    {'D', LIME_DCM1,   "DCM1",   32, 0, ba_dcm1.row,   0, "Display-Control-Mode-1"              },
    {'D', LIME_DCM2,   "DCM2",   32, 0, ba_dcm2.row,   0, "Display-Control-Mode-2"              },
    {'D', LIME_DCM3,   "DCM3",   32, 0, ba_dcm3.row,   0, "Display-Control-Mode-3"              },
    {'D', LIME_DLS,    "DLS",    32, 0, ba_dls.row,    0, "Display-Layer-Select"                },
    {'D', LIME_DBGC,   "DBGC",   32, 0, ba_dbgc.row,   0, "Display-Background-Color"            },
    {'D', LIME_L0M,    "L0M",    32, 0, ba_l0m.row,    0, "Layer0-Mode"                         },
    {'D', LIME_L0EM,   "L0EM",   32, 0, ba_l0em.row,   0, "Layer0-Extended-Mode"                },
    {'D', LIME_L0OA,   "L0OA",   32, 0, ba_l0oa.row,   0, "Layer0-Origin-Adress"                },
    {'D', LIME_L0DA,   "L0DA",   32, 0, ba_l0da.row,   0, "Layer0-Display-Adress"               },
    {'D', LIME_L0DXY,  "L0DXY",  32, 0, ba_l0dxy.row,  0, "Layer0-XY-Position"                  },
    {'D', LIME_L0WXY,  "L0WXY",  32, 0, ba_l0wxy.row,  0, "Layer0-Window-XY-Position"           },
    {'D', LIME_L0WWH,  "L0WWH",  32, 0, ba_l0wwh.row,  0, "Layer0-Window-Width/Hight"           },
    {'D', LIME_L0BLD,  "L0BLD",  32, 0, ba_l0bld.row,  0, "Layer0-Blending"                     },
    {'D', LIME_L0TC,   "L0TC",   32, 0, ba_l0tc.row,   0, "Layer0-Transparency-Control"         },
    {'D', LIME_L0ETC,  "L0ETC",  32, 0, ba_l0etc.row,  0, "Layer0-Extended-transparency-Control"},
    {'D', LIME_L1BLD,  "L1BLD",  32, 0, ba_l1bld.row,  0, "Layer1-Blending"                     },
    {'D', LIME_L1EM,   "L1EM",   32, 0, ba_l1em.row,   0, "Layer1-Extended-Mode"                },
    {'D', LIME_L1M,    "L1M",    32, 0, ba_l1m.row,    0, "Layer1-Mode"                         },
    {'D', LIME_L1WXY,  "L1WXY",  32, 0, ba_l1wxy.row,  0, "Layer1-Window-XY-Position"           },
    {'D', LIME_L1WWH,  "L1WWH",  32, 0, ba_l1wwh.row,  0, "Layer1-Window-Width/Hight"           },
    {'D', LIME_L1ETC,  "L1ETC",  32, 0, ba_l1etc.row,  0, "Layer1-Extended-transparency-Control"},
    {'D', LIME_L32TC,  "L32TC",  32, 0, ba_l32tc.row,  0, "Layer3/2-Transparency-Control"       },
    {'D', LIME_L2ETC,  "L2ETC",  32, 0, ba_l2etc.row,  0, "Layer2-Extended-transparency-Control"},
    {'D', LIME_L3ETC,  "L3ETC",  32, 0, ba_l3etc.row,  0, "Layer3-Extended-transparency-Control"},
    {'D', LIME_L4ETC,  "L4ETC",  32, 0, ba_l4etc.row,  0, "Layer4-Extended-transparency-Control"},
    {'D', LIME_L1ETC,  "L5ETC",  32, 0, ba_l5etc.row,  0, "Layer5-Extended-transparency-Control"},
    end_of_table,
};
static_assert(std::size(regs_lime) == 41 + 1, "41 registers and the end of the table");
}
