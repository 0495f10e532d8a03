#include "textview.h"
#include "lineedits.h"
#include "loadingpanes.h"
#include "textdocument.h"
#include "textdocumenttemplate.h"
#include "textloading.h"
#include "textplace.h"
#include "textprint.h"
#include "textviewedit.h"
#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QMimeData>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollBar>
#include <QSplitter>

using namespace Qt::StringLiterals;

namespace {
/// The selected characters as the file has them; null if the document can hold all characters of the file.
QString originalText(const TextDocument &document, const QTextCursor &selection)
{
    if (document.standIns().isEmpty())
        return {};
    QString text = selection.selectedText();
    text.replace(QChar::ParagraphSeparator, u'\n');
    document.standIns().takeOutOf(text);
    return text;
}
} // namespace

TextView::TextView(TextDocument *document, QWidget *parent)
    : View(document, parent), m_textDocument(document), m_splitter(new QSplitter(Qt::Vertical))
{
    auto *layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter);
    m_splitter->setChildrenCollapsible(false); // a pane hides by itself
    m_loadingPanes = new LoadingPanes(this);
    setCurrentEdit(addPane());

    connect(document->text(), &QTextDocument::undoAvailable, this, &View::undoAvailable);
    connect(document->text(), &QTextDocument::redoAvailable, this, &View::redoAvailable);
    connect(document->loading(), &TextLoading::activeChanged, this, &TextView::loadingChanged);
    connect(QGuiApplication::clipboard(), &QClipboard::dataChanged, this, [this] {
        if (m_current->hasFocus())
            emitPasteAvailable();
    });
}

TextView::~TextView()
{
    m_textDocument->text()->disconnect(this);
    for (TextViewEdit *pane : std::as_const(m_edits))
        pane->disconnect(this);
    qDeleteAll(m_edits); // while the document exists
}

// Panes -------------------------------------------------------------------

TextViewEdit *TextView::addPane()
{
    auto *pane = new TextViewEdit(this, m_textDocument);
    pane->installEventFilter(this);
    connect(pane, &QPlainTextEdit::cursorPositionChanged, this, [this, pane] { cursorMoved(pane); });
    connect(pane, &QPlainTextEdit::copyAvailable, this, &View::copyAvailable);
    connect(pane, &QPlainTextEdit::copyAvailable, this, &TextView::emitCutAvailable);
    connect(pane, qOverload<int>(&TextViewEdit::toggleBreakpoint), this, &TextView::toggleBreakpoint);
    connect(pane, &TextViewEdit::splitRequested, this, [this, pane](int y) { splitAt(pane, y); });
    connect(
        pane, &TextViewEdit::becameSmall, pane, [this, pane] { paneBecameSmall(pane); },
        Qt::QueuedConnection); // not while the splitter arranges its children, and not if the pane is closed by then
    pane->background().markMatches(m_marked);
    pane->setTextForms([this](const QString &text) { return m_textDocument->insertable(text); },
                       [this](const QTextCursor &selection) { return originalText(*m_textDocument, selection); });
    m_edits.append(pane);
    m_loadingPanes->add(pane);
    m_splitter->addWidget(pane);
    return pane;
}

void TextView::setCurrentEdit(TextViewEdit *pane)
{
    m_current = pane;
    setFocusProxy(pane);
}

void TextView::split()
{
    splitAt(m_current, (m_current->height() + 1) / 2);
}

void TextView::splitAt(TextViewEdit *pane, int y)
{
    QList<int> sizes = m_splitter->sizes();
    const int height = pane->height(); // the new pane takes a part of it at once
    const bool cursorShown = pane->viewport()->rect().intersects(pane->cursorRect());
    TextViewEdit *added = addPane();
    added->setTextCursor(pane->textCursor());
    added->verticalScrollBar()->setValue(pane->verticalScrollBar()->value());

    const qsizetype split = m_edits.indexOf(pane);
    sizes.insert(split, y);
    for (qsizetype i = split + 1; i < m_edits.size(); ++i) {
        if (m_edits[i]->isHidden() && m_edits[i] != added)
            continue;
        sizes[i] = height + 1 - y;
        break;
    }
    m_splitter->setSizes(sizes);
    if (cursorShown) {
        pane->showBlock(pane->textCursor().block());
        added->showBlock(added->textCursor().block());
    }
    added->setFocus();
}

void TextView::closePane()
{
    TextViewEdit *pane = m_current;
    QList<TextViewEdit *> others = shownEdits();
    others.removeOne(pane);
    if (others.isEmpty())
        return;
    m_edits.removeOne(pane);
    setCurrentEdit(others.first());
    m_current->setFocus();
    delete pane;
    Q_EMIT viewActivated(this); // what is available depends on the number of panes
}

QList<TextViewEdit *> TextView::shownEdits() const
{
    QList<TextViewEdit *> shown;
    std::copy_if(m_edits.cbegin(), m_edits.cend(), std::back_inserter(shown),
                 [](TextViewEdit *edit) { return !edit->isHidden(); });
    return shown;
}

