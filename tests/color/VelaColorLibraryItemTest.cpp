#include "color/VelaColorLibraryItem.h"

#include <QDataStream>
#include <QDomDocument>
#include <QObject>
#include <QPointer>
#include <QtTest>

#include <memory>

namespace {

using Item = VelaColorLibraryItem;

QList<int> rows(const Item& owner)
{
    QList<int> found;
    for (int i = 0; i < owner.childCount(); ++i) {
        found << owner.child(i)->row();
    }
    return found;
}

Item* addColor(Item* list, int row, const QString& name, const QString& uid)
{
    auto* const made = new Item(list);
    made->setName(name);
    made->setUid(uid);
    made->setColor(Qt::red);
    list->insertChild(row, made);
    return made;
}

} // namespace

class VelaColorLibraryItemTest : public QObject
{
    Q_OBJECT
private slots:
    void itsDepthTellsItsKind();
    void aNewItemFollowsItsParent();
    void childrenKnowTheirRows();
    void childrenGoWithTheirParent();
    void rolesHoldValues();
    void aListBecomesAnElement();
    void childrenWithoutUidAreLeftOut();
    void otherFormatsGiveNoElement_data();
    void otherFormatsGiveNoElement();
    void aColorWritesItsOwnFormat();
    void otherFormatsAreRefused_data();
    void otherFormatsAreRefused();
};

void VelaColorLibraryItemTest::itsDepthTellsItsKind()
{
    Item root;
    Item list(&root);
    const Item color(&list);
    QVERIFY(!root.isList() && !root.isColor());
    QVERIFY(list.isList() && !list.isColor());
    QVERIFY(!color.isList() && color.isColor());
    QVERIFY(root.parentItem() == nullptr);
    QCOMPARE(color.parentItem(), &list);
    QCOMPARE(list.childCount(), 0); // known, not yet entered
}

void VelaColorLibraryItemTest::aNewItemFollowsItsParent()
{
    Item root;
    QVERIFY(root.isUserLibrary());
    Item list(&root);
    QVERIFY(list.isUserLibrary());
    list.setUserLibrary(false);
    const Item color(&list);
    QVERIFY(!color.isUserLibrary());
    QVERIFY(!color.color().isValid());
    QVERIFY(color.thumbnail().isNull());
    QVERIFY(color.uid().isEmpty() && color.colorId().isEmpty());
    QVERIFY(color.originatingPreset().isEmpty());
}

void VelaColorLibraryItemTest::childrenKnowTheirRows()
{
    Item root;
    auto* const list = new Item(&root);
    root.insertChild(0, list);
    Item* const b = addColor(list, 0, QStringLiteral("b"), QStringLiteral("2"));
    Item* const a = addColor(list, 0, QStringLiteral("a"), QStringLiteral("1"));
    Item* const c = addColor(list, 2, QStringLiteral("c"), QStringLiteral("3"));
    QCOMPARE(list->child(0), a);
    QCOMPARE(list->child(1), b);
    QCOMPARE(list->child(2), c);
    QCOMPARE(rows(*list), QList<int>({0, 1, 2}));
    QVERIFY(list->child(3) == nullptr);
    QVERIFY(list->child(-1) == nullptr);
    const std::unique_ptr<Item> taken(list->takeChild(0));
    QCOMPARE(taken.get(), a);
    QCOMPARE(rows(*list), QList<int>({0, 1}));
    QCOMPARE(c->row(), 1);
}

void VelaColorLibraryItemTest::childrenGoWithTheirParent()
{
    auto root = std::make_unique<Item>();
    auto* const list = new Item(root.get());
    root->insertChild(0, list);
    const QPointer<Item> color = addColor(list, 0, QStringLiteral("a"), QStringLiteral("1"));
    root.reset();
    QVERIFY(color == nullptr);
}

void VelaColorLibraryItemTest::rolesHoldValues()
{
    Item item;
    QVERIFY(!item.role(Qt::UserRole + 5).isValid());
    item.setRole(Qt::UserRole + 5, 1);
    QCOMPARE(item.role(261).toInt(), 1);
}

