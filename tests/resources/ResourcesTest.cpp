#include "resources/Resources.h"

#include "resources/Icons.h"

#include <QIcon>
#include <QImage>
#include <QImageReader>
#include <QObject>
#include <QPainter>
#include <QSet>
#include <QSvgRenderer>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace {

const QColor kLightGround(0xef, 0xef, 0xef);
const QColor kDarkGround(0x35, 0x35, 0x35);

QStringList actionIcons()
{
    QStringList paths;
    for (const char* name :
         {"open_map", "save_show", "show_simulation", "open_show", "new_show", "copy_effect",
          "cut_effect", "paste_effect", "delete_effect", "write_DMX", "zoom_in", "zoom_out"}) {
        paths << QStringLiteral(":/images/icons/%1.png").arg(QLatin1String(name));
    }
    return paths << QStringLiteral(":/images/icons/pause.png");
}

/// By type number; several types share an icon.
QStringList effectIcons()
{
    QStringList paths;
    for (const char* name :
         {"fixedColor", "chase", "crossFade", "chasingNodeEffect", "whiteWash", "videoEffect",
          "imageFade", "sparkle", "randomColor", "sparkle", "sparkle", "streak", "sweep", "sparkle",
          "burst", "spiral", "text", "sparkle"}) {
        paths << QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name));
    }
    return paths;
}

/// The icon as a widget would paint it, over `ground`.
QImage painted(const QString& path, int size, const QColor& ground)
{
    QIcon icon;
    for (const QString& file : iconFiles(path)) {
        icon.addFile(file);
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(ground);
    QPainter painter(&image);
    painter.drawPixmap(0, 0, icon.pixmap(QSize(size, size)));
    return image;
}

/// Number of pixels whose grey value differs by at least 32.
int greyDifference(const QImage& a, const QImage& b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            count += std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))) >= 32 ? 1 : 0;
        }
    }
    return count;
}

/// Relative luminance of WCAG 2.1, 0.0 to 1.0.
double luminance(QRgb pixel)
{
    const auto linear = [](int channel) {
        const double c = channel / 255.0;
        return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(pixel)) + 0.7152 * linear(qGreen(pixel)) +
           0.0722 * linear(qBlue(pixel));
}

/// Contrast ratio of WCAG 2.1, 1.0 to 21.0.
double contrast(QRgb a, QRgb b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

} // namespace

class ResourcesTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void aPictureHasItsSize_data();
    void aPictureHasItsSize();
    void anActionIconComesInEverySize_data();
    void anActionIconComesInEverySize();
    void onePictureAloneIsItsOnlyFile();
    void aPathThatIsNotThereHasNoFile();
    void aRenderedIconMatchesItsDrawing_data();
    void aRenderedIconMatchesItsDrawing();
    void anEffectIconPaintsThroughQIcon_data();
    void anEffectIconPaintsThroughQIcon();
    void anIconKeepsItsMargin_data();
    void anIconKeepsItsMargin();
    void anIconShowsOnLightAndDark_data();
    void anIconShowsOnLightAndDark();
    void iconsDifferInGreyAtSixteenPixels();
    void theSplashCarriesWhiteTextAtItsFoot();
    void theSplashShowsLitWindows();
    void theCheckersAreNeutralAndTile();
    void theSelectionIsADoubleRingAroundNothing();
};

void ResourcesTest::initTestCase()
{
    initForgeResources();
    initForgeResources(); // a second call does no harm
}

void ResourcesTest::aPictureHasItsSize_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    const auto row = [](const QString& path, int width, int height) {
        QTest::newRow(qPrintable(path)) << path << QSize(width, height);
    };
    row(QStringLiteral(":/images/splash.png"), 600, 380);
    row(QStringLiteral(":/images/ColorSelection.png"), 24, 24);
    row(QStringLiteral(":/images/TransparentBackground.png"), 24, 24);
    row(QStringLiteral(":/images/userIcon.png"), 16, 16);
    row(QStringLiteral(":/images/userIcon@2x.png"), 32, 32);
    for (const QString& path : actionIcons()) {
        row(path, 24, 24);
        row(QString(path).replace(QStringLiteral(".png"), QStringLiteral("@2x.png")), 48, 48);
    }
}

void ResourcesTest::aPictureHasItsSize()
{
    QFETCH(const QString, path);
    QFETCH(const QSize, size);
    QImageReader reader(path);
    QCOMPARE(reader.format(), QByteArray("png"));
    const QImage image = reader.read();
    QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
    QCOMPARE(image.size(), size);
}

