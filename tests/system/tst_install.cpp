/* SPDX-License-Identifier: MIT */
/* The files of an installation, and the policy in it as the bus enforces it. */
#include "board/create/CBoardMaker.h"
#include "board/state/CBoard.h"
#include "tests/support/CChildProcess.h"
#include "tests/support/CDaemonProcess.h"
#include "tests/support/CPrivateBus.h"
#include "tests/support/Timeouts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusUnixFileDescriptor>
#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

#include <grp.h>
#include <unistd.h>

namespace
{

const QString POLICY = QStringLiteral("/usr/share/dbus-1/system.d/velmar.haldend.conf");
const QString INTERFACES = QStringLiteral("/usr/share/dbus-1/interfaces/");
const QString PROGRAM = QStringLiteral("/usr/sbin/haldend");
const QString UNIT = QStringLiteral("/usr/lib/systemd/system/haldend.service");
const QString DEFAULT = QStringLiteral("/etc/default/haldend");
const QString DEFAULTS_OF_FILES = QStringLiteral("/usr/share/haldend/cnfs/");
const QString MANUAL = QStringLiteral("/usr/share/man/man8/haldend.8");
const QString CLIENT = QStringLiteral("/usr/bin/haldenctl");
const QString CLIENT_MANUAL = QStringLiteral("/usr/share/man/man1/haldenctl.1");
const QString COMPLETION = QStringLiteral("/usr/share/bash-completion/completions/haldenctl");

/// Unrelated users and groups of every Debian, in place of haldend's, which exist only where the daemon is
/// installed.
const QString SOMEBODY = QStringLiteral("nobody");
const QString OWNER = QStringLiteral("games");
const QString GROUP = QStringLiteral("news");

const QString GRANTED = QStringLiteral("granted");
const QString REFUSED = QStringLiteral("refused");

/// Runs the program to its end. Returns the exit status, -1 if there is none.
int run(QProcess& rcProcess, const QStringList& rcCommand)
{
    rcProcess.setProcessChannelMode(QProcess::MergedChannels);
    rcProcess.start(rcCommand.first(), rcCommand.mid(1));
    if (!rcProcess.waitForFinished(TIMEOUT_PROCESS_MS) || rcProcess.exitStatus() != QProcess::NormalExit)
        return -1;
    return rcProcess.exitCode();
}

QByteArray contents(const QString& rcFile)
{
    QFile cFile(rcFile);
    return cFile.open(QIODevice::ReadOnly) ? cFile.readAll() : QByteArray();
}

} // namespace

class TestInstall : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void puts_these_files_in_place_data();
    void puts_these_files_in_place();
    void the_board_is_complete();
    void what_its_owner_edited_is_kept_data();
    void what_its_owner_edited_is_kept();
    void files_are_those_of_the_project_data();
    void files_are_those_of_the_project();
    void the_programs_run();
    void the_manual_pages_are_well_formed();
    void the_policy_is_enforced_data();
    void the_policy_is_enforced();
    void calls_with_a_descriptor_are_refused_data();
    void calls_with_a_descriptor_are_refused();

private:
    /// Installs everything, or one component, below a folder.
    void install(const QString& rcRoot, const QString& rcComponent = QString());
    QString installed(const QString& rcFile) const { return m_cRoot.path() + rcFile; }

    QTemporaryDir m_cRoot;
};

static QStringList interfaceFiles()
{
    return QDir(QStringLiteral(HALDEND_INTERFACE_DIR)).entryList({QStringLiteral("*.xml")});
}

static QStringList registerFiles()
{
    return {QStringLiteral("fpga.cnf"), QStringLiteral("lime.cnf"), QStringLiteral("saa7113.cnf"),
            QStringLiteral("saa7129.cnf")};
}

void TestInstall::install(const QString& rcRoot, const QString& rcComponent)
{
    CChildProcess cProcess;
    QProcessEnvironment cEnvironment = QProcessEnvironment::systemEnvironment();
    cEnvironment.insert(QStringLiteral("DESTDIR"), rcRoot);
    cProcess.setProcessEnvironment(cEnvironment);
    QStringList cCommand{QStringLiteral(CMAKE_PROGRAM), QStringLiteral("--install"),
                         QStringLiteral(BUILD_TREE), QStringLiteral("--prefix"), QStringLiteral("/usr")};
    if (!rcComponent.isEmpty())
        cCommand << QStringLiteral("--component") << rcComponent;
    const int iStatus = run(cProcess, cCommand);
    QVERIFY2(iStatus == 0, cProcess.readAll());
}

void TestInstall::initTestCase()
{
    install(m_cRoot.path());
}

