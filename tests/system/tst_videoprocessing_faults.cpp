/* SPDX-License-Identifier: MIT */
/* "/videoprocessing" when the codec service, the file system, the decoder or a client fails. */
#include "tests/support/CRawBusClient.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Timeouts.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QtTest>

#include <climits>
#include <csignal>
#include <functional>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <pty.h>
#include <sys/stat.h>
#include <unistd.h>

class TestVideoProcessingFaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void a_codec_that_fails_ends_in_the_error_data();
    void a_codec_that_fails_ends_in_the_error();
    void a_codec_that_comes_back_is_used();
    void a_codec_that_comes_back_knows_nothing_data();
    void a_codec_that_comes_back_knows_nothing();
    void a_codec_that_fails_around_an_image_save_ends_in_the_error();

    void a_recording_whose_file_does_not_change_ends_in_the_error();
    void a_file_that_can_not_be_made_ends_in_the_error_data();
    void a_file_that_can_not_be_made_ends_in_the_error();
    void the_longest_path_is_recorded_to();
    void a_text_that_is_no_utf8_drops_its_sender();

    void an_image_that_can_not_be_saved_is_reported_data();
    void an_image_that_can_not_be_saved_is_reported();
    void an_image_that_can_not_be_loaded_is_reported_data();
    void an_image_that_can_not_be_loaded_is_reported();
    void images_of_about_the_right_length_data();
    void images_of_about_the_right_length();

    void a_decoder_that_can_not_be_read_has_no_signal();
    void a_decoder_that_fails_once_while_the_input_is_off_leaves_the_sync_alone();
    void a_decoder_that_can_not_be_read_at_the_start_has_no_signal();

private:
    int call(const char* pszMethod, const QString& rcFile = QString())
    {
        return m_pcScene->call(pszMethod, rcFile);
    }
    bool is(const char* pszMethod) { return m_pcScene->is(pszMethod); }
    QString file(const char* pszName) const { return m_pcScene->file(pszName); }
    quint32 control() const { return m_pcScene->board().fpgaRegister(0xff0000); }
    QString placeOf(const QString& rcName) const;
    void makeFilesThatWait();
    void closeFilesThatWait();
    QByteArray storedPicture() const { return m_pcScene->board().fpgaMemory(0x1000000, 4 * 720 * 576); }
    bool isBackIn(CVideoScene::EState eState);

    QScopedPointer<CVideoScene> m_pcScene;
    QString m_cTerminal;
    std::vector<int> m_cDescriptors; ///< of the files that wait
};

Q_DECLARE_METATYPE(CVideoScene::EState)

using namespace VideoResult;

static const quint32 FRAME_GENERATOR = 0x00800000;
static const quint32 STORED_PICTURE = 0x00100010;
static const quint32 PLAY_MODE = 0x03000000;

static const qint64 IMAGE_BYTES = 54 + 4 * 720 * 576;

static const QString RECORD_PAUSE = QStringLiteral("/Record pause interface=-");
static const QString RECORD_RESUME = QStringLiteral("/Record resume interface=-");

// The kinds of files that fail, even for root.
static const QString NO_FOLDER = QStringLiteral("no such folder");
static const QString FOLDER = QStringLiteral("a folder");
static const QString UNWRITABLE = QStringLiteral("a folder that can't be written");
static const QString EMPTY = QStringLiteral("an empty name");
static const QString TOO_LONG = QStringLiteral("4,096 characters");
static const QString NAME_TOO_LONG = QStringLiteral("a name of 256 characters");
static const QString UNREADABLE = QStringLiteral("a file that can't be read");
static const QString FULL_DISK = QStringLiteral("a full disk");

// The kinds of files that would make the daemon wait, for ever or for most of a minute.
static const QString FIFO = QStringLiteral("a FIFO");
static const QString TERMINAL = QStringLiteral("a terminal that nobody reads");
static const QString LEASED = QStringLiteral("a file that waits when it is opened");
static const QString KERNEL_LOG = QStringLiteral("a file that waits when it is read");

// A path of exactly that many characters, with a valid name for each of its folders.
static QString pathOfLength(const QString& rcFolder, int iLength)
{
    QString cPath = rcFolder;
    while (iLength - cPath.size() > 250)
        cPath += QLatin1Char('/') + QString(200, QLatin1Char('x'));
    return cPath + QLatin1Char('/') + QString(iLength - cPath.size() - 1, QLatin1Char('y'));
}

