// A library of 10,000 swatches in 200 lists: load and save against QDomDocument alone on the same
// text, and what is asked of it while the picker is open.

#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"

#include <QDomDocument>
#include <QFile>
#include <QGuiApplication>
#include <QModelIndex>
#include <QSaveFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kLists = 200;
constexpr int kSwatchesAList = 50;

QByteArray libraryText()
{
    QByteArray text = "<ColorLibraryList>\n";
    for (int list = 0; list < kLists; ++list) {
        text +=
            " <ColorLibrary name=\"List " + QByteArray::number(list) + "\" isUserLibrary=\"1\">\n";
        for (int i = 0; i < kSwatchesAList; ++i) {
            const QByteArray number = QByteArray::number(list * kSwatchesAList + i);
            text += "  <Color name=\"Swatch " + number + "\" uid=\"0b5c2d9e-71a4-4f0e-9a55-" +
                    number.rightJustified(12, '0') + "\" value=\"aRgb;1;0;#ffff" +
                    QByteArray::number(list * 257 + i, 16).rightJustified(4, '0') +
                    "80800000\" originatingPreset=\"\" colorId=\"" + number + "\"/>\n";
        }
        text += " </ColorLibrary>\n";
    }
    return text + "</ColorLibraryList>\n";
}

/// The user's file, with the library in it.
QString userFile()
{
    QFile file(VelaColorLibrary::userFile());
    VelaColorLibrary maker;
    maker.load();
    if (!maker.save() || !file.open(QIODevice::WriteOnly) || file.write(libraryText()) < 0) {
        std::exit(1);
    }
    return file.fileName();
}

std::unique_ptr<VelaColorLibrary> loaded()
{
    auto library = std::make_unique<VelaColorLibrary>();
    if (!library->load(userFile()) || library->rowCount() != kLists + 2) {
        std::exit(1);
    }
    return library;
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double g_readSeconds = 0.0;
double g_writeSeconds = 0.0;

void readAlone(benchmark::State& state)
{
    const QString path = userFile();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        QFile file(path);
        QDomDocument document;
        if (!file.open(QIODevice::ReadOnly) || !document.setContent(&file)) {
            state.SkipWithError("the library is no document");
        }
    }
    g_readSeconds = secondsSince(start) / static_cast<double>(state.iterations());
}

void load(benchmark::State& state)
{
    const QString path = userFile();
    double seconds = 0.0;
    for (auto _ : state) {
        VelaColorLibrary library;
        const auto start = std::chrono::steady_clock::now();
        if (!library.load(path) || library.rowCount() != kLists + 2) {
            state.SkipWithError("the library did not load");
        }
        const double taken = secondsSince(start);
        state.SetIterationTime(taken);
        seconds += taken;
    }
    state.counters["x_readAlone"] =
        seconds / static_cast<double>(state.iterations()) / g_readSeconds;
}

void writeAlone(benchmark::State& state)
{
    const QTemporaryDir dir;
    QDomDocument document;
    document.setContent(libraryText());
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        QSaveFile file(dir.filePath(QStringLiteral("alone.xml")));
        if (!file.open(QIODevice::WriteOnly) || file.write(document.toByteArray(1)) < 0 ||
            !file.commit()) {
            state.SkipWithError("the document can't be written");
        }
    }
    g_writeSeconds = secondsSince(start) / static_cast<double>(state.iterations());
}

void save(benchmark::State& state)
{
    const auto library = loaded();
    const auto start = std::chrono::steady_clock::now();
    for (auto _ : state) {
        if (!library->save()) {
            state.SkipWithError("the library can't be saved");
        }
    }
    state.counters["x_writeAlone"] =
        secondsSince(start) / static_cast<double>(state.iterations()) / g_writeSeconds;
}

void uniqueListName(benchmark::State& state)
{
    VelaColorLibrary library;
    for (int i = 0; i < kLists; ++i) { // the worst: all of one name
        library.createColorList(library.uniqueListName(QStringLiteral("List")), false);
    }
    for (auto _ : state) {
        QString name = library.uniqueListName(QStringLiteral("List"));
        benchmark::DoNotOptimize(name);
    }
}

void colorForUid(benchmark::State& state)
{
    const auto library = loaded();
    QStringList uids;
    for (int row = 2; row < library->rowCount(); ++row) {
        const QModelIndex list = library->index(row, 0);
        uids << library->itemAt(library->index(kSwatchesAList / 2, 0, list))->uid();
    }
    int at = 0;
    for (auto _ : state) {
        VelaColor color = library->colorForUid(uids.at(at++ % uids.size()));
        benchmark::DoNotOptimize(color);
    }
}

void quiet(QtMsgType /*type*/, const QMessageLogContext& /*context*/, const QString& /*text*/) {}

} // namespace

BENCHMARK(readAlone)->Unit(benchmark::kMillisecond);
BENCHMARK(load)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(writeAlone)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(save)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(uniqueListName)->Unit(benchmark::kMicrosecond);
BENCHMARK(colorForUid)->Unit(benchmark::kMicrosecond);

int main(int argc, char** argv)
{
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path())); // nobody's own swatches
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qInstallMessageHandler(quiet); // each save tells its whole text
    const QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
