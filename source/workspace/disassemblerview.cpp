#include "disassemblerview.h"
#include "disassemblerbar.h"
#include "disassemblerdocument.h"
#include "editorcolours.h"
#include "editorhost.h"
#include "parasearch.h"
#include "programplace.h"
#include "rowtext.h"
#include "textparamarkerwidget.h"
#include "varnelassert.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int Edge = 2; ///< pixels between the view's edge and the margin
constexpr qsizetype LongestHistory = 200;
constexpr int ArrowInterval = 50; ///< milliseconds until an instruction that was not read yet is looked at again

QString outsideText(quint64 address)
{
    return DisassemblerView::tr("0x%1 is outside the memory that is shown here.").arg(address, 0, 16);
}
} // namespace

DisassemblerView::DisassemblerView(Document *document, const FormatTable *formats, EditorHost *host, QWidget *parent)
    : View(document, parent)
    , m_disassembly(static_cast<DisassemblerDocument *>(document))
    , m_formats(formats)
    , m_paras(new TextParaView(m_disassembly))
    , m_margin(new TextParaMarkerWidget(m_paras, this))
    , m_bar(new DisassemblerBar)
    , m_search(new ParaSearch(m_paras, m_disassembly, this))
{
    VARNEL_ASSERT(document->inherits("DisassemblerDocument"));
    setFont(QFont(u"Courier"_s, 10));
    layOut();
    if (host) {
        m_margin->setPictures([host](const QString &name) { return host->picture(name); });
        m_margin->setToolTips([this, host](int line) {
            return host->markerToolTip(m_disassembly->filename(), m_disassembly->lineOf(line - 1));
        });
    }
    connectParts();
    DisassemblerView::update(nullptr, true);
}

void DisassemblerView::connectParts()
{
    m_paras->installEventFilter(this);
    m_paras->viewport()->installEventFilter(this);
    connect(m_paras, &TextParaView::selectionChanged, this, &DisassemblerView::slotSelectionChanged);
    connect(m_paras, &TextParaView::cursorPositionChanged, this, &DisassemblerView::slotCursorMoved);
    connect(m_paras, &TextParaView::waitsLong, this, [this] {
        m_isReading = true;
        m_bar->setMessage(tr("Reading the instructions..."));
    });
    connect(m_paras, &TextParaView::loaded, this, &DisassemblerView::slotLoaded);
    connect(m_paras, &TextParaView::clicked, this, [this](const TextParaView::Place &place) { follow(linkAt(place)); });
    m_paras->setBands([this](int para) {
        const EditorColours colours = editorColours(m_paras->palette().color(QPalette::Base));
        return m_margin->hasMarker(para + 1, CurrentLineMarker) ? colours.statement
               : m_margin->hasMarker(para + 1, CallerMarker)    ? colours.caller
                                                                : QColor();
    });
    connect(m_disassembly, &DisassemblerDocument::regionChanged, this, &DisassemblerView::slotRegionChanged);
    connect(m_paras, &ScrollView::contentsMoving, m_margin, &MarkerWidget::setPosition);
    connect(m_margin, &MarkerWidget::toggleBreakpoint, this,
            [this](int line) { Q_EMIT toggleBreakpoint(m_disassembly->lineOf(line - 1)); });
    connect(m_bar, &DisassemblerBar::goToRequested, this, [this](const QString &text) {
        if (goTo(text))
            m_paras->setFocus();
    });
    connect(m_bar, &DisassemblerBar::cancelled, this, [this] { startFind({}, false, true, true); });
    connect(m_search, &ParaSearch::progress, m_bar, &DisassemblerBar::setProgress);
    connect(m_search, &ParaSearch::found, this, &DisassemblerView::showFound);
    connect(m_search, &ParaSearch::notFound, this, [this] {
        m_bar->endProgress();
        m_bar->setMessage(tr("Cannot find the string %1.").arg(m_wanted));
    });
}

void DisassemblerView::layOut()
{
    const QString name = m_disassembly->objectNames();
    m_paras->setObjectName(name + u"/lines"_s);
    m_paras->viewport()->setObjectName(name + u"/text"_s);
    m_margin->setObjectName(name + u"/margin"_s);
    m_paras->setAccessibleName(tr("Machine instructions"));
    QFont plain = QApplication::font();
    plain.setResolveMask(QFont::AllPropertiesResolved); // not the view's font
    m_bar->setFont(plain);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *text = new QHBoxLayout;
    const int around = std::max(0, Edge - m_paras->frameWidth()); // the viewport begins where the margin ends
    text->setContentsMargins(around, around, around, around);
    m_paras->setContentMargin(MarkerWidget::Width);
    text->addWidget(m_paras);
    layout->addLayout(text, 1);
    layout->addWidget(m_bar);
    m_margin->raise();
    setFocusProxy(m_paras);
}

