#include "breakpointspane.h"
#include "activity.h"
#include "breakpointdetails.h"
#include "callplugin.h"
#include "debugcontrol.h"
#include "environmentkey.h"
#include "gridtext.h"
#include "listview.h"
#include "project.h"
#include "projectworkspace.h"
#include "viewinterfaces.h"
#include "viewmanager.h"
#include "windowservices.h"
#include <array>
#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {
constexpr int RefreshDelay = 20; ///< in ms; an environment may report often
constexpr std::array ColumnCharacters{22, 16, 10, 16, 6, 12};

QString placeText(const BreakpointLocation &place)
{
    if (isDisassemblyName(place.file))
        return u"0x%1"_s.arg(uint(place.line) - 1, 8, 16, QLatin1Char('0'));
    return u"%1, %2"_s.arg(QFileInfo(place.file).fileName(), QString::number(place.line));
}
} // namespace

BreakpointsPane::BreakpointsPane(Activity &activity, DebugControl &debug, WindowServices &services, QWidget *parent)
    : QWidget(parent)
    , m_activity(activity)
    , m_debug(debug)
    , m_services(services)
    , m_list(new ListView(this))
    , m_refresh(this, RefreshDelay, [this] { read(); })
{
    setObjectName(u"breakpointsView"_s);
    createLayout();
    followProgram();
    showLimits();
}

void BreakpointsPane::createLayout()
{
    m_list->setObjectName(u"breakpoints"_s);
    m_list->setAccessibleName(tr("Breakpoints"));
    m_list->setHeaderLabels(
        {tr("Place"), tr("Condition"), tr("Stop at hit"), tr("Print and continue"), tr("Hits"), tr("Project")});
    m_list->setRootIsDecorated(false);
    m_list->setSelectionBehavior(QAbstractItemView::SelectItems); // Left and Right move between the cells
    m_list->setDefaultRenameAction(ListView::Accept);
    m_list->setMinimumSize(readableSize(*m_list));
    m_list->installEventFilter(this);
    const QFontMetrics metrics(m_list->font());
    for (int column = 0; column < ColumnCount; ++column)
        m_list->header()->resizeSection(column, metrics.horizontalAdvance(u'0') * ColumnCharacters[size_t(column)]);
    setFocusProxy(m_list);
    m_message = new QLabel;
    m_message->setObjectName(u"message"_s);
    m_limits = new QLabel;
    m_limits->setObjectName(u"limits"_s);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(2);
    layout->addWidget(m_list, 1);
    layout->addWidget(createDataRow());
    for (QLabel *label : {m_message, m_limits}) {
        label->setTextFormat(Qt::PlainText);
        label->setWordWrap(true);
        label->setMargin(3);
        layout->addWidget(label);
    }
    m_message->hide();
}

QWidget *BreakpointsPane::createDataRow()
{
    m_expression = new QLineEdit;
    m_expression->setObjectName(u"dataExpression"_s);
    m_expression->setPlaceholderText(tr("Variable or expression"));
    m_expression->setAccessibleName(tr("Data at which the program stops"));
    m_access = new QComboBox;
    m_access->setObjectName(u"dataAccess"_s);
    m_access->setAccessibleName(tr("Kind of access"));
    m_access->setSizeAdjustPolicy(QComboBox::AdjustToContents); // which are known later
    m_add = new QPushButton(tr("Add Data Breakpoint"));
    m_add->setObjectName(u"dataAdd"_s);
    auto *row = new QWidget;
    row->setObjectName(u"dataRow"_s);
    auto *layout = new QGridLayout(row); // of two lines, because the pane is often narrow
    layout->setContentsMargins(4, 0, 4, 0);
    layout->setSpacing(2);
    layout->addWidget(m_expression, 0, 0, 1, 2);
    layout->addWidget(m_access, 1, 0);
    layout->addWidget(m_add, 1, 1);
    row->hide();
    return row;
}

