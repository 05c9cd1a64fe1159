#include "effects/FlashEffect.h"
#include "effects/ImageEffect.h"
#include "tests/color/AllocationCount.h"
#include "tests/effects/PictureStage.h"

extern "C" std::size_t malloc_usable_size(void* block) noexcept;

/// Pictures in memory are painted without asking for any more.
class PictureAllocationsTest : public QObject
{
    Q_OBJECT
private slots:
    void aPictureAllocatesNothing_data();
    void aPictureAllocatesNothing();
    void aPreloadedFilmAllocatesNothingAndReadsNothing();
    void aPreloadedFilmCostsThreeBytesALightAFrame();
};

namespace {

int framesCost(PictureStage& stage, Effect& effect)
{
    effect.setTransparency(0.25);
    effect.setActive(true);
    effect.setStartMs(TestShow::kStartMs);
    const auto frames = [&](int first, int count) {
        for (int i = first; i < first + count; ++i) {
            effect.tick(TestShow::kStartMs + i * 25, static_cast<uint>(i));
            stage.endFrame();
        }
    };
    frames(0, 10);
    const int before = allocations;
    frames(10, 400);
    return allocations - before;
}

} // namespace

void PictureAllocationsTest::aPictureAllocatesNothing_data()
{
    QTest::addColumn<bool>("smooth");
    QTest::addColumn<int>("format");
    QTest::newRow("plain") << false << int(QImage::Format_RGB32);
    QTest::newRow("smooth") << true << int(QImage::Format_RGB32);
    QTest::newRow("smooth, of a table") << true << int(QImage::Format_Indexed8);
    QTest::newRow("smooth, 16 bits a channel") << true << int(QImage::Format_RGBA64);
}

void PictureAllocationsTest::aPictureAllocatesNothing()
{
    QFETCH(const bool, smooth);
    QFETCH(const int, format);
    PictureStage stage(20, 10, 12.0);
    ImageEffect effect(stage.model(), 0x1000, nullptr);
    effect.setImageFile(stage.save(
        "a.png", placePicture(25, 25).convertToFormat(static_cast<QImage::Format>(format))));
    QVERIFY(effect.imageLoaded());
    effect.setSmooth(smooth);
    effect.setTransEnabled(true);
    effect.setEndX(25);
    effect.setEndScale(3);
    effect.compile();
    QCOMPARE(framesCost(stage, effect), 0);
}

void PictureAllocationsTest::aPreloadedFilmAllocatesNothingAndReadsNothing()
{
    PictureStage stage(20, 10, 12.0);
    for (int i = 0; i < 12; ++i) {
        QVERIFY(
            !stage.save(qPrintable(QStringLiteral("film/%1.png").arg(i)), placePicture(25 - i, 25))
                 .isEmpty());
    }
    FlashEffect effect(stage.model(), 0x1000, nullptr);
    effect.setAnimationDir(stage.path("film"));
    effect.setTransEnabled(true);
    effect.setPreload(true);
    QVERIFY(effect.ready());
    QVERIFY(QDir(stage.path("film")).removeRecursively());
    QCOMPARE(framesCost(stage, effect), 0);
    QVERIFY(stage.isLoaded());
}

void PictureAllocationsTest::aPreloadedFilmCostsThreeBytesALightAFrame()
{
    // One block of that size a frame, however large the picture, and its place in a list.
    PictureStage stage(20, 10, 12.0);
    int count = 0;
    Group* const group = stage.model()->group(0x1000);
    SamplePoints points;
    points.place(group->lights(&count), 200, QRectF(0, 0, 228, 108), QSize(25, 25), 1.0, 0.0, 0.0);
    const int before = allocations;
    const SamplePoints::Buffer buffer = points.makeBuffer();
    QCOMPARE(allocations - before, 1);
    const std::size_t size = malloc_usable_size(buffer.get());
    QVERIFY(size >= 600 && size < 632);
    points.sample(placePicture(25, 25), buffer);
    QCOMPARE(int(buffer[3 * 199]), 240); // the last of them
    QCOMPARE(int(buffer[3 * 199 + 2]), 77);
}

QTEST_GUILESS_MAIN(PictureAllocationsTest)
#include "PictureAllocationsTest.moc"
