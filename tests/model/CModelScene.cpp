/* SPDX-License-Identifier: MIT */
#include "tests/model/CModelScene.h"

#include "hw/fpga_map.h"

#include <QFile>

#include <algorithm>
#include <csignal>
#include <set>

namespace
{

// After a leap the daemon wakes up for the first call, handles its timers before the second, those that are due once
// more before the third, and the work that these queued before the fourth. The commands of the recorder queue work, too.
const int CALLS_AFTER_LEAP = 5;
const int CALLS_AFTER_COMMAND = 2;

const SCall NO_EFFECT = {"/videooverlay", "get_max_text_line_width", {}};

// Signals of one name come in their order; those of different names needn't.
QByteArrayList byName(QByteArrayList cSignals)
{
    const auto nameOf = [](const QByteArray& rcSignal) { return rcSignal.left(rcSignal.indexOf(' ')); };
    std::stable_sort(
        cSignals.begin(), cSignals.end(),
        [&](const QByteArray& rcOne, const QByteArray& rcOther) { return nameOf(rcOne) < nameOf(rcOther); });
    return cSignals;
}

QByteArray listDifference(const char* pszWhat, const QByteArrayList& rcHas, const QByteArrayList& rcShould)
{
    if (rcHas == rcShould)
        return {};
    return QByteArray(pszWhat) + ": has [" + rcHas.join(", ") + "], should have [" + rcShould.join(", ") +
           ']';
}

// Of Qt or of a sanitizer. Two methods have no slot on purpose, and Qt says so. Logged texts may have lines of their own.
bool isComplaint(const QByteArray& rcLine)
{
    return rcLine.contains("ERROR: ") || rcLine.contains("runtime error: ") ||
           (rcLine.startsWith('Q') && !rcLine.startsWith("QMetaObject::invokeMethod: No such method"));
}

} // namespace

bool CModelScene::prepare()
{
    if (!m_cScene.prepare())
        return false;
    // What the codec service is asked by.
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", m_cScene.bus().address().toUtf8());
    m_cScene.daemon().useClock(m_cClock.clock());
    m_cScene.daemon().setRedirections(QStringLiteral(">/dev/null 2>'%1'").arg(file("errors")));
    return m_cClock.isValid() && m_cCodec.start(m_cScene.bus().address());
}

CDaemonModel CModelScene::newModel() const
{
    CDaemonModel cModel;
    cModel.setFiles(file("film.ts").toUtf8(), file("still.bmp").toUtf8());
    return cModel;
}

bool CModelScene::begin()
{
    // One whose start came too late may be left.
    if (m_cScene.daemon().process().state() != QProcess::NotRunning)
        m_cScene.daemon().endBySignal(SIGKILL);
    QFile cFilm(file("film.ts"));
    QFile::remove(file("still.bmp"));
    if (!cFilm.open(QIODevice::WriteOnly))
        return false;
    m_cCodec.setConfirming(true);
    m_cScene.board().setCameraPlugged(true);
    m_pcCaller = std::make_unique<CCaller>();
    if (!m_cScene.start() || !m_pcCaller->start(m_cScene.bus().address()))
        return false;
    m_cCodec.takeCalls();
    return true;
}

QByteArray CModelScene::end()
{
    // The board judges what clients have put there without a limit.
    m_pcCaller->send({
        "/videodisplay", "set_video_position", {0, 0}
    });
    settle(1);
    const QString cWrong = m_cScene.end();
    m_pcCaller.reset();
    if (!cWrong.isEmpty())
        return cWrong.toUtf8();
    QFile cErrors(file("errors"));
    if (!cErrors.open(QIODevice::ReadOnly))
        return "no standard error";
    for (const QByteArray& rcLine : cErrors.readAll().split('\n'))
        if (isComplaint(rcLine))
            return "said: " + rcLine;
    return {};
}

bool CModelScene::growFilm()
{
    QFile cFilm(file("film.ts"));
    return cFilm.open(QIODevice::Append) && cFilm.write("x") == 1;
}

bool CModelScene::settle(int iCalls)
{
    for (int i = 0; i < iCalls; ++i)
        if (m_pcCaller->ask(NO_EFFECT) != "i 53")
            return false;
    return true;
}

