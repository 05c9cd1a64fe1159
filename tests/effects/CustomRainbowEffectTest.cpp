#include "effects/CustomRainbowEffect.h"

#include "engine/MetaEffect.h"
#include "resources/Resources.h"
#include "tests/effects/RowStage.h"

#include <QSignalSpy>

#include <cmath>

using TestShow::elementOf;
using Entry = CustomRainbowEntry;
using Entries = QVector<CustomRainbowEntry>;

class CustomRainbowEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void hasItsDefaults();
    void paintsItsGroup_data();
    void paintsItsGroup();
    void holdsAndFades_data();
    void holdsAndFades();
    void followsTheSteps_data();
    void followsTheSteps();
    void anEmptyListPaintsNothing();
    void oneEntryFadesToItself();
    void theShiftCarriesFromRowToRow();
    void aPassedCycleRestartsFromTheLastFrame();
    void fractionsOfAMillisecondStayValid();
    void withoutAnEntryTheRowBeforeStands();
    void whitesAreMixedAsTheyAre();
    void changesShowAtOnce();
    void theCycleIsTheTruncatedSum_data();
    void theCycleIsTheTruncatedSum();
    void hostileNumbersEnd();
    void entriesAreAddedAndRemoved();
    void settersTell();
    void settersIgnoreWhatIsOutOfRange();
    void aTimelineFollowsTheEntries();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void hostileFilesRead();
    void readingManyEntriesIsQuick();
};

namespace {

Entry entry(const VelaColor& color, double duration, double fade)
{
    Entry made;
    made.color = color;
    made.duration = duration;
    made.fade = fade;
    return made;
}

quint32 narrowed(double v)
{
    // The plain conversion, for whatever fits it.
    return std::abs(v) < 9.22e18 ? static_cast<quint32>(static_cast<qint64>(v)) : 0;
}

quint32 cycleOf(const Entries& entries)
{
    quint32 sum = 0;
    for (const Entry& e : entries) {
        sum += narrowed((e.fade + e.duration) * 1000.0);
    }
    return sum;
}

/// The steps, one by one.
QVector<Paint> stepsOf(const Entries& entries, double offset, double transparency, qint64 ms,
                       int rows)
{
    const quint32 cycle = cycleOf(entries);
    if (cycle == 0) {
        return {};
    }
    QVector<Paint> paints;
    VelaColor a;
    VelaColor b;
    double f = 0.0;
    quint32 t = static_cast<quint32>(ms) % cycle;
    for (int row = 0; row < rows; ++row) {
        t = narrowed(offset * 1000.0 + t) % cycle;
        quint32 acc = 0;
        for (int i = 0; i < entries.size(); ++i) {
            const Entry& e = entries[i];
            acc += narrowed(e.duration * 1000.0 + 0.5);
            if (t < acc) {
                a = e.color;
                b = e.color;
                f = 0.0;
                break;
            }
            acc += narrowed(e.fade * 1000.0 + 0.5);
            if (t < acc) {
                a = e.color;
                b = entries[(i + 1) % entries.size()].color;
                f = (acc - t) / (e.fade * 1000.0);
                f = f < 0.0 ? 0.0 : f > 1.0 ? 1.0 : f;
                break;
            }
        }
        Paint paint = {interpolate(a, b, 1.0 - f),
                       toDisplayQColor(interpolate(VelaColor(toDisplayQColor(a)),
                                                   VelaColor(toDisplayQColor(b)), 1.0 - f))};
        if (transparency > 0.0) {
            const double alpha = (paint.c.alpha32() / 4294967295.0) * (1.0 - transparency);
            paint.c.setAlphaF(alpha);
            paint.q.setAlphaF(alpha);
        }
        paints.append(paint);
    }
    return paints;
}

void set(CustomRainbowEffect& effect, const Entries& entries, double offset)
{
    effect.setGroupOffset(offset);
    for (const Entry& e : entries) {
        effect.addEntry(e);
    }
}

const Entries& threeColors()
{
    static const Entries kEntries = {entry(Qt::red, 1.0, 0.5), entry(Qt::green, 0.5, 1.0),
                                     entry(Qt::blue, 0.25, 0.25)};
    return kEntries;
}

VelaColor faded(VelaColor color, double alpha)
{
    color.setAlphaF(alpha);
    return color;
}

} // namespace

