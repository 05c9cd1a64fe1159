// The cost of a frame: maps of RGB lights, about 165 a port, painted by one to four layers and sent
// to a sink on the loopback, next to the same datagrams sent bare from ready buffers in the same
// run. Every map's datagrams are checked first; a wrong one fails the run.
// Run it in a network namespace of its own: tests/in-namespace.sh build/release/bin/FrameBench

#include "color/ColorUtils.h"
#include "color/VelaColor.h"
#include "effects/CrossFadeEffect.h"
#include "effects/FixedColorEffect.h"
#include "engine/MetaEffect.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "output/TalvisSocket.h"
#include "resources/Resources.h"

#include <QCoreApplication>
#include <QFile>
#include <QHostAddress>
#include <QTemporaryDir>
#include <QTextStream>
#include <QUdpSocket>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <memory>
#include <vector>

namespace {

constexpr int kLightsAPort = 165; // what a port takes without being cut at 512 bytes
constexpr int kPortsAController = 8;
constexpr int kHeaderBytes = 24;
constexpr quint64 kEveryLight = 0x7000000;
constexpr qint64 kStartMs = 1600000000000;

/// Sends, or keeps what it would send.
class TapSocket : public TalvisSocket
{
public:
    TapSocket()
        : TalvisSocket(nullptr)
    {}
    bool sendToAddress(const QHostAddress& address, const char* data, int length) override
    {
        if (!m_keep) {
            return TalvisSocket::sendToAddress(address, data, length);
        }
        m_kept.emplace_back(address, QByteArray(data, length));
        return true;
    }
    bool sendBroadcast(const char* /*data*/, int /*length*/) override { return true; }

    void keep(bool on)
    {
        m_keep = on;
        m_kept.clear();
    }
    const std::vector<std::pair<QHostAddress, QByteArray>>& kept() const { return m_kept; }

private:
    bool m_keep = false;
    std::vector<std::pair<QHostAddress, QByteArray>> m_kept;
};

enum class Paint { Fixed, CrossFade };

/// An installation of `count` lights with its show, played frame by frame.
class Site
{
public:
    explicit Site(int count)
        : m_count(count)
    {
        auto socket = std::make_unique<TapSocket>();
        m_socket = socket.get();
        m_model = std::make_unique<MapModel>(std::move(socket));
        const QString path = m_directory.filePath(QStringLiteral("site.map"));
        writeMap(path);
        if (!m_model->load(path) || m_model->lightsHash().size() != count) {
            fail("the map did not load");
        }
        m_root = std::make_unique<MetaEffect>(m_model.get(), 0, nullptr);
    }

    /// A new show of `layers` layers over every light, each of another colour and priority.
    void setLayers(Paint paint, int layers, bool opaque)
    {
        for (Effect* const effect : m_root->effectList()) {
            m_root->removeEffect(effect);
            delete effect;
        }
        for (int i = 0; i < layers; ++i) {
            VelaColor color;
            color.setRgb8(200 - 40 * i, 30 + 50 * i, 10 + 60 * i, opaque ? 255 : 128);
            Effect* effect = nullptr;
            if (paint == Paint::Fixed) {
                auto* const fixed = new FixedColorEffect(m_model.get(), kEveryLight, nullptr);
                fixed->setColor(color);
                effect = fixed;
            } else {
                VelaColor other;
                other.setRgb8(10 + 20 * i, 220 - 50 * i, 90, opaque ? 255 : 128);
                auto* const fade = new CrossFadeEffect(m_model.get(), kEveryLight, nullptr);
                fade->setStartColor(color);
                fade->setEndColor(other);
                effect = fade;
            }
            effect->setPriority(static_cast<quint32>(i));
            effect->setEnd(3600000);
            effect->compile();
            m_root->addEffect(effect);
        }
        m_root->compile();
        m_now = kStartMs;
        m_root->setStartMs(m_now);
        check(opaque && paint == Paint::Fixed, layers);
    }

    void frame()
    {
        m_now += 25;
        m_root->tick(m_now, m_frame++);
        m_model->updateLights();
    }

