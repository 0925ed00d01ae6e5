/* SPDX-License-Identifier: MIT */
/* The daemon against a model of what its interfaces promise: sequences of calls that RapidCheck draws, and shortens
 * when one of them finds a difference. It prints its seed; RC_PARAMS="seed=..." draws the same sequences again,
 * RC_PARAMS="max_success=1000" more of them. */
#include "tests/model/CCallDraw.h"
#include "tests/model/CModelScene.h"

#include <QDeadlineTimer>
#include <QtTest>

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include <rapidcheck.h>
#include <rapidcheck/state.h>

namespace
{

const std::size_t MAX_TEXTS = 12; // so that they meet
const double LENGTH_FACTOR = 2;   // of RapidCheck's sequences, of up to 100 steps
const int SHORTENING_MS = 120000;

using ICommand = rc::state::Command<CDaemonModel, CModelScene>;

class CCallCommand : public ICommand
{
public:
    explicit CCallCommand(const CCallDraw::SDrawn& rsDrawn) : m_sDrawn(rsDrawn) {}

    void checkPreconditions(const CDaemonModel& rcModel) const override
    {
        const QByteArray& rcMethod = m_sDrawn.sCall.cMethod;
        RC_PRE((rcMethod != "create_text" && rcMethod != "draw_temp_text") ||
               rcModel.texts().texts().size() < MAX_TEXTS);
    }

    void apply(CDaemonModel& rcModel) const override { answer(rcModel); }

    void run(const CDaemonModel& rcModel, CModelScene& rcScene) const override
    {
        CDaemonModel cModel = rcModel;
        const QByteArray cShould = answer(cModel);
        const QByteArray cHas = rcScene.carryOut(m_sDrawn.sCall, m_sDrawn.bReply);
        RC_ASSERT(cHas.toStdString() == cShould.toStdString());
        const QByteArray cDifference = rcScene.difference(cModel);
        if (!cDifference.isEmpty())
            RC_FAIL(cDifference.toStdString());
    }

    std::vector<std::shared_ptr<const ICommand>> simpler() const
    {
        std::vector<std::shared_ptr<const ICommand>> cSimpler;
        for (const CCallDraw::SDrawn& rsDrawn : CCallDraw::simpler(m_sDrawn))
            cSimpler.push_back(std::make_shared<CCallCommand>(rsDrawn));
        return cSimpler;
    }

    void show(std::ostream& rcStream) const override { rcStream << m_sDrawn.sCall.describe().toStdString(); }

private:
    QByteArray answer(CDaemonModel& rcModel) const
    {
        // What the last step left is no concern of this one.
        rcModel.takeSignals();
        rcModel.takeCodecCalls();
        return m_sDrawn.bWrongTypes ? QByteArray("error org.freedesktop.DBus.Error.UnknownMethod")
                                    : rcModel.apply(m_sDrawn.sCall);
    }

    CCallDraw::SDrawn m_sDrawn;
};

using CSteps = rc::state::Commands<ICommand>;

// Without one half of the steps, without a quarter, and so on to single ones. RapidCheck's own orders begin with hundreds
// of sequences of a few steps, and each takes a daemon.
std::vector<CSteps> withFewer(const CSteps& rcSteps)
{
    std::vector<CSteps> cShorter;
    for (std::size_t uChunk = (rcSteps.size() + 1) / 2; uChunk > 0; uChunk /= 2) {
        for (std::size_t uFrom = 0; uFrom < rcSteps.size(); uFrom += uChunk) {
            const std::size_t uTo = std::min(uFrom + uChunk, rcSteps.size());
            cShorter.push_back(rcSteps);
            cShorter.back().erase(cShorter.back().begin() + static_cast<std::ptrdiff_t>(uFrom),
                                  cShorter.back().begin() + static_cast<std::ptrdiff_t>(uTo));
        }
    }
    return cShorter;
}

rc::Seq<CSteps> shorter(const CSteps& rcSteps)
{
    const auto simpler = [](const std::shared_ptr<const ICommand>& rpcStep) {
        return rc::seq::fromContainer(static_cast<const CCallCommand&>(*rpcStep).simpler());
    };
    return rc::seq::concat(rc::seq::fromContainer(withFewer(rcSteps)),
                           rc::shrink::eachElement(rcSteps, simpler));
}

} // namespace

class TestModel : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void knows_every_method_of_the_interfaces();
    void equals_the_daemon_after_each_step();

private:
    QVector<CInterfaces::SMethod> m_cMethods;
};

void TestModel::initTestCase()
{
    m_cMethods = CInterfaces::read(HALDEND_INTERFACE_DIR);
    QVERIFY(!m_cMethods.isEmpty());
}

void TestModel::knows_every_method_of_the_interfaces()
{
    for (const CInterfaces::SMethod& rsMethod : m_cMethods) {
        SCall sCall = {rsMethod.cPath, rsMethod.cName, {}};
        for (const CInterfaces::SArgument& rsArgument : rsMethod.cIn) {
            QVERIFY2(CCallDraw::knows(rsArgument), rsMethod.cName + ' ' + rsArgument.cName);
            sCall.cArguments << 0;
        }
        if (rsMethod.cName != "save_hardware_config")
            QVERIFY2(!CDaemonModel().apply(sCall).isNull(), rsMethod.cName);
    }
}

void TestModel::equals_the_daemon_after_each_step()
{
    const CCallDraw cDraw(m_cMethods);
    const auto generate = [&cDraw](const CDaemonModel& rcModel) {
        return rc::gen::exec([&cDraw, rcModel]() -> std::shared_ptr<const ICommand> {
            return std::make_shared<CCallCommand>(cDraw.draw(rcModel));
        });
    };
    CModelScene cScene(m_cMethods);
    QVERIFY2(cScene.prepare(), cScene.describe());
    int iSteps = 0;
    QDeadlineTimer cShortening(QDeadlineTimer::Forever);
    std::string cShortest;
    const bool bEqual = rc::check("the daemon equals the model", [&] {
        CDaemonModel cModel = cScene.newModel();
        const auto cDrawn = rc::gen::scale(LENGTH_FACTOR, rc::state::gen::commands(cModel, generate));
        const CSteps cSteps = *rc::gen::shrink(rc::gen::noShrink(cDrawn), &shorter);
        // What is shortest by then stays.
        const std::string cText = rc::toString(cSteps);
        if (cShortening.hasExpired() && cText != cShortest)
            return;
        if (!cScene.begin())
            RC_FAIL(cScene.describe().toStdString());
        try {
            rc::state::runAll(cSteps, cModel, cScene);
            const QByteArray cEnd = cScene.end();
            iSteps += static_cast<int>(cSteps.size());
            if (!cEnd.isEmpty())
                RC_FAIL(cEnd.toStdString());
        } catch (...) {
            if (cShortening.isForever())
                cShortening.setRemainingTime(SHORTENING_MS);
            cShortest = cText;
            throw;
        }
    });
    std::printf("%d steps\n", iSteps);
    QVERIFY(bEqual);
}

QTEST_GUILESS_MAIN(TestModel)

#include "tst_model.moc"
