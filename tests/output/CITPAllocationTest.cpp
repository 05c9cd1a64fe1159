#include "output/CITPClient.h"

#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtTest>

#include <cstddef>

// Mirroring a frame costs no heap but what Qt's own socket takes. Counts malloc, which Qt's
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

constexpr int kFrames = 100; // what the system's buffers take without being read

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

class CITPAllocationTest : public QObject
{
    Q_OBJECT
private slots:
    void theCounterCounts();
    void blocksCostWhatABareWriteCosts();
    void skippedBlocksCostNothing();
};

void CITPAllocationTest::theCounterCounts()
{
    QCOMPARE(allocationsOf([] { QByteArray(100, 'x').detach(); }), long{kFrames});
}

void CITPAllocationTest::blocksCostWhatABareWriteCosts()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress(QHostAddress::LocalHost)));
    CITPClient client(QStringLiteral("Forge"), {}, nullptr);
    client.setEnabled(true);
    client.connectTo(QStringLiteral("127.0.0.1"), server.serverPort());
    QTRY_VERIFY(client.isReady());
    auto* const socket = client.findChild<QTcpSocket*>();
    QVERIFY(socket != nullptr);
    QTRY_COMPARE(socket->bytesToWrite(), 0);
    constexpr char message[542] = {};

    const long bare = allocationsOf([&] {
        socket->write(message, 542);
        socket->flush();
    });
    QCOMPARE(socket->bytesToWrite(), 0);
    const long ours = allocationsOf([&] {
        client.sendChannelBlock(0, message, 512, false);
        socket->flush();
    });
    QCOMPARE(socket->bytesToWrite(), 0);
    QCOMPARE(ours, bare);
}

void CITPAllocationTest::skippedBlocksCostNothing()
{
    CITPClient client(QStringLiteral("Forge"), {}, nullptr);
    constexpr char slots512[512] = {};
    QCOMPARE(allocationsOf([&] { client.sendChannelBlock(0, slots512, 512, false); }), 0L);
    client.setEnabled(true);
    QCOMPARE(allocationsOf([&] { client.sendChannelBlock(0, slots512, 512, false); }), 0L);
}

QTEST_GUILESS_MAIN(CITPAllocationTest)
#include "CITPAllocationTest.moc"
