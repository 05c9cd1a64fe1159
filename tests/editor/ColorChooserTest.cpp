#include "editor/ColorChooser.h"

#include "color/VelaColorLibrary.h"
#include "editor/ColorSwatch.h"
#include "editor/FixedColorWidget.h"
#include "effects/FixedColorEffect.h"
#include "picker/ColorPickerWidget.h"
#include "picker/ProfileSelector.h"
#include "picker/RgbPickerWidget.h"
#include "resources/Resources.h"
#include "tests/engine/TestShow.h"

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <QWidget>
#include <QtTest>

#include <functional>
#include <memory>

using namespace VelaColorPickerLib;

namespace {

constexpr quint64 kChase = 0x50;
constexpr quint64 kNoSuchGroup = 0x99;

constexpr int kThreeWhites = 6; // profile 26

/// A light of the generic three-channel device with the profile of the chemistry, and its leaf.
QString fixture(quint64 uid, int chemistry)
{
    return QStringLiteral("<light><self>%1</self><sn>983040</sn><properties><LED_CHEMISTRY>%2"
                          "</LED_CHEMISTRY></properties></light>")
               .arg(QString::number(uid, 16))
               .arg(chemistry) +
           TestShow::group(uid, 3, {uid});
}

/// What the handler was told.
struct Told
{
    QStringList names;
    ColorHandler handler()
    {
        return [this](const VelaColor& color) { names.append(color.name()); };
    }
};

/// An effect of a chase of three lights, with a form.
struct Stage
{
    TestShow::TestMap map{1, fixture(0x11, kThreeWhites) + fixture(0x12, kThreeWhites) +
                                 TestShow::group(kChase, 1, {1, 0x11, 0x12})};
    FixedColorEffect effect{map.model(), kChase, nullptr};
    std::unique_ptr<QWidget> form = std::make_unique<QWidget>();

    /// Opens the dialog and lets `act` work in it; the dialog is closed by Cancel where it doesn't.
    void choose(const VelaColor& current, Told* told, const std::function<void(QDialog*)>& act)
    {
        bool opened = false;
        QTimer::singleShot(0, form.get(), [&opened, &act] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) {
                return;
            }
            opened = true;
            act(dialog);
            if (dialog->isVisible()) {
                dialog->reject();
            }
        });
        chooseColor(effect, map.model(), current, form.get(), told->handler());
        QVERIFY(opened);
    }
};

void press(QDialog* dialog, QDialogButtonBox::StandardButton which)
{
    QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(which), Qt::LeftButton);
}

void pick(QDialog* dialog, const QColor& color)
{
    emit dialog->findChild<RgbPickerWidget*>()->colorChanged(VelaColor(color), QString());
}

bool isBold(const ProfileSelector* selector, int profile)
{
    const int row = selector->findData(profile);
    return selector->itemData(row, Qt::FontRole).value<QFont>().bold();
}

} // namespace

class ColorChooserTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theDialogIsModalAndHoldsThePicker();
    void thePickerHasRoomForItsFont_data();
    void thePickerHasRoomForItsFont();
    void everyColorGoesToTheHandlerAtOnce();
    void cancelBringsTheOldColorBack();
    void escapeBringsTheOldColorBack();
    void aFormFollowsItsDialog();
    void theDialogIsGoneAfterwards();
    void theGroupsProfilesAreHandedOver();
    void withoutAGroupThereAreNoProfiles();
    void aFormThatIsGoneIsNotTold();
};

void ColorChooserTest::initTestCase()
{
    initForgeResources();
}

void ColorChooserTest::theDialogIsModalAndHoldsThePicker()
{
    Stage stage;
    Told told;
    stage.choose(VelaColor(QColor(1, 2, 3)), &told, [](QDialog* dialog) {
        QVERIFY(dialog->isModal());
        QVERIFY(dialog->parent() == nullptr);
        QCOMPARE(dialog->windowTitle(), QStringLiteral("Select Color"));
        QVERIFY((dialog->windowFlags() & Qt::WindowContextHelpButtonHint) == 0);
        QVERIFY(qobject_cast<QGridLayout*>(dialog->layout()) != nullptr);
        const auto* const picker = dialog->findChild<ColorPickerWidget*>();
        QCOMPARE(picker->color().name(), QStringLiteral("#010203"));
        press(dialog, QDialogButtonBox::Ok);
        QVERIFY(!dialog->isVisible());
        QCOMPARE(dialog->result(), static_cast<int>(QDialog::Accepted));
    });
    QCOMPARE(told.names, QStringList()); // the colour that was handed over is no news
}

void ColorChooserTest::thePickerHasRoomForItsFont_data()
{
    QTest::addColumn<double>("points");
    QTest::addColumn<bool>("large");
    QTest::newRow("small") << 7.0 << false;
    QTest::newRow("large") << 24.0 << true;
}

void ColorChooserTest::thePickerHasRoomForItsFont()
{
    QFETCH(const double, points);
    QFETCH(const bool, large);
    const QFont plain = QApplication::font();
    QFont font = plain;
    font.setPointSizeF(points);
    QApplication::setFont(font);
    Stage stage;
    Told told;
    stage.choose(VelaColor(QColor(1, 2, 3)), &told, [large](QDialog* dialog) {
        const auto* const picker = dialog->findChild<ColorPickerWidget*>();
        const QSize needed = picker->minimumSizeHint();
        QCOMPARE(needed.width() > 800 && needed.height() > 600, large);
        QCOMPARE(picker->minimumSize(), large ? needed : QSize(800, 600));
        press(dialog, QDialogButtonBox::Ok);
    });
    QApplication::setFont(plain);
}

