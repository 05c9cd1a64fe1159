#include "effects/RandomColorEffect.h"

#include "engine/MetaEffect.h"
#include "resources/Resources.h"
#include "tests/effects/RowStage.h"
#include "tests/effects/SeededRand.h"

#include <QSignalSpy>

#include <cmath>

using TestShow::elementOf;

class RandomColorEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void init();
    void hasItsDefaults();
    void paintsItsGroup_data();
    void paintsItsGroup();
    void drawsStepsOf60To299();
    void seedsAtEachCompile();
    void followsTheSteps_data();
    void followsTheSteps();
    void holdsAndFades();
    void theLastFadesToTheFirst();
    void fadesAllTheTime();
    void aFadeLongerThanTheTimeNeverFades();
    void oneColourIsSteady();
    void noCountOrNoTimePaintsNothing();
    void theOffsetCarriesFromRowToRow();
    void transparencyReplacesTheAlpha();
    void longListsPassTheGreatestHue();
    void theListIsCapped_data();
    void theListIsCapped();
    void fadesNeverLeaveTheColours();
    void timesBelowAMillisecondStandStill();
    void hostileNumbersEnd();
    void theTimeRuleTells();
    void settersStore();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void readingCompilesAndTells();
};

namespace {

struct Setting
{
    double time = 5.0;
    double fade = 0.5;
    double offset = 0.0;
    VelaColor start = Qt::green;
    quint32 count = 10;
    double transparency = 0.0;
};

/// The list that the seed of the tests gives.
QVector<int> huesOf(const Setting& setting)
{
    int hue = 0;
    int ignored = 0;
    setting.start.getHsv16(&hue, &ignored, &ignored);
    reseed();
    QVector<int> hues = {hue};
    for (quint32 i = 1; i < setting.count; ++i) {
        hues.append(hues.last() + (rand() % 240) + 60);
    }
    return hues;
}

quint32 narrowed(double v)
{
    return static_cast<quint32>(static_cast<qint64>(v));
}

/// The steps for settings that leave moduli above 0, one by one.
QVector<Paint> stepsOf(const Setting& setting, qint64 ms, int rows)
{
    const QVector<int> hues = huesOf(setting);
    int ignored = 0;
    int saturation = 0;
    int value = 0;
    int startAlpha = 0;
    setting.start.getHsv16(&ignored, &saturation, &value, &startAlpha);
    const auto colorAt = [&](quint32 index) {
        VelaColor c;
        const int hue = hues[int(index)];
        c.setHsv16(hue == -1 ? -1 : hue % 360, saturation, value, startAlpha,
                   int(setting.start.profileId()));
        return c;
    };
    QVector<Paint> paints;
    quint32 t = static_cast<quint32>(ms);
    const quint32 step = narrowed(setting.offset * 1000.0);
    const double a = (setting.start.alpha32() / 4294967295.0) * (1.0 - setting.transparency);
    for (int row = 0; row < rows; ++row) {
        t = t + step;
        const double whole = setting.time * 1000.0;
        const quint32 p = t % narrowed(whole);
        const quint32 idx =
            static_cast<quint32>((t % narrowed(setting.count * setting.time * 1000.0)) / whole);
        double k = 1.0;
        if (p > narrowed((setting.time - setting.fade) * 1000.0)) {
            k = (whole - p) / (setting.fade * 1000.0);
        }
        const VelaColor c0 = colorAt(idx);
        const VelaColor c1 = idx == setting.count - 1 ? colorAt(0) : colorAt(idx + 1);
        Paint paint = {interpolate(c0, c1, 1.0 - k), QColor()};
        paint.q = toDisplayQColor(
            interpolate(VelaColor(toDisplayQColor(c0)), VelaColor(toDisplayQColor(c1)), 1.0 - k));
        if (setting.transparency > 0.0) {
            paint.c.setAlphaF(a);
            paint.q.setAlphaF(a);
        }
        paints.append(paint);
    }
    return paints;
}

void set(RandomColorEffect& effect, const Setting& setting)
{
    effect.setTime(setting.time);
    effect.setFadeTime(setting.fade);
    effect.setOffset(setting.offset);
    effect.setStartColor(setting.start);
    effect.setCycleCount(setting.count);
    effect.setTransparency(setting.transparency);
}

QColor pure(int hue)
{
    return VelaColor::fromHsv(hue % 360, 255, 255).toQColor(true);
}

VelaColor faded(VelaColor color, double alpha)
{
    color.setAlphaF(alpha);
    return color;
}

} // namespace

