#include "tools/mapgen/Artwork.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

#include <cmath>

namespace Artwork {

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr int kGullWidth = 140; // five pixels for each window of the facade
constexpr int kGullHeight = 90;
constexpr int kWheelSize = 120;

/// A ridge of waves across the picture, filled to the ground.
void drawRidge(QPainter* painter, double base, double swing, double waves, double shift,
               const QColor& top, const QColor& foot)
{
    QPainterPath ridge;
    ridge.moveTo(0, kHillsHeight);
    for (int x = 0; x <= kHillsWidth; x += 2) {
        const double way = 2.0 * kPi * x / kHillsWidth;
        const double y = base - swing * (std::sin(waves * way + shift) +
                                         0.4 * std::sin(2.7 * waves * way + 2.0 * shift));
        ridge.lineTo(x, y);
    }
    ridge.lineTo(kHillsWidth, kHillsHeight);
    ridge.closeSubpath();
    QLinearGradient fill(0, base - swing, 0, kHillsHeight);
    fill.setColorAt(0.0, top);
    fill.setColorAt(1.0, foot);
    painter->fillPath(ridge, fill);
}

void drawDisc(QPainter* painter, const QPointF& centre, double radius, const QColor& color)
{
    QColor halo = color;
    halo.setAlpha(110);
    QColor edge = color;
    edge.setAlpha(0);
    QRadialGradient glow(centre, radius * 2.4);
    glow.setColorAt(0.0, halo);
    glow.setColorAt(1.0, edge);
    painter->setPen(Qt::NoPen);
    painter->setBrush(glow);
    painter->drawEllipse(centre, radius * 2.4, radius * 2.4);
    painter->setBrush(color);
    painter->drawEllipse(centre, radius, radius);
}

/// One wing, from the body outward; `lift` is 1.0 with the wings up and -1.0 with them down.
QPainterPath wing(double lift, double side)
{
    const QPointF root(side * 4.0, 0.0);
    const QPointF wrist(side * 30.0, -12.0 - 16.0 * lift);
    const QPointF tip(side * 64.0, -2.0 - 26.0 * lift + 8.0 * std::abs(lift));
    QPainterPath path;
    path.moveTo(root + QPointF(0.0, -7.0));
    path.quadTo(wrist + QPointF(-side * 6.0, -11.0), wrist + QPointF(0.0, -7.0));
    path.quadTo(tip + QPointF(-side * 14.0, -11.0), tip);
    path.quadTo(tip + QPointF(-side * 18.0, 9.0), wrist + QPointF(0.0, 12.0));
    path.quadTo(wrist + QPointF(-side * 14.0, 16.0), root + QPointF(0.0, 13.0));
    path.closeSubpath();
    return path;
}

/// Hard edges: a pixel is the gull's, or black and clear.
QImage gullFrame(int frame)
{
    const double beat = 2.0 * kPi * frame / kFilmFrames;
    const double lift = std::cos(beat);
    QImage image(kGullWidth, kGullHeight, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    // The body sinks while the wings rise.
    painter.translate(kGullWidth / 2.0, kGullHeight / 2.0 + 6.0 * lift);
    painter.setPen(Qt::NoPen);
    for (const double side : {-1.0, 1.0}) {
        QLinearGradient feathers(0.0, 0.0, side * 64.0, 0.0);
        feathers.setColorAt(0.0, QColor(255, 244, 220));
        feathers.setColorAt(0.5, QColor(255, 196, 120));
        feathers.setColorAt(1.0, QColor(255, 84, 62));
        painter.fillPath(wing(lift, side), feathers);
    }
    painter.setBrush(QColor(255, 246, 226));
    painter.drawEllipse(QPointF(0.0, 2.0), 8.0, 13.0);
    painter.setBrush(QColor(255, 150, 40));
    painter.drawEllipse(QPointF(0.0, 16.0), 6.0, 6.0); // the fanned tail
    return image;
}

QImage wheelFrame(int frame)
{
    constexpr int kVanes = 6;
    constexpr int kAlike = kVanes / 2; // every second vane has another colour
    const QPointF centre(kWheelSize / 2.0, kWheelSize / 2.0);
    QImage image(kWheelSize, kWheelSize, QImage::Format_RGB32);
    image.fill(QColor(10, 12, 60));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(centre);
    painter.rotate(360.0 / kAlike * frame / kFilmFrames);
    for (int vane = 0; vane < kVanes; ++vane) {
        QPainterPath path;
        path.moveTo(0.0, 0.0);
        path.cubicTo(QPointF(22.0, -8.0), QPointF(40.0, -34.0), QPointF(44.0, -66.0));
        path.lineTo(QPointF(76.0, -24.0));
        path.cubicTo(QPointF(68.0, 2.0), QPointF(44.0, 14.0), QPointF(0.0, 0.0));
        QRadialGradient glass(QPointF(0.0, 0.0), 64.0);
        glass.setColorAt(0.2, QColor(255, 232, 170));
        glass.setColorAt(0.55, vane % 2 == 0 ? QColor(255, 132, 56) : QColor(44, 236, 200));
        glass.setColorAt(1.0, vane % 2 == 0 ? QColor(240, 36, 120) : QColor(30, 100, 255));
        painter.fillPath(path, glass);
        painter.rotate(360.0 / kVanes);
    }
    return image;
}

QVector<NamedPicture> film(const QString& folder, QImage (*frameAt)(int))
{
    QVector<NamedPicture> frames;
    for (int i = 0; i < kFilmFrames; ++i) { // numbered without zeros: players count the digits
        frames.append({QStringLiteral("%1/%1-%2").arg(folder).arg(i + 1), frameAt(i)});
    }
    return frames;
}

} // namespace

QImage hills()
{
    QImage image(kHillsWidth, kHillsHeight, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QLinearGradient hour(0, 0, kHillsWidth, 0); // the sun goes down from left to right
    hour.setColorAt(0.0, QColor(255, 122, 40));
    hour.setColorAt(0.35, QColor(255, 56, 112));
    hour.setColorAt(0.7, QColor(116, 44, 214));
    hour.setColorAt(1.0, QColor(30, 62, 214));
    painter.fillRect(image.rect(), hour);
    QLinearGradient height(0, 0, 0, kHillsHeight);
    height.setColorAt(0.0, QColor(40, 30, 170, 120));
    height.setColorAt(0.6, QColor(40, 30, 170, 0));
    painter.fillRect(image.rect(), height);
    drawDisc(&painter, QPointF(62.0, 24.0), 10.0, QColor(255, 232, 150));
    drawDisc(&painter, QPointF(252.0, 16.0), 7.0, QColor(224, 236, 255));
    drawRidge(&painter, 38.0, 5.0, 3.0, 0.6, QColor(150, 30, 150), QColor(84, 16, 116));
    drawRidge(&painter, 46.0, 4.0, 4.0, 2.2, QColor(14, 190, 180), QColor(6, 84, 120));
    painter.end();
    return image;
}

QVector<NamedPicture> gull(const QString& folder)
{
    return film(folder, gullFrame);
}

QImage rosette()
{
    constexpr double kMiddle = kRosetteSize / 2.0;
    constexpr int kPetals = 8;
    QImage image(kRosetteSize, kRosetteSize, QImage::Format_RGB32);
    image.fill(QColor(16, 12, 70));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(kMiddle, kMiddle);
    painter.setPen(Qt::NoPen);
    const auto petals = [&painter](double from, double to, double width, const QColor& inner,
                                   const QColor& outer, double turn) {
        for (int i = 0; i < kPetals; ++i) {
            painter.save();
            painter.rotate(360.0 / kPetals * (i + turn));
            QLinearGradient glass(0.0, -from, 0.0, -to);
            glass.setColorAt(0.0, inner);
            glass.setColorAt(1.0, outer);
            painter.setBrush(glass);
            painter.drawEllipse(QPointF(0.0, -(from + to) / 2.0), width, (to - from) / 2.0);
            painter.restore();
        }
    };
    petals(26.0, 72.0, 15.0, QColor(24, 70, 240), QColor(52, 240, 208), 0.5);
    petals(14.0, 64.0, 8.0, QColor(255, 40, 90), QColor(255, 170, 60), 0.0);
    petals(4.0, 34.0, 6.0, QColor(255, 226, 150), QColor(255, 120, 190), 0.5);
    painter.setBrush(QColor(255, 240, 200));
    painter.drawEllipse(QPointF(0.0, 0.0), 9.0, 9.0);
    painter.end();
    return image;
}

QVector<NamedPicture> wheel(const QString& folder)
{
    return film(folder, wheelFrame);
}

} // namespace Artwork
