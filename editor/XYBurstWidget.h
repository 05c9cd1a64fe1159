#pragma once

#include "editor/EffectForm.h"

#include <QPointer>

class XYBurstEffect;

/// The form of an XYBurstEffect. Cycle time, ring and centre are read as whole numbers from 0.
class XYBurstWidget : public EffectForm
{
    Q_OBJECT
public:
    XYBurstWidget(XYBurstEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void handleCycleTimeChanged(const QString& s);
    void handleRingWidthChanged(const QString& s);
    void handleCenterXChanged(const QString& s);
    void handleCenterYChanged(const QString& s);
    void handleCycleDirToggled(bool b);
    void handleRainbowDirToggled(bool b);
    void handleUpdateOutputSizeLabel(const QString& s);

private:
    QPointer<XYBurstEffect> m_effect; // not owned
    QLabel* m_outputSize = nullptr;
};