void BreakpointsPane::followProgram()
{
    connect(&m_debug, &DebugControl::breakpointsReported, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::stateEntered, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::projectsChanged, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::projectActivityChanged, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::currentProjectChanged, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::workspaceClosing, this, [this] { showRows({}); });
    connect(m_list, &QTreeWidget::itemChanged, this, &BreakpointsPane::checkChanged);
    connect(m_list, &ListView::itemRenamed, this, &BreakpointsPane::edited);
    connect(m_list, &ListView::returnPressed, this, &BreakpointsPane::openSource);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem *item, int column) {
        auto *row = static_cast<ListViewItem *>(item);
        row->isRenameEnabled(column) ? row->startRename(column) : openSource(row);
    });
    connect(m_expression, &QLineEdit::returnPressed, this, &BreakpointsPane::addData);
    connect(m_add, &QPushButton::clicked, this, &BreakpointsPane::addData);
}

bool BreakpointsPane::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_list || event->type() != QEvent::KeyPress || !m_list->currentItem())
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    ListViewItem *item = m_list->currentItem();
    if (key->key() == Qt::Key_Space)
        item->setCheckState(PlaceColumn, item->checkState(PlaceColumn) == Qt::Checked ? Qt::Unchecked : Qt::Checked);
    else if (key->key() == Qt::Key_Delete)
        remove();
    else
        return false;
    return true;
}

// Rows ----------------------------------------------------------------------------------------------------------------

void BreakpointsPane::read()
{
    if (m_list->renameEdit()) // the user is typing
        return m_refresh.schedule();
    const QPointer<BreakpointsPane> self(this);
    QList<Row> rows;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project && project->isActive())
            addRowsOf(project, &rows);
        if (!self)
            return;
    }
    showLimits();
    if (!self)
        return;
    rows.removeIf([](const Row &row) { return !row.project; });
    showRows(rows);
}

void BreakpointsPane::addRowsOf(Project *project, QList<Row> *rows)
{
    const QPointer<Project> kept(project);
    const auto environment = shareInterface(project->executionInterface());
    const auto details = queryPlugin<IBreakpointDetails>(environment);
    const int features = askPlugin<&IBreakpointDetails::features>(details);
    for (const BreakpointRecord &record :
         askPlugin<&IBreakpoints::breakpoints>(queryPlugin<IBreakpoints>(environment))) {
        if (!record.locations.isEmpty())
            rows->append({kept,
                          false,
                          record.locations.first(),
                          {},
                          record.state,
                          detailsOf(environment.get(), record),
                          features});
    }
    for (const DataBreakpoint &point : askPlugin<&IBreakpointDetails::dataBreakpoints>(details))
        rows->append({kept, true, {}, point, point.state, point.details, features});
}

void BreakpointsPane::showRows(const QList<Row> &rows)
{
    const bool wasFilling = std::exchange(m_filling, true);
    m_rows = rows;
    while (m_list->topLevelItemCount() > m_rows.size())
        delete m_list->topLevelItem(m_list->topLevelItemCount() - 1);
    for (int i = 0; i < m_rows.size(); ++i) {
        auto *item = static_cast<ListViewItem *>(m_list->topLevelItem(i));
        if (!item)
            item = new ListViewItem(m_list, static_cast<ListViewItem *>(m_list->topLevelItem(i - 1)));
        showRow(item, m_rows[i]);
    }
    m_filling = wasFilling;
}

void BreakpointsPane::showRow(ListViewItem *item, const Row &row) const
{
    const bool refused = isRefused(row.details);
    QString place = row.isData ? dataText(row.data) : placeText(row.place);
    if (refused)
        place = tr("%1 (not set)").arg(place);
    item->setCheckState(PlaceColumn, row.state == BreakpointEnabled ? Qt::Checked : Qt::Unchecked);
    item->setText(PlaceColumn, place);
    item->setText(ConditionColumn, row.details.condition);
    item->setText(HitCountColumn, row.details.hitCount > 0 ? QString::number(row.details.hitCount) : QString());
    item->setText(LogTextColumn, row.details.logText);
    item->setText(HitsColumn, row.features != 0 ? QString::number(row.details.hits) : QString());
    item->setText(ProjectColumn, row.project ? row.project->displayName() : QString());
    item->setRenameEnabled(ConditionColumn, row.features & IBreakpointDetails::Condition);
    item->setRenameEnabled(HitCountColumn, row.features & IBreakpointDetails::HitCount);
    item->setRenameEnabled(LogTextColumn, row.features & IBreakpointDetails::LogText && !row.isData);
    QFont font = m_list->font();
    font.setItalic(refused);
    for (int column = 0; column < ColumnCount; ++column) {
        item->setFont(column, font);
        item->setToolTip(column, refused ? row.details.problem : item->text(column));
    }
}

