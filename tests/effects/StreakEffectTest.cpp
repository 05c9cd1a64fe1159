#include "effects/StreakEffect.h"

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

class StreakEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void hasItsDefaults();
    void propertiesReadAndWrite();
    void pulseAndTails_data();
    void pulseAndTails();
    void wrapsRoundTheEnds_data();
    void wrapsRoundTheEnds();
    void standsWhenAsWideAsTheGroup_data();
    void standsWhenAsWideAsTheGroup();
    void transparentSides_data();
    void transparentSides();
    void keepsTheAlphaOfItsColours();
    void transparencyScalesBoth();
    void theScreenMixesAtEightBits();
    void groupsOfOtherKindsHaveOnePosition();
    void agreesWithThePlainSteps_data();
    void agreesWithThePlainSteps();
    void missingGroupsPaintNothing_data();
    void missingGroupsPaintNothing();
    void oddTimesStandStill_data();
    void oddTimesStandStill();
    void hugeLengthsDoNoHarm_data();
    void hugeLengthsDoNoHarm();
    void theTimeRuleResolvesThenTells();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void readingTellsTheTime();
    void readingAColourCompiles();
};

namespace {

QString zeros()
{
    return QStringLiteral("0 0 0 0 0 0 0 0 0 0");
}

/// The stated steps, one row at a time.
class PlainStreak
{
public:
    PlainStreak(const StreakEffect& effect, double positions)
        : m_effect(effect)
        , m_positions(positions)
    {}
    void row(int i, qint64 elapsed, VelaColor* out, QColor* qOut) const
    {
        const StreakEffect& e = m_effect;
        const VelaColor cFg = e.fgColor();
        const VelaColor cBg = e.bgColor();
        const QColor qFg = toDisplayQColor(cFg);
        const QColor qBg = toDisplayQColor(cBg);
        const quint32 m = static_cast<quint32>(e.cycleSeconds() * 1000.0);
        const quint32 p = m == 0 ? 0 : static_cast<quint32>(elapsed) % m;
        double h = 0.0;
        if (m != 0) {
            h = e.wrap() ? p * m_positions / m : (m_positions - e.width() + 1.0) * p / m;
        }
        qint64 idx = e.reverse() ? static_cast<int>(m_positions - 1.0 - i) : i;
        if (e.wrap()) {
            const double r = e.rTail();
            const quint32 sum = e.fTail() + e.width();
            if (r > h && idx >= static_cast<int>(m_positions - (r - h))) {
                idx = static_cast<int>(static_cast<double>(idx) - m_positions);
            } else if (idx <= static_cast<int>(sum - (m_positions - h)) &&
                       h > m_positions - e.width() - e.fTail()) {
                idx = static_cast<int>(static_cast<double>(idx) + m_positions);
            }
        }
        const int head = static_cast<int>(h);
        const int width = static_cast<int>(e.width());
        const int fTail = static_cast<int>(e.fTail());
        const int rTail = static_cast<int>(e.rTail());
        if (head <= idx && idx < head + width) {
            *out = cFg;
            *qOut = qFg;
            if (e.fgTransparency()) {
                out->setAlphaF(0.0);
            }
            qOut->setAlphaF(out->alphaF());
        } else if (head - rTail < idx && idx < head) {
            tail(1.0 - static_cast<double>(head - idx) / rTail, out, qOut);
        } else if (head + width <= idx && idx < head + fTail + width) {
            tail(1.0 - static_cast<double>(idx - head - width) / fTail, out, qOut);
        } else {
            *out = cBg;
            *qOut = qBg;
            if (e.bgTransparency()) {
                out->setAlphaF(0.0);
            }
            qOut->setAlphaF(out->alphaF());
        }
        if (e.transparency() > 0.0) {
            const double g = 1.0 - e.transparency();
            out->setAlphaF(out->alphaF() * g);
            qOut->setAlphaF(qOut->alphaF() * g);
        }
    }

private:
    void tail(double f, VelaColor* out, QColor* qOut) const
    {
        double k = 1.0;
        if (m_effect.fgTransparency() && m_effect.bgTransparency()) {
            k = 0.0;
        } else if (m_effect.bgTransparency()) {
            k = f;
        } else if (m_effect.fgTransparency()) {
            k = 1.0 - f;
        }
        *out = interpolate(m_effect.fgColor(), m_effect.bgColor(), 1.0 - f);
        out->setAlphaF(out->alphaF() * k);
        VelaColor v = interpolate(VelaColor(toDisplayQColor(m_effect.fgColor())),
                                  VelaColor(toDisplayQColor(m_effect.bgColor())), 1.0 - f);
        v.setAlphaF(out->alphaF());
        *qOut = toDisplayQColor(v);
    }

