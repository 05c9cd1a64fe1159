#include "editor/CustomRainbowWidget.h"

#include "editor/ColorChooser.h"
#include "editor/ColorSwatch.h"
#include "tests/editor/FormStage.h"

#include <QApplication>
#include <QImage>
#include <QMenu>
#include <QPalette>
#include <QTableWidget>
#include <QTimer>

namespace {

struct Dialog
{
    VelaColor offered;
    VelaColor chosen;
    bool isRejected = false;
    int runs = 0;
} dialog;

CustomRainbowEntry entry(const VelaColor& color, double hold, double fade)
{
    CustomRainbowEntry made;
    made.color = color;
    made.duration = hold;
    made.fade = fade;
    return made;
}

} // namespace

void chooseColor(const Effect& /*effect*/, MapModel* /*model*/, VelaColor current,
                 QWidget* /*form*/, const ColorHandler& handler)
{
    dialog.offered = current;
    ++dialog.runs;
    handler(dialog.chosen);
    if (dialog.isRejected) {
        handler(current);
    }
}

class CustomRainbowWidgetTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void rowsAreTheEntries();
    void aDoubleClickOnAColorAsksForAnother();
    void aRejectedColorComesBack();
    void aDoubleClickElsewhereAsksForNothing();
    void anEmptyTableTellsHowToFillIt();
    void numbersLineUp();
    void holdAndFadeAreWritten_data();
    void holdAndFadeAreWritten();
    void aNewColorIsAppended();
    void deleteRemovesTheRowThatWasClicked();
    void deleteWithoutARowChangesNothing();
    void theLastEntryCanGo();
    void theOffsetIsWrittenWithEveryKey();
    void theCycleTimeFollowsTheEffect();
    void aLostEffectIsLeftAlone();

private:
    QColor shown(int row) const;
    /// Opens the menu over a row, looks at it, and takes its one action.
    void deleteByMenu(int row);

    std::unique_ptr<TestShow::TestMap> m_map;
    std::unique_ptr<CustomRainbowEffect> m_effect;
    std::unique_ptr<CustomRainbowWidget> m_form;
    QTableWidget* m_table = nullptr;
};

void CustomRainbowWidgetTest::init()
{
    dialog = Dialog();
    m_map = std::make_unique<TestShow::TestMap>(2);
    m_effect = std::make_unique<CustomRainbowEffect>(m_map->model(), Effect::kNoGid, nullptr);
    while (!m_effect->entryList().isEmpty()) {
        m_effect->removeEntry(0);
    }
    m_effect->addEntry(entry(Qt::red, 1.0, 0.5));
    m_effect->addEntry(entry(Qt::green, 2.0, 0.25));
    m_effect->addEntry(entry(Qt::blue, 3.5, 0.0));
    m_form = std::make_unique<CustomRainbowWidget>(m_effect.get(), m_map->model(), nullptr);
    m_form->resize(500, 500);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form.get()));
    m_table = m_form->findChild<QTableWidget*>();
    QVERIFY(m_table != nullptr);
}

void CustomRainbowWidgetTest::cleanup()
{
    m_form.reset();
    m_effect.reset();
    m_map.reset();
}

QColor CustomRainbowWidgetTest::shown(int row) const
{
    const QWidget* const swatch = m_table->cellWidget(row, 0);
    return swatch->palette().color(swatch->backgroundRole());
}

void CustomRainbowWidgetTest::deleteByMenu(int row)
{
    const QPoint place = m_table->visualItemRect(m_table->item(row, 1)).center();
    QTest::mouseClick(m_table->viewport(), Qt::RightButton, Qt::NoModifier, place);
    bool seen = false;
    QTimer::singleShot(0, m_table, [&seen] {
        auto* const menu = dynamic_cast<QMenu*>(QApplication::activePopupWidget());
        QVERIFY(menu != nullptr);
        QCOMPARE(menu->title(), QStringLiteral("Popup Menu"));
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().at(0)->text(), QStringLiteral("Delete"));
        seen = true;
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
    });
    m_form->handleCustomContextMenuRequested(place);
    QVERIFY(seen);
}

