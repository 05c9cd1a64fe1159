#include "engine/EffectEngine.h"

#include "tests/engine/TestShow.h"

#include <QMetaMethod>
#include <QSignalSpy>

#include <limits>

using TestShow::kStartMs;
using TestShow::ProbeEffect;
using TestShow::TestMap;

class EffectEngineTest : public QObject
{
    Q_OBJECT
private slots:
    void framePeriodComesFromTheRate_data();
    void framePeriodComesFromTheRate();
    void startsToTickAtOnce();
    void theTimerTicksWithTheClock();
    void correctsTheIntervalByLateness_data();
    void correctsTheIntervalByLateness();
    void anEmptyListStillTicks();
    void tellsAheadOfTheOutputsAndBehindThem();
    void countsFramesWithoutEnd();
    void runsEffectsInAscendingPriority();
    void takesEffectsAtTheStart();
    void addingAndRemovingNothingIsHarmless();
    void anEffectMayChangeTheListMeanwhile();
    void pauseStopsAndGoesOn();
    void aTickFromOutsideArmsTheTimerOfAPausedEngine();
    void aNewPeriodWaitsForTheNextTick();
    void shortAndNegativePeriodsWaitForNothing_data();
    void shortAndNegativePeriodsWaitForNothing();
};

namespace {

QDateTime at(qint64 ms)
{
    return QDateTime::fromMSecsSinceEpoch(ms);
}

/// Paused, with a tick at kStartMs behind it and no drift left: the one before lies later.
class SteadyEngine : public EffectEngine
{
public:
    SteadyEngine(MapModel* model, int periodMs)
        : EffectEngine(model, nullptr, periodMs)
    {
        tick(at(kStartMs + 100000));
        tick(at(kStartMs));
        pause(true);
    }
};

} // namespace

void EffectEngineTest::framePeriodComesFromTheRate_data()
{
    QTest::addColumn<int>("rate");
    QTest::addColumn<int>("period");
    QTest::newRow("default") << 40 << 25;
    QTest::newRow("division truncates") << 30 << 33;
    QTest::newRow("slowest") << 1 << 1000;
    QTest::newRow("zero counts as 40") << 0 << 25;
    QTest::newRow("negative counts as 40") << -5 << 25;
    QTest::newRow("a thousand") << 1000 << 1;
    QTest::newRow("above a thousand") << 1001 << 1;
    QTest::newRow("highest") << std::numeric_limits<int>::max() << 1;
    QTest::newRow("lowest") << std::numeric_limits<int>::min() << 25;
}

void EffectEngineTest::framePeriodComesFromTheRate()
{
    QFETCH(const int, rate);
    QFETCH(const int, period);
    QCOMPARE(framePeriodMs(rate), period);
}

void EffectEngineTest::startsToTickAtOnce()
{
    TestMap map(0);
    const EffectEngine engine(map.model(), nullptr, 25);
    QVERIFY(!engine.isPaused());
    QCOMPARE(engine.interval(), 25);
    QCOMPARE(engine.drift(), 0);
}

void EffectEngineTest::theTimerTicksWithTheClock()
{
    TestMap map(0);
    EffectEngine engine(map.model(), nullptr, 5);
    QSignalSpy ticks(&engine, &EffectEngine::EngineTick);
    const QDateTime before = QDateTime::currentDateTime();
    QTRY_VERIFY(ticks.count() >= 3);
    const QDateTime told = ticks.first().first().toDateTime();
    QVERIFY(told >= before && told <= QDateTime::currentDateTime());
}

void EffectEngineTest::correctsTheIntervalByLateness_data()
{
    // Period 25: interval 6 to 50, drift up to 2500. Columns: what lies between the ticks, and
    // the interval and the drift behind the last one.
    QTest::addColumn<QList<qint64>>("elapsed");
    QTest::addColumn<int>("interval");
    QTest::addColumn<int>("drift");
    using List = QList<qint64>;
    QTest::newRow("in time") << List{25} << 25 << 0;
    QTest::newRow("5 late") << List{30} << 23 << 5; // 25 - 1 - 1
    QTest::newRow("4 late: divisions truncate") << List{29} << 25 << 4;
    QTest::newRow("35 late") << List{60} << 11 << 35; // 25 - 7 - 7
    QTest::newRow("75 late: least interval") << List{100} << 6 << 75;
    QTest::newRow("backlog remains") << List{60, 25} << 18 << 35;   // 25 - 0 - 7
    QTest::newRow("backlog paid back") << List{60, 15} << 22 << 25; // 25 + 2 - 5
    QTest::newRow("4 early: truncates towards zero") << List{21} << 25 << 0;
    QTest::newRow("7 early") << List{18} << 26 << 0;
    QTest::newRow("early earns no credit") << List{5, 30} << 23 << 5;
    QTest::newRow("ten minutes") << List{600000} << 6 << 0;
    QTest::newRow("a tick behind ten minutes") << List{600000, 25} << 25 << 0;
    QTest::newRow("drift at twice its limit") << List{5025} << 6 << 2500;
    QTest::newRow("drift above twice its limit") << List{5026} << 6 << 0;
    QTest::newRow("drift is limited") << List{2525, 1000} << 6 << 2500;
    QTest::newRow("drift reset before it is limited") << List{2525, 2526} << 6 << 0;
    QTest::newRow("clock set back") << List{-1000} << 50 << 0;
    QTest::newRow("a tick behind a clock set back") << List{-1000, 25} << 25 << 0;
    QTest::newRow("clock set back clears drift") << List{60, -1000, 25} << 25 << 0;
    QTest::newRow("elapsed has 32 bits") << List{4294967296 + 30} << 23 << 5;
    QTest::newRow("greatest elapsed") << List{2147483647} << 6 << 0;
    QTest::newRow("least elapsed") << List{-2147483648LL} << 50 << 0;
}

