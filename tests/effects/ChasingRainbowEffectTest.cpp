#include "effects/ChasingRainbowEffect.h"

#include "engine/MetaEffect.h"
#include "resources/Resources.h"
#include "tests/effects/RowStage.h"

#include <QElapsedTimer>
#include <QMetaProperty>
#include <QSignalSpy>

using TestShow::elementOf;

class ChasingRainbowEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void hasItsDefaults();
    void propertiesReadAndWrite();
    void paintsItsGroup_data();
    void paintsItsGroup();
    void showsWorkedColours_data();
    void showsWorkedColours();
    void followsTheSteps_data();
    void followsTheSteps();
    void huesRiseAlongTheRowsAndOverTime();
    void directionsAreSeparate_data();
    void directionsAreSeparate();
    void greyStaysGrey();
    void anyKindOfColourGivesItsHue();
    void negativeOffsetsGiveBlackRows();
    void alphaIsCutTo16Bits();
    void transparencyAboveOneIsClear();
    void noTimePaintsNothing();
    void hostileNumbersEnd();
    void theTimeRuleResolvesThenTells();
    void theEndFollowsTheCycles_data();
    void theEndFollowsTheCycles();
    void settersStore();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void onlyAReadableColourCompiles();
};

namespace {

struct Chase
{
    double cycle = 5.0;
    double offset = 0.5;
    VelaColor start = Qt::green;
    bool reverseDir = false;
    bool reverseColor = false;
    double transparency = 0.0;
};

/// The steps, one by one.
Paint stepsOf(const Chase& chase, qint64 ms, int row)
{
    int hue = 0;
    int saturation = 0;
    int value = 0;
    chase.start.getHsv16(&hue, &saturation, &value);
    const qint32 cycleHue = static_cast<qint32>((double(ms) / 1000.0) * (360.0 / chase.cycle));
    double base = 0.0;
    if (chase.reverseColor) {
        base = hue - cycleHue;
        while (base < 0.0) {
            base += 360.0;
        }
    } else {
        base = quint32(hue) + quint32(cycleHue);
        while (base > 360.0) {
            base -= 360.0;
        }
    }
    double h = 0.0;
    if (chase.reverseDir) {
        h = base - row * chase.offset;
        while (h < 0.0) {
            h += 360.0;
        }
    } else {
        h = row * chase.offset + base;
        while (h > 360.0) {
            h -= 360.0;
        }
    }
    const int alpha = static_cast<int>((chase.start.alpha32() >> 16U) * (1.0 - chase.transparency));
    VelaColor c;
    const int whole = static_cast<int>(h);
    c.setHsv16(whole >= 65536 ? whole % 360 : whole, saturation, value, alpha,
               int(chase.start.profileId()));
    return {c, toDisplayQColor(c)};
}

void set(ChasingRainbowEffect& effect, const Chase& chase)
{
    effect.setCycleTime(chase.cycle);
    effect.setGroupOffset(chase.offset);
    effect.setStartColor(chase.start);
    effect.setReverseDir(chase.reverseDir);
    effect.setReverseColor(chase.reverseColor);
    effect.setTransparency(chase.transparency);
}

VelaColor faded(VelaColor color, double alpha)
{
    color.setAlphaF(alpha);
    return color;
}

} // namespace

Q_DECLARE_METATYPE(Chase)

