#include "app/ForgeWindow.h"
#include "color/Numeric.h"
#include "editor/PlaybackWidget.h"
#include "engine/EffectEngine.h"
#include "engine/MetaEffect.h"

#include <QDateTime>
#include <QMessageBox>
#include <QTimer>

namespace {

constexpr quint32 kLongestShowMs = 86400000; // one day
constexpr int kUpdateMs = 100;
constexpr int kLastSliderStep = 499;

QString secondsText(double seconds)
{
    return QString::number(seconds, 'f', 6);
}

} // namespace

void ForgeWindow::sliderUpdate()
{
    if (m_show == nullptr) {
        return;
    }
    const quint32 length = m_show->end();
    QString text = secondsText(length / 1000.0);
    if (length <= kLongestShowMs) {
        m_playback->setTotalTimeColor(Qt::black);
    } else {
        if (!m_lengthErrorShown) {
            m_lengthErrorShown = true; // before the box, whose event loop comes back here
            QMessageBox::critical(
                this, tr("Error"),
                tr("Shows cannot be longer than 1 day (86,400 seconds) in length."));
        }
        m_playback->setTotalTimeColor(Qt::red);
        text += tr(" (Invalid)");
    }
    m_playback->setTotalTimeText(text);

    if (length != 0) {
        const auto position = static_cast<double>(m_show->elapsed());
        if (!m_engine->isPaused() && !m_sliderHeld) {
            m_sliderUpdating = true;
            m_playback->setValue(limitI32(position / length * 500.0, 0, kLastSliderStep));
            m_sliderUpdating = false;
            m_playback->setCurrentTimeText(secondsText(position / 1000.0));
        }
    }
    m_sliderTimer->start(kUpdateMs);
    if (length != 0 && m_playback->isPaused()) {
        m_engine->pause(true);
    }
}

void ForgeWindow::sliderChanged(int value)
{
    // The label counts 499 steps, so that the last one reads the show's length; the seek counts
    // 500.
    const double x = static_cast<double>(value) * m_show->end();
    m_playback->setCurrentTimeText(secondsText(x / 499.0 / 1000.0));
    if (!m_sliderUpdating) {
        m_engine->tick(m_show->startTime().addMSecs(truncI64(x / 500.0)));
    }
    if (m_playback->isPaused()) {
        m_engine->pause(true);
    }
}

void ForgeWindow::sliderPressed()
{
    m_engine->pause(true);
    m_sliderHeld = true;
}

void ForgeWindow::sliderReleased()
{
    if (!m_playback->isPaused()) {
        pause(false);
    }
    m_sliderHeld = false;
}

void ForgeWindow::pause(bool on)
{
    if (on) {
        m_engine->pause(true);
        return;
    }
    m_engine->pause(false);
    if (m_show != nullptr) {
        // Stopped children are entered anew by the next frame, with start times that fit. What was
        // shown while the slider moved lies ahead of the clock or behind it.
        m_show->rewindAll(QDateTime::currentDateTime());
        const qint64 offset = static_cast<qint64>(m_show->end() / 500) * m_playback->value();
        m_show->setStartTime(QDateTime::currentDateTime().addMSecs(-offset));
    }
}

void ForgeWindow::handlePauseEffectEngine(bool b)
{
    pause(b);
}
