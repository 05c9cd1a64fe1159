#include "effects/SweepEffect.h"

#include "color/DisplayColor.h"
#include "engine/MetaEffect.h"
#include "resources/Resources.h"
#include "tests/effects/LongStage.h"

#include <QMetaProperty>
#include <QSignalSpy>

#include <limits>
#include <random>

using TestShow::elementOf;
using TestShow::textOf;

class SweepEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void hasItsDefaults();
    void propertiesReadAndWrite();
    void theEdgeMovesOverTheRows_data();
    void theEdgeMovesOverTheRows();
    void oneRowIsEdgeThenPassed_data();
    void oneRowIsEdgeThenPassed();
    void transparentSides_data();
    void transparentSides();
    void theAlphaOfTheColoursCountsOnTheEdgeOnly();
    void transparencyScalesBoth();
    void theScreenMixesAtEightBits();
    void agreesWithThePlainSteps_data();
    void agreesWithThePlainSteps();
    void missingGroupsPaintNothing_data();
    void missingGroupsPaintNothing();
    void oddTimesStandBeforeTheFirstRow_data();
    void oddTimesStandBeforeTheFirstRow();
    void theTimeRuleResolvesThenTells();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void readingTellsTheTime();
    void readingAColourCompiles();
};

namespace {

/// The stated steps, one row at a time.
void plainRow(const SweepEffect& e, double positions, int i, qint64 elapsed, VelaColor* out,
              QColor* qOut)
{
    const VelaColor cFg = e.fgColor();
    const VelaColor cBg = e.bgColor();
    const QColor qFg = toDisplayQColor(cFg);
    const QColor qBg = toDisplayQColor(cBg);
    const quint32 m = static_cast<quint32>(e.cycleSeconds() * 1000.0);
    const double edgePosition =
        m == 0 ? 0.0 : static_cast<quint32>(elapsed) % m * (positions + 1.0) / m;
    const int idx = e.reverse() ? static_cast<int>(positions - 1.0 - i) : i;
    const int edge = static_cast<int>(edgePosition);
    if (idx < edge) {
        *out = cFg;
        out->setAlphaF(e.fgTransparent() ? 0.0 : 1.0);
        *qOut = qFg;
        qOut->setAlphaF(out->alphaF());
    } else if (idx > edge) {
        *out = cBg;
        out->setAlphaF(e.bgTransparent() ? 0.0 : 1.0);
        *qOut = qBg;
        qOut->setAlphaF(out->alphaF());
    } else {
        const double t = 1.0 - (edgePosition - idx);
        double k = 1.0;
        if (e.fgTransparent() && e.bgTransparent()) {
            k = 0.0;
        } else if (e.bgTransparent()) {
            k = 1.0 - t;
        } else if (e.fgTransparent()) {
            k = t;
        }
        *out = interpolate(cFg, cBg, t);
        out->setAlphaF(out->alphaF() * k);
        VelaColor v = interpolate(VelaColor(qFg), VelaColor(qBg), t);
        v.setAlphaF(out->alphaF());
        *qOut = toDisplayQColor(v);
    }
    if (e.transparency() > 0.0) {
        const double g = 1.0 - e.transparency();
        out->setAlphaF(out->alphaF() * g);
        qOut->setAlphaF(qOut->alphaF() * g);
    }
}

} // namespace

void SweepEffectTest::hasItsDefaults()
{
    SweepEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Sweep"));
    QCOMPARE(effect.typeId(), 12);
    QCOMPARE(effect.cycleTime(), 10000U);
    QCOMPARE(effect.fgColor(), VelaColor(Qt::green));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::black));
    QVERIFY(!effect.fgTransparent() && !effect.bgTransparent());
    QVERIFY(!effect.reverse());
    QCOMPARE(effect.cycleSeconds(), 10.0);
    QVERIFY(!effect.compiled());
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void SweepEffectTest::propertiesReadAndWrite()
{
    const QMetaObject& meta = SweepEffect::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        names << QString::fromLatin1(meta.property(i).name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("m_fgColor m_bgColor"));
    SweepEffect effect(nullptr, 5, nullptr);
    QVERIFY(effect.setProperty("m_fgColor", QVariant::fromValue(VelaColor(Qt::blue))));
    QVERIFY(effect.setProperty("m_bgColor", QVariant::fromValue(VelaColor(Qt::cyan))));
    effect.setFgTransparent(true);
    effect.setBgTransparent(true);
    effect.setReverse(true);
    QCOMPARE(effect.fgColor(), VelaColor(Qt::blue));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::cyan));
    QVERIFY(effect.fgTransparent() && effect.bgTransparent() && effect.reverse());
    QVERIFY(!effect.compiled()); // setters only store
}

