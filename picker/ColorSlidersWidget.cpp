#include "picker/ColorSlidersWidget.h"

#include "picker/ColorTrack.h"

#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <QSpinBox>

#include <algorithm>

namespace VelaColorPickerLib {

ColorSlidersWidget::ColorSlidersWidget(QWidget* parent)
    : QWidget(parent)
    , m_color(Qt::black)
{
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(fontMetrics().height() / 2);
    layout->setVerticalSpacing(fontMetrics().height() / 4);
    layout->setColumnStretch(1, 1);
}

void ColorSlidersWidget::buildRow(std::size_t row, const RowText& text, int maximum)
{
    const QString name = QLatin1String(text.objectName);
    auto* const label = new QLabel(text.label, this);
    auto* const track = new ColorTrack(this);
    track->setObjectName(name + QStringLiteral("Track"));
    track->setRange(0, maximum);
    track->setAccessibleName(tr("%1 track").arg(text.name));
    track->setToolTip(text.tip);
    track->setColorAt([this, row](int value) { return trackColor(row, value); });
    auto* const box = new QSpinBox(this);
    box->setObjectName(name + QStringLiteral("SpinBox"));
    box->setRange(0, maximum);
    box->setSuffix(text.suffix);
    box->setAlignment(Qt::AlignRight);
    box->setKeyboardTracking(false); // a number half typed is no colour
    box->setAccessibleName(text.name);
    box->setToolTip(text.tip);
    label->setBuddy(box);

    auto* const grid = static_cast<QGridLayout*>(layout());
    const int line = static_cast<int>(row);
    grid->addWidget(label, line, 0);
    grid->addWidget(track, line, 1);
    grid->addWidget(box, line, 2);
    m_rows[row] = {label, track, box};
}

void ColorSlidersWidget::lineUp(ColorSlidersWidget* one, ColorSlidersWidget* other)
{
    int labelWidth = 0;
    int boxWidth = 0;
    for (const ColorSlidersWidget* const group : {one, other}) {
        for (const Row& row : group->m_rows) {
            labelWidth = std::max(labelWidth, row.label->sizeHint().width());
            boxWidth = std::max(boxWidth, row.box->sizeHint().width());
        }
    }
    for (const ColorSlidersWidget* const group : {one, other}) {
        for (const Row& row : group->m_rows) {
            row.label->setMinimumWidth(labelWidth);
            row.box->setMinimumWidth(boxWidth);
        }
    }
}

void ColorSlidersWidget::setColor(const VelaColor& color)
{
    if (!color.isValid()) {
        return;
    }
    m_color = color;
    display(valuesOf(color, m_values));
}

void ColorSlidersWidget::choose(std::size_t row, int value)
{
    Values values = m_values;
    values[row] = std::clamp(value, 0, track(row)->maximum());
    display(values);
    m_color = colorOf(m_values, m_color);
    const VelaColor chosen = m_color; // a listener may set another
    emit colorChanged(chosen);
}

void ColorSlidersWidget::display(const Values& values)
{
    const Values before = m_values;
    m_values = values;
    for (std::size_t row = 0; row < kRows; ++row) {
        const QSignalBlocker noTrackNews(m_rows[row].track);
        const QSignalBlocker noBoxNews(m_rows[row].box);
        m_rows[row].track->setValue(values[row]);
        m_rows[row].box->setValue(values[row]);
        for (std::size_t other = 0; other < kRows; ++other) {
            if (other != row && values[other] != before[other]) {
                m_rows[row].track->refresh();
                break;
            }
        }
    }
}

QColor ColorSlidersWidget::trackColor(std::size_t row, int value) const
{
    Values values = m_values;
    values[row] = value;
    QColor color = colorOf(values, m_color).toQColor(true);
    color.setAlpha(255); // a track shows colour, not how much of it is let through
    return color;
}

} // namespace VelaColorPickerLib
