#include "color/ColorUtils.h"
#include "map/Light.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QtTest>

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <vector>

namespace {

/// The rules of painting, without any memory.
struct PlainLight
{
    VelaColor mix;
    QColor sim;
    bool mixFresh = true;
    bool simFresh = true;
    quint32 mixCount = 0;
    int mixTop = 0;
    int simTop = 0;
    VelaColor carried;

    void mixColor(const VelaColor& c, int p)
    {
        if (mixFresh) {
            mixFresh = false;
            mix = composite(c, mix);
            mixCount = 1;
            mixTop = p;
        } else if (mixTop < p) {
            mix = composite(c, mix);
            mixTop = p;
        } else if (mixTop == p) {
            const double w = 1.0 - double(mixCount) / (double(mixCount) + 1.0);
            ++mixCount;
            mix = interpolate(mix, c, w);
        }
    }
    static QColor over(const QColor& q, const QColor& s)
    {
        return q.alpha() == 255 ? q : composite(VelaColor(q), VelaColor(s)).toQColor(true);
    }
    void mixSimColor(const QColor& q, int p)
    {
        if (simFresh) {
            simFresh = false;
            sim = over(q, sim);
            simTop = p;
        } else if (simTop < p) {
            sim = over(q, sim);
            simTop = p;
        } else if (simTop == p) {
            const double w =
                mixCount == 0 ? 1.0 : 1.0 - (double(mixCount) - 1.0) / double(mixCount);
            sim = interpolate(VelaColor(sim), VelaColor(q), w).toQColor(true);
        }
    }
    void reset()
    {
        mix = VelaColor::fromRgb(0, 0, 0);
        sim = Qt::black;
        mixFresh = true;
        simFresh = true;
        mixTop = 0;
        simTop = 0;
    }
    void carryOver(bool store)
    {
        if (store) {
            carried = mix;
            reset();
        } else {
            mix = composite(carried, mix);
            carried = VelaColor();
        }
    }
};

/// Bit for bit, where the type's own comparison answers false: NaN and invalid colours.
bool isSame(const VelaColor& a, const VelaColor& b)
{
    const auto sameNumber = [](double x, double y) {
        return x == y || (std::isnan(x) && std::isnan(y));
    };
    if (a.spec() == VelaColor::Yxy && b.spec() == VelaColor::Yxy) {
        return a.alpha32() == b.alpha32() && a.channelLayout() == b.channelLayout() &&
               a.profileId() == b.profileId() && a.tintweave() == b.tintweave() &&
               sameNumber(a.capY(), b.capY()) && sameNumber(a.smallX(), b.smallX()) &&
               sameNumber(a.smallY(), b.smallY());
    }
    return a == b || (!a.isValid() && !b.isValid() && a.alpha32() == b.alpha32());
}

bool isSame(const QColor& a, const QColor& b)
{
    return a.spec() == b.spec() && a.rgba64() == b.rgba64() && a == b;
}

/// Colours of every kind, some of them again and again.
class Palette
{
public:
    explicit Palette(unsigned seed)
        : m_random(seed)
    {
        for (int i = 0; i < 12; ++i) {
            m_known.push_back(fresh());
        }
        m_known.push_back(VelaColor());
        VelaColor nan;
        nan.setYxy(std::numeric_limits<double>::quiet_NaN(), 0.3, 0.3, 40000);
        m_known.push_back(nan);
        nan.setYxy(-0.0, 0.3, 0.3, 65535);
        m_known.push_back(nan);
    }

    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }
    double fraction() { return std::uniform_real_distribution<double>(0.0, 1.0)(m_random); }
    double alpha()
    {
        const double some[] = {0.0, 1.0, 1.0, 0.5, 0.25};
        const int pick = below(7);
        return pick < 5 ? some[pick] : fraction();
    }
    VelaColor color()
    {
        return below(4) == 0 ? fresh()
                             : m_known[static_cast<std::size_t>(below(int(m_known.size())))];
    }
    QColor simColor()
    {
        if (below(8) == 0) {
            return QColor::fromHsvF(fraction(), fraction(), fraction(), alpha());
        }
        return QColor(below(4) * 60, below(4) * 60, below(4) * 60, int(alpha() * 255));
    }

private:
    VelaColor fresh()
    {
        switch (below(6)) {
        case 0:
            return VelaColor::fromHsvF(fraction(), fraction(), fraction(), alpha());
        case 1: {
            VelaColor color;
            color.setYxyF(fraction(), 0.2 + 0.3 * fraction(), 0.2 + 0.3 * fraction(), alpha());
            return color;
        }
        case 2:
            return VelaColor::fromNchannelF(
                {alpha(), fraction(), fraction(), fraction(), fraction()}, 3, 6, below(2) == 0);
        default:
            return VelaColor::fromRgbF(fraction(), fraction(), fraction(), alpha());
        }
    }

