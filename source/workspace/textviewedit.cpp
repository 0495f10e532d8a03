#include "textviewedit.h"
#include "callplugin.h"
#include "editorcolours.h"
#include "editorhost.h"
#include "lineedits.h"
#include "longline.h"
#include "objectnames.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textindent.h"
#include "textmarkerwidget.h"
#include "textpattern.h"
#include "textsplitterwidget.h"
#include "textview.h"
#include "varnelassert.h"
#include <QAction>
#include <QFileInfo>
#include <QMenu>
#include <QMimeData>
#include <QRubberBand>
#include <QScrollBar>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace {
constexpr int CollapseHeight = 20; ///< pixels
constexpr int LinesAround = 4;     ///< lines that stay visible around the target line
constexpr int BracketDelay = 30;   ///< milliseconds; a key does not wait until the brackets are painted
constexpr int LongestStart = 1000; ///< characters; the start of a longer line is not looked at per key

QTextDocument *keptDocument(QPlainTextEdit *edit)
{
    edit->document()->setParent(edit); // its owner would delete it when the document is replaced
    return edit->document();
}

/// Whether the character @p typed would change the indentation of the line in which it is inserted.
bool changesIndent(const TextViewEdit &edit, const QString &typed)
{
    const TextIndent *indenter = edit.textDocument()->indenter();
    if (!indenter || edit.isReadOnly() || typed.size() != 1 || typed[0].isLetterOrNumber() || typed[0].isSpace())
        return false;
    const int position = edit.textCursor().selectionStart();
    const QTextBlock block = edit.document()->findBlock(position);
    const int column = position - block.position();
    if (column > LongestStart)
        return false;
    const QString start = LongLine::textOf(block, 0, column) + typed;
    return askPlugin("TextIndent::changesIndent", [&] { return indenter->changesIndent(start); });
}
} // namespace

TextViewEdit::TextViewEdit(TextView *view, TextDocument *document)
    : m_view(view)
    , m_document(document)
    , m_number(document->paneNumbers().take())
    , m_ownDocument(keptDocument(this))
    , m_margin(new TextMarkerWidget(this))
    , m_background(*this, *document)
{
    setFrameStyle(QFrame::NoFrame);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent); // m_background paints the paper too
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setLineWrapMode(NoWrap);
    setMinimumSize(1, 1); // it is collapsed at a larger size
    nameByFile();
    refresh(true);
    setDocument(document->text());

    auto *splitter = new TextSplitterWidget;
    addScrollBarWidget(splitter, Qt::AlignTop);
    connect(splitter, &TextSplitterWidget::dragStarted, this,
            [this] { m_rubberBand = std::make_unique<QRubberBand>(QRubberBand::Rectangle, this); });
    connect(splitter, &TextSplitterWidget::dragMoved, this, &TextViewEdit::dragSplitter);
    connect(splitter, &TextSplitterWidget::dragFinished, this, &TextViewEdit::dropSplitter);

    connect(m_margin, &TextMarkerWidget::toggleBreakpoint, this, qOverload<int>(&TextViewEdit::toggleBreakpoint));
    connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect &rect, int dy) {
        if (dy != 0 || rect.contains(viewport()->rect())) // a change within a line concerns only the text
            m_margin->update();
    });
    connect(this, &QPlainTextEdit::blockCountChanged, this, &TextViewEdit::placeMargin);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { m_background.refreshCurrentLine(); });
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] { m_document->setSelection(textCursor()); });
    connect(document, &Document::documentModified, this, &TextViewEdit::nameByFile); // it may have another name
    m_bracketTimer.setSingleShot(true);
    m_bracketTimer.setInterval(BracketDelay);
    connect(&m_bracketTimer, &QTimer::timeout, this, &TextViewEdit::showBracketMatch);
    connect(document, &TextDocument::bracketMatchChanged, this, [this] {
        if (!m_bracketTimer.isActive())
            m_bracketTimer.start();
    });
}

TextViewEdit::~TextViewEdit()
{
    const QSignalBlocker quiet(this);
    m_document->disconnect(this);
    m_document->paneNumbers().giveBack(m_number);
    setDocument(m_ownDocument);
}

void TextViewEdit::nameByFile()
{
    setAccessibleName(tr("Text of %1").arg(QFileInfo(m_document->filename()).fileName()));
    const QString base = objectNameOfFile(m_document->filename());
    const QString name = m_number > 1 ? base + QString::number(m_number) : base;
    setObjectName(name);
    m_margin->setObjectName(name + u"/margin"_s);
    viewport()->setObjectName(name + u"/text"_s);
}

void TextViewEdit::refresh(bool full)
{
    if (full) {
        setFont(m_document->text()->defaultFont());
        QPalette colours = palette();
        colours.setColor(QPalette::Base, m_document->paperColour());
        colours.setColor(QPalette::Text, m_document->textColour());
        setPalette(colours);
        showBracketMatch();
        placeMargin();
    }
    m_margin->update();
    viewport()->update();
}

