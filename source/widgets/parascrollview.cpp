#include "parascrollview.h"
#include "linesource.h"
#include "parascrollbar.h"
#include <QApplication>
#include <QPointer>
#include <QWheelEvent>

namespace {
constexpr int WaitInterval = 5; ///< milliseconds, between two looks at the source and for each of them
constexpr int LongWait = 30;    ///< looks
} // namespace

ParaScrollView::ParaScrollView(IParaSource *paraSource, QWidget *parent)
    : ScrollView(parent, Vertical::Own), m_rows(paraSource), m_bar(new ParaScrollBar)
{
    setVerticalScrollBar(m_bar);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    connect(m_bar, &QScrollBar::valueChanged, this, &ParaScrollView::gotoPara);
    connect(m_bar, &ParaScrollBar::nextLine, this, &ParaScrollView::nextLine);
    connect(m_bar, &ParaScrollBar::prevLine, this, &ParaScrollView::prevLine);
    connect(m_bar, &ParaScrollBar::nextPage, this, &ParaScrollView::nextPage);
    connect(m_bar, &ParaScrollBar::prevPage, this, &ParaScrollView::prevPage);
    connect(&m_waitTimer, &QTimer::timeout, this, &ParaScrollView::goOn);
    m_waitTimer.setInterval(WaitInterval);
    fontChanged();
}

void ParaScrollView::changeEvent(QEvent *event)
{
    ScrollView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        fontChanged();
}

void ParaScrollView::fontChanged()
{
    m_painter.setFont(font());
    setSteps(charWidth(), lineHeight());
    resizeContents(Columns * charWidth(), 0);
    updateBar();
    loadRowsLater();
}

void ParaScrollView::updateBar()
{
    const QSignalBlocker quiet(m_bar);
    m_bar->setRange(0, m_rows.lastPara());
    m_bar->setPageStep(pageRows());
    m_bar->setValue(m_rows.top().para);
}

int ParaScrollView::pageRows() const
{
    return std::max(1, visibleHeight() / lineHeight());
}

// Rows --------------------------------------------------------------------

/// Fetches what is on screen, from the top.
void ParaScrollView::loadRows()
{
    loadRowsWithin(Patience);
}

void ParaScrollView::loadRowsWithin(int milliseconds)
{
    m_rows.setPatience(milliseconds);
    if (!m_rows.load(isVisible() ? visibleHeight() / lineHeight() + 1 : 0))
        return;
    viewport()->update();
    setWaiting(m_rows.isWaiting());
    Q_EMIT rowsLoaded();
}

/// For callers that must not be deleted by a source that is asked, or that often go elsewhere at once.
void ParaScrollView::loadRowsLater()
{
    QMetaObject::invokeMethod(this, &ParaScrollView::loadRows, Qt::QueuedConnection);
}

void ParaScrollView::shiftParas(qint64 distance)
{
    m_pending = {};
    m_rows.shift(distance);
    updateBar();
    viewport()->update();
    loadRowsLater();
}

void ParaScrollView::reload()
{
    m_rows.clearCache();
    ParaRows::Row top = m_rows.top();
    top.para = std::min(top.para, m_rows.lastPara());
    m_rows.setTop(top);
    updateBar();
    loadRows();
}

std::optional<QStringList> ParaScrollView::linesInTime(int para, int milliseconds)
{
    m_rows.setPatience(milliseconds);
    return m_rows.linesInTime(para);
}

bool ParaScrollView::rowToPara(int row, int *para, int *line) const
{
    if (row < 0 || row >= rowCount())
        return false;
    *para = m_rows.shown()[row].para;
    *line = m_rows.shown()[row].line;
    return true;
}

bool ParaScrollView::isLastLine(int row) const
{
    return row >= 0 && row < rowCount() && m_rows.shown()[row].isLast;
}

bool ParaScrollView::hasText() const
{
    return std::ranges::any_of(m_rows.shown(), [](const ParaRows::Row &row) { return !row.isGap; });
}

bool ParaScrollView::isWhole(int row) const
{
    return row >= 0 && (row + 1) * lineHeight() <= visibleHeight();
}

// Waiting for the source --------------------------------------------------

/// The timer runs until nothing is missing any more.
void ParaScrollView::setWaiting(bool waiting)
{
    if (waiting && !m_waitTimer.isActive()) {
        m_waits = 0;
        m_waitTimer.start();
    } else if (!waiting) {
        m_waitTimer.stop();
    }
}

void ParaScrollView::stay()
{
    m_pending = {};
    if (rowCount() == 0)
        return;
    m_rows.setTop(m_rows.shown().first());
    updateBar();
}

void ParaScrollView::goOn()
{
    const QPointer<ParaScrollView> self(this);
    const int waits = m_waits + 1;
    loadRowsWithin(WaitInterval);
    if (self && !isWaiting())
        finish(std::exchange(m_pending, {}));
    if (!self)
        return;
    m_waits = waits;
    if (!isWaiting())
        Q_EMIT loaded();
    else if (waits == LongWait)
        Q_EMIT waitsLong();
}

void ParaScrollView::finish(const Pending &pending)
{
    if (pending.lines != 0)
        scrollLines(pending.lines);
}

// Scrolling ---------------------------------------------------------------

void ParaScrollView::moveTop(const ParaRows::Row &top)
{
    const QPointer<ParaScrollView> self(this);
    m_pending = {};
    m_rows.setTop(top);
    updateBar();
    Q_EMIT contentsMoving(topPara(), topLine());
    if (self)
        loadRows();
}

/// Returns false if the view was deleted or did not move. Scrolls the rest later if the source needs time.
bool ParaScrollView::scrollLines(int lines)
{
    const QPointer<ParaScrollView> self(this);
    ParaRows::Row top = m_rows.top();
    int moved = 0;
    m_rows.setPatience(Patience);
    while (moved < std::abs(lines) && m_rows.step(top, lines > 0))
        ++moved;
    if (!self)
        return false;
    const bool isPart = m_rows.isWaiting();
    if (moved > 0)
        moveTop(top);
    if (self && isPart) {
        m_pending.lines = lines > 0 ? lines - moved : lines + moved;
        setWaiting(true);
    }
    return self && moved > 0;
}

void ParaScrollView::nextLine()
{
    scrollLines(1);
}

void ParaScrollView::prevLine()
{
    scrollLines(-1);
}

void ParaScrollView::nextPage()
{
    scrollLines(pageRows());
}

void ParaScrollView::prevPage()
{
    scrollLines(-pageRows());
}

void ParaScrollView::gotoPara(int para)
{
    moveTop({std::clamp(para, 0, m_rows.lastPara()), 0, {}, true, false});
}

void ParaScrollView::wheelEvent(QWheelEvent *event)
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

void ParaScrollView::resizeEvent(QResizeEvent *event)
{
    ScrollView::resizeEvent(event);
    updateBar();
    if (rowCount() == 0)
        loadRowsLater();
    else
        loadRows();
}

void ParaScrollView::showEvent(QShowEvent *event)
{
    ScrollView::showEvent(event);
    loadRowsLater();
}
