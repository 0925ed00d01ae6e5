/* SPDX-License-Identifier: MIT */
/* The server towards the network: what it serves, and what it refuses. */
#include "board/serve/CWebServer.h"
#include "tests/support/CTcpClient.h"
#include "tests/support/CWebSocketClient.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>
#include <vector>

class TestCWebServer : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void serves_its_files();
    void sets_the_headers_of_a_safe_page();
    void refuses_requests_data();
    void refuses_requests();
    void refuses_a_taken_port();
    void tells_who_comes_and_goes();
    void exchanges_messages();
    void refuses_websockets_data();
    void refuses_websockets();
    void refuses_long_messages();
    void refuses_a_thirty_third_browser();
    void closes_half_open_requests_data();
    void closes_half_open_requests();
    void serves_beside_half_open_requests();
    void sends_the_newest_to_one_that_does_not_read();

private:
    QByteArray ask(const QByteArray& rcRequest) { return CTcpClient::ask(m_pcServer->port(), rcRequest); }
    QByteArray host() const { return "127.0.0.1:" + QByteArray::number(m_pcServer->port()); }
    QByteArray get(const QByteArray& rcPath, const QByteArray& rcHeaders = QByteArray())
    {
        return ask("GET " + rcPath + " HTTP/1.1\r\nHost: " + host() + "\r\nConnection: close\r\n" +
                   rcHeaders + "\r\n");
    }

    std::unique_ptr<CWebServer> m_pcServer;
};

static const int HALF_OPEN_SECONDS = 1;

void TestCWebServer::init()
{
    m_pcServer.reset();
    const QHash<QByteArray, CWebServer::SFile> cFiles = {
        {"/index.html", {"text/html", "the page"}                   },
        {"/large.js",   {"text/javascript", QByteArray(300000, 'x')}},
    };
    m_pcServer = std::make_unique<CWebServer>(cFiles);
    m_pcServer->setHalfOpenSeconds(HALF_OPEN_SECONDS);
    QVERIFY(m_pcServer->listen("127.0.0.1", 0));
    QVERIFY(m_pcServer->port() > 0);
}

void TestCWebServer::serves_its_files()
{
    for (const char* pszPath : {"/", "/index.html"}) {
        const QByteArray cAnswer = get(pszPath);
        QVERIFY2(cAnswer.startsWith("HTTP/1.1 200 "), cAnswer.constData());
        QVERIFY(cAnswer.contains("content-type: text/html\r\n"));
        QVERIFY(cAnswer.endsWith("\r\n\r\nthe page"));
    }
    const QByteArray cLarge = get("/large.js");
    QVERIFY(cLarge.endsWith("\r\n\r\n" + QByteArray(300000, 'x')));
}

void TestCWebServer::sets_the_headers_of_a_safe_page()
{
    const QByteArray cAnswer = get("/");
    QVERIFY(
        cAnswer.contains("content-security-policy: default-src 'none'; script-src 'self'; style-src 'self'; "
                         "img-src 'self' blob:; connect-src 'self' ws://" +
                         host() + "; base-uri 'none'; form-action 'none'; frame-ancestors 'none'\r\n"));
    for (const char* pszHeader : {"x-content-type-options: nosniff", "referrer-policy: no-referrer",
                                  "cross-origin-resource-policy: same-origin", "cache-control: no-store"})
        QVERIFY2(cAnswer.contains(QByteArray(pszHeader) + "\r\n"), pszHeader);
}

void TestCWebServer::refuses_requests_data()
{
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("status");
    const QByteArray cHost = "Host: 127.0.0.1\r\n";
    QTest::newRow("no such file") << "GET /other HTTP/1.1\r\n" + cHost << QByteArray("404");
    QTest::newRow("above") << "GET /../other HTTP/1.1\r\n" + cHost << QByteArray("404");
    QTest::newRow("other host") << QByteArray("GET / HTTP/1.1\r\nHost: evil.example\r\n")
                                << QByteArray("403");
    QTest::newRow("no host") << QByteArray("GET / HTTP/1.0\r\n") << QByteArray("403");
    QTest::newRow("other origin") << "GET / HTTP/1.1\r\n" + cHost + "Origin: http://evil.example\r\n"
                                  << QByteArray("403");
    QTest::newRow("post") << "POST / HTTP/1.1\r\n" + cHost + "Content-Length: 1000000000\r\n"
                          << QByteArray("405");
    QTest::newRow("put") << "PUT / HTTP/1.1\r\n" + cHost + "Content-Length: 3\r\n" << QByteArray("405");
}

