#include "effects/SparkleEffect.h"

#include "engine/MetaEffect.h"
#include "resources/Resources.h"
#include "tests/effects/RowStage.h"
#include "tests/effects/SeededRand.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <algorithm>
#include <cmath>

using TestShow::elementOf;

class SparkleEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void init() { seedings = 0; }
    void hasItsDefaults();
    void propertiesReadAndWrite();
    void restsAtTheBackground_data();
    void restsAtTheBackground();
    void compileSeedsAndDrawsWithOrWithoutLights();
    void followsTheSteps_data();
    void followsTheSteps();
    void twoRunsPaintTheSame();
    void aBurstWaitsForItsTime();
    void aFreshSparkleHasDecayedByItsFrame();
    void transparencyCompoundsOverRestingLights();
    void missingLightsDoNotCompound();
    void compoundingStartsAnewEachFrame();
    void flagsDecideTheFade_data();
    void flagsDecideTheFade();
    void settersStoreAndTheTimeTells();
    void hostileNumbersEnd();
    void transparencyBeyondItsRangeIsHeld();
    void compileForgetsTheGroup();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void readingCompilesAndTells();
};

namespace {

constexpr unsigned int kFrameSeed = 99;

struct Setting
{
    VelaColor spark = Qt::white;
    VelaColor bg = Qt::black;
    bool sparkTrans = false;
    bool bgTrans = false;
    qint32 decay = 10;
    qint32 density = 10;
    double timeConstant = 10.0;
    double transparency = 0.0;
};

/// The group's lights in flat order, 0 for one that is missing.
QVector<quint64> flatOrder(quint64 gid)
{
    if (gid == 0x200) {
        return {1, 0, 2, 3, 0, 0, 4, 5, 6, 7};
    }
    QVector<quint64> flat;
    const QVector<Uids> rows = rowsOf(gid);
    for (const Uids& row : rows) {
        flat += row;
    }
    return flat;
}

/// The stage, and the synchronized group 0x200 in which three lights are missing.
class SparkleStage : public TestShow::TestMap
{
public:
    SparkleStage()
        : TestMap(8, TestShow::group(0x10, 2, {1, 2}) + TestShow::group(0x11, 2, {3}) +
                         TestShow::group(0x12, 2, {4, 5, 6}) +
                         TestShow::group(0x100, 1, {0x10, 0x11, 0x12}) +
                         TestShow::group(0x101, 1, {0x100, 7}) +
                         TestShow::group(0x102, 2, {0x10, 0x11, 0x12}) +
                         TestShow::group(0x201, 3, {0x201}) + TestShow::group(0x202, 3, {0x202}) +
                         TestShow::group(0x203, 3, {0x203}) +
                         TestShow::group(0x200, 2, {1, 0x201, 2, 3, 0x202, 0x203, 4, 5, 6, 7}))
    {}
    void frame(Effect& effect, qint64 ms)
    {
        endFrame();
        effect.setActive(true);
        effect.tick(TestShow::kStartMs + ms, 0);
    }
    /// What every light shows.
    QVector<Paint> shown()
    {
        QVector<Paint> all;
        for (quint64 uid = 1; uid <= 8; ++uid) {
            all.append({mix(uid), sim(uid)});
        }
        return all;
    }
};

QString differences(const QVector<Paint>& shown, const QVector<Paint>& expected)
{
    QStringList found;
    for (int i = 0; i < 8; ++i) {
        if (shown[i].c != expected[i].c || shown[i].q != expected[i].q) {
            found << QStringLiteral("light %1: %2 %3, not %4 %5")
                         .arg(i + 1)
                         .arg(shown[i].c.toString(), shown[i].q.name(QColor::HexArgb),
                              expected[i].c.toString(), expected[i].q.name(QColor::HexArgb));
        }
    }
    return found.join(QStringLiteral("; "));
}

QColor mixScreen(const QColor& a, const QColor& b, double t)
{
    return toDisplayQColor(interpolate(VelaColor(a), VelaColor(b), t));
}

/// The steps, one by one.
class Steps
{
public:
    Steps(const Setting& setting, const QVector<quint64>& flat)
        : m_setting(setting)
        , m_flat(flat)
        , m_levels(flat.size(), 0)
    {
        reseed(); // as compile() does
        m_nextBurst = quint32(rand() % (1000 / setting.density));
    }
    void start(qint64 startMs, qint64 lastMs)
    {
        m_startMs = startMs;
        m_lastMs = lastMs;
    }
    QVector<Paint> frame(qint64 now)
    {
        if (m_nextBurst < quint32(now - m_startMs)) {
            const int n = rand() % (m_setting.density + 1);
            for (int i = 0; i < n; ++i) {
                m_levels[rand() % m_levels.size()] = 1000;
            }
            m_startMs = m_lastMs;
            m_nextBurst = quint32(rand() % int(1000.0 / m_setting.timeConstant));
        }
        const qint32 dt = qint32(now - m_lastMs);
        for (qint32& level : m_levels) {
            if (level != 0) {
                level -= qint32((quint32(m_setting.decay) * quint32(dt)) / 10);
                level = level < 0 ? 0 : level;
            }
        }
        const QVector<Paint> painted = paint();
        m_lastMs = now;
        return painted;
    }
    int sparkling() const { return m_levels.size() - m_levels.count(0); }

private:
    QVector<Paint> paint() const
    {
        const VelaColor black = VelaColor::fromRgb(0, 0, 0);
        QVector<Paint> all(8, {black, QColor(Qt::black)});
        const double transparency = m_setting.transparency;
        QColor qBg = toDisplayQColor(m_setting.bg);
        QColor qSpark = toDisplayQColor(m_setting.spark);
        VelaColor cBg = m_setting.bg;
        VelaColor cSpark = m_setting.spark;
        for (int i = 0; i < m_flat.size(); ++i) {
            if (m_flat[i] == 0) {
                continue;
            }
            VelaColor out;
            QColor qOut;
            if (m_levels[i] == 0) {
                const double k =
                    m_setting.bgTrans ? 0.0 : (1.0 - transparency) * (cBg.alpha32() / 4294967295.0);
                cBg.setAlphaF(k);
                qBg.setAlphaF(k);
                out = cBg;
                qOut = qBg;
            } else {
                const double d = m_levels[i] / 1000.0;
                if (m_setting.bgTrans && m_setting.sparkTrans) {
                    out = cBg;
                    out.setAlphaF(0.0);
                    qOut = qBg;
                    qOut.setAlphaF(0.0);
                } else {
                    if (m_setting.bgTrans) {
                        cBg.setAlphaF(d);
                        qBg.setAlphaF(d);
                    } else if (m_setting.sparkTrans) {
                        cSpark.setAlphaF(0.0);
                        qSpark.setAlphaF(0.0);
                    }
                    out = interpolate(cSpark, cBg, 1.0 - d);
                    qOut = mixScreen(qSpark, qBg, 1.0 - d);
                }
                if (transparency > 0.0) {
                    const double f = 1.0 - transparency;
                    out.setAlphaF((out.alpha32() / 4294967295.0) * f);
                    qOut.setAlphaF(qOut.alphaF() * f);
                }
            }
            Paint& light = all[int(m_flat[i]) - 1];
            light.c = composite(out, light.c);
            light.q = qOut.alpha() == 255
                          ? qOut
                          : composite(VelaColor(qOut), VelaColor(light.q)).toQColor(true);
        }
        return all;
    }

