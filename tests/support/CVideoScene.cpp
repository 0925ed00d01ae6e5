/* SPDX-License-Identifier: MIT */
#include "tests/support/CVideoScene.h"

#include <QFile>

using namespace VideoResult;

const QString CVideoScene::PATH = QStringLiteral("/videoprocessing");
const QString CVideoScene::INTERFACE = QStringLiteral("velmar.haldend.videoprocessing");

const CVideoScene::SCommand CVideoScene::COMMANDS[11] = {
    {"save_video_image",       true },
    {"display_video_image",    true },
    {"clear_video_image",      false},
    {"start_video_recording",  true },
    {"pause_video_recording",  false},
    {"resume_video_recording", false},
    {"stop_video_recording",   false},
    {"start_video_playback",   true },
    {"pause_video_playback",   false},
    {"resume_video_playback",  false},
    {"stop_video_playback",    false},
};

bool CVideoScene::start()
{
    return (board().isOpen() || prepare()) && startCodec() && CScene::start() &&
           daemon().client().connect(QStringLiteral("velmar.haldend"), PATH, INTERFACE, QString(), this,
                                     SLOT(onSignal(QDBusMessage)));
}

QString CVideoScene::end()
{
    QString cWrong = CScene::end();
    m_cCodec.end();
    return cWrong;
}

bool CVideoScene::startCodec()
{
    return m_cCodec.start(bus().address(), board().directory());
}

static QVariantList arguments(const QString& rcFile)
{
    return rcFile.isNull() ? QVariantList() : QVariantList{rcFile};
}

int CVideoScene::call(const char* pszMethod, const QString& rcFile)
{
    return answerTo(ask(pszMethod, rcFile));
}

QDBusPendingCall CVideoScene::ask(const char* pszMethod, const QString& rcFile)
{
    return daemon().ask(PATH, QString::fromLatin1(pszMethod), arguments(rcFile));
}

int CVideoScene::answerTo(QDBusPendingCall cAsked)
{
    cAsked.waitForFinished();
    const QDBusMessage cReply = cAsked.reply();
    return cReply.type() == QDBusMessage::ReplyMessage ? cReply.arguments().value(0).toInt() : -1;
}

bool CVideoScene::is(const char* pszMethod)
{
    return daemon().call(PATH, QString::fromLatin1(pszMethod)).arguments().value(0).toBool();
}

QStringList CVideoScene::notRefused(const QStringList& rcLeftOut)
{
    QStringList cNames;
    for (const SCommand& rsCommand : COMMANDS) {
        const QString cName = QString::fromLatin1(rsCommand.pszName);
        if (!rcLeftOut.contains(cName) &&
            call(rsCommand.pszName, rsCommand.bFile ? file("other") : QString()) != INVALID_STATE)
            cNames << cName;
    }
    return cNames;
}

bool CVideoScene::enterState(EState eState)
{
    QFile cFilm(file("film.ts"));
    if (!cFilm.open(QIODevice::WriteOnly))
        return false;
    bool bDone = true;
    if (eState == RECORDING || eState == RECORDING_PAUSED || eState == IMAGE_RECORDING_PAUSED)
        bDone = call("start_video_recording", cFilm.fileName()) == OK;
    if (eState == RECORDING_PAUSED || eState == IMAGE_RECORDING_PAUSED)
        bDone = bDone && call("pause_video_recording") == OK;
    if (eState == PLAYBACK || eState == PLAYBACK_PAUSED)
        bDone = call("start_video_playback", cFilm.fileName()) == OK;
    if (eState == PLAYBACK_PAUSED)
        bDone = bDone && call("pause_video_playback") == OK;
    if (eState == IMAGE || eState == IMAGE_RECORDING_PAUSED)
        bDone = bDone && call("display_video_image", file("none.bmp")) == FILE_OPEN_ERROR;
    if (eState == FAILED) {
        board().setCodecMode(BOARD_CODEC_REFUSE);
        bDone = call("start_video_recording", cFilm.fileName()) == ERROR;
        board().setCodecMode(BOARD_CODEC_OK);
    }
    return bDone;
}

QByteArray CVideoScene::describe()
{
    return CScene::describe() + m_cCodec.describe();
}

void CVideoScene::onSignal(const QDBusMessage& rcMessage)
{
    m_cSignalled
        << QStringLiteral("%1 %2").arg(rcMessage.member()).arg(rcMessage.arguments().value(0).toInt());
}
