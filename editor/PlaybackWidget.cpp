#include "editor/PlaybackWidget.h"

#include <QBrush>
#include <QFontMetrics>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPalette>
#include <QSlider>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

/// A time label of fixed size, so that it never moves its neighbours, on a light ground of its
/// own: its text is black or red in every palette.
QLabel* makeTimeLabel(QWidget* parent, const char* name, const QString& widest)
{
    auto* label = new QLabel(parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    QPalette palette = label->palette();
    palette.setColor(QPalette::Window, QColor(0xf4, 0xf5, 0xf7));
    palette.setColor(QPalette::WindowText, Qt::black);
    label->setPalette(palette);
    label->setAutoFillBackground(true);
    const QFontMetrics metrics(label->font());
    const int unit = metrics.lineSpacing() / 2;
    label->setContentsMargins(unit, 0, unit, 0);
    label->setFixedSize(metrics.horizontalAdvance(widest) + 2 * unit, metrics.height() + unit);
    return label;
}

} // namespace

PlaybackWidget::PlaybackWidget(QWidget* parent)
    : QWidget(parent)
{
    const int unit = QFontMetrics(font()).lineSpacing() / 2;
    m_showSlider = new QSlider(Qt::Horizontal, this);
    m_showSlider->setObjectName(QStringLiteral("m_showSlider"));
    m_showSlider->setRange(0, 499);
    m_showSlider->setToolTip(tr("The moment of the show; drag to see another"));
    m_showSlider->setAccessibleName(tr("Show Time"));

    m_pauseButton = new QToolButton(this);
    m_pauseButton->setObjectName(QStringLiteral("m_pauseButton"));
    m_pauseButton->setCheckable(true);
    QIcon icon;
    for (const int side : {16, 24, 32, 48}) {
        icon.addFile(QStringLiteral(":/images/icons/%1/pause.png").arg(side));
    }
    m_pauseButton->setIcon(icon);
    m_pauseButton->setIconSize(QSize(24, 24));
    m_pauseButton->setAutoRaise(true);
    m_pauseButton->setToolTip(tr("Pause the show"));
    m_pauseButton->setAccessibleName(tr("Pause"));

    const QString widest = QStringLiteral("4294967.295000"); // the latest moment there is
    m_currentTime = makeTimeLabel(this, "currentTime", widest);
    m_totalTime = makeTimeLabel(this, "totalTime", widest + QStringLiteral(" (Invalid)"));
    m_totalTime->setText(tr("0.00 sec."));

    auto* times = new QHBoxLayout;
    times->setSpacing(unit);
    times->addWidget(m_pauseButton);
    times->addWidget(new QLabel(tr("Cur Time:"), this));
    times->addWidget(m_currentTime);
    times->addStretch();
    times->addWidget(new QLabel(tr("Total Time:"), this));
    times->addWidget(m_totalTime);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * unit, unit, 2 * unit, unit);
    layout->setSpacing(unit / 2);
    layout->addWidget(m_showSlider);
    layout->addLayout(times);

    connect(m_showSlider, &QSlider::sliderPressed, this, &PlaybackWidget::sliderPressed);
    connect(m_showSlider, &QSlider::valueChanged, this, &PlaybackWidget::valueChanged);
    connect(m_showSlider, &QSlider::sliderReleased, this, &PlaybackWidget::sliderReleased);
    connect(m_pauseButton, &QToolButton::toggled, this, &PlaybackWidget::toggled);
}

int PlaybackWidget::value() const
{
    return m_showSlider->value();
}

void PlaybackWidget::setValue(int value)
{
    m_showSlider->setValue(value);
}

bool PlaybackWidget::isPaused() const
{
    return m_pauseButton->isChecked();
}

void PlaybackWidget::setCurrentTimeText(const QString& text)
{
    m_currentTime->setText(text);
}

void PlaybackWidget::setTotalTimeText(const QString& text)
{
    m_totalTime->setText(text);
}

void PlaybackWidget::setTotalTimeColor(const QColor& color)
{
    QPalette palette = m_totalTime->palette();
    palette.setBrush(QPalette::WindowText, QBrush(color));
    m_totalTime->setPalette(palette);
}
