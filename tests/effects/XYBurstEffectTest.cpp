#include "effects/XYBurstEffect.h"

#include "color/DisplayColor.h"
#include "engine/MetaEffect.h"
#include "tests/effects/PlanStage.h"

#include <QSignalSpy>

#include <cmath>
#include <limits>
#include <random>

using TestShow::elementOf;
using TestShow::textOf;

class XYBurstEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void hasItsDefaults();
    void theFourDirections_data();
    void theFourDirections();
    void colorsAreSaturatedAndOpaque();
    void groupsOfAllKinds_data();
    void groupsOfAllKinds();
    void theCentreIsInPixelsFromTheTopLeft();
    void theRingWidthScales_data();
    void theRingWidthScales();
    void alphaIsThatOfTheTransparency_data();
    void alphaIsThatOfTheTransparency();
    void pastTheHueLimitLightsGoInvalid();
    void negativeHuesAreBlackButMinusOne_data();
    void negativeHuesAreBlackButMinusOne();
    void fallingHuesRunForEver();
    void elapsedIsSignedIn32Bits();
    void agreesWithThePlainSteps_data();
    void agreesWithThePlainSteps();
    void degenerateGroupsDoNotFault_data();
    void degenerateGroupsDoNotFault();
    void hostileNumbersDoNotFault_data();
    void hostileNumbersDoNotFault();
    void missingLightsArePassedOver();
    void tellsItsOutputSize();
    void theTimeRuleResolvesThenTells();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void readingTellsTheTimeAndCompiles();
};

namespace {

const char* const kRefused = "VelaColor::setHsv16: HSV parameters out of range";

} // namespace

void XYBurstEffectTest::hasItsDefaults()
{
    XYBurstEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("XYBurst"));
    QCOMPARE(effect.typeId(), 14);
    QCOMPARE(effect.cycleTime(), 10000U);
    QCOMPARE(effect.cycleSeconds(), 10.0);
    QCOMPARE(effect.ringWidth(), 100U);
    QCOMPARE(effect.centerOffsetX(), 0.0);
    QCOMPARE(effect.centerOffsetY(), 0.0);
    QVERIFY(!effect.cycleDir() && !effect.rainbowDir());
    QCOMPARE(effect.outputSizeText(), QStringLiteral("0 x 0"));
    QCOMPARE(effect.metaObject()->propertyCount(), Effect::staticMetaObject.propertyCount());
    QVERIFY(!effect.compiled());
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void XYBurstEffectTest::theFourDirections_data()
{
    // From the top left the lights 1 to 6 are 0, 1.6, 1.2, 2, 1 and 0.4 away; 360 degrees for 1.
    QTest::addColumn<bool>("rainbowDir");
    QTest::addColumn<bool>("cycleDir");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("hues");
    const auto row = [](const char* name, bool rainbow, bool cycle, qint64 ms, const char* hues) {
        QTest::newRow(name) << rainbow << cycle << ms << QString::fromLatin1(hues);
    };
    row("neither, start", false, false, 0, "0 144 288 0 0 216");
    row("neither, a quarter", false, false, 2500, "270 54 198 270 270 126");
    row("neither, five quarters", false, false, 12500, "270 54 198 270 270 126");
    row("cycle, start", false, true, 0, "0 144 288 0 0 216");
    row("cycle, a quarter", false, true, 2500, "90 234 18 90 90 306");
    row("cycle, five quarters", false, true, 12500, "90 234 18 90 90 306");
    row("rainbow, start", true, false, 0, "0 216 72 0 0 144");
    row("rainbow, a quarter", true, false, 2500, "90 306 162 90 90 234");
    row("rainbow, five quarters", true, false, 12500, "90 306 162 90 90 234");
    row("both, start", true, true, 0, "0 216 72 0 0 144");
    row("both, a quarter", true, true, 2500, "270 126 342 270 270 54");
    // At 360 - 450: -90 486 342 630 270 54. This branch alone does not raise what falls below 0.
    row("both, five quarters", true, true, 12500, "black 126 342 270 270 54");
}

