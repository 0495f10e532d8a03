#pragma once
#include "popupmenu.h"
#include <optional>
#include <QStringList>

/// One item of a menu whose contents change.
struct MenuEntry
{
    QString text;
    std::optional<bool> checked = {}; ///< absent for an item that has no check mark at all
    bool enabled = true;
    QString whatsThis = {};
};

/// Functions that fill the menus whose contents change. Each is called when its menu is about to open. Items count from
/// 0, and choosing one calls `activated` with its number. Nothing happens for a null menu, one that the UI file does
/// not have.
namespace DynamicMenus {
using Activated = PopupMenu::Activated;

/// @p text as an item's text that shows every "&" of it.
[[nodiscard]] QString withoutMnemonics(QString text);

/// "&1 name", "&2 name", ... as lists of files, windows and tools number their entries; @p index counts from 0.
[[nodiscard]] QString numberedText(int index, const QString &name);

/// The name of an action for an item of that text: settings and test drivers know it by that.
[[nodiscard]] QString objectName(const QString &prefix, QString text);

/// The menu text of a command that a plug-in adds for @p project. It includes the project's name if the workspace has
/// several projects.
[[nodiscard]] QString commandText(const QString &text, const QString &project, int projectCount);

/// Clears the whole menu, then inserts the paths, numbered.
void fillRecentList(PopupMenu *menu, const QStringList &paths, bool enabled, const Activated &activated);
/// The entries, numbered, stand at the end behind a separator.
void fillWindowMenu(PopupMenu *menu, QList<MenuEntry> views, const Activated &activated);
/// The entries, numbered, stand at the top before a separator.
void fillToolsMenu(PopupMenu *menu, const QStringList &tools, const Activated &activated);
/// The entries stand at the end behind a separator.
void fillAtEnd(PopupMenu *menu, const QList<MenuEntry> &entries, const Activated &activated);
/// The groups stand at the end, each behind a separator of its own unless it is empty; items count through all
/// groups. Before that, all separators at the end of the menu are removed, also those of the UI file.
void fillGroupsAtEnd(PopupMenu *menu, const QList<QList<MenuEntry>> &groups, const Activated &activated);
/// The entries stand at the end with no separator.
void fillPlain(PopupMenu *menu, const QList<MenuEntry> &entries, const Activated &activated);
} // namespace DynamicMenus
