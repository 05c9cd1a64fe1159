#include "picker/RgbPickerWidget.h"

#include "ColorSignals.h"
#include "PickerInput.h"
#include "picker/ColorTrack.h"
#include "picker/HsbSlidersWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/PickerSettings.h"
#include "picker/RgbSlidersWidget.h"
#include "picker/ZoomControlWidget.h"
#include "resources/Resources.h"

#include <QShortcut>
#include <QSignalSpy>
#include <QSpinBox>
#include <QSplitter>
#include <QToolButton>
#include <QtTest>

#include <functional>

using namespace VelaColorPickerLib;

namespace {

/// The page with its views.
struct Bench
{
    Bench()
        : spectrum(page.findChild<HsbSpectrumWidget*>())
        , tints(page.findChild<HsbTintsAndShadesWidget*>())
        , zoom(page.findChild<HsbSpectrumZoomWidget*>())
        , zoomControl(page.findChild<ZoomControlWidget*>())
        , rgb(page.findChild<RgbSlidersWidget*>())
        , hsb(page.findChild<HsbSlidersWidget*>())
    {
        page.resize(800, 600);
    }

    int box(const char* name) const
    {
        return page.findChild<QSpinBox*>(QLatin1String(name) + QStringLiteral("SpinBox"))->value();
    }
    QColor rgbBoxes() const { return QColor(box("red"), box("green"), box("blue")); }
    VelaColor hsbBoxes() const
    {
        return VelaColor::fromHsv(box("hue"), box("saturation"), box("brightness"));
    }

    /// That every view shows the colour; null if so, else the one that does not.
    const char* viewBesides(const VelaColor& color) const
    {
        const QColor screen = color.toQColor(true);
        if (spectrum->color().toQColor(true) != screen) {
            return "spectrum";
        }
        if (tints->color().toQColor(true) != screen) {
            return "tints and shades";
        }
        if (zoom->color().toQColor(true) != screen) {
            return "zoom";
        }
        if (rgb->color().toQColor(true) != screen || rgbBoxes().rgb() != screen.rgb()) {
            return "RGB sliders";
        }
        return hsb->color().toQColor(true) != screen ? "HSB sliders" : nullptr;
    }

    RgbPickerWidget page;
    HsbSpectrumWidget* spectrum;
    HsbTintsAndShadesWidget* tints;
    HsbSpectrumZoomWidget* zoom;
    ZoomControlWidget* zoomControl;
    RgbSlidersWidget* rgb;
    HsbSlidersWidget* hsb;
};

QString levelKey()
{
    return QStringLiteral("colorPickerZoomLevel");
}

QString splitterKey()
{
    return QStringLiteral("colorPickerTopSplitterState");
}

using Use = std::function<void(Bench&)>;
using Slot = void (RgbPickerWidget::*)(VelaColor);

} // namespace

Q_DECLARE_METATYPE(Use)
Q_DECLARE_METATYPE(Slot)

class RgbPickerWidgetTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void hasItsSignalAndSlots();
    void givesBackWhatWasSet_data();
    void givesBackWhatWasSet();
    void every8BitColorComesBack();
    void settingEmitsNothing();
    void viewsFollowTheOneThatWasUsed_data();
    void viewsFollowTheOneThatWasUsed();
    void slotsStoreAndEmit_data();
    void slotsStoreAndEmit();
    void alphaStays();
    void theHueSurvivesGreyAndBlack();
    void zoomLevelIsLimitedAndFollowed();
    void zoomGoesByButtonWheelAndShortcut();
    void theSpectrumFramesTheZoomedArea();
    void settingsAreReadWhenBuilt_data();
    void settingsAreReadWhenBuilt();
    void settingsAreWrittenOnceWhenItCloses();
    void theSplitterStaysWhereItIsFromRunToRun();
    void anUnshownPageWritesNothing();
    void aPageTakenDownOpenWritesToo();
    void aSplitterStateBringsItsSizesOnly();
    void aListenerMaySetAnotherColor();
    void tabGoesThroughTheViewsInTheirOrder();
};

