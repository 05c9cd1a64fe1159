#include "tools/mapgen/BridgeExample.h"

#include "tools/mapgen/BridgeLayout.h"
#include "tools/mapgen/BridgePlan.h"
#include "tools/mapgen/BridgeShow.h"
#include "tools/mapgen/Patch.h"

using namespace BridgeLayout;

namespace {

constexpr GroupSpec::Kind kChase = GroupSpec::Chasing;
constexpr GroupSpec::Kind kSync = GroupSpec::Synchronized;
constexpr int kRoadLightsPerStep = 4;
constexpr int kBuoysPerStep = 2; // of either garland

/// Patches the bridge light by light and groups what it patched.
class BridgePatch
{
public:
    BridgePatch()
        : m_patch(QStringLiteral("examples/mixed/mixed.png"), false)
    {
        addControllers();
        addArches();
        addPiers();
        addTowers();
        addFloods();
        addRoad();
        addLamps();
        addRiver();
        m_groups.whole =
            sync(QStringLiteral("Bridge"),
                 {m_groups.allArches, m_groups.allPiers, m_groups.allTowers, m_groups.crowns,
                  m_groups.feet, m_groups.floods, m_groups.road, m_groups.allLamps});
    }
    const Installation& installation() const { return m_patch.installation(); }
    const BridgeGroups& groups() const { return m_groups; }

private:
    void addControllers();
    void addArches();
    void addPiers();
    void addTowers();
    void addFloods();
    void addRoad();
    void addLamps();
    void addRiver();

    quint64 sync(const QString& name, const QVector<quint64>& children)
    {
        return m_patch.addGroup(kSync, name, children);
    }
    quint64 chase(const QString& name, const QVector<quint64>& children)
    {
        return m_patch.addGroup(kChase, name, children);
    }
    static QString numbered(const char* what, int index)
    {
        return QStringLiteral("%1 %2")
            .arg(QLatin1String(what))
            .arg(index + 1, 2, 10, QLatin1Char('0'));
    }

