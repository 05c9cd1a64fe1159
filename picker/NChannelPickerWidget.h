#pragma once

#include "color/ColorUtils.h"
#include "color/GroupProfile.h"
#include "color/VelaColor.h"

#include <QList>
#include <QString>
#include <QVector>
#include <QWidget>

class QCheckBox;
class QToolButton;

namespace VelaColorPickerLib {

class DmxSlidersWidget;
class ProfileSelector;

/// The picker's page of a fixture's own channels. What it gives are Nchannel colours of the chosen
/// fixture profile.
class NChannelPickerWidget final : public QWidget
{
    Q_OBJECT
public:
    explicit NChannelPickerWidget(QWidget* parent = nullptr);

    /// Shows a colour by the channels of the chosen fixture; emits nothing. An invalid colour
    /// changes nothing.
    void setColor(const VelaColor& color);
    VelaColor color() const { return m_color; }

    /// The profiles of the lights that the colour is for; the selector shows them in bold.
    void setProfiles(const QList<GroupProfile>& profiles);
    /// Chooses a profile and the state of the Tintweave box, and shows the colour anew; emits
    /// nothing. An unknown profile changes nothing.
    void setPrimaryProfile(const GroupProfile& profile);

signals:
    void colorChanged(VelaColor& color, QString& uid);

public slots:
    void onTintweaveProfileChanged(ColorUtils::TintweaveProfileID tintweaveProfileID);
    /// One level 0..255 a channel; others are limited, missing ones are 0.
    void onDmxChanged(const QVector<int>& dmx);
    void onInfoButton();
    void onTintweaveCheckBoxStateChanged(int state);
    void on_tintweaveCheckBox_clicked();

private:
    QWidget* buildTargetGroup(QWidget* parent);
    QWidget* buildChannelGroup(QWidget* parent);
    void showChannels();
    void showColor(const VelaColor& color);
    QVector<int> channelsOf(const VelaColor& color) const;
    VelaColor colorOf(const QVector<int>& dmx, int alpha8) const;
    int layoutId() const;

    VelaColor m_color;  // what the sliders stand for
    VelaColor m_source; // the colour that they are to achieve
    ColorUtils::TintweaveProfileID m_profile = 0;
    bool m_tintweave = false;
    quint32 m_modeValue; // what the last absolute colour from outside was given as
    ProfileSelector* m_profileSelector = nullptr;
    QCheckBox* m_tintweaveCheckBox = nullptr;
    QToolButton* m_infoButton = nullptr;
    DmxSlidersWidget* m_sliders = nullptr;
};

} // namespace VelaColorPickerLib
