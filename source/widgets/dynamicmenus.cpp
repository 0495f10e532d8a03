#include "dynamicmenus.h"
#include <QDir>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
void insertEntry(PopupMenu *menu, int id, const MenuEntry &entry, const PopupMenu::Activated &activated, int index = -1)
{
    QAction *item = menu->insertItem(entry.text, id, activated, index);
    item->setEnabled(entry.enabled);
    item->setWhatsThis(entry.whatsThis);
    item->setCheckable(entry.checked.has_value());
    item->setChecked(entry.checked.value_or(false));
}

void appendEntries(PopupMenu *menu, const QList<MenuEntry> &entries, const PopupMenu::Activated &activated,
                   int firstId = 0)
{
    for (int i = 0; i < entries.size(); ++i)
        insertEntry(menu, firstId + i, entries[i], activated);
}

bool endsWithSeparator(const PopupMenu *menu)
{
    return !menu->isEmpty() && menu->actions().constLast()->text().isEmpty();
}
} // namespace

namespace DynamicMenus {

QString withoutMnemonics(QString text)
{
    return text.replace(u'&', u"&&"_s);
}

QString numberedText(int index, const QString &name)
{
    return u'&' + QString::number(index + 1) + u' ' + withoutMnemonics(name);
}

QString objectName(const QString &prefix, QString text)
{
    static const QRegularExpression others(u"[^\\w]"_s, QRegularExpression::UseUnicodePropertiesOption);
    return prefix + text.replace(others, u"_"_s);
}

QString commandText(const QString &text, const QString &project, int projectCount)
{
    return projectCount > 1 ? text + u" ("_s + withoutMnemonics(project) + u')' : text;
}

void fillRecentList(PopupMenu *menu, const QStringList &paths, bool enabled, const Activated &activated)
{
    if (!menu)
        return;
    menu->clear();
    for (int i = 0; i < paths.size(); ++i)
        insertEntry(menu, i, {.text = numberedText(i, QDir::toNativeSeparators(paths[i])), .enabled = enabled},
                    activated);
}

void fillWindowMenu(PopupMenu *menu, QList<MenuEntry> views, const Activated &activated)
{
    for (int i = 0; i < views.size(); ++i)
        views[i].text = numberedText(i, views[i].text);
    fillAtEnd(menu, views, activated);
}

void fillToolsMenu(PopupMenu *menu, const QStringList &tools, const Activated &activated)
{
    if (!menu)
        return;
    if (menu->removeItemsWithId())
        menu->removeItemAt(0);
    for (int i = 0; i < tools.size(); ++i)
        insertEntry(menu, i, {.text = numberedText(i, tools[i])}, activated, i);
    if (!tools.isEmpty())
        menu->insertSeparatorAt(int(tools.size()));
}

void fillAtEnd(PopupMenu *menu, const QList<MenuEntry> &entries, const Activated &activated)
{
    if (!menu)
        return;
    if (menu->removeItemsWithId())
        menu->removeLastItem();
    if (!entries.isEmpty())
        menu->insertSeparatorAt();
    appendEntries(menu, entries, activated);
}

void fillGroupsAtEnd(PopupMenu *menu, const QList<QList<MenuEntry>> &groups, const Activated &activated)
{
    if (!menu)
        return;
    menu->removeItemsWithId();
    while (endsWithSeparator(menu))
        menu->removeLastItem();
    int id = 0;
    for (const QList<MenuEntry> &group : groups) {
        if (!group.isEmpty())
            menu->insertSeparatorAt();
        appendEntries(menu, group, activated, id);
        id += int(group.size());
    }
}

void fillPlain(PopupMenu *menu, const QList<MenuEntry> &entries, const Activated &activated)
{
    if (!menu)
        return;
    menu->removeItemsWithId();
    appendEntries(menu, entries, activated);
}

} // namespace DynamicMenus
