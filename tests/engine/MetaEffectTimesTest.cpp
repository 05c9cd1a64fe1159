#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "tests/engine/TestShow.h"

#include <QSignalSpy>

#include <limits>

using TestShow::ProbeEffect;

/// How a timeline works out its children's times.
class MetaEffectTimesTest : public QObject
{
    Q_OBJECT
private slots:
    void fixedTimes();
    void linkedStarts_data();
    void linkedStarts();
    void linkedEnds_data();
    void linkedEnds();
    void cycles_data();
    void cycles();
    void otherKindsStay();
    void linksAreFollowedWhateverTheOrder_data();
    void linksAreFollowedWhateverTheOrder();
    void eachIsWorkedOutOncePerPass();
    void aMissingStartLinkIsForgotten();
    void aMissingEndLinkLeavesNoLength();
    void bothLinksMissing();
    void aMissingStartStillFollowsItsEndLink();
    void ringsEnd_data();
    void ringsEnd();
    void twoEffectsMayLeanOnEachOther();
    void aLongChainIsNoRecursion();
    void passesTellTheirEnd();
    void theEndIsThatOfTheLastChild();
    void onlyTheAskedEffectIsWorkedOutOutsideAPass();
    void numbersThatRepeatAreHarmless();
    void aSlotMayChangeTheShowMeanwhile();
};

namespace {

/// Three effects of the numbers 1, 2, 3; the first lies at 100 to 250.
struct Three
{
    MetaEffect root{nullptr, Effect::kNoGid, nullptr};
    ProbeEffect first;
    ProbeEffect second;
    ProbeEffect third;

    Three()
    {
        first.setStartFixedTime(100);
        first.setEndFixedTime(150);
        for (ProbeEffect* const effect : {&first, &second, &third}) {
            root.addEffect(effect);
        }
    }
};

void linkStart(Effect& effect, quint32 eid, bool toStart, double offset)
{
    effect.setStartType(Effect::StartLinked);
    effect.setStartLinkEid(eid);
    effect.setStartLinkStart(toStart);
    effect.setStartLinkOffset(offset);
}

void linkEnd(Effect& effect, quint32 eid, bool toStart, double offset)
{
    effect.setEndType(Effect::EndLinked);
    effect.setEndLinkEid(eid);
    effect.setEndLinkStart(toStart);
    effect.setEndLinkOffset(offset);
}

void linkRows()
{
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<bool>("toStart");
    QTest::addColumn<double>("offset");
    QTest::addColumn<uint>("expected");
    QTest::newRow("to a start") << true << 0.0 << 100U;
    QTest::newRow("to an end") << false << 0.0 << 250U;
    QTest::newRow("later") << true << 30.0 << 130U;
    QTest::newRow("earlier") << false << -30.0 << 220U;
    QTest::newRow("truncated") << true << 0.9 << 100U;
    QTest::newRow("truncated below") << true << -0.1 << 99U;
    QTest::newRow("at zero") << true << -100.0 << 0U;
    QTest::newRow("before zero") << true << -101.0 << 0U;
    QTest::newRow("far before zero") << true << -1e300 << 0U;
    QTest::newRow("greatest") << true << 4294967195.0 << 4294967295U;
    QTest::newRow("beyond") << true << 4294967196.0 << 0U;
    QTest::newRow("nan") << true << nan << 0U;
    QTest::newRow("inf") << true << infinity << 0U;
    QTest::newRow("-inf") << true << -infinity << 0U;
}

} // namespace

void MetaEffectTimesTest::fixedTimes()
{
    Three show;
    QSignalSpy begins(&show.first, &Effect::beginChanged);
    show.root.updateEffectTimes();
    QCOMPARE(show.first.begin(), 100U);
    QCOMPARE(show.first.end(), 250U); // a length, not a time
    QCOMPARE(begins.count(), 1);
    QCOMPARE(show.second.begin(), 0U);
    QCOMPARE(show.second.end(), 0U);
    QCOMPARE(show.root.end(), 250U);
}

void MetaEffectTimesTest::linkedStarts_data()
{
    linkRows();
}

