#include "editor/GroupPicker.h"

#include "map/Group.h"
#include "tests/editor/EditorStage.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QSignalSpy>

namespace {

/// Counts how often it is compiled.
class CountingEffect : public MetaEffect
{
public:
    using MetaEffect::MetaEffect;
    bool compile() override
    {
        ++compilations;
        return MetaEffect::compile();
    }

    int compilations = 0;
};

} // namespace

/// The dialog that assigns an effect to a group.
class GroupPickerTest : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void theDialogStandsAsStated();
    void theListHoldsWhatIsNotLeafOrSynchronized();
    void theBoxAddsTheSynchronizedGroups();
    void theBoxLeadsBackToTheFirstRow();
    void theListHasTheOrderOfTheModel();
    void eachKindHasItsPicture();
    void nothingIsEditable();
    void headersSort();
    void aClickWritesThrough();
    void everyPickIsCompiled();
    void aDoubleClickPicksAndAccepts();
    void okTakesTheSelectedRow();
    void theKeyboardPicksToo();
    void okWithoutARowStillAccepts();
    void cancelRejectsAndLeavesTheGroup_data();
    void cancelRejectsAndLeavesTheGroup();
    void anEmptyModelChangesNothing();
    void anIdBeyond32BitsIsRead32Bits();
    void anEffectThatGoesIsForgotten();
    void aMapThatIsReplacedIsNoMatter();

private:
    void open(const QString& xml);
    int rowOf(const QString& name) const;
    void click(int row) const;
    QTableWidget* list() const
    {
        return m_picker->findChild<QTableWidget*>(QStringLiteral("m_groupListView"));
    }
    QCheckBox* syncBox() const { return m_picker->findChild<QCheckBox*>(); }
    QPushButton* button(const char* name) const
    {
        return m_picker->findChild<QPushButton*>(QString::fromLatin1(name));
    }
    QStringList column(int column) const
    {
        QStringList texts;
        for (int row = 0; row < list()->rowCount(); ++row) {
            texts.append(list()->item(row, column)->text());
        }
        return texts;
    }
    static QString group(int type, quint64 uid, const char* name)
    {
        return QStringLiteral("<group><type>%1</type><self>%2</self><name>%3</name>"
                              "<child>A1</child></group>")
            .arg(type)
            .arg(uid, 0, 16)
            .arg(QString::fromLatin1(name));
    }

    EditorStage m_stage;
    Root m_show;
    Effect* m_effect = nullptr; // the show's
    std::unique_ptr<GroupPicker> m_picker;
};

void GroupPickerTest::init()
{
    open(group(1, 0x10, "Arcade") + group(2, 0x20, "Beam") + group(3, 0x30, "Corner") +
         group(0, 0x40, "Dome") + group(9, 0x50, "Eaves") + group(1, 0x100000010, "Far"));
}

void GroupPickerTest::cleanup()
{
    m_picker.reset();
    m_show.reset();
    m_effect = nullptr;
}

void GroupPickerTest::open(const QString& xml)
{
    m_picker.reset();
    QVERIFY(m_stage.loadMap(
        QStringLiteral("<map><version>1</version><light><self>A1</self></light>%1</map>")
            .arg(xml)));
    m_show = m_stage.parse(EditorStage::effectXml(1, QStringLiteral("<gid>77</gid>")));
    m_effect = m_show->effectByEid(1);
    m_picker = std::make_unique<GroupPicker>(m_stage.model.get(), m_effect, nullptr);
    m_picker->show();
    QVERIFY(QTest::qWaitForWindowActive(m_picker.get()));
}

int GroupPickerTest::rowOf(const QString& name) const
{
    return column(0).indexOf(name);
}

void GroupPickerTest::click(int row) const
{
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier,
                      list()->visualItemRect(list()->item(row, 1)).center());
}

