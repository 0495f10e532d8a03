#include "textlineview.h"
#include "accessibleviews.h"
#include "linesource.h"
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace {
constexpr int BlinkInterval = 500; ///< milliseconds
constexpr int CursorWidth = 2;
} // namespace

TextLineView::TextLineView(ILineSource *lineSource, QWidget *parent) : ScrollView(parent), m_lineSource(lineSource)
{
    installAccessibleViews();
    m_rows.setOnPaper(true);
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::IBeamCursor);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::Text, Qt::black);
    setPalette(colours);
    connect(&m_blinkTimer, &QTimer::timeout, this, &TextLineView::blinkCursor);
    connect(&m_drag, &SelectionDrag::timeout, this, &TextLineView::selectTimeout);
    m_blinkTimer.start(BlinkInterval);
    fontChanged();
}

void TextLineView::changeEvent(QEvent *event)
{
    ScrollView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fontChanged();
}

void TextLineView::fontChanged()
{
    const qint64 top = contentsY() / lineHeight();
    m_rows.setFont(font());
    m_widest = 0;
    setSteps(charWidth(), lineHeight());
    linesChanged();
    setContentsPos(contentsX(), top * lineHeight());
    viewport()->update();
}

void TextLineView::linesChanged()
{
    resizeContents(std::max(Columns * charWidth(), m_widest), qint64(m_lineSource->lineCount()) * lineHeight());
    viewport()->update();
}

QList<int> TextLineView::heldLines() const
{
    return {int(contentsY() / lineHeight()), m_cursor.line, m_start.line, m_end.line, m_anchor.line};
}

void TextLineView::setHeldLines(const QList<int> &lines)
{
    const qint64 hidden = contentsY() % lineHeight();
    linesChanged();
    m_cursor.line = lines[1];
    m_start.line = lines[2];
    m_end.line = lines[3];
    m_anchor.line = lines[4];
    setContentsPos(contentsX(), qint64(lines[0]) * lineHeight() + hidden);
}

// Painting ----------------------------------------------------------------

void TextLineView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QRect dirty = event->rect();
    painter.fillRect(dirty, palette().color(QPalette::Base));
    const qint64 y = contentsY() + dirty.top();
    const qint64 last = std::min<qint64>((y + dirty.height()) / lineHeight() + 1, m_lineSource->lineCount() - 1);
    for (qint64 line = std::max<qint64>(0, y / lineHeight() - 1); line <= last; ++line)
        paintLine(painter, int(line), dirty);
    if (m_cursorVisible && hasFocus())
        painter.fillRect(cursorRect(), palette().color(QPalette::Text));
}

void TextLineView::paintLine(QPainter &painter, int line, const QRect &dirty)
{
    const int top = int(qint64(line) * lineHeight() - contentsY());
    const QString text = m_lineSource->line(line);
    const SelectedColumns selected = hasFocus() || m_isMatch ? selectedColumns(line) : SelectedColumns();
    const QRect area(dirty.left(), top, dirty.width(), lineHeight());
    QPalette colours = palette(); // those of texts depend on what is behind them
    if (const QColor band = m_bands ? m_bands(line) : QColor(); band.isValid()) {
        painter.fillRect(area, band);
        colours.setColor(QPalette::Base, band);
    }
    m_rows.draw(painter, text, -contentsX(), area, selected, colours);
    if (text.size() > Columns / 2)
        widen(m_rows.width(text));
}

void TextLineView::setBands(const std::function<QColor(int line)> &bands)
{
    m_bands = bands;
    viewport()->update();
}

/// The contents change their size after the painting, not during it.
void TextLineView::widen(int width)
{
    if (width <= std::max(m_widest, Columns * charWidth()))
        return;
    m_widest = width;
    QMetaObject::invokeMethod(this, &TextLineView::linesChanged, Qt::QueuedConnection);
}

SelectedColumns TextLineView::selectedColumns(int line) const
{
    if (!hasSelection() || line < m_start.line || line > m_end.line)
        return {};
    if (m_blockMode)
        return {m_start.column, m_end.column};
    return {line == m_start.line ? m_start.column : 0, line == m_end.line ? m_end.column : SelectedColumns::ToEnd};
}