QString TestVideoProcessingFaults::placeOf(const QString& rcName) const
{
    const QString cFolder = QFileInfo(file("a")).path();
    const QString cTooLong = pathOfLength(cFolder, PATH_MAX);
    const QString cLongName = cFolder + QLatin1Char('/') + QString(256, QLatin1Char('x'));
    const QHash<QString, QString> cPlaces = {
        {NO_FOLDER,     file("none/a")                  },
        {FOLDER,        cFolder                         },
        {UNWRITABLE,    QStringLiteral("/proc/a")       },
        {EMPTY,         QStringLiteral("")              },
        {TOO_LONG,      cTooLong                        },
        {NAME_TOO_LONG, cLongName                       },
        {UNREADABLE,    QStringLiteral("/proc/self/mem")},
        {FULL_DISK,     QStringLiteral("/dev/full")     },
        {FIFO,          file("fifo")                    },
        {TERMINAL,      m_cTerminal                     },
        {LEASED,        file("leased")                  },
        {KERNEL_LOG,    QStringLiteral("/proc/kmsg")    },
    };
    return cPlaces.value(rcName);
}

void TestVideoProcessingFaults::makeFilesThatWait()
{
    QCOMPARE(mkfifo(qPrintable(file("fifo")), 0600), 0);

    int iMaster = -1;
    int iSlave = -1;
    char aName[64];
    QCOMPARE(openpty(&iMaster, &iSlave, aName, nullptr, nullptr), 0);
    m_cTerminal = QString::fromLatin1(aName);

    // An open() notifies its holder, and waits until the holder releases it.
    std::signal(SIGIO, SIG_IGN);
    const int iHolder = open(qPrintable(file("leased")), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    QCOMPARE(fcntl(iHolder, F_SETLEASE, F_WRLCK), 0);
    m_cDescriptors = {iMaster, iSlave, iHolder};
}

void TestVideoProcessingFaults::closeFilesThatWait()
{
    for (const int iDescriptor : m_cDescriptors)
        close(iDescriptor);
    m_cDescriptors.clear();
}

// Leaves the state by a command that no other state allows.
bool TestVideoProcessingFaults::isBackIn(CVideoScene::EState eState)
{
    if (eState == CVideoScene::IDLE)
        return call("start_video_recording", file("next.ts")) == OK;
    return call(eState == CVideoScene::RECORDING ? "pause_video_recording" : "resume_video_recording") == OK;
}

void TestVideoProcessingFaults::init()
{
    m_pcScene.reset(new CVideoScene);
    QVERIFY2(m_pcScene->start(), m_pcScene->describe());
}

void TestVideoProcessingFaults::cleanup()
{
    closeFilesThatWait();
    QCOMPARE(m_pcScene->end(), QString());
}

// The codec's ways to fail.
enum EFailure { REFUSES, DIES, ABSENT };
Q_DECLARE_METATYPE(EFailure)

static void letFail(CVideoScene& rcScene, EFailure eFailure)
{
    if (eFailure == ABSENT)
        rcScene.codec().end();
    else
        rcScene.board().setCodecMode(eFailure == DIES ? BOARD_CODEC_DIE : BOARD_CODEC_REFUSE);
}

static bool letWork(CVideoScene& rcScene, EFailure eFailure)
{
    rcScene.board().setCodecMode(BOARD_CODEC_OK);
    return eFailure == REFUSES || (rcScene.codec().waitForEnd() && rcScene.startCodec());
}

void TestVideoProcessingFaults::a_codec_that_fails_ends_in_the_error_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::addColumn<QByteArray>("command");
    QTest::addColumn<EFailure>("failure");
    QTest::addColumn<quint32>("control");
    using Scene = CVideoScene;
    const struct {
        Scene::EState eState;
        const char* pszCommand;
        quint32 u32Control; // the platform's mode isn't undone
    } asRows[] = {
        {Scene::IDLE,             "start_video_recording",  0        },
        {Scene::RECORDING,        "pause_video_recording",  0        },
        {Scene::RECORDING_PAUSED, "resume_video_recording", 0        },
        {Scene::RECORDING,        "stop_video_recording",   0        },
        {Scene::RECORDING_PAUSED, "stop_video_recording",   0        },
        {Scene::IDLE,             "start_video_playback",   PLAY_MODE},
        {Scene::PLAYBACK,         "pause_video_playback",   PLAY_MODE},
        {Scene::PLAYBACK_PAUSED,  "resume_video_playback",  PLAY_MODE},
        {Scene::PLAYBACK,         "stop_video_playback",    0        },
        {Scene::PLAYBACK_PAUSED,  "stop_video_playback",    0        },
    };
    for (const auto& rsRow : asRows) {
        const QByteArray cName =
            rsRow.pszCommand + QByteArray(" in state ") + QByteArray::number(rsRow.eState);
        const auto cAdd = [&](const char* pszFailure, EFailure eFailure) {
            QTest::addRow("%s, %s", cName.constData(), pszFailure)
                << rsRow.eState << QByteArray(rsRow.pszCommand) << eFailure << rsRow.u32Control;
        };
        cAdd("refused", REFUSES);
        cAdd("dies of it", DIES);
        cAdd("isn't there", ABSENT);
    }
}

