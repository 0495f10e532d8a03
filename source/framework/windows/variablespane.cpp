#include "variablespane.h"
#include "callplugin.h"
#include "currentlocation.h"
#include "gridtext.h"
#include "variablelist.h"
#include <array>
#include <QActionGroup>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QMenu>
#include <QPointer>
#include <utility>

using namespace Qt::StringLiterals;

namespace {
using enum VariableList::Column;
enum Role { ExpressionRole = Qt::UserRole, MembersRole, ValueRole, MoreFromRole }; // of column 0

constexpr qsizetype LongestValue = 10000; ///< in characters; a cell has no room for more

struct FormatName
{
    int format;
    const char *name;
};
constexpr std::array FormatNames{
    FormatName{IVariables::Natural, QT_TRANSLATE_NOOP("VariablesPane", "Natural")},
    FormatName{IVariables::SignedDecimal, QT_TRANSLATE_NOOP("VariablesPane", "Decimal")},
    FormatName{IVariables::UnsignedDecimal, QT_TRANSLATE_NOOP("VariablesPane", "Unsigned decimal")},
    FormatName{IVariables::Hexadecimal, QT_TRANSLATE_NOOP("VariablesPane", "Hexadecimal")},
    FormatName{IVariables::Binary, QT_TRANSLATE_NOOP("VariablesPane", "Binary")},
    FormatName{IVariables::Octal, QT_TRANSLATE_NOOP("VariablesPane", "Octal")},
    FormatName{IVariables::Character, QT_TRANSLATE_NOOP("VariablesPane", "Character")},
    FormatName{IVariables::FloatingPoint, QT_TRANSLATE_NOOP("VariablesPane", "Floating point")},
};

bool isMoreRow(const QTreeWidgetItem *row)
{
    return row->data(0, MoreFromRole).isValid();
}

/// The names of a row and those above it.
QString pathOf(const QTreeWidgetItem *row)
{
    QString path = row->text(NameColumn);
    for (const QTreeWidgetItem *above = row->parent(); above; above = above->parent())
        path = above->text(NameColumn) + u'\n' + path;
    return path;
}

QString variableKey(const QTreeWidgetItem *row)
{
    return pathOf(row) + u'\n' + row->text(TypeColumn);
}

QString shownText(const QString &value)
{
    const QString text = value.left(LongestValue).simplified();
    return value.size() > LongestValue ? text + u'…' : text;
}

int variableCount(const QTreeWidgetItem *parent)
{
    const int rows = parent->childCount();
    return rows > 0 && isMoreRow(parent->child(rows - 1)) ? rows - 1 : rows;
}
} // namespace

VariablesPane::VariablesPane(QWidget *parent)
    : QueryPane(new VariableList, parent), m_variables(static_cast<VariableList *>(list())), m_scope(new QComboBox)
{
    setObjectName(u"variablesView"_s);
    m_variables->setObjectName(u"variables"_s);
    m_variables->setAccessibleName(tr("Variables"));
    m_scope->setObjectName(u"variableScope"_s);
    m_scope->setAccessibleName(tr("Kind of variables"));
    addTopRow(m_scope);
    createMenu();
    connect(m_variables, &QTreeWidget::itemExpanded, this, &VariablesPane::opened);
    connect(m_variables, &QTreeWidget::itemCollapsed, this,
            [this](const QTreeWidgetItem *row) { m_open.remove(pathOf(row)); });
    connect(m_variables, &VariableList::activated, this, &VariablesPane::activate);
    connect(m_variables, &ListView::itemRenamed, this,
            [this](ListViewItem *row, int, const QString &text) { assign(row, text); });
    connect(m_scope, &QComboBox::activated, this, [this] {
        forget();
        QueryPane::update();
    });
    setEnvironment(nullptr);
}

void VariablesPane::setEnvironment(IExecutionEnvironment *environment)
{
    m_environment = shareInterface(environment);
    m_interface = queryPlugin<IVariables>(environment);
    m_formats = askPlugin<&IVariables::formats>(m_interface);
    const int scopes = askPlugin<&IVariables::scopes>(m_interface);
    m_scope->clear();
    m_scope->addItem(tr("Variables of the function"), IVariables::Locals);
    if (scopes & 1 << IVariables::Statics)
        m_scope->addItem(tr("Variables of the file"), IVariables::Statics);
    if (scopes & 1 << IVariables::Globals)
        m_scope->addItem(tr("Global variables"), IVariables::Globals);
    m_scope->setVisible(m_scope->count() > 1);
    setOffered(m_interface != nullptr, environment ? tr("The debugger of this project does not offer variables.")
                                                   : tr("There is no program to be debugged."));
}

