#include "effects/FixedColorEffect.h"
#include "engine/EffectEngine.h"
#include "engine/MetaEffect.h"
#include "tests/effects/TestStage.h"

#include <memory>
#include <vector>

/// How the colours of several effects of a timeline meet on a light.
class ColorLayersTest : public QObject
{
    Q_OBJECT
private slots:
    void layersMeet_data();
    void layersMeet();
    void equalColoursStayExact();
    void nestedTimelinesAddTheirPriorities();
    void lowerPrioritiesAcrossTimelinesAreDropped();
    void untouchedLightsStayBlack();
    void fadesShowWhatLiesBeneath();
    void theSimulationSeesTheFrameAndTheOutputsResetIt();
};

namespace {

struct Layer
{
    VelaColor color;
    quint32 priority;
    double alpha = 1.0;
};

/// A looping show of fixed colours on the leaf 8.
class Show
{
public:
    explicit Show(TestStage& stage)
        : m_stage(stage)
        , root(stage.model(), Effect::kNoGid, nullptr)
    {
        root.setStartMs(TestShow::kStartMs);
    }
    FixedColorEffect& add(MetaEffect& timeline, const Layer& layer, quint64 gid = 8)
    {
        m_effects.push_back(std::make_unique<FixedColorEffect>(m_stage.model(), gid, nullptr));
        FixedColorEffect& effect = *m_effects.back();
        VelaColor color = layer.color;
        if (layer.alpha < 1.0) {
            color.setAlphaF(layer.alpha);
        }
        effect.setColor(color);
        effect.setPriority(layer.priority);
        effect.setEnd(1000);
        effect.compile();
        timeline.addEffect(&effect);
        return effect;
    }
    void run(qint64 ms)
    {
        m_stage.endFrame();
        root.tick(TestShow::kStartMs + ms, 0);
    }

private:
    TestStage& m_stage;
    std::vector<std::unique_ptr<FixedColorEffect>> m_effects;

public:
    MetaEffect root;
};

} // namespace

Q_DECLARE_METATYPE(Layer)

void ColorLayersTest::layersMeet_data()
{
    QTest::addColumn<QVector<Layer>>("layers");
    QTest::addColumn<double>("red");
    QTest::addColumn<double>("green");
    QTest::addColumn<double>("blue");
    const VelaColor red(Qt::red);
    const VelaColor green(Qt::green);
    const VelaColor blue(Qt::blue);
    const VelaColor white(Qt::white);
    const double third = 1.0 / 3.0;
    using Layers = QVector<Layer>;
    QTest::newRow("none") << Layers{} << 0.0 << 0.0 << 0.0;
    QTest::newRow("one") << Layers{{red, 3}} << 1.0 << 0.0 << 0.0;
    QTest::newRow("one, half over black") << Layers{{red, 3, 0.5}} << 0.5 << 0.0 << 0.0;
    QTest::newRow("higher wins") << Layers{{red, 1}, {green, 2}} << 0.0 << 1.0 << 0.0;
    QTest::newRow("higher wins in any order") << Layers{{green, 2}, {red, 1}} << 0.0 << 1.0 << 0.0;
    QTest::newRow("higher half over lower")
        << Layers{{red, 1}, {green, 2, 0.5}} << 0.5 << 0.5 << 0.0;
    QTest::newRow("higher invisible") << Layers{{red, 1}, {green, 2, 0.0}} << 1.0 << 0.0 << 0.0;
    QTest::newRow("two equal") << Layers{{red, 1}, {blue, 1}} << 0.5 << 0.0 << 0.5;
    QTest::newRow("three equal") << Layers{{red, 1}, {green, 1}, {blue, 1}} << third << third
                                 << third;
    QTest::newRow("four equal") << Layers{{red, 1}, {green, 1}, {blue, 1}, {white, 1}} << 0.5 << 0.5
                                << 0.5;
    QTest::newRow("equal over lower")
        << Layers{{white, 0}, {red, 1}, {blue, 1}} << 0.5 << 0.0 << 0.5;
    // The count of the lower layers goes on: the second of the upper ones weighs a third.
    QTest::newRow("two, then two above")
        << Layers{{white, 3}, {white, 3}, {red, 5}, {blue, 5}} << 2.0 * third << 0.0 << third;
    QTest::newRow("three, then two above")
        << Layers{{white, 3}, {white, 3}, {white, 3}, {red, 5}, {blue, 5}} << 0.75 << 0.0 << 0.25;
    QTest::newRow("two, one above, two above that")
        << Layers{{white, 3}, {white, 3}, {green, 4}, {red, 5}, {blue, 5}} << 2.0 * third << 0.0
        << third;
}

