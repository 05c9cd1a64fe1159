#include "color/VelaColorLibrary.h"
#include "picker/BlackBodyCurveWidget.h"
#include "picker/CCTPickerWidget.h"
#include "picker/ColorTempSliderWidget.h"
#include "picker/ColorTintSliderWidget.h"
#include "picker/ColorZoomWidget.h"
#include "picker/DmxSliderWidget.h"
#include "picker/DmxSlidersWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/NChannelPickerWidget.h"
#include "picker/ProfileSelector.h"
#include "picker/RgbPickerWidget.h"
#include "picker/TintPickerWidget.h"
#include "picker/VelaColorPicker.h"
#include "picker/WhitePickerWidget.h"

#include <QMetaMethod>
#include <QMetaObject>
#include <QtTest>

#include <type_traits>

using namespace VelaColorPickerLib;

Q_DECLARE_METATYPE(const QMetaObject*)
Q_DECLARE_METATYPE(QMetaMethod::MethodType)

static_assert(std::is_base_of<ColorSelectorWidget, GradientColorSelectorWidget>::value, "");
static_assert(std::is_base_of<GradientColorSelectorWidget, HsbSpectrumWidget>::value, "");
static_assert(std::is_base_of<GradientColorSelectorWidget, HsbTintsAndShadesWidget>::value, "");
static_assert(std::is_base_of<ColorSelectorWidget, ColorZoomWidget>::value, "");
static_assert(std::is_base_of<ColorZoomWidget, HsbSpectrumZoomWidget>::value, "");
static_assert(std::is_base_of<QComboBox, ProfileSelector>::value, "");
static_assert(std::is_same<VelaColorPickerLib::VelaColorLibrary, ::VelaColorLibrary>::value, "");

/// The signals and slots that connections by name go by.
class PickerInterfacesTest : public QObject
{
    Q_OBJECT
private slots:
    void isThere_data();
    void isThere();
};

void PickerInterfacesTest::isThere_data()
{
    QTest::addColumn<const QMetaObject*>("meta");
    QTest::addColumn<QMetaMethod::MethodType>("type");
    QTest::addColumn<QByteArray>("method");
    const auto add = [](const QMetaObject& meta, QMetaMethod::MethodType type,
                        std::initializer_list<const char*> methods) {
        for (const char* const method : methods) {
            QTest::addRow("%s::%s", meta.className(), method)
                << &meta << type << QByteArray(method);
        }
    };
    const QMetaMethod::MethodType kSignal = QMetaMethod::Signal;
    const QMetaMethod::MethodType kSlot = QMetaMethod::Slot;
    add(VelaColorPicker::staticMetaObject, kSignal,
        {"mainColorChanged(VelaColor,QString)", "comparisonColorChanged(VelaColor,QString)",
         "colorAddedToFavorites(VelaColor)", "pickerSetOnSetColor(int,bool)",
         "clearPreviousSelection()"});
    add(VelaColorPicker::staticMetaObject, kSlot,
        {"setColorAndSelectMainPreview(VelaColor,QString)", "setColor(VelaColor,QString)"});
    add(RgbPickerWidget::staticMetaObject, kSignal, {"colorChanged(VelaColor,QString)"});
    add(GradientColorSelectorWidget::staticMetaObject, kSignal, {"colorChanged(VelaColor)"});
    add(HsbSpectrumWidget::staticMetaObject, kSlot, {"setZoomArea(QRectF)"});
    add(ColorZoomWidget::staticMetaObject, kSignal, {"zoomAreaChanged(QRectF)"});
    add(HsbSpectrumZoomWidget::staticMetaObject, kSignal,
        {"colorChanged(VelaColor)", "centerColorChanged(double,double,double,double)"});
    add(WhitePickerWidget::staticMetaObject, kSignal,
        {"colorChanged(VelaColor,QString)", "intensityChanged(double)"});
    add(WhitePickerWidget::staticMetaObject, kSlot,
        {"onIntensityChanged(double)", "onBlackBodyCurveColorChanged(VelaColor)",
         "onColorTempChanged(int)", "onColorTintChanged(int)", "onIncreaseRed()", "onDecreaseRed()",
         "onIncreaseGreen()", "onDecreaseGreen()", "onIncreaseBlue()", "onDecreaseBlue()"});
    add(BlackBodyCurveWidget::staticMetaObject, kSignal, {"colorChanged(VelaColor)"});
    add(CCTPickerWidget::staticMetaObject, kSignal, {"cctChanged(int)"});
    add(TintPickerWidget::staticMetaObject, kSignal, {"tintChanged(int)"});
    add(ColorTempSliderWidget::staticMetaObject, kSignal, {"colorTempChanged(int)"});
    add(ColorTempSliderWidget::staticMetaObject, kSlot,
        {"onCCTPickerWidgetTintChanged(int)", "on_colorTempSpinBox_valueChanged(int)"});
    add(ColorTintSliderWidget::staticMetaObject, kSignal, {"colorTintChanged(int)"});
    add(ColorTintSliderWidget::staticMetaObject, kSlot,
        {"onTintPickerWidgetTintChanged(int)", "on_colorTintSpinBox_valueChanged(int)"});
    add(NChannelPickerWidget::staticMetaObject, kSignal, {"colorChanged(VelaColor&,QString&)"});
    add(NChannelPickerWidget::staticMetaObject, kSlot,
        {"onTintweaveProfileChanged(ColorUtils::TintweaveProfileID)", "onDmxChanged(QVector<int>)",
         "onInfoButton()", "onTintweaveCheckBoxStateChanged(int)",
         "on_tintweaveCheckBox_clicked()"});
    add(DmxSlidersWidget::staticMetaObject, kSignal, {"dmxChanged(QVector<int>)"});
    add(DmxSlidersWidget::staticMetaObject, kSlot, {"onSliderChanged()"});
    add(DmxSliderWidget::staticMetaObject, kSignal, {"valueChanged(int)"});
    add(DmxSliderWidget::staticMetaObject, kSlot,
        {"onSliderChanged(int)", "onSpinBoxChanged(int)"});
    add(ProfileSelector::staticMetaObject, kSignal,
        {"selectedProfile(ColorUtils::TintweaveProfileID)"});
    add(ProfileSelector::staticMetaObject, kSlot, {"handleIndexChanged(int)"});
}

void PickerInterfacesTest::isThere()
{
    QFETCH(const QMetaObject*, meta);
    QFETCH(QMetaMethod::MethodType, type);
    QFETCH(QByteArray, method);
    const int index = meta->indexOfMethod(method.constData());
    QVERIFY(index >= meta->methodOffset()); // its own, not a base class's
    QCOMPARE(meta->method(index).methodType(), type);
}

QTEST_GUILESS_MAIN(PickerInterfacesTest)
#include "PickerInterfacesTest.moc"
