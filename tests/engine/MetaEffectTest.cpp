#include "engine/MetaEffect.h"

#include "tests/engine/TestShow.h"

#include <QMetaMethod>
#include <QPointer>
#include <QSignalSpy>

using TestShow::kStartMs;
using TestShow::ProbeEffect;
using TestShow::TestMap;

class MetaEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void isBornActiveAndLooping();
    void signalsAndSlotsStandInOrder();
    void addingNumbersSortsConnectsAndFollowsTheEnd();
    void addingLooksForTheGreatestNumber();
    void appendingDoesNothingElse();
    void removingForgetsAndDoesNotDelete();
    void compileSetsTheTimelineUp();
    void compileAllAndStopAllReachTheChildren();
    void compileAllReachesIntoNestedTimelines();
    void listsTheGroupsOfTheChildren();
    void deletingAShowFreesEveryEffectOnce();
    void activeFromBeginAndBeforeEnd();
    void leavingClearsTransparencyOnlyOfAnActiveChild();
    void lateEntryCountsFromTheChildsBegin();
    void fades_data();
    void fades();
    void aFadeReplacesTheInheritedTransparency();
    void transparencyIsInherited();
    void prioritiesAddUpForTheCallOnly();
    void inactiveChildrenAreTickedToo();
    void loopingHasNoDarkFrame();
    void wrappingUsesTwoTimes();
    void withoutLoopItRunsOut();
    void anEmptyTimelineWrapsHarmlessly();
    void restartWaitsForTheNextFrame();
    void nestedTimelinesRunOnTheirOwnClock();
    void aChildMayChangeTheListMeanwhile();
    void tellsEveryFrame();
    void brightnessDimsEveryLightButNotTheSimulation();
    void brightnessKeepsProfileAndAlpha();
    void brightnessLeavesInvalidColoursAlone();
    void greysCanBeDimmedTwice();
    void brightnessBelowZeroIsBlack();
    void nestedBrightnessDimsWhatIsPaintedSoFar();
    void opacityReachesEveryLight();
};

namespace {

/// A looping timeline whose zero is kStartMs.
class Timeline : public MetaEffect
{
public:
    explicit Timeline(MapModel* model = nullptr)
        : MetaEffect(model, kNoGid, nullptr)
    {
        setStartMs(kStartMs);
    }
    /// A frame at `t` milliseconds.
    void run(qint64 t) { Effect::tick(kStartMs + t, m_frames++); }

private:
    uint m_frames = 0;
};

} // namespace

void MetaEffectTest::isBornActiveAndLooping()
{
    const MetaEffect effect(nullptr, 3, nullptr);
    QCOMPARE(effect.name(), QStringLiteral("Meta Effect"));
    QCOMPARE(effect.type(), QStringLiteral("Meta Effect"));
    QCOMPARE(effect.typeId(), 7);
    QCOMPARE(effect.gid(), quint64(3));
    QVERIFY(effect.active());
    QVERIFY(!effect.compiled());
    QVERIFY(effect.loop());
    QCOMPARE(effect.brightness(), 1.0);
    QCOMPARE(effect.cycleTime(), 0U);
    QVERIFY(effect.effectList().isEmpty());
}

void MetaEffectTest::signalsAndSlotsStandInOrder()
{
    const QMetaObject& meta = MetaEffect::staticMetaObject;
    const QList<QByteArray> expected = {"updateEffectTimesComplete()",
                                        "internalUpdateLightsComplete()", "updateEffectTimes()",
                                        "updateEffectTime(Effect*)", "updateEndTime()"};
    for (int i = 0; i < expected.size(); ++i) {
        QCOMPARE(meta.method(meta.methodOffset() + i).methodSignature(), expected.at(i));
    }
}

void MetaEffectTest::addingNumbersSortsConnectsAndFollowsTheEnd()
{
    Timeline root;
    QSignalSpy length(&root, &Effect::cycleTimeChanged);
    QSignalSpy resolved(&root, &MetaEffect::updateEffectTimesComplete);
    ProbeEffect high(0, 70);
    ProbeEffect low(0, 40);
    high.setPriority(2);
    root.addEffect(nullptr);
    root.addEffect(&high);
    QCOMPARE(high.eid(), 1U);
    QCOMPARE(root.end(), 70U);
    QCOMPARE(length.count(), 1);
    QCOMPARE(length.first().first().toUInt(), 70U);
    root.addEffect(&low);
    QCOMPARE(low.eid(), 2U);
    QCOMPARE(length.count(), 1); // the end stayed
    QCOMPARE(root.effectList(), QList<Effect*>({&low, &high}));
    QCOMPARE(resolved.count(), 0);
    low.changeCycle(5);
    QCOMPARE(resolved.count(), 1);
}