void VariablesPane::releaseEnvironment()
{
    queries().cancel();
    m_lastValues.clear();
    m_interface.reset();
    m_environment.reset();
    setOffered(false, {});
}

void VariablesPane::setPaused(bool paused)
{
    if (paused)
        m_nextMarks = Marks::New;
    else if (isPaused())
        rememberValues();
    QueryPane::setPaused(paused);
}

/// The rows are removed if the program runs for long.
void VariablesPane::rememberValues()
{
    m_lastValues.clear();
    for (QTreeWidgetItemIterator it(m_variables); *it; ++it) {
        if (const QVariant value = (*it)->data(0, ValueRole); !value.isNull())
            m_lastValues.insert(variableKey(*it), value.toString());
    }
}

QString VariablesPane::text() const
{
    return gridText(*m_variables);
}

void VariablesPane::clear()
{
    m_variables->clear();
}

/// Removes the rows; the next ones are not compared with them.
void VariablesPane::forget()
{
    m_lastValues.clear();
    clear();
}

// Formats -------------------------------------------------------------------------------------------------------------

void VariablesPane::createMenu()
{
    m_menu = new QMenu(this);
    m_menu->setObjectName(u"variableMenu"_s);
    QAction *edit = m_menu->addAction(tr("Edit Value"), this, [this] {
        if (ListViewItem *row = m_variables->currentItem())
            m_variables->editValue(row);
    });
    edit->setObjectName(u"variableEdit"_s);
    m_menu->addAction(tr("Copy Value"), this, [this] {
        if (const ListViewItem *row = m_variables->currentItem())
            QGuiApplication::clipboard()->setText(row->text(ValueColumn));
    });
    m_menu->addSeparator();
    for (const bool all : {false, true}) {
        QMenu *formats = m_menu->addMenu(all ? tr("Format of All Values") : tr("Format of the Value"));
        formats->setObjectName(all ? u"formatOfAll"_s : u"formatOfRow"_s);
        connect(formats, &QMenu::aboutToShow, this, [this, formats, all] { fillFormatMenu(formats, all); });
    }
    connect(m_variables, &ListView::contextMenuRequested, this, &VariablesPane::showMenu);
}

void VariablesPane::showMenu(ListViewItem *row, const QPoint &point)
{
    if (!row || isMoreRow(row))
        return;
    m_variables->setCurrentItem(row);
    m_menu->findChild<QAction *>(u"variableEdit"_s)->setEnabled(row->isRenameEnabled(ValueColumn));
    m_menu->popup(point);
}

void VariablesPane::fillFormatMenu(QMenu *menu, bool all)
{
    menu->clear();
    const ListViewItem *row = m_variables->currentItem();
    auto *group = new QActionGroup(menu);
    for (const auto &[format, name] : FormatNames) {
        if (format != IVariables::Natural && !(m_formats & format))
            continue;
        QAction *action = menu->addAction(tr(name), this, [this, all, chosen = format] { setFormat(all, chosen); });
        action->setCheckable(true);
        action->setChecked(format == (all || !row ? m_format : formatOf(row)));
        group->addAction(action);
    }
}

/// A format for all replaces those of rows.
void VariablesPane::setFormat(bool all, int format)
{
    const ListViewItem *row = m_variables->currentItem();
    if (all) {
        m_format = format;
        m_ownFormats.clear();
    } else if (row) {
        m_ownFormats.insert(pathOf(row), format);
    }
    m_nextMarks = Marks::Kept;
    m_lastValues.clear();
    QueryPane::update();
}

/// Members have the format of their variable, unless they have their own.
int VariablesPane::formatOf(const QTreeWidgetItem *row) const
{
    for (; row && !m_ownFormats.isEmpty(); row = row->parent()) {
        if (const auto own = m_ownFormats.constFind(pathOf(row)); own != m_ownFormats.cend())
            return *own;
    }
    return m_format;
}

// Questions -----------------------------------------------------------------------------------------------------------

