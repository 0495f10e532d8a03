#pragma once
#include <QMessageBox>

/// The caption of every message of the program, independent of the window title.
[[nodiscard]] QString messageCaption();

/// The window that a message without a place of its own belongs to: the active one, or while the program has none, for
/// example between the end of a dialog and the return of the focus, its visible main window. Null without both.
[[nodiscard]] QWidget *messageParent();

/// Shows @p text with @p buttons in the given order and returns the one that was pressed. The default is the first
/// unless @p preferred names another. If the box is closed by Escape or without a button, the result is the first of
/// Cancel, No and Ok that is among the buttons, otherwise the last button.
QMessageBox::StandardButton showMessage(QMessageBox::Icon icon, QWidget *parent, const QString &text,
                                        const QList<QMessageBox::StandardButton> &buttons = {QMessageBox::Ok},
                                        const QString &caption = messageCaption(),
                                        QMessageBox::StandardButton preferred = QMessageBox::NoButton);
QMessageBox::StandardButton showInformation(QWidget *parent, const QString &text,
                                            const QList<QMessageBox::StandardButton> &buttons = {QMessageBox::Ok},
                                            const QString &caption = messageCaption());
QMessageBox::StandardButton showWarning(QWidget *parent, const QString &text,
                                        const QList<QMessageBox::StandardButton> &buttons = {QMessageBox::Ok});