void XYBurstEffectTest::theFourDirections()
{
    QFETCH(const bool, rainbowDir);
    QFETCH(const bool, cycleDir);
    QFETCH(const qint64, ms);
    PlanStage stage;
    QVERIFY(stage.isLoaded());
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setRainbowDir(rainbowDir);
    effect.setCycleDir(cycleDir);
    stage.run(effect, ms);
    QTEST(stage.hues(), "hues");
}

void XYBurstEffectTest::colorsAreSaturatedAndOpaque()
{
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    stage.run(effect, 0);
    QCOMPARE(stage.mix(2), PlanStage::hueColor(144));
    QCOMPARE(stage.mix(2).spec(), VelaColor::Hsv);
    QCOMPARE(stage.mix(2).profileId(), 0U);
    QCOMPARE(stage.sim(1), QColor(255, 0, 0));
    QCOMPARE(stage.sim(2), QColor(0, 255, 102)); // 24 degrees past green: 0.4 of the way to cyan
    QCOMPARE(stage.sim(3), QColor(204, 0, 255)); // 48 degrees past blue: 0.8
}

void XYBurstEffectTest::groupsOfAllKinds_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::addColumn<QString>("hues");
    const QString all = QStringLiteral("270 54 198 270 270 126");
    const QString none = QStringLiteral("black black black black black black");
    QTest::newRow("synchronized") << quint64(0x100) << all;
    QTest::newRow("chase") << quint64(0x101) << all;
    QTest::newRow("nested chase") << quint64(0x102) << all;
    QTest::newRow("leaf") << quint64(5) << none; // no extent: the hue is no number
    QTest::newRow("no lights") << quint64(0x106) << none;
    QTest::newRow("no such group") << quint64(0x999) << none;
    QTest::newRow("no group") << quint64(Effect::kNoGid) << none;
}

void XYBurstEffectTest::groupsOfAllKinds()
{
    QFETCH(const quint64, gid);
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setGid(gid);
    effect.compile();
    stage.run(effect, 2500);
    QTEST(stage.hues(), "hues");
    QVERIFY(stage.mix(7).isBlack());
}

void XYBurstEffectTest::theCentreIsInPixelsFromTheTopLeft()
{
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.setCenterOffsetX(10.0); // setting it compiles
    QVERIFY(effect.compiled());
    effect.setCenterOffsetY(7.5);
    stage.run(effect, 0); // the corners are 1 away from (120, 90), the light 6 0.72111
    QCOMPARE(stage.hues(), QStringLiteral("0 0 0 0 0 100"));
    effect.setCenterOffsetX(-10.0);
    effect.setCenterOffsetY(0.0);
    stage.run(effect, 0); // from (-120, 0): 0.8 2.4 1.44222 2.68328 1.70880 1.2
    QCOMPARE(stage.hues(), QStringLiteral("72 216 200 114 104 288"));
}

void XYBurstEffectTest::theRingWidthScales_data()
{
    QTest::addColumn<uint>("width");
    QTest::addColumn<QString>("hues");
    const auto row = [](const char* name, uint width, const char* hues) {
        QTest::newRow(name) << width << QString::fromLatin1(hues);
    };
    row("half a rainbow", 200, "0 72 144 0 180 288"); // 360 - 288, 216, 360, 180, 72
    row("two rainbows", 50, "0 288 216 0 0 72");      // 360 - 1152, 864, 1440, 720, 288
    // No width: 0 * infinity and infinity are no hue.
    row("none", 0, "black black black black black black");
    row("huge", 4294967295U, "0 359 359 359 359 359");
}

void XYBurstEffectTest::theRingWidthScales()
{
    QFETCH(const uint, width);
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setRingWidth(width);
    stage.run(effect, 0);
    QTEST(stage.hues(), "hues");
}