/// The formats determine the font of the document: other font changes must not reach it.
void TextViewEdit::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::FontChange || event->type() == QEvent::ApplicationFontChange)
        QAbstractScrollArea::changeEvent(event); // NOLINT(bugprone-parent-virtual-call): the base applies the font
    else
        LongLineEdit::changeEvent(event);
}

// Lines -------------------------------------------------------------------

QTextBlock TextViewEdit::blockAt(int y) const
{
    const QList<Line> lines = linesAt(y, y);
    return lines.isEmpty() ? QTextBlock() : lines.first().block;
}

void TextViewEdit::showBlock(const QTextBlock &block)
{
    const int first = verticalScrollBar()->value(); // the value is a line number, because lines are not wrapped
    const int onScreen = std::max(1, viewport()->height() / m_document->lineSpacing());
    const int around = std::min(LinesAround, (onScreen - 1) / 2);
    const int line = block.blockNumber();
    if (line < first || line >= first + onScreen)
        verticalScrollBar()->setValue(line - onScreen / 2);
    else if (line - around < first)
        verticalScrollBar()->setValue(line - around);
    else if (line + around >= first + onScreen)
        verticalScrollBar()->setValue(line + around - onScreen + 1);
}

void TextViewEdit::scrollByWheel(QWheelEvent *event)
{
    LongLineEdit::wheelEvent(event);
}

void TextViewEdit::paintEvent(QPaintEvent *event)
{
    const int onScreen = viewport()->height() / std::max(1, m_document->lineSpacing()) + 1;
    const int first = firstVisibleBlock().blockNumber();
    m_document->ensureFormatted(first, std::min(first + onScreen, document()->blockCount() - 1));
    m_background.paint(event->rect(), contentOffset().x());
    LongLineEdit::paintEvent(event);
}

void TextViewEdit::resizeEvent(QResizeEvent *event)
{
    LongLineEdit::resizeEvent(event);
    placeMargin();
    if (height() < CollapseHeight)
        Q_EMIT becameSmall();
}

/// The line numbers make the margin wider as the text grows.
void TextViewEdit::placeMargin()
{
    const int width = m_margin->wantedWidth();
    if (viewportMargins().left() != width)
        setViewportMargins(width, 0, 0, 0); // may lead back here by a resize
    const QRect inside = contentsRect();
    m_margin->setGeometry(inside.left(), inside.top(), width, viewport()->height());
}

void TextViewEdit::showBracketMatch()
{
    QTextEdit::ExtraSelection match;
    match.cursor = m_document->bracketMatch();
    if (match.cursor.isNull()) {
        setExtraSelections({});
        return;
    }
    match.format.setBackground(editorColours(m_document->paperColour()).bracket);
    setExtraSelections({match});
}

// Keys and mouse ----------------------------------------------------------

void TextViewEdit::keyPressEvent(QKeyEvent *event)
{
    if (!event->text().isEmpty()) // each key measures and paints the line several times
        textCursor().block().layout()->setCacheEnabled(true);
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const Qt::KeyboardModifiers plain = event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const bool isTab = event->key() == Qt::Key_Tab && event->modifiers() == Qt::NoModifier && !isReadOnly();
    const TextIndent *indenter = m_document->indenter();
    if (isReturn && plain == Qt::NoModifier)
        pressReturn(event);
    else if (event->key() == Qt::Key_Backtab && plain == Qt::NoModifier)
        isReadOnly() ? event->ignore() : unindentLines(textCursor(), indentation());
    else if (isTab && selectsSeveralLines(textCursor()))
        indentLines(textCursor(), indentation());
    else if (isTab && indenter && !indenter->keepTabs())
        pressTab();
    else
        pressOther(event);
}

/// A typed character may change the indentation of its line. That is one step for undo with the character.
void TextViewEdit::pressOther(QKeyEvent *event)
{
    if (!changesIndent(*this, event->text()))
        return LongLineEdit::keyPressEvent(event);
    QTextCursor step = textCursor();
    step.beginEditBlock();
    LongLineEdit::keyPressEvent(event);
    indent();
    step.endEditBlock();
    endUndoStep();
    ensureCursorVisible();
}

Indentation TextViewEdit::indentation() const
{
    const TextIndent *indenter = m_document->indenter();
    return indenter ? Indentation{indenter->tabSize(), indenter->keepTabs()} : Indentation{};
}

void TextViewEdit::pressTab()
{
    QTextCursor cursor = textCursor();
    const int tabSize = m_document->indenter()->tabSize();
    cursor.beginEditBlock();
    cursor.removeSelectedText();
    const int index = cursor.positionInBlock();
    cursor.insertText(QString((index / tabSize + 1) * tabSize - index, u' '));
    cursor.endEditBlock();
    setTextCursor(cursor);
}

