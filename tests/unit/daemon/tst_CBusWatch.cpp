/* SPDX-License-Identifier: MIT */
/* The watch where there is no system bus. tst_shutdown has the loss of one, tst_waiting_calls the calls that wait. */
#include "daemon/CBusWatch.h"

#include <QDBusConnection>
#include <QtTest>

class TestCBusWatch : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void without_a_bus_it_does_not_start();
};

void TestCBusWatch::initTestCase()
{
    QVERIFY(qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus"));
    QVERIFY(!QDBusConnection::systemBus().isConnected());
}

// The bus library ends a program that gives it no connection.
void TestCBusWatch::without_a_bus_it_does_not_start()
{
    CBusWatch cBusWatch;
    QVERIFY(!cBusWatch.start());
}

QTEST_GUILESS_MAIN(TestCBusWatch)

#include "tst_CBusWatch.moc"
