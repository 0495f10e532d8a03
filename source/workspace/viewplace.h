#pragma once
#include <QList>
class View;

/// Where the user is in one pane of a text view.
struct PanePlace
{
    int height = 0; ///< in pixels
    int line = 0;   ///< of the cursor, counted from 0
    int column = 0; ///< likewise
    int top = 0;    ///< the first line on screen, counted from 0
    int left = 0;   ///< what is scrolled out on the left, in pixels
    int anchor = 0; ///< the other end of the selection, in characters from the cursor

    bool operator==(const PanePlace &) const = default;
};

/// The panes of a view, with the place of each.
struct ViewPlace
{
    QList<PanePlace> panes; ///< empty for a view that is not a text view
    int activePane = 0;     ///< the one that had the focus last

    bool operator==(const ViewPlace &) const = default;
};

[[nodiscard]] ViewPlace placeOf(const View *view);
/// Gives @p view the panes of @p place. Lines and columns that its text does not have become the nearest ones.
void restorePlace(View *view, const ViewPlace &place);
