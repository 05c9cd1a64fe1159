#include "tools/mapgen/PlanPainter.h"

#include <QLinearGradient>
#include <QRadialGradient>

#include <cmath>

QVector<double> steps(double from, double below, double step)
{
    QVector<double> values;
    const int count = static_cast<int>(std::ceil((below - from) / step));
    for (int i = 0; i < count; ++i) {
        values.append(from + i * step);
    }
    return values;
}

PlanPainter::PlanPainter(int width, int height, quint32 seed)
    : m_image(width, height, QImage::Format_RGB32)
    , m_random(seed)
{
    m_image.fill(Qt::black);
    m_painter.begin(&m_image);
    m_painter.setRenderHint(QPainter::Antialiasing);
}

void PlanPainter::fillDown(const QRectF& area, const QColor& top, const QColor& bottom)
{
    QLinearGradient gradient(area.topLeft(), area.bottomLeft());
    gradient.setColorAt(0.0, top);
    gradient.setColorAt(1.0, bottom);
    m_painter.fillRect(area, gradient);
}

void PlanPainter::fillAcross(const QRectF& area, const QColor& left, const QColor& right)
{
    QLinearGradient gradient(area.topLeft(), area.topRight());
    gradient.setColorAt(0.0, left);
    gradient.setColorAt(1.0, right);
    m_painter.fillRect(area, gradient);
}

void PlanPainter::fill(const QRectF& area, const QColor& color)
{
    m_painter.fillRect(area, color);
}

void PlanPainter::line(double x1, double y1, double x2, double y2, const QColor& color,
                       double width)
{
    m_painter.setPen(QPen(color, width));
    m_painter.drawLine(QPointF(x1, y1), QPointF(x2, y2));
}

void PlanPainter::glow(const QPointF& centre, double radius, const QColor& color)
{
    QColor edge = color;
    edge.setAlpha(0);
    QRadialGradient gradient(centre, radius);
    gradient.setColorAt(0.0, color);
    gradient.setColorAt(1.0, edge);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(gradient);
    m_painter.drawEllipse(centre, radius, radius);
    m_painter.setBrush(Qt::NoBrush);
}

void PlanPainter::stars(const QRectF& area, int count)
{
    m_painter.setPen(Qt::NoPen);
    for (int i = 0; i < count; ++i) {
        const double x = area.left() + area.width() * chance(1000) / 1000.0;
        const double y = area.top() + area.height() * chance(1000) / 1000.0;
        m_painter.setBrush(QColor(214, 222, 255, 30 + chance(110)));
        const double radius = 0.5 + chance(60) / 100.0;
        m_painter.drawEllipse(QPointF(x, y), radius, radius);
    }
    m_painter.setBrush(Qt::NoBrush);
}

void PlanPainter::vignette(int alpha)
{
    const QPointF centre(width() / 2.0, height() / 2.0);
    QRadialGradient gradient(centre, width() * 0.72);
    gradient.setColorAt(0.0, QColor(0, 0, 0, 0));
    gradient.setColorAt(0.62, QColor(0, 0, 0, 0));
    gradient.setColorAt(1.0, QColor(0, 0, 0, alpha));
    m_painter.fillRect(m_image.rect(), gradient);
}

int PlanPainter::chance(int below)
{
    return static_cast<int>(m_random() % static_cast<quint32>(below));
}

QImage PlanPainter::take()
{
    m_painter.end();
    return m_image;
}
