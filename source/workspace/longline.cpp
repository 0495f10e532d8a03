#include "longline.h"
#include <algorithm>
#include <cmath>
#include <QPainter>
#include <QTextDocument>
#include <span>

namespace {
constexpr qsizetype PieceLength = 256;
constexpr qsizetype LongestPiece = 2 * PieceLength;
constexpr int FewCharacters = 16'384; ///< are not kept
constexpr int CopiedMeanwhile = 300;  ///< characters of a line, while the document looks for one of them
constexpr size_t MostFormats = 30;    ///< that are remembered
constexpr int Overhang = 2;           ///< characters that may reach into the area beside them
constexpr int KeptText = 1024;        ///< characters read on both sides of a part, because the next key needs them
constexpr int MostKeptText = 16'384;
constexpr qreal WidestPiece = 1e6;
constexpr qreal LayoutUnit = 64; ///< the toolkit's layouts count in this part of a pixel

QTextOption lineOption()
{
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LeftToRight);
    option.setFlags(QTextOption::IncludeTrailingSpaces);
    return option;
}

QTextLine layOutLine(QTextLayout &layout)
{
    layout.setCacheEnabled(true);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLeadingIncluded(true);
    line.setLineWidth(WidestPiece);
    layout.endLayout();
    return line;
}

QFont unshaped(QFont font)
{
    font.setStyleStrategy(QFont::StyleStrategy(font.styleStrategy() | QFont::PreferNoShaping));
    return font;
}

using FormatRange = QTextLayout::FormatRange;

/// What of @p ranges lies in the @p length characters from @p start on, counted from there.
QList<FormatRange> clipped(std::span<const FormatRange> ranges, int start, int length)
{
    QList<FormatRange> result;
    for (const FormatRange &range : ranges) {
        const int from = std::max(range.start - start, 0);
        const int end = int(std::min(qint64(range.start) + range.length - start, qint64(length)));
        if (from < end)
            result.append({from, end - from, range.format});
    }
    return result;
}

/// Whether each range ends before the next one begins.
bool ascend(const QList<FormatRange> &ranges)
{
    const auto reachesInto = [](const FormatRange &a, const FormatRange &b) { return a.start + a.length > b.start; };
    return std::ranges::adjacent_find(ranges, reachesInto) == ranges.end();
}

/// Whether @p c is written in the same way between any other characters.
bool standsAlone(QChar c)
{
    switch (c.category()) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
    case QChar::Other_Control:
    case QChar::Other_Format:
    case QChar::Other_Surrogate:
    case QChar::Other_PrivateUse:
    case QChar::Other_NotAssigned:
        return false;
    default:
        break;
    }
    switch (c.script()) {
    case QChar::Script_Common:
        return c.unicode() < 0x2000;
    case QChar::Script_Latin:
    case QChar::Script_Greek:
    case QChar::Script_Cyrillic:
    case QChar::Script_Han:
    case QChar::Script_Hiragana:
    case QChar::Script_Katakana:
        return true;
    default:
        return false;
    }
}
} // namespace

// The style ---------------------------------------------------------------------

LongLineStyle::LongLineStyle(const QFont &font, qreal tabDistance)
    : m_font(font)
    , m_givenTabDistance(tabDistance)
    , m_tabDistance(std::max(1.0, std::floor(tabDistance * LayoutUnit) / LayoutUnit))
    , m_widths(0x10000, Unknown)
{
    QTextLayout layout(QStringLiteral("x"), m_font);
    const QTextLine line = layOutLine(layout);
    m_lineHeight = line.height();
    m_ascent = line.ascent();
}

qreal LongLineStyle::measure(QChar c) const
{
    float &width = m_widths[c.unicode()];
    width = -1;
    if (standsAlone(c)) {
        QTextLayout layout(QString(c), unshaped(m_font));
        layout.setTextOption(lineOption());
        width = float(layOutLine(layout).horizontalAdvance());
    }
    return width;
}

qreal LongLineStyle::nextTab(qreal x) const
{
    return (std::floor(x / m_tabDistance) + 1) * m_tabDistance;
}

bool LongLineStyle::hasSameWidths(const QTextCharFormat &format) const
{
    for (const auto &[known, same] : m_formats) {
        if (known == format)
            return same;
    }
    if (m_formats.size() > MostFormats)
        m_formats.clear();
    return m_formats.emplace_back(format, comparesWidths(format)).second;
}

