#pragma once

#include <QPoint>
#include <QWidget>

class QEvent;
class QKeyEvent;
class QMouseEvent;
class QPainter;
class QRect;
class QWheelEvent;

namespace VelaColorPickerLib {

/// A painted field on which a colour is chosen by mouse, wheel and keyboard. What these do is the
/// same for every field, what they choose is up to the field.
class ColorSelectorWidget : public QWidget
{
    Q_OBJECT
public:
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The wheel asks for the next zoom levels, inward where positive.
    void zoomStepped(int levels);

protected:
    explicit ColorSelectorWidget(QWidget* parent);

    /// The user put the marker at a pixel, which a drag takes out of the widget too.
    virtual void moveTo(const QPoint& pixel) = 0;
    /// An arrow key: `columns` to the right and `rows` downward.
    virtual void moveBy(int columns, int rows) = 0;
    /// Home (-1) or End (1) along the field, or with Ctrl down it.
    virtual void moveToEnd(int columns, int rows) = 0;
    /// Whole notches of the wheel. Zooms unless a field does otherwise.
    virtual void turnWheel(int notches, Qt::KeyboardModifiers modifiers);

    /// How many steps of the arrows are one with Shift, or of Page Up and Down.
    virtual int coarseSteps() const { return 10; }

    /// Of the marker's outer ring.
    double markerRadius() const;
    /// What a marker at a pixel covers.
    QRect markerRect(const QPoint& pixel) const;
    void paintFocusFrame(QPainter* painter) const;

    void changeEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    int m_wheelAngle = 0; // not yet a whole notch, in eighths of a degree
};

} // namespace VelaColorPickerLib
