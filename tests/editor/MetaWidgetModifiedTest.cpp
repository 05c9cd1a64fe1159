#include "color/VelaColor.h"
#include "editor/EffectForm.h"
#include "picker/RgbPickerWidget.h"
#include "tests/editor/EditorStage.h"

#include <QCheckBox>
#include <QSlider>
#include <QTextStream>

using VelaColorPickerLib::RgbPickerWidget;

namespace {

/// The first control of a form that can be worked and is of class `Control`.
template <typename Control>
Control* control(const QWidget* form)
{
    const QList<Control*> all = form->findChildren<Control*>();
    for (Control* const each : all) {
        if (each->isVisible() && each->isEnabled()) {
            return each;
        }
    }
    return nullptr;
}

} // namespace

/// The show's modified flag, where an effect's form changes the show.
class MetaWidgetModifiedTest : public QObject
{
    Q_OBJECT
private slots:
    void aParameterMarksTheShow_data();
    void aParameterMarksTheShow();
    void aChosenColorMarksTheShow();
    void aCancelledColorDoesNot();
    void lookingAtAFormDoesNot();
    void playingDoesNot();
    void pastingBesideAFormDoesNot();
    void aSavedParameterIsNoChange();
    void theMarkCanBeTakenBack();
    void theMarkOutlivesTheForm();
    void theMarkOutlivesTheShow();
    void theMarkOutlivesTheSelection();

private:
    QWidget* form() const { return m_stage.widget->findChild<EffectForm*>(); }
    void open(const char* type)
    {
        m_stage.open(EditorStage::effectXml(1, QString(), type) + EditorStage::effectXml(2));
        m_stage.select(0);
        QVERIFY(form() != nullptr);
        QVERIFY(!m_stage.widget->isModified());
    }
    void typeATime() const
    {
        EditorStage::typeText(control<QLineEdit>(form()), QStringLiteral("7"));
    }
    void save() const
    {
        QString text;
        QTextStream stream(&text);
        m_stage.widget->writeShow(stream);
    }

    EditorStage m_stage;
};

void MetaWidgetModifiedTest::aParameterMarksTheShow_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("control");
    QTest::newRow("a time") << QByteArray("Sweep") << QByteArray("line");
    QTest::newRow("a mark") << QByteArray("Sweep") << QByteArray("check");
    QTest::newRow("a width") << QByteArray("Streak") << QByteArray("spin");
    QTest::newRow("a level") << QByteArray("White Fixed Color") << QByteArray("slider");
    QTest::newRow("a choice") << QByteArray("White Fixed Color") << QByteArray("combo");
    QTest::newRow("one of two") << QByteArray("XYSpiral") << QByteArray("radio");
    QTest::newRow("a list's length") << QByteArray("Custom Rainbow") << QByteArray("button");
    QTest::newRow("a folder") << QByteArray("Animation") << QByteArray("line");
    QTest::newRow("a text") << QByteArray("Text") << QByteArray("line");
}

