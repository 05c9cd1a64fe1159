#pragma once

#include <QSplashScreen>

class QPainter;
class QPixmap;

/// The picture that stands on the screen while the window is built, with version and notice.
class SplashScreen : public QSplashScreen
{
    Q_OBJECT
public:
    explicit SplashScreen(const QPixmap& picture);

public slots:
    void killSplash();

protected:
    void drawContents(QPainter* painter) override;
};
