#include "effects/XYSpiralEffect.h"

#include "color/DisplayColor.h"
#include "engine/MetaEffect.h"
#include "tests/effects/PlanStage.h"

#include <QSignalSpy>

#include <cmath>
#include <limits>
#include <random>

using TestShow::elementOf;
using TestShow::textOf;

class XYSpiralEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void hasItsDefaults();
    void phases_data();
    void phases();
    void phasesHaveSixteenBits();
    void theHueRisesWithTime_data();
    void theHueRisesWithTime();
    void groupsOfAllKinds_data();
    void groupsOfAllKinds();
    void aChangedTimeCountsAtOnce();
    void theCentreIsInPixelsFromTheTopLeft();
    void alphaIsThatOfTheTransparency_data();
    void alphaIsThatOfTheTransparency();
    void pastTheHueLimitLightsGoInvalid();
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
    void aWrittenTwistIsNotAlwaysReadBack_data();
    void aWrittenTwistIsNotAlwaysReadBack();
    void readingTellsTheTimeAndCompiles();
};

namespace {

const char* const kRefused = "VelaColor::setHsv16: HSV parameters out of range";

/// Its centre in the middle of the plan, (120, 90).
void centre(XYSpiralEffect& effect)
{
    effect.setCenterOffsetX(10.0);
    effect.setCenterOffsetY(7.5);
}

} // namespace

void XYSpiralEffectTest::hasItsDefaults()
{
    XYSpiralEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("XYSpiral"));
    QCOMPARE(effect.typeId(), 15);
    QCOMPARE(effect.cycleTime(), 10000U);
    QCOMPARE(effect.cycleSeconds(), 10.0);
    QCOMPARE(effect.twist(), 10.0);
    QCOMPARE(effect.arms(), 2);
    QVERIFY(effect.clockwise());
    QCOMPARE(effect.centerOffsetX(), 0.0);
    QCOMPARE(effect.centerOffsetY(), 0.0);
    QCOMPARE(effect.outputSizeText(), QStringLiteral("0 x 0"));
    QCOMPARE(effect.metaObject()->propertyCount(), Effect::staticMetaObject.propertyCount());
    QVERIFY(!effect.compiled());
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void XYSpiralEffectTest::phases_data()
{
    // From the middle: the corners are 150 away, light 6 108.1665. Angles in degrees: light 1
    // -143.1301, 2 -36.8699, 3 143.1301, 4 36.8699, 6 -123.6901; light 5 is the middle.
    QTest::addColumn<double>("twist");
    QTest::addColumn<int>("arms");
    QTest::addColumn<bool>("clockwise");
    QTest::addColumn<QString>("hues");
    const auto row = [](const char* name, double twist, int arms, bool clockwise,
                        const char* hues) {
        QTest::newRow(name) << twist << arms << clockwise << QString::fromLatin1(hues);
    };
    // Radial 600, light 6 432; angular -286 -73 286 73 0 -247.
    row("clockwise", 10.0, 2, true, "166 313 314 167 0 319");
    row("counterclockwise", 10.0, 2, false, "314 167 166 313 0 185");
    row("a twist is truncated", 10.9, 2, true, "166 313 314 167 0 319");
    row("a negative twist", -10.0, 2, true, "46 193 194 47 0 175"); // -314 -527 -886 -673 0 -185
    row("straight spokes", 0.0, 2, true, "286 73 74 287 0 247");    // 286 73 -286 -73 0 247
    row("straight spokes, counterclockwise", 0.0, 2, false, "74 287 286 73 0 113");
    row("a twist below 1 is none", 0.9, 2, true, "286 73 74 287 0 247");
    row("a twist above -1 is none", -0.9, 2, true, "286 73 74 287 0 247");
    row("one arm", 0.0, 1, true, "143 36 217 324 0 123");
    row("no arm", 10.0, 0, true, "240 240 240 240 0 72");
    row("negative arms turn the bend", 0.0, -2, true, "74 287 286 73 0 113");
    // 150 / 100 * 40 = 60 and 43; 20 arms: -2862 -737 2862 737 0 -2473.
    row("twenty arms", 100.0, 20, true, "42 77 78 43 0 356");
}

void XYSpiralEffectTest::phases()
{
    QFETCH(const double, twist);
    QFETCH(const int, arms);
    QFETCH(const bool, clockwise);
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x100, nullptr);
    centre(effect);
    effect.setTwist(twist);
    effect.setArms(arms);
    effect.setClockwise(clockwise);
    stage.run(effect, 0);
    QTEST(stage.hues(), "hues");
}

