#pragma once
class QDockWidget;
class QMainWindow;

/// Makes tabs of dock windows that stand beside each other until the main window has room for all of them. It would
/// grow otherwise, beyond the edges of the screen too. Those of the edge with the least room are joined first, and @p
/// shown, if it is one of them, before others.
void fitDocks(QMainWindow &window, QDockWidget *shown = nullptr);

/// From now on the main window keeps its size when the contents of its dock windows need more room, as when a debugging
/// session starts: it makes tabs then. It grows only if there is nothing left to join.
void keepDocksFitting(QMainWindow &window);