QList<int> TextView::paneHeights() const
{
    QList<int> heights = m_splitter->sizes();
    for (qsizetype i = m_edits.size() - 1; i >= 0; --i) {
        if (m_edits[i]->isHidden())
            heights.removeAt(i);
    }
    return heights;
}

void TextView::setPaneHeights(const QList<int> &heights)
{
    while (m_edits.size() < heights.size())
        addPane();
    m_splitter->setSizes(heights);
}

void TextView::paneBecameSmall(TextViewEdit *pane)
{
    const auto isShown = [](TextViewEdit *edit) { return !edit->isHidden(); };
    if (pane->isHidden() || !pane->isVisible() || pane->height() >= 20
        || std::count_if(m_edits.cbegin(), m_edits.cend(), isShown) < 2)
        return;
    pane->hide();
    TextViewEdit *first = *std::find_if(m_edits.cbegin(), m_edits.cend(), isShown);
    setCurrentEdit(first);
    first->setFocus();
}

bool TextView::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        if (const qsizetype i = m_edits.indexOf(object); i >= 0)
            paneFocused(m_edits[i]);
    }
    return View::eventFilter(object, event);
}

void TextView::paneFocused(TextViewEdit *pane)
{
    const QPointer<TextView> self(this);
    setCurrentEdit(pane);
    Q_EMIT viewActivated(this);
    if (!self)
        return;
    const bool hasSelection = pane->textCursor().hasSelection();
    emitUndoAvailable();
    Q_EMIT copyAvailable(hasSelection);
    emitCutAvailable(hasSelection);
    emitPasteAvailable();
    Q_EMIT backAvailable(false);
    Q_EMIT forwardAvailable(false);
    Q_EMIT previousAvailable(false);
    Q_EMIT nextAvailable(false);
    const QTextCursor cursor = pane->textCursor();
    Q_EMIT cursorPositionChanged(cursor.blockNumber(), cursor.positionInBlock());
}

void TextView::emitUndoAvailable()
{
    Q_EMIT undoAvailable(m_textDocument->text()->isUndoAvailable());
    Q_EMIT redoAvailable(m_textDocument->text()->isRedoAvailable());
}

void TextView::emitPasteAvailable()
{
    const QMimeData *data = QGuiApplication::clipboard()->mimeData();
    Q_EMIT pasteAvailable(data && data->hasFormat(u"text/plain"_s) && !m_textDocument->isLoading());
}

void TextView::emitCutAvailable(bool hasSelection)
{
    Q_EMIT cutAvailable(hasSelection && !m_textDocument->isLoading());
}

/// The partner of a bracket may be in what was missing.
void TextView::loadingChanged()
{
    if (!m_current->hasFocus())
        return;
    emitCutAvailable(m_current->textCursor().hasSelection());
    emitPasteAvailable();
    if (!m_textDocument->isLoading())
        m_textDocument->matchBrackets(m_current->textCursor());
}

void TextView::cursorMoved(TextViewEdit *pane)
{
    if (pane != m_current)
        return;
    const QTextCursor cursor = pane->textCursor();
    m_textDocument->matchBrackets(cursor);
    Q_EMIT cursorPositionChanged(cursor.blockNumber(), cursor.positionInBlock());
}

void TextView::update(View *source, bool full)
{
    for (TextViewEdit *pane : std::as_const(m_edits)) {
        if (!full && source == this && pane->hasFocus())
            continue;
        const QSignalBlocker quiet(pane);
        pane->refresh(full);
    }
}

// Commands ----------------------------------------------------------------

bool TextView::queryInterface(const QString &name, void **out)
{
    *out = nullptr;
    if (name == QLatin1String(IViewWithMarkers::Name))
        *out = static_cast<IViewWithMarkers *>(this);
    else if (name == QLatin1String(ITextNavigation::Name))
        *out = static_cast<ITextNavigation *>(this);
    else if (name == QLatin1String(ISourceView::Name))
        *out = static_cast<ISourceView *>(this);
    return *out;
}

void TextView::print()
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setFullPage(true);
    printer.setDocName(m_textDocument->title());
    const QPointer<QPrintDialog> dialog = new QPrintDialog(&printer, this); // with the view, it ends unaccepted
    if (dialog->exec() == QDialog::Accepted)
        printText(*m_textDocument->wholeText(), printer);
    delete dialog;
}

/// The current pane, with the whole text.
TextViewEdit *TextView::loadedEdit() const
{
    m_textDocument->wholeText();
    return m_current;
}

void TextView::undo()
{
    m_current->undo();
    emitUndoAvailable();
}

void TextView::redo()
{
    m_current->redo();
    emitUndoAvailable();
}

void TextView::cut()
{
    loadedEdit()->cut();
}

void TextView::copy()
{
    loadedEdit()->copy(); // all may be selected
}

void TextView::paste()
{
    loadedEdit()->paste();
}

