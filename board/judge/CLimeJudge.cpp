/* SPDX-License-Identifier: MIT */
#include "board/judge/CLimeJudge.h"

#include "board/judge/map.h"

namespace
{

struct SWindow {
    CBoard::ELimeWindow eWindow;
    quint32 u32End; ///< in fb0
    const char* pszName;
};

const SWindow WINDOWS[] = {
    {CBoard::LIME_HOST,    MAP_LIME_DISPLAY, "host"   },
    {CBoard::LIME_DISPLAY, MAP_LIME_CAPTURE, "display"},
    {CBoard::LIME_CAPTURE, MAP_LIME_DRAW,    "capture"},
    {CBoard::LIME_DRAW,    MAP_LIME_PIO,     "draw"   },
    {CBoard::LIME_PIO,     MAP_LIME_END,     "pio"    },
};

struct SRegister {
    quint32 u32Window;
    quint32 u32Offset;
    quint32 u32Declared;
};

#define REGISTER_ROW(window, offset, declared) {window, offset, declared},
const SRegister REGISTERS[] = {MAP_LIME_REGISTERS(REGISTER_ROW)};
#undef REGISTER_ROW

/// The bits that the register declares; 0 if there is no register.
quint32 declaredBits(quint32 u32Window, quint32 u32Offset)
{
    for (const SRegister& rcRegister : REGISTERS)
        if (rcRegister.u32Window == u32Window && rcRegister.u32Offset == u32Offset)
            return rcRegister.u32Declared;
    return 0;
}

QString hex(quint32 u32Value)
{
    return QStringLiteral("0x%1").arg(u32Value, 8, 16, QLatin1Char('0'));
}

/// The judgement on a value; empty if the value is right.
QString judgement(const SWindow& rcWindow, quint32 u32Offset, quint32 u32Value)
{
    const quint32 u32Declared = declaredBits(rcWindow.eWindow, u32Offset);
    const quint32 u32Undeclared = u32Value & ~u32Declared;
    if (u32Undeclared == 0)
        return QString();
    return QStringLiteral("lime %1 %2 %3: %4")
        .arg(QLatin1String(rcWindow.pszName), hex(u32Offset), hex(u32Value),
             u32Declared == 0 ? QStringLiteral("no such register")
                              : QStringLiteral("undeclared bits ") + hex(u32Undeclared));
}

} // namespace

QStringList CLimeJudge::judgements() const
{
    QStringList cLines;
    for (const SWindow& rcWindow : WINDOWS) {
        for (quint32 u32Offset = 0; u32Offset < rcWindow.u32End - rcWindow.eWindow; u32Offset += 4) {
            const quint32 u32Value = m_rcBoard.limeRegister(rcWindow.eWindow, u32Offset);
            const QString cLine = u32Value != 0 ? judgement(rcWindow, u32Offset, u32Value) : QString();
            if (!cLine.isEmpty())
                cLines << cLine;
        }
    }
    return cLines;
}
