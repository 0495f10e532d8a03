#pragma once
#include "unknown.h"
#include <QPixmap>
#include <QStringList>
#include <QtPlugin>

/// The object that IPluginFactory::create returns: the root of one environment, document kind or editor language.
class IPluginObject : public QUnknownInterface
{
public:
    static constexpr int CustomDocument = 0; ///< offers ICustomDocumentPlugin
    static constexpr int TextDocument = 4;   ///< offers ITextDocumentPlugin
    static constexpr int Environment = 1;    ///< offers IBuildEnvironment or IExecutionEnvironment, or both

    /// One of the above. An environment may return any number except the first two: it is found by queryInterface().
    virtual int type() = 0;

protected:
    ~IPluginObject() = default;
};

/// The root object of a plug-in library. It is also a QObject, and exists as long as the program.
class IPluginFactory : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xbab36220, 0xf804, 0x44c1, 0x85, 0x6e, 0x0e, 0x01, 0xcd, 0x1b, 0x28, 0xd0};

    /// The features that the library can create: UUIDs as text in braces, by which projects name their environments.
    virtual QStringList featureList() = 0;
    /// A new object for @p feature with one reference for the caller; null if the library does not have the feature.
    /// Creation must be cheap: at start-up every feature is created and released twice.
    virtual IPluginObject *create(const QString &feature) = 0;
    /// The name on the splash screen and in the about box. Libraries of one vendor may share it.
    virtual QString name() = 0;
    /// The picture above the name on the splash screen, about 32 pixels high.
    virtual QPixmap logo() = 0;

protected:
    ~IPluginFactory() = default;
};

#define VarnelPluginFactoryIid "{bab36220-f804-44c1-856e-0e01cd1b28d0}"
Q_DECLARE_INTERFACE(IPluginFactory, VarnelPluginFactoryIid)
