/* SPDX-License-Identifier: MIT */
/* The purposes of the daemon's timers. */
#ifndef HALDEND_TESTS_TIMERS_H
#define HALDEND_TESTS_TIMERS_H

#include "tests/model/CTimersModel.h"

enum ETimer { INPUT_KIND, COUNTER_KIND, TEXT_KIND, FILE_KIND };

const CTimersModel::SPurpose INPUT_TIMER = {INPUT_KIND, 0};
const CTimersModel::SPurpose COUNTER_TIMER = {COUNTER_KIND, 0};
const CTimersModel::SPurpose FILE_TIMER = {FILE_KIND, 0};

inline CTimersModel::SPurpose textTimer(unsigned int uHandle)
{
    return {TEXT_KIND, uHandle};
}

#endif
