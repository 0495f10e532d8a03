#include "pluginbinder.h"
#include "activity.h"
#include "callplugin.h"
#include "dockwindow.h"
#include "handout.h"
#include "ibuildenvironment.h"
#include "ibuildeventsimpl.h"
#include "iexecutioneventsimpl.h"
#include "iperipherals.h"
#include "iprojectimpl.h"
#include "iqueryplugininterfaceimpl.h"
#include "iworkspaceclient.h"
#include "messages.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "pluginfactory.h"
#include "project.h"
#include "varnelassert.h"
#include "windowservices.h"
#include <algorithm>
#include <QAction>

using namespace Qt::StringLiterals;

PluginBinder::PluginBinder(const Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window)
{
    connect(&activity, &Activity::projectLoaded, this, &PluginBinder::bindProjectPlugins);
    connect(&activity, &Activity::projectsChanged, this, &PluginBinder::notifyWorkspaceChanged);
    connect(&activity, &Activity::workspaceClosed, this, &PluginBinder::deleteExtensionDocks);
}

PluginBinder::~PluginBinder()
{
    deleteExtensionDocks();
}

void PluginBinder::bindProjectPlugins(Project *project)
{
    VARNEL_ASSERT(project);
    if (!project)
        return;
    const QPointer<Project> alive(project); // messages run the event loop
    if (!project->buildEnvironment().isEmpty())
        bindBuildEnvironment(project);
    if (alive && !project->executionEnvironment().isEmpty())
        bindExecutionEnvironment(project);
}

void PluginBinder::bindBuildEnvironment(Project *project)
{
    const auto environment = create<IBuildEnvironment>(
        project->buildEnvironment(), tr("The workspace contains a project that requires the %1 build environment, "
                                        "which is not installed.\nYou will not be able to build the project.")
                                         .arg(project->buildEnvironmentName()));
    if (!environment)
        return;
    const QPointer<Project> alive(project);
    project->setBuildEnvironment(environment.get());
    auto events = makeBuildEvents(project);
    const QString option = project->buildEnvironmentOption();
    if (!askPlugin("IBuildEnvironment::initialise", [&] { return environment->initialise(events.get(), option); }))
        inform(tr("The build system could not be initialised.\n\nPlease see Build Output window for details."));
    events.reset();
    if (!alive)
        return;
    const InterfacePtr<IProject> iproject(handOut<IProject, IProjectImpl>(project));
    runPlugin("IBuildEnvironment::setProject", [&] { environment->setProject(iproject.get()); });
    if (alive)
        introduceWorkspace(environment.get(), project);
}

void PluginBinder::bindExecutionEnvironment(Project *project)
{
    const auto environment = create<IExecutionEnvironment>(
        project->executionEnvironment(),
        tr("The workspace contains a project that requires the %1 execution environment, which is not installed.\n"
           "You will not be able to debug or run the project.")
            .arg(project->executionEnvironmentName()));
    if (!environment)
        return;
    const QPointer<Project> alive(project);
    project->setExecutionEnvironment(environment.get());
    const auto events = makeExecutionEvents(project, environment.get());
    const InterfacePtr<IProject> iproject(handOut<IProject, IProjectImpl>(project));
    const QString option = project->executionEnvironmentOption();
    if (!askPlugin("IExecutionEnvironment::initialise",
                   [&] { return environment->initialise(iproject.get(), events.get(), option); }))
        inform(tr("The debugger could not be initialised.\n\nPlease see Debug Output window for details."));
    QAction *peripherals = m_window.action(u"debugTogglePeripheralWindow"_s);
    if (peripherals && queryInterface<IPeripherals>(environment.get()))
        peripherals->setVisible(true);
    if (!alive)
        return;
    if (const auto docks = queryInterface<IDockExtension>(environment.get()))
        addPluginDockWindows(docks.get(), project);
    introduceWorkspace(environment.get(), project);
}

/// A new object of the plug-in @p feature as its interface Environment. A plug-in that has another main interface is
/// ignored without a message.
template <typename Environment>
InterfacePtr<Environment> PluginBinder::create(const QString &feature, const QString &ifMissing)
{
    const InterfacePtr<IPluginObject> object(m_window.createPlugin(feature));
    if (!object) {
        inform(ifMissing);
        return nullptr;
    }
    return queryInterface<Environment>(object.get());
}

InterfacePtr<IBuildEvents> PluginBinder::makeBuildEvents(const Project *project)
{
    auto *events = new IBuildEventsImpl;
    connect(events, &IBuildEventsImpl::sigBuildFinished, this, &PluginBinder::buildFinished);
    connect(events, &IBuildEventsImpl::sigXmlFeedback, this, &PluginBinder::xmlFeedback);
    connect(events, &IBuildEventsImpl::sigFeedback, m_window.outputWindow()->page(OutputWindow::Build),
            qOverload<const QString &>(&OutputPage::outputLine));
    // reports of a plug-in object that outlives its project, because of another reference, are ignored
    connect(project, &QObject::destroyed, events, [events] { events->disconnect(); });
    return shareInterface<IBuildEvents>(events);
}

