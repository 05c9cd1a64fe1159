#pragma once

#include "editor/ChasingRainbowWidget.h"
#include "editor/CrossFadeWidget.h"
#include "editor/CustomRainbowWidget.h"
#include "editor/FixedColorWidget.h"
#include "editor/FixedWhiteWidget.h"
#include "editor/FlashEffectWidget.h"
#include "editor/ImageWidget.h"
#include "editor/RandomColorWidget.h"
#include "editor/SelectionWidget.h"
#include "editor/SparkleGroupWidget.h"
#include "editor/SparkleWidget.h"
#include "editor/StreakWidget.h"
#include "editor/SweepWidget.h"
#include "editor/WhiteCrossFadeWidget.h"
#include "editor/XYBurstWidget.h"
#include "editor/XYSpiralWidget.h"
#include "editor/XYTextWidget.h"
#include "effects/ChasingRainbowEffect.h"
#include "effects/CrossFadeEffect.h"
#include "effects/CustomRainbowEffect.h"
#include "effects/FixedColorEffect.h"
#include "effects/FixedWhiteEffect.h"
#include "effects/FlashEffect.h"
#include "effects/ImageEffect.h"
#include "effects/RandomColorEffect.h"
#include "effects/SelectionEffect.h"
#include "effects/SparkleEffect.h"
#include "effects/SparkleGroupEffect.h"
#include "effects/StreakEffect.h"
#include "effects/SweepEffect.h"
#include "effects/WhiteCrossFadeEffect.h"
#include "effects/XYBurstEffect.h"
#include "effects/XYSpiralEffect.h"
#include "effects/XYTextEffect.h"
#include "tests/engine/TestShow.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QtTest>

#include <memory>

/// An effect without a group and its form, shown.
template <typename EffectClass, typename Form>
struct FormStage
{
    TestShow::TestMap map{2};
    EffectClass effect{map.model(), Effect::kNoGid, nullptr};
    std::unique_ptr<Form> form;

    void open()
    {
        form = std::make_unique<Form>(&effect, map.model(), nullptr);
        form->show();
    }
};

/// A label's or a button's text as a user reads it, without the mark of its mnemonic.
inline QString plain(QString text)
{
    return text.remove(QLatin1Char('&'));
}

/// The controls of a form as a user finds them: by the label in front of them or on them. `nth`
/// counts those of the same label, from 0. A control that isn't there ends the test.
template <typename Control>
Control* labelled(const QWidget* form, const char* label, int nth = 0)
{
    for (const QLabel* const text : form->findChildren<QLabel*>()) {
        auto* const control = dynamic_cast<Control*>(text->buddy());
        if (control != nullptr && plain(text->text()) == QLatin1String(label) && nth-- == 0) {
            return control;
        }
    }
    qFatal("no control labelled %s", label);
}

template <typename Button>
Button* button(const QWidget* form, const char* text, int nth = 0)
{
    for (Button* const found : form->findChildren<Button*>()) {
        if (plain(found->text()) == QLatin1String(text) && nth-- == 0) {
            return found;
        }
    }
    qFatal("no button %s", text);
}

/// What a user does who replaces the text of a line by `text`, key by key.
inline void retype(QLineEdit* line, const char* text)
{
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, QString::fromLatin1(text));
}

/// The same in a spin box.
inline void retype(QSpinBox* spin, const char* text)
{
    spin->selectAll();
    QTest::keyClicks(spin, QString::fromLatin1(text));
}