void CustomRainbowWidgetTest::rowsAreTheEntries()
{
    QStringList headers;
    for (int column = 0; column < m_table->columnCount(); ++column) {
        headers << m_table->horizontalHeaderItem(column)->text();
    }
    QCOMPARE(headers, QStringList({QStringLiteral("Color"), QStringLiteral("Hold"),
                                   QStringLiteral("Fade")}));
    QCOMPARE(m_table->rowCount(), 3);
    QCOMPARE(shown(0), QColor(Qt::red));
    QCOMPARE(shown(2), QColor(Qt::blue));
    QCOMPARE(m_table->item(2, 1)->text(), QStringLiteral("3.5"));
    QCOMPARE(m_table->item(1, 2)->text(), QStringLiteral("0.25"));
}

void CustomRainbowWidgetTest::aDoubleClickOnAColorAsksForAnother()
{
    dialog.chosen = Qt::yellow;
    const QPoint place = m_table->visualItemRect(m_table->item(1, 0)).center();
    QTest::mouseClick(m_table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(dialog.runs, 1);
    QCOMPARE(dialog.offered.toString(), VelaColor(Qt::green).toString());
    QCOMPARE(m_effect->color(1).toString(), VelaColor(Qt::yellow).toString());
    QCOMPARE(shown(1), QColor(Qt::yellow));
    QCOMPARE(m_effect->color(0).toString(), VelaColor(Qt::red).toString());
}

void CustomRainbowWidgetTest::aRejectedColorComesBack()
{
    dialog.chosen = Qt::yellow;
    dialog.isRejected = true;
    m_form->handleTableDoubleClicked(m_table->item(2, 0));
    QCOMPARE(dialog.runs, 1);
    QCOMPARE(m_effect->color(2).toString(), VelaColor(Qt::blue).toString());
    QCOMPARE(shown(2), QColor(Qt::blue));
}

void CustomRainbowWidgetTest::anEmptyTableTellsHowToFillIt()
{
    // How far the darkest and the lightest pixel of the middle line are apart, of 255.
    const auto contrast = [this] {
        const QImage image = m_table->viewport()->grab().toImage();
        int least = 255;
        int most = 0;
        for (int x = 0; x < image.width(); ++x) {
            const int level = qGray(image.pixel(x, image.height() / 2));
            least = qMin(least, level);
            most = qMax(most, level);
        }
        return most - least;
    };
    for (int row = 2; row >= 0; --row) {
        m_table->setCurrentCell(row, 1);
        m_form->handleDeleteColor();
    }
    QVERIFY2(contrast() > 80, "light");
    const QPalette light = QApplication::palette();
    QApplication::setPalette(QPalette(QColor(53, 53, 53)));
    const int onDark = contrast();
    QApplication::setPalette(light);
    QVERIFY2(onDark > 80, qPrintable(QString::number(onDark)));
    m_form->handleNewEntryClicked();
    QCOMPARE(contrast(), 0);
}

void CustomRainbowWidgetTest::numbersLineUp()
{
    m_form->handleNewEntryClicked();
    for (int row = 0; row < m_table->rowCount(); ++row) {
        for (const int column : {1, 2}) {
            QVERIFY((m_table->item(row, column)->textAlignment() & Qt::AlignRight) != 0);
        }
    }
}

void CustomRainbowWidgetTest::aDoubleClickElsewhereAsksForNothing()
{
    m_form->handleTableDoubleClicked(m_table->item(1, 1));
    m_form->handleTableDoubleClicked(nullptr);
    QCOMPARE(dialog.runs, 0);
}

void CustomRainbowWidgetTest::holdAndFadeAreWritten_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<double>("value");
    QTest::newRow("hold") << 1 << QStringLiteral("7.25") << 7.25;
    QTest::newRow("no number as hold") << 1 << QStringLiteral("long") << 0.0;
    QTest::newRow("fade") << 2 << QStringLiteral("0.125") << 0.125;
    QTest::newRow("nothing as fade") << 2 << QString() << 0.0;
}

