#include "app/EditPreferencesDialog.h"

#include "tests/app/DialogAnswers.h"

#include <QColorDialog>
#include <QGroupBox>
#include <QLabel>
#include <QObject>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QtTest>

class EditPreferencesDialogTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void theFormIsWhole();
    void aRateIsHeldWithinItsRange_data();
    void aRateIsHeldWithinItsRange();
    void theButtonsAnswer_data();
    void theButtonsAnswer();
    void aChosenColorIsKept();
    void aCancelledColorLeavesThePresentOne_data();
    void aCancelledColorLeavesThePresentOne();

private:
    static QString labelOf(const EditPreferencesDialog& dialog, const QWidget* control)
    {
        const QList<QLabel*> labels = dialog.findChildren<QLabel*>();
        for (const QLabel* label : labels) {
            if (label->buddy() == control) {
                return label->text();
            }
        }
        return QString();
    }
};

void EditPreferencesDialogTest::initTestCase()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
}

void EditPreferencesDialogTest::theFormIsWhole()
{
    const EditPreferencesDialog dialog(nullptr);
    QCOMPARE(dialog.windowTitle(), QStringLiteral("Edit Preferences"));
    QVERIFY(!dialog.windowFlags().testFlag(Qt::WindowContextHelpButtonHint));

    const auto* frameRate = dialog.findChild<QSpinBox*>(QStringLiteral("frameRate"));
    const auto* simRate = dialog.findChild<QSpinBox*>(QStringLiteral("simRate"));
    const auto* color = dialog.findChild<QPushButton*>(QStringLiteral("colorButton"));
    QCOMPARE(labelOf(dialog, frameRate), QStringLiteral("Live Play Frame Rate:"));
    QCOMPARE(labelOf(dialog, simRate), QStringLiteral("Live Play Frames per Simulation Update:"));
    QCOMPARE(labelOf(dialog, color), QStringLiteral("Simulation Background Color:"));
    QCOMPARE(frameRate->suffix(), QStringLiteral("fps"));
    QCOMPARE(simRate->suffix(), QString());
    QCOMPARE(dialog.frameRate(), 40);
    QCOMPARE(dialog.simRate(), 20);
    QCOMPARE(color->text(), QStringLiteral("Set..."));

    const auto* group = dialog.findChild<QGroupBox*>();
    QCOMPARE(group->title(), QStringLiteral("Simulation"));
    QVERIFY(group->isAncestorOf(simRate));
    QVERIFY(group->isAncestorOf(color));
    QVERIFY(!group->isAncestorOf(frameRate));

    const auto* ok = dialog.findChild<QPushButton*>(QStringLiteral("okButton"));
    const auto* cancel = dialog.findChild<QPushButton*>(QStringLiteral("cancelButton"));
    QCOMPARE(ok->text(), QStringLiteral("&OK"));
    QVERIFY(ok->isDefault());
    QCOMPARE(cancel->text(), QStringLiteral("&Cancel"));
    QCOMPARE(cancel->shortcut(), QKeySequence(QStringLiteral("Alt+C")));
}

void EditPreferencesDialogTest::aRateIsHeldWithinItsRange_data()
{
    QTest::addColumn<int>("given");
    QTest::addColumn<int>("held");
    QTest::newRow("least") << 1 << 1;
    QTest::newRow("zero") << 0 << 1;
    QTest::newRow("negative") << -40 << 1;
    QTest::newRow("greatest") << 100 << 100;
    QTest::newRow("beyond") << 101 << 100;
}

void EditPreferencesDialogTest::aRateIsHeldWithinItsRange()
{
    QFETCH(const int, given);
    QFETCH(const int, held);
    EditPreferencesDialog dialog(nullptr);
    dialog.setFrameRate(given);
    dialog.setSimRate(given);
    QCOMPARE(dialog.frameRate(), held);
    QCOMPARE(dialog.simRate(), held);
}

void EditPreferencesDialogTest::theButtonsAnswer_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("byShortcut");
    QTest::addColumn<int>("result");
    const int accepted = QDialog::Accepted;
    const int rejected = QDialog::Rejected;
    QTest::newRow("OK") << QStringLiteral("okButton") << false << accepted;
    QTest::newRow("Cancel") << QStringLiteral("cancelButton") << false << rejected;
    QTest::newRow("Alt+C") << QString() << true << rejected;
}

void EditPreferencesDialogTest::theButtonsAnswer()
{
    QFETCH(const QString, button);
    QFETCH(const bool, byShortcut);
    QFETCH(const int, result);
    EditPreferencesDialog dialog(nullptr);
    QSignalSpy finished(&dialog, &QDialog::finished);
    dialog.show();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
    if (byShortcut) {
        QTest::keyClick(&dialog, Qt::Key_C, Qt::AltModifier);
        QTRY_COMPARE(finished.count(), 1); // the button is animated
    } else {
        QTest::mouseClick(dialog.findChild<QPushButton*>(button), Qt::LeftButton);
    }
    QCOMPARE(finished.count(), 1);
    QCOMPARE(dialog.result(), result);
}

void EditPreferencesDialogTest::aChosenColorIsKept()
{
    DialogAnswers answers;
    EditPreferencesDialog dialog(nullptr);
    dialog.setSimBackground(QColor(10, 20, 30));
    dialog.show();
    QColor offered;
    answers.expect([&offered](QWidget* widget) {
        auto* colors = qobject_cast<QColorDialog*>(widget);
        offered = colors->currentColor();
        colors->setCurrentColor(QColor(200, 100, 50));
        colors->accept();
    });
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("colorButton")),
                      Qt::LeftButton);
    QCOMPARE(answers.complaints(), QString());
    QCOMPARE(answers.seen().at(0).title, QStringLiteral("color dialog"));
    QCOMPARE(offered, QColor(10, 20, 30));
    QCOMPARE(dialog.simBackground(), QColor(200, 100, 50));
}

void EditPreferencesDialogTest::aCancelledColorLeavesThePresentOne_data()
{
    QTest::addColumn<QColor>("present");
    QTest::newRow("a color") << QColor(10, 20, 30);
    QTest::newRow("none chosen yet") << QColor();
}

void EditPreferencesDialogTest::aCancelledColorLeavesThePresentOne()
{
    QFETCH(const QColor, present);
    DialogAnswers answers;
    EditPreferencesDialog dialog(nullptr);
    dialog.setSimBackground(present);
    dialog.show();
    answers.expect([](QWidget* widget) {
        auto* colors = qobject_cast<QColorDialog*>(widget);
        colors->setCurrentColor(QColor(200, 100, 50));
        colors->reject();
    });
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("colorButton")),
                      Qt::LeftButton);
    QCOMPARE(answers.complaints(), QString());
    QCOMPARE(dialog.simBackground(), present);
}

QTEST_MAIN(EditPreferencesDialogTest)
#include "EditPreferencesDialogTest.moc"