void GroupPickerTest::theDialogStandsAsStated()
{
    QCOMPARE(m_picker->windowTitle(), QStringLiteral("Group Picker"));
    QVERIFY(m_picker->windowFlags() & Qt::WindowStaysOnTopHint);
    QVERIFY(!(m_picker->windowFlags() & Qt::WindowContextHelpButtonHint));
    QCOMPARE(list()->columnCount(), 3);
    QStringList headers;
    for (int i = 0; i < 3; ++i) {
        headers.append(list()->horizontalHeaderItem(i)->text());
        QCOMPARE(list()->isColumnHidden(i), i == 2);
    }
    QCOMPARE(headers,
             QStringList({QStringLiteral("Name"), QStringLiteral("Type"), QStringLiteral("GID")}));
    QVERIFY(list()->verticalHeader()->isHidden());
    QVERIFY(list()->isSortingEnabled());
    QCOMPARE(syncBox()->text(), QStringLiteral("Display Synchronized Groups"));
    QVERIFY(!syncBox()->isChecked());
    QCOMPARE(button("m_okButton")->text(), QStringLiteral("&OK"));
    QCOMPARE(button("m_cancelButton")->text(), QStringLiteral("&Cancel"));
    QCOMPARE(button("m_cancelButton")->shortcut(), QKeySequence(QStringLiteral("Alt+C")));
    QCOMPARE(list()->currentRow(), 0);
    QVERIFY(list()->item(0, 0)->isSelected());
    QCOMPARE(m_effect->gid(), 77U); // opening it picks nothing
}

void GroupPickerTest::theListHoldsWhatIsNotLeafOrSynchronized()
{
    QStringList names = column(0);
    names.sort();
    QCOMPARE(names, QStringList({QStringLiteral("Arcade"), QStringLiteral("Dome"),
                                 QStringLiteral("Eaves"), QStringLiteral("Far")}));
    QCOMPARE(list()->item(rowOf(QStringLiteral("Arcade")), 1)->text(), QStringLiteral("Chasing"));
    QCOMPARE(list()->item(rowOf(QStringLiteral("Dome")), 1)->text(), QStringLiteral("Unknown"));
    QCOMPARE(list()->item(rowOf(QStringLiteral("Eaves")), 1)->text(), QStringLiteral("Unknown"));
    QCOMPARE(list()->item(rowOf(QStringLiteral("Arcade")), 2)->text(), QStringLiteral("16"));
    QCOMPARE(list()->item(rowOf(QStringLiteral("Far")), 2)->text(), QStringLiteral("4294967312"));
}

void GroupPickerTest::theBoxAddsTheSynchronizedGroups()
{
    EditorStage::click(syncBox());
    QCOMPARE(list()->rowCount(), 5);
    const int row = rowOf(QStringLiteral("Beam"));
    QVERIFY(row >= 0);
    QCOMPARE(list()->item(row, 1)->text(), QStringLiteral("Synchronized"));
    QVERIFY(rowOf(QStringLiteral("Corner")) < 0); // a leaf never
    EditorStage::click(syncBox());
    QVERIFY(rowOf(QStringLiteral("Beam")) < 0);
}

void GroupPickerTest::theBoxLeadsBackToTheFirstRow()
{
    click(2);
    const quint64 picked = m_effect->gid();
    EditorStage::click(syncBox());
    QCOMPARE(list()->currentRow(), 0);
    QCOMPARE(list()->selectionModel()->selectedRows().size(), 1);
    QCOMPARE(m_effect->gid(), picked); // listing picks nothing
    QVERIFY(list()->isSortingEnabled());
}

void GroupPickerTest::theListHasTheOrderOfTheModel()
{
    EditorStage::click(syncBox());
    QStringList expected;
    const QHash<quint64, Group*> groups = m_stage.model->groupsHash();
    for (auto entry = groups.cbegin(); entry != groups.cend(); ++entry) {
        if (entry.value()->type() != Group::Leaf) {
            expected.append(entry.value()->name());
        }
    }
    QCOMPARE(column(0), expected);
}

