#include "effects/EffectSupport.h"

#include "color/DisplayColor.h"
#include "map/Group.h"
#include "resources/Resources.h"
#include "tests/effects/TestStage.h"

#include <limits>

using TestShow::kStartMs;
using TestShow::ProbeEffect;

class EffectSupportTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void findsLayouts();
    void phases_data();
    void phases();
    void rowsArePaintedAlikeAndNullsPassedOver();
    void theSimulationIsPaintedBehindTheOutput();
    void fadingScalesBothAlphas();
    void screenColoursMixPremultiplied();
    void coloursFallBack_data();
    void coloursFallBack();
    void coloursAreWrittenInTheirTextForm();
    void screenColoursAreKeptUntilTheColourChanges();
};

void EffectSupportTest::findsLayouts()
{
    TestStage stage;
    QVERIFY(EffectSupport::findLayout(stage.model(), 0x100) ==
            stage.model()->group(0x100)->layout());
    QCOMPARE(EffectSupport::findLayout(stage.model(), 0x100)->rows, 3);
    QVERIFY(EffectSupport::findLayout(stage.model(), 0x999) == nullptr);
    QVERIFY(EffectSupport::findLayout(nullptr, 0x100) == nullptr);
}

void EffectSupportTest::phases_data()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("seconds");
    QTest::addColumn<qint64>("elapsed");
    QTest::addColumn<quint32>("phase");
    QTest::addColumn<double>("position");
    const auto row = [](const char* name, double seconds, qint64 elapsed, quint32 phase,
                        double position) {
        QTest::newRow(name) << seconds << elapsed << phase << position;
    };
    row("start", 5.0, 0, 0, 0.0);
    row("within", 5.0, 1234, 1234, 0.2468);
    row("last", 5.0, 4999, 4999, 0.9998);
    row("again", 5.0, 5000, 0, 0.0);
    row("the modulus is truncated", 0.0109, 11, 1, 1.0 / 10.9);
    row("one millisecond", 0.001, 77, 0, 0.0);
    row("32 bits of the time", 5.0, 4294967296 + 3, 3, 3.0 / 5000.0);
    row("greatest modulus", 4294967.295, 4294967294, 4294967294, 4294967294.0 / 4294967295.0);
    row("modulus beyond 32 bits", 4294967.296, 77, 0, 0.0);
    row("zero", 0.0, 77, 0, 0.0);
    row("below a millisecond", 0.0009, 77, 0, 0.0);
    row("negative", -5.0, 77, 0, 0.0);
    row("nan", nan, 77, 0, 0.0);
    row("infinite", infinity, 77, 0, 0.0);
}

void EffectSupportTest::phases()
{
    QFETCH(const double, seconds);
    QFETCH(const qint64, elapsed);
    ProbeEffect effect;
    effect.setStartMs(kStartMs);
    effect.tick(kStartMs + elapsed, 0);
    QTEST(EffectSupport::phase(effect, seconds), "phase");
    QTEST(EffectSupport::cyclePosition(effect, seconds), "position");
}

void EffectSupportTest::rowsArePaintedAlikeAndNullsPassedOver()
{
    TestStage stage;
    Light* row0[] = {stage.light(1), nullptr, stage.light(2)};
    Light* row1[] = {nullptr};
    Light** rows[] = {row0, row1, nullptr};
    int counts[] = {3, 1, 0};
    GroupLayout layout;
    layout.rows = 3;
    layout.total = 4;
    layout.counts = counts;
    layout.lights = rows;
    EffectSupport::paintRow(layout, 0, Qt::red, Qt::blue, 1);
    for (const quint64 uid : {1U, 2U}) {
        QCOMPARE(stage.mix(uid), VelaColor(Qt::red));
        QCOMPARE(stage.sim(uid), QColor(Qt::blue));
    }
    ProbeEffect effect;
    effect.setPriority(2);
    EffectSupport::paintAllRows(effect, layout, Qt::cyan, Qt::cyan);
    QCOMPARE(stage.mix(1), VelaColor(Qt::cyan));
    QVERIFY(stage.mix(3).isBlack());
}

