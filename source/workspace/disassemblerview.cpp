#include "disassemblerview.h"
#include "disassemblerdocument.h"
#include "editorhost.h"
#include "rowtext.h"
#include "textparamarkerwidget.h"
#include "varnelassert.h"
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int Edge = 2; ///< pixels between the view's edge and the margin
constexpr qsizetype LongestHistory = 200;
} // namespace

DisassemblerView::DisassemblerView(Document *document, const FormatTable *formats, EditorHost *host, QWidget *parent)
    : View(document, parent)
    , m_disassembly(static_cast<DisassemblerDocument *>(document))
    , m_formats(formats)
    , m_paras(new TextParaView(m_disassembly))
    , m_margin(new TextParaMarkerWidget(m_paras, this))
    , m_goTo(new QLineEdit)
    , m_message(new QLabel)
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
    m_paras->installEventFilter(this);
    m_paras->viewport()->installEventFilter(this);
    connect(m_paras, &TextParaView::selectionChanged, this, &DisassemblerView::slotSelectionChanged);
    connect(m_paras, &TextParaView::cursorPositionChanged, this, &DisassemblerView::slotCursorMoved);
    connect(m_paras, &TextParaView::clicked, this, &DisassemblerView::followBranch);
    connect(m_paras, &ScrollView::contentsMoving, m_margin, &MarkerWidget::setPosition);
    connect(m_margin, &MarkerWidget::toggleBreakpoint, this,
            [this](int line) { Q_EMIT toggleBreakpoint(m_disassembly->lineOf(line - 1)); });
    connect(m_goTo, &QLineEdit::returnPressed, this, [this] {
        if (goTo(m_goTo->text()))
            m_paras->setFocus();
    });
    DisassemblerView::update(nullptr, true);
}

void DisassemblerView::layOut()
{
    m_paras->setObjectName(u"disassembly/lines"_s);
    m_margin->setObjectName(u"disassembly/margin"_s);
    m_goTo->setObjectName(u"DisassemblyGoTo"_s);
    m_message->setObjectName(u"DisassemblyMessage"_s);
    m_goTo->setPlaceholderText(tr("Go to address or symbol"));
    m_goTo->setFixedWidth(240);
    QFont plain = QApplication::font();
    plain.setResolveMask(QFont::AllPropertiesResolved); // not the view's font
    for (QWidget *widget : std::initializer_list<QWidget *>{m_goTo, m_message})
        widget->setFont(plain);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    auto *text = new QHBoxLayout;
    const int around = std::max(0, Edge - m_paras->frameWidth()); // the viewport begins where the margin ends
    text->setContentsMargins(around, around, around, around);
    m_paras->setContentMargin(MarkerWidget::Width);
    text->addWidget(m_paras);
    layout->addLayout(text, 1);
    auto *row = new QHBoxLayout;
    row->setContentsMargins(4, 2, 4, 2);
    row->addWidget(m_goTo);
    row->addSpacing(8);
    row->addWidget(m_message, 1);
    layout->addLayout(row);
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

/// The target may have other contents, or be where its program has gone on.
void DisassemblerView::update(View *, bool full)
{
    const QPointer<DisassemblerView> self(this);
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
    const int para = m_disassembly->paraOf(line);
    if (para < 0)
        return;
    m_margin->setMarker(para + 1, mask, on, alternate);
    if (mask & CurrentLineMarker)
        updateArrow();
}

void DisassemblerView::clearMarkers(int mask)
{
    m_margin->clearMarkers(mask);
    if (mask & CurrentLineMarker)
        m_margin->setArrow(-1, -1);
}

bool DisassemblerView::hasMarker(int line, int mask)
{
    const int para = m_disassembly->paraOf(line);
    return para >= 0 && m_margin->hasMarker(para + 1, mask);
}

bool DisassemblerView::hasMarkerAtCursor(int mask)
{
    return m_paras->isCursorVisible() && m_margin->hasMarker(m_paras->cursorPlace().para + 1, mask);
}

/// From the instruction that comes next to where it may lead.
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
    const QStringList lines = m_paras->linesOf(para);
    if (!self)
        return;
    const auto target = lines.isEmpty() ? std::nullopt : branchTarget(plainText(lines.last()));
    m_margin->setArrow(para, target ? m_disassembly->paraOfAddress(target->address) : -1);
}

// Navigation --------------------------------------------------------------

void DisassemblerView::gotoLine(int line)
{
    if (const int para = m_disassembly->paraOf(line); para >= 0)
        m_paras->showPara(para);
}

void DisassemblerView::getCursorPosition(int *para, int *index)
{
    const TextParaView::Place cursor = m_paras->cursorPlace();
    *para = m_disassembly->lineOf(cursor.para) - 1;
    *index = cursor.column;
}

bool DisassemblerView::find(const QString &text, bool caseSensitive, bool, bool forward, bool fromCursor)
{
    const auto sensitivity = caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const QPointer<DisassemblerView> self(this);
    TextParaView::Place place = fromCursor ? m_paras->cursorPlace() : TextParaView::Place();
    qsizetype from = fromCursor ? place.column + (forward ? 1 : -1) : 0;
    bool inLine = from >= 0; // before the first column there is nothing
    QElapsedTimer time;
    time.start();
    for (; place.para >= 0 && place.para < m_disassembly->paraCount() && !text.isEmpty();) {
        const QStringList lines = m_paras->linesOf(place.para);
        if (!self || time.elapsed() >= m_findTimeLimit)
            return false;
        for (; place.line >= 0 && place.line < lines.size(); place.line += forward ? 1 : -1) {
            const QString line = plainText(lines[place.line]);
            const qsizetype at = !inLine   ? -1
                                 : forward ? line.indexOf(text, from, sensitivity)
                                           : line.lastIndexOf(text, from, sensitivity);
            if (at >= 0) {
                place.column = int(at + (forward ? text.size() : 0));
                m_paras->setCursor(place);
                return true;
            }
            from = forward ? 0 : -1;
            inLine = true;
        }
        from = forward ? 0 : -1;
        inLine = true;
        place.para += forward ? 1 : -1;
        place.line = forward ? 0 : int(m_paras->linesOf(place.para).size()) - 1;
        if (!self)
            return false;
    }
    return false;
}

bool DisassemblerView::goTo(const QString &text)
{
    const QPointer<DisassemblerView> self(this);
    const auto address = m_disassembly->addressOf(text);
    if (!self)
        return false;
    const int para = address ? m_disassembly->paraOfAddress(*address) : -1;
    if (!address)
        m_message->setText(tr("There is no symbol or address '%1'.").arg(text.trimmed()));
    else if (para < 0)
        m_message->setText(tr("0x%1 is outside the memory that is shown here.").arg(*address, 0, 16));
    else
        m_message->clear();
    if (para < 0)
        return false;
    jump(para);
    return self;
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
    const bool isThere = target && place.column >= target->start && place.column < target->end
                         && m_disassembly->paraOfAddress(target->address) >= 0;
    return isThere ? target : std::nullopt;
}

void DisassemblerView::showHand(const QPoint &position)
{
    m_paras->viewport()->setCursor(branchAt(m_paras->placeAt(position)) ? Qt::PointingHandCursor : Qt::IBeamCursor);
}

void DisassemblerView::followBranch(const TextParaView::Place &place)
{
    if (const auto target = branchAt(place))
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
    else
        View::keyPressEvent(event);
}