    const StreakEffect& m_effect;
    double m_positions;
};

} // namespace

void StreakEffectTest::hasItsDefaults()
{
    StreakEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Streak"));
    QCOMPARE(effect.typeId(), 11);
    QCOMPARE(effect.cycleTime(), 10000U);
    QCOMPARE(effect.fgColor(), VelaColor(Qt::green));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::black));
    QVERIFY(!effect.fgTransparency() && !effect.bgTransparency());
    QCOMPARE(effect.width(), 4U);
    QCOMPARE(effect.fTail(), 0U);
    QCOMPARE(effect.rTail(), 0U);
    QVERIFY(!effect.reverse() && !effect.wrap());
    QCOMPARE(effect.cycleSeconds(), 10.0);
    QVERIFY(!effect.compiled());
    QVERIFY(effect.compile());
    QVERIFY(effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void StreakEffectTest::propertiesReadAndWrite()
{
    const QMetaObject& meta = StreakEffect::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        names << QString::fromLatin1(meta.property(i).name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')),
             QStringLiteral("m_fgColor m_bgColor m_fgTransparency m_bgTransparency m_width m_fTail "
                            "m_rTail m_reverse m_wrap m_cycleTime"));
    StreakEffect effect(nullptr, 5, nullptr);
    QVERIFY(effect.setProperty("m_fgColor", QVariant::fromValue(VelaColor(Qt::blue))));
    QVERIFY(effect.setProperty("m_bgColor", QVariant::fromValue(VelaColor(Qt::cyan))));
    QVERIFY(effect.setProperty("m_fgTransparency", true));
    QVERIFY(effect.setProperty("m_bgTransparency", true));
    QVERIFY(effect.setProperty("m_width", 7U));
    QVERIFY(effect.setProperty("m_fTail", 8U));
    QVERIFY(effect.setProperty("m_rTail", 9U));
    QVERIFY(effect.setProperty("m_reverse", true));
    QVERIFY(effect.setProperty("m_wrap", true));
    QVERIFY(effect.setProperty("m_cycleTime", 2.5));
    QCOMPARE(effect.fgColor(), VelaColor(Qt::blue));
    QCOMPARE(effect.bgColor(), VelaColor(Qt::cyan));
    QVERIFY(effect.fgTransparency() && effect.bgTransparency());
    QCOMPARE(effect.width(), 7U);
    QCOMPARE(effect.fTail(), 8U);
    QCOMPARE(effect.rTail(), 9U);
    QVERIFY(effect.reverse() && effect.wrap());
    QCOMPARE(effect.property("m_cycleTime").toDouble(), 2.5);
    QVERIFY(!effect.compiled()); // setters only store
}

void StreakEffectTest::pulseAndTails_data()
{
    // Ten positions in ten seconds: the head goes 10 - width + 1 positions.
    QTest::addColumn<uint>("width");
    QTest::addColumn<uint>("fTail");
    QTest::addColumn<uint>("rTail");
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("greens");
    const auto row = [](const char* name, uint width, uint fTail, uint rTail, bool reverse,
                        qint64 ms, const char* greens) {
        QTest::newRow(name) << width << fTail << rTail << reverse << ms
                            << QString::fromLatin1(greens);
    };
    row("start", 4, 0, 0, false, 0, "1 1 1 1 0 0 0 0 0 0");
    row("half way, at 3.5", 4, 0, 0, false, 5000, "0 0 0 1 1 1 1 0 0 0");
    row("end, at 6.9993", 4, 0, 0, false, 9999, "0 0 0 0 0 0 1 1 1 1");
    row("start again", 4, 0, 0, false, 10000, "1 1 1 1 0 0 0 0 0 0");
    row("elapsed has 32 bits", 4, 0, 0, false, qint64(4294967296) + 5000, "0 0 0 1 1 1 1 0 0 0");
    row("the first row ahead is full", 4, 4, 0, false, 5000, "0 0 0 1 1 1 1 1 0.75 0.5");
    row("a tail of one ahead is a full row", 4, 1, 0, false, 5000, "0 0 0 1 1 1 1 1 0 0");
    row("the reverse tail leaves out its end", 4, 0, 3, false, 5000,
        "0 0.333333 0.666667 1 1 1 1 0 0 0");
    row("the reverse tail reaches the first row", 4, 0, 4, false, 5000,
        "0.25 0.5 0.75 1 1 1 1 0 0 0");
    row("a tail of one behind shows nothing", 4, 0, 1, false, 5000, "0 0 0 1 1 1 1 0 0 0");
    row("both tails", 4, 2, 2, false, 5000, "0 0 0.5 1 1 1 1 1 0.5 0");
    row("reverse starts at the last row", 4, 0, 0, true, 0, "0 0 0 0 0 0 1 1 1 1");
    row("reverse with both tails", 4, 2, 2, true, 5000, "0 0.5 1 1 1 1 1 0.5 0 0");
    row("no width", 0, 0, 0, false, 5000, "0 0 0 0 0 0 0 0 0 0");
    row("no width, at 5.5, but tails", 0, 2, 2, false, 5000, "0 0 0 0 0.5 1 0.5 0 0 0");
}

void StreakEffectTest::pulseAndTails()
{
    QFETCH(const uint, width);
    QFETCH(const uint, fTail);
    QFETCH(const uint, rTail);
    QFETCH(const bool, reverse);
    QFETCH(const qint64, ms);
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setWidth(width);
    effect.setFTail(fTail);
    effect.setRTail(rTail);
    effect.setReverse(reverse);
    stage.run(effect, ms);
    QTEST(stage.greens(), "greens");
    QVERIFY(stage.mix(11).isBlack());
}

void StreakEffectTest::wrapsRoundTheEnds_data()
{
    // Ten positions in ten seconds: the head is at ms / 1000.
    QTest::addColumn<uint>("width");
    QTest::addColumn<uint>("fTail");
    QTest::addColumn<uint>("rTail");
    QTest::addColumn<bool>("reverse");
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<QString>("greens");
    const auto row = [](const char* name, uint width, uint fTail, uint rTail, bool reverse,
                        qint64 ms, const char* greens) {
        QTest::newRow(name) << width << fTail << rTail << reverse << ms
                            << QString::fromLatin1(greens);
    };
    row("start", 4, 0, 0, false, 0, "1 1 1 1 0 0 0 0 0 0");
    row("the pulse comes in anew", 4, 0, 0, false, 8500, "1 1 0 0 0 0 0 0 1 1");
    row("the last moment", 4, 0, 0, false, 9999, "1 1 1 0 0 0 0 0 0 1");
    row("the forward tail comes in anew", 4, 2, 0, false, 8500, "1 1 1 0.5 0 0 0 0 1 1");
    row("not as long as the head is only level", 4, 2, 0, false, 4000, "0 0 0 0 1 1 1 1 1 0.5");
    row("the reverse tail still leaves", 4, 0, 4, false, 1500, "0.75 1 1 1 1 0 0 0 0.25 0.5");
    row("the reverse tail is tried first", 8, 0, 4, false, 3500, "1 0 0.75 1 1 1 1 1 1 0");
    row("reverse", 4, 0, 0, true, 8500, "1 1 0 0 0 0 0 0 1 1");
    row("reverse with both tails", 4, 2, 4, true, 1500, "0.5 0.25 0 0.5 1 1 1 1 1 0.75");
    // 4294967295 + 2 is 1 in 32 bits: row 0 alone comes round, as place 10, and the rest of the
    // near end is not ahead of the pulse.
    row("the lengths are added in 32 bits", 2, 4294967295U, 0, false, 8500, "1 0 0 0 0 0 0 0 1 1");
    row("no width", 0, 0, 0, false, 8500, "0 0 0 0 0 0 0 0 0 0");
}

void StreakEffectTest::wrapsRoundTheEnds()
{
    QFETCH(const uint, width);
    QFETCH(const uint, fTail);
    QFETCH(const uint, rTail);
    QFETCH(const bool, reverse);
    QFETCH(const qint64, ms);
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setWrap(true);
    effect.setWidth(width);
    effect.setFTail(fTail);
    effect.setRTail(rTail);
    effect.setReverse(reverse);
    stage.run(effect, ms);
    QTEST(stage.greens(), "greens");
}

void StreakEffectTest::standsWhenAsWideAsTheGroup_data()
{
    QTest::addColumn<uint>("width");
    QTest::newRow("as wide") << 10U;
    QTest::newRow("one more: does not move at all") << 11U;
    QTest::newRow("two more: moves backwards") << 12U;
    QTest::newRow("far more") << 100U;
}

void StreakEffectTest::standsWhenAsWideAsTheGroup()
{
    QFETCH(const uint, width);
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setWidth(width);
    effect.setRTail(5);
    effect.setFTail(5);
    for (const qint64 ms : {0, 2500, 5000, 9999}) {
        stage.run(effect, ms);
        QCOMPARE(stage.greens(), QStringLiteral("1 1 1 1 1 1 1 1 1 1"));
    }
}

void StreakEffectTest::transparentSides_data()
{
    // Over blue, at the head's 3.5 with a pulse of 4 and tails of 4. A mix that is green at f and
    // has the alpha k leaves f * k of green and 1 - k of blue.
    QTest::addColumn<bool>("fg");
    QTest::addColumn<bool>("bg");
    QTest::addColumn<QString>("greens");
    QTest::addColumn<QString>("blues");
    QTest::newRow("neither") << false << false << QStringLiteral("0.25 0.5 0.75 1 1 1 1 1 0.75 0.5")
                             << zeros();
    QTest::newRow("background") << false << true
                                << QStringLiteral("0.0625 0.25 0.5625 1 1 1 1 1 0.5625 0.25")
                                << QStringLiteral("0.75 0.5 0.25 0 0 0 0 0 0.25 0.5");
    QTest::newRow("pulse") << true << false
                           << QStringLiteral("0.1875 0.25 0.1875 0 0 0 0 0 0.1875 0.25")
                           << QStringLiteral("0.25 0.5 0.75 1 1 1 1 1 0.75 0.5");
    QTest::newRow("both") << true << true << zeros() << QStringLiteral("1 1 1 1 1 1 1 1 1 1");
}

void StreakEffectTest::transparentSides()
{
    QFETCH(const bool, fg);
    QFETCH(const bool, bg);
    QFETCH(const QString, greens);
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setFTail(4);
    effect.setRTail(4);
    effect.setFgTransparency(fg);
    effect.setBgTransparency(bg);
    stage.runOverBlue(effect, 5000);
    QCOMPARE(stage.greens(), greens);
    QTEST(stage.blues(), "blues");
    const QStringList expected = greens.split(QLatin1Char(' '));
    for (quint64 uid = 1; uid <= 10; ++uid) { // the screen shows the same, at its 8 bits
        const double green = expected.at(static_cast<int>(uid) - 1).toDouble();
        QVERIFY(std::abs(stage.sim(uid).green() - green * 255.0) < 1.5);
    }
    QCOMPARE(effect.fgColor(), VelaColor(Qt::green)); // the settings stay opaque
    QCOMPARE(effect.bgColor(), VelaColor(Qt::black));
}

void StreakEffectTest::keepsTheAlphaOfItsColours()
{
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    VelaColor half(Qt::green);
    half.setAlphaF(0.5);
    VelaColor quarter(Qt::red);
    quarter.setAlphaF(0.25);
    effect.setFgColor(half);
    effect.setBgColor(quarter);
    stage.runOverBlue(effect, 0);
    QCOMPARE(stage.greens(), QStringLiteral("0.5 0.5 0.5 0.5 0 0 0 0 0 0"));
    QCOMPARE(stage.blues(), QStringLiteral("0.5 0.5 0.5 0.5 0.75 0.75 0.75 0.75 0.75 0.75"));
}

void StreakEffectTest::transparencyScalesBoth()
{
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setFTail(2);
    effect.setTransparency(0.5);
    stage.runOverBlue(effect, 0);
    QCOMPARE(stage.greens(), QStringLiteral("0.5 0.5 0.5 0.5 0.5 0.25 0 0 0 0"));
    QCOMPARE(stage.blues(), QStringLiteral("0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5 0.5"));
    QCOMPARE(stage.shownGreens(), QStringLiteral("128 128 128 128 128 64 0 0 0 0"));
    for (const double t : {1.0, 2.0, std::numeric_limits<double>::infinity()}) {
        effect.setTransparency(t);
        stage.runOverBlue(effect, 0);
        QCOMPARE(stage.greens(), zeros());
        QCOMPARE(stage.blues(), QStringLiteral("1 1 1 1 1 1 1 1 1 1"));
        QCOMPARE(stage.shownGreens(), zeros());
    }
}

void StreakEffectTest::theScreenMixesAtEightBits()
{
    // 0x8080 and 0x80ff at 16 bits look alike on the screen: 128 of 255 in both.
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setFTail(4);
    effect.setFgColor(VelaColor(0, 0x80FF, 0, 65535));
    stage.run(effect, 0);
    QCOMPARE(stage.shownGreens(), QStringLiteral("128 128 128 128 128 96 64 32 0 0"));
    QVERIFY(std::abs(stage.mix(6).greenF() - 0.75 * 0x80FF / 65535.0) < 1e-9);

    const VelaColor white(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")); // 4000 K
    QCOMPARE(white.spec(), VelaColor::Yxy);
    effect.setFgColor(white);
    stage.run(effect, 0);
    const QColor shown = toDisplayQColor(white);
    QCOMPARE(stage.sim(1), shown);
    QCOMPARE(stage.mix(1), white);
    QVERIFY(std::abs(stage.sim(7).red() - shown.red() / 2) <= 1);
    QVERIFY(std::abs(stage.sim(7).blue() - shown.blue() / 2) <= 1);
    QCOMPARE(stage.mix(7).spec(), VelaColor::Nchannel);
}

void StreakEffectTest::groupsOfOtherKindsHaveOnePosition()
{
    LongStage stage;
    StreakEffect effect(stage.model(), 0x202, nullptr);
    effect.compile();
    effect.setWidth(1);
    stage.run(effect, 5000);
    QCOMPARE(stage.greens(), QStringLiteral("1 1 1 0 0 0 0 0 0 0"));
    effect.setWrap(true);
    stage.run(effect, 0);
    QCOMPARE(stage.greens(), QStringLiteral("1 1 1 0 0 0 0 0 0 0"));
    stage.run(effect, 5000); // at 0.5 the only row counts as the next one, which is not reached
    QCOMPARE(stage.greens(), zeros());
    effect.setGid(0x201); // the nested chase has a row of two lights at its end
    effect.compile();
    stage.run(effect, 9500); // at 10.45 of 11
    QCOMPARE(stage.greens(), zeros());
    QCOMPARE(stage.mix(11), VelaColor(Qt::green));
    QCOMPARE(stage.mix(12), VelaColor(Qt::green));
}

void StreakEffectTest::agreesWithThePlainSteps_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("chase") << quint64(0x200);
    QTest::newRow("nested chase") << quint64(0x201);
    QTest::newRow("synchronized") << quint64(0x202);
    QTest::newRow("leaf") << quint64(12);
}

void StreakEffectTest::agreesWithThePlainSteps()
{
    QFETCH(const quint64, gid);
    LongStage stage;
    Canvas canvas;
    StreakEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    const QVector<QVector<quint64>> rows = LongStage::rowsOf(gid);
    std::mt19937 random(20240611);
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
        effect.setFgTransparency(below(3) == 0);
        effect.setBgTransparency(below(3) == 0);
        effect.setWidth(static_cast<quint32>(below(14)));
        effect.setFTail(static_cast<quint32>(below(2) * below(14)));
        effect.setRTail(static_cast<quint32>(below(2) * below(14)));
        effect.setReverse(below(2) == 0);
        effect.setWrap(below(2) == 0);
        effect.setCycleTime(below(10) == 0 ? 0.0 : 0.1 + below(5000) / 970.0);
        const double transparencies[] = {0.0, below(1000) / 999.0, 1.0};
        effect.setTransparency(transparencies[below(3)]);
        const int ms = below(100000);
        stage.run(effect, ms);
        const PlainStreak plain(effect, rows.size());
        for (int row = 0; row < rows.size(); ++row) {
            VelaColor out;
            QColor qOut;
            plain.row(row, ms, &out, &qOut);
            canvas.paint(out, qOut);
            for (const quint64 uid : rows.at(row)) {
                QVERIFY2(isSame(stage.mix(uid), canvas.color()), qPrintable(textOf(effect)));
                QCOMPARE(stage.sim(uid), canvas.screen());
            }
        }
    }
}

