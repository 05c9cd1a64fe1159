#include "engine/EffectFactory.h"

#include "engine/MetaEffect.h"
#include "tests/engine/TestShow.h"

#include <QSet>

using TestShow::elementOf;
using TestShow::ProbeEffect;

class EffectFactoryTest : public QObject
{
    Q_OBJECT
private slots:
    void typesHaveTheirNumbersNamesAndIcons_data();
    void typesHaveTheirNumbersNamesAndIcons();
    void namesAreThoseOfTheTypes();
    void otherNumbersAndNamesAreNoTypes_data();
    void otherNumbersAndNamesAreNoTypes();
    void unknownTypesAreLoggedAndNull_data();
    void unknownTypesAreLoggedAndNull();
    void createsTimelinesFromTheFirst();
    void aRegisteredCreatorGetsTheElement();
    void registeringNoTypeIsIgnored();
    void elementsWithoutATypeAreNull_data();
    void elementsWithoutATypeAreNull();
    void theFirstTypeDecides();
};

void EffectFactoryTest::typesHaveTheirNumbersNamesAndIcons_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("icon");
    const auto row = [](int number, const char* name, const char* icon) {
        QTest::newRow(name) << number << QString::fromLatin1(name)
                            << QStringLiteral(":/icons/%1.svg").arg(QString::fromLatin1(icon));
    };
    row(0, "Fixed Color", "fixedColor");
    row(1, "Chasing Rainbow", "chase");
    row(2, "Cross Fade", "crossFade");
    row(3, "Custom Rainbow", "chasingNodeEffect");
    row(4, "White Fixed Color", "whiteWash");
    row(5, "Animation", "videoEffect");
    row(6, "Image Scroll", "imageFade");
    row(7, "Meta Effect", "sparkle");
    row(8, "Random Color", "randomColor");
    row(9, "Sparkle", "sparkle");
    row(10, "Sparkle Group", "sparkle");
    row(11, "Streak", "streak");
    row(12, "Sweep", "sweep");
    row(13, "White Cross Fade", "sparkle");
    row(14, "XYBurst", "burst");
    row(15, "XYSpiral", "spiral");
    row(16, "Text", "text");
    row(17, "Selection", "sparkle");
}

void EffectFactoryTest::typesHaveTheirNumbersNamesAndIcons()
{
    QFETCH(const int, number);
    QFETCH(const QString, name);
    QFETCH(const QString, icon);
    QCOMPARE(EffectFactory::typeNumber(name), number);
    QCOMPARE(EffectFactory::typeName(number), name);
    QCOMPARE(EffectFactory::iconPath(number), icon);
}

void EffectFactoryTest::namesAreThoseOfTheTypes()
{
    const QStringList names = EffectFactory::effectTypeNames();
    QCOMPARE(names.size(), 18);
    QSet<int> numbers;
    for (const QString& name : names) {
        numbers.insert(EffectFactory::typeNumber(name));
    }
    QCOMPARE(numbers.size(), 18);
    QVERIFY(!numbers.contains(-1));
}

void EffectFactoryTest::otherNumbersAndNamesAreNoTypes_data()
{
    QTest::addColumn<int>("number");
    QTest::newRow("-1") << -1;
    QTest::newRow("18") << 18;
    QTest::newRow("lowest") << std::numeric_limits<int>::min();
}

void EffectFactoryTest::otherNumbersAndNamesAreNoTypes()
{
    QFETCH(const int, number);
    QVERIFY(EffectFactory::typeName(number).isEmpty());
    QVERIFY(EffectFactory::iconPath(number).isEmpty());
    QCOMPARE(EffectFactory::typeNumber(QStringLiteral("fixed color")), -1);
    QCOMPARE(EffectFactory::typeNumber(QString()), -1);
}

void EffectFactoryTest::unknownTypesAreLoggedAndNull_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("no type") << QStringLiteral("Disco");
    QTest::newRow("empty") << QString();
    QTest::newRow("not registered here") << QStringLiteral("Sweep");
    QTest::newRow("percent signs") << QStringLiteral("%s%n%1");
}

