/* SPDX-License-Identifier: MIT */
/* Still images: from the FPGA into a file and back, and every fault that files can have. */
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "daemon/CEventLogger.h"
#include "hw/fpga_map.h"
#include "platform/CMultimediaPlatform.h"
#include "platform/VideoImageFile.h"
#include "tests/support/CPlatformBoard.h"
#include "tests/support/hw/failing_malloc.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <csignal>
#include <functional>
#include <new>
#include <thread>

#include <fcntl.h>
#include <pty.h>
#include <sys/stat.h>
#include <unistd.h>

class TestStillImages : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void a_saved_image_has_the_header_and_the_length();
    void a_saved_image_opens_in_any_viewer();
    void what_is_saved_comes_back_and_is_shown();
    void a_picture_is_stored_before_it_is_shown();
    void an_image_is_in_place_before_it_is_shown();
    void a_saved_image_is_on_the_medium_before_the_pause();
    void an_older_and_longer_file_is_replaced();
    void the_length_decides_whether_a_file_loads_data();
    void the_length_decides_whether_a_file_loads();
    void the_header_is_not_looked_at();
    void places_that_can_not_be_opened_data();
    void places_that_can_not_be_opened();
    void a_terminal_that_nobody_reads_can_not_be_opened();
    void a_fifo_that_comes_between_is_not_waited_for();
    void a_file_whose_opening_would_wait_can_not_be_opened();
    void a_file_whose_reading_would_wait_can_not_be_read();
    void a_name_has_no_meaning_but_as_a_path();
    void a_link_to_nothing_is_saved_behind_it();
    void a_new_file_has_its_mode_whatever_the_umask_data();
    void a_new_file_has_its_mode_whatever_the_umask();
    void an_older_file_keeps_its_mode();
    void a_full_disk_is_a_write_error();
    void without_memory_no_file_is_touched();
    void without_memory_for_a_picture_nothing_happens();
    void a_device_that_can_not_be_read_saves_black();

private:
    QString file(const char* pszName) const { return m_pcFolder->filePath(QLatin1String(pszName)); }
    QByteArray storedImage() const { return (*m_pcBoard)->fpgaMemory(FPGA_VIDEO_IMAGE, IMAGE_BYTES); }

    static const int IMAGE_BYTES = 1658880;
    static const int LINE_BYTES = 2880;

    QScopedPointer<CPlatformBoard> m_pcBoard;
    QScopedPointer<QTemporaryDir> m_pcFolder;
};

static const quint32 RESTORE = 0x00100010;

/// What the platform waited for, in order: "usleep 100000", "fsync 1658934", "sleep 1". Sleeps take no time.
static QStringList s_cWaits;
static std::function<void()> s_fnAtWait;
static int s_iSyncedFile = -1;

/// Whether there is memory for a picture of the platform's own.
static bool s_bPicturesFit = true;

static void noteWait(const char* pszName, qint64 iArgument)
{
    s_cWaits << QStringLiteral("%1 %2").arg(QLatin1String(pszName)).arg(iArgument);
    if (s_fnAtWait)
        s_fnAtWait();
}

extern "C" {
// They take the place of the C library's.
unsigned int __wrap_sleep(unsigned int uiSeconds)
{
    noteWait("sleep", uiSeconds);
    return 0;
}

int __wrap_usleep(useconds_t uiMicroseconds)
{
    noteWait("usleep", uiMicroseconds);
    return 0;
}

int __wrap_fsync(int iDescriptor)
{
    struct stat sStat = {};
    s_iSyncedFile = iDescriptor;
    noteWait("fsync", fstat(iDescriptor, &sStat) == 0 ? qint64(sStat.st_size) : -1);
    return 0;
}
}

// The platform asks for its pictures by it.
void* operator new[](std::size_t uSize, const std::nothrow_t& /*rsNothrow*/) noexcept
{
    return s_bPicturesFit ? ::operator new[](uSize) : nullptr;
}

void TestStillImages::initTestCase()
{
    CEventLogger::initialize("haldend", CEventLogger::eLogLevelInformational);
}

// A board with a picture stored in the FPGA.
void TestStillImages::init()
{
    m_pcFolder.reset(new QTemporaryDir);
    m_pcBoard.reset(new CPlatformBoard);
    QVERIFY(m_pcBoard->isReady());
    QCOMPARE(m_pcBoard->initialize(), 1);
    CMultimediaPlatform::freezeVideoPicture(false);
}

