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

/// The rebuilding of the menus whose contents change. Each runs when its menu is about to open and never in between.
/// Items count from 0, and choosing one calls `activated` with its number. A null menu, one that the UI file does not
/// have, is passed over.
namespace DynamicMenus {
using Activated = PopupMenu::Activated;

/// "&1 name", "&2 name", ... as lists of files, windows and tools number their entries; @p index counts from 0.
[[nodiscard]] QString numberedText(int index, const QString &name);

/// What the menu says of a command that a plug-in adds for @p project: with several projects in the workspace it bears
/// the project's name.
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
/// groups. Every separator that stood at the end before goes first, also one of the UI file.
void fillGroupsAtEnd(PopupMenu *menu, const QList<QList<MenuEntry>> &groups, const Activated &activated);
/// The entries stand at the end with no separator.
void fillPlain(PopupMenu *menu, const QList<MenuEntry> &entries, const Activated &activated);
} // namespace DynamicMenus
