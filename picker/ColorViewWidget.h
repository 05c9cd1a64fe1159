#pragma once

#include "color/VelaColor.h"

#include <QPoint>
#include <QSize>
#include <QString>
#include <QWidget>

class QMimeData;
class QPixmap;

namespace VelaColorPickerLib {

/// One colour, large enough to judge, over a checkered ground. A click or the space bar selects it;
/// it can be dragged, dropped on, copied and pasted. A double click on a comparison swatch copies
/// it to the main one.
class ColorViewWidget : public QWidget
{
    Q_OBJECT
public:
    enum class Role { Main, Comparison };

    explicit ColorViewWidget(Role role, QWidget* parent = nullptr);

    VelaColor color() const { return m_color; }
    /// Of the library's swatch that the colour came from; empty for any other.
    QString uid() const { return m_uid; }
    bool isSelected() const { return m_selected; }
    /// Emits nothing.
    void setColor(const VelaColor& color, const QString& uid);
    /// What "Reset" brings back; white until it is set.
    void setResetColor(const VelaColor& color) { m_resetColor = color; }
    /// Draws the selection's frame. Emits nothing.
    void setSelected(bool selected);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    /// The user gave this swatch another colour (a drop, a paste, a reset).
    void colorChanged(const VelaColor& color, const QString& uid);
    void selected();
    void addToFavorites(const VelaColor& color);
    void copyToMainColor(const VelaColor& color, const QString& uid);
    // After colorChanged where this swatch is the selected one, which the pages must follow: the
    // white page takes Yxy colours, the other signal all the rest. A main swatch that is not
    // selected selects itself first.
    void openInRGBPicker(const VelaColor& color, const QString& uid);
    void openInWhitePicker(const VelaColor& color, const QString& uid);

public slots:
    void onAddToFavorites();
    void onCopyToMainColor();
    void onReset();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QMimeData* newMimeData() const;
    QPixmap dragPixmap() const;
    void giveColor(const VelaColor& color);
    bool takeFrom(const QMimeData* mime);
    QString describe() const;
    void tellColor();

    const Role m_role;
    VelaColor m_color = VelaColor(Qt::white);
    VelaColor m_resetColor = VelaColor(Qt::white);
    QString m_uid;
    bool m_selected = false;
    bool m_pressed = false;
    QPoint m_pressPos;
};

} // namespace VelaColorPickerLib