void SweepEffectTest::theEdgeMovesOverTheRows_data()
{
    // Ten positions and one in eleven seconds: the edge is at ms / 1000.
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("greens");
    const auto row = [](const char* name, bool reverse, qint64 ms, const char* greens) {
        QTest::newRow(name) << reverse << ms << QString::fromLatin1(greens);
    };
    row("start", false, 0, "0 0 0 0 0 0 0 0 0 0");
    row("crossing the first row", false, 250, "0.25 0 0 0 0 0 0 0 0 0");
    row("on the fourth row", false, 3250, "1 1 1 0.25 0 0 0 0 0 0");
    row("further on the fourth row", false, 3750, "1 1 1 0.75 0 0 0 0 0 0");
    row("on the last row", false, 9500, "1 1 1 1 1 1 1 1 1 0.5");
    row("all behind", false, 10000, "1 1 1 1 1 1 1 1 1 1");
    row("the last moment", false, 10999, "1 1 1 1 1 1 1 1 1 1");
    row("start again", false, 11000, "0 0 0 0 0 0 0 0 0 0");
    row("elapsed has 32 bits", false, qint64(4294967296) + 3250, "1 1 1 0.25 0 0 0 0 0 0");
    row("reverse", true, 3250, "0 0 0 0 0 0 0.25 1 1 1");
    row("reverse, on the first row", true, 9500, "0.5 1 1 1 1 1 1 1 1 1");
}

void SweepEffectTest::theEdgeMovesOverTheRows()
{
    QFETCH(const bool, reverse);
    QFETCH(const qint64, ms);
    LongStage stage;
    SweepEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setCycleTime(11.0);
    effect.setReverse(reverse);
    stage.run(effect, ms);
    QTEST(stage.greens(), "greens");
    QVERIFY(stage.mix(11).isBlack());
}

void SweepEffectTest::oneRowIsEdgeThenPassed_data()
{
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<double>("green");
    QTest::newRow("start") << qint64(0) << 0.0;
    QTest::newRow("half way across") << qint64(500) << 0.5;
    QTest::newRow("nearly across") << qint64(999) << 0.999;
    QTest::newRow("passed") << qint64(1000) << 1.0;
    QTest::newRow("still passed") << qint64(1999) << 1.0;
    QTest::newRow("start again") << qint64(2000) << 0.0;
}

void SweepEffectTest::oneRowIsEdgeThenPassed()
{
    QFETCH(const qint64, ms);
    QFETCH(const double, green);
    LongStage stage;
    for (const quint64 gid : {quint64(0x202), quint64(2)}) {
        SweepEffect effect(stage.model(), gid, nullptr);
        effect.compile();
        effect.setCycleTime(2.0);
        for (const bool reverse : {false, true}) {
            effect.setReverse(reverse);
            stage.run(effect, ms);
            QVERIFY(std::abs(stage.mix(2).greenF() - green) < 1e-9);
            QVERIFY(stage.mix(4).isBlack());
        }
    }
}

void SweepEffectTest::transparentSides_data()
{
    // Over blue, with the edge at 3.25: a mix that is green at 0.25 and has the alpha k leaves
    // 0.25 * k of green and 1 - k of blue.
    QTest::addColumn<bool>("fg");
    QTest::addColumn<bool>("bg");
    QTest::addColumn<QString>("greens");
    QTest::addColumn<QString>("blues");
    const auto row = [](const char* name, bool fg, bool bg, const char* greens, const char* blues) {
        QTest::newRow(name) << fg << bg << QString::fromLatin1(greens)
                            << QString::fromLatin1(blues);
    };
    row("neither", false, false, "1 1 1 0.25 0 0 0 0 0 0", "0 0 0 0 0 0 0 0 0 0");
    row("ahead", false, true, "1 1 1 0.0625 0 0 0 0 0 0", "0 0 0 0.75 1 1 1 1 1 1");
    row("behind", true, false, "0 0 0 0.1875 0 0 0 0 0 0", "1 1 1 0.25 0 0 0 0 0 0");
    row("both", true, true, "0 0 0 0 0 0 0 0 0 0", "1 1 1 1 1 1 1 1 1 1");
}

