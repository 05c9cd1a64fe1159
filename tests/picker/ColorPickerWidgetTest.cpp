#include "picker/ColorPickerWidget.h"

#include "color/VelaColorLibrary.h"
#include "color/VelaColorLibraryItem.h"
#include "picker/ColorTrack.h"
#include "picker/ColorTreeAndFilterWidget.h"
#include "picker/ColorViewWidget.h"
#include "picker/HsbSpectrumWidget.h"
#include "picker/HsbSpectrumZoomWidget.h"
#include "picker/HsbTintsAndShadesWidget.h"
#include "picker/IntensitySliderWidget.h"
#include "picker/NChannelPickerWidget.h"
#include "picker/OpacitySliderWidget.h"
#include "picker/PickerSettings.h"
#include "picker/ProfileSelector.h"
#include "picker/RgbPickerWidget.h"
#include "picker/VelaColorLibraryTreeView.h"
#include "picker/VelaColorPicker.h"
#include "picker/VelaColorPickerButtonsWidget.h"
#include "resources/Resources.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QPushButton>
#include <QSplitter>
#include <QtTest>

#include <cstdlib>

using namespace VelaColorPickerLib;

namespace {

VelaColorLibrary* library()
{
    return VelaColorLibrary::instance();
}

QModelIndex swatch(const QString& list, int row)
{
    return library()->index(row, 0, library()->listIndex(list));
}

struct Bench
{
    ColorPickerWidget widget;
    QSignalSpy changed{&widget, &ColorPickerWidget::mainColorChanged};
    QSignalSpy accepted{&widget, &ColorPickerWidget::accepted};
    QSignalSpy rejected{&widget, &ColorPickerWidget::rejected};
    VelaColorLibraryTreeView* tree = widget.findChild<VelaColorLibraryTreeView*>();
    VelaColorPicker* picker = widget.findChild<VelaColorPicker*>();

    Bench()
    {
        widget.resize(900, 640);
        widget.show();
    }
    void clickSwatch(const QModelIndex& index) const
    {
        tree->showItem(index);
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {},
                          tree->visualRect(tree->currentIndex()).center());
    }
    ColorViewWidget* view(const char* name) const
    {
        return widget.findChild<ColorViewWidget*>(QString::fromLatin1(name));
    }
};

} // namespace

class ColorPickerWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void namesItsSignalsAndSlots();
    void isMadeOfItsParts();
    void theFirstPickerOfAProcessFillsTheLibrary();
    void okAndCancelAreTheDialogs();
    void aClickedSwatchBecomesTheColor();
    void aChangeByHandClearsTheTreesSelection();
    void aComparisonColorIsNotTheMainColor();
    void theLibrarysCurrentColorFollows();
    void favoritesGoToTheShowsList();
    void profilesReachTheChannelPage();
    void setColorShowsThePage();
    void tabFollowsTheEye();
    void everyControlIsNamedAndExplained_data();
    void everyControlIsNamedAndExplained();
};

void ColorPickerWidgetTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
    QFile::remove(VelaColorLibrary::userFile());
    pickerSettings().clear();
}

void ColorPickerWidgetTest::cleanup()
{
    const QModelIndex project = library()->listIndex(VelaColorLibrary::projectListName());
    const int swatches = library()->rowCount(project);
    if (swatches > 0) {
        QVERIFY(library()->removeRows(0, swatches, project));
    }
}

void ColorPickerWidgetTest::namesItsSignalsAndSlots()
{
    const QMetaObject& meta = ColorPickerWidget::staticMetaObject;
    for (const char* const name : {"mainColorChanged(VelaColor)", "accepted()", "rejected()"}) {
        QVERIFY2(meta.indexOfSignal(name) >= 0, name);
    }
    for (const char* const name :
         {"on_colorPicker_mainColorChanged(VelaColor)",
          "on_colorPicker_comparisonColorChanged(VelaColor)", "handleAddToFavorites(VelaColor)",
          "on_dialogButtonBox_accepted()", "on_dialogButtonBox_rejected()"}) {
        QVERIFY2(meta.indexOfSlot(name) >= 0, name);
    }
}

void ColorPickerWidgetTest::isMadeOfItsParts()
{
    Bench bench;
    bench.widget.resize(1400, 900);
    QVERIFY(bench.picker != nullptr);
    QVERIFY(bench.widget.findChild<VelaColorPickerButtonsWidget*>() != nullptr);
    QVERIFY(bench.widget.findChild<ColorTreeAndFilterWidget*>() != nullptr);
    auto* const splitter = bench.widget.findChild<QSplitter*>(QStringLiteral("splitter"));
    QCOMPARE(splitter->count(), 2);
    QVERIFY(!splitter->isCollapsible(0));
    QVERIFY(splitter->isCollapsible(1));
    QVERIFY(splitter->widget(1)->findChild<VelaColorLibraryTreeView*>() != nullptr);
    // 70 to 30, where there is room for it
    const int all = splitter->sizes().at(0) + splitter->sizes().at(1);
    QVERIFY(std::abs(splitter->sizes().at(0) - all * 7 / 10) <= all / 50);
}

