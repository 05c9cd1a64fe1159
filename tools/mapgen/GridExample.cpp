#include "tools/mapgen/GridExample.h"

#include "tools/mapgen/Patch.h"
#include "tools/mapgen/PlanPainter.h"

#include <QStringList>

#include <algorithm>
#include <cmath>
#include <random>

using namespace ShowEffects;

namespace {

constexpr double kPitch = 12.0;
constexpr double kMargin = 36.0;
constexpr int kLongestSide = 2600; // lights; pictures are painted up to 32767 pixels
constexpr quint32 kShowLength = 60000;
constexpr double kLayerSeconds = 5.0;

/// The IPv4 address as a number, or -1 for text that isn't four numbers of 0 to 255.
qint64 addressNumber(const QString& text)
{
    const QStringList parts = text.split(QLatin1Char('.'));
    if (parts.size() != 4) {
        return -1;
    }
    qint64 number = 0;
    for (const QString& part : parts) {
        bool ok = false;
        const uint byte = part.toUInt(&ok);
        if (!ok || byte > 255) {
            return -1;
        }
        number = number * 256 + byte;
    }
    return number;
}

QString addressText(qint64 number)
{
    return QStringLiteral("%1.%2.%3.%4")
        .arg(number / 16777216)
        .arg(number / 65536 % 256)
        .arg(number / 256 % 256)
        .arg(number % 256);
}

struct GridSize
{
    int rows = 1;
    int columns = 1;
};

GridSize gridSize(const GridOptions& options)
{
    GridSize size;
    size.rows = options.rows > 0
                    ? std::min(options.rows, options.lights)
                    : std::max(1, static_cast<int>(std::sqrt(options.lights * 2.0 / 3.0)));
    size.columns = (options.lights + size.rows - 1) / size.rows;
    return size;
}

/// What is wrong with the options, or an empty text.
QString complaint(const GridOptions& options)
{
    const struct
    {
        const char* name;
        int value;
        int lowest;
        int highest;
    } ranges[] = {{"lights", options.lights, 1, GridOptions::kMostLights},
                  {"rows", options.rows, 0, GridOptions::kMostLights},
                  {"lights a port", options.perPort, 1, Patch::kPortBytes / 3},
                  {"ports", options.ports, 1, 255},
                  {"version", options.version, 1, 3},
                  {"layers", options.layers, 1, GridOptions::kMostLayers}};
    for (const auto& range : ranges) {
        if (range.value < range.lowest || range.value > range.highest) {
            return QStringLiteral("%1: %2 is not within %3 to %4")
                .arg(QLatin1String(range.name))
                .arg(range.value)
                .arg(range.lowest)
                .arg(range.highest);
        }
    }
    const GridSize size = gridSize(options);
    if (std::max(size.rows, size.columns) > kLongestSide) {
        return QStringLiteral("rows: %1 by %2 lights are too long for a plan")
            .arg(size.rows)
            .arg(size.columns);
    }
    if (!(options.alpha >= 0.0 && options.alpha <= 1.0)) {
        return QStringLiteral("alpha: not within 0 to 1");
    }
    if (addressNumber(options.address) < 0) {
        return QStringLiteral("address: %1 is no IPv4 address").arg(options.address);
    }
    return {};
}

QPointF cell(int row, int column)
{
    return {kMargin + column * kPitch, kMargin + row * kPitch};
}

/// A dark board with a ruling every ten lights and a socket under each light.
QImage gridPlan(const GridSize& size, int lights)
{
    const QPointF last = cell(size.rows - 1, size.columns - 1);
    PlanPainter plan(static_cast<int>(last.x() + kMargin), static_cast<int>(last.y() + kMargin), 0);
    plan.fillDown(QRectF(0, 0, plan.width(), plan.height()), QColor(24, 27, 37),
                  QColor(15, 17, 24));
    const double edge = kPitch;
    for (int column = 0; column <= size.columns; column += 10) {
        const double x = cell(0, column).x() - kPitch / 2;
        plan.line(x, edge, x, plan.height() - edge, QColor(80, 88, 112, 90), 1.0);
    }
    for (int row = 0; row <= size.rows; row += 10) {
        const double y = cell(row, 0).y() - kPitch / 2;
        plan.line(edge, y, plan.width() - edge, y, QColor(80, 88, 112, 90), 1.0);
    }
    plan.painter().setPen(Qt::NoPen);
    plan.painter().setBrush(QColor(8, 9, 14));
    for (int i = 0; i < lights; ++i) {
        plan.painter().drawEllipse(cell(i / size.columns, i % size.columns), 5.5, 5.5);
    }
    return plan.take();
}

/// Returns the group of the whole wall.
quint64 addGroups(Patch* patch, const GridSize& size, const QVector<quint64>& lights)
{
    QVector<QVector<quint64>> rows(size.rows);
    QVector<QVector<quint64>> columns(size.columns);
    for (int i = 0; i < lights.size(); ++i) {
        rows[i / size.columns].append(lights.at(i));
        columns[i % size.columns].append(lights.at(i));
    }
    const auto addSteps = [patch](const QVector<QVector<quint64>>& steps, const char* what) {
        QVector<quint64> groups;
        for (const QVector<quint64>& step : steps) {
            if (!step.isEmpty()) { // a grid that comes out uneven may leave rows without a light
                groups.append(patch->addGroup(
                    GroupSpec::Synchronized,
                    QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(groups.size() + 1), step));
            }
        }
        return groups;
    };
    const QVector<quint64> rowGroups = addSteps(rows, "Row");
    const QVector<quint64> columnGroups = addSteps(columns, "Column");
    patch->addGroup(GroupSpec::Chasing, QStringLiteral("Rows"), rowGroups);
    patch->addGroup(GroupSpec::Chasing, QStringLiteral("Columns"), columnGroups);
    return patch->addGroup(GroupSpec::Synchronized, QStringLiteral("Wall"), rowGroups);
}

ShowEffect gridShow(const GridOptions& options, quint64 wall)
{
    std::mt19937 random(options.seed);
    const auto color = [&random](double alpha) {
        const int hue = static_cast<int>(random() % 360U);
        return rgbText(QColor::fromHsv(hue, 210, 235), alpha);
    };
    ShowEffect show = timeline(QStringLiteral("Meta Effect"));
    for (int i = 0; i < options.layers; ++i) {
        const double alpha = i == 0 ? 1.0 : options.alpha;
        const QString name = QStringLiteral("Layer %1").arg(i + 1);
        const QString from = color(alpha);
        const QString to = color(alpha);
        ShowEffect layer =
            i % 2 == 0 ? fixedColor(name, from) : crossFade(name, from, to, kLayerSeconds);
        layer.on(wall).layer(static_cast<quint32>(i) + 1).at(0).lasting(kShowLength);
        show.add(layer);
    }
    return show;
}

} // namespace

