#pragma once
#include "debugqueries.h"
#include <functional>
#include <QObject>
#include <QPointer>
#include <QRect>
class Activity;
class QHelpEvent;
class QTextCursor;
class QWidget;
class TextViewEdit;

/// Shows the value of the expression under the mouse pointer, or on command at the cursor, in editors while the program
/// is paused. The selected text is such an expression as well.
class ValueToolTips : public QObject
{
    Q_OBJECT
public:
    /// @p activity outlives this object, which filters the events of the whole program.
    explicit ValueToolTips(Activity &activity, QObject *parent = nullptr);

    /// The value of the selected text, or of the expression at the cursor, of the editor with the focus; or why there
    /// is none. In a list with the focus it is the tool tip of the current cell.
    void showAtCursor();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool requestAt(TextViewEdit *edit, const QHelpEvent &event);
    void showAt(TextViewEdit *edit, const QTextCursor &cursor, const QPoint &position);
    bool request(const QString &expression, const std::function<void(const QString &)> &failed);
    void requestMembers(const QString &head, const QString &expression);
    void show(const QString &text) const;

    Activity &m_activity;
    DebugQueries m_queries;
    StackPlace m_place;
    QPointer<QWidget> m_area; ///< the viewport below the pointer
    QPoint m_position;        ///< on the screen
    QRect m_expressionRect;   ///< in the viewport; the tool tip stays while the pointer is in it
};