// The error is final, even after the codec is back.
void TestVideoProcessingFaults::a_codec_that_fails_ends_in_the_error()
{
    QFETCH(CVideoScene::EState, state);
    QFETCH(QByteArray, command);
    QFETCH(EFailure, failure);
    QFETCH(quint32, control);
    QVERIFY(m_pcScene->enterState(state));
    letFail(*m_pcScene, failure);
    QCOMPARE(call(command, command.startsWith("start") ? file("film.ts") : QString()), ERROR);
    QVERIFY(letWork(*m_pcScene, failure));
    m_pcScene->board().clearCodecCalls();
    QCOMPARE(m_pcScene->notRefused(), QStringList());
    QCOMPARE(m_pcScene->board().codecCalls(), QStringList());
    QCOMPARE(this->control(), control);
    for (const char* pszQuestion : {"is_video_recording_running", "is_video_recording_paused",
                                    "is_video_playback_running", "is_video_playback_paused"})
        QVERIFY2(!is(pszQuestion), pszQuestion);
    QCOMPARE(m_pcScene->signalled(), QStringList());
}

// It got no call while it was away.
void TestVideoProcessingFaults::a_codec_that_comes_back_is_used()
{
    for (const bool bAbrupt : {false, true}) {
        QCOMPARE(call("start_video_recording", file("film.ts")), OK);
        QCOMPARE(call("pause_video_recording"), OK);
        QCOMPARE(call("resume_video_recording"), OK);
        QCOMPARE(call("stop_video_recording"), OK);
        if (bAbrupt)
            m_pcScene->codec().process().kill();
        else
            m_pcScene->codec().end();
        QVERIFY(m_pcScene->codec().waitForEnd());
        QVERIFY(m_pcScene->startCodec());
        QCOMPARE(call("start_video_playback", file("film.ts")), OK);
        QCOMPARE(call("pause_video_playback"), OK);
        QCOMPARE(call("resume_video_playback"), OK);
        QCOMPARE(call("stop_video_playback"), OK);
        m_pcScene->codec().end();
        QVERIFY(m_pcScene->startCodec());
    }
}

void TestVideoProcessingFaults::a_codec_that_comes_back_knows_nothing_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("recording") << CVideoScene::RECORDING << QByteArray("stop_video_recording");
    QTest::newRow("recording paused")
        << CVideoScene::RECORDING_PAUSED << QByteArray("resume_video_recording");
    QTest::newRow("playback") << CVideoScene::PLAYBACK << QByteArray("pause_video_playback");
    QTest::newRow("playback paused") << CVideoScene::PLAYBACK_PAUSED << QByteArray("stop_video_playback");
}

// It gets the stop, and answers that nothing runs.
void TestVideoProcessingFaults::a_codec_that_comes_back_knows_nothing()
{
    QFETCH(CVideoScene::EState, state);
    QFETCH(QByteArray, command);
    QVERIFY(m_pcScene->enterState(state));
    m_pcScene->codec().end();
    QVERIFY(m_pcScene->startCodec());
    m_pcScene->board().clearCodecCalls();
    QCOMPARE(call(command), ERROR);
    QCOMPARE(m_pcScene->board().codecCalls().size(), 1);
    QCOMPARE(m_pcScene->notRefused(), QStringList());
}

