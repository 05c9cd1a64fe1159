#include "picker/RgbPickerWidget.h"

#include "PickerInput.h"
#include "picker/ColorTrack.h"
#include "picker/HsbSlidersWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/PickerSettings.h"
#include "picker/RgbSlidersWidget.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QSpinBox>
#include <QSplitter>
#include <QtTest>

#include <cmath>
#include <random>

using namespace VelaColorPickerLib;

namespace {

struct Page
{
    RgbPickerWidget widget;
    QSignalSpy changed{&widget, &RgbPickerWidget::colorChanged};
    HsbSpectrumWidget* spectrum = widget.findChild<HsbSpectrumWidget*>();
    HsbTintsAndShadesWidget* tints = widget.findChild<HsbTintsAndShadesWidget*>();
    HsbSpectrumZoomWidget* zoom = widget.findChild<HsbSpectrumZoomWidget*>();
    QList<QSpinBox*> rgb = widget.findChild<RgbSlidersWidget*>()->findChildren<QSpinBox*>();
    QList<QSpinBox*> hsb = widget.findChild<HsbSlidersWidget*>()->findChildren<QSpinBox*>();
    QSplitter* splitter = widget.findChild<QSplitter*>(QStringLiteral("topSplitter"));

    Page()
    {
        widget.resize(800, 600);
        widget.show();
        QApplication::setActiveWindow(&widget);
    }
    QColor sliders() const { return {rgb.at(0)->value(), rgb.at(1)->value(), rgb.at(2)->value()}; }
    VelaColor told() const { return changed.last().at(0).value<VelaColor>(); }
};

} // namespace

class RgbPickerWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void namesItsSlots();
    void viewsShowOneColor();
    void theColorThatWasSetComesBack();
    void everyByteComesBackFromTheSliders();
    void theSpectrumLeads();
    void theTintsLead();
    void theZoomLeadsAndStays();
    void redGreenAndBlueLead();
    void hueSaturationAndBrightnessLead();
    void aGreyKeepsTheHue();
    void blackKeepsHueAndSaturation();
    void whitesAndChannelsShowAsTheyLook();
    void anInvalidColorChangesNothing();
    void opacityIsKept();
    void shortcutsZoom_data();
    void shortcutsZoom();
    void theSpectrumFramesWhatIsZoomed();
    void theZoomLevelIsKept();
    void aBrokenZoomLevelIsLimited_data();
    void aBrokenZoomLevelIsLimited();
    void theSplitterIsKept();
    void aForeignSplitterStateGivesSizesAlone();
    void controlsAreReachedByTab();
};

void RgbPickerWidgetTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
}

void RgbPickerWidgetTest::init()
{
    pickerSettings().clear();
}

void RgbPickerWidgetTest::namesItsSlots()
{
    const QMetaObject& meta = RgbPickerWidget::staticMetaObject;
    for (const char* const name :
         {"onSpectrumColorChanged(VelaColor)", "onTintsAndShadesColorChanged(VelaColor)",
          "onSpectrumZoomColorChanged(VelaColor)", "onSpectrumZoomLevelChanged(int)",
          "onRgbSlidersChanged(VelaColor)", "onHsbSlidersChanged(VelaColor)", "zoomOut()",
          "zoomIn()"}) {
        QVERIFY2(meta.indexOfSlot(name) >= 0, name);
    }
    QVERIFY(meta.indexOfSignal("colorChanged(VelaColor,QString)") >= 0);
}

void RgbPickerWidgetTest::viewsShowOneColor()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(0, 128, 128))); // hue 180, full saturation, half bright
    QCOMPARE(page.changed.count(), 0);
    QVERIFY(std::abs(page.spectrum->hue() - 0.5) < 1e-4);
    QCOMPARE(page.spectrum->saturation(), 1.0);
    QVERIFY(std::abs(page.tints->brightness() - 128.0 / 255.0) < 1e-4);
    QCOMPARE(page.zoom->hue(), 180);
    QCOMPARE(page.zoom->saturation(), 255);
    QCOMPARE(page.sliders(), QColor(0, 128, 128));
    QCOMPARE(page.hsb.at(0)->value(), 180);
    QCOMPARE(page.hsb.at(1)->value(), 255);
    QCOMPARE(page.hsb.at(2)->value(), 128);
}

