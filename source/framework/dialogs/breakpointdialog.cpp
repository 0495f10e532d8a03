#include "breakpointdialog.h"
#include "activity.h"
#include "breakpointtext.h"
#include "callplugin.h"
#include "ibreakpointdetails.h"
#include "iexecutionenvironment.h"
#include "isourcemapping.h"
#include "isymbols64.h"
#include "messages.h"
#include "project.h"
#include "projectpath.h"
#include "projecttreeitem.h"
#include "projectworkspace.h"
#include "ui_breakpointdialogbase.h"
#include "varnelassert.h"
#include <QHeaderView>
#include <QKeyEvent>

using namespace Qt::StringLiterals;

/// An existing or a new breakpoint.
class BreakpointItem : public ListViewItem
{
public:
    BreakpointItem(ListView *list, ListViewItem *after, const QString &text, Project *project,
                   const BreakpointRecord &record)
        : ListViewItem(list, after, text), m_project(project), m_record(record)
    {
        setCheckState(0, record.state == BreakpointEnabled ? Qt::Checked : Qt::Unchecked);
    }

    [[nodiscard]] Project *project() const { return m_project; } ///< Null for a new one.
    [[nodiscard]] const QList<BreakpointLocation> &locations() const { return m_record.locations; }

private:
    const QPointer<Project> m_project;
    const BreakpointRecord m_record; ///< as the environment has it
};

namespace {
QString nameOf(const Project *project)
{
    return fileNameOf(project->fileName()).section(u' ', 0, 0) + u" - "_s + project->currentConfiguration();
}

InterfacePtr<IBreakpoints> breakpointsOf(const Project *project)
{
    return queryPlugin<IBreakpoints>(project ? project->executionInterface() : nullptr);
}

bool setBreakpoint(IBreakpoints *breakpoints, const BreakpointLocation &place, int state)
{
    int result = -1;
    readPlugin<&IBreakpoints::setBreakpoint>(result, breakpoints, place.file, place.line, state);
    return result == 0;
}

/// The condition and so on of an existing breakpoint; none if the environment does not offer them.
std::optional<BreakpointDetails> detailsOf(const BreakpointItem *item)
{
    const auto breakpoints = breakpointsOf(item->project());
    const auto offered = queryPlugin<IBreakpointDetails>(breakpoints);
    BreakpointDetails details;
    if (!offered || item->locations().isEmpty())
        return {};
    const BreakpointLocation &place = item->locations().first();
    if (!askPlugin<&IBreakpointDetails::details>(offered, place.file, place.line, details))
        return {};
    return details;
}

void setDetails(IBreakpoints *breakpoints, const BreakpointLocation &place, const BreakpointDetails &details)
{
    QString reason;
    runPlugin<&IBreakpointDetails::setDetails>(queryPlugin<IBreakpointDetails>(breakpoints), place.file, place.line,
                                               details, reason);
}

/// What an environment knows of a function.
struct Symbol
{
    std::optional<quint64> address;
    std::optional<BreakpointLocation> place; ///< its source line
};

/// The kinds of source lines are in the order in which breakpoints are expected to have one.
template <typename Address, typename Symbols>
Symbol symbolIn(const InterfacePtr<Symbols> &symbols, const QString &name)
{
    Address address = 0;
    if (!askPlugin<&Symbols::symbolAddress>(symbols, name, address))
        return {};
    for (const int kind : {1, 2, 0, 3}) {
        BreakpointLocation place;
        if (askPlugin<&Symbols::sourceLocation>(symbols, address, kind, place.file, place.line))
            return {address, place};
    }
    return {address, {}};
}

Symbol symbolIn(IBreakpoints *breakpoints, const QString &name)
{
    if (const auto wide = queryPlugin<ISymbols64>(breakpoints))
        return symbolIn<quint64>(wide, name);
    return symbolIn<uint>(queryPlugin<ISourceMapping>(breakpoints), name);
}

void clearOld(const BreakpointItem *item)
{
    const auto breakpoints = breakpointsOf(item->project());
    if (breakpoints && !item->locations().isEmpty())
        setBreakpoint(breakpoints.get(), item->locations().first(), BreakpointRemoved);
}
} // namespace