void RgbPickerWidgetTest::initTestCase()
{
    initForgeResources();
}

void RgbPickerWidgetTest::init()
{
    pickerSettings().clear();
}

void RgbPickerWidgetTest::hasItsSignalAndSlots()
{
    const Bench bench;
    const QMetaObject* const meta = bench.page.metaObject();
    QVERIFY(meta->indexOfSignal("colorChanged(VelaColor,QString)") >= 0);
    for (const char* const slot :
         {"onSpectrumColorChanged(VelaColor)", "onTintsAndShadesColorChanged(VelaColor)",
          "onSpectrumZoomColorChanged(VelaColor)", "onSpectrumZoomLevelChanged(int)",
          "onRgbSlidersChanged(VelaColor)", "onHsbSlidersChanged(VelaColor)", "zoomOut()",
          "zoomIn()"}) {
        QVERIFY2(meta->indexOfSlot(slot) >= 0, slot);
    }
    QVERIFY(bench.spectrum != nullptr && bench.tints != nullptr && bench.zoom != nullptr);
    QVERIFY(bench.zoomControl != nullptr && bench.rgb != nullptr && bench.hsb != nullptr);
}

void RgbPickerWidgetTest::givesBackWhatWasSet_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::newRow("RGB") << VelaColor(QColor(12, 200, 99));
    QTest::newRow("HSV") << VelaColor::fromHsvF(0.12345, 0.6789, 0.4321, 0.5);
    QTest::newRow("white point") << VelaColor(0.3457, 0.3585);
    QTest::newRow("channels") << VelaColor(QStringLiteral("aNchannel;3;6;65535;60000;8000;7000;"
                                                          "60000;0;1"));
    QTest::newRow("16 bits") << VelaColor(1000, 2000, 3000, 4000);
}

void RgbPickerWidgetTest::givesBackWhatWasSet()
{
    QFETCH(const VelaColor, color);
    QVERIFY(color.isValid());
    Bench bench;
    bench.page.setColor(color);
    QCOMPARE(bench.page.color(), color);
    QCOMPARE(bench.rgbBoxes().rgb(), color.toQColor(true).rgb());
    bench.page.setColor(VelaColor());
    QCOMPARE(bench.page.color(), color);
}

void RgbPickerWidgetTest::every8BitColorComesBack()
{
    Bench bench;
    for (int red = 0; red < 256; red += 15) {
        for (int green = 0; green < 256; green += 17) {
            for (int blue = 0; blue < 256; blue += 51) {
                const QColor color(red, green, blue);
                bench.page.setColor(VelaColor(color));
                QCOMPARE(bench.page.color().toQColor(false), color);
                QCOMPARE(bench.rgbBoxes(), color);
                QCOMPARE(bench.rgb->color().toQColor(false), color);
            }
        }
    }
    for (int hue = 0; hue < 360; hue += 7) {
        const VelaColor color = VelaColor::fromHsv(hue, 255 - hue / 2, 80 + hue / 3);
        bench.page.setColor(color);
        QCOMPARE(bench.hsbBoxes(), color);
    }
}

void RgbPickerWidgetTest::settingEmitsNothing()
{
    Bench bench;
    bench.page.show();
    QSignalSpy colors(&bench.page, &RgbPickerWidget::colorChanged);
    bench.page.setColor(VelaColor(QColor(1, 2, 3)));
    bench.page.setColor(VelaColor(QColor(200, 100, 50)));
    bench.page.zoomIn();
    QCOMPARE(colors.count(), 0);
    QCOMPARE(bench.viewBesides(VelaColor(QColor(200, 100, 50))), nullptr);
}

