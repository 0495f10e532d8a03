#pragma once
#include "paragdata.h"
#include "syntaxhighlighter.h"
#include <map>
#include <span>
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
    uchar next[CharClassCount]; ///< the state that a character of each class leads to
    uchar format;               ///< FormatId of the character that leads to this state
    uchar painted;              ///< how many characters get it, counted back from that one
    uchar endState;             ///< the state that the next line starts with if a line ends here
    bool brackets;              ///< whether brackets met in this state count for the matcher
};

/// The reserved words of a language, by length and then by text.
class KeywordTable
{
public:
    KeywordTable(std::initializer_list<std::u16string_view> words);
    /// The format of @p word, or -1 if it is no keyword.
    [[nodiscard]] int format(QStringView word) const;

private:
    std::vector<std::map<std::u16string_view, int>> m_byLength;
};

/// What a TableHighlighter knows of a language. State 0 is the standard one: words are looked up in it.
struct Language
{
    std::span<const StateRow> states;
    KeywordTable keywords;
    bool hasLabels; ///< whether "word:" is a label
};

/// Runs over one line of @p language in the state @p state, as if a blank followed its @p text. Gives the state that
/// the next line starts with; @p formats gets a FormatId for each character and for that blank, @p parenList the
/// brackets.
int lexLine(const Language &language, QStringView text, int state, std::vector<uchar> &formats,
            QList<ParenEntry> &parenList);

/// Highlights a language that is given by a table of states. The table must outlive the highlighter.
class TableHighlighter : public SyntaxHighlighter
{
public:
    TableHighlighter(const Language &language, const FormatTable *formats);

    void process(QTextDocument *document, QTextBlock block, int start, bool invalidate = true) override;

private:
    [[nodiscard]] QList<QTextLayout::FormatRange> formatRanges() const;

    const Language &m_language;
    std::vector<uchar> m_lineFormats; ///< kept from run to run for its memory only
};
