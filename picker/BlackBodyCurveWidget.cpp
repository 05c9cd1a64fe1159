#include "picker/BlackBodyCurveWidget.h"

#include "color/ColorUtils.h"
#include "color/WhiteChart.h"
#include "picker/ColorTrack.h"

#include <QKeyEvent>
#include <QLineF>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace VelaColorPickerLib {

namespace {

constexpr double kOnCurveDistance = 0.001;
constexpr int kWheelStep = 120; // eighths of a degree
constexpr int kWheelKelvin = 50;
constexpr int kPageKelvin = 100;
constexpr int kLocusStep = 10;

// The ends of the bins of temperature, in kelvin.
constexpr int kBinEnds[] = {1900, 2000, 2100, 2200, 2300, 2400, 2500, 2700, 2850, 3000,  3250, 3500,
                            3750, 4000, 4500, 5000, 5500, 5700, 6000, 6500, 8000, 10000, 11000};
constexpr int kBinCount = static_cast<int>(sizeof kBinEnds / sizeof kBinEnds[0]) - 1;

QPointF whitePoint(int cct, int tint)
{
    double x = 0.0;
    double y = 0.0;
    ColorUtils::cctTintToXy(cct, tint, &x, &y);
    return {x, y};
}

/// The temperature of the locus point nearest to a chromaticity. Not xyToCctTint: that is not
/// one-to-one along the locus, so that steps would come back to where they began.
int nearestLocusCct(const QPointF& xy)
{
    int best = ColorUtils::minimumCct();
    double bestDistance = std::numeric_limits<double>::infinity();
    for (int cct = ColorUtils::minimumCct(); cct <= ColorUtils::maximumCct(); cct += kLocusStep) {
        const QPointF locus = whitePoint(cct, 0);
        const double away = ColorUtils::deltaUv(xy.x(), xy.y(), locus.x(), locus.y());
        if (away < bestDistance) {
            bestDistance = away;
            best = cct;
        }
    }
    return best;
}

} // namespace

BlackBodyCurveWidget::BlackBodyCurveWidget(QWidget* parent)
    : QWidget(parent)
    , m_viewRect(WhiteChart::instance().chartRect())
{
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::CrossCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("White chart"));
    setAccessibleDescription(tr("Chromaticity chart of whites with the black-body curve"));
    setToolTip(tr("Drag the marker to a white. The wheel goes along the black-body curve, with "
                  "Shift across it; Home goes onto it."));
    setChromaticity(whitePoint(4000, 0));
}

QSize BlackBodyCurveWidget::sizeHint() const
{
    const int width = fontMetrics().height() * 32;
    return {width, static_cast<int>(width * std::abs(m_viewRect.height() / m_viewRect.width()))};
}

QSize BlackBodyCurveWidget::minimumSizeHint() const
{
    return {fontMetrics().height() * 12, fontMetrics().height() * 9};
}

QPoint BlackBodyCurveWidget::pixelOf(const QPointF& xy) const
{
    return WhiteChart::instance().pixelAt(xy, rect());
}

QPoint BlackBodyCurveWidget::markerPixel() const
{
    const QPoint pixel = pixelOf(m_chromaticity);
    return {std::clamp(pixel.x(), 0, std::max(width() - 1, 0)),
            std::clamp(pixel.y(), 0, std::max(height() - 1, 0))};
}

double BlackBodyCurveWidget::markerRadius() const
{
    return fontMetrics().height() / 2.0;
}

QRect BlackBodyCurveWidget::markerRect() const
{
    const int reach = static_cast<int>(markerRadius()) + 3;
    return QRect(markerPixel(), QSize(1, 1)).adjusted(-reach, -reach, reach, reach);
}