    std::mt19937 m_random;
    std::vector<VelaColor> m_known;
};

std::unique_ptr<Light> defaultLight()
{
    return std::make_unique<Light>(static_cast<QDomNode*>(nullptr));
}

} // namespace

class LightMixTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void theFirstColourLandsOverBlack();
    void aHigherPriorityLandsOverALower();
    void equalPrioritiesAverage();
    void equalColoursAverageToThemselves();
    void aHigherPriorityLeavesTheCount();
    void aLowerPriorityIsDropped();
    void theSimulationHasATopOfItsOwn();
    void opaqueSimulationColoursStayAsTheyAre();
    void theSimulationAloneDoesNotDivideByZero();
    void anInvalidColourMakesTheLightInvalid();
    void aRowPassesOverMissingLights();
    void everySequenceGivesWhatTheRulesGive_data();
    void everySequenceGivesWhatTheRulesGive();
    void rowsGiveWhatSingleLightsGive();
};

void LightMixTest::theFirstColourLandsOverBlack()
{
    const auto light = defaultLight();
    light->reset();
    light->mixColor(VelaColor::fromRgbF(1.0, 0.5, 0.0, 0.5), 4);
    QCOMPARE(light->mixValue().red8(), 128); // truncate(0.5 x 4294967295 + 0.5) is 0x80000000
    QCOMPARE(light->mixValue().blue8(), 0);
    QCOMPARE(light->mixValue().alpha8(), 255); // 1 x (1 - 0.5) + 0.5
}

void LightMixTest::aHigherPriorityLandsOverALower()
{
    const auto light = defaultLight();
    light->reset();
    light->mixColor(VelaColor(Qt::red), 3);
    light->mixColor(VelaColor::fromRgbF(0.0, 0.0, 1.0, 0.25), 5);
    QVERIFY(light->mixValue() ==
            composite(VelaColor::fromRgbF(0.0, 0.0, 1.0, 0.25), VelaColor(Qt::red)));
    light->mixColor(VelaColor(Qt::green), 6);
    QVERIFY(light->mixValue() == VelaColor(Qt::green));
}

void LightMixTest::equalPrioritiesAverage()
{
    const auto light = defaultLight();
    light->reset();
    light->mixColor(VelaColor(QColor(240, 0, 0)), 2);
    light->mixColor(VelaColor(QColor(0, 240, 0)), 2);
    light->mixColor(VelaColor(QColor(0, 0, 240)), 2);
    light->mixColor(VelaColor(QColor(240, 240, 240)), 2);
    QVERIFY(qAbs(light->mixValue().redF() * 255.0 - 120.0) < 1e-6);
    QVERIFY(qAbs(light->mixValue().greenF() * 255.0 - 120.0) < 1e-6);
    QVERIFY(qAbs(light->mixValue().blueF() * 255.0 - 120.0) < 1e-6);
}

void LightMixTest::equalColoursAverageToThemselves()
{
    const auto light = defaultLight();
    light->reset();
    for (int i = 0; i < 2; ++i) {
        light->mixColor(VelaColor(QColor(200, 100, 50)), 1);
        light->mixSimColor(QColor(200, 100, 50), 1);
    }
    QCOMPARE(light->mixValue().toQColor(true), QColor(200, 100, 50));
    QCOMPARE(light->simColor(), QColor(200, 100, 50));
}