QByteArray CModelScene::carryOut(const SCall& rsCall, bool bReply)
{
    bool bDone = true;
    QByteArray cAnswer = "";
    int iCalls = rsCall.cPath == "/videoprocessing" ? CALLS_AFTER_COMMAND : 0;
    if (rsCall.cMethod == "pass") {
        bDone = (!rsCall.cArguments[1].toBool() || growFilm()) && m_cClock.leap(rsCall.cArguments[0].toInt());
        iCalls = CALLS_AFTER_LEAP;
    } else if (rsCall.cMethod == "codec") {
        m_cCodec.setConfirming(rsCall.cArguments[0].toBool());
    } else if (rsCall.cMethod == "camera") {
        m_cScene.board().setCameraPlugged(rsCall.cArguments[0].toBool());
    } else if (bReply) {
        cAnswer = m_pcCaller->ask(rsCall);
    } else {
        m_pcCaller->send(rsCall);
    }
    m_bCodecMayBeAsked = iCalls > 0;
    return bDone && settle(iCalls) ? cAnswer : "the daemon doesn't answer";
}

QByteArray CModelScene::difference(CDaemonModel& rcModel)
{
    QByteArray cDifference = m_bCodecMayBeAsked ? codecDifference(rcModel) : QByteArray();
    if (cDifference.isEmpty())
        cDifference = getterDifference(rcModel);
    // They came before the answers.
    if (cDifference.isEmpty())
        cDifference =
            listDifference("signals", byName(m_pcCaller->takeSignals()), byName(rcModel.takeSignals()));
    if (cDifference.isEmpty())
        cDifference = pageDifference(rcModel);
    return cDifference;
}

QByteArray CModelScene::codecDifference(CDaemonModel& rcModel)
{
    QByteArrayList cCalls;
    for (const QString& rcCall : m_cCodec.takeCalls())
        cCalls << rcCall.toUtf8();
    return listDifference("codec calls", cCalls, rcModel.takeCodecCalls());
}

QVector<SCall> CModelScene::getterCalls(const CDaemonModel& rcModel) const
{
    std::set<int> cHandles = {0};
    std::set<int> cIds = {0, 102};
    for (const auto& rcEntry : rcModel.texts().texts()) {
        cHandles.insert(static_cast<int>(rcEntry.first));
        cIds.insert(static_cast<int>(rcEntry.second.u32Id));
    }
    cHandles.insert(*cHandles.rbegin() + 1);
    QVector<SCall> cCalls;
    for (const CInterfaces::SMethod& rsMethod : m_cMethods) {
        if (!rsMethod.isGetter())
            continue;
        if (rsMethod.cIn.isEmpty())
            cCalls << SCall{rsMethod.cPath, rsMethod.cName, {}};
        else
            for (const int iValue : rsMethod.cIn[0].cName == "id" ? cIds : cHandles)
                cCalls << SCall{rsMethod.cPath, rsMethod.cName, {iValue}};
    }
    return cCalls;
}

QByteArray CModelScene::getterDifference(CDaemonModel& rcModel)
{
    const QVector<SCall> cCalls = getterCalls(rcModel);
    const QVector<QByteArray> cAnswers = m_pcCaller->ask(cCalls);
    for (int i = 0; i < cCalls.size(); ++i) {
        const QByteArray cShould = rcModel.apply(cCalls[i]);
        if (cAnswers[i] != cShould)
            return cCalls[i].describe() + " answers " + cAnswers[i] + ", should " + cShould;
    }
    return {};
}

QByteArray CModelScene::pageDifference(const CDaemonModel& rcModel)
{
    const CTextLayerModel& rcTexts = rcModel.texts();
    const QByteArray cHas = m_cScene.board().fpgaMemory(FPGA_TEXT_PAGES, rcTexts.pageBytes());
    const QByteArray cShould(reinterpret_cast<const char*>(rcTexts.page()), rcTexts.pageBytes());
    const auto cPair = std::mismatch(cHas.begin(), cHas.end(), cShould.begin(), cShould.end());
    if (cPair.first == cHas.end() && cPair.second == cShould.end())
        return {};
    const int iCell = static_cast<int>(cPair.first - cHas.begin()) / 2;
    return "text page, column " + QByteArray::number(iCell % 64) + ", row " + QByteArray::number(iCell / 64) +
           ": has " + cHas.mid(2 * iCell, 2).toHex() + ", should have " + cShould.mid(2 * iCell, 2).toHex();
}