bool DisassemblerView::eventFilter(QObject *object, QEvent *event)
{
    const bool isPane = object == m_paras;
    const QPointer<DisassemblerView> self(this);
    if (isPane && event->type() == QEvent::FocusIn) {
        Q_EMIT viewActivated(this);
        if (!self)
            return true;
        slotSelectionChanged();
        const TextParaView::Place cursor = m_paras->cursorPlace();
        slotCursorMoved(cursor.para, cursor.column);
    } else if (object == m_paras->viewport() && event->type() == QEvent::Resize) {
        placeMargin();
    } else if (object == m_paras->viewport() && event->type() == QEvent::MouseMove) {
        showHand(static_cast<QMouseEvent *>(event)->position().toPoint());
    }
    return !self || View::eventFilter(object, event);
}

void DisassemblerView::slotSelectionChanged()
{
    Q_EMIT copyAvailable(m_paras->hasSelection());
    Q_EMIT cutAvailable(false);
    Q_EMIT undoAvailable(false);
    Q_EMIT redoAvailable(false);
    Q_EMIT pasteAvailable(false);
    Q_EMIT backAvailable(m_present > 0);
    Q_EMIT forwardAvailable(m_present + 1 < m_history.size());
    Q_EMIT previousAvailable(false);
    Q_EMIT nextAvailable(false);
}

void DisassemblerView::slotCursorMoved(int para, int column)
{
    Q_EMIT cursorPositionChanged(m_disassembly->lineOf(para) - 1, column);
}

void DisassemblerView::placeMargin()
{
    const QScrollBar *bar = m_paras->horizontalScrollBar();
    const int extent = bar->isHidden() ? 0 : bar->sizeHint().height();
    m_margin->setGeometry(Edge, Edge, MarkerWidget::Width, m_paras->height() - extent - 3);
}

/// The program may have run on, and the contents of its memory may have changed.
void DisassemblerView::update(View *, bool full)
{
    const QPointer<DisassemblerView> self(this);
    m_disassembly->refreshRegion();
    if (!self)
        return;
    if (full && m_formats) {
        const QTextCharFormat text = m_formats->value(FormatId::Standard);
        QPalette colours = m_paras->palette();
        colours.setColor(QPalette::Text, text.foreground().color());
        colours.setColor(QPalette::Base, m_formats->value(FormatId::Background).foreground().color());
        m_paras->setPalette(colours);
        m_paras->setFont(text.font());
    }
    m_paras->reload();
    if (!self)
        return;
    m_margin->setLineHeight(m_paras->lineHeight());
    updateArrow();
    if (self)
        showWhetherReadable();
}

/// Called, for example, when another session has a program at other addresses.
void DisassemblerView::slotRegionChanged(qint64 distance)
{
    m_history.clear();
    m_present = 0;
    startFind({}, false, true, true);
    showMarks();
    const QPointer<DisassemblerView> self(this);
    m_paras->shiftParas(distance);
    if (self && m_paras->hasFocus())
        slotSelectionChanged();
}

void DisassemblerView::slotLoaded()
{
    if (std::exchange(m_isReading, false))
        m_bar->setMessage({});
    const QPointer<DisassemblerView> self(this);
    updateArrow();
    if (self)
        showWhetherReadable();
}

/// Shows a message if there are no instructions: most debuggers have none without a session.
void DisassemblerView::showWhetherReadable()
{
    const bool isLoaded = m_paras->rowCount() > 0 && !m_paras->isWaiting();
    const bool unreadable = m_disassembly->paraCount() == 0 || (isLoaded && !m_paras->hasText());
    if (unreadable)
        m_bar->setMessage(tr("No instructions can be read here."));
    else if (m_unreadable)
        m_bar->setMessage({});
    m_unreadable = unreadable;
}

bool DisassemblerView::queryInterface(const QString &name, void **out)
{
    *out = nullptr;
    if (name == QLatin1String(IViewWithMarkers::Name))
        *out = static_cast<IViewWithMarkers *>(this);
    else if (name == QLatin1String(ITextNavigation::Name))
        *out = static_cast<ITextNavigation *>(this);
    return *out;
}

void DisassemblerView::copy()
{
    m_paras->copy();
}

void DisassemblerView::selectAll()
{
    m_paras->selectAll();
}