void ChasingRainbowEffectTest::hasItsDefaults()
{
    ChasingRainbowEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Chasing Rainbow"));
    QCOMPARE(effect.typeId(), 1);
    QCOMPARE(effect.cycleTime(), 5000U);
    QCOMPARE(effect.cycleSeconds(), 5.0);
    QCOMPARE(effect.groupOffset(), 0.5);
    QCOMPARE(effect.startColor(), VelaColor(Qt::green));
    QCOMPARE(effect.reverseDir(), false);
    QCOMPARE(effect.reverseColor(), false);
    QVERIFY(!effect.compiled());
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void ChasingRainbowEffectTest::propertiesReadAndWrite()
{
    const QMetaObject& meta = ChasingRainbowEffect::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        names << QString::fromLatin1(meta.property(i).name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("m_cycletime m_groupoffset"));
    ChasingRainbowEffect effect(nullptr, 5, nullptr);
    QVERIFY(effect.setProperty("m_cycletime", 2.5));
    QVERIFY(effect.setProperty("m_groupoffset", -7.0));
    QCOMPARE(effect.cycleSeconds(), 2.5);
    QCOMPARE(effect.groupOffset(), -7.0);
    QCOMPARE(effect.property("m_cycletime").toDouble(), 2.5);
}

void ChasingRainbowEffectTest::paintsItsGroup_data()
{
    addGroupRows();
}

void ChasingRainbowEffectTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    effect.setGroupOffset(0.0); // one hue on all rows
    stage.run(effect, 1250);
    for (quint64 uid = 1; uid <= 8; ++uid) {
        const bool isPainted = painted.contains(uid);
        // A quarter of a turn from green: 210 degrees, halfway between cyan and blue.
        QCOMPARE(stage.sim(uid), isPainted ? QColor(0, 128, 255) : QColor(Qt::black));
        QCOMPARE(stage.mix(uid).spec() == VelaColor::Hsv, isPainted);
        QCOMPARE(stage.mix(uid).hue8(), isPainted ? 210 : -1);
    }
    effect.setGid(0x999);
    effect.compile();
    stage.run(effect, 1250);
    QCOMPARE(differences(stage, 0x999, {}), QString()); // its group is gone
}

void ChasingRainbowEffectTest::showsWorkedColours_data()
{
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<bool>("reverseDir");
    QTest::addColumn<bool>("reverseColor");
    QTest::addColumn<QVector<int>>("hues"); // of the four rows, 30 degrees apart
    using Hues = QVector<int>;
    QTest::newRow("start") << qint64(0) << false << false << Hues{120, 150, 180, 210};
    QTest::newRow("before a whole degree")
        << qint64(13) << false << false << Hues{120, 150, 180, 210};
    QTest::newRow("after a whole degree")
        << qint64(14) << false << false << Hues{121, 151, 181, 211};
    QTest::newRow("over the top") << qint64(3000) << false << false << Hues{336, 6, 36, 66};
    QTest::newRow("at the top") << qint64(3334) << false << false << Hues{0, 30, 60, 90};
    QTest::newRow("after a turn") << qint64(5000) << false << false << Hues{120, 150, 180, 210};
    QTest::newRow("rows fall") << qint64(0) << true << false << Hues{120, 90, 60, 30};
    QTest::newRow("rows fall below") << qint64(3500) << true << false << Hues{12, 342, 312, 282};
    QTest::newRow("time falls") << qint64(1000) << false << true << Hues{48, 78, 108, 138};
    QTest::newRow("time falls below") << qint64(2000) << false << true << Hues{336, 6, 36, 66};
    QTest::newRow("both fall") << qint64(2000) << true << true << Hues{336, 306, 276, 246};
    QTest::newRow("both fall below") << qint64(1500) << true << true << Hues{12, 342, 312, 282};
}

void ChasingRainbowEffectTest::showsWorkedColours()
{
    QFETCH(const qint64, ms);
    QFETCH(const bool, reverseDir);
    QFETCH(const bool, reverseColor);
    QFETCH(const QVector<int>, hues);
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 0x101, nullptr);
    set(effect, {5.0, 30.0, Qt::green, reverseDir, reverseColor, 0.0});
    stage.run(effect, ms);
    QVector<Paint> paints;
    for (const int hue : hues) {
        const VelaColor c = VelaColor::fromHsv(hue, 255, 255);
        paints.append({c, c.toQColor(true)});
    }
    QCOMPARE(differences(stage, 0x101, paints), QString());
}