void StreakEffectTest::missingGroupsPaintNothing_data()
{
    QTest::addColumn<quint64>("gid");
    QTest::newRow("no lights") << quint64(0x203);
    QTest::newRow("leaf without its light") << quint64(0x204);
    QTest::newRow("no such group") << quint64(0x999);
    QTest::newRow("no group") << quint64(Effect::kNoGid);
}

void StreakEffectTest::missingGroupsPaintNothing()
{
    QFETCH(const quint64, gid);
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setGid(gid);
    effect.compile();
    effect.setWidth(100);
    stage.run(effect, 100);
    for (quint64 uid = 1; uid <= 12; ++uid) {
        QVERIFY(stage.mix(uid).isBlack());
        QCOMPARE(stage.sim(uid), QColor(Qt::black));
    }
}

void StreakEffectTest::oddTimesStandStill_data()
{
    QTest::addColumn<double>("seconds");
    QTest::newRow("zero") << 0.0;
    QTest::newRow("half a millisecond") << 0.0005;
    QTest::newRow("negative") << -5.0;
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
    QTest::newRow("beyond 32 bits") << 1e300;
}

void StreakEffectTest::oddTimesStandStill()
{
    QFETCH(const double, seconds);
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setCycleTime(seconds);
    QCOMPARE(effect.cycleTime(), 0U);
    for (const bool wrap : {false, true}) {
        effect.setWrap(wrap);
        stage.run(effect, 12345);
        QCOMPARE(stage.greens(), QStringLiteral("1 1 1 1 0 0 0 0 0 0"));
    }
}

