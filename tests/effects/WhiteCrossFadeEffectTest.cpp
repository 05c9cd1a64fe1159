#include "effects/WhiteCrossFadeEffect.h"

#include "tests/effects/TestStage.h"

#include <QMetaProperty>
#include <QSignalSpy>

using TestShow::elementOf;
using TestShow::textOf;

class WhiteCrossFadeEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void hasItsDefaults();
    void propertiesReadAndWrite();
    void paintsItsGroup_data();
    void paintsItsGroup();
    void beginsAnewWithoutAWayBack();
    void theScreenShowsTheMix();
    void transparentEnds();
    void transparencyScalesTheMix();
    void timesBelowAMillisecondStandStill();
    void followsTheTimeRule();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
};

void WhiteCrossFadeEffectTest::hasItsDefaults()
{
    WhiteCrossFadeEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("White Cross Fade"));
    QCOMPARE(effect.typeId(), 13);
    QCOMPARE(effect.cycleTime(), 5000U);
    QVERIFY(effect.compile());
    effect.setActive(true);
    effect.tick(0, 0);
}

void WhiteCrossFadeEffectTest::propertiesReadAndWrite()
{
    WhiteCrossFadeEffect effect(nullptr, 5, nullptr);
    const QMetaObject& meta = WhiteCrossFadeEffect::staticMetaObject;
    const QStringList expected =
        QStringLiteral("m_temperatureStart m_intensityStart m_warmStart m_coolStart "
                       "m_inputTypeStart m_temperatureEnd m_intensityEnd m_warmEnd m_coolEnd "
                       "m_inputTypeEnd m_starttrans m_endtrans m_time")
            .split(QLatin1Char(' '));
    const QVariantList defaults = {255,  50U,  127U, 127U,  0U,    255, 50U,
                                   127U, 127U, 0U,   false, false, 5.0};
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), expected.size());
    for (int i = 0; i < expected.size(); ++i) {
        const QMetaProperty property = meta.property(meta.propertyOffset() + i);
        QCOMPARE(QString::fromLatin1(property.name()), expected.at(i));
        QCOMPARE(property.read(&effect), defaults.at(i));
        QVERIFY(property.write(&effect, i + 1));
    }
    for (int i = 0; i < expected.size(); ++i) { // each has a field of its own
        const QMetaProperty property = meta.property(meta.propertyOffset() + i);
        const int value = property.read(&effect).toInt();
        QCOMPARE(value, property.type() == QVariant::Bool ? 1 : i + 1);
    }
}

void WhiteCrossFadeEffectTest::paintsItsGroup_data()
{
    addGroupRows();
}

void WhiteCrossFadeEffectTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    WhiteCrossFadeEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    effect.setTemperatureStart(0); // all cool,
    effect.setIntensityStart(100);
    effect.setTemperatureEnd(510); // to all warm
    effect.setIntensityEnd(100);
    stage.run(effect, 1250);
    for (quint64 uid = 1; uid <= 8; ++uid) {
        if (painted.contains(uid)) {
            QCOMPARE(stage.mix(uid), mixed(0.25, 0.75, 0.25));
            QCOMPARE(stage.sim(uid), QColor(64, 191, 64));
        } else {
            QVERIFY(stage.mix(uid).isBlack());
            QCOMPARE(stage.sim(uid), QColor(Qt::black));
        }
    }
}

void WhiteCrossFadeEffectTest::beginsAnewWithoutAWayBack()
{
    TestStage stage;
    WhiteCrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setInputTypeStart(1);
    effect.setWarmStart(200);
    effect.setCoolStart(100);
    effect.setInputTypeEnd(1);
    effect.setWarmEnd(0);
    effect.setCoolEnd(0);
    effect.setTime(1.0);
    stage.run(effect, 999);
    QCOMPARE(stage.sim(8), QColor(0, 0, 0));
    stage.run(effect, 1000);
    QCOMPARE(stage.sim(8), QColor(200, 100, 200));
}

void WhiteCrossFadeEffectTest::theScreenShowsTheMix()
{
    TestStage stage;
    WhiteCrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setInputTypeStart(1);
    effect.setWarmStart(255);
    effect.setStartTrans(false);
    effect.setEndTrans(true);
    stage.run(effect, 2500);
    // The mix is 0.5 at an alpha of 0.5: 0.25 over black on the outputs, and 128 at 128 on screen.
    QVERIFY(std::abs(stage.mix(8).redF() - 0.25) < 1e-9);
    QCOMPARE(stage.sim(8).red(), 64);
}

void WhiteCrossFadeEffectTest::transparentEnds()
{
    TestStage stage;
    WhiteCrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setIntensityStart(100);
    effect.setIntensityEnd(100);
    effect.setStartTrans(true);
    stage.run(effect, 1250); // a quarter in, darkened by its alpha
    QVERIFY(std::abs(stage.mix(8).redF() - 0.0625) < 1e-9);
    effect.setEndTrans(true);
    stage.run(effect, 1250);
    QVERIFY(stage.mix(8).isBlack());
    effect.setStartTrans(false);
    stage.run(effect, 1250);
    QVERIFY(std::abs(stage.mix(8).redF() - 0.5625) < 1e-9);
}

