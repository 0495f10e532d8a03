#pragma once
#include "listview.h"

/// The list of a watch window: an expression and its value in each row. Text can be dropped on it.
class WatchListView : public ListView
{
    Q_OBJECT
public:
    explicit WatchListView(QWidget *parent = nullptr);

Q_SIGNALS:
    void drop(const QString &text);
    void editRequested(ListViewItem *item, int column); ///< By a key.
    void removeRequested();                             ///< By a key.

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dragMoveEvent(QDragMoveEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
};