void EffectEngineTest::correctsTheIntervalByLateness()
{
    QFETCH(const QList<qint64>, elapsed);
    QFETCH(const int, interval);
    QFETCH(const int, drift);
    TestMap map(0);
    SteadyEngine engine(map.model(), 25);
    qint64 now = kStartMs;
    for (const qint64 ms : elapsed) {
        now += ms;
        engine.tick(at(now));
    }
    QCOMPARE(engine.interval(), interval);
    QCOMPARE(engine.drift(), drift);
}

void EffectEngineTest::anEmptyListStillTicks()
{
    TestMap map(1);
    SteadyEngine engine(map.model(), 25);
    QSignalSpy compiled(&engine, &EffectEngine::propertiesCompiled);
    QSignalSpy ticked(&engine, &EffectEngine::EngineTick);
    map.light(1)->mixColor(Qt::red, 1);
    engine.tick(at(kStartMs + 25));
    QCOMPARE(compiled.count(), 1);
    QCOMPARE(ticked.count(), 1);
    QCOMPARE(ticked.first().first().toDateTime(), at(kStartMs + 25));
    QVERIFY(map.mix(1).isBlack()); // the frame was ended
}

void EffectEngineTest::tellsAheadOfTheOutputsAndBehindThem()
{
    const QMetaObject& meta = EffectEngine::staticMetaObject;
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(),
             QByteArray("EngineTick(QDateTime)"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(),
             QByteArray("propertiesCompiled()"));
    TestMap map(1);
    SteadyEngine engine(map.model(), 25);
    ProbeEffect painter;
    painter.setActive(true);
    painter.onFrame = [&] { map.light(1)->mixColor(Qt::red, 0); };
    engine.addEffect(&painter);
    QVector<bool> blackWhenTold;
    connect(&engine, &EffectEngine::propertiesCompiled, this,
            [&] { blackWhenTold.append(map.mix(1).isBlack()); });
    connect(&engine, &EffectEngine::EngineTick, this,
            [&] { blackWhenTold.append(map.mix(1).isBlack()); });
    engine.tick(at(kStartMs + 25));
    QCOMPARE(blackWhenTold, QVector<bool>({false, true}));
}

void EffectEngineTest::countsFramesWithoutEnd()
{
    TestMap map(0);
    SteadyEngine engine(map.model(), 25); // two frames are behind it
    ProbeEffect effect;
    effect.setActive(true);
    engine.addEffect(&effect);
    engine.tick(at(kStartMs + 25));
    engine.pause(true);
    engine.pause(false);
    engine.setFramePeriod(10);
    engine.tick(at(kStartMs + 50));
    QCOMPARE(effect.frames.size(), 2);
    QCOMPARE(effect.frames.at(0).frame, 2U);
    QCOMPARE(effect.frames.at(1).frame, 3U);
}

void EffectEngineTest::runsEffectsInAscendingPriority()
{
    TestMap map(0);
    SteadyEngine engine(map.model(), 25);
    QVector<quint32> order;
    ProbeEffect effects[3];
    const quint32 priorities[] = {2147483648U, 1, 7}; // unsigned: the first is the highest
    for (int i = 0; i < 3; ++i) {
        effects[i].setActive(true);
        effects[i].setPriority(priorities[i]);
        effects[i].onFrame = [&order, &effects, i] { order.append(effects[i].priority()); };
        engine.addEffect(&effects[i]);
    }
    engine.tick(at(kStartMs + 25));
    QCOMPARE(order, QVector<quint32>({1, 7, 2147483648U}));
}