Q_DECLARE_METATYPE(Setting)

void RandomColorEffectTest::init()
{
    seedings = 0;
}

void RandomColorEffectTest::hasItsDefaults()
{
    RandomColorEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Random Color"));
    QCOMPARE(effect.typeId(), 8);
    QCOMPARE(effect.cycleTime(), 50000U);
    QCOMPARE(effect.time(), 5.0);
    QCOMPARE(effect.fadeTime(), 0.5);
    QCOMPARE(effect.offset(), 0.0);
    QCOMPARE(effect.cycleCount(), 10U);
    QCOMPARE(effect.startColor(), VelaColor(Qt::green));
    QVERIFY(!effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    effect.tick(0, 0);
}

void RandomColorEffectTest::paintsItsGroup_data()
{
    addGroupRows();
}

void RandomColorEffectTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    RandomColorEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    stage.run(effect, 100);
    for (quint64 uid = 1; uid <= 8; ++uid) {
        const QColor color = painted.contains(uid) ? QColor(Qt::green) : QColor(Qt::black);
        QCOMPARE(stage.sim(uid), color);
        QCOMPARE(stage.mix(uid).toQColor(true), color);
    }
    effect.setGid(0x999);
    effect.compile();
    stage.run(effect, 100);
    QCOMPARE(differences(stage, 0x999, {}), QString()); // its group is gone
}

void RandomColorEffectTest::drawsStepsOf60To299()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    Setting setting;
    setting.count = 200;
    set(effect, setting);
    const QVector<int> hues = huesOf(setting);
    for (int i = 0; i < 200; ++i) {
        stage.run(effect, qint64(5000) * i);
        QCOMPARE(stage.sim(8), pure(hues[i]));
        if (i > 0) {
            QVERIFY(hues[i] - hues[i - 1] >= 60 && hues[i] - hues[i - 1] <= 299);
        }
    }
    stage.run(effect, 1000000);
    QCOMPARE(stage.sim(8), QColor(Qt::green));
}

void RandomColorEffectTest::seedsAtEachCompile()
{
    RandomColorEffect effect(nullptr, 5, nullptr);
    QCOMPARE(seedings, 0);
    for (int i = 1; i <= 3; ++i) {
        lastSeed = 5000;
        effect.compile();
        QCOMPARE(seedings, i);
        QVERIFY(lastSeed < 1000); // the wall clock's milliseconds
    }
    // The ten hues took nine numbers; whoever draws next goes on from there.
    const int next = rand();
    reseed();
    for (int i = 0; i < 9; ++i) {
        rand();
    }
    QCOMPARE(next, rand());
}

void RandomColorEffectTest::followsTheSteps_data()
{
    QTest::addColumn<Setting>("setting");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<quint64>("gid");
    const QVector<QPair<const char*, Setting>> settings = {
        {"defaults", {}},
        {"offset", {5.0, 0.5, 0.3}},
        {"wide offset", {5.0, 0.5, 17.7}},
        {"negative offset", {5.0, 0.5, -1.25}},
        {"long fade", {2.0, 1.5, 0.5, Qt::blue, 5}},
        {"always fading", {2.0, 2.0, 0.5, Qt::blue, 5}},
        {"never fading", {2.0, 2.5, 0.5, Qt::blue, 5}},
        {"no fade", {2.0, 0.0, 0.5, Qt::blue, 5}},
        {"negative fade", {2.0, -1.0, 0.5, Qt::blue, 5}},
        {"one colour", {0.1, 0.05, 0.01, Qt::red, 1}},
        {"two colours", {0.1, 0.05, 0.07, Qt::red, 2}},
        {"seventeen colours", {0.1, 0.05, 0.07, Qt::red, 17}},
        {"fractions of a millisecond", {0.0157, 0.0043, 0.0311, Qt::red, 7}},
        {"pale and dark", {5.0, 4.0, 1.0, VelaColor(QColor(90, 60, 70))}},
        {"half clear", {5.0, 4.0, 1.0, faded(Qt::green, 0.3)}},
        {"faded", {5.0, 4.0, 1.0, Qt::green, 10, 0.25}},
        {"faded half clear", {5.0, 4.0, 1.0, faded(Qt::green, 0.7), 10, 1.0 / 3.0}},
        {"invisible", {5.0, 4.0, 1.0, Qt::green, 10, 1.0}},
        {"grey", {5.0, 4.0, 1.0, VelaColor(QColor(100, 100, 100))}},
    };
    for (const auto& setting : settings) {
        for (const qint64 ms : {qint64(0), qint64(1), qint64(499), qint64(4500), qint64(4501),
                                qint64(4999), qint64(5000), qint64(49999), qint64(50000),
                                qint64(123456789), (qint64(1) << 32) + 4750}) {
            for (const quint64 gid : {0x100, 0x101, 0x102, 8}) {
                QTest::addRow("%s, %lld ms, group %llx", setting.first, ms, gid)
                    << setting.second << ms << gid;
            }
        }
    }
}