void MetaEffectTest::addingLooksForTheGreatestNumber()
{
    Timeline root;
    ProbeEffect effects[5];
    effects[0].setEid(7);
    effects[1].setEid(3);
    root.addEffect(&effects[0]);
    root.addEffect(&effects[1]);
    root.appendEffect(&effects[2]); // without a number, which is not the greatest
    root.addEffect(&effects[3]);
    QCOMPARE(effects[3].eid(), 8U);
    QCOMPARE(effects[1].eid(), 3U);
    root.addEffect(&effects[4]);
    QCOMPARE(effects[4].eid(), 9U);
    QVERIFY(root.effectByEid(9) == &effects[4]);
    QVERIFY(root.effectByEid(1) == nullptr);
    effects[4].setEid(7);
    QVERIFY(root.effectByEid(7) == &effects[0]); // the first of two
}

void MetaEffectTest::appendingDoesNothingElse()
{
    Timeline root;
    QSignalSpy length(&root, &Effect::cycleTimeChanged);
    QSignalSpy resolved(&root, &MetaEffect::updateEffectTimesComplete);
    ProbeEffect high(0, 70);
    ProbeEffect low(0, 40);
    high.setPriority(2);
    root.appendEffect(&high);
    root.appendEffect(&low);
    root.appendEffect(&high);
    root.appendEffect(nullptr);
    QCOMPARE(root.effectList(), QList<Effect*>({&high, &low}));
    QCOMPARE(high.eid(), Effect::kNoEid);
    QCOMPARE(root.end(), 0U);
    QCOMPARE(length.count(), 0);
    low.changeCycle(5);
    QCOMPARE(resolved.count(), 0);
    root.sortEffects();
    QCOMPARE(root.effectList(), QList<Effect*>({&low, &high}));
}

void MetaEffectTest::removingForgetsAndDoesNotDelete()
{
    Timeline root;
    auto* const effect = new ProbeEffect(0, 10);
    const QPointer<Effect> watch(effect);
    root.addEffect(effect);
    root.addEffect(effect);
    root.removeEffect(nullptr);
    root.removeEffect(effect);
    QVERIFY(root.effectList().isEmpty());
    QVERIFY(!watch.isNull());
    QCOMPARE(root.end(), 10U); // until the next pass
    root.updateEffectTimes();
    QCOMPARE(root.end(), 0U);
    delete effect;
}

void MetaEffectTest::compileSetsTheTimelineUp()
{
    TestMap map(1);
    MetaEffect root(map.model(), 1, nullptr);
    ProbeEffect first(0, 30);
    ProbeEffect second(0, 20);
    first.setPriority(1);
    root.appendEffect(&first);
    root.appendEffect(&second);
    root.setBegin(9);
    root.tick(kStartMs, 0);
    root.tick(kStartMs + 40, 1);
    QSignalSpy begins(&root, &Effect::beginChanged);
    QVERIFY(root.compile());
    QVERIFY(root.compiled());
    QCOMPARE(begins.count(), 1);
    QCOMPARE(root.begin(), 0U);
    QCOMPARE(root.end(), 30U);
    QCOMPARE(root.startMs(), kStartMs + 40); // the show jumps to its start
    QCOMPARE(root.effectList(), QList<Effect*>({&second, &first}));
    QCOMPARE(first.compiles, 0);
}

void MetaEffectTest::compileAllAndStopAllReachTheChildren()
{
    Timeline root;
    ProbeEffect first;
    ProbeEffect second;
    root.addEffect(&first);
    root.addEffect(&second);
    first.setActive(true);
    second.setActive(true);
    root.compileAll();
    QCOMPARE(first.compiles + second.compiles, 2);
    QVERIFY(!root.compiled());
    root.stopAll();
    QVERIFY(!first.active() && !second.active());
    QVERIFY(root.active());
}

