#include "color/ColorProfile.h"
#include "color/ColorUtils.h"
#include "color/ProfileTable.h"
#include "color/VelaColor.h"
#include "color/WhiteChart.h"
#include "resources/Resources.h"
#include "tests/color/PlainSolve.h"

#include <QGuiApplication>

#include <benchmark/benchmark.h>
#include <random>
#include <vector>

namespace {

constexpr int kTargets = 4096; // a power of two

struct Fixture
{
    int layout;
    int profileId;
};

/// By the number of emitters.
Fixture fixtureOf(int emitters)
{
    switch (emitters) {
    case 3:
        return {1, 7};
    case 4:
        return {6, 5};
    default:
        return {2, 1};
    }
}

/// Chromaticities spread over the fixture's gamut.
std::vector<ColorUtils::XyY> targetsOf(const Fixture& fixture)
{
    const ColorProfile& profile =
        *ProfileTable::instance().profile(fixture.profileId, fixture.layout, 0);
    std::mt19937 random(11);
    std::uniform_real_distribution<double> share(0.0, 1.0);
    std::vector<ColorUtils::XyY> targets;
    for (int i = 0; i < kTargets; ++i) {
        double X = 0.0;
        double Y = 0.0;
        double Z = 0.0;
        for (int k = 0; k < 3; ++k) {
            const double drive = share(random);
            X += drive * profile.X.at(k);
            Y += drive * profile.Y.at(k);
            Z += drive * profile.Z.at(k);
        }
        targets.push_back({1.0, X / (X + Y + Z), Y / (X + Y + Z)});
    }
    return targets;
}

template <typename Solve>
void runSolve(benchmark::State& state, Solve solve)
{
    const Fixture fixture = fixtureOf(static_cast<int>(state.range(0)));
    const std::vector<ColorUtils::XyY> targets = targetsOf(fixture);
    double out[8] = {};
    std::size_t at = 0;
    for (auto step : state) {
        static_cast<void>(step);
        solve(targets[at], out, fixture.layout, fixture.profileId, true, 0);
        benchmark::DoNotOptimize(out);
        at = (at + 1) & (kTargets - 1);
    }
}

void solveFast(benchmark::State& state)
{
    runSolve(state, ColorUtils::solve);
}

void solvePlain(benchmark::State& state)
{
    runSolve(state, PlainSolve::solve);
}

/// A Yxy colour to the bytes of a four-channel fixture.
void mapYxy(benchmark::State& state)
{
    const Fixture fixture = fixtureOf(4);
    std::vector<VelaColor> colors;
    for (const ColorUtils::XyY& target : targetsOf(fixture)) {
        VelaColor color;
        color.setYxyF(0.8, target.x, target.y);
        colors.push_back(color);
    }
    quint8 out[8] = {};
    std::size_t at = 0;
    for (auto step : state) {
        static_cast<void>(step);
        ColorUtils::mapToChannels(colors[at], true, 4, 1, out, 0, 1, fixture.profileId, 1);
        benchmark::DoNotOptimize(out);
        at = (at + 1) & (kTargets - 1);
    }
}

/// The screen colour of whites that were asked for before.
void knownWhite(benchmark::State& state)
{
    std::vector<VelaColor> colors;
    for (int cct = 2500; cct <= 6500; cct += 10) {
        VelaColor color;
        double x = 0.0;
        double y = 0.0;
        ColorUtils::cctToXy(cct, &x, &y);
        color.setYxyF(0.8, x, y);
        colors.push_back(color);
        WhiteChart::instance().screenColor(color);
    }
    std::size_t at = 0;
    for (auto step : state) {
        static_cast<void>(step);
        benchmark::DoNotOptimize(WhiteChart::instance().screenColor(colors[at]));
        at = at + 1 < colors.size() ? at + 1 : 0;
    }
}

/// Both images of the chart: what the first white of a run costs.
void chartImages(benchmark::State& state)
{
    for (auto step : state) {
        static_cast<void>(step);
        benchmark::DoNotOptimize(WhiteChart::instance().whiteImage().constBits());
    }
}

/// Outline and limits: what the start of the program pays.
void chartStart(benchmark::State& state)
{
    for (auto step : state) {
        static_cast<void>(step);
        benchmark::DoNotOptimize(&WhiteChart::instance());
    }
}

} // namespace

BENCHMARK(chartStart)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(chartImages)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(solveFast)->DenseRange(3, 5);
BENCHMARK(solvePlain)->DenseRange(3, 5);
BENCHMARK(mapYxy);
BENCHMARK(knownWhite);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    initForgeResources();
    ProfileTable::instance();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