QRect TextLineView::cursorRect() const
{
    const qint64 top = qint64(m_cursor.line) * lineHeight() - contentsY();
    if (top <= -lineHeight() || top > visibleHeight())
        return {};
    const int x = m_rows.xOf(m_lineSource->line(m_cursor.line), m_cursor.column) - contentsX();
    return {x, int(top), CursorWidth, lineHeight()};
}

void TextLineView::updateRow(int line)
{
    const qint64 top = qint64(line) * lineHeight() - contentsY();
    if (top > -lineHeight() && top <= visibleHeight())
        viewport()->update(0, int(top), visibleWidth(), lineHeight());
}

void TextLineView::blinkCursor()
{
    m_cursorVisible = !m_cursorVisible;
    if (hasFocus())
        updateRow(m_cursor.line);
}

QString TextLineView::visibleText() const
{
    QString text;
    const int first = int(contentsY() / lineHeight());
    const int last = std::min(first + visibleHeight() / lineHeight(), m_lineSource->lineCount() - 1);
    for (int line = first; line <= last; ++line) {
        const RowText row = m_rows.row(m_lineSource->line(line));
        text += QStringView(row.text).first(row.length()).toString() + u'\n';
    }
    return text;
}

// Cursor ------------------------------------------------------------------

void TextLineView::setCursor(int line, int column)
{
    updateRow(m_cursor.line);
    m_cursor.line = std::clamp(line, 0, std::max(0, m_lineSource->lineCount() - 1));
    m_cursor.column = std::max(0, column);
    m_cursorVisible = true;
    m_blinkTimer.start();
    const int x = m_rows.xOf(m_lineSource->line(m_cursor.line), m_cursor.column);
    const bool inSight = isCursorVisible() && x >= contentsX() && x + CursorWidth <= contentsX() + visibleWidth();
    if (!inSight) {
        widen(x + 2 * charWidth());
        if (x + 2 * charWidth() > contentsWidth())
            linesChanged();
        ensureVisible(x, qint64(m_cursor.line) * lineHeight(), 2 * charWidth(), lineHeight());
    }
    updateRow(m_cursor.line);
    Q_EMIT cursorPositionChanged(m_cursor.line, m_cursor.column);
}

bool TextLineView::isLineVisible(int line) const
{
    const qint64 top = qint64(line) * lineHeight();
    return top >= contentsY() && top + lineHeight() <= contentsY() + visibleHeight();
}

bool TextLineView::isCursorVisible() const
{
    return isLineVisible(m_cursor.line);
}

void TextLineView::showPlace(const Place &place)
{
    const bool visible = isLineVisible(place.line);
    setCursor(place.line, place.column);
    if (!visible)
        ensureVisible(contentsX(), qint64(lineHeight()) * m_cursor.line, 0, visibleHeight() / 2);
}

void TextLineView::gotoLine(int line)
{
    if (line <= 0 || line >= m_lineSource->lineCount())
        return;
    const qint64 y = qint64(lineHeight()) * (line - 1);
    const bool visible = isLineVisible(line - 1);
    setCursor(line - 1, 0);
    ensureVisible(0, y, 0, visible ? 4 * qint64(lineHeight()) : visibleHeight() / 2);
}

int TextLineView::endColumn(int line) const
{
    return m_rows.row(m_lineSource->line(line)).length();
}

bool TextLineView::placeForKey(const QKeyEvent &event, Place &place) const
{
    const bool control = event.modifiers() & Qt::ControlModifier;
    const int last = std::max(0, m_lineSource->lineCount() - 1);
    const int page = std::max(1, visibleHeight() / lineHeight());
    place = m_cursor;
    switch (event.key()) {
    case Qt::Key_Home:
        place = {control ? 0 : place.line, 0};
        return true;
    case Qt::Key_End:
        place.line = control ? last : place.line;
        place.column = endColumn(place.line);
        return true;
    case Qt::Key_Left:
        --place.column;
        return true;
    case Qt::Key_Right:
        ++place.column;
        return true;
    case Qt::Key_Up:
        --place.line;
        return true;
    case Qt::Key_Down:
        place.line = std::min(place.line, last - 1) + 1;
        return true;
    case Qt::Key_PageUp:
        place.line -= page;
        return true;
    case Qt::Key_PageDown:
        place.line = last - place.line > page ? place.line + page : last;
        return true;
    default:
        return false;
    }
}

