#include "app/EditPreferencesDialog.h"

#include <QColorDialog>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace {

QSpinBox* makeSpinBox(QWidget* parent, const char* name, int value)
{
    auto* box = new QSpinBox(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setRange(1, 100);
    box->setValue(value);
    box->setAlignment(Qt::AlignRight);
    box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return box;
}

QLabel* makeLabel(const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text, buddy->parentWidget());
    label->setBuddy(buddy);
    return label;
}

} // namespace

EditPreferencesDialog::EditPreferencesDialog(QWidget* parent)
    : QDialog(parent)
{
    setWindowTitle(tr("Edit Preferences"));
    setWindowFlags(windowFlags() & ~Qt::WindowContextHelpButtonHint);
    const int unit = QFontMetrics(font()).lineSpacing() / 2;

    m_frameRate = makeSpinBox(this, "frameRate", 40);
    m_frameRate->setSuffix(tr("fps"));
    m_frameRate->setToolTip(tr("Frames that leave for the controllers each second"));
    auto* simulation = new QGroupBox(tr("Simulation"), this);
    m_simRate = makeSpinBox(simulation, "simRate", 20);
    m_simRate->setToolTip(tr("How many frames pass from one redraw of the plan to the next"));
    m_colorButton = new QPushButton(tr("Set..."), simulation);
    m_colorButton->setObjectName(QStringLiteral("colorButton"));
    m_colorButton->setAccessibleName(tr("Simulation Background Color"));

    auto* rates = new QHBoxLayout;
    rates->setSpacing(unit);
    rates->addWidget(makeLabel(tr("Live Play Frame Rate:"), m_frameRate));
    rates->addStretch();
    rates->addWidget(m_frameRate);

    auto* grid = new QGridLayout(simulation);
    grid->setHorizontalSpacing(unit);
    grid->setVerticalSpacing(unit);
    grid->addWidget(makeLabel(tr("Live Play Frames per Simulation Update:"), m_simRate), 0, 0);
    grid->addWidget(m_simRate, 0, 1, Qt::AlignRight);
    grid->addWidget(makeLabel(tr("Simulation Background Color:"), m_colorButton), 1, 0);
    grid->addWidget(m_colorButton, 1, 1, Qt::AlignRight);

    auto* okButton = new QPushButton(tr("&OK"), this);
    okButton->setObjectName(QStringLiteral("okButton"));
    okButton->setDefault(true);
    auto* cancelButton = new QPushButton(tr("&Cancel"), this);
    cancelButton->setObjectName(QStringLiteral("cancelButton"));
    cancelButton->setShortcut(QKeySequence(QStringLiteral("Alt+C")));
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(unit);
    buttons->addStretch();
    buttons->addWidget(cancelButton);
    buttons->addWidget(okButton);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(2 * unit, 2 * unit, 2 * unit, 2 * unit);
    layout->setSpacing(2 * unit);
    layout->addLayout(rates);
    layout->addWidget(simulation);
    layout->addStretch();
    layout->addLayout(buttons);
    showBackground();

    connect(okButton, &QPushButton::clicked, this, &EditPreferencesDialog::okButtonClicked);
    connect(cancelButton, &QPushButton::clicked, this, &EditPreferencesDialog::cancelButtonClicked);
    connect(m_colorButton, &QPushButton::clicked, this, &EditPreferencesDialog::colorButtonClicked);
    setTabOrder(m_colorButton, cancelButton);
    setTabOrder(cancelButton, okButton);
}

int EditPreferencesDialog::frameRate() const
{
    return m_frameRate->value();
}

void EditPreferencesDialog::setFrameRate(int rate)
{
    m_frameRate->setValue(rate);
}

int EditPreferencesDialog::simRate() const
{
    return m_simRate->value();
}

void EditPreferencesDialog::setSimRate(int rate)
{
    m_simRate->setValue(rate);
}

void EditPreferencesDialog::setSimBackground(const QColor& color)
{
    m_simBackground = color;
    showBackground();
}

void EditPreferencesDialog::okButtonClicked()
{
    accept();
}

void EditPreferencesDialog::cancelButtonClicked()
{
    reject();
}

void EditPreferencesDialog::colorButtonClicked()
{
    const QColor chosen = QColorDialog::getColor(m_simBackground, this, tr("color dialog"));
    if (chosen.isValid()) {
        setSimBackground(chosen);
    }
}

void EditPreferencesDialog::showBackground()
{
    // An invalid colour is painted as the simulation paints it: black.
    const int side = QFontMetrics(font()).height();
    QPixmap sample(side, side);
    sample.fill(m_simBackground.isValid() ? m_simBackground : QColor(Qt::black));
    QPainter painter(&sample);
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(0, 0, side - 1, side - 1);
    painter.end();
    m_colorButton->setIcon(QIcon(sample));
}