void MetaEffectTest::compileAllReachesIntoNestedTimelines()
{
    Timeline root;
    MetaEffect nested(nullptr, 0, nullptr);
    MetaEffect inner(nullptr, 0, nullptr);
    ProbeEffect child(0, 10);
    ProbeEffect grandchild(0, 10);
    inner.addEffect(&grandchild);
    nested.addEffect(&child);
    nested.addEffect(&inner);
    nested.appendEffect(&root); // a ring
    root.addEffect(&nested);
    inner.setBegin(500);
    root.compileAll();
    QVERIFY(nested.compiled());
    QCOMPARE(child.compiles, 1);
    QCOMPARE(grandchild.compiles, 1);
    QCOMPARE(inner.begin(), 500U);
    QVERIFY(!root.compiled());
}

void MetaEffectTest::listsTheGroupsOfTheChildren()
{
    Timeline root;
    ProbeEffect effects[3];
    const quint64 gids[] = {5, 4, 5};
    for (int i = 0; i < 3; ++i) {
        effects[i].setGid(gids[i]);
        root.addEffect(&effects[i]);
    }
    QCOMPARE(root.childGroupIds(), QList<quint64>({5, 4, 5}));
    QCOMPARE(root.groupIds(), QList<quint64>({Effect::kNoGid}));
}

void MetaEffectTest::deletingAShowFreesEveryEffectOnce()
{
    auto* const root = new MetaEffect(nullptr, 0, nullptr);
    auto* const nested = new MetaEffect(nullptr, 0, nullptr);
    auto* const leaf = new ProbeEffect;
    const QVector<QPointer<Effect>> all = {root, nested, leaf};
    root->addEffect(nested);
    nested->addEffect(leaf);
    nested->addEffect(leaf);    // twice,
    root->appendEffect(leaf);   // in two lists,
    nested->appendEffect(root); // and in a ring
    root->deleteShow();
    for (const QPointer<Effect>& effect : all) {
        QVERIFY(effect.isNull());
    }
}

void MetaEffectTest::activeFromBeginAndBeforeEnd()
{
    Timeline root;
    ProbeEffect child(100, 300);
    ProbeEffect last(0, 1000);
    root.addEffect(&child);
    root.addEffect(&last);
    const QVector<QPair<qint64, bool>> steps = {{0, false},  {99, false},  {100, true},
                                                {299, true}, {300, false}, {120, true}};
    for (const auto& step : steps) {
        child.frames.clear();
        root.run(step.first);
        QCOMPARE(child.active(), step.second);
        QCOMPARE(child.frames.size(), step.second ? 1 : 0);
    }
    ProbeEffect none; // without a span it never runs
    root.addEffect(&none);
    root.run(0);
    QVERIFY(none.frames.isEmpty());
    ProbeEffect reversed(500, 400);
    root.addEffect(&reversed);
    root.run(450);
    QVERIFY(reversed.frames.isEmpty());
}

void MetaEffectTest::leavingClearsTransparencyOnlyOfAnActiveChild()
{
    Timeline root;
    root.setTransparency(0.5);
    ProbeEffect child(100, 200);
    ProbeEffect last(0, 1000);
    root.addEffect(&child);
    root.addEffect(&last);
    root.run(50);
    QCOMPARE(child.transparency(), 0.5);
    root.run(150);
    QCOMPARE(child.transparency(), 0.5);
    root.run(200);
    QCOMPARE(child.transparency(), 0.0);
    root.run(225);
    QCOMPARE(child.transparency(), 0.5);
}

void MetaEffectTest::lateEntryCountsFromTheChildsBegin()
{
    Timeline root;
    ProbeEffect child(100, 300);
    ProbeEffect last(0, 1000);
    child.setFadein(200);
    root.addEffect(&child);
    root.addEffect(&last);
    root.run(0);
    root.run(250); // a jump
    QCOMPARE(child.frames.last().elapsed, qint64(150));
    QCOMPARE(child.frames.last().transparency, 0.25); // on the ramp where it would be
    root.run(260);
    QCOMPARE(child.frames.last().elapsed, qint64(160));
}

