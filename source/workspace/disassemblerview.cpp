#include "disassemblerview.h"
#include "disassemblerbar.h"
#include "disassemblerdocument.h"
#include "editorcolours.h"
#include "editorhost.h"
#include "fontshaping.h"
#include "parasearch.h"
#include "programplace.h"
#include "rowtext.h"
#include "textparamarkerwidget.h"
#include "varnelassert.h"
#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QScrollBar>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int Edge = 2;           ///< pixels between the view's edge and the margin
constexpr int ArrowInterval = 50; ///< milliseconds until an instruction that was not read yet is looked at again

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
        return editorColours(m_paras->palette().color(QPalette::Base)).band(m_margin->markers().value(para + 1));
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

/// The commands of the window are for the widget that last had the focus in it.
void DisassemblerView::slotSelectionChanged()
{
    const QWidget *focus = window()->focusWidget();
    if (!focus || !isAncestorOf(focus))
        return;
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
        m_paras->setFont(withShaping(text.font()));
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
    if (self)
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
