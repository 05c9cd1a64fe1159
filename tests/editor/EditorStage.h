#pragma once

#include "editor/MetaWidget.h"
#include "editor/TimePanel.h"
#include "effects/RegisterEffects.h"
#include "engine/EffectFactory.h"
#include "engine/MetaEffect.h"
#include "map/MapModel.h"
#include "resources/Resources.h"
#include "tests/output/SilentSocket.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDialog>
#include <QFile>
#include <QGroupBox>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QSettings>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <functional>
#include <memory>

struct RootDeleter
{
    void operator()(MetaEffect* root) const { root->deleteShow(); }
};
using Root = std::unique_ptr<MetaEffect, RootDeleter>;

/// Calls `answer` with the modal dialog that the test is about to open, of class `Dialog`; with
/// null for one of another class. One that is still open after that is rejected, so that no test
/// hangs.
template <typename Dialog = QDialog>
void whenDialogOpens(const std::function<void(Dialog*)>& answer)
{
    auto* timer = new QTimer(qApp);
    timer->setInterval(1);
    QObject::connect(timer, &QTimer::timeout, timer, [timer, answer] {
        const QPointer<QDialog> any(qobject_cast<QDialog*>(QApplication::activeModalWidget()));
        if (any.isNull() || !any->isVisible()) {
            return;
        }
        timer->stop();
        timer->deleteLater();
        answer(qobject_cast<Dialog*>(any.data()));
        if (!any.isNull() && any->isVisible()) {
            any->reject();
        }
    });
    timer->start();
}

/// A MetaWidget over a show on a small map, and short ways to what it shows.
class EditorStage
{
public:
    static constexpr quint64 kFacade = 0x1000; // a synchronized group
    static constexpr quint64 kSteps = 0x1001;  // a chase