void EffectFactoryTest::unknownTypesAreLoggedAndNull()
{
    QFETCH(const QString, name);
    QTest::ignoreMessage(QtDebugMsg,
                         qPrintable(QStringLiteral("Unsupported Effect Type: ") + name));
    QVERIFY(EffectFactory::createEffect(name, nullptr, nullptr) == nullptr);
}

void EffectFactoryTest::createsTimelinesFromTheFirst()
{
    const std::unique_ptr<Effect> effect(
        EffectFactory::createEffect(QStringLiteral("Meta Effect"), nullptr, nullptr));
    QVERIFY(qobject_cast<MetaEffect*>(effect.get()) != nullptr);
    QCOMPARE(effect->typeId(), 7);
    QCOMPARE(effect->gid(), Effect::kNoGid);
}

void EffectFactoryTest::aRegisteredCreatorGetsTheElement()
{
    EffectFactory::registerCreator(
        16, [](MapModel* model, quint64 gid, QDomElement* element) -> Effect* {
            auto* const effect = new ProbeEffect(model, element);
            effect->setEid(static_cast<quint32>(gid == Effect::kNoGid));
            return effect;
        });
    QDomElement element = elementOf(QStringLiteral("<name>Words</name><type>Text</type>"));
    const std::unique_ptr<Effect> effect(EffectFactory::createEffectFromXml(element, nullptr));
    QVERIFY(effect != nullptr);
    QCOMPARE(effect->name(), QStringLiteral("Words"));
    QCOMPARE(effect->type(), QStringLiteral("Text"));
    QCOMPARE(effect->eid(), 1U);
    EffectFactory::registerCreator(16, nullptr);
}

void EffectFactoryTest::registeringNoTypeIsIgnored()
{
    const EffectFactory::Creator creator = [](MapModel*, quint64, QDomElement*) -> Effect* {
        return new ProbeEffect;
    };
    EffectFactory::registerCreator(-1, creator);
    EffectFactory::registerCreator(18, creator);
    QCOMPARE(EffectFactory::effectTypeNames().size(), 18);
}

void EffectFactoryTest::elementsWithoutATypeAreNull_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("no children") << QStringLiteral("<effect/>");
    QTest::newRow("no type") << QStringLiteral("<effect><name>a</name></effect>");
    QTest::newRow("other element") << QStringLiteral("<Effect><type>Meta Effect</type></Effect>");
    QTest::newRow("type as attribute") << QStringLiteral("<effect type='Meta Effect'/>");
    QTest::newRow("processing instruction") << QStringLiteral("<a><?effect type?></a>");
}

void EffectFactoryTest::elementsWithoutATypeAreNull()
{
    QFETCH(const QString, text);
    QDomDocument doc;
    QVERIFY(doc.setContent(text));
    QDomNode node = doc.documentElement();
    if (node.nodeName() == QStringLiteral("a")) {
        node = node.firstChild();
        QCOMPARE(node.nodeName(), QStringLiteral("effect"));
    }
    QVERIFY(EffectFactory::createEffectFromXml(node, nullptr) == nullptr);
    QVERIFY(EffectFactory::createEffectFromXml(QDomNode(), nullptr) == nullptr);
}

void EffectFactoryTest::theFirstTypeDecides()
{
    const QDomElement element =
        elementOf(QStringLiteral("<type>Meta Effect</type><type>Disco</type>"));
    const std::unique_ptr<Effect> effect(EffectFactory::createEffectFromXml(element, nullptr));
    QVERIFY(effect != nullptr);
    QCOMPARE(effect->typeId(), 7);
    QCOMPARE(effect->type(), QStringLiteral("Disco")); // the reader takes the last
}

QTEST_GUILESS_MAIN(EffectFactoryTest)
#include "EffectFactoryTest.moc"