void ColorPickerWidgetTest::theFirstPickerOfAProcessFillsTheLibrary()
{
    const Bench bench;
    const QString builtIn = QStringLiteral("Halden Swatches");
    QCOMPARE(library()->rowCount(library()->listIndex(builtIn)), 32);
    QVERIFY(!library()->itemAt(library()->listIndex(builtIn))->isUserLibrary());
    const int lists = library()->rowCount();
    const Bench second;
    QCOMPARE(library()->rowCount(), lists);
}

void ColorPickerWidgetTest::okAndCancelAreTheDialogs()
{
    Bench bench;
    auto* const box = bench.widget.findChild<QDialogButtonBox*>();
    QTest::mouseClick(box->button(QDialogButtonBox::Ok), Qt::LeftButton);
    QCOMPARE(bench.accepted.count(), 1);
    QCOMPARE(bench.rejected.count(), 0);
    QTest::mouseClick(box->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    QCOMPARE(bench.accepted.count(), 1);
    QCOMPARE(bench.rejected.count(), 1);
}

void ColorPickerWidgetTest::aClickedSwatchBecomesTheColor()
{
    Bench bench;
    bench.clickSwatch(swatch(QStringLiteral("Halden Swatches"), 1));
    QCOMPARE(bench.widget.color().name(), QStringLiteral("#ff7f00"));
    QCOMPARE(bench.changed.count(), 1);
    QCOMPARE(bench.changed.at(0).at(0).value<VelaColor>().name(), QStringLiteral("#ff7f00"));
    QCOMPARE(bench.picker->currentPage(), 0);
    bench.clickSwatch(swatch(QStringLiteral("Halden Swatches"), 12));
    QCOMPARE(bench.widget.color().spec(), VelaColor::Yxy);
    QCOMPARE(bench.picker->currentPage(), 1);
    QCOMPARE(bench.tree->selectedItems().size(), 1); // still the one that was clicked
}

void ColorPickerWidgetTest::aChangeByHandClearsTheTreesSelection()
{
    Bench bench;
    bench.clickSwatch(swatch(QStringLiteral("Halden Swatches"), 1));
    emit bench.widget.findChild<RgbPickerWidget*>()->colorChanged(VelaColor(Qt::blue), QString());
    QCOMPARE(bench.tree->selectedItems().size(), 0);
    bench.clickSwatch(swatch(QStringLiteral("Halden Swatches"), 1));
    QTest::mouseClick(bench.widget.findChild<QPushButton*>(QStringLiteral("whiteButton")),
                      Qt::LeftButton);
    QCOMPARE(bench.tree->selectedItems().size(), 0);
}

void ColorPickerWidgetTest::aComparisonColorIsNotTheMainColor()
{
    Bench bench;
    bench.widget.setColor(VelaColor(Qt::green));
    bench.changed.clear();
    QTest::mouseClick(bench.view("comparisonSwatch1"), Qt::LeftButton);
    bench.clickSwatch(swatch(QStringLiteral("Halden Swatches"), 0));
    QCOMPARE(bench.changed.count(), 0);
    QCOMPARE(bench.widget.color().name(), QStringLiteral("#00ff00"));
    QCOMPARE(bench.view("comparisonSwatch1")->color().name(), QStringLiteral("#ff0000"));
}

void ColorPickerWidgetTest::theLibrarysCurrentColorFollows()
{
    Bench bench;
    bench.widget.setColor(VelaColor(QColor(1, 2, 3)));
    QCOMPARE(library()->colorForUid(QString()).name(), QStringLiteral("#010203"));
    QTest::mouseClick(bench.view("comparisonSwatch2"), Qt::LeftButton);
    bench.clickSwatch(swatch(QStringLiteral("Halden Swatches"), 0));
    QCOMPARE(library()->colorForUid(QString()).name(), QStringLiteral("#ff0000"));
}

void ColorPickerWidgetTest::favoritesGoToTheShowsList()
{
    Bench bench;
    bench.widget.setColor(VelaColor(QColor(9, 8, 7)));
    QTest::mouseClick(bench.widget.findChild<QPushButton*>(QStringLiteral("addButton")),
                      Qt::LeftButton);
    const QModelIndex added = swatch(VelaColorLibrary::projectListName(), 0);
    QCOMPARE(library()->itemAt(added)->color().name(), QStringLiteral("#090807"));
    QCOMPARE(added.data().toString(), QStringLiteral("#090807"));
    QCOMPARE(library()->rowCount(added.parent()), 1);
    VelaColor channels;
    channels.setNchannelF({1.0, 1.0, 0.0, 0.5}, 1, 0, false);
    bench.widget.setColor(channels);
    bench.view("mainSwatch")->onAddToFavorites();
    QCOMPARE(swatch(VelaColorLibrary::projectListName(), 1).data().toString(),
             channels.channelsText());
}

void ColorPickerWidgetTest::profilesReachTheChannelPage()
{
    Bench bench;
    GroupProfile profile;
    profile.profileId = 3;
    bench.widget.setProfiles({profile});
    bench.widget.setPrimaryProfile(profile);
    auto* const selector = bench.widget.findChild<ProfileSelector*>();
    QCOMPARE(selector->profile(), 3);
}

void ColorPickerWidgetTest::setColorShowsThePage()
{
    Bench bench;
    bench.widget.setColor(VelaColor(0.38177, 0.37959));
    QCOMPARE(bench.picker->currentPage(), 1);
    QVERIFY(bench.widget.findChild<QPushButton*>(QStringLiteral("whiteButton"))->isChecked());
    bench.widget.setColor(VelaColor(Qt::red));
    QCOMPARE(bench.picker->currentPage(), 0);
    QCOMPARE(bench.widget.color().name(), QStringLiteral("#ff0000"));
}

void ColorPickerWidgetTest::tabFollowsTheEye()
{
    Bench bench;
    bench.widget.setColor(VelaColor(Qt::red));
    bench.widget.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&bench.widget));
    const auto button = [&bench](const char* name) {
        return bench.widget.findChild<QWidget*>(QLatin1String(name));
    };
    const QList<QWidget*> order = {
        button("rgbButton"),
        button("addButton"),
        bench.widget.findChild<HsbSpectrumWidget*>(),
        bench.widget.findChild<HsbSpectrumZoomWidget*>(),
        bench.widget.findChild<HsbTintsAndShadesWidget*>(),
        bench.view("mainSwatch"),
        bench.view("comparisonSwatch1"),
        bench.view("comparisonSwatch2"),
        bench.view("comparisonSwatch3"),
        bench.widget.findChild<IntensitySliderWidget*>()->findChild<ColorTrack*>(),
        bench.widget.findChild<OpacitySliderWidget*>()->findChild<ColorTrack*>(),
        button("filterBox"),
        bench.tree,
        button("newGroupButton"),
        button("importButton")};
    QList<QWidget*> reached;
    button("rgbButton")->setFocus();
    for (int i = 0; i < 60; ++i) {
        reached.append(QApplication::focusWidget());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        if (QApplication::focusWidget() == button("rgbButton")) {
            break;
        }
    }
    // The buttons of the pages are one place, within which the arrows go.
    QTest::keyClick(button("rgbButton"), Qt::Key_Right);
    QCOMPARE(QApplication::focusWidget(), button("whiteButton"));
    QCOMPARE(bench.picker->currentPage(), 1);
    int last = -1;
    for (QWidget* const control : order) {
        const int at = reached.indexOf(control);
        QVERIFY2(at > last, qPrintable(control->objectName()));
        last = at;
    }
}

