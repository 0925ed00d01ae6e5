/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CSTORM_H
#define HALDEND_TESTS_CSTORM_H

#include "tests/storm/CStormClient.h"
#include "tests/storm/CStormDraw.h"
#include "tests/support/CCodecProcess.h"
#include "tests/support/CScene.h"

#include <memory>
#include <vector>

/// Calls of four clients at once, while clients vanish, don't read or send what is no message, and the codec service and
/// the board fail. The daemon's clock is a faster one, so that it doesn't wait long for a codec service that hangs.
///
/// Failures are thrown: std::runtime_error with what is known.
class CStorm
{
public:
    CStorm(const QVector<CInterfaces::SMethod>& rcMethods, quint32 u32Seed);

    /// The longest life of a daemon has half of the calls and a codec service that confirms all, but for its end, because
    /// the daemon refuses commands after the first failure; shorter ones have all troubles from their start.
    void run(int iCalls);

    /// Figures of the run so far.
    QByteArray describe() const;

private:
    struct SCounts {
        int iLives = 0;
        int iCalls = 0;
        int iVanished = 0;
        int iDropped = 0;
        int iHuge = 0;
        int iUnread = 0;
        int iReloads = 0;
        int iCodecModes = 0;
        int iFaults = 0;
    };

    struct SLife {
        int iCalls;
        int iCallsBeforeTrouble; ///< of the codec service
        int iReloads;
        bool bMeasured; ///< memory is looked at
    };

    void live(const SLife& rsLife);
    void begin(bool bMeasured);
    void end();

    void call();
    void rest(bool bFinal);
    void happen(bool bCodecTrouble);
    void vanish();
    void sendNoText();
    void sendHalf();
    void sendHuge();
    void dontRead();
    void fail();
    void changeCodec(bool bTrouble);
    void reload();

    void checkName();
    void checkErrors();
    QByteArray complaint() const;
    void checkMemory(const std::vector<qint64>& rcKilobytes, int iReloads);
    [[noreturn]] void complain(const QByteArray& rcWhat);

    const QVector<CInterfaces::SMethod>& m_cMethods;
    QTemporaryDir m_cFiles;
    CStormDraw m_cDraw;
    std::unique_ptr<CScene> m_pcScene;
    std::unique_ptr<CCodecProcess> m_pcCodec;
    std::vector<CStormClient> m_cClients;
    std::unique_ptr<CCaller> m_pcUnread; ///< the client that doesn't read
    QString m_cOwner;                    ///< of the bus name
    SCounts m_sCounts;
    QByteArray m_cMemory; ///< figures of the measured life
};

#endif