// Before it, when the recording is paused, or after it, when it is resumed; the image is saved all the same.
// All at once, because each save takes more than a second.
void TestVideoProcessingFaults::a_codec_that_fails_around_an_image_save_ends_in_the_error()
{
    struct SRow {
        const char* pszName;
        bool bBefore;
        EFailure eFailure;
        int iCalls; // of pause and resume, as the codec notes them
    };
    const QStringList cCalls{RECORD_PAUSE, RECORD_RESUME};
    const SRow asRows[] = {
        {"refuses to pause",   true,  REFUSES, 2},
        {"dies of the pause",  true,  DIES,    1},
        {"absent before it",   true,  ABSENT,  0},
        {"refuses to resume",  false, REFUSES, 2},
        {"dies of the resume", false, DIES,    2},
        {"absent after it",    false, ABSENT,  1},
    };
    std::vector<std::unique_ptr<CVideoScene>> cScenes;
    for (const SRow& rsRow : asRows) {
        cScenes.push_back(std::make_unique<CVideoScene>());
        CVideoScene& rcScene = *cScenes.back();
        QVERIFY2(rcScene.start(), rcScene.describe());
        QVERIFY2(rcScene.enterState(CVideoScene::RECORDING), rsRow.pszName);
        rcScene.board().clearCodecCalls();
        if (rsRow.bBefore)
            letFail(rcScene, rsRow.eFailure);
        QVERIFY2(rcScene.call("save_video_image", rcScene.file("a.bmp")) == OK, rsRow.pszName);
        if (!rsRow.bBefore)
            letFail(rcScene, rsRow.eFailure);
    }
    size_t uiScene = 0;
    for (const SRow& rsRow : asRows) {
        CVideoScene& rcScene = *cScenes[uiScene++];
        QTRY_VERIFY2(!rcScene.signalled().isEmpty(), rsRow.pszName);
        QVERIFY2(letWork(rcScene, rsRow.eFailure), rsRow.pszName);
        QVERIFY2(rcScene.signalled() == QStringList{QStringLiteral("video_image_saved 0")}, rsRow.pszName);
        QVERIFY2(QFileInfo(rcScene.file("a.bmp")).size() == IMAGE_BYTES, rsRow.pszName);
        QVERIFY2(rcScene.notRefused().isEmpty(), rsRow.pszName);
        QVERIFY2(rcScene.board().codecCalls() == cCalls.mid(0, rsRow.iCalls), rsRow.pszName);
        const QString cWrong = rcScene.end();
        QVERIFY2(cWrong.isEmpty(), qPrintable(QLatin1String(rsRow.pszName) + cWrong));
    }
}

namespace
{

const int TICK_MS = 5000; // interval of the daemon's checks of the file
const int STEP_MS = 100;  // interval of the tests' changes to it
const qint64 GIB = 1LL << 30;

/// The check of the file that finds a recording stalled: the first, the second, or none.
enum EFound { FIRST_LOOK, SECOND_LOOK, NEVER };

/// A recording whose file the test changes: once it has begun, or repeatedly.
struct SHandled {
    const char* pszName;
    board_codec_mode eMode;
    EFound eFound;
    std::function<bool(QFile& rcFile, int iStep)> fnStep; ///< from 0 on; false if it can't do that
    const char* pszFile;                                  ///< a path, if it isn't one of the scene's
};

bool leave(QFile&, int)
{
    return true;
}

bool removedOnce(QFile& rcFile, int iStep)
{
    return iStep != 0 || rcFile.remove();
}

std::function<bool(QFile&, int)> resizedOnce(qint64 iBytes)
{
    return [iBytes](QFile& rcFile, int iStep) { return iStep != 0 || rcFile.resize(iBytes); };
}

std::function<bool(QFile&, int)> growingFrom(qint64 iBytes)
{
    return [iBytes](QFile& rcFile, int iStep) { return rcFile.resize(iBytes + iStep); };
}

bool shrinking(QFile& rcFile, int iStep)
{
    return rcFile.resize(1000000 - iStep);
}

bool growingBy4GiB(QFile& rcFile, int iStep)
{
    return rcFile.resize((iStep + 1) * 4 * GIB);
}

// The files are sparse. Each is constant or changes between any two checks, so the exact time of the checks
// doesn't matter.
const SHandled HANDLED[] = {
    {"is never made",            BOARD_CODEC_LOSE,  FIRST_LOOK,  leave,                    nullptr    },
    {"never grows",              BOARD_CODEC_STALL, FIRST_LOOK,  leave,                    nullptr    },
    {"is on a full disk",        BOARD_CODEC_OK,    FIRST_LOOK,  leave,                    "/dev/full"},
    {"is deleted",               BOARD_CODEC_OK,    FIRST_LOOK,  removedOnce,              nullptr    },
    {"grows before one look",    BOARD_CODEC_STALL, SECOND_LOOK, resizedOnce(1000),        nullptr    },
    {"stands at 4 GiB",          BOARD_CODEC_STALL, SECOND_LOOK, resizedOnce(4 * GIB),     nullptr    },
    {"stands beyond 2 GiB",      BOARD_CODEC_STALL, SECOND_LOOK, resizedOnce(2 * GIB + 1), nullptr    },
    {"stands beyond 4 GiB",      BOARD_CODEC_STALL, SECOND_LOOK, resizedOnce(4 * GIB + 1), nullptr    },
    {"grows",                    BOARD_CODEC_OK,    NEVER,       leave,                    nullptr    },
    {"grows by a byte",          BOARD_CODEC_STALL, NEVER,       growingFrom(1),           nullptr    },
    {"shrinks",                  BOARD_CODEC_STALL, NEVER,       shrinking,                nullptr    },
    {"grows beyond 2 GiB",       BOARD_CODEC_STALL, NEVER,       growingFrom(2 * GIB),     nullptr    },
    {"grows beyond 4 GiB",       BOARD_CODEC_OK,    NEVER,       resizedOnce(4 * GIB),     nullptr    },
    {"grows by 4 GiB each time", BOARD_CODEC_STALL, NEVER,       growingBy4GiB,            nullptr    },
};

/// One such recording with its scene.
class CHandledRecording
{
public:
    explicit CHandledRecording(const SHandled& rsRow) : m_rsRow(rsRow) {}

