/* SPDX-License-Identifier: MIT */
#include "board/state/SCodecState.h"

static const char* const ACTIVITY_NAMES[SCodecState::ACTIVITIES] = {"idle", "recording", "recording-paused",
                                                                    "playing", "playing-paused"};

QString SCodecState::activityName() const
{
    return QLatin1String(ACTIVITY_NAMES[eActivity]);
}

QByteArray SCodecState::toText() const
{
    return activityName().toLatin1() + ' ' + QByteArray::number(iFrame) + '\n' + cFile.toUtf8();
}

SCodecState SCodecState::fromText(const QByteArray& rcText)
{
    const int iEnd = rcText.indexOf('\n');
    const int iBlank = rcText.indexOf(' ');
    for (int i = 0; iEnd >= 0 && iBlank >= 0 && i < ACTIVITIES; ++i)
        if (rcText.left(iBlank) == ACTIVITY_NAMES[i]) {
            SCodecState sState;
            sState.eActivity = static_cast<EActivity>(i);
            sState.iFrame = rcText.mid(iBlank + 1, iEnd - iBlank - 1).toInt();
            sState.cFile = QString::fromUtf8(rcText.mid(iEnd + 1));
            return sState;
        }
    return SCodecState();
}
