#include "effects/PictureFile.h"

#include "tests/devices/FileSupport.h"

#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

class PictureFileTest : public QObject
{
    Q_OBJECT
private slots:
    void readsTheFormats_data();
    void readsTheFormats();
    void refusesWhatIsNoPicture_data();
    void refusesWhatIsNoPicture();
    void refusesWhatIsNoFile();
    void readsUpToItsLimit();
    void everyFormatInMemoryComesOutAsItsPixels_data();
    void everyFormatInMemoryComesOutAsItsPixels();

private:
    QTemporaryDir m_dir;
};

void PictureFileTest::readsTheFormats_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("gif"); // Qt writes none
    QTest::newRow("PNG") << QStringLiteral("a.png") << QByteArray();
    QTest::newRow("JPEG") << QStringLiteral("a.jpg") << QByteArray();
    QTest::newRow("BMP") << QStringLiteral("a.bmp") << QByteArray();
    QTest::newRow("XPM") << QStringLiteral("a.xpm") << QByteArray();
    // 3 x 2 pixels of a table of two colours, both c82814.
    QTest::newRow("GIF") << QStringLiteral("a.gif")
                         << QByteArray::fromHex("474946383961030002008000 00c82814c82814"
                                                "2c0000000003000200000203048e05003b");
}

void PictureFileTest::readsTheFormats()
{
    QFETCH(const QString, name);
    QFETCH(const QByteArray, gif);
    const QString path = m_dir.filePath(name);
    QImage image(3, 2, QImage::Format_RGB32);
    image.fill(qRgb(200, 40, 20));
    QVERIFY(gif.isEmpty() ? image.save(path) : writeFile(path, gif));
    QString reason;
    const QImage read = PictureFile::read(path, &reason);
    QVERIFY2(!read.isNull(), qPrintable(reason));
    QCOMPARE(read.size(), QSize(3, 2));
    const QColor pixel(read.pixel(2, 1));
    QVERIFY(std::abs(pixel.red() - 200) <= 3 && std::abs(pixel.green() - 40) <= 3 &&
            std::abs(pixel.blue() - 20) <= 3); // JPEG loses some
    // The name says nothing about the content.
    const QString renamed = m_dir.filePath(name + QStringLiteral(".png"));
    QVERIFY(QFile::copy(path, renamed));
    QCOMPARE(PictureFile::read(renamed, &reason), read);
}

void PictureFileTest::refusesWhatIsNoPicture_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const QString none = QStringLiteral("it is no picture");
    QTest::newRow("empty") << QByteArray() << none;
    QTest::newRow("text") << QByteArray("Not a picture.\n") << none;
    QTest::newRow("no pixels") << QByteArray(
                                      "/* XPM */ static char*x[]={\"0 0 1 1\",\"  c #000\"};")
                               << QString();
    QTest::newRow("no width") << QByteArray("P6 0 5 255\n") << QString();
    QTest::newRow("a hundred million pixels")
        << QByteArray("P6 10000 10000 255\nabc")
        << QStringLiteral("10000 x 10000 pixels are too many");
    QTest::newRow("more than 32 bits count")
        << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='65536' height='65537'/>")
        << QString(); // where drawings are read at all
    QTest::newRow("a huge GIF") << QByteArray::fromHex("474946383961ffffffff8000 00c82814c82814"
                                                       "2c00000000ffffffff00000203048e05003b")
                                << QStringLiteral("65535 x 65535 pixels are too many");
    QTest::newRow("a huge drawing")
        << QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='100000' height='100000'/>")
        << QString();
}

void PictureFileTest::refusesWhatIsNoPicture()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, reason);
    const QString path = m_dir.filePath(QStringLiteral("hostile"));
    QVERIFY(writeFile(path, content));
    QString told;
    QElapsedTimer timer;
    timer.start();
    QVERIFY(PictureFile::read(path, &told).isNull());
    QVERIFY(!told.isEmpty());
    if (!reason.isEmpty()) {
        QCOMPARE(told, reason);
    }
    QVERIFY(timer.elapsed() < 2000); // nothing of that size was filled
}

void PictureFileTest::refusesWhatIsNoFile()
{
    QString reason;
    const QString pipe = m_dir.filePath(QStringLiteral("pipe.png"));
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    const QString none = QStringLiteral("there is no such file");
    for (const QString& path : {pipe, QString(), m_dir.path(), QStringLiteral("/dev/zero"),
                                m_dir.filePath(QStringLiteral("gone.png"))}) {
        reason.clear();
        QVERIFY(PictureFile::read(path, &reason).isNull());
        QCOMPARE(reason, none);
    }
    // Only the file named, not one with an ending added.
    QVERIFY(QImage(1, 1, QImage::Format_RGB32).save(m_dir.filePath(QStringLiteral("bare.png"))));
    QVERIFY(PictureFile::read(m_dir.filePath(QStringLiteral("bare")), &reason).isNull());
}

void PictureFileTest::readsUpToItsLimit()
{
    const QString path = m_dir.filePath(QStringLiteral("wide.bmp"));
    QImage wide(PictureFile::kMaxPixels / 4096, 4096, QImage::Format_Mono);
    wide.fill(0);
    QVERIFY(wide.save(path));
    QString reason;
    QCOMPARE(PictureFile::read(path, &reason).size(), wide.size());
    QVERIFY(wide.copy(0, 0, wide.width(), 4097).save(path));
    QVERIFY(PictureFile::read(path, &reason).isNull());
    QCOMPARE(reason, QStringLiteral("16384 x 4097 pixels are too many"));
}

void PictureFileTest::everyFormatInMemoryComesOutAsItsPixels_data()
{
    QTest::addColumn<int>("format");
    for (int format = QImage::Format_Mono; format < QImage::NImageFormats; ++format) {
        QTest::addRow("format %d", format) << format;
    }
}

void PictureFileTest::everyFormatInMemoryComesOutAsItsPixels()
{
    QFETCH(const int, format);
    QImage source(64, 48, QImage::Format_ARGB32);
    for (int y = 0; y < source.height(); ++y) {
        for (int x = 0; x < source.width(); ++x) {
            source.setPixel(x, y, qRgba(x * 4, y * 5, (x * y) & 0xFF, 255 - x * 3));
        }
    }
    const QImage image = source.convertToFormat(static_cast<QImage::Format>(format));
    QVERIFY(!image.isNull());
    const QImage converted = PictureFile::toRgb32(image);
    QCOMPARE(converted.depth(), 32);
    QCOMPARE(converted.size(), image.size());
    const auto line = [&](int y) {
        return reinterpret_cast<const QRgb*>(converted.constScanLine(y));
    };
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            QCOMPARE(line(y)[x] & 0xFFFFFFU, image.pixel(x, y) & 0xFFFFFFU);
        }
    }
    QVERIFY(PictureFile::toRgb32(QImage()).isNull());
}

QTEST_GUILESS_MAIN(PictureFileTest)
#include "PictureFileTest.moc"