    bool start() { return m_cScene.start(); }

    /// False if the recording doesn't run then.
    bool record()
    {
        m_cFile.setFileName(m_rsRow.pszFile != nullptr ? QString::fromLatin1(m_rsRow.pszFile)
                                                       : m_cScene.file("film.ts"));
        m_cScene.board().setCodecMode(m_rsRow.eMode);
        m_cSince.start();
        return m_cScene.call("start_video_recording", m_cFile.fileName()) == OK;
    }

    /// Changes the file, and notes the daemon's signal. False if the file can't be changed so.
    bool step()
    {
        if (!isKnown() && !m_cScene.signalled().isEmpty())
            m_iSaidAfter = m_cSince.elapsed();
        m_bHandled = m_bHandled && (isKnown() || m_rsRow.fnStep(m_cFile, m_iStep++));
        return m_bHandled;
    }

    /// Whether there is nothing left to wait for.
    bool isOver() const
    {
        const int iLonger = m_rsRow.eFound == NEVER ? 5 * STEP_MS : TIMEOUT_CALL_MS;
        return isKnown() || m_cSince.elapsed() > 2 * TICK_MS + iLonger;
    }

    /// Stops it if it still runs; it isn't checked after that.
    void stop()
    {
        m_bRuns = m_cScene.is("is_video_recording_running");
        m_bStopped = m_bRuns && m_cScene.call("stop_video_recording") == OK;
    }

    /// The fault; empty if there is none.
    QString verdict()
    {
        if (!m_bHandled)
            return m_cFile.errorString();
        if (m_rsRow.eFound == NEVER) {
            if (!m_bRuns || !m_bStopped || !m_cScene.signalled().isEmpty())
                return QStringLiteral("ended");
            return m_cScene.end();
        }
        // The second check can't come earlier.
        const bool bSecond = m_iSaidAfter >= 2 * TICK_MS - STEP_MS;
        if (m_iSaidAfter < TICK_MS - STEP_MS || bSecond != (m_rsRow.eFound == SECOND_LOOK))
            return QStringLiteral("found after %1 ms").arg(m_iSaidAfter);
        // Growth comes too late now.
        m_cScene.board().setCodecMode(BOARD_CODEC_OK);
        if (!m_cScene.notRefused().isEmpty())
            return QStringLiteral("goes on");
        if (m_cScene.signalled() != QStringList{QStringLiteral("video_recording_error 1")})
            return m_cScene.signalled().join(QLatin1Char(' '));
        if (m_cScene.board().codecCalls() !=
            QStringList{QStringLiteral("/Record record \"%1\" 3 interface=-").arg(m_cFile.fileName()),
                        QStringLiteral("/Record stop interface=- no-reply")})
            return m_cScene.board().codecCalls().join(QLatin1Char(' '));
        return m_cScene.end();
    }

private:
    bool isKnown() const { return m_iSaidAfter >= 0; }

    const SHandled& m_rsRow;
    CVideoScene m_cScene;
    QFile m_cFile;
    QElapsedTimer m_cSince;
    qint64 m_iSaidAfter = -1;
    int m_iStep = 0;
    bool m_bHandled = true;
    bool m_bRuns = false;
    bool m_bStopped = false;
};

} // namespace

