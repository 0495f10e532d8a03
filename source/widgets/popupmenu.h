#pragma once
#include <functional>
#include <QMenu>

/// A menu in which some items have an id: those that code inserts and removes while the program runs.
///
/// Ids count from 0. Actions of the UI file, and separators, have no id.
class PopupMenu : public QMenu
{
    Q_OBJECT
public:
    using Activated = std::function<void(int)>;
    static constexpr int NoId = -1;

    explicit PopupMenu(QWidget *parent = nullptr);

    /// Inserts an item with the id @p id before position @p index, or at the end for -1. If the user chooses it, @p
    /// activated is called with the id.
    QAction *insertItem(const QString &text, int id, Activated activated, int index = -1);
    /// Inserts a separator before position @p index, or at the end for -1.
    void insertSeparatorAt(int index = -1);

    /// The id of the item at @p index; NoId for an item without an id or a position outside the menu.
    [[nodiscard]] int idAt(int index) const;
    /// The item with the id @p id, null if there is none.
    [[nodiscard]] QAction *item(int id) const;

    void removeItem(int id); ///< Ids that no item has are ignored.
    /// Removes every item that has an id. Returns whether there was one.
    bool removeItemsWithId();
    /// Removes the item at @p index; a position outside the menu is ignored.
    void removeItemAt(int index);
    void removeLastItem();

private:
    [[nodiscard]] QAction *itemAt(int index) const;
};
