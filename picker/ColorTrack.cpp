#include "picker/ColorTrack.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QStyle>

#include <algorithm>
#include <cmath>
#include <utility>

namespace VelaColorPickerLib {

namespace {

constexpr int kFocusMargin = 3; // around the bar, for the focus frame

} // namespace

void paintMarkerRings(QPainter* painter, const QPointF& center, double radius, bool dotted)
{
    const double ring = std::max(1.5, radius / 8.0);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setBrush(Qt::NoBrush);
    painter->setPen(QPen(Qt::black, ring));
    painter->drawEllipse(center, radius, radius);
    painter->setPen(QPen(Qt::white, ring));
    painter->drawEllipse(center, radius - ring, radius - ring);
    if (dotted) {
        painter->setPen(QPen(Qt::white, 1.0));
        painter->setBrush(Qt::black);
        painter->drawEllipse(center, 2.0, 2.0);
    }
    painter->restore();
}

ColorTrack::ColorTrack(QWidget* parent)
    : QSlider(Qt::Horizontal, parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void ColorTrack::setColorAt(ColorAt colorAt)
{
    m_colorAt = std::move(colorAt);
    refresh();
}

void ColorTrack::setStops(int stops)
{
    m_stops = stops;
    refresh();
}

void ColorTrack::refresh()
{
    m_track = QImage();
    update();
}

int ColorTrack::barHeight() const
{
    return fontMetrics().height() * 5 / 4;
}

QRect ColorTrack::bar() const
{
    const int top = (height() - barHeight()) / 2;
    return {kFocusMargin, top, std::max(width() - 2 * kFocusMargin, 1), barHeight()};
}

int ColorTrack::valueAt(int x) const
{
    const int radius = barHeight() / 2; // the marker stays within the bar
    const QRect inner = bar().adjusted(radius, 0, -radius, 0);
    return QStyle::sliderValueFromPosition(minimum(), maximum(), x - inner.left(),
                                           std::max(inner.width() - 1, 1));
}

int ColorTrack::xOf(int value) const
{
    const int radius = barHeight() / 2;
    const QRect inner = bar().adjusted(radius, 0, -radius, 0);
    return inner.left() + QStyle::sliderPositionFromValue(minimum(), maximum(), value,
                                                          std::max(inner.width() - 1, 1));
}

QSize ColorTrack::sizeHint() const
{
    return {barHeight() * 8, barHeight() + 2 * kFocusMargin};
}

QSize ColorTrack::minimumSizeHint() const
{
    return {barHeight() * 3, barHeight() + 2 * kFocusMargin};
}

void ColorTrack::buildTrack(int width)
{
    m_track = QImage(width, 1, QImage::Format_ARGB32_Premultiplied);
    m_track.fill(Qt::transparent);
    auto* const line = reinterpret_cast<QRgb*>(m_track.scanLine(0));
    if (!m_colorAt) {
        std::fill_n(line, width, palette().color(QPalette::Mid).rgb());
        return;
    }
    const double perPixel = static_cast<double>(bar().width()) / width;
    if (m_stops < 2) {
        for (int column = 0; column < width; ++column) {
            const int x = bar().left() + static_cast<int>(column * perPixel);
            line[column] = qPremultiply(m_colorAt(valueAt(x)).rgba());
        }
        return;
    }
    const int first = xOf(minimum());
    const int last = xOf(maximum());
    QLinearGradient gradient((first - bar().left()) / perPixel, 0.0,
                             (last - bar().left()) / perPixel, 0.0);
    for (int stop = 0; stop < m_stops; ++stop) {
        const double share = static_cast<double>(stop) / (m_stops - 1);
        const int value =
            minimum() + static_cast<int>(std::lround((maximum() - minimum()) * share));
        gradient.setColorAt(share, m_colorAt(value));
    }
    QPainter painter(&m_track);
    painter.fillRect(m_track.rect(), gradient);
}

void ColorTrack::paintEvent(QPaintEvent* /*event*/)
{
    const QRect place = bar();
    const int pixels = std::max(1, static_cast<int>(place.width() * devicePixelRatioF()));
    if (m_track.width() != pixels) {
        buildTrack(pixels);
    }
    QPainter painter(this);
    if (!isEnabled()) {
        painter.setOpacity(0.4);
    }
    // Where the colours let it through, the ground of every clear colour shows.
    painter.drawTiledPixmap(place, QPixmap(QStringLiteral(":/images/TransparentBackground.png")));
    painter.drawImage(place, m_track);
    painter.setPen(palette().color(QPalette::Dark));
    painter.drawRect(place.adjusted(0, 0, -1, -1));
    const double radius = barHeight() / 2.0 - 2.0;
    paintMarkerRings(&painter, QPointF(xOf(value()) + 0.5, place.top() + barHeight() / 2.0), radius,
                     false);
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
        painter.drawRect(place.adjusted(-2, -2, 2, 2));
    }
}

void ColorTrack::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setSliderDown(true);
    setSliderPosition(valueAt(event->pos().x()));
    event->accept();
}

void ColorTrack::mouseMoveEvent(QMouseEvent* event)
{
    if (!isSliderDown()) {
        event->ignore();
        return;
    }
    setSliderPosition(valueAt(event->pos().x()));
    event->accept();
}

void ColorTrack::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !isSliderDown()) {
        event->ignore();
        return;
    }
    setSliderDown(false);
    event->accept();
}

} // namespace VelaColorPickerLib
