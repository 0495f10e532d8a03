#include "textdocument.h"
#include "textview.h"
#include "textviewedit.h"

namespace {
/// Replaces in a pane, and takes over how many matches that were.
template <typename Work>
bool counted(TextViewEdit *pane, int &count, Work work)
{
    const bool result = work(pane);
    count = pane->replacedCount();
    return result;
}

TextViewEdit *searchPane(const TextView &view)
{
    return view.shownEdits().first();
}
} // namespace

// Find and replace. They act on the first pane that is not collapsed, so that its cursor is the place where the search
// goes on; a replacement in the selection acts on the pane in which the user has selected.

bool TextView::find(const QString &text, bool caseSensitive, bool wholeWord, bool forward, bool fromCursor)
{
    return searchPane(*this)->find(text, caseSensitive, wholeWord, forward, fromCursor);
}

bool TextView::replace(const QString &text, const QString &replacement, bool caseSensitive, bool wholeWord,
                       bool forward, bool fromCursor, bool all)
{
    return counted(searchPane(*this), m_replacedCount, [&](TextViewEdit *pane) {
        return pane->replace(text, replacement, caseSensitive, wholeWord, forward, fromCursor, all);
    });
}

bool TextView::replaceInSelection(const QString &text, const QString &replacement, bool caseSensitive, bool wholeWord)
{
    return counted(m_current, m_replacedCount, [&](TextViewEdit *pane) {
        return pane->replaceInSelection(text, replacement, caseSensitive, wholeWord);
    });
}

bool TextView::find(const TextPattern &pattern, bool forward, bool fromCursor)
{
    return searchPane(*this)->find(pattern, forward, fromCursor);
}

bool TextView::replace(const TextPattern &pattern, const QString &replacement, bool all)
{
    return counted(searchPane(*this), m_replacedCount,
                   [&](TextViewEdit *pane) { return pane->replace(pattern, replacement, all); });
}

bool TextView::replaceInSelection(const TextPattern &pattern, const QString &replacement)
{
    return counted(m_current, m_replacedCount,
                   [&](TextViewEdit *pane) { return pane->replaceInSelection(pattern, replacement); });
}

QRect TextView::selectionOnScreen() const
{
    return searchPane(*this)->selectionOnScreen();
}

void TextView::markMatches(const std::shared_ptr<const TextPattern> &pattern)
{
    m_marked = pattern;
    for (TextViewEdit *edit : std::as_const(m_edits))
        edit->background().markMatches(pattern);
}