void BlackBodyCurveWidget::setChromaticity(const QPointF& xy)
{
    if (!std::isfinite(xy.x()) || !std::isfinite(xy.y())) {
        return;
    }
    QRegion dirty(markerRect());
    const QRect oldBin = m_bin.boundingRect();
    const QPolygon bin = m_bin;
    m_chromaticity = xy;
    m_isOnCurve = isOnBlackBodyCurve(VelaColor(xy.x(), xy.y()));
    m_bin = currentBin();
    m_binSize = size();
    if (m_bin != bin) {
        dirty += oldBin.adjusted(-2, -2, 2, 2);
        dirty += m_bin.boundingRect().adjusted(-2, -2, 2, 2);
    }
    dirty += markerRect();
    update(dirty);
}

bool BlackBodyCurveWidget::isOnBlackBodyCurve(const VelaColor& color)
{
    const VelaColor xyY = color.toYxy(0, -1, -1);
    int cct = 0;
    int tint = 0;
    double x = 0.0;
    double y = 0.0;
    return ColorUtils::xyToCctTint(xyY.smallX(), xyY.smallY(), &cct, &tint) &&
           ColorUtils::cctToXy(cct, &x, &y) &&
           ColorUtils::deltaUv(xyY.smallX(), xyY.smallY(), x, y) < kOnCurveDistance;
}

QPolygon BlackBodyCurveWidget::binOutline(int cct0, int cct1, int tint, const QRect& image)
{
    const WhiteChart& chart = WhiteChart::instance();
    QPolygon outline;
    outline << chart.pixelOf(cct0, 0, image) << chart.pixelOf(cct0, tint, image)
            << chart.pixelOf(cct1, tint, image) << chart.pixelOf(cct1, 0, image);
    outline << outline.first();
    return outline;
}

QPolygon BlackBodyCurveWidget::currentBin() const
{
    for (int i = 0; i < kBinCount; ++i) {
        for (const int tint : {ColorUtils::maximumTint(), ColorUtils::minimumTint()}) {
            const QPolygonF bin({whitePoint(kBinEnds[i], 0), whitePoint(kBinEnds[i], tint),
                                 whitePoint(kBinEnds[i + 1], tint),
                                 whitePoint(kBinEnds[i + 1], 0)});
            if (bin.containsPoint(m_chromaticity, Qt::OddEvenFill)) {
                return binOutline(kBinEnds[i], kBinEnds[i + 1], tint, rect());
            }
        }
    }
    return QPolygon();
}

void BlackBodyCurveWidget::buildField()
{
    WhiteChart& chart = WhiteChart::instance();
    const QSize pixels = size() * devicePixelRatioF();
    QImage field(pixels, QImage::Format_ARGB32_Premultiplied);
    field.fill(QColor(0x30, 0x30, 0x30));
    QPainter painter(&field);
    painter.drawImage(
        0, 0, chart.mainImage().scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    painter.end();
    field.setDevicePixelRatio(devicePixelRatioF());

    painter.begin(&field);
    painter.setRenderHint(QPainter::Antialiasing);
    // What no slider reaches steps back.
    QPolygon area;
    for (const QPointF& point : chart.outline()) {
        area << pixelOf(point);
    }
    QPainterPath outside;
    outside.addRect(QRectF(rect()));
    QPainterPath inside;
    inside.addPolygon(area);
    inside.closeSubpath();
    painter.fillPath(outside.subtracted(inside), QColor(0x30, 0x30, 0x30, 0xD8));

    // At wide steps: whole pixels at narrow ones would make a staircase.
    QPolygon locus;
    for (int i = 0; i < kBinCount; ++i) {
        locus << pixelOf(whitePoint(kBinEnds[i], 0))
              << pixelOf(whitePoint((kBinEnds[i] + kBinEnds[i + 1]) / 2, 0));
    }
    locus << pixelOf(whitePoint(kBinEnds[kBinCount], 0));
    painter.translate(0.5, 0.5);
    painter.setPen(QPen(Qt::black, 1.5));
    painter.drawPolyline(locus);
    painter.end();
    m_field = QPixmap::fromImage(field);
}

void BlackBodyCurveWidget::paintEvent(QPaintEvent* /*event*/)
{
    if (m_field.size() != size() * devicePixelRatioF()) {
        buildField();
    }
    if (m_binSize != size()) {
        m_bin = currentBin();
        m_binSize = size();
    }
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_field);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.save();
    painter.translate(0.5, 0.5);
    painter.setPen(QPen(QColor(0, 0, 0, 0x90), 1.0));
    painter.drawPolyline(m_bin);
    paintMarkerRings(&painter, markerPixel(), markerRadius(), m_isOnCurve);
    painter.restore();
    if (hasFocus()) {
        painter.setPen(QPen(palette().color(QPalette::Highlight), 2.0));
        painter.drawRect(QRectF(rect()).adjusted(1.0, 1.0, -1.0, -1.0));
    }
}

