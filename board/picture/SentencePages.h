/* SPDX-License-Identifier: MIT */
/* A text page of sentences for each glyph set, in the languages that the set is for: shows how the glyphs
 * read. */
#ifndef HALDEND_BOARD_PICTURE_SENTENCEPAGES_H
#define HALDEND_BOARD_PICTURE_SENTENCEPAGES_H

const int SENTENCE_PAGES = 3;      ///< one for each glyph set, set 1 first
const int SENTENCE_PAGE_ROWS = 26; ///< as many as a text page has

/// A row of a page.
struct SSentenceRow {
    unsigned char u8Color; ///< colour byte of its cells: foreground << 4 | background
    const char* pszText;   ///< UTF-8, at most 53 characters, all of them in the set
};

extern const SSentenceRow SENTENCES[SENTENCE_PAGES][SENTENCE_PAGE_ROWS];

#endif
