#pragma once

#include <QWidget>

#include <array>

class QPushButton;

namespace VelaColorPickerLib {

class VelaColorPicker;

/// The buttons that show the picker's pages, and the one that keeps its colour with the show. Which
/// page was on show is kept in the settings.
class VelaColorPickerButtonsWidget : public QWidget
{
    Q_OBJECT
public:
    explicit VelaColorPickerButtonsWidget(QWidget* parent = nullptr);
    ~VelaColorPickerButtonsWidget() override;

    /// Ties the buttons to `picker` (not owned; it must outlive them) and shows the page that was
    /// on show last.
    void setPicker(VelaColorPicker* picker);

signals:
    void clearPreviousSelection();

public slots:
    /// Shows the page whose button, RGB or white, is down.
    void updateColorPickerDisplay();
    /// Shows the page of channels, ready for input.
    void updateNChannelWidgetDisplay();
    void addToFavoritesButtonClicked();
    /// Shows the page of that index; `enableSliders` tells whether the channel sliders take input.
    /// An index outside 0..2 does nothing.
    void updatePickerButtons(int selectedPickerIndex, bool enableSliders);

protected:
    void hideEvent(QHideEvent* event) override;

private:
    static constexpr std::size_t kPages = 3;

    void readSettings();
    void writeSettings() const;

    VelaColorPicker* m_picker = nullptr; // not owned
    std::array<QPushButton*, kPages> m_pageButtons{};
    QPushButton* m_addButton;
};

} // namespace VelaColorPickerLib
