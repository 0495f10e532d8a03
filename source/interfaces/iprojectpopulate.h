#pragma once
#include "unknown.h"
#include <QString>

/// Optional, on a build environment: fills the project with the files that belong to it.
class IProjectPopulate : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xe788f8a7, 0x053d, 0x11d8, 0xbe, 0x02, 0x00, 0x50, 0xda, 0xdf, 0xe8, 0x7d};

    /// Called by the user's command, and after a workspace has opened for projects whose property
    /// "projectAutoPopulate" is "1". Files come in through IProject::addFiles or IBuildEvents::xmlFeedback.
    virtual void populate(const QString &configuration) = 0;

protected:
    ~IProjectPopulate() = default;
};
