#include "textparaview.h"
#include "accessibleviews.h"
#include "linesource.h"
#include "parascrollbar.h"
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

namespace {
constexpr int BlinkInterval = 500; ///< milliseconds
constexpr int CursorWidth = 2;
constexpr int LinesAbove = 4; ///< lines shown above the target of a jump
} // namespace

TextParaView::TextParaView(IParaSource *paraSource, QWidget *parent)
    : ScrollView(parent, Vertical::Own), m_bar(new ParaScrollBar), m_rows(paraSource)
{
    installAccessibleViews();
    setFocusPolicy(Qt::StrongFocus);
    setVerticalScrollBar(m_bar);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setMouseTracking(true);
    QPalette colours = palette();
    colours.setColor(QPalette::Base, Qt::white);
    colours.setColor(QPalette::Text, Qt::black);
    setPalette(colours);
    connect(m_bar, &QScrollBar::valueChanged, this, &TextParaView::gotoPara);
    connect(m_bar, &ParaScrollBar::nextLine, this, &TextParaView::nextLine);
    connect(m_bar, &ParaScrollBar::prevLine, this, &TextParaView::prevLine);
    connect(m_bar, &ParaScrollBar::nextPage, this, &TextParaView::nextPage);
    connect(m_bar, &ParaScrollBar::prevPage, this, &TextParaView::prevPage);
    connect(&m_blinkTimer, &QTimer::timeout, this, &TextParaView::blinkCursor);
    connect(&m_drag, &SelectionDrag::timeout, this, &TextParaView::selectTimeout);
    m_blinkTimer.start(BlinkInterval);
    fontChanged();
}

void TextParaView::changeEvent(QEvent *event)
{
    ScrollView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fontChanged();
}

void TextParaView::fontChanged()
{
    m_painter.setFont(font());
    setSteps(charWidth(), lineHeight());
    resizeContents(Columns * charWidth(), 0);
    updateBar();
    loadRows();
}

void TextParaView::updateBar()
{
    const QSignalBlocker quiet(m_bar);
    m_bar->setRange(0, m_rows.lastPara());
    m_bar->setPageStep(pageRows());
    m_bar->setValue(m_rows.top().para);
}

int TextParaView::pageRows() const
{
    return std::max(1, visibleHeight() / lineHeight());
}

// Rows --------------------------------------------------------------------

/// Fetches what is on screen, from the top.
void TextParaView::loadRows()
{
    if (m_rows.load(isVisible() ? visibleHeight() / lineHeight() + 1 : 0))
        viewport()->update();
}

void TextParaView::reload()
{
    m_rows.clearCache();
    ParaRows::Row top = m_rows.top();
    top.para = std::min(top.para, m_rows.lastPara());
    m_rows.setTop(top);
    updateBar();
    loadRows();
}

bool TextParaView::rowToPara(int row, int *para, int *line) const
{
    if (row < 0 || row >= rowCount())
        return false;
    *para = m_rows.shown()[row].para;
    *line = m_rows.shown()[row].line;
    return true;
}

bool TextParaView::isLastLine(int row) const
{
    return row >= 0 && row < rowCount() && m_rows.shown()[row].isLast;
}

bool TextParaView::hasText() const
{
    return std::ranges::any_of(m_rows.shown(), [](const ParaRows::Row &row) { return !row.isGap; });
}

QString TextParaView::lineAt(const Place &place) const
{
    const int row = m_rows.indexOf(place.para, place.line);
    return row < 0 ? QString() : m_rows.shown()[row].text;
}

/// Whether the row is on screen and not cut off.
bool TextParaView::isWhole(int row) const
{
    return row >= 0 && (row + 1) * lineHeight() <= visibleHeight();
}

// Scrolling ---------------------------------------------------------------

void TextParaView::moveTop(const ParaRows::Row &top)
{
    const QPointer<TextParaView> self(this);
    m_rows.setTop(top);
    updateBar();
    Q_EMIT contentsMoving(topPara(), topLine());
    if (self)
        loadRows();
}

/// Returns false if the view was deleted or was at the end already.
bool TextParaView::scrollLines(int lines)
{
    const QPointer<TextParaView> self(this);
    ParaRows::Row top = m_rows.top();
    bool moved = false;
    for (int i = 0; i < std::abs(lines) && m_rows.step(top, lines > 0); ++i)
        moved = true;
    if (!self || !moved)
        return false;
    moveTop(top);
    return self;
}

void TextParaView::nextLine()
{
    scrollLines(1);
}

void TextParaView::prevLine()
{
    scrollLines(-1);
}

void TextParaView::nextPage()
{
    scrollLines(pageRows());
}

void TextParaView::prevPage()
{
    scrollLines(-pageRows());
}

void TextParaView::gotoPara(int para)
{
    moveTop({std::clamp(para, 0, m_rows.lastPara()), 0, {}, true, false});
}

void TextParaView::wheelEvent(QWheelEvent *event)
{
    constexpr int Notch = 120;
    if (event->angleDelta().y() == 0) {
        ScrollView::wheelEvent(event);
        return;
    }
    m_wheel += event->angleDelta().y() * QApplication::wheelScrollLines();
    const int lines = m_wheel / Notch;
    m_wheel -= lines * Notch;
    event->accept();
    if (lines != 0)
        scrollLines(-lines);
}

void TextParaView::resizeEvent(QResizeEvent *event)
{
    ScrollView::resizeEvent(event);
    updateBar();
    loadRows();
}

void TextParaView::showEvent(QShowEvent *event)
{
    ScrollView::showEvent(event);
    loadRows();
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
        const SelectedColumns selected = showSelection ? m_selection.columnsOf(row.para, row.line) : SelectedColumns();
        m_painter.draw(painter, row.text, -contentsX(), area, selected, palette());
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

void TextParaView::setCursor(const Place &place)
{
    const QPointer<TextParaView> self(this);
    m_cursor = {std::clamp(place.para, 0, m_rows.lastPara()), std::max(0, place.line), std::max(0, place.column)};
    m_cursorVisible = true;
    m_blinkTimer.start();
    if (!isCursorVisible() && isVisible()) {
        const Place top{topPara(), topLine(), 0};
        moveTop({m_cursor.para, m_cursor.line, {}, true, false});
        if (self && top < m_cursor) // the cursor becomes the lowest line
            scrollLines(1 - pageRows());
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

void TextParaView::showPara(int para)
{
    const QPointer<TextParaView> self(this);
    if (!isWhole(rowOf(para))) {
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
    ParaRows::Row row = m_rows.rowAt(m_cursor.para, m_cursor.line);
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
    if (self && row < rowCount())
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
