#include "editor/FlashEffectWidget.h"

#include "color/Numeric.h"
#include "editor/ColorSwatch.h"
#include "effects/FlashEffect.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QSpinBox>

namespace {

constexpr int kMostFps = 40;
constexpr int kMostOffset = 1000;
const char* const kWidestSize = "00000 x 00000";

QString sizeText(const QString& known)
{
    return known.isEmpty() ? QStringLiteral("0 x 0") : known;
}

} // namespace

FlashEffectWidget::FlashEffectWidget(FlashEffect* effect, MapModel* model, QWidget* parent)
    : EffectForm(tr("Animation"), effect, model, parent)
    , m_effect(effect)
    , m_transColor(effect->transColor())
{
    using Self = FlashEffectWidget;
    addFilmGroup();
    beginGroup(tr("Timing"));
    m_frameCount = addValue(tr("Frame Count:"), QString::number(effect->frameCount()),
                            QStringLiteral("00000000"));
    QSpinBox* const fps =
        addSpin(tr("Playback Frames Per Second:"), 1, kMostFps, kMostFps, effect->fps());
    addGeometryGroup();
    beginGroup(tr("Colors"));
    const ColorRow trans =
        addColor(tr("Transparent Color"), m_transColor, tr("Enabled"), effect->transEnabled());
    m_transSwatch = trans.swatch;
    trans.check->setToolTip(tr("Lights of exactly this color show what lies beneath"));
    finishLayout();

    connect(fps, &QSpinBox::textChanged, this, &Self::fpsChanged);
    connect(trans.button, &QPushButton::clicked, this, &Self::chooseTransColorClicked);
    connect(trans.check, &QCheckBox::toggled, this, &Self::transEnabledToggled);
    connect(effect, &FlashEffect::updateFrameCount, this, &Self::setFrameCountLabel);
    connect(effect, &FlashEffect::updateImageSize, this, &Self::setImageSizeLabel);
    connect(effect, &FlashEffect::updateOutputSize, this, &Self::setOutputSizeLabel);
    connect(effect, &FlashEffect::initializeProgressDialog, this,
            &Self::handleInitializeProgressDialog);
    connect(effect, &FlashEffect::updateProgressDialog, this, &Self::handleUpdateProgressDialog);
    connect(this, &Self::loadClicked, effect, &FlashEffect::handleLoadClicked);
}

void FlashEffectWidget::addFilmGroup()
{
    using Self = FlashEffectWidget;
    beginGroup(tr("Animation"));
    m_directory = addWideLine(tr("Animation Directory:"), m_effect->animationDir());
    m_directory->setToolTip(tr("The folder whose pictures are the frames, in the order of names"));
    auto* buttons = new QWidget(this);
    auto* line = new QHBoxLayout(buttons);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(unit());
    auto* browse = new QPushButton(tr("Browse"), buttons);
    auto* load = new QPushButton(tr("Load"), buttons);
    auto* preload = new QCheckBox(tr("Preload"), buttons);
    preload->setChecked(m_effect->preload());
    preload->setToolTip(tr("Keep all frames in memory"));
    browse->setAutoDefault(false);
    load->setAutoDefault(false);
    line->addWidget(browse);
    line->addWidget(load);
    line->addWidget(preload);
    line->addStretch();
    addWidget(buttons);
    connect(m_directory, &QLineEdit::textChanged, this, &Self::animationDirChanged);
    connect(browse, &QPushButton::clicked, this, &Self::browseButtonClicked);
    connect(load, &QPushButton::clicked, this, &Self::loadButtonClicked);
    connect(preload, &QCheckBox::toggled, this, &Self::preloadToggled);
}

