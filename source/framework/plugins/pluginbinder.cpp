#include "pluginbinder.h"
#include "activity.h"
#include "callplugin.h"
#include "dockwindow.h"
#include "handout.h"
#include "ibuildenvironment.h"
#include "ibuildeventsimpl.h"
#include "iexecutioneventsimpl.h"
#include "iextensioncommands.h"
#include "ihostimpl.h"
#include "iperipherals.h"
#include "iprojectimpl.h"
#include "ipropertydefinitions.h"
#include "iqueryplugininterfaceimpl.h"
#include "iworkspaceclient.h"
#include "messages.h"
#include "objectnames.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "pluginfactory.h"
#include "project.h"
#include "projectnames.h"
#include "varnelassert.h"
#include "windowservices.h"
#include <algorithm>
#include <iterator>
#include <QAction>
#include <QDir>

using namespace Qt::StringLiterals;

/// @p text, with a number if it is taken.
QString numbered(const QStringList &taken, const QString &text, QChar separator)
{
    QString free = text;
    for (int number = 2; taken.contains(free); ++number)
        free = text + separator + QString::number(number);
    return free;
}

namespace {
/// @p text, with the project's name if it is taken, and with a number if that is taken too.
QString freeText(const QStringList &taken, const QString &text, const QString &project)
{
    return taken.contains(text) ? numbered(taken, DynamicMenus::commandText(text, project, 2), u' ') : text;
}

/// Whether @p object is the Interface of the build environment of @p project, which may be null.
template <typename Interface>
bool offers(const Project *project, const void *object)
{
    return project && object && queryPlugin<Interface>(project->buildInterface()).get() == object;
}
} // namespace

PluginBinder::PluginBinder(const Activity &activity, WindowServices &window, QObject *parent)
    : QObject(parent), m_activity(activity), m_window(window)
{
    connect(&activity, &Activity::projectLoaded, this, &PluginBinder::bindProjectPlugins);
    connect(&activity, &Activity::projectUnbinding, this, &PluginBinder::unbindProjectPlugins);
    connect(&activity, &Activity::projectsChanged, this, &PluginBinder::notifyWorkspaceChanged);
    connect(&activity, &Activity::workspaceClosed, this, &PluginBinder::deleteExtensionDocks);
    connect(&activity, &Activity::workspaceReplaced, this, &PluginBinder::deleteExtensionDocks);
    connect(&activity, &Activity::currentProjectChanged, this,
            [this] { Q_EMIT currentProjectChanged(m_activity.currentProject()); });
    setPluginFailureHandler([this](const PluginFailure &failure) { showFailure(failure); });
}

PluginBinder::~PluginBinder()
{
    setPluginFailureHandler({});
    deleteExtensionDocks();
}

/// Writes to the pages to which the messages about failed commands refer. A failure that a plug-in repeats at each
/// paint or event is written once in a while.
void PluginBinder::showFailure(const PluginFailure &failure)
{
    constexpr int repeatAfter = 1000; // milliseconds
    const QString plugin = failure.plugin.isEmpty() ? tr("A plug-in") : tr("The plug-in '%1'").arg(failure.plugin);
    const QString text = tr("%1 has failed in %2: %3\n").arg(plugin, failure.operation, failure.text);
    if (text == m_lastFailure && m_sinceFailure.isValid() && m_sinceFailure.elapsed() < repeatAfter)
        return;
    m_lastFailure = text;
    m_sinceFailure.start();
    OutputWindow *output = m_window.outputWindow();
    if (output && isFailureOfBuild(failure))
        output->outputLine(OutputWindow::Build, text);
    if (output && isFailureOfDebugger(failure))
        output->outputLine(OutputWindow::Debug, text);
}

bool PluginBinder::isFailureOfBuild(const PluginFailure &failure) const
{
    static const QStringList own{u"IBuildEnvironment"_s, u"IDebugBuild"_s, u"IProjectPopulate"_s,
                                 u"IMakefileGenerator"_s};
    const QString interface = failure.operation.section(u"::"_s, 0, 0);
    if (own.contains(interface))
        return true;
    for (const QPointer<Project> &project : m_activity.projects()) { // both kinds of environments may offer these
        if ((interface == "IExtensionCommands"_L1 && offers<IExtensionCommands>(project, failure.object))
            || (interface == "IPropertyDefinitions"_L1 && offers<IPropertyDefinitions>(project, failure.object))
            || (interface == "IWorkspaceClient"_L1 && offers<IWorkspaceClient>(project, failure.object)))
            return true;
    }
    return false;
}

/// A failed build is also a failed start of the debugger.
bool PluginBinder::isFailureOfDebugger(const PluginFailure &failure) const
{
    return failure.operation.startsWith("IDebugBuild::"_L1) || !isFailureOfBuild(failure);
}

