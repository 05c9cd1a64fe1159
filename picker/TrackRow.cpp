#include "picker/TrackRow.h"

#include "picker/ColorTrack.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

namespace VelaColorPickerLib {

TrackRow::TrackRow(const QString& label, ColorTrack* track, QWidget* parent)
    : QWidget(parent)
    , m_label(new QLabel(label, this))
    , m_track(track)
{
    m_track->setParent(this);
    m_spinBox = new QSpinBox(this); // behind the track in the tab order
    m_label->setTextFormat(Qt::PlainText);
    m_label->setBuddy(m_spinBox);
    m_spinBox->setRange(m_track->minimum(), m_track->maximum());
    m_spinBox->setSingleStep(m_track->singleStep());
    m_spinBox->setValue(m_track->value());
    m_spinBox->setAlignment(Qt::AlignRight);
    m_spinBox->setKeyboardTracking(false); // a number half typed is no value

    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(fontMetrics().height() / 2);
    row->addWidget(m_label);
    row->addWidget(m_track, 1);
    row->addWidget(m_spinBox);
    setFocusProxy(m_track);
}

int TrackRow::shownValue() const
{
    return m_spinBox->value();
}

void TrackRow::showValue(int value)
{
    const QSignalBlocker noTrackNews(m_track);
    const QSignalBlocker noBoxNews(m_spinBox);
    m_track->setValue(value);
    m_spinBox->setValue(value);
}

void TrackRow::describe(const QString& trackName, const QString& boxName, const QString& toolTip)
{
    m_track->setAccessibleName(trackName);
    m_track->setToolTip(toolTip);
    m_spinBox->setAccessibleName(boxName);
    m_spinBox->setToolTip(toolTip);
}

} // namespace VelaColorPickerLib