Q_DECLARE_METATYPE(CustomRainbowEntry)

void CustomRainbowEffectTest::hasItsDefaults()
{
    CustomRainbowEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Custom Rainbow"));
    QCOMPARE(effect.typeId(), 3);
    QCOMPARE(effect.cycleTime(), 0U);
    QCOMPARE(effect.groupOffset(), 1.0);
    QVERIFY(effect.entryList().isEmpty());
    const Entry made;
    QCOMPARE(made.color, VelaColor(Qt::red));
    QCOMPARE(made.duration, 1.0);
    QCOMPARE(made.fade, 0.5);
    QCOMPARE(made.trans, 0.0);
    QCOMPARE(made.white, 0U);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    QCOMPARE(told.count(), 1);
    effect.setActive(true);
    effect.tick(0, 0);
}

void CustomRainbowEffectTest::paintsItsGroup_data()
{
    addGroupRows();
}

void CustomRainbowEffectTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), gid, nullptr);
    set(effect, threeColors(), 0.0);
    stage.run(effect, 1600);
    for (quint64 uid = 1; uid <= 8; ++uid) {
        const QColor color = painted.contains(uid) ? QColor(Qt::green) : QColor(Qt::black);
        QCOMPARE(stage.sim(uid), color);
        QCOMPARE(stage.mix(uid).toQColor(true), color);
    }
    effect.setGid(0x999);
    effect.compile();
    stage.run(effect, 1600);
    QCOMPARE(differences(stage, 0x999, {}), QString()); // its group is gone
}

void CustomRainbowEffectTest::holdsAndFades_data()
{
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QColor>("shown");
    QTest::newRow("first") << qint64(0) << QColor(255, 0, 0);
    QTest::newRow("first to its end") << qint64(999) << QColor(255, 0, 0);
    QTest::newRow("its fade begins with it") << qint64(1000) << QColor(255, 0, 0);
    QTest::newRow("a fifth of its fade") << qint64(1100) << QColor(204, 51, 0);
    QTest::newRow("half of its fade") << qint64(1250) << QColor(128, 128, 0);
    QTest::newRow("end of its fade") << qint64(1499) << QColor(0, 255, 0);
    QTest::newRow("second") << qint64(1500) << QColor(0, 255, 0);
    QTest::newRow("a quarter to the third") << qint64(2250) << QColor(0, 191, 64);
    QTest::newRow("third") << qint64(3000) << QColor(0, 0, 255);
    QTest::newRow("half back to the first") << qint64(3375) << QColor(128, 0, 128);
    QTest::newRow("again") << qint64(3500) << QColor(255, 0, 0);
    QTest::newRow("elapsed has 32 bits") << (qint64(1) << 32) + 1250 << QColor(128, 128, 0);
}

void CustomRainbowEffectTest::holdsAndFades()
{
    QFETCH(const qint64, ms);
    QFETCH(const QColor, shown);
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 8, nullptr);
    set(effect, threeColors(), 0.0);
    stage.run(effect, ms);
    QCOMPARE(stage.sim(8), shown);
}

