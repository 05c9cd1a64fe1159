#include "SimMap.h"
#include "map/Light.h"
#include "resources/Resources.h"
#include "sim/SimLight.h"

#include <QGraphicsScene>
#include <QtTest>

#include <cstdlib>
#include <memory>
#include <vector>

// Every allocation of this program goes through here; Qt's containers bypass operator new.
extern "C" {
// NOLINTNEXTLINE(bugprone-reserved-identifier,readability-identifier-naming): the C library's
void* __libc_malloc(std::size_t size);
}

namespace {
bool counting = false;
int allocations = 0;
} // namespace

extern "C" void* malloc(std::size_t size)
{
    if (counting) {
        ++allocations;
    }
    return __libc_malloc(size);
}

class SimFrameCostTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void takingColorsAllocatesNothing();
};

void SimFrameCostTest::initTestCase()
{
    initForgeResources();
}

void SimFrameCostTest::takingColorsAllocatesNothing()
{
    std::vector<SimMapLight> places;
    places.reserve(500);
    for (int i = 0; i < 500; ++i) {
        places.emplace_back(i * 3.0, i * 2.0);
    }
    SimMap map(places);
    QVERIFY(map.isGood());
    QGraphicsScene scene(0, 0, 1600, 1100);
    std::vector<std::unique_ptr<SimLight>> simLights;
    const QList<Light*> lights = map.model()->lightsHash().values();
    for (Light* const light : lights) {
        simLights.push_back(std::make_unique<SimLight>(light, &scene, 0, 10.0, 10.0));
    }
    int changed = 0;
    for (int frame = 0; frame < 10; ++frame) {
        const QColor color(frame * 20, 50, 60);
        for (Light* const light : lights) {
            light->reset();
            light->mixColor(VelaColor(color), 1);
            light->mixSimColor(color, 1);
        }
        counting = frame > 0;
        for (const auto& simLight : simLights) {
            changed += simLight->redraw() ? 1 : 0;
        }
        counting = false;
    }
    QCOMPARE(changed, 5000);
    QCOMPARE(allocations, 0);
    counting = true; // and the counter counts
    std::free(std::malloc(100));
    counting = false;
    QVERIFY(allocations > 0);
}

QTEST_MAIN(SimFrameCostTest)
#include "SimFrameCostTest.moc"
