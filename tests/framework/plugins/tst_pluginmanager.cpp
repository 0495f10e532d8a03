#include "callplugin.h"
#include "pluginfactory.h"
#include "pluginmanager.h"
#include <QPluginLoader>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
const QString Red = QStringLiteral(TESTPLUGIN_RED);
const QString Green = QStringLiteral(TESTPLUGIN_GREEN);
const QString Blue = QStringLiteral(TESTPLUGIN_BLUE);
const QString Stranger = QStringLiteral(TESTPLUGIN_STRANGER);
const QString NoFactory = QStringLiteral(TESTPLUGIN_NOFACTORY);
const QString NoPlugin = QStringLiteral(TESTBRANDING);

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

/// A library changed to look as if built for a later Qt. The layout's version and Qt's two numbers follow the mark.
QByteArray forAnotherQt(QByteArray library)
{
    const QByteArray mark("qt-project!", 12);
    const auto minor = library.indexOf(mark) + mark.size() + 2;
    library[minor] = char(QT_VERSION_MINOR + 1);
    return library;
}

/// Expects the warning about @p file, with the loader's reason.
void expectReport(const QString &file)
{
    QPluginLoader loader(file);
    const bool loaded = loader.instance();
    QVERIFY(!qobject_cast<IPluginFactory *>(loader.instance()));
    QVERIFY(loader.errorString().size() > 5);
    const QString reason = loaded ? u"Its root object is not an IPluginFactory."_s : loader.errorString();
    const QString text = u"PluginManager::loadLibrary: Cannot load plug-in (%1): %2"_s.arg(file, reason);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(text));
}

void expectSharedFeature()
{
    QTest::ignoreMessage(
        QtWarningMsg,
        QRegularExpression(u"^PluginManager::loadLibrary: Feature \\{shared\\} of .* is taken from .*$"_s));
}
} // namespace

class PluginManagerTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_root;

    /// A directory of libraries below the temporary one, created at the first call.
    QString directory(const QString &name) const
    {
        QDir(m_root->path()).mkpath(name);
        return m_root->filePath(name);
    }

    QString install(const QString &library, const QString &place) const
    {
        const QString file = directory(QFileInfo(place).path()) + u'/' + QFileInfo(place).fileName();
        return QFile::copy(library, file) ? file : QString();
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_root = std::make_unique<QTemporaryDir>();
    }

    void directoriesWithoutLibrariesGiveNothing()
    {
        const PluginManager manager({directory(u"empty"_s), m_root->filePath(u"missing"_s)});
        QVERIFY(manager.featureList().isEmpty());
        QVERIFY(!manager.factory(u"{red}"_s));
        QVERIFY(!manager.create(u"{red}"_s));
    }

    void featuresAreOrderedByDirectoryFileAndLibrary()
    {
        install(Red, u"first/b.so"_s);
        install(Blue, u"first/a.so"_s);
        install(Green, u"second/a.so"_s);
        expectSharedFeature();
        expectSharedFeature();
        const PluginManager manager({directory(u"first"_s), directory(u"second"_s)});
        QCOMPARE(manager.featureList().join(u' '), u"{blue} {red} {shared} {green}"_s);
        const PluginManager other({directory(u"second"_s), directory(u"first"_s)});
        QCOMPARE(other.featureList().join(u' '), u"{shared} {green} {blue} {red}"_s);
    }

    void firstLibraryWithAFeatureCreatesItsObjects()
    {
        install(Green, u"first/z.so"_s);
        const QString red = install(Red, u"second/a.so"_s);
        const QString green = directory(u"first"_s) + u"/z.so"_s;
        const auto real = [](const QString &path) { return QFileInfo(path).canonicalFilePath(); };
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(u"PluginManager::loadLibrary: Feature {shared} of %1 is taken from "
                                        "%2"_s.arg(real(red), real(green))));
        const PluginManager manager({directory(u"first"_s), directory(u"second"_s)});
        QCOMPARE(manager.libraries()[0].problem, QString());
        QCOMPARE(manager.libraries()[1].problem, u"The feature {shared} is taken from %1."_s.arg(real(green)));
        const InterfacePtr<IPluginObject> shared(manager.create(u"{shared}"_s));
        QCOMPARE(shared->type(), 12);
        const InterfacePtr<IPluginObject> own(manager.create(u"{red}"_s));
        QCOMPARE(own->type(), 11);
    }

    void featuresAreComparedExactly()
    {
        install(Red, u"plugins/a.so"_s);
        const PluginManager manager({directory(u"plugins"_s)});
        QVERIFY(manager.factory(u"{red}"_s));
        QVERIFY(!manager.factory(u"{RED}"_s));
        QVERIFY(!manager.factory(u"red"_s));
        QVERIFY(!manager.create(u"{Red}"_s));
        QVERIFY(!manager.create(QString()));
    }

    void aCreatedObjectHoldsOneReference()
    {
        install(Blue, u"plugins/a.so"_s);
        const PluginManager manager({directory(u"plugins"_s)});
        IPluginObject *object = manager.create(u"{blue}"_s);
        QVERIFY(object != manager.factory(u"{blue}"_s)->create(u"{green}"_s));
        QCOMPARE(object->addRef(), 2ul);
        QCOMPARE(object->release(), 1ul);
        QCOMPARE(object->release(), 0ul);
    }

    void otherComponentsOfTheToolkitAreSkipped()
    {
        install(Stranger, u"plugins/a.so"_s);
        install(Blue, u"plugins/b.so"_s);
        const PluginManager manager({directory(u"plugins"_s)});
        QCOMPARE(manager.featureList(), QStringList{u"{blue}"_s});
        QPluginLoader stranger(directory(u"plugins"_s) + u"/a.so"_s);
        QVERIFY2(!stranger.isLoaded(), "it was not even loaded");
    }

    void unusableLibraryIsReportedAndTheNextIsLoaded_data()
    {
        QTest::addColumn<QByteArray>("library");
        QTest::addColumn<QString>("toolkitWarning");
        QTest::newRow("a text") << QByteArray("This is no library.\n") << QString();
        QTest::newRow("empty") << QByteArray() << u"failed to map to memory"_s;
        QTest::newRow("cut off") << bytesOf(Red).first(3000) << QString();
        QTest::newRow("no plug-in") << bytesOf(NoPlugin) << QString();
        QTest::newRow("no factory in it") << bytesOf(NoFactory) << QString();
        QTest::newRow("for another Qt") << forAnotherQt(bytesOf(Red)) << u"Plugin uses incompatible Qt library"_s;
    }

    void unusableLibraryIsReportedAndTheNextIsLoaded()
    {
        QFETCH(QByteArray, library);
        QFETCH(QString, toolkitWarning);
        for (int i = 0; i < 2 && !toolkitWarning.isEmpty(); ++i) // to us and to the manager
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(toolkitWarning));
        const QString broken = directory(u"plugins"_s) + u"/a.so"_s;
        write(broken, library);
        install(Blue, u"plugins/b.so"_s);
        expectReport(broken);
        const PluginManager manager({directory(u"plugins"_s)});
        QCOMPARE(manager.featureList(), QStringList{u"{blue}"_s});
    }

    void libraryWithAnUndefinedSymbolIsReportedAtLoading()
    {
        install(QStringLiteral(TESTPLUGIN_BROKEN_SYMBOL), u"plugins/a.so"_s);
        install(Blue, u"plugins/b.so"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^PluginManager::loadLibrary: Cannot load plug-in "
                                                              "\\(.*/plugins/a.so\\): .*undefined symbol.*$"_s));
        const PluginManager manager({directory(u"plugins"_s)});
        QCOMPARE(manager.featureList(), QStringList{u"{blue}"_s});
    }

    void exceptionWhileReadingTheFactoryIsReported_data()
    {
        QTest::addColumn<QString>("library");
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("plugin");
        QTest::addColumn<QString>("problem");
        const QString problem = u"It has thrown an exception in %1."_s;
        QTest::newRow("constructor") << QStringLiteral(TESTPLUGIN_BROKEN_CONSTRUCTOR) << u"PluginManager::loadLibrary"_s
                                     << QString() << u"It has thrown an exception."_s;
        QString call = u"IPluginFactory::featureList"_s;
        QTest::newRow("featureList") << QStringLiteral(TESTPLUGIN_BROKEN_FEATURELIST) << call << u"Broken"_s
                                     << problem.arg(call);
        call = u"IPluginFactory::name"_s;
        QTest::newRow("name") << QStringLiteral(TESTPLUGIN_BROKEN_NAME) << call << u"a"_s << problem.arg(call);
    }

    void exceptionWhileReadingTheFactoryIsReported()
    {
        QFETCH(QString, library);
        QFETCH(QString, call);
        QFETCH(QString, plugin);
        QFETCH(QString, problem);
        const QString file = install(library, u"plugins/a.so"_s);
        install(Blue, u"plugins/b.so"_s);
        const QString operation = u"%1 (%2)"_s.arg(call, file);
        const QString what = u"broken in "_s + QLatin1StringView(QTest::currentDataTag());
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(u"%1: an exception has left the plug-in (%2)"_s.arg(operation, what)));
        setPluginFailureHandler([](const PluginFailure &) {}); // takes those of other tests
        setPluginFailureHandler({});
        const PluginManager manager({directory(u"plugins"_s)});
        QCOMPARE(manager.featureList(), QStringList{u"{blue}"_s});
        QCOMPARE(manager.libraries().first().problem, problem);
        QStringList shown; // later, when there is a window
        const auto show = [&shown](const PluginFailure &failure) {
            shown.append(failure.plugin + u'|' + failure.operation + u'|' + failure.text);
        };
        setPluginFailureHandler(show);
        setPluginFailureHandler({});
        QCOMPARE(shown, QStringList{plugin + u'|' + operation + u'|' + what});
    }

    void exceptionInCreateGivesNull()
    {
        install(QStringLiteral(TESTPLUGIN_BROKEN_CREATE), u"plugins/a.so"_s);
        const PluginManager manager({directory(u"plugins"_s)});
        QTest::ignoreMessage(QtWarningMsg,
                             "IPluginFactory::create: an exception has left the plug-in (broken in create)");
        QVERIFY(!manager.create(u"{broken}"_s));
    }

    void filesWithoutALibrarySuffixAreSkipped()
    {
        write(directory(u"plugins"_s) + u"/README.txt"_s, "text");
        directory(u"plugins/folder.so"_s);
        install(Red, u"plugins/red.so.bak"_s);
        const PluginManager manager({directory(u"plugins"_s)});
        QVERIFY(manager.featureList().isEmpty());
    }

    void subFoldersAreNotSearched()
    {
        install(Red, u"plugins/deeper/a.so"_s);
        const PluginManager manager({directory(u"plugins"_s)});
        QVERIFY(manager.featureList().isEmpty());
    }

    void otherLibrariesInTheOwnDirectoryAreNotReported()
    {
        install(NoPlugin, u"bin/a.so"_s);
        write(directory(u"bin"_s) + u"/text.so"_s, "This is no library.\n");
        install(Blue, u"bin/b.so"_s);
        const PluginManager manager({directory(u"bin"_s)}, directory(u"bin"_s));
        QCOMPARE(manager.featureList(), QStringList{u"{blue}"_s});
    }

    void directoriesAreSearchedInTheOrderOfTheirOrigins()
    {
        for (const QString &name : {u"env1"_s, u"env2"_s, u"user"_s, u"installed"_s, u"other"_s})
            directory(name);
        const auto at = [this](const QString &name) { return m_root->filePath(name); };
        QCOMPARE(pluginDirectories(at(u"env1"_s) + u':' + at(u"env2"_s), at(u"user"_s), at(u"installed"_s),
                                   {at(u"installed"_s), at(u"env1"_s), at(u"other"_s), at(u"missing"_s)}),
                 (QStringList{at(u"env1"_s), at(u"env2"_s), at(u"user"_s), at(u"installed"_s), at(u"other"_s)}));
        QCOMPARE(pluginDirectories({}, at(u"missing"_s), at(u"installed"_s), {}), QStringList(at(u"installed"_s)));
    }

    void relativeDirectoryOfTheEnvironmentIsBelowTheCurrentOne()
    {
        install(Blue, u"env/b.so"_s);
        const QString before = QDir::currentPath();
        QVERIFY(QDir::setCurrent(m_root->path()));
        const QString missing = m_root->filePath(u"missing"_s);
        const PluginManager manager(pluginDirectories(u"env"_s, missing, missing, {}));
        QVERIFY(QDir::setCurrent(before));
        QCOMPARE(manager.featureList(), QStringList{u"{blue}"_s});
    }

    void disabledLibraryIsListedButNotLoaded()
    {
        const QString red = QFileInfo(install(Red, u"plugins/a.so"_s)).canonicalFilePath();
        install(Blue, u"plugins/b.so"_s);
        const PluginManager manager({directory(u"plugins"_s)}, {}, {red});
        QCOMPARE(manager.featureList(), QStringList{u"{blue}"_s});
        QCOMPARE(manager.libraries().size(), 2);
        QCOMPARE(manager.libraries()[0].path, red);
        QCOMPARE(manager.libraries()[0].name, u"a"_s);
        QVERIFY(!manager.libraries()[0].enabled);
        QCOMPARE(manager.libraries()[1].name, u"Simulator"_s);
        QVERIFY(manager.libraries()[1].enabled);
        QVERIFY2(!QPluginLoader(red).isLoaded(), "it was not even loaded");
    }

    void libraryInTwoDirectoriesIsLoadedOnce()
    {
        const QString file = install(Blue, u"plugins/a.so"_s);
        QVERIFY(QFile::link(file, directory(u"linked"_s) + u"/b.so"_s));
        const PluginManager manager({directory(u"plugins"_s), directory(u"linked"_s), directory(u"plugins"_s)});
        QCOMPARE(manager.libraries().size(), 1);
    }

    void rootObjectWithoutQInterfacesIsReported()
    {
        const QString file = install(QStringLiteral(TESTPLUGIN_BROKEN_INTERFACES), u"plugins/a.so"_s);
        const QString reason = u"The class of its root object, BrokenPlugin, lacks Q_INTERFACES(IPluginFactory)."_s;
        QTest::ignoreMessage(
            QtWarningMsg, qPrintable(u"PluginManager::loadLibrary: Cannot load plug-in (%1): %2"_s.arg(file, reason)));
        const PluginManager manager({directory(u"plugins"_s)});
        QVERIFY(manager.featureList().isEmpty());
        QCOMPARE(manager.libraries()[0].problem, reason);
    }

    void libraryForAnotherVersionOfTheEditorIsRefused()
    {
        install(QStringLiteral(TESTPLUGIN_BROKEN_VERSION), u"plugins/a.so"_s);
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^PluginManager::loadLibrary: Cannot load plug-in "
                                                              "\\(.*a.so\\): It was built with version 2.8 of the "
                                                              "editor classes, and this is version 2.9. Build it "
                                                              "again.$"_s));
        const PluginManager manager({directory(u"plugins"_s)});
        QVERIFY(manager.featureList().isEmpty());
    }

    void factoryIsValidAfterItsManagerIsDeleted()
    {
        install(Red, u"plugins/a.so"_s);
        IPluginFactory *factory = PluginManager({directory(u"plugins"_s)}).factory(u"{red}"_s);
        m_root.reset();
        QCOMPARE(factory->name(), u"Ostrand Tools"_s);
    }
};

QTEST_GUILESS_MAIN(PluginManagerTest)
#include "tst_pluginmanager.moc"