void MetaEffectTimesTest::linkedStarts()
{
    QFETCH(const bool, toStart);
    QFETCH(const double, offset);
    QFETCH(const uint, expected);
    Three show;
    linkStart(show.second, 1, toStart, offset);
    show.second.setEndFixedTime(0);
    QSignalSpy begins(&show.second, &Effect::beginChanged);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.begin(), expected);
    QCOMPARE(show.second.end(), expected);
    QCOMPARE(begins.count(), 1);
    QCOMPARE(show.second.startType(), 1);
}

void MetaEffectTimesTest::linkedEnds_data()
{
    linkRows();
}

void MetaEffectTimesTest::linkedEnds()
{
    QFETCH(const bool, toStart);
    QFETCH(const double, offset);
    QFETCH(const uint, expected);
    Three show;
    show.second.setStartFixedTime(7);
    linkEnd(show.second, 1, toStart, offset);
    QSignalSpy begins(&show.second, &Effect::beginChanged);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.begin(), 7U);
    QCOMPARE(show.second.end(), expected); // a time, not a length
    QCOMPARE(begins.count(), 1);
}

void MetaEffectTimesTest::cycles_data()
{
    QTest::addColumn<uint>("cycle");
    QTest::addColumn<uint>("count");
    QTest::addColumn<uint>("end");
    QTest::newRow("one") << 1000U << 1U << 1007U;
    QTest::newRow("three") << 1500U << 3U << 4507U;
    QTest::newRow("none") << 1000U << 0U << 7U;
    QTest::newRow("no length") << 0U << 5U << 7U;
    QTest::newRow("the count just fits") << 65537U << 65535U << 6U; // 2^32 - 1, and 7 wraps
    QTest::newRow("the count fits no more") << 65536U << 65536U << 7U;
    QTest::newRow("greatest") << 4294967295U << 4294967295U << 7U;
}

void MetaEffectTimesTest::cycles()
{
    QFETCH(const uint, cycle);
    QFETCH(const uint, count);
    QFETCH(const uint, end);
    Three show;
    show.second.cycle = cycle;
    show.second.setStartFixedTime(7);
    show.second.setEndType(Effect::EndCycles);
    show.second.setEndCycleCount(count);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.end(), end);
}

void MetaEffectTimesTest::otherKindsStay()
{
    Three show;
    QSignalSpy begins(&show.second, &Effect::beginChanged);
    show.second.setStartType(2);
    show.second.setEndType(3);
    show.second.setBegin(33);
    show.second.setEnd(44);
    begins.clear();
    show.root.updateEffectTimes();
    QCOMPARE(show.second.begin(), 33U);
    QCOMPARE(show.second.end(), 44U);
    QCOMPARE(begins.count(), 0);
}

void MetaEffectTimesTest::linksAreFollowedWhateverTheOrder_data()
{
    QTest::addColumn<QVector<uint>>("priorities");
    QTest::newRow("forwards") << QVector<uint>{1, 2, 3};
    QTest::newRow("backwards") << QVector<uint>{3, 2, 1};
    QTest::newRow("mixed") << QVector<uint>{2, 3, 1};
}

void MetaEffectTimesTest::linksAreFollowedWhateverTheOrder()
{
    QFETCH(const QVector<uint>, priorities);
    Three show;
    show.first.setPriority(priorities.at(0));
    show.second.setPriority(priorities.at(1));
    show.third.setPriority(priorities.at(2));
    show.root.sortEffects();
    linkStart(show.second, 1, false, 50.0);
    show.second.setEndFixedTime(20);
    linkStart(show.third, 2, false, -5.0);
    linkEnd(show.third, 2, true, 400.0);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.begin(), 300U);
    QCOMPARE(show.second.end(), 320U);
    QCOMPARE(show.third.begin(), 315U);
    QCOMPARE(show.third.end(), 700U);
    QCOMPARE(show.root.end(), 700U);
}

