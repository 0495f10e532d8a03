#pragma once
class QRect;
class QWidget;

/// Moves the window @p dialog below or above @p area of the screen if it covers that, and lets it alone otherwise.
void placeBeside(QWidget *dialog, const QRect &area);