void ColorPickerWidgetTest::everyControlIsNamedAndExplained_data()
{
    QTest::addColumn<VelaColor>("color");
    QTest::newRow("RGB") << VelaColor(Qt::red);
    QTest::newRow("white") << VelaColor(0.38177, 0.37959);
    QTest::newRow("channels") << VelaColor::fromNchannelF({1.0, 1.0, 0.0, 0.5}, 1, 0, false);
}

void ColorPickerWidgetTest::everyControlIsNamedAndExplained()
{
    QFETCH(VelaColor, color);
    Bench bench;
    bench.widget.setColor(color);
    int controls = 0;
    for (QWidget* const control : bench.widget.findChildren<QWidget*>()) {
        if ((control->focusPolicy() & Qt::TabFocus) == 0 || !control->isVisible() ||
            control->focusProxy() != nullptr) {
            continue;
        }
        ++controls;
        const auto* const button = qobject_cast<QAbstractButton*>(control);
        const QString name = button != nullptr && control->accessibleName().isEmpty()
                                 ? button->text()
                                 : control->accessibleName();
        const QByteArray which =
            control->metaObject()->className() + QByteArray(" ") + control->objectName().toLatin1();
        QVERIFY2(!name.isEmpty(), which.constData());
        QVERIFY2(!control->toolTip().isEmpty(), which.constData());
    }
    QVERIFY(controls > 20);
}

QTEST_MAIN(ColorPickerWidgetTest)
#include "ColorPickerWidgetTest.moc"
