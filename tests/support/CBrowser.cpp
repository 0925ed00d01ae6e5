/* SPDX-License-Identifier: MIT */
#include "tests/support/CBrowser.h"

#include "tests/support/CTcpClient.h"
#include "tests/support/Timeouts.h"

#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>

namespace
{

QJsonObject pointerMove(int iX, int iY, int iMilliseconds)
{
    return {
        {QStringLiteral("type"),     QStringLiteral("pointerMove")},
        {QStringLiteral("duration"), iMilliseconds                },
        {QStringLiteral("x"),        iX                           },
        {QStringLiteral("y"),        iY                           },
        {QStringLiteral("origin"),   QStringLiteral("viewport")   },
    };
}

QJsonObject pointerButton(const char* pszWhat)
{
    return {
        {QStringLiteral("type"),   QLatin1String(pszWhat)},
        {QStringLiteral("button"), 0                     },
    };
}

QJsonObject mouse(const QJsonArray& rcActions)
{
    return {
        {QStringLiteral("type"),       QStringLiteral("pointer")                                            },
        {QStringLiteral("id"),         QStringLiteral("mouse")                                              },
        {QStringLiteral("parameters"), QJsonObject{{QStringLiteral("pointerType"), QStringLiteral("mouse")}}},
        {QStringLiteral("actions"),    rcActions                                                            },
    };
}

} // namespace

CBrowser::~CBrowser()
{
    if (!m_cSession.isEmpty())
        ask("DELETE", QString());
    if (m_cDriver.state() == QProcess::NotRunning)
        return;
    m_cDriver.terminate();
    m_cDriver.waitForFinished(TIMEOUT_PROCESS_MS);
}

bool CBrowser::start(const QSize& rcWindow)
{
    static const QRegularExpression PORT(QStringLiteral("on port (\\d+)"));
    m_cDriver.setProcessChannelMode(QProcess::MergedChannels);
    m_cDriver.start(QStringLiteral(CHROMEDRIVER), {QStringLiteral("--port=0")});
    QString cSaid;
    while (m_iPort == 0) {
        if (!m_cDriver.waitForReadyRead(TIMEOUT_PROCESS_MS)) {
            m_cError = QStringLiteral("chromedriver: %1 %2").arg(m_cDriver.errorString(), cSaid);
            return false;
        }
        cSaid += QString::fromLocal8Bit(m_cDriver.readAll());
        const QRegularExpressionMatch cMatch =
            PORT.match(cSaid.mid(cSaid.indexOf(QStringLiteral("started successfully"))));
        m_iPort = cMatch.captured(1).toInt();
    }
    QJsonArray cArguments = {
        QStringLiteral("--headless"),
        QStringLiteral("--no-sandbox"),
        QStringLiteral("--disable-gpu"),
        QStringLiteral("--disable-quic"),
        QStringLiteral("--no-first-run"),
        QStringLiteral("--disable-background-networking"),
        QStringLiteral("--disable-component-update"),
        QStringLiteral("--disable-sync"),
        QStringLiteral("--disable-dev-shm-usage"),
        QStringLiteral("--hide-scrollbars"),
        QStringLiteral("--user-data-dir=%1").arg(m_cProfile.path()),
        QStringLiteral("--window-size=%1,%2").arg(rcWindow.width()).arg(rcWindow.height()),
    };
    const QJsonObject cWanted = {
        {QStringLiteral("goog:chromeOptions"),
         QJsonObject{{QStringLiteral("args"), cArguments},
                     {QStringLiteral("binary"), QStringLiteral(CHROMIUM)}}                             },
        {QStringLiteral("goog:loggingPrefs"),
         QJsonObject{{QStringLiteral("browser"), QStringLiteral("WARNING")}}                           },
        {QStringLiteral("timeouts"),           QJsonObject{{QStringLiteral("script"), TIMEOUT_CALL_MS}}},
    };
    m_cSession =
        ask("POST", QStringLiteral("/session"),
            {
                {QStringLiteral("capabilities"), QJsonObject{{QStringLiteral("alwaysMatch"), cWanted}}}
    })
            .toObject()[QStringLiteral("sessionId")]
            .toString();
    // The window's size includes bars that are not seen.
    return !m_cSession.isEmpty() && !command(QStringLiteral("Emulation.setDeviceMetricsOverride"),
                                             {
                                                 {QStringLiteral("width"),             rcWindow.width() },
                                                 {QStringLiteral("height"),            rcWindow.height()},
                                                 {QStringLiteral("deviceScaleFactor"), 1                },
                                                 {QStringLiteral("mobile"),            false            },
    })
                                         .isUndefined();
}

