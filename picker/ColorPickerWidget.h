#pragma once

#include "color/GroupProfile.h"
#include "color/VelaColor.h"

#include <QList>
#include <QWidget>

class QDialogButtonBox;
class QSplitter;

namespace VelaColorPickerLib {

class ColorTreeAndFilterWidget;
class VelaColorPicker;
class VelaColorPickerButtonsWidget;

/// The whole form for choosing a colour, as a dialog holds it: the picker, its page buttons, the
/// library of swatches, OK and Cancel. The first one of a process loads the library.
class ColorPickerWidget : public QWidget
{
    Q_OBJECT
public:
    explicit ColorPickerWidget(QWidget* parent = nullptr);

    /// The main colour.
    VelaColor color() const;
    /// Gives the main swatch the colour and shows the page for it.
    void setColor(const VelaColor& color);
    /// The profiles of the fixtures that the colour is for.
    void setProfiles(const QList<GroupProfile>& profiles);
    /// The profile of most of them; id -1 is none.
    void setPrimaryProfile(const GroupProfile& profile);

signals:
    void mainColorChanged(const VelaColor& color);
    void accepted();
    void rejected();

public slots:
    // Connected by name.
    void on_colorPicker_mainColorChanged(const VelaColor& color);
    void on_colorPicker_comparisonColorChanged(const VelaColor& color);
    void on_dialogButtonBox_accepted();
    void on_dialogButtonBox_rejected();
    /// Adds the colour to the list "Project Swatches" of the library.
    void handleAddToFavorites(const VelaColor& color);

private:
    VelaColorPicker* m_picker;
    VelaColorPickerButtonsWidget* m_buttons;
    ColorTreeAndFilterWidget* m_tree;
    QSplitter* m_splitter;
    QDialogButtonBox* m_dialogButtons;
};

} // namespace VelaColorPickerLib