void XYSpiralEffectTest::phasesHaveSixteenBits()
{
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x105, nullptr);
    effect.setTwist(1.0); // 1639 * 40 = 65560 is 24 in 16 bits
    const WarningCount warnings;
    stage.run(effect, 0);
    QCOMPARE(stage.mix(8), PlanStage::hueColor(24));
    QCOMPARE(stage.mix(7), PlanStage::hueColor(0));
    QCOMPARE(warnings.value(), 0);
}

void XYSpiralEffectTest::theHueRisesWithTime_data()
{
    QTest::addColumn<int>("arms");
    QTest::addColumn<bool>("clockwise");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("hues");
    const auto row = [](const char* name, int arms, bool clockwise, qint64 ms, const char* hues) {
        QTest::newRow(name) << arms << clockwise << ms << QString::fromLatin1(hues);
    };
    // Two arms: 0.072 degrees a millisecond, 180.36 after 2505.
    row("clockwise", 2, true, 2505, "346 133 134 347 180 139");
    row("counterclockwise", 2, false, 2505, "134 347 346 133 180 5");
    row("a whole cycle is two turns", 2, true, 10001, "166 313 314 167 0 319");
    row("one arm", 1, true, 2510, "113 6 187 294 90 285"); // 90.36; 743 636 457 564 0 555
    // 180.36 downwards: phases 314 527 886 673 0 185, less 180. What falls below 0 is black.
    row("negative arms", -2, true, 2505, "134 347 346 133 black 5");
}

void XYSpiralEffectTest::theHueRisesWithTime()
{
    QFETCH(const int, arms);
    QFETCH(const bool, clockwise);
    QFETCH(const qint64, ms);
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x100, nullptr);
    centre(effect);
    effect.setArms(arms);
    effect.setClockwise(clockwise);
    stage.run(effect, ms);
    QTEST(stage.hues(), "hues");
}

void XYSpiralEffectTest::groupsOfAllKinds_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::addColumn<QString>("hues");
    const QString all = QStringLiteral("346 133 134 347 180 139");
    const QString none = QStringLiteral("black black black black black black");
    QTest::newRow("synchronized") << quint64(0x100) << all;
    QTest::newRow("chase") << quint64(0x101) << all;
    QTest::newRow("nested chase") << quint64(0x102) << all;
    // 150 and -143.1301 degrees from its own top left, as light 1 was from the middle.
    QTest::newRow("leaf") << quint64(5) << QStringLiteral("black black black black 346 black");
    QTest::newRow("no lights") << quint64(0x106) << none;
    QTest::newRow("no such group") << quint64(0x999) << none;
    QTest::newRow("no group") << quint64(Effect::kNoGid) << none;
}

void XYSpiralEffectTest::groupsOfAllKinds()
{
    QFETCH(const quint64, gid);
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x100, nullptr);
    centre(effect);
    effect.setGid(gid);
    effect.compile();
    stage.run(effect, 2505);
    QTEST(stage.hues(), "hues");
    QVERIFY(stage.mix(7).isBlack());
    if (gid == 0x100) {
        QCOMPARE(stage.mix(1), PlanStage::hueColor(346));
        QCOMPARE(stage.sim(5), QColor(0, 255, 255));
    }
}

void XYSpiralEffectTest::aChangedTimeCountsAtOnce()
{
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x100, nullptr);
    centre(effect);
    effect.setCycleTime(5.0); // without a compile
    stage.run(effect, 2505);  // 360.72
    QCOMPARE(stage.hues(), QStringLiteral("166 313 314 167 0 319"));
}

void XYSpiralEffectTest::theCentreIsInPixelsFromTheTopLeft()
{
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    stage.run(effect, 0); // from (0, 0): 0 960 720 1200 600 240, less 0 0 180 73 73 0
    QCOMPARE(stage.hues(), QStringLiteral("0 240 180 47 167 240"));
    effect.setCenterOffsetX(5.0); // on light 6
    stage.run(effect, 0);
    QCOMPARE(stage.mix(6), PlanStage::hueColor(0));
}

void XYSpiralEffectTest::alphaIsThatOfTheTransparency_data()
{
    QTest::addColumn<double>("transparency");
    QTest::addColumn<double>("alpha");
    QTest::newRow("opaque") << 0.0 << 1.0;
    QTest::newRow("partial") << 0.25 << 0.75;
    QTest::newRow("invisible") << 1.0 << 0.0;
    QTest::newRow("beyond") << 2.0 << 0.0;
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN() << 1.0;
}