/// Layouts do not heed the capitalization of formats.
bool LongLineStyle::comparesWidths(const QTextCharFormat &format) const
{
    const QFont font = format.font().resolve(m_font);
    return font.families() == m_font.families() && font.pointSizeF() == m_font.pointSizeF()
           && font.pixelSize() == m_font.pixelSize() && font.weight() == m_font.weight()
           && font.style() == m_font.style() && font.stretch() == m_font.stretch()
           && font.letterSpacing() == m_font.letterSpacing() && font.wordSpacing() == m_font.wordSpacing();
}

// The pieces --------------------------------------------------------------------

QString LongLine::textOf(const QTextBlock &block, int from, int length)
{
    if (block.length() <= length * qint64(CopiedMeanwhile))
        return block.text().mid(from, length);
    const QTextDocument *document = block.document();
    QString text(length, Qt::Uninitialized);
    for (int i = 0; i < length; ++i)
        text[i] = document->characterAt(block.position() + from + i);
    return text;
}

LongLine::LongLine(const QTextBlock &block, std::shared_ptr<const LongLineStyle> style)
    : m_block(block)
    , m_style(std::move(style))
    , m_length(block.length() - 1 + int(block.layout()->preeditAreaText().size()))
    , m_formats(block.layout()->formats())
    , m_formatsAscend(ascend(m_formats))
    , m_hasOtherWidths(!hasSameWidths(0, m_length))
    , m_pieces(divide(text(0, m_length), 0))
{}

bool LongLine::fits() const
{
    return m_length == m_block.length() - 1 + m_block.layout()->preeditAreaText().size();
}

QString LongLine::text(int from, int length) const
{
    const QString composed = m_block.layout()->preeditAreaText();
    if (composed.isEmpty())
        return documentText(from, length);
    const int at = m_block.layout()->preeditAreaPosition();
    const int first = std::min(from, at);
    const int last = std::max(from + length - int(composed.size()), at);
    return textOf(m_block, first, last - first).insert(at - first, composed).mid(from - first, length);
}

QString LongLine::documentText(int from, int length) const
{
    if (length > FewCharacters)
        return textOf(m_block, from, length);
    if (from < m_textStart || from + length > m_textStart + m_text.size()) {
        m_textStart = std::max(0, from - KeptText);
        const int end = std::min(from + length + KeptText, m_block.length() - 1);
        m_text = textOf(m_block, m_textStart, end - m_textStart);
    }
    return m_text.mid(from - m_textStart, length);
}

/// Makes the kept text the same as that of the document after a change.
void LongLine::changeText(int from, int removed, int added)
{
    const int index = from - m_textStart;
    const bool isInside = index >= 0 && index + removed <= m_text.size();
    if (isInside && added < KeptText && m_text.size() < MostKeptText && m_block.layout()->preeditAreaText().isEmpty())
        m_text.replace(index, removed, textOf(m_block, from, added));
    else
        m_text.clear();
}

/// Pieces end where a character stands alone, if there is one.
std::vector<LongLine::Piece> LongLine::divide(QStringView text, int start) const
{
    std::vector<Piece> pieces;
    for (qsizetype from = 0; from < text.size();) {
        qsizetype end = text.size();
        if (end - from > LongestPiece) {
            const auto latest = text.begin() + from + LongestPiece;
            const auto found = std::find_if(text.begin() + from + PieceLength, latest,
                                            [this](QChar c) { return c == u'\t' || m_style->widthOf(c) >= 0; });
            end = found - text.begin();
            if (found == latest && latest->isLowSurrogate())
                --end;
        }
        const int length = int(end - from);
        pieces.push_back(measure(text.sliced(from, length), start + int(from),
                                 !m_hasOtherWidths || hasSameWidths(start + int(from), length)));
        from = end;
    }
    return pieces;
}

LongLine::Piece LongLine::measure(QStringView text, int start, bool sameWidths) const
{
    Piece piece{int(text.size()), sameWidths, 0, -1};
    for (auto c = text.begin(); piece.isSimple && c != text.end(); ++c) {
        if (*c == u'\t') {
            piece.behindTab = piece.behindTab < 0 ? 0 : m_style->nextTab(piece.behindTab);
            continue;
        }
        const qreal width = m_style->widthOf(*c);
        piece.isSimple = width >= 0;
        (piece.behindTab < 0 ? piece.beforeTab : piece.behindTab) += width;
    }
    if (piece.isSimple)
        return piece;
    const qsizetype tab = text.indexOf(u'\t');
    const auto widthOf = [this](QStringView part, int start) {
        return part.isEmpty() ? 0 : layOut(part.toString(), start, 0)->lineAt(0).horizontalAdvance();
    };
    piece.beforeTab = widthOf(tab < 0 ? text : text.first(tab), start);
    piece.behindTab = tab < 0 ? -1 : widthOf(text.sliced(tab + 1), start + int(tab) + 1);
    return piece;
}

