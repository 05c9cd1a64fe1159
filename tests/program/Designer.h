#pragma once

#include "editor/EffectForm.h"
#include "editor/GroupPicker.h"
#include "editor/TimePanel.h"
#include "picker/ColorPickerWidget.h"
#include "picker/RgbSlidersWidget.h"
#include "tests/app/WindowBench.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDomDocument>
#include <QFont>
#include <QHash>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <QtTest>

#include <functional>

struct Rgb
{
    int r;
    int g;
    int b;
    bool isBlack() const { return r == 0 && g == 0 && b == 0; }
};

/// Closes a dialog that a failed check left open.
class Closer
{
public:
    explicit Closer(QWidget* dialog)
        : m_dialog(dialog)
    {}
    ~Closer()
    {
        if (QTest::currentTestFailed() && m_dialog->isVisible()) {
            m_dialog->close();
        }
    }
    Closer(const Closer&) = delete;
    Closer& operator=(const Closer&) = delete;

private:
    QWidget* m_dialog;
};

/// A window that is used by mouse and keyboard alone.
class Designer
{
public:
    WindowBench bench;

    /// Once for the process: a font of a fixed size, so that pictures are alike everywhere, and the
    /// folder from which the example names its files.
    static void prepare()
    {
        WindowBench::prepare();
        QFont font = QApplication::font();
        font.setPixelSize(13);
        QApplication::setFont(font);
        QVERIFY(QDir::setCurrent(QStringLiteral(FORGE_SOURCE_DIR)));
    }

    Designer()
    {
        bench.open(QStringLiteral(FORGE_SOURCE_DIR "/examples/facade/facade.map"));
        bench.window->show();
        QApplication::setActiveWindow(bench.window.get());
    }

    /// Leaves a picture of a window in the folder that FORGE_PICTURES names, where it does.
    static void shoot(QWidget* window, const char* name)
    {
        const QString folder = qEnvironmentVariable("FORGE_PICTURES");
        if (!folder.isEmpty()) {
            QCoreApplication::processEvents();
            QVERIFY(window->grab().save(QDir(folder).filePath(QString::fromLatin1(name))));
        }
    }

