#include "rowtext.h"
#include <algorithm>
#include <array>
#include <QRegularExpression>
#include <QTextBlock>
#include <QTextDocument>
#include <ranges>

using namespace Qt::StringLiterals;

namespace {
constexpr int TabSize = 8;

/// The elements that change the look of characters.
bool isInline(QStringView name)
{
    static constexpr std::array Names{"a"_L1,    "b"_L1,    "big"_L1, "cite"_L1, "code"_L1,   "dfn"_L1,
                                      "em"_L1,   "font"_L1, "i"_L1,   "ins"_L1,  "kbd"_L1,    "s"_L1,
                                      "samp"_L1, "del"_L1,  "sub"_L1, "span"_L1, "strike"_L1, "strong"_L1,
                                      "sup"_L1,  "tt"_L1,   "u"_L1,   "var"_L1,  "small"_L1};
    return std::ranges::any_of(Names,
                               [name](QLatin1StringView known) { return !name.compare(known, Qt::CaseInsensitive); });
}

QStringView tagName(QStringView tag)
{
    qsizetype start = tag.startsWith(u'/') ? 1 : 0;
    qsizetype end = start;
    while (end < tag.size() && tag[end].isLetterOrNumber())
        ++end;
    return tag.sliced(start, end - start);
}

/// @p line with its inline tags only.
QString inlineMarkup(QStringView line)
{
    QString html = u"<span style=\"white-space: pre\">"_s;
    while (!line.isEmpty()) {
        const qsizetype open = line.indexOf(u'<');
        const qsizetype close = open < 0 ? -1 : line.indexOf(u'>', open);
        html += line.first(open < 0 ? line.size() : open);
        if (open < 0)
            break;
        if (close < 0) {
            html += u"&lt;"_s;
            line = line.sliced(open + 1);
            continue;
        }
        if (isInline(tagName(line.sliced(open + 1, close - open - 1))))
            html += line.sliced(open, close - open + 1);
        line = line.sliced(close + 1);
    }
    return html + u"</span>"_s;
}

/// What a row takes over of a format: nothing that changes its height.
QTextCharFormat rowFormat(const QTextCharFormat &format)
{
    QTextCharFormat reduced;
    if (format.hasProperty(QTextFormat::ForegroundBrush))
        reduced.setForeground(format.foreground().color());
    if (format.hasProperty(QTextFormat::BackgroundBrush))
        reduced.setBackground(format.background().color());
    if (format.fontWeight() > QFont::Medium)
        reduced.setFontWeight(QFont::Bold);
    if (format.fontItalic())
        reduced.setFontItalic(true);
    if (format.fontUnderline())
        reduced.setFontUnderline(true);
    if (format.fontStrikeOut())
        reduced.setFontStrikeOut(true);
    return reduced;
}

/// Sets text and formats of @p row, the formats in positions of its text.
void readMarkup(RowText &row, QStringView line)
{
    QTextDocument document;
    document.setUndoRedoEnabled(false);
    document.setHtml(inlineMarkup(line));
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = rowFormat(it.fragment().charFormat());
            const QString text = it.fragment().text();
            if (!format.isEmpty())
                row.formats.append({int(row.text.size()), int(text.size()), format});
            row.text += text;
        }
    }
    row.text.replace(QChar::Nbsp, u' ');
}

/// The characters from @p start on get a colour.
void appendColour(RowText &row, qsizetype start, const QColor &colour)
{
    QTextCharFormat format;
    format.setForeground(colour);
    const auto length = int(row.text.size() - start);
    QTextLayout::FormatRange *last = row.formats.isEmpty() ? nullptr : &row.formats.last();
    if (last && last->start + last->length == start && last->format == format)
        last->length += length;
    else if (length > 0)
        row.formats.append({int(start), length, format});
}

/// The character that @p line begins with by a name; null if it is none of the usual ones.
QChar namedCharacter(QStringView line, qsizetype *length)
{
    static constexpr std::array<std::pair<QLatin1StringView, char16_t>, 5> Names{
        {{"&nbsp;"_L1, u' '}, {"&lt;"_L1, u'<'}, {"&gt;"_L1, u'>'}, {"&amp;"_L1, u'&'}, {"&quot;"_L1, u'"'}}};
    const auto *found = std::ranges::find_if(Names, [line](const auto &name) { return line.startsWith(name.first); });
    *length = found == Names.end() ? 0 : found->first.size();
    return found == Names.end() ? QChar() : QChar(found->second);
}

/// The colour of the tag that @p line begins with; invalid for other tags.
QColor colourOfTag(QStringView line, qsizetype *length)
{
    static constexpr QLatin1StringView Start("<font color=\"#");
    constexpr qsizetype Digits = 6;
    *length = Start.size() + Digits + 2;
    if (!line.startsWith(Start) || line.size() < *length || line.sliced(*length - 2, 2) != "\">"_L1)
        return {};
    return QColor(line.sliced(Start.size() - 1, Digits + 1));
}