void RgbPickerWidgetTest::theColorThatWasSetComesBack()
{
    Page page;
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i) {
        const QColor color(QRgb(random() | 0xff000000U));
        page.widget.setColor(VelaColor(color));
        QCOMPARE(page.widget.color().toQColor(true), color);
        QCOMPARE(page.sliders(), color);
    }
}

void RgbPickerWidgetTest::everyByteComesBackFromTheSliders()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(17, 99, 3)));
    for (int value = 0; value < 256; ++value) {
        page.rgb.at(2)->setValue(value);
        QCOMPARE(page.widget.color().toQColor(true), QColor(17, 99, value));
    }
}

void RgbPickerWidgetTest::theSpectrumLeads()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(200, 0, 0)));
    QTest::mouseClick(page.spectrum, Qt::LeftButton, {},
                      QPoint((page.spectrum->width() - 1) / 3, page.spectrum->height() - 1));
    QCOMPARE(page.changed.count(), 1);
    QCOMPARE(page.changed.at(0).at(1).toString(), QString());
    QCOMPARE(page.told().toString(), page.widget.color().toString());
    QVERIFY(std::abs(page.tints->hue() - 1.0 / 3.0) < 0.005);
    QVERIFY(std::abs(page.zoom->hue() - 120) <= 2);
    QVERIFY(page.sliders().green() >= 199 && page.sliders().red() < 10);
    QCOMPARE(page.hsb.at(2)->value(), 200);
}

void RgbPickerWidgetTest::theTintsLead()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(0, 0, 255)));
    QTest::mouseClick(page.tints, Qt::LeftButton, {}, QPoint(0, page.tints->height() - 1));
    QCOMPARE(page.changed.count(), 1);
    QCOMPARE(page.sliders(), QColor(Qt::black));
    QCOMPARE(page.spectrum->saturation(), 0.0);
    QVERIFY(std::abs(page.spectrum->hue() - 2.0 / 3.0) < 1e-4);
    QCOMPARE(page.hsb.at(0)->value(), 240);
}

void RgbPickerWidgetTest::theZoomLeadsAndStays()
{
    Page page;
    page.widget.setColor(VelaColor::fromHsv(100, 100, 200));
    QTest::mouseClick(page.zoom, Qt::LeftButton, {}, QPoint(2, 2));
    QCOMPARE(page.changed.count(), 1);
    QCOMPARE(page.told().toString(), VelaColor::fromHsv(100 - 65, 100 - 45, 200).toString());
    QCOMPARE(page.zoom->hue(), 100); // the grid is still where it was
    QCOMPARE(page.hsb.at(0)->value(), 35);
    QCOMPARE(page.hsb.at(1)->value(), 55);
    QVERIFY(std::abs(page.spectrum->hue() - 35.0 / 360.0) < 1e-4);
}

void RgbPickerWidgetTest::redGreenAndBlueLead()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(255, 0, 0)));
    page.rgb.at(1)->setValue(255);
    QCOMPARE(page.changed.count(), 1);
    QCOMPARE(page.told().name(), QStringLiteral("#ffff00"));
    QCOMPARE(page.hsb.at(0)->value(), 60);
    QVERIFY(std::abs(page.spectrum->hue() - 1.0 / 6.0) < 1e-4);
    QCOMPARE(page.zoom->hue(), 60);
}

void RgbPickerWidgetTest::hueSaturationAndBrightnessLead()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(255, 0, 0)));
    page.hsb.at(0)->setValue(240);
    QCOMPARE(page.changed.count(), 1);
    QCOMPARE(page.sliders(), QColor(Qt::blue));
    page.hsb.at(2)->setValue(51);
    QCOMPARE(page.sliders(), QColor(0, 0, 51));
    QVERIFY(std::abs(page.tints->brightness() - 0.2) < 1e-3);
    QCOMPARE(page.changed.count(), 2);
}