    Setting m_setting;
    QVector<quint64> m_flat;
    QVector<qint32> m_levels;
    quint32 m_nextBurst = 0;
    qint64 m_startMs = 0;
    qint64 m_lastMs = 0;
};

void set(SparkleEffect& effect, const Setting& setting)
{
    effect.setSparkleColor(setting.spark);
    effect.setBgColor(setting.bg);
    effect.setSparkleTransparency(setting.sparkTrans);
    effect.setBgTransparency(setting.bgTrans);
    effect.setDecayRate(setting.decay);
    effect.setDensity(setting.density);
    effect.setTimeConstant(setting.timeConstant);
    effect.setTransparency(setting.transparency);
    effect.compile();
}

VelaColor faded(VelaColor color, double alpha)
{
    color.setAlphaF(alpha);
    return color;
}

} // namespace

Q_DECLARE_METATYPE(Setting)

void SparkleEffectTest::hasItsDefaults()
{
    SparkleEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Sparkle"));
    QCOMPARE(effect.typeId(), 9);
    QCOMPARE(effect.cycleTime(), 10000U);
    QCOMPARE(effect.sparkleColor(), VelaColor(Qt::white));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::black));
    QCOMPARE(effect.sparkleTransparency(), false);
    QCOMPARE(effect.bgTransparency(), false);
    QCOMPARE(effect.decayRate(), 10);
    QCOMPARE(effect.density(), 10);
    QCOMPARE(effect.timeConstant(), 10.0);
    QVERIFY(!effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void SparkleEffectTest::propertiesReadAndWrite()
{
    const QMetaObject& meta = SparkleEffect::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        names << QString::fromLatin1(meta.property(i).name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')),
             QStringLiteral("m_sparkleColor m_bgColor m_sparkleTransparency m_bgTransparency "
                            "m_decayRate"));
    SparkleEffect effect(nullptr, 5, nullptr);
    QVERIFY(effect.setProperty("m_sparkleColor", QVariant::fromValue(VelaColor(Qt::blue))));
    QVERIFY(effect.setProperty("m_bgColor", QVariant::fromValue(VelaColor(Qt::red))));
    QVERIFY(effect.setProperty("m_sparkleTransparency", true));
    QVERIFY(effect.setProperty("m_bgTransparency", true));
    QVERIFY(effect.setProperty("m_decayRate", 33));
    QCOMPARE(effect.sparkleColor(), VelaColor(Qt::blue));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::red));
    QVERIFY(effect.sparkleTransparency());
    QVERIFY(effect.bgTransparency());
    QCOMPARE(effect.property("m_decayRate").toInt(), 33);
}