void LightMixTest::aHigherPriorityLeavesTheCount()
{
    const auto light = defaultLight();
    light->reset();
    const VelaColor layers[] = {VelaColor(Qt::red), VelaColor(Qt::green), VelaColor(Qt::blue),
                                VelaColor(Qt::white)};
    light->mixColor(layers[0], 3);
    light->mixColor(layers[1], 3);
    light->mixColor(layers[2], 5);
    light->mixColor(layers[3], 5); // the count is 2 still: weight 1/3
    QVERIFY(light->mixValue() == interpolate(layers[2], layers[3], 1.0 - 2.0 / 3.0));
    QVERIFY(qAbs(light->mixValue().redF() - 1.0 / 3.0) < 1e-6);
}

void LightMixTest::aLowerPriorityIsDropped()
{
    const auto light = defaultLight();
    light->reset();
    light->mixColor(VelaColor(Qt::red), 5);
    light->mixSimColor(Qt::red, 5);
    light->mixColor(VelaColor(Qt::blue), 4);
    light->mixSimColor(Qt::blue, 4);
    QVERIFY(light->mixValue() == VelaColor(Qt::red));
    QCOMPARE(light->simColor(), QColor(Qt::red));
    // Not even counted.
    light->mixColor(VelaColor(Qt::blue), 5);
    QVERIFY(light->mixValue() == interpolate(VelaColor(Qt::red), VelaColor(Qt::blue), 0.5));
}

void LightMixTest::theSimulationHasATopOfItsOwn()
{
    const auto light = defaultLight();
    light->reset();
    light->mixColor(VelaColor(Qt::red), 5);
    light->mixSimColor(Qt::red, 2);
    light->mixSimColor(Qt::blue, 3);
    QCOMPARE(light->simColor(), QColor(Qt::blue));
}

void LightMixTest::opaqueSimulationColoursStayAsTheyAre()
{
    const auto light = defaultLight();
    light->reset();
    const QColor hsv = QColor::fromHsvF(0.3, 0.4, 0.5);
    light->mixSimColor(hsv, 1);
    QCOMPARE(light->simColor().spec(), QColor::Hsv);
    QCOMPARE(light->simColor(), hsv);
    light->mixSimColor(QColor(0, 0, 0, 0), 2);
    QCOMPARE(light->simColor().spec(), QColor::Rgb); // through the colour value and back
    QCOMPARE(light->simColor().rgb(), hsv.rgb());
}

void LightMixTest::theSimulationAloneDoesNotDivideByZero()
{
    const auto light = defaultLight();
    light->mixSimColor(Qt::red, 1);
    light->mixSimColor(Qt::blue, 1);
    QCOMPARE(light->simColor(), QColor(Qt::blue)); // the weight of a first colour
}

void LightMixTest::anInvalidColourMakesTheLightInvalid()
{
    const auto light = defaultLight();
    light->reset();
    light->mixColor(VelaColor(), 1); // opaque, and so it is taken as it stands
    QVERIFY(!light->isPainted());
}

void LightMixTest::aRowPassesOverMissingLights()
{
    const auto first = defaultLight();
    const auto last = defaultLight();
    Light* const row[] = {nullptr, first.get(), nullptr, nullptr, last.get(), nullptr};
    Light::mixRow(row, 6, VelaColor(Qt::red), Qt::blue, 1);
    QVERIFY(first->mixValue() == VelaColor(Qt::red));
    QVERIFY(last->mixValue() == VelaColor(Qt::red));
    QCOMPARE(last->simColor(), QColor(Qt::blue));
    Light::mixRow(nullptr, 0, VelaColor(Qt::red), Qt::blue, 1);
}