void TestStillImages::cleanup()
{
    // Before the next one is made: the process is attached to one board at a time.
    m_pcBoard.reset();
}

static QByteArray contents(const QString& rcPath)
{
    QFile cFile(rcPath);
    return cFile.open(QIODevice::ReadOnly) ? cFile.readAll() : QByteArray();
}

static bool fill(const QString& rcPath, const QByteArray& rcBytes)
{
    QFile cFile(rcPath);
    return cFile.open(QIODevice::WriteOnly | QIODevice::Truncate) && cFile.write(rcBytes) == rcBytes.size();
}

void TestStillImages::a_saved_image_has_the_header_and_the_length()
{
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    const QByteArray cBytes = contents(file("a.bmp"));
    QCOMPARE(cBytes.size(), 1658934);
    QCOMPARE(cBytes.left(54), QByteArray::fromHex("424d"
                                                  "36501900"
                                                  "00000000"
                                                  "36000000" // file header
                                                  "28000000"
                                                  "d0020000"
                                                  "40020000"
                                                  "0100"
                                                  "2000"
                                                  "00000000"
                                                  "00501900"
                                                  "00000000000000000000000000000000"));
    // Bottom line first: the file's first line is the frame's last, the second field's last.
    QCOMPARE(cBytes.mid(54, LINE_BYTES), storedImage().right(LINE_BYTES));
    QCOMPARE(cBytes.mid(54 + LINE_BYTES, LINE_BYTES), storedImage().mid(287 * LINE_BYTES, LINE_BYTES));
}

void TestStillImages::a_saved_image_opens_in_any_viewer()
{
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    const QImage cImage = QImage(file("a.bmp")).convertToFormat(QImage::Format_RGB32);
    QCOMPARE(cImage.size(), QSize(720, 576));
    // Kept: the topmost line is outside of the reversal. All pictures that clients have saved are like that.
    QCOMPARE(cImage.copy(0, 1, 720, 575),
             CTestPicture::frame(0).convertToFormat(QImage::Format_RGB32).copy(0, 1, 720, 575));
}

void TestStillImages::what_is_saved_comes_back_and_is_shown()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    const QImage cLive = CBoardPicture::monitor(*rcBoard);
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_CTRL), 0U);

    rcBoard->setCamera(CTestPicture::frame(40));
    CMultimediaPlatform::freezeVideoPicture(false);
    QVERIFY(CBoardPicture::monitor(*rcBoard) != cLive);
    QCOMPARE(CMultimediaPlatform::loadVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_CTRL), RESTORE);
    QCOMPARE(CBoardPicture::monitor(*rcBoard).copy(0, 1, 688, 572), cLive.copy(0, 1, 688, 572));
}

// The FPGA needs the time to store a picture.
void TestStillImages::a_picture_is_stored_before_it_is_shown()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    quint32 u32AtWait = ~0U;
    s_cWaits.clear();
    rcBoard->setFpgaRegister(FPGA_CTRL, 0);
    s_fnAtWait = [&] { u32AtWait = rcBoard->fpgaRegister(FPGA_CTRL); };
    CMultimediaPlatform::freezeVideoPicture(true);
    s_fnAtWait = nullptr;
    QCOMPARE(s_cWaits, QStringList{QStringLiteral("usleep 100000")});
    QCOMPARE(u32AtWait, 0U);
    QCOMPARE(rcBoard->fpgaRegister(FPGA_CTRL), RESTORE);
}

