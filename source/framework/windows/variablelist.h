#pragma once
#include "listview.h"

/// A tree of names, values and types. The names and types take only so much of the width that values can be read.
class VariableList : public ListView
{
    Q_OBJECT
public:
    enum Column { NameColumn, ValueColumn, TypeColumn, ColumnCount };

    explicit VariableList(QWidget *parent = nullptr);

    void editValue(ListViewItem *row); ///< Does nothing if the row's value may not be renamed.

Q_SIGNALS:
    void activated(ListViewItem *row); ///< By a double click or Return, on a row whose value may not be renamed.

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void keepValuesReadable();

    bool m_resizing = false; ///< columns are resized from here
};
