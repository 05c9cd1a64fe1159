#include "effects/FixedColorEffect.h"

#include "tests/effects/TestStage.h"

using TestShow::elementOf;
using TestShow::textOf;

class FixedColorEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void hasItsDefaults();
    void paintsItsGroup_data();
    void paintsItsGroup();
    void fades_data();
    void fades();
    void keepsTheColoursOwnAlpha();
    void screenColoursFollowTheColour();
    void paintsByThePriorityOfTheFrame();
    void forgetsAGroupThatIsGone();
    void isWrittenByteForByte();
    void readsItsKey_data();
    void readsItsKey();
};

void FixedColorEffectTest::hasItsDefaults()
{
    FixedColorEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("Fixed Color"));
    QCOMPARE(effect.name(), QStringLiteral("Unnamed Effect"));
    QCOMPARE(effect.typeId(), 0);
    QCOMPARE(effect.cycleTime(), 1000U);
    QCOMPARE(effect.color(), VelaColor(Qt::green));
    QCOMPARE(effect.gid(), quint64(5));
    QVERIFY(!effect.active());
    QVERIFY(!effect.compiled());
    QVERIFY(effect.setProperty("m_color", QVariant::fromValue(VelaColor(Qt::cyan))));
    QCOMPARE(effect.property("m_color").value<VelaColor>(), VelaColor(Qt::cyan));
    QVERIFY(effect.compile()); // without a map, too
    QVERIFY(effect.compiled());
    effect.setActive(true);
    effect.tick(0, 0);
}

void FixedColorEffectTest::paintsItsGroup_data()
{
    addGroupRows();
}

void FixedColorEffectTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    QVERIFY(stage.isLoaded());
    FixedColorEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    for (const qint64 ms : {0, 990, 123456}) {
        stage.run(effect, ms);
        for (quint64 uid = 1; uid <= 8; ++uid) {
            const bool on = painted.contains(uid);
            QCOMPARE(stage.mix(uid).toQColor(true), QColor(on ? Qt::green : Qt::black));
            QCOMPARE(stage.sim(uid), QColor(on ? Qt::green : Qt::black));
        }
    }
}

void FixedColorEffectTest::fades_data()
{
    QTest::addColumn<double>("transparency");
    QTest::addColumn<quint32>("green"); // over black
    QTest::addColumn<int>("screen");
    QTest::newRow("opaque") << 0.0 << 0xFFFFFFFFU << 255;
    // 0.75 x 4294967295 + 0.5 = 3221225471.75; the screen's alpha 49151 of 65535 is 191 of 255
    QTest::newRow("a quarter") << 0.25 << 3221225471U << 191;
    // 2147483648 of 4294967295; 32768 of 65535 is 128 of 255
    QTest::newRow("half") << 0.5 << 2147483648U << 128;
    QTest::newRow("invisible") << 1.0 << 0U << 0;
    QTest::newRow("below 0 is opaque") << -0.5 << 0xFFFFFFFFU << 255;
    QTest::newRow("above 1 is invisible") << 7.0 << 0U << 0;
    QTest::newRow("infinite is invisible") << std::numeric_limits<double>::infinity() << 0U << 0;
    QTest::newRow("nan is opaque")
        << std::numeric_limits<double>::quiet_NaN() << 0xFFFFFFFFU << 255;
}

void FixedColorEffectTest::fades()
{
    QFETCH(const double, transparency);
    QFETCH(const quint32, green);
    QFETCH(const int, screen);
    TestStage stage;
    FixedColorEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setTransparency(transparency);
    stage.run(effect, 0);
    const VelaColor mix = stage.mix(3);
    QCOMPARE(mix.spec(), VelaColor::Rgb);
    QCOMPARE(mix.greenF(), green / 4294967295.0);
    QCOMPARE(mix.red16(), 0);
    QCOMPARE(mix.alpha32(), 0xFFFFFFFFU);
    QCOMPARE(stage.sim(3), QColor(0, screen, 0));
    QCOMPARE(effect.color(), VelaColor(Qt::green)); // the setting stays
}

