#include "effects/SamplePoints.h"

#include "tests/effects/PictureStage.h"

#include <QRectF>

#include <limits>

class SamplePointsTest : public QObject
{
    Q_OBJECT
private slots:
    void theGroupIsStretchedOverThePicture();
    void scaleAndOffsetsMoveThePoints_data();
    void scaleAndOffsetsMoveThePoints();
    void placesThatAreNumbersOfNoPixelShowBlack_data();
    void placesThatAreNumbersOfNoPixelShowBlack();
    void missingLightsKeepTheirBytes();
    void anyPictureMayFollow();
};

namespace {

/// Columns of placePicture that the points show; -1 for black.
QVector<int> columns(const SamplePoints& points, const QImage& image, int count)
{
    const SamplePoints::Buffer buffer = points.makeBuffer();
    points.sample(image, buffer);
    QVector<int> shown;
    for (int i = 0; i < count; ++i) {
        const quint8* const bytes = buffer.get() + 3 * i;
        shown.append(bytes[2] == 77 ? bytes[0] / 10 : -1);
    }
    return shown;
}

SamplePoints place(PictureStage& stage, quint64 gid, const QSize& picture, double scale = 1.0,
                   double xOffset = 0.0, double yOffset = 0.0)
{
    int count = 0;
    Group* const group = stage.model()->group(gid);
    Light* const* const lights = group->lights(&count);
    double x0 = 0.0;
    double y0 = 0.0;
    double x1 = 0.0;
    double y1 = 0.0;
    group->bounds(&x0, &y0, &x1, &y1);
    SamplePoints points;
    points.place(lights, count, QRectF(x0, y0, x1 - x0, y1 - y0), picture, scale, xOffset, yOffset);
    return points;
}

} // namespace

void SamplePointsTest::theGroupIsStretchedOverThePicture()
{
    // Five lights across, three down: a picture of 9 x 3, then one of 3 x 9, fill it all the same.
    PictureStage stage(5, 3, 1000.0);
    QVERIFY(stage.isLoaded());
    const QImage wide = placePicture(9, 3);
    SamplePoints points = place(stage, 0x1000, wide.size());
    const SamplePoints::Buffer buffer = points.makeBuffer();
    points.sample(wide, buffer);
    for (int i = 0; i < 15; ++i) {
        QCOMPARE(int(buffer[static_cast<std::size_t>(3 * i)]), 10 * (i % 5 * 2));
        QCOMPARE(int(buffer[static_cast<std::size_t>(3 * i + 1)]), 10 * (i / 5));
        QCOMPARE(int(buffer[static_cast<std::size_t>(3 * i + 2)]), 77);
    }
    const QImage high = placePicture(3, 9);
    points = place(stage, 0x1000, high.size());
    points.sample(high, buffer);
    const int expectedColumns[] = {0, 0, 1, 1, 2}; // of 0.0, 0.5, 1.0, 1.5, 2.0
    for (int i = 0; i < 15; ++i) {
        QCOMPARE(int(buffer[static_cast<std::size_t>(3 * i)]), 10 * expectedColumns[i % 5]);
        QCOMPARE(int(buffer[static_cast<std::size_t>(3 * i + 1)]), 10 * (i / 5 * 4));
    }
}

void SamplePointsTest::scaleAndOffsetsMoveThePoints_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("offset");
    QTest::addColumn<QVector<int>>("shown");
    using Columns = QVector<int>;
    // Five lights in a row over the columns 0 to 4.
    QTest::newRow("as it is") << 1.0 << 0.0 << Columns{0, 1, 2, 3, 4};
    QTest::newRow("twice: the right half falls out") << 2.0 << 0.0 << Columns{0, 2, 4, -1, -1};
    QTest::newRow("half") << 0.5 << 0.0 << Columns{0, 0, 1, 1, 2};
    QTest::newRow("moved left") << 1.0 << -2.0 << Columns{-1, -1, 0, 1, 2};
    QTest::newRow("moved right") << 1.0 << 3.0 << Columns{3, 4, -1, -1, -1};
    QTest::newRow("truncates towards zero") << 1.0 << -0.75 << Columns{0, 0, 1, 2, 3};
    QTest::newRow("mirrored") << -1.0 << 4.0 << Columns{4, 3, 2, 1, 0};
    QTest::newRow("scale 0") << 0.0 << 1.0 << Columns{1, 1, 1, 1, 1};
}