void ColorLayersTest::layersMeet()
{
    QFETCH(const QVector<Layer>, layers);
    QFETCH(const double, red);
    QFETCH(const double, green);
    QFETCH(const double, blue);
    TestStage stage;
    Show show(stage);
    for (const Layer& layer : layers) {
        show.add(show.root, layer);
    }
    for (const qint64 ms : {0, 25, 990, 1015}) { // each frame begins with a clean light
        show.run(ms);
        const VelaColor mix = stage.mix(8);
        QVERIFY(std::abs(mix.redF() - red) < 1e-9);
        QVERIFY(std::abs(mix.greenF() - green) < 1e-9);
        QVERIFY(std::abs(mix.blueF() - blue) < 1e-9);
        QCOMPARE(mix.alpha32(), 0xFFFFFFFFU);
        QVERIFY(std::abs(stage.sim(8).red() - red * 255.0) < 2.0); // 8 bits at each layer
        QVERIFY(std::abs(stage.sim(8).green() - green * 255.0) < 2.0);
        QVERIFY(std::abs(stage.sim(8).blue() - blue * 255.0) < 2.0);
        QCOMPARE(stage.sim(8).alpha(), 255);
    }
}

void ColorLayersTest::equalColoursStayExact()
{
    TestStage stage;
    Show show(stage);
    const VelaColor color(QColor(10, 200, 77));
    show.add(show.root, {color, 1});
    show.add(show.root, {color, 1});
    show.run(0);
    QCOMPARE(stage.mix(8).toQColor(true), QColor(10, 200, 77));
    QCOMPARE(stage.sim(8), QColor(10, 200, 77));
}

void ColorLayersTest::nestedTimelinesAddTheirPriorities()
{
    TestStage stage;
    Show show(stage);
    MetaEffect nested(stage.model(), Effect::kNoGid, nullptr);
    nested.setEnd(1000);
    nested.setPriority(2);
    show.add(nested, {Qt::red, 2}); // 4 in all
    show.add(show.root, {Qt::blue, 3});
    show.root.addEffect(&nested);
    show.run(0); // the nested timeline is painted first, and lies on top
    QCOMPARE(stage.mix(8), VelaColor(Qt::red));
    QCOMPARE(stage.sim(8), QColor(Qt::red));
}

void ColorLayersTest::lowerPrioritiesAcrossTimelinesAreDropped()
{
    TestStage stage;
    Show show(stage);
    MetaEffect first(stage.model(), Effect::kNoGid, nullptr);
    MetaEffect second(stage.model(), Effect::kNoGid, nullptr);
    for (MetaEffect* const nested : {&first, &second}) {
        nested->setEnd(1000);
    }
    show.add(first, {Qt::red, 7});
    show.add(second, {Qt::blue, 6});
    show.add(second, {Qt::green, 7}); // as high as the red one: they average
    show.root.addEffect(&first);
    show.root.addEffect(&second);
    show.run(0);
    QCOMPARE(stage.mix(8), mixed(0.5, 0.5, 0.0));
}

void ColorLayersTest::untouchedLightsStayBlack()
{
    TestStage stage;
    Show show(stage);
    show.add(show.root, {Qt::red, 1});
    show.run(0);
    QVERIFY(stage.mix(7).isBlack());
    QVERIFY(stage.mix(7).isValid());
    QCOMPARE(stage.sim(7), QColor(Qt::black));
}

void ColorLayersTest::fadesShowWhatLiesBeneath()
{
    TestStage stage;
    Show show(stage);
    show.add(show.root, {Qt::blue, 1});
    FixedColorEffect& upper = show.add(show.root, {Qt::red, 2});
    upper.setFadein(200);
    show.run(0);
    QCOMPARE(stage.mix(8), VelaColor(Qt::blue));
    show.run(50);
    QVERIFY(std::abs(stage.mix(8).redF() - 0.25) < 1e-9);
    QVERIFY(std::abs(stage.mix(8).blueF() - 0.75) < 1e-9);
    show.run(200);
    QCOMPARE(stage.mix(8), VelaColor(Qt::red));
}

void ColorLayersTest::theSimulationSeesTheFrameAndTheOutputsResetIt()
{
    TestStage stage;
    Show show(stage);
    show.add(show.root, {Qt::red, 1}, 0x100);
    EffectEngine engine(stage.model(), nullptr, 25);
    engine.addEffect(&show.root);
    QVector<QColor> seen;
    connect(&engine, &EffectEngine::propertiesCompiled, this, [&] { seen << stage.sim(1); });
    engine.tick(QDateTime::fromMSecsSinceEpoch(TestShow::kStartMs + 25));
    engine.pause(true);
    QCOMPARE(seen, QVector<QColor>({QColor(Qt::red)}));
    QCOMPARE(stage.sim(1), QColor(Qt::black));
}

QTEST_GUILESS_MAIN(ColorLayersTest)
#include "ColorLayersTest.moc"