void StreakEffectTest::hugeLengthsDoNoHarm_data()
{
    QTest::addColumn<uint>("width");
    QTest::addColumn<uint>("fTail");
    QTest::addColumn<uint>("rTail");
    QTest::addColumn<QString>("greens"); // at five seconds, not wrapping
    const uint huge = 4294967295U;
    const QString full = QStringLiteral("1 1 1 1 1 1 1 1 1 1");
    // (10 - 4294967295 + 1) / 2 lies within 32 bits, and from there the pulse covers everything.
    QTest::newRow("width") << huge << 0U << 0U << full;
    QTest::newRow("forward tail") << 4U << huge << 0U << QStringLiteral("0 0 0 1 1 1 1 1 1 1");
    QTest::newRow("reverse tail") << 4U << 0U << huge << QStringLiteral("1 1 1 1 1 1 1 0 0 0");
    QTest::newRow("all") << huge << huge << huge << full;
}

void StreakEffectTest::hugeLengthsDoNoHarm()
{
    QFETCH(const uint, width);
    QFETCH(const uint, fTail);
    QFETCH(const uint, rTail);
    LongStage stage;
    StreakEffect effect(stage.model(), 0x200, nullptr);
    effect.compile();
    effect.setWidth(width);
    effect.setFTail(fTail);
    effect.setRTail(rTail);
    stage.run(effect, 5000);
    QTEST(stage.greens(), "greens");
    effect.setWrap(true);
    for (const qint64 ms : {0, 1, 4999, 9999}) {
        stage.run(effect, ms);
        for (quint64 uid = 1; uid <= 10; ++uid) {
            QVERIFY(stage.mix(uid).isValid());
        }
    }
}

