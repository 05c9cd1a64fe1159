#pragma once

#include "color/VelaColor.h"

#include <QItemSelection>
#include <QList>
#include <QMimeData>
#include <QModelIndex>
#include <QPersistentModelIndex>
#include <QPoint>
#include <QString>
#include <QTreeView>

class QMenu;
class VelaColorLibrary;
class VelaColorLibraryItem;

namespace VelaColorPickerLib {

class SwatchFilterModel;

/// The library of swatches as a tree of lists. All indexes of its signals are those of `model()`,
/// the filtered library; those it hands out by functions are the library's own.
class VelaColorLibraryTreeView : public QTreeView
{
    Q_OBJECT
public:
    explicit VelaColorLibraryTreeView(QWidget* parent = nullptr);

    /// `library` is not owned; it must outlive the view or be replaced.
    void setLibrary(VelaColorLibrary* library);
    VelaColorLibrary* library() const { return m_library; }

    /// Shows only what matches (see SwatchFilterModel), every list open. An empty text shows all,
    /// with the lists open that were open before.
    void setFilter(const QString& text);
    /// The selected lists and swatches, by index of the library, in no certain order.
    QModelIndexList selectedItems() const;
    /// What an index of `model()` stands for; null for an invalid one.
    VelaColorLibraryItem* itemAt(const QModelIndex& index) const;
    /// Scrolls to the list or swatch of that index of the library and selects it alone.
    void showItem(const QModelIndex& index);
    /// As showItem, then lets the user type its name.
    void renameItem(const QModelIndex& index);

    /// Opens and closes the lists as the settings say; by default those open that are not the
    /// user's own.
    void readOpenLists();
    void writeOpenLists() const;

signals:
    void doubleClickedOnWidget(const QMimeData& mimeData);
    /// Typed on the tree: text to filter by.
    void filterText(const QString& text);
    void colorItemClicked(const VelaColor& color, const QString& uid);
    void selectionChangedSignal(const QItemSelection& selected, const QItemSelection& deselected);
    /// "Export..." of the context menu.
    void exportRequested();

public slots:
    void renameCurrent();
    /// The selected lists and swatches; the list "Project Swatches", and lists that come with the
    /// program with all they hold, stay.
    void deleteSelected();
    void copySelected();
    /// Adds the clipboard's colour to the list of the current item.
    void paste();
    void reset() override;

protected:
    void keyboardSearch(const QString& search) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

protected slots:
    void rowsInserted(const QModelIndex& parent, int start, int end) override;

private slots:
    void handleClicked(const QModelIndex& index);
    void handleDoubleClicked(const QModelIndex& index);

private:
    QModelIndex toLibrary(const QModelIndex& index) const;
    QModelIndex fromLibrary(const QModelIndex& index) const;
    static bool isColor(const QModelIndex& index);
    /// In the order of the tree.
    QModelIndexList selectedColors() const;
    static bool canDelete(const QModelIndex& item);
    void deleteItems(const QModelIndexList& items);
    void fillMenu(QMenu* menu, const QModelIndex& index);
    /// The swatch, with the other selected ones where it is one of them.
    void drag(const QModelIndex& index);
    void choose(const QModelIndex& index);
    QList<QPersistentModelIndex> openLists() const;
    void spanLists(int first, int last);
    void fitColumns();
    bool isOpenBySettings(const QModelIndex& list) const;

    VelaColorLibrary* m_library = nullptr; // not owned
    SwatchFilterModel* m_filter;
    QList<QPersistentModelIndex> m_openBefore; // the filter, by index of the library
    QPersistentModelIndex m_pressed;
    QPoint m_pressPos;
    Qt::KeyboardModifiers m_pressModifiers;
};

} // namespace VelaColorPickerLib
