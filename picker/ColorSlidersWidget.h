#pragma once

#include "color/VelaColor.h"
#include "picker/ColorTrack.h"

#include <QString>
#include <QWidget>

#include <array>

class QSpinBox;

namespace VelaColorPickerLib {

/// The three components of a colour, each with a label, a track that shows what it would do, and a
/// number; the two follow each other.
class ColorSlidersWidget : public QWidget
{
    Q_OBJECT
public:
    static constexpr std::size_t kComponents = 3;

signals:
    void colorChanged(const VelaColor& color);

protected:
    struct Component
    {
        QString label;
        QString name;
        int maximum;
    };
    using Values = std::array<int, kComponents>;

    ColorSlidersWidget(const std::array<Component, kComponents>& components, QWidget* parent);

    /// The colour of these values, opaque.
    virtual VelaColor colorOf(const Values& values) const = 0;

    ColorTrack* track(std::size_t component) const { return m_tracks[component]; }
    QSpinBox* spinBox(std::size_t component) const { return m_spinBoxes[component]; }
    int value(std::size_t component) const { return m_values[component]; }
    /// Limited to the components' ranges. Emits nothing.
    void setValues(const Values& values);
    void setAlpha(double alpha) { m_alpha = alpha; }
    /// The user gave a component another value.
    void takeValue(std::size_t component, int value);

private:
    std::array<ColorTrack*, kComponents> m_tracks{};
    std::array<QSpinBox*, kComponents> m_spinBoxes{};
    Values m_values{};
    double m_alpha = 1.0;
};

} // namespace VelaColorPickerLib
