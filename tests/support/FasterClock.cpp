/* SPDX-License-Identifier: MIT */
#include "tests/support/FasterClock.h"

#include <QFile>

#include <cstdio>

SClock fasterClock(int iFactor)
{
    SClock sClock;
    sClock.cLibrary = QStringLiteral(HALDEND_FAKETIME);
    sClock.cVariables[QStringLiteral("FAKETIME")] = QStringLiteral("+0 x%1").arg(iFactor);
    return sClock;
}

CLeapingClock::CLeapingClock() : m_iNow(1600000000), m_bValid(leap(0)) {}

SClock CLeapingClock::clock() const
{
    // A time that is looked up, and not counted on from the start, stands. That of a file, which the library can
    // follow as well, doesn't quite: it goes on for as long as the look takes.
    SClock sClock;
    sClock.cLibrary = QStringLiteral(HALDEND_FAKETIME);
    sClock.cVariables[QStringLiteral("FAKETIME_TIMESTAMP_FILE")] = path("time");
    sClock.cVariables[QStringLiteral("FAKETIME_FMT")] = QStringLiteral("%s");
    sClock.cVariables[QStringLiteral("FAKETIME_NO_CACHE")] = QStringLiteral("1");
    return sClock;
}

QString CLeapingClock::path(const char* pszFile) const
{
    return m_cDirectory.filePath(QLatin1String(pszFile));
}

bool CLeapingClock::leap(int iSeconds)
{
    m_iNow += iSeconds;
    // Put in place as a whole: nobody reads half of it.
    QFile cNew(path("new"));
    if (!cNew.open(QIODevice::WriteOnly) || cNew.write(QByteArray::number(m_iNow)) < 0)
        return false;
    cNew.close();
    return std::rename(qPrintable(path("new")), qPrintable(path("time"))) == 0;
}
