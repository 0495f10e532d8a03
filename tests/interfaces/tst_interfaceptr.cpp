#include "idebugbuild.h"
#include "imemoryverify.h"
#include "interfaceobject.h"
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class Build : public InterfaceObject<IDebugBuild>
{
public:
    explicit Build(int *destroyed = nullptr) : m_destroyed(destroyed) {}
    ~Build() override
    {
        if (m_destroyed)
            ++*m_destroyed;
    }
    void buildForDebug(const QString &) override {}

private:
    int *const m_destroyed;
};

class ThrowingBuild : public Build
{
public:
    QRESULT queryInterface(const QUuid &, QUnknownInterface **) override { throw 1; }
};

unsigned long references(QUnknownInterface *object)
{
    object->addRef();
    return object->release();
}

} // namespace

class tst_InterfacePtr : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u".?"_s)); }

    void destructorReleasesTheReference()
    {
        int destroyed = 0;
        {
            const InterfacePtr<Build> object(new Build(&destroyed));
            QCOMPARE(references(object.get()), 1ul);
            QCOMPARE(destroyed, 0);
        }
        QCOMPARE(destroyed, 1);
    }

    void exceptionInAQueryCountsAsNotOffered()
    {
        const InterfacePtr<Build> object(new ThrowingBuild);
        QTest::ignoreMessage(QtWarningMsg, "QUnknownInterface::queryInterface: an exception has left the plug-in");
        QVERIFY(!queryInterface<IDebugBuild>(object.get()));
        QCOMPARE(references(object.get()), 1ul);
    }

    void queryOfAnOfferedInterfaceAddsAReference()
    {
        const InterfacePtr<Build> object(new Build);
        {
            const auto build = queryInterface<IDebugBuild>(object.get());
            QCOMPARE(build.get(), object.get());
            QCOMPARE(references(object.get()), 2ul);
        }
        QCOMPARE(references(object.get()), 1ul);
    }

    void queryOfAMissingInterfaceReturnsNull()
    {
        const InterfacePtr<Build> object(new Build);
        QVERIFY(!queryInterface<IMemoryVerify>(object.get()));
        QCOMPARE(references(object.get()), 1ul);
    }

    void queryOfNullReturnsNull()
    {
        QVERIFY(!queryInterface<IDebugBuild>(nullptr));
        QVERIFY(!shareInterface<IDebugBuild>(nullptr));
    }

    void movingKeepsTheReference()
    {
        int destroyed = 0;
        InterfacePtr<IDebugBuild> first(new Build(&destroyed));
        InterfacePtr<IDebugBuild> second = std::move(first);
        QVERIFY(!first); // NOLINT(bugprone-use-after-move): it must be null
        QCOMPARE(references(second.get()), 1ul);
        second = InterfacePtr<IDebugBuild>(new Build);
        QCOMPARE(destroyed, 1);
        QCOMPARE(references(second.get()), 1ul);
    }

    void sharingAddsAReference()
    {
        int destroyed = 0;
        InterfacePtr<Build> first(new Build(&destroyed));
        InterfacePtr<Build> second = shareInterface(first.get());
        QCOMPARE(second.get(), first.get());
        QCOMPARE(references(first.get()), 2ul);
        first.reset();
        QCOMPARE(destroyed, 0);
        second.reset();
        QCOMPARE(destroyed, 1);
    }

    void listIsTakenOverWithItsReferences()
    {
        int destroyed = 0;
        {
            const QList<IDebugBuild *> list{new Build(&destroyed), new Build(&destroyed)};
            const auto taken = takeInterfaces(list);
            QCOMPARE(taken.size(), 2u);
            QCOMPARE(taken[1].get(), list[1]);
            QCOMPARE(references(list[0]), 1ul);
        }
        QCOMPARE(destroyed, 2);
    }
};

QTEST_GUILESS_MAIN(tst_InterfacePtr)
#include "tst_interfaceptr.moc"
