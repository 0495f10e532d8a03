#include "largetextview.h"
#include "editorcolours.h"
#include "editorhost.h"
#include "fontshaping.h"
#include "largetextbar.h"
#include "largetextdocument.h"
#include "largetextfindbar.h"
#include "largetextscan.h"
#include "markerwidget.h"
#include "messages.h"
#include "objectnames.h"
#include "rowtext.h"
#include "textlineview.h"
#include <QElapsedTimer>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLocale>
#include <QPointer>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int Edge = 2; ///< pixels between the view's edge and the margin

// Places of the view are those of the text without markup.

qint64 offsetOf(LargeTextDocument &text, const TextLineView::Place &place)
{
    return text.offsetOf({place.line, markupColumn(text.line(place.line), place.column)});
}

TextLineView::Place placeOf(LargeTextDocument &text, qint64 offset)
{
    const LargeTextDocument::Place place = text.placeOf(offset);
    return {place.line, plainColumn(text.line(place.line), place.column)};
}
} // namespace

LargeTextView::LargeTextView(LargeTextDocument *document, const FormatTable *formats, EditorHost *host, QWidget *parent)
    : View(document, parent)
    , m_text(document)
    , m_formats(formats)
    , m_lines(new TextLineView(document))
    , m_margin(new MarkerWidget(m_lines, this))
    , m_findBar(new LargeTextFindBar(document))
    , m_bar(new LargeTextBar(document))
{
    layOut();
    if (host) {
        m_margin->setPictures([host](const QString &name) { return host->picture(name); });
        m_margin->setToolTips([this, host](int line) { return host->markerToolTip(m_text->filename(), line); });
    }
    m_lines->setBands([this](int line) {
        return editorColours(m_lines->palette().color(QPalette::Base)).band(m_margin->markers().value(line + 1));
    });
    m_lines->installEventFilter(this);
    m_lines->viewport()->installEventFilter(this);
    connect(m_lines, &TextLineView::selectionChanged, this, &LargeTextView::slotSelectionChanged);
    connect(m_lines, &TextLineView::cursorPositionChanged, this, [this](int line, int column) {
        m_awaitedLine = 0;
        m_matchStart = m_matchEnd = -1;
        Q_EMIT cursorPositionChanged(line, column);
    });
    connect(m_lines, &ScrollView::contentsMoving, m_margin, &MarkerWidget::setPosition);
    connect(m_margin, &MarkerWidget::toggleBreakpoint, this, &LargeTextView::toggleBreakpoint);
    connectDocument();
    connectFindBar();
    LargeTextView::update(nullptr, true);
}

void LargeTextView::layOut()
{
    const QString file = QFileInfo(m_text->filename()).completeBaseName();
    const QString name = objectNameOfFile(m_text->filename());
    m_lines->setObjectName(name + u"/lines"_s);
    m_lines->viewport()->setObjectName(name + u"/text"_s);
    m_margin->setObjectName(name + u"/margin"_s);
    m_lines->setAccessibleName(tr("Text of %1").arg(file));
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *row = new QHBoxLayout;
    const int around = std::max(0, Edge - m_lines->frameWidth()); // the viewport begins where the margin ends
    row->setContentsMargins(around, around, around, around);
    m_lines->setContentMargin(MarkerWidget::Width);
    row->addWidget(m_lines);
    layout->addLayout(row, 1);
    layout->addWidget(m_findBar);
    layout->addWidget(m_bar);
    m_findBar->hide();
    m_margin->raise();
    setFocusProxy(m_lines);
}

void LargeTextView::connectDocument()
{
    connect(m_text, &LargeTextDocument::renumbering, this, &LargeTextView::holdLines);
    connect(m_text, &LargeTextDocument::renumbered, this, &LargeTextView::restoreLines);
    connect(m_text, &LargeTextDocument::reloaded, this, [this] {
        m_matchStart = m_matchEnd = -1;
        m_lines->linesChanged();
        if (m_text->isFollowing())
            showEnd();
    });
    connect(m_text, &LargeTextDocument::followingChanged, this, [this](bool following) {
        if (following)
            showEnd();
    });
}

void LargeTextView::connectFindBar()
{
    connect(m_bar, &LargeTextBar::findRequested, this, &LargeTextView::openFindBar);
    connect(m_findBar, &LargeTextFindBar::startRequested, this, &LargeTextView::findAgain);
    connect(m_findBar, &LargeTextFindBar::found, this, &LargeTextView::showMatch);
    connect(m_findBar, &LargeTextFindBar::closed, m_lines, qOverload<>(&QWidget::setFocus));
}

