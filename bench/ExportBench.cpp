// Recording a show of a minute at 40 frames a second, the whole way from the export's call to the
// closed files: how many times faster than real time. Every run checks its files, and that nothing
// was sent meanwhile; a wrong one fails the run.
// Run it in a network namespace of its own: tests/in-namespace.sh build/release/bin/ExportBench

#include "app/DmxExport.h"
#include "color/VelaColor.h"
#include "effects/CrossFadeEffect.h"
#include "engine/EffectEngine.h"
#include "engine/MetaEffect.h"
#include "map/Controller.h"
#include "map/MapModel.h"
#include "output/TalvisSocket.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>

namespace {

constexpr int kLightsAPort = 165;
constexpr int kPortsAController = 8;
constexpr int kLightsAController = kLightsAPort * kPortsAController;
constexpr quint64 kEveryLight = 0x7000000;
constexpr int kShowMs = 60000;
constexpr int kRate = 40;
constexpr int kFrames = kShowMs * kRate / 1000;

void fail(const char* reason)
{
    std::fprintf(stderr, "ExportBench: %s\n", reason);
    std::exit(1);
}

/// Counts what would be sent.
class CountingSocket : public TalvisSocket
{
public:
    CountingSocket()
        : TalvisSocket(nullptr)
    {}
    bool sendToAddress(const QHostAddress& /*address*/, const char* /*data*/,
                       int /*length*/) override
    {
        ++count;
        return true;
    }
    bool sendBroadcast(const char* /*data*/, int /*length*/) override
    {
        ++count;
        return true;
    }

    int count = 0;
};

/// An installation of `count` lights with its show.
class Site
{
public:
    explicit Site(int count)
        : m_count(count)
    {
        auto socket = std::make_unique<CountingSocket>();
        m_socket = socket.get();
        m_model = std::make_unique<MapModel>(std::move(socket));
        const QString path = m_directory.filePath(QStringLiteral("site.map"));
        writeMap(path);
        if (!m_model->load(path) || m_model->lightsHash().size() != count) {
            fail("the map did not load");
        }
        m_root = std::make_unique<MetaEffect>(m_model.get(), 0, nullptr);
        m_engine = std::make_unique<EffectEngine>(m_model.get(), nullptr, framePeriodMs(kRate));
        m_engine->pause(true);
        m_engine->addEffect(m_root.get());
    }

    /// A new show of `layers` fading layers over every light.
    void setLayers(int layers)
    {
        for (Effect* const effect : m_root->effectList()) {
            m_root->removeEffect(effect);
            delete effect;
        }
        for (int i = 0; i < layers; ++i) {
            auto* const fade = new CrossFadeEffect(m_model.get(), kEveryLight, nullptr);
            VelaColor color;
            color.setRgb8(200 - 40 * i, 30 + 50 * i, 10 + 60 * i, i == 0 ? 255 : 128);
            fade->setStartColor(color);
            color.setRgb8(10 + 20 * i, 220 - 50 * i, 90, i == 0 ? 255 : 128);
            fade->setEndColor(color);
            fade->setTime(7.0);
            fade->setPriority(static_cast<quint32>(i));
            fade->setEnd(kShowMs);
            fade->compile();
            m_root->addEffect(fade);
        }
        m_root->compile();
    }

    void record()
    {
        m_socket->count = 0;
        DmxExport(m_model.get(), m_engine.get(), m_root.get(), nullptr)
            .run(m_directory.filePath(QStringLiteral("show.dmx")), kRate,
                 QDateTime::currentDateTime());
    }

    /// Each controller has its file, of a header, a head, numbers and frames.
    void check() const
    {
        if (m_socket->count != 0) {
            fail("something was sent");
        }
        for (Controller* const controller : m_model->controllersHash()) {
            const QString path =
                m_directory.filePath(QStringLiteral("show_%1.dmx").arg(controller->name()));
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly)) {
                fail("a file is missing");
            }
            qint64 header = 0;
            for (int line = 0; line < 6; ++line) {
                header += file.readLine().size();
            }
            const qint64 lights = controller->lightUidList().size();
            if (file.size() != header + 16 + 4 * lights + 3 * lights * kFrames) {
                fail("a file has the wrong size");
            }
        }
    }

    double frameBytes() const { return 3.0 * m_count * kFrames; }

