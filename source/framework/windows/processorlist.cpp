#include "processorlist.h"
#include "activity.h"
#include "debugcontrol.h"
#include "gridtext.h"
#include "listview.h"
#include "project.h"
#include "projectworkspace.h"
#include "windowservices.h"
#include <algorithm>
#include <array>
#include <QAction>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {
constexpr int RefreshDelay = 50; ///< in ms; a program may report often
constexpr int ClockInterval = 1000;
constexpr std::array ColumnCharacters{14, 11, 18, 16, 18, 8};

QPushButton *button(const QString &name, const QString &text, const QString &toolTip, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    return button;
}
} // namespace

ProcessorList::ProcessorList(Activity &activity, DebugControl &debug, const WindowServices &services, QWidget *parent)
    : QWidget(parent)
    , m_activity(activity)
    , m_debug(debug)
    , m_list(new ListView(this))
    , m_run(button(u"processorRun"_s, tr("Run"), tr("Runs the selected processor."), this))
    , m_pause(button(u"processorPause"_s, tr("Pause"), tr("Pauses the selected processor."), this))
    , m_runAll(button(u"processorRunAll"_s, tr("Run All"), tr("Runs all processors."), this))
    , m_pauseAll(button(u"processorPauseAll"_s, tr("Pause All"), tr("Pauses all processors."), this))
    , m_refresh(this, RefreshDelay, [this] { read(); })
{
    setObjectName(u"processorList"_s);
    m_clock.setInterval(ClockInterval);
    createLayout(services);
    connectButtons();
    followProgram();
    enableButtons();
}

void ProcessorList::createLayout(const WindowServices &services)
{
    m_list->setObjectName(u"processors"_s);
    m_list->setAccessibleName(tr("Processors"));
    m_list->setHeaderLabels({tr("Project"), tr("State"), tr("Function"), tr("Line"), tr("Last stop"), tr("For")});
    m_list->setRootIsDecorated(false);
    m_list->setAllColumnsShowFocus(true);
    keepReadable(*m_list);
    m_list->header()->setSectionResizeMode(QHeaderView::Interactive);
    const QFontMetrics metrics(m_list->font());
    for (int column = 0; column < ColumnCount; ++column)
        m_list->header()->resizeSection(column, metrics.horizontalAdvance(u'0') * ColumnCharacters[size_t(column)]);
    setFocusProxy(m_list);
    auto *buttons = new QHBoxLayout;
    buttons->setContentsMargins(4, 4, 4, 2);
    for (QPushButton *each : {m_run, m_pause, m_runAll, m_pauseAll}) {
        if (const QAction *like = services.action(each == m_run || each == m_runAll ? u"debugRun"_s : u"debugPause"_s))
            each->setIcon(like->icon());
        buttons->addWidget(each);
    }
    buttons->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(2);
    layout->addLayout(buttons);
    layout->addWidget(m_list, 1);
}

void ProcessorList::connectButtons()
{
    connect(m_run, &QPushButton::clicked, this, [this] { m_debug.runProcessor(selectedProject()); });
    connect(m_pause, &QPushButton::clicked, this, [this] { m_debug.pauseProcessor(selectedProject()); });
    connect(m_runAll, &QPushButton::clicked, &m_debug, &DebugControl::runAllProcessors);
    connect(m_pauseAll, &QPushButton::clicked, &m_debug, &DebugControl::pauseAllProcessors);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &ProcessorList::makeCurrent);
    connect(m_list, &ListView::returnPressed, this, &ProcessorList::makeCurrent);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ProcessorList::enableButtons);
}

void ProcessorList::followProgram()
{
    connect(&m_activity, &Activity::stateEntered, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::projectsChanged, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::projectActivityChanged, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::currentProjectChanged, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_activity, &Activity::workspaceClosing, this, &ProcessorList::clear);
    connect(&m_debug, &DebugControl::processorReported, &m_refresh, &DelayedRefresh::schedule);
    connect(&m_clock, &QTimer::timeout, this, &ProcessorList::showTimes);
}

void ProcessorList::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    m_clock.start();
}

void ProcessorList::hideEvent(QHideEvent *event)
{
    m_clock.stop();
    QWidget::hideEvent(event);
}

// Rows ----------------------------------------------------------------------------------------------------------------

