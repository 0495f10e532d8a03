#pragma once
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeWidget>

class ListView;
class QLineEdit;

/// A row of a ListView. Rows never sort themselves: each is put behind a given one, or first for null.
class ListViewItem : public QTreeWidgetItem
{
public:
    ListViewItem(ListView *list, ListViewItem *after, const QString &text = {}, int rtti = Type);
    ListViewItem(ListViewItem *parent, ListViewItem *after, const QString &text = {}, int rtti = Type);

    [[nodiscard]] int rtti() const { return type(); } ///< What kind of row this is, for those who made it.
    [[nodiscard]] ListView *listView() const;
    [[nodiscard]] ListViewItem *parent() const; ///< Null at the top level.
    [[nodiscard]] ListViewItem *firstChild() const;
    /// Searches the parent's rows; a loop over many siblings counts them by child() instead.
    [[nodiscard]] ListViewItem *nextSibling() const;
    [[nodiscard]] ListViewItem *itemAbove() const; ///< The row above on the screen, null if this is the first.
    [[nodiscard]] ListViewItem *itemBelow() const;

    void insertItem(ListViewItem *item, ListViewItem *after);
    void takeItem(ListViewItem *item); ///< Out of the list, unharmed: who takes it, owns it.

    [[nodiscard]] bool isOpen() const { return isExpanded(); }
    void setOpen(bool open) { setExpanded(open); }

    void setRenameEnabled(int column, bool enabled); ///< Columns 0 to 31.
    [[nodiscard]] bool isRenameEnabled(int column) const { return m_renameColumns >> column & 1; }
    void startRename(int column);

    virtual void openChanged(bool open); ///< The user or the program has opened or closed the row.
    virtual void initStyleOption(QStyleOptionViewItem *option, int column) const;
    virtual void paintCell(QPainter *painter, const QStyleOptionViewItem &option, int column) const;
    [[nodiscard]] virtual bool paintsBranches() const { return true; } ///< False leaves its branch column blank.

private:
    quint32 m_renameColumns = 0;
};

/// A tree or list whose rows are ListViewItems of equal height, with cells that are renamed in place. F2 renames the
/// current cell; the menu key and Shift+F10 ask for the context menu of the current row.
class ListView : public QTreeWidget
{
    Q_OBJECT
public:
    /// What becomes of the typed text when something else takes the focus.
    enum RenameAction { Accept, Reject };

    explicit ListView(QWidget *parent = nullptr);
    ~ListView() override;

    [[nodiscard]] ListViewItem *firstChild() const;
    [[nodiscard]] ListViewItem *currentItem() const;
    [[nodiscard]] ListViewItem *itemAt(const QPoint &position) const; ///< In coordinates of the viewport.
    [[nodiscard]] ListViewItem *item(const QModelIndex &index) const;
    [[nodiscard]] QRect itemRect(const ListViewItem *item) const; ///< Empty if the row is not on the screen.
    void insertItem(ListViewItem *item, ListViewItem *after);
    void takeItem(ListViewItem *item);
    void ensureItemVisible(ListViewItem *item); ///< Opens the rows above it, too.

    [[nodiscard]] ListViewItem *firstSelectedItem() const; ///< From the top of the tree, null if there is none.
    [[nodiscard]] QList<ListViewItem *> selectedItemsInOrder() const;

    void setItemMargin(int margin); ///< In pixels, above and below the text of each row.
    [[nodiscard]] int itemMargin() const { return m_itemMargin; }

    void setDefaultRenameAction(RenameAction action) { m_defaultRenameAction = action; }
    [[nodiscard]] RenameAction defaultRenameAction() const { return m_defaultRenameAction; }
    /// Edits a cell in place, if it may be renamed. The row becomes the current one.
    void startRename(ListViewItem *item, int column);
    void endRename(RenameAction action);         ///< Nothing happens if no cell is being renamed.
    [[nodiscard]] QLineEdit *renameEdit() const; ///< Null if no cell is being renamed.

    void keyboardSearch(const QString &text) override;

Q_SIGNALS:
    void itemRenamed(ListViewItem *item, int column, const QString &text); ///< The cell has the text already.
    void contextMenuRequested(ListViewItem *item, const QPoint &globalPosition, int column); ///< Null below the rows.
    void returnPressed(ListViewItem *item);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;
    void drawBranches(QPainter *painter, const QRect &rect, const QModelIndex &index) const override;

private:
    friend class ListViewDelegate;
    void requestContextMenuOfCurrentItem();
    void setEditable(ListViewItem *item, bool editable);

    int m_itemMargin = 0;
    RenameAction m_defaultRenameAction = Reject;
    QPersistentModelIndex m_renamed; ///< the cell under m_renameEdit
    QPointer<QWidget> m_renameEdit;  ///< outlives a row that is deleted by a little
};
