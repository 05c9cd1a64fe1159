#include "effects/CrossFadeEffect.h"
#include "effects/FixedColorEffect.h"
#include "effects/FixedWhiteEffect.h"
#include "effects/SelectionEffect.h"
#include "effects/StreakEffect.h"
#include "effects/SweepEffect.h"
#include "effects/WhiteCrossFadeEffect.h"
#include "effects/XYBurstEffect.h"
#include "effects/XYSpiralEffect.h"
#include "effects/XYTextEffect.h"
#include "engine/EffectEngine.h"
#include "engine/MetaEffect.h"
#include "resources/Resources.h"
#include "tests/color/AllocationCount.h"
#include "tests/effects/PlanStage.h"
#include "tests/effects/TestStage.h"

#include <QTimer>

/// A frame of a show in its steady state asks for no memory.
class FrameAllocationsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void noEffectAllocates_data();
    void noEffectAllocates();
    void noEffectOverThePlanAllocates_data();
    void noEffectOverThePlanAllocates();
    void noTimelineAllocates();
    void theClockAllocatesWhatItsTimerDoes();
    void compilingASelectionCostsNothingPerLight();
};

namespace {

using Maker = Effect* (*)(MapModel* model);

template <typename T>
Effect* make(MapModel* model)
{
    return new T(model, 0x101, nullptr);
}

Effect* makeWhitePoint(MapModel* model)
{
    auto* const effect = new FixedColorEffect(model, 0x101, nullptr);
    effect->setColor(VelaColor(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")));
    return effect;
}

Effect* makeWhitePointFade(MapModel* model)
{
    auto* const effect = new CrossFadeEffect(model, 0x101, nullptr);
    effect->setStartColor(VelaColor(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")));
    effect->setEndTrans(true);
    return effect;
}

Effect* makeWhitePointStreak(MapModel* model)
{
    auto* const effect = new StreakEffect(model, 0x101, nullptr);
    effect->setFgColor(VelaColor(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")));
    effect->setWidth(1);
    effect->setFTail(2);
    effect->setRTail(2);
    effect->setWrap(true);
    return effect;
}

Effect* makeWhitePointSweep(MapModel* model)
{
    auto* const effect = new SweepEffect(model, 0x101, nullptr);
    effect->setFgColor(VelaColor(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")));
    effect->setBgTransparent(true);
    return effect;
}

Effect* makeWalk(MapModel* model)
{
    auto* const effect = new SelectionEffect(model, 0x101, nullptr);
    effect->compile();
    effect->highlightGroup(0x101);
    return effect;
}

} // namespace

Q_DECLARE_METATYPE(Maker)

void FrameAllocationsTest::noEffectAllocates_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::newRow("fixed colour") << Maker(make<FixedColorEffect>);
    QTest::newRow("white point") << Maker(makeWhitePoint);
    QTest::newRow("fixed white") << Maker(make<FixedWhiteEffect>);
    QTest::newRow("cross fade") << Maker(make<CrossFadeEffect>);
    QTest::newRow("cross fade of a white point") << Maker(makeWhitePointFade);
    QTest::newRow("white cross fade") << Maker(make<WhiteCrossFadeEffect>);
    QTest::newRow("streak") << Maker(make<StreakEffect>);
    QTest::newRow("streak of a white point") << Maker(makeWhitePointStreak);
    QTest::newRow("sweep") << Maker(make<SweepEffect>);
    QTest::newRow("sweep of a white point") << Maker(makeWhitePointSweep);
    QTest::newRow("selection") << Maker(make<SelectionEffect>);
    QTest::newRow("selection walking a group") << Maker(makeWalk);
}

void FrameAllocationsTest::noEffectAllocates()
{
    QFETCH(const Maker, maker);
    TestStage stage;
    const std::unique_ptr<Effect> effect(maker(stage.model()));
    if (!effect->compiled()) {
        effect->compile();
    }
    effect->setTransparency(0.25);
    effect->setActive(true);
    effect->setStartMs(TestShow::kStartMs);
    const auto frames = [&](int first, int count) {
        for (int i = first; i < first + count; ++i) {
            effect->tick(TestShow::kStartMs + i * 25, static_cast<uint>(i));
            stage.endFrame();
        }
    };
    frames(0, 10);
    const int before = allocations;
    frames(10, 400);
    QCOMPARE(allocations - before, 0);
}

void FrameAllocationsTest::noEffectOverThePlanAllocates_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::newRow("burst") << Maker(make<XYBurstEffect>);
    QTest::newRow("spiral") << Maker(make<XYSpiralEffect>);
    QTest::newRow("text") << Maker(make<XYTextEffect>);
}

void FrameAllocationsTest::noEffectOverThePlanAllocates()
{
    QFETCH(const Maker, maker);
    PlanStage stage;
    const std::unique_ptr<Effect> effect(maker(stage.model()));
    effect->compile();
    effect->setActive(true);
    effect->setStartMs(TestShow::kStartMs);
    const auto frames = [&](int first, int count) {
        for (int i = first; i < first + count; ++i) {
            effect->setTransparency(i % 40 / 40.0); // a new shade of each hue in each frame
            effect->tick(TestShow::kStartMs + i * 25, static_cast<uint>(i));
            stage.endFrame();
        }
    };
    frames(0, 10);
    const int before = allocations;
    frames(10, 400);
    QCOMPARE(allocations - before, 0);
}

void FrameAllocationsTest::noTimelineAllocates()
{
    TestStage stage;
    MetaEffect root(stage.model(), Effect::kNoGid, nullptr);
    MetaEffect nested(stage.model(), Effect::kNoGid, nullptr);
    FixedColorEffect color(stage.model(), 0x101, nullptr);
    CrossFadeEffect fade(stage.model(), 0x102, nullptr);
    WhiteCrossFadeEffect white(stage.model(), 0x100, nullptr);
    const QList<Effect*> children = {&color, &fade, &white, &nested};
    for (Effect* const child : children) {
        child->setEndFixedTime(2000); // so that 400 frames wrap a few times
        child->setFadein(500);
        child->setFadeout(300);
        child->compile();
    }
    white.setStartFixedTime(700); // leaves and enters
    white.setPriority(1);
    nested.addEffect(&fade);
    for (Effect* const child : {static_cast<Effect*>(&color), static_cast<Effect*>(&white),
                                static_cast<Effect*>(&nested)}) {
        root.addEffect(child);
    }
    nested.updateEffectTimes();
    root.updateEffectTimes();
    nested.setBrightness(0.5);
    root.setStartMs(TestShow::kStartMs);
    const auto frames = [&](int first, int count) {
        for (int i = first; i < first + count; ++i) {
            root.tick(TestShow::kStartMs + i * 25, static_cast<uint>(i));
            stage.endFrame();
        }
    };
    frames(0, 10);
    const int before = allocations;
    frames(10, 400);
    QCOMPARE(allocations - before, 0);
    QVERIFY(root.elapsed() < 2800);
}

void FrameAllocationsTest::theClockAllocatesWhatItsTimerDoes()
{
    constexpr int kFrames = 200;
    TestStage stage;
    MetaEffect root(stage.model(), Effect::kNoGid, nullptr);
    FixedColorEffect color(stage.model(), 0x101, nullptr);
    color.compile();
    color.setEnd(1000);
    root.addEffect(&color);
    QTimer bare;
    bare.setSingleShot(true);
    bare.setTimerType(Qt::PreciseTimer);
    EffectEngine engine(stage.model(), nullptr, 25);
    engine.addEffect(&root);
    const QDateTime start = QDateTime::fromMSecsSinceEpoch(TestShow::kStartMs, Qt::UTC);
    const auto frames = [&](int first, int count) {
        for (int i = first; i < first + count; ++i) {
            engine.tick(start.addMSecs(i * 25));
        }
    };
    bare.start(25);
    frames(0, 300); // the list of timers has its size by then
    int before = allocations;
    for (int i = 0; i < kFrames; ++i) {
        bare.start(25);
    }
    const int ofTimer = allocations - before;
    before = allocations;
    frames(300, kFrames);
    QCOMPARE(allocations - before, ofTimer);
}

void FrameAllocationsTest::compilingASelectionCostsNothingPerLight()
{
    // A file may hold thousands of selections, and each colour of each compiles it.
    TestStage stage;
    SelectionEffect effect(stage.model(), 0x101, nullptr);
    const int before = allocations;
    for (int i = 0; i < 100; ++i) {
        effect.compile();
    }
    QCOMPARE(allocations - before, 0);
    effect.selectAll();
    stage.run(effect, 0);
    QCOMPARE(stage.mix(8), VelaColor(Qt::red));
}

QTEST_GUILESS_MAIN(FrameAllocationsTest)
#include "FrameAllocationsTest.moc"
