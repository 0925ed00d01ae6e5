/* SPDX-License-Identifier: MIT */
/* "halden-board serve" with daemon, bus and board, without a browser: who may do what, and floods. */
#include "board/picture/CBoardPicture.h"
#include "board/picture/CTestPicture.h"
#include "tests/support/CServeProcess.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/CWebSocketClient.h"

#include <QtDBus>
#include <QtTest>

#include <csignal>
#include <memory>
#include <vector>

class TestServe : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();

    void shows_the_boards_picture();
    void shows_the_recorded_picture();
    void sends_nothing_before_the_last_picture_is_confirmed();
    void refuses_changes_without_the_token_data();
    void refuses_changes_without_the_token();
    void calls_the_daemon();
    void refuses_what_is_no_call_data();
    void refuses_what_is_no_call();
    void changes_the_board();
    void refuses_what_is_no_order();
    void tells_who_called_what();
    void knows_the_texts_of_others();
    void shows_registers_trace_and_judgements();
    void survives_the_daemon();
    void survives_a_flood();
    void ends_with_the_board();
    void ends_by_a_signal();

private:
    bool enter(CWebSocketClient& rcBrowser, const QString& rcToken,
               const QJsonObject& rcWatch = QJsonObject())
    {
        return enter(rcBrowser, m_cServe, rcToken, rcWatch);
    }
    bool enter(CWebSocketClient& rcBrowser) { return enter(rcBrowser, m_cServe.token()); }
    static bool enter(CWebSocketClient& rcBrowser, const CServeProcess& rcServe, const QString& rcToken,
                      const QJsonObject& rcWatch = QJsonObject());
    QJsonObject call(CWebSocketClient& rcBrowser, const char* pszMethod, const QJsonArray& rcArguments = {});
    QJsonObject order(CWebSocketClient& rcBrowser, QJsonObject cOrder);

    CVideoScene m_cScene;
    CServeProcess m_cServe;
    int m_iLast = 0;
};

namespace
{

QImage imageOf(const QByteArray& rcMessage)
{
    return QImage::fromData(rcMessage.mid(8), "JPEG").convertToFormat(QImage::Format_RGB32);
}

/// The mean difference of two pictures, in steps of a colour.
double differenceOf(const QImage& rcA, const QImage& rcB)
{
    if (rcA.size() != rcB.size())
        return 255;
    qint64 i64Sum = 0;
    for (int y = 0; y < rcA.height(); ++y)
        for (int x = 0; x < rcA.width(); ++x) {
            const QRgb uA = rcA.pixel(x, y);
            const QRgb uB = rcB.pixel(x, y);
            i64Sum += qAbs(qRed(uA) - qRed(uB)) + qAbs(qGreen(uA) - qGreen(uB)) + qAbs(qBlue(uA) - qBlue(uB));
        }
    return static_cast<double>(i64Sum) / (3.0 * rcA.width() * rcA.height());
}

const double JPEG_DIFFERENCE = 3; // at quality 85, over the test picture
const QJsonObject MONITOR{
    {"picture", "monitor"}
};

} // namespace

void TestServe::initTestCase()
{
    QVERIFY2(m_cScene.start(), m_cScene.describe());
    QVERIFY2(m_cServe.start(m_cScene.bus().address(), m_cScene.board().directory()), m_cServe.describe());
}

void TestServe::cleanupTestCase()
{
    QCOMPARE(m_cScene.end(), QString());
}

/// Opens, greets, and says what to watch.
bool TestServe::enter(CWebSocketClient& rcBrowser, const CServeProcess& rcServe, const QString& rcToken,
                      const QJsonObject& rcWatch)
{
    QJsonObject cWatch = rcWatch;
    cWatch["type"] = "watch";
    return rcBrowser.open(rcServe.port()) &&
           rcBrowser.send(QJsonObject{
               {"type",  "hello"},
               {"token", rcToken}
    }) &&
           !rcBrowser.nextOf("hello").isEmpty() && rcBrowser.send(cWatch);
}

QJsonObject TestServe::call(CWebSocketClient& rcBrowser, const char* pszMethod, const QJsonArray& rcArguments)
{
    const QStringList cParts = QString::fromLatin1(pszMethod).split('.');
    rcBrowser.send(QJsonObject{
        {"type",      "call"         },
        {"id",        ++m_iLast      },
        {"object",    cParts.value(0)},
        {"method",    cParts.value(1)},
        {"arguments", rcArguments    },
    });
    return rcBrowser.answerTo(m_iLast);
}