void MetaEffectTimesTest::eachIsWorkedOutOncePerPass()
{
    Three show;
    linkStart(show.second, 1, true, 0.0);
    linkEnd(show.second, 1, false, 0.0);
    linkStart(show.third, 1, true, 0.0);
    linkEnd(show.third, 2, false, 0.0);
    QSignalSpy begins(&show.first, &Effect::beginChanged);
    show.root.updateEffectTimes();
    QCOMPARE(begins.count(), 1);
    show.root.updateEffectTime(&show.first); // still counts as worked out
    QCOMPARE(begins.count(), 1);
    show.root.clearResolved();
    show.root.updateEffectTime(&show.first);
    QCOMPARE(begins.count(), 2);
    show.root.updateEffectTime(nullptr);
    show.root.updateEffectTimes();
    QCOMPARE(begins.count(), 3);
}

void MetaEffectTimesTest::aMissingStartLinkIsForgotten()
{
    Three show;
    linkStart(show.second, 99, false, 12.0);
    show.second.setStartFixedTime(555);
    show.second.setEndFixedTime(30);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.startType(), 0);
    QCOMPARE(show.second.startFixedTime(), 0U);
    QCOMPARE(show.second.begin(), 0U);
    QCOMPARE(show.second.end(), 30U);
    ProbeEffect late; // comes too late: the link is gone for good
    late.setEid(99);
    late.setStartFixedTime(1000);
    show.root.addEffect(&late);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.begin(), 0U);
}

void MetaEffectTimesTest::aMissingEndLinkLeavesNoLength()
{
    Three show;
    show.second.setStartFixedTime(40);
    show.second.setEndFixedTime(555);
    linkEnd(show.second, 99, false, 12.0);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.endType(), 0);
    QCOMPARE(show.second.endFixedTime(), 0U);
    QCOMPARE(show.second.begin(), 40U);
    QCOMPARE(show.second.end(), 40U);
}

void MetaEffectTimesTest::bothLinksMissing()
{
    Three show;
    linkStart(show.second, 98, false, 12.0);
    linkEnd(show.second, 99, false, 12.0);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.startType(), 0);
    QCOMPARE(show.second.endType(), 0);
    QCOMPARE(show.second.begin(), 0U);
    QCOMPARE(show.second.end(), 0U);
}

void MetaEffectTimesTest::aMissingStartStillFollowsItsEndLink()
{
    Three show;
    linkStart(show.second, 99, false, 12.0);
    linkEnd(show.second, 3, false, 1.0);
    show.third.setEndFixedTime(60);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.begin(), 0U);
    QCOMPARE(show.second.end(), 61U);
}

void MetaEffectTimesTest::ringsEnd_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("to itself") << 0;
    QTest::newRow("two starts") << 1;
    QTest::newRow("three ends") << 2;
    QTest::newRow("start and end of itself") << 3;
}

void MetaEffectTimesTest::ringsEnd()
{
    QFETCH(const int, kind);
    Three show;
    switch (kind) {
    case 0:
        show.second.setBegin(10);
        linkStart(show.second, 2, true, 5.0); // its present time serves
        break;
    case 1:
        linkStart(show.second, 3, true, 5.0);
        linkStart(show.third, 2, true, 5.0);
        break;
    case 2:
        linkEnd(show.first, 2, false, 1.0);
        linkEnd(show.second, 3, false, 1.0);
        linkEnd(show.third, 1, false, 1.0);
        break;
    default:
        linkStart(show.second, 2, false, 5.0);
        linkEnd(show.second, 2, true, 5.0);
        break;
    }
    QSignalSpy complete(&show.root, &MetaEffect::updateEffectTimesComplete);
    show.root.updateEffectTimes();
    QCOMPARE(complete.count(), 1);
    switch (kind) {
    case 0:
        QCOMPARE(show.second.begin(), 15U);
        break;
    case 1: // the third comes first, from the second's present 0
        QCOMPARE(show.third.begin(), 5U);
        QCOMPARE(show.second.begin(), 10U);
        break;
    case 2:
        QCOMPARE(show.third.end(), 1U);
        QCOMPARE(show.second.end(), 2U);
        QCOMPARE(show.first.end(), 3U);
        break;
    default:
        QCOMPARE(show.second.begin(), 5U);
        QCOMPARE(show.second.end(), 10U);
        break;
    }
    QCOMPARE(show.second.startType() == 1 || show.second.endType() == 1, true); // links are kept
}

