#pragma once
#include <memory>
#include <QList>
#include <QTextBlock>
class LongLine;

/// A bracket of a line, outside comments and strings.
struct ParenEntry
{
    enum Kind { Open, Close };

    Kind kind;
    QChar character; ///< one of ( ) [ ] { }
    int position;    ///< in characters from the start of the line

    bool operator==(const ParenEntry &other) const = default;
};

/// The data that a text document stores for a line: QTextBlock::userData() of its blocks.
///
/// The highlighter replaces parenList and endState on every run over the line. Code that moves a marker to another line
/// moves `marker` only; the rest stays with the text from which it was computed.
class ParagData : public QTextBlockUserData
{
public:
    QList<ParenEntry> parenList;        ///< the brackets of the line in order; empty without a highlighter
    quint32 marker = 0;                 ///< marker bits
    int endState = -1;                  ///< end state of the highlighter's last run over the line, -1 before the first
    bool skipsFormats = false;          ///< the line is far from the screen: the highlighter sets no formats
    bool hasFormats = false;            ///< the highlighter has set formats in the layout of the line
    std::shared_ptr<LongLine> longLine; ///< the layout of a long line that was shown
};

/// The data of @p block, or null if it has none.
[[nodiscard]] inline ParagData *paragDataOf(const QTextBlock &block)
{
    return static_cast<ParagData *>(block.userData());
}

/// The data of @p block, created if it has none. @p block must be valid.
[[nodiscard]] inline ParagData *ensureParagData(QTextBlock block)
{
    if (!block.userData())
        block.setUserData(new ParagData);
    return paragDataOf(block);
}
