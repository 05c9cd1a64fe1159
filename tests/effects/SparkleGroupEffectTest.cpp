#include "effects/SparkleGroupEffect.h"

#include "engine/MetaEffect.h"
#include "tests/effects/RowStage.h"
#include "tests/effects/SeededRand.h"

#include <QDateTime>
#include <QMetaProperty>
#include <QSignalSpy>

using TestShow::elementOf;

class SparkleGroupEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { seedings = 0; }
    void hasItsDefaults();
    void propertiesReadAndWrite();
    void restsAtTheBackground_data();
    void restsAtTheBackground();
    void compileSeedsAndDrawsWithOrWithoutLights();
    void followsTheSteps_data();
    void followsTheSteps();
    void goesByTheWallClock();
    void aBurstWaitsForItsTime();
    void mixesAt8Bits();
    void reachesTheOutputsOnly();
    void aPausePutsAllSparklesOut();
    void settersStoreOrCompile();
    void hostileNumbersEnd();
    void compileForgetsTheGroup();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void readingCompilesAndTells();
};

namespace {

constexpr unsigned int kFrameSeed = 99;

qint64 clockMs = 1000000;

/// By the tests' clock.
class ClockedEffect
{
public:
    ClockedEffect(MapModel* model, quint64 gid, QDomElement* element)
        : effect(model, gid, element)
    {
        effect.setWallClock([] { return clockMs; });
        effect.compile();
    }
    SparkleGroupEffect* operator->() { return &effect; }
    void run(TestStage& stage, qint64 ms)
    {
        clockMs += ms;
        stage.run(effect, 7); // the engine's time, which plays no part
    }
    SparkleGroupEffect effect;
};

struct Setting
{
    QColor spark = Qt::white;
    QColor bg = Qt::black;
    qint32 decay = 10;
    qint32 density = 10;
    double timeConstant = 10.0;
};

/// The steps, one by one: the rows' colours.
class Steps
{
public:
    Steps(const Setting& setting, int rows)
        : m_setting(setting)
        , m_levels(rows, 0)
    {
        reseed(); // as compile() does
        m_nextBurst = quint32(rand() % (1000 / setting.density));
    }
    QVector<QRgb> frame(qint64 now)
    {
        if (m_nextBurst < now - m_lastBurst) {
            const int n = rand() % (m_setting.density + 1);
            for (int i = 0; i < n; ++i) {
                m_levels[rand() % m_levels.size()] = 1000;
            }
            m_lastBurst = now;
            m_nextBurst = quint32(rand() % int(1000.0 / m_setting.timeConstant));
        }
        const qint32 dt = qint32(now - m_lastDecay);
        for (qint32& level : m_levels) {
            if (level != 0) {
                level -= qint32((quint32(m_setting.decay) * quint32(dt)) / 10);
                level = level < 0 ? 0 : level;
            }
        }
        m_lastDecay = now;
        QVector<QRgb> colors;
        for (const qint32 level : m_levels) {
            const double d = level / 1000.0;
            const auto mix = [d](int spark, int bg) { return int((spark - bg) * d + bg) & 255; };
            colors.append(level == 0 ? m_setting.bg.rgb()
                                     : qRgb(mix(m_setting.spark.red(), m_setting.bg.red()),
                                            mix(m_setting.spark.green(), m_setting.bg.green()),
                                            mix(m_setting.spark.blue(), m_setting.bg.blue())));
        }
        return colors;
    }
    int sparkling() const { return m_levels.size() - m_levels.count(0); }

private:
    Setting m_setting;
    QVector<qint32> m_levels;
    quint32 m_nextBurst = 0;
    qint64 m_lastBurst = 0;
    qint64 m_lastDecay = 0;
};

void set(SparkleGroupEffect& effect, const Setting& setting)
{
    effect.setDecayRate(setting.decay);
    effect.setDensity(setting.density);
    effect.setTimeConstant(setting.timeConstant);
    effect.setSparkleColor(setting.spark);
    effect.setBgColor(setting.bg);
}

} // namespace

Q_DECLARE_METATYPE(Setting)

