#include "pluginmanager.h"
#include "callplugin.h"
#include "pluginfactory.h"
#include <QDir>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>

using namespace Qt::StringLiterals;

PluginManager::PluginManager(const QStringList &directories, const QString &ownDirectory)
{
    for (const QString &directory : directories)
        loadDirectory(directory, directory != ownDirectory);
}

void PluginManager::loadDirectory(const QString &directory, bool reportStrangers)
{
    const QStringList files = QDir(directory).entryList(QDir::Files, QDir::Name);
    for (const QString &file : files) {
        if (QLibrary::isLibrary(file))
            loadLibrary(directory + u'/' + file, reportStrangers);
    }
}

void PluginManager::loadLibrary(const QString &file, bool reportStrangers)
{
    QPluginLoader loader(file);
    const QJsonObject metaData = loader.metaData();
    if (metaData.isEmpty() && !reportStrangers)
        return;
    if (!metaData.isEmpty() && metaData.value("IID"_L1) != QLatin1StringView(VarnelPluginFactoryIid))
        return; // another component of the toolkit
    loader.setLoadHints(QLibrary::PreventUnloadHint
                        | QLibrary::ResolveAllSymbolsHint); // a call of a missing function would end the program
    const QByteArray operation = "PluginManager::loadLibrary (" + QFile::encodeName(file) + ')';
    QObject *root = nullptr;
    if (!runPlugin(operation, [&] { root = loader.instance(); }))
        return;
    auto *factory = qobject_cast<IPluginFactory *>(root);
    if (!factory) {
        qWarning("PluginManager::loadLibrary: Cannot load plug-in (%s): %s", qPrintable(file),
                 qPrintable(loader.errorString()));
        return;
    }
    QStringList features;
    const auto introduce = [&] {
        features = factory->featureList();
        static_cast<void>(factory->name()); // if this throws, the splash screen could not call it either
    };
    if (!runPlugin(operation, introduce))
        return;
    for (const QString &feature : features) {
        if (!this->factory(feature))
            m_features.append({feature, factory});
    }
}

QStringList PluginManager::featureList() const
{
    QStringList ids;
    for (const Feature &feature : m_features)
        ids.append(feature.id);
    return ids;
}

IPluginFactory *PluginManager::factory(const QString &feature) const
{
    const auto found = std::ranges::find(m_features, feature, &Feature::id);
    return found == m_features.end() ? nullptr : found->factory;
}

IPluginObject *PluginManager::create(const QString &feature) const
{
    IPluginFactory *maker = factory(feature);
    return maker ? askPlugin("IPluginFactory::create", [&] { return maker->create(feature); }) : nullptr;
}