void RgbPickerWidgetTest::viewsFollowTheOneThatWasUsed_data()
{
    QTest::addColumn<Use>("use");
    const auto key = [](const char* track, Qt::Key pressed) {
        return [track, pressed](Bench& bench) {
            QTest::keyClick(bench.page.findChild<ColorTrack*>(QLatin1String(track)), pressed);
        };
    };
    QTest::newRow("spectrum") << Use([](Bench& bench) {
        QTest::mouseClick(bench.spectrum, Qt::LeftButton, {}, QPoint(40, 150));
    });
    QTest::newRow("tints and shades") << Use(
        [](Bench& bench) { QTest::mouseClick(bench.tints, Qt::LeftButton, {}, QPoint(40, 30)); });
    QTest::newRow("zoom") << Use(
        [](Bench& bench) { QTest::mouseClick(bench.zoom, Qt::LeftButton, {}, QPoint(50, 40)); });
    QTest::newRow("red") << Use(key("redTrack", Qt::Key_Home));
    QTest::newRow("blue") << Use(key("blueTrack", Qt::Key_Right));
    QTest::newRow("hue") << Use(key("hueTrack", Qt::Key_PageUp));
    QTest::newRow("saturation") << Use(key("saturationTrack", Qt::Key_PageDown));
    QTest::newRow("brightness") << Use(key("brightnessTrack", Qt::Key_PageDown));
    QTest::newRow("spin box") << Use([](Bench& bench) {
        QTest::keyClick(bench.page.findChild<QSpinBox*>(QStringLiteral("greenSpinBox")),
                        Qt::Key_Up);
    });
}

void RgbPickerWidgetTest::viewsFollowTheOneThatWasUsed()
{
    QFETCH(const Use, use);
    Bench bench;
    bench.page.show();
    const VelaColor before(QColor(180, 120, 60));
    bench.page.setColor(before);
    QSignalSpy colors(&bench.page, &RgbPickerWidget::colorChanged);
    use(bench);
    QCOMPARE(colors.count(), 1);
    QCOMPARE(bench.page.color(), lastColor(colors));
    QVERIFY(lastColor(colors).toQColor(false) != before.toQColor(false));
    QCOMPARE(bench.viewBesides(lastColor(colors)), nullptr);
}

void RgbPickerWidgetTest::slotsStoreAndEmit_data()
{
    QTest::addColumn<Slot>("slot");
    QTest::newRow("spectrum") << Slot(&RgbPickerWidget::onSpectrumColorChanged);
    QTest::newRow("tints and shades") << Slot(&RgbPickerWidget::onTintsAndShadesColorChanged);
    QTest::newRow("zoom") << Slot(&RgbPickerWidget::onSpectrumZoomColorChanged);
    QTest::newRow("RGB sliders") << Slot(&RgbPickerWidget::onRgbSlidersChanged);
    QTest::newRow("HSB sliders") << Slot(&RgbPickerWidget::onHsbSlidersChanged);
}

void RgbPickerWidgetTest::slotsStoreAndEmit()
{
    QFETCH(const Slot, slot);
    Bench bench;
    QSignalSpy colors(&bench.page, &RgbPickerWidget::colorChanged);
    const VelaColor color = VelaColor::fromHsv(33, 44, 55, 66);
    (bench.page.*slot)(color);
    QCOMPARE(bench.page.color(), color);
    QCOMPARE(colors.count(), 1);
    QCOMPARE(lastColor(colors), color);
    QCOMPARE(colors.last()[1].toString(), QString());
    (bench.page.*slot)(VelaColor());
    QCOMPARE(bench.page.color(), color);
    QCOMPARE(colors.count(), 1);
}

