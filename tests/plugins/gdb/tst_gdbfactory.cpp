#include "idockextension.h"
#include "iexecutionenvironment.h"
#include "imemory.h"
#include "imemoryverify.h"
#include "pluginfactory.h"
#include <QJsonObject>
#include <QPluginLoader>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;

class tst_GdbFactory : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void theLibraryIsAPlugin();
    void makesEnvironmentsThatEndWithTheirLastReference();
};

void tst_GdbFactory::theLibraryIsAPlugin()
{
    QPluginLoader loader(QStringLiteral(GDB_LIBRARY));
    QCOMPARE(loader.metaData().value(u"IID"_s).toString(), QStringLiteral(VarnelPluginFactoryIid));
    auto *factory = qobject_cast<IPluginFactory *>(loader.instance());
    QVERIFY2(factory, qPrintable(loader.errorString()));
    QCOMPARE(factory->featureList(), QStringList{u"{27aa5f2d-ef64-4eab-9fda-9693e2e6117f}"_s});
    QCOMPARE(factory->name(), u"GDB"_s);
    QCOMPARE(factory->logo().height(), 32);
    QCOMPARE(factory->create(u"{other}"_s), nullptr);
}

void tst_GdbFactory::makesEnvironmentsThatEndWithTheirLastReference()
{
    QPluginLoader loader(QStringLiteral(GDB_LIBRARY));
    auto *factory = qobject_cast<IPluginFactory *>(loader.instance());
    const InterfacePtr<IPluginObject> object(factory->create(factory->featureList().first()));
    QCOMPARE(object->type(), IPluginObject::Environment);
    for (const QUuid &id : {IExecutionEnvironment::Iid, IMemory::Iid, IMemoryVerify::Iid, IDockExtension::Iid}) {
        QUnknownInterface *found = nullptr;
        QCOMPARE(object->queryInterface(id, &found), QS_OK);
        QCOMPARE(queryInterface<IPluginObject>(found).get(), object.get()); // one object, whatever was asked
        QCOMPARE(found->release(), 1ul);
    }
    QUnknownInterface *none = object.get();
    QCOMPARE(object->queryInterface(IPluginFactory::Iid, &none), QE_NOINTERFACE);
    QCOMPARE(none, nullptr);
}

QTEST_MAIN(tst_GdbFactory)
#include "tst_gdbfactory.moc"