void SparkleEffectTest::restsAtTheBackground_data()
{
    addGroupRows();
}

void SparkleEffectTest::restsAtTheBackground()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    SparkleEffect effect(stage.model(), gid, nullptr);
    effect.setBgColor(Qt::blue);
    effect.compile();
    stage.run(effect, 0); // no wait is over yet
    for (quint64 uid = 1; uid <= 8; ++uid) {
        const bool isPainted = painted.contains(uid);
        QCOMPARE(stage.mix(uid).toQColor(true), isPainted ? QColor(Qt::blue) : QColor(Qt::black));
        QCOMPARE(stage.sim(uid).rgba(),
                 isPainted ? QColor(Qt::blue).rgba() : QColor(Qt::black).rgba());
    }
}

void SparkleEffectTest::compileSeedsAndDrawsWithOrWithoutLights()
{
    SparkleStage stage;
    for (const quint64 gid : {quint64(0x101), quint64(0x999)}) {
        SparkleEffect effect(stage.model(), gid, nullptr);
        seedings = 0; // the map's model seeds, too
        lastSeed = 5000;
        QVERIFY(effect.compile());
        QVERIFY(effect.compiled());
        QCOMPARE(seedings, 1);
        QVERIFY(lastSeed < 1000); // the wall clock's milliseconds
        const int next = rand();
        reseed();
        rand(); // the first wait
        QCOMPARE(next, rand());
    }
}

