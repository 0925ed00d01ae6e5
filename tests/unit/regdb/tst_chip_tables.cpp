/* SPDX-License-Identifier: MIT */
/* The four chip tables against a second copy of them, made for reading: order, addresses, widths, initial
 * values, names and lengths of the fields, and the help texts that users know from register files.
 */
#include "hw/fpga_device.h"
#include "hw/lime_device.h"
#include "hw/saa71xx_device.h"
#include "regdb/chip_regs.h"
#include "regdb/registers.h"

#include <cstdio>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace
{

using lines = std::vector<std::string>;

/* One line a register; lines that start with a blank continue the one before. */
lines written(const char* text)
{
    lines registers;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (line.empty())
            continue;
        if (line[0] == ' ')
            registers.back() += line.substr(line.find_first_not_of(' ') - 1);
        else
            registers.push_back(line);
    }
    return registers;
}

std::string hex(const char* format, uint32_t number)
{
    char text[16];
    std::snprintf(text, sizeof text, format, number);
    return text;
}

std::string fields(const reg_bf_group& reg)
{
    std::string text;
    for (const reg_bf* bf = reg.bf; bf->name != nullptr; ++bf)
        text += std::string(" ") + bf->name + ":" + std::to_string(bf->len);
    return text;
}

/* "CTRL X 0x00ff0000 res1:6 por:2 ...", the address in so many digits. */
lines wide_registers(const reg_bf_group* reg, const char* address)
{
    lines registers;
    for (; reg->name != nullptr; ++reg)
        registers.push_back(std::string(reg->name) + " " + reg->base + " " + hex(address, reg->addr) +
                            fields(*reg));
    return registers;
}

/* "AIN1 0x02=0xc0 ainc1:8" */
lines byte_registers(const reg_bf_group* reg)
{
    lines registers;
    for (; reg->name != nullptr; ++reg)
        registers.push_back(std::string(reg->name) + " " + hex("0x%02x", reg->addr) + "=" +
                            hex("0x%02x", reg_value(reg)) + fields(*reg));
    return registers;
}

const char* const FPGA = R"(
CTRL X 0x00ff0000 res1:6 por:2 fgon:1 res2:2 cvr:1 res3:1 cco:1 cto:1 cgo:1 res4:3 bvr:1 bgp:1 bco:1
    bto:1 bgo:1 res5:3 avr:1 agp:1 aco:1 ato:1 ago:1
FGCC X 0x00ff0004 res1:7 fgm:1 col:24
SRIC X 0x00ff000c res1:16 sinr:8 rinr:8
TSXP X 0x00ff1a00 res1:20 tsx:12
TSYP X 0x00ff1a04 res1:23 tsy:9
TESZ X 0x00ff1a08 res1:16 res2:3 tesh:5 res3:2 tesv:6
TEMO X 0x00ff1a0c res1:16 tebo:16
)";

const char* const LIME = R"(
VCM C 0x000 vie:1 vis:1 res5:1 vice:1 res4:2 cm:2 res3:3 vi:1 res2:17 nrgb:1 vs:1 res1:1
CSC C 0x004 vsci:5 vscf:11 hsci:5 hscf:11
CBM C 0x010 oo:1 sbuf:1 crgb:1 pau:1 res1:4 cbw:8 res2:1 c24:1 bed:1 csw:1 res3:1 sss:3 ssm:3 hrv:1
    res4:3 cbst:1