void FlashEffectWidget::addGeometryGroup()
{
    using Self = FlashEffectWidget;
    const QString widest = QString::fromLatin1(kWidestSize);
    beginGroup(tr("Geometry"));
    m_imageSize = addValue(tr("Image Size:"), sizeText(m_effect->imageSizeText()), widest);
    m_outputSize = addValue(tr("Output Size:"), sizeText(m_effect->outputSizeText()), widest);
    m_xOffset =
        addSpin(tr("X Offset:"), -kMostOffset, kMostOffset, 0, truncI32(m_effect->xOffset()));
    m_yOffset =
        addSpin(tr("Y Offset:"), -kMostOffset, kMostOffset, 0, truncI32(m_effect->yOffset()));
    m_scale = addLine(tr("Scale Factor:"), text(m_effect->scale()));
    m_xOffset->setToolTip(tr("In pixels of the picture"));
    m_yOffset->setToolTip(tr("In pixels of the picture"));
    m_scale->setToolTip(tr("Taken over with Return"));
    QCheckBox* const smooth = addCheck(tr("Smooth"), m_effect->smooth());
    smooth->setToolTip(tr("Mix each frame with the ones before and after"));
    connect(m_xOffset, &QSpinBox::editingFinished, this, &Self::xOffsetReturnPressed);
    connect(m_yOffset, &QSpinBox::editingFinished, this, &Self::yOffsetReturnPressed);
    connect(m_scale, &QLineEdit::returnPressed, this, &Self::scaleReturnPressed);
    connect(smooth, &QCheckBox::toggled, this, &Self::smoothToggled);
}

void FlashEffectWidget::animationDirChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setAnimationDir(s);
    }
}

void FlashEffectWidget::browseButtonClicked()
{
    emit browseClicked();
    // The dialog belongs to the window: the form may go while it is open.
    const QPointer<FlashEffectWidget> guard(this);
    const QString directory =
        QFileDialog::getExistingDirectory(window(), tr("Choose an Animation Directory."),
                                          m_directory->text(), QFileDialog::ShowDirsOnly);
    if (guard.isNull() || directory.isEmpty() || m_effect == nullptr) {
        return;
    }
    m_effect->setAnimationDir(directory);
    m_directory->setText(directory);
}

void FlashEffectWidget::loadButtonClicked()
{
    emit loadClicked();
}

void FlashEffectWidget::preloadToggled(bool b)
{
    emit flashEffectPreloadToggled(true);
    if (m_effect != nullptr) {
        m_effect->setPreload(b);
    }
    emit flashEffectPreloadToggled(false);
}

void FlashEffectWidget::fpsChanged(const QString& s)
{
    if (m_effect != nullptr) {
        m_effect->setFps(s.toInt());
    }
}

void FlashEffectWidget::xOffsetReturnPressed()
{
    if (m_effect != nullptr) {
        m_effect->setXOffset(m_xOffset->text().toDouble());
    }
}

void FlashEffectWidget::yOffsetReturnPressed()
{
    if (m_effect != nullptr) {
        m_effect->setYOffset(m_yOffset->text().toDouble());
    }
}

void FlashEffectWidget::scaleReturnPressed()
{
    if (m_effect != nullptr) {
        m_effect->setScale(m_scale->text().toDouble());
    }
}

void FlashEffectWidget::smoothToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setSmooth(b);
    }
}

void FlashEffectWidget::chooseTransColorClicked()
{
    choose(m_effect, m_transColor, [this](const VelaColor& c) { handleGotNewTransColor(c); });
}

void FlashEffectWidget::handleGotNewTransColor(const VelaColor& c)
{
    m_transColor = c;
    m_transSwatch->setColor(c);
    if (m_effect != nullptr) {
        m_effect->setTransColor(c);
    }
}

void FlashEffectWidget::transEnabledToggled(bool b)
{
    if (m_effect != nullptr) {
        m_effect->setTransEnabled(b);
    }
}

void FlashEffectWidget::setFrameCountLabel(const QString& s)
{
    m_frameCount->setText(s);
}

void FlashEffectWidget::setImageSizeLabel(const QString& s)
{
    m_imageSize->setText(s);
}

void FlashEffectWidget::setOutputSizeLabel(const QString& s)
{
    m_outputSize->setText(s);
}

void FlashEffectWidget::handleInitializeProgressDialog(int total)
{
    if (m_progress != nullptr) {
        return;
    }
    const Work work(this);
    m_progress = new QProgressDialog(tr("Loading Animation frames..."), QString(), 0, total, this);
    m_progress->setModal(true);
    m_progress->show();
    QCoreApplication::processEvents();
}

void FlashEffectWidget::handleUpdateProgressDialog(int count)
{
    if (m_progress == nullptr) {
        return;
    }
    const Work work(this);
    m_progress->setValue(count);
    QCoreApplication::processEvents();
    if (m_progress != nullptr && count >= m_progress->maximum()) {
        delete m_progress;
    }
}
