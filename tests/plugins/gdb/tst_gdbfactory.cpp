#include "livesession.h"
#include <QJsonObject>
#include <QPluginLoader>
#include <QRegularExpression>

class tst_GdbFactory : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }
    void libraryHasFactoryMetadataAndFeatures();
    void createdObjectOffersItsInterfacesWithOneReference();
    void environmentsOfOneGroupRestartTogether();
};

void tst_GdbFactory::libraryHasFactoryMetadataAndFeatures()
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

void tst_GdbFactory::createdObjectOffersItsInterfacesWithOneReference()
{
    QPluginLoader loader(QStringLiteral(GDB_LIBRARY));
    auto *factory = qobject_cast<IPluginFactory *>(loader.instance());
    const InterfacePtr<IPluginObject> object(factory->create(factory->featureList().first()));
    QCOMPARE(object->type(), IPluginObject::Environment);
    for (const QUuid &id : {IExecutionEnvironment::Iid, IMemory::Iid, IMemoryVerify::Iid, IDockExtension::Iid}) {
        QUnknownInterface *found = nullptr;
        QCOMPARE(object->queryInterface(id, &found), QS_OK);
        QCOMPARE(queryInterface<IPluginObject>(found).get(), object.get()); // the same object for each interface
        QCOMPARE(found->release(), 1ul);
    }
    QUnknownInterface *none = object.get();
    QCOMPARE(object->queryInterface(IPluginFactory::Iid, &none), QE_NOINTERFACE);
    QCOMPARE(none, nullptr);
}

void tst_GdbFactory::environmentsOfOneGroupRestartTogether()
{
    QPluginLoader loader(QStringLiteral(GDB_LIBRARY));
    auto *factory = qobject_cast<IPluginFactory *>(loader.instance());
    MemoryProject project;
    project.path = QStringLiteral(PROGRAM_DIRECTORY);
    RecordedEvents events[3];
    const QStringList groups = {u"pair"_s, u"pair"_s, u"other"_s};
    std::vector<InterfacePtr<IPluginObject>> objects;
    for (int i = 0; i < 3; ++i) {
        objects.emplace_back(factory->create(factory->featureList().first()));
        const auto environment = queryInterface<IExecutionEnvironment>(objects.back().get());
        QVERIFY(environment->initialise(&project, &events[i], u"native;group="_s + groups[i]));
    }
    queryInterface<IMultiProcessorSync>(objects[0].get())
        ->syncRestart(); // no session to restart: the status is unknown
    QCOMPARE(events[0].statuses, QList<LiveSession::Status>{IExecutionEnvironment::ProgramUnknown});
    QCOMPARE(events[1].statuses, events[0].statuses);
    QVERIFY(events[2].statuses.isEmpty());
}

QTEST_MAIN(tst_GdbFactory)
#include "tst_gdbfactory.moc"