Example gridExample(const GridOptions& options, const QString& imageFile, bool* made,
                    QString* error)
{
    *made = false;
    Example example;
    *error = complaint(options);
    if (!error->isEmpty()) {
        return example;
    }
    const int portsOfOne = options.version == 1 ? 1 : options.ports;
    const int portCount = (options.lights + options.perPort - 1) / options.perPort;
    const int controllers = (portCount + portsOfOne - 1) / portsOfOne;
    const qint64 firstAddress = addressNumber(options.address);
    if (addressNumber(addressText(firstAddress + controllers - 1)) < 0) {
        *error = QStringLiteral("address: %1 leaves no room for %2 controllers")
                     .arg(options.address)
                     .arg(controllers);
        return example;
    }

    const GridSize size = gridSize(options);
    Patch patch(imageFile, options.postSync);
    for (int i = 0; i < controllers; ++i) {
        ControllerSpec controller;
        controller.name = QStringLiteral("Controller %1").arg(i + 1);
        controller.address = addressText(firstAddress + i);
        controller.serialNumber = 0x00820001U + static_cast<quint64>(i);
        controller.version = options.version;
        patch.addController(controller, std::min(portsOfOne, portCount - i * portsOfOne));
    }
    QVector<quint64> lights;
    lights.reserve(options.lights);
    for (int i = 0; i < options.lights; ++i) {
        const int port = i / options.perPort;
        lights.append(patch.addLight(port / portsOfOne, port % portsOfOne, FixtureTypes::rgbNode(),
                                     QStringLiteral("Light %1").arg(i + 1),
                                     cell(i / size.columns, i % size.columns)));
    }
    const quint64 wall = addGroups(&patch, size, lights);
    example.map = patch.installation();
    example.plan = gridPlan(size, options.lights);
    example.show = gridShow(options, wall);
    example.keys = options.keys;
    *made = true;
    return example;
}
