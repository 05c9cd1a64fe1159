#include "output/ByteReader.h"

#include <QObject>
#include <QtTest>

class ByteReaderTest : public QObject
{
    Q_OBJECT
private slots:
    void numbersComeInBothByteOrders();
    void bytesBehindTheEndAreZero();
    void aPlaceOutsideIsLimitedToTheBytes_data();
    void aPlaceOutsideIsLimitedToTheBytes();
    void textsEndAtTheirNul();
    void aLongTextIsCutAndPassedOverWhole();
    void aTextWithoutNulEndsWithTheBytes();
    void bytesAreCutAtTheEnd();
    void nothingIsReadFromNothing();
};

void ByteReaderTest::numbersComeInBothByteOrders()
{
    const QByteArray bytes = QByteArray::fromHex("01 0203 04050607 08090a0b0c0d0e0f 1011 12131415");
    ByteReader reader(bytes.constData(), bytes.size());
    QCOMPARE(reader.u8(), quint8{0x01});
    QCOMPARE(reader.u16le(), quint16{0x0302});
    QCOMPARE(reader.u32le(), 0x07060504U);
    QCOMPARE(reader.u64le(), Q_UINT64_C(0x0f0e0d0c0b0a0908));
    QCOMPARE(reader.u16be(), quint16{0x1011});
    QCOMPARE(reader.u32be(), 0x12131415U);
    QCOMPARE(reader.remaining(), 0);
}

void ByteReaderTest::bytesBehindTheEndAreZero()
{
    const QByteArray bytes = QByteArray::fromHex("a1b2c3");
    ByteReader little(bytes.constData(), bytes.size());
    QCOMPARE(little.u32le(), 0x00c3b2a1U);
    QCOMPARE(little.u64le(), Q_UINT64_C(0));
    ByteReader big(bytes.constData(), bytes.size());
    QCOMPARE(big.u32be(), 0xa1b2c300U);
    QCOMPARE(big.u8(), quint8{0});
    QCOMPARE(big.position(), 3);
}

void ByteReaderTest::aPlaceOutsideIsLimitedToTheBytes_data()
{
    QTest::addColumn<int>("seek");
    QTest::addColumn<int>("skip");
    QTest::addColumn<int>("position");
    QTest::newRow("inside") << 1 << 2 << 3;
    QTest::newRow("before the start") << -7 << 0 << 0;
    QTest::newRow("behind the end") << 99 << 0 << 4;
    QTest::newRow("skip behind the end") << 2 << 0x7fffffff << 4;
    QTest::newRow("skip backwards") << 2 << -1 << 2;
}

void ByteReaderTest::aPlaceOutsideIsLimitedToTheBytes()
{
    QFETCH(const int, seek);
    QFETCH(const int, skip);
    QFETCH(const int, position);
    ByteReader reader("abcd", 4);
    reader.seek(seek);
    reader.skip(skip);
    QCOMPARE(reader.position(), position);
    QCOMPARE(reader.remaining(), 4 - position);
}

void ByteReaderTest::textsEndAtTheirNul()
{
    const QByteArray bytes("one\0\0two\0", 9);
    ByteReader reader(bytes.constData(), bytes.size());
    char text[9];
    reader.text(text, 8);
    QCOMPARE(QByteArray(text), QByteArray("one"));
    reader.text(text, 8);
    QCOMPARE(QByteArray(text), QByteArray());
    reader.text(text, 8);
    QCOMPARE(QByteArray(text), QByteArray("two"));
}

void ByteReaderTest::aLongTextIsCutAndPassedOverWhole()
{
    const QByteArray bytes("abcdef\0next", 12);
    ByteReader reader(bytes.constData(), bytes.size());
    char text[5];
    reader.text(text, 4);
    QCOMPARE(QByteArray(text), QByteArray("abcd"));
    reader.text(text, 4);
    QCOMPARE(QByteArray(text), QByteArray("next"));
}

void ByteReaderTest::aTextWithoutNulEndsWithTheBytes()
{
    ByteReader reader("abcd", 3);
    char text[9];
    reader.text(text, 8);
    QCOMPARE(QByteArray(text), QByteArray("abc"));
    QCOMPARE(reader.remaining(), 0);
    reader.text(text, 8);
    QCOMPARE(QByteArray(text), QByteArray());
}

void ByteReaderTest::bytesAreCutAtTheEnd()
{
    ByteReader reader("abcd", 4);
    QCOMPARE(reader.bytes(3), QByteArray("abc"));
    QCOMPARE(reader.bytes(-2), QByteArray());
    QCOMPARE(reader.bytes(255), QByteArray("d"));
    QCOMPARE(reader.bytes(1), QByteArray());
}

void ByteReaderTest::nothingIsReadFromNothing()
{
    ByteReader null(nullptr, 10);
    QCOMPARE(null.u64le(), Q_UINT64_C(0));
    QCOMPARE(null.bytes(5), QByteArray());
    char text[3] = "zz";
    null.text(text, 2);
    QCOMPARE(QByteArray(text), QByteArray());
    ByteReader negative("abc", -1);
    QCOMPARE(negative.u8(), quint8{0});
}

QTEST_APPLESS_MAIN(ByteReaderTest)
#include "ByteReaderTest.moc"
