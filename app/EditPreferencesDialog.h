#pragma once

#include <QColor>
#include <QDialog>

class QPushButton;
class QSpinBox;

/// Frame rate, simulation rate and the simulation's background.
class EditPreferencesDialog : public QDialog
{
    Q_OBJECT
public:
    explicit EditPreferencesDialog(QWidget* parent);

    /// Frames per second, 1 to 100.
    int frameRate() const;
    void setFrameRate(int rate);
    /// Live frames per simulation redraw, 1 to 100.
    int simRate() const;
    void setSimRate(int rate);
    /// May be invalid, where none was ever chosen.
    QColor simBackground() const { return m_simBackground; }
    void setSimBackground(const QColor& color);

public slots:
    void okButtonClicked();
    void cancelButtonClicked();
    void colorButtonClicked();

private:
    void showBackground();

    QSpinBox* m_frameRate = nullptr;
    QSpinBox* m_simRate = nullptr;
    QPushButton* m_colorButton = nullptr;
    QColor m_simBackground;
};
