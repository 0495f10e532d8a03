#pragma once
#include "unknown.h"

class QWidget;

/// Optional, on an execution environment: windows of the plug-in's own beside the host's debug windows.
class IDockExtension : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x9b2b71de, 0x02a4, 0x453c, 0x83, 0x72, 0x22, 0xb2, 0x12, 0x2d, 0x16, 0x03};

    /// New widgets, which the host takes over and deletes when the workspace closes; this object lives on until then.
    /// Their window titles name the dock windows and their place in the stored layout. Asked once.
    virtual QList<QWidget *> widgets() = 0;

protected:
    ~IDockExtension() = default;
};