    EditorStage()
    {
        static const QTemporaryDir kSettings;
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, kSettings.path());
        initForgeResources();
        registerEffects();
        model = std::make_unique<MapModel>(std::make_unique<SilentSocket>());
        loadMap(mapXml());
    }
    ~EditorStage()
    {
        widget.reset();
        root.reset();
    }
    EditorStage(const EditorStage&) = delete;
    EditorStage& operator=(const EditorStage&) = delete;

    static QString mapXml()
    {
        return QStringLiteral(
            "<map><version>1</version><light><self>A1</self><x>1</x><y>1</y></light>"
            "<group><type>3</type><self>A1</self><child>A1</child></group>"
            "<group><type>2</type><self>1000</self><name>Facade</name><child>A1</child></group>"
            "<group><type>1</type><self>1001</self><name>Steps</name><child>A1</child></group>"
            "</map>");
    }
    bool loadMap(const QString& xml)
    {
        QFile file(m_dir.filePath(QStringLiteral("site.map")));
        if (!file.open(QIODevice::WriteOnly)) {
            return false;
        }
        file.write(xml.toUtf8());
        file.close();
        return model->clear() && model->load(file.fileName());
    }
    static QString effectXml(int eid, const QString& more = QString(),
                             const char* type = "Fixed Color")
    {
        return QStringLiteral("<effect><type>%1</type><name>E%2</name><eid>%2</eid>%3</effect>")
            .arg(QString::fromLatin1(type))
            .arg(eid)
            .arg(more);
    }
    /// Keys of an effect whose start follows another one's.
    static QString startsAt(int eid)
    {
        return QStringLiteral("<starttype>1</starttype><startlinkeid>%1</startlinkeid>").arg(eid);
    }
    static QString endsAt(int eid)
    {
        return QStringLiteral("<endtype>1</endtype><endlinkeid>%1</endlinkeid>").arg(eid);
    }
    Root parse(const QString& children) const
    {
        return Root(EffectFactory::parseShow(
            QStringLiteral("<effect><type>Meta Effect</type>%1</effect>").arg(children),
            model.get()));
    }
    /// A shown widget over a show of these effects.
    void open(const QString& children = QString())
    {
        widget.reset();
        root = parse(children);
        widget = std::make_unique<MetaWidget>(root.get(), model.get(), nullptr);
        widget->rebuildTable();
        widget->resize(1200, 800);
        widget->show();
        QVERIFY(QTest::qWaitForWindowActive(widget.get()));
    }

    QTableWidget* table() const
    {
        return widget->findChild<QTableWidget*>(QStringLiteral("effectTable"));
    }
    QTableWidgetItem* item(int row, int column) const { return table()->item(row, column); }
    QString text(int row, int column) const { return item(row, column)->text(); }
    QVariant value(int row, int column) const { return item(row, column)->data(Qt::EditRole); }
    QStringList column(int column) const
    {
        QStringList list;
        for (int row = 0; row < table()->rowCount(); ++row) {
            list.append(text(row, column));
        }
        return list;
    }
    QComboBox* typeBox(int row) const
    {
        return qobject_cast<QComboBox*>(table()->cellWidget(row, MetaWidget::TypeColumn));
    }
    QList<int> selectedRows() const
    {
        QList<int> rows;
        const QModelIndexList whole = table()->selectionModel()->selectedRows();
        for (const QModelIndex& index : whole) {
            rows.append(index.row());
        }
        return rows;
    }
    void select(int row) const { table()->setCurrentCell(row, MetaWidget::EidColumn); }
    void clickCell(int row, int column, Qt::MouseButton button = Qt::LeftButton,
                   Qt::KeyboardModifiers keys = Qt::NoModifier) const
    {
        QTest::mouseClick(table()->viewport(), button, keys,
                          table()->visualItemRect(item(row, column)).center());
    }
    /// Opens the editor of a cell by a double click; null if it doesn't open.
    QLineEdit* openCell(int row, int column) const
    {
        const QPoint place = table()->visualItemRect(item(row, column)).center();
        QTest::mouseClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(table()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
        const QList<QLineEdit*> editors = table()->viewport()->findChildren<QLineEdit*>();
        return editors.isEmpty() ? nullptr : editors.last();
    }
    /// Types a text into a cell, and Return.
    bool typeInto(int row, int column, const QString& typed) const
    {
        QLineEdit* const editor = openCell(row, column);
        if (editor == nullptr) {
            return false;
        }
        editor->selectAll();
        if (typed.isEmpty()) {
            QTest::keyClick(editor, Qt::Key_Delete);
        }
        QTest::keyClicks(editor, typed);
        QTest::keyClick(editor, Qt::Key_Return);
        QCoreApplication::processEvents(); // the text is taken over behind the key
        return true;
    }
    static void typeText(QLineEdit* line, const QString& typed)
    {
        line->selectAll();
        if (typed.isEmpty()) {
            QTest::keyClick(line, Qt::Key_Delete);
        }
        QTest::keyClicks(line, typed);
    }
    static void click(QAbstractButton* button)
    {
        QTest::mouseClick(button, Qt::LeftButton, Qt::NoModifier, QPoint(8, button->height() / 2));
    }
    QPushButton* button(const char* name) const
    {
        return widget->findChild<QPushButton*>(QString::fromLatin1(name));
    }
    TimePanel* start() const { return widget->findChild<TimePanel*>(QStringLiteral("startPanel")); }
    TimePanel* end() const { return widget->findChild<TimePanel*>(QStringLiteral("endPanel")); }
    QGroupBox* parameterBox() const
    {
        return widget->findChild<QGroupBox*>(QStringLiteral("parameterBox"));
    }
    Effect* effect(quint32 eid) const { return root->effectByEid(eid); }
    static QString targets(const TimePanel* panel)
    {
        QStringList names;
        for (int i = 0; i < panel->targetBox()->count(); ++i) {
            names.append(panel->targetBox()->itemText(i));
        }
        return names.join(QLatin1Char(' '));
    }

    std::unique_ptr<MapModel> model;
    Root root;
    std::unique_ptr<MetaWidget> widget;

private:
    QTemporaryDir m_dir;
};
