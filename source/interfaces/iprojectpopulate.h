#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of a build environment: adds the files that belong to the project.
class IProjectPopulate : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xe788f8a7, 0x053d, 0x11d8, 0xbe, 0x02, 0x00, 0x50, 0xda, 0xdf, 0xe8, 0x7d};

    /// Called for the user's command, and after a workspace was opened, for each project whose property
    /// "projectAutoPopulate" is "1". Add files through IProject::addFiles or IBuildEvents::xmlFeedback.
    virtual void populate(const QString &configuration) = 0;

protected:
    ~IProjectPopulate() = default;
};
