/* SPDX-License-Identifier: MIT */
#include "board/codec/CCodecService.h"

#include "board/state/CBoard.h"
#include "board/state/CPlaybackFile.h"

#include <QDBusError>
#include <QTimer>

#include <cstdlib>

struct CCodecService::SMethod {
    const char* pszPath;
    const char* pszName;
    const char* pszSignature;
    CCodec::ECommand eCommand;
};

const CCodecService::SMethod CCodecService::METHODS[] = {
    {"/Record", "record", "si", CCodec::RECORD          },
    {"/Record", "pause",  "",   CCodec::PAUSE_RECORDING },
    {"/Record", "resume", "",   CCodec::RESUME_RECORDING},
    {"/Record", "stop",   "",   CCodec::STOP_RECORDING  },
    {"/Play",   "play",   "s",  CCodec::PLAY            },
    {"/Play",   "pause",  "",   CCodec::PAUSE_PLAYBACK  },
    {"/Play",   "resume", "",   CCodec::RESUME_PLAYBACK },
    {"/Play",   "stop",   "",   CCodec::STOP_PLAYBACK   },
};

namespace
{

const QString SERVICE = QStringLiteral("velmar.mobilygen");
const QString FAILED = QStringLiteral("velmar.mobilygen.Failed");

/// The argument as text; strings in quotes and on one line.
QString written(const QVariant& rcArgument)
{
    QString cText = rcArgument.toString();
    if (rcArgument.type() != QVariant::String)
        return cText;
    cText.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    cText.replace(QLatin1Char('"'), QLatin1String("\\\""));
    cText.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    return QLatin1Char('"') + cText + QLatin1Char('"');
}

QString lineOf(const QDBusMessage& rcMessage)
{
    QStringList cWords{rcMessage.path(), rcMessage.member()};
    for (const QVariant& rcArgument : rcMessage.arguments())
        cWords << written(rcArgument);
    // A message can't carry an empty name: an empty one here means no name.
    cWords << QStringLiteral("interface=") +
                  (rcMessage.interface().isEmpty() ? QStringLiteral("-") : rcMessage.interface());
    if (!rcMessage.isReplyRequired())
        cWords << QStringLiteral("no-reply");
    return cWords.join(QLatin1Char(' '));
}

} // namespace

CCodecService::CCodecService(CBoard& rcBoard, bool bVideo)
    : m_rcBoard(rcBoard), m_cCodec(rcBoard, bVideo), m_cConnection(QDBusConnection::systemBus())
{
}

bool CCodecService::start(QString& rcError)
{
    if (m_cConnection.registerVirtualObject(QStringLiteral("/Record"), this) &&
        m_cConnection.registerVirtualObject(QStringLiteral("/Play"), this) &&
        m_cConnection.registerService(SERVICE)) {
        // The state that an earlier stand-in left on the board is over. A second stand-in never comes here.
        const bool bStored = m_rcBoard.setCodecState(SCodecState());
        CPlaybackFile::remove(m_rcBoard);
        return bStored && m_rcBoard.claimCodec();
    }
    const QString cReason = m_cConnection.lastError().message();
    rcError = SERVICE + QStringLiteral(": ") +
              (cReason.isEmpty() ? QStringLiteral("the name has an owner already") : cReason);
    return false;
}

QString CCodecService::introspect(const QString& /*rcPath*/) const
{
    return QString();
}

bool CCodecService::handleMessage(const QDBusMessage& rcMessage, const QDBusConnection& /*rcConnection*/)
{
    // Qt answers for the interfaces that every object has.
    if (rcMessage.interface().startsWith(QLatin1String("org.freedesktop.DBus.")))
        return false;
    m_rcBoard.noteCodecCall(lineOf(rcMessage));
    for (const SMethod& rsMethod : METHODS) {
        if (rcMessage.path() != QLatin1String(rsMethod.pszPath) ||
            rcMessage.member() != QLatin1String(rsMethod.pszName) ||
            rcMessage.signature() != QLatin1String(rsMethod.pszSignature))
            continue;
        const auto iDelay = static_cast<int>(m_rcBoard.codecDelay());
        QTimer::singleShot(iDelay, Qt::PreciseTimer, this,
                           [this, &rsMethod, rcMessage] { answer(rsMethod, rcMessage); });
        return true;
    }
    return false;
}

void CCodecService::answer(const SMethod& rsMethod, const QDBusMessage& rcMessage)
{
    const board_codec_mode eMode = m_rcBoard.codecMode();
    QString cError = QStringLiteral("refused");
    if (eMode == BOARD_CODEC_HANG)
        return;
    if (eMode == BOARD_CODEC_DIE) {
        // Only once: after a restart it works again.
        m_rcBoard.setCodecMode(BOARD_CODEC_OK);
        std::_Exit(EXIT_FAILURE);
    }
    const QString cFile = rcMessage.arguments().value(0).toString();
    if (eMode != BOARD_CODEC_REFUSE && m_cCodec.carryOut(rsMethod.eCommand, cFile, cError))
        send(rcMessage, rcMessage.createReply());
    else
        send(rcMessage, rcMessage.createErrorReply(FAILED, cError));
}

void CCodecService::send(const QDBusMessage& rcCall, const QDBusMessage& rcAnswer)
{
    if (rcCall.isReplyRequired())
        m_cConnection.send(rcAnswer);
}
