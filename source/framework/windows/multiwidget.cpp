#include "multiwidget.h"
#include "activity.h"
#include "debugqueries.h"
#include "project.h"
#include "projectnames.h"
#include "projectworkspace.h"
#include <QBoxLayout>
#include <QPointer>
#include <QTabWidget>
#include <utility>

namespace {
/// Deletes the pane in the next turn of the event loop: its menu or editor may be the sender of the current signal.
void dispose(DebugPane *pane)
{
    pane->releaseEnvironment();
    pane->hide();
    pane->setParent(nullptr);
    pane->deleteLater();
}
} // namespace

MultiWidget::MultiWidget(const Activity &activity, QWidget *parent)
    : QWidget(parent), m_activity(activity), m_tabs(new QTabWidget(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_tabs);
    m_tabs->setTabPosition(QTabWidget::South);
    m_tabs->hide();
    connect(&activity, &Activity::workspaceOpened, this, &MultiWidget::workspaceChanged);
    connect(&activity, &Activity::projectsChanged, this, &MultiWidget::workspaceChanged);
    connect(&activity, &Activity::projectActivityChanged, this, &MultiWidget::workspaceChanged);
    connect(&activity, &Activity::currentProjectChanged, this, &MultiWidget::currentProjectChanged);
    connect(&activity, &Activity::workspaceClosing, this, &MultiWidget::releasePanes);
}

QList<DebugPane *> MultiWidget::widgets() const
{
    QList<DebugPane *> panes;
    if (m_singlePane)
        panes += m_singlePane;
    for (int i = 0; i < m_tabs->count(); ++i)
        panes += static_cast<DebugPane *>(m_tabs->widget(i));
    return panes;
}

void MultiWidget::update()
{
    m_empty = false;
    Q_EMIT doUpdate();
}

void MultiWidget::showWrittenValues()
{
    DebugQueries::raiseGeneration();
    update();
}

void MultiWidget::setPaused(bool paused)
{
    m_paused = paused;
    for (DebugPane *pane : widgets())
        pane->setPaused(paused);
}

void MultiWidget::setAppearance(const PaneAppearance &appearance)
{
    m_appearance = appearance;
    for (DebugPane *pane : widgets())
        pane->setAppearance(appearance);
}

void MultiWidget::currentProjectChanged()
{
    if (const ProjectWorkspace *workspace = m_activity.workspace())
        m_tabs->setCurrentIndex(workspace->currentProjectIndex());
}

void MultiWidget::workspaceChanged()
{
    removePanes();
    const int removals = m_removals;
    const QList<QPointer<Project>> projects = m_activity.projects();
    const bool tabbed = projects.size() > 1;
    m_tabs->setVisible(tabbed);
    if (projects.isEmpty())
        return showSinglePane(newPane(this, nullptr, true));
    for (const QPointer<Project> &project : projects) {
        if (project)
            addPane(project, tabbed);
        if (removals != m_removals)
            return; // the plug-in has changed the workspace, which has its panes by now
    }
    currentProjectChanged();
    m_empty = m_paused;
    if (isVisible())
        fillIfEmpty();
}

void MultiWidget::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_empty) // the dock may update it now
        QMetaObject::invokeMethod(this, &MultiWidget::fillIfEmpty, Qt::QueuedConnection);
}

void MultiWidget::fillIfEmpty()
{
    if (m_empty && m_paused)
        fillPanes();
}

/// Reads the values of new panes. A plug-in may call back and have panes removed.
void MultiWidget::fillPanes()
{
    m_empty = false;
    QList<QPointer<DebugPane>> panes;
    for (DebugPane *pane : widgets())
        panes += pane;
    for (const QPointer<DebugPane> &pane : std::as_const(panes)) {
        if (pane)
            pane->update();
    }
}

/// The environments are about to be released.
void MultiWidget::releasePanes()
{
    removePanes();
    m_tabs->hide();
    showSinglePane(newPane(this, nullptr, true));
}

void MultiWidget::removePanes()
{
    ++m_removals;
    const QList<DebugPane *> panes = widgets();
    m_singlePane = nullptr;
    m_tabs->clear();
    for (DebugPane *pane : panes)
        dispose(pane);
}

void MultiWidget::addPane(Project *project, bool tabbed)
{
    const auto environment = shareInterface(project->executionInterface());
    if (!project->isActive() || !environment)
        return;
    DebugPane *pane = newPane(tabbed ? static_cast<QWidget *>(m_tabs) : this, environment.get(), false);
    if (!pane)
        return;
    pane->setObjectName(objectNameOfProject(m_activity, project) + u'/' + pane->objectName()); // for test drivers
    if (!tabbed)
        return showSinglePane(pane);
    const int index = m_tabs->addTab(pane, shownNameOfProject(m_activity, project).replace(u'&', QStringLiteral("&&")));
    m_tabs->setTabToolTip(index, project->executionEnvironmentName());
}

/// Null as well if the plug-in has caused new panes meanwhile: this one would never be removed.
DebugPane *MultiWidget::newPane(QWidget *parent, IExecutionEnvironment *environment, bool force)
{
    const int removals = m_removals;
    DebugPane *pane = createWidget(parent, environment, force);
    if (pane && removals != m_removals)
        dispose(std::exchange(pane, nullptr));
    if (!pane)
        return nullptr;
    pane->setPaused(m_paused);
    if (m_appearance)
        pane->setAppearance(*m_appearance);
    connect(pane, &DebugPane::doUpdate, this, &MultiWidget::showWrittenValues);
    connect(pane, &DebugPane::message, this, &MultiWidget::message);
    connect(pane, &DebugPane::placeChosen, this, &MultiWidget::placeChosen);
    connect(this, &MultiWidget::doUpdate, pane, &DebugPane::update);
    return pane;
}

void MultiWidget::showSinglePane(DebugPane *pane)
{
    if (!pane)
        return;
    m_singlePane = pane;
    layout()->addWidget(pane);
    pane->show();
}
