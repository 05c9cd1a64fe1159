#include "editor/WhiteLevelsPanel.h"

#include "effects/WhiteLevels.h"

#include <QComboBox>
#include <QFontMetrics>
#include <QGridLayout>
#include <QLabel>
#include <QSlider>
#include <QSpinBox>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace {

constexpr int kMostTemperature = 510;
constexpr int kMostIntensity = 100;
constexpr int kMostLevel = 255;
constexpr int kSliderLetters = 24;

int bounded(quint32 value)
{
    constexpr auto kMost = static_cast<quint32>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(value, kMost));
}

} // namespace

WhiteLevelsPanel::WhiteLevelsPanel(const WhiteLevels& levels, QWidget* parent)
    : QWidget(parent)
{
    const int unit = QFontMetrics(font()).lineSpacing() / 2;
    m_inputType = new QComboBox(this);
    m_inputType->addItem(tr("Color Temp - Intensity"));
    m_inputType->addItem(tr("Warm - Cool"));
    auto* label = new QLabel(tr("Input type:"), this);
    label->setBuddy(m_inputType);
    m_inputType->setAccessibleName(tr("Input type"));

    auto* pages = new QStackedWidget(this);
    const auto addPage = [&] {
        auto* page = new QWidget(pages);
        auto* grid = new QGridLayout(page);
        grid->setContentsMargins(0, 0, 0, 0);
        grid->setHorizontalSpacing(unit);
        grid->setVerticalSpacing(unit);
        pages->addWidget(page);
        return grid;
    };
    QGridLayout* const byTemperature = addPage();
    m_temperature =
        addSlider(byTemperature, tr("Color Temp:"), kMostTemperature, levels.temperature);
    m_temperature->setToolTip(tr("From all cool on the left to all warm on the right"));
    m_intensity =
        addSlider(byTemperature, tr("Intensity:"), kMostIntensity, bounded(levels.intensity));
    m_intensity->setToolTip(tr("Percent"));
    QGridLayout* const byLevels = addPage();
    m_warm = addSlider(byLevels, tr("Warm:"), kMostLevel, bounded(levels.warm));
    tieSpinBox(byLevels, m_warm);
    m_cool = addSlider(byLevels, tr("Cool:"), kMostLevel, bounded(levels.cool));
    tieSpinBox(byLevels, m_cool);

    // A file may hold any number: one without a page shows none chosen and the page of levels,
    // as the effect takes it.
    const int type = bounded(levels.inputType);
    m_inputType->setCurrentIndex(type < m_inputType->count() ? type : -1);
    pages->setCurrentIndex(type == 0 ? 0 : 1);
    connect(m_inputType, QOverload<int>::of(&QComboBox::currentIndexChanged), pages,
            &QStackedWidget::setCurrentIndex);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setHorizontalSpacing(unit);
    layout->setVerticalSpacing(unit);
    layout->setColumnStretch(2, 1);
    layout->addWidget(label, 0, 0);
    layout->addWidget(m_inputType, 0, 1);
    layout->addWidget(pages, 1, 0, 1, 3);
}

QSlider* WhiteLevelsPanel::addSlider(QGridLayout* grid, const QString& label, int most, int value)
{
    const int row = grid->rowCount();
    QWidget* const page = grid->parentWidget();
    auto* slider = new QSlider(Qt::Horizontal, page);
    slider->setRange(0, most);
    slider->setPageStep(std::max(1, most / 10));
    slider->setMinimumWidth(QFontMetrics(font()).averageCharWidth() * kSliderLetters);
    slider->setValue(value);
    QString name = label;
    slider->setAccessibleName(name.remove(QLatin1Char(':')));
    auto* text = new QLabel(label, page);
    text->setBuddy(slider);
    grid->addWidget(text, row, 0);
    grid->addWidget(slider, row, 1);
    return slider;
}

void WhiteLevelsPanel::tieSpinBox(QGridLayout* grid, QSlider* slider)
{
    auto* spin = new QSpinBox(grid->parentWidget());
    spin->setRange(slider->minimum(), slider->maximum());
    spin->setValue(slider->value());
    spin->setAlignment(Qt::AlignRight);
    spin->setAccessibleName(slider->accessibleName());
    grid->addWidget(spin, grid->rowCount() - 1, 2);
    connect(slider, &QSlider::valueChanged, spin, &QSpinBox::setValue);
    connect(spin, QOverload<int>::of(&QSpinBox::valueChanged), slider, &QSlider::setValue);
}
