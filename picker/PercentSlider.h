#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QSpinBox;

namespace VelaColorPickerLib {

class ColorTrack;

/// A label, a track that shows what it would do, and a number in percent; the two follow each
/// other.
class PercentSlider : public QWidget
{
    Q_OBJECT
public:
    PercentSlider(const QString& label, const QString& name, const QString& toolTip,
                  QWidget* parent);

    /// 0..100
    int percent() const;
    /// Limited to 0..100. Emits nothing.
    void setPercent(int percent);
    QLabel* label() const { return m_label; }

signals:
    /// The user moved it.
    void percentChanged(int percent);

protected:
    ColorTrack* track() const { return m_track; }

private:
    void take(int percent);

    QLabel* m_label;
    ColorTrack* m_track;
    QSpinBox* m_spinBox;
};

} // namespace VelaColorPickerLib