void CustomRainbowEffectTest::followsTheSteps_data()
{
    QTest::addColumn<Entries>("entries");
    QTest::addColumn<double>("offset");
    QTest::addColumn<double>("transparency");
    QTest::addColumn<quint64>("gid");
    struct Case
    {
        const char* name;
        Entries entries;
        double offset;
        double transparency;
    };
    const QVector<Case> cases = {
        {"three", threeColors(), 1.0, 0.0},
        {"no offset", threeColors(), 0.0, 0.0},
        {"offset beyond the cycle", threeColors(), 12.345, 0.0},
        {"negative offset", threeColors(), -0.4, 0.0},
        {"offset of half a millisecond", threeColors(), 0.0005, 0.0},
        {"faded", threeColors(), 0.3, 0.25},
        {"invisible", threeColors(), 0.3, 1.0},
        {"half clear",
         {entry(faded(Qt::red, 0.3), 1.0, 2.0), entry(faded(Qt::blue, 0.8), 1.0, 2.0)},
         0.9,
         0.0},
        {"half clear and faded",
         {entry(faded(Qt::red, 0.3), 1.0, 2.0), entry(faded(Qt::blue, 0.8), 1.0, 2.0)},
         0.9,
         0.4},
        {"no fades", {entry(Qt::red, 0.3, 0.0), entry(Qt::cyan, 0.2, 0.0)}, 0.11, 0.0},
        {"fades only", {entry(Qt::red, 0.0, 0.3), entry(Qt::cyan, 0.0, 0.2)}, 0.11, 0.0},
        {"one entry", {entry(VelaColor(QColor(200, 100, 50)), 0.5, 0.5)}, 0.3, 0.0},
        {"rounded up",
         {entry(Qt::red, 0.0106, 0.0107), entry(Qt::cyan, 0.0026, 0.0017)},
         0.003,
         0.0},
        {"negative fade", {entry(Qt::red, 1.0, -0.5), entry(Qt::cyan, 0.2, 0.3)}, 0.07, 0.0},
        {"negative duration", {entry(Qt::red, -1.0, 1.5), entry(Qt::cyan, 0.2, 0.3)}, 0.07, 0.0},
        {"an invalid colour", {entry(VelaColor(), 0.5, 0.5), entry(Qt::cyan, 0.2, 0.3)}, 0.3, 0.0},
    };
    for (const Case& one : cases) {
        for (const quint64 gid : {0x100, 0x101, 0x102, 8}) {
            QTest::addRow("%s, group %llx", one.name, gid)
                << one.entries << one.offset << one.transparency << gid;
        }
    }
}

void CustomRainbowEffectTest::followsTheSteps()
{
    QFETCH(const Entries, entries);
    QFETCH(const double, offset);
    QFETCH(const double, transparency);
    QFETCH(const quint64, gid);
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), gid, nullptr);
    set(effect, entries, offset);
    effect.setTransparency(transparency);
    for (int i = 0; i < 200; ++i) {
        const qint64 ms = i < 100 ? i : i * 7919;
        stage.run(effect, ms);
        const QString found =
            differences(stage, gid, stepsOf(entries, offset, transparency, ms, rowsOf(gid).size()));
        QVERIFY2(found.isEmpty(), qPrintable(QStringLiteral("%1 ms: ").arg(ms) + found));
    }
}

void CustomRainbowEffectTest::anEmptyListPaintsNothing()
{
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 0x101, nullptr);
    effect.compile();
    stage.run(effect, 100);
    QCOMPARE(differences(stage, 0x101, {}), QString());
    effect.addEntry(Entry());
    stage.run(effect, 100);
    QCOMPARE(stage.sim(1), QColor(Qt::red));
    effect.removeEntry(0);
    stage.run(effect, 100);
    QCOMPARE(differences(stage, 0x101, {}), QString());
    effect.addEntry(entry(Qt::red, 0.0004, 0.0004)); // a cycle of no length
    stage.run(effect, 100);
    QCOMPARE(differences(stage, 0x101, {}), QString());
}

void CustomRainbowEffectTest::oneEntryFadesToItself()
{
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 8, nullptr);
    set(effect, {entry(Qt::magenta, 0.1, 0.4)}, 0.0);
    for (int ms = 0; ms < 500; ms += 10) {
        stage.run(effect, ms);
        QCOMPARE(stage.sim(8), QColor(Qt::magenta));
    }
}

