#include "color/XmlDepth.h"

#include <QObject>
#include <QtTest>

Q_DECLARE_METATYPE(XmlShape)

namespace {

QByteArray nested(int depth, const QByteArray& inner = {})
{
    return QByteArray("<b>").repeated(depth) + inner + QByteArray("</b>").repeated(depth);
}

} // namespace

class XmlDepthTest : public QObject
{
    Q_OBJECT
private slots:
    void documentsHaveShapes_data();
    void documentsHaveShapes();
};

void XmlDepthTest::documentsHaveShapes_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<XmlShape>("shape");
    const auto row = [](const char* name, const QByteArray& text, XmlShape shape) {
        QTest::newRow(name) << text << shape;
    };
    const XmlShape plain = XmlShape::Plain;
    const XmlShape deep = XmlShape::TooDeep;
    const XmlShape special = XmlShape::Special;
    row("nothing", "", plain);
    row("1000 deep", nested(1000), plain);
    row("1001 deep", nested(1001), deep);
    row("1000 deep again and again", "<a>" + nested(999).repeated(5) + "</a>", plain);
    row("empty elements don't nest", "<a>" + QByteArray("<b/>").repeated(5000) + "</a>", plain);
    row("empty elements with blanks", "<a>" + QByteArray("<b />").repeated(5000) + "</a>", plain);
    row("an empty element at the bottom", nested(1000, "<b/>"), plain);
    row("tags in comments", "<a><!--" + QByteArray("<b>").repeated(5000) + "--></a>", plain);
    row("tags behind comments", "<a><!-- -- > -->" + nested(1000) + "</a>", deep);
    row("tags in CDATA", "<a><![CDATA[" + QByteArray("<b>").repeated(5000) + "]]></a>", plain);
    row("tags behind CDATA", "<a><![CDATA[]]>" + nested(1000) + "</a>", deep);
    row("tags in instructions", "<a><?p " + QByteArray("<b>").repeated(5000) + "?></a>", plain);
    row("quotes that hold what ends a tag",
        QByteArray("<b c='/>' d=\"'/>\">").repeated(1001) + QByteArray("</b>").repeated(1001),
        deep);
    row("a slash in front of what isn't the end", QByteArray("<b c='/'>").repeated(1001), deep);
    row("cut within a tag", "<a><b", plain);
    row("cut within a comment", "<a><!-- ", plain);
    row("cut within quotes", "<a b='", plain);
    row("a byte order mark", "\xEF\xBB\xBF<a/>", plain);
    row("the five entities", "<a>&amp;&lt;&gt;&quot;&apos;&#65;&#x41;</a>", plain);
    row("another entity", "<a>&b;</a>", special);
    row("a lone ampersand", "<a>&</a>", special);
    row("a document type", "<!DOCTYPE a><a/>", special);
    row("a document type, deep", "<!DOCTYPE a>" + nested(1001), deep);
    row("a declaration", "<?xml version='1.0'?><a/>", special);
    row("a declaration, deep", "<?xml version='1.0'?>" + nested(1001), deep);
    row("NUL", QByteArray("<a>\0</a>", 8), special);
    row("UTF-16", QByteArray::fromHex("fffe3c0061002f003e00"), special);
    row("deep behind an error", "<a></b>" + nested(5000), deep); // refused either way
    row("special, deep behind an error", "<!DOCTYPE a><a></b>" + nested(5000), special);
}

void XmlDepthTest::documentsHaveShapes()
{
    QFETCH(const QByteArray, text);
    QFETCH(const XmlShape, shape);
    QCOMPARE(xmlShape(text), shape);
}

QTEST_GUILESS_MAIN(XmlDepthTest)

#include "XmlDepthTest.moc"
