#include "tools/listen/FrameDecoder.h"

#include <QObject>
#include <QtTest>

#include <random>
#include <vector>

namespace {

const QByteArray kDmx =
    QByteArray::fromHex("0401dc4a 0100 0101 44332211 0000 2211 04030201 ab 102030");
const QByteArray kPort =
    QByteArray::fromHex("0401dc4a 0100 0801 44332211 04030201 07 00 b0a0 0300 f0ff 102030");
const QByteArray kSync = QByteArray::fromHex("0401dc4a 0100 0901 44332211 00000000");

/// From a heap block of exactly the datagram's size, so that a sanitizer sees a read outside.
FrameError decode(const QByteArray& datagram, DecodedFrame* frame)
{
    const std::vector<char> block(datagram.cbegin(), datagram.cend());
    const FrameError error = decodeFrame(block.data(), datagram.size(), frame);
    frame->values = nullptr;
    return error;
}

QByteArray port(int said, int present)
{
    QByteArray bytes = kPort.left(24);
    bytes[20] = static_cast<char>(said & 0xFF);
    bytes[21] = static_cast<char>(said >> 8);
    return bytes + QByteArray(present, 'v');
}

} // namespace

Q_DECLARE_METATYPE(FrameError)

class FrameDecoderTest : public QObject
{
    Q_OBJECT
private slots:
    void dmxFramesAreRead();
    void portFramesAreRead();
    void syncsAreRead();
    void whatIsWrongIsNamed_data();
    void whatIsWrongIsNamed();
    void everyTruncationIsRefused();
    void junkIsSurvived();
};

void FrameDecoderTest::dmxFramesAreRead()
{
    DecodedFrame frame;
    QCOMPARE(decodeFrame(kDmx.constData(), kDmx.size(), &frame), FrameError::None);
    QCOMPARE(frame.kind, FrameKind::Dmx);
    QCOMPARE(frame.sequence, 0x11223344U);
    QCOMPARE(frame.timer, quint16{0x1122});
    QCOMPARE(frame.universe, 0x01020304U);
    QCOMPARE(frame.startCode, quint16{0xAB});
    QCOMPARE(frame.count, 3);
    QCOMPARE(frame.values[0], quint8{0x10});
    QCOMPARE(frame.values[2], quint8{0x30});
}

void FrameDecoderTest::portFramesAreRead()
{
    DecodedFrame frame;
    QCOMPARE(decodeFrame(kPort.constData(), kPort.size(), &frame), FrameError::None);
    QCOMPARE(frame.kind, FrameKind::Port);
    QCOMPARE(frame.universe, 0x01020304U);
    QCOMPARE(frame.port, quint8{7});
    QCOMPARE(frame.flags, quint16{0xA0B0});
    QCOMPARE(frame.startCode, quint16{0xFFF0});
    QCOMPARE(frame.count, 3);
    QCOMPARE(frame.values[0], quint8{0x10});
}

void FrameDecoderTest::syncsAreRead()
{
    DecodedFrame frame;
    QCOMPARE(decode(kSync, &frame), FrameError::None);
    QCOMPARE(frame.kind, FrameKind::Sync);
    QCOMPARE(frame.sequence, 0x11223344U);
    QCOMPARE(frame.count, 0);
}

void FrameDecoderTest::whatIsWrongIsNamed_data()
{
    QTest::addColumn<QByteArray>("datagram");
    QTest::addColumn<FrameError>("error");
    const auto changed = [](QByteArray bytes, int at, char value) {
        bytes[at] = value;
        return bytes;
    };
    QTest::newRow("empty") << QByteArray() << FrameError::TooShort;
    for (int i = 0; i < 4; ++i) {
        QTest::newRow(qPrintable(QStringLiteral("magic byte %1").arg(i)))
            << changed(kDmx, i, '\x55') << FrameError::WrongMagic;
    }
    QTest::newRow("version 2") << changed(kDmx, 4, '\2') << FrameError::WrongVersion;
    QTest::newRow("version 257") << changed(kDmx, 5, '\1') << FrameError::WrongVersion;
    QTest::newRow("a reply") << changed(kDmx, 7, '\2') << FrameError::UnknownType;
    QTest::newRow("dmx, 512") << kDmx.left(21) + QByteArray(512, 'v') << FrameError::None;
    QTest::newRow("dmx, 513") << kDmx.left(21) + QByteArray(513, 'v') << FrameError::WrongLength;
    QTest::newRow("dmx, none") << kDmx.left(21) << FrameError::None;
    QTest::newRow("port, 512") << port(512, 512) << FrameError::None;
    QTest::newRow("port, 513") << port(513, 513) << FrameError::WrongLength;
    QTest::newRow("port, says more") << port(25, 24) << FrameError::WrongLength;
    QTest::newRow("port, says less") << port(23, 24) << FrameError::WrongLength;
    QTest::newRow("port, says most") << port(65535, 24) << FrameError::WrongLength;
    QTest::newRow("long sync") << kSync + QByteArray(1, '\0') << FrameError::WrongLength;
}

void FrameDecoderTest::whatIsWrongIsNamed()
{
    QFETCH(const QByteArray, datagram);
    QFETCH(const FrameError, error);
    DecodedFrame frame;
    frame.count = -1;
    QCOMPARE(decode(datagram, &frame), error);
    QCOMPARE(frame.count != -1, error == FrameError::None); // else untouched
}

void FrameDecoderTest::everyTruncationIsRefused()
{
    const QList<QPair<QByteArray, int>> heads = {{kDmx, 21}, {kPort, 24}, {kSync, 16}};
    for (const QPair<QByteArray, int>& head : heads) {
        for (int length = 0; length < head.second; ++length) {
            DecodedFrame frame;
            QCOMPARE(decode(head.first.left(length), &frame), FrameError::TooShort);
        }
    }
}

void FrameDecoderTest::junkIsSurvived()
{
    std::mt19937 random(7);
    int accepted = 0;
    for (int round = 0; round < 20000; ++round) {
        QByteArray datagram =
            QByteArray::fromHex("0401dc4a0100").left(static_cast<int>(random() % 8));
        if (round % 2 == 0) {
            datagram =
                QByteArray::fromHex("0401dc4a0100") + static_cast<char>(random() % 10) + '\1';
        }
        const int size = static_cast<int>(random() % 700);
        while (datagram.size() < size) {
            datagram += static_cast<char>(random() & 0xFF);
        }
        DecodedFrame frame;
        if (decode(datagram, &frame) == FrameError::None) {
            ++accepted;
            QVERIFY(frame.count >= 0 && frame.count <= 512);
        }
    }
    QVERIFY(accepted > 0 && accepted < 20000);
}

QTEST_APPLESS_MAIN(FrameDecoderTest)
#include "FrameDecoderTest.moc"
