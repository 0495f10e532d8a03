#pragma once
#include "mainwindow.h"
#include <QAction>
#include <QMenu>
#include <QPointer>
#include <QTest>
#include <QTreeWidget>

// What a user does with the main window while a plug-in misbehaves. Objects may be deleted by each step.

inline QList<QPointer<QMenu>> menus(const MainWindow &window)
{
    const QList<QMenu *> menus = window.findChildren<QMenu *>();
    return {menus.cbegin(), menus.cend()};
}

/// Opens a menu, and chooses the plug-in's command in it.
inline void useMenu(const QPointer<QMenu> &menu)
{
    if (menu)
        Q_EMIT menu->aboutToShow();
    const QList<QAction *> actions = menu ? menu->actions() : QList<QAction *>();
    for (const QPointer<QAction> action : actions) {
        if (action && action->text() == QStringLiteral("Command"))
            action->trigger();
    }
}

/// Opens rows of the debugger's lists, and chooses another function.
inline void useRows(const MainWindow &window)
{
    for (const char *name : {"callStack", "variables"}) {
        const QPointer<QTreeWidget> list = window.findChild<QTreeWidget *>(QString::fromLatin1(name));
        if (!list || !list->topLevelItem(0))
            continue;
        list->topLevelItem(0)->setExpanded(true);
        QCoreApplication::processEvents();
        if (list && list->topLevelItem(0))
            list->setCurrentItem(list->topLevelItem(0)->child(0));
        if (list)
            QTest::keyClick(list, Qt::Key_Return);
        QCoreApplication::processEvents();
    }
}
