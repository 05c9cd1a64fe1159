// Loading a map: the model against QDomDocument::setContent alone on the same file, and the heap
// that a loaded map holds for each light.

#include "map/Light.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "tests/output/SilentSocket.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <malloc.h>
#include <map>

namespace {

constexpr int kLightsAPort = 170;
constexpr int kPortsAController = 8;

/// A map as installers' tools write them: every key of a light, two properties, a leaf for each.
QString mapFile(int count)
{
    static QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("%1.map").arg(count));
    QFile file(path);
    if (file.exists()) {
        return path;
    }
    if (!file.open(QIODevice::WriteOnly)) {
        std::exit(1);
    }
    QTextStream text(&file);
    text << "<map>\n<version>1</version>\n";
    const int lightsAController = kLightsAPort * kPortsAController;
    for (int first = 0; first < count; first += lightsAController) {
        text << "<controller>\n<type>2</type>\n<self>" << QString::number(0x9000000 + first, 16)
             << "</self>\n<name>Controller</name>\n<ipaddress>127.0.0.1</ipaddress>\n"
             << "<version>2</version>\n<missing>0</missing>\n<portlist>\n";
        for (int port = 1; port <= kPortsAController; ++port) {
            text << "<port>\n<portnum>" << port << "</portnum>\n</port>\n";
        }
        text << "</portlist>\n";
        for (int i = first; i < std::min(count, first + lightsAController); ++i) {
            text << "<light>" << QString::number(i + 1, 16) << "</light>\n";
        }
        text << "</controller>\n";
    }
    for (int i = 0; i < count; ++i) {
        const QString uid = QString::number(i + 1, 16);
        text << "<light>\n<self>" << uid << "</self>\n<name>Pixel " << i << "</name>\n<controller>"
             << QString::number(0x9000000 + i / lightsAController * lightsAController, 16)
             << "</controller>\n<pn>" << i / kLightsAPort % kPortsAController << "</pn>\n<ch>"
             << 3 * (i % kLightsAPort) << "</ch>\n<sn>" << 0x220000 + i << "</sn>\n<ln>" << i
             << "</ln>\n<x>" << (i % 400) * 14.5 << "</x>\n<y>" << (i / 400) * 14.5
             << "</y>\n<z>0</z>\n<q0>0</q0>\n<q1>0</q1>\n<q2>0</q2>\n<q3>1</q3>\n<properties>\n"
             << "<LED_CHEMISTRY>0</LED_CHEMISTRY>\n<DIMMING_CURVE>1</DIMMING_CURVE>\n"
             << "</properties>\n</light>\n<group>\n<type>3</type>\n<self>" << uid
             << "</self>\n<name>Pixel " << i << "</name>\n<child>" << uid << "</child>\n</group>\n";
    }
    text << "</map>\n";
    return path;
}

double& domSeconds(int count)
{
    static std::map<int, double> seconds;
    return seconds[count];
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double heapBytes()
{
    const struct mallinfo2 info = mallinfo2();
    return static_cast<double>(info.uordblks + info.hblkhd);
}

void setContentAlone(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const QString path = mapFile(count);
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        QFile file(path);
        QDomDocument document;
        if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file)) {
            state.SkipWithError("the map is no document");
        }
    }
    domSeconds(count) = secondsSince(start) / static_cast<double>(state.iterations());
}

void loadMap(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    const QString path = mapFile(count);
    double seconds = 0.0;
    double bytes = 0.0;
    for (auto _ : state) {
        MapModel model(std::make_unique<SilentSocket>());
        const double before = heapBytes();
        const auto start = std::chrono::steady_clock::now();
        if (!model.load(path) || model.lightsHash().size() != count) {
            state.SkipWithError("the map did not load");
        }
        const double taken = secondsSince(start);
        state.SetIterationTime(taken);
        seconds += taken;
        malloc_trim(0);
        bytes = heapBytes() - before;
    }
    state.counters["x_setContent"] =
        seconds / static_cast<double>(state.iterations()) / domSeconds(count);
    state.counters["heap_bytes_a_light"] = bytes / count;
}

} // namespace

BENCHMARK(setContentAlone)->Arg(1000)->Arg(15000)->Arg(60000)->Unit(benchmark::kMillisecond);
BENCHMARK(loadMap)->Arg(1000)->Arg(15000)->Arg(60000)->UseManualTime()->Unit(
    benchmark::kMillisecond);

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    initForgeResources();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
