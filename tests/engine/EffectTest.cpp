#include "engine/Effect.h"

#include "tests/engine/TestShow.h"

#include <QMetaMethod>
#include <QMetaProperty>
#include <QSignalSpy>

#include <functional>

using TestShow::elementOf;
using TestShow::ProbeEffect;
using TestShow::textOf;

class EffectTest : public QObject
{
    Q_OBJECT
private slots:
    void aNewEffectHasTheDefaults();
    void isBornNow();
    void propertiesReadAndWrite();
    void writingBeginTellsItAndWritingEndDoesNot();
    void signalsStandInOrder();
    void paintsOnlyWhileActive();
    void tickKeepsBothTimes();
    void elapsedIsNeverNegative();
    void restartsAtThisFrameOrTheLast();
    void groupIdsHoldTheGid();
    void readsEachKey_data();
    void readsEachKey();
    void keepsWhatMissingKeysLeave();
    void compilesAsSoonAsTheGidIsRead();
    void ignoresUnknownKeysAndOrder();
    void aCommentAheadOfTheTextIsTheValue();
    void readingBeginTellsNothing();
    void writesEveryKeyInOrder();
    void doublesSurviveWithSixDigits();
    void wideGidsSurviveASave();
    void theTimeRuleResolvesTheEndFirst();
};

void EffectTest::aNewEffectHasTheDefaults()
{
    const ProbeEffect effect;
    QCOMPARE(effect.begin(), 0U);
    QCOMPARE(effect.end(), 0U);
    QCOMPARE(effect.fadein(), 0U);
    QCOMPARE(effect.fadeout(), 0U);
    QCOMPARE(effect.active(), false);
    QCOMPARE(effect.compiled(), false);
    QVERIFY(effect.model() == nullptr);
    QCOMPARE(effect.name(), QStringLiteral("Unnamed Effect"));
    QCOMPARE(effect.type(), QStringLiteral("Generic Effect"));
    QCOMPARE(effect.gid(), quint64(0xFFFFFFFFU));
    QCOMPARE(effect.transparency(), 0.0);
    QCOMPARE(effect.priority(), 0U);
    QCOMPARE(effect.eid(), 0xFFFFFFFFU);
    QCOMPARE(effect.startType(), 0);
    QCOMPARE(effect.startLinkEid(), 0xFFFFFFFFU);
    QCOMPARE(effect.startFixedTime(), 0U);
    QCOMPARE(effect.startLinkStart(), true);
    QCOMPARE(effect.startLinkOffset(), 0.0);
    QCOMPARE(effect.endType(), 0);
    QCOMPARE(effect.endLinkEid(), 0xFFFFFFFFU);
    QCOMPARE(effect.endFixedTime(), 0U);
    QCOMPARE(effect.endLinkStart(), true);
    QCOMPARE(effect.endLinkOffset(), 0.0);
    QCOMPARE(effect.endCycleCount(), 1U);
}

void EffectTest::isBornNow()
{
    const qint64 before = QDateTime::currentMSecsSinceEpoch();
    const ProbeEffect effect;
    const qint64 after = QDateTime::currentMSecsSinceEpoch();
    for (const qint64 ms : {effect.startMs(), effect.lastMs(), effect.currentMs()}) {
        QVERIFY(ms >= before && ms <= after);
    }
}

void EffectTest::propertiesReadAndWrite()
{
    ProbeEffect effect;
    const QMetaObject& meta = Effect::staticMetaObject;
    QStringList names;
    for (int i = meta.propertyOffset(); i < meta.propertyCount(); ++i) {
        names << QString::fromLatin1(meta.property(i).name());
        QVERIFY(meta.property(i).isWritable());
    }
    QCOMPARE(names, QStringList({QStringLiteral("m_type"), QStringLiteral("m_begin"),
                                 QStringLiteral("m_end"), QStringLiteral("m_fadein"),
                                 QStringLiteral("m_fadeout")}));
    QVERIFY(effect.setProperty("m_type", QStringLiteral("Other")));
    QCOMPARE(effect.type(), QStringLiteral("Other"));
    QVERIFY(effect.setProperty("m_end", 12U));
    QCOMPARE(effect.end(), 12U);
    QVERIFY(effect.setProperty("m_fadein", 13U));
    QCOMPARE(effect.fadein(), 13U);
    QVERIFY(effect.setProperty("m_fadeout", 14U));
    QCOMPARE(effect.property("m_fadeout").toUInt(), 14U);
}