void RandomColorEffectTest::followsTheSteps()
{
    QFETCH(const Setting, setting);
    QFETCH(const qint64, ms);
    QFETCH(const quint64, gid);
    TestStage stage;
    RandomColorEffect effect(stage.model(), gid, nullptr);
    set(effect, setting);
    stage.run(effect, ms);
    QCOMPARE(differences(stage, gid, stepsOf(setting, ms, rowsOf(gid).size())), QString());
}

void RandomColorEffectTest::holdsAndFades()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    set(effect, {});
    const QVector<int> hues = huesOf({});
    const QColor next = pure(hues[1]);
    stage.run(effect, 4500); // not above the threshold
    QCOMPARE(stage.sim(8), QColor(0, 255, 0));
    stage.run(effect, 4750); // halfway
    QCOMPARE(stage.mix(8).alpha32(), 0xFFFFFFFFU);
    QVERIFY(std::abs(stage.sim(8).red() - next.red() / 2.0) <= 1.0);
    QVERIFY(std::abs(stage.sim(8).green() - (255 + next.green()) / 2.0) <= 1.0);
    QVERIFY(std::abs(stage.sim(8).blue() - next.blue() / 2.0) <= 1.0);
    stage.run(effect, 5000);
    QCOMPARE(stage.sim(8), next);
}

void RandomColorEffectTest::theLastFadesToTheFirst()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    set(effect, {1.0, 0.5, 0.0, Qt::green, 3});
    const QColor last = pure(huesOf({1.0, 0.5, 0.0, Qt::green, 3})[2]);
    stage.run(effect, 2750);
    QVERIFY(std::abs(stage.sim(8).green() - (255 + last.green()) / 2.0) <= 1.0);
    QVERIFY(std::abs(stage.sim(8).red() - last.red() / 2.0) <= 1.0);
    stage.run(effect, 3000);
    QCOMPARE(stage.sim(8), QColor(Qt::green));
}

void RandomColorEffectTest::fadesAllTheTime()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    const Setting setting = {1.0, 1.0, 0.0, Qt::green, 4};
    set(effect, setting);
    const QColor next = pure(huesOf(setting)[1]);
    for (int ms = 0; ms < 1000; ms += 100) {
        stage.run(effect, ms);
        QVERIFY(std::abs(stage.sim(8).red() - next.red() * ms / 1000.0) <= 1.0);
        QVERIFY(std::abs(stage.sim(8).blue() - next.blue() * ms / 1000.0) <= 1.0);
    }
}

void RandomColorEffectTest::aFadeLongerThanTheTimeNeverFades()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    set(effect, {1.0, 1.5, 0.0, Qt::green, 4});
    for (int ms = 0; ms < 1000; ms += 111) { // the threshold, unsigned, is past every phase
        stage.run(effect, ms);
        QCOMPARE(stage.sim(8), QColor(Qt::green));
    }
}