CBOA C 0x014 res1:9 cboa:23
CBLA C 0x018 res1:9 cbla:23
CIHSTR C 0x01c res1:4 cihstr:12 res2:4 civstr:12
CIHEND C 0x020 res1:4 cihend:12 res2:4 civend:12
CHP C 0x028 res1:22 chp:10
CVP C 0x02c res1:6 cvpp:10 res2:6 cvpn:10
CBDA0 C 0x034 res1:6 cbda0:26
CBDA1 C 0x038 res1:6 cbda1:26
CMSS C 0x048 res1:4 cmshp:12 res2:4 cmsvl:12
CMDS C 0x04c res1:4 cmdhp:12 res2:4 cmdvl:12
CDCN C 0x4000 res1:3 bdcn:13 res2:3 vdcn:13
CDCP C 0x4004 res1:3 bdcp:13 res2:3 vdcp:13
DCM1 D 0x100 den:1 stop:1 res1:8 l5e:1 l4e:1 l3e:1 l2e:1 l1e:1 l0e:1 cks:1 res2:1 sc:6 eeq:1 ode:1
    res3:1 res4:1 sf:1 esy:1 sync:2
DCM2 D 0x104 res##id:30 ruf:1 rum:1
DCM3 D 0x108 res##id:20 res##id:1 pom:1 dcked:1 dckinv:1 res##id:2 dckd:6
DLS D 0x180 res1:8 dls5:4 dls4:4 dls3:4 dls2:4 dls1:4 dls0:4
DBGC D 0x184 res1:8 dbgr:8 dbgg:8 dbgb:8
L0M D 0x020 l0c:1 res1:2 res2:5 l0w:8 res3:4 l0h:12
L0EM D 0x110 l0ec:2 res1:6 l0pp:4 res2:19 l0wp:1
L0OA D 0x024 res1:6 l0oa:26
L0DA D 0x028 res1:6 l0da:26
L0DXY D 0x02c res1:4 l0dx:12 res2:4 l0dy:12
L0WXY D 0x114 res1:4 l0wx:12 res2:4 l0wy:12
L0WWH D 0x118 res1:4 l0ww:12 res2:4 l0wh:12
L0BLD D 0x0b4 res1:15 l0be:1 l0bs:1 l0bi:1 l0pp:1 res2:5 l0br:8
L0TC D 0x0bc res:16 l0zt:1 l0tc:15
L0ETC D 0x1a0 l0etz:1 res:7 l0etc:24
L1BLD D 0x188 res1:15 l1be:1 l1bs:1 l1bi:1 l1pp:1 res2:5 l1br:8
L1EM D 0x120 l1ec:2 res1:4 dm:2 l1pp:4 res2:20
L1M D 0x030 l1c:1 l1yc:1 l1cs:1 l1im:1 res1:4 l1w:8 res3:16
L1WXY D 0x124 res1:4 l1wx:12 res2:4 l1wy:12
L1WWH D 0x128 res1:4 l1ww:12 res2:4 l1wh:12
L1ETC D 0x1a4 l1etz:1 res:7 l1etc:24
L32TC D 0x0c0 l3zt:1 l3tc:15 l2zt:1 l2tc:15
L2ETC D 0x1a8 l2etz:1 res:7 l2etc:24
L3ETC D 0x1ac l3etz:1 res:7 l3etc:24
L4ETC D 0x1b0 l4etz:1 res:7 l4etc:24
L5ETC D 0x1a4 l5etz:1 res:7 l5etc:24
)";

const char* const SAA7113 = R"(
CVER 0x00=0x00 cver:8
INDE1 0x01=0x08 indel:8
AIN1 0x02=0xc0 ainc1:8
AIN2 0x03=0x23 ainc2:8
AIN3 0x04=0x00 ainc3:8
AIN4 0x05=0x00 ainc4:8
HSYST 0x06=0xe9 hsyst:8
HSYSO 0x07=0x0d hsyso:8
SYCTRL 0x08=0x98 syctrl:8
LUCTRL 0x09=0x01 luctrl:8
LUBR 0x0a=0x7d lubr:8
LUCON 0x0b=0x47 lucon:8
CRSAT 0x0c=0x7e crsat:8
CRHU 0x0d=0x00 crhu:8
CRCTRL 0x0e=0x01 crctrl:8
CRGA 0x0f=0xaa crga:8
FDEL 0x10=0x00 fdel:8
OCTRL1 0x11=0x1c octrl1:8
OCTRL2 0x12=0x01 octrl2:8
OCTRL3 0x13=0x00 octrl3:8
RES14 0x14=0x00 res14:8
VGST 0x15=0x00 vgst:8
VGSP 0x16=0x00 vgsp:8
VGMSB 0x17=0x00 vgmsb:8
SBVD 0x1f=0x00 intl:1 hlvln_hlck:1 fidt:1 glimt:1 glimb:1 wipa:1 copro_sltca:1 rdcap_code:1
REG40 0x40=0x02 reg40:8
REG58 0x58=0x00 reg58:8
REG59 0x59=0x54 reg59:8
REG5A 0x5a=0x07 reg5a:8
REG5B 0x5b=0x83 reg5b:8
REG5E 0x5e=0x00 reg5e:8
)";