void ChasingRainbowEffectTest::followsTheSteps_data()
{
    QTest::addColumn<Chase>("chase");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<quint64>("gid");
    const QVector<QPair<const char*, Chase>> chases = {
        {"defaults", {}},
        {"no offset", {5.0, 0.0}},
        {"wide offset", {5.0, 250.0}},
        {"many turns from row to row", {5.0, 100000.0}},
        {"rows fall", {5.0, 0.75, Qt::red, true}},
        {"rows fall many turns", {5.0, 100000.0, Qt::red, true}},
        {"time falls", {3.0, 45.0, Qt::blue, false, true}},
        {"both fall", {3.0, 45.0, Qt::blue, true, true}},
        {"negative offset", {5.0, -50.0}},
        {"negative offset, rows fall", {5.0, -50.0, Qt::green, true}},
        {"a time below zero", {-5.0, 10.0}},
        {"a time below zero falls", {-5.0, 10.0, Qt::green, false, true}},
        {"pale and dark", {7.3, 11.1, VelaColor(QColor(90, 60, 70))}},
        {"half clear", {5.0, 0.5, faded(Qt::green, 0.3)}},
        {"faded", {5.0, 20.0, Qt::green, false, false, 0.25}},
        {"faded half clear", {5.0, 20.0, faded(Qt::magenta, 0.7), true, false, 1.0 / 3.0}},
        {"invisible", {5.0, 20.0, Qt::green, false, false, 1.0}},
        {"grey", {5.0, 20.0, VelaColor(QColor(100, 100, 100))}},
        {"grey falls", {5.0, 20.0, VelaColor(QColor(100, 100, 100)), false, true}},
        {"black", {5.0, 20.0, Qt::black, true, true}},
    };
    for (const auto& chase : chases) {
        for (const qint64 ms : {0, 1, 999, 2500, 3334, 4999, 5000, 123456789}) {
            for (const quint64 gid : {0x100, 0x101, 0x102, 8}) {
                QTest::addRow("%s, %lld ms, group %llx", chase.first, ms, gid)
                    << chase.second << ms << gid;
            }
        }
    }
    QTest::newRow("elapsed is taken whole") << Chase() << (qint64(1) << 32) + 1250 << quint64(8);
}

void ChasingRainbowEffectTest::followsTheSteps()
{
    QFETCH(const Chase, chase);
    QFETCH(const qint64, ms);
    QFETCH(const quint64, gid);
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), gid, nullptr);
    set(effect, chase);
    stage.run(effect, ms);
    QVector<Paint> paints;
    for (int row = 0; row < rowsOf(gid).size(); ++row) {
        paints.append(stepsOf(chase, ms, row));
    }
    QCOMPARE(differences(stage, gid, paints), QString());
}

void ChasingRainbowEffectTest::huesRiseAlongTheRowsAndOverTime()
{
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 0x101, nullptr);
    set(effect, {5.0, 36.0});
    stage.run(effect, 0);
    const int ahead = stage.mix(3).hue8();
    QVERIFY(stage.mix(1).hue8() < ahead);
    QVERIFY(ahead < stage.mix(7).hue8());
    stage.run(effect, 500); // a row's worth of time later, the colour has come a row nearer
    QCOMPARE(stage.mix(1).hue8(), ahead);
}

void ChasingRainbowEffectTest::directionsAreSeparate_data()
{
    QTest::addColumn<bool>("reverseDir");
    QTest::addColumn<bool>("reverseColor");
    QTest::addColumn<int>("nextRow");
    QTest::addColumn<int>("later");
    QTest::newRow("neither") << false << false << 150 << 192;
    QTest::newRow("rows") << true << false << 90 << 192;
    QTest::newRow("time") << false << true << 150 << 48;
    QTest::newRow("both") << true << true << 90 << 48;
}

void ChasingRainbowEffectTest::directionsAreSeparate()
{
    QFETCH(const bool, reverseDir);
    QFETCH(const bool, reverseColor);
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 0x100, nullptr);
    set(effect, {5.0, 30.0, Qt::green, reverseDir, reverseColor});
    stage.run(effect, 0);
    QTEST(stage.mix(3).hue8(), "nextRow");
    stage.run(effect, 1000);
    QTEST(stage.mix(1).hue8(), "later");
}