void TestCWebServer::refuses_requests()
{
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, status);
    const QByteArray cAnswer = ask(request + "Connection: close\r\n\r\n");
    QVERIFY2(cAnswer.mid(9).startsWith(status), cAnswer.constData());
    QVERIFY(!cAnswer.contains("the page"));
}

void TestCWebServer::refuses_a_taken_port()
{
    CWebServer cOther({});
    QVERIFY(!cOther.listen("127.0.0.1", m_pcServer->port()));
    QVERIFY(!cOther.listen("192.0.2.1", 0));
    QVERIFY(cOther.listen("127.0.0.1", 0));
}

void TestCWebServer::tells_who_comes_and_goes()
{
    QSignalSpy cJoined(m_pcServer.get(), &CWebServer::joined);
    QSignalSpy cLeft(m_pcServer.get(), &CWebServer::left);
    {
        CWebSocketClient cBrowser;
        QVERIFY(cBrowser.open(m_pcServer->port()));
        QTRY_COMPARE(cJoined.size(), 1);
        QCOMPARE(cLeft.size(), 0);
    }
    QTRY_COMPARE(cLeft.size(), 1);
    QCOMPARE(cLeft[0], cJoined[0]);
}

void TestCWebServer::exchanges_messages()
{
    QSignalSpy cJoined(m_pcServer.get(), &CWebServer::joined);
    QSignalSpy cReceived(m_pcServer.get(), &CWebServer::received);
    CWebSocketClient cBrowser;
    QVERIFY(cBrowser.open(m_pcServer->port()));
    QTRY_COMPARE(cJoined.size(), 1);
    const quint64 u64Browser = cJoined[0][0].toULongLong();

    QVERIFY(cBrowser.send(QByteArray("short")));
    QVERIFY(cBrowser.send(QByteArray(16000, 'l')));
    QTRY_COMPARE(cReceived.size(), 2);
    QCOMPARE(cReceived[0][1].toByteArray(), QByteArray("short"));
    QCOMPARE(cReceived[1][1].toByteArray(), QByteArray(16000, 'l'));

    m_pcServer->sendState(u64Browser, "a", "{\"type\":\"a\"}");
    m_pcServer->sendPicture(u64Browser, QByteArray(200000, 'p'));
    QCOMPARE(cBrowser.nextPicture(), QByteArray(200000, 'p'));
    m_pcServer->sendState(u64Browser, "b", "{\"type\":\"b\"}");
    QVERIFY(!cBrowser.nextOf("b").isEmpty());
    m_pcServer->sendState(u64Browser + 1, "c", "{}"); // a number that no browser has
}

void TestCWebServer::refuses_websockets_data()
{
    QTest::addColumn<QByteArray>("host");
    QTest::addColumn<QByteArray>("origin");
    QTest::addColumn<QByteArray>("protocol");
    const QByteArray cHost = "127.0.0.1";
    QTest::newRow("other host") << QByteArray("evil.example") << QByteArray("http://evil.example")
                                << QByteArray("halden-live");
    QTest::newRow("other origin") << cHost << QByteArray("http://evil.example") << QByteArray("halden-live");
    QTest::newRow("no origin") << cHost << QByteArray() << QByteArray("halden-live");
    QTest::newRow("other protocol") << cHost << QByteArray("http://127.0.0.1") << QByteArray("http");
}

