#include "projectdropdown.h"
#include "activity.h"
#include "project.h"
#include "projectworkspace.h"
#include "toolbar.h"
#include "varnelassert.h"

using namespace Qt::StringLiterals;

ProjectDropdown::ProjectDropdown(const Activity &activity, ToolBar *bar) : QComboBox(bar), m_activity(activity)
{
    setObjectName(u"projectDropdown"_s);
    setMinimumWidth(100);
    setSizeAdjustPolicy(AdjustToContents);
    setToolTip(tr("Current project"));
    m_item = bar->addWidget(this);
    m_item->setVisible(false);
    connect(this, &QComboBox::activated, this, &ProjectDropdown::choose);
    connect(&activity, &Activity::projectsChanged, this, &ProjectDropdown::refresh);
    connect(&activity, &Activity::projectActivityChanged, this, &ProjectDropdown::refresh);
    connect(&activity, &Activity::currentProjectChanged, this, &ProjectDropdown::selectCurrent);
    connect(&activity, &Activity::workspaceClosing, this, &ProjectDropdown::hideItem);
}

void ProjectDropdown::refresh()
{
    clear();
    const QList<QPointer<Project>> projects = m_activity.projects();
    for (const QPointer<Project> &project : projects) {
        if (project->isActive())
            addItem(project->name());
    }
    selectCurrent();
    m_item->setVisible(projects.size() >= 2);
}

void ProjectDropdown::hideItem()
{
    m_item->setVisible(false);
}

void ProjectDropdown::selectCurrent()
{
    const ProjectWorkspace *workspace = m_activity.workspace();
    setCurrentIndex(workspace ? workspace->currentProjectIndex() : -1);
}

void ProjectDropdown::choose(int index)
{
    VARNEL_ASSERT_TEXT(m_activity.workspace(), "m_projectWorkspace");
    if (ProjectWorkspace *workspace = m_activity.workspace())
        workspace->setCurrentProject(index);
}