void EffectTest::writingBeginTellsItAndWritingEndDoesNot()
{
    ProbeEffect effect;
    QSignalSpy told(&effect, &Effect::beginChanged);
    QVERIFY(effect.setProperty("m_begin", 7U));
    QCOMPARE(effect.begin(), 7U);
    QCOMPARE(told.count(), 1);
    QVERIFY(effect.setProperty("m_end", 9U));
    QCOMPARE(told.count(), 1);
}

void EffectTest::signalsStandInOrder()
{
    const QMetaObject& meta = Effect::staticMetaObject;
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(),
             QByteArray("cycleTimeChanged(uint)"));
    QCOMPARE(meta.method(meta.methodOffset() + 1).methodSignature(), QByteArray("beginChanged()"));
}

void EffectTest::paintsOnlyWhileActive()
{
    ProbeEffect effect;
    effect.tick(QDateTime::fromMSecsSinceEpoch(1000), 3);
    QVERIFY(effect.frames.isEmpty());
    QCOMPARE(effect.frame(), 3U);
    effect.setActive(true);
    effect.tick(QDateTime::fromMSecsSinceEpoch(2000), 4);
    QCOMPARE(effect.frames.size(), 1);
    QCOMPARE(effect.frames.first().frame, 4U);
}

void EffectTest::tickKeepsBothTimes()
{
    ProbeEffect effect;
    effect.setActive(true);
    effect.tick(1000, 0);
    qint64 sinceLast = -1;
    effect.onFrame = [&] { sinceLast = effect.elapsedSinceLast(); };
    effect.tick(1040, 1);
    QCOMPARE(sinceLast, qint64(40)); // inside the frame
    QCOMPARE(effect.lastMs(), qint64(1040));
    QCOMPARE(effect.currentMs(), qint64(1040));
    QCOMPARE(effect.elapsedSinceLast(), qint64(0));
    effect.tick(900, 2); // the clock was set back
    QCOMPARE(sinceLast, qint64(0));
}

void EffectTest::elapsedIsNeverNegative()
{
    ProbeEffect effect;
    effect.tick(1000, 0);
    effect.setStartTime(QDateTime::fromMSecsSinceEpoch(400));
    QCOMPARE(effect.elapsed(), qint64(600));
    effect.setStartTime(QDateTime::fromMSecsSinceEpoch(1001));
    QCOMPARE(effect.elapsed(), qint64(0));
    QCOMPARE(effect.startTime(), QDateTime::fromMSecsSinceEpoch(1001));
}

void EffectTest::restartsAtThisFrameOrTheLast()
{
    ProbeEffect effect;
    effect.setActive(true);
    effect.tick(1000, 0);
    effect.onFrame = [&] { effect.restartFromLast(); };
    effect.tick(1025, 1);
    QCOMPARE(effect.startMs(), qint64(1000));
    effect.onFrame = [&] { effect.restart(); };
    effect.tick(1050, 2);
    QCOMPARE(effect.startMs(), qint64(1050));
}

void EffectTest::groupIdsHoldTheGid()
{
    ProbeEffect effect;
    effect.setGid(42);
    QCOMPARE(effect.groupIds(), QList<quint64>({42}));
}