void XYBurstEffectTest::alphaIsThatOfTheTransparency_data()
{
    QTest::addColumn<double>("transparency");
    QTest::addColumn<double>("alpha");
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("opaque") << 0.0 << 1.0;
    QTest::newRow("partial") << 0.25 << 0.75;
    QTest::newRow("invisible") << 1.0 << 0.0;
    QTest::newRow("beyond") << 2.0 << 0.0;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 0.0;
    QTest::newRow("negative") << -1.0 << 1.0;
    QTest::newRow("nan") << nan << 1.0;
}

void XYBurstEffectTest::alphaIsThatOfTheTransparency()
{
    QFETCH(const double, transparency);
    QFETCH(const double, alpha);
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    for (const double first : {0.0, 0.5}) { // whatever was shown before
        effect.setTransparency(first);
        stage.run(effect, 0);
        effect.setTransparency(transparency);
        stage.run(effect, 0);
        QVERIFY(std::abs(stage.mix(1).redF() - alpha) < 1e-9);
        QVERIFY(std::abs(stage.mix(2).greenF() - alpha) < 1e-9);
        QVERIFY(std::abs(stage.mix(2).blueF() - 0.4 * alpha) < 1e-9);
        QVERIFY(std::abs(stage.sim(1).red() - 255.0 * alpha) < 1.5);
        QVERIFY(std::abs(stage.sim(2).blue() - 102.0 * alpha) < 1.5);
    }
}

void XYBurstEffectTest::pastTheHueLimitLightsGoInvalid()
{
    // A turn in ten seconds: 65535.84 degrees after 1820440 ms, 65536.2 after 1820450.
    PlanStage stage;
    for (const bool rainbowDir : {true, false}) {
        XYBurstEffect effect(stage.model(), 0x100, nullptr);
        effect.compile();
        effect.setRainbowDir(rainbowDir);
        effect.setCycleDir(!rainbowDir);
        {
            const WarningCount warnings;
            stage.run(effect, 1820440);
            // Away from the centre the hue has passed the limit already, or stays behind.
            QCOMPARE(warnings.value(), rainbowDir ? 5 : 0);
            QCOMPARE(PlanStage::hue(stage.mix(1)), QStringLiteral("15")); // 182 * 360 + 15
            QCOMPARE(stage.mix(2).isValid(), !rainbowDir);
        }
        {
            const WarningCount warnings;
            stage.run(effect, 1820450);
            QCOMPARE(warnings.value(), rainbowDir ? 6 : 1);
            QCOMPARE(warnings.last(), QString::fromLatin1(kRefused));
            QVERIFY(!stage.mix(1).isValid());
            QCOMPARE(stage.mix(1).alpha32(), 0xFFFFFFFFU);
            QCOMPARE(stage.sim(1), QColor(Qt::black));
        }
        const WarningCount warnings;
        stage.run(effect, 0); // a new run is as any
        QCOMPARE(warnings.value(), 0);
        QCOMPARE(stage.mix(1), PlanStage::hueColor(0));
    }
}

void XYBurstEffectTest::negativeHuesAreBlackButMinusOne_data()
{
    // Both flags: the hue at the centre is 360 less what has passed, and is not raised.
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("hue");
    QTest::newRow("0.0") << qint64(10000) << QStringLiteral("0");
    QTest::newRow("-0.36 truncates to 0") << qint64(10010) << QStringLiteral("0");
    QTest::newRow("-1.44 is the grey hue, which is red") << qint64(10040) << QStringLiteral("-1");
    QTest::newRow("-2.16") << qint64(10060) << QStringLiteral("black");
    QTest::newRow("-359.64") << qint64(19990) << QStringLiteral("black");
    QTest::newRow("-361.44 is not -1") << qint64(20040) << QStringLiteral("black");
    QTest::newRow("far below") << qint64(100000060) << QStringLiteral("black");
}

void XYBurstEffectTest::negativeHuesAreBlackButMinusOne()
{
    QFETCH(const qint64, ms);
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setRainbowDir(true);
    effect.setCycleDir(true);
    stage.run(effect, ms);
    QFETCH(const QString, hue);
    QCOMPARE(PlanStage::hue(stage.mix(1)), hue);
    QVERIFY(stage.mix(1).isValid());
    QCOMPARE(stage.sim(1), hue == QStringLiteral("black") ? QColor(0, 0, 0) : QColor(255, 0, 0));
}