QString DisassemblerView::selectedText()
{
    return m_paras->selectedText(LongestCopy);
}

// Marks -------------------------------------------------------------------

void DisassemblerView::setMarker(int line, int mask, bool on, bool alternate)
{
    m_marks.set(line, mask, on, alternate);
    if (const int para = m_disassembly->paraOf(line); para >= 0)
        m_margin->setMarker(para + 1, mask, on, alternate);
    m_paras->viewport()->update();
    if (mask & CurrentLineMarker)
        updateArrow();
}

void DisassemblerView::clearMarkers(int mask)
{
    m_marks.clear(mask);
    m_margin->clearMarkers(mask);
    m_paras->viewport()->update();
    if (mask & CurrentLineMarker)
        m_margin->setArrow(-1, -1);
}

bool DisassemblerView::hasMarker(int line, int mask)
{
    return m_marks.has(line, mask);
}

bool DisassemblerView::hasMarkerAtCursor(int mask)
{
    return m_paras->isCursorVisible() && m_marks.has(m_disassembly->lineOf(m_paras->cursorPlace().para), mask);
}

/// The margin numbers its lines from the start of the region.
void DisassemblerView::showMarks()
{
    QMap<int, int> shown;
    for (auto mark = m_marks.bits().cbegin(); mark != m_marks.bits().cend(); ++mark) {
        if (const int para = m_disassembly->paraOf(mark.key()); para >= 0)
            shown.insert(para + 1, *mark);
    }
    m_margin->setMarkers(shown);
    m_margin->setArrow(-1, -1);
}

/// Draws the arrow from the next instruction, if it is a branch, to its target.
void DisassemblerView::updateArrow()
{
    const QPointer<DisassemblerView> self(this);
    const QMap<int, int> &markers = m_margin->markers();
    const auto current =
        std::find_if(markers.cbegin(), markers.cend(), [](int bits) { return bits & CurrentLineMarker; });
    if (current == markers.cend()) {
        m_margin->setArrow(-1, -1);
        return;
    }
    const int para = current.key() - 1;
    const auto lines = m_paras->linesInTime(para, 0);
    if (!self)
        return;
    if (!lines)
        QTimer::singleShot(ArrowInterval, this, &DisassemblerView::updateArrow);
    const bool isRead = lines && !lines->isEmpty();
    const auto target = isRead ? branchTarget(plainText(lines->last())) : std::nullopt;
    m_margin->setArrow(para, target ? m_disassembly->paraOfAddress(target->address) : -1);
}

// Navigation --------------------------------------------------------------

void DisassemblerView::gotoLine(int line)
{
    const int para = m_disassembly->paraOf(line);
    if (para < 0)
        m_bar->setMessage(outsideText(addressOfLine(line)));
    else if (m_isOutside)
        m_bar->setMessage({});
    m_isOutside = para < 0;
    if (para >= 0)
        m_paras->showPara(para);
}

void DisassemblerView::getCursorPosition(int *para, int *index)
{
    const TextParaView::Place cursor = m_paras->cursorPlace();
    *para = m_disassembly->lineOf(cursor.para) - 1;
    *index = cursor.column;
}

ParaScan::Pattern DisassemblerView::pattern(const QString &text, bool caseSensitive, bool forward)
{
    return {text, caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive, forward};
}

TextParaView::Place DisassemblerView::findStart(bool forward, bool fromCursor) const
{
    if (!fromCursor)
        return {};
    TextParaView::Place place = m_paras->cursorPlace();
    place.column += forward ? 1 : -1;
    return place;
}

bool DisassemblerView::find(const QString &text, bool caseSensitive, bool, bool forward, bool fromCursor)
{
    const QPointer<DisassemblerView> self(this);
    ParaScan scan(pattern(text, caseSensitive, forward), findStart(forward, fromCursor));
    QElapsedTimer time;
    time.start();
    while (scan.para() >= 0 && scan.para() < m_disassembly->paraCount() && !text.isEmpty()) {
        const QStringList lines = m_paras->linesOf(scan.para());
        if (!self || time.elapsed() >= m_findTimeLimit)
            return false;
        if (scan.find(lines)) {
            m_paras->setCursor(scan.place());
            return true;
        }
    }
    return false;
}

void DisassemblerView::startFind(const QString &text, bool caseSensitive, bool forward, bool fromCursor)
{
    m_search->cancel();
    m_bar->endProgress();
    m_bar->setMessage({});
    m_wanted = text;
    m_wantedForward = forward;
    if (text.isEmpty())
        return;
    m_bar->setMessage(tr("Searching..."));
    m_search->start(pattern(text, caseSensitive, forward), findStart(forward, fromCursor));
}