    Patch m_patch;
    BridgeGroups m_groups;
    int m_mainController = 0;
    int m_roadController = 0;
    int m_riverController = 0;
};

void BridgePatch::addControllers()
{
    ControllerSpec road;
    road.name = QStringLiteral("Roadway");
    road.address = QStringLiteral("127.0.0.3");
    road.macAddress = QStringLiteral("02:00:5E:20:00:03");
    road.serialNumber = 0x007F0001;
    road.version = 1;
    road.properties = {{QStringLiteral("PROTOCOL_VERSION"), 1}};
    m_roadController = m_patch.addController(road, 1);

    ControllerSpec stone;
    stone.name = QStringLiteral("Stonework");
    stone.address = QStringLiteral("127.0.0.4");
    stone.macAddress = QStringLiteral("02:00:5E:20:00:04");
    stone.serialNumber = 0x00810011;
    stone.properties = {{QStringLiteral("PROTOCOL_VERSION"), 2}};
    m_mainController = m_patch.addController(stone, 4);

    ControllerSpec river;
    river.kind = ControllerSpec::Broadcast;
    river.name = QStringLiteral("River Garlands");
    river.macAddress = QStringLiteral("02:00:5E:20:00:07");
    river.serialNumber = 0x007F0002;
    river.version = 1;
    river.universe = 7;
    river.missing = true; // taken in for the winter
    m_riverController = m_patch.addController(river, 1);
}

void BridgePatch::addArches()
{
    QVector<quint64> chases;
    for (int arch = 0; arch < kArches; ++arch) {
        QVector<quint64> lights;
        for (int i = 0; i < kLightsPerArch; ++i) {
            lights.append(m_patch.addLight(m_mainController, 0, FixtureTypes::rgbwLinear(),
                                           QStringLiteral("Arch %1.%2").arg(arch + 1).arg(i + 1),
                                           archLight(arch, i)));
        }
        m_groups.arches.append(sync(numbered("Arch", arch), lights));
        chases.append(chase(numbered("Arch, stone by stone,", arch), lights));
    }
    m_groups.allArches = sync(QStringLiteral("Arches"), m_groups.arches);
    chase(QStringLiteral("Arch by arch"), m_groups.arches);
    chase(QStringLiteral("Arches, stone by stone"), chases); // chases nested
}

void BridgePatch::addPiers()
{
    for (int pier = 0; pier < kPiers; ++pier) {
        QVector<quint64> lights;
        for (int i = 0; i < kLightsPerPier; ++i) {
            lights.append(m_patch.addLight(m_mainController, 1, FixtureTypes::rgbaHalves(),
                                           QStringLiteral("Pier %1.%2").arg(pier + 1).arg(i + 1),
                                           pierLight(pier, i)));
        }
        m_groups.piers.append(sync(numbered("Pier", pier), lights));
    }
    m_groups.allPiers = sync(QStringLiteral("Piers"), m_groups.piers);
    chase(QStringLiteral("Pier by pier"), m_groups.piers);
}

void BridgePatch::addTowers()
{
    QVector<QVector<quint64>> levels(kTowerLevels);
    QVector<quint64> crowns;
    QVector<quint64> feet;
    for (int tower = 0; tower < kTowers; ++tower) {
        const QString name =
            tower == 0 ? QStringLiteral("West Tower") : QStringLiteral("East Tower");
        QVector<quint64> lights;
        for (int level = kTowerLevels - 1; level >= 0; --level) {
            for (int side = 0; side < kTowerSides; ++side) {
                const quint64 uid = m_patch.addLight(
                    m_mainController, 2, FixtureTypes::rgbw16Bit(),
                    QStringLiteral("%1 %2.%3").arg(name).arg(kTowerLevels - level).arg(side + 1),
                    towerLight(tower, level, side));
                lights.append(uid);
                levels[kTowerLevels - 1 - level].append(uid);
            }
        }
        m_groups.towers.append(sync(name, lights));
        for (int i = 0; i < kCrownLights; ++i) {
            crowns.append(m_patch.addLight(m_mainController, 2, FixtureTypes::rgbawSpot(),
                                           QStringLiteral("%1 Crown %2").arg(name).arg(i + 1),
                                           crownLight(tower, i)));
        }
        for (int side = 0; side < kTowerSides; ++side) {
            feet.append(m_patch.addLight(m_mainController, 1, FixtureTypes::rgbwTriple(),
                                         QStringLiteral("%1 Foot %2").arg(name).arg(side + 1),
                                         towerFootLight(tower, side)));
        }
    }
    for (int i = 0; i < kTowerLevels; ++i) {
        m_groups.towerLevels.append(sync(numbered("Tower Level", i), levels.at(i)));
    }
    m_groups.allTowers = sync(QStringLiteral("Towers"), m_groups.towers);
    chase(QStringLiteral("Towers, level by level"), m_groups.towerLevels);
    m_groups.crowns = sync(QStringLiteral("Crowns"), crowns);
    m_groups.feet = sync(QStringLiteral("Tower Feet"), feet);
}

void BridgePatch::addFloods()
{
    QVector<quint64> lights;
    for (int quay = 0; quay < 2; ++quay) {
        for (int i = 0; i < kFloodsPerQuay; ++i) {
            lights.append(m_patch.addLight(m_mainController, 3, FixtureTypes::fourWhiteFlood(),
                                           QStringLiteral("Quay %1.%2").arg(quay + 1).arg(i + 1),
                                           flood(quay, i)));
        }
    }
    m_groups.floods = sync(QStringLiteral("Quay Floods"), lights);
}

void BridgePatch::addRoad()
{
    QVector<quint64> step;
    for (int i = 0; i < kRoadLights; ++i) {
        step.append(m_patch.addLight(m_roadController, 0, FixtureTypes::tunableLinear(),
                                     numbered("Road", i), roadLight(i)));
        if (step.size() == kRoadLightsPerStep) {
            m_groups.roadSteps.append(sync(numbered("Road Step", m_groups.roadSteps.size()), step));
            step.clear();
        }
    }
    m_groups.road = sync(QStringLiteral("Roadway"), m_groups.roadSteps);
    chase(QStringLiteral("Roadway, step by step"), m_groups.roadSteps);
}

void BridgePatch::addLamps()
{
    for (int i = 0; i < kLamps; ++i) {
        m_groups.lamps.append(m_patch.addLight(m_roadController, 0, FixtureTypes::whiteLine(),
                                               numbered("Lamp", i), lamp(i)));
    }
    m_groups.allLamps = sync(QStringLiteral("Lamps"), m_groups.lamps);
    chase(QStringLiteral("Lamp by lamp"), m_groups.lamps);
}

void BridgePatch::addRiver()
{
    QVector<QVector<quint64>> steps(kBuoys / kBuoysPerStep);
    for (int garland = 0; garland < kGarlands; ++garland) {
        QVector<quint64> lights;
        for (int i = 0; i < kBuoys; ++i) {
            const quint64 uid = m_patch.addLight(
                m_riverController, 0, FixtureTypes::rgbTape(),
                QStringLiteral("Buoy %1.%2").arg(garland + 1).arg(i + 1), buoy(garland, i));
            lights.append(uid);
            steps[i / kBuoysPerStep].append(uid);
        }
        chase(numbered("Garland", garland), lights);
    }
    for (int i = 0; i < steps.size(); ++i) {
        m_groups.riverSteps.append(sync(numbered("River Step", i), steps.at(i)));
    }
    m_groups.river = sync(QStringLiteral("River"), m_groups.riverSteps);
    chase(QStringLiteral("River, step by step"), m_groups.riverSteps);
}

} // namespace

Example bridgeExample()
{
    const BridgePatch bridge;
    Example example;
    example.name = QStringLiteral("mixed");
    example.map = bridge.installation();
    example.plan = bridgePlan();
    example.show = bridgeShow(bridge.groups());
    return example;
}