QString BreakpointsPane::dataText(const DataBreakpoint &point)
{
    const QString data = point.expression.isEmpty() ? u"0x%1"_s.arg(point.address, 8, 16, QLatin1Char('0'))
                                                    : point.expression.simplified();
    switch (point.access) {
    case DataBreakpoint::Read:
        return tr("%1 is read").arg(data);
    case DataBreakpoint::ReadWrite:
        return tr("%1 is read or written").arg(data);
    default:
        return tr("%1 is written").arg(data);
    }
}

/// What the target of the current project can do.
void BreakpointsPane::showLimits()
{
    const QPointer<BreakpointsPane> self(this);
    const auto environment = m_activity.currentEnvironment();
    const auto details = queryPlugin<IBreakpointDetails>(environment);
    const int features = askPlugin<&IBreakpointDetails::features>(details);
    const BreakpointLimits limits = askPlugin<&IBreakpointDetails::limits>(details);
    if (!self)
        return;
    QStringList texts;
    if (environment && !details)
        texts.append(tr("The debugger of this project does not offer conditions and data breakpoints."));
    if (limits.hardware >= 0)
        texts.append(
            tr("Hardware breakpoints: %1 of %2 used.").arg(std::max(0, limits.hardwareUsed)).arg(limits.hardware));
    if (limits.data >= 0)
        texts.append(tr("Data breakpoints: %1 of %2 used.").arg(std::max(0, limits.dataUsed)).arg(limits.data));
    m_limits->setText(texts.join(u' '));
    m_limits->setVisible(!texts.isEmpty());
    fillAccessChoice(features);
}

void BreakpointsPane::fillAccessChoice(int features)
{
    const int kinds = features & (IBreakpointDetails::DataWrite | IBreakpointDetails::DataRead);
    m_add->parentWidget()->setVisible(kinds != 0);
    if (m_access->property("kinds").toInt() == kinds)
        return;
    m_access->setProperty("kinds", kinds);
    m_access->clear();
    if (kinds & IBreakpointDetails::DataWrite)
        m_access->addItem(tr("is written"), DataBreakpoint::Write);
    if (kinds & IBreakpointDetails::DataRead)
        m_access->addItem(tr("is read"), DataBreakpoint::Read);
    if (m_access->count() == 2)
        m_access->addItem(tr("is read or written"), DataBreakpoint::ReadWrite);
}

QString BreakpointsPane::text() const
{
    QString text;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem *item = m_list->topLevelItem(i);
        QStringList cells;
        for (int column = 0; column < ColumnCount; ++column)
            cells.append(item->text(column));
        text += (item->checkState(PlaceColumn) == Qt::Checked ? u"[x] "_s : u"[ ] "_s) + cells.join(u'|') + u'\n';
    }
    return text;
}

// Changes -------------------------------------------------------------------------------------------------------------

const BreakpointsPane::Row *BreakpointsPane::rowOf(const QTreeWidgetItem *item) const
{
    const int index = m_list->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(item));
    return index >= 0 && index < m_rows.size() && m_rows[index].project ? &m_rows[index] : nullptr;
}

void BreakpointsPane::report(const QString &text)
{
    m_message->setText(text);
    m_message->setVisible(!text.isEmpty());
}

/// The same rule as in the margins.
bool BreakpointsPane::mayChange()
{
    const bool running = m_activity.stateOfWork() == StateRunning;
    report(running ? tr("Breakpoints cannot be modified while the processor is running.") : QString());
    if (running)
        m_refresh.schedule(); // shows the old values again
    return !running;
}