bool LargeTextView::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        const QPointer<LargeTextView> self(this);
        Q_EMIT viewActivated(this);
        if (!self)
            return true;
        slotSelectionChanged();
        const TextLineView::Place cursor = m_lines->cursorPlace();
        Q_EMIT cursorPositionChanged(cursor.line, cursor.column);
    } else if (event->type() == QEvent::Resize) {
        placeMargin();
    }
    return View::eventFilter(object, event);
}

void LargeTextView::slotSelectionChanged()
{
    Q_EMIT copyAvailable(m_lines->hasSelection());
    Q_EMIT cutAvailable(false);
    Q_EMIT undoAvailable(false);
    Q_EMIT redoAvailable(false);
    Q_EMIT pasteAvailable(false);
    Q_EMIT backAvailable(false);
    Q_EMIT forwardAvailable(false);
    Q_EMIT previousAvailable(false);
    Q_EMIT nextAvailable(false);
}

void LargeTextView::placeMargin()
{
    const QScrollBar *bar = m_lines->horizontalScrollBar();
    const int extent = bar->isHidden() ? 0 : bar->sizeHint().height();
    m_margin->setGeometry(Edge, Edge, MarkerWidget::Width, m_lines->height() - extent - 3);
}

void LargeTextView::update(View *, bool full)
{
    if (full && m_formats) {
        const QTextCharFormat text = m_formats->value(FormatId::Standard);
        QPalette colours = m_lines->palette();
        colours.setColor(QPalette::Text, text.foreground().color());
        colours.setColor(QPalette::Base, m_formats->value(FormatId::Background).foreground().color());
        m_lines->setPalette(colours);
        m_lines->setFont(withShaping(text.font()));
    }
    if (full)
        m_margin->setLineHeight(m_lines->lineHeight());
    m_lines->viewport()->update();
    m_margin->update();
}

bool LargeTextView::queryInterface(const QString &name, void **out)
{
    *out = nullptr;
    if (name == QLatin1String(IViewWithMarkers::Name))
        *out = static_cast<IViewWithMarkers *>(this);
    else if (name == QLatin1String(ITextNavigation::Name))
        *out = static_cast<ITextNavigation *>(this);
    return *out;
}

// Lines that get other numbers --------------------------------------------

void LargeTextView::holdLines()
{
    const bool wholeOnScreen = m_lines->bottomContentsY() == 0;
    m_atEnd = m_lines->contentsY() >= m_lines->bottomContentsY() && (m_text->isFollowing() || !wholeOnScreen);
    for (const int line : m_lines->heldLines())
        m_heldOffsets.append(m_text->offsetOf({line, 0}));
}

/// The line at the top of the screen stays there, unless the end of the file is on screen: then the end stays there.
void LargeTextView::restoreLines()
{
    QList<int> lines;
    const QList<qint64> offsets = std::exchange(m_heldOffsets, {});
    for (const qint64 offset : offsets)
        lines.append(m_text->placeOf(offset).line);
    const int before = m_lines->cursorPlace().line;
    if (!lines.isEmpty())
        m_lines->setHeldLines(lines);
    const TextLineView::Place cursor = m_lines->cursorPlace();
    if (cursor.line != before && m_lines->hasFocus())
        Q_EMIT cursorPositionChanged(cursor.line, cursor.column);
    if (m_atEnd)
        showEnd();
    if (m_text->isIndexed(m_awaitedLine - 1))
        m_lines->gotoLine(std::exchange(m_awaitedLine, 0)); // does nothing for 0
}

void LargeTextView::showEnd()
{
    m_lines->linesChanged();
    m_lines->setContentsPos(m_lines->contentsX(), m_lines->bottomContentsY());
}

// Navigation --------------------------------------------------------------

void LargeTextView::gotoLine(int line)
{
    m_lines->gotoLine(line);
    if (!m_text->isIndexed(line - 1))
        m_awaitedLine = line;
}

void LargeTextView::getCursorPosition(int *para, int *index)
{
    const TextLineView::Place cursor = m_lines->cursorPlace();
    *para = cursor.line;
    *index = cursor.column;
}