private:
    void writeMap(const QString& path) const
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            fail("the map can't be written");
        }
        QTextStream text(&file);
        text << "<map>";
        for (int first = 0; first < m_count; first += kLightsAController) {
            text << "<c><t>2</t><s>" << QString::number(0x9000000 + first, 16) << "</s><n>C"
                 << first / kLightsAController << "</n><ip>127.0.0.1</ip><v>2</v><m>0</m><pl>";
            for (int port = 1; port <= kPortsAController; ++port) {
                text << "<p><pn>" << port << "</pn></p>";
            }
            text << "</pl>";
            for (int i = first; i < std::min(m_count, first + kLightsAController); ++i) {
                text << "<l>" << QString::number(i + 1, 16) << "</l>";
            }
            text << "</c>\n";
        }
        for (int i = 0; i < m_count; ++i) {
            const int first = i / kLightsAController * kLightsAController;
            text << "<l><s>" << QString::number(i + 1, 16) << "</s><c>"
                 << QString::number(0x9000000 + first, 16) << "</c><pn>"
                 << (i - first) / kLightsAPort << "</pn><ch>" << 3 * (i % kLightsAPort)
                 << "</ch><ln>" << i << "</ln></l>\n"
                 << "<g><t>3</t><s>" << QString::number(i + 1, 16) << "</s></g>\n";
        }
        text << "<g><t>2</t><s>" << QString::number(kEveryLight, 16) << "</s>";
        for (int i = 0; i < m_count; ++i) {
            text << "<c>" << QString::number(i + 1, 16) << "</c>";
        }
        text << "</g></map>";
    }

    int m_count;
    QTemporaryDir m_directory;
    CountingSocket* m_socket = nullptr; // the model's
    std::unique_ptr<MapModel> m_model;
    std::unique_ptr<MetaEffect> m_root;
    std::unique_ptr<EffectEngine> m_engine;
};

using Sites = std::map<int, std::unique_ptr<Site>>;

Sites& allSites()
{
    static Sites sites;
    return sites;
}

Site& siteOf(int count)
{
    std::unique_ptr<Site>& site = allSites()[count];
    if (site == nullptr) {
        site = std::make_unique<Site>(count);
    }
    return *site;
}

/// A line of /proc/self/status in bytes.
double statusBytes(const char* key)
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) {
        return 0.0;
    }
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith(key)) {
            return line.simplified().split(' ').value(1).toDouble() * 1024.0;
        }
    }
    return 0.0;
}

/// The greatest amount of memory held is counted from now on.
void forgetPeak()
{
    QFile file(QStringLiteral("/proc/self/clear_refs"));
    if (file.open(QIODevice::WriteOnly)) {
        file.write("5");
    }
}

void record(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    Site& site = siteOf(count);
    site.setLayers(static_cast<int>(state.range(1)));
    double seconds = 0.0;
    double memory = 0.0;
    for (auto _ : state) {
        forgetPeak();
        const double before = statusBytes("VmRSS:");
        const auto start = std::chrono::steady_clock::now();
        site.record();
        const double taken =
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        memory = std::max(memory, statusBytes("VmHWM:") - before);
        state.SetIterationTime(taken);
        seconds += taken;
        site.check();
    }
    seconds /= static_cast<double>(state.iterations());
    state.counters["x_real_time"] = kShowMs / 1000.0 / seconds;
    state.counters["us_a_frame"] = seconds * 1e6 / kFrames;
    state.counters["ns_a_light"] = seconds * 1e9 / kFrames / count;
    state.counters["frames_MB"] = site.frameBytes() / 1e6;
    state.counters["memory_MB"] = memory / 1e6;
}

} // namespace

BENCHMARK(record)
    ->ArgNames({"lights", "layers"})
    ->ArgsProduct({{15000}, {1, 4}})
    ->UseManualTime()
    ->Iterations(3)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    initForgeResources();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    allSites().clear(); // while the application and the tables of colours stand
    return 0;
}
