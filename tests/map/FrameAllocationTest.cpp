#include "map/Group.h"
#include "map/Light.h"
#include "map/MapModel.h"
#include "output/TalvisSocket.h"
#include "resources/Resources.h"
#include "tests/map/MapText.h"

#include <QObject>
#include <QtTest>

#include <cstddef>

// A frame costs no heap but what Qt's own socket call takes. Counts malloc, which Qt's containers
// use, by standing in front of the C library's.

namespace {

long allocations = 0; // of this thread; the test has no other

} // namespace

extern "C" {
void* __libc_malloc(std::size_t size);                    // NOLINT(bugprone-reserved-identifier)
void* __libc_calloc(std::size_t count, std::size_t size); // NOLINT(bugprone-reserved-identifier)
void* __libc_realloc(void* block, std::size_t size);      // NOLINT(bugprone-reserved-identifier)

void* malloc(std::size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

void* realloc(void* block, std::size_t size)
{
    ++allocations;
    return __libc_realloc(block, size);
}
}

namespace {

constexpr int kFrames = 200;

/// Takes everything and keeps nothing.
class SinkSocket : public TalvisSocket
{
public:
    SinkSocket()
        : TalvisSocket(nullptr)
    {}
    bool sendToAddress(const QHostAddress& /*address*/, const char* /*data*/, int length) override
    {
        bytes += length;
        return true;
    }
    bool sendBroadcast(const char* /*data*/, int length) override
    {
        bytes += length;
        return true;
    }
    qint64 bytes = 0;
};

/// `count` lights, 100 to a port and 4 ports to a controller; group "f0000000" holds all.
QByteArray manyLights(int count)
{
    constexpr int kOnPort = 100;
    constexpr int kOnController = 4 * kOnPort;
    QByteArray xml;
    QList<QByteArray> uids;
    for (int i = 0; i < count; ++i) {
        const QByteArray uid = QByteArray::number(i + 1, 16);
        uids << uid;
        xml += lightXml(uid.constData(), i / kOnPort % 4, i % kOnPort * 3,
                        i % 7 == 0 ? "<properties><LED_CHEMISTRY>251</LED_CHEMISTRY></properties>"
                                   : "") +
               groupXml(uid.constData(), 3, {uid});
    }
    for (int first = 0; first < count; first += kOnController) {
        const int index = first / kOnController;
        xml += "<controller><type>" + QByteArray(index % 3 == 2 ? "3" : "2") + "</type><self>" +
               QByteArray::number(index + 1, 16) + "</self><ip>127.0.0.1</ip><v>" +
               QByteArray::number(index % 2 + 1) + "</v><pl><p/><p/><p/><p/></pl>";
        for (int i = first; i < qMin(first + kOnController, count); ++i) {
            xml += "<l>" + uids.at(i) + "</l>";
        }
        xml += "<l>dead</l></controller>"; // resolved anew on each frame
    }
    return xml + groupXml("f0000000", 2, uids);
}

struct Stage
{
    explicit Stage(int lights)
    {
        const TextFile file("<map>" + manyLights(lights) + "</map>");
        model.load(file.path());
        layout = model.group(0xf0000000)->layout();
    }
    void paint(const VelaColor& color, int priority)
    {
        Light::mixRow(layout->lights[0], layout->counts[0], color, QColor(1, 2, 3, color.alpha8()),
                      priority);
    }

    SinkSocket* socket = new SinkSocket; // owned by the model
    MapModel model{std::unique_ptr<TalvisSocket>(socket)};
    const GroupLayout* layout = nullptr;
};

template <class Frame>
long allocationsOf(Frame frame)
{
    for (int i = 0; i < 3; ++i) {
        frame(i); // the first times may fill a table
    }
    const long before = allocations;
    for (int i = 0; i < kFrames; ++i) {
        frame(i);
    }
    return allocations - before;
}

} // namespace

class FrameAllocationTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { initForgeResources(); }
    void theCounterCounts();
    void framesAllocateNothing_data();
    void framesAllocateNothing();
    void frameOf15000Lights_data();
    void frameOf15000Lights();
};

void FrameAllocationTest::theCounterCounts()
{
    const long before = allocations;
    const QByteArray text(100, 'x');
    QVERIFY(text.size() == 100 && allocations > before);
}

void FrameAllocationTest::framesAllocateNothing_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("nothing painted") << 0;
    QTest::newRow("one opaque colour") << 1;
    QTest::newRow("a colour that changes") << 2;
    QTest::newRow("four half transparent layers") << 3;
    QTest::newRow("equal priorities") << 4;
    QTest::newRow("a colour of its own on each light") << 5;
    QTest::newRow("absolute colours") << 6;
    QTest::newRow("simulation only") << 7;
}

void FrameAllocationTest::framesAllocateNothing()
{
    QFETCH(const int, kind);
    Stage stage(1000);
    stage.model.setSimulateOnly(kind == 7);
    const qint64 before = stage.socket->bytes;
    const long count = allocationsOf([&](int frame) {
        const double t = (frame % 50) / 50.0;
        switch (kind) {
        case 1:
            stage.paint(VelaColor(Qt::red), 1);
            break;
        case 2:
            stage.paint(VelaColor::fromRgbF(t, 0.5, 0.25), 1);
            break;
        case 3:
        case 4:
            for (int layer = 0; layer < 4; ++layer) {
                stage.paint(VelaColor::fromRgbF(t, layer / 4.0, 0.25, 0.5), kind == 3 ? layer : 1);
            }
            break;
        case 5:
            for (int i = 0; i < stage.layout->counts[0]; ++i) {
                Light* const light = stage.layout->lights[0][i];
                light->mixColor(VelaColor::fromRgb((i + frame) & 255, i >> 3 & 255, 7), 1);
                light->mixSimColor(QColor(i & 255, 0, 0, 200), 1);
            }
            break;
        case 6: {
            VelaColor color;
            color.setYxy(t, 0.3127, 0.329, 65535);
            stage.paint(color, 1);
            color.setYxy(1.0, 0.4, 0.39, 30000);
            stage.paint(color, 2);
            break;
        }
        default:
            break;
        }
        stage.model.updateLights();
    });
    QCOMPARE(count, 0L);
    QCOMPARE(stage.socket->bytes == before, kind == 7);
}

void FrameAllocationTest::frameOf15000Lights_data()
{
    QTest::addColumn<int>("layers");
    QTest::addColumn<double>("alpha");
    QTest::newRow("one opaque layer") << 1 << 1.0;
    QTest::newRow("four half transparent layers") << 4 << 0.5;
}

void FrameAllocationTest::frameOf15000Lights()
{
    QFETCH(const int, layers);
    QFETCH(const double, alpha);
    Stage stage(15000);
    QCOMPARE(stage.layout->total, 15000);
    int frame = 0;
    QBENCHMARK
    {
        ++frame;
        for (int layer = 0; layer < layers; ++layer) {
            stage.paint(VelaColor::fromRgbF((frame % 100) / 100.0, 0.5, layer / 4.0, alpha), layer);
        }
        stage.model.updateLights();
    }
}

QTEST_GUILESS_MAIN(FrameAllocationTest)

#include "FrameAllocationTest.moc"
