/* SPDX-License-Identifier: MIT */
#pragma once

class QString;

/// Ends the measurement unless bDone: throws std::runtime_error with what is wrong.
void expect(bool bDone, const QString& rcWrong);

/// Processor time of all children that have ended, in seconds.
double childrensSeconds();