void PluginBinder::showRefusedSave(const QString &fileName)
{
    if (OutputWindow *output = m_window.outputWindow())
        output->outputLine(OutputWindow::Build,
                           tr("A plug-in cannot save %1: the file has been modified outside of the editor.\n")
                               .arg(QDir::toNativeSeparators(fileName)));
}

void PluginBinder::bindProjectPlugins(Project *project)
{
    VARNEL_ASSERT(project);
    if (!project)
        return;
    const QPointer<Project> alive(project); // messages run the event loop
    connect(project, &Project::overwriteRefused, this, &PluginBinder::showRefusedSave, Qt::UniqueConnection);
    if (!project->buildEnvironment().isEmpty())
        bindBuildEnvironment(project);
    if (alive && !project->executionEnvironment().isEmpty())
        bindExecutionEnvironment(project);
}

/// The new objects of a project that is bound again use the names of its dock windows, so that these keep their places.
void PluginBinder::unbindProjectPlugins(const Project *project)
{
    Q_EMIT projectUnbound(project);
    std::erase_if(m_optionsPages, [project](const auto &entry) { return entry.first == project; });
    const auto isOfProject = [project](const ExtensionDock &each) { return each.project == project; };
    QList<ExtensionDock> docks;
    std::ranges::copy_if(m_extensionDocks, std::back_inserter(docks), isOfProject);
    if (!docks.isEmpty())
        m_window.saveDockLayout();
    m_extensionDocks.removeIf(isOfProject);
    for (const ExtensionDock &each : std::as_const(docks))
        delete each.dock;
    std::erase_if(m_dockOwners, [project](const auto &owner) { return owner.first == project; });
}

void PluginBinder::bindBuildEnvironment(Project *project)
{
    const QPointer<Project> alive(project); // each call of the plug-in may close the workspace
    const auto environment = create<IBuildEnvironment>(
        project->buildEnvironment(), tr("The workspace contains a project that requires the %1 build environment, "
                                        "which is not installed.\nYou will not be able to build the project.")
                                         .arg(project->buildEnvironmentName()));
    if (!environment || !alive)
        return;
    project->setBuildEnvironment(environment.get());
    auto events = makeBuildEvents(project);
    const QString option = project->buildEnvironmentOption();
    if (!askPlugin<&IBuildEnvironment::initialise>(environment, events.get(), option))
        inform(tr("The build system could not be initialised.\n\nPlease see Build Output window for details."));
    events.reset();
    if (!alive)
        return;
    const InterfacePtr<IProject> iproject(handOut<IProject, IProjectImpl>(project));
    runPlugin<&IBuildEnvironment::setProject>(environment, iproject.get());
    if (alive)
        introduceWorkspace(environment.get(), project, project->buildEnvironment());
}

void PluginBinder::bindExecutionEnvironment(Project *project)
{
    const QPointer<Project> alive(project);
    const auto environment = create<IExecutionEnvironment>(
        project->executionEnvironment(),
        tr("The workspace contains a project that requires the %1 execution environment, which is not installed.\n"
           "You will not be able to debug or run the project.")
            .arg(project->executionEnvironmentName()));
    if (!environment || !alive)
        return;
    project->setExecutionEnvironment(environment.get());
    const auto events = makeExecutionEvents(project, environment.get());
    const InterfacePtr<IProject> iproject(handOut<IProject, IProjectImpl>(project));
    const QString option = project->executionEnvironmentOption();
    if (!askPlugin<&IExecutionEnvironment::initialise>(environment, iproject.get(), events.get(), option))
        inform(tr("The debugger could not be initialised.\n\nPlease see Debug Output window for details."));
    QAction *peripherals = m_window.action(u"debugTogglePeripheralWindow"_s);
    if (peripherals && queryPlugin<IPeripherals>(environment.get()))
        peripherals->setVisible(true);
    if (!alive)
        return;
    if (const auto docks = queryPlugin<IDockExtension>(environment.get()); docks && alive)
        addPluginDockWindows(docks.get(), project);
    if (alive)
        introduceWorkspace(environment.get(), project, project->executionEnvironment());
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
    return queryPlugin<Environment>(object.get());
}

InterfacePtr<IBuildEvents> PluginBinder::makeBuildEvents(Project *project)
{
    auto *events = new IBuildEventsImpl;
    connect(events, &IBuildEventsImpl::sigBuildFinished, this, &PluginBinder::buildFinished);
    connect(events, &IBuildEventsImpl::sigXmlFeedback, this,
            [this, project](const QString &xml) { Q_EMIT xmlFeedback(xml, project); });
    connect(events, &IBuildEventsImpl::sigFeedback, m_window.outputWindow()->page(OutputWindow::Build),
            qOverload<const QString &>(&OutputPage::outputLine));
    disconnectWithProject(events, project);
    return shareInterface<IBuildEvents>(events);
}

