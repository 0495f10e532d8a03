#include "cppindent.h"
#include <algorithm>
#include <optional>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {
constexpr int ContinuationIndentSize = 8; // columns, for any tab size
constexpr int CommentOffset = 2;          // columns from "/*" alone on a line to the text of its comment
constexpr int BigRoof = 400;              // lines searched back for the start of a comment
constexpr int SmallRoof = 40;             // lines searched back in all other scans

constexpr auto Usual = QRegularExpression::DotMatchesEverythingOption | QRegularExpression::UseUnicodePropertiesOption;
constexpr auto Minimal = Usual | QRegularExpression::InvertedGreedinessOption;

// The position of the reader: a value, so that a scan further up can be undone by assignment.
struct LinizerState
{
    QString line;                  ///< the current line, cleaned
    int braceDepth = 0;            ///< right braces minus left ones since the start
    bool leftBraceFollows = false; ///< the line below the current one begins with "{"
    int iter;                      ///< number of the current line
    bool inCComment = false;
    bool pendingRightBrace = false; ///< the "}" of a "} else", not counted yet
};

// Brackets found on the way up whose partners were not found yet.
struct Depths
{
    int brace = 0;
    int delim = 0;
};

bool isBlank(QChar ch)
{
    return ch.isSpace();
}

QChar firstNonBlank(const QString &text)
{
    const auto found = std::ranges::find_if_not(text, isBlank);
    return found != text.end() ? *found : QChar();
}

QChar lastChar(const QString &text)
{
    return text.isEmpty() ? QChar() : text.back();
}

QChar lastParen(const QString &text)
{
    const auto found = std::find_if(text.rbegin(), text.rend(), [](QChar ch) { return ch == u'(' || ch == u')'; });
    return found != text.rend() ? *found : QChar();
}

// Columns must not change, so tabs are kept.
void eraseChars(QString &text, qsizetype start, qsizetype length, QChar ch)
{
    for (qsizetype k = start; k < start + length; ++k) {
        if (text.at(k) != u'\t')
            text[k] = ch;
    }
}

void eraseMatches(QString &text, const QRegularExpression &expression, QChar ch)
{
    for (const QRegularExpressionMatch &match : expression.globalMatch(text))
        eraseChars(text, match.capturedStart(), match.capturedLength(), ch);
}

// Finds the column of one line from the lines above it, which are read upward.
class Indenter
{
public:
    Indenter(const std::function<QString(int)> &lineAt, int lineCount, int tabSize)
        : m_lineAt(lineAt), m_bottom(lineCount - 1), m_hardwareTabSize(tabSize), m_indentSize(tabSize)
    {
        m_state.iter = m_bottom;
        m_state.line = lineAt(m_bottom);
        readLine();
    }

    int indentForBottomLine(QChar typedIn);

private:
    [[nodiscard]] int columnForIndex(const QString &text, qsizetype index) const;
    [[nodiscard]] int indentOfLine(const QString &text) const;
    [[nodiscard]] int columnBehind(const QString &text, qsizetype index, int otherwise) const;
    [[nodiscard]] QString trimmedCodeLine(QString text) const;

    bool readLine();
    void readNextRawLine();
    void eraseCComment();
    void countBraces();

    [[nodiscard]] bool bottomLineStartsInCComment() const;
    [[nodiscard]] int indentWhenBottomLineStartsInCComment() const;
    bool matchBracelessControlStatement();
    std::optional<bool> findControlKeyword(int &depth) const;
    bool isUnfinishedLine();
    bool isContinuationLine();
    void readToStartOfContinuation();
    [[nodiscard]] bool isAssignment(qsizetype index) const;
    qsizetype findHook(Depths &depths) const;
    int indentForContinuationLine();
    int indentForStandaloneLine();
    void readToStartOfStatement();

    const std::function<QString(int)> &m_lineAt;
    const int m_bottom;
    const int m_hardwareTabSize;
    const int m_indentSize;
    LinizerState m_state;

