#pragma once
#include <algorithm>
#include <QTextBlock>
#include <QTextDocument>

/// A place in a text that does not move when characters before it are inserted or removed.
struct TextPlace
{
    int line;
    int index;

    bool operator==(const TextPlace &other) const = default;
};

[[nodiscard]] inline TextPlace textPlaceOf(const QTextDocument *text, int position)
{
    const QTextBlock block = text->findBlock(position);
    return {block.blockNumber(), position - block.position()};
}

/// The nearest position if the text has become shorter.
[[nodiscard]] inline int positionOf(const QTextDocument *text, TextPlace place)
{
    const QTextBlock block = text->findBlockByNumber(std::min(place.line, text->blockCount() - 1));
    return block.position() + std::min(place.index, block.length() - 1);
}
