/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_BENCH_CBARECODEC_H
#define HALDEND_BENCH_CBARECODEC_H

#include <QObject>

/// "/Record" of a codec service that does nothing but answer.
class CBareCodec : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

public slots:
    void record(const QString&, int) {}
    void stop() {}
};

#endif
