/* SPDX-License-Identifier: MIT */
/* The glyph sets: rules for every glyph, so that text reads well and nothing flickers. */
#include "fpga/font_tables.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace
{

constexpr int COLUMNS = 12;
constexpr int LINES = 20;
constexpr std::ptrdiff_t GLYPH_BYTES = 64;
constexpr std::ptrdiff_t HALF_BYTES = 32;
constexpr std::ptrdiff_t ROW_BYTES = 2;

struct glyph_set {
    const char* name;
    const unsigned char* rows;
    const uint16_t* characters;
    std::u16string repertoire; // the characters of codes 160-255
};

const glyph_set SETS[] = {
    {"ISO 8859-15", font_map_tab_iso8859_15.rows, font_unicode_tab_iso8859_15.characters,
     u"\u00a0¡¢£€¥Š§š©ª«¬\u00ad®¯°±²³Žµ¶·ž¹º»ŒœŸ¿ÀÁÂÃÄÅÆÇÈÉÊËÌÍÎÏÐÑÒÓÔÕÖ×ØÙÚÛÜÝÞßàáâãäåæçèéêëìíîïðñòóôõö÷øùúû"
     u"üýþÿ"},
    {"ISO 8859-16", font_map_tab_iso8859_16.rows, font_unicode_tab_iso8859_16.characters,
     u"\u00a0ĄąŁ€„Š§š©Ș«Ź\u00adźŻ°±ČłŽ”¶·žčș»ŒœŸżÀÁÂĂÄĆÆÇÈÉÊËÌÍÎÏĐŃÒÓÔŐÖŚŰÙÚÛÜĘȚßàáâăäćæçèéêëìíîïđńòóôőöśűùúû"
     u"üęțÿ"},
    {"ISO 8859-5",  font_map_tab_iso8859_5.rows,  font_unicode_tab_iso8859_5.characters,
     u"\u00a0ЁЂЃЄЅІЇЈЉЊЋЌ\u00adЎЏАБВГДЕЖЗИЙКЛМНОПРСТУФХЦЧШЩЪЫЬЭЮЯабвгдежзийклмнопрстуфхцчшщъыьэюя№ёђѓєѕіїјљњћ"
     u"ќ§ўџ"},
};

/* Row of a half-image as the bytes say, bit 15 leftmost. */
unsigned int row_of(const glyph_set& set, int code, int half, int row)
{
    const unsigned char* bytes = set.rows + code * GLYPH_BYTES + half * HALF_BYTES + row * ROW_BYTES;
    return bytes[0] * 256U + bytes[1];
}

/* A character cell as the monitor shows it, the two half-images interlaced. */
struct cell {
    unsigned int line[LINES];

    bool operator==(const cell& other) const { return std::equal(line, line + LINES, other.line); }
    bool pixel(int column, int at) const { return (line[at] << column & 0x8000U) != 0; }
};

cell cell_of(const glyph_set& set, int code)
{
    cell shown{};
    for (int line = 0; line < LINES; ++line)
        shown.line[line] = row_of(set, code, line % 2, line / 2);
    return shown;
}

/* For the messages of failed tests. */
std::ostream& operator<<(std::ostream& out, const cell& shown)
{
    for (int line = 0; line < LINES; ++line) {
        out << '\n';
        for (int column = 0; column < COLUMNS; ++column)
            out << (shown.pixel(column, line) ? '#' : '.');
    }
    return out;
}

cell shown_for(const glyph_set& set, char16_t character)
{
    return cell_of(
        set, static_cast<int>(std::find(set.characters, set.characters + 256, character) - set.characters));
}

bool has(const glyph_set& set, char16_t character)
{
    return std::find(set.characters, set.characters + 256, character) != set.characters + 256;
}

int first_line(const cell& shown)
{
    return static_cast<int>(
        std::find_if(shown.line, shown.line + LINES, [](unsigned int l) { return l != 0; }) - shown.line);
}

int last_line(const cell& shown)
{
    int line = LINES - 1;
    while (line > 0 && shown.line[line] == 0)
        --line;
    return line;
}

unsigned int columns_of(const cell& shown)
{
    unsigned int columns = 0;
    for (const unsigned int line : shown.line)
        columns |= line;
    return columns;
}

bool is_blank(const cell& shown)
{
    return columns_of(shown) == 0;
}

int pixels_between(const cell& a, const cell& b)
{
    int count = 0;
    for (int line = 0; line < LINES; ++line)
        for (int column = 0; column < COLUMNS; ++column)
            count += a.pixel(column, line) != b.pixel(column, line) ? 1 : 0;
    return count;
}

template <typename check>
void for_each_glyph(check expect)
{
    for (const glyph_set& set : SETS)
        for (int code = 0; code < 256; ++code) {
            SCOPED_TRACE(std::string(set.name) + " code " + std::to_string(code));
            expect(set, code, cell_of(set, code));
        }
}

TEST(glyphs, rows_are_big_endian_bytes_on_every_processor)
{
    const unsigned char* capital_l = font_map_tab_iso8859_15.rows + 'L' * GLYPH_BYTES;
    for (const unsigned char* half : {capital_l, capital_l + HALF_BYTES}) {
        EXPECT_EQ(0x00, half[0]);
        EXPECT_EQ(0x00, half[1]);
        EXPECT_EQ(0x60, half[2]);
        EXPECT_EQ(0x00, half[3]);
        EXPECT_EQ(0x7f, half[14]);
        EXPECT_EQ(0x80, half[15]);
    }
}

TEST(glyphs, only_the_cell_is_drawn)
{
    for_each_glyph([](const glyph_set& set, int code, const cell& shown) {
        EXPECT_EQ(0U, columns_of(shown) & 0x000fU) << shown;
        for (int row = LINES / 2; row < 16; ++row)
            EXPECT_EQ(0U, row_of(set, code, 0, row) | row_of(set, code, 1, row)) << "row " << row;
    });
}

TEST(glyphs, blanks_are_where_they_belong_and_nowhere_else)
{
    for_each_glyph([](const glyph_set& set, int code, const cell& shown) {
        const bool control = code < 32 || code == 127 || (code >= 156 && code < 160);
        const bool space = code == 32 || code == 0xa0;
        const bool ring = code == 156 && set.rows == font_map_tab_iso8859_5.rows;
        EXPECT_EQ((control || space) && !ring, is_blank(shown)) << shown;
    });
}

TEST(glyphs, codes_to_155_are_the_same_in_all_sets)
{
    for_each_glyph([](const glyph_set& set, int code, const cell& shown) {
        if (code < 156) {
            EXPECT_EQ(cell_of(SETS[0], code), shown);
            EXPECT_EQ(SETS[0].characters[code], set.characters[code]);
        }
    });
}

TEST(glyphs, sets_have_the_characters_of_their_repertoires)
{
    for (const glyph_set& set : SETS) {
        for (int code = 32; code < 127; ++code)
            EXPECT_EQ(code, set.characters[code]);
        EXPECT_EQ(set.repertoire, std::u16string(set.characters + 160, set.characters + 256)) << set.name;
    }
}

TEST(glyphs, blank_controls_stand_for_no_character)
{
    for_each_glyph([](const glyph_set& set, int code, const cell& shown) {
        EXPECT_EQ(is_blank(shown) && code != 32 && code != 0xa0, set.characters[code] == 0);
    });
}

TEST(glyphs, cyrillic_set_has_a_degree_sign)
{
    EXPECT_EQ(shown_for(SETS[0], u'°'), cell_of(SETS[2], 156));
    EXPECT_EQ(u'°', SETS[2].characters[156]);
}

TEST(glyphs, a_character_of_several_sets_looks_the_same_in_all)
{
    for_each_glyph([](const glyph_set& set, int code, const cell& shown) {
        for (const glyph_set& other : SETS) {
            const bool shared = set.characters[code] != 0 && has(other, set.characters[code]);
            EXPECT_EQ(shared ? shown_for(other, set.characters[code]) : shown, shown);
        }
    });
}

/* Characters that look alike on paper too: the soft hyphen is a hyphen where a word is broken, and Latin and
 * Cyrillic share letters. */
const std::pair<char16_t, char16_t> TWINS[] = {
    {u'-', u'\u00ad'},
    {u'A', u'А'    },
    {u'B', u'В'    },
    {u'C', u'С'    },
    {u'E', u'Е'    },
    {u'H', u'Н'    },
    {u'I', u'І'    },
    {u'J', u'Ј'    },
    {u'K', u'К'    },
    {u'M', u'М'    },
    {u'O', u'О'    },
    {u'P', u'Р'    },
    {u'S', u'Ѕ'    },
    {u'T', u'Т'    },
    {u'X', u'Х'    },
    {u'a', u'а'    },
    {u'c', u'с'    },
    {u'e', u'е'    },
    {u'i', u'і'    },
    {u'j', u'ј'    },
    {u'o', u'о'    },
    {u'p', u'р'    },
    {u's', u'ѕ'    },
    {u'x', u'х'    },
    {u'y', u'у'    },
};

TEST(glyphs, no_two_characters_of_a_set_look_alike)
{
    const std::set<std::pair<char16_t, char16_t>> twins(std::begin(TWINS), std::end(TWINS));
    for_each_glyph([&twins](const glyph_set& set, int code, const cell& shown) {
        for (int other = code + 1; other < 256 && !is_blank(shown); ++other)
            EXPECT_EQ(twins.count({set.characters[code], set.characters[other]}) != 0,
                      shown == cell_of(set, other))
                << "code " << other << shown;
    });
}

void expect_told_apart(const glyph_set& set, char16_t character, const std::u16string& others)
{
    const cell shown = shown_for(set, character);
    for (const char16_t other : others) {
        if (character == other || !has(set, other))
            continue;
        EXPECT_GT(pixels_between(shown, shown_for(set, other)), 4)
            << set.name << shown << shown_for(set, other);
    }
}

std::vector<std::u16string> words_of(const std::u16string& text)
{
    std::vector<std::u16string> words(1);
    for (const char16_t character : text)
        if (character == u' ')
            words.emplace_back();
        else
            words.back() += character;
    return words;
}

/* Characters that readers confuse when they are drawn carelessly. A stroke of two pixels and a row makes four
 * pixels. */
TEST(glyphs, likely_mistakes_differ_by_more_than_a_stroke)
{
    const std::u16string groups =
        u"0OoDQ8 1lI|i 5S 8B 2Z 6Gb mn eco `' ,. :; ([{ )]} Cc Oo Ss Vv Ww Xx Zz ÉÈÊËE ÅÄÃA ĂÂÁÀA "
        u"ŐÖÓÔÒO őöóôòo ŰÜÚÛÙU űüúûùu ȘSŚŠ șsśš ȚT țt ŽZŹŻ žzźż ŁL łlt ĐD đd ĄA ąa ĘE ęe ČĆCÇ čćcç "
        u"×x+ °º ²³¹ \"” ÐDÞP ðoöó ИЙНПЦЛ ШЩЦ ЗЭ3ЄЕ ЬЪЫБ ЂЋЪ ЉЊЛН ЏЦП ЄЕС ІЇ1l| ийнпцл шщц зэ3єе "
        u"ьъыбв ђћъ љњлн џцп єес ії1l| б6 ч4 Ч4У гтr кж яд юо ЁЕ ёе ўу ѓг ќк ФОЮ";
    for (const std::u16string& group : words_of(groups))
        for (const glyph_set& set : SETS)
            for (const char16_t character : group)
                if (has(set, character))
                    expect_told_apart(set, character, group);
}

TEST(glyphs, halves_differ_in_nine_rows_at_most_and_mostly_in_none)
{
    for (const glyph_set& set : SETS) {
        int same = 0;
        for (int code = 0; code < 256; ++code) {
            int rows = 0;
            for (int row = 0; row < LINES / 2; ++row)
                rows += row_of(set, code, 0, row) != row_of(set, code, 1, row) ? 1 : 0;
            EXPECT_LE(rows, 9) << set.name << " code " << code;
            same += rows == 0 ? 1 : 0;
        }
        EXPECT_GT(same, 128) << set.name;
    }
}

/* Frame lines: the top of capitals and ascenders, of small letters, the base line and the end of
 * descenders. */
const int CAP_LINE = 2;
const int X_LINE = 6;
const int BASE_LINE = 15;
const int DESCENDER_LINE = 19;

TEST(glyphs, letters_and_digits_keep_to_the_lines)
{
    const struct {
        std::u16string characters;
        int first;
        int last;
    } ranks[] = {
        {u"ABCDEFGHIJKLMNOPRSTUVWXYZ0123456789",          CAP_LINE, BASE_LINE     },
        {u"acemnorsuvwxz",                                X_LINE,   BASE_LINE     },
        {u"bdfhiklt",                                     CAP_LINE, BASE_LINE     },
        {u"gpqy",                                         X_LINE,   DESCENDER_LINE},
        {u"j",                                            CAP_LINE, DESCENDER_LINE},
        {u"БГЖЗИЛПУФЧШЪЫЬЭЮЯЄЉЊЋ",   CAP_LINE, BASE_LINE     },
        {u"вгжзиклмнптчшъыьэюяєљњ", X_LINE,   BASE_LINE     },
    };
    for (const auto& rank : ranks)
        for (const char16_t character : rank.characters) {
            const cell shown = shown_for(has(SETS[0], character) ? SETS[0] : SETS[2], character);
            EXPECT_EQ(rank.first, first_line(shown)) << shown;
            EXPECT_EQ(rank.last, last_line(shown)) << shown;
        }
}

TEST(glyphs, accented_capitals_stand_on_the_base_line_and_are_taller_than_small_letters)
{
    for (const char16_t character : std::u16string(u"ÀÁÂÄÈÉÊËÌÍÎÏÒÓÔÖÙÚÛÜŠŽŸĂĆČŃŐŚŰŹŻ")) {
        const cell shown = shown_for(has(SETS[0], character) ? SETS[0] : SETS[1], character);
        EXPECT_EQ(BASE_LINE, last_line(shown)) << shown;
        EXPECT_LT(first_line(shown), CAP_LINE) << shown;
        EXPECT_NE(0U, shown.line[X_LINE - 2]) << shown;
        EXPECT_NE(0U, shown.line[X_LINE - 1]) << shown;
    }
}

TEST(glyphs, accents_stand_clear_of_the_letter)
{
    for (const char16_t character : std::u16string(u"ÉÈÊËÖÓÔÜÚÛŠŽČĆŃŐŰŚŹŻéèêëöóôüúûšžčćńőűśźżàáâäă")) {
        const cell shown = shown_for(has(SETS[0], character) ? SETS[0] : SETS[1], character);
        const unsigned int* gap = std::find(shown.line + first_line(shown), shown.line + LINES, 0U);
        EXPECT_LT(gap - shown.line, X_LINE) << shown;
    }
}

/* The gap tells it from a cedilla. */
TEST(glyphs, a_comma_below_stands_a_line_apart_and_is_no_weaker_than_a_cedilla)
{
    const int cedilla = pixels_between(shown_for(SETS[1], u'ç'), shown_for(SETS[1], u'c'));
    const std::u16string letters = u"SsTt";
    const std::u16string with_comma = u"ȘșȚț";
    for (size_t i = 0; i < letters.size(); ++i) {
        const cell shown = shown_for(SETS[1], with_comma[i]);
        EXPECT_GE(pixels_between(shown, shown_for(SETS[1], letters[i])), cedilla) << shown;
        EXPECT_EQ(0U, shown.line[BASE_LINE + 1]) << shown;
        for (int line = BASE_LINE + 2; line <= DESCENDER_LINE; ++line)
            EXPECT_NE(0U, shown.line[line]) << "line " << line << shown;
    }
}

TEST(glyphs, digits_are_equally_wide)
{
    for (int code = '0'; code <= '9'; ++code) {
        const unsigned int columns = columns_of(cell_of(SETS[0], code));
        EXPECT_EQ(0x3fc0U, columns) << cell_of(SETS[0], code);
    }
}

TEST(glyphs, letters_and_digits_leave_room_to_their_neighbours)
{
    for (int code = '0'; code <= 'z'; ++code)
        EXPECT_TRUE(isalnum(code) == 0 || (columns_of(cell_of(SETS[0], code)) & 0x8010U) == 0) << code;
}

bool is_letter_or_digit(char16_t character)
{
    const bool ascii = character < 128 && isalnum(character) != 0;
    const bool latin = character >= 0xc0 && character < 0x400 && character != u'×' && character != u'÷';
    const bool cyrillic = character >= 0x400 && character < 0x460;
    return ascii || latin || cyrillic;
}

/* The narrowest horizontal run of drawn pixels. */
int narrowest_run(const cell& shown)
{
    int narrowest = COLUMNS;
    for (int line = 0; line < LINES; ++line)
        for (int column = 0, run = 0; column <= COLUMNS; ++column) {
            const bool drawn = column < COLUMNS && shown.pixel(column, line);
            if (!drawn && run > 0)
                narrowest = std::min(narrowest, run);
            run = drawn ? run + 1 : 0;
        }
    return narrowest;
}

TEST(glyphs, no_stroke_of_a_letter_is_one_pixel_wide)
{
    for_each_glyph([](const glyph_set& set, int code, const cell& shown) {
        EXPECT_TRUE(!is_letter_or_digit(set.characters[code]) || narrowest_run(shown) >= 2) << shown;
    });
}

/* Pixels that only one field shows flicker at half the frame rate: each drawn line needs a like one in the
 * other field right above or below. */
TEST(glyphs, no_line_of_a_letter_is_in_one_field_only)
{
    for_each_glyph([](const glyph_set& set, int code, const cell& shown) {
        for (int line = 0; line < LINES && is_letter_or_digit(set.characters[code]); ++line) {
            const unsigned int above = line > 0 ? shown.line[line - 1] : 0;
            const unsigned int below = line + 1 < LINES ? shown.line[line + 1] : 0;
            EXPECT_TRUE(shown.line[line] == 0 || (shown.line[line] & (above | below)) != 0)
                << "line " << line << shown;
        }
    });
}

/* The four directions in which a box piece has strokes. */
enum arms : unsigned char { UP = 1, DOWN = 2, LEFT = 4, RIGHT = 8 };

/* Of codes 128-138, and again of 139-149. */
const int BOX_ARMS[] = {
    UP | RIGHT,       LEFT | RIGHT,      UP | LEFT,           DOWN | RIGHT, UP | DOWN | LEFT | RIGHT,
    DOWN | LEFT,      UP | LEFT | RIGHT, DOWN | LEFT | RIGHT, UP | DOWN,    UP | DOWN | RIGHT,
    UP | DOWN | LEFT,
};
const int BOX_FAMILIES[] = {128, 139};
const int BOX_PIECES = 11;

/* The lines in which a column of the cell is drawn, as bits. */
unsigned int column_of(const cell& shown, int column)
{
    unsigned int lines = 0;
    for (int line = 0; line < LINES; ++line)
        lines |= shown.pixel(column, line) ? 1U << line : 0U;
    return lines;
}

TEST(glyphs, box_pieces_meet_across_cells_in_both_directions)
{
    for (const int family : BOX_FAMILIES) {
        const cell cross = cell_of(SETS[0], family + 4);
        for (int piece = 0; piece < BOX_PIECES; ++piece) {
            const cell shown = cell_of(SETS[0], family + piece);
            const int drawn = BOX_ARMS[piece];
            EXPECT_EQ((drawn & LEFT) != 0 ? column_of(cross, COLUMNS - 1) : 0U, column_of(shown, 0)) << shown;
            EXPECT_EQ((drawn & RIGHT) != 0 ? column_of(cross, 0) : 0U, column_of(shown, COLUMNS - 1))
                << shown;
            EXPECT_EQ((drawn & UP) != 0 ? cross.line[LINES - 1] : 0U, shown.line[0]) << shown;
            EXPECT_EQ((drawn & DOWN) != 0 ? cross.line[0] : 0U, shown.line[LINES - 1]) << shown;
        }
    }
}

TEST(glyphs, box_lines_are_single_and_double)
{
    EXPECT_EQ(0x0600U, cell_of(SETS[0], 139 + 4).line[0]);
    EXPECT_EQ(0x30c0U, cell_of(SETS[0], 128 + 4).line[0]);
    EXPECT_EQ(0x00300U, column_of(cell_of(SETS[0], 139 + 4), 0));
    EXPECT_EQ(0x030c0U, column_of(cell_of(SETS[0], 128 + 4), 0));
}

TEST(glyphs, full_block_fills_the_cell)
{
    for (const unsigned int line : cell_of(SETS[0], 150).line)
        EXPECT_EQ(0xfff0U, line);
}

TEST(glyphs, medium_shade_is_a_checkerboard_of_two_by_two)
{
    const cell shade = cell_of(SETS[0], 151);
    for (int line = 0; line < LINES; ++line)
        for (int column = 0; column < COLUMNS; ++column)
            EXPECT_EQ((line / 2 + column / 2) % 2 == 0, shade.pixel(column, line)) << shade;
}

TEST(glyphs, light_shade_is_half_as_dense_as_the_medium_one)
{
    const cell blank{};
    EXPECT_EQ(120, pixels_between(blank, cell_of(SETS[0], 151)));
    EXPECT_EQ(60, pixels_between(blank, cell_of(SETS[0], 152)));
}

TEST(glyphs, grid_goes_on_in_the_next_cell)
{
    const cell grid = cell_of(SETS[0], 153);
    for (int column = 0; column < COLUMNS; ++column)
        EXPECT_EQ(column_of(grid, column % 6), column_of(grid, column));
    for (int line = 0; line < LINES; ++line)
        EXPECT_EQ(grid.line[line % 10], grid.line[line]);
}

TEST(glyphs, small_squares_are_in_the_half_that_they_are_named_after)
{
    const cell lower = cell_of(SETS[0], 154);
    const cell upper = cell_of(SETS[0], 155);
    EXPECT_GE(first_line(lower), LINES / 2);
    EXPECT_LT(last_line(upper), LINES / 2);
    for (const cell& square : {lower, upper}) {
        EXPECT_EQ(0x1f80U, columns_of(square));
        EXPECT_EQ(5, last_line(square) - first_line(square));
        EXPECT_EQ(square.line[first_line(square)], square.line[last_line(square)]);
    }
}

} // namespace
