/* SPDX-License-Identifier: MIT */
/* Each device operation fails at each moment: at the start, while clients call, while a still image or register files are
 * saved, in a reload, and at the end. docs/reliability.md has the table of what is logged, answered and left behind; a cell
 * that differs fails.
 */
#include "hw/fpga_map.h"
#include "hw/lime_registers.h"
#include "tests/support/CVideoScene.h"
#include "tests/support/Timeouts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtTest>

#include <csignal>

class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void every_cell_of_the_table_data();
    void every_cell_of_the_table();
    void the_table_has_all_operations();

private:
    QMap<QString, QStringList> m_cTable; ///< cells by the operation's name
};

static const QString OVERLAY = QStringLiteral("/videooverlay");
static const QString DEBUG = QStringLiteral("/debug");
static const QStringList FILES = {QStringLiteral("lime"), QStringLiteral("fpga"), QStringLiteral("saa7113"),
                                  QStringLiteral("saa7129")};
static const qint64 IMAGE_BYTES = 54 + 4 * 720 * 576;

/// The rows between the marks of the page.
void TestFaults::initTestCase()
{
    QFile cPage(QStringLiteral(RELIABILITY_PAGE));
    QVERIFY(cPage.open(QIODevice::ReadOnly));
    bool bInside = false;
    for (const QString& rcLine : QString::fromUtf8(cPage.readAll()).split(QLatin1Char('\n'))) {
        if (rcLine.startsWith(QLatin1String("<!-- ")))
            bInside = rcLine == QLatin1String("<!-- begin faults -->");
        if (!bInside || !rcLine.startsWith(QLatin1String("| `")))
            continue;
        QStringList cCells;
        for (const QString& rcCell : rcLine.mid(1, rcLine.size() - 2).split(QLatin1Char('|')))
            cCells << rcCell.trimmed();
        m_cTable[cCells.takeFirst().remove(QLatin1Char('`'))] = cCells;
    }
}

void TestFaults::the_table_has_all_operations()
{
    QStringList cNames;
    for (int i = BOARD_OPERATION_NONE + 1; i < BOARD_OPERATION_COUNT; ++i)
        cNames << CBoard::operationName(static_cast<board_operation>(i));
    cNames.sort();
    QCOMPARE(m_cTable.keys(), cNames);
}

static QStringList newLog(CDaemonProcess& rcDaemon, int& riSeen)
{
    QCoreApplication::processEvents();
    QStringList cLines = rcDaemon.log().mid(riSeen);
    riSeen += cLines.size();
    cLines.removeDuplicates();
    return cLines;
}

static QString withLog(const QString& rcText, const QStringList& rcLog)
{
    return rcLog.isEmpty() ? rcText : rcText + QStringLiteral("; ") + rcLog.join(QStringLiteral("; "));
}

/// Whether the daemon starts with the fault, or the lines that it ends with.
static QString atStart(board_operation eOperation)
{
    CScene cScene;
    if (!cScene.prepare())
        return QString::fromUtf8(cScene.describe());
    CDaemonProcess& rcDaemon = cScene.daemon();
    cScene.board().setFault({eOperation});
    // The process detaches for this one alone: its child would be out of reach.
    if (eOperation == BOARD_OPERATION_FORK)
        rcDaemon.setArguments(rcDaemon.arguments() << QStringLiteral("-d"));
    const bool bUp = rcDaemon.startAndWaitForName();
    int iSeen = 1;
    QString cWhat =
        withLog(bUp ? QStringLiteral("up") : QString::number(rcDaemon.exitCode()), newLog(rcDaemon, iSeen));
    cScene.board().clearFaults();
    cScene.board().clearJudgements();
    if (bUp && !rcDaemon.endBySignal(SIGTERM))
        cWhat += QStringLiteral("; doesn't end");
    cWhat.remove(QStringLiteral("; cMultimediaDaemon.initSubsystems(); Error starting haldend."));
    return cWhat.remove(QStringLiteral("; Error starting haldend."));
}

