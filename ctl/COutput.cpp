/* SPDX-License-Identifier: MIT */
#include "ctl/COutput.h"

#include <QJsonDocument>

#include <cstdio>

static void print(FILE* pcFile, const QByteArray& rcLine)
{
    fwrite(rcLine.constData(), 1, static_cast<std::size_t>(rcLine.size()), pcFile);
    fputc('\n', pcFile);
    fflush(pcFile);
}

void COutput::line(const QString& rcText)
{
    print(stdout, rcText.toUtf8());
}

void COutput::object(const QJsonObject& rcObject)
{
    print(stdout, QJsonDocument(rcObject).toJson(QJsonDocument::Compact));
}

void COutput::error(const QString& rcText)
{
    print(stderr, "haldenctl: " + rcText.toUtf8());
}