// All at once, because each takes two checks of the file.
void TestVideoProcessingFaults::a_recording_whose_file_does_not_change_ends_in_the_error()
{
    std::vector<std::unique_ptr<CHandledRecording>> cRecordings;
    for (const SHandled& rsRow : HANDLED) {
        cRecordings.push_back(std::make_unique<CHandledRecording>(rsRow));
        QVERIFY2(cRecordings.back()->start(), rsRow.pszName);
    }
    for (size_t i = 0; i < cRecordings.size(); ++i)
        QVERIFY2(cRecordings[i]->record() && cRecordings[i]->step(), HANDLED[i].pszName);
    QTimer cStep;
    QEventLoop cUntilOver;
    connect(&cStep, &QTimer::timeout, &cUntilOver, [&] {
        bool bOver = true;
        for (const auto& rcRecording : cRecordings)
            bOver = (!rcRecording->step() || rcRecording->isOver()) && bOver;
        if (bOver)
            cUntilOver.quit();
    });
    cStep.start(STEP_MS);
    cUntilOver.exec();
    for (const auto& rcRecording : cRecordings)
        rcRecording->stop();
    for (size_t i = 0; i < cRecordings.size(); ++i) {
        const QString cVerdict = cRecordings[i]->verdict();
        QVERIFY2(cVerdict.isEmpty(), qPrintable(QLatin1String(HANDLED[i].pszName) + ": " + cVerdict));
    }
}

void TestVideoProcessingFaults::a_file_that_can_not_be_made_ends_in_the_error_data()
{
    QTest::addColumn<QString>("place");
    for (const QString& rcPlace : {NO_FOLDER, FOLDER, UNWRITABLE, EMPTY, TOO_LONG, NAME_TOO_LONG})
        QTest::newRow(qPrintable(rcPlace)) << rcPlace;
}

// The codec creates the file and answers at once. It gets the whole name, whatever it is.
void TestVideoProcessingFaults::a_file_that_can_not_be_made_ends_in_the_error()
{
    QFETCH(QString, place);
    const QString cPath = placeOf(place);
    QCOMPARE(call("start_video_recording", cPath), ERROR);
    QCOMPARE(m_pcScene->board().codecCalls(),
             QStringList{QStringLiteral("/Record record \"%1\" 3 interface=-").arg(cPath)});
    QCOMPARE(m_pcScene->notRefused(), QStringList());
    QCOMPARE(m_pcScene->signalled(), QStringList());
}

void TestVideoProcessingFaults::the_longest_path_is_recorded_to()
{
    const QString cPath = pathOfLength(QFileInfo(file("a")).path(), PATH_MAX - 1);
    QVERIFY(QDir().mkpath(QFileInfo(cPath).path()));
    QCOMPARE(call("start_video_recording", cPath), OK);
    QTRY_VERIFY(QFileInfo(cPath).size() > 0);
    QVERIFY(is("is_video_recording_running"));
    QCOMPARE(call("stop_video_recording"), OK);
}

// The bus lets no such message through. The daemon never sees it, and serves the next client.
void TestVideoProcessingFaults::a_text_that_is_no_utf8_drops_its_sender()
{
    const QString cAddress = m_pcScene->bus().address();
    const QString cPath = CVideoScene::PATH;
    for (const QByteArray& rcText :
         {QByteArray("\xff"), QByteArray("a\xc3"), QByteArray("\xc0\x80"), QByteArray("\xed\xa0\x80"),
          QByteArray("\xf4\x90\x80\x80"), QByteArray("a\0b", 3)}) {
        for (const char* pszMethod :
             {"start_video_recording", "start_video_playback", "save_video_image", "display_video_image"}) {
            CRawBusClient cClient;
            QVERIFY(cClient.start(cAddress));
            QVERIFY2(!cClient.call(cPath, QString::fromLatin1(pszMethod), rcText), rcText.toHex());
            QVERIFY2(cClient.isDropped(), rcText.toHex());
        }
    }
    QVERIFY(m_pcScene->daemon().settle());
    QCOMPARE(m_pcScene->board().codecCalls(), QStringList());
    // UTF-8 goes the same way and arrives.
    CRawBusClient cClient;
    QVERIFY(cClient.start(cAddress));
    QVERIFY(cClient.call(cPath, QStringLiteral("start_video_recording"), file("\u00e4.ts").toUtf8()));
    QVERIFY(is("is_video_recording_running"));
    QCOMPARE(m_pcScene->board().codecCalls(),
             QStringList{QStringLiteral("/Record record \"%1\" 3 interface=-").arg(file("\u00e4.ts"))});
}

