#include "Gallery.h"
#include "color/WhiteChart.h"
#include "picker/ColorPickerWidget.h"
#include "resources/Resources.h"

#include <QApplication>
#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QDialog>
#include <QVBoxLayout>

#include <cstdio>

using VelaColorPickerLib::ColorPickerWidget;

namespace {

/// 0 and the colour's text on standard output for OK, 1 for Cancel.
int choose(const VelaColor& first)
{
    QDialog dialog(nullptr,
                   Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    dialog.setWindowTitle(QStringLiteral("Select Color"));
    auto* const box = new QVBoxLayout(&dialog);
    auto* const picker = new ColorPickerWidget(&dialog);
    picker->setMinimumSize(800, 600);
    box->addWidget(picker);
    QObject::connect(picker, &ColorPickerWidget::accepted, &dialog, &QDialog::accept);
    QObject::connect(picker, &ColorPickerWidget::rejected, &dialog, &QDialog::reject);
    picker->setColor(first);
    if (dialog.exec() != QDialog::Accepted) {
        return 1;
    }
    std::puts(picker->color().toString().toLatin1().constData());
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    initForgeResources();

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral(
        "Opens the colour picker in a window and prints the colour it is left with."));
    parser.addHelpOption();
    const QCommandLineOption gallery(
        QStringLiteral("gallery"),
        QStringLiteral("Write the pictures of the documentation to <folder> instead."),
        QStringLiteral("folder"));
    parser.addOption(gallery);
    parser.addPositionalArgument(
        QStringLiteral("color"),
        QStringLiteral("The color to start with, such as \"#ff8000\" or \"aYxy;...\"."),
        QStringLiteral("[color]"));
    parser.process(app);

    WhiteChart::instance();
    if (parser.isSet(gallery)) {
        return writeGallery(parser.value(gallery)) ? 0 : 1;
    }
    const QStringList colors = parser.positionalArguments();
    return choose(colors.isEmpty() ? VelaColor(Qt::white) : VelaColor(colors.first()));
}