void LongLine::change(int from, int removed, int added)
{
    const int length = m_block.length() - 1 + int(m_block.layout()->preeditAreaText().size());
    changeText(from, removed, added);
    if (m_length - removed + added != length)
        return; // it does not fit any more
    // A mark at the start of a piece belongs to the character before
    const Place first = placeOf(std::max(0, from - 1));
    const Place last = placeOf(std::min(from + removed, m_length - 1));
    const int end = last.start + m_pieces[last.piece].length;
    const std::vector<Piece> changed = divide(text(first.start, end - removed + added - first.start), first.start);
    const auto begin = m_pieces.begin() + qsizetype(first.piece);
    const auto behind = m_pieces.begin() + qsizetype(last.piece) + 1;
    const auto hasTab = [](const Piece &piece) { return piece.behindTab >= 0; };
    if (m_hasTabs || std::ranges::any_of(changed, hasTab))
        m_width = -1;
    for (const Piece &piece : changed)
        m_width += m_width < 0 ? 0 : piece.beforeTab;
    for (auto piece = begin; piece != behind; ++piece)
        m_width -= m_width < 0 ? 0 : piece->beforeTab;
    m_near = first;
    if (changed.size() == last.piece + 1 - first.piece)
        std::copy(changed.begin(), changed.end(), begin);
    else
        m_pieces.insert(m_pieces.erase(begin, behind), changed.begin(), changed.end());
    m_length = length;
}

void LongLine::updateFormats()
{
    const QList<QTextLayout::FormatRange> formats = m_block.layout()->formats();
    if (!fits() || formats.isSharedWith(m_formats))
        return;
    const bool hadOthers = std::exchange(m_hasOtherWidths, !hasSameWidths(0, m_length));
    m_formats = formats;
    m_formatsAscend = ascend(m_formats);
    if (!hadOthers && !m_hasOtherWidths)
        return;
    m_pieces = divide(text(0, m_length), 0);
    m_near = {0, 0, 0};
    m_width = -1;
}

// Places ------------------------------------------------------------------------

qreal LongLine::advance(qreal x, QChar c) const
{
    return c == u'\t' ? m_style->nextTab(x) : x + m_style->widthOf(c);
}

qreal LongLine::endOf(const Piece &piece, qreal x) const
{
    const qreal tab = x + piece.beforeTab;
    return piece.behindTab < 0 ? tab : m_style->nextTab(tab) + piece.behindTab;
}

/// The last piece that begins where @p isBefore holds, or the first one. Most questions are about places behind or near
/// that of the question before.
template <typename IsBefore>
LongLine::Place LongLine::lastPiece(IsBefore isBefore) const
{
    Place place = isBefore(m_near) ? m_near : Place{0, 0, 0};
    while (place.piece + 1 < m_pieces.size()) {
        const Piece &piece = m_pieces[place.piece];
        const Place next{place.piece + 1, place.start + piece.length, endOf(piece, place.x)};
        if (!isBefore(next))
            break;
        place = next;
    }
    m_near = place;
    return place;
}

LongLine::Place LongLine::placeOf(int position) const
{
    return lastPiece([position](const Place &place) { return place.start <= position; });
}

LongLine::Place LongLine::placeAt(qreal x) const
{
    return lastPiece([x](const Place &place) { return place.x <= x; });
}

qreal LongLine::width() const
{
    if (m_width >= 0)
        return m_width;
    m_width = 0;
    m_hasTabs = false;
    for (const Piece &piece : m_pieces) {
        m_width = endOf(piece, m_width);
        m_hasTabs = m_hasTabs || piece.behindTab >= 0;
    }
    return m_width;
}

qreal LongLine::xOf(int position) const
{
    const Place place = placeOf(position);
    const Piece &piece = m_pieces[place.piece];
    const int index = std::clamp(position - place.start, 0, piece.length);
    if (!piece.isSimple)
        return place.x + layOut(text(place.start, piece.length), place.start, place.x)->lineAt(0).cursorToX(index);
    qreal x = place.x;
    for (const QChar c : text(place.start, index))
        x = advance(x, c);
    return x;
}

