#include "effects/ChasingRainbowEffect.h"
#include "effects/CustomRainbowEffect.h"
#include "effects/RandomColorEffect.h"
#include "effects/SparkleEffect.h"
#include "effects/SparkleGroupEffect.h"
#include "resources/Resources.h"
#include "tests/color/AllocationCount.h"
#include "tests/effects/TestStage.h"

/// A steady frame of an effect that colours rows or single lights asks for no memory.
class RowAllocationsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void noEffectAllocates_data();
    void noEffectAllocates();
};

namespace {

using Maker = Effect* (*)(MapModel* model);

VelaColor white()
{
    return VelaColor(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768"));
}

template <typename T>
Effect* make(MapModel* model)
{
    return new T(model, 0x101, nullptr);
}

Effect* makeWhiteChase(MapModel* model)
{
    auto* const effect = new ChasingRainbowEffect(model, 0x101, nullptr);
    effect->setStartColor(white());
    return effect;
}

Effect* makeLongList(MapModel* model)
{
    auto* const effect = new RandomColorEffect(model, 0x101, nullptr);
    effect->setOffset(0.37);
    effect->setTime(0.1);
    effect->setFadeTime(0.07);
    effect->setCycleCount(1000);
    return effect;
}

Effect* makeEntries(MapModel* model)
{
    auto* const effect = new CustomRainbowEffect(model, 0x101, nullptr);
    CustomRainbowEntry entry;
    effect->addEntry(entry);
    entry.color = white();
    effect->addEntry(entry);
    entry.color = VelaColor(QStringLiteral("aNchannel;3;6;65535;9000;8000;7000;60000;0;1"));
    effect->addEntry(entry);
    return effect;
}

Effect* makeWhiteSparkles(MapModel* model)
{
    auto* const effect = new SparkleEffect(model, 0x101, nullptr);
    effect->setSparkleColor(white());
    effect->setBgColor(VelaColor(QStringLiteral("aYxy;1;0;65535;0.2;0.4;0.4")));
    effect->setBgTransparency(true);
    return effect;
}

} // namespace

Q_DECLARE_METATYPE(Maker)

void RowAllocationsTest::noEffectAllocates_data()
{
    QTest::addColumn<Maker>("maker");
    QTest::newRow("chasing rainbow") << Maker(make<ChasingRainbowEffect>);
    QTest::newRow("chasing rainbow from a white") << Maker(makeWhiteChase);
    QTest::newRow("random colour") << Maker(make<RandomColorEffect>);
    QTest::newRow("random colour of many") << Maker(makeLongList);
    QTest::newRow("custom rainbow") << Maker(makeEntries);
    QTest::newRow("empty custom rainbow") << Maker(make<CustomRainbowEffect>);
    QTest::newRow("sparkle") << Maker(make<SparkleEffect>);
    QTest::newRow("sparkle of whites") << Maker(makeWhiteSparkles);
    QTest::newRow("sparkle group") << Maker(make<SparkleGroupEffect>);
}

void RowAllocationsTest::noEffectAllocates()
{
    QFETCH(const Maker, maker);
    TestStage stage;
    const std::unique_ptr<Effect> effect(maker(stage.model()));
    effect->compile();
    effect->setActive(true);
    effect->tick(TestShow::kStartMs, 0);
    effect->setStartMs(TestShow::kStartMs);
    const auto frames = [&](int first, int count) {
        for (int i = first; i < first + count; ++i) {
            effect->setTransparency(i % 3 == 0 ? 0.0 : i / 1000.0);
            effect->tick(TestShow::kStartMs + qint64(25) * i, static_cast<uint>(i));
            stage.endFrame();
        }
    };
    frames(0, 10);
    const int before = allocations;
    frames(10, 400);
    QCOMPARE(allocations - before, 0);
}

QTEST_GUILESS_MAIN(RowAllocationsTest)
#include "RowAllocationsTest.moc"
