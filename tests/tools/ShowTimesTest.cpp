#include "tools/mapgen/ShowTimes.h"

#include <QObject>
#include <QtTest>

namespace {

ShowEffect plain()
{
    return ShowEffects::fixedColor(QString(), QString());
}

/// A timeline whose first effect runs from 1000 to 5000, and whose second is `probe`.
ShowEffect withProbe(const ShowEffect& probe)
{
    ShowEffect show = ShowEffects::timeline(QString());
    show.add(plain().at(1000).lasting(4000));
    show.add(probe);
    return show;
}

} // namespace

Q_DECLARE_METATYPE(ShowEffect)

class ShowTimesTest : public QObject
{
    Q_OBJECT
private slots:
    void timesFollowTheRules_data();
    void timesFollowTheRules();
    void aLaterEffectMayBeLinkedTo();
    void badLinksAreRefused_data();
    void badLinksAreRefused();
    void aNestedTimelineKeepsItsPlaceOutside();
    void anEmptyTimelineEndsAtZero();
};

void ShowTimesTest::timesFollowTheRules_data()
{
    QTest::addColumn<ShowEffect>("probe");
    QTest::addColumn<quint32>("begin");
    QTest::addColumn<quint32>("end");
    const auto row = [](const char* name, const ShowEffect& probe, quint32 begin, quint32 end) {
        QTest::newRow(name) << probe << begin << end;
    };
    row("fixed", plain().at(700).lasting(300), 700, 1000);
    row("a fixed end is a length", plain().withStartOf(1, 0).lasting(300), 1000, 1300);
    row("with the start", plain().withStartOf(1, 250).lasting(100), 1250, 1350);
    row("after the end", plain().afterEndOf(1, 250).lasting(100), 5250, 5350);
    row("a negative offset", plain().afterEndOf(1, -500).lasting(100), 4500, 4600);
    row("below zero is zero", plain().withStartOf(1, -1000.5).lasting(100), 0, 100);
    row("offsets are cut off", plain().withStartOf(1, 0.75).lasting(100), 1000, 1100);
    row("until the start is absolute", plain().at(200).untilStartOf(1, -100), 200, 900);
    row("until the end", plain().at(200).untilEndOf(1, 50), 200, 5050);
    row("an end below zero is zero", plain().at(200).untilStartOf(1, -2000), 200, 0);
    row("cycles of no length of their own", plain().at(200).cycles(3), 200, 3200);
    row("cycles of a fade",
        ShowEffects::crossFade(QString(), QString(), QString(), 2.5).at(200).cycles(2), 200, 5200);
}

void ShowTimesTest::timesFollowTheRules()
{
    QFETCH(const ShowEffect, probe);
    QFETCH(const quint32, begin);
    QFETCH(const quint32, end);
    ShowEffect show = withProbe(probe);
    QVERIFY(resolveTimes(&show));
    QCOMPARE(show.children.at(1).begin, begin);
    QCOMPARE(show.children.at(1).end, end);
    QCOMPARE(show.begin, 0U);
    QCOMPARE(show.end, std::max(5000U, end));
}

void ShowTimesTest::aLaterEffectMayBeLinkedTo()
{
    ShowEffect show = ShowEffects::timeline(QString());
    show.add(plain().afterEndOf(2, 0).lasting(10));
    show.add(plain().withStartOf(3, 5).lasting(10));
    show.add(plain().at(100).lasting(10));
    QVERIFY(resolveTimes(&show));
    QCOMPARE(show.children.at(0).begin, 115U);
    QCOMPARE(show.children.at(1).begin, 105U);
}

void ShowTimesTest::badLinksAreRefused_data()
{
    QTest::addColumn<ShowEffect>("probe");
    QTest::newRow("start to nothing") << plain().withStartOf(9, 0);
    QTest::newRow("end to nothing") << plain().untilEndOf(9, 0);
    QTest::newRow("start to itself") << plain().withStartOf(2, 0);
    QTest::newRow("end to itself") << plain().untilEndOf(2, 0);
}

void ShowTimesTest::badLinksAreRefused()
{
    QFETCH(const ShowEffect, probe);
    ShowEffect show = withProbe(probe);
    QVERIFY(!resolveTimes(&show));

    ShowEffect ring = ShowEffects::timeline(QString());
    ring.add(plain().withStartOf(2, 0));
    ring.add(plain().at(0).untilEndOf(1, 0)); // through its end, back to the first
    QVERIFY(!resolveTimes(&ring));
}

void ShowTimesTest::aNestedTimelineKeepsItsPlaceOutside()
{
    ShowEffect inner = ShowEffects::timeline(QString());
    inner.add(plain().at(500).lasting(1500));
    ShowEffect show = withProbe(inner.afterEndOf(1, 100).lasting(3000));
    QVERIFY(resolveTimes(&show));
    const ShowEffect& nested = show.children.at(1);
    QCOMPARE(nested.begin, 5100U);
    QCOMPARE(nested.end, 8100U);
    QCOMPARE(nested.children.at(0).begin, 500U); // on its own clock
    QCOMPARE(nested.children.at(0).end, 2000U);
}

void ShowTimesTest::anEmptyTimelineEndsAtZero()
{
    ShowEffect show = ShowEffects::timeline(QString());
    show.end = 77;
    QVERIFY(resolveTimes(&show));
    QCOMPARE(show.end, 0U);
}

QTEST_GUILESS_MAIN(ShowTimesTest)
#include "ShowTimesTest.moc"
