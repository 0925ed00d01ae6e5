/* SPDX-License-Identifier: MIT */
/* The live view's page in a browser, with daemon, bus and board. */
#include "board/picture/CBoardPicture.h"
#include "tests/support/CBrowser.h"
#include "tests/support/CServeProcess.h"
#include "tests/support/CVideoScene.h"

#include <QtDBus>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <csignal>

class TestLivePage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void cleanup();

    void shows_a_text_that_a_client_sets();
    void shows_the_same_in_a_second_browser();
    void drags_a_text();
    void edits_a_text_in_place();
    void moves_a_text_by_the_keys();
    void shows_cell_and_handle_under_the_pointer();
    void unplugs_the_camera();
    void lists_calls_and_registers();
    void changes_nothing_without_the_token();
    void survives_the_daemon();

private:
    bool showsTheBoard(CBrowser& rcBrowser);
    int newText(const QString& rcText, int iColumn, int iRow);
    QPoint middleOf(int iHandle);
    bool isAt(int iHandle, int iColumn, int iRow);

    CVideoScene m_cScene;
    CServeProcess m_cServe;
    CBrowser m_cBrowser;
};

namespace
{

const QString CONNECTED = QStringLiteral("document.getElementById('lamp-link').textContent === 'connected'");
const QString PICTURE = QStringLiteral("Number(document.getElementById('picture').dataset.pictures) > 0");
const QChar ENTER(0xe007);
const QChar ARROW_RIGHT(0xe014);
const QChar ARROW_DOWN(0xe015);

/// The mean colour of each square of 16 x 16 pixels of the page's picture.
const QString SQUARES = QStringLiteral(R"((() => {
    const pixels = document.getElementById('picture').getContext('2d').getImageData(0, 0, 720, 576).data;
    const squares = [];
    for (let top = 0; top < 576; top += 16)
        for (let left = 0; left < 720; left += 16) {
            const sum = [0, 0, 0];
            for (let y = top; y < top + 16; ++y)
                for (let x = left; x < left + 16; ++x)
                    for (let color = 0; color < 3; ++color) sum[color] += pixels[4 * (y * 720 + x) + color];
            squares.push(...sum.map((value) => value / 256));
        }
    return squares;
})())");

QVector<double> squaresOf(const QImage& rcImage)
{
    QVector<double> cSquares;
    for (int iTop = 0; iTop < rcImage.height(); iTop += 16)
        for (int iLeft = 0; iLeft < rcImage.width(); iLeft += 16) {
            double adSum[3] = {};
            for (int y = iTop; y < iTop + 16; ++y)
                for (int x = iLeft; x < iLeft + 16; ++x) {
                    adSum[0] += qRed(rcImage.pixel(x, y));
                    adSum[1] += qGreen(rcImage.pixel(x, y));
                    adSum[2] += qBlue(rcImage.pixel(x, y));
                }
            for (const double dSum : adSum)
                cSquares << dSum / 256;
        }
    return cSquares;
}

/// Other than that the test itself reads the picture's pixels often.
QString complaintsOf(CBrowser& rcBrowser)
{
    QStringList cLines = rcBrowser.complaints();
    cLines.erase(std::remove_if(cLines.begin(), cLines.end(),
                                [](const QString& rcLine) { return rcLine.contains("willReadFrequently"); }),
                 cLines.end());
    return cLines.join('\n');
}

const double TOLERANCE = 6; // of a square's mean colour, for JPEG and the browser's decoder

} // namespace

void TestLivePage::initTestCase()
{
    QVERIFY2(m_cScene.start(), m_cScene.describe());
    QVERIFY2(m_cServe.start(m_cScene.bus().address(), m_cScene.board().directory()), m_cServe.describe());
    QVERIFY2(m_cBrowser.start(), m_cBrowser.describe());
    QVERIFY2(m_cBrowser.open(m_cServe.address()), m_cBrowser.describe());
    QVERIFY2(m_cBrowser.waitFor(CONNECTED + "&&" + PICTURE), m_cBrowser.describe());
    m_cScene.daemon().send("/videooverlay", "show_overlay", {});
}

void TestLivePage::cleanupTestCase()
{
    QCOMPARE(complaintsOf(m_cBrowser), QString());
    QCOMPARE(m_cScene.end(), QString());
}

void TestLivePage::cleanup()
{
    m_cScene.daemon().send("/videooverlay", "destroy_all_texts", {});
    QVERIFY(m_cBrowser.waitFor("document.querySelectorAll('.box').length === 0"));
}

