#include "picker/NChannelPickerWidget.h"

#include "color/ColorProfile.h"
#include "color/ModeTable.h"
#include "color/ProfileTable.h"
#include "picker/DmxSlidersWidget.h"
#include "picker/ProfileSelector.h"

#include <QCheckBox>
#include <QFrame>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPalette>
#include <QSignalBlocker>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace VelaColorPickerLib {

namespace {

constexpr quint32 kFirstModeValue = 1;
constexpr int kFullLevel = 255;

/// What reads on the light grey that the page's frame always has.
QPalette paletteOnGrey(const QPalette& own)
{
    QPalette palette(QColor(225, 225, 225));
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Highlight, own.color(group, QPalette::Highlight));
        palette.setColor(group, QPalette::HighlightedText,
                         own.color(group, QPalette::HighlightedText));
    }
    return palette;
}

} // namespace

NChannelPickerWidget::NChannelPickerWidget(QWidget* parent)
    : QWidget(parent)
    , m_modeValue(kFirstModeValue)
{
    auto* const frame = new QFrame(this);
    frame->setObjectName(QStringLiteral("backgroundFrame"));
    frame->setStyleSheet(
        QStringLiteral("QFrame#backgroundFrame {background-color: rgb(225, 225, 225);}"));
    auto* const pageLayout = new QVBoxLayout(this);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    pageLayout->addWidget(frame);

    auto* const layout = new QVBoxLayout(frame);
    const int unit = fontMetrics().height() / 2;
    layout->setContentsMargins(2 * unit, 2 * unit, 2 * unit, 2 * unit);
    layout->setSpacing(2 * unit);
    layout->addWidget(buildTargetGroup(frame));
    layout->addWidget(buildChannelGroup(frame), 1);
    setFocusProxy(m_profileSelector);
    // One by one: palettes are not handed down below a style sheet.
    const QPalette onGrey = paletteOnGrey(palette());
    for (QWidget* const child : frame->findChildren<QWidget*>()) {
        child->setPalette(onGrey);
    }

    showChannels();
    m_color = colorOf(m_sliders->values(), kFullLevel);
    m_source = m_color;

    connect(m_profileSelector, &ProfileSelector::selectedProfile, this,
            &NChannelPickerWidget::onTintweaveProfileChanged);
    connect(m_tintweaveCheckBox, &QCheckBox::stateChanged, this,
            &NChannelPickerWidget::onTintweaveCheckBoxStateChanged);
    connect(m_infoButton, &QToolButton::clicked, this, &NChannelPickerWidget::onInfoButton);
    connect(m_sliders, &DmxSlidersWidget::dmxChanged, this, &NChannelPickerWidget::onDmxChanged);
    QMetaObject::connectSlotsByName(this); // the check box's click
}

QWidget* NChannelPickerWidget::buildTargetGroup(QWidget* parent)
{
    auto* const group = new QGroupBox(tr("Target Fixture Settings"), parent);
    auto* const label = new QLabel(tr("Fixture type:"), group);
    m_profileSelector = new ProfileSelector(group);
    m_profileSelector->setObjectName(QStringLiteral("tintweaveProfileComboBox"));
    m_profileSelector->setAccessibleName(tr("Fixture type"));
    m_profileSelector->setToolTip(tr("The fixture whose channels the sliders are"));
    m_profileSelector->setMinimumContentsLength(16);
    m_profileSelector->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    label->setBuddy(m_profileSelector);

    m_tintweaveCheckBox = new QCheckBox(tr("+ Tintweave"), group);
    m_tintweaveCheckBox->setObjectName(QStringLiteral("tintweaveCheckBox"));
    m_tintweaveCheckBox->setAccessibleName(tr("Tintweave"));
    m_tintweaveCheckBox->setToolTip(tr("On if Tintweave is enabled on the target fixture"));

    m_infoButton = new QToolButton(group);
    m_infoButton->setObjectName(QStringLiteral("infoButton"));
    m_infoButton->setIcon(style()->standardIcon(QStyle::SP_MessageBoxInformation));
    m_infoButton->setAccessibleName(tr("About the target fixture settings"));
    m_infoButton->setToolTip(tr("About the target fixture settings"));
    m_infoButton->setFocusPolicy(Qt::StrongFocus);
    m_infoButton->setIconSize(QSize(fontMetrics().height(), fontMetrics().height()));

    const int unit = fontMetrics().height() / 2;
    auto* const layout = new QHBoxLayout(group);
    layout->setContentsMargins(unit, unit, unit, unit);
    layout->setSpacing(unit);
    layout->addWidget(label);
    layout->addWidget(m_profileSelector, 1);
    layout->addSpacing(unit);
    layout->addWidget(m_tintweaveCheckBox);
    layout->addWidget(m_infoButton);
    return group;
}

QWidget* NChannelPickerWidget::buildChannelGroup(QWidget* parent)
{
    auto* const group = new QGroupBox(tr("Color Control Mode"), parent);
    m_sliders = new DmxSlidersWidget(group);
    m_sliders->setColorAt([this](int channel, int level) {
        QVector<int> dmx = m_sliders->values();
        if (channel < dmx.size()) {
            dmx[channel] = level;
        }
        return colorOf(dmx, kFullLevel).toQColor(true);
    });
    const int unit = fontMetrics().height() / 2;
    m_sliders->layout()->setContentsMargins(unit, unit, unit, unit);
    auto* const layout = new QVBoxLayout(group);
    layout->setContentsMargins(1, 1, 1, 1);
    layout->addWidget(m_sliders);
    return group;
}

