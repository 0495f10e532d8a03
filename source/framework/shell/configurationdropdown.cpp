#include "configurationdropdown.h"
#include "activity.h"
#include "project.h"
#include "projectproperties.h"
#include "toolbar.h"
#include <QEvent>

using namespace Qt::StringLiterals;

ConfigurationDropdown::ConfigurationDropdown(const Activity &activity, ToolBar *bar)
    : QComboBox(bar), m_activity(activity)
{
    setObjectName(u"configurationDropdown"_s);
    setMinimumWidth(100);
    setSizeAdjustPolicy(AdjustToContents);
    setToolTip(tr("Current configuration"));
    setAccessibleName(toolTip());
    m_item = bar->addWidget(this);
    m_item->setVisible(false);
    connect(this, &QComboBox::activated, this, &ConfigurationDropdown::choose);
    connect(&activity, &Activity::projectsChanged, this, &ConfigurationDropdown::refresh);
    connect(&activity, &Activity::currentProjectChanged, this, &ConfigurationDropdown::refresh);
    connect(&activity, &Activity::stateEntered, this, &ConfigurationDropdown::refresh);
    connect(&activity, &Activity::projectLoaded, this, [this](const Project *project) {
        connect(project, &Project::configurationChanged, this, &ConfigurationDropdown::refresh);
    });
    connect(&activity, &Activity::workspaceClosing, this, [this] { m_item->setVisible(false); });
}

void ConfigurationDropdown::refresh()
{
    const Project *project = m_activity.currentProject();
    const QStringList names = project ? project->properties()->configurations() : QStringList();
    QStringList shown;
    for (int i = 0; i < count(); ++i)
        shown += itemText(i);
    if (shown != names) {
        clear();
        addItems(names);
    }
    setCurrentIndex(project ? int(names.indexOf(project->currentConfiguration())) : -1);
    setEnabled(m_activity.state() == StateIdle && names.size() > 1);
    m_item->setVisible(!names.isEmpty());
}

void ConfigurationDropdown::showPopup()
{
    refresh();
    QComboBox::showPopup();
}

/// A dialog that has edited the configurations was closed.
void ConfigurationDropdown::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::ActivationChange)
        refresh();
    QComboBox::changeEvent(event);
}

void ConfigurationDropdown::choose(int index)
{
    Project *project = m_activity.currentProject();
    if (project && m_activity.state() == StateIdle && project->properties()->configurations().contains(itemText(index)))
        project->setCurrentConfiguration(itemText(index));
    refresh();
}
