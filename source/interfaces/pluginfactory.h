#pragma once
#include "unknown.h"
#include <QPixmap>
#include <QStringList>
#include <QtPlugin>

/// What IPluginFactory::create makes: the root of one environment, document kind or editor language.
class IPluginObject : public QUnknownInterface
{
public:
    static constexpr int CustomDocument = 0; ///< offers ICustomDocumentPlugin
    static constexpr int TextDocument = 4;   ///< offers ITextDocumentPlugin

    /// CustomDocument, TextDocument or, for environments, any other number; those are found by queryInterface.
    virtual int type() = 0;

protected:
    ~IPluginObject() = default;
};

/// The root object of a plug-in library. It is a QObject as well, and lives as long as the program.
class IPluginFactory : public QUnknownInterface
{
public:
    static constexpr QUuid Iid{0xbab36220, 0xf804, 0x44c1, 0x85, 0x6e, 0x0e, 0x01, 0xcd, 0x1b, 0x28, 0xd0};

    /// What the library can create: texts of UUIDs in braces, as projects name their environments.
    virtual QStringList featureList() = 0;
    /// A new object for @p feature with one reference for the caller; null if the feature is not of this library.
    /// Creation must be cheap: at start-up every feature is created and released twice.
    virtual IPluginObject *create(const QString &feature) = 0;
    /// The name that the splash screen and the about box show. Libraries of one vendor may share it.
    virtual QString name() = 0;
    /// The picture beside the name on the splash screen.
    virtual QPixmap logo() = 0;

protected:
    ~IPluginFactory() = default;
};

#define VarnelPluginFactoryIid "{bab36220-f804-44c1-856e-0e01cd1b28d0}"
Q_DECLARE_INTERFACE(IPluginFactory, VarnelPluginFactoryIid)