// Nothing else may be seen in between.
void TestStillImages::an_image_is_in_place_before_it_is_shown()
{
    CPlatformBoard& rcBoard = *m_pcBoard;
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    rcBoard->setTracing(true);
    rcBoard.takeTrace();
    QCOMPARE(CMultimediaPlatform::loadVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    const QStringList cTrace = rcBoard.takeTrace();
    rcBoard->setTracing(false);
    QCOMPARE(cTrace.size(), 3);
    QCOMPARE(cTrace[0], QStringLiteral("fpga seek 0x01000000"));
    QVERIFY(cTrace[1].startsWith(QStringLiteral("fpga write 1658880 = 1658880 : ")));
    QCOMPARE(cTrace[2], QStringLiteral("fpga write32 0x00ff0000 0x00100010"));
}

// The whole file goes out and is closed, and the medium gets a second for it.
void TestStillImages::a_saved_image_is_on_the_medium_before_the_pause()
{
    int iFlagsAtPause = 0;
    s_cWaits.clear();
    s_fnAtWait = [&iFlagsAtPause] { iFlagsAtPause = fcntl(s_iSyncedFile, F_GETFD); };
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    s_fnAtWait = nullptr;
    QCOMPARE(s_cWaits, (QStringList{QStringLiteral("fsync 1658934"), QStringLiteral("sleep 1")}));
    QCOMPARE(iFlagsAtPause, -1);
}

void TestStillImages::an_older_and_longer_file_is_replaced()
{
    QVERIFY(fill(file("a.bmp"), QByteArray(2000000, 'x')));
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    QCOMPARE(QFileInfo(file("a.bmp")).size(), qint64(1658934));
}

void TestStillImages::the_length_decides_whether_a_file_loads_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("result");
    const int FAILS = CMultimediaPlatform::eImageOpResultFileReadError;
    const int LOADS = CMultimediaPlatform::eImageOpResultOk;
    for (const int iLength : {0, 1, 53, 54, 55, 54 + IMAGE_BYTES - 2, 54 + IMAGE_BYTES - 1})
        QTest::addRow("%d", iLength) << iLength << FAILS;
    for (const int iMore : {0, 1, 2, 4096})
        QTest::addRow("whole and %d", iMore) << 54 + IMAGE_BYTES + iMore << LOADS;
}

void TestStillImages::the_length_decides_whether_a_file_loads()
{
    QFETCH(int, length);
    QFETCH(int, result);
    const QByteArray cBefore = storedImage();
    QVERIFY(fill(file("a.bmp"), QByteArray(length, 'p')));
    QCOMPARE(int(CMultimediaPlatform::loadVideoImage(file("a.bmp"))), result);
    const bool bLoaded = result == CMultimediaPlatform::eImageOpResultOk;
    QCOMPARE(storedImage() == cBefore, !bLoaded);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), bLoaded ? RESTORE : 0U);
    if (bLoaded)
        QCOMPARE(storedImage().left(IMAGE_BYTES - LINE_BYTES), QByteArray(IMAGE_BYTES - LINE_BYTES, 'p'));
}

void TestStillImages::the_header_is_not_looked_at()
{
    QVERIFY(fill(file("a.txt"), QByteArray(54, '\xff') + QByteArray(IMAGE_BYTES, 'q')));
    QCOMPARE(CMultimediaPlatform::loadVideoImage(file("a.txt")), CMultimediaPlatform::eImageOpResultOk);
    QCOMPARE(storedImage().left(LINE_BYTES), QByteArray(LINE_BYTES, 'q'));
}

void TestStillImages::places_that_can_not_be_opened_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << QString();
    QTest::newRow("no such folder") << QStringLiteral("none/a.bmp");
    QTest::newRow("a folder") << QStringLiteral("folder");
    QTest::newRow("below a file") << QStringLiteral("plain/a.bmp");
    QTest::newRow("a link to itself") << QStringLiteral("loop");
    QTest::newRow("a FIFO") << QStringLiteral("fifo");
    QTest::newRow("a socket") << QStringLiteral("socket");
    QTest::newRow("too long") << QString(4096, QLatin1Char('x'));
}

void TestStillImages::places_that_can_not_be_opened()
{
    QFETCH(QString, name);
    QVERIFY(QDir(m_pcFolder->path()).mkdir(QStringLiteral("folder")));
    QVERIFY(fill(file("plain"), "x"));
    QVERIFY(QFile::link(QStringLiteral("loop"), file("loop")));
    QCOMPARE(mkfifo(qPrintable(file("fifo")), 0600), 0);
    QCOMPARE(mknod(qPrintable(file("socket")), S_IFSOCK | 0600, 0), 0);
    const QByteArray cBefore = storedImage();
    const QString cPath = name.isEmpty() ? name : m_pcFolder->filePath(name);
    QCOMPARE(CMultimediaPlatform::loadVideoImage(cPath), CMultimediaPlatform::eImageOpResultFileOpenError);
    QCOMPARE(CMultimediaPlatform::saveVideoImage(cPath), CMultimediaPlatform::eImageOpResultFileOpenError);
    QCOMPARE(storedImage(), cBefore);
    QCOMPARE((*m_pcBoard)->fpgaRegister(FPGA_CTRL), 0U);
    QCOMPARE(contents(file("plain")), QByteArray("x"));
}

