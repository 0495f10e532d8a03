// The library as the program loads it.
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

    void bearsTheIdOfFactories()
    {
        QCOMPARE(m_loader.metaData().value(u"IID"_s).toString(), QStringLiteral(VarnelPluginFactoryIid));
    }

    void createsEachFeature()
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

    void showsItself()
    {
        QCOMPARE(m_factory->name(), u"GNU Build"_s);
        QCOMPARE(m_factory->logo().height(), 32);
    }
};

QTEST_MAIN(TestGnuBuildFactory)
#include "tst_gnubuildfactory.moc"
