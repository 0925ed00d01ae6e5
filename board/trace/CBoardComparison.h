/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BOARD_TRACE_CBOARDCOMPARISON_H
#define HALDEND_BOARD_TRACE_CBOARDCOMPARISON_H

#include <QString>

class CBoard;

/// Looks for the first difference between two boards, from the cause to the effect: registers, then what is in the
/// FPGA's memory (text cells first), then the pixels of the monitor's picture and of the recorded one. The camera and
/// the codec show in the pictures only.
class CBoardComparison
{
public:
    /// Both boards are open. One line, such as "register CTRL: fgon=1 cto=1 | cto=1"; empty if there is no difference.
    static QString firstDifference(const CBoard& rcOne, const CBoard& rcOther);
};

#endif