QJsonObject TestServe::order(CWebSocketClient& rcBrowser, QJsonObject cOrder)
{
    cOrder["type"] = "order";
    cOrder["id"] = ++m_iLast;
    rcBrowser.send(cOrder);
    return rcBrowser.answerTo(m_iLast);
}

void TestServe::shows_the_boards_picture()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser, QString(), MONITOR));
    const QImage cFirst = imageOf(cBrowser.nextPicture());
    QVERIFY(differenceOf(cFirst, CBoardPicture::monitor(m_cScene.board())) < JPEG_DIFFERENCE);

    m_cScene.daemon().send("/videodisplay", "set_video_size", {360, 288});
    QVERIFY(m_cScene.daemon().settle());
    QVERIFY(cBrowser.send(QJsonObject{
        {"type", "ack"}
    }));
    // Scale and window are two stores: a picture may come between them.
    QImage cSecond;
    do {
        cSecond = imageOf(cBrowser.nextPicture());
        QVERIFY(!cSecond.isNull());
        QVERIFY(cBrowser.send(QJsonObject{
            {"type", "ack"}
        }));
    } while (differenceOf(cSecond, CBoardPicture::monitor(m_cScene.board())) >= JPEG_DIFFERENCE);
    QVERIFY(differenceOf(cSecond, cFirst) > JPEG_DIFFERENCE);
    m_cScene.daemon().send("/videodisplay", "set_video_size", {688, 573});
    QVERIFY(m_cScene.daemon().settle());
}

void TestServe::shows_the_recorded_picture()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser, QString(),
                  {
                      {"picture", "recorded"}
    }));
    const QByteArray cMessage = cBrowser.nextPicture();
    QCOMPARE(static_cast<int>(cMessage[4]), 1);
    const QImage cRecorded = CBoardPicture::recorded(m_cScene.board());
    QVERIFY(differenceOf(imageOf(cMessage), cRecorded) < JPEG_DIFFERENCE);
    QVERIFY(differenceOf(CBoardPicture::monitor(m_cScene.board()), cRecorded) > JPEG_DIFFERENCE);
}

void TestServe::sends_nothing_before_the_last_picture_is_confirmed()
{
    CWebSocketClient cBrowser;
    CWebSocketClient cOther;
    QVERIFY(enter(cBrowser, m_cServe.token(), MONITOR));
    QVERIFY(enter(cOther, m_cServe.token(), MONITOR));
    QVERIFY(!cBrowser.nextPicture().isEmpty());
    QVERIFY(!cOther.nextPicture().isEmpty());
    m_cScene.board().setCamera(CTestPicture::frame(50));
    QVERIFY(cOther.send(QJsonObject{
        {"type", "ack"}
    }));
    QVERIFY(!cOther.nextPicture().isEmpty()); // there is a new one
    // Whatever comes before the answer is no picture.
    QVERIFY(cBrowser.send(QJsonObject{
        {"type",      "call"              },
        {"id",        ++m_iLast           },
        {"object",    "videooverlay"      },
        {"method",    "is_overlay_visible"},
        {"arguments", QJsonArray()        }
    }));
    CWebSocketClient::SMessage sMessage;
    do {
        QVERIFY(cBrowser.next(sMessage));
        QVERIFY(!sMessage.bBinary);
    } while (!sMessage.cBytes.contains("\"answers\""));
    QVERIFY(cBrowser.send(QJsonObject{
        {"type", "ack"}
    }));
    QVERIFY(!cBrowser.nextPicture().isEmpty());
    m_cScene.board().setCamera(CTestPicture::frame(0));
}

void TestServe::refuses_changes_without_the_token_data()
{
    QTest::addColumn<QString>("token");
    QTest::newRow("none") << QString();
    QTest::newRow("wrong") << QString(32, '0');
    QTest::newRow("half") << m_cServe.token().left(16);
}

void TestServe::refuses_changes_without_the_token()
{
    QFETCH(QString, token);
    const QString cRefusal = "the token is missing or wrong";
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser, token));
    QCOMPARE(call(cBrowser, "videooverlay.show_overlay")["error"].toString(), cRefusal);
    QCOMPARE(order(cBrowser,
                   {
                       {"do",   "camera"},
                       {"what", "unplug"}
    })["error"]
                 .toString(),
             cRefusal);
    QVERIFY(!m_cScene.daemon().call("/videooverlay", "is_overlay_visible").arguments()[0].toBool());
    QVERIFY(m_cScene.board().isCameraPlugged());
}