int LongLine::positionAt(qreal x) const
{
    const Place place = placeAt(x);
    const auto layout = layOut(text(place.start, m_pieces[place.piece].length), place.start, place.x);
    return place.start + layout->lineAt(0).xToCursor(x - place.x);
}

qreal LongLine::changedX(int position) const
{
    const int from = std::max(0, position - Overhang);
    const Place place = placeOf(from);
    return m_pieces[place.piece].isSimple ? xOf(from) : place.x;
}

// Layouts and painting ----------------------------------------------------------

QList<QTextLayout::FormatRange> LongLine::formatsIn(int start, int length) const
{
    const QList<FormatRange> formats = m_block.layout()->formats();
    if (!m_formatsAscend || !formats.isSharedWith(m_formats))
        return clipped(formats, start, length);
    const auto first = std::ranges::partition_point(
        m_formats, [start](const FormatRange &range) { return range.start + range.length <= start; });
    const auto behind =
        std::find_if(first, m_formats.end(), [=](const FormatRange &range) { return range.start >= start + length; });
    return clipped({first, behind}, start, length);
}

bool LongLine::hasSameWidths(int start, int length) const
{
    return std::ranges::all_of(formatsIn(start, length), [this](const QTextLayout::FormatRange &range) {
        return m_style->hasSameWidths(range.format);
    });
}

std::unique_ptr<QTextLayout> LongLine::layOut(const QString &text, int start, qreal x) const
{
    auto layout = std::make_unique<QTextLayout>(text, unshaped(m_style->font()));
    QTextOption option = lineOption();
    if (text.contains(u'\t')) {
        QList<QTextOption::Tab> tabs;
        const qreal first = m_style->nextTab(x) - x;
        const qreal width = double(text.size()) * (m_style->tabDistance() + m_style->lineHeight());
        const int count = int(std::ceil(width / m_style->tabDistance()));
        for (int i = 0; i < count; ++i)
            tabs.append({first + i * m_style->tabDistance(), QTextOption::LeftTab});
        option.setTabs(tabs);
    }
    layout->setTextOption(option);
    layout->setFormats(formatsIn(start, int(text.size())));
    layOutLine(*layout);
    return layout;
}

/// The part of @p text, which starts at @p x, that may reach into the area between @p left and @p right.
LongLine::Part LongLine::partBetween(QStringView text, qreal x, qreal left, qreal right) const
{
    std::vector<qreal> places{x};
    for (const QChar c : text)
        places.push_back(advance(places.back(), c));
    const auto behind = std::upper_bound(places.begin(), places.end() - 1, left);
    const auto end = std::lower_bound(behind, places.end() - 1, right);
    const qsizetype first = std::max<qsizetype>(behind - places.begin() - 1 - Overhang, 0);
    return {first, std::min<qsizetype>(end - places.begin() + Overhang, text.size()), places[size_t(first)]};
}

void LongLine::draw(QPainter &painter, const Paint &what) const
{
    const qreal left = what.clip.left() - what.place.x();
    const qreal right = what.clip.right() - what.place.x();
    std::unique_ptr<QTextLayout> withCursor; // is painted over the text beside it
    QPointF cursorPlace;
    int cursorStart = 0;
    Place place = placeAt(left);
    while (place.piece < m_pieces.size() && place.x < right) {
        const Piece &piece = m_pieces[place.piece++];
        const QString all = text(place.start, piece.length);
        const Part part = piece.isSimple ? partBetween(all, place.x, left, right) : Part{0, all.size(), place.x};
        const int start = place.start + int(part.from);
        const int end = place.start + int(part.end);
        auto layout = layOut(all.sliced(part.from, part.end - part.from), start, part.x);
        const QPointF at = what.place + QPointF(part.x, m_style->ascent() - layout->lineAt(0).ascent());
        layout->draw(&painter, at, clipped(what.selections, start, end - start), what.clip);
        if (what.cursor >= start && what.cursor <= end) {
            withCursor = std::move(layout);
            cursorPlace = at;
            cursorStart = start;
        }
        place.start += piece.length;
        place.x = endOf(piece, place.x);
    }
    if (withCursor)
        withCursor->drawCursor(&painter, cursorPlace, what.cursor - cursorStart, what.cursorWidth);
}
