/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_CODEC_CCODECSERVICE_H
#define HALDEND_BOARD_CODEC_CCODECSERVICE_H

#include "board/codec/CCodec.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

class CBoard;

/// The codec stand-in on the bus: velmar.mobilygen with its objects "/Record" and "/Play".
///
/// Methods are found by name alone, because clients of the codec name no interface. Each call is noted on the
/// board first, with its arguments and its interface field. The board's codec mode then decides the answer;
/// it is read when the delay of the call is over.
class CCodecService : public QDBusVirtualObject
{
    Q_OBJECT

public:
    /// Keeps a reference to the board, which must be open. bVideo: records and plays films.
    CCodecService(CBoard& rcBoard, bool bVideo);

    /// Registers the objects and the name on the system bus. False if that fails; rcError says why.
    [[nodiscard]] bool start(QString& rcError);

    /// Returns nothing, because the methods belong to no interface.
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