void BlackBodyCurveWidget::moveByUser(const QPointF& xy)
{
    setChromaticity(WhiteChart::instance().nearestPoint(xy));
    emit colorChanged(VelaColor(m_chromaticity.x(), m_chromaticity.y()));
}

void BlackBodyCurveWidget::moveBy(const QPointF& step)
{
    moveByUser(m_chromaticity + step);
}

void BlackBodyCurveWidget::moveToPixel(const QPoint& pixel)
{
    moveByUser(WhiteChart::instance().chromaticityAt(pixel, rect()));
}

void BlackBodyCurveWidget::moveAlongLocus(int kelvin)
{
    const int from = nearestLocusCct(m_chromaticity);
    const int to = std::clamp(from + kelvin, ColorUtils::minimumCct(), ColorUtils::maximumCct());
    moveBy(whitePoint(to, 0) - whitePoint(from, 0));
}

void BlackBodyCurveWidget::moveAcrossLocus(int steps)
{
    const int cct = nearestLocusCct(m_chromaticity);
    const QLineF across(whitePoint(cct, 0), whitePoint(cct, ColorUtils::maximumTint()));
    moveBy((across.p2() - across.p1()) / across.length() * kStep * steps);
}

void BlackBodyCurveWidget::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    moveToPixel(event->pos());
}

void BlackBodyCurveWidget::mouseMoveEvent(QMouseEvent* event)
{
    if ((event->buttons() & Qt::LeftButton) == 0) {
        event->ignore();
        return;
    }
    moveToPixel(event->pos());
}

void BlackBodyCurveWidget::wheelEvent(QWheelEvent* event)
{
    const QPoint angle = event->angleDelta();
    const bool isAcross =
        event->modifiers().testFlag(Qt::ShiftModifier) || std::abs(angle.x()) > std::abs(angle.y());
    m_wheelAngle += std::abs(angle.x()) > std::abs(angle.y()) ? angle.x() : angle.y();
    const int steps = m_wheelAngle / kWheelStep;
    m_wheelAngle -= steps * kWheelStep;
    if (steps != 0 && isAcross) {
        moveAcrossLocus(steps);
    } else if (steps != 0) {
        moveAlongLocus(steps * kWheelKelvin);
    }
    event->accept();
}

void BlackBodyCurveWidget::keyPressEvent(QKeyEvent* event)
{
    const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? kStep / 4.0 : kStep;
    switch (event->key()) {
    case Qt::Key_Left:
        moveBy({-step, 0.0});
        break;
    case Qt::Key_Right:
        moveBy({step, 0.0});
        break;
    case Qt::Key_Up:
        moveBy({0.0, step});
        break;
    case Qt::Key_Down:
        moveBy({0.0, -step});
        break;
    case Qt::Key_PageUp:
        moveAlongLocus(kPageKelvin);
        break;
    case Qt::Key_PageDown:
        moveAlongLocus(-kPageKelvin);
        break;
    case Qt::Key_Home:
        moveByUser(whitePoint(nearestLocusCct(m_chromaticity), 0));
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

} // namespace VelaColorPickerLib