void CustomRainbowEffectTest::theShiftCarriesFromRowToRow()
{
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 0x101, nullptr);
    set(effect,
        {entry(Qt::red, 1.0, 0.0), entry(Qt::green, 1.0, 0.0), entry(Qt::blue, 1.0, 0.0),
         entry(Qt::white, 1.0, 0.0)},
        1.0);
    stage.run(effect, 0); // the first row is one ahead
    QCOMPARE(stage.sim(1), QColor(Qt::green));
    QCOMPARE(stage.sim(3), QColor(Qt::blue));
    QCOMPARE(stage.sim(4), QColor(Qt::white));
    QCOMPARE(stage.sim(7), QColor(Qt::red));
    effect.setGroupOffset(-1.0);
    stage.run(effect, 3500);
    QCOMPARE(stage.sim(1), QColor(Qt::blue));
    QCOMPARE(stage.sim(3), QColor(Qt::green));
    QCOMPARE(stage.sim(4), QColor(Qt::red));
    // -500 is 4294966796, and that 2796 in a cycle of 4000.
    QCOMPARE(stage.sim(7), QColor(Qt::blue));
}

void CustomRainbowEffectTest::aPassedCycleRestartsFromTheLastFrame()
{
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 8, nullptr);
    set(effect, threeColors(), 0.0);
    effect.setActive(true);
    effect.setStartMs(TestShow::kStartMs);
    effect.tick(TestShow::kStartMs + 3490, 0);
    QCOMPARE(effect.startMs(), TestShow::kStartMs);
    effect.tick(TestShow::kStartMs + 3500, 1); // the cycle is over: time zero is the frame before
    QCOMPARE(effect.startMs(), TestShow::kStartMs + 3490);
    stage.endFrame();
    effect.tick(TestShow::kStartMs + 4740, 2); // 1250 after that
    QCOMPARE(stage.sim(8), QColor(128, 128, 0));
}

void CustomRainbowEffectTest::fractionsOfAMillisecondStayValid()
{
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 8, nullptr);
    // The fade of 0.6 ms is rounded to 1, of which 1 / 0.6 is left at its only moment.
    set(effect, {entry(Qt::red, 0.001, 0.0006), entry(Qt::green, 0.0014, 0.0)}, 0.0);
    QCOMPARE(effect.cycleTime(), 2U);
    stage.run(effect, 1);
    QVERIFY(stage.mix(8).isValid());
    QCOMPARE(stage.sim(8), QColor(Qt::red));
}

void CustomRainbowEffectTest::withoutAnEntryTheRowBeforeStands()
{
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 0x101, nullptr);
    // The hold is out of any range and counts 0, the fade wraps to 1650982912; the sum of the two
    // is in range and wraps to 3138650112.
    const Entries entries = {entry(Qt::red, 9.4e15, -9.2e15), entry(Qt::green, 0.0, 0.0)};
    set(effect, entries, 1000000.0); // rows are 1000000000 apart
    QCOMPARE(effect.cycleTime(), 3138650112U);
    stage.run(effect, 0);
    QCOMPARE(stage.sim(1), QColor(Qt::green)); // 1000000000: the negative fade is at its end
    QCOMPARE(stage.sim(3), QColor(Qt::green)); // 2000000000: no entry
    QCOMPARE(stage.sim(4), QColor(Qt::green)); // 3000000000: no entry
    QCOMPARE(stage.sim(7), QColor(Qt::green)); // 861349888
    stage.run(effect, 1000000000);
    QCOMPARE(stage.sim(1), QColor(Qt::black)); // nothing before: an invalid colour's mix
    QCOMPARE(stage.mix(1).alpha32(), 0xFFFFFFFFU);
    QVERIFY(stage.mix(1).isValid());
    QCOMPARE(stage.sim(4), QColor(Qt::green)); // 861349888
    QCOMPARE(differences(stage, 0x101, stepsOf(entries, 1000000.0, 0.0, 1000000000, 4)), QString());
}

