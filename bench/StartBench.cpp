// From the start of a process to the first paint of its main window: the program against a bare
// QMainWindow. Each measurement is a process of its own, so that nothing is warm.
// Run it in a network namespace of its own: tests/in-namespace.sh build/release/bin/StartBench

#include "app/Startup.h"

#include <QApplication>
#include <QEvent>
#include <QFile>
#include <QMainWindow>
#include <QObject>
#include <QProcess>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace {

/// Ends the process when a main window is painted.
class FirstPaint : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        const bool handled = QObject::eventFilter(watched, event);
        if (event->type() == QEvent::Paint && qobject_cast<QMainWindow*>(watched) != nullptr) {
            _exit(0);
        }
        return handled;
    }
};

void watchForFirstPaint()
{
    static FirstPaint firstPaint;
    QCoreApplication::instance()->installEventFilter(&firstPaint);
}
Q_COREAPP_STARTUP_FUNCTION(watchForFirstPaint)

int startBare(int& argc, char** argv)
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1000, 800);
    window.show();
    return QApplication::exec();
}

double g_bareSeconds = 0.0;

double startProcess(const char* mode)
{
    QProcess process;
    const auto start = std::chrono::steady_clock::now();
    process.start(QFile::symLinkTarget(QStringLiteral("/proc/self/exe")),
                  {QString::fromLatin1(mode)});
    const bool good = process.waitForFinished(60000) && process.exitCode() == 0;
    return good ? std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count()
                : -1.0;
}

void firstPaint(benchmark::State& state, const char* mode)
{
    double seconds = 0.0;
    for (auto _ : state) {
        const double taken = startProcess(mode);
        if (taken < 0.0) {
            state.SkipWithError("the process did not paint");
            return;
        }
        state.SetIterationTime(taken);
        seconds += taken;
    }
    seconds /= static_cast<double>(state.iterations());
    if (std::strcmp(mode, "--bare") == 0) {
        g_bareSeconds = seconds;
    } else {
        state.counters["x_bare"] = seconds / g_bareSeconds;
    }
}

} // namespace

BENCHMARK_CAPTURE(firstPaint, bare, "--bare")
    ->UseManualTime()
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(firstPaint, program, "--program")
    ->UseManualTime()
    ->Iterations(15)
    ->Unit(benchmark::kMillisecond);

int main(int argc, char** argv)
{
    if (argc > 1 && std::strcmp(argv[1], "--bare") == 0) {
        return startBare(argc, argv);
    }
    if (argc > 1 && std::strcmp(argv[1], "--program") == 0) {
        argc = 1; // no option of the program's
        return startForge(argc, argv);
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
