#include "app/AboutDialog.h"

#include "app/VersionInfo.h"

#include <QEvent>
#include <QFont>
#include <QLabel>
#include <QPalette>
#include <QPixmap>
#include <QVBoxLayout>

namespace {

QLabel* addLine(QWidget* parent, QVBoxLayout* layout, const QString& text)
{
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignCenter);
    label->setFont(QFont(QStringLiteral("Verdana"), 8));
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, Qt::white); // the picture is dark in every palette
    label->setPalette(palette);
    layout->addWidget(label);
    return label;
}

} // namespace

AboutDialog::AboutDialog(QWidget* parent)
    : QDialog(parent, Qt::SplashScreen | Qt::FramelessWindowHint)
{
    setModal(true);
    setStyleSheet(QStringLiteral("QDialog { background-image: url(:/images/splash.png); }"));
    const QSize size = QPixmap(QStringLiteral(":/images/splash.png")).size();
    setMinimumSize(size);
    setMaximumSize(size);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(33, 4, 8, 20);
    layout->setSpacing(0);
    layout->addStretch();
    addLine(this, layout, VersionInfo::versionLine())->setObjectName(QStringLiteral("version"));
    addLine(this, layout, VersionInfo::noticeLine())->setObjectName(QStringLiteral("notice"));
    installEventFilter(this);
}

bool AboutDialog::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        close();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}
