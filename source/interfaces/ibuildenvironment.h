#pragma once
#include "unknown.h"
#include <QStringList>

class IBuildEvents;
class IProject;

/// Builds one project. The host knows no tool chain: all of it is here.
///
/// Offered by a plug-in object whose feature a project names as its build environment; each project has an object of
/// its own. compile(), build() and clean() only start the work and return at once: its end is told by
/// IBuildEvents::buildFinished. The host starts one piece of work at a time and has saved all files before it.
/// Optional interfaces: IDebugBuild, IProjectPopulate, IPropertyDefinitions, IExtensionCommands, IWorkspaceClient.
class IBuildEnvironment : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xa3fe91f5, 0x14d3, 0x4e95, 0xa8, 0xd9, 0x9e, 0xb1, 0x20, 0x8d, 0xbe, 0x52};

    /// Called once, first. @p events is kept for later by a reference. @p option is the project file's
    /// "buildenvironmentoption", whose meaning is the plug-in's. False makes the host tell the user to look at the
    /// "Build" page; the object stays in use all the same, so it must bear its other calls.
    virtual bool initialise(IBuildEvents *events, const QString &option) = 0;
    virtual void setProject(IProject *project) = 0; ///< Called once, after initialise().
    /// Compiles one file of the project. @p file is absolute or relative to the project.
    virtual void compile(const QString &file, const QString &configuration) = 0;
    /// Whether compile() makes sense for @p file, which may be empty. Called often, so it must be quick.
    virtual bool canCompile(const QString &file, const QString &configuration) = 0;
    /// Builds the configurations one after the other, from scratch if @p rebuild. With an empty list there is nothing
    /// to build, and buildFinished() is due all the same.
    virtual void build(const QStringList &configurations, bool rebuild) = 0;
    virtual void clean(const QStringList &configurations) = 0; ///< Removes what build() makes.
    virtual void stop() = 0; ///< Breaks off the work that runs; buildFinished() is still due.
    /// Whether a build would do nothing. Asked before a debug session; if false the user may build first.
    virtual bool isUpToDate(const QString &configuration) = 0;

protected:
    ~IBuildEnvironment() = default;
};
