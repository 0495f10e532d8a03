#pragma once
#include "unknown.h"
#include <QStringList>

/// The property store of a project or of one of its files: text values by key, in named configurations.
///
/// Keys are the plug-in's own, as its IPropertyDefinitions declares them; the default values of the definitions are
/// not in the store. No configuration inherits from another.
class IProjectProperties : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x3077e9bd, 0xd47d, 0x4d8e, 0x83, 0x3a, 0x22, 0xf4, 0xc2, 0x01, 0x3b, 0x3b};

    /// The value in the store itself, even an empty one; for a file without one, the project's value in the
    /// configuration of the same name; otherwise the null string. @p flag changes nothing: pass false.
    virtual QString property(QString key, QString configuration, bool flag) = 0;
    /// Stores a value, creates the configuration if the store lacks it, and marks store and project modified.
    virtual void setProperty(QString key, QString value, QString configuration) = 0;
    virtual QStringList configurations() = 0; ///< Names in ascending order. A file has only those it overrides.
    virtual QStringList propertyKeys(QString configuration) = 0; ///< The store's own keys, in ascending order.
    virtual bool isModified() = 0; ///< The store's own mark, set by setProperty() and cleared by a reload.
    virtual void setModified(bool modified) = 0; ///< Sets the store's own mark; the project's stays as it is.
    virtual ~IProjectProperties() = default;
};
