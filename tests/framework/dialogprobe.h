#pragma once
#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QTest>

// Functions that read a dialog and operate it like a user.

/// The texts of the widgets of a class, in the order of creation.
template <typename T>
QStringList textsOf(const QDialog &dialog)
{
    QStringList texts;
    for (const T *widget : dialog.findChildren<T *>())
        texts << widget->text();
    return texts;
}

inline QComboBox *combo(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QComboBox *>(QString::fromLatin1(name));
}

inline QAbstractButton *button(const QDialog &dialog, const char *name)
{
    return dialog.findChild<QAbstractButton *>(QString::fromLatin1(name));
}

inline QStringList entries(const QComboBox *combo)
{
    QStringList texts;
    for (int i = 0; i < combo->count(); ++i)
        texts << combo->itemText(i);
    return texts;
}

inline void showActive(QDialog &dialog)
{
    dialog.show();
    dialog.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&dialog));
}

/// The names of the widgets in the order of Tab, starting at the one with the focus.
inline QStringList tabOrder(QDialog &dialog)
{
    QStringList names;
    for (;;) {
        const QString name = QApplication::focusWidget()->objectName();
        if (names.contains(name))
            return names;
        names << name;
        QTest::keyClick(&dialog, Qt::Key_Tab);
    }
}

/// Whether every text of the dialog has the space that it needs.
inline bool showsAllTexts(const QDialog &dialog)
{
    for (const QWidget *widget : dialog.findChildren<QWidget *>()) {
        const bool hasText = qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QLabel *>(widget)
                             || qobject_cast<const QGroupBox *>(widget);
        if (hasText && widget->isVisible()
            && (widget->width() < widget->minimumSizeHint().width() || !dialog.rect().contains(widget->geometry())))
            return false;
    }
    return true;
}
