#pragma once
#include "buildrun.h"
#include "gnuproject.h"
#include "ibuildenvironment.h"
#include "ibuildevents.h"
#include "idebugbuild.h"
#include "iextensioncommands.h"
#include "imakefilegenerator.h"
#include "interfaceobject.h"
#include "iprojectpopulate.h"
#include "ipropertydefinitions.h"
#include "iworkspaceclient.h"
#include "pluginfactory.h"

/// The build environment of one project with a GNU tool chain.
class GnuBuild : public QObject,
                 public InterfaceObject<IPluginObject, IBuildEnvironment, IDebugBuild, IProjectPopulate,
                                        IPropertyDefinitions, IExtensionCommands, IMakefileGenerator, IWorkspaceClient>
{
    Q_OBJECT
public:
    GnuBuild(const ToolChain &toolChain, const GnuProject::Registry &projects);

    int type() override { return Environment; }

    /// @p option is the tool prefix for configurations that set none; see toolPrefix().
    bool initialise(IBuildEvents *events, const QString &option) override;
    void setProject(IProject *project) override;
    void compile(const QString &file, const QString &configuration) override;
    bool canCompile(const QString &file, const QString &configuration) override;
    void build(const QStringList &configurations, bool rebuild) override;
    void clean(const QStringList &configurations) override;
    void stop() override;
    bool isUpToDate(const QString &configuration) override;

    /// Builds, unless the user has just declined a build.
    void buildForDebug(const QString &configuration) override;
    void populate(const QString &configuration) override;
    QString propertyDefinitions() override;
    QList<ExtensionCommand> commands() override;
    void execute(const QString &id) override;
    QList<GeneratedFile> makefiles() override;
    void setQueryInterface(IQueryPluginInterface *query) override;
    void workspaceChanged() override;

private:
    [[nodiscard]] bool isBusy();
    [[nodiscard]] QList<GnuProject *> withUsedProjects() const;
    [[nodiscard]] bool allBuilt(const QString &configuration) const;
    void start();
    void feedback(const QString &line) const;
    void buildEnded(bool success);
    void showSizes(bool success);
    [[nodiscard]] QStringList buildDirectories() const;

    const ToolChain m_toolChain;
    const GnuProject::Registry m_projects;
    InterfacePtr<IBuildEvents> m_events;
    std::unique_ptr<GnuProject> m_project; ///< null until setProject()
    QString m_option;
    BuildRun m_run;
    ToolProcess m_sizeTool;
    QString m_sizes;    ///< output of the size tool
    QString m_declined; ///< the configuration that isUpToDate() last found out of date
};
