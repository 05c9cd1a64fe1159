#include "output/RdmReply.h"

#include "output/ByteReader.h"

#include <QObject>
#include <QtTest>

namespace {

/// A response as ANSI E1.20 lays it out, in hexadecimal: destination 4a4b:00000001, source
/// 1234:89abcdef.
QByteArray message(const QByteArray& pid, const QByteArray& data)
{
    const QByteArray parameter = QByteArray::fromHex(data);
    return QByteArray::fromHex("cc0118"       // start code, sub-start code, message length
                               "4a4b00000001" // destination
                               "123489abcdef" // source
                               "0700000000"   // transaction, response type, count, sub-device
                               "21") +        // command class: a get response
           QByteArray::fromHex(pid) +
           static_cast<char>(parameter.size()) + parameter;
}

RdmReply read(const QByteArray& bytes)
{
    ByteReader reader(bytes.constData(), bytes.size());
    return RdmReply::read(reader);
}

} // namespace

class RdmReplyTest : public QObject
{
    Q_OBJECT
private slots:
    void theSourceIsAFortyEightBitNumber();
    void valuesBecomeTexts_data();
    void valuesBecomeTexts();
    void aCutMessageReadsAsZeros();
};

void RdmReplyTest::theSourceIsAFortyEightBitNumber()
{
    const RdmReply reply = read(message("00f0", "0010"));
    QCOMPARE(reply.sourceUid, Q_UINT64_C(0x123489abcdef));
    QCOMPARE(reply.pid, quint16{0x00f0});
}

void RdmReplyTest::valuesBecomeTexts_data()
{
    QTest::addColumn<QByteArray>("pid");
    QTest::addColumn<QByteArray>("data");
    QTest::addColumn<QString>("value");
    const QByteArray info = "0060";
    // protocol version, model, category, software, footprint, personality, start address ...
    QTest::newRow("device info") << info
                                 << QByteArray("0100 0a1f 0501 01020304 000c 0103 0001 0000 00")
                                 << "D.0a1f-P.0501-F.0012";
    QTest::newRow("device info, greatest")
        << info << QByteArray("0100 ffff fffe 00000000 ffff") << "D.ffff-P.fffe-F.65535";
    QTest::newRow("device info, none") << info << QByteArray() << "D.0000-P.0000-F.0000";
    QTest::newRow("model") << QByteArray("0080") << QByteArray("20204d6f64656c20312009")
                           << "Model 1";
    QTest::newRow("model, NUL inside") << QByteArray("0080") << QByteArray("41420043") << "AB";
    QTest::newRow("model, empty") << QByteArray("0080") << QByteArray() << "";
    for (const char* const pid : {"8600", "8602", "8606", "9f02", "0343", "a040"}) {
        QTest::newRow(pid) << QByteArray(pid) << QByteArray("fe01") << "254";
    }
    QTest::newRow("one byte, none there") << QByteArray("8600") << QByteArray() << "0";
    QTest::newRow("other, with data") << QByteArray("00f0") << QByteArray("0102") << "258";
    QTest::newRow("other, greatest") << QByteArray("8601") << QByteArray("ffffff") << "65535";
    QTest::newRow("other, one byte there") << QByteArray("1000") << QByteArray("02") << "512";
    QTest::newRow("other, without data") << QByteArray("00f0") << QByteArray() << "";
}

void RdmReplyTest::valuesBecomeTexts()
{
    QFETCH(const QByteArray, pid);
    QFETCH(const QByteArray, data);
    QFETCH(const QString, value);
    QCOMPARE(read(message(pid, data)).value, value);
}

void RdmReplyTest::aCutMessageReadsAsZeros()
{
    const QByteArray whole = message("0060", "0100 0a1f 0501 01020304 000c");
    for (int length = 0; length < whole.size(); ++length) {
        // A heap copy of exactly this length, so that a sanitizer sees a read behind it.
        const QByteArray cut(whole.constData(), length);
        const RdmReply reply = read(cut);
        QCOMPARE(reply.pid, length < 23 ? quint16{0x0000} : quint16{0x0060});
        QCOMPARE(reply.sourceUid, Q_UINT64_C(0x123489abcdef) &
                                      ~((Q_UINT64_C(1) << 8 * qBound(0, 15 - length, 6)) - 1));
    }
    // The data length says more than is there.
    QByteArray lying = message("0080", "4142");
    lying[lying.size() - 3] = '\xff';
    QCOMPARE(read(lying).value, QStringLiteral("AB"));
}

QTEST_APPLESS_MAIN(RdmReplyTest)
#include "RdmReplyTest.moc"