/// The files below a folder, sorted.
static QStringList filesIn(const QString& rcRoot)
{
    QStringList cFound;
    QDirIterator cIterator(rcRoot, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (cIterator.hasNext())
        cFound << cIterator.next().mid(rcRoot.size());
    cFound.sort();
    return cFound;
}

void TestInstall::puts_these_files_in_place_data()
{
    QTest::addColumn<QString>("component");
    QTest::addColumn<QStringList>("files");
    QStringList cDaemon{PROGRAM,
                        MANUAL,
                        POLICY,
                        UNIT,
                        DEFAULT,
                        QStringLiteral("/usr/lib/sysusers.d/haldend.conf"),
                        QStringLiteral("/usr/lib/udev/rules.d/60-haldend.rules"),
                        QStringLiteral("/usr/share/dbus-1/system-services/velmar.haldend.service"),
                        QStringLiteral("/usr/share/haldend/default/haldend"),
                        QStringLiteral("/usr/share/man/man5/haldend.cnf.5"),
                        QStringLiteral("/usr/share/man/man7/haldend-dbus.7")};
    for (const QString& rcName : registerFiles())
        cDaemon << QStringLiteral(BOARD_CNFS_FIXED "/") + rcName << DEFAULTS_OF_FILES + rcName;
    QVERIFY(interfaceFiles().size() >= 2);
    for (const QString& rcName : interfaceFiles())
        cDaemon << INTERFACES + rcName;
    QTest::newRow("daemon") << "daemon" << cDaemon;
    QTest::newRow("client") << "client" << QStringList{CLIENT, CLIENT_MANUAL, COMPLETION};
}

void TestInstall::puts_these_files_in_place()
{
    QFETCH(QString, component);
    QFETCH(QStringList, files);
    const QTemporaryDir cRoot;
    install(cRoot.path(), component);
    files.sort();
    QCOMPARE(filesIn(cRoot.path()), files);
}

// From the build's own folders, whose names depend on the machine.
void TestInstall::the_board_is_complete()
{
    const QTemporaryDir cRoot;
    install(cRoot.path(), QStringLiteral("board"));
    const QStringList cFound = filesIn(cRoot.path());
    for (const char* pszFile :
         {"/usr/bin/halden-board", "/usr/bin/halden-codec", "/haldend-board/halden-tour",
          "/haldend-board/halden-demo", "/haldend-board/libhaldenboard.so", "/haldend-board/private-bus.conf",
          "/haldend-board/tour.txt", "/man1/halden-board.1",
#ifdef HALDEND_FILMS
          "/haldend-board/libhaldenfilms.so",
#endif
          "/man1/halden-codec.1"})
        QVERIFY2(cFound.filter(QRegularExpression(QLatin1String(pszFile) + QLatin1Char('$'))).size() == 1,
                 pszFile);
}

void TestInstall::what_its_owner_edited_is_kept_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("edited");
    for (const QString& rcFile : {DEFAULT, QStringLiteral(BOARD_CNFS_FIXED "/lime.cnf")}) {
        QTest::addRow("edited %s", qPrintable(rcFile)) << rcFile << true;
        QTest::addRow("another default of before %s", qPrintable(rcFile)) << rcFile << false;
    }
}

void TestInstall::what_its_owner_edited_is_kept()
{
    QFETCH(QString, file);
    QFETCH(bool, edited);
    const QTemporaryDir cRoot;
    install(cRoot.path());
    const QString cFile = cRoot.path() + file;
    const QByteArray cNew = contents(cFile);
    const QByteArray cOther = cNew + "# of another day\n";
    const QString cDefault =
        cRoot.path() + QStringLiteral("/usr/share/haldend") +
        (file == DEFAULT ? QStringLiteral("/default/haldend") : QStringLiteral("/cnfs/lime.cnf"));
    for (const QString& rcName : edited ? QStringList{cFile} : QStringList{cFile, cDefault}) {
        QFile cChanged(rcName);
        QVERIFY(cChanged.open(QIODevice::WriteOnly) && cChanged.write(cOther) == cOther.size());
    }
    install(cRoot.path());
    QCOMPARE(contents(cFile), edited ? cOther : cNew);
    QCOMPARE(contents(cFile + QStringLiteral(".new")), edited ? cNew : QByteArray());
    QCOMPARE(contents(cDefault), cNew);
}