void XYSpiralEffectTest::alphaIsThatOfTheTransparency()
{
    QFETCH(const double, transparency);
    QFETCH(const double, alpha);
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x100, nullptr);
    centre(effect);
    effect.setTransparency(transparency);
    stage.run(effect, 0);
    QVERIFY(std::abs(stage.mix(5).redF() - alpha) < 1e-9);
    QVERIFY(std::abs(stage.sim(5).red() - 255.0 * alpha) < 1.5);
    // Hue 166: 46 degrees past green
    QVERIFY(std::abs(stage.mix(1).greenF() - alpha) < 1e-9);
    QVERIFY(std::abs(stage.mix(1).blueF() - 46.0 / 60.0 * alpha) < 1e-9);
}

void XYSpiralEffectTest::pastTheHueLimitLightsGoInvalid()
{
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x100, nullptr);
    centre(effect);
    effect.setArms(20); // 0.72 degrees a millisecond
    effect.setTwist(0.0);
    {
        const WarningCount warnings;
        stage.run(effect, 91001); // 65520.72
        QCOMPARE(PlanStage::hue(stage.mix(5)), QStringLiteral("0"));
        QVERIFY(!stage.mix(1).isValid()); // its phase is 2862
        QCOMPARE(warnings.last(), QString::fromLatin1(kRefused));
    }
    const WarningCount warnings;
    stage.run(effect, 91023); // 65536.56
    QCOMPARE(warnings.value(), 6);
    QVERIFY(!stage.mix(5).isValid());
    QCOMPARE(stage.sim(5), QColor(Qt::black));
    stage.run(effect, 0);
    QCOMPARE(warnings.value(), 6);
    QCOMPARE(stage.mix(5), PlanStage::hueColor(0));
}

void XYSpiralEffectTest::agreesWithThePlainSteps_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("synchronized") << quint64(0x100);
    QTest::newRow("chase") << quint64(0x101);
    QTest::newRow("nested chase") << quint64(0x102);
}

void XYSpiralEffectTest::agreesWithThePlainSteps()
{
    QFETCH(const quint64, gid);
    PlanStage stage;
    PlanStage canvas;
    XYSpiralEffect effect(stage.model(), gid, nullptr);
    std::mt19937 random(20240614);
    const auto below = [&random](int n) { return static_cast<int>(random() % unsigned(n)); };
    const WarningCount warnings; // keeps the output short
    for (int i = 0; i < 2000; ++i) {
        effect.setCycleTime(0.5 + below(5000) / 970.0);
        effect.setTwist(below(2001) / 10.0 - 100.0);
        effect.setArms(below(41) - 20);
        effect.setClockwise(below(2) == 0);
        effect.setCenterOffsetX(below(60) - 20);
        effect.setCenterOffsetY(below(600) / 10.0 - 20);
        const double transparencies[] = {0.0, below(1000) / 999.0, 1.0};
        effect.setTransparency(transparencies[below(3)]);
        const int ms = below(200000);
        stage.run(effect, ms);
        canvas.endFrame();
        const double rate = effect.arms() * 360.0 / (effect.cycleSeconds() * 1000.0);
        const int s = static_cast<int>(ms * rate);
        const int t = static_cast<int>(effect.twist());
        for (quint64 uid = 1; uid <= 6; ++uid) {
            const LightPosition place = stage.light(uid)->position();
            const double dx = place.x - effect.centerOffsetX() * 12.0;
            const double dy = place.y - effect.centerOffsetY() * 12.0;
            const int r = t == 0 ? 0 : static_cast<int>(std::sqrt(dy * dy + dx * dx) / t * 40.0);
            const int a =
                static_cast<int>(std::atan2(dy, dx) * (effect.arms() * 180) / 3.141592653589793);
            int v = effect.clockwise() ? r - a : r + a;
            if (v < 0) {
                v += (-v - 1) / 360 * 360 + 360;
            }
            VelaColor work;
            work.setHsv16(v % 65536 + s, 65535, 65535, 65535, 0);
            work.setAlphaF(1.0 - effect.transparency());
            QColor q = toDisplayQColor(work);
            q.setAlphaF(work.alphaF());
            canvas.light(uid)->mixColor(work, 0);
            canvas.light(uid)->mixSimColor(q, 0);
            const VelaColor expected = canvas.mix(uid);
            QVERIFY(stage.mix(uid) == expected || !expected.isValid());
            QCOMPARE(stage.mix(uid).isValid(), expected.isValid());
            QCOMPARE(stage.sim(uid), canvas.sim(uid));
        }
    }
}