void XYBurstEffectTest::fallingHuesRunForEver()
{
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    const WarningCount warnings;
    // 214748 turns and 364 thousandths: 360 - 131.04.
    stage.run(effect, 2147483647);
    QCOMPARE(stage.hues(), QStringLiteral("228 12 156 228 228 84"));
    QCOMPARE(warnings.value(), 0);
}

void XYBurstEffectTest::elapsedIsSignedIn32Bits()
{
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setCycleDir(true);
    stage.run(effect, qint64(4294967296) + 2500);
    QCOMPARE(stage.hues(), QStringLiteral("90 234 18 90 90 306"));
    stage.run(effect, qint64(4294967296) - 2500); // -2500: -90 degrees, raised
    QCOMPARE(stage.hues(), QStringLiteral("270 54 198 270 270 126"));
}

void XYBurstEffectTest::agreesWithThePlainSteps_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("synchronized") << quint64(0x100);
    QTest::newRow("chase") << quint64(0x101);
    QTest::newRow("nested chase") << quint64(0x102);
}

void XYBurstEffectTest::agreesWithThePlainSteps()
{
    QFETCH(const quint64, gid);
    PlanStage stage;
    PlanStage canvas;
    XYBurstEffect effect(stage.model(), gid, nullptr);
    std::mt19937 random(20240613);
    const auto below = [&random](int n) { return static_cast<int>(random() % unsigned(n)); };
    const WarningCount warnings; // keeps the output short
    for (int i = 0; i < 2000; ++i) {
        effect.setCycleDir(below(2) == 0);
        effect.setRainbowDir(below(2) == 0);
        effect.setCycleTime(0.5 + below(5000) / 970.0);
        effect.setRingWidth(static_cast<quint32>(1 + below(300)));
        effect.setCenterOffsetX(below(60) - 20);
        effect.setCenterOffsetY(below(600) / 10.0 - 20);
        const double transparencies[] = {0.0, below(1000) / 999.0, 1.0};
        effect.setTransparency(transparencies[below(3)]);
        const int ms = below(200000);
        stage.run(effect, ms);
        canvas.endFrame();
        double p = static_cast<int>(1.0 / effect.cycleSeconds() * ms) / 1000.0 * 360.0;
        if (effect.rainbowDir() == effect.cycleDir()) {
            p = 360.0 - p;
        }
        const double span = 36000.0 / effect.ringWidth();
        for (quint64 uid = 1; uid <= 6; ++uid) {
            const LightPosition place = stage.light(uid)->position();
            const double dx = place.x - effect.centerOffsetX() * 12.0;
            const double dy = place.y - effect.centerOffsetY() * 12.0;
            const double distance = std::sqrt(dy * dy + dx * dx) / 150.0;
            double h = span * distance + p;
            if (!effect.rainbowDir()) {
                h = p - span * distance;
                while (h < 0.0) {
                    h += 360.0;
                }
            }
            VelaColor work;
            work.setHsv16(static_cast<int>(h), 65535, 65535, 65535, 0);
            work.setAlphaF(1.0 - effect.transparency());
            QColor q = toDisplayQColor(work);
            q.setAlphaF(work.alphaF());
            canvas.light(uid)->mixColor(work, 0);
            canvas.light(uid)->mixSimColor(q, 0);
            const VelaColor actual = stage.mix(uid);
            const VelaColor expected = canvas.mix(uid);
            // Adding turn by turn rounds each time: only at a whole number may that show.
            const bool isNearWhole = std::abs(h - std::round(h)) < 1e-6;
            QVERIFY(actual == expected || !expected.isValid() || isNearWhole);
            QCOMPARE(actual.isValid(), expected.isValid());
            QVERIFY(stage.sim(uid) == canvas.sim(uid) || isNearWhole);
        }
    }
}

