#pragma once
#include <QString>
class QWidget;
class Workspace;

/// Offers the user, above @p parent, the texts that programs left in @p directory when they ended without saving them.
/// Yes opens each as a modified document, from which undo leads back to the file as it is; No throws them away; Cancel
/// leaves them for the next time. Asks nothing if there are none. Returns how many were recovered.
int offerRecovery(Workspace &workspace, const QString &directory, QWidget *parent);
