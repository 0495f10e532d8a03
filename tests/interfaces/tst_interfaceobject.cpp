#include "ibuildevents.h"
#include "imemoryverify.h"
#include "interfaceobject.h"
#include "iprojectfile.h"
#include "iqueryplugininterface.h"
#include "pluginfactory.h"
#include <QPointer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// Like an object of a plug-in: several interfaces, created with one reference for the caller.
class Plugin : public InterfaceObject<IPluginObject, IMemoryVerify, IQueryPluginInterface>
{
public:
    int type() override { return 1; }
    bool verify() override { return true; }
    void setVerify(bool) override {}
    using InterfaceObject::queryInterface;
    QRESULT queryInterface(const QUuid &, QUnknownInterface **out, int index) override
    {
        *out = nullptr;
        return QRESULT(index);
    }
    int interfaceCount(const QUuid &) override { return 2; }
};

/// Like an object of the host: a QObject with one interface, without a reference until the first query.
class Events : public QObject, public InterfaceObject<IBuildEvents>
{
    Q_OBJECT
public:
    Events() : InterfaceObject(0) {}
    void buildFinished(bool success) override { Q_EMIT sigBuildFinished(success); }
    void feedback(const QString &) override {}
    void xmlFeedback(const QString &) override {}
Q_SIGNALS:
    void sigBuildFinished(bool success);
};

class File : public InterfaceObject<IProjectFile>
{
public:
    explicit File(bool *destroyed) : m_destroyed(destroyed) {}
    ~File() override { *m_destroyed = true; }
    QString name() override { return u"main.c"_s; }
    QString path() override { return u"src/main.c"_s; }
    IProjectProperties *properties() override { return nullptr; }
    IProjectFolder *folder() override { return nullptr; }

private:
    bool *const m_destroyed;
};

} // namespace

class tst_InterfaceObject : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void queryFindsEachInterface()
    {
        const InterfacePtr<Plugin> plugin(new Plugin);
        const auto *unknown = static_cast<QUnknownInterface *>(static_cast<IPluginObject *>(plugin.get()));
        IMemoryVerify *verify = plugin.get();
        IQueryPluginInterface *query = plugin.get();
        QCOMPARE(queryInterface<IMemoryVerify>(query).get(), verify);
        QCOMPARE(queryInterface<IQueryPluginInterface>(verify).get(), query);
        QCOMPARE(queryInterface<QUnknownInterface>(verify).get(), unknown); // one object has one QUnknownInterface
        QCOMPARE(queryInterface<QUnknownInterface>(query).get(), unknown);
        QVERIFY(queryInterface<IMemoryVerify>(query)->verify());
    }

    void failedQuerySetsNullAndAddsNoReference()
    {
        const InterfacePtr<Plugin> plugin(new Plugin);
        auto *out = static_cast<QUnknownInterface *>(static_cast<IMemoryVerify *>(plugin.get()));
        QCOMPARE(plugin->queryInterface(IBuildEvents::Iid, &out), QE_NOINTERFACE);
        QVERIFY(!out);
        QCOMPARE(plugin->addRef(), 1ul);
        QCOMPARE(plugin->release(), 1ul);
    }

    void successfulQueryAddsAReference()
    {
        const InterfacePtr<Plugin> plugin(new Plugin);
        QUnknownInterface *out = nullptr;
        QCOMPARE(plugin->queryInterface(IMemoryVerify::Iid, &out), QS_OK);
        const InterfacePtr<QUnknownInterface> taken(out);
        QCOMPARE(plugin->addRef(), 2ul);
        QCOMPARE(plugin->release(), 2ul);
    }

    void addRefReturnsTheOldCountAndReleaseTheNew()
    {
        const InterfacePtr<Plugin> plugin(new Plugin);
        QCOMPARE(plugin->addRef(), 1ul);
        QCOMPARE(plugin->addRef(), 2ul);
        QCOMPARE(plugin->release(), 2ul);
        QCOMPARE(plugin->release(), 1ul);
    }

    void otherQueryFunctionOfAnInterfaceIsNotHidden()
    {
        const InterfacePtr<Plugin> plugin(new Plugin);
        QUnknownInterface *out = nullptr;
        QCOMPARE(plugin->queryInterface(IMemoryVerify::Iid, &out, 5), 5ul);
    }

    void hostObjectIsDeletedByItsLastRelease()
    {
        const QPointer<Events> events(new Events);
        QList<bool> results;
        connect(events, &Events::sigBuildFinished, this, [&](bool success) { results += success; });
        {
            const auto build = queryInterface<IBuildEvents>(events.get());
            QVERIFY(!queryInterface<IMemoryVerify>(build.get()));
            const auto unknown = queryInterface<QUnknownInterface>(build.get());
            QCOMPARE(unknown->addRef(), 2ul);
            QCOMPARE(unknown->release(), 2ul);
            build->buildFinished(true);
            QVERIFY(events);
        }
        QVERIFY(!events);
        QCOMPARE(results, QList<bool>{true});
    }

    void interfaceWithADestructorIsReleased()
    {
        bool destroyed = false;
        InterfacePtr<IProjectFile> file(new File(&destroyed));
        QCOMPARE(queryInterface<IProjectFile>(file.get()).get(), file.get());
        QVERIFY(!destroyed);
        file.reset();
        QVERIFY(destroyed);
    }
};

QTEST_GUILESS_MAIN(tst_InterfaceObject)
#include "tst_interfaceobject.moc"
