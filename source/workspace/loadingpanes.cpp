#include "loadingpanes.h"
#include "textdocument.h"
#include "textloading.h"
#include "textview.h"
#include "textviewedit.h"
#include <algorithm>
#include <QKeyEvent>
#include <QScrollBar>
#include <utility>

namespace {
int linesOnScreen(const TextViewEdit &pane)
{
    return pane.viewport()->height() / std::max(1, pane.textDocument()->lineSpacing());
}
} // namespace

LoadingPanes::LoadingPanes(TextView *view) : QObject(view), m_view(view), m_loading(view->textDocument()->loading())
{
    connect(m_loading, &TextLoading::aboutToGrow, this, &LoadingPanes::hold);
    connect(m_loading, &TextLoading::grown, this, &LoadingPanes::release);
    connect(m_loading, &TextLoading::activeChanged, this, [this] {
        for (TextViewEdit *pane : m_view->edits())
            setReadOnly(pane);
    });
}

void LoadingPanes::add(TextViewEdit *pane)
{
    pane->installEventFilter(this);
    if (m_loading->isActive())
        setReadOnly(pane);
}

/// The cursor stays visible and movable, unlike in other read-only texts.
void LoadingPanes::setReadOnly(TextViewEdit *pane) const
{
    pane->setTextInteractionFlags(m_loading->isActive() ? Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard
                                                        : Qt::TextEditorInteraction);
}

/// A cursor at the end would move with it, unless all is selected; and panes repaint themselves at every change.
void LoadingPanes::hold()
{
    m_held.clear();
    for (TextViewEdit *pane : m_view->edits()) {
        const QTextCursor cursor = pane->textCursor();
        const bool isAtEnd = cursor.selectionEnd() == pane->document()->characterCount() - 1;
        const bool isAll = isAtEnd && cursor.hasSelection() && cursor.selectionStart() == 0;
        const bool isKept = isAtEnd && !isAll;
        const int below = pane->verticalScrollBar()->value() + linesOnScreen(*pane) + 2;
        const bool isStill = pane->viewport()->updatesEnabled() && below < pane->blockCount();
        if (isStill) // not by setUpdatesEnabled(), which repaints all at the end
            pane->viewport()->setAttribute(Qt::WA_UpdatesDisabled);
        m_held.append({pane, isStill, isKept ? cursor.anchor() : -1, cursor.position()});
    }
}

void LoadingPanes::release()
{
    for (const Held &held : std::exchange(m_held, {})) {
        if (!held.pane)
            continue;
        if (held.isStill)
            held.pane->viewport()->setAttribute(Qt::WA_UpdatesDisabled, false);
        if (held.anchor < 0)
            continue;
        QTextCursor cursor = held.pane->textCursor();
        cursor.setPosition(held.anchor);
        cursor.setPosition(held.position, QTextCursor::KeepAnchor);
        const int top = held.pane->verticalScrollBar()->value();
        held.pane->setTextCursor(cursor);
        held.pane->verticalScrollBar()->setValue(top);
    }
}

bool LoadingPanes::eventFilter(QObject *object, QEvent *event)
{
    auto *pane = qobject_cast<TextViewEdit *>(object);
    if (event->type() == QEvent::KeyPress && pane && m_loading->isActive()
        && takesKey(pane, static_cast<QKeyEvent *>(event)))
        return true;
    return QObject::eventFilter(object, event);
}

/// Keys that lead to the end of the text wait for it, and those that would change it do nothing.
bool LoadingPanes::takesKey(TextViewEdit *pane, QKeyEvent *event)
{
    const bool leadsToEnd = event->matches(QKeySequence::MoveToEndOfDocument)
                            || event->matches(QKeySequence::SelectEndOfDocument)
                            || event->matches(QKeySequence::SelectAll);
    if (leadsToEnd) {
        m_loading->finish();
        return false;
    }
    m_loading->loadTo(pane->textCursor().blockNumber() + linesOnScreen(*pane) + 2);
    const auto changingKeys = {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Tab, Qt::Key_Backtab};
    return std::ranges::find(changingKeys, event->key()) != changingKeys.end()
           && !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
}