void TestServe::calls_the_daemon()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser));
    QCOMPARE(call(cBrowser, "videooverlay.create_text")["answer"].toArray(), QJsonArray({1}));
    QCOMPARE(call(cBrowser, "videooverlay.set_text_string", {1, "Manhole 17"})["answer"].toArray(),
             QJsonArray());
    QCOMPARE(call(cBrowser, "videooverlay.get_text_string", {1})["answer"].toArray(),
             QJsonArray({"Manhole 17"}));
    QCOMPARE(call(cBrowser, "videooverlay.get_text_position", {1})["answer"].toArray(),
             QJsonArray({QJsonArray({0, 0, 10})}));
    QCOMPARE(call(cBrowser, "videoprocessing.stop_video_recording")["answer"].toArray(), QJsonArray({2}));
    QCOMPARE(call(cBrowser, "videooverlay.is_text_visible", {1})["answer"].toArray(), QJsonArray({false}));
    call(cBrowser, "videooverlay.destroy_text", {1});
}

void TestServe::refuses_what_is_no_call_data()
{
    QTest::addColumn<QString>("method");
    QTest::addColumn<QJsonArray>("arguments");
    QTest::addColumn<QString>("refusal");
    QTest::newRow("method") << "videooverlay.jump" << QJsonArray() << "no such method: videooverlay.jump";
    QTest::newRow("object") << "other.show_text" << QJsonArray() << "no such method: other.show_text";
    QTest::newRow("signal") << "videooverlay.videocounter_changed" << QJsonArray({0, 0, 0, 0})
                            << "no such method: videooverlay.videocounter_changed";
    QTest::newRow("too few") << "videooverlay.show_text" << QJsonArray() << "show_text takes 1 arguments";
    QTest::newRow("type") << "videooverlay.show_text" << QJsonArray({"1"})
                          << "show_text: text_handle is of the type i";
    QTest::newRow("fraction") << "videooverlay.show_text" << QJsonArray({1.5})
                              << "show_text: text_handle is of the type i";
    QTest::newRow("too large") << "videooverlay.show_text" << QJsonArray({1e10})
                               << "show_text: text_handle is of the type i";
}

void TestServe::refuses_what_is_no_call()
{
    QFETCH(QString, method);
    QFETCH(QJsonArray, arguments);
    QFETCH(QString, refusal);
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser));
    QCOMPARE(call(cBrowser, qPrintable(method), arguments)["error"].toString(), refusal);
}

void TestServe::changes_the_board()
{
    // A board of its own: the daemon mustn't see the camera go.
    CTemporaryBoard cTemporary;
    QVERIFY(cTemporary.make());
    CBoard& rcBoard = cTemporary.board();
    CServeProcess cServe;
    QVERIFY2(cServe.start(m_cScene.bus().address(), rcBoard.directory()), cServe.describe());
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser, cServe, cServe.token()));
    const auto done = [&](const QJsonObject& rcOrder) {
        return order(cBrowser, rcOrder)["answer"].isArray();
    };
    QVERIFY(done({
        {"do",   "camera"},
        {"what", "unplug"}
    }));
    QVERIFY(!rcBoard.isCameraPlugged());
    QVERIFY(done({
        {"do",   "camera"},
        {"what", "plug"  }
    }));
    QVERIFY(rcBoard.isCameraPlugged());
    QVERIFY(done({
        {"do",   "codec" },
        {"mode", "refuse"}
    }));
    QCOMPARE(rcBoard.codecMode(), BOARD_CODEC_REFUSE);
    QVERIFY(done({
        {"do",   "codec"},
        {"mode", "ok"   }
    }));
    QVERIFY(done({
        {"do", "codec-delay"},
        {"ms", 5            }
    }));
    QCOMPARE(rcBoard.codecDelay(), 5U);
    QVERIFY(done({
        {"do", "codec-delay"},
        {"ms", 0            }
    }));
    QVERIFY(done({
        {"do",        "fault"     },
        {"operation", "fpga-write"},
        {"nth",       1000        },
        {"count",     2           },
        {"short",     true        }
    }));
    const QVector<CBoard::SFault> cFaults = rcBoard.faults();
    QCOMPARE(cFaults.size(), 1);
    QCOMPARE(cFaults[0].eOperation, BOARD_OPERATION_FPGA_WRITE);
    QCOMPARE(cFaults[0].u32Nth, 1000U);
    QCOMPARE(cFaults[0].u32Count, 2U);
    QVERIFY(cFaults[0].bShort);
    QVERIFY(done({
        {"do", "clear-faults"}
    }));
    QVERIFY(rcBoard.faults().isEmpty());
}