void FixedColorEffectTest::keepsTheColoursOwnAlpha()
{
    TestStage stage;
    FixedColorEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    VelaColor half(Qt::white);
    half.setAlphaF(0.5);
    effect.setColor(half);
    stage.run(effect, 0);
    QCOMPARE(stage.mix(1).redF(), 2147483648.0 / 4294967295.0);
    QCOMPARE(stage.sim(1), QColor(128, 128, 128));
    effect.setTransparency(0.5); // a quarter is left: 1073741824, and 64 of 255
    stage.run(effect, 0);
    QCOMPARE(stage.mix(1).redF(), 1073741824.0 / 4294967295.0);
    QCOMPARE(stage.sim(1), QColor(64, 64, 64));
}

void FixedColorEffectTest::screenColoursFollowTheColour()
{
    TestStage stage;
    FixedColorEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    stage.run(effect, 0);
    effect.setColor(Qt::red);
    stage.run(effect, 25);
    QCOMPARE(stage.sim(1), QColor(Qt::red));
    effect.setColor(VelaColor()); // invalid: shown black, and the outputs get it as it is
    stage.run(effect, 50);
    QCOMPARE(stage.sim(1), QColor(Qt::black));
    QVERIFY(!stage.mix(1).isValid());
}

void FixedColorEffectTest::paintsByThePriorityOfTheFrame()
{
    TestStage stage;
    FixedColorEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setPriority(4);
    stage.endFrame();
    stage.light(1)->mixColor(Qt::red, 5);
    stage.light(2)->mixColor(Qt::red, 3);
    effect.setActive(true);
    effect.tick(TestShow::kStartMs, 0);
    QCOMPARE(stage.mix(1), VelaColor(Qt::red)); // ours is dropped
    QCOMPARE(stage.mix(2), VelaColor(Qt::green));
}

void FixedColorEffectTest::forgetsAGroupThatIsGone()
{
    TestStage stage;
    FixedColorEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setGid(0x999);
    effect.compile();
    stage.run(effect, 0);
    QVERIFY(stage.mix(1).isBlack());
    effect.setGid(8);
    effect.compile();
    stage.model()->clear();
    effect.compile();
    effect.tick(TestShow::kStartMs, 0); // must not touch what the map held
    QCOMPARE(effect.gid(), quint64(8));
}

void FixedColorEffectTest::isWrittenByteForByte()
{
    const FixedColorEffect effect(nullptr, 0x102, nullptr);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") +
                                 TestShow::baseText(QStringLiteral("Fixed Color"),
                                                    QStringLiteral("Unnamed Effect"), 0x102) +
                                 QStringLiteral("<color>aRgb;1;0;#ffff0000ffff0000</color>\n"
                                                "</effect>\n"));
}

void FixedColorEffectTest::readsItsKey_data()
{
    QTest::addColumn<QString>("keys");
    QTest::addColumn<QString>("color");
    const QString green = VelaColor(Qt::green).toString();
    QTest::newRow("missing") << QString() << green;
    QTest::newRow("text form") << QStringLiteral("<color>aRgb;1;0;#ffff000000001234</color>")
                               << QStringLiteral("aRgb;1;0;#ffff000000001234");
    QTest::newRow("name") << QStringLiteral("<color>red</color>")
                          << QStringLiteral("aRgb;1;0;#ffffffff00000000");
    QTest::newRow("empty") << QStringLiteral("<color/>") << green;
    QTest::newRow("unreadable") << QStringLiteral("<color>aRgb;1</color>") << green;
    QTest::newRow("unreadable leaves what it has")
        << QStringLiteral("<color>red</color><color>aRgb;</color>")
        << QStringLiteral("aRgb;1;0;#ffffffff00000000");
    QTest::newRow("yxy") << QStringLiteral("<color>aYxy;1;0;65535;0.5;0.3;0.3</color>")
                         << QStringLiteral("aYxy;1;0;65535;0.500000;0.300000;0.300000");
}

void FixedColorEffectTest::readsItsKey()
{
    QFETCH(const QString, keys);
    QFETCH(const QString, color);
    QDomElement element = elementOf(keys + QStringLiteral("<name>n</name><time>1</time>"));
    const FixedColorEffect effect(nullptr, 5, &element);
    QCOMPARE(effect.color().toString(), color);
    QCOMPARE(effect.name(), QStringLiteral("n"));
}

QTEST_GUILESS_MAIN(FixedColorEffectTest)
#include "FixedColorEffectTest.moc"