void SparkleEffectTest::followsTheSteps_data()
{
    QTest::addColumn<Setting>("setting");
    QTest::addColumn<quint64>("gid");
    const VelaColor yxy(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768"));
    const QVector<QPair<const char*, Setting>> settings = {
        {"defaults", {}},
        {"colours", {Qt::yellow, Qt::blue}},
        {"rare", {Qt::yellow, Qt::blue, false, false, 10, 1, 2.0}},
        {"slow decay", {Qt::yellow, Qt::blue, false, false, 1, 2, 10.0}},
        {"fast decay", {Qt::yellow, Qt::blue, false, false, 35, 10, 100.0}},
        {"dense", {Qt::yellow, Qt::blue, false, false, 10, 900, 33.3}},
        {"faded", {Qt::yellow, Qt::blue, false, false, 10, 4, 10.0, 0.25}},
        {"invisible", {Qt::yellow, Qt::blue, false, false, 10, 4, 10.0, 1.0}},
        {"half clear", {faded(Qt::yellow, 0.6), faded(Qt::blue, 0.3), false, false, 10, 4}},
        {"half clear, faded",
         {faded(Qt::yellow, 0.6), faded(Qt::blue, 0.3), false, false, 10, 4, 10.0, 0.1}},
        {"clear background", {Qt::yellow, Qt::blue, false, true, 10, 3}},
        {"clear background, faded", {Qt::yellow, Qt::blue, false, true, 10, 3, 10.0, 0.3}},
        {"clear sparkles", {Qt::yellow, Qt::blue, true, false, 10, 3}},
        {"clear sparkles, faded", {Qt::yellow, Qt::blue, true, false, 10, 3, 10.0, 0.3}},
        {"both clear", {Qt::yellow, Qt::blue, true, true, 10, 3}},
        {"both clear, faded", {Qt::yellow, Qt::blue, true, true, 10, 3, 10.0, 0.3}},
        {"whites", {yxy, Qt::blue, false, false, 10, 3, 10.0, 0.2}},
        {"white background", {Qt::red, yxy, false, false, 10, 3}},
    };
    for (const auto& setting : settings) {
        for (const quint64 gid : {0x100, 0x101, 0x102, 8, 0x200}) {
            QTest::addRow("%s, group %llx", setting.first, gid) << setting.second << gid;
        }
    }
}

void SparkleEffectTest::followsTheSteps()
{
    QFETCH(const Setting, setting);
    QFETCH(const quint64, gid);
    SparkleStage stage;
    SparkleEffect effect(stage.model(), gid, nullptr);
    constexpr qint64 kStepMs[] = {25, 25, 24, 26, 100, 0, 1, 25, 25, 3};
    constexpr int kFrames = 200;

    set(effect, setting);
    srandom(kFrameSeed);
    effect.tick(TestShow::kStartMs, 0); // inactive: only the time goes on
    effect.setStartMs(TestShow::kStartMs - 500);
    QVector<QVector<Paint>> shown;
    qint64 ms = 0;
    for (int i = 0; i < kFrames; ++i) {
        ms += kStepMs[i % 10];
        stage.frame(effect, ms);
        shown.append(stage.shown());
    }

    Steps steps(setting, flatOrder(gid));
    srandom(kFrameSeed);
    steps.start(-500, 0);
    ms = 0;
    int sparkling = 0;
    for (int i = 0; i < kFrames; ++i) {
        ms += kStepMs[i % 10];
        const QString found = differences(shown[i], steps.frame(ms));
        QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("frame %1: ").arg(i) + found));
        sparkling += steps.sparkling();
    }
    QVERIFY(sparkling > 10); // something was seen
}

void SparkleEffectTest::twoRunsPaintTheSame()
{
    SparkleStage stage;
    QVector<QVector<Paint>> runs[2];
    for (QVector<QVector<Paint>>& run : runs) {
        SparkleEffect effect(stage.model(), 0x101, nullptr);
        effect.compile();
        srand(kFrameSeed);
        effect.tick(TestShow::kStartMs, 0);
        effect.setStartMs(TestShow::kStartMs);
        for (int ms = 0; ms < 3000; ms += 25) {
            stage.frame(effect, ms);
            run.append(stage.shown());
        }
    }
    for (int i = 0; i < runs[0].size(); ++i) {
        QCOMPARE(differences(runs[0][i], runs[1][i]), QString());
    }
}

