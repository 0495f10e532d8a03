#include "findcommands.h"
#include "bytesearch.h"
#include "disassemblerview.h"
#include "finddialog.h"
#include "largetextview.h"
#include "messages.h"
#include "placebeside.h"
#include "replacedialog.h"
#include "textdocument.h"
#include "textview.h"
#include "textviewedit.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <QAction>
#include <QApplication>
#include <QTextDocument>

using namespace Qt::StringLiterals;

namespace {
constexpr int MessageTime = 2000; // milliseconds

bool isOneLine(const QString &text)
{
    return !text.isEmpty() && !text.contains(u'\n') && !text.contains(QChar(QChar::ParagraphSeparator));
}
} // namespace

FindCommands::FindCommands(WindowServices &window, QObject *parent)
    : QObject(parent)
    , m_window(window)
    , m_findDialog(new FindDialog(window.dialogParent(), u"findDialog"_s))
    , m_replaceDialog(new ReplaceDialog(window.dialogParent(), u"replaceDialog"_s))
    , m_used(m_findDialog)
{
    connectDialogs();
    connect(window.viewManager(), &ViewManager::copyAvailable, this,
            [this] { refreshSelection(m_window.viewManager()->currentView()); });
    connectAction(u"editFindNext"_s, [this] { findAgain(true); });
    connectAction(u"editFindPrevious"_s, [this] { findAgain(false); });
}

void FindCommands::connectDialogs()
{
    connectDialog(m_findDialog, m_findCounter);
    connectDialog(m_replaceDialog, m_replaceCounter);
    connect(m_findDialog, &FindDialog::find, this, [this](const QString &, bool, bool, bool forward) {
        use(m_findDialog);
        findFromDialog(forward);
    });
    connect(m_replaceDialog, &ReplaceDialog::matchSelected, this, [this] {
        keepMatchVisible();
        use(m_replaceDialog);
    });
    connect(m_replaceDialog, &ReplaceDialog::replaced, this, [this](int count) {
        const QString outcome =
            count == 1 ? tr("1 occurrence has been replaced.") : tr("%1 occurrences have been replaced.").arg(count);
        m_window.showMessage(outcome);
        use(m_replaceDialog);
        m_outcome = outcome;
        m_replaceDialog->showCount(outcome); // until the others are counted
    });
}

template <typename Dialog>
void FindCommands::connectDialog(Dialog *dialog, const MatchCounter &counter)
{
    dialog->installEventFilter(this);
    connect(dialog, &Dialog::patternChanged, this, [this, dialog] { use(dialog); });
    connect(&counter, &MatchCounter::counted, this, [this, dialog](int matches, bool isMore) {
        const QString outcome = static_cast<QDialog *>(dialog) == m_replaceDialog ? m_outcome : QString();
        const QString count = isMore         ? tr("More than %1 matches").arg(matches)
                              : matches == 0 ? tr("No match")
                              : matches == 1 ? tr("1 match")
                                             : tr("%1 matches").arg(matches);
        const bool allReplaced = matches == 0 && !outcome.isEmpty();
        dialog->showCount(allReplaced ? outcome : (outcome + u' ' + count).trimmed());
    });
    connect(&counter, &MatchCounter::givenUp, this, [this, dialog] {
        dialog->showCount(tr("The expression takes too long"));
        if (m_marked && m_used == dialog)
            m_marked->markMatches(nullptr);
    });
}

bool FindCommands::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::WindowActivate && object != m_used)
        use(qobject_cast<QDialog *>(object));
    return QObject::eventFilter(object, event);
}

void FindCommands::connectAction(const QString &name, const std::function<void()> &work)
{
    if (const QAction *action = m_window.action(name))
        connect(action, &QAction::triggered, this, work);
}

// Commands ----------------------------------------------------------------

void FindCommands::find()
{
    View *view = m_window.viewManager()->currentView();
    if (auto *large = qobject_cast<LargeTextView *>(view)) {
        large->openFindBar();
        return;
    }
    auto *navigation = viewInterface<ITextNavigation>(view);
    if (!navigation)
        return;
    if (const QString selected = navigation->selectedText(); isOneLine(selected))
        m_findDialog->setFindText(selected);
    m_findDialog->run();
    use(m_findDialog);
    if (const auto *text = qobject_cast<TextView *>(view))
        keepVisible(text->currentEdit());
}

void FindCommands::findAgain(bool forward)
{
    View *view = m_window.viewManager()->currentView();
    if (auto *large = qobject_cast<LargeTextView *>(view))
        large->findAgain(forward);
    else if (m_findDialog->pattern().canMatch())
        findFromDialog(forward);
    else
        find();
}

void FindCommands::findFromDialog(bool forward)
{
    const TextPattern pattern = m_findDialog->pattern();
    const SearchOptions options = pattern.options();
    auto *view = qobject_cast<TextView *>(m_window.viewManager()->currentView());
    if (!view || !pattern.options().regExp) {
        find(pattern.text(), options.caseSensitive, options.wholeWord, forward, true);
        return;
    }
    showResult(view->find(pattern, forward, true), pattern,
               [view, pattern, forward] { return view->find(pattern, forward, false); });
}

void FindCommands::find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor)
{
    View *view = m_window.viewManager()->currentView();
    if (auto *large = qobject_cast<LargeTextView *>(view)) {
        large->startFind({text, caseSensitive, wholeWord}, forward, fromCursor);
        return;
    }
    if (auto *disassembly = qobject_cast<DisassemblerView *>(view)) {
        disassembly->startFind(text, caseSensitive, forward, fromCursor);
        return;
    }
    auto *navigation = viewInterface<ITextNavigation>(view);
    if (!navigation)
        return;
    const auto again = [=] { return fromCursor && navigation->find(text, caseSensitive, wholeWord, forward, false); };
    showResult(navigation->find(text, caseSensitive, wholeWord, forward, fromCursor),
               TextPattern(text, {{caseSensitive, wholeWord}}), again);
}

