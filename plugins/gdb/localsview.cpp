#include "localsview.h"
#include "gdbsession.h"
#include <QHeaderView>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int Path = Qt::UserRole;           ///< names from the top, separated by dots
constexpr int Expression = Qt::UserRole + 1; ///< expression or variable object in gdb
enum Column { NameColumn, ValueColumn };

/// Whether a variable can be expanded: a structure, an array, a pointer or a reference.
bool opens(const MiValue &variable)
{
    QString type = variable.text(u"type");
    if (type.endsWith(" const"_L1))
        type.chop(6);
    return !variable.contains(u"value") || type.endsWith(u'*') || type.endsWith(u'&');
}

class ValueDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QWidget *editor = QStyledItemDelegate::createEditor(parent, option, index);
        editor->setObjectName(u"valueEdit"_s);
        return editor;
    }
};
} // namespace

/// Only values can be edited.
class LocalsTree : public QTreeWidget
{
protected:
    bool edit(const QModelIndex &index, EditTrigger trigger, QEvent *event) override
    {
        if (index.column() == NameColumn && trigger == DoubleClicked)
            return false; // it expands the row
        return QTreeWidget::edit(index.siblingAtColumn(ValueColumn), trigger, event);
    }
};

LocalsView::LocalsView(GdbSession *session, QWidget *parent)
    : QWidget(parent), m_session(session), m_tree(new LocalsTree)
{
    setWindowTitle(tr("Locals"));
    setProperty("dockName", u"Locals"_s);
    setObjectName(u"localsView"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tree);
    m_tree->setObjectName(u"localsTree"_s);
    m_tree->setAccessibleName(tr("Locals"));
    m_tree->setItemDelegate(new ValueDelegate(m_tree));
    m_tree->setHeaderLabels({tr("Name"), tr("Value")});
    m_tree->header()->setSectionResizeMode(NameColumn, QHeaderView::ResizeToContents);
    connect(m_tree, &QTreeWidget::itemExpanded, this, &LocalsView::open);
    connect(m_tree, &QTreeWidget::itemCollapsed, this,
            [this](QTreeWidgetItem *item) { m_open.removeAll(item->data(NameColumn, Path).toString()); });
    connect(m_tree, &QTreeWidget::itemChanged, this, &LocalsView::assign);
    connect(session, &GdbSession::changed, this, &LocalsView::update);
}

QString LocalsView::text() const
{
    QString text;
    for (QTreeWidgetItem *row = m_tree->topLevelItem(0); row; row = m_tree->itemBelow(row)) {
        for (const QTreeWidgetItem *parent = row->parent(); parent; parent = parent->parent())
            text += u"  "_s;
        text += u"%1 = %2\n"_s.arg(row->text(NameColumn), row->text(ValueColumn));
    }
    return text;
}

void LocalsView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    update();
}

void LocalsView::update()
{
    if (!isVisible() || !m_session)
        return;
    setEnabled(m_session->isStopped());
    if (!m_session->isStopped())
        return;
    for (const QString &variable : std::exchange(m_variables, {}))
        m_session->gdb()->send("-var-delete " + variable.toLatin1());
    const QPointer<LocalsView> self(this);
    m_session->gdb()->send("-stack-list-variables --simple-values", [self](const MiRecord &answer) {
        if (self)
            self->showVariables(answer);
    });
}

void LocalsView::showVariables(const MiRecord &answer)
{
    m_tree->clear();
    for (const MiValue &variable : answer.results[u"variables"].items()) {
        const QString name = variable.text(u"name");
        addRow(nullptr, name, variable.contains(u"value") ? variable.text(u"value") : variable.text(u"type"), name,
               opens(variable));
    }
}

QTreeWidgetItem *LocalsView::addRow(QTreeWidgetItem *parent, const QString &name, const QString &value,
                                    const QString &expression, bool opens)
{
    const QSignalBlocker quiet(m_tree);
    auto *item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(m_tree);
    const QString path = parent ? parent->data(NameColumn, Path).toString() + u'.' + name : name;
    item->setText(NameColumn, name);
    item->setText(ValueColumn, value);
    item->setData(NameColumn, Path, path);
    item->setData(NameColumn, Expression, expression);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
    QFont font = item->font(ValueColumn);
    font.setBold(m_values.contains(path) && m_values.value(path) != value);
    item->setFont(ValueColumn, font);
    m_values.insert(path, value);
    if (opens)
        item->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
    if (opens && m_open.contains(path))
        QMetaObject::invokeMethod(
            this,
            [this, path] {
                if (QTreeWidgetItem *again = itemOf(path))
                    again->setExpanded(true);
            },
            Qt::QueuedConnection);
    return item;
}

QTreeWidgetItem *LocalsView::itemOf(const QString &path) const
{
    for (QTreeWidgetItemIterator item(m_tree); *item; ++item) {
        if ((*item)->data(NameColumn, Path).toString() == path)
            return *item;
    }
    return nullptr;
}

/// Fetches the members when a row is expanded. A variable needs a variable object in gdb, which its members belong to.
void LocalsView::open(QTreeWidgetItem *item)
{
    const QString path = item->data(NameColumn, Path).toString();
    if (!m_open.contains(path))
        m_open.append(path);
    if (item->childCount() > 0 || !m_session || !m_session->isStopped())
        return;
    const QPointer<LocalsView> self(this);
    const auto list = [self, path](const QString &variable) {
        self->m_session->gdb()->send("-var-list-children --all-values " + miQuoted(variable) + " 0 200",
                                     [self, path](const MiRecord &answer) {
                                         if (self)
                                             self->showMembers(path, answer);
                                     });
    };
    if (item->parent()) {
        list(item->data(NameColumn, Expression).toString());
        return;
    }
    m_session->gdb()->send("-var-create - * " + miQuoted(item->data(NameColumn, Expression).toString()),
                           [self, list](const MiRecord &answer) {
                               if (!self || !self->m_session || answer.isError())
                                   return;
                               self->m_variables.append(answer.results.text(u"name"));
                               list(answer.results.text(u"name"));
                           });
}

void LocalsView::showMembers(const QString &path, const MiRecord &answer)
{
    QTreeWidgetItem *parent = itemOf(path);
    if (!parent || parent->childCount() > 0)
        return;
    for (const MiValue &member : answer.results[u"children"].items())
        addRow(parent, member.text(u"exp"), member.text(u"value"), member.text(u"name"),
               member.number(u"numchild") > 0 || member.text(u"dynamic") == "1"_L1);
}

void LocalsView::assign(QTreeWidgetItem *item, int column)
{
    if (column != ValueColumn || !m_session || !m_session->isStopped())
        return;
    const QString expression = item->data(NameColumn, Expression).toString();
    const QByteArray command =
        item->parent() ? "-var-assign " + miQuoted(expression) + ' ' + miQuoted(item->text(ValueColumn))
                       : "-data-evaluate-expression " + miQuoted(expression + u'=' + item->text(ValueColumn));
    const QPointer<LocalsView> self(this);
    m_session->gdb()->send(command, [self](const MiRecord &answer) {
        if (!self || !self->m_session)
            return;
        if (answer.isError())
            Q_EMIT self->m_session->message(tr("The value cannot be changed: %1\n").arg(answer.errorText()), true);
        self->m_session->targetChanged();
        self->update();
    });
}