void TestVideoProcessingFaults::an_image_that_can_not_be_saved_is_reported_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::addColumn<QString>("place");
    QTest::addColumn<int>("result");
    for (const CVideoScene::EState eState :
         {CVideoScene::IDLE, CVideoScene::RECORDING, CVideoScene::RECORDING_PAUSED}) {
        for (const QString& rcPlace :
             {NO_FOLDER, FOLDER, UNWRITABLE, EMPTY, TOO_LONG, FIFO, TERMINAL, LEASED})
            QTest::addRow("%s in state %d", qPrintable(rcPlace), eState)
                << eState << rcPlace << FILE_OPEN_ERROR;
        QTest::addRow("%s in state %d", qPrintable(FULL_DISK), eState)
            << eState << FULL_DISK << FILE_WRITE_ERROR;
    }
}

// The command itself succeeds; the signal carries the failure. After it everything is as before.
void TestVideoProcessingFaults::an_image_that_can_not_be_saved_is_reported()
{
    QFETCH(CVideoScene::EState, state);
    QFETCH(QString, place);
    QFETCH(int, result);
    makeFilesThatWait();
    QVERIFY(m_pcScene->enterState(state));
    m_pcScene->board().clearCodecCalls();
    QCOMPARE(call("save_video_image", placeOf(place)), OK);
    QTRY_COMPARE(m_pcScene->signalled(), QStringList{QStringLiteral("video_image_saved %1").arg(result)});
    const bool bRecording = state == CVideoScene::RECORDING;
    QCOMPARE(m_pcScene->board().codecCalls(),
             bRecording ? (QStringList{RECORD_PAUSE, RECORD_RESUME}) : QStringList());
    QCOMPARE(control(), 0U);
    QVERIFY(isBackIn(state));
}