void StreakEffectTest::theTimeRuleResolvesThenTells()
{
    StreakEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setCycleTime(2.0019);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2001U);
    effect.setCycleTime(2.0019); // the same value, too
    QCOMPARE(told.count(), 2);
    effect.setFgColor(Qt::blue);
    effect.setWidth(9);
    effect.setWrap(true);
    QCOMPARE(told.count(), 2);

    MetaEffect root(nullptr, 0, nullptr);
    StreakEffect child(nullptr, 5, nullptr);
    child.setEndType(Effect::EndCycles);
    child.setEndCycleCount(3);
    root.addEffect(&child);
    child.setCycleTime(1.5);
    QCOMPARE(child.end(), 4500U);
}

void StreakEffectTest::isWrittenByteForByte()
{
    StreakEffect effect(nullptr, 7, nullptr);
    effect.setFTail(3);
    effect.setRTail(4294967295U);
    effect.setBgTransparency(true);
    effect.setWrap(true);
    effect.setCycleTime(1.23456789);
    QCOMPARE(textOf(effect),
             QStringLiteral("<effect>\n") +
                 TestShow::baseText(QStringLiteral("Streak"), QStringLiteral("Unnamed Effect"), 7) +
                 QStringLiteral("<fgcolor>aRgb;1;0;#ffff0000ffff0000</fgcolor>\n"
                                "<bgcolor>aRgb;1;0;#ffff000000000000</bgcolor>\n"
                                "<width>4</width>\n"
                                "<fwdtail>3</fwdtail>\n"
                                "<revtail>4294967295</revtail>\n"
                                "<reverse>0</reverse>\n"
                                "<cycletime>1.23457</cycletime>\n"
                                "<fgtrans>0</fgtrans>\n"
                                "<bgtrans>1</bgtrans>\n"
                                "<wrap>1</wrap>\n"
                                "</effect>\n"));
}

