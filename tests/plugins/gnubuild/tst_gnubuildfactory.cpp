// The plug-in library, loaded as Varnel loads it.
#include "fakeproject.h"
#include "ibuildenvironment.h"
#include "idebugbuild.h"
#include "iexecutionenvironment.h"
#include "iextensioncommands.h"
#include "iprojectpopulate.h"
#include "ipropertydefinitions.h"
#include "iworkspaceclient.h"
#include "pluginfactory.h"
#include <QPluginLoader>
#include <QTest>
using namespace Qt::StringLiterals;

class TestGnuBuildFactory : public QObject
{
    Q_OBJECT
private:
    QPluginLoader m_loader{QStringLiteral(GNUBUILD_LIBRARY)};
    IPluginFactory *m_factory = nullptr;

private Q_SLOTS:
    void initTestCase()
    {
        m_factory = qobject_cast<IPluginFactory *>(m_loader.instance());
        QVERIFY2(m_factory, qPrintable(m_loader.errorString()));
    }
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void libraryHasTheFactoryIid()
    {
        QCOMPARE(m_loader.metaData().value(u"IID"_s).toString(), QStringLiteral(VarnelPluginFactoryIid));
    }

    void eachFeatureOffersTheInterfacesOfABuildEnvironment()
    {
        QCOMPARE(m_factory->featureList().size(), 4);
        for (const QString &feature : m_factory->featureList()) {
            const InterfacePtr<IPluginObject> object(m_factory->create(feature));
            QVERIFY(object);
            QCOMPARE(object->type(), int(IPluginObject::Environment));
            QVERIFY(queryInterface<IBuildEnvironment>(object.get()));
            QVERIFY(queryInterface<IDebugBuild>(object.get()));
            QVERIFY(queryInterface<IProjectPopulate>(object.get()));
            QVERIFY(queryInterface<IPropertyDefinitions>(object.get()));
            QVERIFY(queryInterface<IExtensionCommands>(object.get()));
            QVERIFY(queryInterface<IWorkspaceClient>(object.get()));
            QVERIFY(!queryInterface<IExecutionEnvironment>(object.get()));
        }
        QVERIFY(!m_factory->create(u"{red}"_s));
    }

    void environmentsOfOneLibraryFindEachOthersProjects()
    {
        const InterfacePtr<RecordingEvents> events(new RecordingEvents);
        const InterfacePtr<FakeProject> library(new FakeProject(u"maths"_s, u"/nowhere/maths"_s));
        library->set(u"buildTargetType"_s, u"library"_s);
        const InterfacePtr<FakeProject> user(new FakeProject(u"demo"_s, u"/nowhere/demo"_s));
        user->set(u"buildUsedProjects"_s, u"maths"_s);
        std::vector<InterfacePtr<IPluginObject>> objects;
        for (FakeProject *project : {library.get(), user.get()}) {
            objects.emplace_back(m_factory->create(m_factory->featureList().first()));
            const auto environment = queryInterface<IBuildEnvironment>(objects.back().get());
            QVERIFY(environment->initialise(events.get(), {}));
            environment->setProject(project);
        }
        const auto client = queryInterface<IWorkspaceClient>(objects[1].get());
        client->setQueryInterface(nullptr);
        client->workspaceChanged();
        QVERIFY(events->text.contains(u"needs the library project 'maths'"_s));
        queryInterface<IWorkspaceClient>(objects[0].get())->setQueryInterface(nullptr);
        events->text.clear();
        client->workspaceChanged();
        QCOMPARE(events->text, QString());
    }

    void nameAndLogoAreShownOnTheSplashScreen()
    {
        QCOMPARE(m_factory->name(), u"GNU Build"_s);
        QCOMPARE(m_factory->logo().height(), 32);
    }
};

QTEST_MAIN(TestGnuBuildFactory)
#include "tst_gnubuildfactory.moc"
