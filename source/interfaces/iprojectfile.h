#pragma once
#include "unknown.h"
#include <QString>

class IProjectFolder;
class IProjectProperties;

/// One file of a project.
class IProjectFile : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xb51ef992, 0x2842, 0x4286, 0xac, 0x64, 0xbd, 0x36, 0x8d, 0x03, 0xe3, 0x10};

    virtual QString name() = 0; ///< The file name without its directory.
    /// The path as stored: with forward slashes, relative to IProject::basePath() where that is possible.
    virtual QString path() = 0;
    virtual IProjectProperties *properties() = 0; ///< The file's store, with a reference for the caller.
    virtual IProjectFolder *folder() = 0; ///< With a reference for the caller; null for a file in the project's root.
    virtual ~IProjectFile() = default;
};