void ResourcesTest::anActionIconComesInEverySize_data()
{
    QTest::addColumn<QString>("path");
    const QStringList paths = actionIcons() << QStringLiteral(":/images/userIcon.png");
    for (const QString& path : paths) {
        QTest::newRow(qPrintable(path)) << path;
    }
}

void ResourcesTest::anActionIconComesInEverySize()
{
    QFETCH(const QString, path);
    QList<int> widths;
    QIcon icon;
    for (const QString& file : iconFiles(path)) {
        const QImage image(file);
        QCOMPARE(image.width(), image.height());
        widths << image.width();
        icon.addFile(file);
    }
    QCOMPARE(widths, QList<int>({16, 24, 32, 48}));
    for (const int size : widths) {
        QCOMPARE(icon.actualSize(QSize(size, size)), QSize(size, size));
    }
}

void ResourcesTest::onePictureAloneIsItsOnlyFile()
{
    const QString splash = QStringLiteral(":/images/splash.png");
    const QString effect = QStringLiteral(":/icons/burst.svg");
    QCOMPARE(iconFiles(splash), QStringList(splash));
    QCOMPARE(iconFiles(effect), QStringList(effect));
}

void ResourcesTest::aPathThatIsNotThereHasNoFile()
{
    QCOMPARE(iconFiles(QStringLiteral(":/images/icons/none.png")), QStringList());
    QCOMPARE(iconFiles(QString()), QStringList());
}

void ResourcesTest::aRenderedIconMatchesItsDrawing_data()
{
    anActionIconComesInEverySize_data();
}

// A drawing that was changed without rendering it again would show here.
void ResourcesTest::aRenderedIconMatchesItsDrawing()
{
    QFETCH(const QString, path);
    const QString source = QStringLiteral(FORGE_SOURCE_DIR "/resources") + path.mid(1);
    QSvgRenderer renderer(QString(source).replace(QStringLiteral(".png"), QStringLiteral(".svg")));
    QVERIFY(renderer.isValid());
    for (const QString& file : iconFiles(path)) {
        const QImage shipped = QImage(file).convertToFormat(QImage::Format_ARGB32_Premultiplied);
        QImage drawn(shipped.size(), QImage::Format_ARGB32_Premultiplied);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        renderer.render(&painter);
        painter.end();
        int total = 0;
        for (int y = 0; y < drawn.height(); ++y) {
            for (int x = 0; x < drawn.width(); ++x) {
                const QRgb a = drawn.pixel(x, y);
                const QRgb b = shipped.pixel(x, y);
                total += std::abs(qAlpha(a) - qAlpha(b)) + std::abs(qRed(a) - qRed(b));
            }
        }
        // Two renderers smooth edges differently, by less than this on the mean.
        const int mean = total / (drawn.width() * drawn.height());
        QVERIFY2(mean <= 6, qPrintable(QStringLiteral("%1: %2").arg(file).arg(mean)));
    }
}

void ResourcesTest::anEffectIconPaintsThroughQIcon_data()
{
    QTest::addColumn<QString>("path");
    int type = 0;
    for (const QString& path : effectIcons()) {
        QTest::newRow(qPrintable(QStringLiteral("%1 %2").arg(type++).arg(path))) << path;
    }
    QCOMPARE(type, 18);
}

void ResourcesTest::anEffectIconPaintsThroughQIcon()
{
    QFETCH(const QString, path);
    QVERIFY(QSvgRenderer(path).isValid());
    QCOMPARE(QSvgRenderer(path).viewBox(), QRect(0, 0, 24, 24));
    for (const int size : {16, 24, 32, 48}) {
        QImage bare(size, size, QImage::Format_ARGB32_Premultiplied);
        bare.fill(kLightGround);
        // Seven lights of at least a pixel each, and what happens to them.
        QVERIFY(greyDifference(painted(path, size, kLightGround), bare) >= size);
    }
}

void ResourcesTest::anIconKeepsItsMargin_data()
{
    QTest::addColumn<QString>("path");
    QStringList paths = actionIcons() << QStringLiteral(":/images/userIcon.png");
    paths += effectIcons();
    paths.removeDuplicates();
    QCOMPARE(paths.size(), 13 + 1 + 14);
    for (const QString& path : paths) {
        QTest::newRow(qPrintable(path)) << path;
    }
}

void ResourcesTest::anIconKeepsItsMargin()
{
    QFETCH(const QString, path);
    const QImage image = painted(path, 24, Qt::transparent);
    for (int i = 0; i < 24; ++i) {
        for (const QPoint& edge : {QPoint(i, 0), QPoint(i, 23), QPoint(0, i), QPoint(23, i)}) {
            QCOMPARE(qAlpha(image.pixel(edge)), 0);
        }
    }
}