void RgbPickerWidgetTest::aGreyKeepsTheHue()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(0, 0, 255)));
    page.widget.setColor(VelaColor(QColor(90, 90, 90)));
    QVERIFY(std::abs(page.spectrum->hue() - 2.0 / 3.0) < 1e-4);
    QCOMPARE(page.hsb.at(0)->value(), 240);
    QCOMPARE(page.hsb.at(1)->value(), 0);
    page.hsb.at(1)->setValue(255);
    QCOMPARE(page.sliders(), QColor(0, 0, 90));
}

void RgbPickerWidgetTest::blackKeepsHueAndSaturation()
{
    Page page;
    page.widget.setColor(VelaColor::fromHsv(240, 128, 255));
    page.hsb.at(2)->setValue(0);
    QCOMPARE(page.sliders(), QColor(Qt::black));
    QCOMPARE(page.hsb.at(0)->value(), 240);
    QCOMPARE(page.hsb.at(1)->value(), 128);
    page.hsb.at(2)->setValue(255);
    QCOMPARE(page.told().toString(), VelaColor::fromHsv(240, 128, 255).toString());
    // Black by red, green and blue.
    page.widget.setColor(VelaColor(QColor(0, 0, 0)));
    QCOMPARE(page.hsb.at(0)->value(), 240);
    QCOMPARE(page.hsb.at(1)->value(), 128);
}

void RgbPickerWidgetTest::whitesAndChannelsShowAsTheyLook()
{
    Page page;
    const VelaColor white(0.38177, 0.37959);
    page.widget.setColor(white);
    QCOMPARE(page.widget.color().toString(), white.toString());
    QCOMPARE(page.sliders(), white.toQColor(true));
    page.hsb.at(1)->setValue(page.hsb.at(1)->value()); // no change: nothing to tell
    QCOMPARE(page.changed.count(), 0);
}

void RgbPickerWidgetTest::anInvalidColorChangesNothing()
{
    Page page;
    page.widget.setColor(VelaColor(QColor(1, 2, 3)));
    page.widget.setColor(VelaColor());
    QCOMPARE(page.widget.color().name(), QStringLiteral("#010203"));
    QCOMPARE(page.sliders(), QColor(1, 2, 3));
}

void RgbPickerWidgetTest::opacityIsKept()
{
    Page page;
    VelaColor color(QColor(200, 100, 50));
    color.setAlphaF(0.4);
    page.widget.setColor(color);
    page.rgb.at(0)->setValue(10);
    QVERIFY(std::abs(page.told().alphaF() - 0.4) < 1e-4);
    page.hsb.at(0)->setValue(10);
    QVERIFY(std::abs(page.told().alphaF() - 0.4) < 1e-4);
    for (QWidget* const field : QList<QWidget*>{page.spectrum, page.tints, page.zoom}) {
        QTest::mouseClick(field, Qt::LeftButton, {}, QPoint(5, 5));
        QVERIFY(std::abs(page.told().alphaF() - 0.4) < 1e-4);
    }
}

void RgbPickerWidgetTest::shortcutsZoom_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("level");
    QTest::newRow("Ctrl+=") << int(Qt::Key_Equal) << 5;
    QTest::newRow("Ctrl++") << int(Qt::Key_Plus) << 5;
    QTest::newRow("Ctrl+-") << int(Qt::Key_Minus) << 3;
}

void RgbPickerWidgetTest::shortcutsZoom()
{
    QFETCH(int, key);
    QFETCH(int, level);
    Page page;
    page.zoom->setLevel(4);
    QTest::keyClick(&page.widget, static_cast<Qt::Key>(key), Qt::ControlModifier);
    QCOMPARE(page.zoom->level(), level);
    for (int i = 0; i < 12; ++i) {
        QTest::keyClick(&page.widget, static_cast<Qt::Key>(key), Qt::ControlModifier);
    }
    QCOMPARE(page.zoom->level(), level == 5 ? 9 : 1);
}

void RgbPickerWidgetTest::theSpectrumFramesWhatIsZoomed()
{
    Page page;
    QCOMPARE(page.spectrum->zoomArea(), page.zoom->zoomArea());
    page.widget.setColor(VelaColor::fromHsv(200, 100, 200));
    QCOMPARE(page.spectrum->zoomArea(), page.zoom->zoomArea());
    page.widget.zoomIn();
    QCOMPARE(page.spectrum->zoomArea(), page.zoom->zoomArea());
    QTest::mouseClick(page.spectrum, Qt::LeftButton, {}, QPoint(30, 30));
    QCOMPARE(page.spectrum->zoomArea(), page.zoom->zoomArea());
    QVERIFY(page.spectrum->zoomArea().contains(
        QPointF(page.spectrum->hue(), page.spectrum->saturation())));
}