// It would take some kilobytes of a picture, and return only a user's typing.
void TestStillImages::a_terminal_that_nobody_reads_can_not_be_opened()
{
    int iMaster = -1;
    int iSlave = -1;
    char aName[64];
    QCOMPARE(openpty(&iMaster, &iSlave, aName, nullptr, nullptr), 0);
    for (const char* pszPath : {static_cast<const char*>(aName), "/dev/ptmx"}) {
        const QString cPath = QString::fromLatin1(pszPath);
        QCOMPARE(CMultimediaPlatform::loadVideoImage(cPath),
                 CMultimediaPlatform::eImageOpResultFileOpenError);
        QCOMPARE(CMultimediaPlatform::saveVideoImage(cPath),
                 CMultimediaPlatform::eImageOpResultFileOpenError);
    }
    ::close(iSlave);
    ::close(iMaster);
}

// The name leads to a file and to a FIFO by turns: sooner or later it changes between two checks.
void TestStillImages::a_fifo_that_comes_between_is_not_waited_for()
{
    const QByteArray cName = QFile::encodeName(file("a.bmp"));
    const QByteArray cFifo = QFile::encodeName(file("fifo"));
    QVERIFY(fill(file("a.bmp"), "short"));
    QCOMPARE(mkfifo(cFifo.constData(), 0600), 0);
    std::atomic<int> iLeft(20000);
    std::thread cSwapper([&] {
        for (; iLeft > 0; --iLeft)
            renameat2(AT_FDCWD, cName.constData(), AT_FDCWD, cFifo.constData(), RENAME_EXCHANGE);
    });
    int iFifos = 0;
    int iFiles = 0;
    while (iLeft > 0) {
        const bool bOpened = CMultimediaPlatform::loadVideoImage(file("a.bmp")) !=
                             CMultimediaPlatform::eImageOpResultFileOpenError;
        ++(bOpened ? iFiles : iFifos);
    }
    cSwapper.join();
    QVERIFY(iFifos > 0 && iFiles > 0);
}

// A lease: without O_NONBLOCK the kernel waits for its holder, for 45 s if that does nothing.
void TestStillImages::a_file_whose_opening_would_wait_can_not_be_opened()
{
    std::signal(SIGIO, SIG_IGN); // the notification of the holder
    QVERIFY(fill(file("a.bmp"), QByteArray(54 + IMAGE_BYTES, 'p')));
    const int iHolder = ::open(qPrintable(file("a.bmp")), O_RDWR | O_CLOEXEC);
    QCOMPARE(fcntl(iHolder, F_SETLEASE, F_WRLCK), 0);
    QCOMPARE(CMultimediaPlatform::loadVideoImage(file("a.bmp")),
             CMultimediaPlatform::eImageOpResultFileOpenError);
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")),
             CMultimediaPlatform::eImageOpResultFileOpenError);
    ::close(iHolder);
    QCOMPARE(CMultimediaPlatform::loadVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
}

