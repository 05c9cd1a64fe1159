#include "tools/mapgen/BridgeExample.h"
#include "tools/mapgen/FacadeExample.h"
#include "tools/mapgen/GridExample.h"
#include "tools/mapgen/RingExample.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QFileInfo>
#include <QTextStream>

namespace {

constexpr int kUsageError = 2;

int fail(int code, const QString& text)
{
    QTextStream(stderr) << "forge-mapgen: " << text << '\n';
    return code;
}

int writeExamples(const QString& folder)
{
    for (const Example& example : {facadeExample(), bridgeExample(), ringExample()}) {
        QString error;
        if (!writeExample(example, QStringLiteral("%1/%2/%2").arg(folder, example.name), &error)) {
            return fail(1, error);
        }
    }
    return 0;
}

/// Reads the number of an option that was given; false when its text is none.
template <typename Number, typename Read>
bool take(const QCommandLineParser& parser, const char* option, Number* target, Read read)
{
    const QString name = QString::fromLatin1(option);
    if (!parser.isSet(name)) {
        return true;
    }
    bool ok = false;
    *target = read(parser.value(name), &ok);
    return ok;
}

bool takeInt(const QCommandLineParser& parser, const char* option, int* target)
{
    return take(parser, option, target,
                [](const QString& text, bool* ok) { return text.toInt(ok); });
}

int writeGrid(const QCommandLineParser& parser, const QString& path)
{
    GridOptions options;
    const bool numbers =
        takeInt(parser, "lights", &options.lights) && takeInt(parser, "rows", &options.rows) &&
        takeInt(parser, "per-port", &options.perPort) && takeInt(parser, "ports", &options.ports) &&
        takeInt(parser, "version", &options.version) &&
        takeInt(parser, "layers", &options.layers) &&
        take(parser, "alpha", &options.alpha,
             [](const QString& text, bool* ok) { return text.toDouble(ok); }) &&
        take(parser, "seed", &options.seed,
             [](const QString& text, bool* ok) { return text.toUInt(ok); });
    if (!numbers) {
        return fail(kUsageError, QStringLiteral("an option's value is not a number"));
    }
    if (parser.isSet(QStringLiteral("address"))) {
        options.address = parser.value(QStringLiteral("address"));
    }
    options.postSync = parser.isSet(QStringLiteral("post-sync"));
    options.keys =
        parser.isSet(QStringLiteral("short-keys")) ? MapWriter::Keys::Short : MapWriter::Keys::Long;
    bool made = false;
    QString error;
    const Example example = gridExample(options, path + QStringLiteral(".png"), &made, &error);
    if (!made) {
        return fail(kUsageError, error);
    }
    return writeExample(example, path, &error) ? 0 : fail(1, error);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Writes maps of lighting installations, their plans and shows for them."));
    parser.addPositionalArgument(QStringLiteral("what"),
                                 QStringLiteral("\"grid\": a wall of RGB lights; \"examples\": the "
                                                "example installations"));
    parser.addHelpOption();
    parser.addOptions({
        {QStringLiteral("out"),
         QStringLiteral("grid: the path of the three files without their suffixes; examples: the "
                        "folder that holds theirs"),
         QStringLiteral("path")},
        {QStringLiteral("lights"), QStringLiteral("1 to 60000"), QStringLiteral("n")},
        {QStringLiteral("rows"), QStringLiteral("rows of the wall"), QStringLiteral("n")},
        {QStringLiteral("per-port"), QStringLiteral("lights on a port, 1 to 170"),
         QStringLiteral("n")},
        {QStringLiteral("ports"), QStringLiteral("ports of a controller"), QStringLiteral("n")},
        {QStringLiteral("address"), QStringLiteral("of the first controller; the others count on"),
         QStringLiteral("IPv4")},
        {QStringLiteral("version"), QStringLiteral("protocol generation, 1 to 3"),
         QStringLiteral("n")},
        {QStringLiteral("post-sync"), QStringLiteral("ask for a sync behind each frame")},
        {QStringLiteral("layers"), QStringLiteral("effects of the show over the wall"),
         QStringLiteral("n")},
        {QStringLiteral("alpha"), QStringLiteral("of the layers above the first, 0 to 1"),
         QStringLiteral("a")},
        {QStringLiteral("seed"), QStringLiteral("of the show's colours"), QStringLiteral("n")},
        {QStringLiteral("short-keys"), QStringLiteral("write the short forms of the map's keys")},
    });
    parser.process(application);

    const QStringList what = parser.positionalArguments();
    const QString path = parser.value(QStringLiteral("out"));
    if (path.isEmpty() || what.size() != 1) {
        return fail(kUsageError,
                    QStringLiteral("say \"grid\" or \"examples\", and where with --out"));
    }
    if (what.first() == QLatin1String("examples")) {
        return writeExamples(path);
    }
    if (what.first() == QLatin1String("grid")) {
        return writeGrid(parser, path);
    }
    return fail(kUsageError,
                QStringLiteral("%1: neither \"grid\" nor \"examples\"").arg(what.first()));
}
