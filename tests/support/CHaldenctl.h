/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CHALDENCTL_H
#define HALDEND_TESTS_CHALDENCTL_H

#include <QByteArray>
#include <QJsonObject>
#include <QProcess>
#include <QString>
#include <QStringList>

/// The shipped haldenctl as a process, on a test's bus.
///
///     CHaldenctl cCtl(cScene.bus().address());
///     QCOMPARE(cCtl.run({"display", "size", "360", "288"}), 0);
class CHaldenctl
{
public:
    explicit CHaldenctl(const QString& rcBusAddress);

    /// Adds a variable to the environment.
    void setVariable(const QString& rcName, const QString& rcValue);

    /// The folder that relative file names are in.
    void setFolder(const QString& rcFolder) { m_cFolder = rcFolder; }

    /// Runs it to its end. The exit status, or -1 if it doesn't end or crashes.
    int run(const QStringList& rcArguments, const QByteArray& rcInput = QByteArray());

    /// One that goes on until the test ends it.
    void start(QProcess& rcProcess, const QStringList& rcArguments);

    /// Of the last run, without the last line's end.
    QString output() const { return m_cOutput; }
    QString errors() const { return m_cErrors; }

    /// The output as a JSON object; empty if it isn't one.
    QJsonObject object() const;

    /// For failure messages.
    QByteArray describe() const;

private:
    QProcessEnvironment m_cEnvironment;
    QString m_cFolder;
    QString m_cOutput;
    QString m_cErrors;
};

#endif
