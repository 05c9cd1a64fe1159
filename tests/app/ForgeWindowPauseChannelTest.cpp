#include "output/CommLibrary.h"
#include "output/PauseMessages.h"
#include "tests/app/WindowBench.h"

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QUdpSocket>
#include <QtTest>

/// The window keeps the pause channel for as long as it lives.
class ForgeWindowPauseChannelTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { WindowBench::prepare(); }
    void aServiceIsGreetedPausedAndLeft();
};

void ForgeWindowPauseChannelTest::aServiceIsGreetedPausedAndLeft()
{
    QTcpServer service;
    QVERIFY(service.listen(QHostAddress(QHostAddress::LocalHost)));
    WindowBench bench;
    bench.open();
    QElapsedTimer clock;
    clock.start();
    const QByteArray answer =
        QByteArrayLiteral("1:2:127.0.0.1:") + QByteArray::number(service.serverPort()) + '\n';
    QUdpSocket udp;
    QCOMPARE(
        udp.writeDatagram(answer, QHostAddress(QHostAddress::LocalHost), CommLibrary::kLocalPort),
        qint64(answer.size()));
    QTRY_VERIFY(service.hasPendingConnections());
    QTcpSocket* const peer = service.nextPendingConnection();
    const QByteArray hello = PauseMessages::hello(QStringLiteral("Pageant Forge"));
    QTRY_COMPARE(peer->bytesAvailable(), qint64(hello.size()));
    QCOMPARE(peer->readAll(), hello);

    const QByteArray pause = PauseMessages::pause();
    QTRY_COMPARE_WITH_TIMEOUT(peer->bytesAvailable(), qint64(pause.size()), 15000);
    QVERIFY(clock.elapsed() > 4000); // behind the five seconds of looking
    QCOMPARE(peer->readAll(), pause);

    QCOMPARE(peer->state(), QAbstractSocket::ConnectedState);
    bench.window.reset();
    QTRY_COMPARE(peer->state(), QAbstractSocket::UnconnectedState);
}

QTEST_MAIN(ForgeWindowPauseChannelTest)
#include "ForgeWindowPauseChannelTest.moc"
