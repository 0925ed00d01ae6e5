/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CTEXTLAYERMODEL_H
#define HALDEND_TESTS_CTEXTLAYERMODEL_H

#include "hw/fpga_map.h"

#include <QString>

#include <array>
#include <map>
#include <vector>

/// The rules of the texts, word by word, and the FPGA's text page as they leave it: the plainest tables and walks.
class CTextLayerModel
{
public:
    struct SText {
        QString cString;
        int x = 0; ///< 0 to 255, like y
        int y = 0;
        quint32 u32Foreground = 1;
        quint32 u32Background = 5;
        bool bVisible = false;
        quint32 u32Id = 0;

        int end() const { return (x + cString.size()) % 256; }
    };

    using CTexts = std::map<unsigned int, SText>; ///< by handle

    CTextLayerModel() { clearPage(); }

    const CTexts& texts() const { return m_cTexts; }
    const SText* find(unsigned int uHandle) const;

    /// 0 if there are 65,535 texts.
    unsigned int create();
    void destroy(unsigned int uHandle);
    void show(unsigned int uHandle);
    void hide(unsigned int uHandle);

    /// Changes a text by a function, and draws it if it is visible. Without such a text nothing happens.
    template <typename TChange>
    void change(unsigned int uHandle, TChange fnChange)
    {
        const auto it = m_cTexts.find(uHandle);
        if (it == m_cTexts.end())
            return;
        fnChange(it->second);
        drawIfVisible(uHandle);
    }
    void drawIfVisible(unsigned int uHandle);

    void setId(unsigned int uHandle, quint32 u32Id);
    unsigned int handleById(quint32 u32Id) const; ///< the lowest one; 0: none has the id

    /// Zeros everywhere, as the bring-up of the FPGA leaves it. The texts stay, and so do their places.
    void clearPage() { m_cPage.fill(0); }

    /// The glyph set, 1 to 3, that strings are encoded for from now on.
    void setGlyphSet(int iSet) { m_iGlyphSet = iSet; }

    const unsigned char* page() const { return m_cPage.data(); }
    int pageBytes() const { return static_cast<int>(m_cPage.size()); }

    /// How often a text was drawn because another one left its cells.
    int redrawn() const { return m_iRedrawn; }

private:
    struct SRecord {
        unsigned int uHandle;
        int startX;
        int y;
        int endX;
    };

    void write(int x, int y, int iCode, int iColor);
    void erase(int fromX, int toX, int y);
    void writeText(const SRecord& rsRecord);
    std::vector<SRecord>::iterator record(unsigned int uHandle);
    void redraw(const SRecord& rsRegion);
    void draw(unsigned int uHandle);
    void clear(unsigned int uHandle);
    int codeOf(QChar cCharacter) const;

    CTexts m_cTexts;
    std::vector<SRecord> m_cRecords; ///< in the order of first drawing
    std::array<unsigned char, FPGA_TEXT_PAGE_STRIDE> m_cPage;
    int m_iGlyphSet = 1;
    int m_iRedrawn = 0;
};

#endif