void SparkleEffectTest::aBurstWaitsForItsTime()
{
    SparkleStage stage;
    SparkleEffect effect(stage.model(), 8, nullptr);
    effect.setDensity(999); // hits the one light all but surely
    effect.setDecayRate(0);
    effect.compile();
    reseed();
    QCOMPARE(rand() % (1000 / 999), 0); // the first wait
    effect.setDensity(10);
    effect.compile();
    reseed();
    const int wait = rand() % 100;
    QVERIFY(wait > 0);
    effect.setDensity(999);
    effect.tick(TestShow::kStartMs, 0);
    effect.setStartMs(TestShow::kStartMs);
    stage.frame(effect, wait); // must be over, not just be there
    QVERIFY(stage.mix(8).isBlack());
    QCOMPARE(effect.startMs(), TestShow::kStartMs);
    stage.frame(effect, wait + 1);
    QCOMPARE(stage.sim(8), QColor(Qt::white));
    // The next wait counts from the frame before this one.
    QCOMPARE(effect.startMs(), TestShow::kStartMs + wait);
}

void SparkleEffectTest::aFreshSparkleHasDecayedByItsFrame()
{
    SparkleStage stage;
    SparkleEffect effect(stage.model(), 8, nullptr);
    effect.setDensity(999);
    effect.compile(); // waits 0
    effect.tick(TestShow::kStartMs, 0);
    effect.setStartMs(TestShow::kStartMs);
    stage.frame(effect, 400); // 1000 - 400 of white
    QVERIFY(std::abs(stage.mix(8).redF() - 0.6) < 1e-9);
    QCOMPARE(stage.sim(8), QColor(153, 153, 153));
    effect.setTimeConstant(0.0001); // no burst for a long time
    effect.setDensity(0);
    effect.setStartMs(TestShow::kStartMs + 100000);
    stage.frame(effect, 500);
    QCOMPARE(stage.sim(8), QColor(128, 128, 128));
    stage.frame(effect, 1000);
    QVERIFY(stage.mix(8).isBlack());
}

void SparkleEffectTest::transparencyCompoundsOverRestingLights()
{
    SparkleStage stage;
    SparkleEffect effect(stage.model(), 0x100, nullptr);
    effect.setBgColor(Qt::white);
    effect.compile();
    effect.setTransparency(0.5);
    effect.setStartMs(TestShow::kStartMs);
    stage.frame(effect, 0);
    double alpha = 1.0;
    for (quint64 uid = 1; uid <= 6; ++uid) {
        alpha *= 0.5;
        QVERIFY(std::abs(stage.mix(uid).redF() - alpha) < 1e-8);
        QVERIFY(std::abs(stage.sim(uid).red() - alpha * 255.0) < 1.5);
    }
    effect.setTransparency(1.0);
    stage.frame(effect, 0);
    for (quint64 uid = 1; uid <= 6; ++uid) {
        QVERIFY(stage.mix(uid).isBlack());
    }
    effect.setTransparency(0.0);
    effect.setBgColor(faded(Qt::white, 0.25)); // its own alpha does not
    stage.frame(effect, 0);
    for (quint64 uid = 1; uid <= 6; ++uid) {
        QVERIFY(std::abs(stage.mix(uid).redF() - 0.25) < 1e-9);
    }
}

void SparkleEffectTest::missingLightsDoNotCompound()
{
    SparkleStage stage;
    SparkleEffect effect(stage.model(), 0x200, nullptr);
    effect.setBgColor(Qt::white);
    effect.compile();
    effect.setTransparency(0.5);
    effect.setStartMs(TestShow::kStartMs);
    stage.frame(effect, 0);
    for (quint64 uid = 1; uid <= 7; ++uid) {
        QVERIFY(std::abs(stage.mix(uid).redF() - std::pow(0.5, double(uid))) < 1e-8);
    }
    QVERIFY(stage.mix(8).isBlack());
}

