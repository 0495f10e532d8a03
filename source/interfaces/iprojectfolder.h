#pragma once
#include "unknown.h"
#include <QStringList>

class IProjectFile;

/// One folder of a project: a group of files, not a directory on the disk.
class IProjectFolder : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xfe949fd3, 0x7f41, 0x4e61, 0xbf, 0x7b, 0x44, 0x34, 0x34, 0x8a, 0xba, 0x52};

    virtual QString name() = 0;
    /// Extensions without the dot. A top-level folder takes the added files that have one of them.
    virtual QStringList extensions() = 0;
    virtual QList<IProjectFolder *> folders() = 0; ///< In order, each with a reference for the caller.
    virtual QList<IProjectFile *> files() = 0;     ///< In order, each with a reference for the caller.
    virtual IProjectFolder *parent() = 0; ///< With a reference for the caller; null for a folder at the top level.
    virtual ~IProjectFolder() = default;
};