    /// A frame in which each light has a white of its own that no frame before had.
    void frameOfOwnWhites(double shift)
    {
        if (m_lights.empty()) {
            const QHash<quint64, Light*> lights = m_model->lightsHash();
            for (int i = 0; i < m_count; ++i) {
                m_lights.push_back(lights.value(static_cast<quint64>(i) + 1));
            }
        }
        VelaColor color;
        for (int i = 0; i < m_count; ++i) {
            const ColorUtils::XyY white = ownWhite(i, shift);
            color.setYxyF(white.Y, white.x, white.y);
            m_lights[static_cast<std::size_t>(i)]->mixColor(color, 0);
        }
        m_model->updateLights();
    }
    static ColorUtils::XyY ownWhite(int light, double shift)
    {
        ColorUtils::XyY white;
        white.Y = 0.9;
        white.x = 0.3 + 0.00001 * light + shift;
        white.y = 0.34 + 0.000003 * light;
        return white;
    }

    /// The datagrams of one frame.
    std::vector<std::pair<QHostAddress, QByteArray>> datagrams()
    {
        m_socket->keep(true);
        frame();
        std::vector<std::pair<QHostAddress, QByteArray>> kept = m_socket->kept();
        m_socket->keep(false);
        return kept;
    }

private:
    static void fail(const char* reason)
    {
        std::fprintf(stderr, "FrameBench: %s\n", reason);
        std::exit(1);
    }

    void writeMap(const QString& path) const
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            fail("the map can't be written");
        }
        QTextStream text(&file);
        text << "<map>";
        const int ports = (m_count + kLightsAPort - 1) / kLightsAPort;
        const int controllers = (ports + kPortsAController - 1) / kPortsAController;
        for (int c = 0; c < controllers; ++c) {
            text << "<c><t>2</t><s>" << QString::number(0x9000000 + c, 16)
                 << "</s><ip>127.0.0.1</ip><v>2</v><m>0</m><pl>";
            for (int p = 0; p < kPortsAController; ++p) {
                text << "<p><pn>" << p + 1 << "</pn></p>";
            }
            text << "</pl>";
            const int first = c * kPortsAController * kLightsAPort;
            const int end = std::min(m_count, first + kPortsAController * kLightsAPort);
            for (int i = first; i < end; ++i) {
                text << "<l>" << QString::number(i + 1, 16) << "</l>";
            }
            text << "</c>\n";
        }
        for (int i = 0; i < m_count; ++i) {
            const int port = i / kLightsAPort;
            text << "<l><s>" << QString::number(i + 1, 16) << "</s><c>"
                 << QString::number(0x9000000 + port / kPortsAController, 16) << "</c><pn>"
                 << port % kPortsAController << "</pn><ch>" << 3 * (i % kLightsAPort) << "</ch><x>"
                 << i % 400 << "</x><y>" << i / 400 << "</y></l>\n"
                 << "<g><t>3</t><s>" << QString::number(i + 1, 16) << "</s></g>\n";
        }
        text << "<g><t>2</t><s>" << QString::number(kEveryLight, 16) << "</s>";
        for (int i = 0; i < m_count; ++i) {
            text << "<c>" << QString::number(i + 1, 16) << "</c>";
        }
        text << "</g></map>";
    }

    /// Every light of every datagram has the colour of its neighbours; where the topmost layer is
    /// an opaque fixed colour, exactly that one.
    void check(bool known, int layers)
    {
        const int ports = (m_count + kLightsAPort - 1) / kLightsAPort;
        const auto frames = datagrams();
        if (static_cast<int>(frames.size()) != ports) {
            fail("a frame has the wrong number of datagrams");
        }
        const int top = layers - 1;
        const char expected[] = {static_cast<char>(200 - 40 * top),
                                 static_cast<char>(30 + 50 * top),
                                 static_cast<char>(10 + 60 * top)};
        const QByteArray first = frames.front().second.mid(kHeaderBytes, 3);
        if (known && first != QByteArray(expected, 3)) {
            fail("a frame has the wrong colour");
        }
        int lights = 0;
        for (const auto& datagram : frames) {
            int position = kHeaderBytes;
            while (lights < m_count && position + 3 <= datagram.second.size() &&
                   datagram.second.mid(position, 3) == first) {
                position += 3;
                ++lights;
            }
        }
        if (lights != m_count) {
            fail("a frame misses lights");
        }
    }

    int m_count;
    QTemporaryDir m_directory;
    TapSocket* m_socket = nullptr; // the model's
    std::unique_ptr<MapModel> m_model;
    std::unique_ptr<MetaEffect> m_root;
    std::vector<Light*> m_lights; // the model's, by uid
    qint64 m_now = kStartMs;
    uint m_frame = 0;
};

