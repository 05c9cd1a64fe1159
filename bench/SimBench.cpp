// Milliseconds a redraw of the simulation window at 1280 by 800, from the lights' colours to the
// painted window: out of the raster, and by the scene's own painting. Both pictures are compared
// first; a difference fails the run. Runs on any platform plug-in ("-platform offscreen").

#include "map/Light.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "sim/LightSim.h"
#include "sim/SimView.h"
#include "tests/output/SilentSocket.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <map>
#include <memory>
#include <vector>

namespace {

constexpr double kPitch = 12.0; // map units from light to light, as one picture pixel takes

/// A wall of lights on a plan, in the simulation window as a user sees it.
class Wall
{
public:
    explicit Wall(int count)
        : m_model(std::make_unique<SilentSocket>())
    {
        const int columns = static_cast<int>(std::ceil(std::sqrt(count * 1.6)));
        const int rows = (count + columns - 1) / columns;
        const QString plan = m_directory.filePath(QStringLiteral("plan.png"));
        QImage picture(static_cast<int>(columns * kPitch) + 60,
                       static_cast<int>(rows * kPitch) + 60, QImage::Format_RGB32);
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                picture.setPixel(x, y, qRgb(60 + x % 40, 60 + y % 30, 80));
            }
        }
        picture.save(plan);

        const QString path = m_directory.filePath(QStringLiteral("wall.map"));
        QFile file(path);
        m_isGood = file.open(QIODevice::WriteOnly);
        QTextStream text(&file);
        text << "<map><version>1</version><imagefile>" << plan << "</imagefile>";
        for (int i = 0; i < count; ++i) {
            // Slightly off the grid: no two lights fall on the pixels alike.
            const int row = i / columns;
            const double x = (i % columns) * kPitch + 0.37 * (i % 11) + 10.0;
            const double y = row * kPitch + 0.29 * (i % 13) + 10.0;
            text << "<l><s>" << QString::number(i + 1, 16) << "</s><x>" << x << "</x><y>" << y
                 << "</y></l>";
        }
        text << "</map>";
        text.flush();
        file.close();
        m_isGood = m_isGood && m_model.load(path);
        m_lights = m_model.lightsHash().values();
        m_isGood = m_isGood && m_lights.size() == count;

        m_sim = std::make_unique<LightSim>(&m_model, nullptr, "Sim");
        m_view = m_sim->findChild<SimView*>();
        m_sim->resize(1280, 800);
        m_sim->setBackground(QColor(20, 20, 24));
        m_sim->show();
        QApplication::processEvents();
        nextFrame();
        m_sim->updateLights();
        m_view->setQuickPainting(false);
        const QImage expected = m_sim->grab().toImage();
        m_view->setQuickPainting(true);
        const QImage actual = m_sim->grab().toImage();
        m_isGood = m_isGood && m_view->wasPaintedQuickly() && actual == expected;
    }

    bool isGood() const { return m_isGood; }
    SimView* view() { return m_view; }
    LightSim* sim() { return m_sim.get(); }

    /// Another colour on every light, as the effects leave it.
    void nextFrame()
    {
        ++m_frame;
        quint32 step = m_frame * 7U;
        for (Light* const light : m_lights) {
            step += 2654435761U;
            const QColor color(static_cast<QRgb>(step | 0xFF000000U));
            light->reset();
            light->mixColor(VelaColor(color), 1);
            light->mixSimColor(color, 1);
        }
    }

private:
    QTemporaryDir m_directory;
    MapModel m_model;
    QList<Light*> m_lights; // not owned
    std::unique_ptr<LightSim> m_sim;
    SimView* m_view = nullptr;
    quint32 m_frame = 0;
    bool m_isGood = false;
};

using Walls = std::map<int, std::unique_ptr<Wall>>;

Walls& allWalls()
{
    static Walls walls;
    return walls;
}

Wall& wallOf(int count)
{
    Walls& walls = allWalls();
    for (auto& other : walls) {
        other.second->sim()->hide();
    }
    std::unique_ptr<Wall>& wall = walls[count];
    if (!wall) {
        wall = std::make_unique<Wall>(count);
    }
    wall->sim()->show();
    QApplication::processEvents();
    return *wall;
}

template <typename Work>
double secondsOf(Work work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void redraw(benchmark::State& state, bool quick)
{
    const int count = static_cast<int>(state.range(0));
    Wall& wall = wallOf(count);
    if (!wall.isGood()) {
        state.SkipWithError("the quick picture differs from the scene's own");
        return;
    }
    wall.view()->setQuickPainting(quick);
    wall.view()->viewport()->repaint(); // the raster stands from here on
    double colors = 0.0;
    for ([[maybe_unused]] auto _ : state) {
        wall.nextFrame();
        const double taken = secondsOf([&wall] { wall.sim()->updateLights(); });
        const double painted = secondsOf([&wall] { wall.view()->viewport()->repaint(); });
        colors += taken;
        state.SetIterationTime(taken + painted);
        QApplication::processEvents(); // what is posted beside the frame
    }
    if (wall.view()->wasPaintedQuickly() != quick) {
        state.SkipWithError("painted the other way");
    }
    state.counters["colors_ms"] =
        benchmark::Counter(colors * 1000.0, benchmark::Counter::kAvgIterations);
}

void quickRedraw(benchmark::State& state)
{
    redraw(state, true);
}

void plainRedraw(benchmark::State& state)
{
    redraw(state, false);
}

/// The first paint after a zoom, in which the raster is worked out.
void firstPaintAfterZoom(benchmark::State& state)
{
    Wall& wall = wallOf(static_cast<int>(state.range(0)));
    wall.view()->setQuickPainting(true);
    bool in = true;
    for ([[maybe_unused]] auto _ : state) {
        in ? wall.sim()->zoomIn() : wall.sim()->zoomOut();
        in = !in;
        state.SetIterationTime(secondsOf([&wall] { wall.view()->viewport()->repaint(); }));
        QApplication::processEvents();
    }
    if (!in) {
        wall.sim()->zoomOut();
    }
}

void sizes(benchmark::internal::Benchmark* bench)
{
    bench->Arg(1000)->Arg(15000)->Arg(60000)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK(quickRedraw)->Apply(sizes);
BENCHMARK(plainRedraw)->Apply(sizes);
BENCHMARK(firstPaintAfterZoom)->Apply(sizes);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("DISPLAY") && qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") &&
        qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    initForgeResources();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    allWalls().clear(); // windows go before the application
    return 0;
}
