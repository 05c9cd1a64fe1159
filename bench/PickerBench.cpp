// Milliseconds a mouse event of a drag over a field of the colour picker at 800 by 600, with all
// that is painted for it (aim: 60 events a second, 16.7 ms); and a library of 10,000 swatches in
// 200 lists in the tree: showing it, filtering it and paging through it. Runs on any platform
// plug-in
// ("-platform offscreen").

#include "color/VelaColorLibrary.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/ColorPickerWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/RgbPickerWidget.h"
#include "picker/VelaColorLibraryTreeView.h"
#include "picker/WhitePickerWidget.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QWidget>

#include <benchmark/benchmark.h>

using namespace VelaColorPickerLib;

namespace {

void send(QWidget* widget, QEvent::Type type, const QPoint& place)
{
    QMouseEvent event(type, place, widget->mapToGlobal(place),
                      type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton,
                      Qt::NoModifier);
    QApplication::sendEvent(widget, &event);
    QCoreApplication::processEvents();
}

/// Drags over the one `Field` of a page, in a slow curve over all of it.
template <class Page, class Field>
void drag(benchmark::State& state)
{
    Page page;
    page.resize(800, 600);
    page.show();
    QCoreApplication::processEvents();
    auto* const field = page.template findChild<Field*>();
    const QSize size = field->size();
    send(field, QEvent::MouseButtonPress, field->rect().center());
    int step = 0;
    for (auto _ : state) {
        step = (step + 1) % 700;
        send(field, QEvent::MouseMove,
             {size.width() / 8 + step * size.width() / 1000,
              size.height() * 3 / 5 - step * size.height() / 2000 + step % 40});
    }
    state.counters["aim_ms"] = 1000.0 / 60.0;
}

void fill(VelaColorLibrary* library)
{
    for (int i = 0; i < 10000; ++i) {
        library->insertColor(VelaColor(QColor::fromHsv(i % 360, 40 + i % 200, 255)),
                             QStringLiteral("Swatch %1").arg(i), QString(),
                             QStringLiteral("List %1").arg(i / 50), QString());
    }
}

void showTree(benchmark::State& state)
{
    VelaColorLibrary library;
    fill(&library);
    for (auto _ : state) {
        VelaColorLibraryTreeView tree;
        tree.setLibrary(&library);
        tree.resize(320, 600);
        tree.show();
        tree.expandAll();
        QCoreApplication::processEvents();
    }
}

void filterTree(benchmark::State& state)
{
    VelaColorLibrary library;
    fill(&library);
    VelaColorLibraryTreeView tree;
    tree.setLibrary(&library);
    tree.resize(320, 600);
    tree.show();
    bool on = false;
    for (auto _ : state) {
        on = !on;
        tree.setFilter(on ? QStringLiteral("77") : QString());
        QCoreApplication::processEvents();
    }
}

void pageTree(benchmark::State& state)
{
    VelaColorLibrary library;
    fill(&library);
    VelaColorLibraryTreeView tree;
    tree.setLibrary(&library);
    tree.resize(320, 600);
    tree.show();
    tree.expandAll();
    QScrollBar* const bar = tree.verticalScrollBar();
    for (auto _ : state) {
        bar->setValue(bar->value() == bar->maximum() ? 0 : bar->value() + bar->pageStep());
        QCoreApplication::processEvents();
    }
}

BENCHMARK_TEMPLATE(drag, RgbPickerWidget, HsbSpectrumWidget)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(drag, RgbPickerWidget, HsbTintsAndShadesWidget)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(drag, RgbPickerWidget, HsbSpectrumZoomWidget)->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(drag, WhitePickerWidget, BlackBodyCurveWidget)->Unit(benchmark::kMillisecond);
// With all pages, the swatches and their sliders behind it.
BENCHMARK_TEMPLATE(drag, ColorPickerWidget, HsbSpectrumWidget)->Unit(benchmark::kMillisecond);
BENCHMARK(showTree)->Unit(benchmark::kMillisecond);
BENCHMARK(filterTree)->Unit(benchmark::kMillisecond);
BENCHMARK(pageTree)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    // Nothing of the user's is read or written.
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", home.path().toUtf8());
    qputenv("XDG_CONFIG_HOME", home.path().toUtf8());
    QApplication app(argc, argv);
    initForgeResources();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
