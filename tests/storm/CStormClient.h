/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CSTORMCLIENT_H
#define HALDEND_TESTS_CSTORMCLIENT_H

#include "tests/model/CCaller.h"
#include "tests/storm/CStormDraw.h"

#include <QHash>

#include <memory>

/// One of the clients of a storm: it has many calls under way, and looks at each answer.
class CStormClient
{
public:
    /// Comes to the bus, or vanishes and comes back as another one: calls under way are forgotten. False if it isn't let
    /// in.
    bool start(const QString& rcBusAddress);

    void post(const CStormDraw::SDrawn& rsDrawn);

    /// Takes the answers that have come, and waits for some if more than so many calls are under way. False if none comes,
    /// or one isn't prescribed; error() says which.
    bool receive(int iUnderWay);

    qint64 answers() const { return m_iAnswers; }
    qint64 errors() const { return m_iErrors; } ///< among the answers
    QByteArray error() const { return m_cError; }

private:
    bool check(quint32 u32Serial, const QByteArray& rcAnswer);

    std::unique_ptr<CCaller> m_pcCaller;
    QHash<quint32, CStormDraw::SDrawn> m_cUnderWay; ///< by serial number
    qint64 m_iAnswers = 0;
    qint64 m_iErrors = 0;
    QByteArray m_cError;
};

#endif