void SweepEffectTest::transparentSides()
{
    QFETCH(const bool, fg);
    QFETCH(const bool, bg);
    QFETCH(const QString, greens);
    LongStage stage;
    SweepEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setCycleTime(11.0);
    effect.setFgTransparent(fg);
    effect.setBgTransparent(bg);
    stage.runOverBlue(effect, 3250);
    QCOMPARE(stage.greens(), greens);
    QTEST(stage.blues(), "blues");
    const QStringList expected = greens.split(QLatin1Char(' '));
    for (quint64 uid = 1; uid <= 10; ++uid) {
        const double green = expected.at(static_cast<int>(uid) - 1).toDouble();
        QVERIFY(std::abs(stage.sim(uid).green() - green * 255.0) < 1.5);
    }
}

void SweepEffectTest::theAlphaOfTheColoursCountsOnTheEdgeOnly()
{
    LongStage stage;
    SweepEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setCycleTime(11.0);
    VelaColor half(Qt::green);
    half.setAlphaF(0.5);
    effect.setFgColor(half);
    VelaColor quarter(Qt::red);
    quarter.setAlphaF(0.25);
    effect.setBgColor(quarter);
    stage.runOverBlue(effect, 3500);
    // On the edge: alpha 0.5 * 0.5 + 0.5 * 0.25; green 0.5 * 0.5, times that alpha.
    QCOMPARE(stage.greens(), QStringLiteral("1 1 1 0.09375 0 0 0 0 0 0"));
    QCOMPARE(stage.blues(), QStringLiteral("0 0 0 0.625 0 0 0 0 0 0"));
    QCOMPARE(stage.sim(1), QColor(0, 255, 0));
    QCOMPARE(stage.sim(5), QColor(255, 0, 0));
}

void SweepEffectTest::transparencyScalesBoth()
{
    LongStage stage;
    SweepEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setCycleTime(11.0);
    effect.setTransparency(0.5);
    stage.runOverBlue(effect, 3250);
    QCOMPARE(stage.greens(), QStringLiteral("0.5 0.5 0.5 0.125 0 0 0 0 0 0"));
    QCOMPARE(stage.blues(), QStringLiteral("0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5"));
    QCOMPARE(stage.shownGreens(), QStringLiteral("128 128 128 32 0 0 0 0 0 0"));
    for (const double t : {1.0, 2.0, std::numeric_limits<double>::infinity()}) {
        effect.setTransparency(t);
        stage.runOverBlue(effect, 3250);
        QCOMPARE(stage.greens(), QStringLiteral("0 0 0 0 0 0 0 0 0 0"));
        QCOMPARE(stage.blues(), QStringLiteral("1 1 1 1 1 1 1 1 1 1"));
    }
}

void SweepEffectTest::theScreenMixesAtEightBits()
{
    LongStage stage;
    SweepEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setCycleTime(11.0);
    effect.setFgColor(VelaColor(0, 0x80FF, 0, 65535)); // 128 of 255 on the screen
    stage.run(effect, 3750);
    QCOMPARE(stage.shownGreens(), QStringLiteral("128 128 128 96 0 0 0 0 0 0"));
    QVERIFY(std::abs(stage.mix(4).greenF() - 0.75 * 0x80FF / 65535.0) < 1e-9);

    const VelaColor white(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")); // 4000 K
    effect.setFgColor(white);
    stage.run(effect, 3500);
    const QColor shown = toDisplayQColor(white);
    QCOMPARE(stage.sim(1), shown);
    QCOMPARE(stage.mix(1), white);
    QVERIFY(std::abs(stage.sim(4).red() - shown.red() / 2) <= 1);
    QCOMPARE(stage.mix(4).spec(), VelaColor::Nchannel);
}

void SweepEffectTest::agreesWithThePlainSteps_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("chase") << quint64(0x200);
    QTest::newRow("nested chase") << quint64(0x201);
    QTest::newRow("synchronized") << quint64(0x202);
    QTest::newRow("leaf") << quint64(12);
}