std::map<int, std::unique_ptr<Site>>& sites()
{
    static std::map<int, std::unique_ptr<Site>> instance;
    return instance;
}

Site& siteOf(int count)
{
    std::unique_ptr<Site>& site = sites()[count];
    if (site == nullptr) {
        site = std::make_unique<Site>(count);
    }
    return *site;
}

/// Microseconds that the bare sends of a map's frame took, by its number of lights.
std::map<int, double>& bareCosts()
{
    static std::map<int, double> costs;
    return costs;
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void report(benchmark::State& state, int count, double seconds)
{
    const double frames = static_cast<double>(state.iterations());
    const double microseconds = seconds * 1e6 / frames;
    state.counters["us_a_frame"] = microseconds;
    state.counters["ns_a_light"] = microseconds * 1e3 / count;
    const auto bare = bareCosts().find(count);
    if (bare != bareCosts().end()) {
        state.counters["x_bare"] = microseconds / bare->second;
    }
}

void bareSends(benchmark::State& state)
{
    const int count = static_cast<int>(state.range(0));
    Site& site = siteOf(count);
    site.setLayers(Paint::Fixed, 1, true);
    const auto frames = site.datagrams();
    QUdpSocket socket;
    socket.bind();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        for (const auto& datagram : frames) {
            socket.writeDatagram(datagram.second.constData(), datagram.second.size(),
                                 datagram.first, 6038);
        }
    }
    const double seconds = secondsSince(start);
    bareCosts()[count] = seconds * 1e6 / static_cast<double>(state.iterations());
    report(state, count, seconds);
}

void frames(benchmark::State& state, Paint paint, bool opaque)
{
    const int count = static_cast<int>(state.range(0));
    Site& site = siteOf(count);
    site.setLayers(paint, static_cast<int>(state.range(1)), opaque);
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        site.frame();
    }
    report(state, count, secondsSince(start));
}

/// 15,000 lights, each with its own white, against nothing but their solves.
void ownWhites(benchmark::State& state)
{
    constexpr int kCount = 15000;
    Site& site = siteOf(kCount);
    double sum = 0.0;
    double shift = 0.0;
    double solves = 0.0;
    double frames = 0.0;
    for (auto _ : state) {
        shift += 1e-9;
        auto start = std::chrono::steady_clock::now();
        double drives[8] = {};
        for (int i = 0; i < kCount; ++i) {
            ColorUtils::solve(Site::ownWhite(i, shift), drives, 1, 0, true, 1);
            sum += drives[0];
        }
        solves += secondsSince(start);
        start = std::chrono::steady_clock::now();
        site.frameOfOwnWhites(shift);
        frames += secondsSince(start);
    }
    benchmark::DoNotOptimize(sum);
    report(state, kCount, frames);
    state.counters["x_solves"] = frames / solves;
}

void sizes(benchmark::internal::Benchmark* benchmark)
{
    benchmark->ArgsProduct({{1000, 15000, 60000}, {1, 2, 3, 4}})->Unit(benchmark::kMicrosecond);
}

} // namespace

BENCHMARK(bareSends)->Arg(1000)->Arg(15000)->Arg(60000)->Unit(benchmark::kMicrosecond);
BENCHMARK(ownWhites)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(frames, fixed_opaque, Paint::Fixed, true)->Apply(sizes);
BENCHMARK_CAPTURE(frames, fixed_half, Paint::Fixed, false)->Apply(sizes);
BENCHMARK_CAPTURE(frames, fade_opaque, Paint::CrossFade, true)->Apply(sizes);
BENCHMARK_CAPTURE(frames, fade_half, Paint::CrossFade, false)->Apply(sizes);

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    initForgeResources();
    // A sink, so that no send is answered by an error; what it can't hold is dropped.
    QUdpSocket sink;
    if (!sink.bind(QHostAddress(QStringLiteral("127.0.0.1")), 6038)) {
        std::fprintf(stderr, "FrameBench: port 6038 is taken\n");
        return 1;
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    sites().clear(); // ahead of what their lights need
    return 0;
}
