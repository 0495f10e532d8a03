#include "ibuildenvironment.h"
#include "ibuildevents.h"
#include "iexecutionenvironment.h"
#include "interfaceobject.h"
#include "iproject.h"
#include "itextdocumentplugin.h"
#include "pluginfactory.h"
#include "textindent.h"
#include <QPluginLoader>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>

using namespace Qt::StringLiterals;

/// The headers of the editor refer to this name. The library that defines it must come with the plug-in that is loaded.
const int VARNEL_EDITOR_NAME(VARNEL_EDITOR_VERSION) = 0;

namespace {

const QString feature = u"{0b7a3c52-9f51-4c0e-8a52-6f1d3ce0a7d4}"_s;

class Events : public InterfaceObject<IBuildEvents>
{
public:
    void buildFinished(bool success) override { results += success; }
    void feedback(const QString &text) override { output += text; }
    void xmlFeedback(const QString &) override {}
    QString output;
    QList<bool> results;
};

class Project : public InterfaceObject<IProject>
{
public:
    explicit Project(const QString &path) : m_path(path) {}
    QString name() override { return {}; }
    QString basePath() override { return m_path; }
    QList<IProjectFolder *> folders() override { return {}; }
    QList<IProjectFile *> files() override { return {}; }
    IProjectProperties *properties() override { return nullptr; }
    QString currentConfiguration() override { return {}; }
    bool isModified() override { return false; }
    bool save() override { return false; }
    void addFiles(QStringList) override {}
    QString displayName() override { return {}; }
    bool isActive() override { return true; }
    void setActive(bool) override {}

private:
    const QString m_path;
};

template <typename T>
unsigned long references(T *object)
{
    object->addRef();
    return object->release();
}

void writeFile(const QString &path, const QByteArray &text)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(text);
}

QString readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace

/// The installed SDK, and plug-ins that other tests have built with it and installed.
class tst_SdkPackage : public QObject
{
    Q_OBJECT

    static QString installed(const QString &path) { return QStringLiteral(VARNEL_INSTALLED) + u'/' + path; }
    /// The path of the installed library of the CMake target @p name.
    static QString library(const QString &name)
    {
        return installed(u"plugins/"_s + QStringLiteral(PLUGIN_PREFIX) + name + QStringLiteral(PLUGIN_SUFFIX));
    }
    IPluginFactory *factory() { return qobject_cast<IPluginFactory *>(QPluginLoader(m_library).instance()); }
    static QString sourceDirectory(const QString &folder) { return QStringLiteral(VARNEL_SOURCE_DIR) + u'/' + folder; }

    void writeScript(const QByteArray &text)
    {
        const QString script = m_directory.filePath(u"script"_s);
        writeFile(script, "#!/bin/sh\n" + text);
        QFile::setPermissions(script, QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner);
    }

    QTemporaryDir m_directory;
    QString m_library;

private Q_SLOTS:
    void initTestCase()
    {
        m_library = library(u"scriptbuild"_s);
        QVERIFY2(QFile::exists(m_library), qPrintable(m_library));
    }

    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void packageContainsAllInterfaces()
    {
        const QStringList headers =
            QDir(QStringLiteral(VARNEL_SOURCE_DIR) + u"/source/interfaces"_s).entryList({u"*.h"_s});
        QVERIFY(headers.contains(u"iproject.h"_s));
        for (const QString &header : headers)
            QVERIFY2(QFile::exists(installed(u"include/varnel/"_s + header)), qPrintable(header));
    }

    void packageContainsGuidesSamplesAndTheLibraryForTests()
    {
        for (const char *file : {"doc/varnel-sdk/plugin-authors.md", "doc/varnel-sdk/plugin-sequences.md",
                                 "doc/varnel-sdk/plugin-misbehaviour.md", "doc/varnel-sdk/plugin-changes.md",
                                 "doc/varnel-sdk/property-definitions.md", "doc/varnel-sdk/automation.md",
                                 "doc/varnel-sdk/templates.md", "doc/varnel-sdk/uiconfig.md",
                                 "doc/varnel-sdk/samples/scriptbuild/scriptbuild.cpp", "varnel-sdk/driver/__init__.py"})
            QVERIFY2(QFile::exists(installed(u"share/"_s + QString::fromLatin1(file))), file);
    }

    void libraryHasTheFactoryIid()
    {
        QCOMPARE(QPluginLoader(m_library).metaData()[u"IID"_s].toString(), IPluginFactory::Iid.toString());
    }

    void factoryReturnsFeaturesNameAndLogo()
    {
        QVERIFY2(factory(), qPrintable(QPluginLoader(m_library).errorString()));
        QCOMPARE(queryInterface<IPluginFactory>(factory()).get(), factory());
        QCOMPARE(factory()->featureList(), QStringList{feature});
        QCOMPARE(factory()->name(), u"Script Build"_s);
        QCOMPARE(factory()->logo().size(), QSize(32, 32));
    }

    void unknownFeatureIsNotCreated()
    {
        QVERIFY(!factory()->create(u"{00000000-0000-0000-0000-000000000000}"_s));
        QVERIFY(!factory()->create(feature.toUpper()));
    }