/// Reads colours one behind the other and names of characters, which are all that rows of a disassembly have. Returns
/// false if there is more, for which readMarkup() needs a hundred times as long.
bool readColours(RowText &row, QStringView line)
{
    static constexpr QLatin1StringView End("</font>");
    QColor colour;
    qsizetype start = 0; // of the colour
    for (qsizetype at = 0, length = 1; at < line.size(); at += length) {
        const QChar character = line[at];
        length = 1;
        if (character == u'<' && !colour.isValid()) {
            colour = colourOfTag(line.sliced(at), &length);
            start = row.text.size();
            if (!colour.isValid())
                return false;
        } else if (character == u'<' && line.sliced(at).startsWith(End)) {
            length = End.size();
            appendColour(row, start, colour);
            colour = {};
        } else if (character == u'&') {
            row.text += namedCharacter(line.sliced(at), &length);
            if (length == 0)
                return false;
        } else if (character != u'<' && ((character >= u' ' && character <= u'~') || character.isLetterOrNumber())) {
            row.text += character;
        } else {
            return false;
        }
    }
    return !colour.isValid();
}

/// The row without RowText::shown, which is computed from the text.
RowText readLine(const QString &line)
{
    RowText row;
    if (!hasMarkup(line)) {
        row.text = line;
        return row;
    }
    const bool ended = line.endsWith(u'\n');
    const QStringView content = QStringView(line).chopped(ended ? 1 : 0);
    if (!readColours(row, content)) {
        row = {};
        readMarkup(row, content);
    }
    if (ended)
        row.text += u'\n';
    return row;
}

QChar visible(QChar character)
{
    constexpr QChar Dot(0xb7); // which every font has
    return character.category() == QChar::Other_Control || character == QChar::LineSeparator
                   || character == QChar::ParagraphSeparator
               ? Dot
               : character;
}

void fillShown(RowText &row)
{
    const QStringView text = QStringView(row.text).first(row.length());
    const bool hasTabs = text.contains(u'\t');
    row.shown.reserve(text.size());
    for (const QChar character : text) {
        if (hasTabs)
            row.tabColumns.append(int(row.shown.size()));
        if (character == u'\t')
            row.shown.resize(row.shown.size() + TabSize - row.shown.size() % TabSize, u' ');
        else
            row.shown += visible(character);
    }
    if (hasTabs)
        row.tabColumns.append(int(row.shown.size()));
    for (QTextLayout::FormatRange &range : row.formats) {
        const int end = row.shownColumn(range.start + range.length);
        range.start = row.shownColumn(range.start);
        range.length = end - range.start;
    }
    row.isSimple = row.formats.isEmpty() && !hasTabs
                   && std::ranges::all_of(row.shown, [](QChar c) { return c >= u' ' && c <= u'~'; });
}
} // namespace

bool hasMarkup(QStringView line)
{
    return std::ranges::any_of(line, [](QChar c) { return c == u'<' || c == u'&'; });
}

RowText rowText(const QString &line)
{
    RowText row = readLine(line);
    fillShown(row);
    return row;
}

QString plainText(const QString &line)
{
    return readLine(line).text;
}

int plainColumn(const QString &line, int column)
{
    static const QRegularExpression markup(u"<[^>]*>|&#?\\w+;"_s);
    if (!hasMarkup(line))
        return column;
    column = std::clamp(column, 0, int(line.size()));
    for (auto it = markup.globalMatch(line); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        if (match.capturedStart() < column && column < match.capturedEnd())
            column = int(match.capturedStart());
    }
    return int(plainText(line.first(column)).size());
}

int markupColumn(const QString &line, int column)
{
    if (!hasMarkup(line))
        return column;
    const auto columns = std::views::iota(0, int(line.size()) + 1);
    const auto found = std::ranges::lower_bound(columns, column, {}, [&line](int c) { return plainColumn(line, c); });
    return found == columns.end() ? int(line.size()) : *found;
}

int RowText::length() const
{
    return int(text.size()) - (text.endsWith(u'\n') ? 1 : 0);
}

int RowText::shownColumn(int column) const
{
    if (tabColumns.isEmpty())
        return column;
    const int last = int(tabColumns.size()) - 1;
    return column <= last ? tabColumns[std::max(0, column)] : tabColumns[last] + column - last;
}

int RowText::textColumn(int shownColumn) const
{
    if (tabColumns.isEmpty())
        return shownColumn;
    const int last = int(tabColumns.size()) - 1;
    if (shownColumn >= tabColumns[last])
        return last + shownColumn - tabColumns[last];
    return int(std::ranges::upper_bound(tabColumns, shownColumn) - tabColumns.begin()) - 1;
}
