#include "tests/program/Designer.h"

#include <QScrollArea>
#include <QSet>
#include <QtTest>

/// Every form in the main window, as a designer meets it. With FORGE_PICTURES, a picture of each is
/// left there.
class FormGalleryTest : public QObject
{
    Q_OBJECT
private slots:
    void everyFormFitsTheWindow();
};

void FormGalleryTest::everyFormFitsTheWindow()
{
    Designer::prepare();
    WindowBench bench;
    bench.open(QStringLiteral("examples/facade/facade.map"),
               QStringLiteral("examples/facade/all-effects.sho"));
    bench.window->resize(1280, 800);
    bench.window->show();
    QTableWidget* const table = bench.table();
    QSet<QByteArray> forms;
    for (int row = 0; row < table->rowCount(); ++row) {
        table->setCurrentCell(row, MetaWidget::NameColumn);
        QCoreApplication::processEvents(); // the old form goes, the new one is laid out
        const auto* const form = bench.window->findChild<EffectForm*>();
        QVERIFY(form != nullptr);
        const QByteArray name = form->metaObject()->className();
        if (forms.contains(name)) {
            continue;
        }
        forms.insert(name);
        const QSize size = bench.window->size();
        QVERIFY2(size == QSize(1280, 800), qPrintable(QStringLiteral("%1: %2 x %3")
                                                          .arg(QString::fromLatin1(name))
                                                          .arg(size.width())
                                                          .arg(size.height())));
        const QSize needed = form->minimumSizeHint();
        QVERIFY2(form->width() >= needed.width() && form->height() >= needed.height(),
                 name.constData());
        Designer::shoot(bench.window.get(),
                        "form-" + name.left(name.size() - int(sizeof "Widget") + 1) + ".png");
    }
    QCOMPARE(forms.size(), 17);
    QCOMPARE(bench.dialogs.complaints(), QString());
}

QTEST_MAIN(FormGalleryTest)
#include "FormGalleryTest.moc"
