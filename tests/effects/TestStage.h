#pragma once

#include "engine/Effect.h"
#include "tests/engine/TestShow.h"

/// The map that the effects are tried on: lights 1 to 8; the chase 0x100 of three steps (1 2, 3,
/// 4 5 6); the chase 0x101 of that chase and the leaf 7; the synchronized group 0x102 of the same
/// three steps; the empty chase 0x103; the leaf 0x104 of a light that the map doesn't have.
class TestStage : public TestShow::TestMap
{
public:
    TestStage()
        : TestMap(8, TestShow::group(0x10, 2, {1, 2}) + TestShow::group(0x11, 2, {3}) +
                         TestShow::group(0x12, 2, {4, 5, 6}) +
                         TestShow::group(0x100, 1, {0x10, 0x11, 0x12}) +
                         TestShow::group(0x101, 1, {0x100, 7}) +
                         TestShow::group(0x102, 2, {0x10, 0x11, 0x12}) +
                         TestShow::group(0x103, 1, {}) + TestShow::group(0x104, 3, {0x104}))
    {}
    /// One frame of `effect`, `ms` after its start, on untouched lights.
    void run(Effect& effect, qint64 ms)
    {
        endFrame();
        effect.setActive(true);
        effect.setStartMs(TestShow::kStartMs);
        effect.tick(TestShow::kStartMs + ms, 0);
    }
};

/// The rows of a test over the groups of the stage: which lights each of them paints.
inline void addGroupRows()
{
    QTest::addColumn<quint64>("gid");
    QTest::addColumn<QVector<quint64>>("painted");
    using Uids = QVector<quint64>;
    QTest::newRow("chase") << quint64(0x100) << Uids{1, 2, 3, 4, 5, 6};
    QTest::newRow("nested chase") << quint64(0x101) << Uids{1, 2, 3, 4, 5, 6, 7};
    QTest::newRow("synchronized") << quint64(0x102) << Uids{1, 2, 3, 4, 5, 6};
    QTest::newRow("leaf") << quint64(8) << Uids{8};
    QTest::newRow("no lights") << quint64(0x103) << Uids{};
    QTest::newRow("leaf without its light") << quint64(0x104) << Uids{};
    QTest::newRow("no such group") << quint64(0x999) << Uids{};
    QTest::newRow("no group") << quint64(Effect::kNoGid) << Uids{};
}

/// Opaque 0..1 components at full width, as a mix leaves them.
inline VelaColor mixed(double red, double green, double blue, double alpha = 1.0)
{
    return VelaColor::fromRgbF(red, green, blue, alpha);
}
