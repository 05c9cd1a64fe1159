#pragma once

#include <QColor>
#include <QImage>
#include <QPainter>
#include <QRectF>
#include <QVector>

#include <random>

/// `from`, `from` + `step`, ... below `below`.
QVector<double> steps(double from, double below, double step);

/// A plan picture in the making: the strokes that our plans share, over an image without text, so
/// that no installed font changes it. Chance comes from a seed alone.
class PlanPainter
{
public:
    PlanPainter(int width, int height, quint32 seed);

    QPainter& painter() { return m_painter; }
    int width() const { return m_image.width(); }
    int height() const { return m_image.height(); }

    void fillDown(const QRectF& area, const QColor& top, const QColor& bottom);
    void fillAcross(const QRectF& area, const QColor& left, const QColor& right);
    void fill(const QRectF& area, const QColor& color);
    void line(double x1, double y1, double x2, double y2, const QColor& color, double width = 1.0);
    /// A round light spot that dies away towards `radius`.
    void glow(const QPointF& centre, double radius, const QColor& color);
    void stars(const QRectF& area, int count);
    /// Darkens the corners.
    void vignette(int alpha);
    /// 0 to `below` - 1.
    int chance(int below);

    /// Ends the painting and hands the picture over.
    QImage take();

private:
    QImage m_image;
    QPainter m_painter;
    std::mt19937 m_random;
};