void TestCWebServer::refuses_websockets()
{
    QFETCH(QByteArray, host);
    QFETCH(QByteArray, origin);
    QFETCH(QByteArray, protocol);
    QSignalSpy cJoined(m_pcServer.get(), &CWebServer::joined);
    const QByteArray cAnswer = ask(CWebSocketClient::request(host, origin, protocol));
    QVERIFY2(!cAnswer.contains(" 101 "), cAnswer.constData());
    CWebSocketClient cGood;
    QVERIFY(cGood.open(m_pcServer->port()));
    QTRY_COMPARE(cJoined.size(), 1);
}

void TestCWebServer::refuses_long_messages()
{
    QSignalSpy cLeft(m_pcServer.get(), &CWebServer::left);
    CWebSocketClient cBrowser;
    QVERIFY(cBrowser.open(m_pcServer->port()));
    QVERIFY(cBrowser.send(QByteArray(60000, 'l')));
    QVERIFY(cBrowser.waitForEnd());
    QTRY_COMPARE(cLeft.size(), 1);
}

void TestCWebServer::refuses_a_thirty_third_browser()
{
    std::vector<std::unique_ptr<CWebSocketClient>> cBrowsers;
    for (int i = 0; i < 32; ++i) {
        cBrowsers.push_back(std::make_unique<CWebSocketClient>());
        QVERIFY(cBrowsers.back()->open(m_pcServer->port()));
    }
    QVERIFY(!CWebSocketClient().open(m_pcServer->port()));
    QSignalSpy cLeft(m_pcServer.get(), &CWebServer::left);
    cBrowsers.pop_back();
    QTRY_COMPARE(cLeft.size(), 1);
    QVERIFY(CWebSocketClient().open(m_pcServer->port()));
}

void TestCWebServer::closes_half_open_requests_data()
{
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("half a line") << QByteArray("GET / HT");
    QTest::newRow("half of the headers") << QByteArray("GET / HTTP/1.1\r\nHost: 127.0.0.1\r\n");
    QTest::newRow("a websocket's half")
        << CWebSocketClient::request("127.0.0.1", "http://127.0.0.1").chopped(2);
}

void TestCWebServer::closes_half_open_requests()
{
    QFETCH(QByteArray, part);
    CTcpClient cClient;
    QVERIFY(cClient.connect(m_pcServer->port()));
    QVERIFY(part.isEmpty() || cClient.send(part));
    QVERIFY(cClient.waitForEnd());
    QVERIFY(!cClient.received().contains("200 OK"));
}

void TestCWebServer::serves_beside_half_open_requests()
{
    std::vector<std::unique_ptr<CTcpClient>> cClients;
    for (int i = 0; i < 200; ++i) {
        cClients.push_back(std::make_unique<CTcpClient>());
        QVERIFY(cClients.back()->connect(m_pcServer->port()));
        QVERIFY(cClients.back()->send("GET / HTTP/1.1\r\nHost: 127"));
    }
    QVERIFY(get("/").endsWith("the page"));
    CWebSocketClient cBrowser;
    QVERIFY(cBrowser.open(m_pcServer->port()));
    for (const auto& rpcClient : cClients)
        QVERIFY(rpcClient->waitForEnd());
}

void TestCWebServer::sends_the_newest_to_one_that_does_not_read()
{
    QSignalSpy cJoined(m_pcServer.get(), &CWebServer::joined);
    CWebSocketClient cBrowser;
    QVERIFY(cBrowser.open(m_pcServer->port()));
    QTRY_COMPARE(cJoined.size(), 1);
    const quint64 u64Browser = cJoined[0][0].toULongLong();
    // Many times what the buffers of the network hold.
    for (int i = 0; i < 1000; ++i)
        m_pcServer->sendPicture(u64Browser, QByteArray(100000, static_cast<char>('a' + i % 2)));
    m_pcServer->sendPicture(u64Browser, "last");
    QByteArray cPicture;
    int iPictures = 0;
    while (cPicture != "last" && iPictures < 1000) {
        cPicture = cBrowser.nextPicture();
        ++iPictures;
    }
    QCOMPARE(cPicture, QByteArray("last"));
    QVERIFY(iPictures < 1000);
}

QTEST_GUILESS_MAIN(TestCWebServer)
#include "tst_CWebServer.moc"