void ProcessorList::read()
{
    const QPointer<ProcessorList> self(this);
    QList<Row> rows;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project)
            rows.append(rowOf(project));
        if (!self)
            return;
    }
    rows.removeIf([](const Row &row) { return !row.project; });
    showRows(rows);
}

ProcessorList::Row ProcessorList::rowOf(Project *project) const
{
    Row row{project, project->name(), project == m_activity.currentProject(), {}, {}, {}, {}};
    const Activity::Environment environment = shareInterface(project->executionInterface());
    if (!environment)
        return row;
    const auto report = m_debug.reports().status(environment.get());
    const auto status = report ? std::optional(report->status) : std::nullopt;
    row.state = processorState(m_activity.state(), row.current, status);
    if (report && row.state != ProcessorState::NoSession) {
        row.since = report->since;
        row.reason = stopReasonText(report->lastStop, m_debug.reports().reason(environment.get()));
    }
    if (row.state == ProcessorState::Paused)
        row.spot = programSpot(environment.get(), QFileInfo(project->fileName()).path());
    return row;
}

void ProcessorList::showRows(const QList<Row> &rows)
{
    const bool same = std::ranges::equal(rows, m_rows, {}, &Row::project, &Row::project);
    Project *selected = selectedProject();
    m_rows = rows;
    if (!same)
        m_list->clear();
    for (int i = 0; i < m_rows.size(); ++i) {
        auto *item = static_cast<ListViewItem *>(m_list->topLevelItem(i));
        if (!item)
            item = new ListViewItem(m_list, static_cast<ListViewItem *>(m_list->topLevelItem(i - 1)));
        showRow(item, m_rows[i]);
        if (!same && (i == 0 || m_rows[i].project == selected))
            m_list->setCurrentItem(item);
    }
    showTimes();
    enableButtons();
}

void ProcessorList::showRow(ListViewItem *item, const Row &row)
{
    item->setText(ProjectColumn, row.name);
    item->setText(StateColumn, processorStateText(row.state));
    item->setText(FunctionColumn, row.spot.function);
    item->setText(PlaceColumn, row.spot.place);
    item->setText(ReasonColumn, row.reason);
    QFont font = item->treeWidget()->font();
    font.setBold(row.current);
    for (int column = 0; column < ColumnCount; ++column) {
        item->setFont(column, font);
        item->setToolTip(column, item->text(column)); // columns may be narrow
    }
}

void ProcessorList::showTimes()
{
    for (int i = 0; i < m_rows.size(); ++i) {
        const QElapsedTimer &since = m_rows[i].since;
        m_list->topLevelItem(i)->setText(TimeColumn, since.isValid() ? elapsedText(since.elapsed()) : QString());
    }
}

void ProcessorList::clear()
{
    m_rows.clear();
    m_list->clear();
    enableButtons();
}

QString ProcessorList::text() const
{
    QString text;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QStringList cells;
        for (int column = 0; column < TimeColumn; ++column)
            cells.append(m_list->topLevelItem(i)->text(column));
        text += cells.join(u'|') + u'\n';
    }
    return text;
}

// Commands ------------------------------------------------------------------------------------------------------------

Project *ProcessorList::selectedProject() const
{
    const int index = m_list->indexOfTopLevelItem(m_list->currentItem());
    return index >= 0 && index < m_rows.size() ? m_rows[index].project : nullptr;
}

void ProcessorList::makeCurrent()
{
    Project *project = selectedProject();
    if (project && m_activity.workspace())
        m_activity.workspace()->setCurrentProject(project);
}

bool ProcessorList::canRun(const Row &row) const
{
    return row.state == ProcessorState::Paused
           || (row.state == ProcessorState::NoSession && m_activity.state() == StateIdle);
}

bool ProcessorList::canPause(const Row &row)
{
    return row.state == ProcessorState::Running || row.state == ProcessorState::Sleeping;
}

void ProcessorList::enableButtons()
{
    const int index = m_list->indexOfTopLevelItem(m_list->currentItem());
    const bool selected = index >= 0 && index < m_rows.size();
    m_run->setEnabled(selected && canRun(m_rows[index]));
    m_pause->setEnabled(selected && canPause(m_rows[index]));
    m_runAll->setEnabled(std::ranges::any_of(m_rows, [this](const Row &row) { return canRun(row); }));
    m_pauseAll->setEnabled(std::ranges::any_of(m_rows, canPause));
}
