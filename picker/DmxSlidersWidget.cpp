#include "picker/DmxSlidersWidget.h"

#include "picker/DmxSliderWidget.h"

#include <QLabel>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
#include <QVBoxLayout>

#include <algorithm>
#include <utility>

namespace VelaColorPickerLib {

DmxSlidersWidget::DmxSlidersWidget(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("DmxSlidersWidget"));
    setStyleSheet(
        QStringLiteral("QWidget#DmxSlidersWidget {background-color: rgb(225, 225, 225);}"));
    auto* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(fontMetrics().height() / 2);
    for (int i = 0; i < kMaxSliders; ++i) {
        auto* const slider = new DmxSliderWidget(this);
        slider->hide();
        layout->addWidget(slider);
        m_sliders.append(slider);
        connect(slider, &DmxSliderWidget::valueChanged, this, &DmxSlidersWidget::onSliderChanged);
    }
    layout->addStretch(1);
}

void DmxSlidersWidget::setChannels(int count, const QStringList& names)
{
    m_channelCount = std::clamp(count, 0, kMaxSliders);
    int labelWidth = 0;
    for (int i = 0; i < m_channelCount; ++i) {
        const QString name = names.value(i);
        m_sliders[i]->setName(name.isEmpty() ? tr("Channel %1").arg(i + 1) : name);
        labelWidth = std::max(labelWidth, m_sliders[i]->label()->sizeHint().width());
    }
    for (int i = 0; i < kMaxSliders; ++i) {
        m_sliders[i]->label()->setMinimumWidth(labelWidth);
        m_sliders[i]->setVisible(i < m_channelCount);
    }
    refreshTracks();
}

void DmxSlidersWidget::setValues(const QVector<int>& dmx)
{
    for (int i = 0; i < kMaxSliders; ++i) {
        m_sliders[i]->setValue(dmx.value(i));
    }
    refreshTracks();
}

QVector<int> DmxSlidersWidget::values() const
{
    QVector<int> dmx;
    for (int i = 0; i < m_channelCount; ++i) {
        dmx.append(m_sliders[i]->value());
    }
    return dmx;
}

void DmxSlidersWidget::setColorAt(ChannelColorAt colorAt)
{
    m_colorAt = std::move(colorAt);
    for (int i = 0; i < kMaxSliders; ++i) {
        m_sliders[i]->setColorAt(
            [this, i](int level) { return m_colorAt ? m_colorAt(i, level) : QColor(); });
    }
}

void DmxSlidersWidget::refreshTracks()
{
    for (int i = 0; i < m_channelCount; ++i) {
        m_sliders[i]->refreshTrack();
    }
}

void DmxSlidersWidget::onSliderChanged()
{
    refreshTracks();
    emit dmxChanged(values());
}

void DmxSlidersWidget::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOption option; // a plain widget's style sheet paints nothing by itself
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

} // namespace VelaColorPickerLib
