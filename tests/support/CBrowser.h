/* SPDX-License-Identifier: MIT */
#ifndef HALDEND_TESTS_CBROWSER_H
#define HALDEND_TESTS_CBROWSER_H

#include "tests/support/CChildProcess.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QSize>
#include <QString>
#include <QTemporaryDir>

/// Chromium without a window, steered through its driver (WebDriver). Every wait is limited.
///
///     CBrowser cBrowser;
///     QVERIFY2(cBrowser.start(), cBrowser.describe());
///     QVERIFY2(cBrowser.open("http://127.0.0.1:8088/"), cBrowser.describe());
///     QVERIFY(cBrowser.waitFor("document.title !== ''"));
class CBrowser
{
public:
    CBrowser() = default;
    ~CBrowser();

    CBrowser(const CBrowser&) = delete;
    CBrowser& operator=(const CBrowser&) = delete;

    /// Starts the driver, and a browser with an empty profile.
    bool start(const QSize& rcWindow = QSize(1280, 720));

    bool open(const QString& rcAddress);

    /// The value of a JavaScript expression.
    QJsonValue value(const QString& rcExpression, const QJsonArray& rcArguments = QJsonArray());

    /// Waits until a JavaScript expression is true. It is looked at in the page, each time that something is drawn.
    bool waitFor(const QString& rcCondition);

    /// Moves the mouse to a point of the window, presses it, moves it to another one and releases it.
    bool drag(int iFromX, int iFromY, int iToX, int iToY);
    bool doubleClick(int iX, int iY);

    /// Types text; single characters of U+E000 and above are keys of WebDriver: U+E007 is Enter, U+E014 the right arrow.
    bool type(const QString& rcKeys);

    /// Chromium's own protocol, such as "Emulation.setEmulatedMedia".
    QJsonValue command(const QString& rcCommand, const QJsonObject& rcParameters);

    bool saveScreenshot(const QString& rcFile);

    /// What the page wrote to its console as a warning or an error.
    QStringList complaints();

    QByteArray describe() const { return m_cError.toUtf8(); }

private:
    QJsonValue ask(const char* pszMethod, const QString& rcPath, const QJsonObject& rcBody = QJsonObject());
    bool act(const QJsonObject& rcSource);

    CChildProcess m_cDriver;
    QTemporaryDir m_cProfile;
    int m_iPort = 0;
    QString m_cSession;
    QString m_cError;
};

#endif
