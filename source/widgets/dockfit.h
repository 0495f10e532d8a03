#pragma once
class QDockWidget;
class QMainWindow;

/// Makes tabs of dock windows that stand beside each other until the main window has room for all of them. It would
/// grow otherwise, beyond the edges of the screen too. Those of the edge with the least room are joined first, and @p
/// shown, if it is one of them, before others.
void fitDocks(QMainWindow &window, QDockWidget *shown = nullptr);