void XYBurstEffectTest::degenerateGroupsDoNotFault_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("one light") << quint64(5);
    QTest::newRow("on a line") << quint64(0x105);
    QTest::newRow("places that are none") << quint64(0x107);
}

void XYBurstEffectTest::degenerateGroupsDoNotFault()
{
    QFETCH(const quint64, gid);
    PlanStage stage;
    XYBurstEffect effect(stage.model(), gid, nullptr);
    for (const double offset : {0.0, 3.0, -3.0}) {
        effect.setCenterOffsetX(offset);
        for (const bool rainbowDir : {false, true}) {
            effect.setRainbowDir(rainbowDir);
            const WarningCount warnings;
            stage.run(effect, 1234);
            QCOMPARE(warnings.value(), 0); // the most negative number is no hue above the limit
            if (gid == 5) {
                QCOMPARE(PlanStage::hue(stage.mix(5)), QStringLiteral("black"));
            }
        }
    }
}

void XYBurstEffectTest::hostileNumbersDoNotFault_data()
{
    QTest::addColumn<QString>("keys");
    const QStringList numbers = {QStringLiteral("nan"),    QStringLiteral("inf"),
                                 QStringLiteral("-inf"),   QStringLiteral("1e300"),
                                 QStringLiteral("-1e300"), QStringLiteral("0"),
                                 QStringLiteral("1e-300"), QStringLiteral("-10")};
    for (const char* const key : {"cycletime", "centerx", "centery"}) {
        for (const QString& number : numbers) {
            QTest::addRow("%s %s", key, qPrintable(number))
                << QStringLiteral("<%1>%2</%1>").arg(QLatin1String(key), number);
        }
    }
}

void XYBurstEffectTest::hostileNumbersDoNotFault()
{
    QFETCH(const QString, keys);
    PlanStage stage;
    QDomElement element = elementOf(QStringLiteral("<gid>256</gid>") + keys);
    XYBurstEffect effect(stage.model(), Effect::kNoGid, &element);
    QCOMPARE(effect.gid(), quint64(0x100));
    const WarningCount warnings;
    for (const bool rainbowDir : {false, true}) {
        for (const bool cycleDir : {false, true}) {
            effect.setRainbowDir(rainbowDir);
            effect.setCycleDir(cycleDir);
            for (const qint64 ms : {qint64(0), qint64(1), qint64(1234567), qint64(1) << 40}) {
                stage.run(effect, ms);
            }
        }
    }
    QVERIFY(!textOf(effect).isEmpty());
}

void XYBurstEffectTest::missingLightsArePassedOver()
{
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x104, nullptr);
    effect.compile();
    stage.run(effect, 2500);
    QCOMPARE(stage.hues(), QStringLiteral("270 black black 270 black black"));
}

void XYBurstEffectTest::tellsItsOutputSize()
{
    PlanStage stage;
    XYBurstEffect effect(stage.model(), 0x100, nullptr);
    QSignalSpy told(&effect, &XYBurstEffect::updateOutputSizeLabel);
    effect.compile();
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toString(), QStringLiteral("21 x 16"));
    QCOMPARE(effect.outputSizeText(), QStringLiteral("21 x 16"));
    effect.setGid(0x105);
    effect.compile();
    QCOMPARE(effect.outputSizeText(), QStringLiteral("137 x 1")); // 1639 / 12 + 1
    effect.setGid(5);
    effect.compile();
    QCOMPARE(effect.outputSizeText(), QStringLiteral("1 x 1"));
    effect.setGid(0x999);
    effect.compile();
    QCOMPARE(told.count(), 3);
    QCOMPARE(effect.outputSizeText(), QStringLiteral("1 x 1"));
}

