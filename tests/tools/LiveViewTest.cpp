#include "tools/listen/LiveView.h"

#include "tools/listen/FrameLedger.h"

#include <QObject>
#include <QRegularExpression>
#include <QtTest>

namespace {

QByteArray barOf(const QByteArray& values, int cells)
{
    return LiveView::bar(reinterpret_cast<const quint8*>(values.constData()), values.size(), cells);
}

/// What is seen: the text without the control sequences.
QString seen(const QByteArray& picture)
{
    QString text = QString::fromUtf8(picture);
    text.remove(QRegularExpression(QStringLiteral("\x1b\\[[0-9;?]*[A-Za-z]")));
    return text;
}

void hearPort(FrameLedger& ledger, quint16 sourcePort, int port, int count)
{
    QByteArray bytes =
        QByteArray::fromHex("0401dc4a 0100 0801 00000000 ffffffff 00 00 0000 0000 0000") +
        QByteArray(count, '\xff');
    bytes[16] = static_cast<char>(port);
    bytes[20] = static_cast<char>(count & 0xFF);
    bytes[21] = static_cast<char>(count >> 8);
    HeardDatagram heard;
    heard.source = 0x7F000001;
    heard.sourcePort = sourcePort;
    heard.controller = 0x7F000002;
    heard.data = bytes.constData();
    heard.size = bytes.size();
    ledger.hear(heard);
}

} // namespace

class LiveViewTest : public QObject
{
    Q_OBJECT
private slots:
    void aLightIsACellOfItsColourAndHeight();
    void equalColoursShareASequence();
    void manyLightsShareACellByTheirBrightest();
    void valuesThatMakeNoWholeLightAreShown();
    void nothingMakesAnEmptyBar();
    void everyOutputHasALine();
    void aPictureKeepsToTheTerminal_data();
    void aPictureKeepsToTheTerminal();
};

void LiveViewTest::aLightIsACellOfItsColourAndHeight()
{
    // Full red is a whole block; green of half is half a block in full green; dark is a blank.
    QCOMPARE(barOf(QByteArray::fromHex("ff0000 008000 000000"), 10),
             QByteArray("\x1b[38;2;255;0;0m\u2588"
                        "\x1b[38;2;0;255;0m\u2584 \x1b[0m"));
    QCOMPARE(seen(barOf(QByteArray::fromHex("010000"), 10)), QString::fromUtf8("\u2581"));
}

void LiveViewTest::equalColoursShareASequence()
{
    QCOMPARE(barOf(QByteArray::fromHex("0000ff 0000ff"), 10),
             QByteArray("\x1b[38;2;0;0;255m\u2588\u2588\x1b[0m"));
}

void LiveViewTest::manyLightsShareACellByTheirBrightest()
{
    const QByteArray values = QByteArray::fromHex("000000 ff0000 00ff00 000000 000000 000000");
    QCOMPARE(barOf(values, 3), QByteArray("\x1b[38;2;255;0;0m\u2588"
                                          "\x1b[38;2;0;255;0m\u2588 \x1b[0m"));
    QCOMPARE(seen(barOf(QByteArray(512, '\xff'), 40)).size(), 40);
    QCOMPARE(seen(barOf(QByteArray(512, '\xff'), 200)).size(), 171);
}

void LiveViewTest::valuesThatMakeNoWholeLightAreShown()
{
    QCOMPARE(barOf(QByteArray::fromHex("ff"), 10), QByteArray("\x1b[38;2;255;0;0m\u2588\x1b[0m"));
    QCOMPARE(seen(barOf(QByteArray::fromHex("ffffffff"), 10)).size(), 2);
}

void LiveViewTest::nothingMakesAnEmptyBar()
{
    QCOMPARE(barOf(QByteArray(), 10), QByteArray());
    QCOMPARE(barOf(QByteArray(9, '\xff'), 0), QByteArray());
    QCOMPARE(barOf(QByteArray(9, '\0'), 10), QByteArray("   "));
}

void LiveViewTest::everyOutputHasALine()
{
    FrameLedger ledger;
    hearPort(ledger, 40000, 1, 24);
    hearPort(ledger, 40000, 2, 24);
    hearPort(ledger, 40001, 1, 24);
    const QStringList lines =
        seen(LiveView::draw(ledger, 0, 120, 24)).split(QStringLiteral("\r\n"));
    QCOMPARE(lines.size(), 6);
    QVERIFY(lines[0].startsWith(QLatin1String("3 frames, 0 syncs, 0 junk")));
    QCOMPARE(lines[1], QStringLiteral("from 127.0.0.1:40000"));
    QVERIFY(lines[2].startsWith(QLatin1String("127.0.0.2       port 1 ")));
    QVERIFY(lines[2].endsWith(QString(8, QChar(0x2588))));
    QVERIFY(lines[3].startsWith(QLatin1String("127.0.0.2       port 2 ")));
    QCOMPARE(lines[4], QStringLiteral("from 127.0.0.1:40001"));
}

void LiveViewTest::aPictureKeepsToTheTerminal_data()
{
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("last");
    QTest::newRow("usual") << 80 << 24 << "... and 79 more";
    QTest::newRow("low") << 80 << 4 << "... and 99 more";
    QTest::newRow("very low") << 80 << 2 << "... and 100 more";
    QTest::newRow("one line") << 80 << 1 << "";
    QTest::newRow("narrow") << 20 << 24 << "... and 79 more";
    QTest::newRow("no width") << 0 << 24 << "";
    QTest::newRow("no room") << 80 << 0 << "";
}

void LiveViewTest::aPictureKeepsToTheTerminal()
{
    QFETCH(const int, columns);
    QFETCH(const int, rows);
    QFETCH(const QString, last);
    FrameLedger ledger;
    for (int port = 1; port <= 100; ++port) {
        hearPort(ledger, 40000, port, 512);
    }
    const QStringList lines =
        seen(LiveView::draw(ledger, 0, columns, rows)).split(QStringLiteral("\r\n"));
    QVERIFY(lines.size() <= std::max(rows, 1));
    for (const QString& line : lines) {
        QVERIFY2(line.size() <= columns, qPrintable(line));
    }
    if (!last.isEmpty()) {
        QCOMPARE(lines.last(), last);
    }
}

QTEST_APPLESS_MAIN(LiveViewTest)
#include "LiveViewTest.moc"
