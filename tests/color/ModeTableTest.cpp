#include "color/ModeTable.h"

#include "color/ColorUtils.h"

#include <QObject>
#include <QtTest>

class ModeTableTest : public QObject
{
    Q_OBJECT
private slots:
    void everyModeHasItsRow_data();
    void everyModeHasItsRow();
    void everyLayoutHasChannels();
    void unknownModesReadAsModeZero();
};

void ModeTableTest::everyModeHasItsRow_data()
{
    QTest::addColumn<int>("id");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("rgbIn");
    QTest::addColumn<bool>("sameInOut");
    QTest::addColumn<int>("layout");
    QTest::addColumn<QList<int>>("states");
    const QList<int> both = {1, 0};
    const QList<int> on = {1};
    const QList<int> off = {0};
    const auto row = [](int id, const char* name, bool rgbIn, bool same, int layout,
                        const QList<int>& states) {
        QTest::newRow(qPrintable(QStringLiteral("mode %1").arg(id)))
            << id << QString::fromLatin1(name) << rgbIn << same << layout << states;
    };
    row(0, "RGB In/Out", true, true, 1, both);
    row(1, "RGBA In/Out", false, true, 6, both);
    row(2, "RGBW In/Out", false, true, 3, both);
    row(3, "RGBAW In/Out", false, true, 2, off);
    row(4, "RGBWW In/Out", false, true, 5, both);
    row(5, "RGB In / RGBA Out", true, false, 1, on);
    row(6, "RGB In / RGBW Out", true, false, 1, on);
    row(7, "RGB In / RGBAW Out", true, false, 1, on);
    row(8, "RGB In / RGBWW Out", true, false, 1, on);
    row(9, "Single Channel In/Out", false, true, 4, off);
    row(10, "RGB In / 4-ch Glowmatch Out", true, false, 1, on);
    row(11, "4-ch Glowmatch In/Out", false, true, 3, both);
    row(12, "RGB In / RGBA Out", true, true, 1, off);
    row(13, "RGB In / RGBW Out", true, true, 1, off);
    row(14, "RGBA In / Out", false, true, 6, off);
    row(15, "RGBW In / Out", false, true, 3, off);
    row(16, "Crest2 In/Out", false, true, 7, off);
    row(17, "Crest3 In/Out", false, false, 8, off);
    row(18, "Dune3 In/Out", false, false, 9, off);
    row(19, "Dune2 In/Out", false, true, 10, off);
    row(20, "Crest2 In/Out", false, true, 7, off);
    row(21, "RGB In / Glowmatch Out", true, true, 1, off);
    row(22, "Crest4 In/Out", false, true, 11, off);
    row(23, "RGB In / Crest4 Out", true, true, 1, off);
}

void ModeTableTest::everyModeHasItsRow()
{
    QFETCH(const int, id);
    QFETCH(const QString, name);
    QFETCH(const bool, rgbIn);
    QFETCH(const bool, sameInOut);
    QFETCH(const int, layout);
    QFETCH(const QList<int>, states);
    const ModeRecord& mode = ModeTable::instance().mode(id);
    QCOMPARE(mode.id, id);
    QCOMPARE(mode.name, name);
    QCOMPARE(mode.rgbIn, rgbIn);
    QCOMPARE(mode.sameInOut, sameInOut);
    QCOMPARE(mode.layout, layout);
    QCOMPARE(mode.tintweaveStates, states);
}

void ModeTableTest::everyLayoutHasChannels()
{
    for (int id = 0; id < ModeTable::kModeCount; ++id) {
        QVERIFY(ColorUtils::channelCount(ModeTable::instance().mode(id).layout) > 0);
    }
}

void ModeTableTest::unknownModesReadAsModeZero()
{
    QCOMPARE(ModeTable::kModeCount, 24);
    for (const int id : {-1, 24, 1000000}) {
        QVERIFY(!ModeTable::isKnown(id));
        QCOMPARE(ModeTable::instance().mode(id).id, 0);
    }
}

QTEST_APPLESS_MAIN(ModeTableTest)
#include "ModeTableTest.moc"
