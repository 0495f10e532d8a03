#pragma once
#include "listview.h"
#include <QTimer>

/// The list of a watch window: an expression and its value in each row. Text can be dropped on it. The first column is
/// wide enough for the expressions, up to half of the list, until the user moves its border.
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
    void resizeEvent(QResizeEvent *event) override;

private:
    void connectChanges();
    void fitExpressions();
    [[nodiscard]] int widthOf(const ListViewItem *row) const;

    QTimer m_fitTimer;
    bool m_isFitting = false;
    bool m_isMovedByUser = false; ///< the border between the columns
};
