#pragma once

#include <QFrame>

class VelaColor;

/// A field that shows one colour as the screen does.
class ColorSwatch : public QFrame
{
    Q_OBJECT
public:
    explicit ColorSwatch(QWidget* parent);

    /// Fills the field with the colour's screen form; an invalid colour shows black.
    void setColor(const VelaColor& color);
};
