#include "tools/mapgen/RingExample.h"

#include "tools/mapgen/Patch.h"
#include "tools/mapgen/RingLayout.h"
#include "tools/mapgen/RingPlan.h"
#include "tools/mapgen/RingShow.h"

#include <algorithm>

using namespace RingLayout;

namespace {

constexpr int kPorts = 2;
constexpr int kArmsOfFirst = 11;
constexpr double kUnitsPerPixel = 12.0; // map units for a pixel of the effects over the plan

QString numbered(const char* what, int index)
{
    return QStringLiteral("%1 %2").arg(QLatin1String(what)).arg(index + 1, 2, 10, QLatin1Char('0'));
}

void addControllers(Patch* patch)
{
    for (int i = 0; i < 2; ++i) {
        ControllerSpec controller;
        controller.name = i == 0 ? QStringLiteral("Ring East") : QStringLiteral("Ring West");
        controller.address = QStringLiteral("127.0.0.%1").arg(i + 5);
        controller.macAddress = QStringLiteral("02:00:5E:30:00:0%1").arg(i + 5);
        controller.serialNumber = 0x00810011U + static_cast<quint64>(i);
        controller.properties = {{QStringLiteral("PROTOCOL_VERSION"), 2}};
        patch->addController(controller, kPorts);
    }
}

/// Light uids by arm and step. The wiring runs out one arm and in the next.
QVector<QVector<quint64>> addLights(Patch* patch)
{
    QVector<QVector<quint64>> florets(kArms, QVector<quint64>(kPerArm, 0));
    for (int arm = 0; arm < kArms; ++arm) {
        const int controller = arm < kArmsOfFirst ? 0 : 1;
        const int place = arm - controller * kArmsOfFirst;
        const int port = place < kArmsOfFirst / 2 ? 0 : 1;
        for (int i = 0; i < kPerArm; ++i) {
            const int step = place % 2 == 0 ? i : kPerArm - 1 - i;
            const QString name = QStringLiteral("Floret %1.%2")
                                     .arg(arm + 1, 2, 10, QLatin1Char('0'))
                                     .arg(step + 1, 2, 10, QLatin1Char('0'));
            florets[arm][step] =
                patch->addLight(controller, port, FixtureTypes::rgbNode(), name, floret(arm, step));
        }
    }
    return florets;
}

/// The middle of the ring, from the top left corner of the lights.
QPointF middleOf(const Installation& map)
{
    double left = map.lights.first().x;
    double top = map.lights.first().y;
    for (const LightSpec& light : map.lights) {
        left = std::min(left, light.x);
        top = std::min(top, light.y);
    }
    constexpr double kLightOffset = 15.0; // from a light's position to its middle
    return QPointF(kMiddle - kLightOffset - left, kMiddle - kLightOffset - top) / kUnitsPerPixel;
}

RingGroups addGroups(Patch* patch, const QVector<QVector<quint64>>& florets)
{
    constexpr GroupSpec::Kind kChase = GroupSpec::Chasing;
    constexpr GroupSpec::Kind kSync = GroupSpec::Synchronized;
    RingGroups groups;
    QVector<quint64> arms; // round the ring
    for (int arm = 0; arm < kArms; ++arm) {
        arms.append(patch->addGroup(kSync, numbered("Arm", arm), florets.at(arm)));
    }
    for (int step = 0; step < kPerArm; ++step) {
        QVector<quint64> hoop;
        for (int arm = 0; arm < kArms; ++arm) {
            hoop.append(florets.at(arm).at(step));
        }
        groups.hoops.append(patch->addGroup(kSync, numbered("Hoop", step), hoop));
    }
    groups.whole = patch->addGroup(kSync, QStringLiteral("Ring"), arms);
    groups.armChase = patch->addGroup(kChase, QStringLiteral("Arms, round the ring"), arms);
    groups.hoopChase = patch->addGroup(kChase, QStringLiteral("Hoops, outward"), groups.hoops);
    QVector<quint64> windings;
    for (int arm = 0; arm < kArms; ++arm) {
        windings.append(patch->addGroup(kChase, numbered("Winding", arm), florets.at(arm)));
    }
    patch->addGroup(kChase, QStringLiteral("Floret by floret"), windings);
    groups.middle = middleOf(patch->installation());
    return groups;
}

} // namespace

Example ringExample()
{
    Patch patch(QStringLiteral("examples/ring/ring.png"), true);
    addControllers(&patch);
    const QVector<QVector<quint64>> florets = addLights(&patch);
    const RingGroups groups = addGroups(&patch, florets);
    Example example;
    example.name = QStringLiteral("ring");
    example.map = patch.installation();
    example.plan = ringPlan();
    example.show = ringShow(groups);
    example.pictures.append({QStringLiteral("rosette"), Artwork::rosette()});
    example.pictures += Artwork::wheel(QStringLiteral("wheel"));
    return example;
}
