#include "picker/ProfileSelector.h"

#include "resources/Resources.h"

#include <QSignalSpy>
#include <QtTest>

#include <algorithm>

using VelaColorPickerLib::ProfileSelector;

class ProfileSelectorTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void offersAllProfilesInTheirOrder();
    void theInsertPolicySortsNothing();
    void tellsTheProfileChosen();
    void hasItAsAProperty();
    void emphasizesProfiles();
};

void ProfileSelectorTest::initTestCase()
{
    initForgeResources();
}

void ProfileSelectorTest::offersAllProfilesInTheirOrder()
{
    const ProfileSelector selector;
    QCOMPARE(selector.count(), 47); // the single channel included
    for (int id = 0; id < 47; ++id) {
        QCOMPARE(selector.itemText(id), ColorUtils::nameOfProfile(id));
        QCOMPARE(selector.itemData(id).toInt(), id);
    }
    QCOMPARE(selector.itemText(0), QStringLiteral("Generic RGB"));
    QCOMPARE(selector.itemText(4), QStringLiteral("Single Channel"));
    QCOMPARE(selector.profile(), 0);
}

void ProfileSelectorTest::theInsertPolicySortsNothing()
{
    const ProfileSelector selector;
    QCOMPARE(selector.insertPolicy(), QComboBox::InsertAlphabetically);
    QVERIFY(!selector.isEditable());
    QStringList texts;
    for (int row = 0; row < selector.count(); ++row) {
        texts.append(selector.itemText(row));
    }
    QVERIFY(!std::is_sorted(texts.cbegin(), texts.cend()));
}

void ProfileSelectorTest::tellsTheProfileChosen()
{
    ProfileSelector selector;
    selector.show();
    QSignalSpy chosen(&selector, &ProfileSelector::selectedProfile);
    QTest::keyClick(&selector, Qt::Key_Down);
    QCOMPARE(chosen.count(), 1);
    QCOMPARE(chosen.last().first().toInt(), 1);
    QCOMPARE(selector.profile(), 1);
    QTest::keyClick(&selector, Qt::Key_End);
    QCOMPARE(chosen.last().first().toInt(), 46);
    selector.setProfile(46);
    QCOMPARE(chosen.count(), 2);
    selector.setProfile(47);
    selector.setProfile(-1);
    QCOMPARE(selector.profile(), 46);
    QCOMPARE(chosen.count(), 2);
}

void ProfileSelectorTest::hasItAsAProperty()
{
    ProfileSelector selector;
    QVERIFY(selector.setProperty("profile", 23));
    QCOMPARE(selector.currentIndex(), 23);
    QCOMPARE(selector.property("profile").toInt(), 23);
}

void ProfileSelectorTest::emphasizesProfiles()
{
    ProfileSelector selector;
    selector.emphasize({6, 9});
    QVERIFY(selector.itemData(6, Qt::FontRole).value<QFont>().bold());
    QVERIFY(!selector.itemData(7, Qt::FontRole).isValid());
    selector.emphasize({});
    QVERIFY(!selector.itemData(6, Qt::FontRole).isValid());
}

QTEST_MAIN(ProfileSelectorTest)
#include "ProfileSelectorTest.moc"
