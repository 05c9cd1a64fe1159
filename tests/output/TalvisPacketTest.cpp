#include "output/TalvisPacket.h"

#include <QObject>
#include <QtTest>

namespace {

QByteArray bytesOf(const TalvisPacket& packet)
{
    return QByteArray(packet.data(), packet.size());
}

} // namespace

class TalvisPacketTest : public QObject
{
    Q_OBJECT
private slots:
    void aDmxFrameIsLaidOutByteForByte();
    void aPortFrameIsLaidOutByteForByte();
    void aSyncIsSixteenBytes();
    void nothingOfTheLastPacketIsLeft();
    void aPacketHoldsWhatFits_data();
    void aPacketHoldsWhatFits();
    void noSlotsNeedNoData();
};

void TalvisPacketTest::aDmxFrameIsLaidOutByteForByte()
{
    TalvisPacket packet;
    QVERIFY(packet.setDmxFrame(0x01020304, 0xAB, 0x1122, "\x10\x20\x30", 3));
    QCOMPARE(bytesOf(packet), QByteArray::fromHex("0401dc4a"  // magic
                                                  "0100"      // version
                                                  "0101"      // type
                                                  "00000000"  // sequence
                                                  "0000"      // reserved
                                                  "2211"      // timer
                                                  "04030201"  // universe
                                                  "ab"        // start code
                                                  "102030")); // slots
}

void TalvisPacketTest::aPortFrameIsLaidOutByteForByte()
{
    TalvisPacket packet;
    QVERIFY(packet.setPortFrame(0x01020304, 7, 0xA0B0, 0xFFF0, "\x10\x20\x30", 3));
    QCOMPARE(bytesOf(packet), QByteArray::fromHex("0401dc4a"  // magic
                                                  "0100"      // version
                                                  "0801"      // type
                                                  "00000000"  // sequence
                                                  "04030201"  // universe
                                                  "07"        // port
                                                  "00"        // reserved
                                                  "b0a0"      // flags
                                                  "0300"      // length
                                                  "f0ff"      // start code
                                                  "102030")); // slots
}

void TalvisPacketTest::aSyncIsSixteenBytes()
{
    TalvisPacket packet;
    packet.setSync();
    QCOMPARE(bytesOf(packet), QByteArray::fromHex("0401dc4a 0100 0901 00000000 00000000"));
}

void TalvisPacketTest::nothingOfTheLastPacketIsLeft()
{
    const QByteArray full(512, '\xff');
    TalvisPacket packet;
    QVERIFY(packet.setPortFrame(0xFFFFFFFF, 0xFF, 0xFFFF, 0xFFFF, full.constData(), 512));
    packet.setSync();
    QCOMPARE(bytesOf(packet), QByteArray::fromHex("0401dc4a 0100 0901 00000000 00000000"));
    QVERIFY(packet.setPortFrame(0xFFFFFFFF, 0xFF, 0xFFFF, 0xFFFF, full.constData(), 512));
    QVERIFY(packet.setDmxFrame(0, 0, 0, "", 0));
    QCOMPARE(bytesOf(packet),
             QByteArray::fromHex("0401dc4a 0100 0101 00000000 0000 0000 00000000 00"));
    QVERIFY(packet.setDmxFrame(0xFFFFFFFF, 0xFF, 0xFFFF, full.constData(), 512));
    QVERIFY(packet.setPortFrame(0, 0, 0, 0, "", 0));
    QCOMPARE(bytesOf(packet),
             QByteArray::fromHex("0401dc4a 0100 0801 00000000 00000000 00 00 0000 0000 0000"));
}

void TalvisPacketTest::aPacketHoldsWhatFits_data()
{
    QTest::addColumn<quint32>("length");
    QTest::addColumn<bool>("dmxFits");
    QTest::addColumn<bool>("portFits");
    QTest::newRow("a universe") << 512U << true << true;
    QTest::newRow("the most beside a port header") << 2024U << true << true;
    QTest::newRow("the most beside a DMX header") << 2027U << true << false;
    QTest::newRow("one more") << 2028U << false << false;
    QTest::newRow("greatest") << 0xFFFFFFFFU << false << false;
}

void TalvisPacketTest::aPacketHoldsWhatFits()
{
    QFETCH(const quint32, length);
    QFETCH(const bool, dmxFits);
    QFETCH(const bool, portFits);
    const QByteArray slotBytes(2028, 'x');
    TalvisPacket packet;
    QCOMPARE(packet.setDmxFrame(1, 0, 0, slotBytes.constData(), length), dmxFits);
    QCOMPARE(packet.size(), dmxFits ? 21 + static_cast<int>(length) : 0);
    QCOMPARE(packet.setPortFrame(1, 1, 0, 0, slotBytes.constData(), length), portFits);
    QCOMPARE(packet.size(), portFits ? 24 + static_cast<int>(length) : 0);
}

void TalvisPacketTest::noSlotsNeedNoData()
{
    TalvisPacket packet;
    QVERIFY(packet.setDmxFrame(1, 0, 0, nullptr, 0));
    QCOMPARE(packet.size(), 21);
}

QTEST_APPLESS_MAIN(TalvisPacketTest)
#include "TalvisPacketTest.moc"
