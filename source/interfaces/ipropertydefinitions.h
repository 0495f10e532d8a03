#pragma once
#include "unknown.h"
#include <QString>

/// Optional interface of either environment: the options of projects and files that the user can edit.
class IPropertyDefinitions : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x5a1f0c52, 0x6c1e, 0x4f43, 0x9d, 0x3b, 0x0e, 0x5a, 0x7c, 0x1b, 0x9f, 0x10};

    /// An XML document whose "group" elements contain "propertygroup" elements (the pages), and these contain
    /// "property" elements: options with the attributes "key", "name", "type" and "defaultvalue". Values are read and
    /// written through IProjectProperties. Called each time the property editor opens.
    virtual QString propertyDefinitions() = 0;

protected:
    ~IPropertyDefinitions() = default;
};
