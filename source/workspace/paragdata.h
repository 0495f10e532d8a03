#pragma once
#include <QList>
#include <QTextBlock>

/// A bracket of a line, outside comments and strings.
struct ParenEntry
{
    enum Kind { Open, Close };

    Kind kind;
    QChar character; ///< one of ( ) [ ] { }
    int position;    ///< in characters from the start of the line

    bool operator==(const ParenEntry &other) const = default;
};

/// What a text document remembers of a line: QTextBlock::userData() of its blocks.
///
/// The highlighter writes parenList and endState anew on every run over the line. Whoever moves a marker to another
/// line moves `marker` alone and leaves the rest with the text that it was read from.
class ParagData : public QTextBlockUserData
{
public:
    QList<ParenEntry> parenList; ///< the brackets of the line from left to right; empty without a highlighter
    quint32 marker = 0;          ///< marker bits
    int endState = -1;           ///< end state of the highlighter's last run over the line, -1 before the first
};

/// The data of @p block, or null if it has none.
[[nodiscard]] inline ParagData *paragDataOf(const QTextBlock &block)
{
    return static_cast<ParagData *>(block.userData());
}

/// The data of @p block, which gets some if it has none. @p block must be valid.
[[nodiscard]] inline ParagData *ensureParagData(QTextBlock block)
{
    if (!block.userData())
        block.setUserData(new ParagData);
    return paragDataOf(block);
}