void SparkleEffectTest::compoundingStartsAnewEachFrame()
{
    SparkleStage stage;
    SparkleEffect effect(stage.model(), 0x100, nullptr);
    effect.setBgColor(Qt::white);
    effect.compile();
    effect.setTransparency(0.5);
    effect.setStartMs(TestShow::kStartMs);
    stage.frame(effect, 0);
    const QVector<Paint> first = stage.shown();
    stage.frame(effect, 0);
    QCOMPARE(differences(stage.shown(), first), QString());
    QCOMPARE(effect.bgColor(), VelaColor(Qt::white));
}

void SparkleEffectTest::flagsDecideTheFade_data()
{
    // A white sparkle on blue at 600 of 1000, over a red light.
    QTest::addColumn<bool>("sparkTrans");
    QTest::addColumn<bool>("bgTrans");
    QTest::addColumn<double>("transparency");
    QTest::addColumn<double>("red");
    QTest::addColumn<double>("green");
    QTest::addColumn<double>("blue");
    QTest::newRow("neither") << false << false << 0.0 << 0.6 << 0.6 << 1.0;
    // The background at alpha 0.6: red and green 0.6, blue 0.6 + 0.4 x 0.6, alpha 0.84.
    QTest::newRow("background") << false << true << 0.0 << 0.6 * 0.84 + 0.16 << 0.6 * 0.84
                                << 0.84 * 0.84;
    // Only the background's share: blue 0.4 at alpha 0.4.
    QTest::newRow("sparkle") << true << false << 0.0 << 0.6 << 0.0 << 0.16;
    QTest::newRow("both") << true << true << 0.0 << 1.0 << 0.0 << 0.0;
    QTest::newRow("neither, half faded") << false << false << 0.5 << 0.8 << 0.3 << 0.5;
    QTest::newRow("background, half faded")
        << false << true << 0.5 << 0.6 * 0.42 + 0.58 << 0.6 * 0.42 << 0.84 * 0.42;
    QTest::newRow("sparkle, half faded") << true << false << 0.5 << 0.8 << 0.0 << 0.08;
    QTest::newRow("both, half faded") << true << true << 0.5 << 1.0 << 0.0 << 0.0;
}

void SparkleEffectTest::flagsDecideTheFade()
{
    QFETCH(const bool, sparkTrans);
    QFETCH(const bool, bgTrans);
    QFETCH(const double, transparency);
    QFETCH(const double, red);
    QFETCH(const double, green);
    QFETCH(const double, blue);
    SparkleStage stage;
    SparkleEffect effect(stage.model(), 8, nullptr);
    effect.setBgColor(Qt::blue);
    effect.setSparkleTransparency(sparkTrans);
    effect.setBgTransparency(bgTrans);
    effect.setTransparency(transparency);
    effect.setPriority(1);
    effect.setDensity(999);
    effect.compile();
    effect.tick(TestShow::kStartMs, 0);
    effect.setStartMs(TestShow::kStartMs);
    effect.setActive(true);
    stage.endFrame();
    stage.light(8)->mixColor(Qt::red, 0);
    stage.light(8)->mixSimColor(Qt::red, 0);
    effect.tick(TestShow::kStartMs + 400, 0);
    QVERIFY(std::abs(stage.mix(8).redF() - red) < 1e-9);
    QVERIFY(std::abs(stage.mix(8).greenF() - green) < 1e-9);
    QVERIFY(std::abs(stage.mix(8).blueF() - blue) < 1e-9);
    QVERIFY(std::abs(stage.sim(8).red() - red * 255.0) <= 2.0);
    QVERIFY(std::abs(stage.sim(8).green() - green * 255.0) <= 2.0);
    QVERIFY(std::abs(stage.sim(8).blue() - blue * 255.0) <= 2.0);
}

