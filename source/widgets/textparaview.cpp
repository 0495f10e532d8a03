#include "textparaview.h"
#include "linesource.h"
#include "parascrollbar.h"
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QPainter>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
constexpr int BlinkInterval = 500; ///< milliseconds, as the next
constexpr int SelectInterval = 100;
constexpr int CursorWidth = 2;
constexpr int CachedParas = 20'000;
constexpr int LinesAbove = 4; ///< what is shown above a place that was gone to

int stepsBeyond(int position, int end, int unit)
{
    if (position < 0)
        return (position - unit + 1) / unit;
    return position < end ? 0 : (position - end) / unit + 1;
}
} // namespace

TextParaView::TextParaView(IParaSource *paraSource, QWidget *parent)
    : ScrollView(parent, Vertical::Own), m_paraSource(paraSource), m_bar(new ParaScrollBar), m_paras(CachedParas)
{
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
    connect(&m_selectTimer, &QTimer::timeout, this, &TextParaView::selectTimeout);
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
    m_bar->setRange(0, std::max(0, m_paraSource->paraCount() - 1));
    m_bar->setPageStep(pageRows());
    m_bar->setValue(m_top.para);
}

int TextParaView::pageRows() const
{
    return std::max(1, visibleHeight() / lineHeight());
}

// Rows --------------------------------------------------------------------

QStringList TextParaView::linesOf(int para)
{
    if (para < 0 || para >= m_paraSource->paraCount())
        return {};
    if (const QStringList *known = m_paras[para])
        return *known;
    const QPointer<TextParaView> self(this);
    const QStringList lines = m_paraSource->para(para);
    if (self)
        m_paras.insert(para, new QStringList(lines));
    return lines;
}

TextParaView::Row TextParaView::rowAt(int para, int line)
{
    const QStringList lines = linesOf(para);
    if (lines.isEmpty())
        return {para, 0, u"<font color=\"#808080\">...</font>"_s, true};
    return {para, line, lines.value(line), line >= lines.size() - 1};
}

/// Moves to the next line, or the one before. Returns false at an end of the source, and if the view is gone.
bool TextParaView::step(Row &row, bool forward)
{
    const QPointer<TextParaView> self(this);
    const qsizetype size = linesOf(row.para).size();
    if (!self)
        return false;
    if (forward ? row.line + 1 < size : row.line > 0) {
        row = rowAt(row.para, row.line + (forward ? 1 : -1));
        return self;
    }
    int para = row.para;
    for (int i = 0; i <= LongestGap; ++i) {
        para += forward ? 1 : -1;
        if (para < 0 || para >= m_paraSource->paraCount())
            return false;
        const qsizetype lines = linesOf(para).size();
        if (!self)
            return false;
        if (lines > 0 || i == LongestGap) {
            row = rowAt(para, forward ? 0 : int(std::max<qsizetype>(0, lines - 1)));
            return true;
        }
    }
    return false;
}

/// Fetches what is on screen, from the top.
void TextParaView::loadRows()
{
    const QPointer<TextParaView> self(this);
    QList<Row> rows;
    if (isVisible() && m_paraSource->paraCount() > 0) {
        Row row = rowAt(m_top.para, m_top.line);
        const bool isGap = !m_top.text.isEmpty(); // one that was scrolled to; others are passed over
        bool more = self && (isGap || !linesOf(m_top.para).isEmpty() || step(row, true));
        const int wanted = self ? visibleHeight() / lineHeight() + 1 : 0;
        for (; self && more && rows.size() < wanted; more = step(row, true))
            rows.append(row);
    }
    if (!self)
        return;
    m_rows = rows;
    viewport()->update();
}

void TextParaView::reload()
{
    m_paras.clear();
    m_top.para = std::clamp(m_top.para, 0, std::max(0, m_paraSource->paraCount() - 1));
    updateBar();
    loadRows();
}

bool TextParaView::rowToPara(int row, int *para, int *line) const
{
    if (row < 0 || row >= m_rows.size())
        return false;
    *para = m_rows[row].para;
    *line = m_rows[row].line;
    return true;
}

bool TextParaView::isLastLine(int row) const
{
    return row >= 0 && row < m_rows.size() && m_rows[row].isLast;
}

int TextParaView::rowOf(int para) const
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].para == para && m_rows[row].isLast)
            return row;
    }
    return -1;
}

int TextParaView::rowOf(const Place &place) const
{
    for (int row = 0; row < m_rows.size(); ++row) {
        if (m_rows[row].para == place.para && m_rows[row].line == place.line)
            return row;
    }
    return -1;
}

QString TextParaView::lineAt(const Place &place) const
{
    const int row = rowOf(place);
    return row < 0 ? QString() : m_rows[row].text;
}

QString TextParaView::visibleText() const
{
    QString text;
    for (const Row &row : m_rows)
        text += plainText(row.text) + u'\n';
    return text;
}

// Scrolling ---------------------------------------------------------------

void TextParaView::moveTop(Row top)
{
    const QPointer<TextParaView> self(this);
    m_top = std::move(top);
    updateBar();
    Q_EMIT contentsMoving(m_top.para, m_top.line);
    if (self)
        loadRows();
}

/// Returns false if the view is gone or was at the end already.
bool TextParaView::scrollLines(int lines)
{
    const QPointer<TextParaView> self(this);
    Row top = m_top;
    bool moved = false;
    for (int i = 0; i < std::abs(lines) && step(top, lines > 0); ++i)
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
    moveTop({std::clamp(para, 0, std::max(0, m_paraSource->paraCount() - 1)), 0, {}, true});
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
    const int last = std::min(int(m_rows.size()) - 1, dirty.bottom() / lineHeight());
    for (int i = std::max(0, dirty.top() / lineHeight()); i <= last; ++i) {
        const SelectedColumns selected = hasFocus() ? selectedColumns(m_rows[i]) : SelectedColumns();
        const QRect row(dirty.left(), i * lineHeight(), dirty.width(), lineHeight());
        m_painter.draw(painter, m_rows[i].text, -contentsX(), row, selected, palette());
    }
    if (m_cursorVisible && hasFocus())
        painter.fillRect(cursorRect(), palette().color(QPalette::Text));
}

SelectedColumns TextParaView::selectedColumns(const Row &row) const
{
    const std::pair line(row.para, row.line);
    const std::pair first(m_start.para, m_start.line);
    const std::pair last(m_end.para, m_end.line);
    if (!hasSelection() || line < first || line > last)
        return {};
    return {line == first ? m_start.column : 0, line == last ? m_end.column : SelectedColumns::ToEnd};
}

QRect TextParaView::cursorRect() const
{
    const int row = rowOf(m_cursor);
    if (row < 0)
        return {};
    return {m_painter.xOf(m_rows[row].text, m_cursor.column) - contentsX(), row * lineHeight(), CursorWidth,
            lineHeight()};
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
        moveTop({m_cursor.para, m_cursor.line, {}, true});
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
        if (row < m_rows.size()) // the cursor stays in its row of the screen
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
    extendSelection();
    m_dragging = true;
    m_columnStep = m_lineStep = 0;
    m_selectTimer.start(SelectInterval);
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
    const Place anchor = m_anchor;
    setSelection(anchor, m_cursor);
    m_anchor = anchor;
}

void TextParaView::setSelection(Place a, Place b)
{
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
