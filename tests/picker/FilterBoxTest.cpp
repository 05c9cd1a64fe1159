#include "picker/FilterBox.h"

#include <QDialog>
#include <QToolButton>
#include <QVBoxLayout>
#include <QtTest>

using VelaWidgetsLib::FilterBox;

namespace {

/// Until the clear button has faded in or out: Qt frees a fade that was cut off in the event loop
/// alone, which has ended by then.
void waitForClearButton(const FilterBox& box)
{
    const auto* const button = box.findChild<QToolButton*>();
    QVERIFY(button != nullptr);
    QTRY_COMPARE(button->property("opacity").toDouble(), box.text().isEmpty() ? 0.0 : 1.0);
    QTest::qWait(0);
}

} // namespace

class FilterBoxTest : public QObject
{
    Q_OBJECT
private slots:
    void isALineThatTellsEveryKey();
    void tellsEachTimeItComesOnShow();
    void escapeClearsTheTextAndOnlyThenLeavesTheDialog();
};

void FilterBoxTest::isALineThatTellsEveryKey()
{
    FilterBox box;
    QVERIFY(qobject_cast<QLineEdit*>(&box) != nullptr);
    QVERIFY(!box.accessibleName().isEmpty());
    QSignalSpy changed(&box, &QLineEdit::textChanged);
    box.show();
    QTest::keyClicks(&box, QStringLiteral("red"));
    QCOMPARE(changed.count(), 3);
    QCOMPARE(changed.at(2).at(0).toString(), QStringLiteral("red"));
    waitForClearButton(box);
}

void FilterBoxTest::tellsEachTimeItComesOnShow()
{
    QWidget window;
    auto* const box = new FilterBox(&window);
    QVERIFY(box->metaObject()->indexOfSignal("showed()") >= 0);
    QSignalSpy showed(box, &FilterBox::showed);
    window.show();
    QCOMPARE(showed.count(), 1);
    window.hide();
    window.show();
    QCOMPARE(showed.count(), 2);
}

void FilterBoxTest::escapeClearsTheTextAndOnlyThenLeavesTheDialog()
{
    QDialog dialog;
    auto* const box = new FilterBox(&dialog);
    dialog.show();
    box->setFocus();
    box->setText(QStringLiteral("blue"));
    waitForClearButton(*box);
    QTest::keyClick(box, Qt::Key_Escape);
    QCOMPARE(box->text(), QString());
    waitForClearButton(*box);
    QVERIFY(dialog.isVisible());
    QTest::keyClick(box, Qt::Key_Escape);
    QVERIFY(!dialog.isVisible());
}

QTEST_MAIN(FilterBoxTest)
#include "FilterBoxTest.moc"
