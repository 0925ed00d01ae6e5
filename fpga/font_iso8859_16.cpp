/* SPDX-License-Identifier: MIT */
/* Glyph set 2: ISO 8859-16, the languages of south-eastern Europe. */
#include "fpga/font_tables.h"
#include "fpga/glyph_set.h"
#include "fpga/glyphs_accents.h"
#include "fpga/glyphs_common.h"
#include "fpga/glyphs_latin.h"
#include "fpga/glyphs_short.h"

namespace
{

using namespace glyphs;

constexpr own_rows own = {
  // code, character, shape
    {0x9C, 0,      blank                            },
    {0x9D, 0,      blank                            },
    {0x9E, 0,      blank                            },
    {0x9F, 0,      blank                            },
    {0xA0, 0x00A0, blank                            }, // NO-BREAK SPACE
    {0xA1, 0x0104, capital_a | ogonek               }, // LATIN CAPITAL LETTER A WITH OGONEK
    {0xA2, 0x0105, small_a | ogonek                 }, // LATIN SMALL LETTER A WITH OGONEK
    {0xA3, 0x0141, capital_l_with_stroke            }, // LATIN CAPITAL LETTER L WITH STROKE
    {0xA4, 0x20AC, euro_sign                        }, // EURO SIGN
    {0xA5, 0x201E, double_low_9_quotation_mark      }, // DOUBLE LOW-9 QUOTATION MARK
    {0xA6, 0x0160, short_s | high_caron             }, // LATIN CAPITAL LETTER S WITH CARON
    {0xA7, 0x00A7, section_sign                     }, // SECTION SIGN
    {0xA8, 0x0161, small_s | caron                  }, // LATIN SMALL LETTER S WITH CARON
    {0xA9, 0x00A9, copyright_sign                   }, // COPYRIGHT SIGN
    {0xAA, 0x0218, capital_s | comma_below          }, // LATIN CAPITAL LETTER S WITH COMMA BELOW
    {0xAB, 0x00AB, left_double_angle_quotation_mark }, // LEFT-POINTING DOUBLE ANGLE QUOTATION MARK
    {0xAC, 0x0179, short_z | high_acute             }, // LATIN CAPITAL LETTER Z WITH ACUTE
    {0xAD, 0x00AD, hyphen_minus                     }, // SOFT HYPHEN
    {0xAE, 0x017A, small_z | acute                  }, // LATIN SMALL LETTER Z WITH ACUTE
    {0xAF, 0x017B, short_z | high_dot               }, // LATIN CAPITAL LETTER Z WITH DOT ABOVE
    {0xB0, 0x00B0, degree_sign                      }, // DEGREE SIGN
    {0xB1, 0x00B1, plus_minus_sign                  }, // PLUS-MINUS SIGN
    {0xB2, 0x010C, short_c | high_caron             }, // LATIN CAPITAL LETTER C WITH CARON
    {0xB3, 0x0142, small_l_with_stroke              }, // LATIN SMALL LETTER L WITH STROKE
    {0xB4, 0x017D, short_z | high_caron             }, // LATIN CAPITAL LETTER Z WITH CARON
    {0xB5, 0x201D, right_double_quotation_mark      }, // RIGHT DOUBLE QUOTATION MARK
    {0xB6, 0x00B6, pilcrow_sign                     }, // PILCROW SIGN
    {0xB7, 0x00B7, middle_dot                       }, // MIDDLE DOT
    {0xB8, 0x017E, small_z | caron                  }, // LATIN SMALL LETTER Z WITH CARON
    {0xB9, 0x010D, small_c | caron                  }, // LATIN SMALL LETTER C WITH CARON
    {0xBA, 0x0219, small_s | comma_below            }, // LATIN SMALL LETTER S WITH COMMA BELOW
    {0xBB, 0x00BB, right_double_angle_quotation_mark}, // RIGHT-POINTING DOUBLE ANGLE QUOTATION MARK
    {0xBC, 0x0152, capital_oe                       }, // LATIN CAPITAL LIGATURE OE
    {0xBD, 0x0153, small_oe                         }, // LATIN SMALL LIGATURE OE
    {0xBE, 0x0178, short_y | high_diaeresis         }, // LATIN CAPITAL LETTER Y WITH DIAERESIS
    {0xBF, 0x017C, small_z | dot_above              }, // LATIN SMALL LETTER Z WITH DOT ABOVE
    {0xC0, 0x00C0, short_a | high_grave             }, // LATIN CAPITAL LETTER A WITH GRAVE
    {0xC1, 0x00C1, short_a | high_acute             }, // LATIN CAPITAL LETTER A WITH ACUTE
    {0xC2, 0x00C2, short_a | high_circumflex        }, // LATIN CAPITAL LETTER A WITH CIRCUMFLEX
    {0xC3, 0x0102, short_a | high_breve             }, // LATIN CAPITAL LETTER A WITH BREVE
    {0xC4, 0x00C4, short_a | high_diaeresis         }, // LATIN CAPITAL LETTER A WITH DIAERESIS
    {0xC5, 0x0106, short_c | high_acute             }, // LATIN CAPITAL LETTER C WITH ACUTE
    {0xC6, 0x00C6, capital_ae                       }, // LATIN CAPITAL LETTER AE
    {0xC7, 0x00C7, capital_c | cedilla              }, // LATIN CAPITAL LETTER C WITH CEDILLA
    {0xC8, 0x00C8, short_e | high_grave             }, // LATIN CAPITAL LETTER E WITH GRAVE
    {0xC9, 0x00C9, short_e | high_acute             }, // LATIN CAPITAL LETTER E WITH ACUTE
    {0xCA, 0x00CA, short_e | high_circumflex        }, // LATIN CAPITAL LETTER E WITH CIRCUMFLEX
    {0xCB, 0x00CB, short_e | high_diaeresis         }, // LATIN CAPITAL LETTER E WITH DIAERESIS
    {0xCC, 0x00CC, short_i | high_grave             }, // LATIN CAPITAL LETTER I WITH GRAVE
    {0xCD, 0x00CD, short_i | high_acute             }, // LATIN CAPITAL LETTER I WITH ACUTE
    {0xCE, 0x00CE, short_i | high_circumflex        }, // LATIN CAPITAL LETTER I WITH CIRCUMFLEX
    {0xCF, 0x00CF, short_i | high_diaeresis         }, // LATIN CAPITAL LETTER I WITH DIAERESIS
    {0xD0, 0x0110, capital_d_with_stroke            }, // LATIN CAPITAL LETTER D WITH STROKE
    {0xD1, 0x0143, short_n | high_acute             }, // LATIN CAPITAL LETTER N WITH ACUTE
    {0xD2, 0x00D2, short_o | high_grave             }, // LATIN CAPITAL LETTER O WITH GRAVE
    {0xD3, 0x00D3, short_o | high_acute             }, // LATIN CAPITAL LETTER O WITH ACUTE
    {0xD4, 0x00D4, short_o | high_circumflex        }, // LATIN CAPITAL LETTER O WITH CIRCUMFLEX
    {0xD5, 0x0150, short_o | high_double_acute      }, // LATIN CAPITAL LETTER O WITH DOUBLE ACUTE
    {0xD6, 0x00D6, short_o | high_diaeresis         }, // LATIN CAPITAL LETTER O WITH DIAERESIS
    {0xD7, 0x015A, short_s | high_acute             }, // LATIN CAPITAL LETTER S WITH ACUTE
    {0xD8, 0x0170, short_u | high_double_acute      }, // LATIN CAPITAL LETTER U WITH DOUBLE ACUTE
    {0xD9, 0x00D9, short_u | high_grave             }, // LATIN CAPITAL LETTER U WITH GRAVE
    {0xDA, 0x00DA, short_u | high_acute             }, // LATIN CAPITAL LETTER U WITH ACUTE
    {0xDB, 0x00DB, short_u | high_circumflex        }, // LATIN CAPITAL LETTER U WITH CIRCUMFLEX
    {0xDC, 0x00DC, short_u | high_diaeresis         }, // LATIN CAPITAL LETTER U WITH DIAERESIS
    {0xDD, 0x0118, capital_e | ogonek               }, // LATIN CAPITAL LETTER E WITH OGONEK
    {0xDE, 0x021A, capital_t | comma_below          }, // LATIN CAPITAL LETTER T WITH COMMA BELOW
    {0xDF, 0x00DF, small_sharp_s                    }, // LATIN SMALL LETTER SHARP S
    {0xE0, 0x00E0, small_a | grave                  }, // LATIN SMALL LETTER A WITH GRAVE
    {0xE1, 0x00E1, small_a | acute                  }, // LATIN SMALL LETTER A WITH ACUTE
    {0xE2, 0x00E2, small_a | circumflex             }, // LATIN SMALL LETTER A WITH CIRCUMFLEX
    {0xE3, 0x0103, small_a | breve                  }, // LATIN SMALL LETTER A WITH BREVE
    {0xE4, 0x00E4, small_a | diaeresis              }, // LATIN SMALL LETTER A WITH DIAERESIS
    {0xE5, 0x0107, small_c | acute                  }, // LATIN SMALL LETTER C WITH ACUTE
    {0xE6, 0x00E6, small_ae                         }, // LATIN SMALL LETTER AE
    {0xE7, 0x00E7, small_c | cedilla                }, // LATIN SMALL LETTER C WITH CEDILLA
    {0xE8, 0x00E8, small_e | grave                  }, // LATIN SMALL LETTER E WITH GRAVE
    {0xE9, 0x00E9, small_e | acute                  }, // LATIN SMALL LETTER E WITH ACUTE
    {0xEA, 0x00EA, small_e | circumflex             }, // LATIN SMALL LETTER E WITH CIRCUMFLEX
    {0xEB, 0x00EB, small_e | diaeresis              }, // LATIN SMALL LETTER E WITH DIAERESIS
    {0xEC, 0x00EC, small_dotless_i | grave          }, // LATIN SMALL LETTER I WITH GRAVE
    {0xED, 0x00ED, small_dotless_i | acute          }, // LATIN SMALL LETTER I WITH ACUTE
    {0xEE, 0x00EE, small_dotless_i | circumflex     }, // LATIN SMALL LETTER I WITH CIRCUMFLEX
    {0xEF, 0x00EF, small_dotless_i | diaeresis      }, // LATIN SMALL LETTER I WITH DIAERESIS
    {0xF0, 0x0111, small_d_with_stroke              }, // LATIN SMALL LETTER D WITH STROKE
    {0xF1, 0x0144, small_n | acute                  }, // LATIN SMALL LETTER N WITH ACUTE
    {0xF2, 0x00F2, small_o | grave                  }, // LATIN SMALL LETTER O WITH GRAVE
    {0xF3, 0x00F3, small_o | acute                  }, // LATIN SMALL LETTER O WITH ACUTE
    {0xF4, 0x00F4, small_o | circumflex             }, // LATIN SMALL LETTER O WITH CIRCUMFLEX
    {0xF5, 0x0151, small_o | double_acute           }, // LATIN SMALL LETTER O WITH DOUBLE ACUTE
    {0xF6, 0x00F6, small_o | diaeresis              }, // LATIN SMALL LETTER O WITH DIAERESIS
    {0xF7, 0x015B, small_s | acute                  }, // LATIN SMALL LETTER S WITH ACUTE
    {0xF8, 0x0171, small_u | double_acute           }, // LATIN SMALL LETTER U WITH DOUBLE ACUTE
    {0xF9, 0x00F9, small_u | grave                  }, // LATIN SMALL LETTER U WITH GRAVE
    {0xFA, 0x00FA, small_u | acute                  }, // LATIN SMALL LETTER U WITH ACUTE
    {0xFB, 0x00FB, small_u | circumflex             }, // LATIN SMALL LETTER U WITH CIRCUMFLEX
    {0xFC, 0x00FC, small_u | diaeresis              }, // LATIN SMALL LETTER U WITH DIAERESIS
    {0xFD, 0x0119, small_e | ogonek                 }, // LATIN SMALL LETTER E WITH OGONEK
    {0xFE, 0x021B, small_t | comma_below            }, // LATIN SMALL LETTER T WITH COMMA BELOW
    {0xFF, 0x00FF, small_y | diaeresis              }, // LATIN SMALL LETTER Y WITH DIAERESIS
};

static_assert(lists_codes_from(FIRST_OWN_CODE, own));
static_assert(halves_are_alike(own));

} // namespace

constexpr font_map_tab font_map_tab_iso8859_16 = glyphs::map_of(glyphs::common, own);
constexpr font_unicode_tab font_unicode_tab_iso8859_16 = glyphs::characters_of(glyphs::common, own);