void ChasingRainbowEffectTest::greyStaysGrey()
{
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 0x101, nullptr);
    set(effect, {5.0, 30.0, VelaColor(QColor(100, 100, 100))});
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 200; ++i) { // step by step, each would take twelve million turns
        stage.run(effect, 0);
    }
    QVERIFY(clock.elapsed() < 2000);
    for (const quint64 uid : {1, 3, 4, 7}) {
        QCOMPARE(stage.sim(uid), QColor(100, 100, 100));
    }
    // Achromatic is -1, and that 4294967295, which is 255 degrees and some turns.
    QCOMPARE(stage.mix(1).hue8(), 255);
    QCOMPARE(stage.mix(3).hue8(), 285);
    effect.setReverseColor(true);
    stage.run(effect, 0);
    QCOMPARE(stage.mix(1).hue8(), 359);
}

void ChasingRainbowEffectTest::anyKindOfColourGivesItsHue()
{
    TestStage stage;
    for (const char* const text : {"aYxy;1;0;65535;0.8;0.6;0.3", "aNchannel;3;6;32768;9;8;7;6;0;1",
                                   "aRgb;1;0;#7fff2222ff00ff00"}) {
        ChasingRainbowEffect effect(stage.model(), 0x101, nullptr);
        const Chase chase = {5.0, 30.0, VelaColor(QString::fromLatin1(text))};
        QVERIFY(chase.start.isValid());
        set(effect, chase);
        stage.run(effect, 777);
        QVector<Paint> paints;
        for (int row = 0; row < 4; ++row) {
            paints.append(stepsOf(chase, 777, row));
        }
        QCOMPARE(differences(stage, 0x101, paints), QString());
        QCOMPARE(stage.mix(1).spec() == VelaColor::Hsv, chase.start.alpha32() == 0xFFFFFFFFU);
    }
}

void ChasingRainbowEffectTest::negativeOffsetsGiveBlackRows()
{
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 0x101, nullptr);
    set(effect, {5.0, -60.0});
    stage.run(effect, 0); // hues 120, 60, 0 and -60
    QCOMPARE(stage.sim(1), QColor(Qt::green));
    QCOMPARE(stage.sim(3), QColor(Qt::yellow));
    QCOMPARE(stage.sim(4), QColor(Qt::red));
    QCOMPARE(stage.sim(7), QColor(Qt::black));
    QVERIFY(stage.mix(7).isValid());
    // The other way the hues rise without an end; those past 65535 stand on the wheel, too.
    set(effect, {5.0, -36000060.0, Qt::green, true});
    stage.run(effect, 0);
    QCOMPARE(stage.sim(3), QColor(Qt::cyan));
    QCOMPARE(stage.sim(4), QColor(Qt::blue));
    QCOMPARE(stage.sim(7), QColor(Qt::magenta));
}

void ChasingRainbowEffectTest::alphaIsCutTo16Bits()
{
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 8, nullptr);
    VelaColor start(Qt::green);
    start.setAlphaF(0.75);
    set(effect, {5.0, 0.0, start, false, false, 0.5});
    stage.run(effect, 0);
    // 0.75 is 0xBFFF of 0xFFFF, of which half is 0x5FFF: 24575 / 65535.
    QVERIFY(std::abs(stage.mix(8).greenF() - 24575.0 / 65535.0) < 1e-9);
    effect.setTransparency(0.0); // cut even so
    stage.run(effect, 0);
    QVERIFY(std::abs(stage.mix(8).greenF() - 49151.0 / 65535.0) < 1e-9);
}

