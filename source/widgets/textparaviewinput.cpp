#include "linesource.h"
#include "textparaview.h"
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPointer>

// The part of the view that keys and mouse act on: cursor and selection.

namespace {
constexpr int SelectInterval = 100; ///< milliseconds
constexpr int LinesAbove = 4;       ///< what is shown above a place that was gone to
constexpr int CursorWidth = 2;

int stepsBeyond(int position, int end, int unit)
{
    if (position < 0)
        return (position - unit + 1) / unit;
    return position < end ? 0 : (position - end) / unit + 1;
}
} // namespace

// Cursor ------------------------------------------------------------------

bool TextParaView::isCursorVisible() const
{
    const int row = rowOf(m_cursor);
    return row >= 0 && (row + 1) * lineHeight() <= visibleHeight();
}

void TextParaView::setCursor(const Place &place)
{
    const QPointer<TextParaView> self(this);
    m_cursor = {std::clamp(place.para, 0, std::max(0, m_paraSource->paraCount() - 1)), std::max(0, place.line),
                std::max(0, place.column)};
    m_cursorVisible = true;
    m_blinkTimer.start();
    if (!isCursorVisible() && isVisible()) {
        const Place top{m_top.para, m_top.line, 0};
        moveTop({m_cursor.para, m_cursor.line, {}, true, false});
        if (self && top < m_cursor) // the cursor becomes the lowest line
            scrollLines(1 - pageRows());
    }
    if (!self)
        return;
    const int row = rowOf(m_cursor);
    const int x = row < 0 ? 0 : m_painter.xOf(m_rows[row].text, m_cursor.column);
    if (x < contentsX() || x + CursorWidth > contentsX() + visibleWidth())
        ensureVisible(x, 0, 2 * charWidth(), 0);
    viewport()->update();
    Q_EMIT cursorPositionChanged(m_cursor.para, m_cursor.column);
}

void TextParaView::showPara(int para)
{
    const QPointer<TextParaView> self(this);
    const int row = rowOf(para);
    const bool inSight = row >= 0 && (row + 1) * lineHeight() <= visibleHeight();
    if (!inSight) {
        gotoPara(para);
        if (self && isVisible())
            scrollLines(-LinesAbove);
    }
    if (!self)
        return;
    const auto last = int(std::max<qsizetype>(0, linesOf(para).size() - 1));
    if (self)
        setCursor({para, last, 0});
}

void TextParaView::moveCursorRows(int rows, int column)
{
    const QPointer<TextParaView> self(this);
    Row row = rowAt(m_cursor.para, m_cursor.line);
    for (int i = 0; self && i < std::abs(rows) && step(row, rows > 0); ++i) {
    }
    if (self)
        setCursor({row.para, row.line, column});
}

/// Returns whether the key is one of the view's.
bool TextParaView::moveByKey(const QKeyEvent &event)
{
    const QPointer<TextParaView> self(this);
    const bool control = event.modifiers() & Qt::ControlModifier;
    const int column = m_cursor.column;
    switch (event.key()) {
    case Qt::Key_Home:
        setCursor(control ? Place() : Place{m_cursor.para, m_cursor.line, 0});
        return true;
    case Qt::Key_End:
        if (control)
            setCursor({m_paraSource->paraCount() - 1, 0, 0});
        else
            setCursor({m_cursor.para, m_cursor.line, int(plainText(lineAt(m_cursor)).size())});
        return true;
    case Qt::Key_Left:
        moveCursorRows(0, column - 1);
        return true;
    case Qt::Key_Right:
        moveCursorRows(0, column + 1);
        return true;
    case Qt::Key_Up:
        moveCursorRows(-1, column);
        return true;
    case Qt::Key_Down:
        moveCursorRows(1, column);
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown: {
        const int row = std::clamp(rowOf(m_cursor), 0, std::max(0, pageRows() - 1));
        event.key() == Qt::Key_PageUp ? prevPage() : nextPage();
        if (self && row < m_rows.size()) // the cursor stays in its row of the screen
            setCursor({m_rows[row].para, m_rows[row].line, column});
        return true;
    }
    default:
        return false;
    }
}

