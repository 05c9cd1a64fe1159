#pragma once

#include "color/VelaColor.h"

#include <QPixmap>
#include <QPoint>
#include <QPointF>
#include <QPolygon>
#include <QRectF>
#include <QWidget>

class QKeyEvent;
class QMouseEvent;
class QPaintEvent;
class QWheelEvent;

namespace VelaColorPickerLib {

/// The white chart with the black-body locus and a marker, moved by drag, wheel and keyboard
/// within the chart's area: arrows by 0.002 in x or y (with Shift a quarter of it), Page Up and
/// Down by 100 K and the wheel by 50 K along the locus, the wheel with Shift across it, Home onto
/// it.
class BlackBodyCurveWidget final : public QWidget
{
    Q_OBJECT
public:
    /// What one step of the keyboard or a shortcut is, in x or y.
    static constexpr double kStep = 0.002;

    explicit BlackBodyCurveWidget(QWidget* parent = nullptr);

    /// The part of the CIE 1931 xy plane that the widget shows; y grows upward.
    QRectF viewRect() const { return m_viewRect; }
    QPointF chromaticity() const { return m_chromaticity; }
    /// Moves the marker, also to a place beside the chart's area; emits nothing. A place that is
    /// not finite leaves it.
    void setChromaticity(const QPointF& xy);
    /// Moves the marker as the user does: within the chart's area, with the signal.
    void moveBy(const QPointF& step);
    /// Where the marker is painted: a chromaticity beside the view is shown at its edge.
    QPoint markerPixel() const;

    /// Whether the colour lies within 0.001 (CIE 1960) of the locus point at its temperature.
    static bool isOnBlackBodyCurve(const VelaColor& color);
    /// The bin between two temperatures (kelvin) from the locus to a tint, closed, in the pixels of
    /// an image of the view.
    static QPolygon binOutline(int cct0, int cct1, int tint, const QRect& image);
    /// The bin with the marker in it; empty where there is none.
    QPolygon currentBin() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void colorChanged(VelaColor color);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void buildField();
    void moveToPixel(const QPoint& pixel);
    void moveByUser(const QPointF& xy);
    void moveAlongLocus(int kelvin);
    void moveAcrossLocus(int steps);
    QPoint pixelOf(const QPointF& xy) const;
    QRect markerRect() const;
    double markerRadius() const;

    QRectF m_viewRect;
    QPointF m_chromaticity;
    bool m_isOnCurve = false;
    QPolygon m_bin;
    QSize m_binSize;      // of the widget that m_bin was made for
    QPixmap m_field;      // all but bin and marker, at the widget's size
    int m_wheelAngle = 0; // not yet a whole step, in eighths of a degree
};

} // namespace VelaColorPickerLib