/// Ignores the reports of a plug-in object that exists longer than its project, or than the project is bound to it,
/// because there are other references.
void PluginBinder::disconnectWithProject(QObject *events, const Project *project)
{
    connect(project, &QObject::destroyed, events, [events] { events->disconnect(); });
    connect(this, &PluginBinder::projectUnbound, events, [events, project](const Project *unbound) {
        if (unbound == project)
            events->disconnect();
    });
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
    disconnectWithProject(events, project);
    return shareInterface<IExecutionEvents>(events);
}

void PluginBinder::introduceWorkspace(QUnknownInterface *environment, Project *project, const QString &feature)
{
    const QPointer<Project> alive(project);
    const auto client = queryPlugin<IWorkspaceClient>(environment);
    if (!client || !alive)
        return;
    const QString group = u"Plugins/"_s + QString(feature).remove(u'{').remove(u'}') + u'/';
    auto *host = new IHostImpl(this, m_window, project, group);
    const auto query = shareInterface(new IQueryPluginInterfaceImpl(&m_activity, project, host));
    runPlugin<&IWorkspaceClient::setQueryInterface>(client, query.get());
}

void PluginBinder::notifyWorkspaceChanged() const
{
    std::vector<InterfacePtr<IWorkspaceClient>> clients;
    for (const QPointer<Project> &project : m_activity.projects()) {
        if (project)
            clients.push_back(queryPlugin<IWorkspaceClient>(project->buildInterface()));
        if (project)
            clients.push_back(queryPlugin<IWorkspaceClient>(project->executionInterface()));
    }
    for (const auto &client : clients) {
        if (client)
            runPlugin<&IWorkspaceClient::workspaceChanged>(client);
    }
}

void PluginBinder::addPluginDockWindows(IDockExtension *iface, const Project *project)
{
    m_window.saveDockLayout();
    const QPointer<const Project> alive(project);
    QList<QWidget *> widgets = askPlugin<&IDockExtension::widgets>(iface);
    if (!alive)
        return;
    widgets.removeAll(nullptr);
    for (QWidget *widget : std::as_const(widgets)) {
        if (!widget->parentWidget()) // otherwise it is listed twice, or belongs to another window
            addDockWindow(widget, project);
    }
    if (!widgets.isEmpty())
        m_dockOwners.emplace_back(project, shareInterface(iface));
    m_window.restoreDockLayout();
}

void PluginBinder::addDockWindow(QWidget *widget, const Project *project)
{
    if (widget->property("namedByProject").toBool())
        nameByProject(widget, objectNameOfProject(m_activity, project));
    const QString stated = widget->property("dockName").toString(); // the same in every language
    const QString name = dockName(stated.isEmpty() ? widget->windowTitle() : stated, project);
    QDockWidget *dock = m_window.addDock(name, dockTitle(widget->windowTitle(), project), Qt::RightDockWidgetArea);
    dock->setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable
                      | QDockWidget::DockWidgetFloatable);
    dock->setWidget(widget); // this also shows the widget
    dock->hide();
    m_extensionDocks.append({project, dock});
}

/// The layout identifies windows by their names.
QString PluginBinder::dockName(const QString &ownName, const Project *project) const
{
    QStringList taken;
    for (const QDockWidget *dock : extensionDocks())
        taken += dock->objectName();
    const QString name = u"plugin"_s + partOfObjectName(ownName);
    return taken.contains(name) ? numbered(taken, name + u'-' + partOfObjectName(project->name()), u'-') : name;
}

QString PluginBinder::dockTitle(const QString &caption, const Project *project) const
{
    QStringList taken;
    for (const QDockWidget *dock : extensionDocks())
        taken += dock->windowTitle();
    if (!isOnlyProject(project))
        taken += caption;
    return freeText(taken, caption, project->name());
}

/// A project that is bound may not be in the workspace yet.
bool PluginBinder::isOnlyProject(const Project *project) const
{
    const QList<QPointer<Project>> all = m_activity.projects();
    return std::ranges::all_of(all, [project](const auto &other) { return other == project; });
}

void PluginBinder::addOptionsPage(IOptionsPage *page, const Project *project)
{
    m_optionsPages.emplace_back(project, shareInterface(page));
    connect(project, &QObject::destroyed, this,
            [this] { std::erase_if(m_optionsPages, [](const auto &entry) { return !entry.first; }); });
}

std::vector<InterfacePtr<IOptionsPage>> PluginBinder::optionsPages() const
{
    std::vector<InterfacePtr<IOptionsPage>> pages;
    for (const auto &[project, page] : m_optionsPages)
        pages.push_back(shareInterface(page.get()));
    return pages;
}

QList<QDockWidget *> PluginBinder::extensionDocks() const
{
    QList<QDockWidget *> docks;
    for (const ExtensionDock &each : m_extensionDocks) {
        if (each.dock)
            docks.append(each.dock);
    }
    return docks;
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
