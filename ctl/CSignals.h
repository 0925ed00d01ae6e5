/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_CSIGNALS_H
#define HALDEND_CTL_CSIGNALS_H

#include "ctl/CBus.h"

#include <QDBusMessage>
#include <QJsonObject>
#include <QObject>

/// A signal of the daemon, or its coming or going, which have the names "running" and "gone".
struct SSignal {
    QString cName;
    QList<int> cNumbers;

    /// "recording ended: stopped at its maximum length (6)".
    QString words() const;

    /// The same for programs: "signal", and what the numbers mean.
    QJsonObject object() const;
};

/// Receives the daemon's signals, from construction on.
class CSignals : public QObject
{
    Q_OBJECT

public:
    explicit CSignals(CBus& rcBus);

    /// Lets signals come until the bus is gone; throws CFailure then.
    [[noreturn]] void untilTheBusIsGone();

    /// The same until quit(), or until the time is over if it isn't negative: false then.
    bool waitFor(int iMilliseconds);
    void quit();

signals:
    void came(const SSignal& rsSignal);
    void busGone();
    void ended();

private slots:
    void onSignal(const QDBusMessage& rcMessage);
    void onOwnerChanged(const QString& rcService, const QString& rcOld, const QString& rcNew);
    void onDisconnected();

private:
    bool m_bGone = false;
    bool m_bQuit = false;
};

#endif
