/* SPDX-License-Identifier: MIT */
#include "tests/support/Preload.h"

void preload(QProcessEnvironment& rcEnvironment, const QString& rcLibrary)
{
#ifdef HALDEND_EMULATED
    const QString cVariable = QStringLiteral("QEMU_SET_ENV");
    const QString cFirst = QStringLiteral("LD_PRELOAD=");
#else
    const QString cVariable = QStringLiteral("LD_PRELOAD");
    const QString cFirst;
#endif
    const QString cBefore = rcEnvironment.value(cVariable);
    rcEnvironment.insert(cVariable, (cBefore.isEmpty() ? cFirst : cBefore + QLatin1Char(' ')) + rcLibrary);
}