void CustomRainbowEffectTest::whitesAreMixedAsTheyAre()
{
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 0x101, nullptr);
    const VelaColor white(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768"));
    const VelaColor rgbw(QStringLiteral("aNchannel;3;6;65535;9000;8000;7000;60000;0;1"));
    QCOMPARE(white.spec(), VelaColor::Yxy);
    QCOMPARE(rgbw.spec(), VelaColor::Nchannel);
    const Entries entries = {entry(white, 0.5, 0.5), entry(rgbw, 0.5, 0.5),
                             entry(Qt::red, 0.5, 0.5)};
    set(effect, entries, 0.4);
    for (qint64 ms = 0; ms < 3000; ms += 77) {
        stage.run(effect, ms);
        QCOMPARE(differences(stage, 0x101, stepsOf(entries, 0.4, 0.0, ms, 4)), QString());
    }
}

void CustomRainbowEffectTest::changesShowAtOnce()
{
    TestStage stage;
    CustomRainbowEffect effect(stage.model(), 8, nullptr);
    set(effect, threeColors(), 0.0);
    Entries entries = threeColors();
    const auto check = [&](qint64 ms) {
        stage.run(effect, ms);
        return differences(stage, 8, stepsOf(entries, 0.0, 0.0, ms, 1));
    };
    QCOMPARE(check(1250), QString());
    entries[1].color = Qt::yellow;
    effect.setColor(1, Qt::yellow);
    QCOMPARE(check(1250), QString());
    entries[0].duration = 0.1;
    effect.setDuration(0, 0.1);
    QCOMPARE(check(250), QString());
    entries[0].fade = 2.0;
    effect.setFade(0, 2.0);
    QCOMPARE(check(1250), QString());
    entries.removeAt(1);
    effect.removeEntry(1);
    QCOMPARE(check(1250), QString());
    entries.append(Entry());
    effect.addEntry(Entry());
    QCOMPARE(check(3000), QString());
}

void CustomRainbowEffectTest::theCycleIsTheTruncatedSum_data()
{
    QTest::addColumn<Entries>("entries");
    QTest::addColumn<uint>("cycle");
    QTest::newRow("none") << Entries() << 0U;
    QTest::newRow("defaults") << Entries{Entry(), Entry()} << 3000U;
    QTest::newRow("each cut") << Entries{entry(Qt::red, 0.0006, 0.0003),
                                         entry(Qt::red, 0.0009, 0.0005)}
                              << 1U;
    QTest::newRow("negative") << Entries{entry(Qt::red, 5.0, 0.0), entry(Qt::red, 1.0, -3.0)}
                              << 3000U;
    QTest::newRow("wraps at 32 bits")
        << Entries{entry(Qt::red, 4000000.0, 0.0), entry(Qt::red, 4000000.0, 0.0)} << 3705032704U;
    QTest::newRow("no number") << Entries{entry(Qt::red, std::nan(""), 1.0), Entry()} << 1500U;
    QTest::newRow("out of range") << Entries{entry(Qt::red, 1e300, 1.0), Entry()} << 1500U;
}

void CustomRainbowEffectTest::theCycleIsTheTruncatedSum()
{
    QFETCH(const Entries, entries);
    CustomRainbowEffect effect(nullptr, 5, nullptr);
    set(effect, entries, 1.0);
    QTEST(effect.cycleTime(), "cycle");
    // The same however it came about.
    for (int i = 0; i < entries.size(); ++i) {
        effect.setDuration(i, 77.0);
        effect.setFade(i, -1e300);
        effect.setFade(i, entries[i].fade);
        effect.setDuration(i, entries[i].duration);
    }
    effect.addEntry(entry(Qt::blue, 1e9, 17.0));
    effect.removeEntry(entries.size());
    QTEST(effect.cycleTime(), "cycle");
}

