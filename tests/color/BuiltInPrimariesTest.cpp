#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/ProfileTable.h"

#include <QFile>
#include <QObject>
#include <QtTest>

/// A program without the profile file: it is not linked to the resources.
class BuiltInPrimariesTest : public QObject
{
    Q_OBJECT
private slots:
    void aMissingFileIsLoggedAndTheBuiltInValuesServe();
};

void BuiltInPrimariesTest::aMissingFileIsLoggedAndTheBuiltInValuesServe()
{
    QVERIFY(!QFile::exists(QStringLiteral(":/FixtureProfiles.xml")));
    QTest::ignoreMessage(QtDebugMsg, "could not open tintweave profile database");
    ProfileTable& table = ProfileTable::instance();
    QCOMPARE(table.profile(0, 1, 0)->X.at(0), 0.4123);
    QCOMPARE(table.profile(33, 3, 0)->channelNames.at(2), QStringLiteral("Deep-Blue"));
    for (const int id : ColorUtils::allProfiles(true)) {
        const int layout = ColorUtils::layoutOfProfile(id);
        for (const int primarySet : {0, 1}) {
            QVERIFY(table.profile(id, layout, primarySet)->X.size() >=
                    ColorUtils::channelCount(layout));
        }
    }
    double drives[8] = {};
    ColorUtils::solve({1.0, 0.35, 0.36}, drives, 6, 5, true, 0);
    QVERIFY(drives[1] > 0.0);
}

QTEST_APPLESS_MAIN(BuiltInPrimariesTest)
#include "BuiltInPrimariesTest.moc"
