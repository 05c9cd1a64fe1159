#include "picker/ZoomControlWidget.h"

#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

namespace VelaColorPickerLib {

ZoomControlWidget::ZoomControlWidget(int levels, QWidget* parent)
    : QWidget(parent)
    , m_levels(levels)
    , m_zoomOut(makeButton("zoomOutButton", "zoom_out"))
    , m_label(new QLabel(this))
    , m_zoomIn(makeButton("zoomInButton", "zoom_in"))
{
    m_zoomOut->setText(QStringLiteral("-")); // where there is no picture
    m_zoomOut->setAccessibleName(tr("Zoom out"));
    m_zoomOut->setToolTip(tr("Zoom out (Ctrl+-)"));
    m_zoomIn->setText(QStringLiteral("+"));
    m_zoomIn->setAccessibleName(tr("Zoom in"));
    m_zoomIn->setToolTip(tr("Zoom in (Ctrl++)"));
    m_label->setObjectName(QStringLiteral("zoomLevelLabel"));
    m_label->setAlignment(Qt::AlignCenter);
    m_label->setToolTip(tr("Zoom level, 1 to %1").arg(levels));
    setLevel(levels); // the widest text
    m_label->setMinimumWidth(m_label->sizeHint().width());

    auto* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(fontMetrics().height() / 2);
    layout->addStretch(1);
    layout->addWidget(m_zoomOut);
    layout->addWidget(m_label);
    layout->addWidget(m_zoomIn);
    layout->addStretch(1);
    setLevel(1);

    connect(m_zoomOut, &QToolButton::clicked, this, &ZoomControlWidget::zoomOutClicked);
    connect(m_zoomIn, &QToolButton::clicked, this, &ZoomControlWidget::zoomInClicked);
}

QToolButton* ZoomControlWidget::makeButton(const char* objectName, const char* icon)
{
    auto* const button = new QToolButton(this);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoRaise(true);
    button->setAutoRepeat(true);
    button->setFocusPolicy(Qt::StrongFocus);
    QIcon picture;
    for (const int size : {16, 24, 32, 48}) {
        picture.addFile(
            QStringLiteral(":/images/icons/%1/%2.png").arg(size).arg(QLatin1String(icon)));
    }
    const int side = fontMetrics().height() * 3 / 2;
    button->setIcon(picture);
    button->setIconSize({side, side});
    return button;
}

void ZoomControlWidget::setLevel(int level)
{
    m_level = std::clamp(level, 1, m_levels);
    m_label->setText(tr("Zoom %1").arg(m_level));
    m_zoomOut->setEnabled(m_level > 1);
    m_zoomIn->setEnabled(m_level < m_levels);
}

} // namespace VelaColorPickerLib