static bool opens(const char* pszPath)
{
    const int iDescriptor = open(pszPath, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    close(iDescriptor);
    return iDescriptor >= 0;
}

void TestVideoProcessingFaults::an_image_that_can_not_be_loaded_is_reported_data()
{
    QTest::addColumn<CVideoScene::EState>("state");
    QTest::addColumn<QString>("place");
    QTest::addColumn<int>("result");
    QTest::addColumn<QString>("said");
    for (const CVideoScene::EState eState : {CVideoScene::IDLE, CVideoScene::RECORDING_PAUSED}) {
        const auto cAdd = [eState](const QString& rcPlace, int iResult, const QString& rcSaid = QString()) {
            QTest::addRow("%s in state %d", qPrintable(rcPlace), eState)
                << eState << rcPlace << iResult << rcSaid;
        };
        cAdd(NO_FOLDER, FILE_OPEN_ERROR);
        cAdd(FOLDER, FILE_OPEN_ERROR);
        cAdd(EMPTY, FILE_OPEN_ERROR);
        cAdd(TOO_LONG, FILE_OPEN_ERROR);
        cAdd(UNREADABLE, FILE_READ_ERROR);
        cAdd(FIFO, FILE_OPEN_ERROR);
        cAdd(TERMINAL, FILE_OPEN_ERROR);
        cAdd(LEASED, FILE_OPEN_ERROR);
        // Not every user may open it.
        cAdd(KERNEL_LOG, opens("/proc/kmsg") ? FILE_READ_ERROR : FILE_OPEN_ERROR);
        cAdd(FULL_DISK, FILE_READ_ERROR,
             QStringLiteral("QIODevice::seek (QFile, \"\"): Cannot call seek on a sequential device"));
    }
}

// The stored picture is shown, until it is cleared.
void TestVideoProcessingFaults::an_image_that_can_not_be_loaded_is_reported()
{
    QFETCH(CVideoScene::EState, state);
    QFETCH(QString, place);
    QFETCH(int, result);
    QFETCH(QString, said);
    if (!said.isEmpty())
        m_pcScene->announce(said);
    makeFilesThatWait();
    QVERIFY(m_pcScene->enterState(state));
    const QByteArray cBefore = storedPicture();
    QCOMPARE(call("display_video_image", placeOf(place)), result);
    QVERIFY(storedPicture() == cBefore);
    QCOMPARE(control(), STORED_PICTURE);
    QCOMPARE(m_pcScene->notRefused({QStringLiteral("clear_video_image")}), QStringList());
    QCOMPARE(call("clear_video_image"), INVALID_STATE);
    QCOMPARE(control(), 0U);
    QVERIFY(isBackIn(state));
    QCOMPARE(m_pcScene->signalled(), QStringList());
}

void TestVideoProcessingFaults::images_of_about_the_right_length_data()
{
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<int>("result");
    for (const qint64 iBytes : {0LL, 53LL, 54LL, 55LL, IMAGE_BYTES - 54, IMAGE_BYTES - 1})
        QTest::addRow("%lld bytes", iBytes) << iBytes << FILE_READ_ERROR;
    for (const qint64 iBytes : {IMAGE_BYTES, IMAGE_BYTES + 1, 2 * IMAGE_BYTES, 4 * GIB + 1})
        QTest::addRow("%lld bytes", iBytes) << iBytes << OK;
}

// Excess bytes aren't read; an incomplete picture isn't shown.
void TestVideoProcessingFaults::images_of_about_the_right_length()
{
    QFETCH(qint64, bytes);
    QFETCH(int, result);
    QFile cImage(file("a.bmp"));
    QVERIFY(cImage.open(QIODevice::WriteOnly));
    QVERIFY(cImage.write(QByteArray(IMAGE_BYTES, 'Z')) == IMAGE_BYTES && cImage.resize(bytes));
    cImage.close();
    const QByteArray cBefore = storedPicture();
    QCOMPARE(call("display_video_image", cImage.fileName()), result);
    QCOMPARE(storedPicture() != cBefore, result == OK);
    QCOMPARE(control(), STORED_PICTURE);
}

static const QString NO_INPUT = QStringLiteral("video_input_type_changed 1");
static const QString INPUT = QStringLiteral("video_input_type_changed 0");

// With a recording, which goes on.
void TestVideoProcessingFaults::a_decoder_that_can_not_be_read_has_no_signal()
{
    QVERIFY(m_pcScene->enterState(CVideoScene::RECORDING));
    CBoard::SFault sFault;
    sFault.eOperation = BOARD_OPERATION_I2C_READ;
    sFault.iError = ENODEV;
    m_pcScene->board().setFault(sFault);
    QTRY_COMPARE(m_pcScene->signalled(), QStringList{NO_INPUT});
    QCOMPARE(control(), FRAME_GENERATOR);
    QCOMPARE(call("get_video_input_type"), 1);
    QVERIFY(is("is_video_input_available"));
    QVERIFY(is("is_video_recording_running"));
    m_pcScene->board().clearFaults();
    QTRY_COMPARE(m_pcScene->signalled(), (QStringList{NO_INPUT, INPUT}));
    QCOMPARE(control(), 0U);
    QCOMPARE(call("get_video_input_type"), 0);
    QVERIFY(is("is_video_recording_running"));
}

void TestVideoProcessingFaults::a_decoder_that_fails_once_while_the_input_is_off_leaves_the_sync_alone()
{
    CDaemonProcess& rcDaemon = m_pcScene->daemon();
    rcDaemon.send(CVideoScene::PATH, QStringLiteral("set_video_input_enabled"), {0});
    QVERIFY(rcDaemon.settle());
    QCOMPARE(control(), FRAME_GENERATOR);
    m_pcScene->board().setTracing(true);
    CBoard::SFault sFault;
    sFault.eOperation = BOARD_OPERATION_I2C_READ;
    sFault.u32Count = 1;
    m_pcScene->board().setFault(sFault);
    QTRY_COMPARE(m_pcScene->signalled(), (QStringList{NO_INPUT, INPUT}));
    QCOMPARE(m_pcScene->board().traceLines().filter(QStringLiteral("fpga")), QStringList());
    rcDaemon.send(CVideoScene::PATH, QStringLiteral("set_video_input_enabled"), {-1});
    QVERIFY(rcDaemon.settle());
    QCOMPARE(control(), 0U);
}

void TestVideoProcessingFaults::a_decoder_that_can_not_be_read_at_the_start_has_no_signal()
{
    CVideoScene cScene;
    QVERIFY2(cScene.prepare(), cScene.describe());
    CBoard::SFault sFault;
    sFault.eOperation = BOARD_OPERATION_I2C_READ;
    cScene.board().setFault(sFault);
    QVERIFY2(cScene.start(), cScene.describe());
    QCOMPARE(cScene.board().fpgaRegister(0xff0000), FRAME_GENERATOR);
    QCOMPARE(cScene.call("get_video_input_type"), 1);
    cScene.board().clearFaults();
    QTRY_COMPARE(cScene.signalled(), QStringList{INPUT});
    QCOMPARE(cScene.board().fpgaRegister(0xff0000), 0U);
    QCOMPARE(cScene.end(), QString());
}

QTEST_GUILESS_MAIN(TestVideoProcessingFaults)

#include "tst_videoprocessing_faults.moc"