void RgbPickerWidgetTest::theZoomLevelIsKept()
{
    {
        Page page;
        QCOMPARE(page.zoom->level(), 1);
        page.zoom->setLevel(6);
        page.widget.close();
    }
    QCOMPARE(pickerSettings().value(QStringLiteral("colorPickerZoomLevel")).toInt(), 6);
    const Page page;
    QCOMPARE(page.zoom->level(), 6);
    QCOMPARE(page.spectrum->zoomArea(), page.zoom->zoomArea());
}

void RgbPickerWidgetTest::aBrokenZoomLevelIsLimited_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<int>("level");
    QTest::newRow("too high") << QVariant(4711) << 9;
    QTest::newRow("negative") << QVariant(-1) << 1;
    QTest::newRow("no number") << QVariant(QStringLiteral("much")) << 1;
}

void RgbPickerWidgetTest::aBrokenZoomLevelIsLimited()
{
    QFETCH(QVariant, value);
    QFETCH(int, level);
    QSettings settings = pickerSettings();
    settings.setValue(QStringLiteral("colorPickerZoomLevel"), value);
    settings.setValue(QStringLiteral("colorPickerTopSplitterState"), QByteArray("no splitter"));
    settings.sync();
    const Page page;
    QCOMPARE(page.zoom->level(), level);
    QVERIFY(page.spectrum->width() > page.tints->width());
}

void RgbPickerWidgetTest::theSplitterIsKept()
{
    QList<int> sizes;
    {
        Page page;
        const QList<int> first = page.splitter->sizes();
        page.splitter->setSizes({first.at(0) - 60, first.at(1) + 60});
        sizes = page.splitter->sizes();
        QVERIFY(sizes != first);
        page.widget.close();
    }
    QVERIFY(!pickerSettings()
                 .value(QStringLiteral("colorPickerTopSplitterState"))
                 .toByteArray()
                 .isEmpty());
    const Page page;
    QCOMPARE(page.splitter->sizes(), sizes);
}

void RgbPickerWidgetTest::aForeignSplitterStateGivesSizesAlone()
{
    QSplitter other(Qt::Vertical);
    other.addWidget(new QWidget(&other));
    other.addWidget(new QWidget(&other));
    other.setHandleWidth(20000);
    other.setChildrenCollapsible(true);
    other.setOpaqueResize(false);
    other.setSizes({0, 300});
    QSettings settings = pickerSettings();
    settings.setValue(QStringLiteral("colorPickerTopSplitterState"), other.saveState());
    settings.sync();
    const Page page;
    QCOMPARE(page.splitter->orientation(), Qt::Horizontal);
    QVERIFY(page.splitter->handleWidth() < 100);
    QVERIFY(!page.splitter->childrenCollapsible());
    QVERIFY(page.splitter->opaqueResize());
    for (QWidget* const field : {static_cast<QWidget*>(page.spectrum), page.splitter->widget(1)}) {
        QVERIFY(field->isVisible());
        QVERIFY(field->width() >= field->minimumSizeHint().width());
    }
}

void RgbPickerWidgetTest::controlsAreReachedByTab()
{
    Page page;
    page.spectrum->setFocus();
    QList<QWidget*> reached;
    for (int i = 0; i < 20; ++i) {
        reached.append(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (QWidget* const control : QList<QWidget*>{page.spectrum, page.tints, page.zoom}) {
        QVERIFY(reached.contains(control));
    }
    for (ColorTrack* const track : page.widget.findChildren<ColorTrack*>()) {
        QVERIFY(reached.contains(track));
    }
    QVERIFY(reached.indexOf(page.tints) < reached.indexOf(page.zoom));
}

QTEST_MAIN(RgbPickerWidgetTest)
#include "RgbPickerWidgetTest.moc"