void SweepEffectTest::agreesWithThePlainSteps()
{
    QFETCH(const quint64, gid);
    LongStage stage;
    Canvas canvas;
    SweepEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    const QVector<QVector<quint64>> rows = LongStage::rowsOf(gid);
    std::mt19937 random(20240612);
    const auto below = [&random](int n) { return static_cast<int>(random() % unsigned(n)); };
    const auto color = [&] {
        VelaColor c(below(65536), below(65536), below(65536), below(2) == 0 ? 65535 : below(65536));
        if (below(8) == 0) {
            c.setHsv16(below(360), 65535, 65535, below(65536), below(3));
        } else if (below(8) == 0) {
            c.setYxyF(0.8, 0.31 + below(100) / 1000.0, 0.35, below(101) / 100.0, 0);
        }
        return c;
    };
    for (int i = 0; i < 1000; ++i) {
        effect.setFgColor(color());
        effect.setBgColor(color());
        effect.setFgTransparent(below(3) == 0);
        effect.setBgTransparent(below(3) == 0);
        effect.setReverse(below(2) == 0);
        effect.setCycleTime(below(10) == 0 ? 0.0 : 0.1 + below(5000) / 970.0);
        const double transparencies[] = {0.0, below(1000) / 999.0, 1.0};
        effect.setTransparency(transparencies[below(3)]);
        const int ms = below(100000);
        stage.run(effect, ms);
        for (int row = 0; row < rows.size(); ++row) {
            VelaColor out;
            QColor qOut;
            plainRow(effect, rows.size(), row, ms, &out, &qOut);
            canvas.paint(out, qOut);
            for (const quint64 uid : rows.at(row)) {
                QVERIFY2(isSame(stage.mix(uid), canvas.color()), qPrintable(textOf(effect)));
                QCOMPARE(stage.sim(uid), canvas.screen());
            }
        }
    }
}

void SweepEffectTest::missingGroupsPaintNothing_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("no lights") << quint64(0x203);
    QTest::newRow("leaf without its light") << quint64(0x204);
    QTest::newRow("no such group") << quint64(0x999);
    QTest::newRow("no group") << quint64(Effect::kNoGid);
}

void SweepEffectTest::missingGroupsPaintNothing()
{
    QFETCH(const quint64, gid);
    LongStage stage;
    SweepEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setGid(gid);
    effect.compile();
    stage.run(effect, 9999);
    for (quint64 uid = 1; uid <= 12; ++uid) {
        QVERIFY(stage.mix(uid).isBlack());
        QCOMPARE(stage.sim(uid), QColor(Qt::black));
    }
}

void SweepEffectTest::oddTimesStandBeforeTheFirstRow_data()
{
    QTest::addColumn<double>("seconds");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("half a millisecond") << 0.0005;
    QTest::newRow("negative") << -5.0;
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("beyond 32 bits") << 1e300;
}

void SweepEffectTest::oddTimesStandBeforeTheFirstRow()
{
    QFETCH(const double, seconds);
    LongStage stage;
    SweepEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setCycleTime(seconds);
    QCOMPARE(effect.cycleTime(), 0U);
    VelaColor half(Qt::red);
    half.setAlphaF(0.5);
    effect.setBgColor(half);
    stage.run(effect, 12345);
    QVERIFY(std::abs(stage.mix(1).redF() - 0.25) < 1e-9); // the edge, which keeps the alpha
    QVERIFY(std::abs(stage.mix(2).redF() - 1.0) < 1e-9);
    QCOMPARE(stage.greens(), QStringLiteral("0 0 0 0 0 0 0 0 0 0"));
}

void SweepEffectTest::theTimeRuleResolvesThenTells()
{
    SweepEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setCycleTime(2.0019);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2001U);
    effect.setCycleTime(2.0019); // the same value, too
    QCOMPARE(told.count(), 2);
    effect.setFgColor(Qt::blue);
    effect.setReverse(true);
    QCOMPARE(told.count(), 2);

    MetaEffect root(nullptr, 0, nullptr);
    SweepEffect child(nullptr, 5, nullptr);
    child.setEndType(Effect::EndCycles);
    child.setEndCycleCount(3);
    root.addEffect(&child);
    child.setCycleTime(1.5);
    QCOMPARE(child.end(), 4500U);
}

