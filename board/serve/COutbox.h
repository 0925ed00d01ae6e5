/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_SERVE_COUTBOX_H
#define HALDEND_BOARD_SERVE_COUTBOX_H

#include <QByteArray>

#include <deque>
#include <map>

/// What waits to be sent to one browser. It can't grow without end: a browser that doesn't read gets the newest state
/// when it does, and the newest lines.
class COutbox
{
public:
    struct SMessage {
        QByteArray cPayload;
        bool bBinary = false;
    };

    /// The most lines of one topic that wait; older ones go.
    static const int LINES = 400;

    /// A state: takes the place of one of the same topic that still waits.
    void putState(const QByteArray& rcTopic, const QByteArray& rcJson);

    /// A line of a log: those of a topic that wait are sent together, as {"type": TOPIC, "items": [...]}.
    void putLine(const QByteArray& rcTopic, const QByteArray& rcJson);

    /// A picture: takes the place of one that still waits.
    void putPicture(const QByteArray& rcPicture);

    bool isEmpty() const { return m_cStates.empty() && m_cLines.empty() && m_cPicture.isEmpty(); }

    /// Takes the next message; a picture first, then states, then lines. An empty payload if nothing waits.
    SMessage take();

private:
    QByteArray m_cPicture;
    std::deque<std::pair<QByteArray, QByteArray>> m_cStates; ///< in the order of their first putState()
    std::map<QByteArray, std::deque<QByteArray>> m_cLines;
};

#endif