/// Waits until the page's picture is the board's.
bool TestLivePage::showsTheBoard(CBrowser& rcBrowser)
{
    const auto same = [&] {
        const QJsonArray cShown = rcBrowser.value(SQUARES).toArray();
        const QVector<double> cWanted = squaresOf(CBoardPicture::monitor(m_cScene.board()));
        for (int i = 0; i < cWanted.size(); ++i)
            if (cShown.size() != cWanted.size() || std::abs(cShown[i].toDouble() - cWanted[i]) > TOLERANCE)
                return false;
        return true;
    };
    return QTest::qWaitFor(same, 20000);
}

int TestLivePage::newText(const QString& rcText, int iColumn, int iRow)
{
    CDaemonProcess& rcDaemon = m_cScene.daemon();
    const int iHandle = rcDaemon.call("/videooverlay", "create_text").arguments().value(0).toInt();
    rcDaemon.send("/videooverlay", "set_text_position", {iHandle, iColumn, iRow});
    rcDaemon.send("/videooverlay", "set_text_string", {iHandle, rcText});
    rcDaemon.send("/videooverlay", "show_text", {iHandle});
    const bool bThere =
        rcDaemon.settle() &&
        m_cBrowser.waitFor(QString("document.querySelector('.box[data-handle=\"%1\"]')").arg(iHandle) +
                           " !== null");
    return bThere ? iHandle : 0;
}

/// Of its first letter, in the window.
QPoint TestLivePage::middleOf(int iHandle)
{
    const QJsonArray cPoint =
        m_cBrowser
            .value(
                "(() => { const box = document.querySelector('.box[data-handle=\"' + arguments[0] + '\"]');"
                "const area = box.getBoundingClientRect();"
                "return [area.left + area.height / 4, area.top + area.height / 2]; })()"
                ".map(Math.round)",
                {iHandle})
            .toArray();
    return QPoint(cPoint[0].toInt(), cPoint[1].toInt());
}

bool TestLivePage::isAt(int iHandle, int iColumn, int iRow)
{
    const QVariantList cPosition = qdbus_cast<QVariantList>(
        m_cScene.daemon().call("/videooverlay", "get_text_position", {iHandle}).arguments().value(0));
    const auto number = [&](int i) {
        const QVariant cValue = cPosition.value(i);
        return cValue.canConvert<QDBusVariant>() ? cValue.value<QDBusVariant>().variant().toInt()
                                                 : cValue.toInt();
    };
    return number(0) == iColumn && number(1) == iRow;
}

void TestLivePage::shows_a_text_that_a_client_sets()
{
    QVERIFY(showsTheBoard(m_cBrowser));
    const QVector<double> cBefore = squaresOf(CBoardPicture::monitor(m_cScene.board()));
    QVERIFY(newText("Manhole 17", 10, 5) != 0);
    QVERIFY(showsTheBoard(m_cBrowser));
    QVERIFY(squaresOf(CBoardPicture::monitor(m_cScene.board())) != cBefore);
    QVERIFY(m_cBrowser.value("document.getElementById('texts').textContent.includes('Manhole 17')").toBool());
}

void TestLivePage::shows_the_same_in_a_second_browser()
{
    CBrowser cSecond;
    QVERIFY2(cSecond.start(QSize(390, 844)), cSecond.describe());
    QVERIFY2(cSecond.open(m_cServe.address()), cSecond.describe());
    QVERIFY2(cSecond.waitFor(CONNECTED + "&&" + PICTURE), cSecond.describe());
    QVERIFY(newText("for both", 10, 8) != 0);
    QVERIFY(showsTheBoard(cSecond));
    QVERIFY(showsTheBoard(m_cBrowser));
    QVERIFY(cSecond.waitFor("document.getElementById('texts').textContent.includes('for both')"));
    // No part of the page is wider than a phone.
    QCOMPARE(cSecond.value("document.documentElement.scrollWidth").toInt(), 390);
    QCOMPARE(complaintsOf(cSecond), QString());
}

void TestLivePage::drags_a_text()
{
    const int iHandle = newText("drag me", 10, 5);
    const int iOther = newText("other", 20, 12);
    QVERIFY(iHandle != 0 && iOther != 0);
    const QPoint cFrom = middleOf(iHandle);
    const QPoint cTo = middleOf(iOther);
    QVERIFY2(m_cBrowser.drag(cFrom.x(), cFrom.y(), cTo.x(), cTo.y()), m_cBrowser.describe());
    QTRY_VERIFY(isAt(iHandle, 20, 12));
    QVERIFY(isAt(iOther, 20, 12));
    QVERIFY(showsTheBoard(m_cBrowser));
}

void TestLivePage::edits_a_text_in_place()
{
    const int iHandle = newText("before", 15, 7);
    const QPoint cPoint = middleOf(iHandle);
    QVERIFY2(m_cBrowser.doubleClick(cPoint.x(), cPoint.y()), m_cBrowser.describe());
    QVERIFY(m_cBrowser.waitFor("document.activeElement.className === 'editor'"));
    QVERIFY(m_cBrowser.type(QString("behind") + ENTER));
    QTRY_COMPARE(
        m_cScene.daemon().call("/videooverlay", "get_text_string", {iHandle}).arguments()[0].toString(),
        QString("behind"));
    QVERIFY(isAt(iHandle, 15, 7));
}

