#pragma once

#include "color/GroupProfile.h"
#include "color/VelaColor.h"

#include <QList>
#include <QString>
#include <QWidget>

#include <array>

class QStackedWidget;

namespace VelaColorPickerLib {

class ColorViewWidget;
class IntensitySliderWidget;
class NChannelPickerWidget;
class OpacitySliderWidget;
class RgbPickerWidget;
class WhitePickerWidget;

/// The three pages, of which one is on show, and the swatches: the main one and three to compare
/// with. One swatch is selected; the pages show its colour, and what they choose goes to it.
class VelaColorPickerWidget : public QWidget
{
    Q_OBJECT
public:
    enum Page { RgbPage = 0, WhitePage = 1, ChannelPage = 2, PageCount };

    explicit VelaColorPickerWidget(QWidget* parent = nullptr);

    /// The page for a colour of that space.
    static Page pageFor(const VelaColor& color);

    VelaColor mainColor() const;
    /// The colour of the selected swatch.
    VelaColor selectedColor() const;
    Page currentPage() const;
    /// An index outside 0..2 does nothing.
    void showPage(int index);
    /// Whether the page of channels takes input.
    void setChannelControlEnabled(bool enabled);
    /// Selects the main swatch and gives it the colour; "Reset" will come back to it.
    void setColorAndSelectMainPreview(const VelaColor& color, const QString& uid);
    /// The fixtures that the colour is for.
    void setProfiles(const QList<GroupProfile>& profiles);
    void setPrimaryProfile(const GroupProfile& profile);

signals:
    void mainColorChanged(const VelaColor& color, const QString& uid);
    void comparisonColorChanged(const VelaColor& color, const QString& uid);
    void colorAddedToFavorites(const VelaColor& color);
    /// A colour came from outside the pages: this is the page for it.
    void pickerSetOnSetColor(int index, bool isNChannel);
    /// The colour is no longer the one that was last clicked in a list.
    void clearPreviousSelection();

public slots:
    /// Gives the selected swatch the colour. A local change comes from the page on show, which
    /// stays; any other asks for the page that fits.
    void setColor(const VelaColor& color, const QString& uid, bool isLocalColorChange);
    void setColor(const VelaColor& color, const QString& uid);
    /// Limited to 0..100 %.
    void onOpacityChanged(int opacity);
    /// Limited to 0..100 %.
    void onIntensityChanged(int intensity);
    void onMainSwatchSelected();
    void onComparisonSwatch1Selected();
    void onComparisonSwatch2Selected();
    void onComparisonSwatch3Selected();
    void onCopyColorToMainSwatch(const VelaColor& color, const QString& uid);
    void onComparisonSwatch1Changed(const VelaColor& color, const QString& uid);
    void onComparisonSwatch2Changed(const VelaColor& color, const QString& uid);
    void onComparisonSwatch3Changed(const VelaColor& color, const QString& uid);
    void onAddColorToFavorites(const VelaColor& color);
    void onRgbPickerColorChanged(const VelaColor& color, const QString& uid);
    void onWhitePickerColorChanged(const VelaColor& color, const QString& uid);
    /// 0..1, from the white page.
    void setIntensity(double intensity);
    void onNChannelPickerColorChanged(VelaColor& color, QString& uid);

private:
    enum Swatch { MainSwatch, Comparison1, Comparison2, Comparison3, SwatchCount };

    void buildSwatches();
    void layOut();
    void connectPages();
    void connectSwatches();
    void select(Swatch swatch);
    void compareWith(Swatch swatch, const VelaColor& color, const QString& uid);
    /// Gives the selected swatch a colour, and the sliders and every page but `source`.
    void follow(const VelaColor& color, const QString& uid, const QWidget* source);
    void pushToPages(const VelaColor& color, const QWidget* source);
    void pushToSliders(const VelaColor& color);
    void emitChanged();
    void pageChose(const VelaColor& color, const QString& uid, const QWidget* page);
    void askForPage(const VelaColor& color);
    void applyIntensity(double intensity, const QWidget* source);

    QStackedWidget* m_pages;
    RgbPickerWidget* m_rgbPage;
    WhitePickerWidget* m_whitePage;
    NChannelPickerWidget* m_channelPage;
    std::array<ColorViewWidget*, SwatchCount> m_views{};
    IntensitySliderWidget* m_intensity = nullptr;
    OpacitySliderWidget* m_opacity = nullptr;
    Swatch m_selected = MainSwatch;
    VelaColor m_base; // what intensity scales: keeps hue and proportions through black
};

} // namespace VelaColorPickerLib
