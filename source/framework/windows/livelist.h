#pragma once
#include "listview.h"
class LiveRecorder;
struct LiveVariable;

/// The variables of a recorder, a row each: expression, processor and value. A check mark selects those that are
/// plotted, and the picture is a piece of their curve. Delete removes a variable.
class LiveList : public ListView
{
    Q_OBJECT
public:
    /// @p recorder outlives this list.
    explicit LiveList(LiveRecorder &recorder, QWidget *parent = nullptr);

    void showVariables(); ///< The list of variables has changed.
    void showValues();
    void removeCurrent();
    [[nodiscard]] QString text() const; ///< "expression|processor|value", a line each, for test drivers.

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    enum Column { ExpressionColumn, ProcessorColumn, ValueColumn, ColumnCount };

    void showVariable(ListViewItem *item, const LiveVariable &variable) const;
    void showValue(ListViewItem *item, const LiveVariable &variable) const;
    void showMenu(ListViewItem *item, const QPoint &position);
    [[nodiscard]] QIcon curvePicture(int style) const;

    LiveRecorder &m_recorder;
};