InterfacePtr<IExecutionEvents> PluginBinder::makeExecutionEvents(const Project *project,
                                                                 IExecutionEnvironment *environment)
{
    auto *events = new IExecutionEventsImpl(environment);
    connect(events, &IExecutionEventsImpl::sigFeedback, m_window.outputWindow(),
            qOverload<const QString &, const QString &, bool>(&OutputWindow::outputLine));
    connect(events, &IExecutionEventsImpl::sigProcessorStatusChanged, this, &PluginBinder::processorStatusChanged);
    connect(events, &IExecutionEventsImpl::sigProgramStatusChanged, this, &PluginBinder::programStatusChanged);
    connect(events, &IExecutionEventsImpl::sigStatusInfo, this, &PluginBinder::statusInfo);
    connect(events, &IExecutionEventsImpl::sigBreakpointsChanged, this, &PluginBinder::breakpointsChanged);
    connect(project, &QObject::destroyed, events, [events] { events->disconnect(); });
    return shareInterface<IExecutionEvents>(events);
}

void PluginBinder::introduceWorkspace(QUnknownInterface *environment, Project *project)
{
    const auto client = queryInterface<IWorkspaceClient>(environment);
    if (!client)
        return;
    const auto query = shareInterface(new IQueryPluginInterfaceImpl(&m_activity, project));
    runPlugin("IWorkspaceClient::setQueryInterface", [&] { client->setQueryInterface(query.get()); });
}

void PluginBinder::notifyWorkspaceChanged() const
{
    std::vector<InterfacePtr<IWorkspaceClient>> clients;
    for (const QPointer<Project> &project : m_activity.projects()) {
        clients.push_back(queryInterface<IWorkspaceClient>(project->buildInterface()));
        clients.push_back(queryInterface<IWorkspaceClient>(project->executionInterface()));
    }
    for (const auto &client : clients) {
        if (client)
            runPlugin("IWorkspaceClient::workspaceChanged", [&] { client->workspaceChanged(); });
    }
}

void PluginBinder::addPluginDockWindows(IDockExtension *iface, const Project *project)
{
    m_window.saveDockLayout();
    QList<QWidget *> widgets = askPlugin("IDockExtension::widgets", [&] { return iface->widgets(); });
    widgets.removeAll(nullptr);
    for (QWidget *widget : std::as_const(widgets))
        addDockWindow(widget, project);
    if (!widgets.isEmpty())
        m_dockOwners.push_back(shareInterface(iface));
    m_window.restoreDockLayout();
}

void PluginBinder::addDockWindow(QWidget *widget, const Project *project)
{
    const auto titled = [&](const QString &caption) {
        return DynamicMenus::commandText(caption, project->name(), int(m_activity.projects().size()));
    };
    const QString title = titled(widget->windowTitle());
    const QString stated = widget->property("dockName").toString(); // the same in every language
    const QString ownName = stated.isEmpty() ? widget->windowTitle() : stated;
    QString name = u"plugin"_s + ownName;
    if (hasExtensionDock(name)) // of another project: the layout identifies windows by their names
        name = u"plugin"_s + titled(ownName);
    QDockWidget *dock = m_window.addDock(name, title, Qt::RightDockWidgetArea);
    dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable
                      | QDockWidget::DockWidgetFloatable);
    dock->setWidget(widget); // this also shows the widget
    dock->hide();
    m_extensionDocks.append(dock);
}

QList<QDockWidget *> PluginBinder::extensionDocks() const
{
    QList<QDockWidget *> docks;
    for (QDockWidget *dock : m_extensionDocks) {
        if (dock)
            docks.append(dock);
    }
    return docks;
}

bool PluginBinder::hasExtensionDock(const QString &name) const
{
    const QList<QDockWidget *> docks = extensionDocks();
    return std::ranges::any_of(docks, [&name](const QDockWidget *dock) { return dock->objectName() == name; });
}

QList<MenuEntry> PluginBinder::extensionDockEntries() const
{
    QList<MenuEntry> entries;
    const QList<QDockWidget *> docks = extensionDocks();
    for (const QDockWidget *dock : docks)
        entries.append({.text = dock->windowTitle(), .checked = !dock->isHidden()});
    return entries;
}

void PluginBinder::toggleExtensionDock(int index) const
{
    if (QDockWidget *dock = extensionDocks().value(index))
        dock->setVisible(dock->isHidden());
}

void PluginBinder::deleteExtensionDocks()
{
    qDeleteAll(extensionDocks());
    m_extensionDocks.clear();
    m_dockOwners.clear();
}

void PluginBinder::inform(const QString &text)
{
    showInformation(m_window.dialogParent(), text);
}
