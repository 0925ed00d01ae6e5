/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_SCALL_H
#define HALDEND_TESTS_SCALL_H

#include <QByteArray>
#include <QVariantList>

/// A call of a method of the daemon, or something that happens around it: CDaemonModel::WORLD.
struct SCall {
    QByteArray cPath;
    QByteArray cMethod;
    QVariantList cArguments; ///< int and bool; QByteArray for text, as it goes over the bus

    /// As in "/videooverlay set_text_string(1, \"a\")".
    QByteArray describe() const;
};

/// Values as CCaller shows those of answers and signals: "i 5", "b true", "s \"a\"".
QByteArray describeValue(const QVariant& rcValue);
QByteArray describeText(const QByteArray& rcUtf8);

#endif
