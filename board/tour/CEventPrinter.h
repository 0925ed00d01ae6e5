/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TOUR_CEVENTPRINTER_H
#define HALDEND_BOARD_TOUR_CEVENTPRINTER_H

#include <QByteArray>
#include <QString>

class QProcess;

/// Prints what happens in a run, a line for each event: the time, who, what. In colours on a terminal, unless the
/// variable NO_COLOR is set.
class CEventPrinter
{
public:
    enum EKind { PLAIN, GOOD, BAD };

    CEventPrinter();

    /// A control character in the text shows as "?": it could be meant for the terminal.
    void print(const char* pszWho, const QString& rcWhat, EKind eKind = PLAIN);

    /// Prints the lines on a program's standard error as its events, as they come. Log lines lose their ident. To be
    /// called before the program is started; the printer outlives it.
    void follow(const char* pszWho, QProcess& rcProcess);

private:
    void printLines(const char* pszWho, QByteArray& rcPart, const QByteArray& rcNew);

    bool m_bColor;
};

#endif
