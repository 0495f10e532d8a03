#include "rowpainter.h"
#include <cmath>
#include <QFontMetricsF>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {
constexpr int CachedRows = 500;
constexpr double LeastContrast = 4.5;

double luminance(const QColor &colour)
{
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &two)
{
    const auto [dark, light] = std::minmax({luminance(one), luminance(two)});
    return (light + 0.05) / (dark + 0.05);
}
} // namespace

QColor readableOn(const QColor &paper, const QColor &colour)
{
    const double step = luminance(paper) < 0.18 ? 0.05 : -0.05;
    float hue = 0;
    float saturation = 0;
    float lightness = 0;
    colour.getHslF(&hue, &saturation, &lightness);
    QColor found = colour;
    for (bool further = true; further && contrast(paper, found) < LeastContrast;) {
        lightness = std::clamp(lightness + float(step), 0.0f, 1.0f);
        further = lightness > 0 && lightness < 1;
        found = QColor::fromHslF(std::max(0.0f, hue), saturation, lightness, colour.alphaF());
    }
    return found;
}

QColor fadedText(const QPalette &palette)
{
    const QColor paper = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Disabled, QPalette::Text);
    const auto mix = [&](int below, int above) { return below + (above - below) * text.alpha() / 255; };
    return readableOn(paper,
                      {mix(paper.red(), text.red()), mix(paper.green(), text.green()), mix(paper.blue(), text.blue())});
}

RowPainter::RowPainter() : m_rich(CachedRows) {}

/// Rows of "Courier" are higher, because that font paints below its line spacing.
void RowPainter::setFont(const QFont &font)
{
    const QFontMetrics metrics(font);
    m_lineHeight = std::max(1, metrics.lineSpacing() + (font.family() == u"Courier"_s ? metrics.descent() : 0));
    m_baseline = metrics.ascent();
    m_font = withPixelPitch(font, &m_charWidth);
}

RowText RowPainter::row(const QString &line)
{
    if (!hasMarkup(line))
        return rowText(line);
    if (const RowText *known = m_rich[line])
        return *known;
    RowText row = rowText(line);
    m_rich.insert(line, new RowText(row));
    return row;
}

void RowPainter::draw(QPainter &painter, const QString &line, int left, const QRect &clip, SelectedColumns selected,
                      const QPalette &palette)
{
    const RowText row = this->row(line);
    painter.setFont(m_font);
    const QColor paper = palette.color(QPalette::Base);
    drawText(painter, row, left, clip, palette.color(QPalette::Text), paper, true);
    if (selected.isEmpty())
        return;
    QRect part = clip;
    part.setLeft(std::max(clip.left(), left + xOf(line, selected.from)));
    if (selected.to != SelectedColumns::ToEnd)
        part.setRight(std::min(clip.right(), left + xOf(line, selected.to) - 1));
    if (part.isEmpty())
        return;
    painter.save();
    painter.setClipRect(part, Qt::IntersectClip);
    painter.fillRect(part, palette.color(QPalette::Highlight));
    drawText(painter, row, left, part, palette.color(QPalette::HighlightedText), {}, false);
    painter.restore();
}

void RowPainter::drawText(QPainter &painter, const RowText &row, int left, const QRect &clip, const QColor &colour,
                          const QColor &paper, bool withColours)
{
    painter.setPen(colour);
    if (row.isSimple) {
        const int first = std::max(0, (clip.left() - left) / m_charWidth - 1);
        const int count = clip.width() / m_charWidth + 4; // a slanted character may reach over its cell
        const QString text = row.shown.mid(first, count);
        const QPoint place(left + first * m_charWidth, clip.top());
        const CharacterPictures::Style style{m_font, {m_charWidth, m_lineHeight}, double(m_baseline), colour, paper};
        if (!withColours || !m_isOnPaper || !m_pictures.draw(painter, place, text, style))
            painter.drawText(place + QPoint(0, m_baseline), text);
        return;
    }
    QList<QTextLayout::FormatRange> formats = row.formats;
    for (QTextLayout::FormatRange &range : formats) {
        if (!withColours) {
            range.format.clearForeground();
            range.format.clearBackground();
        } else if (range.format.hasProperty(QTextFormat::ForegroundBrush)) {
            const bool onPaper = !range.format.hasProperty(QTextFormat::BackgroundBrush);
            range.format.setForeground(
                readableOn(onPaper ? paper : range.format.background().color(), range.format.foreground().color()));
        }
    }
    QTextLayout layout(row.shown, m_font);
    layOut(layout, formats);
    painter.save();
    painter.setClipRect(clip, Qt::IntersectClip);
    layout.draw(&painter, QPointF(left, clip.top()));
    painter.restore();
}

void RowPainter::layOut(QTextLayout &layout, const QList<QTextLayout::FormatRange> &formats) const
{
    QTextOption option;
    option.setWrapMode(QTextOption::NoWrap);
    option.setTextDirection(Qt::LeftToRight);
    layout.setTextOption(option);
    layout.setFormats(formats);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid()) {
        line.setLineWidth(1e6);
        line.setPosition(QPointF(0, m_baseline - line.ascent())); // fallback fonts may be higher
    }
    layout.endLayout();
}

int RowPainter::width(const QString &line)
{
    const RowText row = this->row(line);
    return row.isSimple ? int(row.shown.size()) * m_charWidth : xOf(line, row.length());
}

int RowPainter::xOf(const QString &line, int column)
{
    const RowText row = this->row(line);
    const int shown = row.shownColumn(column);
    const int length = int(row.shown.size());
    if (row.isSimple || length == 0)
        return shown * m_charWidth;
    QTextLayout layout(row.shown, m_font);
    layOut(layout, row.formats);
    const qreal x = layout.lineAt(0).cursorToX(std::min(shown, length));
    return qRound(x) + std::max(0, shown - length) * m_charWidth;
}

int RowPainter::columnAt(const QString &line, int x)
{
    x = std::max(0, x);
    const RowText row = this->row(line);
    const int length = int(row.shown.size());
    if (row.isSimple || length == 0)
        return row.textColumn(x / m_charWidth);
    QTextLayout layout(row.shown, m_font);
    layOut(layout, row.formats);
    const int width = qRound(layout.lineAt(0).cursorToX(length));
    return row.textColumn(x < width ? layout.lineAt(0).xToCursor(x, QTextLine::CursorOnCharacter)
                                    : length + (x - width) / m_charWidth);
}