/// Breaks the line and indents the new one, as one step for undo. Also with Shift, for which the toolkit inserts a
/// special character that source files do not contain.
void TextViewEdit::pressReturn(QKeyEvent *event)
{
    QKeyEvent press(event->type(), event->key(), event->modifiers() & ~Qt::ShiftModifier, event->text(),
                    event->isAutoRepeat());
    LongLineEdit::keyPressEvent(&press);
    QTextCursor step = textCursor();
    step.joinPreviousEditBlock();
    indent();
    step.endEditBlock();
    ensureCursorVisible();
}

/// A cursor in the line's text keeps its place in the text; one before the text moves to its start.
void TextViewEdit::indent()
{
    TextIndent *indenter = m_document->indenter();
    if (!indenter)
        return;
    QTextCursor cursor = textCursor();
    const QTextBlock block = cursor.block();
    const int index = cursor.positionInBlock();
    int oldIndent = 0;
    int newIndent = 0;
    const auto work = [&] { indenter->indent(m_document->text(), block, &oldIndent, &newIndent); };
    if (!runPlugin("TextIndent::indent", work))
        return;
    const int moved = index >= oldIndent ? index + newIndent - oldIndent : newIndent;
    cursor.setPosition(block.position() + std::clamp(moved, 0, block.length() - 1));
    setTextCursor(cursor);
}

/// A right press moves the cursor there, so that the context menu refers to that line; a press on the selection keeps
/// it, so that the menu can copy it.
void TextViewEdit::mousePressEvent(QMouseEvent *event)
{
    LongLineEdit::mousePressEvent(event);
    if (event->button() != Qt::RightButton)
        return;
    const QTextCursor pressed = cursorForPosition(event->position().toPoint());
    const QTextCursor cursor = textCursor();
    const bool onSelection =
        pressed.position() >= cursor.selectionStart() && pressed.position() <= cursor.selectionEnd();
    if (!onSelection)
        setTextCursor(pressed);
}

void TextViewEdit::mouseDoubleClickEvent(QMouseEvent *event)
{
    LongLineEdit::mouseDoubleClickEvent(event);
    QTextCursor cursor = textCursor();
    const int start = cursor.selectionStart();
    const int end = cursor.selectionEnd();
    int trimmed = end;
    while (trimmed - start > 1 && !document()->characterAt(trimmed - 1).isLetterOrNumber())
        --trimmed;
    if (trimmed == end)
        return;
    select(start, trimmed - start);
}

void TextViewEdit::contextMenuEvent(QContextMenuEvent *event)
{
    const std::unique_ptr<QMenu> menu = contextMenu(event->pos());
    menu->exec(event->globalPos());
}

std::unique_ptr<QMenu> TextViewEdit::contextMenu(const QPoint &position)
{
    std::unique_ptr<QMenu> menu(createStandardContextMenu(position));
    menu->setParent(nullptr, menu->windowFlags()); // the pane may be deleted while the menu is open
    if (!viewInterface<IViewWithMarkers>(m_view))
        return menu;
    menu->addSeparator();
    EditorHost *host = m_document->textTemplate()->editorHost();
    if (QAction *run = host ? host->sharedAction(u"debugRunToCursor"_s) : nullptr)
        menu->addAction(run);
    QAction *toggle = menu->addAction(tr("Toggle Breakpoint\tF9"));
    connect(toggle, &QAction::triggered, this, qOverload<>(&TextViewEdit::toggleBreakpoint));
    return menu;
}

void TextViewEdit::toggleBreakpoint()
{
    Q_EMIT toggleBreakpoint(textCursor().blockNumber() + 1);
}

/// Does not accept files: the window opens them.
void TextViewEdit::dragEnterEvent(QDragEnterEvent *event)
{
    if (event->mimeData()->hasUrls() || event->mimeData()->text().startsWith(u"file:"_s))
        event->ignore();
    else
        LongLineEdit::dragEnterEvent(event);
}

// The split handle --------------------------------------------------------

int TextViewEdit::splitHeight(const QPoint &globalPosition) const
{
    const int handle = style()->pixelMetric(QStyle::PM_SplitterWidth, nullptr, this);
    return std::clamp(mapFromGlobal(globalPosition).y(), 0, std::max(0, viewport()->height() - handle));
}

void TextViewEdit::dragSplitter(const QPoint &globalPosition)
{
    const int handle = style()->pixelMetric(QStyle::PM_SplitterWidth, nullptr, this);
    m_rubberBand->setGeometry(0, splitHeight(globalPosition), width(), handle);
    m_rubberBand->show();
}

void TextViewEdit::dropSplitter(const QPoint &globalPosition)
{
    m_rubberBand.reset();
    Q_EMIT splitRequested(splitHeight(globalPosition));
}