void SamplePointsTest::scaleAndOffsetsMoveThePoints()
{
    QFETCH(const double, scale);
    QFETCH(const double, offset);
    QFETCH(const QVector<int>, shown);
    QVector<QPointF> row;
    QVector<QPointF> column;
    for (int i = 0; i < 5; ++i) {
        row.append({i * 7.0, i == 4 ? 10.0 : 0.0});
        column.append({i == 4 ? 10.0 : 0.0, i * 7.0});
    }
    PictureStage across(row);
    const QImage wide = placePicture(5, 1); // one row: y is 0 whatever the light
    QCOMPARE(columns(place(across, 0x1000, wide.size(), scale, offset), wide, 5), shown);

    PictureStage down(column);
    const QImage high = wide.transformed(QTransform(0, 1, 1, 0, 0, 0)); // its columns as rows
    QCOMPARE(high.size(), QSize(1, 5));
    QCOMPARE(columns(place(down, 0x1000, high.size(), scale, 0.0, offset), high, 5), shown);
}

void SamplePointsTest::placesThatAreNumbersOfNoPixelShowBlack_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<double>("offset");
    const double inf = std::numeric_limits<double>::infinity();
    const double nan = std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("nan scale") << nan << 0.0;
    QTest::newRow("nan offset") << 1.0 << nan;
    QTest::newRow("infinite offset") << 1.0 << inf;
    QTest::newRow("-infinite offset") << 1.0 << -inf;
    QTest::newRow("huge offset") << 1.0 << 1e300;
    QTest::newRow("at 2^32 pixels") << 1.0 << 4294967296.0;
    QTest::newRow("infinite against infinite") << inf << -inf;
}

void SamplePointsTest::placesThatAreNumbersOfNoPixelShowBlack()
{
    QFETCH(const double, scale);
    QFETCH(const double, offset);
    PictureStage stage({{0.0, 0.0}, {10.0, 10.0}});
    const QImage image = placePicture(5, 5);
    QCOMPARE(columns(place(stage, 0x1000, image.size(), scale, offset), image, 2),
             QVector<int>({-1, -1}));
    QCOMPARE(columns(place(stage, 0x1000, image.size(), scale, 0.0, offset), image, 2),
             QVector<int>({-1, -1}));
    // Neither has a group of one light, or one without width, any place on the picture.
    QCOMPARE(columns(place(stage, 1, image.size()), image, 1), QVector<int>({-1}));
    PictureStage pole({{5.0, 0.0}, {5.0, 10.0}});
    QCOMPARE(columns(place(pole, 0x1000, image.size()), image, 2), QVector<int>({-1, -1}));
}

void SamplePointsTest::missingLightsKeepTheirBytes()
{
    PictureStage stage({{0.0, 0.0}, {10.0, 10.0}});
    const QImage image = placePicture(5, 5);
    int count = 0;
    stage.model()->group(0x1005)->lights(&count);
    QCOMPARE(count, 2); // the second is null
    QCOMPARE(columns(place(stage, 0x1005, image.size()), image, 2).size(), 2);
    const SamplePoints none;
    QVERIFY(none.makeBuffer() != nullptr);
    none.sample(image, none.makeBuffer());
    none.sample(image, SamplePoints::Buffer()); // no memory was left for it
}

void SamplePointsTest::anyPictureMayFollow()
{
    // The points are those of the first picture.
    PictureStage stage({{0.0, 0.0}, {10.0, 10.0}});
    const SamplePoints points = place(stage, 0x1000, QSize(5, 5));
    QCOMPARE(columns(points, placePicture(5, 5), 2), QVector<int>({0, 4}));
    QCOMPARE(columns(points, placePicture(3, 3), 2), QVector<int>({0, -1}));
    QCOMPARE(columns(points, placePicture(9, 9), 2), QVector<int>({0, 4}));
    QCOMPARE(columns(points, QImage(), 2), QVector<int>({-1, -1}));
    const QImage table = placePicture(5, 5).convertToFormat(QImage::Format_RGB888);
    QCOMPARE(columns(points, table, 2), QVector<int>({0, 4}));
}

QTEST_GUILESS_MAIN(SamplePointsTest)
#include "SamplePointsTest.moc"
