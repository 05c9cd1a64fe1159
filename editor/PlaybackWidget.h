#pragma once

#include <QColor>
#include <QString>
#include <QWidget>

class QLabel;
class QSlider;
class QToolButton;

/// The strip below the effect table: time slider, pause button, the two times. It only relays.
class PlaybackWidget : public QWidget
{
    Q_OBJECT
public:
    explicit PlaybackWidget(QWidget* parent = nullptr);

    /// Position of the slider, 0 to 499.
    int value() const;
    void setValue(int value);
    /// True while the pause button is checked.
    bool isPaused() const;
    void setCurrentTimeText(const QString& text);
    void setTotalTimeText(const QString& text);
    void setTotalTimeColor(const QColor& color);

signals:
    void sliderPressed();
    void valueChanged(int value);
    void sliderReleased();
    void toggled(bool checked);

private:
    QSlider* m_showSlider = nullptr;
    QToolButton* m_pauseButton = nullptr;
    QLabel* m_currentTime = nullptr;
    QLabel* m_totalTime = nullptr;
};