/* Sub-addresses and initial values of the video encoder. */
const char* const SAA7129 = R"(
0x26=0x0d 0x27=0x00 0x28=0x21 0x29=0x1d 0x2a=0x75 0x2b=0x3f 0x2c=0x06 0x2d=0xf3
0x38=0x1a 0x39=0x1a 0x3a=0x13 0x42=0x00 0x43=0x68 0x44=0x10 0x45=0x97 0x46=0x4c
0x47=0x18 0x48=0x9b 0x49=0x93 0x4a=0x9f 0x4b=0xff 0x4c=0x7c 0x4d=0x34 0x4e=0x3f
0x4f=0x17 0x50=0x00 0x51=0x83 0x52=0x83 0x53=0x80 0x54=0x8c 0x55=0x0f 0x56=0xc3
0x57=0x06 0x58=0x02 0x59=0x80 0x5a=0x34 0x5b=0x7d 0x5c=0xaf 0x5d=0x2d 0x5e=0x3f
0x5f=0x3f 0x60=0x7b 0x61=0x02 0x62=0x2f 0x63=0xcb 0x64=0x8a 0x65=0x09 0x66=0x2a
0x67=0x77 0x68=0x41 0x69=0x88 0x6a=0x41 0x6b=0x00 0x6c=0x02 0x6d=0x20 0x6e=0xa0
0x6f=0xb4 0x70=0x41 0x71=0xc3 0x72=0x00 0x73=0x3e 0x74=0xb8 0x75=0x1e 0x76=0x15
0x77=0x16 0x78=0x15 0x79=0x16 0x7a=0x2b 0x7b=0xd9 0x7c=0x80 0x7d=0x00 0x7e=0x00
0x7f=0x00
)";

/* The encoder's names follow from the sub-address; the field's has capitals from 0x4A on. */
lines encoder_registers()
{
    lines registers;
    std::istringstream stream(SAA7129);
    for (std::string entry; stream >> entry;) {
        const unsigned long sub = std::stoul(entry, nullptr, 16);
        const char* const format = sub > 0x3a ? "bf_0x%02X" : "bf_0x%02x";
        registers.push_back("RN_" + entry.substr(0, 4) + " " + entry + " " +
                            hex(format, static_cast<uint32_t>(sub)) + ":8");
    }
    return registers;
}

TEST(chip_tables, of_the_fpga_has_its_registers)
{
    EXPECT_EQ(7u, written(FPGA).size());
    EXPECT_EQ(written(FPGA), wide_registers(regs_fpga, "0x%08x"));
}

TEST(chip_tables, of_the_display_controller_has_its_registers)
{
    EXPECT_EQ(41u, written(LIME).size());
    EXPECT_EQ(written(LIME), wide_registers(regs_lime, "0x%03x"));
}

TEST(chip_tables, of_the_decoder_has_its_registers)
{
    EXPECT_EQ(31u, written(SAA7113).size());
    EXPECT_EQ(written(SAA7113), byte_registers(regs_saa7113));
}

TEST(chip_tables, of_the_encoder_has_its_registers)
{
    EXPECT_EQ(73u, encoder_registers().size());
    EXPECT_EQ(encoder_registers(), byte_registers(regs_saa7129));
}

