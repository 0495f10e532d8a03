#include "textparaview.h"
#include "accessibleviews.h"
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

namespace {
constexpr int BlinkInterval = 500; ///< milliseconds
constexpr int CursorWidth = 2;
} // namespace

TextParaView::TextParaView(IParaSource *paraSource, QWidget *parent) : ParaScrollView(paraSource, parent)
{
    installAccessibleViews();
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setMouseTracking(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::Text, Qt::black);
    setPalette(colours);
    connect(&m_blinkTimer, &QTimer::timeout, this, &TextParaView::blinkCursor);
    connect(&m_drag, &SelectionDrag::timeout, this, &TextParaView::selectTimeout);
    m_blinkTimer.start(BlinkInterval);
}

QString TextParaView::lineAt(const Place &place) const
{
    const int row = m_rows.indexOf(place.para, place.line);
    return row < 0 ? QString() : m_rows.shown()[row].text;
}

/// Does what has waited for the rows on screen.
void TextParaView::finish(const Pending &pending)
{
    const QPointer<TextParaView> self(this);
    ParaScrollView::finish(pending);
    if (!self)
        return;
    if (isWaiting()) {
        m_pending.para = pending.para;
        m_pending.row = pending.row;
    } else if (pending.para >= 0) {
        showPara(pending.para);
    } else if (pending.row >= 0 && pending.row < rowCount()) {
        setCursor({m_rows.shown()[pending.row].para, m_rows.shown()[pending.row].line, m_cursor.column});
    }
}

// Painting ----------------------------------------------------------------

void TextParaView::paintEvent(QPaintEvent *event)
{
    QPainter painter(viewport());
    const QRect dirty = event->rect();
    painter.fillRect(dirty, palette().color(QPalette::Base));
    const int last = std::min(rowCount() - 1, dirty.bottom() / lineHeight());
    const bool showSelection = hasFocus() || m_selection.isMatch();
    for (int i = std::max(0, dirty.top() / lineHeight()); i <= last; ++i) {
        const ParaRows::Row &row = m_rows.shown()[i];
        const QRect area(dirty.left(), i * lineHeight(), dirty.width(), lineHeight());
        QPalette colours = palette(); // those of texts depend on what is behind them
        if (const QColor band = bandOf(i); band.isValid()) {
            painter.fillRect(area, band);
            colours.setColor(QPalette::Base, band);
        }
        const SelectedColumns selected = showSelection ? m_selection.columnsOf(row.para, row.line) : SelectedColumns();
        m_painter.draw(painter, row.text, -contentsX(), area, selected, colours);
    }
    if (m_cursorVisible && hasFocus())
        painter.fillRect(cursorRect(), palette().color(QPalette::Text));
}

QRect TextParaView::cursorRect() const
{
    const int row = m_rows.indexOf(m_cursor.para, m_cursor.line);
    if (row < 0)
        return {};
    return {cursorX() - contentsX(), row * lineHeight(), CursorWidth, lineHeight()};
}

void TextParaView::blinkCursor()
{
    m_cursorVisible = !m_cursorVisible;
    if (hasFocus())
        viewport()->update(cursorRect());
}

// Cursor ------------------------------------------------------------------

bool TextParaView::isCursorVisible() const
{
    return isWhole(m_rows.indexOf(m_cursor.para, m_cursor.line));
}

void TextParaView::placeCursor(const Place &place)
{
    m_cursor = {std::clamp(place.para, 0, m_rows.lastPara()), std::max(0, place.line), std::max(0, place.column)};
    m_cursorVisible = true;
    m_blinkTimer.start();
}

void TextParaView::setCursor(const Place &place)
{
    moveCursor(place, false);
}

void TextParaView::showPlace(const Place &place)
{
    moveCursor(place, true);
}

void TextParaView::moveCursor(const Place &place, bool toMiddle)
{
    const QPointer<TextParaView> self(this);
    placeCursor(place);
    if (isWaiting())
        stay();
    if (!isCursorVisible() && isVisible()) {
        const bool isBelow = Place{topPara(), topLine(), 0} < m_cursor;
        const int above = toMiddle ? linesAbove() : isBelow ? pageRows() - 1 : 0;
        moveTop({m_cursor.para, m_cursor.line, {}, true, false});
        if (self && above > 0)
            isWaiting() ? void(m_pending.lines = -above) : void(scrollLines(-above));
    }
    if (!self)
        return;
    const int x = cursorX();
    if (x < contentsX() || x + CursorWidth > contentsX() + visibleWidth())
        ensureVisible(x, 0, 2 * charWidth(), 0);
    viewport()->update();
    Q_EMIT cursorPositionChanged(m_cursor.para, m_cursor.column);
}

/// In the contents; 0 if its line is not on screen.
int TextParaView::cursorX() const
{
    const int row = m_rows.indexOf(m_cursor.para, m_cursor.line);
    return row < 0 ? 0 : m_painter.xOf(m_rows.shown()[row].text, m_cursor.column);
}

/// The target of a jump stands in the middle.
int TextParaView::linesAbove() const
{
    return visibleHeight() / lineHeight() / 2;
}

void TextParaView::setBands(const std::function<QColor(int para)> &bands)
{
    m_bands = bands;
    viewport()->update();
}

/// The band of a paragraph lies behind its last line.
QColor TextParaView::bandOf(int row) const
{
    const ParaRows::Row &shown = m_rows.shown()[row];
    const bool isLast = row + 1 >= rowCount() || m_rows.shown()[row + 1].para != shown.para;
    return m_bands && isLast ? m_bands(shown.para) : QColor();
}