void SparkleEffectTest::settersStoreAndTheTimeTells()
{
    MetaEffect root(nullptr, 0, nullptr);
    SparkleEffect effect(nullptr, 5, nullptr);
    effect.setEndType(Effect::EndCycles);
    effect.setEndCycleCount(2);
    root.addEffect(&effect);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setTimeConstant(1.2345);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 1234U);
    QCOMPARE(effect.end(), 2468U);
    effect.setSparkleColor(Qt::red);
    effect.setBgColor(Qt::green);
    effect.setSparkleTransparency(true);
    effect.setBgTransparency(true);
    effect.setDecayRate(3);
    effect.setDensity(4);
    QCOMPARE(told.count(), 1);
    QCOMPARE(seedings, 0); // none compiles
    QVERIFY(!effect.compiled());
    QCOMPARE(effect.sparkleColor(), VelaColor(Qt::red));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::green));
    QVERIFY(effect.sparkleTransparency());
    QVERIFY(effect.bgTransparency());
    QCOMPARE(effect.decayRate(), 3);
    QCOMPARE(effect.density(), 4);
    QCOMPARE(effect.timeConstant(), 1.2345);
}

void SparkleEffectTest::hostileNumbersEnd()
{
    SparkleStage stage;
    const QVector<QString> texts = hostileTexts();
    for (const QString& number : texts) {
        for (const char* const key : {"decay", "density", "cycletime"}) {
            QDomElement element =
                elementOf(QStringLiteral("<%1>%2</%1><bgcolor>blue</bgcolor><gid>512</gid>")
                              .arg(QLatin1String(key), number));
            SparkleEffect effect(stage.model(), 0, &element);
            effect.tick(TestShow::kStartMs, 0);
            effect.setStartMs(TestShow::kStartMs);
            for (int ms = 0; ms < 1000; ms += 25) {
                stage.frame(effect, ms);
                for (quint64 uid = 1; uid <= 7; ++uid) {
                    QVERIFY(stage.mix(uid).isValid());
                }
            }
        }
    }
    // A clock that jumps.
    SparkleEffect effect(stage.model(), 0x101, nullptr);
    effect.compile();
    for (const qint64 ms : {qint64(0), qint64(1) << 40, qint64(5), -(qint64(1) << 40), qint64(0)}) {
        stage.frame(effect, ms);
        QVERIFY(stage.mix(1).isValid());
    }
}

void SparkleEffectTest::transparencyBeyondItsRangeIsHeld()
{
    SparkleStage stage;
    SparkleEffect effect(stage.model(), 0x101, nullptr);
    effect.setBgColor(Qt::blue);
    effect.setDensity(5);
    effect.compile();
    effect.tick(TestShow::kStartMs, 0);
    effect.setStartMs(TestShow::kStartMs);
    int ms = 0;
    for (const double transparency : {1.5, 1e300, std::numeric_limits<double>::infinity(), -0.5,
                                      -1e300, std::numeric_limits<double>::quiet_NaN()}) {
        effect.setTransparency(transparency);
        for (int i = 0; i < 20; ++i) {
            stage.frame(effect, ms += 25);
            for (quint64 uid = 1; uid <= 7; ++uid) {
                QVERIFY(stage.mix(uid).isValid());
                QVERIFY(transparency < 1.0 || !(transparency == transparency) ||
                        stage.mix(uid).isBlack());
            }
        }
    }
}

void SparkleEffectTest::compileForgetsTheGroup()
{
    SparkleStage stage;
    SparkleEffect effect(stage.model(), 0x101, nullptr);
    effect.setBgColor(Qt::blue);
    effect.compile();
    stage.frame(effect, 0);
    QCOMPARE(stage.sim(1).rgba(), QColor(Qt::blue).rgba());
    effect.setGid(0x999);
    effect.compile();
    stage.frame(effect, 25);
    QVERIFY(stage.mix(1).isBlack());
}