BreakpointDialog::BreakpointDialog(const Activity &activity, QWidget *parent, const QString &name)
    : QDialog(parent)
    , m_ui(std::make_unique<Ui::BreakpointDialogBase>())
    , m_activity(activity)
    , m_workspace(activity.workspace())
{
    VARNEL_ASSERT_TEXT(activity.workspace(), "workspace");
    m_ui->setupUi(this);
    setObjectName(name);
    fill();
    connect(m_ui->LocationEdit, &QLineEdit::textChanged, this, &BreakpointDialog::textChanged);
    connect(m_ui->BreakpointList, &QTreeWidget::currentItemChanged, this, &BreakpointDialog::currentItemChanged);
    connect(m_ui->OKButton, &QPushButton::clicked, this, &BreakpointDialog::accept);
    connect(m_ui->CancelButton, &QPushButton::clicked, this, &BreakpointDialog::reject);
    connect(m_ui->ClearButton, &QPushButton::clicked, this, &BreakpointDialog::clearBreakpoint);
    connect(m_ui->ClearAllButton, &QPushButton::clicked, this, &BreakpointDialog::clearAll);
    connect(&activity, &Activity::workspaceClosing, this, &BreakpointDialog::reject);
    m_ui->BreakpointList->installEventFilter(this);
}

BreakpointDialog::~BreakpointDialog() = default;

void BreakpointDialog::fill()
{
    ListView *list = m_ui->BreakpointList;
    const QList<QPointer<Project>> projects = m_activity.projects();
    const bool several = projects.size() > 1;
    list->setHeaderLabels(QStringList(several ? 2 : 1, tr("Breakpoint")));
    list->header()->hide();
    list->setItemMargin(1);
    m_last = new ProjectTreeItem(list, nullptr, tr("Add new breakpoint here"), nullptr, nullptr, 0, false);
    m_last->setItalic(true);
    for (const QPointer<Project> &project : projects)
        fill(project);
    if (several)
        layOutColumns();
    list->setCurrentItem(m_last);
    currentItemChanged();
}

/// Gives the column of project names enough width, however long the places are.
void BreakpointDialog::layOutColumns()
{
    QTreeWidget *list = m_ui->BreakpointList;
    const QAbstractItemView *view = list; // the class in which sizeHintForColumn() is public
    list->setColumnWidth(1, std::max(100, view->sizeHintForColumn(1)));
    list->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
}

void BreakpointDialog::fill(Project *project)
{
    const auto breakpoints = breakpointsOf(project);
    if (!breakpoints)
        return;
    const auto records = askPlugin<&IBreakpoints::breakpoints>(breakpoints);
    for (const BreakpointRecord &record : records) {
        if (record.locations.isEmpty())
            continue;
        BreakpointItem *item = addItem(breakpointText(record.locations.first()), project, record);
        if (m_activity.projects().size() > 1)
            item->setText(1, u'[' + nameOf(project) + u']');
    }
}

/// Inserts it above the last row.
BreakpointItem *BreakpointDialog::addItem(const QString &text, Project *project, const BreakpointRecord &record)
{
    ListView *list = m_ui->BreakpointList;
    auto *above = static_cast<ListViewItem *>(list->topLevelItem(list->indexOfTopLevelItem(m_last) - 1));
    return new BreakpointItem(list, above, text, project, record);
}

BreakpointItem *BreakpointDialog::currentBreakpoint() const
{
    ListViewItem *item = m_ui->BreakpointList->currentItem();
    return item == m_last ? nullptr : static_cast<BreakpointItem *>(item);
}

void BreakpointDialog::currentItemChanged()
{
    updateButtons();
    const QSignalBlocker blocker(m_ui->LocationEdit);
    const BreakpointItem *item = currentBreakpoint();
    m_ui->LocationEdit->setText(item ? item->text(0) : QString());
}

void BreakpointDialog::updateButtons()
{
    m_ui->ClearButton->setEnabled(currentBreakpoint());
    m_ui->ClearAllButton->setEnabled(m_ui->BreakpointList->topLevelItemCount() > 1);
}

void BreakpointDialog::textChanged()
{
    BreakpointItem *item = currentBreakpoint();
    if (!item) {
        item = addItem({}, nullptr, {{}, BreakpointEnabled});
        const QSignalBlocker blocker(m_ui->BreakpointList); // the text in the edit is newer
        m_ui->BreakpointList->setCurrentItem(item);
        updateButtons();
    }
    item->setText(0, m_ui->LocationEdit->text());
}

bool BreakpointDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    if (key->key() == Qt::Key_Delete) {
        clearBreakpoint();
        return true;
    }
    const QString text = key->text();
    if (text.isEmpty() || !text.front().isPrint() || key->key() == Qt::Key_Space) // the list toggles the check box
        return QDialog::eventFilter(watched, event);
    m_ui->LocationEdit->setFocus();
    m_ui->LocationEdit->setText(text);
    return true;
}

void BreakpointDialog::clearBreakpoint()
{
    if (BreakpointItem *item = currentBreakpoint())
        remove(item);
}

void BreakpointDialog::clearAll()
{
    ListView *list = m_ui->BreakpointList;
    while (list->firstChild() != m_last)
        remove(static_cast<BreakpointItem *>(list->firstChild()));
}

void BreakpointDialog::remove(BreakpointItem *item)
{
    m_ui->BreakpointList->takeItem(item);
    m_removed.emplace_back(item);
    currentItemChanged(); // the list emitted the signal while the old row was still in it
}

