#include "tests/editor/EditorStage.h"

/// What becomes of an open cell and of a form when the show changes meanwhile.
class MetaWidgetMeanwhileTest : public QObject
{
    Q_OBJECT
private slots:
    void aTypeChangeTakesOverAnOpenCell_data();
    void aTypeChangeTakesOverAnOpenCell();
    void aFormStaysWhenTheEffectOfAFormerOneGoes();
};

void MetaWidgetMeanwhileTest::aTypeChangeTakesOverAnOpenCell_data()
{
    QTest::addColumn<int>("changed"); // the row whose type changes, while the first is edited
    QTest::newRow("of the same effect") << 0;
    QTest::newRow("of another effect") << 1;
}

void MetaWidgetMeanwhileTest::aTypeChangeTakesOverAnOpenCell()
{
    QFETCH(const int, changed);
    EditorStage stage;
    QSettings(QStringLiteral("Halden"), QStringLiteral("Pageant Forge"))
        .setValue(QStringLiteral("askeffectchange"), false);
    stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    QLineEdit* const editor = stage.openCell(0, MetaWidget::PriorityColumn);
    QVERIFY(editor != nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("7x"));
    QTest::keyClick(editor, Qt::Key_Backspace);
    stage.typeBox(changed)->setCurrentText(QStringLiteral("Cross Fade"));
    QCOMPARE(stage.effect(unsigned(changed) + 1)->type(), QStringLiteral("Cross Fade"));
    QCOMPARE(stage.effect(1)->priority(), 7U);
    QCOMPARE(stage.text(0, MetaWidget::PriorityColumn), QStringLiteral("7"));
    QVERIFY(stage.widget->isModified());
}

void MetaWidgetMeanwhileTest::aFormStaysWhenTheEffectOfAFormerOneGoes()
{
    EditorStage stage;
    stage.open(EditorStage::effectXml(1) + EditorStage::effectXml(2));
    stage.select(0);
    stage.select(1);
    Effect* const former = stage.effect(1);
    stage.root->removeEffect(former);
    delete former; // its form waits to be deleted
    const auto* const frame = stage.widget->findChild<QWidget*>(QStringLiteral("parameterFrame"));
    const QList<QWidget*> forms =
        frame->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(forms.size(), 1);
    QVERIFY(forms.first()->isVisible());
}

QTEST_MAIN(MetaWidgetMeanwhileTest)
#include "MetaWidgetMeanwhileTest.moc"
