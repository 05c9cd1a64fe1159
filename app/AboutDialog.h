#pragma once

#include <QDialog>

/// The splash picture again, as a frameless modal box that closes on any mouse press.
class AboutDialog : public QDialog
{
    Q_OBJECT
public:
    explicit AboutDialog(QWidget* parent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};
