#include "effects/CrossFadeEffect.h"

#include "color/DisplayColor.h"
#include "engine/MetaEffect.h"
#include "resources/Resources.h"
#include "tests/effects/TestStage.h"

#include <QMetaProperty>
#include <QSignalSpy>

using TestShow::elementOf;
using TestShow::textOf;

class CrossFadeEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void hasItsDefaults();
    void propertiesReadAndWrite();
    void paintsItsGroup_data();
    void paintsItsGroup();
    void fadesFromStartToEnd_data();
    void fadesFromStartToEnd();
    void beginsAnewWithoutAWayBack();
    void transparentEnds_data();
    void transparentEnds();
    void fadesInOverWhatLiesBeneath();
    void transparencyScalesTheMix();
    void timesBelowAMillisecondStandStill_data();
    void timesBelowAMillisecondStandStill();
    void theScreenMixesWhatIsShown();
    void theTimeRuleResolvesThenTells();
    void aTimelineFollowsTheTime();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
    void readingTheTimeTellsIt();
};

void CrossFadeEffectTest::hasItsDefaults()
{
    CrossFadeEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Cross Fade"));
    QCOMPARE(effect.typeId(), 2);
    QCOMPARE(effect.cycleTime(), 5000U);
    QCOMPARE(effect.startColor(), VelaColor(Qt::green));
    QCOMPARE(effect.endColor(), VelaColor(Qt::red));
    QCOMPARE(effect.startTrans(), false);
    QCOMPARE(effect.endTrans(), false);
    QCOMPARE(effect.time(), 5.0);
    QVERIFY(effect.compile());
    effect.setActive(true);
    effect.tick(0, 0);
}

void CrossFadeEffectTest::propertiesReadAndWrite()
{
    const QMetaObject& meta = CrossFadeEffect::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        names << QString::fromLatin1(meta.property(i).name());
    }
    QCOMPARE(names.join(QLatin1Char(' ')),
             QStringLiteral("m_startcolor m_endcolor m_starttrans m_endtrans m_time"));
    CrossFadeEffect effect(nullptr, 5, nullptr);
    QVERIFY(effect.setProperty("m_startcolor", QVariant::fromValue(VelaColor(Qt::blue))));
    QVERIFY(effect.setProperty("m_endcolor", QVariant::fromValue(VelaColor(Qt::cyan))));
    QVERIFY(effect.setProperty("m_starttrans", true));
    QVERIFY(effect.setProperty("m_endtrans", true));
    QVERIFY(effect.setProperty("m_time", 2.5));
    QCOMPARE(effect.startColor(), VelaColor(Qt::blue));
    QCOMPARE(effect.endColor(), VelaColor(Qt::cyan));
    QVERIFY(effect.startTrans() && effect.endTrans());
    QCOMPARE(effect.property("m_time").toDouble(), 2.5);
}

void CrossFadeEffectTest::paintsItsGroup_data()
{
    addGroupRows();
}

void CrossFadeEffectTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    CrossFadeEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    stage.run(effect, 1250);
    for (quint64 uid = 1; uid <= 8; ++uid) {
        if (painted.contains(uid)) {
            QCOMPARE(stage.mix(uid), mixed(0.25, 0.75, 0.0));
            QCOMPARE(stage.sim(uid), QColor(64, 191, 0));
        } else {
            QVERIFY(stage.mix(uid).isBlack());
            QCOMPARE(stage.sim(uid), QColor(Qt::black));
        }
    }
}

void CrossFadeEffectTest::fadesFromStartToEnd_data()
{
    QTest::addColumn<qint64>("ms");
    QTest::addColumn<double>("t");
    QTest::newRow("start") << qint64(0) << 0.0;
    QTest::newRow("a tenth") << qint64(500) << 0.1;
    QTest::newRow("half") << qint64(2500) << 0.5;
    QTest::newRow("just before the end") << qint64(4999) << 4999.0 / 5000.0;
    QTest::newRow("start again") << qint64(5000) << 0.0;
    QTest::newRow("third cycle") << qint64(11000) << 0.2;
    QTest::newRow("elapsed has 32 bits") << qint64(4294967296) + 1000 << 0.2;
}

void CrossFadeEffectTest::fadesFromStartToEnd()
{
    QFETCH(const qint64, ms);
    QFETCH(const double, t);
    TestStage stage;
    CrossFadeEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    stage.run(effect, ms);
    QCOMPARE(stage.mix(4), mixed(t, 1.0 - t, 0.0));
}

void CrossFadeEffectTest::beginsAnewWithoutAWayBack()
{
    TestStage stage;
    CrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setTime(1.0);
    stage.run(effect, 999);
    QCOMPARE(stage.sim(8), QColor(255, 0, 0)); // 0.999 and 0.001 at their top 8 bits
    stage.run(effect, 1000);
    QCOMPARE(stage.sim(8), QColor(0, 255, 0));
}

