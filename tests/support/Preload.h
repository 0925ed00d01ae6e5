/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_PRELOAD_H
#define HALDEND_TESTS_PRELOAD_H

#include <QProcessEnvironment>

/// Adds a library to those that are loaded before all others into the program that gets this environment, behind the
/// ones that are there. An emulated program has an emulator in front of it, which couldn't load them.
void preload(QProcessEnvironment& rcEnvironment, const QString& rcLibrary);

#endif
