#pragma once

#include "color/VelaColor.h"
#include "editor/EffectForm.h"

#include <QPointer>

class FlashEffect;
class QProgressDialog;

/// The form of a FlashEffect. Its labels and the progress of a loading film come from the effect.
class FlashEffectWidget : public EffectForm
{
    Q_OBJECT
public:
    FlashEffectWidget(FlashEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void animationDirChanged(const QString& s);
    void browseButtonClicked();
    void loadButtonClicked();
    /// Around the effect's change the form says true and false through flashEffectPreloadToggled().
    void preloadToggled(bool b);
    void fpsChanged(const QString& s);
    void xOffsetReturnPressed();
    void yOffsetReturnPressed();
    void scaleReturnPressed();
    void smoothToggled(bool b);
    void chooseTransColorClicked();
    void handleGotNewTransColor(const VelaColor& c);
    void transEnabledToggled(bool b);
    void setFrameCountLabel(const QString& s);
    void setImageSizeLabel(const QString& s);
    void setOutputSizeLabel(const QString& s);
    void handleInitializeProgressDialog(int total);
    void handleUpdateProgressDialog(int count);

signals:
    void browseClicked();
    void loadClicked();
    /// True before frames are loaded, false after: the engine waits in between.
    void flashEffectPreloadToggled(bool on);

private:
    void addFilmGroup();
    void addGeometryGroup();

    QPointer<FlashEffect> m_effect; // not owned
    VelaColor m_transColor;
    QLineEdit* m_directory = nullptr;
    QLineEdit* m_scale = nullptr;
    QSpinBox* m_xOffset = nullptr;
    QSpinBox* m_yOffset = nullptr;
    QLabel* m_frameCount = nullptr;
    QLabel* m_imageSize = nullptr;
    QLabel* m_outputSize = nullptr;
    ColorSwatch* m_transSwatch = nullptr;
    QPointer<QProgressDialog> m_progress;
};
