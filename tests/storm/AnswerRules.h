/* SPDX-License-Identifier: MIT */
/* What a method may answer, whatever was called before. */
#ifndef HALDEND_TESTS_ANSWERRULES_H
#define HALDEND_TESTS_ANSWERRULES_H

#include "tests/model/CInterfaces.h"

#include <QByteArray>

/// Whether an answer, as CCaller has it, is one of the method's: its types, and a value of its range.
bool isPrescribed(const CInterfaces::SMethod& rsMethod, const QByteArray& rcAnswer, bool bWrongTypes);

#endif
