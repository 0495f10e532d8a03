#pragma once
#include <QPalette>

/// A palette with one colour behind everything, and one for all texts.
inline QPalette colourScheme(const QColor &background, const QColor &text)
{
    QPalette palette;
    for (const auto role : {QPalette::Window, QPalette::Button, QPalette::Base})
        palette.setColor(role, background);
    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text})
        palette.setColor(role, text);
    return palette;
}