    const QRegularExpression m_literal{uR"((["'])(?:\\.|[^\\])*\1)"_s, Minimal};
    const QRegularExpression m_label{uR"(^\s*((?:case\b[^:]+|[a-zA-Z_0-9]+):)(?!:))"_s, Usual};
    const QRegularExpression m_inlineCComment{uR"(/\*.*\*/)"_s, Minimal};
    const QRegularExpression m_braceElse{uR"(^\s*\}\s*(?:else|catch)\b)"_s, Usual};
    const QRegularExpression m_iflikeKeyword{uR"(\b(?:catch|do|for|if|while)\b)"_s, Usual};
    const QRegularExpression m_caseLabel{QRegularExpression::anchoredPattern(uR"(\s*(?:case\b[^:]+|default\s+):\s*)"_s),
                                         Usual};
};

int Indenter::indentForBottomLine(QChar typedIn)
{
    const QString bottomLine = m_lineAt(m_bottom);
    const QChar firstCh = firstNonBlank(bottomLine);
    const auto mayBe = [typedIn](QChar ch) { return typedIn.isNull() || typedIn == ch; };

    if (bottomLineStartsInCComment())
        return firstCh.isNull() ? indentWhenBottomLineStartsInCComment() : indentOfLine(bottomLine);
    if (mayBe(u'#') && firstCh == u'#')
        return 0;
    int indent = isUnfinishedLine() ? indentForContinuationLine() : indentForStandaloneLine();
    if (mayBe(u'}') && firstCh == u'}') {
        indent -= m_indentSize;
    } else if (mayBe(u':') && m_caseLabel.match(bottomLine).hasMatch()) {
        const int own = indentOfLine(bottomLine);
        indent = own > indent ? own : indent - m_indentSize;
    }
    return std::max(indent, 0);
}

int Indenter::columnForIndex(const QString &text, qsizetype index) const
{
    int column = 0;
    for (const QChar ch : QStringView(text).first(std::min(index, text.size())))
        column = ch == u'\t' ? (column / m_hardwareTabSize + 1) * m_hardwareTabSize : column + 1;
    return column;
}

int Indenter::indentOfLine(const QString &text) const
{
    return columnBehind(text, 0, 0);
}

// The column of the first non-blank character at or after index.
int Indenter::columnBehind(const QString &text, qsizetype index, int otherwise) const
{
    const auto found = std::find_if_not(text.begin() + index, text.end(), isBlank);
    return found != text.end() ? columnForIndex(text, found - text.begin()) : otherwise;
}

QString Indenter::trimmedCodeLine(QString text) const
{
    if (text.contains(u'"') || text.contains(u'\''))
        eraseMatches(text, m_literal, u'X');
    if (text.contains(u"/*"))
        eraseMatches(text, m_inlineCComment, u' ');
    while (text.contains(u':')) {
        const QRegularExpressionMatch label = m_label.match(text);
        if (!label.hasMatch())
            break;
        eraseChars(text, label.capturedStart(1), label.capturedLength(1), u' ');
    }
    const qsizetype comment = text.indexOf(u"//");
    return comment < 0 ? text : text.first(comment);
}

// Moves up to the next line that contains code. Returns false, with an empty line, at the start of the text.
bool Indenter::readLine()
{
    m_state.leftBraceFollows = firstNonBlank(m_state.line) == u'{';
    do {
        if (m_state.iter == 0) {
            m_state.line.clear();
            return false;
        }
        readNextRawLine();
    } while (m_state.line.isEmpty());
    return true;
}

void Indenter::readNextRawLine()
{
    m_state.line = trimmedCodeLine(m_lineAt(--m_state.iter));
    eraseCComment();
    if (firstNonBlank(m_state.line) == u'#')
        m_state.line.clear();
    while (!m_state.line.isEmpty() && isBlank(m_state.line.back()))
        m_state.line.chop(1);
    countBraces();
}

void Indenter::eraseCComment()
{
    QString &line = m_state.line;
    if (m_state.inCComment) {
        const qsizetype start = line.indexOf(u"/*");
        line.truncate(std::max<qsizetype>(start, 0));
        m_state.inCComment = start < 0;
    }
    const qsizetype end = line.indexOf(u"*/"); // where a comment begins, read upward
    if (end >= 0) {
        eraseChars(line, 0, end + 2, u' ');
        m_state.inCComment = true;
    }
}

// Reading upward, a right brace opens a block. That of a "} else" is counted one line later, so that the "if" and its
// "else" have the same depth.
void Indenter::countBraces()
{
    m_state.braceDepth += int(m_state.line.count(u'}') - m_state.line.count(u'{'));
    if (m_state.pendingRightBrace)
        ++m_state.braceDepth;
    m_state.pendingRightBrace = m_braceElse.match(m_state.line).hasMatch();
    if (m_state.pendingRightBrace)
        --m_state.braceDepth;
}

bool Indenter::bottomLineStartsInCComment() const
{
    const int roof = std::max(m_bottom - BigRoof, 0);
    for (int i = m_bottom - 1; i >= roof; --i) {
        const QString raw = m_lineAt(i);
        if (!raw.contains(u"/*") && !raw.contains(u"*/"))
            continue;
        const QString line = trimmedCodeLine(raw);
        if (line.contains(u"/*"))
            return true;
        if (line.contains(u"*/"))
            return false;
    }
    return false;
}

int Indenter::indentWhenBottomLineStartsInCComment() const
{
    const qsizetype start = m_state.line.lastIndexOf(u"/*");
    if (start < 0)
        return indentOfLine(m_state.line);
    return columnBehind(m_state.line, start + 2, columnForIndex(m_state.line, start) + CommentOffset);
}

// Whether the current line ends the head of a control statement without a brace, such as "if ( x )". If so, the reader
// is then on the line with the keyword, otherwise on any line.
bool Indenter::matchBracelessControlStatement()
{
    if (m_state.line.endsWith(u"else"))
        return true;
    if (!m_state.line.endsWith(u')'))
        return false;
    int depth = 0;
    for (int i = 0; i < SmallRoof; ++i) {
        if (const std::optional<bool> found = findControlKeyword(depth))
            return *found;
        if (!readLine())
            return false;
    }
    return false;
}

// Scans the current line from its end for the parenthesis that opens the head; no result if it is further up.
std::optional<bool> Indenter::findControlKeyword(int &depth) const
{
    const QString &line = m_state.line;
    for (auto it = line.rbegin(); it != line.rend(); ++it) {
        const QChar ch = *it;
        if (ch == u')')
            ++depth;
        else if (ch == u'(' && --depth == 0 && m_iflikeKeyword.match(line).hasMatch())
            return true;
        else if (depth == -1 || ch == u'{' || ch == u'}' || (ch == u';' && depth == 0))
            return false; // a semicolon inside parentheses belongs to a "for"
    }
    return std::nullopt;
}

bool Indenter::isUnfinishedLine()
{
    if (m_state.line.isEmpty())
        return false;
    const LinizerState saved = m_state;
    const QChar last = lastChar(m_state.line);
    bool unfinished = false;
    if (last != u'{' && last != u'}' && last != u';')
        unfinished = !m_state.line.contains(u"Q_OBJECT") && !matchBracelessControlStatement();
    else if (last == u';') // may belong to a "for" head of several lines
        unfinished = lastParen(m_state.line) == u'('
                     || (readLine() && m_state.line.endsWith(u';') && lastParen(m_state.line) == u'(');
    m_state = saved;
    return unfinished;
}

bool Indenter::isContinuationLine()
{
    const LinizerState saved = m_state;
    const bool continuation = readLine() && isUnfinishedLine();
    m_state = saved;
    return continuation;
}

void Indenter::readToStartOfContinuation()
{
    while (isContinuationLine())
        readLine();
}

// The code after an "=" is aligned with it, unless it is part of an operator, of a list of initialisers or of a "for".
bool Indenter::isAssignment(qsizetype index) const
{
    const QString &line = m_state.line;
    return (index == 0 || !QStringView(u"!=<>").contains(line.at(index - 1))) && index < line.size() - 1
           && !line.endsWith(u',') && line.count(u'(') == line.count(u')');
}

// The position in the current line, searched from its end, of the character to which the next line is aligned, or -1.
qsizetype Indenter::findHook(Depths &depths) const
{
    const QString &line = m_state.line;
    for (qsizetype j = line.size() - 1; j >= 0; --j) {
        const QChar ch = line.at(j);
        if (ch == u')' || ch == u']')
            ++depths.delim;
        else if (ch == u'}')
            ++depths.brace;
        const bool hook = ((ch == u'(' || ch == u'[') && --depths.delim == -1) || (ch == u'{' && --depths.brace == -1)
                          || (ch == u'=' && depths.brace == 0 && depths.delim == 0 && isAssignment(j));
        if (hook)
            return j;
    }
    return -1;
}

int Indenter::indentForContinuationLine()
{
    const bool braceFollows = m_state.leftBraceFollows;
    const QString &line = m_state.line;
    Depths depths;
    for (int i = 0; i < SmallRoof; ++i) {
        const qsizetype hook = findHook(depths);
        if (hook >= 0 && hook == line.size() - 1 && line.at(hook) == u'{')
            return 0;
        if (hook >= 0)
            return columnBehind(line, hook + 1, indentOfLine(line) + ContinuationIndentSize);
        if (depths.brace != 0)
            return 0;
        if (depths.delim == 0) {
            const bool aligned = isContinuationLine() || braceFollows;
            return indentOfLine(line) + (aligned ? 0 : ContinuationIndentSize);
        }
        if (!readLine())
            return 0;
    }
    return 0;
}

int Indenter::indentForStandaloneLine()
{
    for (int i = 0; i < SmallRoof; ++i) {
        if (!m_state.leftBraceFollows) {
            const LinizerState saved = m_state;
            if (matchBracelessControlStatement())
                return indentOfLine(m_state.line) + m_indentSize;
            m_state = saved;
        }
        if (m_state.line.endsWith(u';') || m_state.line.contains(u'{')) {
            readToStartOfStatement();
            if (QStringView(m_state.line).trimmed().size() > 1) // a brace alone on its line may be at any column
                return indentOfLine(m_state.line) - m_state.braceDepth * m_indentSize;
        }
        if (!readLine())
            return 0;
    }
    return 0;
}

// Moves from the end of a statement to the line where it starts: over blocks, and over the control statements whose
// body it is.
void Indenter::readToStartOfStatement()
{
    while (m_state.braceDepth > 0 && readLine()) {
    }
    LinizerState hook = m_state;
    if (m_state.braceDepth == 0) {
        readToStartOfContinuation();
        hook = m_state;
        bool more = readLine() && m_state.braceDepth == 0;
        while (more && matchBracelessControlStatement()) {
            hook = m_state;
            more = readLine();
        }
    }
    m_state = hook;
    readToStartOfContinuation();
}
} // namespace