void DisassemblerView::showFound(const TextParaView::Place &place, bool wrapped)
{
    m_bar->endProgress();
    m_bar->setMessage(wrapped ? tr("Passed the end of the disassembly") : QString());
    const QPointer<DisassemblerView> self(this);
    TextParaView::Place other = place;
    other.column += int(m_wanted.size()) * (m_wantedForward ? -1 : 1);
    m_paras->setCursor(place);
    if (self)
        m_paras->showMatch(other, place);
}

bool DisassemblerView::goTo(const QString &text)
{
    const QPointer<DisassemblerView> self(this);
    const auto address = m_disassembly->addressOf(text);
    if (!self)
        return false;
    const int para = address ? m_disassembly->paraOfAddress(*address) : -1;
    if (!address)
        m_bar->setMessage(tr("There is no symbol or address '%1'.").arg(text.trimmed()));
    else if (para < 0)
        m_bar->setMessage(outsideText(*address));
    else
        m_bar->setMessage({});
    if (para < 0)
        return false;
    const int instruction = instructionAt(para);
    if (self)
        jump(instruction);
    return self;
}

/// The paragraph of the instruction that covers a paragraph's address; that paragraph itself if there is none, or if it
/// is not read yet.
int DisassemblerView::instructionAt(int para) const
{
    constexpr int LongestInstruction = 15; // bytes
    const QPointer<const DisassemblerView> self(this);
    for (int before = 0; before < LongestInstruction && before <= para; ++before) {
        const auto lines = m_paras->linesInTime(para - before);
        if (!self || !lines)
            break;
        if (!lines->isEmpty())
            return para - before;
    }
    return para;
}

std::optional<BranchTarget> DisassemblerView::branchAt(const TextParaView::Place &place) const
{
    const QString line = m_paras->lineAt(place);
    const int row = m_paras->rowOf(place.para);
    int para = 0;
    int last = 0;
    if (row < 0 || !m_paras->rowToPara(row, &para, &last) || last != place.line)
        return {}; // a source line
    const auto target = branchTarget(plainText(line));
    return target && m_disassembly->paraOfAddress(target->address) >= 0 ? target : std::nullopt;
}

/// The same if the place is within the instruction, without its address and bytes.
std::optional<BranchTarget> DisassemblerView::linkAt(const TextParaView::Place &place) const
{
    const auto target = branchAt(place);
    return target && place.column >= target->start && place.column < target->end ? target : std::nullopt;
}

void DisassemblerView::showHand(const QPoint &position)
{
    m_paras->viewport()->setCursor(linkAt(m_paras->placeAt(position)) ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void DisassemblerView::follow(const std::optional<BranchTarget> &target)
{
    if (target)
        jump(m_disassembly->paraOfAddress(target->address));
}

/// Goes to a paragraph, and remembers where the view was.
void DisassemblerView::jump(int para)
{
    m_history.resize(std::min<qsizetype>(m_history.size(), m_present));
    m_history.append(m_paras->cursorPlace().para);
    m_history.append(para);
    if (m_history.size() > LongestHistory)
        m_history.remove(0, m_history.size() - LongestHistory);
    m_present = int(m_history.size()) - 1;
    const QPointer<DisassemblerView> self(this);
    m_paras->showPara(para);
    if (self)
        slotSelectionChanged();
}

void DisassemblerView::moveInHistory(int step)
{
    if (m_present + step < 0 || m_present + step >= m_history.size())
        return;
    m_present += step;
    const QPointer<DisassemblerView> self(this);
    m_paras->showPara(m_history[m_present]);
    if (self)
        slotSelectionChanged();
}

void DisassemblerView::back()
{
    moveInHistory(-1);
}

void DisassemblerView::forward()
{
    moveInHistory(1);
}

void DisassemblerView::keyPressEvent(QKeyEvent *event)
{
    if (event->matches(QKeySequence::Back) || (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Left))
        back();
    else if (event->matches(QKeySequence::Forward)
             || (event->modifiers() == Qt::AltModifier && event->key() == Qt::Key_Right))
        forward();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        follow(branchAt(m_paras->cursorPlace()));
    else if (event->key() == Qt::Key_Escape && m_search->isRunning())
        startFind({}, false, true, true);
    else if (event->key() == Qt::Key_Escape && !m_paras->hasFocus())
        m_paras->setFocus();
    else
        View::keyPressEvent(event);
}