// Search ------------------------------------------------------------------

void TextViewEdit::select(qsizetype position, qsizetype length)
{
    QTextCursor cursor = textCursor();
    cursor.setPosition(int(position));
    cursor.setPosition(int(position + length), QTextCursor::KeepAnchor);
    showBlock(cursor.block()); // before the base class scrolls to the edge
    setTextCursor(cursor);
    ensureCursorVisible();
}

bool TextViewEdit::find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor)
{
    return find(TextPattern(text, {{caseSensitive, wholeWord}}), forward, fromCursor);
}

bool TextViewEdit::find(const TextPattern &pattern, bool forward, bool fromCursor)
{
    const QString raw = m_document->rawText();
    const QTextCursor cursor = textCursor();
    std::optional<TextPattern::Match> match;
    if (forward) {
        match = pattern.forward(raw, fromCursor ? cursor.selectionEnd() : 0, raw.size());
    } else if (!fromCursor) {
        match = pattern.backward(raw, raw.size());
    } else {
        const QTextBlock block = document()->findBlock(cursor.selectionStart());
        const qsizetype length = pattern.options().regExp ? 1 : pattern.text().size();
        const qsizetype from = cursor.selectionStart() - length;
        match = pattern.backward(raw, std::max<qsizetype>(from, block.position() - 1));
    }
    if (!match)
        return false;
    select(match->position, match->length);
    return true;
}

bool TextViewEdit::replace(const QString &text, const QString &replacement, bool caseSensitive, bool wholeWord, bool,
                           bool, bool all)
{
    return replace(TextPattern(text, {{caseSensitive, wholeWord}}), replacement, all);
}

bool TextViewEdit::replace(const TextPattern &pattern, const QString &replacement, bool all)
{
    const QString raw = m_document->rawText();
    if (all)
        return replaceMatches(pattern, replacement, 0, raw.size());
    m_replacedCount = 0;
    const auto match = pattern.forward(raw, textCursor().selectionStart(), raw.size());
    if (!match)
        return false;
    const auto replaced = pattern.replacements(raw, replacement, match->position, match->position + match->length);
    select(match->position, match->length);
    textCursor().insertText(replaced.isEmpty() ? replacement : replaced.first().text);
    m_replacedCount = 1;
    return find(pattern, true, true);
}

bool TextViewEdit::replaceMatches(const TextPattern &pattern, const QString &replacement, qsizetype from, qsizetype end)
{
    const QList<TextPattern::Replaced> matches = pattern.replacements(m_document->rawText(), replacement, from, end);
    m_replacedCount = int(matches.size());
    if (matches.isEmpty())
        return false;
    QTextCursor cursor = textCursor();
    cursor.beginEditBlock();
    for (auto match = matches.crbegin(); match != matches.crend(); ++match) { // backwards: positions before stay valid
        cursor.setPosition(int(match->position));
        cursor.setPosition(int(match->position + match->length), QTextCursor::KeepAnchor);
        cursor.insertText(match->text);
    }
    cursor.endEditBlock();
    return true;
}

bool TextViewEdit::replaceInSelection(const QString &text, const QString &replacement, bool caseSensitive,
                                      bool wholeWord)
{
    return replaceInSelection(TextPattern(text, {{caseSensitive, wholeWord}}), replacement);
}

bool TextViewEdit::replaceInSelection(const TextPattern &pattern, const QString &replacement)
{
    const QTextCursor selection = textCursor();
    VARNEL_ASSERT_TEXT(selection.hasSelection(), "paraFrom != -1");
    if (!selection.hasSelection())
        return false;
    const auto place = [this](int position) {
        const QTextBlock block = document()->findBlock(position);
        return std::pair(block.blockNumber(), position - block.position());
    };
    const auto anchor = place(selection.anchor());
    const auto cursor = place(selection.position());
    const bool replaced = replaceMatches(pattern, replacement, selection.selectionStart(), selection.selectionEnd());

    const auto positionOf = [this](std::pair<int, int> place) {
        const QTextBlock block = document()->findBlockByNumber(place.first);
        return block.position() + std::min(place.second, block.length() - 1);
    };
    QTextCursor restored = textCursor();
    restored.setPosition(positionOf(anchor));
    restored.setPosition(positionOf(cursor), QTextCursor::KeepAnchor);
    setTextCursor(restored);
    return replaced;
}

QRect TextViewEdit::selectionOnScreen() const
{
    QTextCursor start = textCursor();
    start.setPosition(textCursor().selectionStart());
    QTextCursor end = textCursor();
    end.setPosition(textCursor().selectionEnd());
    const QRect rect = cursorRect(start).united(cursorRect(end));
    return {viewport()->mapToGlobal(rect.topLeft()), rect.size()};
}
