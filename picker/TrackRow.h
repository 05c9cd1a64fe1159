#pragma once

#include <QString>
#include <QWidget>

class QLabel;
class QSpinBox;

namespace VelaColorPickerLib {

class ColorTrack;

/// A row of a label, a track that shows what it would do, and a spin box. Track and spin box show
/// one value; whoever derives from it says what a change of either means.
class TrackRow : public QWidget
{
    Q_OBJECT
public:
    /// For a column of rows to line up.
    QLabel* label() const { return m_label; }
    QSpinBox* spinBox() const { return m_spinBox; }

protected:
    /// The row takes the track; its range and step are those of the row.
    TrackRow(const QString& label, ColorTrack* track, QWidget* parent);

    ColorTrack* track() const { return m_track; }
    int shownValue() const;
    /// Limited to the range; emits nothing.
    void showValue(int value);
    /// What both are called and, in a tip, what they do.
    void describe(const QString& trackName, const QString& boxName, const QString& toolTip);

private:
    QLabel* m_label;
    ColorTrack* m_track;
    QSpinBox* m_spinBox = nullptr;
};

} // namespace VelaColorPickerLib
