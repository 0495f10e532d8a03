#pragma once
#include "unknown.h"
#include <QStringList>

class IProjectFile;
class IProjectFolder;
class IProjectProperties;

/// The project that a plug-in object works for.
///
/// A plug-in gets it in IBuildEnvironment::setProject or IExecutionEnvironment::initialise. It may keep references to
/// it and to the objects that it returns until the host has released the plug-in object; they must not be called later.
/// Each function that returns an interface creates a new object, so pointers cannot be compared.
class IProject : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x65250485, 0xf686, 0x4068, 0xa8, 0x19, 0x54, 0x3d, 0xa9, 0x62, 0xe8, 0x58};

    virtual QString name() = 0;     ///< The project file's name without its last suffix.
    virtual QString basePath() = 0; ///< The absolute path of the project's directory, to which relative paths refer.
    virtual QList<IProjectFolder *> folders() = 0; ///< The top level, in order, each with a reference for the caller.
    virtual QList<IProjectFile *> files() = 0; ///< Those in no folder, in order, each with a reference for the caller.
    virtual IProjectProperties *properties() = 0; ///< The project's store, with a reference for the caller.
    virtual QString currentConfiguration() = 0;   ///< The name of the configuration that is built and debugged.
    virtual bool isModified() = 0;                ///< There are changes that were not saved.
    /// Writes the project file. False if it cannot be written, or if another program has changed it since the host has
    /// read or written it: then only the user may overwrite it, and the page "Build" says so.
    virtual bool save() = 0;
    /// Adds files by absolute path. Each is added to the first top-level folder that has its extension, otherwise to
    /// the root. A file that is in the project already is added a second time.
    virtual void addFiles(QStringList paths) = 0;
    virtual QString displayName() = 0; ///< The environment's name and the project's name, as shown to the user.
    virtual bool isActive() = 0;       ///< The project takes part in debugging.
    virtual void setActive(bool active) = 0;
    virtual ~IProject() = default;
};
