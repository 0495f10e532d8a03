#include "valuetooltips.h"
#include "activity.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "expressionat.h"
#include "ivariables.h"
#include "textviewedit.h"
#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QToolTip>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
constexpr int MostMembers = 12;
constexpr qsizetype LongestValue = 500; ///< in characters
constexpr qsizetype LongestSelection = 200;

QString lineOf(const QString &name, const QString &value)
{
    const QString shown = value.left(LongestValue).simplified();
    return u"%1 = %2"_s.arg(name, value.size() > LongestValue ? shown + u'…' : shown);
}

/// The selected text if the cursor is in it, else the expression there.
QString expressionOf(const TextViewEdit &edit, const QTextCursor &cursor)
{
    const QTextCursor selected = edit.textCursor();
    const bool inside = cursor.position() >= selected.selectionStart() && cursor.position() <= selected.selectionEnd();
    const QString text = selected.selectedText().trimmed();
    if (!text.isEmpty() && inside)
        return text.size() > LongestSelection || text.contains(QChar::ParagraphSeparator) ? QString() : text;
    return expressionAt(cursor.block().text(), cursor.positionInBlock());
}

/// The list that @p widget is, or whose cell it edits. Null if there is none.
QAbstractItemView *listAround(QWidget *widget)
{
    while (widget && !qobject_cast<QAbstractItemView *>(widget))
        widget = widget->parentWidget();
    return static_cast<QAbstractItemView *>(widget);
}

/// As if the mouse pointed at the current cell.
void showToolTipOfCurrentCell(QAbstractItemView &list)
{
    const QRect cell = list.visualRect(list.currentIndex());
    QHelpEvent event(QEvent::ToolTip, cell.center(), list.viewport()->mapToGlobal(cell.bottomLeft()));
    if (!cell.isEmpty())
        QCoreApplication::sendEvent(list.viewport(), &event);
}
} // namespace

ValueToolTips::ValueToolTips(Activity &activity, QObject *parent) : QObject(parent), m_activity(activity)
{
    QCoreApplication::instance()->installEventFilter(this);
    connect(&activity, &Activity::workspaceClosing, this, [this] { m_queries.cancel(); });
}

bool ValueToolTips::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip:
        if (auto *edit = qobject_cast<TextViewEdit *>(watched->parent()); edit && watched == edit->viewport())
            return requestAt(edit, *static_cast<QHelpEvent *>(event));
        break;
    case QEvent::MouseMove:
    case QEvent::MouseButtonPress:
    case QEvent::Wheel:
    case QEvent::Leave:
        if (watched == m_area)
            m_queries.cancel(); // the pointer has left the place
        break;
    case QEvent::KeyPress:
        m_queries.cancel();
        break;
    default:
        break;
    }
    return false;
}

/// Returns whether the value was requested.
bool ValueToolTips::requestAt(TextViewEdit *edit, const QHelpEvent &event)
{
    m_queries.cancel();
    const QTextCursor cursor = edit->cursorForPosition(event.pos());
    const int width = 2 * edit->fontMetrics().averageCharWidth();
    if (!edit->cursorRect(cursor).adjusted(-width, 0, width, 0).contains(event.pos()))
        return false;
    showAt(edit, cursor, event.globalPos());
    return request(expressionOf(*edit, cursor), {});
}

void ValueToolTips::showAtCursor()
{
    m_queries.cancel();
    auto *edit = qobject_cast<TextViewEdit *>(QApplication::focusWidget());
    if (!edit) {
        if (QAbstractItemView *list = listAround(QApplication::focusWidget()))
            showToolTipOfCurrentCell(*list);
        return;
    }
    const QTextCursor cursor = edit->textCursor();
    showAt(edit, cursor, edit->viewport()->mapToGlobal(edit->cursorRect(cursor).bottomLeft()));
    const QString expression = expressionOf(*edit, cursor);
    if (expression.isEmpty())
        return show(tr("There is no expression at the cursor."));
    if (!request(expression, [this](const QString &reason) { show(reason); }))
        show(tr("The value is not known."));
}

void ValueToolTips::showAt(TextViewEdit *edit, const QTextCursor &cursor, const QPoint &position)
{
    const int width = 2 * edit->fontMetrics().averageCharWidth();
    m_area = edit->viewport();
    m_position = position;
    m_expressionRect = edit->cursorRect(cursor).adjusted(-width, 0, width, 0);
}

/// Returns whether the value was requested.
bool ValueToolTips::request(const QString &expression, const std::function<void(const QString &)> &failed)
{
    if (m_activity.state() != StatePaused || expression.isEmpty())
        return false;
    const auto environment = m_activity.currentEnvironment();
    m_place = currentStackPlace(environment.get()).value_or(StackPlace());
    const auto variables = queryPlugin<IVariables>(environment);
    const DebugRequest question =
        m_queries.ask({.value =
                           [this, expression](const VariableInfo &variable) {
                               const QString head = lineOf(expression, variable.value);
                               variable.children != 0 ? requestMembers(head, expression) : show(head);
                           },
                       .failed = failed});
    return runPlugin<&IVariables::requestValue>(variables, question, m_place, expression, int(IVariables::Natural),
                                                m_queries.replies());
}

/// For a structure or an array: its first members, a line each.
void ValueToolTips::requestMembers(const QString &head, const QString &expression)
{
    const auto variables = queryPlugin<IVariables>(m_activity.currentEnvironment());
    const DebugRequest question = m_queries.ask({.variables =
                                                     [this, head](const QList<VariableInfo> &members, bool more) {
                                                         QString text = head;
                                                         for (const VariableInfo &member : members)
                                                             text += u'\n' + lineOf(member.name, member.value);
                                                         show(more ? text + u"\n…"_s : text);
                                                     },
                                                 .failed = [this, head](const QString &) { show(head); }});
    runPlugin<&IVariables::requestChildren>(variables, question, m_place, expression, 0, MostMembers,
                                            int(IVariables::Natural), m_queries.replies());
}

void ValueToolTips::show(const QString &text) const
{
    if (m_area)
        QToolTip::showText(m_position, u"<pre>%1</pre>"_s.arg(text.toHtmlEscaped()), m_area, m_expressionRect);
}
