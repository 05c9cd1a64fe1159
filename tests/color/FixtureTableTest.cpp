#include "color/FixtureTable.h"

#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/ModeTable.h"
#include "color/ProfileTable.h"
#include "resources/Resources.h"

#include <QObject>
#include <QSet>
#include <QtTest>

namespace {

struct Expected
{
    int layout;
    int curve;
    QList<int> modes;
    int nativeMode;
    int rgbMode;
    QList<bool> tintweave; // by place in `modes`
};

const QList<int> kAllRgba = {5, 8, 11, 14, 18, 31, 35, 41, 44};
const QList<int> kAllRgbw = {6, 9, 12, 15, 19, 32, 36, 42};
const QList<int> kAllGlowmatch = {13, 16, 20, 33, 34, 37, 43, 45, 46};
const QList<int> kAllRgb = {7, 10, 17};

Expected expectedOf(int id)
{
    switch (id) {
    case 0:
        return {1, 0, {0}, 0, 0, {false}};
    case 1:
        return {2, 1, {0, 7, 3}, 7, 7, {true, true, false}};
    case 2:
        return {5, 1, {0, 8, 4}, 8, 8, {true, true, true}};
    case 3:
    case 25:
        return {3, 0, {2}, 2, 0, {false}};
    case 4:
        return {4, 0, {9}, 9, 9, {false}};
    case 23:
        return {6, 0, {1}, 1, 0, {false}};
    case 24:
        return {2, 0, {3}, 3, 0, {false}};
    case 20:
        return {3, 1, {0, 10, 11}, 10, 10, {true, true, true}};
    case 21:
    case 38:
        return {6, 1, {12, 14}, 14, 12, {false, false}};
    case 22:
    case 39:
        return {3, 1, {13, 15}, 15, 13, {false, false}};
    case 26:
        return {8, 0, {17, 16}, 17, 17, {false, false}};
    case 27:
        return {7, 0, {16}, 16, 16, {false}};
    case 28:
        return {8, 0, {18}, 18, 18, {false}};
    case 29:
        return {7, 0, {20}, 20, 20, {false}};
    case 30:
        return {10, 0, {19}, 19, 19, {false}};
    case 40:
        return {11, 0, {22, 23}, 22, 23, {false, false}};
    default:
        break;
    }
    if (kAllRgb.contains(id)) {
        return {1, 1, {0}, 0, 0, {true}};
    }
    if (kAllRgba.contains(id)) {
        return {6, 1, {0, 5, 1}, 1, 5, {true, true, true}};
    }
    if (kAllRgbw.contains(id)) {
        return {3, 1, {0, 6, 2}, 2, 6, {true, true, true}};
    }
    return {3, 1, {0, 10, 11}, 11, 10, {true, true, true}};
}

QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '));
}

QStringList channelNamesOf(int id)
{
    switch (id) {
    case 1:
    case 24:
        return words("Red Green Blue Amber White");
    case 2:
        return words("Red Green Blue Mint White");
    case 3:
    case 22:
    case 25:
    case 39:
        return words("Red Green Blue White");
    case 4:
    case 28:
    case 30:
        return words("White");
    case 21:
    case 23:
    case 38:
        return words("Red Green Blue Amber");
    case 26:
        return words("Warm Neutral Cool");
    case 27:
        return words("Warm Cool");
    case 29:
        return words("Cool Warm");
    case 33:
        return words("Red-Orange Green Royal-Blue Lime");
    case 40:
        return words("2200K 3000K 4000K 6500K");
    default:
        break;
    }
    if (kAllRgba.contains(id)) {
        return words("Red Green Blue Amber");
    }
    if (kAllRgbw.contains(id)) {
        return words("Red Green Blue White");
    }
    if (kAllGlowmatch.contains(id)) {
        return words("Red-Orange Green Blue BSY");
    }
    return words("Red Green Blue");
}

} // namespace

class FixtureTableTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void everyProfileHasItsRow_data();
    void everyProfileHasItsRow();
    void theGenericRowsHaveTheirNames();
    void noTwoProfilesShareAName();
    void unknownProfilesReadAsProfileZero();
    void layoutsHaveTheirChannelCounts_data();
    void layoutsHaveTheirChannelCounts();
    void allProfilesAreInOrder();
};

void FixtureTableTest::initTestCase()
{
    initForgeResources();
}

void FixtureTableTest::everyProfileHasItsRow_data()
{
    QTest::addColumn<int>("id");
    for (int id = 0; id < 47; ++id) {
        QTest::newRow(qPrintable(QStringLiteral("profile %1").arg(id))) << id;
    }
}

