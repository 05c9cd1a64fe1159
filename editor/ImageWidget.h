#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class ImageEffect;

/// The form of an ImageEffect. Its cycle time is in whole seconds.
class ImageWidget : public EffectForm
{
    Q_OBJECT
public:
    ImageWidget(ImageEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleBrowseButtonClicked();
    /// Loads what the line holds.
    void handleLoadButtonClicked();
    void handleCycleTimeChanged(const QString& s);
    void handleStartXChanged(int i);
    void handleStartYChanged(int i);
    void handleStartScaleChanged(const QString& s);
    void handleEndXChanged(int i);
    void handleEndYChanged(int i);
    void handleEndScaleChanged(const QString& s);
    void handleSmoothToggled(bool b);
    void chooseTransColorClicked();
    void handleGotNewTransColor(const VelaColor& c);
    void handleTransEnabledToggled(bool b);
    void chooseBgColorClicked();
    void handleGotNewBgColor(const VelaColor& c);
    void handleUpdateImageSizeLabel(const QString& s);
    void handleUpdateOutputSizeLabel(const QString& s);

private:
    void addImageGroup();
    void addGeometryGroup();
    void addColorsGroup();

    QPointer<ImageEffect> m_effect; // not owned
    VelaColor m_transColor;
    VelaColor m_bgColor;
    QLineEdit* m_file = nullptr;
    QLabel* m_imageSize = nullptr;
    QLabel* m_outputSize = nullptr;
    ColorSwatch* m_transSwatch = nullptr;
    ColorSwatch* m_bgSwatch = nullptr;
};