void ColorChooserTest::everyColorGoesToTheHandlerAtOnce()
{
    Stage stage;
    Told told;
    stage.choose(VelaColor(Qt::red), &told, [&told](QDialog* dialog) {
        pick(dialog, QColor(0, 255, 0));
        QCOMPARE(told.names, QStringList({"#00ff00"}));
        pick(dialog, QColor(0, 0, 255));
        QCOMPARE(told.names, QStringList({"#00ff00", "#0000ff"}));
        press(dialog, QDialogButtonBox::Ok);
    });
    QCOMPARE(told.names, QStringList({"#00ff00", "#0000ff"}));
}

void ColorChooserTest::cancelBringsTheOldColorBack()
{
    Stage stage;
    Told told;
    stage.choose(VelaColor(Qt::red), &told, [](QDialog* dialog) {
        pick(dialog, QColor(0, 255, 0));
        press(dialog, QDialogButtonBox::Cancel);
    });
    QCOMPARE(told.names, QStringList({"#00ff00", "#ff0000"}));
}

void ColorChooserTest::escapeBringsTheOldColorBack()
{
    Stage stage;
    Told told;
    stage.choose(VelaColor(Qt::red), &told, [](QDialog* dialog) {
        pick(dialog, QColor(0, 255, 0));
        QTest::keyClick(dialog, Qt::Key_Escape);
        QVERIFY(!dialog->isVisible());
    });
    QCOMPARE(told.names, QStringList({"#00ff00", "#ff0000"}));
}

void ColorChooserTest::aFormFollowsItsDialog()
{
    Stage stage;
    stage.effect.setColor(VelaColor(Qt::red));
    FixedColorWidget form(&stage.effect, stage.map.model(), nullptr);
    const auto* const swatch = form.findChild<ColorSwatch*>();
    const auto shown = [swatch] { return swatch->palette().color(swatch->backgroundRole()); };
    const auto choose = [&](QDialogButtonBox::StandardButton answer) {
        QTimer::singleShot(0, &form, [&stage, &shown, answer] {
            auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            pick(dialog, QColor(0, 255, 0));
            QCOMPARE(stage.effect.color().name(), QStringLiteral("#00ff00"));
            QCOMPARE(shown(), QColor(0, 255, 0));
            press(dialog, answer);
        });
        form.findChild<QPushButton*>()->click();
    };
    choose(QDialogButtonBox::Cancel);
    QCOMPARE(stage.effect.color(), VelaColor(Qt::red));
    QCOMPARE(shown(), QColor(Qt::red));
    choose(QDialogButtonBox::Ok);
    QCOMPARE(stage.effect.color().name(), QStringLiteral("#00ff00"));
    QCOMPARE(shown(), QColor(0, 255, 0));
}

void ColorChooserTest::theDialogIsGoneAfterwards()
{
    Stage stage;
    Told told;
    QPointer<QDialog> opened;
    QPointer<ColorPickerWidget> picker;
    stage.choose(VelaColor(Qt::red), &told, [&](QDialog* dialog) {
        opened = dialog;
        picker = dialog->findChild<ColorPickerWidget*>();
        QVERIFY(!picker.isNull());
    });
    QVERIFY(opened.isNull());
    QVERIFY(picker.isNull());
}

void ColorChooserTest::theGroupsProfilesAreHandedOver()
{
    Stage stage;
    Told told;
    stage.choose(VelaColor(Qt::red), &told, [](QDialog* dialog) {
        const auto* const selector = dialog->findChild<ProfileSelector*>();
        QCOMPARE(selector->profile(), 26); // of two lights of three
        QVERIFY(isBold(selector, 26));
        QVERIFY(isBold(selector, 0));
        QVERIFY(!isBold(selector, 7));
    });
}

void ColorChooserTest::withoutAGroupThereAreNoProfiles()
{
    Stage stage;
    stage.effect.setGid(kNoSuchGroup);
    Told told;
    stage.choose(VelaColor(Qt::red), &told, [](QDialog* dialog) {
        const auto* const selector = dialog->findChild<ProfileSelector*>();
        for (int row = 0; row < selector->count(); ++row) {
            QVERIFY(!isBold(selector, selector->itemData(row).toInt()));
        }
    });
}

void ColorChooserTest::aFormThatIsGoneIsNotTold()
{
    Stage stage;
    Told told;
    QWidget context; // outlives the form
    QTimer::singleShot(0, &context, [&stage] {
        auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        stage.form.reset();
        pick(dialog, QColor(0, 255, 0));
        dialog->reject();
    });
    chooseColor(stage.effect, stage.map.model(), VelaColor(Qt::red), stage.form.get(),
                told.handler());
    QVERIFY(stage.form == nullptr);
    QCOMPARE(told.names, QStringList());
}

QTEST_MAIN(ColorChooserTest)
#include "ColorChooserTest.moc"