void ResourcesTest::anIconShowsOnLightAndDark_data()
{
    anIconKeepsItsMargin_data();
}

void ResourcesTest::anIconShowsOnLightAndDark()
{
    QFETCH(const QString, path);
    for (const QColor& ground : {kLightGround, kDarkGround}) {
        const QImage image = painted(path, 24, ground);
        int clear = 0;
        for (int y = 0; y < 24; ++y) {
            for (int x = 0; x < 24; ++x) {
                clear += contrast(image.pixel(x, y), ground.rgb()) >= 2.5 ? 1 : 0;
            }
        }
        QVERIFY2(clear >= 24, qPrintable(QStringLiteral("%1: %2").arg(ground.name()).arg(clear)));
    }
}

void ResourcesTest::iconsDifferInGreyAtSixteenPixels()
{
    QStringList paths = actionIcons();
    paths += effectIcons();
    paths.removeDuplicates();
    for (const QColor& ground : {kLightGround, kDarkGround}) {
        for (int i = 0; i < paths.size(); ++i) {
            for (int k = i + 1; k < paths.size(); ++k) {
                const int pixels =
                    greyDifference(painted(paths[i], 16, ground), painted(paths[k], 16, ground));
                // The two lenses differ by the upright of the plus alone: four pixels.
                const bool lenses = paths[i].contains(QStringLiteral("zoom_")) &&
                                    paths[k].contains(QStringLiteral("zoom_"));
                const QString pair =
                    QStringLiteral("%1 %2: %3").arg(paths[i], paths[k]).arg(pixels);
                QVERIFY2(pixels >= (lenses ? 4 : 20), qPrintable(pair));
            }
        }
    }
}

void ResourcesTest::theSplashCarriesWhiteTextAtItsFoot()
{
    const QImage splash(QStringLiteral(":/images/splash.png"));
    QCOMPARE(splash.size(), QSize(600, 380));
    for (int y = 340; y < splash.height(); ++y) {
        for (int x = 0; x < splash.width(); ++x) {
            QCOMPARE(qAlpha(splash.pixel(x, y)), 255);
            QVERIFY(contrast(splash.pixel(x, y), qRgb(255, 255, 255)) >= 10.0);
        }
    }
}

void ResourcesTest::theSplashShowsLitWindows()
{
    const QImage splash(QStringLiteral(":/images/splash.png"));
    QSet<int> hues;
    for (int y = 90; y < 312; ++y) {
        for (int x = 0; x < splash.width(); ++x) {
            const QColor color = splash.pixelColor(x, y);
            if (color.value() >= 150 && color.saturation() >= 80) {
                hues.insert(color.hue() / 30);
            }
        }
    }
    QVERIFY(hues.size() >= 5); // from blue through violet and red to amber
}

void ResourcesTest::theCheckersAreNeutralAndTile()
{
    const QImage tile(QStringLiteral(":/images/TransparentBackground.png"));
    QSet<QRgb> tones;
    for (int y = 0; y < tile.height(); ++y) {
        for (int x = 0; x < tile.width(); ++x) {
            const QRgb pixel = tile.pixel(x, y);
            QCOMPARE(qAlpha(pixel), 255);
            QVERIFY(qRed(pixel) == qGreen(pixel) && qGreen(pixel) == qBlue(pixel));
            // Half a tile on, across or down, is the other tone, also past the edge.
            QVERIFY(pixel != tile.pixel((x + 12) % 24, y));
            QVERIFY(pixel != tile.pixel(x, (y + 12) % 24));
            tones.insert(pixel);
        }
    }
    QCOMPARE(tones.size(), 2);
}

void ResourcesTest::theSelectionIsADoubleRingAroundNothing()
{
    const QImage ring(QStringLiteral(":/images/ColorSelection.png"));
    for (int y = 0; y < 24; ++y) {
        for (int x = 0; x < 24; ++x) {
            const int depth = std::min(std::min(x, 23 - x), std::min(y, 23 - y));
            const QRgb expected = depth < 2   ? qRgba(0, 0, 0, 255)
                                  : depth < 4 ? qRgba(255, 255, 255, 255)
                                              : qRgba(0, 0, 0, 0);
            QCOMPARE(ring.pixel(x, y), expected);
        }
    }
}

QTEST_MAIN(ResourcesTest)
#include "ResourcesTest.moc"
