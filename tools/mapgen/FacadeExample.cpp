#include "tools/mapgen/FacadeExample.h"

#include "tools/mapgen/FacadeLayout.h"
#include "tools/mapgen/FacadePlan.h"
#include "tools/mapgen/FacadeRevue.h"
#include "tools/mapgen/FacadeShow.h"
#include "tools/mapgen/Patch.h"

using namespace FacadeLayout;

namespace {

constexpr int kPorts = 4;
constexpr int kColumnsPerController = kColumns / 2;
constexpr int kPortOfColumn[kColumnsPerController] = {0, 0, 0, 0, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3};

/// Light uids by column and floor.
using Windows = QVector<QVector<quint64>>;

void addControllers(Patch* patch)
{
    for (int i = 0; i < 2; ++i) {
        ControllerSpec controller;
        controller.name = i == 0 ? QStringLiteral("West Riser") : QStringLiteral("East Riser");
        controller.address = QStringLiteral("127.0.0.%1").arg(i + 1);
        controller.macAddress = QStringLiteral("02:00:5E:10:00:0%1").arg(i + 1);
        controller.serialNumber = 0x00810001U + static_cast<quint64>(i);
        controller.properties = {{QStringLiteral("PROTOCOL_VERSION"), 2}};
        patch->addController(controller, kPorts);
    }
}

/// The wiring runs up one column and down the next.
Windows addLights(Patch* patch)
{
    Windows windows(kColumns, QVector<quint64>(kFloors, 0));
    for (int column = 0; column < kColumns; ++column) {
        const int controller = column / kColumnsPerController;
        const int port = kPortOfColumn[column % kColumnsPerController];
        for (int i = 0; i < kFloors; ++i) {
            const int floor = column % 2 == 0 ? i : kFloors - 1 - i;
            const QString name = QStringLiteral("Window %1.%2")
                                     .arg(floor + 1)
                                     .arg(column + 1, 2, 10, QLatin1Char('0'));
            windows[column][floor] = patch->addLight(controller, port, FixtureTypes::rgbNode(),
                                                     name, window(column, floor));
        }
    }
    return windows;
}

QVector<quint64> windowsWhere(const Windows& windows,
                              bool (*holds)(int column, int floor, int wanted), int wanted)
{
    QVector<quint64> uids;
    for (int floor = 0; floor < kFloors; ++floor) {
        for (int column = 0; column < kColumns; ++column) {
            if (holds(column, floor, wanted)) {
                uids.append(windows.at(column).at(floor));
            }
        }
    }
    return uids;
}

QVector<quint64> slice(const QVector<quint64>& uids, int first, int end)
{
    return uids.mid(first, end - first);
}

FacadeGroups addGroups(Patch* patch, const Windows& windows)
{
    constexpr GroupSpec::Kind kChase = GroupSpec::Chasing;
    constexpr GroupSpec::Kind kSync = GroupSpec::Synchronized;
    FacadeGroups groups;
    for (int column = 0; column < kColumns; ++column) {
        groups.columns.append(patch->addGroup(
            kSync, QStringLiteral("Column %1").arg(column + 1, 2, 10, QLatin1Char('0')),
            windows.at(column)));
    }
    for (int floor = 0; floor < kFloors; ++floor) {
        groups.floors.append(patch->addGroup(
            kSync, QStringLiteral("Floor %1").arg(floor + 1, 2, 10, QLatin1Char('0')),
            windowsWhere(
                windows, [](int, int f, int wanted) { return f == wanted; }, floor)));
    }
    groups.whole = patch->addGroup(kSync, QStringLiteral("Facade"), groups.floors);
    groups.columnChase =
        patch->addGroup(kChase, QStringLiteral("Columns, left to right"), groups.columns);
    groups.floorChase =
        patch->addGroup(kChase, QStringLiteral("Floors, bottom to top"), groups.floors);

    const QStringList bayNames = {QStringLiteral("West Wing"), QStringLiteral("Pavilion"),
                                  QStringLiteral("East Wing")};
    for (int bay = 0; bay < kBays; ++bay) {
        const QVector<quint64> columns =
            slice(groups.columns, firstColumn(bay), firstColumn(bay + 1));
        groups.bays.append(patch->addGroup(kSync, bayNames.at(bay), columns));
        groups.bayChases.append(patch->addGroup(
            kChase, bayNames.at(bay) + QStringLiteral(", column by column"), columns));
    }
    groups.bayChase = patch->addGroup(kChase, QStringLiteral("Columns, bay by bay"),
                                      groups.bayChases); // chases nested

    const QStringList tierNames = {QStringLiteral("Lower Tier"), QStringLiteral("Middle Tier"),
                                   QStringLiteral("Upper Tier")};
    for (int tier = 0; tier < kTiers; ++tier) {
        groups.tiers.append(patch->addGroup(
            kSync, tierNames.at(tier),
            slice(groups.floors, tier * kFloorsPerTier, (tier + 1) * kFloorsPerTier)));
    }
    for (int i = 0; i < kRings; ++i) {
        groups.rings.append(patch->addGroup(
            kSync, QStringLiteral("Ring %1").arg(i + 1, 2, 10, QLatin1Char('0')),
            windowsWhere(
                windows, [](int c, int f, int wanted) { return ring(c, f) == wanted; }, i)));
    }
    groups.ringChase = patch->addGroup(kChase, QStringLiteral("Rings, outward"), groups.rings);

    QVector<quint64> climbs;
    for (int column = 0; column < kColumns; ++column) {
        climbs.append(patch->addGroup(
            kChase, QStringLiteral("Climb %1").arg(column + 1, 2, 10, QLatin1Char('0')),
            windows.at(column)));
    }
    patch->addGroup(kChase, QStringLiteral("Window by window"), climbs);
    return groups;
}

} // namespace

Example facadeExample()
{
    Patch patch(QStringLiteral("examples/facade/facade.png"), true);
    addControllers(&patch);
    const Windows windows = addLights(&patch);
    const FacadeGroups groups = addGroups(&patch, windows);
    Example example;
    example.name = QStringLiteral("facade");
    example.map = patch.installation();
    example.plan = facadePlan();
    example.show = facadeShow(groups);
    example.furtherShows.push_back({QStringLiteral("all-effects"), facadeRevue(groups)});
    example.pictures.append({QStringLiteral("hills"), Artwork::hills()});
    example.pictures += Artwork::gull(QStringLiteral("gull"));
    return example;
}
