/* SPDX-License-Identifier: MIT */
#include "dbus/DBusRegistration.h"

#include <cstdio>

void SRegistrationTrace::step(const char* pszArgument) const
{
    if (pszClass != nullptr)
        printf("%s::setupDBusConnection(%s) \n", pszClass, pszArgument);
}

void SRegistrationTrace::result(bool bRegistered) const
{
    if (pszClass != nullptr)
        printf("%s::setupDBusConnection()=%d \n", pszClass, bRegistered ? 1 : 0);
}
