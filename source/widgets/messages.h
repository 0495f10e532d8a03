#pragma once
#include <QMessageBox>

/// The caption of every message of the program, whatever the window's title says.
[[nodiscard]] QString messageCaption();

/// Shows @p text with @p buttons in the given order, the first being the default, and returns the one pressed.
/// Escape, and the end of the box without a button, stand for Cancel, No or Ok, whichever is there first, or else for
/// the last one.
QMessageBox::StandardButton showMessage(QMessageBox::Icon icon, QWidget *parent, const QString &text,
                                        const QList<QMessageBox::StandardButton> &buttons = {QMessageBox::Ok},
                                        const QString &caption = messageCaption());
QMessageBox::StandardButton showInformation(QWidget *parent, const QString &text,
                                            const QList<QMessageBox::StandardButton> &buttons = {QMessageBox::Ok},
                                            const QString &caption = messageCaption());
QMessageBox::StandardButton showWarning(QWidget *parent, const QString &text,
                                        const QList<QMessageBox::StandardButton> &buttons = {QMessageBox::Ok});
