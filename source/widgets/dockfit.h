#pragma once
#include <functional>
class QDockWidget;
class QMainWindow;

/// Makes tabs of dock windows that stand beside each other until the main window has room for all of them. It would
/// grow otherwise, beyond the edges of the screen too. Those of the edge with the least room are joined first, and @p
/// shown, if it is one of them, before others.
void fitDocks(QMainWindow &window, QDockWidget *shown = nullptr);

/// From now on the main window keeps its size when the contents of its dock windows need more room, as when a debugging
/// session starts: it makes tabs then. It grows only if there is nothing left to join. When there is room again, as in
/// a larger window, the dock windows return to the places that the user gave them.
void keepDocksFitting(QMainWindow &window);

/// Runs @p use, as one that stores the layout, while all dock windows have the places that the user gave them.
void withOwnDockLayout(QMainWindow &window, const std::function<void()> &use);

/// The present layout is another one that the user made, as one that was stored.
void takeDockLayout(QMainWindow &window);
