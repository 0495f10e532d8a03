#include "editorcolours.h"

EditorColours editorColours(const QColor &paper)
{
    if (paper.lightness() < 128) // light colours would hide light text
        return {{0, 0, 0, 90}, {0x0e, 0x33, 0x38}, {50, 34, 10}, {200, 150, 20}, {40, 36, 8}, {14, 42, 22}};
    return {{0, 0, 0, 12}, {0xe0, 0xff, 0xff}, {255, 241, 190}, {225, 165, 0}, {255, 246, 200}, {228, 244, 228}};
}
