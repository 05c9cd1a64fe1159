#pragma once

#include "color/VelaColor.h"

#include <QColor>
#include <QString>
#include <QWidget>

#include <array>

class QLabel;
class QSpinBox;

namespace VelaColorPickerLib {

class ColorTrack;

/// Three rows of label, track and spin box for the components of a colour. Track and spin box
/// follow each other, and each track shows what its values would give.
class ColorSlidersWidget : public QWidget
{
    Q_OBJECT
public:
    VelaColor color() const { return m_color; }
    /// Shows a colour; emits nothing. An invalid colour changes nothing.
    void setColor(const VelaColor& color);

    /// Gives the labels and the spin boxes of both groups one width.
    static void lineUp(ColorSlidersWidget* one, ColorSlidersWidget* other);

signals:
    void colorChanged(VelaColor color);

protected:
    static constexpr std::size_t kRows = 3;
    using Values = std::array<int, kRows>;

    struct RowText
    {
        const char* objectName; // of the track with "Track", of the box with "SpinBox" behind it
        QString label;
        QString name;
        QString tip;
        QString suffix;
    };

    explicit ColorSlidersWidget(QWidget* parent);

    ColorTrack* track(std::size_t row) const { return m_rows[row].track; }
    QSpinBox* spinBox(std::size_t row) const { return m_rows[row].box; }
    void buildRow(std::size_t row, const RowText& text, int maximum);
    /// The user put a row to a value, which is limited to the row's range.
    void choose(std::size_t row, int value);

    /// What the rows show of a colour, which may leave some as they are.
    virtual Values valuesOf(const VelaColor& color, const Values& shown) const = 0;
    /// The colour of three rows, on the ground of the present one.
    virtual VelaColor colorOf(const Values& values, const VelaColor& present) const = 0;

private:
    struct Row
    {
        QLabel* label = nullptr;
        ColorTrack* track = nullptr;
        QSpinBox* box = nullptr;
    };
    void display(const Values& values);
    QColor trackColor(std::size_t row, int value) const;

    std::array<Row, kRows> m_rows;
    Values m_values = {{0, 0, 0}};
    VelaColor m_color;
};

} // namespace VelaColorPickerLib
