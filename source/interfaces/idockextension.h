#pragma once
#include "unknown.h"

class QWidget;

/// Optional interface of an execution environment: windows of the plug-in in addition to the host's debug windows.
class IDockExtension : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x9b2b71de, 0x02a4, 0x453c, 0x83, 0x72, 0x22, 0xb2, 0x12, 0x2d, 0x16, 0x03};

    /// New widgets. The host owns them and deletes them when the workspace closes or the environment is
    /// released; this object exists until then. Their
    /// window titles are the titles of the dock windows and identify them in the stored layout. Called once.
    virtual QList<QWidget *> widgets() = 0;

protected:
    ~IDockExtension() = default;
};
