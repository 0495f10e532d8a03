#pragma once
#include <QObject>
#include <QStringList>
class IPluginFactory;
class IPluginObject;

/// Finds the plug-in libraries and their factories. Libraries stay loaded until the program ends.
class PluginManager
{
public:
    /// One feature and the factory that creates it.
    struct Feature
    {
        QString id; ///< text of a UUID in braces; compared letter by letter
        IPluginFactory *factory = nullptr;
    };

    /// Loads every library in @p directories whose metadata contains the id of IPluginFactory: directory by directory,
    /// files sorted by name. A library that cannot be used, or that throws an exception when its features are queried,
    /// is reported on the warning channel and skipped.
    /// @p ownDirectory is the program's own: libraries there that are not plug-ins are not reported.
    explicit PluginManager(const QStringList &directories, const QString &ownDirectory = {});

    /// All features, each once, in the order of directories, files and the libraries' own lists.
    [[nodiscard]] QStringList featureList() const;
    /// The first factory that offers @p feature, null if there is none. It is valid until the program ends.
    [[nodiscard]] IPluginFactory *factory(const QString &feature) const;
    /// A new object with one reference for the caller; null if no library offers @p feature or if it creates none.
    [[nodiscard]] IPluginObject *create(const QString &feature) const;

private:
    void loadDirectory(const QString &directory, bool reportStrangers);
    void loadLibrary(const QString &file, bool reportStrangers);

    QList<Feature> m_features;
};
