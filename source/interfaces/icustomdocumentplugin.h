#pragma once
#include "unknown.h"

class DocumentTemplate;

/// A kind of document with its own view. Offered by objects whose type() is IPluginObject::CustomDocument.
class ICustomDocumentPlugin : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xf6f44f26, 0xefa7, 0x407a, 0xb6, 0x13, 0xe9, 0x99, 0x60, 0x84, 0xb7, 0xa2};

    /// A new template, which the host owns from then on. It outlives the plug-in object, which is released after the
    /// call.
    virtual DocumentTemplate *documentTemplate() = 0;

protected:
    ~ICustomDocumentPlugin() = default;
};
