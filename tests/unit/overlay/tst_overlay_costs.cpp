/* SPDX-License-Identifier: MIT */
/* The cost of drawing: counts the code units that are encoded for it. The FPGA is recorded. */
#include "overlay/COverlayText.h"
#include "overlay/CVideoOverlayBackEnd.h"
#include "tests/unit/overlay/RecordedPage.h"

#include <QTextCodec>
#include <QtTest>

#include <vector>

namespace
{

/// Stands in for Qt's ISO 8859-15 and counts.
class CCountingCodec : public QTextCodec
{
public:
    QByteArray name() const override { return QByteArrayLiteral("counting"); }
    int mibEnum() const override { return 111; }

    /// Code units since the last call.
    int takeUnits()
    {
        const int iUnits = m_iUnits;
        m_iUnits = 0;
        return iUnits;
    }

protected:
    QString convertToUnicode(const char* pszBytes, int iLength, ConverterState* /*psState*/) const override
    {
        return QString::fromLatin1(pszBytes, iLength);
    }
    QByteArray convertFromUnicode(const QChar* pcText, int iLength,
                                  ConverterState* /*psState*/) const override
    {
        m_iUnits += iLength;
        return QString(pcText, iLength).toLatin1();
    }

private:
    mutable int m_iUnits = 0;
};

} // namespace

class TestOverlayCosts : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void no_more_is_encoded_than_is_drawn_data();
    void no_more_is_encoded_than_is_drawn();
    void a_neighbour_is_encoded_as_far_as_it_is_drawn();
    void beside_the_layer_nobody_is_encoded();

private:
    CCountingCodec* m_pcCodec = nullptr; // Qt's
};

static COverlayText text(int iLength, int iX, int iY)
{
    COverlayText cText;
    cText.setText(QString(iLength, QLatin1Char('m')));
    cText.setX(static_cast<unsigned char>(iX));
    cText.setY(static_cast<unsigned char>(iY));
    return cText;
}

void TestOverlayCosts::initTestCase()
{
    // Qt asks the latest codec first, and keeps the answer.
    m_pcCodec = new CCountingCodec;
    QCOMPARE(QTextCodec::codecForMib(111), m_pcCodec);
}

void TestOverlayCosts::no_more_is_encoded_than_is_drawn_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("units");
    QTest::newRow("fits") << 10 << 5 << 3 << 10;
    QTest::newRow("cut at the edge") << 60 << 10 << 25 << 43;
    QTest::newRow("20,000,000 characters, no cell") << 20000000 << 0 << 3 << 0;
    QTest::newRow("20,000,005 characters, 5 cells") << 20000005 << 0 << 3 << 5;
    QTest::newRow("20,000,240 characters, 53 cells") << 20000240 << 0 << 3 << 53;
    QTest::newRow("20,000,005 characters at column 50") << 20000005 << 50 << 3 << 3;
    QTest::newRow("empty") << 0 << 5 << 3 << 0;
    QTest::newRow("column 53") << 10 << 53 << 3 << 0;
    QTest::newRow("column 250, its end wrapped") << 10 << 250 << 3 << 0;
    QTest::newRow("row 26") << 10 << 5 << 26 << 0;
    QTest::newRow("row 255") << 10 << 5 << 255 << 0;
}

void TestOverlayCosts::no_more_is_encoded_than_is_drawn()
{
    QFETCH(int, length);
    QFETCH(int, column);
    QFETCH(int, row);
    QFETCH(int, units);
    const CRecordedPage cPage;
    CVideoOverlayBackEnd cBackEnd;
    const COverlayText cText = text(length, column, row);
    for (int i = 0; i < 2; ++i) {
        m_pcCodec->takeUnits();
        CRecordedPage::take();
        cBackEnd.drawText(cText);
        QCOMPARE(m_pcCodec->takeUnits(), units);
        QCOMPARE(CRecordedPage::take().size(), static_cast<std::size_t>(units));
    }
}

void TestOverlayCosts::a_neighbour_is_encoded_as_far_as_it_is_drawn()
{
    const CRecordedPage cPage;
    CVideoOverlayBackEnd cBackEnd;
    const COverlayText cNeighbour = text(20000005, 40, 3);
    const COverlayText cText = text(10, 40, 3);
    cBackEnd.drawText(cNeighbour);
    cBackEnd.drawText(cText);
    m_pcCodec->takeUnits();
    cBackEnd.clearText(cText);
    QCOMPARE(m_pcCodec->takeUnits(), 5);
}

void TestOverlayCosts::beside_the_layer_nobody_is_encoded()
{
    const CRecordedPage cPage;
    CVideoOverlayBackEnd cBackEnd;
    std::vector<COverlayText> cTexts(1000, text(10, 5, 200));
    for (const COverlayText& rcText : cTexts)
        cBackEnd.drawText(rcText);
    for (COverlayText& rcText : cTexts) {
        rcText.setX(6);
        cBackEnd.drawText(rcText);
        cBackEnd.clearText(rcText);
    }
    QCOMPARE(m_pcCodec->takeUnits(), 0);
    QCOMPARE(CRecordedPage::take(), fpga_accesses());
}

QTEST_GUILESS_MAIN(TestOverlayCosts)

#include "tst_overlay_costs.moc"
