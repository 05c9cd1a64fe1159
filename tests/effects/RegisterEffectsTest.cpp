#include "effects/RegisterEffects.h"

#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "tests/engine/TestShow.h"

#include <QScopedPointer>

class RegisterEffectsTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void eachTypeIsMadeByItsName_data();
    void eachTypeIsMadeByItsName();
    void aShowKeepsItsTypesAndSurvivesASave();
};

void RegisterEffectsTest::initTestCase()
{
    registerEffects();
    registerEffects(); // changes nothing
}

void RegisterEffectsTest::eachTypeIsMadeByItsName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("number");
    QTest::addColumn<QByteArray>("className");
    const auto row = [](const char* name, int number, const char* className) {
        QTest::newRow(name) << QString::fromLatin1(name) << number << QByteArray(className);
    };
    row("Fixed Color", 0, "FixedColorEffect");
    row("Chasing Rainbow", 1, "ChasingRainbowEffect");
    row("Cross Fade", 2, "CrossFadeEffect");
    row("Custom Rainbow", 3, "CustomRainbowEffect");
    row("White Fixed Color", 4, "FixedWhiteEffect");
    row("Animation", 5, "FlashEffect");
    row("Image Scroll", 6, "ImageEffect");
    row("Meta Effect", 7, "MetaEffect");
    row("Random Color", 8, "RandomColorEffect");
    row("Sparkle", 9, "SparkleEffect");
    row("Sparkle Group", 10, "SparkleGroupEffect");
    row("Streak", 11, "StreakEffect");
    row("Sweep", 12, "SweepEffect");
    row("White Cross Fade", 13, "WhiteCrossFadeEffect");
    row("XYBurst", 14, "XYBurstEffect");
    row("XYSpiral", 15, "XYSpiralEffect");
    row("Text", 16, "XYTextEffect");
    row("Selection", 17, "SelectionEffect");
}

void RegisterEffectsTest::eachTypeIsMadeByItsName()
{
    QFETCH(const QString, name);
    QFETCH(const int, number);
    QFETCH(const QByteArray, className);
    const QScopedPointer<Effect> effect(EffectFactory::createEffect(name, nullptr, nullptr));
    QVERIFY(effect != nullptr);
    QCOMPARE(effect->type(), name);
    QCOMPARE(effect->typeId(), number);
    QCOMPARE(EffectFactory::typeNumber(name), number);
    QCOMPARE(QByteArray(effect->metaObject()->className()), className);
    QCOMPARE(effect->gid(), Effect::kNoGid);
}

void RegisterEffectsTest::aShowKeepsItsTypesAndSurvivesASave()
{
    MetaEffect* const show = new MetaEffect(nullptr, 3, nullptr);
    for (const char* const name :
         {"Fixed Color", "Cross Fade", "White Fixed Color", "Meta Effect", "Streak", "Sweep",
          "White Cross Fade", "XYBurst", "XYSpiral", "Text", "Selection"}) {
        Effect* const effect =
            EffectFactory::createEffect(QString::fromLatin1(name), nullptr, nullptr);
        effect->setEndFixedTime(1000);
        show->addEffect(effect);
    }
    show->updateEffectTimes();
    const QString text = TestShow::textOf(*show);
    show->deleteShow();
    MetaEffect* const reread = EffectFactory::parseShow(text, nullptr);
    QVERIFY(reread != nullptr);
    QCOMPARE(reread->effectList().size(), 11);
    QVector<int> types;
    for (const Effect* const effect : reread->effectList()) {
        types.append(effect->typeId());
    }
    QCOMPARE(types, QVector<int>({0, 2, 4, 7, 11, 12, 13, 14, 15, 16, 17}));
    // The empty timeline took its length from the pass, and has none of its own.
    reread->updateEffectTimes();
    QCOMPARE(TestShow::textOf(*reread), text);
    reread->deleteShow();
}

QTEST_GUILESS_MAIN(RegisterEffectsTest)
#include "RegisterEffectsTest.moc"
