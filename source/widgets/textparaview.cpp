#include "textparaview.h"
#include "accessibleviews.h"
#include "linesource.h"
#include "parascrollbar.h"
#include <QApplication>
#include <QPainter>
#include <QPointer>

using namespace Qt::StringLiterals;

namespace {
constexpr int BlinkInterval = 500; ///< milliseconds
constexpr int CursorWidth = 2;
constexpr int CachedParas = 20'000;
} // namespace

TextParaView::TextParaView(IParaSource *paraSource, QWidget *parent)
    : ScrollView(parent, Vertical::Own), m_paraSource(paraSource), m_bar(new ParaScrollBar), m_paras(CachedParas)
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
    QStringList lines = m_paraSource->para(para);
    if (self)
        m_paras.insert(para, new QStringList(lines));
    return lines;
}

TextParaView::Row TextParaView::rowAt(int para, int line)
{
    const QStringList lines = linesOf(para);
    if (lines.isEmpty())
        return {para, 0, u"<font color=\"#808080\">...</font>"_s, true, true};
    return {para, line, lines.value(line), line >= lines.size() - 1, false};
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
            return self;
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
        const bool fromGap = m_top.isGap; // one that was scrolled to; others are passed over
        Row row = rowAt(m_top.para, m_top.line);
        bool more = self && (fromGap || !row.isGap || step(row, true));
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

bool TextParaView::hasText() const
{
    return std::ranges::any_of(m_rows, [](const Row &row) { return !row.isGap; });
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
    moveTop({std::clamp(para, 0, std::max(0, m_paraSource->paraCount() - 1)), 0, {}, true, false});
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
        const SelectedColumns selected = hasFocus() || m_isMatch ? selectedColumns(m_rows[i]) : SelectedColumns();
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
