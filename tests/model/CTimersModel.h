/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CTIMERSMODEL_H
#define HALDEND_TESTS_CTIMERSMODEL_H

#include <vector>

/// Timers of whole seconds that repeat, on a clock that leaps.
class CTimersModel
{
public:
    /// What a timer is for, and of which text; 0 without one.
    struct SPurpose {
        int iKind;
        unsigned int uHandle;

        bool operator==(const SPurpose& rsOther) const
        {
            return iKind == rsOther.iKind && uHandle == rsOther.uHandle;
        }
    };

    int now() const { return m_iNow; } ///< s since the start of the daemon

    /// One timer of a purpose: a later start replaces it.
    void start(const SPurpose& rsPurpose, int iSeconds);
    void stop(const SPurpose& rsPurpose);
    std::vector<unsigned int> handles(int iKind) const; ///< of the timers of that kind, ascending

    /// Lets the clock leap, and calls a function with the purpose of each timer that is due, the longest due first.
    /// A timer that missed several turns has one, and counts from now on.
    template <typename TFire>
    void pass(int iSeconds, TFire fnFire)
    {
        m_iNow += iSeconds;
        while (!m_cTimers.empty() && m_cTimers.front().iDue <= m_iNow) {
            const SPurpose sPurpose = m_cTimers.front().sPurpose;
            repeatFirst();
            fnFire(sPurpose);
        }
    }

private:
    struct STimer {
        int iDue;
        int iInterval;
        SPurpose sPurpose;
    };

    void insert(const STimer& rsTimer);
    void repeatFirst();

    int m_iNow = 0;
    std::vector<STimer>
        m_cTimers; ///< by the time when they are due; those of one time in the order of their start
};

#endif