bool LargeTextView::find(const QString &text, bool caseSensitive, bool, bool forward, bool fromCursor)
{
    if (text.isEmpty())
        return false;
    const TextLineView::Place cursor = fromCursor ? m_lines->cursorPlace() : TextLineView::Place();
    const qint64 size = m_text->size();
    qint64 from = offsetOf(*m_text, {cursor.line, cursor.column + (fromCursor && forward ? 1 : 0)});
    if (!fromCursor && !forward)
        ++from; // only a match at the very start begins before that
    qint64 reached = from;
    QElapsedTimer time;
    time.start();
    const auto goOn = [&](qint64 offset) {
        reached = offset;
        return time.elapsed() < m_findTimeLimit;
    };
    const BytePattern pattern{text, caseSensitive, false};
    const LargeTextScan scan(m_text->file(), size, pattern);
    while (const auto match = forward ? scan.next(from, size, goOn) : scan.previous(0, from, goOn)) {
        const int line = m_text->placeOf(match->offset).line;
        if (m_text->placeOf(match->offset + match->length - 1).line == line) {
            const TextLineView::Place end = placeOf(*m_text, match->offset + (forward ? match->length : 0));
            m_lines->showPlace({line, end.line == line ? end.column : int(plainText(m_text->line(line)).size())});
            return true;
        }
        from = forward ? match->offset + 1 : match->offset; // a match does not reach over the end of a line
    }
    if (time.elapsed() >= m_findTimeLimit)
        m_findBar->offerToGoOn(pattern, reached, forward);
    return false;
}

void LargeTextView::openFindBar()
{
    const QString selected = m_lines->selectedText(200);
    m_findBar->open(selected.contains(u'\n') ? QString() : selected);
}

void LargeTextView::startFind(const BytePattern &pattern, bool forward, bool fromCursor)
{
    m_findBar->prepare(pattern);
    if (fromCursor)
        findAgain(forward);
    else
        m_findBar->searchFrom(forward ? 0 : m_text->size(), forward);
}

/// F3 repeats the search, as in the find bar.
void LargeTextView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::FindNext))
        findAgain(true);
    else if (event->matches(QKeySequence::FindPrevious))
        findAgain(false);
    else
        View::keyPressEvent(event);
}

void LargeTextView::findAgain(bool forward)
{
    if (!m_findBar->hasText())
        return openFindBar();
    if (m_matchStart >= 0)
        return m_findBar->searchFrom(forward ? m_matchEnd : m_matchStart, forward);
    const TextLineView::Place from = !m_lines->hasSelection() ? m_lines->cursorPlace()
                                     : forward                ? m_lines->selectionEnd()
                                                              : m_lines->selectionStart();
    m_findBar->searchFrom(offsetOf(*m_text, from), forward);
}

void LargeTextView::showMatch(qint64 offset, qint64 length)
{
    const TextLineView::Place start = placeOf(*m_text, offset);
    const TextLineView::Place end = placeOf(*m_text, offset + length);
    m_lines->showPlace(start);
    m_lines->setCursor(end.line, end.column);
    m_lines->setCursor(start.line, start.column); // the whole match is on screen if it fits there
    m_lines->showMatch(start, end);
    m_matchStart = offset;
    m_matchEnd = offset + length;
}

// Selection and marks -----------------------------------------------------

void LargeTextView::copy()
{
    if (!m_lines->hasSelection())
        return;
    const TextLineView::Place start = m_lines->selectionStart();
    const TextLineView::Place end = m_lines->selectionEnd();
    if (offsetOf(*m_text, end) - offsetOf(*m_text, start) > LongestCopy)
        showInformation(this, tr("The selection is too large to be copied. Up to %1 characters can be copied.")
                                  .arg(QLocale().toString(qlonglong(LongestCopy))));
    else
        m_lines->copy();
}

void LargeTextView::selectAll()
{
    m_lines->selectAll();
}

QString LargeTextView::selectedText()
{
    return m_lines->selectedText(LongestCopy);
}

void LargeTextView::setMarker(int line, int mask, bool on, bool alternate)
{
    m_margin->setMarker(line, mask, on, alternate);
    m_lines->viewport()->update();
}

void LargeTextView::clearMarkers(int mask)
{
    m_margin->clearMarkers(mask);
    m_lines->viewport()->update();
}

bool LargeTextView::hasMarker(int line, int mask)
{
    return m_margin->hasMarker(line, mask);
}

bool LargeTextView::hasMarkerAtCursor(int mask)
{
    return m_lines->isCursorVisible() && hasMarker(m_lines->cursorPlace().line + 1, mask);
}