TEST(chip_tables, of_fpga_and_display_controller_start_wide_and_not_valid)
{
    for (const reg_bf_group* table : {regs_fpga, regs_lime}) {
        for (const reg_bf_group* reg = table; reg->name != nullptr; ++reg) {
            SCOPED_TRACE(reg->name);
            EXPECT_EQ(32, reg->size);
            EXPECT_EQ(0u, reg->value);
            EXPECT_EQ(0, reg->valid);
        }
    }
}

TEST(chip_tables, of_decoder_and_encoder_start_valid_with_values_in_the_top_byte)
{
    for (const reg_bf_group* table : {regs_saa7113, regs_saa7129}) {
        for (const reg_bf_group* reg = table; reg->name != nullptr; ++reg) {
            SCOPED_TRACE(reg->name);
            EXPECT_EQ('X', reg->base);
            EXPECT_EQ(8, reg->size);
            EXPECT_EQ(0u, reg->value & 0xffffff);
            EXPECT_EQ(strcmp(reg->name, "CVER") == 0 ? 0 : 1, reg->valid);
        }
    }
}

const chip_regs* const CHIPS[] = {&crp_fpga, &crp_lime, &crp_saa7113, &crp_saa7129};

TEST(chip_tables, start_with_all_fields_0_but_the_display_clock_delay)
{
    for (const chip_regs* chip : CHIPS) {
        for (const reg_bf_group* reg = chip->regs; reg->name != nullptr; ++reg) {
            for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
                EXPECT_EQ(strcmp(bf->name, "dckd") == 0 ? 16u : 0u, bf->value) << reg->name << bf->name;
        }
    }
}

TEST(chip_tables, have_fields_that_fill_their_registers)
{
    testing::internal::CaptureStderr();
    for (const chip_regs* chip : CHIPS)
        EXPECT_EQ(0, check_all_regs(chip));
    EXPECT_EQ("", testing::internal::GetCapturedStderr());
}

TEST(chip_tables, end_with_entries_that_are_all_zero)
{
    for (const chip_regs* chip : CHIPS) {
        const reg_bf_group* reg = chip->regs;
        for (; reg->name != nullptr; ++reg) {
            const reg_bf* bf = reg->bf;
            while (bf->name != nullptr)
                ++bf;
            EXPECT_EQ(0u, bf->value);
            EXPECT_EQ(0, bf->len);
            EXPECT_STREQ("", bf->help);
        }
        EXPECT_EQ(0, reg->base);
        EXPECT_EQ(0u, reg->addr);
        EXPECT_EQ(0, reg->size);
        EXPECT_EQ(0u, reg->value);
        EXPECT_EQ(nullptr, reg->bf);
        EXPECT_EQ(0, reg->valid);
        EXPECT_EQ(nullptr, reg->help);
    }
}

TEST(chip_tables, are_tied_to_their_configuration_and_access_functions)
{
    EXPECT_EQ(&config_fpga, crp_fpga.config);
    EXPECT_EQ(regs_fpga, crp_fpga.regs);
    EXPECT_EQ(&read_fpga_reg, crp_fpga.read);
    EXPECT_EQ(&write_fpga_reg, crp_fpga.write);
    EXPECT_EQ(&config_lime, crp_lime.config);
    EXPECT_EQ(regs_lime, crp_lime.regs);
    EXPECT_EQ(&read_lime_reg, crp_lime.read);
    EXPECT_EQ(&write_lime_reg, crp_lime.write);
    EXPECT_EQ(&config_saa7113, crp_saa7113.config);
    EXPECT_EQ(regs_saa7113, crp_saa7113.regs);
    EXPECT_EQ(&config_saa7129, crp_saa7129.config);
    EXPECT_EQ(regs_saa7129, crp_saa7129.regs);
    for (const chip_regs* chip : {&crp_saa7113, &crp_saa7129}) {
        EXPECT_EQ(&read_saa71xx_reg, chip->read);
        EXPECT_EQ(&write_saa71xx_reg, chip->write);
    }
}

