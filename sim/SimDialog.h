#pragma once

#include <QDialog>

class QFrame;
class QVBoxLayout;

/// The frame of the simulation window: a dialog with one frame that fills it, and no logic.
class SimDialog : public QDialog
{
    Q_OBJECT
public:
    explicit SimDialog(QWidget* parent);

protected:
    QVBoxLayout* vboxLayout() const { return m_vboxLayout; }
    QFrame* simFrame() const { return m_simFrame; }

private:
    void setupForm();

    QVBoxLayout* m_vboxLayout = nullptr;
    QFrame* m_simFrame = nullptr;
};
