#include "editor/ImageWidget.h"

#include "color/Numeric.h"
#include "editor/ColorSwatch.h"
#include "effects/ImageEffect.h"

#include <QCheckBox>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

namespace {
constexpr int kMostPlace = 9999;
const char* const kWidestSize = "00000 x 00000";
} // namespace

ImageWidget::ImageWidget(ImageEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Image Scroll"), effect, model, parent)
    , m_effect(effect)
    , m_transColor(effect->transColor())
    , m_bgColor(effect->bgColor())
{
    addImageGroup();
    beginGroup(tr("Timing"));
    QLineEdit* const cycleTime =
        addLine(tr("Cycle Time (sec):"), wholeSeconds(effect->cycleTime()));
    connect(cycleTime, &QLineEdit::textChanged, this, &ImageWidget::handleCycleTimeChanged);
    addGeometryGroup();
    addColorsGroup();
    finishLayout();
    connect(effect, &ImageEffect::updateImageSizeLabel, this,
            &ImageWidget::handleUpdateImageSizeLabel);
    connect(effect, &ImageEffect::updateOutputSizeLabel, this,
            &ImageWidget::handleUpdateOutputSizeLabel);
}

void ImageWidget::addImageGroup()
{
    beginGroup(tr("Image"));
    m_file = addWideLine(tr("Image File:"), m_effect->imageFile());
    auto* buttons = new QWidget(this);
    auto* line = new QHBoxLayout(buttons);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(unit());
    auto* browse = new QPushButton(tr("Browse"), buttons);
    auto* load = new QPushButton(tr("Load"), buttons);
    browse->setAutoDefault(false);
    load->setAutoDefault(false);
    line->addWidget(browse);
    line->addWidget(load);
    line->addStretch();
    addWidget(buttons);
    connect(browse, &QPushButton::clicked, this, &ImageWidget::handleBrowseButtonClicked);
    connect(load, &QPushButton::clicked, this, &ImageWidget::handleLoadButtonClicked);
}

void ImageWidget::addGeometryGroup()
{
    using Self = ImageWidget;
    const QString widest = QString::fromLatin1(kWidestSize);
    const auto valueChanged = QOverload<int>::of(&QSpinBox::valueChanged);
    beginGroup(tr("Geometry"));
    m_imageSize = addValue(tr("Image Size:"), m_effect->imageSizeText(), widest);
    const QString output = m_effect->outputSizeText();
    m_outputSize =
        addValue(tr("Output Size:"), output.isEmpty() ? QStringLiteral("0 x 0") : output, widest);
    const Place start = addPlace(tr("Start"), kMostPlace, truncI32(m_effect->startX()),
                                 truncI32(m_effect->startY()), m_effect->startScale());
    const Place end = addPlace(tr("End"), kMostPlace, truncI32(m_effect->endX()),
                               truncI32(m_effect->endY()), m_effect->endScale());
    for (const Place& place : {start, end}) {
        place.x->setToolTip(tr("The pixel of the picture in the middle of the lights"));
        place.y->setToolTip(place.x->toolTip());
    }
    connect(start.x, valueChanged, this, &Self::handleStartXChanged);
    connect(start.y, valueChanged, this, &Self::handleStartYChanged);
    connect(start.scale, &QLineEdit::textChanged, this, &Self::handleStartScaleChanged);
    connect(end.x, valueChanged, this, &Self::handleEndXChanged);
    connect(end.y, valueChanged, this, &Self::handleEndYChanged);
    connect(end.scale, &QLineEdit::textChanged, this, &Self::handleEndScaleChanged);
    QCheckBox* const smooth = addCheck(tr("Smooth"), m_effect->smooth());
    smooth->setToolTip(tr("Show the mean of the pixels around each light"));
    connect(smooth, &QCheckBox::toggled, this, &Self::handleSmoothToggled);
}

void ImageWidget::addColorsGroup()
{
    using Self = ImageWidget;
    beginGroup(tr("Colors"));
    const ColorRow trans =
        addColor(tr("Transparent Color"), m_transColor, tr("Enabled"), m_effect->transEnabled());
    const ColorRow bg = addColor(tr("Background Color"), m_bgColor);
    trans.check->setToolTip(tr("Lights of exactly this color show what lies beneath"));
    m_transSwatch = trans.swatch;
    m_bgSwatch = bg.swatch;
    connect(trans.button, &QPushButton::clicked, this, &Self::chooseTransColorClicked);
    connect(trans.check, &QCheckBox::toggled, this, &Self::handleTransEnabledToggled);
    connect(bg.button, &QPushButton::clicked, this, &Self::chooseBgColorClicked);
}

void ImageWidget::handleBrowseButtonClicked()
{
    // The dialog belongs to the window: the form may go while it is open.
    const QPointer<ImageWidget> guard(this);
    const QString file =
        QFileDialog::getOpenFileName(window(), tr("Image File Browser"), m_file->text());
    if (guard.isNull() || file.isEmpty() || m_effect == nullptr) {
        return;
    }
    m_file->setText(file);
    m_effect->setImageFile(file);
}

void ImageWidget::handleLoadButtonClicked()
{
    if (m_effect != nullptr) {
        m_effect->setImageFile(m_file->text());
    }
}

void ImageWidget::handleCycleTimeChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setCycleSeconds(s.toUInt());
    }
}

void ImageWidget::handleSmoothToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setSmooth(b);
    }
}

void ImageWidget::chooseTransColorClicked()
{
    choose(m_effect, m_transColor, [this](const VelaColor& c) { handleGotNewTransColor(c); });
}

void ImageWidget::handleGotNewTransColor(const VelaColor& c)
{
    m_transColor = c;
    m_transSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setTransColor(c);
    }
}

void ImageWidget::handleTransEnabledToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setTransEnabled(b);
    }
}

void ImageWidget::chooseBgColorClicked()
{
    choose(m_effect, m_bgColor, [this](const VelaColor& c) { handleGotNewBgColor(c); });
}

void ImageWidget::handleGotNewBgColor(const VelaColor& c)
{
    m_bgColor = c;
    m_bgSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setBgColor(c);
    }
}

void ImageWidget::handleUpdateImageSizeLabel(const QString& s)
{
    m_imageSize->setText(s);
}

void ImageWidget::handleUpdateOutputSizeLabel(const QString& s)
{
    m_outputSize->setText(s);
}

void ImageWidget::handleStartXChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setStartX(i);
    }
}

void ImageWidget::handleStartYChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setStartY(i);
    }
}

void ImageWidget::handleStartScaleChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setStartScale(s.toDouble());
    }
}

void ImageWidget::handleEndXChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setEndX(i);
    }
}

void ImageWidget::handleEndYChanged(int i)
{
    if (m_effect != nullptr) {
        m_effect->setEndY(i);
    }
}

void ImageWidget::handleEndScaleChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setEndScale(s.toDouble());
    }
}
