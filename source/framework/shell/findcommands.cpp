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
#include "viewmanager.h"
#include "windowservices.h"
#include <QAction>
#include <QApplication>

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
{
    connectDialogs();
    connectAction(u"editFindNext"_s, [this] { findAgain(true); });
    connectAction(u"editFindPrevious"_s, [this] { findAgain(false); });
}

void FindCommands::connectDialogs()
{
    connect(m_findDialog, &FindDialog::find, this,
            [this](const QString &, bool, bool, bool forward) { findFromDialog(forward); });
    connect(m_findDialog, &FindDialog::patternChanged, this, qOverload<>(&FindCommands::refreshMarks));
    connect(m_replaceDialog, &ReplaceDialog::patternChanged, this, qOverload<>(&FindCommands::refreshMarks));
    connect(m_replaceDialog, &ReplaceDialog::matchSelected, this, [this] {
        keepMatchVisible();
        refreshMarks();
    });
    connect(m_replaceDialog, &ReplaceDialog::replaced, this, [this](int count) {
        const QString outcome =
            count == 1 ? tr("1 occurrence has been replaced.") : tr("%1 occurrences have been replaced.").arg(count);
        m_window.showMessage(outcome);
        refreshMarks(m_window.viewManager()->currentView(), outcome);
    });
    connect(&m_counter, &MatchCounter::counted, this, [this](int matches, bool isMore) {
        showCount(isMore         ? tr("More than %1 matches").arg(matches)
                  : matches == 0 ? tr("No match")
                  : matches == 1 ? tr("1 match")
                                 : tr("%1 matches").arg(matches));
        if (matches == 0 && !m_outcome.isEmpty())
            m_replaceDialog->showCount(m_outcome); // there is none because all have been replaced
    });
    connect(&m_counter, &MatchCounter::givenUp, this, [this] { showCount(tr("The expression takes too long")); });
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
    m_findDialog->setExpressionsAvailable(qobject_cast<TextView *>(view));
    m_findDialog->run();
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
    const QString selected = view->selectedText();
    m_replaceDialog->setView(view);
    // A selection within one line is most likely the text to search for.
    m_replaceDialog->setHasSelection(!selected.isEmpty(), !isOneLine(selected));
    if (isOneLine(selected))
        m_replaceDialog->setFindText(selected);
    m_replaceDialog->run();
}

void FindCommands::viewActivated(View *view)
{
    m_replaceDialog->setView(qobject_cast<TextView *>(view));
    m_findDialog->setExpressionsAvailable(qobject_cast<TextView *>(view));
    refreshMarks(view);
}

// Matches -----------------------------------------------------------------

void FindCommands::refreshMarks()
{
    refreshMarks(m_window.viewManager()->currentView());
}

/// Marks and counts the matches of the dialog that is open, in the view that is in front.
void FindCommands::refreshMarks(View *current, const QString &outcome)
{
    auto *view = qobject_cast<TextView *>(current);
    if (m_marked && m_marked != view)
        m_marked->markMatches(nullptr);
    m_counter.stop();
    m_outcome = outcome;
    showCount({});
    const bool isOpen = m_findDialog->isVisible() || m_replaceDialog->isVisible();
    m_marked = isOpen ? view : nullptr;
    if (!view)
        return tellMissingText(current);
    if (!isOpen) {
        view->markMatches(nullptr);
        return;
    }
    const TextPattern pattern = m_replaceDialog->isVisible() ? m_replaceDialog->pattern() : m_findDialog->pattern();
    view->markMatches(std::make_shared<TextPattern>(pattern));
    if (!pattern.error().isEmpty())
        showCount(tr("Error in the expression: %1").arg(pattern.error()));
    else if (pattern.canMatch())
        m_counter.start(view->textDocument()->rawText(), pattern);
}

/// The dialogs stay open when the text is closed, and their buttons have no effect then.
void FindCommands::tellMissingText(View *current)
{
    m_replaceDialog->showCount(tr("The window in front has no text that can be changed"));
    if (!viewInterface<ITextNavigation>(current))
        m_findDialog->showCount(tr("The window in front has no text to search in"));
}

void FindCommands::showCount(const QString &text)
{
    m_findDialog->showCount(text);
    m_replaceDialog->showCount((m_outcome + u' ' + text).trimmed());
}

/// A dialog that covers the match is moved.
void FindCommands::keepMatchVisible()
{
    const auto *view = qobject_cast<TextView *>(m_window.viewManager()->currentView());
    if (!view)
        return;
    for (QDialog *dialog : std::initializer_list<QDialog *>{m_findDialog, m_replaceDialog}) {
        if (dialog->isVisible())
            placeBeside(dialog, view->selectionOnScreen());
    }
}
