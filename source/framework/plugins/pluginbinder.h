#pragma once
#include "dynamicmenus.h"
#include "executionstatus.h"
#include "idockextension.h"
#include "ihost.h"
#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <vector>
class Activity;
class IBuildEnvironment;
class IBuildEvents;
class IExecutionEvents;
class IPluginObject;
class Project;
class QDockWidget;
struct PluginFailure;
class WindowServices;

/// Creates the plug-in objects that projects name, forwards their reports, and owns their dock windows.
class PluginBinder : public QObject
{
    Q_OBJECT
public:
    /// Both arguments outlive this object. Projects are bound when @p activity reports that they were loaded.
    PluginBinder(const Activity &activity, WindowServices &window, QObject *parent = nullptr);
    ~PluginBinder() override;

    /// Binds a project that was loaded without an error, and is in the workspace or about to be added. Shows a message
    /// if a plug-in is missing or cannot be initialised; in the latter case it stays bound.
    void bindProjectPlugins(Project *project);
    /// Deletes the dock windows of the project's plug-ins and ignores their reports from now on.
    void unbindProjectPlugins(const Project *project);
    /// Shows the widgets of a project's environment as hidden dock windows.
    void addPluginDockWindows(IDockExtension *iface, const Project *project);

    /// In the order in which they were made.
    [[nodiscard]] QList<QDockWidget *> extensionDocks() const;
    [[nodiscard]] QList<MenuEntry> extensionDockEntries() const; ///< Their menu items, checked while shown.
    /// Shows the dock window at @p index if it is hidden, and hides it if not. Other numbers do nothing.
    void toggleExtensionDock(int index) const;
    /// To be called at the end of the workspace, after its projects were deleted.
    void deleteExtensionDocks();

    /// Adds a page to the options dialog until @p project is unbound.
    void addOptionsPage(IOptionsPage *page, const Project *project);
    [[nodiscard]] std::vector<InterfacePtr<IOptionsPage>> optionsPages() const;

Q_SIGNALS:
    void currentProjectChanged(const Project *project);
    void projectUnbound(const Project *project); ///< Its plug-in objects are about to be released.
    // the reports of the environments
    void buildFinished(bool success);
    void xmlFeedback(const QString &xml, Project *project);
    void processorStatusChanged(IExecutionEnvironment::ProcessorStatus status, IExecutionEnvironment *environment);
    void programStatusChanged(IExecutionEnvironment::ProgramStatus status, IExecutionEnvironment *environment);
    void statusInfo(const QString &text, int position, IExecutionEnvironment *environment);
    void breakpointsChanged(IExecutionEnvironment *environment);

private:
    struct ExtensionDock
    {
        const Project *project; ///< only compared
        QPointer<QDockWidget> dock;
    };

    void bindBuildEnvironment(Project *project);
    void bindExecutionEnvironment(Project *project);
    template <typename Environment>
    [[nodiscard]] InterfacePtr<Environment> create(const QString &feature, const QString &ifMissing);
    [[nodiscard]] InterfacePtr<IBuildEvents> makeBuildEvents(Project *project);
    [[nodiscard]] InterfacePtr<IExecutionEvents> makeExecutionEvents(const Project *project,
                                                                     IExecutionEnvironment *environment);
    void notifyWorkspaceChanged() const;
    void introduceWorkspace(QUnknownInterface *environment, Project *project, const QString &feature);
    void disconnectWithProject(QObject *events, const Project *project);
    void addDockWindow(QWidget *widget, const Project *project);
    [[nodiscard]] QString dockName(const QString &ownName, const Project *project) const;
    [[nodiscard]] QString dockTitle(const QString &caption, const Project *project) const;
    [[nodiscard]] bool isOnlyProject(const Project *project) const;
    void inform(const QString &text);
    void showFailure(const PluginFailure &failure);
    [[nodiscard]] bool isFailureOfBuild(const PluginFailure &failure) const;
    [[nodiscard]] bool isFailureOfDebugger(const PluginFailure &failure) const;
    void showRefusedSave(const QString &fileName);

    const Activity &m_activity;
    WindowServices &m_window;
    QString m_lastFailure;
    QElapsedTimer m_sinceFailure;
    QList<ExtensionDock> m_extensionDocks;
    std::vector<std::pair<QPointer<const Project>, InterfacePtr<IOptionsPage>>> m_optionsPages;
    /// Kept until their widgets are deleted.
    std::vector<std::pair<const Project *, InterfacePtr<IDockExtension>>> m_dockOwners;
};