void FindCommands::showResult(bool found, const TextPattern &pattern, const std::function<bool()> &findFromStart)
{
    if (!found && findFromStart()) {
        found = true;
        m_window.showMessage(tr("Passed the end of the file"), MessageTime);
        QApplication::beep();
    }
    if (found) {
        keepMatchVisible();
        return;
    }
    QWidget *asker = m_findDialog->isVisible() ? m_findDialog : m_window.dialogParent();
    const QString text = pattern.hasGivenUp() ? tr("The search for %1 was given up: the expression takes too long.")
                                              : tr("Cannot find the string %1.");
    showMessage(QMessageBox::Warning, asker, text.arg(pattern.text()), {QMessageBox::Ok}, tr("Find"));
}

void FindCommands::replace()
{
    auto *view = qobject_cast<TextView *>(m_window.viewManager()->currentView());
    if (!view)
        return;
    const QString selected = view->currentEdit()->textCursor().selectedText(); // which a replacement can be limited to
    // A selection within one line is most likely the text to search for.
    m_replaceDialog->setHasSelection(!selected.isEmpty(), !isOneLine(selected));
    if (isOneLine(selected))
        m_replaceDialog->setFindText(selected);
    m_replaceDialog->run();
    use(m_replaceDialog);
    keepVisible(view->currentEdit());
}

void FindCommands::refreshSelection(View *current)
{
    const auto *view = qobject_cast<TextView *>(current);
    m_replaceDialog->setSelectionAvailable(view && view->currentEdit()->textCursor().hasSelection());
}

void FindCommands::viewActivated(View *view)
{
    m_replaceDialog->setView(qobject_cast<TextView *>(view));
    refreshSelection(view);
    QDialog *const used = m_used;
    m_findDialog->setExpressionsAvailable(qobject_cast<TextView *>(view));
    m_used = used; // the user has not changed the pattern
    refreshMarks(view);
}

// Matches -----------------------------------------------------------------

void FindCommands::refreshMarks()
{
    refreshMarks(m_window.viewManager()->currentView());
}

/// Marks the matches of the dialog that was used last, and counts those of each open one, in the view that is in front.
void FindCommands::refreshMarks(View *current)
{
    auto *view = qobject_cast<TextView *>(current);
    if (m_marked && m_marked != view)
        m_marked->markMatches(nullptr);
    disconnect(m_edited);
    m_outcome.clear();
    m_findDialog->showCount({});
    m_replaceDialog->showCount({});
    m_marked = isOpen() ? view : nullptr;
    countMatches();
    if (!view)
        return tellMissingText(current);
    view->markMatches(m_marked ? std::make_shared<TextPattern>(patternToMark()) : nullptr);
    if (m_marked)
        m_edited = connect(view->textDocument()->text(), &QTextDocument::contentsChange, this, [this] {
            m_outcome.clear(); // of an earlier text
            countMatches();
        });
}

/// Marks its matches, unless the user only closes it.
void FindCommands::use(QDialog *dialog)
{
    if (dialog->isVisible())
        m_used = dialog;
    refreshMarks();
}

bool FindCommands::isOpen() const
{
    return m_findDialog->isVisible() || m_replaceDialog->isVisible();
}

TextPattern FindCommands::patternToMark() const
{
    const bool isFind = m_used->isVisible() ? m_used == m_findDialog : m_findDialog->isVisible();
    return isFind ? m_findDialog->pattern() : m_replaceDialog->pattern();
}

/// The number that is shown remains until the new one is known.
void FindCommands::countMatches()
{
    countMatches(m_findDialog, m_findCounter);
    countMatches(m_replaceDialog, m_replaceCounter);
}

template <typename Dialog>
void FindCommands::countMatches(Dialog *dialog, MatchCounter &counter)
{
    counter.stop();
    if (!m_marked || !dialog->isVisible())
        return;
    const TextPattern pattern = dialog->pattern();
    if (!pattern.error().isEmpty())
        dialog->showCount(tr("Error in the expression: %1").arg(pattern.error()));
    else if (pattern.canMatch())
        counter.start([view = m_marked] { return view ? view->textDocument()->rawText() : QString(); }, pattern);
}

/// The dialogs stay open when the text is closed, and their buttons have no effect then.
void FindCommands::tellMissingText(View *current)
{
    m_replaceDialog->showCount(tr("The window in front has no text that can be changed"));
    if (!viewInterface<ITextNavigation>(current))
        m_findDialog->showCount(tr("The window in front has no text to search in"));
}

/// A dialog that covers the selection of @p pane is moved.
void FindCommands::keepVisible(const TextViewEdit *pane)
{
    const QWidget *viewport = pane->viewport();
    const QRect area = pane->selectionOnScreen() & QRect(viewport->mapToGlobal(QPoint()), viewport->size());
    for (QDialog *dialog : std::initializer_list<QDialog *>{m_findDialog, m_replaceDialog}) {
        if (dialog->isVisible())
            placeBeside(dialog, area);
    }
}

void FindCommands::keepMatchVisible()
{
    if (const auto *view = qobject_cast<TextView *>(m_window.viewManager()->currentView()))
        keepVisible(view->edits().first());
}