void TestInstall::files_are_those_of_the_project_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("source");
    const QString cPackaging = QStringLiteral(PACKAGING_DIR "/");
    QTest::newRow("policy") << POLICY << cPackaging + "velmar.haldend.conf";
    QTest::newRow("manual page") << MANUAL << cPackaging + "haldend.8";
    QTest::newRow("client's manual page") << CLIENT_MANUAL << cPackaging + "haldenctl.1";
    QTest::newRow("client's completion") << COMPLETION << cPackaging + "haldenctl.bash";
    for (const QString& rcName : registerFiles())
        QTest::newRow(qPrintable(rcName))
            << QStringLiteral(BOARD_CNFS_FIXED "/") + rcName << cPackaging + "cnfs/" + rcName;
    for (const QString& rcName : interfaceFiles())
        QTest::newRow(qPrintable(rcName))
            << INTERFACES + rcName << QStringLiteral(HALDEND_INTERFACE_DIR "/") + rcName;
}

void TestInstall::files_are_those_of_the_project()
{
    QFETCH(QString, file);
    QFETCH(QString, source);
    QVERIFY(!contents(source).isEmpty());
    QCOMPARE(contents(installed(file)), contents(source));
    const QFile::Permissions cReadable = QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther;
    QCOMPARE(QFile::permissions(installed(file)) & cReadable, cReadable);
}

void TestInstall::the_programs_run()
{
    CChildProcess cProcess;
    const QStringList cEmulator = QStringLiteral(EMULATOR).split(QLatin1Char(' '), Qt::SkipEmptyParts);
    QCOMPARE(run(cProcess, cEmulator + QStringList{installed(PROGRAM), QStringLiteral("-h")}), 0);
    QVERIFY(cProcess.readAll().startsWith("Usage: haldend"));
    QCOMPARE(run(cProcess, cEmulator + QStringList{installed(CLIENT), QStringLiteral("--help")}), 0);
    QVERIFY(cProcess.readAll().startsWith("Usage: haldenctl"));
}

void TestInstall::the_manual_pages_are_well_formed()
{
    CChildProcess cProcess;
    const QStringList cManuals =
        filesIn(m_cRoot.path()).filter(QRegularExpression(QStringLiteral("^/usr/share/man/")));
    QVERIFY(cManuals.size() >= 4);
    for (const QString& rcManual : cManuals) {
        const int iStatus =
            run(cProcess, {QStringLiteral("mandoc"), QStringLiteral("-T"), QStringLiteral("lint"),
                           QStringLiteral("-W"), QStringLiteral("warning"), installed(rcManual)});
        QVERIFY2(iStatus == 0, cProcess.readAll());
    }
}

// A request: a client's arguments for dbus-send.

static QStringList callOf(const char* pszPath, const char* pszMember)
{
    return {QStringLiteral("--dest=velmar.haldend"), QLatin1String(pszPath), QLatin1String(pszMember)};
}

/// A row for each client that this test can play. bOwner: the user haldend may do it; bMember: members of its
/// group may.
static void addRows(const char* pszWhat, const QStringList& rcRequest, bool bOwner, bool bMember)
{
    const auto cAdd = [&](const char* pszClient, bool bGranted) {
        QTest::addRow("%s %s", pszClient, pszWhat)
            << pszClient << rcRequest << (bGranted ? GRANTED : REFUSED);
    };
    cAdd("root", true);
    if (geteuid() == 0) {
        cAdd("somebody", false);
        cAdd("owner", bOwner);
        cAdd("member", bMember);
    } else {
        cAdd("owner and member", bOwner || bMember);
    }
}

void TestInstall::the_policy_is_enforced_data()
{
    QTest::addColumn<QString>("client");
    QTest::addColumn<QStringList>("request");
    QTest::addColumn<QString>("answer");
    if (geteuid() != 0)
        qInfo("Not root, so strangers can't be played: this user takes the places of root and of haldend.");
    addRows("owns the name",
            {"--dest=org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.RequestName",
             "string:velmar.haldend", "uint32:4"},
            true, false);
    addRows("calls", callOf("/videodisplay", "velmar.haldend.videodisplay.get_displayed_video_width"), false,
            true);
    addRows("introspects", callOf("/videodisplay", "org.freedesktop.DBus.Introspectable.Introspect"), false,
            true);
    // The test has the codec's name.
    addRows("calls the codec", {"--dest=velmar.mobilygen", "/Record", "org.freedesktop.DBus.Peer.Ping"}, true,
            false);
    // The object for service staff, by its interface and by others.
    addRows("debugs", callOf("/debug", "velmar.haldend.debug.fpga_disable_video_restore"), false, false);
    addRows("introspects debug", callOf("/debug", "org.freedesktop.DBus.Introspectable.Introspect"), false,
            false);
    addRows("asks debug for properties",
            callOf("/debug", "org.freedesktop.DBus.Properties.GetAll")
                << QStringLiteral("string:velmar.haldend.debug"),
            false, false);
}