void RandomColorEffectTest::oneColourIsSteady()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 0x101, nullptr);
    const VelaColor orange(QColor(255, 128, 0));
    set(effect, {1.0, 0.9, 0.3, orange, 1});
    int hue = 0;
    int saturation = 0;
    int value = 0;
    orange.getHsv16(&hue, &saturation, &value);
    VelaColor whole; // at the whole degree
    whole.setHsv16(hue, saturation, value);
    for (int ms = 0; ms < 3000; ms += 97) {
        stage.run(effect, ms);
        for (const quint64 uid : {1, 3, 4, 7}) {
            const QColor shown = stage.sim(uid);
            QCOMPARE(shown.red(), 255);
            QVERIFY(std::abs(shown.green() - whole.green8()) <= 1);
            QCOMPARE(shown.blue(), 0);
        }
    }
}

void RandomColorEffectTest::noCountOrNoTimePaintsNothing()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 0x101, nullptr);
    effect.setCycleCount(0);
    QCOMPARE(effect.cycleTime(), 0U);
    stage.run(effect, 100);
    QCOMPARE(differences(stage, 0x101, {}), QString());
    effect.setCycleCount(3);
    effect.setTime(0.0);
    stage.run(effect, 100);
    QCOMPARE(differences(stage, 0x101, {}), QString());
    effect.setTime(1.0);
    stage.run(effect, 100);
    QCOMPARE(stage.sim(1), QColor(Qt::green));
}

void RandomColorEffectTest::theOffsetCarriesFromRowToRow()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 0x101, nullptr);
    const Setting setting = {1.0, 0.1, 1.0, Qt::green, 10};
    set(effect, setting);
    const QVector<int> hues = huesOf(setting);
    stage.run(effect, 0); // a colour a row, and the first row is one ahead
    QCOMPARE(stage.sim(1), pure(hues[1]));
    QCOMPARE(stage.sim(3), pure(hues[2]));
    QCOMPARE(stage.sim(4), pure(hues[3]));
    QCOMPARE(stage.sim(7), pure(hues[4]));
    effect.setOffset(-1.0);
    stage.run(effect, 5000);
    QCOMPARE(stage.sim(1), pure(hues[4]));
    QCOMPARE(stage.sim(3), pure(hues[3]));
    QCOMPARE(stage.sim(4), pure(hues[2]));
    QCOMPARE(stage.sim(7), pure(hues[1]));
    // Below zero it wraps at 32 bits: 4294966796 % 10000 is 6796, and the row behind 5796.
    stage.run(effect, 500);
    QCOMPARE(stage.sim(1), pure(hues[6]));
    QCOMPARE(stage.sim(3), pure(hues[5]));
}

void RandomColorEffectTest::transparencyReplacesTheAlpha()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    set(effect, {5.0, 0.5, 0.0, faded(Qt::green, 0.5), 10, 0.5});
    stage.run(effect, 0);
    // The mix is darkened to 0.5 by its alpha, which then is 0.25.
    QVERIFY(std::abs(stage.mix(8).greenF() - 0.125) < 1e-4);
    effect.setTransparency(0.0);
    stage.run(effect, 0);
    QVERIFY(std::abs(stage.mix(8).greenF() - 0.25) < 1e-4);
    for (const double transparency : {1.0, 1.5, 1e300}) {
        effect.setTransparency(transparency);
        stage.run(effect, 0);
        QVERIFY(stage.mix(8).isValid());
        QVERIFY(stage.mix(8).isBlack());
        QCOMPARE(stage.sim(8), QColor(Qt::black));
    }
}

void RandomColorEffectTest::longListsPassTheGreatestHue()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    const Setting setting = {0.01, 0.0, 0.0, Qt::green, 1000};
    set(effect, setting);
    const QVector<int> hues = huesOf(setting);
    QVERIFY(hues[999] > 65535); // more than a colour takes
    for (int i = 0; i < 1000; i += 37) {
        stage.run(effect, qint64(10) * i);
        QCOMPARE(stage.sim(8), pure(hues[i]));
    }
}

