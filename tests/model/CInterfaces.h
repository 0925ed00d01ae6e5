/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CINTERFACES_H
#define HALDEND_TESTS_CINTERFACES_H

#include <QByteArray>
#include <QVector>

/// The methods of the four interfaces, as their XML files have them.
class CInterfaces
{
public:
    struct SArgument {
        QByteArray cName;
        QByteArray cType;
    };

    struct SMethod {
        QByteArray cPath;
        QByteArray cName;
        QVector<SArgument> cIn;
        QVector<SArgument> cOut;
        bool bReply = true;

        bool isGetter() const;
    };

    /// Reads the files of a folder. Empty if one of them can't be read.
    static QVector<SMethod> read(const char* pszFolder);
};

#endif