void GroupPickerTest::eachKindHasItsPicture()
{
    EditorStage::click(syncBox());
    QList<QImage> pictures;
    for (const char* const name : {"Arcade", "Beam", "Dome"}) {
        const QIcon icon = list()->item(rowOf(QString::fromLatin1(name)), 0)->icon();
        QCOMPARE(icon.availableSizes(), QList<QSize>{QSize(16, 16)});
        const QImage picture = icon.pixmap(16).toImage();
        QVERIFY(!pictures.contains(picture));
        pictures.append(picture);
    }
    const auto key = [this](const char* name) {
        return list()->item(rowOf(QString::fromLatin1(name)), 0)->icon().cacheKey();
    };
    QCOMPARE(key("Dome"), key("Eaves")); // both unknown
    QCOMPARE(key("Arcade"), key("Far"));
    const qint64 first = key("Arcade");
    m_picker = std::make_unique<GroupPicker>(m_stage.model.get(), m_effect, nullptr);
    QCOMPARE(key("Arcade"), first); // drawn once for the process
}

void GroupPickerTest::nothingIsEditable()
{
    for (int i = 0; i < 3; ++i) {
        QVERIFY(!(list()->item(0, i)->flags() & Qt::ItemIsEditable));
    }
}

void GroupPickerTest::headersSort()
{
    QHeaderView* const header = list()->horizontalHeader();
    const QPoint place(header->sectionViewportPosition(0) + header->sectionSize(0) / 2,
                       header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QStringList sorted = column(0);
    sorted.sort();
    if (header->sortIndicatorOrder() == Qt::DescendingOrder) {
        std::reverse(sorted.begin(), sorted.end());
    }
    QCOMPARE(header->sortIndicatorSection(), 0);
    QCOMPARE(column(0), sorted);
    click(rowOf(QStringLiteral("Dome"))); // the row under the mouse, wherever it stands
    QCOMPARE(m_effect->gid(), 0x40U);
}

void GroupPickerTest::aClickWritesThrough()
{
    click(rowOf(QStringLiteral("Arcade")));
    QCOMPARE(m_effect->gid(), 0x10U);
    QVERIFY(m_effect->compiled());
    QVERIFY(m_picker->isVisible());
    click(rowOf(QStringLiteral("Eaves")));
    QCOMPARE(m_effect->gid(), 0x50U);
    QVERIFY(m_picker->isVisible());
}

void GroupPickerTest::everyPickIsCompiled()
{
    CountingEffect effect(m_stage.model.get(), 77, nullptr);
    m_picker = std::make_unique<GroupPicker>(m_stage.model.get(), &effect, nullptr);
    m_picker->show();
    QCOMPARE(effect.compilations, 0);
    click(rowOf(QStringLiteral("Dome")));
    QCOMPARE(effect.compilations, 1);
    QTest::mouseClick(button("m_okButton"), Qt::LeftButton);
    QCOMPARE(effect.compilations, 2);
    m_picker->show();
    m_picker->handleDoubleClicked(list()->item(rowOf(QStringLiteral("Eaves")), 1));
    QCOMPARE(effect.compilations, 3);
    QCOMPARE(effect.gid(), 0x50U);
    m_picker.reset(); // ahead of its effect
}

void GroupPickerTest::aDoubleClickPicksAndAccepts()
{
    QSignalSpy accepted(m_picker.get(), &QDialog::accepted);
    const int row = rowOf(QStringLiteral("Dome"));
    const QPoint place = list()->visualItemRect(list()->item(row, 0)).center();
    QTest::mouseClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QTest::mouseDClick(list()->viewport(), Qt::LeftButton, Qt::NoModifier, place);
    QCOMPARE(m_effect->gid(), 0x40U);
    QCOMPARE(accepted.count(), 1);
    QVERIFY(!m_picker->isVisible());
}

void GroupPickerTest::okTakesTheSelectedRow()
{
    QSignalSpy accepted(m_picker.get(), &QDialog::accepted);
    list()->selectRow(rowOf(QStringLiteral("Eaves"))); // without a click
    QCOMPARE(m_effect->gid(), 77U);
    QTest::mouseClick(button("m_okButton"), Qt::LeftButton);
    QCOMPARE(m_effect->gid(), 0x50U);
    QCOMPARE(accepted.count(), 1);
}

void GroupPickerTest::theKeyboardPicksToo()
{
    QSignalSpy accepted(m_picker.get(), &QDialog::accepted);
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Down);
    const quint64 second = list()->item(1, 2)->text().toULongLong();
    QTest::keyClick(m_picker.get(), Qt::Key_O, Qt::AltModifier);
    QTRY_COMPARE(accepted.count(), 1); // the button is seen to go down
    QCOMPARE(m_effect->gid(), second > 0xFFFFFFFFU ? 0U : second);
}

