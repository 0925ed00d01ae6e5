/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CSTORMDRAW_H
#define HALDEND_TESTS_CSTORMDRAW_H

#include "tests/model/CInterfaces.h"
#include "tests/model/SCall.h"

#include <QRandomGenerator>
#include <QString>
#include <QVector>

#include <initializer_list>

/// Draws calls for a storm: methods and types of arguments from the interfaces, values good and bad.
class CStormDraw
{
public:
    /// The methods have to live as long as the object. rcFiles is a folder for films and images.
    CStormDraw(const QVector<CInterfaces::SMethod>& rcMethods, const QString& rcFiles, quint32 u32Seed);

    struct SDrawn {
        SCall sCall;
        const CInterfaces::SMethod* psMethod;
        bool bWrongTypes; ///< no method has the call's types
    };

    SDrawn draw();

    /// Some megabytes of text.
    QByteArray hugeText();

    int below(int iEnd) { return m_cRandom.bounded(iEnd); }
    bool percent(int iPercent) { return below(100) < iPercent; }
    int oneOf(std::initializer_list<int> cValues)
    {
        return *(cValues.begin() + below(static_cast<int>(cValues.size())));
    }

private:
    QVariant value(const CInterfaces::SArgument& rsArgument);
    int number(const QByteArray& rcName);
    QByteArray text();
    QByteArray file();

    QString m_cFiles;
    QRandomGenerator m_cRandom;
    QVector<const CInterfaces::SMethod*> m_cLot;
};

#endif