void EffectTest::readsEachKey_data()
{
    using Reader = std::function<double(const Effect&)>;
    struct Row
    {
        const char* key;
        double unreadable;
        Reader value;
    };
    const double no = 4294967295.0;
    const Row rows[] = {
        {"eid", no, [](const Effect& e) { return double(e.eid()); }},
        {"gid", no, [](const Effect& e) { return double(e.gid()); }},
        {"priority", 0, [](const Effect& e) { return double(e.priority()); }},
        {"begin", 0, [](const Effect& e) { return double(e.begin()); }},
        {"end", 0, [](const Effect& e) { return double(e.end()); }},
        {"fadein", 0, [](const Effect& e) { return double(e.fadein()); }},
        {"fadeout", 0, [](const Effect& e) { return double(e.fadeout()); }},
        {"startfixedtime", 0, [](const Effect& e) { return double(e.startFixedTime()); }},
        {"startlinkeid", no, [](const Effect& e) { return double(e.startLinkEid()); }},
        {"endfixedtime", 0, [](const Effect& e) { return double(e.endFixedTime()); }},
        {"endlinkeid", no, [](const Effect& e) { return double(e.endLinkEid()); }},
        {"endcyclecount", 1, [](const Effect& e) { return double(e.endCycleCount()); }},
        {"starttype", 0, [](const Effect& e) { return double(e.startType()); }},
        {"endtype", 0, [](const Effect& e) { return double(e.endType()); }},
        {"transparency", 0, [](const Effect& e) { return e.transparency(); }},
        {"startlinkoffset", 0, [](const Effect& e) { return e.startLinkOffset(); }},
        {"endlinkoffset", 0, [](const Effect& e) { return e.endLinkOffset(); }},
        {"startlinkstart", 1, [](const Effect& e) { return double(e.startLinkStart()); }},
        {"endlinkstart", 1, [](const Effect& e) { return double(e.endLinkStart()); }},
    };
    QTest::addColumn<QString>("keys");
    QTest::addColumn<double>("value");
    QTest::addColumn<double>("expected");
    const auto add = [](const Row& row, const char* text, double expected) {
        ProbeEffect effect;
        // A first element sets what the second has to replace.
        QDomElement element = elementOf(QStringLiteral("<%1>3</%1><%1>%2</%1>")
                                            .arg(QString::fromLatin1(row.key))
                                            .arg(QString::fromLatin1(text)));
        effect.fromXml(&element);
        QTest::addRow("%s \"%s\"", row.key, text)
            << element.text() << row.value(effect) << expected;
    };
    for (const Row& row : rows) {
        const QByteArray key(row.key);
        const bool isBool = key.endsWith("linkstart");
        const bool isSigned = key.endsWith("type");
        const bool isDouble = key == "transparency" || key.endsWith("offset");
        add(row, "", row.unreadable);
        add(row, "x7", row.unreadable);
        add(row, "0x10", row.unreadable);
        add(row, "7", isBool ? 1 : 7);
        add(row, "0", 0);
        add(row, "-4", isBool ? 1 : isSigned || isDouble ? -4 : row.unreadable);
        add(row, "1.5", isDouble ? 1.5 : row.unreadable);
        add(row, "99999999999999999999", isDouble ? 1e20 : row.unreadable);
        if (isDouble) {
            add(row, "1e300", 1e300);
            add(row, "inf", std::numeric_limits<double>::infinity());
        }
    }
    const Row& gid = rows[1];
    add(gid, "18446744073709551615", 18446744073709551615.0);
    add(rows[0], "4294967296", no);
}

void EffectTest::readsEachKey()
{
    QFETCH(const double, value);
    QFETCH(const double, expected);
    QCOMPARE(value, expected);
}

void EffectTest::keepsWhatMissingKeysLeave()
{
    ProbeEffect effect;
    effect.setName(QStringLiteral("Mine"));
    effect.setGid(5);
    effect.setEndCycleCount(9);
    QDomElement element = elementOf(QString());
    effect.fromXml(&element);
    QCOMPARE(effect.name(), QStringLiteral("Mine"));
    QCOMPARE(effect.gid(), quint64(5));
    QCOMPARE(effect.endCycleCount(), 9U);
    QCOMPARE(effect.compiles, 0);
    effect.fromXml(nullptr);
    QCOMPARE(effect.name(), QStringLiteral("Mine"));
}

void EffectTest::compilesAsSoonAsTheGidIsRead()
{
    QDomElement element =
        elementOf(QStringLiteral("<name>first</name><gid>77</gid><name>second</name>"));
    const ProbeEffect effect(nullptr, &element);
    QCOMPARE(effect.compiles, 1);
    QCOMPARE(effect.gidAtCompile, quint64(77));
    QCOMPARE(effect.nameAtCompile, QStringLiteral("first"));
    QCOMPARE(effect.name(), QStringLiteral("second"));
}

void EffectTest::ignoresUnknownKeysAndOrder()
{
    QDomElement element = elementOf(
        QStringLiteral("<Priority>4</Priority><end>3</end><nonsense>1</nonsense>"
                       "<width>9</width><begin>2</begin><!-- a note --><priority>6</priority>"));
    const ProbeEffect effect(nullptr, &element);
    QCOMPARE(effect.begin(), 2U);
    QCOMPARE(effect.end(), 3U);
    QCOMPARE(effect.priority(), 6U);
}

void EffectTest::aCommentAheadOfTheTextIsTheValue()
{
    QDomElement element =
        elementOf(QStringLiteral("<name><!--note-->text</name><end><!--5-->6</end>"));
    const ProbeEffect effect(nullptr, &element);
    QCOMPARE(effect.name(), QStringLiteral("note"));
    QCOMPARE(effect.end(), 5U);
}