void BreakpointsPane::checkChanged(QTreeWidgetItem *item, int column)
{
    const Row *row = rowOf(item);
    if (m_filling || column != PlaceColumn || !row)
        return;
    const int state = item->checkState(PlaceColumn) == Qt::Checked ? BreakpointEnabled : BreakpointDisabled;
    if (state != row->state && mayChange())
        setState(Row(*row), state);
}

void BreakpointsPane::remove()
{
    if (const Row *row = rowOf(m_list->currentItem()); row && mayChange())
        setState(Row(*row), BreakpointRemoved);
}

void BreakpointsPane::setState(const Row &row, int state)
{
    if (row.isData) {
        DataBreakpoint point = row.data;
        point.state = state;
        return setData(row.project, point);
    }
    const QPointer<BreakpointsPane> self(this);
    const auto breakpoints = queryPlugin<IBreakpoints>(row.project->executionInterface());
    int result = -1;
    readPlugin<&IBreakpoints::setBreakpoint>(result, breakpoints, row.place.file, row.place.line, state);
    if (!self)
        return;
    if (result != 0)
        report(tr("The breakpoint could not be modified."));
    m_refresh.schedule();
    m_debug.refreshBreakpointMarkers();
}

void BreakpointsPane::edited(ListViewItem *item, int column, const QString &text)
{
    const Row *row = rowOf(item);
    if (!row || !mayChange())
        return;
    BreakpointDetails details = row->details;
    const QString typed = text.trimmed();
    bool isNumber = true;
    if (column == ConditionColumn)
        details.condition = typed;
    else if (column == LogTextColumn)
        details.logText = typed;
    else if (column == HitCountColumn)
        details.hitCount = typed.isEmpty() ? 0 : typed.toUInt(&isNumber);
    if (isNumber)
        return setDetails(Row(*row), details);
    report(tr("'%1' is not a number of hits.").arg(typed));
    m_refresh.schedule();
}

void BreakpointsPane::setDetails(const Row &row, const BreakpointDetails &details)
{
    if (row.isData) {
        DataBreakpoint point = row.data;
        point.details = details;
        return setData(row.project, point);
    }
    const QPointer<BreakpointsPane> self(this);
    const auto offered = queryPlugin<IBreakpointDetails>(row.project->executionInterface());
    QString reason;
    const bool isSet =
        askPlugin<&IBreakpointDetails::setDetails>(offered, row.place.file, row.place.line, details, reason);
    if (!self)
        return;
    if (!isSet)
        report(tr("The breakpoint could not be modified: %1").arg(reason));
    for (Row &shown : m_rows) { // the next cell may be edited before they are read again
        if (isSet && !shown.isData && shown.project == row.project && shown.place.file == row.place.file
            && shown.place.line == row.place.line)
            shown.details = details;
    }
    m_refresh.schedule();
}

void BreakpointsPane::setData(Project *project, DataBreakpoint point)
{
    const QPointer<BreakpointsPane> self(this);
    const auto offered = queryPlugin<IBreakpointDetails>(project->executionInterface());
    QString reason;
    const bool isSet = askPlugin<&IBreakpointDetails::setDataBreakpoint>(offered, point, reason);
    if (!self)
        return;
    if (!isSet)
        report(tr("The breakpoint could not be set: %1").arg(reason));
    else if (point.id != 0 && m_expression->text().trimmed() == point.expression)
        m_expression->clear();
    m_refresh.schedule();
}

void BreakpointsPane::addData()
{
    DataBreakpoint point;
    point.expression = m_expression->text().trimmed();
    point.access = m_access->currentData().toInt();
    Project *project = m_activity.currentProject();
    if (!point.expression.isEmpty() && project && mayChange())
        setData(project, point);
}

void BreakpointsPane::openSource(const QTreeWidgetItem *item)
{
    const Row *row = rowOf(item);
    if (!row || row->isData || isDisassemblyName(row->place.file))
        return;
    const int line = row->place.line;
    if (!m_services.openFile(row->project->absolutePath(row->place.file), false))
        return;
    if (auto *navigation = viewInterface<ITextNavigation>(m_services.viewManager()->currentView()))
        navigation->gotoLine(line);
}