void BreakpointDialog::accept()
{
    ListView *list = m_ui->BreakpointList;
    for (ListViewItem *item = list->firstChild(); item != m_last; item = item->itemBelow()) {
        if (!m_workspace)
            return reject(); // it was closed during a message; another one may be open
        if (apply(static_cast<BreakpointItem *>(item)))
            continue;
        list->setCurrentItem(item);
        m_ui->LocationEdit->setFocus();
        return;
    }
    for (const auto &item : m_removed)
        clearOld(item.get());
    QDialog::accept();
}

bool BreakpointDialog::apply(const BreakpointItem *item)
{
    const std::optional<BreakpointDetails> details = detailsOf(item);
    clearOld(item);
    if (item->text(0).isEmpty())
        return true;
    BreakpointLocation location;
    auto breakpoints = resolve(item, &location);
    if (!breakpoints)
        return false;
    const int state = item->checkState(0) == Qt::Checked ? BreakpointEnabled : BreakpointDisabled;
    const bool isSet = setBreakpoint(breakpoints.get(), location, state);
    if (isSet && details)
        setDetails(breakpoints.get(), location, *details);
    breakpoints.reset(); // hold no reference of the plug-in while the message is open
    if (!isSet)
        showInformation(this, tr("The breakpoint could not be set."));
    return isSet;
}

/// The interface for the breakpoint, with its location; null if there is none.
InterfacePtr<IBreakpoints> BreakpointDialog::resolve(const BreakpointItem *item, BreakpointLocation *location)
{
    const QString text = item->text(0);
    if (std::optional<BreakpointPlace> place = breakpointPlace(text)) {
        auto breakpoints = resolvePlace(*place, item);
        *location = place->location;
        return breakpoints;
    }
    if (const QString symbol = breakpointSymbol(text); !symbol.isEmpty())
        return resolveSymbol(symbol, item, location);
    showInformation(this, tr("The breakpoint syntax is not valid. Specify breakpoints as:\n\n[file], [line] OR\n"
                             "disassembler, 0x[addr]"));
    return {};
}

/// Those that may know the function: of a new breakpoint all, the current one first.
QList<QPointer<Project>> BreakpointDialog::symbolProjects(const BreakpointItem *item) const
{
    if (item->project())
        return {item->project()};
    QList<QPointer<Project>> projects = m_activity.projects();
    const QPointer<Project> current = m_activity.currentProject();
    if (projects.removeAll(current) > 0)
        projects.prepend(current);
    return projects;
}

/// At the source line of the function, so that its local variables are valid at the breakpoint.
InterfacePtr<IBreakpoints> BreakpointDialog::resolveSymbol(const QString &symbol, const BreakpointItem *item,
                                                           BreakpointLocation *location)
{
    std::optional<quint64> known;
    for (const QPointer<Project> &project : symbolProjects(item)) {
        auto breakpoints = breakpointsOf(project);
        const Symbol found = symbolIn(breakpoints.get(), symbol);
        if (found.place) {
            *location = *found.place;
            return breakpoints;
        }
        if (found.address)
            known = found.address;
    }
    if (known)
        showInformation(this, tr("'%1' is not a function with source lines. Its address is 0x%2.")
                                  .arg(symbol, QString::number(*known, 16)));
    else
        showInformation(this, tr("The function '%1' is not known.\n\nFunctions are found in the program of a debug "
                                 "session. Before one, specify breakpoints as [file], [line].")
                                  .arg(symbol));
    return {};
}

/// The same for a place. Makes its file absolute.
InterfacePtr<IBreakpoints> BreakpointDialog::resolvePlace(BreakpointPlace &place, const BreakpointItem *item)
{
    Project *project = item->project();
    if (place.isAddress) {
        const bool own = project && project->executionInterface();
        return breakpointsOf(own ? project : m_activity.currentProject());
    }
    if (!project)
        project = projectFor(place.location.file);
    if (!project)
        return {};
    QString &file = place.location.file;
    file = project->absolutePath(file);
    return breakpointsOf(project);
}

/// The project for the file of a new breakpoint; null, after a message, if no project contains it.
Project *BreakpointDialog::projectFor(const QString &file)
{
    const QList<Project *> projects =
        m_activity.workspace() ? m_activity.workspace()->projectsContainingFile(file) : QList<Project *>();
    if (projects.isEmpty())
        showInformation(this, tr("Breakpoints cannot be set in file:\n\n'%1'.").arg(file));
    if (projects.size() < 2)
        return projects.value(0);
    const QPointer<Project> current = m_activity.currentProject();
    showInformation(this, tr("The file you have specified is included in more than one project.\n\n%1\n\nThe "
                             "breakpoint will be set in the currently active project (%2)")
                              .arg(file, nameOf(current)));
    return current;
}