void CrossFadeEffectTest::transparentEnds_data()
{
    // At a quarter of the way over black. The mix is darkened by its alpha, and so is what it
    // shows over black: component x alpha.
    QTest::addColumn<bool>("start");
    QTest::addColumn<bool>("end");
    QTest::addColumn<double>("red");
    QTest::addColumn<double>("green");
    QTest::newRow("neither") << false << false << 0.25 << 0.75;
    QTest::newRow("start") << true << false << 0.0625 << 0.0;
    QTest::newRow("end") << false << true << 0.0 << 0.5625;
    QTest::newRow("both") << true << true << 0.0 << 0.0;
}

void CrossFadeEffectTest::transparentEnds()
{
    QFETCH(const bool, start);
    QFETCH(const bool, end);
    QFETCH(const double, red);
    QFETCH(const double, green);
    TestStage stage;
    CrossFadeEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setStartTrans(start);
    effect.setEndTrans(end);
    stage.run(effect, 1250);
    QVERIFY(std::abs(stage.mix(1).redF() - red) < 1e-9);
    QVERIFY(std::abs(stage.mix(1).greenF() - green) < 1e-9);
    QCOMPARE(stage.mix(1).alpha32(), 0xFFFFFFFFU);
    QVERIFY(std::abs(stage.sim(1).red() - red * 255.0) < 1.5);
    QVERIFY(std::abs(stage.sim(1).green() - green * 255.0) < 1.5);
    QCOMPARE(effect.startColor(), VelaColor(Qt::green)); // the settings stay opaque
    QCOMPARE(effect.endColor(), VelaColor(Qt::red));
}

void CrossFadeEffectTest::fadesInOverWhatLiesBeneath()
{
    TestStage stage;
    CrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setStartTrans(true);
    effect.setPriority(1);
    effect.setActive(true);
    effect.setStartMs(TestShow::kStartMs);
    for (const double t : {0.0, 0.25, 0.5, 0.75}) {
        stage.endFrame();
        stage.light(8)->mixColor(Qt::blue, 0);
        effect.tick(TestShow::kStartMs + static_cast<qint64>(t * 5000.0), 0);
        QVERIFY(std::abs(stage.mix(8).blueF() - (1.0 - t)) < 1e-9);
        QVERIFY(std::abs(stage.mix(8).redF() - t * t) < 1e-9); // the mix rises from 0, too
    }
}

void CrossFadeEffectTest::transparencyScalesTheMix()
{
    TestStage stage;
    CrossFadeEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setTransparency(0.5);
    stage.run(effect, 2500);
    QVERIFY(std::abs(stage.mix(1).redF() - 0.25) < 1e-9);
    QVERIFY(std::abs(stage.mix(1).greenF() - 0.25) < 1e-9);
    QCOMPARE(stage.sim(1), QColor(64, 64, 0)); // 128 at an alpha of 128
    effect.setTransparency(1.0);
    stage.run(effect, 2500);
    QVERIFY(stage.mix(1).isBlack());
    QCOMPARE(stage.sim(1), QColor(Qt::black));
}

void CrossFadeEffectTest::timesBelowAMillisecondStandStill_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<uint>("cycle");
    QTest::newRow("zero") << 0.0 << 0U;
    QTest::newRow("half a millisecond") << 0.0005 << 0U;
    QTest::newRow("negative") << -5.0 << 0U;
    QTest::newRow("nan") << std::numeric_limits<double>::quiet_NaN() << 0U;
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity() << 0U;
    QTest::newRow("beyond 32 bits") << 1e300 << 0U;
}

void CrossFadeEffectTest::timesBelowAMillisecondStandStill()
{
    QFETCH(const double, seconds);
    QFETCH(const uint, cycle);
    TestStage stage;
    CrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setTime(seconds);
    QCOMPARE(effect.cycleTime(), cycle);
    stage.run(effect, 12345);
    QCOMPARE(stage.mix(8).toQColor(true), QColor(Qt::green));
    QCOMPARE(stage.sim(8), QColor(Qt::green));
}

void CrossFadeEffectTest::theScreenMixesWhatIsShown()
{
    TestStage stage;
    CrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    const VelaColor white(QStringLiteral("aYxy;1;0;65535;0.8;0.3805;0.3768")); // 4000 K
    QCOMPARE(white.spec(), VelaColor::Yxy);
    effect.setStartColor(white);
    effect.setEndColor(Qt::black);
    stage.run(effect, 0);
    QCOMPARE(stage.sim(8), toDisplayQColor(VelaColor(toDisplayQColor(white))));
    QCOMPARE(stage.mix(8).spec(), VelaColor::Nchannel); // the mix itself is no screen colour
    stage.run(effect, 2500);
    const QColor shown = toDisplayQColor(white);
    QVERIFY(std::abs(stage.sim(8).red() - shown.red() / 2) <= 1);
    QVERIFY(std::abs(stage.sim(8).green() - shown.green() / 2) <= 1);
    QVERIFY(std::abs(stage.sim(8).blue() - shown.blue() / 2) <= 1);
}

