/* SPDX-License-Identifier: MIT */
/* Glyph set 3: ISO 8859-5, Cyrillic, with a degree sign at 156. */
#include "fpga/font_tables.h"
#include "fpga/glyph_set.h"
#include "fpga/glyphs_accents.h"
#include "fpga/glyphs_common.h"
#include "fpga/glyphs_cyrillic.h"
#include "fpga/glyphs_latin.h"
#include "fpga/glyphs_short.h"

namespace
{

using namespace glyphs;

constexpr own_rows own = {
  // code, character, shape
    {0x9C, 0x00B0, degree_sign                  }, // DEGREE SIGN
    {0x9D, 0,      blank                        },
    {0x9E, 0,      blank                        },
    {0x9F, 0,      blank                        },
    {0xA0, 0x00A0, blank                        }, // NO-BREAK SPACE
    {0xA1, 0x0401, short_e | high_diaeresis     }, // CYRILLIC CAPITAL LETTER IO
    {0xA2, 0x0402, cyrillic_capital_dje         }, // CYRILLIC CAPITAL LETTER DJE
    {0xA3, 0x0403, short_ghe | high_acute       }, // CYRILLIC CAPITAL LETTER GJE
    {0xA4, 0x0404, cyrillic_capital_ukrainian_ie}, // CYRILLIC CAPITAL LETTER UKRAINIAN IE
    {0xA5, 0x0405, capital_s                    }, // CYRILLIC CAPITAL LETTER DZE
    {0xA6, 0x0406, capital_i                    }, // CYRILLIC CAPITAL LETTER BYELORUSSIAN-UKRAINIAN I
    {0xA7, 0x0407, short_i | high_diaeresis     }, // CYRILLIC CAPITAL LETTER YI
    {0xA8, 0x0408, capital_j                    }, // CYRILLIC CAPITAL LETTER JE
    {0xA9, 0x0409, cyrillic_capital_lje         }, // CYRILLIC CAPITAL LETTER LJE
    {0xAA, 0x040A, cyrillic_capital_nje         }, // CYRILLIC CAPITAL LETTER NJE
    {0xAB, 0x040B, cyrillic_capital_tshe        }, // CYRILLIC CAPITAL LETTER TSHE
    {0xAC, 0x040C, short_k | high_acute         }, // CYRILLIC CAPITAL LETTER KJE
    {0xAD, 0x00AD, hyphen_minus                 }, // SOFT HYPHEN
    {0xAE, 0x040E, short_cyrillic_u | high_breve}, // CYRILLIC CAPITAL LETTER SHORT U
    {0xAF, 0x040F, cyrillic_capital_dzhe        }, // CYRILLIC CAPITAL LETTER DZHE
    {0xB0, 0x0410, capital_a                    }, // CYRILLIC CAPITAL LETTER A
    {0xB1, 0x0411, cyrillic_capital_be          }, // CYRILLIC CAPITAL LETTER BE
    {0xB2, 0x0412, capital_b                    }, // CYRILLIC CAPITAL LETTER VE
    {0xB3, 0x0413, cyrillic_capital_ghe         }, // CYRILLIC CAPITAL LETTER GHE
    {0xB4, 0x0414, cyrillic_capital_de          }, // CYRILLIC CAPITAL LETTER DE
    {0xB5, 0x0415, capital_e                    }, // CYRILLIC CAPITAL LETTER IE
    {0xB6, 0x0416, cyrillic_capital_zhe         }, // CYRILLIC CAPITAL LETTER ZHE
    {0xB7, 0x0417, cyrillic_capital_ze          }, // CYRILLIC CAPITAL LETTER ZE
    {0xB8, 0x0418, cyrillic_capital_i           }, // CYRILLIC CAPITAL LETTER I
    {0xB9, 0x0419, short_cyrillic_i | high_breve}, // CYRILLIC CAPITAL LETTER SHORT I
    {0xBA, 0x041A, capital_k                    }, // CYRILLIC CAPITAL LETTER KA
    {0xBB, 0x041B, cyrillic_capital_el          }, // CYRILLIC CAPITAL LETTER EL
    {0xBC, 0x041C, capital_m                    }, // CYRILLIC CAPITAL LETTER EM
    {0xBD, 0x041D, capital_h                    }, // CYRILLIC CAPITAL LETTER EN
    {0xBE, 0x041E, capital_o                    }, // CYRILLIC CAPITAL LETTER O
    {0xBF, 0x041F, cyrillic_capital_pe          }, // CYRILLIC CAPITAL LETTER PE
    {0xC0, 0x0420, capital_p                    }, // CYRILLIC CAPITAL LETTER ER
    {0xC1, 0x0421, capital_c                    }, // CYRILLIC CAPITAL LETTER ES
    {0xC2, 0x0422, capital_t                    }, // CYRILLIC CAPITAL LETTER TE
    {0xC3, 0x0423, cyrillic_capital_u           }, // CYRILLIC CAPITAL LETTER U
    {0xC4, 0x0424, cyrillic_capital_ef          }, // CYRILLIC CAPITAL LETTER EF
    {0xC5, 0x0425, capital_x                    }, // CYRILLIC CAPITAL LETTER HA
    {0xC6, 0x0426, cyrillic_capital_tse         }, // CYRILLIC CAPITAL LETTER TSE
    {0xC7, 0x0427, cyrillic_capital_che         }, // CYRILLIC CAPITAL LETTER CHE
    {0xC8, 0x0428, cyrillic_capital_sha         }, // CYRILLIC CAPITAL LETTER SHA
    {0xC9, 0x0429, cyrillic_capital_shcha       }, // CYRILLIC CAPITAL LETTER SHCHA
    {0xCA, 0x042A, cyrillic_capital_hard_sign   }, // CYRILLIC CAPITAL LETTER HARD SIGN
    {0xCB, 0x042B, cyrillic_capital_yeru        }, // CYRILLIC CAPITAL LETTER YERU
    {0xCC, 0x042C, cyrillic_capital_soft_sign   }, // CYRILLIC CAPITAL LETTER SOFT SIGN
    {0xCD, 0x042D, cyrillic_capital_e           }, // CYRILLIC CAPITAL LETTER E
    {0xCE, 0x042E, cyrillic_capital_yu          }, // CYRILLIC CAPITAL LETTER YU
    {0xCF, 0x042F, cyrillic_capital_ya          }, // CYRILLIC CAPITAL LETTER YA
    {0xD0, 0x0430, small_a                      }, // CYRILLIC SMALL LETTER A
    {0xD1, 0x0431, cyrillic_small_be            }, // CYRILLIC SMALL LETTER BE
    {0xD2, 0x0432, cyrillic_small_ve            }, // CYRILLIC SMALL LETTER VE
    {0xD3, 0x0433, cyrillic_small_ghe           }, // CYRILLIC SMALL LETTER GHE
    {0xD4, 0x0434, cyrillic_small_de            }, // CYRILLIC SMALL LETTER DE
    {0xD5, 0x0435, small_e                      }, // CYRILLIC SMALL LETTER IE
    {0xD6, 0x0436, cyrillic_small_zhe           }, // CYRILLIC SMALL LETTER ZHE
    {0xD7, 0x0437, cyrillic_small_ze            }, // CYRILLIC SMALL LETTER ZE
    {0xD8, 0x0438, cyrillic_small_i             }, // CYRILLIC SMALL LETTER I
    {0xD9, 0x0439, cyrillic_small_i | breve     }, // CYRILLIC SMALL LETTER SHORT I
    {0xDA, 0x043A, cyrillic_small_ka            }, // CYRILLIC SMALL LETTER KA
    {0xDB, 0x043B, cyrillic_small_el            }, // CYRILLIC SMALL LETTER EL
    {0xDC, 0x043C, cyrillic_small_em            }, // CYRILLIC SMALL LETTER EM
    {0xDD, 0x043D, cyrillic_small_en            }, // CYRILLIC SMALL LETTER EN
    {0xDE, 0x043E, small_o                      }, // CYRILLIC SMALL LETTER O
    {0xDF, 0x043F, cyrillic_small_pe            }, // CYRILLIC SMALL LETTER PE
    {0xE0, 0x0440, small_p                      }, // CYRILLIC SMALL LETTER ER
    {0xE1, 0x0441, small_c                      }, // CYRILLIC SMALL LETTER ES
    {0xE2, 0x0442, cyrillic_small_te            }, // CYRILLIC SMALL LETTER TE
    {0xE3, 0x0443, small_y                      }, // CYRILLIC SMALL LETTER U
    {0xE4, 0x0444, cyrillic_small_ef            }, // CYRILLIC SMALL LETTER EF
    {0xE5, 0x0445, small_x                      }, // CYRILLIC SMALL LETTER HA
    {0xE6, 0x0446, cyrillic_small_tse           }, // CYRILLIC SMALL LETTER TSE
    {0xE7, 0x0447, cyrillic_small_che           }, // CYRILLIC SMALL LETTER CHE
    {0xE8, 0x0448, cyrillic_small_sha           }, // CYRILLIC SMALL LETTER SHA
    {0xE9, 0x0449, cyrillic_small_shcha         }, // CYRILLIC SMALL LETTER SHCHA
    {0xEA, 0x044A, cyrillic_small_hard_sign     }, // CYRILLIC SMALL LETTER HARD SIGN
    {0xEB, 0x044B, cyrillic_small_yeru          }, // CYRILLIC SMALL LETTER YERU
    {0xEC, 0x044C, cyrillic_small_soft_sign     }, // CYRILLIC SMALL LETTER SOFT SIGN
    {0xED, 0x044D, cyrillic_small_e             }, // CYRILLIC SMALL LETTER E
    {0xEE, 0x044E, cyrillic_small_yu            }, // CYRILLIC SMALL LETTER YU
    {0xEF, 0x044F, cyrillic_small_ya            }, // CYRILLIC SMALL LETTER YA
    {0xF0, 0x2116, numero_sign                  }, // NUMERO SIGN
    {0xF1, 0x0451, small_e | diaeresis          }, // CYRILLIC SMALL LETTER IO
    {0xF2, 0x0452, cyrillic_small_dje           }, // CYRILLIC SMALL LETTER DJE
    {0xF3, 0x0453, cyrillic_small_ghe | acute   }, // CYRILLIC SMALL LETTER GJE
    {0xF4, 0x0454, cyrillic_small_ukrainian_ie  }, // CYRILLIC SMALL LETTER UKRAINIAN IE
    {0xF5, 0x0455, small_s                      }, // CYRILLIC SMALL LETTER DZE
    {0xF6, 0x0456, small_i                      }, // CYRILLIC SMALL LETTER BYELORUSSIAN-UKRAINIAN I
    {0xF7, 0x0457, small_dotless_i | diaeresis  }, // CYRILLIC SMALL LETTER YI
    {0xF8, 0x0458, small_j                      }, // CYRILLIC SMALL LETTER JE
    {0xF9, 0x0459, cyrillic_small_lje           }, // CYRILLIC SMALL LETTER LJE
    {0xFA, 0x045A, cyrillic_small_nje           }, // CYRILLIC SMALL LETTER NJE
    {0xFB, 0x045B, cyrillic_small_tshe          }, // CYRILLIC SMALL LETTER TSHE
    {0xFC, 0x045C, cyrillic_small_ka | acute    }, // CYRILLIC SMALL LETTER KJE
    {0xFD, 0x00A7, section_sign                 }, // SECTION SIGN
    {0xFE, 0x045E, small_y | breve              }, // CYRILLIC SMALL LETTER SHORT U
    {0xFF, 0x045F, cyrillic_small_dzhe          }, // CYRILLIC SMALL LETTER DZHE
};

static_assert(lists_codes_from(FIRST_OWN_CODE, own));
static_assert(halves_are_alike(own));

} // namespace

constexpr font_map_tab font_map_tab_iso8859_5 = glyphs::map_of(glyphs::common, own);
constexpr font_unicode_tab font_unicode_tab_iso8859_5 = glyphs::characters_of(glyphs::common, own);
