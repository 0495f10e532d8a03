#pragma once
#include <QObject>
#include <QStringList>
class IPluginFactory;
class IPluginObject;

/// Finds the plug-in libraries and gives out their factories. Libraries stay loaded until the program ends.
class PluginManager
{
public:
    /// One feature and the factory that creates it.
    struct Feature
    {
        QString id; ///< text of a UUID in braces; compared letter by letter
        IPluginFactory *factory = nullptr;
    };

    /// Loads every library in @p directories whose metadata bears the id of IPluginFactory: directory by directory,
    /// files sorted by name. A library that cannot be used, or that lets an exception out when it is asked what it
    /// offers, is reported on the warning channel and passed over.
    /// @p ownDirectory is the program's own: libraries there that are no plug-ins are nothing to report.
    explicit PluginManager(const QStringList &directories, const QString &ownDirectory = {});

    /// All features, each once, in the order of directories, files and the libraries' own lists.
    [[nodiscard]] QStringList featureList() const;
    /// The first factory that offers @p feature, null if there is none. It lives as long as the program.
    [[nodiscard]] IPluginFactory *factory(const QString &feature) const;
    /// A new object with one reference for the caller; null if no library offers @p feature or makes one.
    [[nodiscard]] IPluginObject *create(const QString &feature) const;

private:
    void loadDirectory(const QString &directory, bool reportStrangers);
    void loadLibrary(const QString &file, bool reportStrangers);

    QList<Feature> m_features;
};