/// The member "value" of the answer; undefined if there is an error, which describe() then has.
QJsonValue CBrowser::ask(const char* pszMethod, const QString& rcPath, const QJsonObject& rcBody)
{
    const QString cPath =
        m_cSession.isEmpty() ? rcPath : QStringLiteral("/session/%1%2").arg(m_cSession, rcPath);
    const QByteArray cBody =
        qstrcmp(pszMethod, "POST") == 0 ? QJsonDocument(rcBody).toJson(QJsonDocument::Compact) : QByteArray();
    const QByteArray cAnswer = CTcpClient::ask(
        m_iPort, QByteArray(pszMethod) + ' ' + cPath.toLatin1() +
                     " HTTP/1.1\r\nHost: 127.0.0.1:" + QByteArray::number(m_iPort) +
                     "\r\nConnection: close\r\nContent-Type: application/json\r\n" +
                     "Content-Length: " + QByteArray::number(cBody.size()) + "\r\n\r\n" + cBody);
    const QByteArray cJson = cAnswer.mid(cAnswer.indexOf("\r\n\r\n") + 4);
    QJsonValue cValue = QJsonDocument::fromJson(cJson).object()[QStringLiteral("value")];
    if (cAnswer.startsWith("HTTP/1.1 200"))
        return cValue;
    m_cError = QStringLiteral("%1: %2").arg(cPath, QString::fromUtf8(cJson.left(2000)));
    return QJsonValue(QJsonValue::Undefined);
}

bool CBrowser::open(const QString& rcAddress)
{
    return !ask("POST", QStringLiteral("/url"),
                {
                    {QStringLiteral("url"), rcAddress}
    })
                .isUndefined();
}

QJsonValue CBrowser::value(const QString& rcExpression, const QJsonArray& rcArguments)
{
    return ask("POST", QStringLiteral("/execute/sync"),
               {
                   {QStringLiteral("script"), QStringLiteral("return %1;").arg(rcExpression)},
                   {QStringLiteral("args"),   rcArguments                                   },
    });
}

bool CBrowser::waitFor(const QString& rcCondition)
{
    const QString cScript =
        QStringLiteral("const done = arguments[arguments.length - 1];"
                       "const look = () => (%1) ? done(true) : setTimeout(look, 20); look();")
            .arg(rcCondition);
    return ask("POST", QStringLiteral("/execute/async"),
               {
                   {QStringLiteral("script"), cScript     },
                   {QStringLiteral("args"),   QJsonArray()},
    })
        .toBool();
}

bool CBrowser::act(const QJsonObject& rcSource)
{
    return !ask("POST", QStringLiteral("/actions"),
                {
                    {QStringLiteral("actions"), QJsonArray{rcSource}}
    })
                .isUndefined();
}

bool CBrowser::drag(int iFromX, int iFromY, int iToX, int iToY)
{
    return act(mouse({pointerMove(iFromX, iFromY, 0), pointerButton("pointerDown"),
                      pointerMove(iToX, iToY, 100), pointerButton("pointerUp")}));
}

bool CBrowser::doubleClick(int iX, int iY)
{
    return act(mouse({pointerMove(iX, iY, 0), pointerButton("pointerDown"), pointerButton("pointerUp"),
                      pointerButton("pointerDown"), pointerButton("pointerUp")}));
}

bool CBrowser::type(const QString& rcKeys)
{
    QJsonArray cActions;
    for (const QChar cKey : rcKeys)
        for (const char* pszWhat : {"keyDown", "keyUp"})
            cActions << QJsonObject{
                {QStringLiteral("type"),  QLatin1String(pszWhat)},
                {QStringLiteral("value"), QString(cKey)         }
            };
    return act({
        {QStringLiteral("type"),    QStringLiteral("key")     },
        {QStringLiteral("id"),      QStringLiteral("keyboard")},
        {QStringLiteral("actions"), cActions                  }
    });
}

QJsonValue CBrowser::command(const QString& rcCommand, const QJsonObject& rcParameters)
{
    return ask("POST", QStringLiteral("/goog/cdp/execute"),
               {
                   {QStringLiteral("cmd"),    rcCommand   },
                   {QStringLiteral("params"), rcParameters}
    });
}

bool CBrowser::saveScreenshot(const QString& rcFile)
{
    QFile cFile(rcFile);
    const QByteArray cPicture =
        QByteArray::fromBase64(ask("GET", QStringLiteral("/screenshot")).toString().toLatin1());
    return !cPicture.isEmpty() && cFile.open(QIODevice::WriteOnly) && cFile.write(cPicture) > 0;
}

QStringList CBrowser::complaints()
{
    QStringList cLines;
    for (const QJsonValue cEntry : ask("POST", QStringLiteral("/se/log"),
                                       {
                                           {QStringLiteral("type"), QStringLiteral("browser")}
    })
                                       .toArray())
        cLines << cEntry.toObject()[QStringLiteral("message")].toString();
    return cLines;
}