void WhiteCrossFadeEffectTest::transparencyScalesTheMix()
{
    TestStage stage;
    WhiteCrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setIntensityStart(100);
    effect.setIntensityEnd(100);
    effect.setTransparency(0.25);
    stage.run(effect, 2500);
    QVERIFY(std::abs(stage.mix(8).redF() - 0.75) < 1e-9);
    QCOMPARE(stage.sim(8), QColor(191, 191, 191));
    effect.setTransparency(1.0);
    stage.run(effect, 2500);
    QVERIFY(stage.mix(8).isBlack());
    QCOMPARE(stage.sim(8), QColor(Qt::black));
}

void WhiteCrossFadeEffectTest::timesBelowAMillisecondStandStill()
{
    TestStage stage;
    WhiteCrossFadeEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setIntensityStart(100);
    effect.setIntensityEnd(0);
    for (const double seconds : {0.0, 0.0009, -1.0, std::numeric_limits<double>::quiet_NaN()}) {
        effect.setTime(seconds);
        QCOMPARE(effect.cycleTime(), 0U);
        stage.run(effect, 777);
        QCOMPARE(stage.sim(8), QColor(255, 255, 255));
    }
}

void WhiteCrossFadeEffectTest::followsTheTimeRule()
{
    WhiteCrossFadeEffect effect(nullptr, 5, nullptr);
    QSignalSpy told(&effect, &Effect::cycleTimeChanged);
    effect.setTime(2.5);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.last().first().toUInt(), 2500U);
    QDomElement element = elementOf(QStringLiteral("<time>no</time>"));
    effect.fromXml(&element);
    QCOMPARE(told.count(), 2);
    QCOMPARE(told.last().first().toUInt(), 5000U);
    effect.setWarmEnd(1);
    QCOMPARE(told.count(), 2);
}

void WhiteCrossFadeEffectTest::isWrittenByteForByte()
{
    WhiteCrossFadeEffect effect(nullptr, 7, nullptr);
    effect.setTemperatureStart(1);
    effect.setCoolStart(4294967295U);
    effect.setTemperatureEnd(-2);
    effect.setStartTrans(true);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") +
                                 TestShow::baseText(QStringLiteral("White Cross Fade"),
                                                    QStringLiteral("Unnamed Effect"), 7) +
                                 QStringLiteral("<temperatureStart>1</temperatureStart>\n"
                                                "<intensityStart>50</intensityStart>\n"
                                                "<inputTypeStart>0</inputTypeStart>\n"
                                                "<warmStart>127</warmStart>\n"
                                                "<coolStart>4294967295</coolStart>\n"
                                                "<temperatureEnd>-2</temperatureEnd>\n"
                                                "<intensityEnd>50</intensityEnd>\n"
                                                "<inputTypeEnd>0</inputTypeEnd>\n"
                                                "<warmEnd>127</warmEnd>\n"
                                                "<coolEnd>127</coolEnd>\n"
                                                "<starttrans>1</starttrans>\n"
                                                "<endtrans>0</endtrans>\n"
                                                "<time>5</time>\n"
                                                "</effect>\n"));
}

void WhiteCrossFadeEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QVariantList>("values"); // of the properties, in order
    const uint unsignedMinus2 = 4294967294U;
    QTest::newRow("numbers") << QStringLiteral("9")
                             << QVariantList{9, 9U, 9U, 9U, 9U, 9, 9U, 9U, 9U, 9U, true, true, 9.0};
    const QVariantList fallbacks = {255,  50U,  127U, 127U,  0U,    255, 50U,
                                    127U, 127U, 0U,   false, false, 5.0};
    QTest::newRow("empty") << QString() << fallbacks;
    QTest::newRow("no numbers") << QStringLiteral("x") << fallbacks;
    QTest::newRow("negative") << QStringLiteral("-2")
                              << QVariantList{-2,   50U,  127U, unsignedMinus2, 0U,
                                              -2,   50U,  127U, unsignedMinus2, 0U,
                                              true, true, -2.0};
    QVariantList fraction = fallbacks;
    fraction.last() = 1.5;
    QTest::newRow("fractions") << QStringLiteral("1.5") << fraction;
}

void WhiteCrossFadeEffectTest::readsItsKeys()
{
    QFETCH(const QString, text);
    QFETCH(const QVariantList, values);
    QString keys;
    for (const char* const key :
         {"temperatureStart", "intensityStart", "inputTypeStart", "warmStart", "coolStart",
          "temperatureEnd", "intensityEnd", "inputTypeEnd", "warmEnd", "coolEnd", "starttrans",
          "endtrans", "time"}) {
        keys += QStringLiteral("<%1>3</%1><%1>%2</%1>").arg(QString::fromLatin1(key), text);
    }
    QDomElement element = elementOf(keys);
    const WhiteCrossFadeEffect effect(nullptr, 5, &element);
    const QMetaObject& meta = WhiteCrossFadeEffect::staticMetaObject;
    for (int i = 0; i < values.size(); ++i) {
        const QMetaProperty property = meta.property(meta.propertyOffset() + i);
        QVERIFY2(property.read(&effect) == values.at(i), property.name());
    }
}

QTEST_GUILESS_MAIN(WhiteCrossFadeEffectTest)
#include "WhiteCrossFadeEffectTest.moc"