void SweepEffectTest::isWrittenByteForByte()
{
    SweepEffect effect(nullptr, 7, nullptr);
    effect.setReverse(true);
    effect.setBgTransparent(true);
    effect.setCycleTime(1.23456789);
    QCOMPARE(textOf(effect),
             QStringLiteral("<effect>\n") +
                 TestShow::baseText(QStringLiteral("Sweep"), QStringLiteral("Unnamed Effect"), 7) +
                 QStringLiteral("<fgcolor>aRgb;1;0;#ffff0000ffff0000</fgcolor>\n"
                                "<bgcolor>aRgb;1;0;#ffff000000000000</bgcolor>\n"
                                "<cycletime>1.23457</cycletime>\n"
                                "<reverse>1</reverse>\n"
                                "<fgtrans>0</fgtrans>\n"
                                "<bgtrans>1</bgtrans>\n"
                                "</effect>\n"));
}

void SweepEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("settings");
    const auto row = [](const char* name, const char* keys, const char* settings) {
        QTest::newRow(name) << QString::fromLatin1(keys) << QString::fromLatin1(settings);
    };
    const char* const defaults = "#00ff00 #000000 10 0 0 0";
    row("missing", "", defaults);
    row("all",
        "<fgcolor>blue</fgcolor><bgcolor>red</bgcolor><cycletime>2.5</cycletime>"
        "<reverse>1</reverse><fgtrans>7</fgtrans><bgtrans>-3</bgtrans>",
        "#0000ff #ff0000 2.5 1 1 1");
    row("those of a streak are not its own", "<width>9</width><wrap>1</wrap>", defaults);
    row("empty", "<fgcolor/><bgcolor/><cycletime/><reverse/><fgtrans/><bgtrans/>", defaults);
    row("unreadable ones fall back",
        "<fgcolor>blue</fgcolor><fgcolor>aRgb;</fgcolor><bgcolor>red</bgcolor>"
        "<bgcolor>aRgb;</bgcolor><cycletime>3</cycletime><cycletime>long</cycletime>"
        "<reverse>1</reverse><reverse>true</reverse><fgtrans>1</fgtrans><fgtrans>1.0</fgtrans>"
        "<bgtrans>1</bgtrans><bgtrans>y</bgtrans>",
        defaults);
    row("zero time", "<cycletime>0</cycletime>", "#00ff00 #000000 0 0 0 0");
}

void SweepEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const SweepEffect effect(nullptr, 5, &element);
    const QString settings = QStringLiteral("%1 %2 %3 %4 %5 %6")
                                 .arg(effect.fgColor().name(), effect.bgColor().name())
                                 .arg(effect.cycleSeconds())
                                 .arg(int(effect.reverse()))
                                 .arg(int(effect.fgTransparent()))
                                 .arg(int(effect.bgTransparent()));
    QTEST(settings, "settings");
}

void SweepEffectTest::readingTellsTheTime()
{
    SweepEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    QDomElement element =
        elementOf(QStringLiteral("<cycletime>2</cycletime><cycletime>no</cycletime>"));
    effect.fromXml(&element);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.first().first().toUInt(), 2000U);
    QCOMPARE(told.last().first().toUInt(), 10000U);
    effect.fromXml(nullptr);
    QCOMPARE(told.count(), 2);
}

void SweepEffectTest::readingAColourCompiles()
{
    for (const char* const keys :
         {"<fgcolor>blue</fgcolor>", "<bgcolor>blue</bgcolor>", "<bgcolor>aRgb;</bgcolor>"}) {
        QDomElement element = elementOf(QString::fromLatin1(keys));
        QVERIFY(SweepEffect(nullptr, 5, &element).compiled());
    }
    QDomElement other = elementOf(QStringLiteral("<reverse>1</reverse>"));
    QVERIFY(!SweepEffect(nullptr, 5, &other).compiled());
}

QTEST_GUILESS_MAIN(SweepEffectTest)
#include "SweepEffectTest.moc"
