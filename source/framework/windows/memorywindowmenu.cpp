#include "memoryedit.h"
#include "memorylayout.h"
#include "memorywindow.h"
#include <array>
#include <QAction>
#include <QActionGroup>
#include <QMenu>

using namespace Qt::StringLiterals;

// The context menu of a memory window: the widths of words.

void MemoryWindow::showPopup(QPoint position)
{
    QMenu *menu = createPopupMenu();
    if (menu->isEmpty())
        return delete menu;
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(m_edit->viewport()->mapToGlobal(position));
}

QMenu *MemoryWindow::createPopupMenu()
{
    struct Item
    {
        QString text;
        int width;
        void (MemoryWindow::*select)();
    };
    const std::array<Item, 4> items{{{tr("&Byte View"), 1, &MemoryWindow::selectByteView},
                                     {tr("16-bit Word View"), 2, &MemoryWindow::selectWord16View},
                                     {tr("24-bit Word View"), 3, &MemoryWindow::selectWord24View},
                                     {tr("32-bit Word View"), 4, &MemoryWindow::selectWord32View}}};
    auto *menu = new QMenu(this);
    menu->setObjectName(u"memoryMenu"_s);
    auto *group = new QActionGroup(menu);
    for (const Item &item : items) {
        if (m_regionIndex < 0 || !supportsWidth(m_region, item.width))
            continue;
        QAction *action = menu->addAction(item.text, this, item.select);
        action->setCheckable(true);
        action->setChecked(item.width == m_width);
        group->addAction(action);
    }
    return menu;
}