void CustomRainbowWidgetTest::holdAndFadeAreWritten()
{
    QFETCH(const int, column);
    QFETCH(const QString, text);
    QFETCH(const double, value);
    QTableWidgetItem* const item = m_table->item(1, column);
    m_table->setCurrentItem(item);
    m_table->editItem(item);
    auto* const editor = m_table->viewport()->findChild<QLineEdit*>();
    QVERIFY(editor != nullptr);
    editor->selectAll();
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    const CustomRainbowEntry& written = *m_effect->entryList().at(1);
    QTRY_COMPARE(column == 1 ? written.duration : written.fade, value); // the table commits later
    QCOMPARE(column == 1 ? written.fade : written.duration, column == 1 ? 0.25 : 2.0);
}

void CustomRainbowWidgetTest::aNewColorIsAppended()
{
    button<QPushButton>(m_form.get(), "New Color")->click();
    QCOMPARE(m_effect->entryList().size(), 4);
    QCOMPARE(m_table->rowCount(), 4);
    QCOMPARE(shown(3), QColor(Qt::red));
    QCOMPARE(m_table->item(3, 1)->text(), QStringLiteral("1"));
    QCOMPARE(m_table->item(3, 2)->text(), QStringLiteral("0.5"));
}

void CustomRainbowWidgetTest::deleteRemovesTheRowThatWasClicked()
{
    deleteByMenu(1);
    QCOMPARE(m_table->rowCount(), 2);
    QCOMPARE(m_effect->entryList().size(), 2);
    QCOMPARE(m_effect->color(1).toString(), VelaColor(Qt::blue).toString());
    QCOMPARE(shown(1), QColor(Qt::blue));
}

void CustomRainbowWidgetTest::deleteWithoutARowChangesNothing()
{
    m_table->setCurrentItem(nullptr);
    m_form->handleDeleteColor();
    QCOMPARE(m_table->rowCount(), 3);
    QCOMPARE(m_effect->entryList().size(), 3);
}

void CustomRainbowWidgetTest::theLastEntryCanGo()
{
    for (int left = 2; left >= 0; --left) {
        m_table->setCurrentCell(0, 1);
        m_form->handleDeleteColor();
        QCOMPARE(m_effect->entryList().size(), left);
        QCOMPARE(m_table->rowCount(), left);
    }
}

void CustomRainbowWidgetTest::theOffsetIsWrittenWithEveryKey()
{
    auto* const line = labelled<QLineEdit>(m_form.get(), "Light-to-Light Offset (sec):");
    line->selectAll();
    QTest::keyClick(line, Qt::Key_2);
    QCOMPARE(m_effect->groupOffset(), 2.0);
    QTest::keyClick(line, Qt::Key_5);
    QCOMPARE(m_effect->groupOffset(), 25.0);
    QTest::keyClicks(line, QStringLiteral("x"));
    QCOMPARE(m_effect->groupOffset(), 0.0);
}

void CustomRainbowWidgetTest::theCycleTimeFollowsTheEffect()
{
    auto* const shownTime = labelled<QLabel>(m_form.get(), "Cycle Time (sec):");
    QCOMPARE(shownTime->text(), QString::number(m_effect->cycleTime() / 1000.0));
    m_effect->setDuration(0, 100.5);
    QCOMPARE(shownTime->text(), QString::number(m_effect->cycleTime() / 1000.0));
    m_form->handleCycleTimeChanged(12345);
    QCOMPARE(shownTime->text(), QStringLiteral("12.345"));
}

void CustomRainbowWidgetTest::aLostEffectIsLeftAlone()
{
    m_effect.reset();
    m_form->handleNewEntryClicked();
    m_form->handleEntryChanged(0, 1);
    m_form->handleTableDoubleClicked(m_table->item(0, 0));
    m_table->setCurrentCell(0, 1);
    m_form->handleDeleteColor();
    m_form->handleGotNewColor(Qt::green);
    m_form->handleGroupOffsetChanged(QStringLiteral("1"));
    QCOMPARE(m_table->rowCount(), 3);
    QCOMPARE(dialog.runs, 0);
}

QTEST_MAIN(CustomRainbowWidgetTest)
#include "CustomRainbowWidgetTest.moc"