void RgbPickerWidgetTest::alphaStays()
{
    Bench bench;
    bench.page.show();
    VelaColor color(QColor(180, 120, 60));
    color.setAlpha32(0x5A5A1234U);
    bench.page.setColor(color);
    QSignalSpy colors(&bench.page, &RgbPickerWidget::colorChanged);
    QTest::mouseClick(bench.spectrum, Qt::LeftButton, {}, QPoint(40, 150));
    QTest::mouseClick(bench.tints, Qt::LeftButton, {}, QPoint(40, 30));
    QTest::mouseClick(bench.zoom, Qt::LeftButton, {}, QPoint(50, 40));
    for (const char* const track : {"redTrack", "greenTrack", "hueTrack", "brightnessTrack"}) {
        QTest::keyClick(bench.page.findChild<ColorTrack*>(QLatin1String(track)), Qt::Key_Right);
    }
    QCOMPARE(colors.count(), 7);
    for (const auto& arguments : colors) {
        QCOMPARE(arguments.first().value<VelaColor>().alpha32(), 0x5A5A1234U);
    }
}

/// Through white and black and back, whichever view takes the colour there.
void RgbPickerWidgetTest::theHueSurvivesGreyAndBlack()
{
    Bench bench;
    bench.page.show();
    bench.page.setColor(VelaColor::fromHsv(217, 200, 180));
    QTest::mousePress(bench.spectrum, Qt::LeftButton, {}, bench.spectrum->markerPixel());
    dragTo(bench.spectrum, QPoint(bench.spectrum->markerPixel().x(), -20));
    QCOMPARE(bench.page.color().saturation8(), 0);
    QVERIFY(std::abs(bench.tints->hue() * 360.0 - 217.0) < 1.0);
    QCOMPARE(bench.box("hue"), qRound(bench.spectrum->hue() * 360.0));

    bench.page.setColor(VelaColor::fromHsv(217, 200, 180));
    QTest::mousePress(bench.tints, Qt::LeftButton, {}, bench.tints->markerPixel());
    dragTo(bench.tints, QPoint(bench.tints->markerPixel().x(), 5000));
    QCOMPARE(bench.rgbBoxes(), QColor(0, 0, 0));
    QCOMPARE(bench.box("hue"), 217);
    QVERIFY(std::abs(bench.box("saturation") - 200) <= 1);
    QVERIFY(std::abs(bench.spectrum->hue() * 360.0 - 217.0) < 1e-6);

    bench.page.setColor(VelaColor::fromHsv(217, 200, 180));
    for (const char* const track : {"redTrack", "greenTrack", "blueTrack"}) {
        QTest::keyClick(bench.page.findChild<ColorTrack*>(QLatin1String(track)), Qt::Key_Home);
    }
    QCOMPARE(bench.page.color().toQColor(false), QColor(0, 0, 0));
    QVERIFY(bench.spectrum->hue() > 0.5); // of the last blue
    QCOMPARE(bench.box("hue"), 240);
    QCOMPARE(bench.box("saturation"), 255);
}

void RgbPickerWidgetTest::zoomLevelIsLimitedAndFollowed()
{
    Bench bench;
    QCOMPARE(bench.page.zoomLevel(), 1);
    const std::pair<int, int> levels[] = {{4, 4}, {0, 1}, {-7, 1}, {9, 9}, {10, 9}, {1 << 30, 9}};
    for (const auto& level : levels) {
        bench.page.onSpectrumZoomLevelChanged(level.first);
        QCOMPARE(bench.page.zoomLevel(), level.second);
        QCOMPARE(bench.zoom->level(), level.second);
        QCOMPARE(bench.zoomControl->level(), level.second);
    }
    bench.page.zoomIn();
    QCOMPARE(bench.page.zoomLevel(), 9);
    bench.page.zoomOut();
    QCOMPARE(bench.page.zoomLevel(), 8);
}