TEST(chip_tables, say_nothing_about_reserved_fields_and_something_about_all_others)
{
    for (const chip_regs* chip : {&crp_fpga, &crp_lime}) {
        for (const reg_bf_group* reg = chip->regs; reg->name != nullptr; ++reg) {
            for (const reg_bf* bf = reg->bf; bf->name != nullptr; ++bf)
                EXPECT_EQ(strncmp(bf->name, "res", 3) == 0, *bf->help == 0) << reg->name << " " << bf->name;
        }
    }
}

/* After the purpose: "- DECCOL DECFIS BS5 BS4 BS3 BS2 BS1 BS0 -". */
TEST(chip_tables, name_eight_bits_of_every_encoder_register_in_use)
{
    for (const reg_bf_group* reg = regs_saa7129; reg->name != nullptr; ++reg) {
        const std::string help = reg->help;
        if (reg->addr == 0x60 || reg->addr == 0x7d) {
            EXPECT_EQ(reg->addr == 0x60 ? "NUll" : "null", help);
            continue;
        }
        std::istringstream bits(help.substr(help.find("- ") + 1));
        lines words;
        for (std::string word; bits >> word;)
            words.push_back(word);
        ASSERT_EQ(9u, words.size()) << reg->name << ": " << help;
        EXPECT_EQ("-", words.back()) << reg->name;
    }
}

TEST(chip_tables, say_nothing_about_encoder_and_status_fields)
{
    for (const reg_bf_group* reg = regs_saa7129; reg->name != nullptr; ++reg)
        EXPECT_STREQ("", reg->bf->help) << reg->name;
    for (const reg_bf* bf = search_reg_bf_group_by_name(&crp_saa7113, "SBVD")->bf; bf->name != nullptr; ++bf)
        EXPECT_STREQ("", bf->help) << bf->name;
}

/* Register names are unique among the four chips. */
struct help_text {
    const char* reg;
    const char* bf; /* null: the register's own text */
    const char* help;
};

reg_bf_group* find(const char* name)
{
    for (const chip_regs* chip : CHIPS) {
        if (reg_bf_group* reg = search_reg_bf_group_by_name(chip, name))
            return reg;
    }
    return nullptr;
}