/// The policy for a client that this test can play, and the command that plays it.
static QStringList play(const QString& rcClient, CPrivateBus::SPolicy& rsPolicy)
{
    if (geteuid() == 0) {
        rsPolicy.cUser = OWNER;
        rsPolicy.cGroup = GROUP;
        if (rcClient == QLatin1String("root"))
            return {};
        const QString cUser = rcClient == QLatin1String("owner") ? OWNER : SOMEBODY;
        const QString cGroup = rcClient == QLatin1String("member") ? GROUP : QStringLiteral("nogroup");
        return {QStringLiteral("setpriv"), QStringLiteral("--reuid=") + cUser,
                QStringLiteral("--regid=") + cGroup, QStringLiteral("--clear-groups")};
    }
    if (rcClient != QLatin1String("root")) {
        rsPolicy.cUser = rsPolicy.cRoot;
        rsPolicy.cGroup = QString::fromLocal8Bit(getgrgid(getegid())->gr_name);
        rsPolicy.cRoot.clear();
    }
    return {};
}

void TestInstall::the_policy_is_enforced()
{
    QFETCH(QString, client);
    QFETCH(QStringList, request);
    QFETCH(QString, answer);
    CPrivateBus::SPolicy sPolicy;
    sPolicy.cFile = installed(POLICY);
    QStringList cCommand = play(client, sPolicy);
    CPrivateBus cBus;
    QVERIFY2(cBus.startUnderPolicy(sPolicy), qPrintable(cBus.error()));
    const QTemporaryDir cDirectory;
    const QString cBoard = cDirectory.filePath(QStringLiteral("board"));
    QString cError;
    QVERIFY2(CBoardMaker::create(cBoard, cError), qPrintable(cError));
    CDaemonProcess cDaemon;
    cDaemon.setBusAddress(cBus.address());
    cDaemon.useBoard(cBoard);
    QVERIFY2(cDaemon.startAndWaitForName(), cDaemon.describe());
    QVERIFY(cDaemon.client().registerService(QStringLiteral("velmar.mobilygen")));

    CChildProcess cClient;
    cCommand << QStringLiteral("dbus-send") << QStringLiteral("--bus=") + cBus.address()
             << QStringLiteral("--print-reply");
    const int iStatus = run(cClient, cCommand + request);
    const QByteArray cSaid = cClient.readAll();
    QVERIFY2((iStatus == 0) == (answer == GRANTED), cSaid);
    QCOMPARE(cSaid.contains("org.freedesktop.DBus.Error.AccessDenied"), answer == REFUSED);
    QVERIFY(cDaemon.endBySignal(SIGTERM));
    QCOMPARE(cDaemon.exitCode(), 0);
}

void TestInstall::calls_with_a_descriptor_are_refused_data()
{
    QTest::addColumn<bool>("root");
    QTest::newRow("root") << true;
    QTest::newRow("member") << false;
}

// The bus decides, whatever the daemon would do: the test itself owns the name.
void TestInstall::calls_with_a_descriptor_are_refused()
{
    QFETCH(bool, root);
    CPrivateBus::SPolicy sPolicy;
    sPolicy.cFile = installed(POLICY);
    if (!root) {
        sPolicy.cUser = sPolicy.cRoot;
        sPolicy.cGroup = QString::fromLocal8Bit(getgrgid(getegid())->gr_name);
        sPolicy.cRoot = SOMEBODY;
    }
    CPrivateBus cBus;
    QVERIFY2(cBus.startUnderPolicy(sPolicy), qPrintable(cBus.error()));
    const QString cOwnerName = QStringLiteral("owner ") + QString::fromLatin1(QTest::currentDataTag());
    const QString cClientName = QStringLiteral("client ") + QString::fromLatin1(QTest::currentDataTag());
    QDBusConnection cOwner = QDBusConnection::connectToBus(cBus.address(), cOwnerName);
    QVERIFY(cOwner.registerService(QStringLiteral("velmar.haldend")));
    QDBusConnection cClient = QDBusConnection::connectToBus(cBus.address(), cClientName);
    QDBusMessage cPing =
        QDBusMessage::createMethodCall(QStringLiteral("velmar.haldend"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    QCOMPARE(cClient.call(cPing, QDBus::Block, TIMEOUT_CALL_MS).type(), QDBusMessage::ReplyMessage);
    cPing << QVariant::fromValue(QDBusUnixFileDescriptor(STDIN_FILENO));
    QCOMPARE(cClient.call(cPing, QDBus::Block, TIMEOUT_CALL_MS).errorName(),
             QStringLiteral("org.freedesktop.DBus.Error.AccessDenied"));
    QDBusConnection::disconnectFromBus(cClientName);
    QDBusConnection::disconnectFromBus(cOwnerName);
}

QTEST_GUILESS_MAIN(TestInstall)
#include "tst_install.moc"