void ChasingRainbowEffectTest::transparencyAboveOneIsClear()
{
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    for (const double transparency : {1.0, 1.5, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        effect.setTransparency(transparency);
        stage.run(effect, 0);
        QCOMPARE(differences(stage, 0x100, {}), QString());
    }
}

void ChasingRainbowEffectTest::noTimePaintsNothing()
{
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    for (const double seconds : {0.0, -0.0}) {
        effect.setCycleTime(seconds);
        stage.run(effect, 1000);
        QCOMPARE(differences(stage, 0x100, {}), QString());
    }
}

void ChasingRainbowEffectTest::hostileNumbersEnd()
{
    TestStage stage;
    ChasingRainbowEffect effect(stage.model(), 0x101, nullptr);
    effect.compile();
    QElapsedTimer clock;
    clock.start();
    for (const double cycle : hostileNumbers()) {
        for (const double offset : hostileNumbers()) {
            for (int flags = 0; flags < 4; ++flags) {
                set(effect, {cycle, offset, Qt::green, (flags & 1) != 0, (flags & 2) != 0, 0.0});
                for (const qint64 ms : {qint64(0), qint64(25),
                                        std::numeric_limits<qint64>::max() - TestShow::kStartMs}) {
                    stage.run(effect, ms);
                    for (const quint64 uid : {1, 3, 4, 7}) {
                        QVERIFY(stage.mix(uid).isValid());
                    }
                }
            }
        }
    }
    QVERIFY(clock.elapsed() < 20000);
}

void ChasingRainbowEffectTest::theTimeRuleResolvesThenTells()
{
    ChasingRainbowEffect effect(nullptr, 5, nullptr);
    effect.setEndCycleCount(2);
    effect.setBegin(100);
    QVector<quint32> ends;
    connect(&effect, &Effect::cycleTimeChanged, this, [&] { ends << effect.end(); });
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setCycleTime(2.0019); // its end is fixed
    QCOMPARE(told.last().first().toUInt(), 2001U);
    effect.setEndType(Effect::EndCycles);
    effect.setCycleTime(2.0019); // 4003.8 + 100
    QCOMPARE(told.count(), 2);
    QCOMPARE(ends, QVector<quint32>({0, 4103}));
    effect.setStartColor(Qt::blue);
    effect.setGroupOffset(1.0);
    effect.setReverseColor(true);
    effect.setReverseDir(true);
    QCOMPARE(told.count(), 2);
}

void ChasingRainbowEffectTest::theEndFollowsTheCycles_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<uint>("cycles");
    QTest::addColumn<uint>("end");
    QTest::newRow("whole") << 2.0 << 3U << 7000U;
    QTest::newRow("cut once, at the end") << 1.0006 << 5U << 6003U;
    QTest::newRow("no cycles") << 2.0 << 0U << 1000U;
    QTest::newRow("no time") << 0.0 << 3U << 1000U;
    QTest::newRow("back before the beginning") << -0.5 << 1U << 500U;
    QTest::newRow("back before zero") << -5.0 << 1U << 0U;
    QTest::newRow("beyond 32 bits") << 1e10 << 1U << 0U;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN() << 1U << 0U;
}

void ChasingRainbowEffectTest::theEndFollowsTheCycles()
{
    QFETCH(const double, seconds);
    QFETCH(const uint, cycles);
    QFETCH(const uint, end);
    ChasingRainbowEffect effect(nullptr, 5, nullptr);
    effect.setCycleTime(seconds);
    effect.setBegin(1000);
    effect.setEnd(77);
    effect.setEndCycleCount(cycles);
    effect.setEndType(Effect::EndLinked);
    effect.updateEndTime();
    QCOMPARE(effect.end(), 77U);
    effect.setEndType(Effect::EndCycles);
    effect.updateEndTime();
    QCOMPARE(effect.end(), end);
}

void ChasingRainbowEffectTest::settersStore()
{
    ChasingRainbowEffect effect(nullptr, 5, nullptr);
    effect.setGroupOffset(12.5);
    effect.setReverseDir(true);
    effect.setReverseColor(true);
    effect.setCycleTime(3.0);
    QVERIFY(!effect.compiled());
    effect.setStartColor(Qt::blue);
    QVERIFY(effect.compiled());
    QCOMPARE(effect.groupOffset(), 12.5);
    QVERIFY(effect.reverseDir());
    QVERIFY(effect.reverseColor());
    QCOMPARE(effect.startColor(), VelaColor(Qt::blue));
}