void TextParaView::keyPressEvent(QKeyEvent *event)
{
    const QPointer<TextParaView> self(this);
    const Place before = m_cursor;
    const bool taken = !(event->modifiers() & Qt::AltModifier) && moveByKey(*event);
    if (!taken)
        event->ignore();
    if (!self || !taken)
        return;
    if (!(event->modifiers() & Qt::ShiftModifier)) {
        setSelection(m_cursor, m_cursor);
        return;
    }
    if (!hasSelection())
        m_anchor = before;
    extendSelection();
}

// Mouse and selection -----------------------------------------------------

TextParaView::Place TextParaView::placeAt(const QPoint &position) const
{
    if (m_rows.isEmpty())
        return {};
    const Row &row = m_rows[std::clamp(position.y() / lineHeight(), 0, int(m_rows.size()) - 1)];
    return {row.para, row.line, m_painter.columnAt(row.text, contentsX() + position.x())};
}

void TextParaView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPointer<TextParaView> self(this);
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    if (extend && !hasSelection())
        m_anchor = m_cursor;
    m_pressed = event->position().toPoint();
    setCursor(placeAt(m_pressed));
    if (!self)
        return;
    if (!extend)
        m_anchor = m_cursor;
    m_dragging = true;
    m_columnStep = m_lineStep = 0;
    m_selectTimer.start(SelectInterval);
    extendSelection();
}

void TextParaView::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_dragging)
        return;
    const QPoint position = event->position().toPoint();
    m_columnStep = stepsBeyond(position.x(), visibleWidth(), charWidth());
    m_lineStep = stepsBeyond(position.y(), visibleHeight(), lineHeight());
    if (m_columnStep || m_lineStep)
        return;
    const QPointer<TextParaView> self(this);
    setCursor(placeAt(position));
    if (self)
        extendSelection();
}

void TextParaView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_dragging)
        return;
    m_dragging = false;
    m_selectTimer.stop();
    const QPoint way = event->position().toPoint() - m_pressed;
    if (!hasSelection() && way.manhattanLength() < QApplication::startDragDistance())
        Q_EMIT clicked(placeAt(m_pressed));
}

void TextParaView::selectTimeout()
{
    if (!m_columnStep && !m_lineStep)
        return;
    const QPointer<TextParaView> self(this);
    moveCursorRows(m_lineStep, m_cursor.column + m_columnStep);
    if (self)
        extendSelection();
}

void TextParaView::extendSelection()
{
    setSelection(m_anchor, m_cursor);
}

void TextParaView::showMatch(const Place &a, const Place &b)
{
    setSelection(a, b);
    m_isMatch = true;
    viewport()->update();
}

void TextParaView::setSelection(Place a, Place b)
{
    m_isMatch = false;
    m_anchor = a;
    if (b < a)
        std::swap(a, b);
    if (a == m_start && b == m_end)
        return;
    m_start = a;
    m_end = b;
    viewport()->update();
    Q_EMIT selectionChanged();
}

/// Of what is on screen: a source may have billions of paragraphs, each of which takes its time.
void TextParaView::selectAll()
{
    if (m_rows.isEmpty())
        return;
    const Row &last = m_rows.last();
    setSelection({m_rows.first().para, m_rows.first().line, 0},
                 {last.para, last.line, int(plainText(last.text).size())});
}

QString TextParaView::selectedText(qsizetype limit)
{
    QString text;
    const QPointer<TextParaView> self(this);
    Row row = rowAt(m_start.para, m_start.line);
    bool more = self && hasSelection();
    while (self && more && text.size() < limit && std::pair(row.para, row.line) <= std::pair(m_end.para, m_end.line)) {
        const SelectedColumns part = selectedColumns(row);
        const QString whole = plainText(row.text);
        const QString taken =
            part.to == SelectedColumns::ToEnd ? whole.mid(part.from) : whole.mid(part.from, part.to - part.from);
        text += taken;
        const bool isLast = row.para == m_end.para && row.line == m_end.line;
        if (!isLast && !taken.endsWith(u'\n'))
            text += u'\n';
        more = !isLast && step(row, true);
    }
    text.truncate(std::min(text.size(), limit));
    return text;
}

void TextParaView::copy()
{
    if (hasSelection())
        QGuiApplication::clipboard()->setText(selectedText());
}

void TextParaView::focusInEvent(QFocusEvent *event)
{
    ScrollView::focusInEvent(event);
    m_cursorVisible = true;
    viewport()->update();
}

void TextParaView::focusOutEvent(QFocusEvent *event)
{
    ScrollView::focusOutEvent(event);
    viewport()->update();
}
