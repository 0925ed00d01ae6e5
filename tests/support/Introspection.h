/* SPDX-License-Identifier: MIT */
/* Introspection data in a form that two of them can be compared in. */
#ifndef HALDEND_TESTS_INTROSPECTION_H
#define HALDEND_TESTS_INTROSPECTION_H

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The methods, signals, arguments and annotations of one interface in rcXml, one a line in their order,
/// indented by their depth; comments and white space don't count. Empty if the interface isn't there, one
/// line that says so if the XML is broken.
QStringList describeInterface(const QByteArray& rcXml, const QString& rcInterface);

#endif