void TextView::remove()
{
    loadedEdit()->textCursor().removeSelectedText();
}

void TextView::selectAll()
{
    loadedEdit()->selectAll();
}

void TextView::insert(const QString &text)
{
    QTextCursor cursor = loadedEdit()->textCursor();
    cursor.insertText(m_textDocument->insertable(text));
    m_current->setTextCursor(cursor);
}

void TextView::insertText(const QString &text)
{
    insert(text);
}

void TextView::moveCursor(CursorAction action, bool select)
{
    using enum QTextCursor::MoveOperation;
    static constexpr QTextCursor::MoveOperation Operations[] = {
        PreviousCharacter, NextCharacter, PreviousWord, NextWord, Up, Down, StartOfLine, EndOfLine, Start, End};
    if (action < 0 || action >= int(std::size(Operations)))
        return;
    loadedEdit()->moveCursor(Operations[action], select ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
}

// Markers and places ------------------------------------------------------

void TextView::setMarker(int line, int mask, bool on, bool alternate)
{
    m_textDocument->setMarker(line, mask, on, alternate);
}

void TextView::clearMarkers(int mask)
{
    m_textDocument->clearMarkers(mask);
}

bool TextView::hasMarker(int line, int mask)
{
    return m_textDocument->hasMarker(line, mask);
}

bool TextView::hasMarkerAtCursor(int mask)
{
    const QTextBlock block = m_current->textCursor().block();
    const int height = m_current->viewport()->height();
    for (const TextViewEdit::Line &line : m_current->linesAt(0, height)) {
        if (line.block == block) // the first line on screen is never cut off
            return line.rect.bottom() <= height && hasMarker(block.blockNumber() + 1, mask);
    }
    return false;
}

void TextView::gotoLine(int line)
{
    m_textDocument->loadTo(line);
    QTextDocument *text = m_textDocument->text();
    const QTextBlock block = text->findBlockByNumber(std::clamp(line - 1, 0, text->blockCount() - 1));
    QTextCursor cursor = m_current->textCursor();
    const bool moves = cursor.position() != block.position();
    cursor.setPosition(block.position());
    m_current->showBlock(block); // before the base class scrolls to the edge
    m_current->setTextCursor(cursor);
    m_textDocument->clearBracketMatch();
    if (!moves) // while the window has no focus, the status bar may show the position in another view
        Q_EMIT cursorPositionChanged(block.blockNumber(), 0);
}

/// Compilers count the columns of a terminal.
void TextView::gotoColumn(int column)
{
    QTextCursor cursor = m_current->textCursor();
    const QString text = cursor.block().text();
    int index = 0;
    for (int reached = 1; reached < column && index < text.size(); ++index)
        reached = text[index] == u'\t' ? (reached + 7) / 8 * 8 + 1 : reached + 1;
    cursor.setPosition(cursor.block().position() + index);
    m_current->setTextCursor(cursor);
}

QString TextView::selectedText()
{
    return m_textDocument->selectedText();
}

void TextView::getCursorPosition(int *para, int *index)
{
    const QTextCursor cursor = m_current->textCursor();
    *para = cursor.blockNumber();
    *index = cursor.positionInBlock();
}

bool TextView::commentSelection()
{
    const QString marker = m_textDocument->textTemplate()->lineComment();
    if (marker.isEmpty() || loadedEdit()->isReadOnly())
        return false;
    commentLines(m_current->textCursor(), marker);
    return true;
}

bool TextView::uncommentSelection()
{
    const QString marker = m_textDocument->textTemplate()->lineComment();
    return !marker.isEmpty() && !loadedEdit()->isReadOnly() && uncommentLines(m_current->textCursor(), marker);
}

bool TextView::unindentSelection()
{
    if (loadedEdit()->isReadOnly())
        return false;
    unindentLines(m_current->textCursor(), m_current->indentation());
    return true;
}

/// Events are processed between the lines, so the view may be closed during the loop. The selection gets its former
/// lines and columns back, so that whole lines stay selected.
void TextView::indentSelection()
{
    const QPointer<TextViewEdit> pane = m_current;
    const QTextCursor selection = pane->textCursor();
    QTextDocument *text = m_textDocument->wholeText();
    const TextPlace anchor = textPlaceOf(text, selection.anchor());
    const TextPlace position = textPlaceOf(text, selection.position());
    const int last = std::max(anchor.line, position.line);
    for (int line = std::min(anchor.line, position.line); line <= last; ++line) {
        const QTextBlock block = text->findBlockByNumber(line);
        if (!block.isValid())
            break;
        QTextCursor cursor = pane->textCursor();
        cursor.setPosition(block.position());
        pane->setTextCursor(cursor);
        pane->indent();
        QApplication::processEvents();
        if (!pane)
            return;
    }
    if (anchor == position)
        return;
    QTextCursor restored(text);
    restored.setPosition(positionOf(text, anchor));
    restored.setPosition(positionOf(text, position), QTextCursor::KeepAnchor);
    pane->setTextCursor(restored);
}