void XYSpiralEffectTest::degenerateGroupsDoNotFault_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("one light") << quint64(5);
    QTest::newRow("on a line") << quint64(0x105);
    QTest::newRow("places that are none") << quint64(0x107);
}

void XYSpiralEffectTest::degenerateGroupsDoNotFault()
{
    QFETCH(const quint64, gid);
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    for (const double twist : {0.0, 1.0, -100.0}) {
        effect.setTwist(twist);
        for (const bool clockwise : {false, true}) {
            effect.setClockwise(clockwise);
            stage.run(effect, 1);
            if (gid == 5) { // at its own centre
                QCOMPARE(stage.mix(5), PlanStage::hueColor(0));
            }
        }
    }
}

void XYSpiralEffectTest::hostileNumbersDoNotFault_data()
{
    QTest::addColumn<QString>("keys");
    const QStringList numbers = {
        QStringLiteral("nan"),         QStringLiteral("inf"),       QStringLiteral("-inf"),
        QStringLiteral("1e300"),       QStringLiteral("-1e300"),    QStringLiteral("0"),
        QStringLiteral("1e-300"),      QStringLiteral("-10"),       QStringLiteral("2147483647"),
        QStringLiteral("-2147483648"), QStringLiteral("4294967295")};
    for (const char* const key : {"cycletime", "twist", "number", "centerx", "centery"}) {
        for (const QString& number : numbers) {
            QTest::addRow("%s %s", key, qPrintable(number))
                << QStringLiteral("<%1>%2</%1>").arg(QLatin1String(key), number);
        }
    }
}

void XYSpiralEffectTest::hostileNumbersDoNotFault()
{
    QFETCH(const QString, keys);
    PlanStage stage;
    QDomElement element = elementOf(QStringLiteral("<gid>256</gid>") + keys);
    XYSpiralEffect effect(stage.model(), Effect::kNoGid, &element);
    QCOMPARE(effect.gid(), quint64(0x100));
    const WarningCount warnings;
    for (const bool clockwise : {false, true}) {
        effect.setClockwise(clockwise);
        for (const qint64 ms : {qint64(0), qint64(1), qint64(1234567), qint64(1) << 40}) {
            stage.run(effect, ms);
        }
    }
    for (const double twist : {std::numeric_limits<double>::quiet_NaN(), 1e300, -1e300}) {
        effect.setTwist(twist); // a file can't, a caller can
        stage.run(effect, 1);
    }
    QVERIFY(!textOf(effect).isEmpty());
}

void XYSpiralEffectTest::missingLightsArePassedOver()
{
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x104, nullptr);
    centre(effect);
    stage.run(effect, 2505);
    QCOMPARE(stage.hues(), QStringLiteral("346 black black 347 black black"));
}

void XYSpiralEffectTest::tellsItsOutputSize()
{
    PlanStage stage;
    XYSpiralEffect effect(stage.model(), 0x100, nullptr);
    QSignalSpy told(&effect, &XYSpiralEffect::updateOutputSizeLabel);
    effect.compile();
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toString(), QStringLiteral("21 x 16"));
    QCOMPARE(effect.outputSizeText(), QStringLiteral("21 x 16"));
    effect.setGid(0x999);
    effect.compile();
    QCOMPARE(told.count(), 1);
    QCOMPARE(effect.outputSizeText(), QStringLiteral("21 x 16"));
}

void XYSpiralEffectTest::theTimeRuleResolvesThenTells()
{
    XYSpiralEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setCycleTime(2.0019);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2001U);
    QVERIFY(!effect.compiled());
    effect.setTwist(5.0);
    QVERIFY(effect.compiled());
    QVERIFY([] {
        XYSpiralEffect other(nullptr, 5, nullptr);
        other.setArms(3);
        return other.compiled();
    }());
    QVERIFY([] {
        XYSpiralEffect other(nullptr, 5, nullptr);
        other.setClockwise(true);
        return other.compiled();
    }());
    QCOMPARE(told.count(), 1);

    MetaEffect root(nullptr, 0, nullptr);
    XYSpiralEffect child(nullptr, 5, nullptr);
    child.setEndType(Effect::EndCycles);
    child.setEndCycleCount(3);
    root.addEffect(&child);
    child.setCycleTime(1.5);
    QCOMPARE(child.end(), 4500U);
}

