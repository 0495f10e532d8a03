#pragma once
#include <QString>
class QWidget;
class Workspace;

/// Offers the unsaved texts that an earlier run left in @p directory, if there are any: one question for all of them.
/// What the user takes is opened and modified; what the user does not want is removed; what cannot be recovered, or is
/// put off, is offered again at the next start.
void offerRecovery(QWidget *window, Workspace &workspace, const QString &directory);
