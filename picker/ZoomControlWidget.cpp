#include "picker/ZoomControlWidget.h"

#include <QFontMetrics>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace VelaColorPickerLib {

namespace {

QToolButton* newButton(const QString& text, const QString& name, const QString& toolTip,
                       QWidget* parent)
{
    auto* const button = new QToolButton(parent);
    button->setText(text);
    button->setAccessibleName(name);
    button->setToolTip(toolTip);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setAutoRepeat(true);
    const int side = button->fontMetrics().height() * 3 / 2;
    button->setMinimumSize(side, side);
    return button;
}

} // namespace

ZoomControlWidget::ZoomControlWidget(QWidget* parent)
    : QWidget(parent)
    , m_out(newButton(QString(QChar(0x2212)), tr("Zoom out"), tr("Zoom out (Ctrl+-)"), this))
    , m_label(new QLabel(this))
    , m_in(newButton(QStringLiteral("+"), tr("Zoom in"), tr("Zoom in (Ctrl++)"), this))
{
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setMinimumWidth(fontMetrics().horizontalAdvance(tr("Zoom %1").arg(88)));
    auto* const row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(fontMetrics().height() / 2);
    row->addStretch();
    row->addWidget(m_out);
    row->addWidget(m_label);
    row->addWidget(m_in);
    row->addStretch();
    connect(m_out, &QToolButton::clicked, this, &ZoomControlWidget::zoomOut);
    connect(m_in, &QToolButton::clicked, this, &ZoomControlWidget::zoomIn);
}

void ZoomControlWidget::setLevel(int level, int levels)
{
    m_label->setText(tr("Zoom %1").arg(level));
    m_out->setEnabled(level > 1);
    m_in->setEnabled(level < levels);
}

} // namespace VelaColorPickerLib
