#pragma once

#include <QImage>
#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QWidget>

class QKeyEvent;
class QMouseEvent;
class QPainter;
class QPaintEvent;

namespace VelaColorPickerLib {

/// A field to choose a colour from, by a marker that the mouse and the keys move. The field is
/// painted once and kept; the marker is drawn over it.
class ColorSelectorWidget : public QWidget
{
    Q_OBJECT
public:
    explicit ColorSelectorWidget(QWidget* parent = nullptr);

    /// Where the marker is, in pixels of the widget.
    virtual QPoint markerPixel() const = 0;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    /// The field at that size, in device pixels.
    virtual QImage paintField(const QSize& size) const = 0;
    /// Everything between the field and the marker; nothing by itself.
    virtual void paintOverField(QPainter* painter);
    /// The mouse went to that pixel, which may lie outside of the widget.
    virtual void moveToPixel(const QPoint& pixel) = 0;
    /// A key moved the marker, in the direction given, by a small step or a large one.
    virtual void moveBySteps(int right, int down, bool large) = 0;

    /// To be called when the field is no longer what it was.
    void refreshField();
    /// Where the marker is painted: what is to be painted anew when it moves.
    QRect markerRect() const;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    double markerRadius() const;

    QImage m_field; // null: to be painted
};

} // namespace VelaColorPickerLib