    static void type(QWidget* line, const QString& text)
    {
        line->setFocus();
        QTest::keyClick(line, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(line, Qt::Key_Delete);
        QTest::keyClicks(line, text);
    }
    static void choose(QComboBox* box, const QString& text)
    {
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home);
        while (box->currentText() != text && box->currentIndex() < box->count() - 1) {
            QTest::keyClick(box, Qt::Key_Down);
        }
        QCOMPARE(box->currentText(), text);
    }
    static void click(QWidget* button)
    {
        QVERIFY(button != nullptr && button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
    }
    /// A radio button or check box, at its sign.
    static void mark(QAbstractButton* button)
    {
        QVERIFY(button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton, {}, QPoint(8, button->height() / 2));
        QVERIFY(button->isChecked());
    }

    template <class Panel>
    Panel* panel(const char* name) const
    {
        return bench.window->template findChild<Panel*>(QString::fromLatin1(name));
    }
    TimePanel* start() const { return panel<TimePanel>("startPanel"); }
    TimePanel* end() const { return panel<TimePanel>("endPanel"); }
    /// A control of the present form, by what it is called.
    template <class Control>
    Control* control(const char* name) const
    {
        const auto* const form = bench.window->template findChild<EffectForm*>();
        for (Control* const candidate : form->template findChildren<Control*>()) {
            if (candidate->accessibleName() == QLatin1String(name)) {
                return candidate;
            }
        }
        return nullptr;
    }

    QPushButton* button(const char* text) const
    {
        const auto* const form = bench.window->findChild<EffectForm*>();
        for (QPushButton* const candidate : form->findChildren<QPushButton*>()) {
            // Without the sign of its key.
            if (candidate->text().remove(QLatin1Char('&')) == QLatin1String(text)) {
                return candidate;
            }
        }
        return nullptr;
    }

    /// A new effect of that type, with the group of that name, and a name of its own.
    void create(const QString& typeName, const QString& group, const QString& name,
                const char* picture = nullptr)
    {
        if (QTest::currentTestFailed()) {
            return;
        }
        choose(panel<QComboBox>("effectTypeBox"), typeName);
        bench.dialogs.expect(
            [group, picture](QWidget* dialog) { pickGroup(dialog, group, picture); });
        click(panel<QPushButton>("newEffectButton"));
        setCell(MetaWidget::NameColumn, name);
    }
    static void pickGroup(QWidget* dialog, const QString& group, const char* picture)
    {
        const Closer closer(dialog);
        QVERIFY(qobject_cast<GroupPicker*>(dialog) != nullptr);
        mark(dialog->findChild<QCheckBox*>(QStringLiteral("m_syncBox")));
        auto* const list = dialog->findChild<QTableWidget*>(QStringLiteral("m_groupListView"));
        const QList<QTableWidgetItem*> found = list->findItems(group, Qt::MatchExactly);
        QVERIFY2(found.size() == 1, qPrintable(group));
        list->scrollToItem(found.first());
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {},
                          list->visualItemRect(found.first()).center());
        if (picture != nullptr) {
            shoot(dialog, picture);
        }
        click(dialog->findChild<QPushButton*>(QStringLiteral("m_okButton")));
    }
    /// Of the selected effect.
    void setCell(int column, const QString& text)
    {
        QTableWidget* const table = bench.table();
        QTableWidgetItem* const item = table->item(table->currentRow(), column);
        QVERIFY(item != nullptr);
        table->scrollToItem(item);
        const QPoint place = table->visualItemRect(item).center();
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, place);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, {}, place);
        QLineEdit* const editor = editorOf(table);
        QVERIFY(editor != nullptr);
        type(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        QTRY_VERIFY(editorOf(table) == nullptr);
    }
    static QLineEdit* editorOf(QTableWidget* table)
    {
        for (QLineEdit* const line : table->viewport()->findChildren<QLineEdit*>()) {
            if (line->isVisible()) {
                return line;
            }
        }
        return nullptr;
    }
    void setColor(const char* label, const Rgb& color, const char* picture = nullptr)
    {
        const QByteArray button = QByteArray("Choose Color: ") + label;
        bench.dialogs.expect([color, picture](QWidget* dialog) {
            const Closer closer(dialog);
            auto* const picker = dialog->findChild<VelaColorPickerLib::ColorPickerWidget*>();
            QVERIFY(picker != nullptr);
            const QList<QSpinBox*> boxes =
                dialog->findChild<VelaColorPickerLib::RgbSlidersWidget*>()
                    ->findChildren<QSpinBox*>();
            const int levels[] = {color.r, color.g, color.b};
            for (int i = 0; i < 3; ++i) {
                type(boxes.at(i), QString::number(levels[i]));
                QTest::keyClick(boxes.at(i), Qt::Key_Tab);
            }
            if (picture != nullptr) {
                shoot(dialog, picture);
            }
            click(dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
        });
        click(control<QPushButton>(button.constData()));
    }
    void fixedStart(const QString& seconds)
    {
        mark(start()->fixedButton());
        type(start()->fixedEdit(), seconds);
    }
    void fixedLength(const QString& seconds)
    {
        mark(end()->fixedButton());
        type(end()->fixedEdit(), seconds);
    }
    static void link(TimePanel* panel, bool toStart, const QString& target, const QString& offset)
    {
        mark(panel->linkedButton());
        mark(toStart ? panel->linkStartButton() : panel->linkEndButton());
        choose(panel->targetBox(), target);
        type(panel->offsetEdit(), offset);
    }
    /// Ctrl+S, and the file that is asked for.
    void save(const QString& path)
    {
        bench.dialogs.expectFile(path);
        QApplication::setActiveWindow(bench.window.get());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_S, Qt::ControlModifier);
    }
    QString complaints() const { return bench.dialogs.complaints(); }
};

/// The keys of a saved show's effects, by their names.
inline QHash<QString, QHash<QString, QString>> effectsOf(const QString& path)
{
    QHash<QString, QHash<QString, QString>> effects;
    QDomDocument document;
    document.setContent(WindowBench::text(path));
    const QString tag = QStringLiteral("effect");
    for (QDomElement effect = document.documentElement().firstChildElement(tag); !effect.isNull();
         effect = effect.nextSiblingElement(tag)) {
        QHash<QString, QString> keys;
        for (QDomElement key = effect.firstChildElement(); !key.isNull();
             key = key.nextSiblingElement()) {
            keys.insert(key.tagName(), key.text());
        }
        effects.insert(keys.value(QStringLiteral("name")), keys);
    }
    return effects;
}