void XYBurstEffectTest::theTimeRuleResolvesThenTells()
{
    XYBurstEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setCycleTime(2.0019);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2001U);
    QVERIFY(!effect.compiled());
    effect.setRingWidth(5);
    effect.setCycleDir(true);
    effect.setRainbowDir(true);
    QVERIFY(!effect.compiled()); // only the centre compiles
    effect.setCenterOffsetY(1.0);
    QVERIFY(effect.compiled());
    QCOMPARE(told.count(), 1);

    MetaEffect root(nullptr, 0, nullptr);
    XYBurstEffect child(nullptr, 5, nullptr);
    child.setEndType(Effect::EndCycles);
    child.setEndCycleCount(3);
    root.addEffect(&child);
    child.setCycleTime(1.5);
    QCOMPARE(child.end(), 4500U);
}

void XYBurstEffectTest::isWrittenByteForByte()
{
    XYBurstEffect effect(nullptr, 7, nullptr);
    effect.setCycleTime(1.23456789);
    effect.setRingWidth(4294967295U);
    effect.setCenterOffsetX(-2.5);
    effect.setCenterOffsetY(1234567.0);
    effect.setRainbowDir(true);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") +
                                 TestShow::baseText(QStringLiteral("XYBurst"),
                                                    QStringLiteral("Unnamed Effect"), 7) +
                                 QStringLiteral("<cycletime>1.23457</cycletime>\n"
                                                "<width>4294967295</width>\n"
                                                "<centerx>-2.5</centerx>\n"
                                                "<centery>1.23457e+06</centery>\n"
                                                "<cycledir>0</cycledir>\n"
                                                "<rainbowdir>1</rainbowdir>\n"
                                                "</effect>\n"));
}

void XYBurstEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("settings");
    const auto row = [](const char* name, const char* keys, const char* settings) {
        QTest::newRow(name) << QString::fromLatin1(keys) << QString::fromLatin1(settings);
    };
    const char* const defaults = "10 100 0 0 0 0";
    row("missing", "", defaults);
    row("all",
        "<cycletime>2.5</cycletime><width>7</width><centerx>-1.5</centerx><centery>8</centery>"
        "<cycledir>1</cycledir><rainbowdir>-2</rainbowdir>",
        "2.5 7 -1.5 8 1 1");
    row("empty", "<cycletime/><width/><centerx/><centery/><cycledir/><rainbowdir/>", defaults);
    row("unreadable ones fall back",
        "<cycletime>3</cycletime><cycletime>x</cycletime><width>7</width><width>-7</width>"
        "<centerx>1</centerx><centerx>1,5</centerx><centery>1</centery><centery>y</centery>"
        "<cycledir>1</cycledir><cycledir>1.0</cycledir><rainbowdir>1</rainbowdir>"
        "<rainbowdir>yes</rainbowdir>",
        defaults);
    row("zeros", "<cycletime>0</cycletime><width>0</width>", "0 0 0 0 0 0");
}

void XYBurstEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const XYBurstEffect effect(nullptr, 5, &element);
    const QString settings = QStringLiteral("%1 %2 %3 %4 %5 %6")
                                 .arg(effect.cycleSeconds())
                                 .arg(effect.ringWidth())
                                 .arg(effect.centerOffsetX())
                                 .arg(effect.centerOffsetY())
                                 .arg(int(effect.cycleDir()))
                                 .arg(int(effect.rainbowDir()));
    QTEST(settings, "settings");
}

void XYBurstEffectTest::readingTellsTheTimeAndCompiles()
{
    XYBurstEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    QDomElement element = elementOf(
        QStringLiteral("<cycletime>2</cycletime><cycletime>no</cycletime><width>9</width>"));
    effect.fromXml(&element);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.first().first().toUInt(), 2000U);
    QCOMPARE(told.last().first().toUInt(), 10000U);
    effect.fromXml(nullptr);
    QCOMPARE(told.count(), 2);
    QVERIFY(!effect.compiled());
    QDomElement centre = elementOf(QStringLiteral("<centerx>no</centerx>"));
    effect.fromXml(&centre);
    QVERIFY(effect.compiled());
}

QTEST_GUILESS_MAIN(XYBurstEffectTest)
#include "XYBurstEffectTest.moc"
