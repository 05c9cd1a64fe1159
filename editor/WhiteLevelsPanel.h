#pragma once

#include <QWidget>

class QComboBox;
class QGridLayout;
class QSlider;
class QSpinBox;
struct WhiteLevels;

/// The controls of one two-channel white: the kind of input, and a page of controls for each kind.
class WhiteLevelsPanel : public QWidget
{
    Q_OBJECT
public:
    /// Shows `levels`, each held to its control's range.
    WhiteLevelsPanel(const WhiteLevels& levels, QWidget* parent);

    // The controls, for whoever connects them; all owned by the panel.
    QComboBox* inputType() const { return m_inputType; }
    /// 0..510.
    QSlider* temperature() const { return m_temperature; }
    /// 0..100.
    QSlider* intensity() const { return m_intensity; }
    /// 0..255, tied to a spin box.
    QSlider* warm() const { return m_warm; }
    /// 0..255, tied to a spin box.
    QSlider* cool() const { return m_cool; }

private:
    QSlider* addSlider(QGridLayout* grid, const QString& label, int most, int value);
    void tieSpinBox(QGridLayout* grid, QSlider* slider);

    QComboBox* m_inputType = nullptr;
    QSlider* m_temperature = nullptr;
    QSlider* m_intensity = nullptr;
    QSlider* m_warm = nullptr;
    QSlider* m_cool = nullptr;
};
