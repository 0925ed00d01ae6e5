/* SPDX-License-Identifier: MIT */
/* Codes 0-155, the same in all sets. */
#ifndef HALDEND_FPGA_GLYPHS_COMMON_H
#define HALDEND_FPGA_GLYPHS_COMMON_H

#include "fpga/glyph_set.h"
#include "fpga/glyphs_ascii.h"
#include "fpga/glyphs_box.h"

namespace glyphs
{

inline constexpr common_rows common = {
  // code, character, shape
    {0x00, 0,      blank                                   },
    {0x01, 0,      blank                                   },
    {0x02, 0,      blank                                   },
    {0x03, 0,      blank                                   },
    {0x04, 0,      blank                                   },
    {0x05, 0,      blank                                   },
    {0x06, 0,      blank                                   },
    {0x07, 0,      blank                                   },
    {0x08, 0,      blank                                   },
    {0x09, 0,      blank                                   },
    {0x0A, 0,      blank                                   },
    {0x0B, 0,      blank                                   },
    {0x0C, 0,      blank                                   },
    {0x0D, 0,      blank                                   },
    {0x0E, 0,      blank                                   },
    {0x0F, 0,      blank                                   },
    {0x10, 0,      blank                                   },
    {0x11, 0,      blank                                   },
    {0x12, 0,      blank                                   },
    {0x13, 0,      blank                                   },
    {0x14, 0,      blank                                   },
    {0x15, 0,      blank                                   },
    {0x16, 0,      blank                                   },
    {0x17, 0,      blank                                   },
    {0x18, 0,      blank                                   },
    {0x19, 0,      blank                                   },
    {0x1A, 0,      blank                                   },
    {0x1B, 0,      blank                                   },
    {0x1C, 0,      blank                                   },
    {0x1D, 0,      blank                                   },
    {0x1E, 0,      blank                                   },
    {0x1F, 0,      blank                                   },
    {0x20, 0x0020, blank                                   }, // SPACE
    {0x21, 0x0021, exclamation_mark                        }, // EXCLAMATION MARK
    {0x22, 0x0022, quotation_mark                          }, // QUOTATION MARK
    {0x23, 0x0023, number_sign                             }, // NUMBER SIGN
    {0x24, 0x0024, dollar_sign                             }, // DOLLAR SIGN
    {0x25, 0x0025, percent_sign                            }, // PERCENT SIGN
    {0x26, 0x0026, ampersand                               }, // AMPERSAND
    {0x27, 0x0027, apostrophe                              }, // APOSTROPHE
    {0x28, 0x0028, left_parenthesis                        }, // LEFT PARENTHESIS
    {0x29, 0x0029, right_parenthesis                       }, // RIGHT PARENTHESIS
    {0x2A, 0x002A, asterisk                                }, // ASTERISK
    {0x2B, 0x002B, plus_sign                               }, // PLUS SIGN
    {0x2C, 0x002C, comma                                   }, // COMMA
    {0x2D, 0x002D, hyphen_minus                            }, // HYPHEN-MINUS
    {0x2E, 0x002E, full_stop                               }, // FULL STOP
    {0x2F, 0x002F, solidus                                 }, // SOLIDUS
    {0x30, 0x0030, digit_zero                              }, // DIGIT ZERO
    {0x31, 0x0031, digit_one                               }, // DIGIT ONE
    {0x32, 0x0032, digit_two                               }, // DIGIT TWO
    {0x33, 0x0033, digit_three                             }, // DIGIT THREE
    {0x34, 0x0034, digit_four                              }, // DIGIT FOUR
    {0x35, 0x0035, digit_five                              }, // DIGIT FIVE
    {0x36, 0x0036, digit_six                               }, // DIGIT SIX
    {0x37, 0x0037, digit_seven                             }, // DIGIT SEVEN
    {0x38, 0x0038, digit_eight                             }, // DIGIT EIGHT
    {0x39, 0x0039, digit_nine                              }, // DIGIT NINE
    {0x3A, 0x003A, colon                                   }, // COLON
    {0x3B, 0x003B, semicolon                               }, // SEMICOLON
    {0x3C, 0x003C, less_than_sign                          }, // LESS-THAN SIGN
    {0x3D, 0x003D, equals_sign                             }, // EQUALS SIGN
    {0x3E, 0x003E, greater_than_sign                       }, // GREATER-THAN SIGN
    {0x3F, 0x003F, question_mark                           }, // QUESTION MARK
    {0x40, 0x0040, commercial_at                           }, // COMMERCIAL AT
    {0x41, 0x0041, capital_a                               }, // LATIN CAPITAL LETTER A
    {0x42, 0x0042, capital_b                               }, // LATIN CAPITAL LETTER B
    {0x43, 0x0043, capital_c                               }, // LATIN CAPITAL LETTER C
    {0x44, 0x0044, capital_d                               }, // LATIN CAPITAL LETTER D
    {0x45, 0x0045, capital_e                               }, // LATIN CAPITAL LETTER E
    {0x46, 0x0046, capital_f                               }, // LATIN CAPITAL LETTER F
    {0x47, 0x0047, capital_g                               }, // LATIN CAPITAL LETTER G
    {0x48, 0x0048, capital_h                               }, // LATIN CAPITAL LETTER H
    {0x49, 0x0049, capital_i                               }, // LATIN CAPITAL LETTER I
    {0x4A, 0x004A, capital_j                               }, // LATIN CAPITAL LETTER J
    {0x4B, 0x004B, capital_k                               }, // LATIN CAPITAL LETTER K
    {0x4C, 0x004C, capital_l                               }, // LATIN CAPITAL LETTER L
    {0x4D, 0x004D, capital_m                               }, // LATIN CAPITAL LETTER M
    {0x4E, 0x004E, capital_n                               }, // LATIN CAPITAL LETTER N
    {0x4F, 0x004F, capital_o                               }, // LATIN CAPITAL LETTER O
    {0x50, 0x0050, capital_p                               }, // LATIN CAPITAL LETTER P
    {0x51, 0x0051, capital_q                               }, // LATIN CAPITAL LETTER Q
    {0x52, 0x0052, capital_r                               }, // LATIN CAPITAL LETTER R
    {0x53, 0x0053, capital_s                               }, // LATIN CAPITAL LETTER S
    {0x54, 0x0054, capital_t                               }, // LATIN CAPITAL LETTER T
    {0x55, 0x0055, capital_u                               }, // LATIN CAPITAL LETTER U
    {0x56, 0x0056, capital_v                               }, // LATIN CAPITAL LETTER V
    {0x57, 0x0057, capital_w                               }, // LATIN CAPITAL LETTER W
    {0x58, 0x0058, capital_x                               }, // LATIN CAPITAL LETTER X
    {0x59, 0x0059, capital_y                               }, // LATIN CAPITAL LETTER Y
    {0x5A, 0x005A, capital_z                               }, // LATIN CAPITAL LETTER Z
    {0x5B, 0x005B, left_square_bracket                     }, // LEFT SQUARE BRACKET
    {0x5C, 0x005C, reverse_solidus                         }, // REVERSE SOLIDUS
    {0x5D, 0x005D, right_square_bracket                    }, // RIGHT SQUARE BRACKET
    {0x5E, 0x005E, circumflex_accent                       }, // CIRCUMFLEX ACCENT
    {0x5F, 0x005F, low_line                                }, // LOW LINE
    {0x60, 0x0060, grave_accent                            }, // GRAVE ACCENT
    {0x61, 0x0061, small_a                                 }, // LATIN SMALL LETTER A
    {0x62, 0x0062, small_b                                 }, // LATIN SMALL LETTER B
    {0x63, 0x0063, small_c                                 }, // LATIN SMALL LETTER C
    {0x64, 0x0064, small_d                                 }, // LATIN SMALL LETTER D
    {0x65, 0x0065, small_e                                 }, // LATIN SMALL LETTER E
    {0x66, 0x0066, small_f                                 }, // LATIN SMALL LETTER F
    {0x67, 0x0067, small_g                                 }, // LATIN SMALL LETTER G
    {0x68, 0x0068, small_h                                 }, // LATIN SMALL LETTER H
    {0x69, 0x0069, small_i                                 }, // LATIN SMALL LETTER I
    {0x6A, 0x006A, small_j                                 }, // LATIN SMALL LETTER J
    {0x6B, 0x006B, small_k                                 }, // LATIN SMALL LETTER K
    {0x6C, 0x006C, small_l                                 }, // LATIN SMALL LETTER L
    {0x6D, 0x006D, small_m                                 }, // LATIN SMALL LETTER M
    {0x6E, 0x006E, small_n                                 }, // LATIN SMALL LETTER N
    {0x6F, 0x006F, small_o                                 }, // LATIN SMALL LETTER O
    {0x70, 0x0070, small_p                                 }, // LATIN SMALL LETTER P
    {0x71, 0x0071, small_q                                 }, // LATIN SMALL LETTER Q
    {0x72, 0x0072, small_r                                 }, // LATIN SMALL LETTER R
    {0x73, 0x0073, small_s                                 }, // LATIN SMALL LETTER S
    {0x74, 0x0074, small_t                                 }, // LATIN SMALL LETTER T
    {0x75, 0x0075, small_u                                 }, // LATIN SMALL LETTER U
    {0x76, 0x0076, small_v                                 }, // LATIN SMALL LETTER V
    {0x77, 0x0077, small_w                                 }, // LATIN SMALL LETTER W
    {0x78, 0x0078, small_x                                 }, // LATIN SMALL LETTER X
    {0x79, 0x0079, small_y                                 }, // LATIN SMALL LETTER Y
    {0x7A, 0x007A, small_z                                 }, // LATIN SMALL LETTER Z
    {0x7B, 0x007B, left_curly_bracket                      }, // LEFT CURLY BRACKET
    {0x7C, 0x007C, vertical_line                           }, // VERTICAL LINE
    {0x7D, 0x007D, right_curly_bracket                     }, // RIGHT CURLY BRACKET
    {0x7E, 0x007E, tilde                                   }, // TILDE
    {0x7F, 0,      blank                                   },
    {0x80, 0x255A, flipped(double_down_right)              }, // BOX DRAWINGS DOUBLE UP AND RIGHT
    {0x81, 0x2550, double_horizontal                       }, // BOX DRAWINGS DOUBLE HORIZONTAL
    {0x82, 0x255D, turned(double_down_right)               }, // BOX DRAWINGS DOUBLE UP AND LEFT
    {0x83, 0x2554, double_down_right                       }, // BOX DRAWINGS DOUBLE DOWN AND RIGHT
    {0x84, 0x256C, double_cross                            }, // BOX DRAWINGS DOUBLE VERTICAL AND HORIZONTAL
    {0x85, 0x2557, mirrored(double_down_right)             }, // BOX DRAWINGS DOUBLE DOWN AND LEFT
    {0x86, 0x2569, flipped(double_down_horizontal)         }, // BOX DRAWINGS DOUBLE UP AND HORIZONTAL
    {0x87, 0x2566, double_down_horizontal                  }, // BOX DRAWINGS DOUBLE DOWN AND HORIZONTAL
    {0x88, 0x2551, double_vertical                         }, // BOX DRAWINGS DOUBLE VERTICAL
    {0x89, 0x2560, double_vertical_right                   }, // BOX DRAWINGS DOUBLE VERTICAL AND RIGHT
    {0x8A, 0x2563, mirrored(double_vertical_right)         }, // BOX DRAWINGS DOUBLE VERTICAL AND LEFT
    {0x8B, 0x2514, single_up | single_right                }, // BOX DRAWINGS LIGHT UP AND RIGHT
    {0x8C, 0x2500, single_left | single_right              }, // BOX DRAWINGS LIGHT HORIZONTAL
    {0x8D, 0x2518, single_up | single_left                 }, // BOX DRAWINGS LIGHT UP AND LEFT
    {0x8E, 0x250C, single_down | single_right              }, // BOX DRAWINGS LIGHT DOWN AND RIGHT
    {0x8F, 0x253C, single_cross                            }, // BOX DRAWINGS LIGHT VERTICAL AND HORIZONTAL
    {0x90, 0x2510, single_down | single_left               }, // BOX DRAWINGS LIGHT DOWN AND LEFT
    {0x91, 0x2534, single_up | single_left | single_right  }, // BOX DRAWINGS LIGHT UP AND HORIZONTAL
    {0x92, 0x252C, single_down | single_left | single_right}, // BOX DRAWINGS LIGHT DOWN AND HORIZONTAL
    {0x93, 0x2502, single_up | single_down                 }, // BOX DRAWINGS LIGHT VERTICAL
    {0x94, 0x251C, single_up | single_down | single_right  }, // BOX DRAWINGS LIGHT VERTICAL AND RIGHT
    {0x95, 0x2524, single_up | single_down | single_left   }, // BOX DRAWINGS LIGHT VERTICAL AND LEFT
    {0x96, 0x2588, full_block                              }, // FULL BLOCK
    {0x97, 0x2592, medium_shade                            }, // MEDIUM SHADE
    {0x98, 0x2591, light_shade                             }, // LIGHT SHADE
    {0x99, 0x25A6, grid                                    }, // SQUARE WITH ORTHOGONAL CROSSHATCH FILL
    {0x9A, 0x2584, lower_square                            }, // LOWER HALF BLOCK
    {0x9B, 0x2580, upper_square                            }, // UPPER HALF BLOCK
};

static_assert(lists_codes_from(0, common));
static_assert(halves_are_alike(common));

} // namespace glyphs

#endif