// The kernel's log says that it is a regular file, and waits if it has no message. Not every user may open
// it.
void TestStillImages::a_file_whose_reading_would_wait_can_not_be_read()
{
    const QString cLog = QStringLiteral("/proc/kmsg");
    const int iAllowed = ::open("/proc/kmsg", O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    QCOMPARE(CMultimediaPlatform::loadVideoImage(cLog),
             iAllowed < 0 ? CMultimediaPlatform::eImageOpResultFileOpenError
                          : CMultimediaPlatform::eImageOpResultFileReadError);
    ::close(iAllowed);
}

// Qt would look for it among the program's resources.
void TestStillImages::a_name_has_no_meaning_but_as_a_path()
{
    const QString cBefore = QDir::currentPath();
    QCOMPARE(mkdir(qPrintable(m_pcFolder->path() + QStringLiteral("/:")), 0700), 0);
    QVERIFY(QDir::setCurrent(m_pcFolder->path()));
    const QString cName = QStringLiteral(":/a.bmp");
    const CMultimediaPlatform::EImageOpResult eSaved = CMultimediaPlatform::saveVideoImage(cName);
    const CMultimediaPlatform::EImageOpResult eLoaded = CMultimediaPlatform::loadVideoImage(cName);
    QVERIFY(QDir::setCurrent(cBefore));
    QCOMPARE(eSaved, CMultimediaPlatform::eImageOpResultOk);
    QCOMPARE(eLoaded, CMultimediaPlatform::eImageOpResultOk);
}

void TestStillImages::a_link_to_nothing_is_saved_behind_it()
{
    QVERIFY(QFile::link(QStringLiteral("behind"), file("a.bmp")));
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    QVERIFY(QFileInfo(file("a.bmp")).isSymLink());
    QCOMPARE(QFileInfo(file("behind")).size(), qint64(1658934));
}

// Permission bits of a file; ~0 without one.
static uint modeOf(const QString& rcPath)
{
    struct stat sStat = {};
    return stat(qPrintable(rcPath), &sStat) == 0 ? sStat.st_mode & 07777 : ~0U;
}

void TestStillImages::a_new_file_has_its_mode_whatever_the_umask_data()
{
    QTest::addColumn<uint>("mask");
    QTest::newRow("of a detached daemon") << 0U;
    QTest::newRow("the usual one") << 0022U;
    QTest::newRow("one that takes all from the others") << 0077U;
}

void TestStillImages::a_new_file_has_its_mode_whatever_the_umask()
{
    QFETCH(uint, mask);
    const mode_t iBefore = umask(mask);
    const CMultimediaPlatform::EImageOpResult eResult = CMultimediaPlatform::saveVideoImage(file("a.bmp"));
    const mode_t iAfter = umask(iBefore);
    QCOMPARE(eResult, CMultimediaPlatform::eImageOpResultOk);
    QCOMPARE(modeOf(file("a.bmp")), 0644U);
    QCOMPARE(uint(iAfter), mask);
}

void TestStillImages::an_older_file_keeps_its_mode()
{
    QVERIFY(fill(file("a.bmp"), "old"));
    QCOMPARE(chmod(qPrintable(file("a.bmp")), 0600), 0);
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    QCOMPARE(modeOf(file("a.bmp")), 0600U);
}

void TestStillImages::a_full_disk_is_a_write_error()
{
    QCOMPARE(CMultimediaPlatform::saveVideoImage(QStringLiteral("/dev/full")),
             CMultimediaPlatform::eImageOpResultFileWriteError);
}

void TestStillImages::without_memory_no_file_is_touched()
{
    QVERIFY(fill(file("a.bmp"), "old"));
    {
        failing_malloc cNoMemory;
        QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")),
                 CMultimediaPlatform::eImageOpResultHardwareError);
    }
    QCOMPARE(contents(file("a.bmp")), QByteArray("old"));
}

// Neither to the file nor to the stored picture.
void TestStillImages::without_memory_for_a_picture_nothing_happens()
{
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    QVERIFY(fill(file("b.bmp"), "old"));
    const QByteArray cStored = storedImage();
    (*m_pcBoard)->setCamera(CTestPicture::frame(40));
    CMultimediaPlatform::freezeVideoPicture(false);
    const QByteArray cOther = storedImage();
    QVERIFY(cOther != cStored);

    s_bPicturesFit = false;
    const auto eSaved = CMultimediaPlatform::saveVideoImage(file("b.bmp"));
    const auto eLoaded = CMultimediaPlatform::loadVideoImage(file("a.bmp"));
    s_bPicturesFit = true;
    QCOMPARE(eSaved, CMultimediaPlatform::eImageOpResultHardwareError);
    QCOMPARE(contents(file("b.bmp")), QByteArray("old"));
    QCOMPARE(eLoaded, CMultimediaPlatform::eImageOpResultFileReadError);
    QCOMPARE(storedImage(), cOther);
}

void TestStillImages::a_device_that_can_not_be_read_saves_black()
{
    (*m_pcBoard)->setFault({BOARD_OPERATION_FPGA_READ});
    QCOMPARE(CMultimediaPlatform::saveVideoImage(file("a.bmp")), CMultimediaPlatform::eImageOpResultOk);
    QCOMPARE(contents(file("a.bmp")).mid(54), QByteArray(IMAGE_BYTES, '\0'));
}

QTEST_GUILESS_MAIN(TestStillImages)

#include "tst_still_images.moc"
