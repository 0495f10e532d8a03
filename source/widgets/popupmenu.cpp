#include "popupmenu.h"

namespace {
constexpr char ItemId[] = "itemId";

int idOf(const QAction *action)
{
    const QVariant id = action->property(ItemId);
    return id.isValid() ? id.toInt() : PopupMenu::NoId;
}
} // namespace

PopupMenu::PopupMenu(QWidget *parent) : QMenu(parent)
{
    setToolTipsVisible(false);
}

QAction *PopupMenu::insertItem(const QString &text, int id, Activated activated, int index)
{
    auto *action = new QAction(text, this);
    action->setProperty(ItemId, id);
    connect(action, &QAction::triggered, this, [activated = std::move(activated), id] { activated(id); });
    insertAction(itemAt(index), action);
    return action;
}

void PopupMenu::insertSeparatorAt(int index)
{
    insertSeparator(itemAt(index));
}

int PopupMenu::idAt(int index) const
{
    const QAction *action = itemAt(index);
    return action ? idOf(action) : NoId;
}

QAction *PopupMenu::item(int id) const
{
    const QList<QAction *> items = actions();
    const auto found = std::ranges::find(items, id, idOf);
    return id > NoId && found != items.end() ? *found : nullptr;
}

void PopupMenu::removeItem(int id)
{
    if (QAction *action = item(id))
        removeItemAt(int(actions().indexOf(action)));
}

bool PopupMenu::removeItemsWithId()
{
    bool removed = false;
    for (int i = int(actions().size()) - 1; i >= 0; --i) {
        if (idAt(i) != NoId) {
            removeItemAt(i);
            removed = true;
        }
    }
    return removed;
}

void PopupMenu::removeItemAt(int index)
{
    QAction *action = itemAt(index);
    if (!action)
        return;
    removeAction(action);
    if (action->parent() != this)
        return;                                           // actions of the UI file belong to the window
    for (QObject *object : action->associatedObjects()) { // whose command it may be as well
        if (auto *widget = qobject_cast<QWidget *>(object))
            widget->removeAction(action);
    }
    action->deleteLater(); // its command may be rebuilding this menu
}

void PopupMenu::removeLastItem()
{
    removeItemAt(int(actions().size()) - 1);
}

QAction *PopupMenu::itemAt(int index) const
{
    const QList<QAction *> items = actions();
    return index >= 0 && index < items.size() ? items[index] : nullptr;
}
