/* SPDX-License-Identifier: MIT */
/* Service objects without a bus to register on. A program of its own: the connection to the system bus is
 * made once a process. */
#include "dbus/CHaldenVideoDisplay.h"

#include <QDBusAbstractAdaptor>
#include <QtTest>

class TestNoBus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void registration_fails_and_leaves_no_adaptor();
};

void TestNoBus::initTestCase()
{
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent/bus");
}

void TestNoBus::registration_fails_and_leaves_no_adaptor()
{
    CHaldenVideoDisplay cDisplay;
    QVERIFY(!cDisplay.setupDBusConnection());
    QVERIFY(cDisplay.findChildren<QDBusAbstractAdaptor*>().isEmpty());
    // Not taken for registered: it is tried again.
    QVERIFY(!cDisplay.setupDBusConnection());
    QVERIFY(cDisplay.findChildren<QDBusAbstractAdaptor*>().isEmpty());
}

QTEST_GUILESS_MAIN(TestNoBus)

#include "tst_no_bus.moc"