void RgbPickerWidgetTest::zoomGoesByButtonWheelAndShortcut()
{
    Bench bench;
    bench.page.show();
    bench.page.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.page));
    QTest::mouseClick(bench.page.findChild<QToolButton*>(QStringLiteral("zoomInButton")),
                      Qt::LeftButton);
    QCOMPARE(bench.page.zoomLevel(), 2);
    turnWheel(bench.spectrum, 2);
    QCOMPARE(bench.page.zoomLevel(), 4);
    turnWheel(bench.zoom, -1);
    QCOMPARE(bench.page.zoomLevel(), 3);
    QTest::mouseClick(bench.page.findChild<QToolButton*>(QStringLiteral("zoomOutButton")),
                      Qt::LeftButton);
    QCOMPARE(bench.page.zoomLevel(), 2);

    QTest::keyClick(&bench.page, Qt::Key_Equal, Qt::ControlModifier);
    QCOMPARE(bench.page.zoomLevel(), 3);
    QTest::keyClick(&bench.page, Qt::Key_Plus, Qt::ControlModifier);
    QCOMPARE(bench.page.zoomLevel(), 4);
    QTest::keyClick(&bench.page, Qt::Key_Minus, Qt::ControlModifier);
    QCOMPARE(bench.page.zoomLevel(), 3);
    QStringList keys;
    for (const QShortcut* const shortcut : bench.page.findChildren<QShortcut*>()) {
        keys << shortcut->key().toString(QKeySequence::PortableText);
    }
    keys.sort();
    QCOMPARE(keys, QStringList({QStringLiteral("Ctrl++"), QStringLiteral("Ctrl+-"),
                                QStringLiteral("Ctrl+=")}));
}

void RgbPickerWidgetTest::theSpectrumFramesTheZoomedArea()
{
    Bench bench;
    QCOMPARE(bench.spectrum->zoomArea(), bench.zoom->zoomArea());
    bench.page.setColor(VelaColor::fromHsv(100, 150, 200));
    QCOMPARE(bench.spectrum->zoomArea(), bench.zoom->zoomArea());
    QVERIFY(bench.spectrum->zoomArea().contains(QPointF(100 / 360.0, 150 / 255.0)));
    const QRectF wide = bench.spectrum->zoomArea();
    bench.page.onSpectrumZoomLevelChanged(6);
    QCOMPARE(bench.spectrum->zoomArea(), bench.zoom->zoomArea());
    QVERIFY(wide.contains(bench.spectrum->zoomArea()));
}

void RgbPickerWidgetTest::settingsAreReadWhenBuilt_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("level");
    QTest::newRow("absent") << QVariant() << 1;
    QTest::newRow("a level") << QVariant(6) << 6;
    QTest::newRow("too low") << QVariant(0) << 1;
    QTest::newRow("negative") << QVariant(-3) << 1;
    QTest::newRow("too high") << QVariant(10) << 9;
    QTest::newRow("no number") << QVariant(QStringLiteral("near")) << 1;
    QTest::newRow("a list") << QVariant(QStringList({QStringLiteral("3"), QStringLiteral("4")}))
                            << 1;
    QTest::newRow("too large") << QVariant(QStringLiteral("99999999999999999999")) << 1;
}

void RgbPickerWidgetTest::settingsAreReadWhenBuilt()
{
    QFETCH(const QVariant, stored);
    QFETCH(const int, level);
    if (stored.isValid()) {
        pickerSettings().setValue(levelKey(), stored);
    }
    pickerSettings().setValue(splitterKey(), QByteArray("no state of a splitter"));
    const Bench bench;
    QCOMPARE(bench.page.zoomLevel(), level);
    QCOMPARE(bench.zoomControl->level(), level);
    QCOMPARE(bench.spectrum->zoomArea(), bench.zoom->zoomArea());
}

void RgbPickerWidgetTest::settingsAreWrittenOnceWhenItCloses()
{
    {
        Bench bench;
        bench.page.show();
        bench.page.onSpectrumZoomLevelChanged(7);
        bench.page.findChild<QSplitter*>(QStringLiteral("topSplitter"))->setSizes({300, 500});
        QVERIFY(!pickerSettings().contains(levelKey()));
        bench.page.close();
        QCOMPARE(pickerSettings().value(levelKey()).toInt(), 7);
        QVERIFY(!pickerSettings().value(splitterKey()).toByteArray().isEmpty());
        pickerSettings().clear(); // nothing comes once more
    }
    QVERIFY(!pickerSettings().contains(levelKey()));
}

