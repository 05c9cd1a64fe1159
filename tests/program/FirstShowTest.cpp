#include "tests/program/Designer.h"

#include <QTemporaryDir>
#include <QtTest>

#include <memory>

/// Follows the chapter docs/first-show.md to the letter, in its order. With FORGE_PICTURES, its
/// pictures are left there.
class FirstShowTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void anEmptyShow();
    void theNight();
    void theSunrise();
    void theStars();
    void theFile();
    void cleanupTestCase() { m_designer.reset(); }

private:
    QTemporaryDir m_dir;
    std::unique_ptr<Designer> m_designer;
};

void FirstShowTest::initTestCase()
{
    Designer::prepare();
    m_designer = std::make_unique<Designer>();
    m_designer->bench.window->resize(1280, 800);
}

void FirstShowTest::anEmptyShow()
{
    QCOMPARE(m_designer->bench.table()->rowCount(), 0);
    Designer::shoot(m_designer->bench.window.get(), "first-show-1.png");
}

void FirstShowTest::theNight()
{
    m_designer->create(QStringLiteral("Fixed Color"), QStringLiteral("Facade"),
                       QStringLiteral("Night"), "first-show-2.png");
    m_designer->setColor("RGB Color", {10, 16, 60}, "first-show-3.png");
    m_designer->fixedLength(QStringLiteral("20"));
    Designer::shoot(m_designer->bench.window.get(), "first-show-4.png");
    QTRY_COMPARE(m_designer->bench.totalTime()->text(), QStringLiteral("20.000000"));
}

void FirstShowTest::theSunrise()
{
    m_designer->create(QStringLiteral("Sweep"), QStringLiteral("Floors, bottom to top"),
                       QStringLiteral("Sunrise"));
    m_designer->setColor("Sweep Color", {255, 120, 20});
    Designer::type(m_designer->control<QLineEdit>("Cycle Time (sec)"), QStringLiteral("5"));
    if (!m_designer->control<QCheckBox>("Background Color Trans")->isChecked()) {
        Designer::mark(m_designer->control<QCheckBox>("Background Color Trans"));
    }
    m_designer->fixedStart(QStringLiteral("2"));
    Designer::type(m_designer->end()->cyclesSpin(), QStringLiteral("2"));
    m_designer->setCell(MetaWidget::PriorityColumn, QStringLiteral("1"));
    Designer::shoot(m_designer->bench.window.get(), "first-show-5.png");
}

void FirstShowTest::theStars()
{
    m_designer->create(QStringLiteral("Sparkle"), QStringLiteral("Upper Tier"),
                       QStringLiteral("Stars"));
    if (!m_designer->control<QCheckBox>("Background Color Transparent")->isChecked()) {
        Designer::mark(m_designer->control<QCheckBox>("Background Color Transparent"));
    }
    m_designer->setColor("Sparkle Color", {255, 240, 200});
    Designer::link(m_designer->start(), false, QStringLiteral("Sunrise"), QStringLiteral("0"));
    Designer::link(m_designer->end(), false, QStringLiteral("Night"), QStringLiteral("0"));
    m_designer->setCell(MetaWidget::PriorityColumn, QStringLiteral("2"));
    m_designer->setCell(MetaWidget::FadeInColumn, QStringLiteral("2"));
    Designer::shoot(m_designer->bench.window.get(), "first-show-6.png");
}

void FirstShowTest::theFile()
{
    const QString path = m_dir.filePath(QStringLiteral("first.sho"));
    m_designer->save(path);
    QCOMPARE(m_designer->complaints(), QString());
    const auto effects = effectsOf(path);
    const auto value = [&effects](const char* effect, const char* key) {
        return effects.value(QString::fromLatin1(effect)).value(QString::fromLatin1(key));
    };
    QCOMPARE(effects.size(), 3);
    QCOMPARE(value("Night", "end"), QStringLiteral("20000"));
    QCOMPARE(value("Sunrise", "begin"), QStringLiteral("2000"));
    QCOMPARE(value("Sunrise", "end"), QStringLiteral("12000"));
    QCOMPARE(value("Stars", "begin"), QStringLiteral("12000"));
    QCOMPARE(value("Stars", "end"), QStringLiteral("20000"));
    QCOMPARE(value("Stars", "fadein"), QStringLiteral("2000"));
    QCOMPARE(value("Stars", "priority"), QStringLiteral("2"));
}

QTEST_MAIN(FirstShowTest)
#include "FirstShowTest.moc"