void EffectEngineTest::takesEffectsAtTheStart()
{
    TestMap map(0);
    QVector<int> order;
    ProbeEffect high;
    ProbeEffect low;
    high.setPriority(2);
    low.setPriority(1);
    for (ProbeEffect* const effect : {&high, &low}) {
        effect->setActive(true);
        effect->onFrame = [&order, effect] { order.append(static_cast<int>(effect->priority())); };
    }
    QList<Effect*> list = {&high, &low};
    EffectEngine engine(map.model(), &list, 25);
    engine.tick(at(kStartMs));
    QCOMPARE(order, QVector<int>({1, 2}));
    QCOMPARE(list, QList<Effect*>({&high, &low})); // the engine sorts a list of its own
}

void EffectEngineTest::addingAndRemovingNothingIsHarmless()
{
    TestMap map(0);
    SteadyEngine engine(map.model(), 25);
    ProbeEffect effect;
    effect.setActive(true);
    engine.addEffect(nullptr);
    engine.removeEffect(nullptr);
    engine.removeEffect(&effect);
    engine.addEffect(&effect);
    engine.addEffect(&effect);
    engine.removeEffect(&effect); // the first entry only
    engine.tick(at(kStartMs + 25));
    QCOMPARE(effect.frames.size(), 1);
    engine.removeEffect(&effect);
    engine.tick(at(kStartMs + 50));
    QCOMPARE(effect.frames.size(), 1);
}

void EffectEngineTest::anEffectMayChangeTheListMeanwhile()
{
    TestMap map(0);
    SteadyEngine engine(map.model(), 25);
    ProbeEffect first;
    ProbeEffect second;
    first.setActive(true);
    second.setActive(true);
    first.onFrame = [&] { engine.removeEffect(&second); };
    engine.addEffect(&first);
    engine.addEffect(&second);
    engine.tick(at(kStartMs + 25));
    QCOMPARE(second.frames.size(), 1); // this walk goes over the list as it was
    engine.tick(at(kStartMs + 50));
    QCOMPARE(second.frames.size(), 1);
    QCOMPARE(first.frames.size(), 2);
}

void EffectEngineTest::pauseStopsAndGoesOn()
{
    TestMap map(0);
    SteadyEngine engine(map.model(), 25);
    engine.tick(at(kStartMs + 60));
    QCOMPARE(engine.interval(), 11);
    QCOMPARE(engine.drift(), 35);
    engine.pause(true);
    QVERIFY(engine.isPaused());
    engine.pause(true);
    QVERIFY(engine.isPaused());
    QCOMPARE(engine.drift(), 35);
    engine.pause(false);
    QVERIFY(!engine.isPaused());
    QCOMPARE(engine.interval(), 11); // its last one
    QCOMPARE(engine.drift(), 0);
}

void EffectEngineTest::aTickFromOutsideArmsTheTimerOfAPausedEngine()
{
    TestMap map(0);
    SteadyEngine engine(map.model(), 25);
    QVERIFY(engine.isPaused());
    engine.tick(at(kStartMs + 25));
    QVERIFY(!engine.isPaused());
}

void EffectEngineTest::aNewPeriodWaitsForTheNextTick()
{
    TestMap map(0);
    SteadyEngine engine(map.model(), 25);
    engine.tick(at(kStartMs + 60));
    engine.setFramePeriod(100);
    QCOMPARE(engine.interval(), 11);
    QCOMPARE(engine.drift(), 0);
    QVERIFY(!engine.isPaused());
    engine.tick(at(kStartMs + 160));
    QCOMPARE(engine.interval(), 100);
    engine.tick(at(kStartMs + 60)); // 200 early: 100 + 40
    QCOMPARE(engine.interval(), 140);
    engine.tick(at(kStartMs - 10000)); // the greatest interval is twice the period
    QCOMPARE(engine.interval(), 200);
    engine.pause(true);
    engine.setFramePeriod(50);
    QVERIFY(engine.isPaused());
}

void EffectEngineTest::shortAndNegativePeriodsWaitForNothing_data()
{
    QTest::addColumn<int>("period");
    QTest::newRow("1") << 1;
    QTest::newRow("3") << 3;
    QTest::newRow("0") << 0;
    QTest::newRow("negative") << -40;
    QTest::newRow("lowest") << std::numeric_limits<int>::min();
}

void EffectEngineTest::shortAndNegativePeriodsWaitForNothing()
{
    QFETCH(const int, period);
    TestMap map(0);
    SteadyEngine engine(map.model(), period);
    engine.tick(at(kStartMs + 1000));
    QCOMPARE(engine.interval(), 0);
    QVERIFY(!engine.isPaused());
}

QTEST_GUILESS_MAIN(EffectEngineTest)
#include "EffectEngineTest.moc"
