#include "app/SplashScreen.h"

#include "app/VersionInfo.h"

#include <QFont>
#include <QFontMetrics>
#include <QPainter>
#include <QPixmap>

SplashScreen::SplashScreen(const QPixmap& picture)
    : QSplashScreen(picture, Qt::WindowStaysOnTopHint)
{
    // Any message makes the base class call drawContents; the text itself is not drawn.
    showMessage(QStringLiteral("none"), Qt::AlignLeft, Qt::black);
}

void SplashScreen::killSplash()
{
    finish(this);
}

void SplashScreen::drawContents(QPainter* painter)
{
    painter->save();
    const QFont font(QStringLiteral("Verdana"), 8, QFont::Normal);
    painter->setFont(font);
    painter->setPen(Qt::white);
    const int fontHeight = QFontMetrics(font).height();
    QRect line(0, height() - 20, width(), height() - 20 + fontHeight);
    painter->drawText(line, Qt::AlignHCenter, VersionInfo::noticeLine());
    line.moveTop(height() - 22 - fontHeight);
    painter->drawText(line, Qt::AlignHCenter, VersionInfo::versionLine());
    painter->restore();
}
