#include "watchmembers.h"
#include "callplugin.h"
#include "interfaceobject.h"
#include "projecttreeitem.h"
#include "watchwindow.h"
#include <QPointer>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
enum Role { Expression = Qt::UserRole, MoreFrom, WasOpen, IsNumber, IsRefused }; // of column 0

constexpr qsizetype LongestValue = 10000; ///< in characters; a cell has no room for more

/// Structures have braces, addresses have hexadecimal digits, and both can have members.
bool isDecimalNumber(const QString &value)
{
    static const QRegularExpression form(u"\\A[-+]?[0-9]+(\\.[0-9]+)?([eE][-+]?[0-9]+)?\\z"_s);
    return form.match(value).hasMatch();
}

bool isMoreRow(const ListViewItem *row)
{
    return row->data(0, MoreFrom).isValid();
}
} // namespace

/// Passes the answers to the members as long as these exist.
class WatchMembers::Replies : public InterfaceObject<IDebugReplies>
{
public:
    explicit Replies(WatchMembers *members) : m_members(members) {}

    void threads(const DebugRequest &, const QList<ThreadInfo> &) override {}
    void frames(const DebugRequest &, const QList<StackFrame> &, bool) override {}
    void variables(const DebugRequest &request, const QList<VariableInfo> &variables, bool more) override
    {
        if (m_members)
            m_members->showChildren(request, variables, more);
    }
    void value(const DebugRequest &request, const VariableInfo &variable) override
    {
        if (m_members)
            m_members->showValue(request, variable);
    }
    void failed(const DebugRequest &request, const QString &reason) override
    {
        if (m_members)
            m_members->showFailure(request, reason);
    }

private:
    const QPointer<WatchMembers> m_members;
};

int watchFormat(const QString &watch)
{
    static const QRegularExpression letter(u",\\s*([xduotcs])\\s*\\z"_s);
    static const QHash<QString, int> formats{{u"x"_s, IVariables::Hexadecimal},     {u"d"_s, IVariables::SignedDecimal},
                                             {u"u"_s, IVariables::UnsignedDecimal}, {u"o"_s, IVariables::Octal},
                                             {u"t"_s, IVariables::Binary},          {u"c"_s, IVariables::Character}};
    return formats.value(letter.match(watch).captured(1), IVariables::Natural);
}

WatchMembers::WatchMembers(ListView *list) : QObject(list), m_list(list), m_replies(new Replies(this))
{
    connect(list, &QTreeWidget::itemExpanded, this,
            [this](QTreeWidgetItem *item) { opened(static_cast<ListViewItem *>(item)); });
    connect(list, &QTreeWidget::itemCollapsed, this, [](QTreeWidgetItem *item) { item->setData(0, WasOpen, false); });
}

WatchMembers::~WatchMembers() = default;

void WatchMembers::setEnvironment(IExecutionEnvironment *environment)
{
    m_questions.clear();
    ++m_generation;
    m_variables = queryPlugin<IVariables>(environment);
    m_list->setRootIsDecorated(m_variables != nullptr);
}

// Questions -----------------------------------------------------------------------------------------------------------

DebugRequest WatchMembers::ask(Kind kind, const ListViewItem *row, int first)
{
    const DebugRequest request{++m_lastQuestion, m_generation};
    m_questions.insert(request.number, {kind, m_list->indexFromItem(row), first});
    return request;
}

void WatchMembers::refresh()
{
    m_questions.clear();
    const quint64 generation = ++m_generation;
    const QPointer<WatchMembers> self(this);
    for (int i = 0; self && m_generation == generation && i < m_list->topLevelItemCount() - 1; ++i) {
        auto *watch = static_cast<ListViewItem *>(m_list->topLevelItem(i));
        if (!watch->data(0, IsNumber).toBool() || !isDecimalNumber(watch->text(1)))
            refresh(watch);
    }
}

void WatchMembers::refresh(ListViewItem *watch)
{
    if (!m_variables)
        return;
    const auto variables = shareInterface(m_variables.get());
    const auto replies = shareInterface(m_replies.get());
    runPlugin<&IVariables::requestValue>(variables, ask(Kind::Value, watch), StackPlace(), expressionOf(watch),
                                         formatOf(watch), replies.get());
}

void WatchMembers::requestChildren(ListViewItem *row, int first, int count)
{
    if (!m_variables)
        return;
    const auto variables = shareInterface(m_variables.get());
    const auto replies = shareInterface(m_replies.get());
    runPlugin<&IVariables::requestChildren>(variables, ask(Kind::Children, row, first), StackPlace(), expressionOf(row),
                                            first, count, formatOf(row), replies.get());
}

void WatchMembers::opened(ListViewItem *row)
{
    if (row->childCount() == 0)
        requestChildren(row, 0, Portion);
}

void WatchMembers::clicked(ListViewItem *row, int column)
{
    if (!isMoreRow(row))
        row->startRename(column);
    else
        requestChildren(row->parent(), row->data(0, MoreFrom).toInt(), Portion);
}