void VariablesPane::read()
{
    ++m_readings;
    m_marks = m_nextMarks;
    const QPointer<VariablesPane> self(this);
    const auto environment = shareInterface(m_environment.get());
    const StackPlace place = currentStackPlace(environment.get()).value_or(StackPlace());
    if (!self || !m_interface)
        return;
    if (place.thread != m_place.thread || place.frame != m_place.frame)
        forget(); // variables of the same name are others
    m_place = place;
    requestScope(0, std::max(Portion, variableCount(m_variables->invisibleRootItem())));
}

/// The values are requested one by one where they have a format, since the answer to this question is without.
void VariablesPane::requestScope(int first, int count)
{
    const auto interface = shareInterface(m_interface.get());
    const DebugRequest request = queries().ask({.variables =
                                                    [this, first](const auto &variables, bool more) {
                                                        const bool none = first == 0 && variables.isEmpty();
                                                        showNote(none ? tr("There are no variables.") : QString());
                                                        showVariables({}, first, variables, more);
                                                    },
                                                .failed =
                                                    [this](const QString &reason) {
                                                        clear();
                                                        showNote(reason);
                                                    }});
    runPlugin<&IVariables::requestScope>(interface, request, m_place, m_scope->currentData().toInt(), first, count,
                                         int(IVariables::Natural), queries().replies());
}

void VariablesPane::requestMembers(const QTreeWidgetItem *row, int first, int count)
{
    const auto interface = shareInterface(m_interface.get());
    const QPersistentModelIndex index = m_variables->indexFromItem(row);
    const QString expression = row->data(0, ExpressionRole).toString();
    const int format = formatOf(row);
    const DebugRequest request = queries().ask({.variables =
                                                    [this, index, first](const auto &variables, bool more) {
                                                        if (index.isValid())
                                                            showVariables(index, first, variables, more);
                                                    },
                                                .failed = [this](const QString &reason) { showMessage(reason); }});
    runPlugin<&IVariables::requestChildren>(interface, request, m_place, expression, first, count, format,
                                            queries().replies());
}

void VariablesPane::requestValue(const QTreeWidgetItem *row)
{
    const auto interface = shareInterface(m_interface.get());
    const QPersistentModelIndex index = m_variables->indexFromItem(row);
    const QString expression = row->data(0, ExpressionRole).toString();
    const int format = formatOf(row);
    const DebugRequest request = queries().ask({.value =
                                                    [this, index](const VariableInfo &variable) {
                                                        if (index.isValid())
                                                            showValue(itemOf(index), variable);
                                                    },
                                                .failed = [this](const QString &reason) { showMessage(reason); }});
    runPlugin<&IVariables::requestValue>(interface, request, m_place, expression, format, queries().replies());
}

void VariablesPane::opened(QTreeWidgetItem *row)
{
    m_open.insert(pathOf(row));
    if (isPaused() && row->childCount() == 0)
        requestMembers(row, 0, Portion);
}

void VariablesPane::activate(const QTreeWidgetItem *row)
{
    if (!isPaused() || !isMoreRow(row))
        return;
    const int first = row->data(0, MoreFromRole).toInt();
    if (row->parent())
        requestMembers(row->parent(), first, Portion);
    else
        requestScope(first, Portion);
}

void VariablesPane::assign(ListViewItem *row, const QString &text)
{
    const QString shown = row->data(0, ValueRole).toString();
    if (!isPaused() || text == shown)
        return row->setText(ValueColumn, shown);
    const auto interface = shareInterface(m_interface.get());
    const QString expression = row->data(0, ExpressionRole).toString();
    const int format = formatOf(row);
    const DebugRequest request = queries().ask({.value = [this](const VariableInfo &) { Q_EMIT doUpdate(); },
                                                .failed =
                                                    [this](const QString &reason) {
                                                        QueryPane::update(); // shows the old value
                                                        showMessage(tr("The value cannot be changed: %1").arg(reason));
                                                    }});
    runPlugin<&IVariables::assign>(interface, request, m_place, expression, text, format, queries().replies());
}

// Answers -------------------------------------------------------------------------------------------------------------

QTreeWidgetItem *VariablesPane::itemOf(const QPersistentModelIndex &index) const
{
    QTreeWidgetItem *root = m_variables->invisibleRootItem();
    return index.isValid() ? m_variables->item(index) : root;
}