void VelaColorLibraryItemTest::aListBecomesAnElement()
{
    Item root;
    Item list(&root);
    list.setName(QStringLiteral("L"));
    Item* const color = addColor(&list, 0, QStringLiteral("Red"), QStringLiteral("u"));
    color->setOriginatingPreset(QStringLiteral("P"));
    color->setColorId(QStringLiteral("7"));
    QDomDocument document;
    bool ok = false;
    const QDomElement element = list.toElement(document, QStringLiteral("Sorrel3"), true, &ok);
    QVERIFY(ok);
    QCOMPARE(element.tagName(), QStringLiteral("ColorLibrary"));
    QCOMPARE(element.attribute(QStringLiteral("name")), QStringLiteral("L"));
    QCOMPARE(element.attribute(QStringLiteral("isUserLibrary")), QStringLiteral("1"));
    const QDomElement child = element.firstChildElement();
    QCOMPARE(child.tagName(), QStringLiteral("Color"));
    QCOMPARE(child.attributes().size(), 5);
    QCOMPARE(child.attribute(QStringLiteral("name")), QStringLiteral("Red"));
    QCOMPARE(child.attribute(QStringLiteral("uid")), QStringLiteral("u"));
    QCOMPARE(child.attribute(QStringLiteral("value")), VelaColor(Qt::red).toString());
    QCOMPARE(child.attribute(QStringLiteral("originatingPreset")), QStringLiteral("P"));
    QCOMPARE(child.attribute(QStringLiteral("colorId")), QStringLiteral("7"));
    QCOMPARE(list.toElement(document, QStringLiteral("Sorrel3"), false)
                 .attribute(QStringLiteral("isUserLibrary")),
             QStringLiteral("0"));
}

void VelaColorLibraryItemTest::childrenWithoutUidAreLeftOut()
{
    Item root;
    Item list(&root);
    addColor(&list, 0, QStringLiteral("a"), QString());
    addColor(&list, 1, QStringLiteral("b"), QStringLiteral("u"));
    QDomDocument document;
    const QDomElement element = list.toElement(document, QStringLiteral("Sorrel3"), true);
    QCOMPARE(element.childNodes().size(), 1);
    QCOMPARE(element.firstChildElement().attribute(QStringLiteral("name")), QStringLiteral("b"));
}

void VelaColorLibraryItemTest::otherFormatsGiveNoElement_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("none") << QString();
    QTest::newRow("another") << QStringLiteral("Sorrel2");
    QTest::newRow("another case") << QStringLiteral("sorrel3");
}

void VelaColorLibraryItemTest::otherFormatsGiveNoElement()
{
    QFETCH(const QString, format);
    const Item list;
    QDomDocument document;
    bool ok = true;
    QVERIFY(list.toElement(document, format, true, &ok).isNull());
    QVERIFY(!ok);
    QVERIFY(list.toElement(document, format, true).isNull());
}

void VelaColorLibraryItemTest::aColorWritesItsOwnFormat()
{
    Item color;
    color.setUid(QStringLiteral("u-1"));
    color.setColor(VelaColor(0.31, 0.32));
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    QVERIFY(color.writeFormat(QStringLiteral("data/x-velacolor"), out));
    QDataStream in(bytes);
    QByteArray uid;
    QByteArray value;
    in >> uid >> value;
    QVERIFY(in.atEnd());
    QCOMPARE(uid, QByteArray("u-1"));
    QCOMPARE(value, VelaColor(0.31, 0.32).toString().toLatin1());
}

void VelaColorLibraryItemTest::otherFormatsAreRefused_data()
{
    QTest::addColumn<QString>("format");
    QTest::newRow("none") << QString();
    QTest::newRow("name") << QStringLiteral("data/x-velacolor-name");
    QTest::newRow("older") << QStringLiteral("x-sorrel3/color");
}

void VelaColorLibraryItemTest::otherFormatsAreRefused()
{
    QFETCH(const QString, format);
    const Item color;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    QVERIFY(!color.writeFormat(format, out));
    QVERIFY(bytes.isEmpty());
}

QTEST_MAIN(VelaColorLibraryItemTest)
#include "VelaColorLibraryItemTest.moc"
