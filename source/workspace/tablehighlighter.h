#pragma once
#include "longline.h"
#include "paragdata.h"
#include "syntaxhighlighter.h"
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Classes of characters: the columns of a language's table.
enum CharClass {
    AlphaClass,
    NumberClass,
    AsteriskClass,
    SlashClass,
    ParenClass,
    SpaceClass,
    HashClass,
    QuotationClass,
    ApostropheClass,
    SeparatorClass,
    CharClassCount
};

/// A state of a language: a row of its table.
struct StateRow
{
    uchar next[CharClassCount]; ///< the next state for a character of each class
    uchar format;               ///< FormatId of the character that leads to this state
    uchar painted;              ///< number of characters that get this format, counted back from that one
    uchar endState;             ///< start state of the next line if a line ends here
    bool brackets;              ///< whether brackets in this state are matched
};

/// The reserved words of a language.
class KeywordTable
{
public:
    KeywordTable(std::initializer_list<std::u16string_view> words);
    [[nodiscard]] bool contains(QStringView word) const;

private:
    std::vector<std::u16string> m_byLength; ///< the words of each length, one directly after the other
};

/// The description of a language for TableHighlighter. State 0 is the standard one, in which words are looked up.
struct Language
{
    std::span<const StateRow> states;
    KeywordTable keywords;
    bool hasLabels; ///< whether "word:" is a label
};

/// Runs over one line of @p language from the state @p state, as if a blank followed its @p text. Returns the start
/// state of the next line; @p formats gets a FormatId for each character and for that blank, @p parenList the brackets.
int lexLine(const Language &language, QStringView text, int state, std::vector<uchar> &formats,
            QList<ParenEntry> &parenList);

/// Highlights a language that is described by a table of states. The table must outlive the highlighter.
class TableHighlighter : public SyntaxHighlighter
{
public:
    /// Of a longer line only the start is highlighted, the rest is standard text: typing must not wait.
    static constexpr qsizetype LongestPart = LongLine::Limit;

    TableHighlighter(const Language &language, const FormatTable *formats);

    void process(QTextDocument *document, QTextBlock block, int start, bool invalidate = true) override;
    [[nodiscard]] bool readsStartsOnly() const override { return true; }

private:
    [[nodiscard]] QList<QTextLayout::FormatRange> formatRanges(int lineLength) const;

    const Language &m_language;
    std::vector<uchar> m_lineFormats; ///< a member only to reuse its memory
};
