#include "multiwidget.h"
#include "debugpane.h"
#include "project.h"
#include "projectworkspace.h"
#include <QBoxLayout>
#include <QTabWidget>

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

MultiWidget::MultiWidget(QWidget *parent) : QWidget(parent), m_tabs(new QTabWidget(this))
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    layout->addWidget(m_tabs);
    m_tabs->setTabPosition(QTabWidget::South);
    m_tabs->hide();
}

void MultiWidget::setWorkspace(ProjectWorkspace *workspace)
{
    if (m_workspace)
        m_workspace->disconnect(this);
    m_workspace = workspace;
    if (workspace) {
        connect(workspace, &ProjectWorkspace::currentProjectChanged, this, &MultiWidget::currentProjectChanged);
        connect(workspace, &ProjectWorkspace::workspaceChanged, this, &MultiWidget::workspaceChanged);
        connect(workspace, &ProjectWorkspace::projectActivityChanged, this, &MultiWidget::workspaceChanged);
    }
    workspaceChanged();
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
    Q_EMIT doUpdate();
}

void MultiWidget::currentProjectChanged()
{
    if (m_workspace)
        m_tabs->setCurrentIndex(m_workspace->currentProjectIndex());
}

void MultiWidget::workspaceChanged()
{
    removePanes();
    const int projects = m_workspace ? m_workspace->count() : 0;
    m_tabs->setVisible(projects > 1);
    if (projects == 0)
        return showSinglePane(newPane(this, nullptr, true));
    for (int i = 0; i < projects; ++i)
        addPane(m_workspace->project(i));
    currentProjectChanged();
}

void MultiWidget::removePanes()
{
    const QList<DebugPane *> panes = widgets();
    m_singlePane = nullptr;
    m_tabs->clear();
    for (DebugPane *pane : panes)
        dispose(pane);
}

void MultiWidget::addPane(Project *project)
{
    IExecutionEnvironment *environment = project->executionInterface();
    if (!project->isActive() || !environment)
        return;
    const bool tabbed = m_workspace->count() > 1;
    DebugPane *pane = newPane(tabbed ? static_cast<QWidget *>(m_tabs) : this, environment, false);
    if (!pane)
        return;
    if (!tabbed)
        return showSinglePane(pane);
    const int index = m_tabs->addTab(pane, project->displayName().replace(u'&', QStringLiteral("&&")));
    m_tabs->setTabToolTip(index, project->executionEnvironmentName());
}

DebugPane *MultiWidget::newPane(QWidget *parent, IExecutionEnvironment *environment, bool force)
{
    DebugPane *pane = createWidget(parent, environment, force);
    if (!pane)
        return nullptr;
    connect(pane, &DebugPane::doUpdate, this, &MultiWidget::update);
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
