#include "viewplace.h"
#include "textdocument.h"
#include "textview.h"
#include "textviewedit.h"
#include <QScrollBar>

namespace {
constexpr int LinesBelow = 500; ///< more than fit on a screen

PanePlace paneOf(const TextViewEdit &edit, int height)
{
    const QTextCursor cursor = edit.textCursor();
    return {height,
            cursor.blockNumber(),
            cursor.positionInBlock(),
            edit.verticalScrollBar()->value(),
            edit.horizontalScrollBar()->value(),
            cursor.anchor() - cursor.position()};
}

void restorePane(TextViewEdit &edit, const PanePlace &pane)
{
    edit.textDocument()->loadTo(qMax(pane.line, pane.top) + LinesBelow); // otherwise it could not be scrolled there
    const QTextBlock block = edit.document()->findBlockByNumber(qMin(pane.line, edit.document()->blockCount() - 1));
    QTextCursor cursor = edit.textCursor();
    const int position = block.position() + qBound(0, pane.column, block.length() - 1);
    cursor.setPosition(qBound(0, position + pane.anchor, edit.document()->characterCount() - 1));
    cursor.setPosition(position, QTextCursor::KeepAnchor);
    edit.setTextCursor(cursor);
    edit.verticalScrollBar()->setValue(pane.top);
    edit.horizontalScrollBar()->setValue(pane.left);
}
} // namespace

ViewPlace placeOf(const View *view)
{
    ViewPlace place;
    if (const auto *text = qobject_cast<const TextView *>(view)) {
        const QList<TextViewEdit *> edits = text->shownEdits();
        const QList<int> heights = text->paneHeights();
        for (qsizetype i = 0; i < edits.size(); ++i)
            place.panes.append(paneOf(*edits[i], heights.value(i)));
        place.activePane = int(edits.indexOf(text->currentEdit()));
    }
    return place;
}

void restorePlace(View *view, const ViewPlace &place)
{
    auto *text = qobject_cast<TextView *>(view);
    if (!text || place.panes.isEmpty())
        return;
    QList<int> heights;
    for (const PanePlace &pane : place.panes)
        heights.append(pane.height);
    text->setPaneHeights(heights);
    const QList<TextViewEdit *> edits = text->shownEdits();
    for (qsizetype i = 0; i < qMin(edits.size(), place.panes.size()); ++i)
        restorePane(*edits[i], place.panes[i]);
    if (TextViewEdit *active = edits.value(place.activePane)) {
        text->setCurrentEdit(active);
        active->setFocus(); // when the tab is shown, this pane gets the focus
    }
}