void TestServe::refuses_what_is_no_order()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser));
    QCOMPARE(order(cBrowser,
                   {
                       {"do", "jump"}
    })["error"]
                 .toString(),
             QString("no such order: jump"));
    QCOMPARE(order(cBrowser,
                   {
                       {"do",   "camera"},
                       {"what", "eat"   }
    })["error"]
                 .toString(),
             QString("no such camera: eat"));
    QVERIFY(order(cBrowser,
                  {
                      {"do",   "codec"},
                      {"mode", "loud" }
    })["error"]
                .isString());
    QVERIFY(order(cBrowser,
                  {
                      {"do",        "fault"},
                      {"operation", "none" }
    })["error"]
                .isString());
    QVERIFY(cBrowser.send(QByteArray("no JSON")));
    QVERIFY(cBrowser.send(QByteArray("[]")));
    QVERIFY(call(cBrowser, "videooverlay.get_max_text_line_width")["answer"].isArray());
}

void TestServe::tells_who_called_what()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser, QString(),
                  {
                      {"calls", true}
    }));
    CWebSocketClient cActor;
    QVERIFY(enter(cActor));
    call(cActor, "videooverlay.get_text_string", {7});
    m_cScene.daemon().call("/videooverlay", "get_text_id", {8});
    bool bPage = false;
    bool bOther = false;
    while (!bPage || !bOther) {
        const QJsonObject cCalls = cBrowser.nextOf("calls");
        QVERIFY(!cCalls.isEmpty());
        for (const QJsonValue cValue : cCalls["items"].toArray()) {
            const QJsonObject cEntry = cValue.toObject();
            if (!cEntry.contains("ms"))
                continue;
            bPage =
                bPage || (cEntry["who"] == "this page" && cEntry["what"] == "videooverlay.get_text_string" &&
                          cEntry["arguments"] == "7" && cEntry["answer"] == "\"\"");
            bOther =
                bOther || (cEntry["who"] == "tst_serve" && cEntry["what"] == "videooverlay.get_text_id" &&
                           cEntry["arguments"] == "8" && cEntry["answer"] == "0");
        }
    }
}

void TestServe::knows_the_texts_of_others()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser));
    CDaemonProcess& rcDaemon = m_cScene.daemon();
    const int iHandle = rcDaemon.call("/videooverlay", "create_text").arguments()[0].toInt();
    rcDaemon.send("/videooverlay", "set_text_position", {iHandle, 20, 2});
    rcDaemon.send("/videooverlay", "set_text_colors", {iHandle, 12, 2});
    rcDaemon.send("/videooverlay", "set_text_string", {iHandle, "Manhole 18"});
    rcDaemon.send("/videooverlay", "show_text", {iHandle});
    const QJsonArray cWanted = {
        QJsonObject{
                    {"handle", iHandle},
                    {"id", 0},
                    {"text", "Manhole 18"},
                    {"x", 20},
                    {"y", 2},
                    {"end", 30},
                    {"foreground", 12},
                    {"background", 2},
                    {"shown", true},
                    {"counter", false},
                    }
    };
    QJsonArray cTexts;
    while (cTexts != cWanted) {
        const QJsonObject cMessage = cBrowser.nextOf("texts");
        QVERIFY(!cMessage.isEmpty());
        cTexts = cMessage["texts"].toArray();
    }
    rcDaemon.send("/videooverlay", "destroy_all_texts", {});
    while (!cTexts.isEmpty()) {
        const QJsonObject cMessage = cBrowser.nextOf("texts");
        QVERIFY(!cMessage.isEmpty());
        cTexts = cMessage["texts"].toArray();
    }
}

