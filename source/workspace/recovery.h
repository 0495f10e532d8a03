#pragma once
#include <QString>
class QWidget;
class Workspace;

/// Offers the user, above @p parent, the unsaved texts in @p directory of programs that have ended. Yes opens each as a
/// modified document, in which undo restores the contents of the file; No deletes them; Cancel keeps them for the next
/// time. Asks nothing if there are none. Returns the number of recovered texts.
int offerRecovery(Workspace &workspace, const QString &directory, QWidget *parent);
