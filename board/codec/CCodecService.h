#ifndef HALDEND_BOARD_CODEC_CCODECSERVICE_H
#define HALDEND_BOARD_CODEC_CCODECSERVICE_H

#include "board/codec/CCodec.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

class CBoard;

/// The codec stand-in on the bus: velmar.mobilygen with its objects "/Record" and "/Play".
///
/// Methods go by their names alone, as clients of the codec call them. Each call is noted on the board with its
/// arguments and its interface field before anything becomes of it; what becomes of it the board's codec mode
/// says, which is looked at when the call's time is over.
class CCodecService : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// Keeps a reference to the board, which has to be open.
    explicit CCodecService(CBoard& rcBoard);

    /// Objects and name on the system bus. False if that fails; rcError says why.
    bool start(QString& rcError);

    /// Nothing: the methods belong to no interface.
    QString introspect(const QString& rcPath) const override;

    bool handleMessage(const QDBusMessage& rcMessage, const QDBusConnection& rcConnection) override;

private:
    struct SMethod;
    static const SMethod METHODS[];

    void answer(const SMethod& rsMethod, const QDBusMessage& rcMessage);
    void send(const QDBusMessage& rcCall, const QDBusMessage& rcAnswer);

    CBoard& m_rcBoard;
    CCodec m_cCodec;
    QDBusConnection m_cConnection;
};

#endif