/// With Shift the selection is extended, without it is removed.
void TextLineView::keyPressEvent(QKeyEvent *event)
{
    Place place;
    if ((event->modifiers() & Qt::AltModifier) || !placeForKey(*event, place)) {
        event->ignore();
        return;
    }
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    if (extend && !hasSelection())
        m_anchor = m_cursor;
    setCursor(place.line, place.column);
    if (extend)
        extendSelection();
    else if (hasSelection())
        setSelection(m_cursor, m_cursor);
}

// Mouse and selection -----------------------------------------------------

TextLineView::Place TextLineView::placeAt(const QPoint &position) const
{
    const qint64 line = std::max<qint64>(0, contentsY() + position.y()) / lineHeight();
    const int found = int(std::min<qint64>(line, std::max(0, m_lineSource->lineCount() - 1)));
    return {found, m_rows.columnAt(m_lineSource->line(found), contentsX() + position.x())};
}

void TextLineView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPoint position = event->position().toPoint();
    const Place place = placeAt(position);
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    if (extend && !hasSelection())
        m_anchor = m_cursor;
    setCursor(place.line, place.column);
    if (!extend)
        m_anchor = m_cursor;
    m_drag.begin(position);
    extendSelection();
}

void TextLineView::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    if (!m_drag.isRunning() || !m_drag.moveTo(position, *viewport(), charWidth(), lineHeight()))
        return;
    const Place place = placeAt(position);
    setCursor(place.line, place.column);
    extendSelection();
}

void TextLineView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        m_drag.end();
}

void TextLineView::selectTimeout()
{
    if (!m_drag.isOutside())
        return;
    setCursor(m_cursor.line + m_drag.lineStep(), m_cursor.column + m_drag.columnStep());
    extendSelection();
}

void TextLineView::extendSelection()
{
    setSelection(m_anchor, m_cursor);
}

void TextLineView::showMatch(const Place &a, const Place &b)
{
    setSelection(a, b);
    m_isMatch = true;
    viewport()->update();
}

void TextLineView::setSelection(Place a, Place b)
{
    m_isMatch = false;
    m_anchor = a;
    if (b < a)
        std::swap(a, b);
    if (m_blockMode && b.column < a.column)
        std::swap(a.column, b.column);
    if (a == m_start && b == m_end)
        return;
    m_start = a;
    m_end = b;
    viewport()->update();
    Q_EMIT selectionChanged();
}

void TextLineView::setBlockMode(bool blockMode)
{
    m_blockMode = blockMode;
    viewport()->update();
}

void TextLineView::selectAll()
{
    const int last = std::max(0, m_lineSource->lineCount() - 1);
    setSelection({0, 0}, {last, endColumn(last)});
}

QString TextLineView::selectedText(qsizetype limit) const
{
    QString text;
    for (int line = m_start.line; hasSelection() && line <= m_end.line && text.size() < limit; ++line) {
        const SelectedColumns part = selectedColumns(line);
        const QString whole = plainText(m_lineSource->line(line));
        const QString taken =
            part.to == SelectedColumns::ToEnd ? whole.mid(part.from) : whole.mid(part.from, part.to - part.from);
        text += taken;
        if (line < m_end.line && !taken.endsWith(u'\n'))
            text += u'\n';
    }
    text.truncate(std::min(text.size(), limit));
    return text;
}

void TextLineView::copy()
{
    if (hasSelection())
        QGuiApplication::clipboard()->setText(selectedText());
}

void TextLineView::focusInEvent(QFocusEvent *event)
{
    ScrollView::focusInEvent(event);
    m_cursorVisible = true;
    viewport()->update();
}

void TextLineView::focusOutEvent(QFocusEvent *event)
{
    ScrollView::focusOutEvent(event);
    viewport()->update();
}
