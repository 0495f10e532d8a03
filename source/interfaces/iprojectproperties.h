#pragma once
#include "unknown.h"
#include <QStringList>

/// The property store of a project or of one of its files: text values by key, in named configurations.
///
/// The plug-in defines the keys in its IPropertyDefinitions; the default values of the definitions are not in the
/// store. Configurations do not inherit from each other.
class IProjectProperties : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0x3077e9bd, 0xd47d, 0x4d8e, 0x83, 0x3a, 0x22, 0xf4, 0xc2, 0x01, 0x3b, 0x3b};

    /// The value in the store itself, even if it is empty; for a file without a value, the project's value in the
    /// configuration of the same name; otherwise the null string. @p flag has no effect: pass false.
    virtual QString property(QString key, QString configuration, bool flag) = 0;
    /// Stores a value, creates the configuration if the store lacks it, and marks store and project modified.
    virtual void setProperty(QString key, QString value, QString configuration) = 0;
    /// Names in ascending order. A file has only the configurations in which it differs from the project.
    virtual QStringList configurations() = 0;
    virtual QStringList propertyKeys(QString configuration) = 0; ///< The store's own keys, in ascending order.
    virtual bool isModified() = 0; ///< The mark of the store itself, set by setProperty() and cleared by a reload.
    virtual void setModified(bool modified) = 0; ///< Sets the mark of the store itself, not that of the project.
    virtual ~IProjectProperties() = default;
};