void MetaEffectTimesTest::twoEffectsMayLeanOnEachOther()
{
    // The first ends where the second starts, which starts by the first's start.
    Three show;
    linkEnd(show.first, 2, true, 0.0);
    linkStart(show.second, 1, true, 50.0);
    show.root.updateEffectTimes();
    QCOMPARE(show.second.begin(), 150U);
    QCOMPARE(show.first.end(), 150U);
}

void MetaEffectTimesTest::aLongChainIsNoRecursion()
{
    constexpr int kEffects = 50000;
    QString text = QStringLiteral("<effect>");
    for (int eid = 1; eid <= kEffects; ++eid) {
        text +=
            QStringLiteral("<effect><type>Meta Effect</type><eid>%1</eid><starttype>1</starttype>"
                           "<startlinkeid>%2</startlinkeid>"
                           "<startlinkoffset>1</startlinkoffset></effect>")
                .arg(eid)
                .arg(eid + 1);
    }
    MetaEffect* const show = EffectFactory::parseShow(text + QStringLiteral("</effect>"), nullptr);
    QVERIFY(show != nullptr);
    show->updateEffectTimes();
    const QList<Effect*> effects = show->effectList();
    QCOMPARE(effects.last()->startType(), 0); // its link led nowhere
    QCOMPARE(effects.last()->begin(), 0U);
    QCOMPARE(effects.first()->begin(), quint32(kEffects - 1));
    show->deleteShow();
}

void MetaEffectTimesTest::passesTellTheirEnd()
{
    Three show;
    QStringList order;
    connect(&show.root, &Effect::cycleTimeChanged, this,
            [&](uint ms) { order << QString::number(ms); });
    connect(&show.root, &MetaEffect::updateEffectTimesComplete, this,
            [&] { order << QStringLiteral("complete"); });
    show.root.updateEffectTimes();
    show.root.updateEffectTimes();
    QCOMPARE(order, QStringList({QStringLiteral("250"), QStringLiteral("complete"),
                                 QStringLiteral("complete")}));
}

void MetaEffectTimesTest::theEndIsThatOfTheLastChild()
{
    Three show;
    show.root.setBegin(50);
    show.second.setEnd(900);
    QSignalSpy told(&show.root, &Effect::cycleTimeChanged);
    show.root.updateEndTime();
    QCOMPARE(show.root.end(), 900U);
    QCOMPARE(show.root.cycleTime(), 850U);
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.first().first().toUInt(), 850U);
    show.root.updateEndTime();
    QCOMPARE(told.count(), 1);
}

void MetaEffectTimesTest::onlyTheAskedEffectIsWorkedOutOutsideAPass()
{
    Three show;
    linkStart(show.second, 1, false, 0.0);
    show.third.setStartFixedTime(77);
    show.root.updateEffectTime(&show.second);
    QCOMPARE(show.second.begin(), 250U); // with what it links to
    QCOMPARE(show.third.begin(), 0U);
}

void MetaEffectTimesTest::numbersThatRepeatAreHarmless()
{
    Three show;
    show.second.setEid(1);
    show.second.setStartFixedTime(500);
    linkStart(show.third, 1, true, 0.0);
    show.root.updateEffectTimes();
    QCOMPARE(show.third.begin(), 100U); // the first of the two
    QCOMPARE(show.second.begin(), 0U);  // one of a number is worked out
}

void MetaEffectTimesTest::aSlotMayChangeTheShowMeanwhile()
{
    Three show;
    linkStart(show.third, 2, true, 0.0);
    bool removed = false;
    connect(&show.first, &Effect::beginChanged, this, [&] {
        if (!removed) {
            removed = true;
            show.root.removeEffect(&show.second);
        }
    });
    show.root.updateEffectTimes();
    QCOMPARE(show.third.startType(), 0); // the link's end is gone
    QCOMPARE(show.third.begin(), 0U);
}

QTEST_GUILESS_MAIN(MetaEffectTimesTest)
#include "MetaEffectTimesTest.moc"