void SparkleGroupEffectTest::hasItsDefaults()
{
    SparkleGroupEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Sparkle Group"));
    QCOMPARE(effect.typeId(), 10);
    QCOMPARE(effect.cycleTime(), 10000U);
    QCOMPARE(effect.sparkleColor(), QColor(Qt::white));
    QCOMPARE(effect.bgColor(), QColor(Qt::black));
    QCOMPARE(effect.sparkleTransparency(), false);
    QCOMPARE(effect.bgTransparency(), false);
    QCOMPARE(effect.decayRate(), 10);
    QCOMPARE(effect.density(), 10);
    QCOMPARE(effect.timeConstant(), 10.0);
    QVERIFY(!effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void SparkleGroupEffectTest::propertiesReadAndWrite()
{
    const QMetaObject& meta = SparkleGroupEffect::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        names << QString::fromLatin1(meta.property(i).name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')),
             QStringLiteral("m_sparkleColor m_bgColor m_sparkleTransparency m_bgTransparency "
                            "m_decayRate"));
    SparkleGroupEffect effect(nullptr, 5, nullptr);
    QVERIFY(effect.setProperty("m_sparkleColor", QColor(Qt::blue)));
    QVERIFY(effect.setProperty("m_bgColor", QColor(Qt::red)));
    QVERIFY(effect.setProperty("m_sparkleTransparency", true));
    QVERIFY(effect.setProperty("m_bgTransparency", true));
    QVERIFY(effect.setProperty("m_decayRate", 33));
    QCOMPARE(effect.sparkleColor(), QColor(Qt::blue));
    QCOMPARE(effect.bgColor(), QColor(Qt::red));
    QVERIFY(effect.sparkleTransparency());
    QVERIFY(effect.bgTransparency());
    QCOMPARE(effect.property("m_decayRate").toInt(), 33);
}

void SparkleGroupEffectTest::restsAtTheBackground_data()
{
    addGroupRows();
}

void SparkleGroupEffectTest::restsAtTheBackground()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    ClockedEffect effect(stage.model(), gid, nullptr);
    effect->setBgColor(QColor(10, 20, 200, 77)); // its alpha counts for nothing
    effect.run(stage, 0);
    for (quint64 uid = 1; uid <= 8; ++uid) {
        QCOMPARE(stage.mix(uid), painted.contains(uid) ? VelaColor(qRgb(10, 20, 200))
                                                       : VelaColor::fromRgb(0, 0, 0));
        QCOMPARE(stage.sim(uid), QColor(Qt::black));
    }
}

void SparkleGroupEffectTest::compileSeedsAndDrawsWithOrWithoutLights()
{
    TestStage stage;
    for (const quint64 gid : {quint64(0x101), quint64(0x999)}) {
        SparkleGroupEffect effect(stage.model(), gid, nullptr);
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

void SparkleGroupEffectTest::followsTheSteps_data()
{
    QTest::addColumn<Setting>("setting");
    QTest::addColumn<quint64>("gid");
    const QVector<QPair<const char*, Setting>> settings = {
        {"defaults", {}},
        {"colours", {QColor(200, 10, 77), QColor(3, 250, 99)}},
        {"rare", {Qt::yellow, Qt::blue, 10, 1, 2.0}},
        {"slow decay", {Qt::yellow, Qt::blue, 1, 2, 10.0}},
        {"fast decay", {Qt::yellow, Qt::blue, 35, 10, 100.0}},
        {"dense", {Qt::yellow, Qt::blue, 10, 900, 33.3}},
        {"half clear", {QColor(200, 10, 77, 99), QColor(3, 250, 99, 1)}},
    };
    for (const auto& setting : settings) {
        for (const quint64 gid : {0x100, 0x101, 0x102, 8}) {
            QTest::addRow("%s, group %llx", setting.first, gid) << setting.second << gid;
        }
    }
}

void SparkleGroupEffectTest::followsTheSteps()
{
    QFETCH(const Setting, setting);
    QFETCH(const quint64, gid);
    TestStage stage;
    ClockedEffect effect(stage.model(), gid, nullptr);
    constexpr qint64 kStepMs[] = {25, 25, 24, 26, 100, 0, 1, 25, 25, 3};
    constexpr int kFrames = 200;
    const QVector<Uids> rows = rowsOf(gid);
    set(effect.effect, setting);
    effect->setTransparency(0.75); // not looked at
    effect->setSparkleTransparency(true);
    effect->setBgTransparency(true);
    srandom(kFrameSeed);
    QVector<QVector<VelaColor>> shown;
    for (int i = 0; i < kFrames; ++i) {
        effect.run(stage, kStepMs[i % 10]);
        QVector<VelaColor> mixes;
        for (quint64 uid = 1; uid <= 8; ++uid) {
            mixes.append(stage.mix(uid));
            QCOMPARE(stage.sim(uid), QColor(Qt::black));
        }
        shown.append(mixes);
    }
    Steps steps(setting, rows.size());
    srandom(kFrameSeed);
    qint64 ms = 0;
    int sparkling = 0;
    for (int i = 0; i < kFrames; ++i) {
        ms += kStepMs[i % 10];
        const QVector<QRgb> colors = steps.frame(ms);
        for (int row = 0; row < rows.size(); ++row) {
            for (const quint64 uid : rows[row]) {
                QCOMPARE(shown[i][int(uid) - 1], VelaColor(colors[row]));
            }
        }
        sparkling += steps.sparkling();
    }
    QVERIFY(sparkling > 10); // something was seen
}

void SparkleGroupEffectTest::goesByTheWallClock()
{
    TestStage stage;
    SparkleGroupEffect effect(stage.model(), 8, nullptr);
    effect.setDensity(1001); // waits 0
    effect.setDecayRate(0);
    effect.compile();
    const qint64 compiledMs = QDateTime::currentMSecsSinceEpoch();
    bool isLit = false; // as soon as a millisecond has passed
    while (!isLit && QDateTime::currentMSecsSinceEpoch() < compiledMs + 10000) {
        stage.run(effect, 0);
        isLit = !stage.mix(8).isBlack();
    }
    QVERIFY(isLit);

    ClockedEffect still(stage.model(), 8, nullptr);
    still->setDensity(999);
    still->setBgColor(Qt::blue);
    for (int ms = 0; ms < 100000; ms += 1000) { // show time passes, the wall clock does not
        stage.run(still.effect, ms);
        QCOMPARE(stage.mix(8), VelaColor(QColor(Qt::blue).rgb()));
    }
}

void SparkleGroupEffectTest::aBurstWaitsForItsTime()
{
    TestStage stage;
    ClockedEffect effect(stage.model(), 8, nullptr);
    effect->setDecayRate(0);
    effect->compile();
    reseed();
    const int wait = rand() % 100;
    QVERIFY(wait > 0);
    effect->setDensity(999); // hits the one row all but surely
    effect.run(stage, wait);
    QVERIFY(stage.mix(8).isBlack()); // must be over, not just be there
    effect.run(stage, 1);
    QCOMPARE(stage.mix(8), VelaColor(qRgb(255, 255, 255)));
}

void SparkleGroupEffectTest::mixesAt8Bits()
{
    TestStage stage;
    ClockedEffect effect(stage.model(), 8, nullptr);
    effect->setDensity(999);
    effect->setSparkleColor(QColor(255, 0, 100));
    effect->setBgColor(QColor(0, 255, 101)); // compiles: waits 0
    effect.run(stage, 1);
    // 999 of 1000: 254.745, 0.255 and 100.001, each cut.
    QCOMPARE(stage.mix(8), VelaColor(qRgb(254, 0, 100)));
    effect->setDensity(0);  // no new ones
    effect.run(stage, 499); // 500 of 1000
    QCOMPARE(stage.mix(8), VelaColor(qRgb(127, 127, 100)));
    effect.run(stage, 1000);
    QCOMPARE(stage.mix(8), VelaColor(qRgb(0, 255, 101)));
}

void SparkleGroupEffectTest::reachesTheOutputsOnly()
{
    TestStage stage;
    ClockedEffect effect(stage.model(), 8, nullptr);
    effect->setBgColor(Qt::blue);
    effect->setTransparency(1.0);
    effect->setPriority(3);
    effect.run(stage, 0);
    QCOMPARE(stage.mix(8), VelaColor(QColor(Qt::blue).rgb()));
    QCOMPARE(stage.sim(8), QColor(Qt::black));
    // A later effect of equal priority weighs its screen colour by the raised count: as a second
    // one, although it is the first that the simulation sees.
    stage.light(8)->mixColor(Qt::red, 3);
    stage.light(8)->mixSimColor(Qt::red, 3);
    QCOMPARE(stage.mix(8), mixed(0.5, 0.0, 0.5));
    QCOMPARE(stage.sim(8), QColor(Qt::red));
    // And as a third one behind what the simulation saw of one before.
    stage.endFrame();
    stage.light(8)->mixColor(Qt::green, 3);
    stage.light(8)->mixSimColor(QColor(Qt::green), 3);
    effect->tick(TestShow::kStartMs, 0);
    stage.light(8)->mixColor(Qt::red, 3);
    stage.light(8)->mixSimColor(QColor(Qt::red), 3);
    QCOMPARE(stage.sim(8), QColor(85, 170, 0));
}

void SparkleGroupEffectTest::aPausePutsAllSparklesOut()
{
    TestStage stage;
    ClockedEffect effect(stage.model(), 8, nullptr);
    effect->setDensity(999);
    effect->compile();
    effect.run(stage, 1);
    QCOMPARE(stage.mix(8), VelaColor(qRgb(254, 254, 254)));
    effect->setDensity(0); // no new ones
    clockMs += 5000;       // inactive meanwhile: levels stand still
    effect->setActive(false);
    effect->tick(TestShow::kStartMs, 0);
    effect.run(stage, 0);
    QVERIFY(stage.mix(8).isBlack());
}

void SparkleGroupEffectTest::settersStoreOrCompile()
{
    MetaEffect root(nullptr, 0, nullptr);
    SparkleGroupEffect effect(nullptr, 5, nullptr);
    effect.setEndType(Effect::EndCycles);
    effect.setEndCycleCount(2);
    root.addEffect(&effect);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setTimeConstant(1.2345);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 1234U);
    QCOMPARE(effect.end(), 2468U);
    effect.setSparkleTransparency(true);
    effect.setBgTransparency(true);
    effect.setDecayRate(3);
    effect.setDensity(4);
    QCOMPARE(seedings, 0);
    effect.setSparkleColor(Qt::red);
    QCOMPARE(seedings, 1);
    effect.setBgColor(Qt::green);
    QCOMPARE(seedings, 2);
    QCOMPARE(told.count(), 1);
    QCOMPARE(effect.sparkleColor(), QColor(Qt::red));
    QCOMPARE(effect.bgColor(), QColor(Qt::green));
    QVERIFY(effect.sparkleTransparency());
    QVERIFY(effect.bgTransparency());
    QCOMPARE(effect.decayRate(), 3);
    QCOMPARE(effect.density(), 4);
    QCOMPARE(effect.timeConstant(), 1.2345);
}

void SparkleGroupEffectTest::hostileNumbersEnd()
{
    TestStage stage;
    const QVector<QString> texts = hostileTexts();
    for (const QString& number : texts) {
        for (const char* const key : {"decay", "density", "cycletime", "bgcolor"}) {
            QDomElement element = elementOf(
                QStringLiteral("<gid>257</gid><%1>%2</%1>").arg(QLatin1String(key), number));
            ClockedEffect effect(stage.model(), 0, &element);
            effect->compile();
            for (int i = 0; i < 40; ++i) {
                effect.run(stage, 25);
                for (quint64 uid = 1; uid <= 7; ++uid) {
                    QVERIFY(stage.mix(uid).isValid());
                }
            }
            for (const qint64 jump : {qint64(1) << 40, -(qint64(1) << 41), qint64(0)}) {
                effect.run(stage, jump);
                QVERIFY(stage.mix(1).isValid());
            }
        }
    }
}

void SparkleGroupEffectTest::compileForgetsTheGroup()
{
    TestStage stage;
    ClockedEffect effect(stage.model(), 0x101, nullptr);
    effect->setBgColor(Qt::blue);
    effect.run(stage, 0);
    QVERIFY(!stage.mix(1).isBlack());
    effect->setGid(0x999);
    effect->compile();
    effect.run(stage, 0);
    QVERIFY(stage.mix(1).isBlack());
}

void SparkleGroupEffectTest::isWrittenByteForByte()
{
    SparkleGroupEffect effect(nullptr, 7, nullptr);
    effect.setTimeConstant(1.23456789);
    effect.setSparkleTransparency(true);
    effect.setBgColor(QColor(1, 2, 254, 77));
    QCOMPARE(TestShow::textOf(effect), QStringLiteral("<effect>\n") +
                                           TestShow::baseText(QStringLiteral("Sparkle Group"),
                                                              QStringLiteral("Unnamed Effect"), 7) +
                                           QStringLiteral("<decay>10</decay>\n"
                                                          "<density>10</density>\n"
                                                          "<cycletime>1.23457</cycletime>\n"
                                                          "<sparklecolor>#ffffff</sparklecolor>\n"
                                                          "<bgcolor>#0102fe</bgcolor>\n"
                                                          "<sparkletrans>1</sparkletrans>\n"
                                                          "<bgtrans>0</bgtrans>\n"
                                                          "</effect>\n"));
}

void SparkleGroupEffectTest::readsItsKeys_data()
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
    row("missing", "", "10", "10", "10", "#ffffff", "#000000", "0", "0");
    row("all",
        "<bgtrans>1</bgtrans><sparkletrans>2</sparkletrans><bgcolor>blue</bgcolor>"
        "<sparklecolor>#102030</sparklecolor><cycletime>2.5</cycletime><density>-1</density>"
        "<decay>-20</decay>",
        "-20", "-1", "2.5", "#102030", "#0000ff", "1", "1");
    row("empty", "<bgtrans/><sparkletrans/><bgcolor/><sparklecolor/><cycletime/><density/><decay/>",
        "10", "10", "10", "#ffffff", "#000000", "0", "0");
    row("unreadable",
        "<bgtrans>1</bgtrans><bgtrans>x</bgtrans><sparkletrans>1</sparkletrans><sparkletrans>x"
        "</sparkletrans><bgcolor>blue</bgcolor><bgcolor>bluish</bgcolor><sparklecolor>blue"
        "</sparklecolor><sparklecolor>#12</sparklecolor><cycletime>2</cycletime><cycletime>x"
        "</cycletime><density>2</density><density>2.5</density><decay>2</decay><decay>x</decay>",
        "10", "10", "10", "#ffffff", "#000000", "0", "0");
    row("the colour form of others",
        "<bgcolor>aRgb;1;0;#ffff00000000ffff</bgcolor><sparklecolor>aRgb;1;0;#ffff00000000ffff"
        "</sparklecolor>",
        "10", "10", "10", "#ffffff", "#000000", "0", "0");
}

void SparkleGroupEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const SparkleGroupEffect effect(nullptr, 5, &element);
    QTEST(ownKeys(effect), "written");
}

void SparkleGroupEffectTest::readingCompilesAndTells()
{
    SparkleGroupEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.fromXml(nullptr);
    QDomElement element =
        elementOf(QStringLiteral("<decay>2</decay><density>3</density><cycletime>2</cycletime>"
                                 "<sparkletrans>1</sparkletrans><bgtrans>1</bgtrans>"));
    effect.fromXml(&element);
    QCOMPARE(seedings, 0);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2000U);
    element = elementOf(QStringLiteral("<sparklecolor>x</sparklecolor><bgcolor>red</bgcolor>"));
    effect.fromXml(&element);
    QCOMPARE(seedings, 2);
    QCOMPARE(told.count(), 1);
}

QTEST_GUILESS_MAIN(SparkleGroupEffectTest)
#include "SparkleGroupEffectTest.moc"
