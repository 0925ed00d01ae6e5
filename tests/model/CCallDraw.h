/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CCALLDRAW_H
#define HALDEND_TESTS_CCALLDRAW_H

#include "tests/model/CDaemonModel.h"
#include "tests/model/CInterfaces.h"

#include <QVector>

#include <vector>

/// Draws calls with RapidCheck's generators: methods and types of arguments from the interfaces, good and hostile values
/// by the names of the arguments. To be used where RapidCheck draws.
class CCallDraw
{
public:
    explicit CCallDraw(const QVector<CInterfaces::SMethod>& rcMethods);

    struct SDrawn {
        SCall sCall;
        bool bReply = true;
        bool bWrongTypes = false; ///< no method has the call's types
    };

    SDrawn draw(const CDaemonModel& rcModel) const;

    /// The same call with one argument closer to 0 or to no text, in each such way.
    static std::vector<SDrawn> simpler(const SDrawn& rsDrawn);

    /// Whether there are values for such an argument.
    static bool knows(const CInterfaces::SArgument& rsArgument);

private:
    SDrawn drawCall(const CDaemonModel& rcModel) const;
    SDrawn drawWorld() const;
    static QVariant drawValue(const CInterfaces::SArgument& rsArgument, const CDaemonModel& rcModel);

    std::vector<CInterfaces::SMethod> m_cLot; ///< each method as often as its weight
};

#endif
