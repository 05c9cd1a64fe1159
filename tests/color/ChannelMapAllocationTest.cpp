#include "color/ColorUtils.h"
#include "color/DisplayColor.h"
#include "color/ProfileTable.h"
#include "color/VelaColor.h"
#include "resources/Resources.h"
#include "tests/color/AllocationCount.h"

#include <QObject>
#include <QtTest>

/// What turns colours into bytes and screen colours in a frame takes nothing from the heap.
class ChannelMapAllocationTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void allocationsAreCounted();
    void solvingAllocatesNothing();
    void mappingAllocatesNothing();
    void knownScreenColorsAllocateNothing();

private:
    QVector<VelaColor> m_colors;
};

void ChannelMapAllocationTest::initTestCase()
{
    initForgeResources();
    ProfileTable::instance();
    VelaColor white;
    white.setYxyF(0.7, 0.38, 0.377);
    VelaColor outside;
    outside.setYxyF(0.7, 0.05, 0.9);
    VelaColor strange = VelaColor::fromRgb(1, 2, 3);
    strange.setProfileId(987654);
    m_colors = {VelaColor::fromRgb(200, 100, 50),
                VelaColor::fromHsv(30, 200, 100),
                VelaColor::fromRgb(0, 0, 0),
                VelaColor::fromNchannelF({1.0, 0.1, 0.9, 0.4, 0.2}, 6, 5, true),
                white,
                white.toNchannel(3, 6, -1, 0),
                outside,
                strange,
                VelaColor()};
}

void ChannelMapAllocationTest::allocationsAreCounted()
{
    const int before = allocations;
    const QVector<double> some(100);
    QCOMPARE(allocations - before, 1);
    QCOMPARE(some.size(), 100);
}

void ChannelMapAllocationTest::solvingAllocatesNothing()
{
    double drives[8] = {};
    quint16 levels[8] = {};
    const int before = allocations;
    for (int id = 0; id < 47; ++id) {
        const int layout = ColorUtils::layoutOfProfile(id);
        for (const int primarySet : {0, 1}) {
            for (const bool clip : {false, true}) {
                ColorUtils::solve({1.0, 0.33, 0.33}, drives, layout, id, clip, primarySet);
                ColorUtils::solve({1.0, 0.9, 0.9}, drives, layout, id, clip, primarySet);
                ColorUtils::solveToLevels({1.0, 0.33, 0.33}, levels, layout, id, 1, clip,
                                          primarySet);
            }
        }
    }
    QCOMPARE(allocations - before, 0);
}

void ChannelMapAllocationTest::mappingAllocatesNothing()
{
    quint8 bytes[64] = {};
    const auto frame = [&] {
        for (const VelaColor& color : qAsConst(m_colors)) {
            for (int mode = -1; mode < 25; ++mode) {
                for (const int profile : {-1, 0, 5, 27, 40, 99}) {
                    for (const bool tintweave : {false, true}) {
                        ColorUtils::mapToChannels(color, tintweave, 4, 1, bytes, 0, 1, profile,
                                                  mode);
                        ColorUtils::mapToChannels(color, tintweave, 20, 2, bytes, 0, 2, profile,
                                                  mode);
                    }
                }
            }
        }
    };
    frame(); // builds tables
    const int before = allocations;
    frame();
    QCOMPARE(allocations - before, 0);
}

void ChannelMapAllocationTest::knownScreenColorsAllocateNothing()
{
    int sum = 0;
    const auto frame = [&] {
        for (const VelaColor& color : qAsConst(m_colors)) {
            sum += toDisplayQColor(color).red();
        }
    };
    frame(); // builds the chart's images
    const int first = sum;
    const int before = allocations;
    frame();
    QCOMPARE(allocations - before, 0);
    QCOMPARE(sum, 2 * first);
}

QTEST_APPLESS_MAIN(ChannelMapAllocationTest)
#include "ChannelMapAllocationTest.moc"
