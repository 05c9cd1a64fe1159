// Milliseconds a mouse event of a drag over the picker's fields at 800 by 600, with all that the
// page paints for it, on the platform plug-in "offscreen".

#include "color/VelaColor.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/RgbPickerWidget.h"
#include "picker/WhitePickerWidget.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QMouseEvent>
#include <QPoint>
#include <QSettings>
#include <QTemporaryDir>
#include <QWidget>

#include <benchmark/benchmark.h>
#include <cmath>
#include <memory>

using namespace VelaColorPickerLib;

namespace {

constexpr int kEvents = 1000;

/// A page in a window in which one of its fields has 800 by 600 pixels.
template <typename Page, typename Field>
class OpenPage
{
public:
    OpenPage()
        : m_page(std::make_unique<Page>())
        , m_field(m_page->template findChild<Field*>())
    {
        m_field->setFixedSize(800, 600);
        m_page->show();
        QObject::connect(m_page.get(), &Page::colorChanged, m_page.get(), [this]() { ++m_colors; });
        QApplication::processEvents();
        send(QEvent::MouseButtonPress, 0);
    }

    /// One move of a drag along a figure that comes by all of the field, and its repaint.
    void drag(int step)
    {
        send(QEvent::MouseMove, step);
        QApplication::processEvents();
    }
    int colors() const { return m_colors; }

private:
    void send(QEvent::Type type, int step)
    {
        const QPoint place(static_cast<int>(400.0 + 395.0 * std::sin(step * 0.031)),
                           static_cast<int>(300.0 + 295.0 * std::sin(step * 0.047)));
        QMouseEvent event(type, place, m_field->mapToGlobal(place),
                          type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QApplication::sendEvent(m_field, &event);
    }

    std::unique_ptr<Page> m_page;
    Field* m_field; // the page's
    int m_colors = 0;
};

template <typename Page, typename Field>
void dragOver(benchmark::State& state)
{
    OpenPage<Page, Field> page;
    int step = 0;
    for (auto _ : state) {
        page.drag(++step);
    }
    if (page.colors() < step) {
        state.SkipWithError("a move chose no colour");
    }
}

} // namespace

BENCHMARK_TEMPLATE(dragOver, RgbPickerWidget, HsbSpectrumWidget)
    ->Name("spectrum")
    ->Iterations(kEvents)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(dragOver, RgbPickerWidget, HsbTintsAndShadesWidget)
    ->Name("tints and shades")
    ->Iterations(kEvents)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(dragOver, RgbPickerWidget, HsbSpectrumZoomWidget)
    ->Name("zoomed spectrum")
    ->Iterations(kEvents)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_TEMPLATE(dragOver, WhitePickerWidget, BlackBodyCurveWidget)
    ->Name("white chart")
    ->Iterations(kEvents)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir settings; // the pages write theirs
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, settings.path());
    QApplication application(argc, argv);
    initForgeResources();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
