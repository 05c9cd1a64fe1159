// What editing costs on a show of 500 effects, a third of them linked in chains: the table built
// and built anew, an effect selected, a time typed with all links resolved again, a text changed in
// a cell, and the table's share of a frame, with and without effects that start or stop. Medians of
// the single steps, shown at their usual size on no screen, on one core. Each of these is to stay
// under 50 ms, and a frame in which nothing changed is to cost next to nothing.

#include "editor/MetaWidget.h"
#include "editor/TimePanel.h"
#include "effects/RegisterEffects.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "tests/output/SilentSocket.h"

#include <QApplication>
#include <QLineEdit>
#include <QTableWidget>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace {

constexpr int kEffects = 500;
constexpr int kSteps = 60;

void fail(const char* reason)
{
    std::fprintf(stderr, "EditorBench: %s\n", reason);
    std::exit(1);
}

/// The show and its editor.
class Desk
{
public:
    Desk()
        : m_model(std::make_unique<MapModel>(std::make_unique<SilentSocket>()))
        , m_root(EffectFactory::parseShow(showXml(), m_model.get()))
    {
        if (m_root == nullptr || m_root->effectList().size() != kEffects) {
            fail("no show");
        }
        m_root->updateEffectTimes();
        m_root->setActive(true);
        m_widget = std::make_unique<MetaWidget>(m_root, m_model.get(), nullptr);
        m_widget->resize(1200, 760);
        m_widget->show();
        m_widget->rebuildTable();
        QApplication::processEvents();
        m_table = m_widget->findChild<QTableWidget*>(QStringLiteral("effectTable"));
        m_time = m_widget->findChild<TimePanel*>(QStringLiteral("startPanel"))->fixedEdit();
        if (m_table->rowCount() != kEffects) {
            fail("the table is not full");
        }
    }
    ~Desk()
    {
        m_widget.reset();
        m_root->deleteShow();
    }
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    MetaWidget& widget() { return *m_widget; }
    MetaEffect& root() { return *m_root; }
    QTableWidget& table() { return *m_table; }
    QLineEdit& time() { return *m_time; }
    Effect& effect(int index) { return *m_root->effectList().at(index); }
    void select(int row) { m_table->setCurrentCell(row, MetaWidget::EidColumn); }

private:
    /// Chains of three: a first effect, one that starts with its end, one that ends with that.
    static QString showXml()
    {
        QString xml = QStringLiteral("<effect><type>Meta Effect</type>");
        for (int eid = 1; eid <= kEffects; ++eid) {
            xml += QStringLiteral("<effect><type>Fixed Color</type><name>Effect %1</name>"
                                  "<eid>%1</eid><endfixedtime>4000</endfixedtime>")
                       .arg(eid);
            if (eid % 3 == 2) {
                xml += QStringLiteral("<starttype>1</starttype><startlinkeid>%1</startlinkeid>"
                                      "<startlinkstart>0</startlinkstart>")
                           .arg(eid - 1);
            } else if (eid % 3 == 0) {
                xml += QStringLiteral("<endtype>1</endtype><endlinkeid>%1</endlinkeid>"
                                      "<endlinkstart>0</endlinkstart>")
                           .arg(eid - 1);
            }
            xml += QStringLiteral("</effect>");
        }
        return xml + QStringLiteral("</effect>");
    }

    std::unique_ptr<MapModel> m_model;
    MetaEffect* m_root = nullptr; // owned, with its children
    std::unique_ptr<MetaWidget> m_widget;
    QTableWidget* m_table = nullptr; // the widget's
    QLineEdit* m_time = nullptr;
};

std::unique_ptr<Desk>& deskHolder()
{
    static std::unique_ptr<Desk> instance;
    return instance;
}

Desk& desk()
{
    if (deskHolder() == nullptr) {
        deskHolder() = std::make_unique<Desk>();
    }
    return *deskHolder();
}