void MetaEffectTest::fades_data()
{
    // The child lies at 100 to 200.
    QTest::addColumn<uint>("fadein");
    QTest::addColumn<uint>("fadeout");
    QTest::addColumn<qint64>("t");
    QTest::addColumn<double>("transparency");
    const auto row = [](const char* name, uint in, uint out, qint64 t, double transparency) {
        QTest::newRow(name) << in << out << t << transparency;
    };
    row("none", 0, 0, 100, 0.0);
    row("in, first frame", 40, 0, 100, 1.0);
    row("in, a quarter", 40, 0, 110, 0.75);
    row("in, just before its end", 40, 0, 139, 1.0 - 39.0 / 40.0);
    row("in, over", 40, 0, 140, 0.0);
    row("out, not yet", 0, 40, 160, 0.0);
    row("out, first", 0, 40, 161, 1.0 - 39.0 / 40.0);
    row("out, last", 0, 40, 199, 1.0 - 1.0 / 40.0);
    row("both apart, in", 40, 40, 120, 0.5);
    row("both apart, between", 40, 40, 150, 0.0);
    row("both apart, out", 40, 40, 180, 0.5);
    row("both meet: out wins", 100, 100, 120, 1.0 - 80.0 / 100.0);
    row("both meet: out wins at first", 100, 200, 100, 0.5);
    row("in longer than the effect", 1000, 0, 199, 1.0 - 99.0 / 1000.0);
    row("longest", 4294967295U, 0, 199, 1.0 - 99.0 / 4294967295.0);
}

void MetaEffectTest::fades()
{
    QFETCH(const uint, fadein);
    QFETCH(const uint, fadeout);
    QFETCH(const qint64, t);
    QFETCH(const double, transparency);
    Timeline root;
    ProbeEffect child(100, 200);
    ProbeEffect last(0, 1000);
    child.setFadein(fadein);
    child.setFadeout(fadeout);
    root.addEffect(&child);
    root.addEffect(&last);
    root.run(t);
    QCOMPARE(child.frames.size(), 1);
    QCOMPARE(child.frames.first().transparency, transparency);
}

void MetaEffectTest::aFadeReplacesTheInheritedTransparency()
{
    Timeline root;
    root.setTransparency(0.5);
    ProbeEffect child(0, 200);
    child.setFadein(100);
    root.addEffect(&child);
    root.run(80);
    QCOMPARE(child.frames.last().transparency, 1.0 - 80.0 / 100.0);
    root.run(100);
    QCOMPARE(child.frames.last().transparency, 0.5);
}

void MetaEffectTest::transparencyIsInherited()
{
    Timeline root;
    root.setTransparency(0.25);
    MetaEffect nested(nullptr, 0, nullptr);
    ProbeEffect child(0, 100);
    child.setTransparency(0.9); // lost at the first frame
    nested.addEffect(&child);
    root.addEffect(&nested);
    root.run(0);
    QCOMPARE(child.frames.last().transparency, 0.25);
    QCOMPARE(nested.transparency(), 0.25);
}

void MetaEffectTest::prioritiesAddUpForTheCallOnly()
{
    Timeline root;
    MetaEffect nested(nullptr, 0, nullptr);
    ProbeEffect child(0, 100);
    root.setPriority(5);
    nested.setPriority(3);
    child.setPriority(2);
    nested.addEffect(&child);
    root.addEffect(&nested);
    root.run(0);
    root.run(25);
    QCOMPARE(child.frames.first().priority, 10U);
    QCOMPARE(child.frames.last().priority, 10U);
    QCOMPARE(root.priority(), 5U);
    QCOMPARE(nested.priority(), 3U);
    QCOMPARE(child.priority(), 2U);
}

void MetaEffectTest::inactiveChildrenAreTickedToo()
{
    Timeline root;
    ProbeEffect child(500, 600);
    root.addEffect(&child);
    root.run(25);
    QVERIFY(child.frames.isEmpty());
    QCOMPARE(child.lastMs(), kStartMs + 25);
    QCOMPARE(child.currentMs(), kStartMs + 25);
}

void MetaEffectTest::loopingHasNoDarkFrame()
{
    Timeline root;
    ProbeEffect child(0, 100);
    root.addEffect(&child);
    for (int t = 0; t <= 1000; t += 25) {
        root.run(t);
        QVERIFY(child.active());
    }
    QCOMPARE(child.frames.size(), 41);
}