void RandomColorEffectTest::theListIsCapped_data()
{
    QTest::addColumn<uint>("count");
    QTest::addColumn<qint64>("ms"); // a colour each
    QTest::addColumn<int>("index");
    QTest::newRow("last of the list") << 100001U << qint64(99999) << 99999;
    QTest::newRow("the list starts over") << 100001U << qint64(100000) << 0;
    QTest::newRow("the cycle starts over") << 100001U << qint64(100002) << 1;
    QTest::newRow("far") << 4294967295U << qint64(1234567) << 34567;
    QTest::newRow("not yet") << 100000U << qint64(99999) << 99999;
    QTest::newRow("just") << 100000U << qint64(100001) << 1;
}

void RandomColorEffectTest::theListIsCapped()
{
    QFETCH(const uint, count);
    QFETCH(const qint64, ms);
    QFETCH(const int, index);
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    set(effect, {0.001, 1.0, 0.0, Qt::green, count});
    QCOMPARE(effect.cycleCount(), count);
    QCOMPARE(effect.cycleTime(), count); // the stored value counts
    stage.run(effect, ms);
    QCOMPARE(stage.sim(8), pure(huesOf({0.001, 1.0, 0.0, Qt::green, 100000})[index]));
}

void RandomColorEffectTest::fadesNeverLeaveTheColours()
{
    // At the first moment of a fade the factor may come out above 1.0, by rounding.
    TestStage stage;
    RandomColorEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    for (int i = 1; i < 3000; ++i) {
        const double time = 0.02 + i * 0.00037;
        const double fade = 0.003 + (i % 17) * 0.00113;
        effect.setTime(time);
        effect.setFadeTime(fade);
        stage.run(effect, static_cast<qint64>((time - fade) * 1000.0) + 1);
        QVERIFY(stage.mix(8).isValid());
    }
}

void RandomColorEffectTest::timesBelowAMillisecondStandStill()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 0x101, nullptr);
    effect.setCycleCount(1);
    for (const double seconds :
         {0.0005, 1e-30, -5.0, 1e300, 5e6, std::numeric_limits<double>::infinity(),
          std::numeric_limits<double>::quiet_NaN()}) {
        effect.setTime(seconds);
        stage.run(effect, 12345);
        QCOMPARE(stage.sim(1), QColor(Qt::green));
        QCOMPARE(stage.sim(7), QColor(Qt::green));
    }
    // A phase of 0, but an index: ten colours of half a millisecond take five.
    const Setting setting = {0.0005, 0.0, 0.0, Qt::green, 10};
    set(effect, setting);
    const QVector<int> hues = huesOf(setting);
    stage.run(effect, 13);
    QCOMPARE(stage.sim(1), pure(hues[6]));
}

void RandomColorEffectTest::hostileNumbersEnd()
{
    TestStage stage;
    RandomColorEffect effect(stage.model(), 0x101, nullptr);
    for (const quint32 count : {1U, 10U, 4294967295U}) {
        effect.setCycleCount(count);
        for (const double time : hostileNumbers()) {
            effect.setTime(time);
            for (const double fade : hostileNumbers()) {
                effect.setFadeTime(fade);
                for (const double offset : {0.0, -1.0, 1e300, -9e15, std::nan("")}) {
                    effect.setOffset(offset);
                    for (const qint64 ms : {qint64(0), qint64(4321), qint64(4294967295)}) {
                        stage.run(effect, ms);
                        QVERIFY(stage.mix(1).isValid());
                        QVERIFY(stage.mix(7).isValid());
                    }
                }
            }
        }
    }
}

void RandomColorEffectTest::theTimeRuleTells()
{
    MetaEffect root(nullptr, 0, nullptr);
    RandomColorEffect effect(nullptr, 5, nullptr);
    effect.setEndType(Effect::EndCycles);
    effect.setEndCycleCount(2);
    root.addEffect(&effect);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setTime(1.2345);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 12345U);
    QCOMPARE(effect.end(), 24690U);
    effect.setCycleCount(3);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.last().first().toUInt(), 3703U);
    effect.setFadeTime(1.0);
    effect.setOffset(1.0);
    effect.setStartColor(Qt::red);
    QCOMPARE(told.count(), 2);
}

