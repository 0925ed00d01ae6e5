/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CVIDEOSCENE_H
#define HALDEND_TESTS_CVIDEOSCENE_H

#include "tests/support/CCodecProcess.h"
#include "tests/support/CScene.h"
#include "tests/support/SVideoStates.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QObject>
#include <QTemporaryDir>

/// What the commands answer, and what comes with the signals.
namespace VideoResult
{
const int OK = 0;
const int ERROR = 1;
const int INVALID_STATE = 2;
const int FILE_OPEN_ERROR = 3;
const int FILE_READ_ERROR = 4;
const int FILE_WRITE_ERROR = 5;
const int MAX_LENGTH_REACHED = 6;
} // namespace VideoResult

/// A scene for "/videoprocessing": beside the daemon the codec stand-in, a folder for films and images, and an ear
/// for the signals.
///
///     CVideoScene cScene;
///     QVERIFY2(cScene.start(), cScene.describe());
///     QVERIFY(cScene.enterState(CVideoScene::RECORDING));
///     QCOMPARE(cScene.call("save_video_image", cScene.file("a.bmp")), VideoResult::OK);
///     QTRY_COMPARE(cScene.signalled(), QStringList{"video_image_saved 0"});
class CVideoScene : public QObject, public CScene, public SVideoStates
{
    Q_OBJECT

public:
    /// A command, and whether it names a file.
    struct SCommand {
        const char* pszName;
        bool bFile;
    };
    static const SCommand COMMANDS[11];

    /// Bus, board, codec and daemon up. False if not; describe() says why.
    bool start();

    /// As that of a scene; then the codec ends too.
    QString end();

    /// The codec stand-in to the bus, also once more after its end.
    bool startCodec();
    CCodecProcess& codec() { return m_cCodec; }

    /// Calls a method, with a file name if there is one. Its integer, or -1 if it answered with an error.
    int call(const char* pszMethod, const QString& rcFile = QString());

    /// The same without waiting for the answer, and what the answer was.
    QDBusPendingCall ask(const char* pszMethod, const QString& rcFile = QString());
    static int answerTo(QDBusPendingCall cAsked);

    /// Asks one of the methods that say what is going on.
    bool is(const char* pszMethod);

    /// The commands that answer something else than INVALID_STATE; those left out aren't tried. The file that is
    /// named to them is "other".
    QStringList notRefused(const QStringList& rcLeftOut = QStringList());

    /// By the commands that lead there from IDLE, with the file "film.ts", which exists then, whatever the state.
    /// False if one of them doesn't answer as it should.
    bool enterState(EState eState);

    /// Path of a file in the folder.
    QString file(const char* pszName) const { return m_cFiles.filePath(QString::fromUtf8(pszName)); }

    /// The signals that came, as "video_image_saved 0", in order.
    QStringList signalled() const { return m_cSignalled; }
    void forgetSignals() { m_cSignalled.clear(); }

    QByteArray describe();

    static const QString PATH;
    static const QString INTERFACE;

private slots:
    void onSignal(const QDBusMessage& rcMessage);

private:
    QTemporaryDir m_cFiles;
    CCodecProcess m_cCodec;
    QStringList m_cSignalled;
};

#endif