/// Times `step`, with what it leaves to the event loop (layout, painting), unless `isFrame`.
void timeSteps(benchmark::State& state, bool isFrame, const std::function<void(int)>& step,
               const std::function<void(int)>& prepare = nullptr)
{
    using Clock = std::chrono::steady_clock;
    std::vector<double> seconds;
    int i = 0;
    for (auto _ : state) {
        if (prepare) {
            prepare(i);
            QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QApplication::processEvents();
        }
        const Clock::time_point start = Clock::now();
        step(i++);
        if (!isFrame) {
            QApplication::sendPostedEvents();
            QApplication::processEvents();
        }
        seconds.push_back(std::chrono::duration<double>(Clock::now() - start).count());
        state.SetIterationTime(seconds.back());
        if (isFrame) {
            QApplication::processEvents();
        }
    }
    std::sort(seconds.begin(), seconds.end());
    state.counters["median_ms"] = seconds.at(seconds.size() / 2) * 1e3;
    state.counters["worst_ms"] = seconds.back() * 1e3;
}

void rebuild(benchmark::State& state)
{
    timeSteps(state, false, [](int) { desk().widget().rebuildTable(); });
}

/// From an empty table.
void build(benchmark::State& state)
{
    MetaEffect* const root = &desk().root();
    timeSteps(
        state, false,
        [root](int) {
            desk().widget().setMetaEffect(root);
            desk().widget().rebuildTable();
        },
        [](int) {
            desk().widget().setMetaEffect(nullptr);
            desk().widget().rebuildTable();
        });
}

void select(benchmark::State& state)
{
    timeSteps(state, false, [](int i) { desk().select(i * 37 % kEffects); });
}

/// Into the field of the start, the first effect of a chain being selected.
void typeTime(benchmark::State& state)
{
    desk().select(0);
    timeSteps(state, false, [](int i) { desk().time().setText(QString::number(i % 9 + 1)); });
    const Effect& follower = desk().effect(1);
    if (follower.begin() != desk().effect(0).end()) {
        fail("the chain did not follow");
    }
}

void typeCell(benchmark::State& state)
{
    timeSteps(state, false, [](int i) {
        desk().table().item(0, MetaWidget::EndColumn)->setText(QString::number(i % 9 + 20));
    });
}

/// In the order of a column that the typed time changes.
void typeTimeSorted(benchmark::State& state)
{
    desk().table().sortItems(MetaWidget::StartColumn, Qt::AscendingOrder);
    desk().select(0);
    timeSteps(state, false, [](int i) { desk().time().setText(QString::number(i % 9 + 1)); });
    desk().widget().rebuildTable();
}

void idleFrame(benchmark::State& state)
{
    timeSteps(state, true, [](int) { emit desk().root().internalUpdateLightsComplete(); });
}

/// Ten effects start or stop.
void busyFrame(benchmark::State& state)
{
    timeSteps(state, true, [](int i) {
        for (int k = 0; k < 10; ++k) {
            desk().effect(k).setActive(i % 2 == 0);
        }
        emit desk().root().internalUpdateLightsComplete();
    });
}

void registerCases()
{
    const std::pair<const char*, void (*)(benchmark::State&)> cases[] = {
        {"build the table", build},
        {"rebuild the table", rebuild},
        {"select an effect", select},
        {"type a time", typeTime},
        {"type a time, sorted by start", typeTimeSorted},
        {"type into a cell", typeCell},
        {"frame, nothing changed", idleFrame},
        {"frame, ten effects changed", busyFrame},
    };
    for (const auto& entry : cases) {
        benchmark::RegisterBenchmark(entry.first, entry.second)
            ->UseManualTime()
            ->Iterations(kSteps)
            ->Unit(benchmark::kMillisecond);
    }
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QApplication application(argc, argv);
    initForgeResources();
    registerEffects();
    benchmark::Initialize(&argc, argv);
    registerCases();
    benchmark::RunSpecifiedBenchmarks();
    deskHolder().reset(); // ahead of what it stands on
    return 0;
}