    void createdObjectHasOneReference()
    {
        IPluginObject *object = factory()->create(feature);
        QCOMPARE(references(object), 1ul);
        QVERIFY(object->type() != IPluginObject::CustomDocument && object->type() != IPluginObject::TextDocument);
        QVERIFY(!queryInterface<IExecutionEnvironment>(object));
        const auto environment = queryInterface<IBuildEnvironment>(object);
        QVERIFY(environment);
        QCOMPARE(object->release(), 1ul);
        QCOMPARE(references(environment.get()), 1ul);
    }

    void scriptResultIsTheBuildResult_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::addColumn<bool>("success");
        QTest::addColumn<QString>("output");
        QTest::newRow("success") << QByteArray("echo $@; pwd") << true << u"build Debug Release\n%1\n"_s;
        QTest::newRow("failure") << QByteArray("echo no >&2; exit 1") << false << u"no\n"_s;
        QTest::newRow("unfinished line") << QByteArray("printf a; printf b") << true << u"ab\n"_s;
    }

    void scriptResultIsTheBuildResult()
    {
        QFETCH(QByteArray, script);
        QFETCH(bool, success);
        QFETCH(QString, output);
        writeScript(script);
        const InterfacePtr<Events> events(new Events);
        const InterfacePtr<Project> project(new Project(m_directory.path()));
        {
            const InterfacePtr<IPluginObject> object(factory()->create(feature));
            const auto environment = queryInterface<IBuildEnvironment>(object.get());
            QVERIFY(environment->initialise(events.get(), u"./script"_s));
            environment->setProject(project.get());
            environment->build({u"Debug"_s, u"Release"_s}, false);
            QTRY_COMPARE(events->results, QList<bool>{success});
        }
        QCOMPARE(events->output, output.contains(u'%') ? output.arg(m_directory.path()) : output);
        QCOMPARE(references(events.get()), 1ul); // the plug-in has released its references
        QCOMPARE(references(project.get()), 1ul);
    }

    void stoppedBuildFails()
    {
        writeScript("exec sleep 1000");
        const InterfacePtr<Events> events(new Events);
        const InterfacePtr<IPluginObject> object(factory()->create(feature));
        const auto environment = queryInterface<IBuildEnvironment>(object.get());
        QVERIFY(environment->initialise(events.get(), m_directory.filePath(u"script"_s)));
        environment->build({u"Debug"_s}, true);
        environment->stop();
        QTRY_COMPARE(events->results, QList<bool>{false});
    }

    void missingScriptIsReported()
    {
        const InterfacePtr<Events> events(new Events);
        const InterfacePtr<IPluginObject> object(factory()->create(feature));
        const auto environment = queryInterface<IBuildEnvironment>(object.get());
        QVERIFY(!environment->initialise(events.get(), QString()));
        QVERIFY(!events->output.isEmpty());
        environment->clean({u"Debug"_s});
        QTRY_COMPARE(events->results, QList<bool>{false});
    }

    /// The test does not link the editor; the plug-in loads it from the installation.
    void languageWorksWithTheInstalledEditor()
    {
        QPluginLoader loader(library(u"language"_s));
        auto *factory = qobject_cast<IPluginFactory *>(loader.instance());
        QVERIFY2(factory, qPrintable(loader.errorString()));
        QVERIFY(readFile(u"/proc/self/maps"_s).contains(installed(u"lib/"_s)));

        const InterfacePtr<IPluginObject> object(factory->create(factory->featureList().constFirst()));
        QCOMPARE(object->type(), IPluginObject::TextDocument);
        const auto language = queryInterface<ITextDocumentPlugin>(object.get());
        QVERIFY(language);
        QCOMPARE(language->extensions(), (QStringList{u"s"_s, u"asm"_s}));
        QTextDocument text(u"  loop:\nnop"_s);
        const std::unique_ptr<TextIndent> indenter(language->indenter());
        indenter->setIndentMode(TextIndent::Smart);
        for (QTextBlock line = text.begin(); line.isValid(); line = line.next())
            indenter->indent(&text, line);
        QCOMPARE(text.toPlainText(), u"loop:\n    nop"_s);
    }

    void guideContainsTheseSources_data()
    {
        QTest::addColumn<QString>("file");
        for (const char *file : {"samples/scriptbuild/CMakeLists.txt", "samples/scriptbuild/scriptbuild.cpp",
                                 "samples/language/CMakeLists.txt", "samples/language/language.cpp"})
            QTest::newRow(file) << QString::fromLatin1(file);
    }

    void guideContainsTheseSources()
    {
        QFETCH(QString, file);
        const QString guide = readFile(QStringLiteral(VARNEL_SOURCE_DIR) + u"/docs/plugin-authors.md"_s);
        QString source = readFile(sourceDirectory(file));
        QVERIFY(!source.isEmpty());
        source.remove(QRegularExpression(u"varnel_add_plugin_test.*\n"_s)); // the guide begins without tests
        QVERIFY(guide.contains(u"\n"_s + source + u"```\n"_s));
    }
};

QTEST_MAIN(tst_SdkPackage)
#include "tst_sdkpackage.moc"
