#include "output/Talvis.h"
#include "output/TalvisPacket.h"
#include "output/TalvisSocket.h"

#include <QHostAddress>
#include <QObject>
#include <QtTest>

#include <cstddef>

// Sending a frame costs no heap but what Qt's own socket call takes. Counts malloc, which Qt's
// containers use, by standing in front of the C library's.

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

constexpr int kFrames = 1000;
constexpr char kSlots[512] = {};

/// Takes everything and keeps nothing.
class SinkSocket : public TalvisSocket
{
public:
    SinkSocket()
        : TalvisSocket(nullptr)
    {}
    bool sendToAddress(const QHostAddress&, const char* data, int length) override
    {
        bytes += length + (data[0] == '\x04' ? 0 : 1000000);
        return true;
    }
    long bytes = 0;
};

template <class Work>
long allocationsOf(Work work)
{
    work(); // the first time may fill a cache
    const long before = allocations;
    for (int i = 0; i < kFrames; ++i) {
        work();
    }
    return allocations - before;
}

} // namespace

class TalvisAllocationTest : public QObject
{
    Q_OBJECT
private slots:
    void theCounterCounts();
    void framesAllocateNothingOfOurs();
    void framesCostWhatABareWriteCosts();
};

void TalvisAllocationTest::theCounterCounts()
{
    QCOMPARE(allocationsOf([] { QByteArray(100, 'x').detach(); }), long{kFrames});
}

void TalvisAllocationTest::framesAllocateNothingOfOurs()
{
    auto* const socket = new SinkSocket;
    socket->setInterfaceSource([] {
        return QVector<InterfaceRecord>{
            {"eth0", true, false, {{QHostAddress("10.1.2.3"), QHostAddress("255.0.0.0")}}}};
    });
    Talvis talvis(socket, nullptr);
    const QHostAddress address("127.0.0.1");
    bool sent = true;
    const auto frame = [&] {
        sent = talvis.sendDmxOut(address, 0, 0, kSlots, 512) && sent;
        sent = talvis.sendPortOut(address, 0xFFFFFFFF, 1, 0, 512, 0, kSlots) && sent;
        sent = talvis.broadcastDmxOut(1, 0, 0, kSlots, 512) && sent;
        sent = talvis.broadcastPortOut(0xFFFFFFFF, 1, 0, 512, 0, kSlots) && sent;
        talvis.sendSync();
    };
    socket->bytes = 0;
    QCOMPARE(allocationsOf(frame), 0L);
    QVERIFY(sent);
    QCOMPARE(socket->bytes, (kFrames + 1) * long{2 * 533 + 2 * 536 + 16});
}

void TalvisAllocationTest::framesCostWhatABareWriteCosts()
{
    QUdpSocket listener; // so that nothing is answered with "unreachable"
    QVERIFY(listener.bind(QHostAddress("127.0.0.1"), TalvisSocket::kDestinationPort));
    auto* const socket = new TalvisSocket(nullptr);
    socket->setInterfaceSource([] { return QVector<InterfaceRecord>(); });
    Talvis talvis(socket, nullptr);
    const QHostAddress address("127.0.0.1");
    TalvisPacket packet;
    QVERIFY(packet.setDmxFrame(0xFFFFFFFF, 0, 0, kSlots, 512));

    bool sent = true;
    const long bare = allocationsOf([&] {
        sent = socket->writeDatagram(packet.data(), packet.size(), address,
                                     TalvisSocket::kDestinationPort) > 0 &&
               sent;
    });
    const long ours =
        allocationsOf([&] { sent = talvis.sendDmxOut(address, 0, 0, kSlots, 512) && sent; });
    QVERIFY(sent);
    QCOMPARE(ours, bare);
}

QTEST_GUILESS_MAIN(TalvisAllocationTest)
#include "TalvisAllocationTest.moc"