void CustomRainbowEffectTest::hostileNumbersEnd()
{
    TestStage stage;
    for (const double duration : hostileNumbers()) {
        for (const double fade : hostileNumbers()) {
            CustomRainbowEffect effect(stage.model(), 0x101, nullptr);
            effect.addEntry(entry(Qt::red, duration, fade));
            effect.addEntry(entry(Qt::green, fade, duration));
            effect.addEntry(Entry());
            for (const double offset : hostileNumbers()) {
                effect.setGroupOffset(offset);
                for (const qint64 ms : {qint64(0), qint64(1), qint64(2345), qint64(4294967295)}) {
                    stage.run(effect, ms);
                    for (const quint64 uid : {1, 3, 4, 7}) {
                        QVERIFY(stage.mix(uid).isValid());
                    }
                }
            }
        }
    }
    CustomRainbowEffect effect(stage.model(), 0x101, nullptr);
    set(effect, threeColors(), 0.0);
    for (const double transparency : {1.0, 1.5, 1e300}) {
        effect.setTransparency(transparency);
        stage.run(effect, 0);
        QCOMPARE(differences(stage, 0x101, {}), QString());
    }
}

void CustomRainbowEffectTest::entriesAreAddedAndRemoved()
{
    CustomRainbowEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.addEntry(entry(Qt::red, 1.0, 0.0));
    QVERIFY(effect.compiled());
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 1000U);
    effect.addEntry(entry(Qt::green, 2.0, 0.0));
    effect.addEntry(entry(Qt::blue, 4.0, 0.0));
    QCOMPARE(told.count(), 3);
    QCOMPARE(told.last().first().toUInt(), 7000U);
    const QList<const CustomRainbowEntry*> list = effect.entryList();
    QCOMPARE(list.size(), 3);
    QCOMPARE(list[1]->color, VelaColor(Qt::green));
    effect.removeEntry(1);
    QCOMPARE(told.count(), 4);
    QCOMPARE(told.last().first().toUInt(), 5000U);
    QCOMPARE(effect.entryList(), (QList<const CustomRainbowEntry*>{list[0], list[2]}));
    for (const int index : {-1, 2, 1000}) {
        effect.removeEntry(index); // compiles all the same
    }
    QCOMPARE(told.count(), 7);
    QCOMPARE(effect.entryList().size(), 2);
    QCOMPARE(effect.color(0), VelaColor(Qt::red));
    QCOMPARE(effect.color(1), VelaColor(Qt::blue));
    QCOMPARE(effect.color(2), VelaColor(Qt::black));
    QCOMPARE(effect.color(-1), VelaColor(Qt::black));
}

void CustomRainbowEffectTest::settersTell()
{
    CustomRainbowEffect effect(nullptr, 5, nullptr);
    effect.addEntry(Entry());
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setColor(0, Qt::blue);
    QCOMPARE(told.count(), 1);
    effect.setDuration(0, 2.0); // by the time rule, and again
    QCOMPARE(told.count(), 3);
    QCOMPARE(told[1].first().toUInt(), 2500U);
    QCOMPARE(told[2].first().toUInt(), 2500U);
    effect.setFade(0, 1.0);
    QCOMPARE(told.count(), 5);
    QCOMPARE(told.last().first().toUInt(), 3000U);
    effect.setTrans(0, 0.5);
    effect.setWhite(0, 255);
    effect.setGroupOffset(2.0);
    QCOMPARE(told.count(), 5);
    QCOMPARE(effect.groupOffset(), 2.0);
    const CustomRainbowEntry& changed = *effect.entryList().first();
    QCOMPARE(changed.color, VelaColor(Qt::blue));
    QCOMPARE(changed.duration, 2.0);
    QCOMPARE(changed.fade, 1.0);
    QCOMPARE(changed.trans, 0.5);
    QCOMPARE(changed.white, 255U);
    effect.setWhite(0, 256);
    QCOMPARE(changed.white, 255U);
    effect.setWhite(0, 7);
    QCOMPARE(changed.white, 7U);
}

void CustomRainbowEffectTest::settersIgnoreWhatIsOutOfRange()
{
    CustomRainbowEffect effect(nullptr, 5, nullptr);
    effect.addEntry(Entry());
    const QString before = ownKeys(effect);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    for (const int index : {-1, 1, 2147483647}) {
        effect.setColor(index, Qt::blue);
        effect.setTrans(index, 0.5);
        effect.setWhite(index, 5);
    }
    QCOMPARE(told.count(), 0);
    effect.setDuration(1, 9.0); // tells, in any case
    effect.setFade(-1, 9.0);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.last().first().toUInt(), 1500U);
    QCOMPARE(ownKeys(effect), before);
}