void CppIndent::indent(QTextDocument *document, QTextBlock block, int *oldIndent, int *newIndent)
{
    if (indentMode() != Smart) {
        BaseIndent::indent(document, block, oldIndent, newIndent);
        return;
    }
    const auto lineAt = [document](int line) { return document->findBlockByNumber(line).text(); };
    int before = indentation(block.text());
    int after = indentForBottomLine(lineAt, block.blockNumber() + 1, QChar(), tabSize());
    setIndent(block, &before, &after);
    if (oldIndent)
        *oldIndent = before;
    if (newIndent)
        *newIndent = after;
}

/// A brace or "#" at the start of the line, or the colon of a label of a switch or a class.
bool CppIndent::changesIndent(const QString &start) const
{
    static const QRegularExpression expression(
        uR"(^\s*(?:[{}#]|(?:case\b.*[^:]|default\s*|(?:public|protected|private|signals|Q_SIGNALS)(?:\s+\w+)?\s*):)$)"_s);
    static constexpr QStringView Last = u"{}#:"; // the expression takes long for each key
    return indentMode() == Smart && !start.isEmpty() && Last.contains(start.back())
           && expression.match(start).hasMatch();
}

int indentForBottomLine(const QStringList &lines, QChar typedIn, int tabSize)
{
    return indentForBottomLine([&lines](int line) { return lines.at(line); }, int(lines.size()), typedIn, tabSize);
}

int indentForBottomLine(const std::function<QString(int)> &lineAt, int lineCount, QChar typedIn, int tabSize)
{
    if (lineCount == 0)
        return 0;
    return Indenter(lineAt, lineCount, std::max(tabSize, 1)).indentForBottomLine(typedIn);
}
