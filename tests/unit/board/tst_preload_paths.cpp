/* SPDX-License-Identifier: MIT */
/* The folder of the register files: the daemon's fixed one leads into the board. */
#include "board/preload/haldenboard.h"
#include "tests/support/CAttachedBoard.h"

#include <QDir>
#include <QFileInfo>
#include <QTest>

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

static const char FIXED[] = "/usr/etc/cnfs/lime.cnf";

class TestPreloadPaths : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { m_pcBoard.reset(); }

    void stdio_reads_the_boards_file();
    void stdio_writes_the_boards_file();
    void qfile_reads_and_writes_the_boards_file();
    void open_reads_the_boards_file();
    void stat_sees_the_boards_file();
    void qfileinfo_sees_the_boards_file();
    void access_sees_the_boards_file();
    void missing_files_are_missing();
    void the_folder_itself_is_the_boards();
    void similar_paths_stay_data();
    void similar_paths_stay();
    void nothing_is_redirected_without_a_board();

private:
    QScopedPointer<CAttachedBoard> m_pcBoard;
    QString m_cReal;
};

void TestPreloadPaths::init()
{
    haldenboard_detach(); // of a board that the environment names
    QVERIFY2(!QFileInfo::exists(QStringLiteral("/usr/etc/cnfs")), "the host has the folder itself");
    m_pcBoard.reset(new CAttachedBoard);
    QVERIFY(m_pcBoard->isReady());
    m_cReal = (*m_pcBoard)->path(BOARD_CNFS) + QStringLiteral("/lime.cnf");
    QFile cFile(m_cReal);
    QVERIFY(cFile.open(QIODevice::WriteOnly));
    cFile.write("seven..");
}

void TestPreloadPaths::stdio_reads_the_boards_file()
{
    char aText[16] = {};
    FILE* pcFile = std::fopen(FIXED, "r");
    QVERIFY(pcFile != nullptr);
    QCOMPARE(std::fread(aText, 1, sizeof aText, pcFile), size_t(7));
    pcFile = std::freopen(FIXED, "r", pcFile);
    QVERIFY(pcFile != nullptr);
    QCOMPARE(std::fread(aText, 1, sizeof aText, pcFile), size_t(7));
    std::fclose(pcFile);
    QCOMPARE(QByteArray(aText), QByteArray("seven.."));
}

void TestPreloadPaths::stdio_writes_the_boards_file()
{
    FILE* pcFile = std::fopen("/usr/etc/cnfs/new.cnf", "w");
    QVERIFY(pcFile != nullptr);
    std::fputs("text", pcFile);
    std::fclose(pcFile);
    QFile cReal((*m_pcBoard)->path(BOARD_CNFS) + QStringLiteral("/new.cnf"));
    QVERIFY(cReal.open(QIODevice::ReadOnly));
    QCOMPARE(cReal.readAll(), QByteArray("text"));
}

void TestPreloadPaths::qfile_reads_and_writes_the_boards_file()
{
    QFile cFixed(QString::fromLatin1(FIXED));
    QVERIFY(cFixed.open(QIODevice::ReadWrite));
    QCOMPARE(cFixed.readAll(), QByteArray("seven.."));
    cFixed.write("more");
    cFixed.close();
    QCOMPARE(QFileInfo(m_cReal).size(), qint64(11));
}

void TestPreloadPaths::open_reads_the_boards_file()
{
    for (const int iDescriptor :
         {::open(FIXED, O_RDONLY | O_CLOEXEC), ::openat(AT_FDCWD, FIXED, O_RDONLY | O_CLOEXEC)}) {
        char aText[16] = {};
        QCOMPARE(::read(iDescriptor, aText, sizeof aText), ssize_t(7));
        ::close(iDescriptor);
    }
}

void TestPreloadPaths::stat_sees_the_boards_file()
{
    struct stat cReal = {};
    struct stat cFixed = {};
    QCOMPARE(::stat(qPrintable(m_cReal), &cReal), 0);
    QCOMPARE(::stat(FIXED, &cFixed), 0);
    QCOMPARE(cFixed.st_ino, cReal.st_ino);
    cFixed.st_ino = 0;
    QCOMPARE(::lstat(FIXED, &cFixed), 0);
    QCOMPARE(cFixed.st_ino, cReal.st_ino);
    cFixed.st_ino = 0;
    QCOMPARE(::fstatat(AT_FDCWD, FIXED, &cFixed, 0), 0);
    QCOMPARE(cFixed.st_ino, cReal.st_ino);
    struct statx cExtended = {};
    QCOMPARE(::statx(AT_FDCWD, FIXED, 0, STATX_BASIC_STATS, &cExtended), 0);
    QCOMPARE(cExtended.stx_ino, __u64(cReal.st_ino));
}

void TestPreloadPaths::qfileinfo_sees_the_boards_file()
{
    const QFileInfo cInfo(QString::fromLatin1(FIXED));
    QVERIFY(cInfo.exists() && cInfo.isFile() && cInfo.isReadable());
    QCOMPARE(cInfo.size(), qint64(7));
}

void TestPreloadPaths::access_sees_the_boards_file()
{
    QCOMPARE(::access(FIXED, R_OK | W_OK), 0);
    QCOMPARE(::faccessat(AT_FDCWD, FIXED, R_OK, 0), 0);
}

void TestPreloadPaths::missing_files_are_missing()
{
    QVERIFY(std::fopen("/usr/etc/cnfs/none.cnf", "r") == nullptr);
    QCOMPARE(errno, ENOENT);
    QCOMPARE(::access("/usr/etc/cnfs/none.cnf", F_OK), -1);
    QCOMPARE(errno, ENOENT);
}

void TestPreloadPaths::the_folder_itself_is_the_boards()
{
    QVERIFY(QFileInfo(QStringLiteral("/usr/etc/cnfs")).isDir());
    QVERIFY(QFileInfo(QStringLiteral("/usr/etc/cnfs/")).isDir());
}

void TestPreloadPaths::similar_paths_stay_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::newRow("longer name") << QByteArray("/usr/etc/cnfs2/lime.cnf");
    QTest::newRow("shorter name") << QByteArray("/usr/etc/cnf");
    QTest::newRow("relative") << QByteArray("usr/etc/cnfs/lime.cnf");
    QTest::newRow("too long for the board") << QByteArray("/usr/etc/cnfs/") + QByteArray(4090, 'x');
}

void TestPreloadPaths::similar_paths_stay()
{
    QFETCH(QByteArray, path);
    struct stat cStatus = {};
    QCOMPARE(::stat(path.constData(), &cStatus), -1);
    QVERIFY(errno == ENOENT || errno == ENAMETOOLONG);
}

void TestPreloadPaths::nothing_is_redirected_without_a_board()
{
    haldenboard_detach();
    QVERIFY(!QFileInfo::exists(QString::fromLatin1(FIXED)));
}

QTEST_GUILESS_MAIN(TestPreloadPaths)
#include "tst_preload_paths.moc"