void SparkleEffectTest::isWrittenByteForByte()
{
    SparkleEffect effect(nullptr, 7, nullptr);
    effect.setTimeConstant(1.23456789);
    effect.setDensity(-4);
    effect.setBgTransparency(true);
    QCOMPARE(
        TestShow::textOf(effect),
        QStringLiteral("<effect>\n") +
            TestShow::baseText(QStringLiteral("Sparkle"), QStringLiteral("Unnamed Effect"), 7) +
            QStringLiteral("<decay>10</decay>\n"
                           "<density>-4</density>\n"
                           "<cycletime>1.23457</cycletime>\n"
                           "<sparklecolor>aRgb;1;0;#ffffffffffffffff</sparklecolor>\n"
                           "<bgcolor>aRgb;1;0;#ffff000000000000</bgcolor>\n"
                           "<sparkletrans>0</sparkletrans>\n"
                           "<bgtrans>1</bgtrans>\n"
                           "</effect>\n"));
}

void SparkleEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("written");
    const auto row = [](const char* name, const char* keys, const char* decay, const char* density,
                        const char* time, const char* spark, const char* bg, const char* sparkTrans,
                        const char* bgTrans) {
        QTest::newRow(name) << QString::fromLatin1(keys)
                            << keyLines({{"decay", decay},
                                         {"density", density},
                                         {"cycletime", time},
                                         {"sparklecolor", spark},
                                         {"bgcolor", bg},
                                         {"sparkletrans", sparkTrans},
                                         {"bgtrans", bgTrans}});
    };
    const char* const white = "aRgb;1;0;#ffffffffffffffff";
    const char* const black = "aRgb;1;0;#ffff000000000000";
    const char* const blue = "aRgb;1;0;#ffff00000000ffff";
    row("missing", "", "10", "10", "10", white, black, "0", "0");
    row("all",
        "<bgtrans>1</bgtrans><sparkletrans>2</sparkletrans><bgcolor>blue</bgcolor>"
        "<sparklecolor>black</sparklecolor><cycletime>2.5</cycletime><density>-1</density>"
        "<decay>-20</decay>",
        "-20", "-1", "2.5", black, blue, "1", "1");
    row("empty", "<bgtrans/><sparkletrans/><bgcolor/><sparklecolor/><cycletime/><density/><decay/>",
        "10", "10", "10", white, black, "0", "0");
    row("unreadable",
        "<bgtrans>1</bgtrans><bgtrans>x</bgtrans><sparkletrans>1</sparkletrans><sparkletrans>x"
        "</sparkletrans><bgcolor>blue</bgcolor><bgcolor>aRgb;</bgcolor><sparklecolor>blue"
        "</sparklecolor><sparklecolor>aRgb;</sparklecolor><cycletime>2</cycletime><cycletime>x"
        "</cycletime><density>2</density><density>2.5</density><decay>2</decay><decay>x</decay>",
        "10", "10", "10", white, black, "0", "0");
    row("values above the editor's are kept",
        "<density>2147483647</density><decay>1000</decay><cycletime>-1e300</cycletime>", "1000",
        "2147483647", "-1e+300", white, black, "0", "0");
}

void SparkleEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const SparkleEffect effect(nullptr, 5, &element);
    QTEST(ownKeys(effect), "written");
}

void SparkleEffectTest::readingCompilesAndTells()
{
    SparkleEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.fromXml(nullptr);
    QDomElement element =
        elementOf(QStringLiteral("<decay>2</decay><density>3</density><cycletime>2</cycletime>"
                                 "<sparkletrans>1</sparkletrans><bgtrans>1</bgtrans>"));
    effect.fromXml(&element);
    QCOMPARE(seedings, 0);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2000U);
    element = elementOf(QStringLiteral("<sparklecolor>aRgb;</sparklecolor><bgcolor>red</bgcolor>"));
    effect.fromXml(&element);
    QCOMPARE(seedings, 2);
    QCOMPARE(told.count(), 1);
}

QTEST_GUILESS_MAIN(SparkleEffectTest)
#include "SparkleEffectTest.moc"