void XYSpiralEffectTest::isWrittenByteForByte()
{
    XYSpiralEffect effect(nullptr, 7, nullptr);
    effect.setCycleTime(1.23456789);
    effect.setTwist(-12.5);
    effect.setArms(-3);
    effect.setCenterOffsetX(-2.5);
    effect.setCenterOffsetY(1234567.0);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") +
                                 TestShow::baseText(QStringLiteral("XYSpiral"),
                                                    QStringLiteral("Unnamed Effect"), 7) +
                                 QStringLiteral("<cycletime>1.23457</cycletime>\n"
                                                "<twist>-12.5</twist>\n"
                                                "<number>-3</number>\n"
                                                "<clockwise>1</clockwise>\n"
                                                "<centerx>-2.5</centerx>\n"
                                                "<centery>1.23457e+06</centery>\n"
                                                "</effect>\n"));
}

void XYSpiralEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("settings");
    const auto row = [](const char* name, const char* keys, const char* settings) {
        QTest::newRow(name) << QString::fromLatin1(keys) << QString::fromLatin1(settings);
    };
    const char* const defaults = "10 10 2 1 0 0";
    row("missing", "", defaults);
    row("all",
        "<cycletime>2.5</cycletime><twist>7</twist><number>-5</number><clockwise>0</clockwise>"
        "<centerx>-1.5</centerx><centery>8</centery>",
        "2.5 7 -5 0 -1.5 8");
    row("empty", "<cycletime/><twist/><number/><clockwise/><centerx/><centery/>", defaults);
    row("unreadable ones fall back",
        "<cycletime>3</cycletime><cycletime>x</cycletime><twist>7</twist><twist>x</twist>"
        "<number>7</number><number>7.0</number><clockwise>0</clockwise><clockwise>no</clockwise>"
        "<centerx>1</centerx><centerx>1,5</centerx><centery>1</centery><centery>y</centery>",
        defaults);
    row("any number but 0 is clockwise", "<clockwise>-1</clockwise>", defaults);
    row("zeros", "<cycletime>0</cycletime><twist>0</twist><number>0</number>", "0 0 0 1 0 0");
}

void XYSpiralEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const XYSpiralEffect effect(nullptr, 5, &element);
    const QString settings = QStringLiteral("%1 %2 %3 %4 %5 %6")
                                 .arg(effect.cycleSeconds())
                                 .arg(effect.twist())
                                 .arg(effect.arms())
                                 .arg(int(effect.clockwise()))
                                 .arg(effect.centerOffsetX())
                                 .arg(effect.centerOffsetY());
    QTEST(settings, "settings");
}

void XYSpiralEffectTest::aWrittenTwistIsNotAlwaysReadBack_data()
{
    QTest::addColumn<double>("written");
    QTest::addColumn<double>("read");
    QTest::newRow("whole") << 25.0 << 25.0;
    QTest::newRow("zero") << 0.0 << 0.0;
    QTest::newRow("negative") << -25.0 << 10.0;
    QTest::newRow("fraction") << 2.5 << 10.0;
    QTest::newRow("with an exponent") << 1e6 << 10.0;
}

void XYSpiralEffectTest::aWrittenTwistIsNotAlwaysReadBack()
{
    QFETCH(const double, written);
    XYSpiralEffect effect(nullptr, 5, nullptr);
    effect.setTwist(written);
    QDomDocument doc;
    QDomElement element = effect.toXml(doc);
    const XYSpiralEffect reread(nullptr, 5, &element);
    QTEST(reread.twist(), "read");
}

void XYSpiralEffectTest::readingTellsTheTimeAndCompiles()
{
    XYSpiralEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    QDomElement element =
        elementOf(QStringLiteral("<cycletime>2</cycletime><cycletime>no</cycletime>"));
    effect.fromXml(&element);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.first().first().toUInt(), 2000U);
    QCOMPARE(told.last().first().toUInt(), 10000U);
    effect.fromXml(nullptr);
    QCOMPARE(told.count(), 2);
    QVERIFY(!effect.compiled());
    for (const char* const keys :
         {"<twist>no</twist>", "<number>no</number>", "<clockwise>no</clockwise>",
          "<centerx>no</centerx>", "<centery>no</centery>"}) {
        QDomElement other = elementOf(QString::fromLatin1(keys));
        QVERIFY(XYSpiralEffect(nullptr, 5, &other).compiled());
    }
}

QTEST_GUILESS_MAIN(XYSpiralEffectTest)
#include "XYSpiralEffectTest.moc"
