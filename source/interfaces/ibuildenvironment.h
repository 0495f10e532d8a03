#pragma once
#include "unknown.h"
#include <QStringList>

class IBuildEvents;
class IProject;

/// Builds one project. All knowledge about its tool chain is here.
///
/// Offered by a plug-in object whose feature a project names as its build environment; each project has an object of
/// its own. compile(), build() and clean() only start the work and return at once: IBuildEvents::buildFinished reports
/// the end. The host starts one job at a time. Before build() and clean() it has saved all files, before compile() the
/// project and the file in question only. Optional interfaces: IDebugBuild, IMakefileGenerator, IProjectPopulate,
/// IPropertyDefinitions, IExtensionCommands, IWorkspaceClient.
class IBuildEnvironment : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xa3fe91f5, 0x14d3, 0x4e95, 0xa8, 0xd9, 0x9e, 0xb1, 0x20, 0x8d, 0xbe, 0x52};

    /// Called once, before all other functions. Keep @p events with a reference of your own. @p option is the project
    /// file's "buildenvironmentoption"; the plug-in defines its meaning. If the result is false, the host asks the user
    /// to look at the "Build" page; the object stays in use, so its other functions must not fail.
    virtual bool initialise(IBuildEvents *events, const QString &option) = 0;
    virtual void setProject(IProject *project) = 0; ///< Called once, after initialise().
    /// Compiles one file of the project. @p file is absolute or relative to the project.
    virtual void compile(const QString &file, const QString &configuration) = 0;
    /// Whether compile() is possible for @p file, which is never empty. Called often, so it must be fast.
    virtual bool canCompile(const QString &file, const QString &configuration) = 0;
    /// Builds the configurations one after the other, from scratch if @p rebuild is true. With an empty list nothing is
    /// built, but buildFinished() must be called all the same.
    virtual void build(const QStringList &configurations, bool rebuild) = 0;
    virtual void clean(const QStringList &configurations) = 0; ///< Removes what build() creates.
    virtual void stop() = 0; ///< Cancels the running job; buildFinished() must still be called.
    /// Whether a build would do nothing. Called before a debug session; if it returns false, the user may build first.
    /// If that takes long, run the event loop, and let the user cancel: false is a correct answer then.
    virtual bool isUpToDate(const QString &configuration) = 0;

protected:
    ~IBuildEnvironment() = default;
};