void TestLivePage::moves_a_text_by_the_keys()
{
    const int iHandle = newText("keys", 15, 7);
    QVERIFY(!m_cBrowser.value("document.querySelector('.box').focus()").isUndefined());
    QVERIFY(m_cBrowser.type(QString(3, ARROW_RIGHT) + ARROW_DOWN));
    QTRY_VERIFY(isAt(iHandle, 18, 8));
    QVERIFY(m_cBrowser.type(QString("h")));
    QTRY_VERIFY(
        !m_cScene.daemon().call("/videooverlay", "is_text_visible", {iHandle}).arguments()[0].toBool());
}

void TestLivePage::shows_cell_and_handle_under_the_pointer()
{
    const int iHandle = newText("Point", 15, 7);
    const QPoint cPoint = middleOf(iHandle);
    QVERIFY(m_cBrowser.drag(1, 1, cPoint.x(), cPoint.y()));
    const QString cWanted =
        QString("(t => t.startsWith('Cell 15,7') && t.includes(\"'P'\") && t.includes('white on navy') && "
                "t.endsWith('text %1'))(document.getElementById('cell').textContent)")
            .arg(iHandle);
    QVERIFY2(m_cBrowser.waitFor(cWanted),
             qPrintable(m_cBrowser.value("document.getElementById('cell').textContent").toString()));
}

void TestLivePage::unplugs_the_camera()
{
    m_cScene.forgetSignals();
    QVERIFY(!m_cBrowser.value("document.getElementById('unplug').click()").isUndefined());
    QTRY_COMPARE(m_cScene.signalled(), QStringList("video_input_type_changed 1"));
    QVERIFY(m_cBrowser.waitFor("document.getElementById('lamp-input').textContent === 'no signal'"));
    QVERIFY(!m_cBrowser.value("document.getElementById('plug').click()").isUndefined());
    QTRY_COMPARE(m_cScene.signalled(),
                 QStringList({"video_input_type_changed 1", "video_input_type_changed 0"}));
    QVERIFY(m_cBrowser.waitFor("document.getElementById('lamp-input').textContent === 'camera signal'"));
}

void TestLivePage::lists_calls_and_registers()
{
    QVERIFY(!m_cBrowser.value("document.getElementById('tab-calls').click()").isUndefined());
    m_cScene.daemon().call("/videooverlay", "get_text_id", {8});
    QVERIFY(m_cBrowser.waitFor(
        "document.getElementById('calls').textContent.includes('videooverlay.get_text_id(8)')"));
    QVERIFY(!m_cBrowser.value("document.getElementById('tab-board').click()").isUndefined());
    QVERIFY(
        m_cBrowser.waitFor("document.querySelector('#registers tr.changed td')?.textContent === '* CTRL'"));
    QVERIFY(!m_cBrowser.value("document.getElementById('tab-texts').click()").isUndefined());
}

void TestLivePage::changes_nothing_without_the_token()
{
    CBrowser cStranger;
    QVERIFY2(cStranger.start(), cStranger.describe());
    QVERIFY2(cStranger.open(m_cServe.address().section('#', 0, 0)), cStranger.describe());
    QVERIFY2(cStranger.waitFor(CONNECTED + "&&" + PICTURE), cStranger.describe());
    QVERIFY(cStranger.waitFor("!document.getElementById('leave').hidden"));
    QVERIFY(showsTheBoard(cStranger));
    QVERIFY(cStranger.value("[...document.querySelectorAll('[data-changes]')].every((part) => part.disabled)")
                .toBool());
}

void TestLivePage::survives_the_daemon()
{
    QVERIFY(m_cScene.daemon().endBySignal(SIGTERM));
    QVERIFY(m_cBrowser.waitFor("document.getElementById('lamp-daemon').textContent === 'haldend is away'"));
    QVERIFY2(m_cScene.daemon().startAndWaitForName(), m_cScene.describe());
    QVERIFY(m_cBrowser.waitFor("document.getElementById('lamp-daemon').textContent === 'haldend runs'"));
    m_cScene.daemon().send("/videooverlay", "show_overlay", {});
    const int iHandle = newText("again", 3, 3);
    QVERIFY(showsTheBoard(m_cBrowser));
    QVERIFY(!m_cBrowser.value("document.querySelector('.box').focus()").isUndefined());
    QVERIFY(m_cBrowser.type(QString(ARROW_RIGHT)));
    QTRY_VERIFY(isAt(iHandle, 4, 3));
}

QTEST_GUILESS_MAIN(TestLivePage)
#include "tst_live_page.moc"
