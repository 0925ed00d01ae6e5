/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_COUTPUT_H
#define HALDEND_CTL_COUTPUT_H

#include <QJsonObject>
#include <QString>

/// Prints answers: lines on standard output and on standard error, or JSON.
class COutput
{
public:
    struct SStyle {
        bool bJson = false;
        bool bQuiet = false;
        bool bColor = false; ///< ANSI colours
    };

    explicit COutput(const SStyle& rsStyle) : m_sStyle(rsStyle) {}

    bool isJson() const { return m_sStyle.bJson; }
    bool isQuiet() const { return m_sStyle.bQuiet; }
    bool hasColor() const { return m_sStyle.bColor; }

    /// A line of text on standard output, there at once.
    void line(const QString& rcText);

    /// An object in a line of its own.
    void object(const QJsonObject& rcObject);

    /// A line on standard error, the program's name before it.
    void error(const QString& rcText);

private:
    SStyle m_sStyle;
};

#endif