void MetaEffectTest::wrappingUsesTwoTimes()
{
    Timeline root;
    ProbeEffect always(0, 100);
    ProbeEffect early(20, 50);
    root.addEffect(&always);
    root.addEffect(&early);
    root.run(0);
    root.run(90);
    QCOMPARE(always.frames.last().elapsed, qint64(90));
    QVERIFY(!early.active());
    root.run(115); // 15 past the end; the new run counts from the frame at 90
    QCOMPARE(root.elapsed(), qint64(25));
    QCOMPARE(always.frames.last().elapsed, qint64(0)); // this run begins with this frame
    QCOMPARE(early.frames.last().elapsed, qint64(5));  // entered late, at 25
    root.run(140);
    QCOMPARE(root.elapsed(), qint64(50));
    QCOMPARE(always.frames.last().elapsed, qint64(25));
    QVERIFY(!early.active());
}

void MetaEffectTest::withoutLoopItRunsOut()
{
    Timeline root;
    root.setLoop(false);
    ProbeEffect child(0, 100);
    root.addEffect(&child);
    root.run(99);
    QVERIFY(child.active());
    root.run(100);
    QVERIFY(!child.active());
    root.run(5000);
    QVERIFY(!child.active());
    QCOMPARE(root.elapsed(), qint64(5000));
    QCOMPARE(child.frames.size(), 1);
}

void MetaEffectTest::anEmptyTimelineWrapsHarmlessly()
{
    Timeline root;
    QSignalSpy painted(&root, &MetaEffect::internalUpdateLightsComplete);
    root.run(0);
    root.run(25);
    root.run(50);
    QCOMPARE(painted.count(), 3);
    QCOMPARE(root.startMs(), kStartMs + 25); // the frame before
    QCOMPARE(root.elapsed(), qint64(25));
}

void MetaEffectTest::restartWaitsForTheNextFrame()
{
    Timeline root;
    ProbeEffect child(0, 1000);
    root.addEffect(&child);
    root.run(0);
    root.run(300);
    root.restart();
    QCOMPARE(root.startMs(), kStartMs);
    root.run(325);
    QCOMPARE(root.elapsed(), qint64(25));
    QCOMPARE(child.frames.last().elapsed, qint64(0));
    root.run(350);
    QCOMPARE(root.elapsed(), qint64(50));
    QCOMPARE(child.frames.last().elapsed, qint64(25));
    root.setLoop(false);
    root.restart();
    root.run(375);
    QCOMPARE(root.elapsed(), qint64(25));
}

void MetaEffectTest::nestedTimelinesRunOnTheirOwnClock()
{
    Timeline root;
    MetaEffect nested(nullptr, 0, nullptr);
    ProbeEffect child(0, 50);
    nested.addEffect(&child);
    nested.setBegin(100);
    nested.setEnd(150);
    ProbeEffect last(0, 1000);
    root.addEffect(&nested);
    root.addEffect(&last);
    root.run(0);
    QVERIFY(child.frames.isEmpty());
    QVERIFY(!nested.active());
    root.run(110);
    QCOMPARE(nested.elapsed(), qint64(10));
    QCOMPARE(child.frames.last().elapsed, qint64(10));
}

void MetaEffectTest::aChildMayChangeTheListMeanwhile()
{
    Timeline root;
    ProbeEffect first(0, 100);
    ProbeEffect second(0, 100);
    first.onFrame = [&] { root.removeEffect(&second); };
    root.addEffect(&first);
    root.addEffect(&second);
    root.run(0);
    QCOMPARE(second.frames.size(), 1);
    root.run(25);
    QCOMPARE(second.frames.size(), 1);
}

void MetaEffectTest::tellsEveryFrame()
{
    Timeline root;
    ProbeEffect child(0, 100);
    root.addEffect(&child);
    int framesWhenTold = 0;
    connect(&root, &MetaEffect::internalUpdateLightsComplete, this,
            [&] { framesWhenTold = child.frames.size(); });
    root.run(0);
    QCOMPARE(framesWhenTold, 1);
    root.run(25);
    QCOMPARE(framesWhenTold, 2);
}