void WatchMembers::assign(ListViewItem *row)
{
    if (!m_variables || isMoreRow(row))
        return;
    const auto variables = shareInterface(m_variables.get());
    const auto replies = shareInterface(m_replies.get());
    runPlugin<&IVariables::assign>(variables, ask(Kind::Assignment, row), StackPlace(), expressionOf(row), row->text(1),
                                   formatOf(row), replies.get());
}

/// Members have an expression of their own; a watch is one, without the letter of its format.
QString WatchMembers::expressionOf(const ListViewItem *row)
{
    return row->parent() ? row->data(0, Expression).toString() : assignedExpression(row->text(0));
}

int WatchMembers::formatOf(const ListViewItem *row)
{
    while (row->parent())
        row = row->parent();
    return watchFormat(row->text(0));
}

// Answers -------------------------------------------------------------------------------------------------------------

/// The row of a question that still counts; null if there is none.
ListViewItem *WatchMembers::rowOf(const DebugRequest &request, Question *question)
{
    if (request.generation != m_generation || !m_questions.contains(request.number))
        return nullptr;
    *question = m_questions.take(request.number);
    return question->row.isValid() ? m_list->item(question->row) : nullptr;
}

void WatchMembers::showValue(const DebugRequest &request, const VariableInfo &info)
{
    Question question;
    ListViewItem *row = rowOf(request, &question);
    if (row && question.kind == Kind::Value) {
        row->setData(0, IsNumber, info.children == 0 && isDecimalNumber(row->text(1)));
        setOpenable(row, info.children);
    } else if (row && question.kind == Kind::Assignment) {
        Q_EMIT written();
    }
}

void WatchMembers::showFailure(const DebugRequest &request, const QString &reason)
{
    Question question;
    ListViewItem *row = rowOf(request, &question);
    if (!row)
        return;
    if (question.kind != Kind::Assignment)
        return setOpenable(row, 0);
    const QPointer<WatchMembers> self(this);
    row->setData(0, IsRefused, true);
    Q_EMIT refused(reason);
    if (self)
        Q_EMIT written(); // and the row gets its old value again
}

/// A row that has no members now is opened again when it has some, as after a call of a function without the variable.
void WatchMembers::setOpenable(ListViewItem *row, int children)
{
    const bool can = children != 0;
    row->setChildIndicatorPolicy(can ? QTreeWidgetItem::ShowIndicator : QTreeWidgetItem::DontShowIndicator);
    if (can && row->isExpanded())
        return requestChildren(row, 0, std::max(Portion, row->childCount()));
    const bool wasOpen = row->isExpanded() || row->data(0, WasOpen).toBool();
    row->setExpanded(false);
    qDeleteAll(row->takeChildren());
    row->setData(0, WasOpen, wasOpen);
    if (can && wasOpen)
        row->setExpanded(true);
}

void WatchMembers::showChildren(const DebugRequest &request, const QList<VariableInfo> &children, bool more)
{
    Question question;
    ListViewItem *row = rowOf(request, &question);
    if (!row || question.kind != Kind::Children)
        return;
    const QPointer<WatchMembers> self(this);
    const QPersistentModelIndex parent = question.row;
    const int end = question.first + int(children.size());
    for (int i = question.first; i < end; ++i) {
        showChild(row, i, children[i - question.first]);
        if (!self || !parent.isValid()) // an environment may answer at once, and the answer may have removed rows
            return;
    }
    while (row->childCount() > end)
        delete row->child(row->childCount() - 1);
    if (!more)
        return;
    auto *next = new ProjectTreeItem(row, static_cast<ListViewItem *>(row->child(end - 1)), tr("Show more"), nullptr,
                                     nullptr, ListViewItem::Type, false);
    next->setItalic(true);
    next->setData(0, MoreFrom, end);
}

void WatchMembers::showChild(ListViewItem *parent, int index, const VariableInfo &info)
{
    auto *row = static_cast<ProjectTreeItem *>(parent->child(index));
    const QString value = info.value.left(LongestValue).simplified();
    const bool isSame = row && !isMoreRow(row) && row->text(0) == info.name;
    if (!isSame) {
        delete row;
        row = new ProjectTreeItem(parent, static_cast<ListViewItem *>(parent->child(index - 1)), info.name, nullptr,
                                  nullptr, ListViewItem::Type, false);
    }
    if (m_list->renameEdit() && m_list->currentItem() == row)
        return;                                               // the user is typing
    const bool wasRefused = row->data(0, IsRefused).toBool(); // the text on screen was typed, and never a value
    row->setData(0, IsRefused, {});
    row->setBold(isSame && !wasRefused && row->text(1) != value);
    row->setText(1, value);
    row->setToolTip(0, info.type);
    row->setData(0, Expression, info.expression);
    row->setRenameEnabled(1, info.writable);
    setOpenable(row, info.children);
}
