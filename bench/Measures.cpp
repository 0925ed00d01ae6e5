/* SPDX-License-Identifier: MIT */
#include "bench/Measures.h"

#include <QString>

#include <stdexcept>

#include <sys/resource.h>

namespace
{

double seconds(const timeval& rsTime)
{
    return static_cast<double>(rsTime.tv_sec) + static_cast<double>(rsTime.tv_usec) / 1e6;
}

} // namespace

void expect(bool bDone, const QString& rcWrong)
{
    if (!bDone)
        throw std::runtime_error(rcWrong.toStdString());
}

double childrensSeconds()
{
    rusage sUsage = {};
    getrusage(RUSAGE_CHILDREN, &sUsage);
    return seconds(sUsage.ru_utime) + seconds(sUsage.ru_stime);
}
