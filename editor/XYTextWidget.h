#pragma once

#include "editor/EffectForm.h"

#include <QColor>
#include <QPointer>

class XYTextEffect;

/// The form of an XYTextEffect.
class XYTextWidget : public EffectForm
{
    Q_OBJECT
public:
    XYTextWidget(XYTextEffect* effect, MapModel* model, QWidget* parent);

public slots:
    void m_lineEdit_textChanged(const QString& s);
    void m_fontComboBox_activated(const QString& s);
    void m_boldCheckBox_toggled(bool b);
    void m_italicCheckBox_toggled(bool b);
    /// For callers of old: no control and no field stand behind it.
    void m_underlineCheckBox_toggled(bool b);
    void m_sizeSpinBox_valueChanged(int i);
    void m_cycleTimeEdit_textChanged(const QString& s);
    void m_fgTransparentCheckBox_toggled(bool b);
    void m_bgTransparentCheckBox_toggled(bool b);
    void m_smoothCheckBox_toggled(bool b);
    void textColorClicked();
    void gotNewTextColor(const QColor& c);
    void bgColorClicked();
    void gotNewBgColor(const QColor& c);

private:
    void addTextGroup();
    void addColorsGroup();

    QPointer<XYTextEffect> m_effect; // not owned
    QColor m_textColor;
    QColor m_bgColor;
    ColorSwatch* m_textSwatch = nullptr;
    ColorSwatch* m_bgSwatch = nullptr;
};
