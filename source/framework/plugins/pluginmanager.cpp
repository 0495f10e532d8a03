#include "pluginmanager.h"
#include "callplugin.h"
#include "editorversion.h"
#include "pluginfactory.h"
#include <algorithm>
#include <QCoreApplication>
#include <QDir>
#include <QHash>
#include <QJsonObject>
#include <QLibrary>
#include <QPluginLoader>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(PluginManager)
};

/// The names of the loaded plug-ins by the paths of their libraries, for the reports of their failures. Static, because
/// the loader keeps a library for the whole program, and exceptions are also reported where there is no manager.
QHash<QString, QString> &loadedNames()
{
    static QHash<QString, QString> names;
    return names;
}

QString nameOfLibrary(const QString &library)
{
    return loadedNames().value(QFileInfo(library).canonicalFilePath());
}

/// Asks a factory for its name and its features. Returns the call that has thrown an exception, empty for none. The
/// report contains the plug-in's name: until it is known, that of its file.
QString introduce(IPluginFactory *factory, PluginLibrary &library)
{
    const auto succeeds = [&](const QString &call, const std::function<void()> &ask) {
        loadedNames().insert(library.path, library.name);
        const QString operation = u"%1 (%2)"_s.arg(call, library.path);
        return runPlugin(QFile::encodeName(operation).constData(), ask, factory, true);
    };
    QString name = u"IPluginFactory::name"_s;
    if (!succeeds(name, [&] { library.name = factory->name(); }))
        return name;
    const QString features = u"IPluginFactory::featureList"_s;
    return succeeds(features, [&] { library.features = factory->featureList(); }) ? QString() : features;
}

/// The loader's reason in the words of the user, if another version of the editor's classes is the cause.
QString reasonOf(const QString &loaderError)
{
    static const QRegularExpression otherVersion(
        u"libvarnel_workspace\\.so\\.(\\d+\\.\\d+)|varnelEditor_(\\d+_\\d+)"_s);
    const QRegularExpressionMatch match = otherVersion.match(loaderError);
    if (!match.hasMatch())
        return loaderError;
    const QString version = QString(match.captured(1) + match.captured(2)).replace(u'_', u'.');
    return Text::tr("It was built with version %1 of the editor classes, and this is version %2. Build it again.")
        .arg(version, QStringLiteral(VARNEL_EDITOR_VERSION_TEXT));
}

QString reasonOf(QObject *root, const QPluginLoader &loader)
{
    if (!root)
        return reasonOf(loader.errorString());
    if (dynamic_cast<IPluginFactory *>(root))
        return Text::tr("The class of its root object, %1, lacks Q_INTERFACES(IPluginFactory).")
            .arg(QString::fromLatin1(root->metaObject()->className()));
    return Text::tr("Its root object is not an IPluginFactory.");
}
} // namespace

QStringList pluginDirectories(const QString &environment, const QString &user, const QString &installation,
                              const QStringList &libraryPaths)
{
    const QStringList all =
        environment.split(QDir::listSeparator(), Qt::SkipEmptyParts) + QStringList{user, installation} + libraryPaths;
    QStringList directories;
    QSet<QString> known;
    for (const QString &directory : all) {
        const QString canonical = QDir(directory).canonicalPath();
        if (!canonical.isEmpty() && !known.contains(canonical)) // QPluginLoader does not look in the current directory
            directories.append(QDir(directory).absolutePath());
        known.insert(canonical);
    }
    return directories;
}

PluginManager::PluginManager(const QStringList &directories, const QString &ownDirectory, const QStringList &disabled)
    : m_disabled(disabled)
{
    setPluginNames(nameOfLibrary);
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
    const QFileInfo info(file);
    PluginLibrary library;
    library.path = info.canonicalFilePath();
    library.name = info.completeBaseName();
    library.enabled = !m_disabled.contains(library.path);
    const auto isSame = [&](const PluginLibrary &other) { return other.path == library.path; };
    if (std::ranges::any_of(m_libraries, isSame))
        return;
    if (library.enabled)
        library.problem = load(file, loader, library);
    m_libraries.append(library);
}

/// Returns the problem, which has been reported on the warning channel.
QString PluginManager::load(const QString &file, QPluginLoader &loader, PluginLibrary &library)
{
    loader.setLoadHints(QLibrary::PreventUnloadHint
                        | QLibrary::ResolveAllSymbolsHint); // a call of a missing function would end the program
    const QByteArray operation = "PluginManager::loadLibrary (" + QFile::encodeName(file) + ')';
    QObject *root = nullptr;
    if (!runPlugin(operation, [&] { root = loader.instance(); }))
        return Text::tr("It has thrown an exception.");
    auto *factory = qobject_cast<IPluginFactory *>(root);
    if (!factory) {
        QString reason = reasonOf(root, loader);
        qWarning("PluginManager::loadLibrary: Cannot load plug-in (%s): %s", qPrintable(file), qPrintable(reason));
        return reason;
    }
    const QString call = introduce(factory, library);
    if (!call.isEmpty()) {
        library.features.clear();
        return Text::tr("It has thrown an exception in %1.").arg(call);
    }
    return addFeatures(factory, library);
}

/// The library that was found first keeps a feature.
QString PluginManager::addFeatures(IPluginFactory *factory, const PluginLibrary &library)
{
    QStringList problems;
    for (const QString &feature : library.features) {
        if (!this->factory(feature)) {
            m_features.append({feature, factory});
        } else if (const QString owner = ownerOf(feature); !owner.isEmpty()) {
            qWarning("PluginManager::loadLibrary: Feature %s of %s is taken from %s", qPrintable(feature),
                     qPrintable(library.path), qPrintable(owner));
            problems += Text::tr("The feature %1 is taken from %2.").arg(feature, owner);
        }
    }
    return problems.join(u' ');
}

QString PluginManager::ownerOf(const QString &feature) const
{
    const auto offers = [&](const PluginLibrary &library) { return library.features.contains(feature); };
    const auto found = std::ranges::find_if(m_libraries, offers);
    return found == m_libraries.end() ? QString() : found->path;
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
    return askPlugin<&IPluginFactory::create>(factory(feature), feature);
}
