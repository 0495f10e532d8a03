#pragma once
class QRect;
class QWidget;

/// Moves the window @p dialog below or above @p area of the screen if it covers that, and does not move it otherwise.
void placeBeside(QWidget *dialog, const QRect &area);
