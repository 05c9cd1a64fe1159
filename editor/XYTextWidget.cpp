#include "editor/XYTextWidget.h"

#include "color/VelaColor.h"
#include "editor/ColorSwatch.h"
#include "effects/XYTextEffect.h"

#include <QCheckBox>
#include <QFont>
#include <QFontComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {
constexpr int kMostSize = 500;
constexpr int kStartSize = 12;
} // namespace

XYTextWidget::XYTextWidget(XYTextEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("XY Text"), effect, model, parent)
    , m_effect(effect)
    , m_textColor(effect->fgColor())
    , m_bgColor(effect->bgColor())
{
    addTextGroup();
    beginGroup(tr("Timing"));
    QLineEdit* const cycleTime = addLine(tr("Cycle Time (sec):"), text(effect->cycleSeconds()));
    connect(cycleTime, &QLineEdit::textChanged, this, &XYTextWidget::m_cycleTimeEdit_textChanged);
    addColorsGroup();
    finishLayout();
}

void XYTextWidget::addTextGroup()
{
    using Self = XYTextWidget;
    beginGroup(tr("Text String"));
    QLineEdit* const line = makeWideLine(m_effect->text());
    line->setAccessibleName(tr("Text String"));
    addWidget(line);
    auto* font = new QFontComboBox(this);
    font->setCurrentFont(QFont(m_effect->fontFamily()));
    font->setEditText(m_effect->fontFamily()); // also one that this machine hasn't got, or none
    addLabelled(tr("Font:"), font);
    QCheckBox* const bold = addCheck(tr("Bold"), m_effect->bold());
    QCheckBox* const italic = addCheck(tr("Italic"), m_effect->italic());
    QCheckBox* const smooth = addCheck(tr("Smooth"), m_effect->smooth());
    QSpinBox* const size =
        addSpin(tr("Size (pixels):"), 1, kMostSize, kStartSize, m_effect->fontSize());
    connect(line, &QLineEdit::textChanged, this, &Self::m_lineEdit_textChanged);
    connect(font, &QFontComboBox::textActivated, this, &Self::m_fontComboBox_activated);
    connect(bold, &QCheckBox::toggled, this, &Self::m_boldCheckBox_toggled);
    connect(italic, &QCheckBox::toggled, this, &Self::m_italicCheckBox_toggled);
    connect(smooth, &QCheckBox::toggled, this, &Self::m_smoothCheckBox_toggled);
    connect(size, QOverload<int>::of(&QSpinBox::valueChanged), this,
            &Self::m_sizeSpinBox_valueChanged);
}

void XYTextWidget::addColorsGroup()
{
    using Self = XYTextWidget;
    beginGroup(tr("Colors"));
    const ColorRow fg =
        addColor(tr("Text Color"), m_textColor, tr("Trans"), m_effect->fgTransparent());
    const ColorRow bg =
        addColor(tr("Background Color"), m_bgColor, tr("Trans"), m_effect->bgTransparent());
    m_textSwatch = fg.swatch;
    m_bgSwatch = bg.swatch;
    connect(fg.button, &QPushButton::clicked, this, &Self::textColorClicked);
    connect(fg.check, &QCheckBox::toggled, this, &Self::m_fgTransparentCheckBox_toggled);
    connect(bg.button, &QPushButton::clicked, this, &Self::bgColorClicked);
    connect(bg.check, &QCheckBox::toggled, this, &Self::m_bgTransparentCheckBox_toggled);
}

void XYTextWidget::m_lineEdit_textChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setText(s);
    }
}

void XYTextWidget::m_fontComboBox_activated(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setFontFamily(s);
    }
}

void XYTextWidget::m_boldCheckBox_toggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setBold(b);
    }
}

void XYTextWidget::m_italicCheckBox_toggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setItalic(b);
    }
}

void XYTextWidget::m_underlineCheckBox_toggled(bool /*b*/) {}

void XYTextWidget::m_sizeSpinBox_valueChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setFontSize(i);
    }
}

void XYTextWidget::m_cycleTimeEdit_textChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCycleTime(s.toDouble());
    }
}

void XYTextWidget::m_fgTransparentCheckBox_toggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setFgTransparent(b);
    }
}

void XYTextWidget::m_bgTransparentCheckBox_toggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setBgTransparent(b);
    }
}

void XYTextWidget::m_smoothCheckBox_toggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setSmooth(b);
    }
}

void XYTextWidget::textColorClicked()
{
    choose(m_effect, m_textColor,
           [this](const VelaColor& c) { gotNewTextColor(c.toQColor(true)); });
}

void XYTextWidget::gotNewTextColor(const QColor& c)
{
    m_textColor = c;
    m_textSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setFgColor(c);
    }
}

void XYTextWidget::bgColorClicked()
{
    choose(m_effect, m_bgColor, [this](const VelaColor& c) { gotNewBgColor(c.toQColor(true)); });
}

void XYTextWidget::gotNewBgColor(const QColor& c)
{
    m_bgColor = c;
    m_bgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setBgColor(c);
    }
}
