#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of a build environment: work before each debug session, such as the creation of a load image.
class IDebugBuild : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x83145d50, 0x0544, 0x11d8, 0xbe, 0x02, 0x00, 0x50, 0xda, 0xdf, 0xe8, 0x7d};

    /// Starts the work and returns. The session waits for IBuildEvents::buildFinished and continues if it was
    /// successful.
    virtual void buildForDebug(const QString &configuration) = 0;

protected:
    ~IDebugBuild() = default;
};