void ChasingRainbowEffectTest::isWrittenByteForByte()
{
    ChasingRainbowEffect effect(nullptr, 7, nullptr);
    effect.setReverseDir(true);
    effect.setGroupOffset(-1234567.0);
    effect.setCycleTime(1.23456789);
    QCOMPARE(TestShow::textOf(effect),
             QStringLiteral("<effect>\n") +
                 TestShow::baseText(QStringLiteral("Chasing Rainbow"),
                                    QStringLiteral("Unnamed Effect"), 7) +
                 QStringLiteral("<startcolor>aRgb;1;0;#ffff0000ffff0000</startcolor>\n"
                                "<reversecolor>0</reversecolor>\n"
                                "<reversedir>1</reversedir>\n"
                                "<groupoffset>-1.23457e+06</groupoffset>\n"
                                "<cycletime>1.23457</cycletime>\n"
                                "</effect>\n"));
}

void ChasingRainbowEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("written");
    const auto row = [](const char* name, const char* keys, const char* color, const char* hue,
                        const char* dir, const char* offset, const char* time) {
        QTest::newRow(name) << QString::fromLatin1(keys)
                            << keyLines({{"startcolor", color},
                                         {"reversecolor", hue},
                                         {"reversedir", dir},
                                         {"groupoffset", offset},
                                         {"cycletime", time}});
    };
    const char* const green = "aRgb;1;0;#ffff0000ffff0000";
    const char* const blue = "aRgb;1;0;#ffff00000000ffff";
    row("missing", "", green, "0", "0", "0.5", "5");
    row("all",
        "<cycletime>2.5</cycletime><groupoffset>-3</groupoffset><reversedir>1</reversedir>"
        "<reversecolor>-7</reversecolor><startcolor>blue</startcolor>",
        blue, "1", "1", "-3", "2.5");
    row("empty", "<startcolor/><reversecolor/><reversedir/><groupoffset/><cycletime/>", green, "0",
        "0", "0.5", "5");
    row("an unreadable colour stays", "<startcolor>blue</startcolor><startcolor>aRgb;</startcolor>",
        blue, "0", "0", "0.5", "5");
    row("unreadable others fall back",
        "<reversecolor>1</reversecolor><reversecolor>yes</reversecolor><reversedir>1</reversedir>"
        "<reversedir>1.0</reversedir><groupoffset>3</groupoffset><groupoffset>far</groupoffset>"
        "<cycletime>3</cycletime><cycletime>long</cycletime>",
        green, "0", "0", "0.5", "5");
    row("keys of others and unknown ones",
        "<time>9</time><offset>9</offset><CycleTime>9</CycleTime><nothing/>", green, "0", "0",
        "0.5", "5");
}

void ChasingRainbowEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const ChasingRainbowEffect effect(nullptr, 5, &element);
    QTEST(ownKeys(effect), "written");
}

void ChasingRainbowEffectTest::onlyAReadableColourCompiles()
{
    QDomElement bad = elementOf(QStringLiteral("<startcolor>aRgb;</startcolor><cycletime>2"
                                               "</cycletime><groupoffset>1</groupoffset>"));
    ChasingRainbowEffect effect(nullptr, 5, &bad);
    QVERIFY(!effect.compiled());
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.fromXml(nullptr);
    effect.fromXml(&bad);
    QCOMPARE(told.count(), 1);
    QVERIFY(!effect.compiled());
    QDomElement good = elementOf(QStringLiteral("<startcolor>red</startcolor>"));
    effect.fromXml(&good);
    QVERIFY(effect.compiled());
    QCOMPARE(told.count(), 1);
}

QTEST_GUILESS_MAIN(ChasingRainbowEffectTest)
#include "ChasingRainbowEffectTest.moc"
