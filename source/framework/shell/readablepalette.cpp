#include "readablepalette.h"
#include "rowpainter.h"
#include <algorithm>

namespace {
struct TextRole
{
    QPalette::ColorRole text;
    QPalette::ColorRole background;
};

constexpr TextRole Texts[]{{QPalette::WindowText, QPalette::Window},
                           {QPalette::ButtonText, QPalette::Button},
                           {QPalette::Text, QPalette::Base}};

/// @p top, of which only the part @p opacity is seen, on @p bottom.
QColor blend(const QColor &top, const QColor &bottom, double opacity)
{
    const auto mix = [&](float upper, float lower) { return float(upper * opacity + lower * (1 - opacity)); };
    return QColor::fromRgbF(mix(top.redF(), bottom.redF()), mix(top.greenF(), bottom.greenF()),
                            mix(top.blueF(), bottom.blueF()));
}

/// Whether @p weak stands out from @p background at least a little, lighter than it if @p normal is.
bool standsOut(const QColor &weak, const QColor &normal, const QColor &background)
{
    constexpr int Least = 20; // of 255
    const int difference = blend(weak, background, weak.alphaF()).lightness() - background.lightness();
    return (normal.lightness() > background.lightness() ? difference : -difference) >= Least;
}

void mend(QPalette &palette, QPalette::ColorGroup group, QPalette::ColorRole role, TextRole normal)
{
    const QColor background = palette.color(group, normal.background);
    const QColor text = palette.color(QPalette::Active, normal.text);
    if (!standsOut(palette.color(group, role), text, background))
        palette.setColor(group, role, blend(text, background, 0.5));
}

/// Placeholders are to be read, unlike texts of controls that cannot be used.
void mendPlaceholder(QPalette &palette, QPalette::ColorGroup group)
{
    const QColor background = palette.color(group, QPalette::Base);
    const QColor text = palette.color(group, QPalette::PlaceholderText);
    const QColor seen = blend(text, background, text.alphaF());
    if (const QColor readable = readableOn(background, seen); readable != seen)
        palette.setColor(group, QPalette::PlaceholderText, readable);
}
} // namespace

QPalette readablePalette(QPalette palette)
{
    for (const TextRole &role : Texts)
        mend(palette, QPalette::Disabled, role.text, role);
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        mend(palette, group, QPalette::PlaceholderText, {QPalette::Text, QPalette::Base});
    for (const auto group : {QPalette::Active, QPalette::Inactive})
        mendPlaceholder(palette, group);
    return palette;
}