void RandomColorEffectTest::settersStore()
{
    RandomColorEffect effect(nullptr, 5, nullptr);
    effect.setTime(2.0);
    effect.setFadeTime(0.25);
    effect.setOffset(-0.75);
    QCOMPARE(seedings, 0);
    QVERIFY(!effect.compiled());
    effect.setStartColor(Qt::blue);
    QCOMPARE(seedings, 1);
    effect.setCycleCount(7);
    QCOMPARE(seedings, 2);
    QCOMPARE(effect.time(), 2.0);
    QCOMPARE(effect.fadeTime(), 0.25);
    QCOMPARE(effect.offset(), -0.75);
    QCOMPARE(effect.startColor(), VelaColor(Qt::blue));
    QCOMPARE(effect.cycleCount(), 7U);
}

void RandomColorEffectTest::isWrittenByteForByte()
{
    RandomColorEffect effect(nullptr, 7, nullptr);
    effect.setTime(1.23456789);
    effect.setOffset(-0.1);
    QCOMPARE(TestShow::textOf(effect),
             QStringLiteral("<effect>\n") +
                 TestShow::baseText(QStringLiteral("Random Color"),
                                    QStringLiteral("Unnamed Effect"), 7) +
                 QStringLiteral("<startcolor>aRgb;1;0;#ffff0000ffff0000</startcolor>\n"
                                "<time>1.23457</time>\n"
                                "<fadetime>0.5</fadetime>\n"
                                "<cyclecount>10</cyclecount>\n"
                                "<offset>-0.1</offset>\n"
                                "</effect>\n"));
}

void RandomColorEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("written");
    const auto row = [](const char* name, const char* keys, const char* color, const char* time,
                        const char* fade, const char* count, const char* offset) {
        QTest::newRow(name) << QString::fromLatin1(keys)
                            << keyLines({{"startcolor", color},
                                         {"time", time},
                                         {"fadetime", fade},
                                         {"cyclecount", count},
                                         {"offset", offset}});
    };
    const char* const green = "aRgb;1;0;#ffff0000ffff0000";
    const char* const blue = "aRgb;1;0;#ffff00000000ffff";
    row("missing", "", green, "5", "0.5", "10", "0");
    row("all",
        "<offset>-1.5</offset><cyclecount>3</cyclecount><fadetime>1</fadetime><time>2</time>"
        "<startcolor>blue</startcolor>",
        blue, "2", "1", "3", "-1.5");
    row("empty", "<offset/><cyclecount/><fadetime/><time/><startcolor/>", green, "5", "0.5", "10",
        "0");
    row("an unreadable colour is green",
        "<startcolor>blue</startcolor><startcolor>aRgb;</startcolor>", green, "5", "0.5", "10",
        "0");
    row("unreadable others fall back",
        "<time>2</time><time>x</time><fadetime>2</fadetime><fadetime>x</fadetime>"
        "<cyclecount>2</cyclecount><cyclecount>2.5</cyclecount><offset>2</offset><offset>x</"
        "offset>",
        green, "5", "0.5", "10", "0");
    row("a negative count is kept unsigned", "<cyclecount>-1</cyclecount>", green, "5", "0.5",
        "4294967295", "0");
    row("a count is read signed", "<cyclecount>4294967295</cyclecount>", green, "5", "0.5", "10",
        "0");
    row("no colours", "<cyclecount>0</cyclecount>", green, "5", "0.5", "0", "0");
}

void RandomColorEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const RandomColorEffect effect(nullptr, 5, &element);
    QTEST(ownKeys(effect), "written");
}

void RandomColorEffectTest::readingCompilesAndTells()
{
    RandomColorEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.fromXml(nullptr);
    QCOMPARE(seedings, 0);
    QDomElement element = elementOf(QStringLiteral("<time>2</time><fadetime>1</fadetime>"));
    effect.fromXml(&element);
    QCOMPARE(seedings, 0);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 20000U);
    element = elementOf(QStringLiteral("<cyclecount>4</cyclecount>"));
    effect.fromXml(&element);
    QCOMPARE(seedings, 1);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.last().first().toUInt(), 8000U);
    element = elementOf(QStringLiteral("<startcolor>aRgb;</startcolor>"));
    effect.fromXml(&element);
    QCOMPARE(seedings, 2); // unreadable or not
    QCOMPARE(told.count(), 2);
}

QTEST_GUILESS_MAIN(RandomColorEffectTest)
#include "RandomColorEffectTest.moc"