/// An environment may answer at once when a row is opened here, and may close the workspace.
void VariablesPane::showVariables(const QPersistentModelIndex &parent, int first, const QList<VariableInfo> &variables,
                                  bool more)
{
    if (variableCount(itemOf(parent)) < first)
        return;
    const QPointer<VariablesPane> self(this);
    const int reading = m_readings;
    for (int i = 0; i < variables.size(); ++i) {
        showVariable(itemOf(parent), first + i, variables[i]);
        if (!self || !m_interface || m_readings != reading)
            return;
    }
    QTreeWidgetItem *item = itemOf(parent);
    const int end = first + int(variables.size());
    while (item->childCount() > end)
        delete item->child(item->childCount() - 1);
    if (more && !variables.isEmpty())
        addMoreRow(item, end);
    if (!parent.isValid())
        m_nextMarks = Marks::Further;
}

void VariablesPane::showVariable(QTreeWidgetItem *parent, int index, const VariableInfo &variable)
{
    QTreeWidgetItem *row = rowFor(parent, index, variable);
    if (m_variables->renameEdit() && m_variables->currentItem() == row)
        return; // the user is typing
    row->setData(0, ExpressionRole, variable.expression);
    row->setText(TypeColumn, variable.type);
    static_cast<ListViewItem *>(row)->setRenameEnabled(ValueColumn, variable.writable);
    const bool isFormatted = row->parent() || formatOf(row) == IVariables::Natural || !variable.available
                             || (variable.children != 0 && !variable.writable);
    if (isFormatted)
        showValue(row, variable);
    const QPersistentModelIndex kept = m_variables->indexFromItem(row);
    if (!isFormatted)
        requestValue(row);
    if (kept.isValid())
        setMembers(itemOf(kept), variable.children);
}

/// The row of a variable at an index: that of the same name, so that it stays open, or a new one. Rows of variables
/// that are out of scope are removed.
QTreeWidgetItem *VariablesPane::rowFor(QTreeWidgetItem *parent, int index, const VariableInfo &variable)
{
    for (int i = index; i < parent->childCount(); ++i) {
        QTreeWidgetItem *row = parent->child(i);
        if (isMoreRow(row) || row->text(NameColumn) != variable.name || row->text(TypeColumn) != variable.type)
            continue;
        while (parent->child(index) != row)
            delete parent->child(index);
        return row;
    }
    auto *after = static_cast<ListViewItem *>(parent->child(index - 1));
    auto *row = parent == m_variables->invisibleRootItem()
                    ? new ListViewItem(m_variables, after, variable.name)
                    : new ListViewItem(static_cast<ListViewItem *>(parent), after, variable.name);
    row->setText(TypeColumn, variable.type);
    return row;
}

void VariablesPane::showValue(QTreeWidgetItem *row, const VariableInfo &variable)
{
    const QString text = shownText(variable.value);
    const QVariant shown = row->data(0, ValueRole);
    const QString before = shown.isNull() ? m_lastValues.value(variableKey(row)) : shown.toString();
    const bool differs = !before.isNull() && before != text;
    QFont font = m_variables->font();
    const bool wasBold = row->font(ValueColumn).bold();
    font.setBold(m_marks == Marks::New ? differs : m_marks == Marks::Further ? differs || wasBold : wasBold);
    font.setItalic(!variable.available);
    row->setFont(NameColumn, font);
    row->setFont(ValueColumn, font);
    row->setText(ValueColumn, text);
    row->setData(0, ValueRole, text);
}

/// A row without members at present, such as a null pointer, is opened again when it has some.
void VariablesPane::setMembers(QTreeWidgetItem *row, int children)
{
    row->setData(0, MembersRole, children);
    row->setChildIndicatorPolicy(children != 0 ? QTreeWidgetItem::ShowIndicator : QTreeWidgetItem::DontShowIndicator);
    const bool opens = m_open.contains(pathOf(row));
    if (children == 0 || !opens)
        qDeleteAll(row->takeChildren());
    else if (row->isExpanded())
        requestMembers(row, 0, std::max(Portion, variableCount(row)));
    else
        row->setExpanded(true);
}

void VariablesPane::addMoreRow(QTreeWidgetItem *parent, int first)
{
    auto *after = static_cast<ListViewItem *>(parent->child(parent->childCount() - 1));
    const int members = parent->data(0, MembersRole).toInt();
    const QString text = members > first ? tr("… %1 more").arg(members - first) : tr("… more");
    auto *row = parent == m_variables->invisibleRootItem()
                    ? new ListViewItem(m_variables, after, text)
                    : new ListViewItem(static_cast<ListViewItem *>(parent), after, text);
    row->setData(0, MoreFromRole, first);
    QFont font = m_variables->font();
    font.setItalic(true);
    row->setFont(NameColumn, font);
}
