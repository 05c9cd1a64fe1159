#include "editor/EffectForm.h"

#include "color/VelaColor.h"
#include "editor/ColorChooser.h"
#include "editor/ColorSwatch.h"
#include "engine/Effect.h"

#include <QCheckBox>
#include <QFont>
#include <QFontMetrics>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <limits>

namespace {
enum Column : int { LabelColumn = 0, ControlColumn, RestColumn };
constexpr quint32 kMsPerSecond = 1000;
} // namespace

EffectForm::EffectForm(const QString& title, const Effect* effect, MapModel* model, QWidget* parent)
    : QWidget(parent, Qt::WindowStaysOnTopHint)
    , m_model(model)
{
    if (effect == nullptr || model == nullptr) {
        qBadAlloc();
    }
    setWindowTitle(title);
    m_boxes = new QVBoxLayout(this);
    m_boxes->setContentsMargins(0, 0, 0, 0);
    m_boxes->setSpacing(2 * unit());
}

int EffectForm::unit() const
{
    return QFontMetrics(font()).lineSpacing() / 2;
}

void EffectForm::beginGroup(const QString& title)
{
    auto* box = new QGroupBox(title, this);
    m_grid = new QGridLayout(box);
    m_grid->setContentsMargins(unit(), unit(), unit(), unit());
    m_grid->setHorizontalSpacing(unit());
    m_grid->setVerticalSpacing(unit() / 2);
    m_grid->setColumnStretch(RestColumn, 1);
    m_boxes->addWidget(box);
}

void EffectForm::addLabelled(const QString& label, QWidget* widget)
{
    const int row = m_grid->rowCount();
    auto* text = new QLabel(label, widget->parentWidget());
    text->setBuddy(widget);
    QString name = label;
    widget->setAccessibleName(name.remove(QLatin1Char(':')));
    m_grid->addWidget(text, row, LabelColumn, Qt::AlignVCenter);
    m_grid->addWidget(widget, row, ControlColumn, 1, 2, Qt::AlignLeft | Qt::AlignVCenter);
}

QLineEdit* EffectForm::addLine(const QString& label, const QString& text)
{
    auto* line = new QLineEdit(text, m_grid->parentWidget());
    line->setFixedWidth(line->fontMetrics().horizontalAdvance(QStringLiteral("000000000.000")));
    line->setAlignment(Qt::AlignRight);
    addLabelled(label, line);
    return line;
}

QLineEdit* EffectForm::addWideLine(const QString& label, const QString& text)
{
    auto* line = new QLineEdit(text, m_grid->parentWidget());
    line->setMinimumWidth(line->fontMetrics().averageCharWidth() * 24);
    const int row = m_grid->rowCount();
    addLabelled(label, line);
    m_grid->removeWidget(line); // again, without an alignment: it may grow
    m_grid->addWidget(line, row, ControlColumn, 1, 2);
    return line;
}

QSpinBox* EffectForm::addSpin(const QString& label, int least, int most, int start, int value)
{
    auto* spin = new QSpinBox(m_grid->parentWidget());
    spin->setRange(least, most);
    spin->setValue(start);
    spin->setValue(value);
    spin->setAlignment(Qt::AlignRight);
    addLabelled(label, spin);
    return spin;
}

QCheckBox* EffectForm::addCheck(const QString& text, bool on)
{
    auto* check = new QCheckBox(text, m_grid->parentWidget());
    check->setChecked(on);
    m_grid->addWidget(check, m_grid->rowCount(), ControlColumn, 1, 2);
    return check;
}

EffectForm::ColorRow EffectForm::addColor(const QString& label, const VelaColor& color,
                                          const QString& check, bool isChecked)
{
    QWidget* const box = m_grid->parentWidget();
    const int row = m_grid->rowCount();
    ColorRow made;
    made.swatch = new ColorSwatch(box);
    made.swatch->setColor(color);
    made.swatch->setAccessibleName(label);
    made.button = new QPushButton(tr("Choose Color"), box);
    made.button->setAutoDefault(false);
    made.button->setAccessibleName(tr("Choose Color") + QStringLiteral(": ") + label);
    auto* text = new QLabel(label, box);
    text->setBuddy(made.button);
    auto* line = new QHBoxLayout;
    line->setSpacing(unit());
    line->addWidget(made.swatch);
    line->addWidget(made.button);
    if (!check.isEmpty()) {
        made.check = new QCheckBox(check, box);
        made.check->setChecked(isChecked);
        made.check->setAccessibleName(label + QLatin1Char(' ') + check);
        line->addWidget(made.check);
    }
    line->addStretch();
    m_grid->addWidget(text, row, LabelColumn, Qt::AlignVCenter);
    m_grid->addLayout(line, row, ControlColumn, 1, 2);
    return made;
}

QLabel* EffectForm::addValue(const QString& label, const QString& text, const QString& widest)
{
    auto* value = new QLabel(text, m_grid->parentWidget());
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(widest));
    addLabelled(label, value);
    return value;
}

void EffectForm::addHeading(const QString& text)
{
    auto* heading = new QLabel(text, m_grid->parentWidget());
    QFont bold = heading->font();
    bold.setBold(true);
    heading->setFont(bold);
    addWidget(heading);
}

void EffectForm::addWidget(QWidget* widget)
{
    m_grid->addWidget(widget, m_grid->rowCount(), LabelColumn, 1, 3);
}

void EffectForm::finishLayout()
{
    int widest = 0;
    const QList<QGroupBox*> boxes = findChildren<QGroupBox*>(QString(), Qt::FindDirectChildrenOnly);
    for (QGroupBox* const box : boxes) {
        const QList<QLabel*> labels =
            box->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
        for (const QLabel* const label : labels) {
            if (label->buddy() != nullptr) {
                widest = std::max(widest, label->sizeHint().width());
            }
        }
    }
    for (QGroupBox* const box : boxes) {
        static_cast<QGridLayout*>(box->layout())->setColumnMinimumWidth(LabelColumn, widest);
    }
    m_boxes->addStretch();
}

void EffectForm::choose(const Effect* effect, const VelaColor& current,
                        const std::function<void(const VelaColor&)>& handler)
{
    if (effect != nullptr) {
        chooseColor(*effect, m_model, current, this, handler);
    }
}

int EffectForm::spinValue(quint32 value)
{
    constexpr auto kMost = static_cast<quint32>(std::numeric_limits<int>::max());
    return static_cast<int>(std::min(value, kMost));
}

QString EffectForm::text(double value)
{
    return QString::number(value, 'g', 6);
}

QString EffectForm::wholeSeconds(quint32 ms)
{
    return QString::number(ms / kMsPerSecond);
}
