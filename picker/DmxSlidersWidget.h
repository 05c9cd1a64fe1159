#pragma once

#include <QColor>
#include <QList>
#include <QStringList>
#include <QVector>
#include <QWidget>

#include <functional>

class QPaintEvent;

namespace VelaColorPickerLib {

class DmxSliderWidget;

/// The sliders of a fixture's channels, up to 8.
class DmxSlidersWidget final : public QWidget
{
    Q_OBJECT
public:
    static constexpr int kMaxSliders = 8;
    /// The colour that a channel at a level gives beside the others as they are.
    using ChannelColorAt = std::function<QColor(int channel, int level)>;

    explicit DmxSlidersWidget(QWidget* parent = nullptr);

    /// Shows one slider a channel, limited to 0..8; a name that is missing or empty is replaced by
    /// the channel's number. Emits nothing.
    void setChannels(int count, const QStringList& names);
    int channelCount() const { return m_channelCount; }
    /// Missing levels are 0. Emits nothing.
    void setValues(const QVector<int>& dmx);
    QVector<int> values() const;
    void setColorAt(ChannelColorAt colorAt);
    void refreshTracks();

signals:
    void dmxChanged(QVector<int> dmx);

public slots:
    void onSliderChanged();

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QList<DmxSliderWidget*> m_sliders;
    int m_channelCount = 0;
    ChannelColorAt m_colorAt;
};

} // namespace VelaColorPickerLib
