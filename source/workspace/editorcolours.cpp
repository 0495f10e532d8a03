#include "editorcolours.h"
#include "marktable.h"

namespace {
/// The colour of black of opacity @p opacity (0 to 255) over @p paper. It is opaque itself, as each key paints it.
QColor darkened(const QColor &paper, int opacity)
{
    const auto part = [opacity](int value) { return value * (255 - opacity) / 255; };
    return {part(paper.red()), part(paper.green()), part(paper.blue())};
}
} // namespace

EditorColours editorColours(const QColor &paper)
{
    if (paper.lightness() < 128) // light colours would hide light text
        return {darkened(paper, 90), {0x0e, 0x33, 0x38}, {50, 34, 10}, {200, 150, 20}, {40, 36, 8}, {14, 42, 22}};
    return {darkened(paper, 12), {0xe0, 0xff, 0xff}, {255, 241, 190}, {225, 165, 0}, {255, 246, 200}, {228, 244, 228}};
}

QColor EditorColours::band(int marks) const
{
    return marks & MarkTable::CurrentLine ? statement : marks & MarkTable::Caller ? caller : QColor();
}
