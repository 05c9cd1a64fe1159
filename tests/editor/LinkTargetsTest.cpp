#include "editor/LinkTargets.h"

#include "tests/editor/EditorStage.h"

#include <QRandomGenerator>

/// Which effects an effect may be linked to.
class LinkTargetsTest : public QObject
{
    Q_OBJECT
private slots:
    void onlyWhatDoesNotDependOnTheEffectIsOffered_data();
    void onlyWhatDoesNotDependOnTheEffectIsOffered();
    void nothingIsOfferedForNoEffect();
    void theOfferIsThatOfThePlainCheck();
    void longChainsAndRingsEnd();

private:
    EditorStage m_stage;
};

namespace {

QString offered(const MetaEffect& root, const Effect* edited)
{
    QStringList names;
    for (const Effect* const target : linkTargets(root, edited)) {
        names.append(target->name());
    }
    return names.join(QLatin1Char(' '));
}

/// The check as it is told, by recursion: shows without rings only.
bool passes(const MetaEffect& root, const Effect* edited, const Effect* candidate)
{
    if (candidate == nullptr || candidate == edited) {
        return false;
    }
    if (candidate->startType() == Effect::StartLinked) {
        const Effect* const target = root.effectByEid(candidate->startLinkEid());
        if (target != nullptr && !passes(root, edited, target)) {
            return false;
        }
    }
    if (candidate->endType() == Effect::EndLinked) {
        const Effect* const target = root.effectByEid(candidate->endLinkEid());
        if (target != nullptr && !passes(root, edited, target)) {
            return false;
        }
    }
    return true;
}

} // namespace

void LinkTargetsTest::onlyWhatDoesNotDependOnTheEffectIsOffered_data()
{
    QTest::addColumn<QString>("others"); // beside E1, which is edited
    QTest::addColumn<QString>("offered");
    const auto effect = [](int eid, const QString& more = QString()) {
        return EditorStage::effectXml(eid, more);
    };
    const auto start = [](int eid) { return EditorStage::startsAt(eid); };
    const auto end = [](int eid) { return EditorStage::endsAt(eid); };
    QTest::newRow("alone") << QString() << QString();
    QTest::newRow("free ones") << effect(2) + effect(3) << QStringLiteral("E2 E3");
    QTest::newRow("its follower") << effect(2, start(1)) + effect(3) << QStringLiteral("E3");
    QTest::newRow("follower by its end") << effect(2, end(1)) + effect(3) << QStringLiteral("E3");
    QTest::newRow("follower's follower")
        << effect(2, start(1)) + effect(3, end(2)) + effect(4, start(3)) << QString();
    QTest::newRow("one side free, one not")
        << effect(2) + effect(3, start(2) + end(1)) << QStringLiteral("E2");
    QTest::newRow("a link to nothing") << effect(2, start(77)) << QStringLiteral("E2");
    QTest::newRow("link settings that are not in use")
        << effect(2, QStringLiteral("<startlinkeid>1</startlinkeid><endlinkeid>1</endlinkeid>"))
        << QStringLiteral("E2");
    QTest::newRow("a ring without it")
        << effect(2, start(3)) + effect(3, start(2)) << QStringLiteral("E2 E3");
    QTest::newRow("a ring that follows it")
        << effect(2, start(3) + end(1)) + effect(3, start(2)) << QString();
    QTest::newRow("one that follows itself") << effect(2, start(2)) << QStringLiteral("E2");
}

void LinkTargetsTest::onlyWhatDoesNotDependOnTheEffectIsOffered()
{
    QFETCH(const QString, others);
    QFETCH(const QString, offered);
    const Root root = m_stage.parse(EditorStage::effectXml(1) + others);
    QCOMPARE(::offered(*root, root->effectByEid(1)), offered);
}

void LinkTargetsTest::nothingIsOfferedForNoEffect()
{
    const Root root = m_stage.parse(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    const Root other = m_stage.parse(EditorStage::effectXml(9));
    QCOMPARE(offered(*root, nullptr), QString());
    QCOMPARE(offered(*root, other->effectByEid(9)), QString());
}

void LinkTargetsTest::theOfferIsThatOfThePlainCheck()
{
    QRandomGenerator random(20200317);
    int refused = 0;
    for (int show = 0; show < 200; ++show) {
        const int count = random.bounded(2, 12);
        QString xml;
        for (int eid = 1; eid <= count; ++eid) { // links to earlier ones only: no ring
            QString links;
            if (eid > 1 && random.bounded(2) == 0) {
                links += EditorStage::startsAt(random.bounded(1, eid));
            }
            if (eid > 1 && random.bounded(2) == 0) {
                links += EditorStage::endsAt(random.bounded(1, eid));
            }
            xml += EditorStage::effectXml(eid, links);
        }
        const Root root = m_stage.parse(xml);
        const QList<Effect*> effects = root->effectList();
        for (const Effect* const edited : effects) {
            QStringList expected;
            for (const Effect* const candidate : effects) {
                if (passes(*root, edited, candidate)) {
                    expected.append(candidate->name());
                } else {
                    ++refused;
                }
            }
            QCOMPARE(offered(*root, edited), expected.join(QLatin1Char(' ')));
        }
    }
    QVERIFY(refused > 2000); // more than the effects themselves
}

void LinkTargetsTest::longChainsAndRingsEnd()
{
    constexpr int kCount = 20000;
    QString xml;
    for (int eid = 1; eid <= kCount; ++eid) {
        xml += EditorStage::effectXml(eid, EditorStage::startsAt(eid % kCount + 1));
    }
    const Root root = m_stage.parse(xml);
    QCOMPARE(linkTargets(*root, root->effectByEid(1)).size(), 0); // one ring
    root->effectByEid(5)->setStartType(Effect::StartFixed);       // 5 <- 4 <- 3 ... <- 6
    QCOMPARE(linkTargets(*root, root->effectByEid(5)).size(), 0);
    QCOMPARE(linkTargets(*root, root->effectByEid(6)).size(), kCount - 1);
}

QTEST_MAIN(LinkTargetsTest)
#include "LinkTargetsTest.moc"