int NChannelPickerWidget::layoutId() const
{
    return ColorUtils::layoutOfProfile(m_profile);
}

void NChannelPickerWidget::showChannels()
{
    const ColorProfile* const record = ProfileTable::instance().profile(m_profile, layoutId(), 0);
    m_sliders->setChannels(ColorUtils::channelCount(layoutId()), record->channelNames);
}

VelaColor NChannelPickerWidget::colorOf(const QVector<int>& dmx, int alpha8) const
{
    QList<int> list;
    list.append(alpha8);
    list.append(dmx.toList());
    VelaColor color;
    color.setNchannel8(list, static_cast<quint32>(layoutId()), static_cast<quint32>(m_profile),
                       m_tintweave);
    return color;
}

/// The levels of the chosen fixture's channels that achieve a colour.
QVector<int> NChannelPickerWidget::channelsOf(const VelaColor& color) const
{
    const int layout = layoutId();
    const int count = ColorUtils::channelCount(layout);
    const int colorLayout = static_cast<int>(color.channelLayout());
    if (color.spec() == VelaColor::Nchannel && colorLayout == layout) {
        QList<int> list;
        color.channels8(&list);
        return list.mid(1).toVector();
    }
    int mode = ColorUtils::nativeModeOfProfile(m_profile);
    if (colorLayout != layout) {
        for (const int candidate : ColorUtils::modesOfProfile(m_profile)) {
            if (ModeTable::instance().mode(candidate).layout == colorLayout) {
                mode = candidate;
                break;
            }
        }
    }
    quint8 bytes[VelaColor::kMaxChannels] = {};
    const int curve = ColorUtils::curveOfProfile(m_profile);
    ColorUtils::mapToChannels(color, m_tintweave, count, 1, bytes, curve, curve, m_profile, mode);
    QVector<int> dmx;
    for (int i = 0; i < count; ++i) {
        dmx.append(bytes[i]);
    }
    return dmx;
}

void NChannelPickerWidget::showColor(const VelaColor& color)
{
    m_sliders->setValues(channelsOf(color));
    m_color = colorOf(m_sliders->values(), color.alpha8());
}

void NChannelPickerWidget::setColor(const VelaColor& color)
{
    if (!color.isValid()) {
        return;
    }
    if (color.spec() == VelaColor::Yxy) {
        m_modeValue = color.spec();
    }
    m_source = color;
    showColor(color);
}

void NChannelPickerWidget::setProfiles(const QList<GroupProfile>& profiles)
{
    QList<int> ids;
    for (const GroupProfile& profile : profiles) {
        ids.append(profile.profileId);
    }
    m_profileSelector->emphasize(ids);
}

void NChannelPickerWidget::setPrimaryProfile(const GroupProfile& profile)
{
    if (m_profileSelector->findData(profile.profileId) < 0) {
        return;
    }
    m_tintweaveCheckBox->setChecked(profile.forwardFlag != 0);
    m_profileSelector->setProfile(profile.profileId);
}

void NChannelPickerWidget::onTintweaveProfileChanged(
    ColorUtils::TintweaveProfileID tintweaveProfileID)
{
    const QSignalBlocker noSelectorNews(m_profileSelector);
    m_profileSelector->setProfile(tintweaveProfileID);
    m_profile = m_profileSelector->profile();
    showChannels();
    showColor(m_source);
}

void NChannelPickerWidget::onTintweaveCheckBoxStateChanged(int state)
{
    m_tintweave = state != Qt::Unchecked;
    showColor(m_source);
}

void NChannelPickerWidget::on_tintweaveCheckBox_clicked()
{
    onDmxChanged(m_sliders->values());
}

void NChannelPickerWidget::onDmxChanged(const QVector<int>& dmx)
{
    m_sliders->setValues(dmx);
    constexpr double kFullAlpha16 = 65535.0;
    QList<double> list;
    list.append(m_color.alpha16() / kFullAlpha16);
    for (const int level : m_sliders->values()) {
        list.append(static_cast<double>(level) / kFullLevel);
    }
    m_color = VelaColor::fromNchannelF(list, static_cast<quint32>(layoutId()),
                                       static_cast<quint32>(m_profile), m_tintweave);
    if (m_modeValue != kFirstModeValue) {
        m_color.setFromYxy(1);
    }
    m_source = m_color;
    VelaColor color = m_color;
    QString uid;
    emit colorChanged(color, uid);
}

void NChannelPickerWidget::onInfoButton()
{
    QMessageBox box(QMessageBox::Information, tr("Target Fixture Settings"),
                    tr("Select the fixture type and check the \"+ Tintweave\" box if that is "
                       "enabled on the target fixture. Then select a color or adjust the "
                       "sliders.") +
                        QStringLiteral("\n\n") +
                        tr("The channel sliders represent the values sent to the fixture to "
                           "achieve the desired color."),
                    QMessageBox::Ok, this);
    box.exec();
}

} // namespace VelaColorPickerLib
