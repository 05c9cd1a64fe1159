#pragma once

#include "color/VelaColor.h"

#include <QItemSelection>
#include <QString>
#include <QWidget>

class QPushButton;
class VelaColorLibrary;

namespace VelaWidgetsLib {
class FilterBox;
}

namespace VelaColorPickerLib {

class VelaColorLibraryTreeView;

/// The library of swatches with a line to filter it by and the buttons that add, import and export
/// lists.
class ColorTreeAndFilterWidget : public QWidget
{
    Q_OBJECT
public:
    /// `library` is not owned and must outlive the widget.
    explicit ColorTreeAndFilterWidget(VelaColorLibrary* library, QWidget* parent = nullptr);
    ~ColorTreeAndFilterWidget() override;

    VelaColorLibraryTreeView* tree() const { return m_tree; }

signals:
    /// A swatch was chosen.
    void colorItemClicked(const VelaColor& color, const QString& uid);

public slots:
    void clearSelection();
    void handleNewGroupButtonClicked();
    void handleLoadGroupFromFile();
    void handleExportSwatchesButtonClicked();
    void handleSelectionChanged(const QItemSelection& selected, const QItemSelection& deselected);
    void handleFilterChanged(const QString& text);
    /// Puts the filter back that was last typed.
    void reloadSavedFilter();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void takeTypedText(const QString& text);

    VelaColorLibrary* m_library; // not owned
    VelaWidgetsLib::FilterBox* m_filterBox;
    VelaColorLibraryTreeView* m_tree;
    QPushButton* m_newButton;
    QPushButton* m_importButton;
    QPushButton* m_exportButton;
    QString m_savedFilter;
};

} // namespace VelaColorPickerLib