void RgbPickerWidgetTest::theSplitterStaysWhereItIsFromRunToRun()
{
    QList<int> sizes;
    for (int run = 0; run < 10; ++run) {
        Bench bench;
        bench.page.show();
        QVERIFY(QTest::qWaitForWindowExposed(&bench.page));
        auto* const splitter = bench.page.findChild<QSplitter*>(QStringLiteral("topSplitter"));
        if (run == 0) {
            splitter->setSizes({300, 500});
            sizes = splitter->sizes();
        }
        QVERIFY(std::abs(splitter->sizes().first() - sizes.first()) <= 2);
        bench.page.close();
        QCOMPARE(pickerSettings().value(splitterKey()).toByteArray(), splitter->saveState());
    }
}

void RgbPickerWidgetTest::anUnshownPageWritesNothing()
{
    {
        Bench bench;
        bench.page.onSpectrumZoomLevelChanged(7);
    }
    QVERIFY(!pickerSettings().contains(levelKey()));
    QVERIFY(!pickerSettings().contains(splitterKey()));
}

void RgbPickerWidgetTest::aPageTakenDownOpenWritesToo()
{
    {
        Bench bench;
        bench.page.show();
        bench.page.onSpectrumZoomLevelChanged(5);
    }
    QCOMPARE(pickerSettings().value(levelKey()).toInt(), 5);
}

void RgbPickerWidgetTest::aSplitterStateBringsItsSizesOnly()
{
    QSplitter other(Qt::Vertical);
    other.addWidget(new QWidget);
    other.addWidget(new QWidget);
    other.setChildrenCollapsible(true);
    other.setHandleWidth(77);
    pickerSettings().setValue(splitterKey(), other.saveState());
    const Bench bench;
    const auto* const splitter = bench.page.findChild<QSplitter*>(QStringLiteral("topSplitter"));
    QCOMPARE(splitter->orientation(), Qt::Horizontal);
    QVERIFY(!splitter->childrenCollapsible());
    QVERIFY(splitter->handleWidth() < 77);
}

void RgbPickerWidgetTest::aListenerMaySetAnotherColor()
{
    Bench bench;
    bench.page.show();
    const VelaColor other(QColor(9, 8, 7));
    connect(&bench.page, &RgbPickerWidget::colorChanged, &bench.page,
            [&bench, other]() { bench.page.setColor(other); });
    QTest::mouseClick(bench.spectrum, Qt::LeftButton, {}, QPoint(40, 150));
    QCOMPARE(bench.page.color(), other);
    QCOMPARE(bench.viewBesides(other), nullptr);
    QTest::keyClick(bench.page.findChild<ColorTrack*>(QStringLiteral("redTrack")), Qt::Key_Right);
    QCOMPARE(bench.viewBesides(other), nullptr);
}

void RgbPickerWidgetTest::tabGoesThroughTheViewsInTheirOrder()
{
    Bench bench;
    bench.page.show();
    bench.page.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.page));
    bench.spectrum->setFocus();
    const QList<QWidget*> order = {
        bench.zoom,
        bench.page.findChild<QWidget*>(QStringLiteral("zoomInButton")), // out is off at level 1
        bench.tints,
        bench.page.findChild<QWidget*>(QStringLiteral("redTrack")),
        bench.page.findChild<QWidget*>(QStringLiteral("redSpinBox")),
        bench.page.findChild<QWidget*>(QStringLiteral("greenTrack"))};
    for (QWidget* const next : order) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), next);
    }
}

QTEST_MAIN(RgbPickerWidgetTest)
#include "RgbPickerWidgetTest.moc"