/// The letters of a text's cells in the FPGA's memory.
static QByteArray shown(CBoard& rcBoard)
{
    QByteArray cLetters;
    const QByteArray cCells = rcBoard.fpgaMemory(FPGA_TEXT_PAGES, 2 * 5);
    for (int i = 0; i < cCells.size(); i += 2)
        cLetters += cCells[i];
    return cLetters;
}

class CLife
{
public:
    explicit CLife(board_operation eOperation) : m_eOperation(eOperation) {}

    bool start()
    {
        if (!m_cScene.start())
            return false;
        m_iText = daemon().call(OVERLAY, QStringLiteral("create_text")).arguments().value(0).toInt();
        overlay("show_text", {m_iText});
        return daemon().settle();
    }

    QByteArray describe() { return m_cScene.describe(); }

    QString whileRunning();
    QString whileAnImageIsSaved();
    QString whileRegistersAreSaved();
    QString whileReloading();
    QString atEnd();

private:
    CDaemonProcess& daemon() { return m_cScene.daemon(); }
    CBoard& board() { return m_cScene.board(); }
    void overlay(const char* pszMethod, const QVariantList& rcArguments)
    {
        daemon().send(OVERLAY, QString::fromLatin1(pszMethod), rcArguments);
    }
    void debug(const char* pszMethod)
    {
        daemon().send(DEBUG, QString::fromLatin1(pszMethod), {});
        daemon().settle();
    }
    void fail() { board().setFault({m_eOperation}); }

    board_operation m_eOperation;
    CVideoScene m_cScene;
    int m_iText = 0;
    int m_iSeen = 1; ///< lines of the log
};

// A text, the window, and the input; and whether the text is there once the operation works again.
QString CLife::whileRunning()
{
    fail();
    overlay("set_text_string", {m_iText, QStringLiteral("fault")});
    daemon().send(QStringLiteral("/videodisplay"), QStringLiteral("set_video_position"), {3, 4});
    const int iInput = m_cScene.call("get_video_input_type");
    QStringList cLost;
    if (shown(board()) != "fault")
        cLost << QStringLiteral("the text");
    if (board().limeRegister(CBoard::LIME_DISPLAY, LIME_L1WXY) != 0x00040003)
        cLost << QStringLiteral("the window's place");
    if (iInput != 0)
        cLost << QStringLiteral("the input (%1)").arg(iInput);
    board().clearFaults();
    overlay("set_osd_transparency", {0});
    daemon().settle();
    QString cWhat =
        cLost.isEmpty() ? QStringLiteral("-") : QStringLiteral("lost: ") + cLost.join(QStringLiteral(", "));
    if (shown(board()) != "fault")
        cWhat += QStringLiteral("; not back");
    return withLog(cWhat, newLog(daemon(), m_iSeen));
}

QString CLife::whileAnImageIsSaved()
{
    m_cScene.forgetSignals();
    fail();
    const QString cFile = m_cScene.file("a.bmp");
    const int iAnswer = m_cScene.call("save_video_image", cFile);
    (void)QTest::qWaitFor([this] { return !m_cScene.signalled().isEmpty(); }, TIMEOUT_CALL_MS);
    board().clearFaults();
    const qint64 iBytes = QFileInfo(cFile).size();
    QFile cContent(cFile);
    const bool bOpen = cContent.open(QIODevice::ReadOnly);
    const bool bBlack = bOpen && cContent.readAll().mid(54).count('\0') == IMAGE_BYTES - 54;
    QString cWhat =
        QStringLiteral("%1, %2").arg(iAnswer).arg(m_cScene.signalled().value(0).section(QLatin1Char(' '), 1));
    if (iBytes != IMAGE_BYTES)
        cWhat += QStringLiteral("; %1 bytes").arg(iBytes);
    if (bBlack)
        cWhat += QStringLiteral("; black");
    return withLog(cWhat, newLog(daemon(), m_iSeen));
}