void StreakEffectTest::readsItsKeys_data()
{
    // The keys of the first column; then every setting as text, in the order of a file.
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("settings");
    const auto row = [](const char* name, const char* keys, const char* settings) {
        QTest::newRow(name) << QString::fromLatin1(keys) << QString::fromLatin1(settings);
    };
    const char* const defaults = "#00ff00 #000000 4 0 0 0 10 0 0 0";
    row("missing", "", defaults);
    row("all",
        "<fgcolor>blue</fgcolor><bgcolor>red</bgcolor><width>5</width><fwdtail>6</fwdtail>"
        "<revtail>7</revtail><reverse>1</reverse><cycletime>2.5</cycletime><fgtrans>1</fgtrans>"
        "<bgtrans>-3</bgtrans><wrap>2</wrap>",
        "#0000ff #ff0000 5 6 7 1 2.5 1 1 1");
    row("any order", "<wrap>1</wrap><width>5</width><fgcolor>blue</fgcolor>",
        "#0000ff #000000 5 0 0 0 10 0 0 1");
    row("empty",
        "<fgcolor/><bgcolor/><width/><fwdtail/><revtail/><reverse/><cycletime/><fgtrans/>"
        "<bgtrans/><wrap/>",
        defaults);
    row("unreadable ones fall back",
        "<fgcolor>blue</fgcolor><fgcolor>aRgb;</fgcolor><bgcolor>red</bgcolor>"
        "<bgcolor>aRgb;</bgcolor><width>5</width><width>-1</width><fwdtail>6</fwdtail>"
        "<fwdtail>1.5</fwdtail><revtail>7</revtail><revtail>x</revtail><reverse>1</reverse>"
        "<reverse>true</reverse><cycletime>3</cycletime><cycletime>long</cycletime>"
        "<fgtrans>1</fgtrans><fgtrans>1.0</fgtrans><bgtrans>1</bgtrans><bgtrans>y</bgtrans>"
        "<wrap>1</wrap><wrap>on</wrap>",
        defaults);
    row("zeros", "<width>0</width><cycletime>0</cycletime>", "#00ff00 #000000 0 0 0 0 0 0 0 0");
}

void StreakEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    QDomElement element = elementOf(keys);
    const StreakEffect effect(nullptr, 5, &element);
    const QString settings = QStringLiteral("%1 %2 %3 %4 %5 %6 %7 %8 %9 %10")
                                 .arg(effect.fgColor().name(), effect.bgColor().name())
                                 .arg(effect.width())
                                 .arg(effect.fTail())
                                 .arg(effect.rTail())
                                 .arg(int(effect.reverse()))
                                 .arg(effect.cycleSeconds())
                                 .arg(int(effect.fgTransparency()))
                                 .arg(int(effect.bgTransparency()))
                                 .arg(int(effect.wrap()));
    QTEST(settings, "settings");
}

void StreakEffectTest::readingTellsTheTime()
{
    StreakEffect effect(nullptr, 5, nullptr);
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

void StreakEffectTest::readingAColourCompiles()
{
    for (const char* const keys :
         {"<fgcolor>blue</fgcolor>", "<bgcolor>blue</bgcolor>", "<fgcolor>aRgb;</fgcolor>"}) {
        QDomElement element = elementOf(QString::fromLatin1(keys));
        QVERIFY(StreakEffect(nullptr, 5, &element).compiled());
    }
    QDomElement other = elementOf(QStringLiteral("<width>5</width><wrap>1</wrap>"));
    QVERIFY(!StreakEffect(nullptr, 5, &other).compiled());
}

QTEST_GUILESS_MAIN(StreakEffectTest)
#include "StreakEffectTest.moc"