void MetaWidgetModifiedTest::aParameterMarksTheShow()
{
    QFETCH(const QByteArray, type);
    QFETCH(const QByteArray, control);
    open(type.constData());
    if (control == "line") {
        typeATime();
    } else if (control == "check") {
        EditorStage::click(::control<QCheckBox>(form()));
    } else if (control == "spin") {
        QTest::keyClick(::control<QSpinBox>(form()), Qt::Key_Up);
    } else if (control == "slider") {
        auto* const slider = ::control<QSlider>(form());
        slider->setValue(slider->maximum() / 2);
        QTest::keyClick(slider, Qt::Key_Right);
    } else if (control == "combo") {
        QTest::keyClick(::control<QComboBox>(form()), Qt::Key_Down);
    } else if (control == "radio") {
        for (QRadioButton* const radio : form()->findChildren<QRadioButton*>()) {
            if (!radio->isChecked()) {
                EditorStage::click(radio);
                break;
            }
        }
    } else {
        EditorStage::click(::control<QPushButton>(form()));
    }
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::aChosenColorMarksTheShow()
{
    open("Fixed Color");
    bool isMarkedAtOnce = false;
    whenDialogOpens<QDialog>([&](QDialog* dialog) {
        emit dialog->findChild<RgbPickerWidget*>()->colorChanged(VelaColor(QColor(10, 200, 30)),
                                                                 QString());
        isMarkedAtOnce = m_stage.widget->isModified();
        dialog->accept();
    });
    EditorStage::click(control<QPushButton>(form()));
    QVERIFY(isMarkedAtOnce);
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::aCancelledColorDoesNot()
{
    open("Fixed Color");
    whenDialogOpens<QDialog>([](QDialog* dialog) {
        emit dialog->findChild<RgbPickerWidget*>()->colorChanged(VelaColor(QColor(10, 200, 30)),
                                                                 QString());
        dialog->reject();
    });
    EditorStage::click(control<QPushButton>(form()));
    QVERIFY(!m_stage.widget->isModified()); // the former colour is back
}

void MetaWidgetModifiedTest::lookingAtAFormDoesNot()
{
    QString children;
    int count = 0;
    const QStringList types = EffectFactory::effectTypeNames();
    for (const QString& type : types) {
        children += EditorStage::effectXml(++count, QStringLiteral("<cycletime>2.5</cycletime>"),
                                           type.toLatin1().constData());
    }
    m_stage.open(children);
    for (int row = 0; row < count; ++row) {
        m_stage.select(row);
        QVERIFY2(!m_stage.widget->isModified(), qPrintable(m_stage.text(row, 1)));
    }
    m_stage.table()->clearSelection();
    m_stage.widget->rebuildTable();
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::playingDoesNot()
{
    m_stage.open(EditorStage::effectXml(
        1, QStringLiteral("<gid>4096</gid><endfixedtime>9000</endfixedtime><fadein>8000</fadein>"),
        "Streak"));
    m_stage.root->updateEffectTimes();
    m_stage.select(0);
    m_stage.root->setActive(true);
    m_stage.root->tick(qint64(1000000), 1);
    m_stage.root->restart();
    m_stage.root->tick(qint64(1000025), 2);
    m_stage.root->tick(qint64(1002000), 3);
    QVERIFY(m_stage.effect(1)->active());
    QVERIFY(m_stage.effect(1)->transparency() > 0.0); // saved, too, but not the user's doing
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::pastingBesideAFormDoesNot()
{
    m_stage.open(EditorStage::effectXml(1, EditorStage::startsAt(2), "Sweep"));
    m_stage.select(0);
    m_stage.widget->handleCopyEffect();
    m_stage.widget->handlePasteEffect(); // a pass: the times are worked out anew
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::aSavedParameterIsNoChange()
{
    open("Sweep");
    typeATime();
    save();
    QVERIFY(!m_stage.widget->isModified());
    EditorStage::click(control<QCheckBox>(form())); // of the same form
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::theMarkCanBeTakenBack()
{
    open("Sweep");
    typeATime();
    m_stage.widget->setModified(false);
    QVERIFY(!m_stage.widget->isModified());
    m_stage.widget->setModified(true);
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::theMarkOutlivesTheForm()
{
    open("Sweep");
    typeATime();
    m_stage.select(1);
    QVERIFY(m_stage.widget->isModified());
    m_stage.select(0); // the changed effect is what is looked at first now
    QVERIFY(m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::theMarkOutlivesTheShow()
{
    open("Sweep");
    typeATime();
    Root other = m_stage.parse(EditorStage::effectXml(5));
    m_stage.widget->setMetaEffect(other.get());
    m_stage.widget->rebuildTable();
    m_stage.root = std::move(other);
    QVERIFY(m_stage.widget->isModified()); // as after any other edit: only a save clears it
    save();
    QVERIFY(!m_stage.widget->isModified());
}

void MetaWidgetModifiedTest::theMarkOutlivesTheSelection()
{
    open("Sweep");
    m_stage.table()->clearSelection(); // the form stays, and works
    typeATime();
    QVERIFY(m_stage.widget->isModified());
}

QTEST_MAIN(MetaWidgetModifiedTest)
#include "MetaWidgetModifiedTest.moc"
