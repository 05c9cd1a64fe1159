#pragma once

#include "editor/EffectForm.h"

#include <QPointer>

class XYSpiralEffect;

/// The form of an XYSpiralEffect. Its cycle time is in whole seconds.
class XYSpiralWidget : public EffectForm
{
    Q_OBJECT
public:
    XYSpiralWidget(XYSpiralEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleCycleTimeChanged(const QString& s);
    void handleTwistChanged(const QString& s);
    void handleArmsChanged(const QString& s);
    void handleClockwiseToggled(bool b);
    void handleCenterXChanged(const QString& s);
    void handleCenterYChanged(const QString& s);
    void handleUpdateOutputSizeLabel(const QString& s);

private:
    QPointer<XYSpiralEffect> m_effect; // not owned
    QLabel* m_outputSize = nullptr;
};
