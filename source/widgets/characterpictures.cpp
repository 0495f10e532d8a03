#include "characterpictures.h"
#include <algorithm>
#include <cstring>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QHash>
#include <QPaintEngine>
#include <QPainter>
#include <QTextLayout>

namespace {
constexpr char16_t First = u' ';
constexpr char16_t Last = u'~';
constexpr int Count = Last - First + 1;
constexpr qsizetype MostSets = 8; ///< for the colours of a view

/// All pairs of characters, and each character several times in a row, since some fonts have ligatures of three.
QString allPairs()
{
    QString text;
    text.reserve(qsizetype(Count) * (2 * Count + 4));
    for (char16_t one = First; one <= Last; ++one) {
        for (char16_t other = First; other <= Last; ++other)
            text.append(QChar(one)).append(QChar(other));
        text.append(QString(4, QChar(one)));
    }
    return text;
}

/// Whether the characters of a text have the same glyphs, one cell from another, as they have alone.
bool areIndependent(const QString &text, const QFont &font, int width)
{
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LeftToRight);
    layout.setTextOption(option);
    layout.beginLayout();
    layout.createLine().setLineWidth(1e6);
    layout.endLayout();
    const QList<QGlyphRun> runs = layout.glyphRuns();
    if (runs.size() != 1 || runs.first().glyphIndexes().size() != text.size())
        return false; // with glyphs of other fonts, or with ligatures
    const QList<quint32> glyphs = runs.first().glyphIndexes();
    const QList<QPointF> places = runs.first().positions();
    QHash<QChar, quint32> known;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (known.value(text[i], glyphs[i]) != glyphs[i] || places[i].x() != double(i) * width)
            return false;
        known.insert(text[i], glyphs[i]);
    }
    return true;
}

/// The check takes some milliseconds, so it is made once for each font.
bool isFixedAndPlain(const QFont &font, int width)
{
    static QHash<QString, bool> checked;
    const QString key = font.toString() + QString::number(width);
    const auto known = checked.constFind(key);
    if (known != checked.cend())
        return *known;
    const bool isPlain = areIndependent(allPairs(), font, width);
    checked.insert(key, isPlain);
    return isPlain;
}

bool isWhole(const QPointF &point)
{
    return point == QPointF(point.toPoint());
}

/// The scale of the painter if it does nothing else than scaling and moving; 0 if not.
int scaleOf(const QPainter &painter)
{
    const QTransform transform = painter.deviceTransform();
    const qreal ratio = painter.device()->devicePixelRatio();
    const bool isSupported = ratio == 1 || ratio == 2;
    const bool isPlain =
        transform.type() <= QTransform::TxScale && transform.m11() == ratio && transform.m22() == ratio;
    return isSupported && isPlain ? int(ratio) : 0;
}

enum class Reach { Cell, Row, Beyond };

/// How far a character reaches that was painted into the cell in the middle.
Reach reachOf(const QImage &image, const QRect &middle, QRgb paper)
{
    Reach reach = Reach::Cell;
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (line[x] == paper || middle.contains(x, y))
                continue;
            if (y < middle.top() || y > middle.bottom())
                return Reach::Beyond;
            reach = Reach::Row;
        }
    }
    return reach;
}
} // namespace

bool CharacterPictures::canShow(QStringView text)
{
    return std::ranges::all_of(text, [](QChar c) { return c >= First && c <= Last; });
}

bool CharacterPictures::draw(QPainter &painter, const QPoint &place, QStringView text, const Style &style)
{
    const int scale = scaleOf(painter);
    const bool isRaster = painter.paintEngine()->type() == QPaintEngine::Raster;
    if (scale == 0 || !isRaster || !isWhole(painter.deviceTransform().map(QPointF(place))))
        return false;
    const Set &set = setFor(style, scale, painter.device()->logicalDpiX());
    const auto isLarger = [&set](QChar character) { return set.largerCharacters.contains(character); };
    if (set.pictures.isNull() || std::ranges::any_of(text, isLarger))
        return false;
    if (text.isEmpty())
        return true;
    composeLine(set, text);
    const QSize size(int(text.size()) * style.cell.width(), style.cell.height());
    painter.drawImage(QRect(place, size), m_line, QRect(QPoint(), size * scale));
    return true;
}

/// Looked for from the last one, since neighbouring rows have the same style.
const CharacterPictures::Set &CharacterPictures::setFor(const Style &style, int scale, int dotsPerInch)
{
    for (qsizetype i = m_sets.size() - 1; i >= 0; --i) {
        if (m_sets[i].scale == scale && m_sets[i].style == style)
            return m_sets[i];
    }
    if (m_sets.size() >= MostSets)
        m_sets.removeFirst();
    Set &set = m_sets.emplaceBack(Set{style, scale, {}, {}});
    if (!isFixedAndPlain(style.font, style.cell.width()))
        return set;
    const QSize cell = style.cell * scale;
    QImage all(cell.width() * Count, cell.height(), QImage::Format_RGB32);
    QImage one(cell * 3, QImage::Format_RGB32);
    one.setDotsPerMeterX(qRound(dotsPerInch / 0.0254));
    one.setDotsPerMeterY(qRound(dotsPerInch / 0.0254));
    one.setDevicePixelRatio(scale);
    const QRect middle(QPoint(cell.width(), cell.height()), cell);
    for (int i = 0; i < Count; ++i) {
        one.fill(style.paper);
        QPainter painter(&one);
        painter.setFont(style.font);
        painter.setPen(style.colour);
        painter.drawText(QPointF(style.cell.width(), style.cell.height() + style.baseline), QChar(char16_t(First + i)));
        painter.end();
        const Reach reach = reachOf(one, middle, style.paper.rgb());
        if (reach == Reach::Beyond)
            return set; // and would be cut off by the next row
        if (reach == Reach::Row)
            set.largerCharacters += QChar(char16_t(First + i));
        for (int y = 0; y < cell.height(); ++y)
            std::memcpy(all.scanLine(y) + qsizetype(4) * i * cell.width(),
                        one.constScanLine(cell.height() + y) + qsizetype(4) * cell.width(),
                        size_t(4) * size_t(cell.width()));
    }
    set.pictures = all;
    return set;
}

void CharacterPictures::composeLine(const Set &set, QStringView text)
{
    const QSize cell = set.style.cell * set.scale;
    const int width = cell.width() * int(text.size());
    if (m_line.width() < width || m_line.height() < cell.height())
        m_line =
            QImage(std::max(width, m_line.width()), std::max(cell.height(), m_line.height()), QImage::Format_RGB32);
    const size_t bytes = size_t(4) * size_t(cell.width());
    for (int y = 0; y < cell.height(); ++y) {
        const uchar *from = set.pictures.constScanLine(y);
        uchar *to = m_line.scanLine(y);
        for (const QChar character : text) {
            std::memcpy(to, from + bytes * size_t(character.unicode() - First), bytes);
            to += bytes;
        }
    }
}

QFont withPixelPitch(const QFont &font, int *width)
{
    QFont even = font;
    even.setLetterSpacing(QFont::AbsoluteSpacing, 0);
    *width = std::max(1, QFontMetrics(even).horizontalAdvance(u'0'));
    const qreal pitch = QFontMetricsF(even).horizontalAdvance(u'0');
    if (pitch != *width) // at some screen scales
        even.setLetterSpacing(QFont::AbsoluteSpacing, *width - pitch);
    return even;
}