void FixtureTableTest::everyProfileHasItsRow()
{
    QFETCH(const int, id);
    const Expected expected = expectedOf(id);
    const FixtureRow& row = FixtureTable::instance().row(id);
    QCOMPARE(row.layout, expected.layout);
    QCOMPARE(row.curve, expected.curve);
    QCOMPARE(row.modes, expected.modes);
    QCOMPARE(row.nativeMode, expected.nativeMode);
    QCOMPARE(row.rgbMode, expected.rgbMode);
    QCOMPARE(row.tintweaveByMode.size(), expected.modes.size());
    for (int i = 0; i < expected.modes.size(); ++i) {
        QVERIFY(row.tintweaveByMode.contains(expected.modes.at(i)));
        QCOMPARE(row.tintweaveByMode.value(expected.modes.at(i)), expected.tintweave.at(i));
        QVERIFY(ModeTable::isKnown(expected.modes.at(i)));
    }
    QVERIFY(row.modes.contains(row.nativeMode));

    QCOMPARE(ColorUtils::layoutOfProfile(id), expected.layout);
    QCOMPARE(ColorUtils::curveOfProfile(id), expected.curve);
    QCOMPARE(ColorUtils::nativeModeOfProfile(id), expected.nativeMode);
    QCOMPARE(ColorUtils::modesOfProfile(id), expected.modes);
    QCOMPARE(ColorUtils::nameOfProfile(id), row.name);

    QCOMPARE(row.primaries, ProfileTable::instance().profile(id, row.layout, 0));
    QCOMPARE(row.primaries->profileId, id);
    QVERIFY(row.primaries->X.size() >= ColorUtils::channelCount(row.layout));
    QCOMPARE(row.primaries->channelNames, channelNamesOf(id));
    QCOMPARE(ProfileTable::instance().profile(id, row.layout, 1)->channelNames, channelNamesOf(id));
}

void FixtureTableTest::theGenericRowsHaveTheirNames()
{
    QCOMPARE(ColorUtils::nameOfProfile(0), QStringLiteral("Generic RGB"));
    QCOMPARE(ColorUtils::nameOfProfile(3), QStringLiteral("Generic RGBW"));
    QCOMPARE(ColorUtils::nameOfProfile(4), QStringLiteral("Single Channel"));
    QCOMPARE(ColorUtils::nameOfProfile(23), QStringLiteral("Generic RGBA"));
    QCOMPARE(ColorUtils::nameOfProfile(24), QStringLiteral("Generic RGBAW"));
}

void FixtureTableTest::noTwoProfilesShareAName()
{
    QSet<QString> names;
    for (const int id : ColorUtils::allProfiles(true)) {
        names.insert(ColorUtils::nameOfProfile(id));
    }
    QVERIFY(!names.contains(QString()));
    QCOMPARE(names.size(), 47);
}

void FixtureTableTest::unknownProfilesReadAsProfileZero()
{
    for (const int id : {-1, 47, 1000000}) {
        QCOMPARE(ColorUtils::layoutOfProfile(id), 1);
        QCOMPARE(ColorUtils::curveOfProfile(id), 0);
        QCOMPARE(ColorUtils::nativeModeOfProfile(id), 0);
        QCOMPARE(ColorUtils::nameOfProfile(id), QStringLiteral("Generic RGB"));
        QCOMPARE(ColorUtils::modesOfProfile(id), QList<int>{0});
    }
}

void FixtureTableTest::layoutsHaveTheirChannelCounts_data()
{
    QTest::addColumn<int>("layout");
    QTest::addColumn<int>("channels");
    QTest::newRow("below") << -1 << 0;
    QTest::newRow("none") << 0 << 0;
    QTest::newRow("RGB") << 1 << 3;
    QTest::newRow("RGBAW") << 2 << 5;
    QTest::newRow("RGBW") << 3 << 4;
    QTest::newRow("single") << 4 << 1;
    QTest::newRow("RGB, mint, white") << 5 << 5;
    QTest::newRow("RGBA") << 6 << 4;
    QTest::newRow("two-channel Crest") << 7 << 2;
    QTest::newRow("three-channel Crest") << 8 << 3;
    QTest::newRow("three-channel Dune") << 9 << 3;
    QTest::newRow("two-channel Dune") << 10 << 2;
    QTest::newRow("four-channel Crest") << 11 << 4;
    QTest::newRow("above") << 12 << 0;
}

void FixtureTableTest::layoutsHaveTheirChannelCounts()
{
    QFETCH(const int, layout);
    QFETCH(const int, channels);
    QCOMPARE(ColorUtils::channelCount(layout), channels);
}

void FixtureTableTest::allProfilesAreInOrder()
{
    QList<int> ids;
    for (int id = 0; id < 47; ++id) {
        ids.append(id);
    }
    QCOMPARE(ColorUtils::allProfiles(true), ids);
    ids.removeAt(4);
    QCOMPARE(ColorUtils::allProfiles(false), ids);
}

QTEST_APPLESS_MAIN(FixtureTableTest)
#include "FixtureTableTest.moc"
