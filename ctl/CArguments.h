/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_CTL_CARGUMENTS_H
#define HALDEND_CTL_CARGUMENTS_H

#include "ctl/Colors.h"
#include "ctl/CommandTable.h"

#include <QMap>
#include <QPoint>
#include <QStringList>
#include <QVariant>

class QCommandLineParser;

Q_DECLARE_METATYPE(SColors)

/// The words behind a command, read and checked: arguments and options, by their names in the table. The options that may stand before every command may stand behind it too.
class CArguments
{
public:
    /// Reads the words. Throws CFailure with eWrongUse when one doesn't fit. With bForce ranges and letters are not
    /// checked.
    CArguments(const SCommand& rsCommand, const QStringList& rcWords, bool bForce);

    const SCommand& command() const { return m_rsCommand; }
    bool isForced() const { return m_bForce; }

    bool has(const char* pszName) const { return m_cValues.contains(QLatin1String(pszName)); }
    int number(const char* pszName, int iDefault = 0) const;
    QString text(const char* pszName) const { return value(pszName).toString(); }
    QPoint position(const char* pszName) const { return value(pszName).toPoint(); }
    SColors colors(const char* pszName) const { return value(pszName).value<SColors>(); }
    QList<int> numbers(const char* pszName) const;
    QStringList rest() const { return m_cRest; }

    /// The values of the arguments in their order, as a method takes them.
    QVariantList values() const;

private:
    void readOptions(QStringList& rcWords);
    void take(const QCommandLineParser& rcParser, const SCommandOption& rsOption);
    void readArguments(QStringList cWords);
    QVariant value(const char* pszName) const { return m_cValues.value(QLatin1String(pszName)); }
    QVariant read(const SArgument& rsArgument, const QString& rcWord) const;

    const SCommand& m_rsCommand;
    bool m_bForce;
    QMap<QString, QVariant> m_cValues;
    QStringList m_cRest;
};

#endif