void MetaEffectTest::brightnessDimsEveryLightButNotTheSimulation()
{
    TestMap map(2);
    Timeline root(map.model());
    ProbeEffect child(0, 100);
    child.onFrame = [&] {
        map.light(1)->mixColor(Qt::red, 0);
        map.light(1)->mixSimColor(Qt::red, 0);
    };
    root.addEffect(&child);
    root.compile();
    root.setStartMs(kStartMs);
    root.setBrightness(0.5);
    map.light(2)->mixColorRef() = VelaColor(Qt::blue); // by whomever
    root.run(0);
    VelaColor red(Qt::red);
    red.setHsvF(0.0, 1.0, 0.5, 1.0);
    QCOMPARE(map.mix(1), red);
    QCOMPARE(map.sim(1), QColor(Qt::red));
    QCOMPARE(map.mix(2).spec(), VelaColor::Hsv);
    QCOMPARE(map.mix(2).toQColor(true), QColor(0, 0, 128));
    root.setBrightness(1.0);
    map.endFrame();
    root.run(25);
    QCOMPARE(map.mix(1), VelaColor(Qt::red));
    QVERIFY(map.mix(2).spec() == VelaColor::Rgb); // untouched
}

void MetaEffectTest::brightnessKeepsProfileAndAlpha()
{
    TestMap map(1);
    Timeline root(map.model());
    root.setBrightness(0.25);
    VelaColor color = VelaColor::fromRgbF(0.0, 1.0, 0.0, 0.5, 7);
    map.light(1)->mixColorRef() = color;
    root.run(0);
    color.setHsvF(1.0 / 3.0, 1.0, 0.25, color.alphaF(), 7);
    QCOMPARE(map.mix(1), color);
}

void MetaEffectTest::brightnessLeavesInvalidColoursAlone()
{
    TestMap map(1);
    Timeline root(map.model());
    root.setBrightness(0.25);
    map.light(1)->mixColorRef().reset();
    root.run(0);
    QCOMPARE(map.mix(1).spec(), VelaColor::Invalid);
}

void MetaEffectTest::greysCanBeDimmedTwice()
{
    TestMap map(1);
    Timeline root(map.model());
    MetaEffect nested(map.model(), 0, nullptr);
    nested.setBrightness(0.5);
    nested.setEnd(100);
    root.setBrightness(0.5);
    root.addEffect(&nested);
    root.compile();
    root.setStartMs(kStartMs);
    map.light(1)->mixColorRef() = VelaColor(Qt::white);
    root.run(0);
    QVERIFY(map.mix(1).isValid());
    QCOMPARE(map.mix(1).toQColor(true), QColor(64, 64, 64));
}

void MetaEffectTest::brightnessBelowZeroIsBlack()
{
    TestMap map(1);
    Timeline root(map.model());
    root.setBrightness(-3.0);
    map.light(1)->mixColorRef() = VelaColor(Qt::yellow);
    root.run(0);
    QVERIFY(map.mix(1).isBlack());
    QCOMPARE(root.brightness(), -3.0);
    root.setBrightness(2.0); // above 1 nothing happens
    map.light(1)->mixColorRef() = VelaColor(Qt::yellow);
    root.run(25);
    QCOMPARE(map.mix(1), VelaColor(Qt::yellow));
}

void MetaEffectTest::nestedBrightnessDimsWhatIsPaintedSoFar()
{
    TestMap map(2);
    Timeline root(map.model());
    ProbeEffect below(0, 100);
    ProbeEffect above(0, 100);
    MetaEffect nested(map.model(), 0, nullptr);
    nested.setEnd(100);
    nested.setBrightness(0.5);
    nested.setPriority(1);
    above.setPriority(2);
    below.onFrame = [&] { map.light(1)->mixColor(Qt::red, 0); };
    above.onFrame = [&] { map.light(2)->mixColor(Qt::red, 2); };
    root.addEffect(&above);
    root.addEffect(&nested);
    root.addEffect(&below);
    root.run(0);
    QCOMPARE(map.mix(1).toQColor(true), QColor(128, 0, 0));
    QCOMPARE(map.mix(2).toQColor(true), QColor(255, 0, 0));
}

void MetaEffectTest::opacityReachesEveryLight()
{
    TestMap map(2);
    MetaEffect root(map.model(), 0, nullptr);
    root.compile();
    root.setOpacity(0.5);
    for (const quint64 uid : {1U, 2U}) {
        QCOMPARE(map.mix(uid).alpha32(), 0x80000000U);
    }
    MetaEffect without(nullptr, 0, nullptr);
    without.compile();
    without.setOpacity(0.5); // without a map there is nothing to do
    QVERIFY(without.compiled());
}

QTEST_GUILESS_MAIN(MetaEffectTest)
#include "MetaEffectTest.moc"