void CustomRainbowEffectTest::aTimelineFollowsTheEntries()
{
    MetaEffect root(nullptr, 0, nullptr);
    CustomRainbowEffect effect(nullptr, 5, nullptr);
    effect.setEndType(Effect::EndCycles);
    effect.setEndCycleCount(2);
    root.addEffect(&effect);
    effect.addEntry(Entry());
    QCOMPARE(effect.end(), 3000U);
    effect.setFade(0, 2.0);
    QCOMPARE(effect.end(), 6000U);
    effect.removeEntry(0);
    QCOMPARE(effect.end(), 0U);
}

void CustomRainbowEffectTest::isWrittenByteForByte()
{
    CustomRainbowEffect effect(nullptr, 7, nullptr);
    effect.addEntry(entry(Qt::green, 1.23456789, 0.0));
    effect.addEntry(Entry());
    effect.setWhite(1, 200);
    effect.setTrans(1, -0.25);
    QCOMPARE(TestShow::textOf(effect),
             QStringLiteral("<effect>\n") +
                 TestShow::baseText(QStringLiteral("Custom Rainbow"),
                                    QStringLiteral("Unnamed Effect"), 7) +
                 QStringLiteral("<groupoffset>1</groupoffset>\n"
                                "<color_0>aRgb;1;0;#ffff0000ffff0000</color_0>\n"
                                "<duration_0>1.23457</duration_0>\n"
                                "<fade_0>0</fade_0>\n"
                                "<white_0>0</white_0>\n"
                                "<trans_0>0</trans_0>\n"
                                "<color_1>aRgb;1;0;#ffffffff00000000</color_1>\n"
                                "<duration_1>1</duration_1>\n"
                                "<fade_1>0.5</fade_1>\n"
                                "<white_1>200</white_1>\n"
                                "<trans_1>-0.25</trans_1>\n"
                                "</effect>\n"));
}

void CustomRainbowEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<double>("offset");
    QTest::addColumn<QStringList>("entries"); // colour, duration, fade, white, trans
    const auto row = [](const char* name, const char* keys, double offset,
                        const QStringList& entries) {
        QTest::newRow(name) << QString::fromLatin1(keys) << offset << entries;
    };
    const QString plain = QStringLiteral("#ff0000 1 0.5 0 0");
    row("missing", "", 1.0, {});
    row("offset alone", "<groupoffset>-2.5</groupoffset>", -2.5, {});
    row("unreadable offset", "<groupoffset>2</groupoffset><groupoffset>x</groupoffset>", 1.0, {});
    row("empty offset", "<groupoffset/>", 1.0, {});
    row("all",
        "<groupoffset>3</groupoffset><color_0>blue</color_0><duration_0>2</duration_0>"
        "<fade_0>3</fade_0><white_0>4</white_0><trans_0>0.5</trans_0><color_1>lime</color_1>",
        3.0, {QStringLiteral("#0000ff 2 3 4 0.5"), QStringLiteral("#00ff00 1 0.5 0 0")});
    row("any key begins an entry", "<trans_0>0.5</trans_0><fade_1>2</fade_1><fade_0>3</fade_0>",
        1.0, {QStringLiteral("#ff0000 1 3 0 0.5"), QStringLiteral("#ff0000 1 2 0 0")});
    row("unreadable",
        "<color_0>aRgb;</color_0><duration_0>x</duration_0><fade_0/><white_0>-1"
        "</white_0><trans_0>x</trans_0>",
        1.0, {QStringLiteral("#ff0000 0 0 0 0")});
    row("unreadable colour is red", "<color_0>blue</color_0><color_0>aRgb;</color_0>", 1.0,
        {plain});
    row("white has 8 bits", "<white_0>255</white_0><white_0>256</white_0>", 1.0,
        {QStringLiteral("#ff0000 1 0.5 255 0")});
    row("a skipped index loses the rest",
        "<color_0>blue</color_0><color_2>lime</color_2><fade_2>9</fade_2><color_3>lime</color_3>",
        1.0, {QStringLiteral("#0000ff 1 0.5 0 0")});
    row("until it comes", "<color_1>lime</color_1><color_0>blue</color_0><color_1>lime</color_1>",
        1.0, {QStringLiteral("#0000ff 1 0.5 0 0"), QStringLiteral("#00ff00 1 0.5 0 0")});
    row("no number is index 0", "<color_>blue</color_><fade_x>2</fade_x>", 1.0,
        {QStringLiteral("#0000ff 1 2 0 0")});
    row("a negative index is none", "<color_-1>blue</color_-1>", 1.0, {});
    row("the first and the last underscore count",
        "<color_fade_7_0>blue</color_fade_7_0><fade_1_color_0>2</fade_1_color_0>", 1.0,
        {QStringLiteral("#0000ff 1 2 0 0")});
    row("a contained name, in the order of the keys",
        "<xcolorfade_0>blue</xcolorfade_0><whitefade_0>2</whitefade_0>"
        "<transwhite_0>3</transwhite_0><durations_0>4</durations_0>",
        1.0, {QStringLiteral("#0000ff 4 2 3 0")});
    row("names have case", "<Color_0>blue</Color_0>", 1.0, {plain});
    row("an unknown name begins an entry", "<nothing_0>blue</nothing_0><_1/>", 1.0, {plain, plain});
    row("keys of others", "<color>blue</color><duration>2</duration><fadetime>3</fadetime>", 1.0,
        {});
}

void CustomRainbowEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    QVERIFY(!element.isNull());
    const CustomRainbowEffect effect(nullptr, 5, &element);
    QTEST(effect.groupOffset(), "offset");
    QStringList entries;
    for (const CustomRainbowEntry* const e : effect.entryList()) {
        entries << QStringLiteral("%1 %2 %3 %4 %5")
                       .arg(e->color.name())
                       .arg(e->duration)
                       .arg(e->fade)
                       .arg(e->white)
                       .arg(e->trans);
    }
    QTEST(entries, "entries");
    QCOMPARE(effect.compiled(), !keys.isEmpty() &&
                                    keys != QStringLiteral("<color_-1>blue</color_-1>") &&
                                    !keys.startsWith(QStringLiteral("<color>")));
}

void CustomRainbowEffectTest::hostileFilesRead()
{
    TestStage stage;
    for (const QString& number : hostileTexts()) {
        for (const char* const key : {"duration", "fade", "white", "trans"}) {
            QDomElement element =
                elementOf(QStringLiteral("<gid>257</gid><groupoffset>%2</groupoffset>"
                                         "<%1_0>%2</%1_0><%1_1>%2</%1_1><color_2>%2</color_2>")
                              .arg(QLatin1String(key), number));
            if (!number.isEmpty()) {
                const QString warning =
                    QStringLiteral("VelaColor::setNamedColor: Unknown color name '%1'").arg(number);
                QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
            }
            CustomRainbowEffect effect(stage.model(), 0, &element);
            QCOMPARE(effect.entryList().size(), 3);
            for (const qint64 ms : {0, 1234, 99999}) {
                stage.run(effect, ms);
                QVERIFY(stage.mix(1).isValid());
            }
        }
    }
}

void CustomRainbowEffectTest::readingManyEntriesIsQuick()
{
    QString keys;
    for (int i = 0; i < 20000; ++i) {
        keys += QStringLiteral("<duration_%1>0.5</duration_%1><fade_%1>0.25</fade_%1>").arg(i);
    }
    QDomElement element = elementOf(keys);
    QElapsedTimer clock;
    clock.start();
    const CustomRainbowEffect effect(nullptr, 5, &element);
    QVERIFY(clock.elapsed() < 2000);
    QCOMPARE(effect.entryList().size(), 20000);
    QCOMPARE(effect.cycleTime(), 15000000U);
}

QTEST_GUILESS_MAIN(CustomRainbowEffectTest)
#include "CustomRainbowEffectTest.moc"
