#pragma once
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeWidget>

class ListView;
class QLineEdit;

/// A row of a ListView. Rows are not sorted by themselves: each is inserted after a given row, or first for null.
class ListViewItem : public QTreeWidgetItem
{
public:
    ListViewItem(ListView *list, ListViewItem *after, const QString &text = {}, int rtti = Type);
    ListViewItem(ListViewItem *parent, ListViewItem *after, const QString &text = {}, int rtti = Type);

    [[nodiscard]] int rtti() const { return type(); } ///< The kind of the row, defined by its creator.
    [[nodiscard]] ListView *listView() const;
    [[nodiscard]] ListViewItem *parent() const; ///< Null at the top level.
    [[nodiscard]] ListViewItem *firstChild() const;
    /// Slow, because it searches the rows of the parent; use child() in loops over many siblings.
    [[nodiscard]] ListViewItem *nextSibling() const;
    [[nodiscard]] ListViewItem *itemAbove() const; ///< The row above on the screen, null if this is the first.
    [[nodiscard]] ListViewItem *itemBelow() const;

    void insertItem(ListViewItem *item, ListViewItem *after);
    void takeItem(ListViewItem *item); ///< Removes the row without deleting it; the caller owns it.

    [[nodiscard]] bool isOpen() const { return isExpanded(); }
    void setOpen(bool open) { setExpanded(open); }

    void setRenameEnabled(int column, bool enabled); ///< Columns 0 to 31.
    [[nodiscard]] bool isRenameEnabled(int column) const { return m_renameColumns >> column & 1; }
    void startRename(int column);

    virtual void openChanged(bool open); ///< The user or the program has opened or closed the row.
    virtual void initStyleOption(QStyleOptionViewItem *option, int column) const;
    virtual void paintCell(QPainter *painter, const QStyleOptionViewItem &option, int column) const;
    /// False leaves the space before the rows below this one blank. Rows that can be opened keep their arrow.
    [[nodiscard]] virtual bool paintsBranches() const { return true; }

private:
    quint32 m_renameColumns = 0;
};

/// A tree or list whose rows are ListViewItems of equal height, with cells that can be renamed in place. F2 renames the
/// current cell; the menu key and Shift+F10 request the context menu of the current row.
class ListView : public QTreeWidget
{
    Q_OBJECT
public:
    /// What happens to the typed text when another widget takes the focus.
    enum RenameAction { Accept, Reject };

    explicit ListView(QWidget *parent = nullptr);
    ~ListView() override;

    [[nodiscard]] ListViewItem *firstChild() const;
    [[nodiscard]] ListViewItem *currentItem() const;
    [[nodiscard]] ListViewItem *itemAt(const QPoint &position) const; ///< in viewport coordinates
    [[nodiscard]] ListViewItem *item(const QModelIndex &index) const;
    [[nodiscard]] QRect itemRect(const ListViewItem *item) const; ///< empty if the row is not visible
    void insertItem(ListViewItem *item, ListViewItem *after);
    void takeItem(ListViewItem *item);
    void ensureItemVisible(ListViewItem *item); ///< also opens the rows above it

    [[nodiscard]] ListViewItem *firstSelectedItem() const; ///< the topmost one; null if there is none
    [[nodiscard]] QList<ListViewItem *> selectedItemsInOrder() const;

    void setItemMargin(int margin); ///< in pixels, above and below the text of each row
    [[nodiscard]] int itemMargin() const { return m_itemMargin; }

    void setDefaultRenameAction(RenameAction action) { m_defaultRenameAction = action; }
    [[nodiscard]] RenameAction defaultRenameAction() const { return m_defaultRenameAction; }
    /// Edits a cell in place if it may be renamed. The row becomes the current one.
    void startRename(ListViewItem *item, int column);
    void endRename(RenameAction action);         ///< Does nothing if no cell is being renamed.
    [[nodiscard]] QLineEdit *renameEdit() const; ///< Null if no cell is being renamed.

    void keyboardSearch(const QString &text) override;

Q_SIGNALS:
    void itemRenamed(ListViewItem *item, int column, const QString &text); ///< The cell already has the text.
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
    QPointer<QWidget> m_renameEdit;  ///< may outlive a row that is deleted
};
