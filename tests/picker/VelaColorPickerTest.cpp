#include "picker/VelaColorPicker.h"

#include "picker/ColorViewWidget.h"
#include "picker/NChannelPickerWidget.h"
#include "picker/ProfileSelector.h"
#include "picker/RgbPickerWidget.h"
#include "picker/VelaColorPickerWidget.h"
#include "resources/Resources.h"

#include <QtTest>

using namespace VelaColorPickerLib;

class VelaColorPickerTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void passesEverySignalOn();
    void settingGoesToTheSelectedSwatch();
    void settingTheMainPreviewSelectsIt();
    void profilesReachTheChannelPage();
};

void VelaColorPickerTest::initTestCase()
{
    initForgeResources();
    qRegisterMetaType<VelaColor>();
}

void VelaColorPickerTest::passesEverySignalOn()
{
    VelaColorPicker picker;
    auto* const inner = picker.findChild<VelaColorPickerWidget*>();
    QVERIFY(inner != nullptr);
    QSignalSpy mainChanged(&picker, &VelaColorPicker::mainColorChanged);
    QSignalSpy comparisonChanged(&picker, &VelaColorPicker::comparisonColorChanged);
    QSignalSpy added(&picker, &VelaColorPicker::colorAddedToFavorites);
    QSignalSpy asked(&picker, &VelaColorPicker::pickerSetOnSetColor);
    QSignalSpy cleared(&picker, &VelaColorPicker::clearPreviousSelection);
    const QString uid = QStringLiteral("u");
    emit inner->mainColorChanged(VelaColor(Qt::red), uid);
    QCOMPARE(mainChanged.count(), 1);
    QCOMPARE(mainChanged.at(0).at(0).value<VelaColor>(), VelaColor(Qt::red));
    QCOMPARE(mainChanged.at(0).at(1).toString(), uid);
    emit inner->comparisonColorChanged(VelaColor(Qt::green), uid);
    QCOMPARE(comparisonChanged.count(), 1);
    QCOMPARE(comparisonChanged.at(0).at(0).value<VelaColor>(), VelaColor(Qt::green));
    QCOMPARE(comparisonChanged.at(0).at(1).toString(), uid);
    emit inner->colorAddedToFavorites(VelaColor(Qt::blue));
    QCOMPARE(added.count(), 1);
    QCOMPARE(added.at(0).at(0).value<VelaColor>(), VelaColor(Qt::blue));
    emit inner->pickerSetOnSetColor(2, true);
    QCOMPARE(asked.count(), 1);
    QCOMPARE(asked.at(0).at(0).toInt(), 2);
    QCOMPARE(asked.at(0).at(1).toBool(), true);
    emit inner->clearPreviousSelection();
    QCOMPARE(cleared.count(), 1);
}

void VelaColorPickerTest::settingGoesToTheSelectedSwatch()
{
    VelaColorPicker picker;
    QSignalSpy mainChanged(&picker, &VelaColorPicker::mainColorChanged);
    auto* const second = picker.findChild<ColorViewWidget*>(QStringLiteral("comparisonSwatch2"));
    emit second->selected();
    picker.setColor(VelaColor(Qt::cyan), QStringLiteral("u"));
    QCOMPARE(second->color(), VelaColor(Qt::cyan));
    QCOMPARE(second->uid(), QStringLiteral("u"));
    QCOMPARE(picker.selectedColor(), VelaColor(Qt::cyan));
    QCOMPARE(picker.mainColor().name(), QStringLiteral("#ffffff"));
    QCOMPARE(mainChanged.count(), 0);
}

void VelaColorPickerTest::settingTheMainPreviewSelectsIt()
{
    VelaColorPicker picker;
    auto* const second = picker.findChild<ColorViewWidget*>(QStringLiteral("comparisonSwatch2"));
    emit second->selected();
    picker.setColorAndSelectMainPreview(VelaColor(Qt::magenta), QStringLiteral("u"));
    QVERIFY(!second->isSelected());
    QCOMPARE(second->color().name(), QStringLiteral("#ffffff"));
    QCOMPARE(picker.mainColor(), VelaColor(Qt::magenta));
    QCOMPARE(picker.selectedColor(), VelaColor(Qt::magenta));
    QCOMPARE(picker.findChild<RgbPickerWidget*>()->color(), VelaColor(Qt::magenta));
}

void VelaColorPickerTest::profilesReachTheChannelPage()
{
    VelaColorPicker picker;
    GroupProfile profile;
    profile.profileId = 6;
    profile.forwardFlag = 1;
    picker.setProfiles({profile});
    picker.setPrimaryProfile(profile);
    QCOMPARE(picker.findChild<ProfileSelector*>()->profile(), 6);
    QVERIFY(picker.findChild<NChannelPickerWidget*>()->color().tintweave());
}

QTEST_MAIN(VelaColorPickerTest)
#include "VelaColorPickerTest.moc"
