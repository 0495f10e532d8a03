#include "tablehighlighter.h"
#include <array>

namespace {
constexpr qsizetype UsualRanges = 8; ///< of one format each, in a line

constexpr bool isDigit(char16_t ch)
{
    return ch >= u'0' && ch <= u'9';
}

constexpr bool isLetter(char16_t ch)
{
    return (ch >= u'a' && ch <= u'z') || (ch >= u'A' && ch <= u'Z');
}

constexpr CharClass classOf(char16_t ch)
{
    switch (ch) {
    case u'_':
    case u':':
        return AlphaClass;
    case u'*':
        return AsteriskClass;
    case u'/':
        return SlashClass;
    case u'(':
    case u')':
    case u'[':
    case u']':
    case u'{':
    case u'}':
        return ParenClass;
    case u' ':
        return SpaceClass;
    case u'#':
        return HashClass;
    case u'"':
        return QuotationClass;
    case u'\'':
        return ApostropheClass;
    default:
        return isLetter(ch) ? AlphaClass : isDigit(ch) ? NumberClass : SeparatorClass;
    }
}

constexpr auto Classes = [] {
    std::array<CharClass, 256> classes{};
    for (int ch = 0; ch < 256; ++ch)
        classes[ch] = classOf(char16_t(ch));
    return classes;
}();

// One run over one line.
class LineLexer
{
public:
    LineLexer(const Language &language, QStringView text, int state, uchar *formats, QList<ParenEntry> &parenList)
        : m_language(language), m_text(text), m_formats(formats), m_parenList(parenList), m_state(state)
    {}

    int run()
    {
        for (m_index = 0; m_index <= m_text.size(); ++m_index)
            step(charAt(m_index));
        return m_language.states[m_state].endState;
    }

private:
    [[nodiscard]] char16_t charAt(qsizetype index) const
    {
        return index < m_text.size() ? m_text[index].unicode() : u' ';
    }

    void step(char16_t ch)
    {
        const CharClass charClass = classify(ch);
        if (charClass == ParenClass)
            recordBracket(ch);
        if (ch == u':' && charClass == AlphaClass && startsLabel())
            paintLabel();
        enter(m_language.states[m_state].next[charClass], charClass);
        if (ch == u'?' && m_language.states[m_state].format != FormatId::String)
            m_questionSeen = true;
        m_escaped = ch == u'\\' && !m_escaped;
        m_lastChar = ch;
        m_lastClass = charClass;
    }

    [[nodiscard]] CharClass classify(char16_t ch) const
    {
        if (m_escaped || ch > 0xff)
            return SeparatorClass;
        const CharClass charClass = Classes[ch];
        if (charClass != NumberClass)
            return charClass;
        const bool inWord = isLetter(m_lastChar) || (m_lastClass == AlphaClass && isDigit(m_lastChar));
        return inWord ? AlphaClass : NumberClass;
    }

    void recordBracket(char16_t ch)
    {
        if (!m_language.states[m_state].brackets)
            return;
        const bool opens = ch == u'(' || ch == u'[' || ch == u'{';
        m_parenList.append({opens ? ParenEntry::Open : ParenEntry::Close, ch, int(m_index)});
    }

    [[nodiscard]] bool startsLabel() const
    {
        return m_language.hasLabels && m_state == 0 && !m_questionSeen && m_lastChar != u':'
               && charAt(m_index + 1) != u':';
    }

    void paintLabel()
    {
        std::replace(m_formats, m_formats + m_index, uchar(FormatId::Standard), uchar(FormatId::Label));
    }

    void enter(int state, CharClass charClass)
    {
        m_state = state;
        const StateRow &row = m_language.states[state];
        for (qsizetype i = 0; i < row.painted && i <= m_index; ++i)
            m_formats[m_index - i] = row.format;
        if (state == 0 && charClass == AlphaClass) {
            ++m_wordLength;
            return;
        }
        if (state == 0 && m_wordLength > 0)
            paintKeyword();
        m_wordLength = 0;
    }

    void paintKeyword()
    {
        if (m_language.keywords.contains(m_text.sliced(m_index - m_wordLength, m_wordLength)))
            std::fill_n(m_formats + m_index - m_wordLength, m_wordLength, uchar(FormatId::Keyword));
    }

    const Language &m_language;
    const QStringView m_text;
    uchar *const m_formats;
    QList<ParenEntry> &m_parenList;
    int m_state;
    qsizetype m_index = 0;
    qsizetype m_wordLength = 0; // number of characters directly before m_index that form a word
    char16_t m_lastChar = 0;
    CharClass m_lastClass = SeparatorClass;
    bool m_escaped = false;
    bool m_questionSeen = false;
};
} // namespace

KeywordTable::KeywordTable(std::initializer_list<std::u16string_view> words)
{
    for (const std::u16string_view word : words) {
        if (m_byLength.size() <= word.size())
            m_byLength.resize(word.size() + 1);
        m_byLength[word.size()] += word;
    }
}

bool KeywordTable::contains(QStringView word) const
{
    if (size_t(word.size()) >= m_byLength.size())
        return false;
    const std::u16string_view wanted(word.utf16(), word.size());
    for (std::u16string_view words = m_byLength[word.size()]; !words.empty(); words.remove_prefix(word.size())) {
        if (words.starts_with(wanted))
            return true;
    }
    return false;
}

int lexLine(const Language &language, QStringView text, int state, std::vector<uchar> &formats,
            QList<ParenEntry> &parenList)
{
    formats.resize(text.size() + 1);
    parenList.clear();
    return LineLexer(language, text, state, formats.data(), parenList).run();
}

TableHighlighter::TableHighlighter(const Language &language, const FormatTable *formats)
    : SyntaxHighlighter(formats), m_language(language)
{}

void TableHighlighter::process(QTextDocument *document, QTextBlock block, int, bool invalidate)
{
    const int state = startState(document, block);
    ParagData *data = ensureParagData(block);
    const bool isLong = LongLine::isLong(block);
    const QString text = isLong ? LongLine::textOf(block, 0, LongestPart) : block.text();
    const int endState = lexLine(m_language, text, state, m_lineFormats, data->parenList);
    if (!data->skipsFormats)
        paint(document, block, formatRanges(block.length() - 1));
    setEndState(block, isLong ? 0 : endState, invalidate);
}

QList<QTextLayout::FormatRange> TableHighlighter::formatRanges(int lineLength) const
{
    QList<QTextLayout::FormatRange> ranges;
    ranges.reserve(UsualRanges);
    const int length = int(m_lineFormats.size()) - 1;
    for (int start = 0, end = 0; start < length; start = end) {
        while (end < length && m_lineFormats[end] == m_lineFormats[start])
            ++end;
        ranges.append({start, end - start, format(m_lineFormats[start])});
    }
    if (length < lineLength)
        ranges.append({length, lineLength - length, format(FormatId::Standard)});
    return ranges;
}