void GroupPickerTest::okWithoutARowStillAccepts()
{
    QSignalSpy accepted(m_picker.get(), &QDialog::accepted);
    list()->clearSelection();
    QTest::mouseClick(button("m_okButton"), Qt::LeftButton);
    QCOMPARE(m_effect->gid(), 77U);
    QCOMPARE(accepted.count(), 1);
}

void GroupPickerTest::cancelRejectsAndLeavesTheGroup_data()
{
    QTest::addColumn<int>("key"); // 0: the button
    QTest::addColumn<int>("modifier");
    QTest::newRow("button") << 0 << 0;
    QTest::newRow("shortcut") << static_cast<int>(Qt::Key_C) << static_cast<int>(Qt::AltModifier);
    QTest::newRow("escape") << static_cast<int>(Qt::Key_Escape) << 0;
}

void GroupPickerTest::cancelRejectsAndLeavesTheGroup()
{
    QFETCH(const int, key);
    QFETCH(const int, modifier);
    QSignalSpy rejected(m_picker.get(), &QDialog::rejected);
    click(rowOf(QStringLiteral("Arcade")));
    if (key == 0) {
        QTest::mouseClick(button("m_cancelButton"), Qt::LeftButton);
    } else {
        QTest::keyClick(m_picker.get(), static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifier));
    }
    QTRY_COMPARE(rejected.count(), 1);
    QCOMPARE(m_effect->gid(), 0x10U); // whoever opened it puts the former one back
}

void GroupPickerTest::anEmptyModelChangesNothing()
{
    open(QString());
    QCOMPARE(list()->rowCount(), 0);
    EditorStage::click(syncBox());
    QCOMPARE(list()->rowCount(), 0);
    QSignalSpy accepted(m_picker.get(), &QDialog::accepted);
    QTest::mouseClick(button("m_okButton"), Qt::LeftButton);
    QCOMPARE(accepted.count(), 1);
    QCOMPARE(m_effect->gid(), 77U);
}

void GroupPickerTest::anIdBeyond32BitsIsRead32Bits()
{
    click(rowOf(QStringLiteral("Far")));
    QCOMPARE(m_effect->gid(), 0U); // no number of 32 bits
    QVERIFY(m_stage.model->group(0x100000010) != nullptr);
}

void GroupPickerTest::anEffectThatGoesIsForgotten()
{
    m_show->removeEffect(m_effect);
    delete m_effect;
    m_effect = nullptr;
    click(0);
    QSignalSpy accepted(m_picker.get(), &QDialog::accepted);
    QTest::mouseClick(button("m_okButton"), Qt::LeftButton);
    QCOMPARE(accepted.count(), 1);
}

void GroupPickerTest::aMapThatIsReplacedIsNoMatter()
{
    const int row = rowOf(QStringLiteral("Dome"));
    QVERIFY(m_stage.model->clear());
    click(row);
    QCOMPARE(m_effect->gid(), 0x40U); // as listed; that group is gone
    EditorStage::click(syncBox());
    QCOMPARE(list()->rowCount(), 0);
}

QTEST_MAIN(GroupPickerTest)
#include "GroupPickerTest.moc"