void LightMixTest::everySequenceGivesWhatTheRulesGive_data()
{
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 40; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void LightMixTest::everySequenceGivesWhatTheRulesGive()
{
    QFETCH(const unsigned, seed);
    constexpr int kLights = 8;
    Palette palette(seed);
    std::vector<std::unique_ptr<Light>> lights;
    std::vector<PlainLight> plain(kLights);
    for (int i = 0; i < kLights; ++i) {
        lights.push_back(defaultLight());
    }
    for (int step = 0; step < 1000; ++step) {
        const auto which = static_cast<std::size_t>(palette.below(kLights));
        Light& light = *lights[which];
        PlainLight& model = plain[which];
        const int priority = palette.below(4);
        switch (palette.below(16)) {
        case 0:
        case 1:
            light.reset();
            model.reset();
            break;
        case 2: {
            const double alpha = palette.alpha();
            light.setAlpha(alpha);
            model.mix.setAlphaF(alpha);
            break;
        }
        case 3: {
            const VelaColor color = palette.color();
            light.mixColorRef() = color;
            model.mix = color;
            break;
        }
        case 4: {
            const bool store = palette.below(2) == 0;
            light.carryOver(store);
            model.carryOver(store);
            break;
        }
        case 5: {
            const QColor q = palette.simColor();
            light.mixSimColor(q, priority);
            model.mixSimColor(q, priority);
            break;
        }
        default: {
            const VelaColor color = palette.color();
            const QColor q = palette.simColor();
            light.mixColor(color, priority);
            light.mixSimColor(q, priority);
            model.mixColor(color, priority);
            model.mixSimColor(q, priority);
        }
        }
        QVERIFY2(isSame(light.mixValue(), model.mix), qPrintable(QString::number(step)));
        QVERIFY2(isSame(light.simColor(), model.sim), qPrintable(QString::number(step)));
        QCOMPARE(light.isPainted(), model.mix.isValid());

        quint8 bytes[8] = {9, 9, 9, 9, 9, 9, 9, 9};
        quint8 expected[8] = {9, 9, 9, 9, 9, 9, 9, 9};
        light.writeDmx(bytes, 8);
        if (model.mix.isValid()) {
            ColorUtils::mapToChannels(model.mix, false, 3, 1, expected, 0, 0, 0, 0);
        }
        QVERIFY2(std::equal(bytes, bytes + 8, expected), qPrintable(QString::number(step)));
    }
}

void LightMixTest::rowsGiveWhatSingleLightsGive()
{
    constexpr int kLights = 50;
    Palette palette(77);
    std::vector<std::unique_ptr<Light>> owned;
    std::vector<Light*> row;
    std::vector<PlainLight> plain(kLights);
    for (int i = 0; i < kLights; ++i) {
        owned.push_back(defaultLight());
        row.push_back(owned.back().get());
    }
    for (int frame = 0; frame < 300; ++frame) {
        for (int layer = palette.below(6); layer >= 0; --layer) {
            const int from = palette.below(kLights);
            const int count = palette.below(kLights - from) + 1;
            const VelaColor color = palette.color();
            const QColor q = palette.simColor();
            const int priority = palette.below(3);
            const bool isPixel = palette.below(3) == 0;
            const QRgb pixel = qRgb(palette.below(3), palette.below(3), 255);
            if (isPixel) {
                Light::mixPixelRow(row.data() + from, count, pixel, priority);
            } else {
                Light::mixRow(row.data() + from, count, color, q, priority);
            }
            for (int i = from; i < from + count; ++i) {
                plain[static_cast<std::size_t>(i)].mixColor(isPixel ? VelaColor(pixel) : color,
                                                            priority);
                plain[static_cast<std::size_t>(i)].mixSimColor(isPixel ? QColor(pixel) : q,
                                                               priority);
            }
        }
        for (std::size_t i = 0; i < kLights; ++i) {
            QVERIFY(isSame(row[i]->mixValue(), plain[i].mix));
            QVERIFY(isSame(row[i]->simColor(), plain[i].sim));
            if (palette.below(3) != 0) {
                row[i]->reset();
                plain[i].reset();
            }
        }
    }
}

QTEST_GUILESS_MAIN(LightMixTest)

#include "LightMixTest.moc"
