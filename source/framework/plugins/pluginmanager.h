#pragma once
#include <QObject>
#include <QSet>
#include <QStringList>
class IPluginFactory;
class IPluginObject;
class QPluginLoader;

/// A file in a plug-in directory that is, or should be, a plug-in.
struct PluginLibrary
{
    QString path; ///< without symbolic links
    QString name; ///< of its factory; that of the file if it was not loaded
    QStringList features;
    QString problem; ///< why it was not loaded, or is not used as a whole; empty if there is nothing to say
    bool enabled = true;
};

/// The absolute paths of the directories with plug-ins, each once: first those of @p environment, the variable
/// QT_PLUGIN_PATH, then @p user and @p installation, and last the others of @p libraryPaths.
[[nodiscard]] QStringList pluginDirectories(const QString &environment, const QString &user,
                                            const QString &installation, const QStringList &libraryPaths);

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
    /// files sorted by name. A library that cannot be used, that throws an exception when its features are queried, or
    /// that offers a feature of an earlier one, is reported on the warning channel.
    /// @p ownDirectory is the program's own: libraries there that are not plug-ins are not reported.
    /// @p disabled are the paths of libraries that are listed but not loaded.
    explicit PluginManager(const QStringList &directories, const QString &ownDirectory = {},
                           const QStringList &disabled = {});

    /// All features, each once, in the order of directories, files and the libraries' own lists.
    [[nodiscard]] QStringList featureList() const;
    /// The first factory that offers @p feature, null if there is none. It is valid until the program ends.
    [[nodiscard]] IPluginFactory *factory(const QString &feature) const;
    /// A new object with one reference for the caller; null if no library offers @p feature or if it creates none.
    [[nodiscard]] IPluginObject *create(const QString &feature) const;
    /// All plug-ins, and the files that look like one but could not be loaded.
    [[nodiscard]] const QList<PluginLibrary> &libraries() const { return m_libraries; }

private:
    void loadDirectory(const QString &directory, bool reportStrangers);
    void loadLibrary(const QString &file, bool reportStrangers);
    [[nodiscard]] QString load(const QString &file, QPluginLoader &loader, PluginLibrary &library);
    [[nodiscard]] QString addFeatures(IPluginFactory *factory, const PluginLibrary &library);
    [[nodiscard]] QString ownerOf(const QString &feature) const;

    const QStringList m_disabled;
    QList<Feature> m_features;
    QList<PluginLibrary> m_libraries;
};