const help_text HELP[] = {
    {"CTRL",    nullptr,  "FPGA Display-Control-Register"                                                 },
    {"CTRL",    "por",    "controll of play or rec-mode"                                                  },
    {"CTRL",    "fgon",   "Self sync on/off"                                                              },
    {"CTRL",    "cvr",    "Ctrl C Videorestore control bit"                                               },
    {"CTRL",    "cco",    "Ctrl C Cursor control bit"                                                     },
    {"CTRL",    "cto",    "Ctrl C Textoverlay control bit"                                                },
    {"CTRL",    "cgo",    "Ctrl C Grphic overlay control"                                                 },
    {"CTRL",    "bvr",    "Ctrl B Videorestore control bit"                                               },
    {"CTRL",    "bgp",    "Ctrl B Graphic priority bit"                                                   },
    {"CTRL",    "bco",    "Ctrl B Cursor control bit"                                                     },
    {"CTRL",    "bto",    "Ctrl B Textoverlay control bit"                                                },
    {"CTRL",    "bgo",    "Ctrl B Grphic overlay control"                                                 },
    {"CTRL",    "avr",    "Ctrl A Videorestore control bit"                                               },
    {"CTRL",    "agp",    "Ctrl A Graphic priority bit"                                                   },
    {"CTRL",    "aco",    "Ctrl A Cursor control bit"                                                     },
    {"CTRL",    "ato",    "Ctrl A Textoverlay control bit"                                                },
    {"CTRL",    "ago",    "Ctrl A Grphic overlay control"                                                 },
    {"FGCC",    nullptr,  "Framegenerator control and color"                                              },
    {"FGCC",    "fgm",    " Self sync Mode 1=NTSC, 0=PAL"                                                 },
    {"FGCC",    "col",    " Self Sync backgound color"                                                    },
    {"SRIC",    nullptr,  "Store Image control"                                                           },
    {"SRIC",    "sinr",   " Store Videimage Nr:0-7"                                                       },
    {"SRIC",    "rinr",   " Restore Videoimage Nr:0-7"                                                    },
    {"TSXP",    nullptr,  "Text start x position"                                                         },
    {"TSXP",    "tsx",    " Text start x position on screen"                                              },
    {"TSYP",    nullptr,  "Text start y position"                                                         },
    {"TSYP",    "tsy",    " Text start y position on screen"                                              },
    {"TESZ",    nullptr,  "Text size H in lines, W in pixel"                                              },
    {"TESZ",    "tesh",   " Text size h in pixels"                                                        },
    {"TESZ",    "tesv",   " Text size v in lines"                                                         },
    {"TEMO",    nullptr,  "Text memory byte offset"                                                       },
    {"TEMO",    "tebo",   " Text memory byte offset"                                                      },
    {"VCM",     nullptr,  "Video-Control-Mode"                                                            },
    {"VCM",     "vie",    " Videoinput Enable, 1=Capture Video, 0=No Capture"                             },
    {"VCM",     "vis",    " Videoinput Select, 1=RGB, 0=RBT656/601"                                       },
    {"VCM",     "vice",   " Videoclock Enable, 1=Disabled, 0=Enabled"                                     },
    {"VCM",     "cm",     " Capture Mode, 11=Capture, 00=No Capture"                                      },
    {"VCM",     "vi",     " Vertical Interpolation, 1=No Interpolation, 0=Interpolation"                  },
    {"VCM",     "nrgb",   " Native RGB-Input On, 1=Native, 0=RGB->YUV422"                                 },
    {"VCM",     "vs",     " VideoSelect, 1=PAL, 0=NTSC"                                                   },
    {"CSC",     nullptr,  "Capture-Scale"                                                                 },
    {"CSC",     "vsci",   "Vertical Scale Integer"                                                        },
    {"CSC",     "vscf",   "Vertical Scale Fraction"                                                       },
    {"CSC",     "hsci",   "Horizontal Scale Integer"                                                      },
    {"CSC",     "hscf",   "Horizontal Scale Fraction"                                                     },
    {"CBM",     nullptr,  "Video-Capture-Buffer"                                                          },
    {"CBOA",    nullptr,  "Video-Capture-Buffer-Origin-Address"                                           },
    {"CBLA",    nullptr,  "Video-Capture-Buffer-Limit-Address"                                            },
    {"CIHSTR",  nullptr,  "Capture-Image-Hor/Vert-Start"                                                  },
    {"CIHEND",  nullptr,  "Capture-Image-Hor/Vert-End"                                                    },
    {"CHP",     nullptr,  "Capture-Horizontal-Pixel"                                                      },
    {"CVP",     nullptr,  "Capture-vertical-Pixel"                                                        },
    {"CBDA0",   nullptr,  "Capture-buffer display address 0"                                              },
    {"CBDA1",   nullptr,  "Capture-buffer display address 1"                                              },
    {"CMSS",    nullptr,  "Capture-Magnify-Source-Size"                                                   },
    {"CMDS",    nullptr,  "Capture-Magnify-Display-Size"                                                  },
    {"CDCN",    nullptr,  "Capture-Data-Count-NTSC"                                                       },
    {"CDCP",    nullptr,  "Capture-Data-Count-PAL"                                                        },
    {"DCM1",    nullptr,  "Display-Control-Mode-1"                                                        },
    {"DCM2",    nullptr,  "Display-Control-Mode-2"                                                        },
    {"DCM3",    nullptr,  "Display-Control-Mode-3"                                                        },
    {"DLS",     nullptr,  "Display-Layer-Select"                                                          },
    {"DBGC",    nullptr,  "Display-Background-Color"                                                      },
    {"L0M",     nullptr,  "Layer0-Mode"                                                                   },
    {"L0EM",    nullptr,  "Layer0-Extended-Mode"                                                          },
    {"L0OA",    nullptr,  "Layer0-Origin-Adress"                                                          },
    {"L0DA",    nullptr,  "Layer0-Display-Adress"                                                         },
    {"L0DXY",   nullptr,  "Layer0-XY-Position"                                                            },
    {"L0WXY",   nullptr,  "Layer0-Window-XY-Position"                                                     },
    {"L0WWH",   nullptr,  "Layer0-Window-Width/Hight"                                                     },
    {"L0BLD",   nullptr,  "Layer0-Blending"                                                               },
    {"L0TC",    nullptr,  "Layer0-Transparency-Control"                                                   },
    {"L0ETC",   nullptr,  "Layer0-Extended-transparency-Control"                                          },
    {"L1BLD",   nullptr,  "Layer1-Blending"                                                               },
    {"L1EM",    nullptr,  "Layer1-Extended-Mode"                                                          },
    {"L1M",     nullptr,  "Layer1-Mode"                                                                   },
    {"L1WXY",   nullptr,  "Layer1-Window-XY-Position"                                                     },
    {"L1WWH",   nullptr,  "Layer1-Window-Width/Hight"                                                     },
    {"L1ETC",   nullptr,  "Layer1-Extended-transparency-Control"                                          },
    {"L32TC",   nullptr,  "Layer3/2-Transparency-Control"                                                 },
    {"L2ETC",   nullptr,  "Layer2-Extended-transparency-Control"                                          },
    {"L3ETC",   nullptr,  "Layer3-Extended-transparency-Control"                                          },
    {"L4ETC",   nullptr,  "Layer4-Extended-transparency-Control"                                          },
    {"L5ETC",   nullptr,  "Layer5-Extended-transparency-Control"                                          },
    {"DCM1",    "den",    " Display Enable, 1=Output Display Signal, 0=No Output Signal"                  },
    {"DCM1",    "stop",   " UNKNOWN"                                                                      },
    {"DCM1",    "ode",    " UNKNOWN"                                                                      },
    {"DCM1",    "l5e",    " Layer5 Enable, 1=Layer5 ON, 0=Layer5 OFF"                                     },
    {"DCM1",    "l0e",    " Layer5 Enable, 1=Layer0 ON, 0=Layer0 OFF"                                     },
    {"DCM1",    "sc",     " Scaling, Divider fuer DisplayClock"                                           },
    {"DCM1",    "sync",   " Syncronistation 11=Interlace Video, 10=Interlace, 0X=Non Interlace"           },
    {"DCM2",    "ruf",    "look in manual"                                                                },
    {"DCM2",    "rum",    "look at manual"                                                                },
    {"DCM3",    "dckd",   "Display clock delay"                                                           },
    {"DBGC",    "dbgr",   "Display-Background-Color-Red"                                                  },
    {"L0M",     "l0h",    " L0-Layer - Height, Hoehe Layer (Value-1)"                                     },
    {"L1BLD",   "l1br",   " Layer-1 blend ratio, set the bratio, normalerweise bratio=value/256"          },
    {"L1WXY",   "l1wx",   " L1-Layer Window Position X"                                                   },
    {"L5ETC",   "l5etc",  " Layer -5 - Transparency Colour mode"                                          },
    {"SBVD",    nullptr,  "Status Byte Video Decoder"                                                     },
    {"CVER",    nullptr,  "Chip Version"                                                                  },
    {"INDE1",   nullptr,  "Incrementel delay"                                                             },
    {"LUBR",    nullptr,  "Luminace brightness Control"                                                   },
    {"CRSAT",   nullptr,  "Charominance saturation"                                                       },
    {"RES14",   nullptr,  "Reserviert 14"                                                                 },
    {"REG40",   nullptr,  "Reg 0x40"                                                                      },
    {"CVER",    "cver",   "Chip version"                                                                  },
    {"INDE1",   "indel",  "Increment Delay"                                                               },
    {"AIN1",    "ainc1",  "Analog input control 1"                                                        },
    {"AIN2",    "ainc2",  "Analog input control 2"                                                        },
    {"AIN3",    "ainc3",  "Analog input control 3"                                                        },
    {"AIN4",    "ainc4",  "Analog input control 4"                                                        },
    {"HSYST",   "hsyst",  "H-sync start"                                                                  },
    {"HSYSO",   "hsyso",  "H-sync stop"                                                                   },
    {"SYCTRL",  "syctrl", "sync control"                                                                  },
    {"LUCTRL",  "luctrl", "luminance control"                                                             },
    {"LUBR",    "lubr",   "luminance brightness"                                                          },
    {"LUCON",   "lucon",  "luminance contrast"                                                            },
    {"CRSAT",   "crsat",  "chrominance saturation"                                                        },
    {"CRHU",    "crhu",   "chrominance hue"                                                               },
    {"CRCTRL",  "crctrl", "chrominance control"                                                           },
    {"CRGA",    "crga",   "chrominance gainl"                                                             },
    {"FDEL",    "fdel",   "format delay"                                                                  },
    {"OCTRL1",  "octrl1", "output control 1"                                                              },
    {"OCTRL2",  "octrl2", "output control 2"                                                              },
    {"OCTRL3",  "octrl3", "output control 3"                                                              },
    {"RES14",   "res14",  "reserviert 14"                                                                 },
    {"VGST",    "vgst",   "V Gate start"                                                                  },
    {"VGSP",    "vgsp",   "V Gate stop"                                                                   },
    {"VGMSB",   "vgmsb",  "V Gate msb"                                                                    },
    {"REG40",   "reg40",  "?????"                                                                         },
    {"REG58",   "reg58",  "?????"                                                                         },
    {"REG59",   "reg59",  "?????"                                                                         },
    {"REG5A",   "reg5a",  "?????"                                                                         },
    {"REG5B",   "reg5b",  "?????"                                                                         },
    {"REG5E",   "reg5e",  "?????"                                                                         },
    {"RN_0x26", nullptr,  "Wide Screen Signal - WSS7  WSS6  WSS5  WSS4 WSS3  WSS2  WSS1 WSS0 -"           },
    {"RN_0x2d", nullptr,  "Output port control- CVBSEN1 CVBSEN0 CVBSTRI YTRI CTRI RTRI GTRI BTRI -"       },
    {"RN_0x61", nullptr,  "Standard Control            - DOWNB DOWNA INPI  YGS   SECAM SCBW  PAL   FISE -"},
    {"RN_0x63", nullptr,  "Subcarrier 0  - FSC07 FSC06 FSC05 FSC04 FSC03 FSC02 FSC01 FSC00 -"             },
    {"RN_0x7a", nullptr,  "First active line       - FAL7  FAL6 FAL5 FAL4 FAL3    FAL2    FAL1    FAL0 -" },
};

TEST(chip_tables, keep_help_texts_letter_by_letter)
{
    for (const help_text& row : HELP) {
        SCOPED_TRACE(std::string(row.reg) + " " + row.help);
        reg_bf_group* const reg = find(row.reg);
        ASSERT_NE(nullptr, reg);
        const reg_bf* const bf = row.bf != nullptr ? search_reg_bf_by_name(reg, row.bf) : nullptr;
        ASSERT_EQ(row.bf == nullptr, bf == nullptr);
        EXPECT_STREQ(row.help, bf != nullptr ? bf->help : reg->help);
    }
}

TEST(chip_tables, tell_the_unit_of_the_capture_stride)
{
    EXPECT_STREQ("Capture Buffer memory width, Sets memory width(stride) of capture buffer in 64bytes",
                 search_reg_bf_by_name(find("CBM"), "cbw")->help);
}

} // namespace