QString CLife::whileRegistersAreSaved()
{
    const QString cFolder = board().path(BOARD_CNFS) + QLatin1Char('/');
    QMap<QString, QByteArray> cBefore;
    for (const QString& rcName : FILES) {
        QFile cFile(cFolder + rcName + QStringLiteral(".cnf"));
        if (cFile.open(QIODevice::ReadOnly))
            cBefore[rcName] = cFile.readAll();
    }
    fail();
    debug("save_hardware_config");
    board().clearFaults();
    QStringList cWhat;
    for (const QString& rcName : FILES) {
        QFile cFile(cFolder + rcName + QStringLiteral(".cnf"));
        const QByteArray cNow = cFile.open(QIODevice::ReadWrite) ? cFile.readAll() : QByteArray();
        if (cNow == cBefore[rcName])
            cWhat << rcName + QStringLiteral(" as before");
        else if (!cNow.endsWith("};\n\n"))
            cWhat << QStringLiteral("%1 cut off").arg(rcName);
        else if (rcName == QLatin1String("fpga") && !cNow.contains("Val:(0x00000c0a)"))
            cWhat << QStringLiteral("fpga all 0");
        cFile.resize(0);
        cFile.seek(0);
        cFile.write(cBefore[rcName]);
    }
    return withLog(cWhat.isEmpty() ? QStringLiteral("-") : cWhat.join(QStringLiteral(", ")),
                   newLog(daemon(), m_iSeen));
}

// The chips forget their registers, and a reload that works brings all of them back.
QString CLife::whileReloading()
{
    fail();
    debug("reload_hardware_config");
    board().clearFaults();
    const QStringList cLog = newLog(daemon(), m_iSeen);
    board().setFpgaRegister(FPGA_TESZ, 0);
    board().setLimeRegister(CBoard::LIME_DISPLAY, LIME_DCM1, 0);
    board().setI2cRegister(SAA7113_SLAVE, 0x0a, 0);
    board().setI2cRegister(SAA7129_SLAVE, 0x61, 0);
    debug("reload_hardware_config");
    const bool bBack = board().fpgaRegister(FPGA_TESZ) == 0xc0a &&
                       board().limeRegister(CBoard::LIME_DISPLAY, LIME_DCM1) == 0x80038083 &&
                       board().i2cRegister(SAA7113_SLAVE, 0x0a) == 0x7d &&
                       board().i2cRegister(SAA7129_SLAVE, 0x61) == 0x02;
    return withLog(bBack ? QStringLiteral("-") : QStringLiteral("not back"), cLog);
}

QString CLife::atEnd()
{
    fail();
    const bool bEnded = daemon().endBySignal(SIGTERM);
    board().clearFaults();
    // A seek that fails lets the next transfer go anywhere.
    board().clearJudgements();
    if (!bEnded || daemon().crashed())
        return QStringLiteral("doesn't end");
    QStringList cLog = newLog(daemon(), m_iSeen);
    cLog.removeAll(QStringLiteral("Terminating haldend..."));
    return withLog(QString::number(daemon().exitCode()), cLog);
}

void TestFaults::every_cell_of_the_table_data()
{
    QTest::addColumn<int>("operation");
    for (int i = BOARD_OPERATION_NONE + 1; i < BOARD_OPERATION_COUNT; ++i)
        QTest::newRow(qPrintable(CBoard::operationName(static_cast<board_operation>(i)))) << i;
}

void TestFaults::every_cell_of_the_table()
{
    QFETCH(int, operation);
    const auto eOperation = static_cast<board_operation>(operation);
    QStringList cCells{atStart(eOperation)};
    CLife cLife(eOperation);
    QVERIFY2(cLife.start(), cLife.describe());
    cCells << cLife.whileRunning() << cLife.whileAnImageIsSaved() << cLife.whileRegistersAreSaved()
           << cLife.whileReloading() << cLife.atEnd();
    // The row as it should stand in the page.
    QCOMPARE(QStringLiteral("| %1 |").arg(cCells.join(QStringLiteral(" | "))),
             QStringLiteral("| %1 |").arg(
                 m_cTable.value(CBoard::operationName(eOperation)).join(QStringLiteral(" | "))));
}

QTEST_GUILESS_MAIN(TestFaults)

#include "tst_faults.moc"