void TestServe::shows_registers_trace_and_judgements()
{
    m_cScene.daemon().send("/videodisplay", "set_video_size", {360, 288});
    QVERIFY(m_cScene.daemon().settle());
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser, m_cServe.token(),
                  {
                      {"board", true}
    }));
    QJsonObject cChip;
    while (cChip["chip"] != "lime") {
        cChip = cBrowser.nextOf("chip");
        QVERIFY(!cChip.isEmpty());
    }
    QJsonObject cScale;
    for (const QJsonValue cRegister : cChip["registers"].toArray())
        if (cRegister.toObject()["name"] == "CSC")
            cScale = cRegister.toObject();
    QCOMPARE(cScale["value"].toString(), QString("0x0fd50eb1"));
    QCOMPARE(cScale["file"].toString(), QString("0x08000800"));
    QVERIFY(cScale["differs"].toBool());
    QCOMPARE(cScale["fields"].toArray()[0].toObject()["name"].toString(), QString("vsci"));

    QVERIFY(order(cBrowser,
                  {
                      {"do", "trace"},
                      {"on", true   }
    })["answer"]
                .isArray());
    m_cScene.daemon().send("/videooverlay", "show_overlay", {});
    const QJsonObject cTrace = cBrowser.nextOf("trace");
    QCOMPARE(cTrace["items"].toArray()[0].toObject()["line"].toString().left(13), QString("fpga write32 "));
    QVERIFY(order(cBrowser,
                  {
                      {"do", "trace"},
                      {"on", false  }
    })["answer"]
                .isArray());
    m_cScene.daemon().send("/videooverlay", "hide_overlay", {});
    m_cScene.daemon().send("/videodisplay", "set_video_size", {688, 573});
    QVERIFY(m_cScene.daemon().settle());
}

void TestServe::survives_the_daemon()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser));
    QJsonObject cStatus = cBrowser.nextOf("status");
    QVERIFY(m_cScene.daemon().endBySignal(SIGTERM));
    while (cStatus["daemon"].toBool() && !cStatus.isEmpty())
        cStatus = cBrowser.nextOf("status");
    QVERIFY(!cStatus.isEmpty());
    QVERIFY(call(cBrowser, "videooverlay.create_text")["error"].isString());
    QVERIFY2(m_cScene.daemon().startAndWaitForName(), m_cScene.describe());
    while (!cStatus.contains("overlay") && !cStatus.isEmpty())
        cStatus = cBrowser.nextOf("status");
    QVERIFY(!cStatus.isEmpty());
    QVERIFY(call(cBrowser, "videooverlay.get_max_text_line_width")["answer"].isArray());
}

void TestServe::survives_a_flood()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser, m_cServe.token(), MONITOR));
    QVERIFY(!cBrowser.nextPicture().isEmpty());
    const QImage cBefore = CBoardPicture::monitor(m_cScene.board());

    std::vector<std::unique_ptr<CTcpClient>> cClients;
    for (int i = 0; i < 200; ++i) {
        cClients.push_back(std::make_unique<CTcpClient>());
        QVERIFY(cClients.back()->connect(m_cServe.port()));
        QVERIFY(i % 2 == 0 || cClients.back()->send("GET / HTTP/1.1\r\nHost: 127"));
    }
    // The browser gets its pictures, others come in, and the daemon serves.
    m_cScene.board().setCamera(CTestPicture::frame(50));
    QVERIFY(cBrowser.send(QJsonObject{
        {"type", "ack"}
    }));
    QVERIFY(!cBrowser.nextPicture().isEmpty());
    m_cScene.board().setCamera(CTestPicture::frame(0));
    CWebSocketClient cOther;
    QVERIFY(enter(cOther, m_cServe.token(), MONITOR));
    QVERIFY(differenceOf(imageOf(cOther.nextPicture()), cBefore) < JPEG_DIFFERENCE);
    QVERIFY(m_cScene.daemon().settle());
    cClients.clear();
    QVERIFY(call(cBrowser, "videooverlay.get_max_text_line_width")["answer"].isArray());
    QCOMPARE(CBoardPicture::monitor(m_cScene.board()), cBefore);
}

void TestServe::ends_with_the_board()
{
    CTemporaryBoard cBoard;
    QVERIFY(cBoard.make());
    CServeProcess cServe;
    QVERIFY2(cServe.start(m_cScene.bus().address(), cBoard.board().directory()), cServe.describe());
    QVERIFY(QFile::remove(cBoard.board().path(BOARD_CONTROL)));
    QVERIFY(cServe.process().waitForFinished());
    QCOMPARE(cServe.process().exitCode(), 0);
}

void TestServe::ends_by_a_signal()
{
    CWebSocketClient cBrowser;
    QVERIFY(enter(cBrowser, m_cServe.token(), MONITOR));
    QVERIFY(!cBrowser.nextPicture().isEmpty());
    m_cServe.process().terminate();
    QVERIFY(m_cServe.process().waitForFinished());
    QCOMPARE(m_cServe.process().exitStatus(), QProcess::NormalExit);
    QCOMPARE(m_cServe.process().exitCode(), 0);
    QCOMPARE(m_cServe.process().readAllStandardError(), QByteArray());
}

QTEST_GUILESS_MAIN(TestServe)
#include "tst_serve.moc"