void TextParaView::showPara(int para)
{
    const QPointer<TextParaView> self(this);
    if (!isWhole(rowOf(para))) {
        gotoPara(para);
        if (self && isWaiting())
            m_pending.lines = -linesAbove();
        else if (self && isVisible())
            scrollLines(-linesAbove());
    }
    const auto lines = self && !isWaiting() ? linesInTime(para) : std::nullopt;
    if (!self)
        return;
    if (lines) {
        setCursor({para, int(std::max<qsizetype>(0, lines->size() - 1)), 0});
        return;
    }
    placeCursor({para, 0, 0});
    m_pending.para = m_cursor.para;
    setWaiting(true);
    Q_EMIT cursorPositionChanged(m_cursor.para, 0);
}

void TextParaView::shiftParas(qint64 distance)
{
    m_drag.end();
    ParaScrollView::shiftParas(distance);
    const qint64 para = m_cursor.para + distance;
    const bool isInside = para >= 0 && para <= m_rows.lastPara();
    placeCursor(isInside ? Place{int(para), m_cursor.line, m_cursor.column}
                         : Place{int(std::clamp<qint64>(para, 0, m_rows.lastPara())), 0, 0});
    const Place cursor = m_cursor;
    const QPointer<TextParaView> self(this);
    setSelection(cursor, cursor);
    if (self && hasFocus())
        Q_EMIT cursorPositionChanged(cursor.para, cursor.column);
}

void TextParaView::moveCursorRows(int rows, int column)
{
    const QPointer<TextParaView> self(this);
    m_rows.setPatience(Patience);
    ParaRows::Row row{m_cursor.para, m_cursor.line, {}, true, false};
    for (int i = 0; self && i < std::abs(rows) && m_rows.step(row, rows > 0); ++i) {
    }
    if (self)
        setCursor({row.para, row.line, column});
}

/// Returns whether the view handles the key.
bool TextParaView::moveByKey(const QKeyEvent &event)
{
    const bool control = event.modifiers() & Qt::ControlModifier;
    const int column = m_cursor.column;
    switch (event.key()) {
    case Qt::Key_Home:
        setCursor(control ? Place() : Place{m_cursor.para, m_cursor.line, 0});
        return true;
    case Qt::Key_End:
        if (control)
            setCursor({m_rows.lastPara(), 0, 0});
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
    case Qt::Key_PageDown:
        moveByPage(event.key() == Qt::Key_PageDown);
        return true;
    default:
        return false;
    }
}

/// The cursor stays in its row of the screen.
void TextParaView::moveByPage(bool forward)
{
    const QPointer<TextParaView> self(this);
    const int column = m_cursor.column;
    const int row = std::clamp(m_rows.indexOf(m_cursor.para, m_cursor.line), 0, pageRows() - 1);
    forward ? nextPage() : prevPage();
    if (self && isWaiting())
        m_pending.row = row;
    else if (self && row < rowCount())
        setCursor({m_rows.shown()[row].para, m_rows.shown()[row].line, column});
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
        m_selection.setAnchor(before);
    extendSelection();
}

// Mouse and selection -----------------------------------------------------

TextParaView::Place TextParaView::placeAt(const QPoint &position) const
{
    if (m_rows.shown().isEmpty())
        return {};
    const ParaRows::Row &row = m_rows.shown()[std::clamp(position.y() / lineHeight(), 0, rowCount() - 1)];
    return {row.para, row.line, m_painter.columnAt(row.text, contentsX() + position.x())};
}

void TextParaView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const QPointer<TextParaView> self(this);
    const bool extend = event->modifiers() & Qt::ShiftModifier;
    if (extend && !hasSelection())
        m_selection.setAnchor(m_cursor);
    const QPoint position = event->position().toPoint();
    setCursor(placeAt(position));
    if (!self)
        return;
    if (!extend)
        m_selection.setAnchor(m_cursor);
    m_drag.begin(position);
    extendSelection();
}

void TextParaView::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->position().toPoint();
    if (!m_drag.isRunning() || !m_drag.moveTo(position, *viewport(), charWidth(), lineHeight()))
        return;
    const QPointer<TextParaView> self(this);
    setCursor(placeAt(position));
    if (self)
        extendSelection();
}

void TextParaView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton || !m_drag.isRunning())
        return;
    m_drag.end();
    const QPoint way = event->position().toPoint() - m_drag.start();
    if (!hasSelection() && way.manhattanLength() < QApplication::startDragDistance())
        Q_EMIT clicked(placeAt(m_drag.start()));
}

void TextParaView::selectTimeout()
{
    if (!m_drag.isOutside())
        return;
    const QPointer<TextParaView> self(this);
    moveCursorRows(m_drag.lineStep(), m_cursor.column + m_drag.columnStep());
    if (self)
        extendSelection();
}

void TextParaView::extendSelection()
{
    setSelection(m_selection.anchor(), m_cursor);
}

void TextParaView::showMatch(const Place &a, const Place &b)
{
    setSelection(a, b);
    m_selection.setMatch();
    viewport()->update();
}

void TextParaView::setSelection(const Place &a, const Place &b)
{
    if (!m_selection.set(a, b))
        return;
    viewport()->update();
    Q_EMIT selectionChanged();
}

/// Of what is on screen: a source may have billions of paragraphs, each of which takes its time.
void TextParaView::selectAll()
{
    if (m_rows.shown().isEmpty())
        return;
    const ParaRows::Row &first = m_rows.shown().first();
    const ParaRows::Row &last = m_rows.shown().last();
    setSelection({first.para, first.line, 0}, {last.para, last.line, int(plainText(last.text).size())});
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
