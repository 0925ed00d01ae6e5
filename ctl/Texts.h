/* SPDX-License-Identifier: MIT */
/* The overlay's texts as the bus tells them. */
#ifndef HALDEND_CTL_TEXTS_H
#define HALDEND_CTL_TEXTS_H

#include "ctl/CFailure.h"
#include "ctl/Colors.h"

#include <QList>
#include <QPoint>
#include <QString>

class CCommandRun;

/// So far handles are looked at, where nothing else is said. The daemon gives out the lowest numbers, but has no list.
const int LIST_DEFAULT = 200;

struct SText {
    int iHandle;
    int iId;
    QString cText;
    QPoint cCell;
    int iEnd; ///< column behind the last letter, modulo 256
    SColors sColors;
    bool bShown;
    bool bCounter; ///< shows the video counter
};

/// The texts with these handles, those that there are. All are asked for at once.
QList<SText> readTexts(CCommandRun& rcRun, int iFirst, int iLast);

/// Whether this position is the answer for a handle that no text has.
bool isNoText(const QList<int>& rcPosition);
CFailure noText(int iHandle);

/// The handle that the command names, by itself or by --id. Throws CFailure if no text has the id.
int namedHandle(CCommandRun& rcRun);

#endif