void EffectTest::readingBeginTellsNothing()
{
    ProbeEffect effect;
    QSignalSpy told(&effect, &Effect::beginChanged);
    QDomElement element = elementOf(QStringLiteral("<begin>2</begin>"));
    effect.fromXml(&element);
    QCOMPARE(effect.begin(), 2U);
    QCOMPARE(told.count(), 0);
}

void EffectTest::writesEveryKeyInOrder()
{
    ProbeEffect effect;
    effect.setType(QStringLiteral("Probe"));
    effect.setName(QStringLiteral("a < b & \"c\""));
    effect.setEid(4);
    effect.setGid(0x1122334455667788ULL);
    effect.setTransparency(0.25);
    effect.setPriority(4294967295U);
    effect.setBegin(10);
    effect.setEnd(20);
    effect.setFadein(30);
    effect.setFadeout(40);
    effect.setStartType(1);
    effect.setStartFixedTime(50);
    effect.setStartLinkEid(60);
    effect.setStartLinkStart(false);
    effect.setStartLinkOffset(-70.5);
    effect.setEndType(2);
    effect.setEndFixedTime(80);
    effect.setEndLinkEid(90);
    effect.setEndLinkStart(true);
    effect.setEndLinkOffset(1e21);
    effect.setEndCycleCount(100);
    QCOMPARE(textOf(effect), QStringLiteral("<effect>\n"
                                            "<type>Probe</type>\n"
                                            "<name>a &lt; b &amp; \"c\"</name>\n"
                                            "<eid>4</eid>\n"
                                            "<gid>1234605616436508552</gid>\n"
                                            "<transparency>0.25</transparency>\n"
                                            "<priority>4294967295</priority>\n"
                                            "<begin>10</begin>\n"
                                            "<end>20</end>\n"
                                            "<fadein>30</fadein>\n"
                                            "<fadeout>40</fadeout>\n"
                                            "<starttype>1</starttype>\n"
                                            "<startfixedtime>50</startfixedtime>\n"
                                            "<startlinkeid>60</startlinkeid>\n"
                                            "<startlinkstart>0</startlinkstart>\n"
                                            "<startlinkoffset>-70.5</startlinkoffset>\n"
                                            "<endtype>2</endtype>\n"
                                            "<endfixedtime>80</endfixedtime>\n"
                                            "<endlinkeid>90</endlinkeid>\n"
                                            "<endlinkstart>1</endlinkstart>\n"
                                            "<endlinkoffset>1e+21</endlinkoffset>\n"
                                            "<endcyclecount>100</endcyclecount>\n"
                                            "</effect>\n"));
}

void EffectTest::doublesSurviveWithSixDigits()
{
    ProbeEffect effect;
    effect.setStartLinkOffset(1234.5678);
    QDomDocument doc;
    QVERIFY(doc.setContent(textOf(effect)));
    QDomElement element = doc.documentElement();
    const ProbeEffect reread(nullptr, &element);
    QCOMPARE(reread.startLinkOffset(), 1234.57);
}

void EffectTest::wideGidsSurviveASave()
{
    ProbeEffect effect;
    effect.setGid(0xFFFFFFFF00000001ULL);
    QDomDocument doc;
    QVERIFY(doc.setContent(textOf(effect)));
    QDomElement element = doc.documentElement();
    const ProbeEffect reread(nullptr, &element);
    QCOMPARE(reread.gid(), quint64(0xFFFFFFFF00000001ULL));
}

void EffectTest::theTimeRuleResolvesTheEndFirst()
{
    ProbeEffect effect;
    int endUpdatesWhenTold = -1;
    uint told = 0;
    connect(&effect, &Effect::cycleTimeChanged, this, [&](uint ms) {
        endUpdatesWhenTold = effect.endUpdates;
        told = ms;
    });
    effect.changeCycle(300);
    QCOMPARE(endUpdatesWhenTold, 0); // a fixed end stays
    QCOMPARE(told, 300U);
    effect.setEndType(Effect::EndCycles);
    effect.changeCycle(400);
    QCOMPARE(endUpdatesWhenTold, 1);
    QCOMPARE(told, 400U);
}

QTEST_GUILESS_MAIN(EffectTest)
#include "EffectTest.moc"
