#include "effects/FixedWhiteEffect.h"

#include "tests/effects/TestStage.h"

using TestShow::elementOf;
using TestShow::textOf;

class FixedWhiteEffectTest : public QObject
{
    Q_OBJECT
private slots:
    void hasItsDefaults();
    void paintsItsGroup_data();
    void paintsItsGroup();
    void fades();
    void darkCoversWhatLiesBeneath();
    void isWrittenByteForByte();
    void readsItsKeys_data();
    void readsItsKeys();
};

void FixedWhiteEffectTest::hasItsDefaults()
{
    FixedWhiteEffect effect(nullptr, 5, nullptr);
    QCOMPARE(effect.type(), QStringLiteral("White Fixed Color"));
    QCOMPARE(effect.typeId(), 4);
    QCOMPARE(effect.cycleTime(), 1000U);
    QCOMPARE(effect.temperature(), 255);
    QCOMPARE(effect.intensity(), 50U);
    QCOMPARE(effect.warm(), 127U);
    QCOMPARE(effect.cool(), 127U);
    QCOMPARE(effect.inputType(), 0U);
    QVERIFY(effect.compile());
    effect.setActive(true);
    effect.tick(0, 0);
}

void FixedWhiteEffectTest::paintsItsGroup_data()
{
    addGroupRows();
}

void FixedWhiteEffectTest::paintsItsGroup()
{
    QFETCH(const quint64, gid);
    QFETCH(const QVector<quint64>, painted);
    TestStage stage;
    FixedWhiteEffect effect(stage.model(), gid, nullptr);
    effect.compile();
    effect.setTemperature(400);
    effect.setIntensity(33);
    stage.run(effect, 0);
    for (quint64 uid = 1; uid <= 8; ++uid) {
        const QColor color = painted.contains(uid) ? QColor(84, 36, 84) : QColor(Qt::black);
        QCOMPARE(stage.mix(uid).toQColor(true), color);
        QCOMPARE(stage.sim(uid), color);
    }
    effect.setInputType(1);
    effect.setWarm(3);
    effect.setCool(4);
    stage.run(effect, 25);
    for (const quint64 uid : painted) {
        QCOMPARE(stage.mix(uid), VelaColor(qRgb(3, 4, 3)));
    }
}

void FixedWhiteEffectTest::fades()
{
    TestStage stage;
    FixedWhiteEffect effect(stage.model(), 0x100, nullptr);
    effect.compile();
    effect.setIntensity(100);
    effect.setTransparency(0.25);
    stage.run(effect, 0);
    QCOMPARE(stage.mix(1).redF(), 3221225471.0 / 4294967295.0);
    QCOMPARE(stage.sim(1), QColor(191, 191, 191));
    effect.setTransparency(1.0);
    stage.run(effect, 0);
    QVERIFY(stage.mix(1).isBlack());
    QCOMPARE(stage.sim(1), QColor(Qt::black));
}

void FixedWhiteEffectTest::darkCoversWhatLiesBeneath()
{
    TestStage stage;
    FixedWhiteEffect effect(stage.model(), 8, nullptr);
    effect.compile();
    effect.setIntensity(0);
    effect.setPriority(1);
    effect.setActive(true);
    stage.light(8)->mixColor(Qt::red, 0);
    stage.light(8)->mixSimColor(Qt::red, 0);
    effect.tick(TestShow::kStartMs, 0);
    QVERIFY(stage.mix(8).isBlack());
    QCOMPARE(stage.sim(8), QColor(Qt::black));
}

void FixedWhiteEffectTest::isWrittenByteForByte()
{
    FixedWhiteEffect effect(nullptr, 7, nullptr);
    effect.setTemperature(-5);
    effect.setCool(4294967295U);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n") +
                                 TestShow::baseText(QStringLiteral("White Fixed Color"),
                                                    QStringLiteral("Unnamed Effect"), 7) +
                                 QStringLiteral("<temperature>-5</temperature>\n"
                                                "<intensity>50</intensity>\n"
                                                "<inputType>0</inputType>\n"
                                                "<warm>127</warm>\n"
                                                "<cool>4294967295</cool>\n"
                                                "</effect>\n"));
}

void FixedWhiteEffectTest::readsItsKeys_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("temperature");
    QTest::addColumn<uint>("intensity");
    QTest::addColumn<uint>("inputType");
    QTest::addColumn<uint>("warm");
    QTest::addColumn<uint>("cool");
    QTest::newRow("numbers") << QStringLiteral("9") << 9 << 9U << 9U << 9U << 9U;
    QTest::newRow("empty") << QString() << 255 << 50U << 0U << 127U << 127U;
    QTest::newRow("no numbers") << QStringLiteral("x") << 255 << 50U << 0U << 127U << 127U;
    QTest::newRow("fractions") << QStringLiteral("1.5") << 255 << 50U << 0U << 127U << 127U;
    // The cool level alone is read as signed, and held as unsigned.
    QTest::newRow("negative") << QStringLiteral("-2") << -2 << 50U << 0U << 127U << 4294967294U;
    QTest::newRow("above signed") << QStringLiteral("3000000000") << 255 << 3000000000U
                                  << 3000000000U << 3000000000U << 127U;
}

void FixedWhiteEffectTest::readsItsKeys()
{
    QFETCH(const QString, text);
    QString keys;
    for (const char* const key : {"temperature", "intensity", "inputType", "warm", "cool"}) {
        keys += QStringLiteral("<%1>3</%1><%1>%2</%1>").arg(QString::fromLatin1(key), text);
    }
    QDomElement element = elementOf(keys);
    const FixedWhiteEffect effect(nullptr, 5, &element);
    QTEST(effect.temperature(), "temperature");
    QTEST(effect.intensity(), "intensity");
    QTEST(effect.inputType(), "inputType");
    QTEST(effect.warm(), "warm");
    QTEST(effect.cool(), "cool");
}

QTEST_GUILESS_MAIN(FixedWhiteEffectTest)
#include "FixedWhiteEffectTest.moc"