void CrossFadeEffectTest::theTimeRuleResolvesThenTells()
{
    CrossFadeEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setTime(2.0019);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2001U);
    effect.setTime(2.0019); // the same value, too
    QCOMPARE(told.count(), 2);
    effect.setStartColor(Qt::blue);
    effect.setStartTrans(true);
    QCOMPARE(told.count(), 2);
}

void CrossFadeEffectTest::aTimelineFollowsTheTime()
{
    MetaEffect root(nullptr, 0, nullptr);
    CrossFadeEffect effect(nullptr, 5, nullptr);
    effect.setEndType(Effect::EndCycles);
    effect.setEndCycleCount(3);
    effect.setStartFixedTime(100);
    root.addEffect(&effect);
    effect.setTime(1.5);
    QCOMPARE(effect.begin(), 100U);
    QCOMPARE(effect.end(), 4600U);
    QCOMPARE(root.end(), 4600U);
    effect.setTime(0.0);
    QCOMPARE(effect.end(), 100U);
}

void CrossFadeEffectTest::isWrittenByteForByte()
{
    CrossFadeEffect effect(nullptr, 7, nullptr);
    effect.setEndTrans(true);
    effect.setTime(1.23456789);
    QCOMPARE(
        textOf(effect),
        QStringLiteral("<effect>\n") +
            TestShow::baseText(QStringLiteral("Cross Fade"), QStringLiteral("Unnamed Effect"), 7) +
            QStringLiteral("<startcolor>aRgb;1;0;#ffff0000ffff0000</startcolor>\n"
                           "<endcolor>aRgb;1;0;#ffffffff00000000</endcolor>\n"
                           "<starttrans>0</starttrans>\n"
                           "<endtrans>1</endtrans>\n"
                           "<time>1.23457</time>\n"
                           "</effect>\n"));
}

void CrossFadeEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("end");
    QTest::addColumn<bool>("startTrans");
    QTest::addColumn<bool>("endTrans");
    QTest::addColumn<double>("time");
    const QString green = QStringLiteral("#00ff00");
    const QString red = QStringLiteral("#ff0000");
    const QString blue = QStringLiteral("#0000ff");
    const auto row = [](const char* name, const char* keys) -> QTestData& {
        return QTest::newRow(name) << QString::fromLatin1(keys);
    };
    row("missing", "") << green << red << false << false << 5.0;
    row("all", "<startcolor>blue</startcolor><endcolor>lime</endcolor><starttrans>1</starttrans>"
               "<endtrans>-3</endtrans><time>2.5</time>")
        << blue << green << true << true << 2.5;
    row("empty", "<startcolor/><endcolor/><starttrans/><endtrans/><time/>")
        << green << red << false << false << 5.0;
    row("unreadable colours stay",
        "<startcolor>blue</startcolor><startcolor>aRgb;</startcolor><endcolor>blue</endcolor>"
        "<endcolor>#</endcolor>")
        << blue << blue << false << false << 5.0;
    row("unreadable others fall back",
        "<starttrans>1</starttrans><starttrans>yes</starttrans><endtrans>1</endtrans>"
        "<endtrans>1.0</endtrans><time>3</time><time>long</time>")
        << green << red << false << false << 5.0;
    row("zero time", "<time>0</time>") << green << red << false << false << 0.0;
}

void CrossFadeEffectTest::readsItsKeys()
{
    QFETCH(const QString, keys);
    if (keys.contains(QStringLiteral(">#<"))) {
        QTest::ignoreMessage(QtWarningMsg, "VelaColor::setRgb16: RGB parameters out of range");
    }
    QDomElement element = elementOf(keys);
    const CrossFadeEffect effect(nullptr, 5, &element);
    QTEST(effect.startColor().name(), "start");
    QTEST(effect.endColor().name(), "end");
    QTEST(effect.startTrans(), "startTrans");
    QTEST(effect.endTrans(), "endTrans");
    QTEST(effect.time(), "time");
}

void CrossFadeEffectTest::readingTheTimeTellsIt()
{
    CrossFadeEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    QDomElement element = elementOf(QStringLiteral("<time>2</time><time>no</time>"));
    effect.fromXml(&element);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.first().first().toUInt(), 2000U);
    QCOMPARE(told.last().first().toUInt(), 5000U);
}

QTEST_GUILESS_MAIN(CrossFadeEffectTest)
#include "CrossFadeEffectTest.moc"