void EffectSupportTest::theSimulationIsPaintedBehindTheOutput()
{
    // The second of two equal layers has half the weight on both only in that order.
    TestStage stage;
    Light* row[] = {stage.light(1)};
    Light** rows[] = {row};
    int counts[] = {1};
    const GroupLayout layout = {1, 1, counts, rows};
    EffectSupport::paintRow(layout, 0, Qt::red, Qt::red, 1);
    EffectSupport::paintRow(layout, 0, Qt::blue, Qt::blue, 1);
    QCOMPARE(stage.mix(1), mixed(0.5, 0.0, 0.5));
    QCOMPARE(stage.sim(1), QColor(128, 0, 128));
}

void EffectSupportTest::fadingScalesBothAlphas()
{
    ProbeEffect effect;
    VelaColor c(Qt::red);
    QColor q(Qt::red);
    c.setAlpha32(0x80000001U);
    EffectSupport::fadeAlpha(effect, c, q);
    QCOMPARE(c.alpha32(), 0x80000001U); // untouched, not rounded
    QCOMPARE(q.alpha(), 255);
    effect.setTransparency(0.5);
    EffectSupport::fadeAlpha(effect, c, q);
    QCOMPARE(c.alpha32(), 0x40000001U); // 0x40000000.8 + 0.5, truncated
    QCOMPARE(q.alpha(), 64);            // the colour's alpha, not that of the screen colour
}

void EffectSupportTest::screenColoursMixPremultiplied()
{
    QCOMPARE(EffectSupport::qInterpolate(Qt::red, Qt::blue, 0.25), QColor(191, 0, 64));
    QColor half(Qt::red);
    half.setAlpha(128);
    // 128 / 255 both as the alpha and in the component
    QCOMPARE(EffectSupport::qInterpolate(half, half, 0.0), QColor(128, 0, 0, 128));
    QCOMPARE(EffectSupport::qInterpolate(half, Qt::blue, 1.0), QColor(Qt::blue));
}

void EffectSupportTest::coloursFallBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("reads");
    QTest::newRow("text form") << QStringLiteral("aRgb;1;0;#ffff000000000001") << true;
    QTest::newRow("hsv reads as rgb") << QStringLiteral("#102030") << true;
    QTest::newRow("channels") << QStringLiteral("aNchannel;6;5;65535;1;2;3;4;0;1") << true;
    QTest::newRow("empty") << QString() << false;
    QTest::newRow("cut") << QStringLiteral("aYxy;1;0;65535;1.0") << false;
}

void EffectSupportTest::coloursFallBack()
{
    QFETCH(const QString, text);
    QFETCH(const bool, reads);
    const VelaColor color = EffectSupport::toColor(text, Qt::yellow);
    QCOMPARE(color, reads ? VelaColor(text) : VelaColor(Qt::yellow));
}

void EffectSupportTest::coloursAreWrittenInTheirTextForm()
{
    QDomDocument doc(QStringLiteral("show"));
    QDomElement element = doc.createElement(QStringLiteral("effect"));
    EffectSupport::append(doc, element, EffectKey::BgColor, VelaColor(0.25, 0.5));
    EffectSupport::append(doc, element, EffectKey::Color, VelaColor());
    QCOMPARE(element.firstChildElement(QStringLiteral("bgcolor")).text(),
             QStringLiteral("aYxy;1;0;65535;1.000000;0.250000;0.500000"));
    QCOMPARE(element.firstChildElement(QStringLiteral("color")).text(), QString());
}

void EffectSupportTest::screenColoursAreKeptUntilTheColourChanges()
{
    ScreenColor screen;
    QCOMPARE(screen.of(VelaColor()), QColor(Qt::black));
    const VelaColor white(QStringLiteral("aYxy;1;0;65535;0.5;0.3805;0.3768"));
    VelaColor faint = white;
    faint.setAlphaF(0.5);
    for (const VelaColor& color : {white, VelaColor(Qt::red), white, faint, VelaColor()}) {
        QCOMPARE(screen.of(color), toDisplayQColor(color));
        QCOMPARE(screen.of(color), toDisplayQColor(color));
    }
}

QTEST_GUILESS_MAIN(EffectSupportTest)
#include "EffectSupportTest.moc"
