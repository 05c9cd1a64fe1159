#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/VelaColor.h"

#include <QtTest>

#include <cstdlib>

// Counts what the C library hands out: Qt's containers take theirs from there, past operator new.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-identifier-naming): glibc's own names
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
// NOLINTEND(bugprone-reserved-identifier,readability-identifier-naming)

namespace {

int allocations = 0;

} // namespace

extern "C" void* malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

extern "C" void* calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

extern "C" void* realloc(void* block, std::size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}

/// What frames do with colours takes nothing from the heap.
class ColorAllocationTest : public QObject
{
    Q_OBJECT

private slots:
    void countsQtContainers();
    void frameOperationsAllocateNothing_data();
    void frameOperationsAllocateNothing();
    void levelsAllocateNothing();
};

void ColorAllocationTest::countsQtContainers()
{
    const int before = allocations;
    const QVector<double> some(100);
    QCOMPARE(allocations - before, 1);
    QCOMPARE(some.size(), 100);
}

void ColorAllocationTest::frameOperationsAllocateNothing_data()
{
    QTest::addColumn<VelaColor>("a");
    QTest::addColumn<VelaColor>("b");
    VelaColor white(0.35, 0.34);
    white.setAlphaF(0.5);
    const VelaColor rgb = VelaColor::fromRgb(200, 100, 50, 128);
    const VelaColor hsv = VelaColor::fromHsv(100, 100, 50, 128);
    const VelaColor rgbw = VelaColor::fromNchannelF({0.5, 0.9, 0.1, 0.4, 0.2}, 3, 6, true);
    const VelaColor whites = VelaColor::fromNchannelF({0.5, 0.9, 0.1}, 7, 27, false);
    QTest::newRow("RGB over RGB") << rgb << rgb;
    QTest::newRow("HSV over RGB") << hsv << rgb;
    QTest::newRow("Yxy over RGB") << white << rgb;
    QTest::newRow("Yxy over Yxy") << white << white;
    QTest::newRow("channels over RGB") << rgbw << rgb;
    QTest::newRow("channels over Yxy") << rgbw << white;
    QTest::newRow("channels over others") << rgbw << whites;
}

void ColorAllocationTest::frameOperationsAllocateNothing()
{
    QFETCH(const VelaColor, a);
    QFETCH(const VelaColor, b);
    ColorProfile profile;
    profile.X = {4, 1, 2, 3};
    profile.Y = {2, 6, 1, 4};
    profile.Z = {0, 1, 9, 5};
    const auto frame = [&] {
        int sum = 0;
        sum += composite(a, b).alpha8();
        sum += interpolate(a, b, 0.3).alpha8();
        sum += interpolate(b, a, 1.0).alpha8();
        sum += a == b ? 1 : 0;
        sum += static_cast<int>(qHash(a) & 1U);
        sum += a.isBlack() ? 1 : 0;
        sum += a.toRgb(true).alpha8() + a.toHsv().alpha8() + a.toYxy(0, -1, -1).alpha8();
        sum += a.toNchannel(6, 5, -1, 0).channelCount();
        sum += a.toQColor(true).red();
        double list[VelaColor::kMaxChannels + 1];
        a.channelsF(list);
        sum += list[0] > 0.0 ? 1 : 0;
        for (int curve = 0; curve < 3; ++curve) {
            ColorUtils::XyY xyY;
            ColorUtils::channelDrivesToXyY(a, profile, &xyY, curve);
            sum += xyY.Y > 0.0 ? 1 : 0;
        }
        return sum;
    };
    const int first = frame(); // builds tables
    const int before = allocations;
    int sum = 0;
    for (int i = 0; i < 100; ++i) {
        sum += frame();
    }
    const int taken = allocations - before;
    QCOMPARE(taken, 0);
    QCOMPARE(sum, 100 * first);
}

void ColorAllocationTest::levelsAllocateNothing()
{
    const double drives[5] = {0.0, 0.3, 0.5, 0.7, 1.0};
    quint8 bytes[10] = {};
    quint16 levels[5] = {};
    const auto frame = [&] {
        for (int curve = 0; curve < 3; ++curve) {
            for (const int kind : {ColorUtils::QuantizeTables, ColorUtils::QuantizeFormula}) {
                for (const int width : {1, 2}) {
                    ColorUtils::writeChannels(5, width, drives, bytes, curve, kind, width == 2);
                }
                ColorUtils::writeChannels(5, 1, drives, bytes, curve, kind, true);
                ColorUtils::quantize(5, drives, levels, curve, kind);
            }
        }
        int cct = 0;
        int tint = 0;
        ColorUtils::xyToCctTint(0.35, 0.34, &cct, &tint);
        return cct;
    };
    const int first = frame(); // builds tables
    const int before = allocations;
    const int second = frame();
    const int taken = allocations - before;
    QCOMPARE(taken, 0);
    QCOMPARE(second, first);
}

QTEST_APPLESS_MAIN(ColorAllocationTest)
#include "ColorAllocationTest.moc"
