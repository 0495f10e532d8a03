#include "imemory.h"
#include "iqueryplugininterfaceimpl.h"
#include "stubfixture.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The access of one project to the plug-in objects of the others.
class IQueryPluginInterfaceImplTest : public QObject, protected StubFixture
{
    Q_OBJECT

private:
    InterfacePtr<IQueryPluginInterface> m_query;

    template <typename Environment>
    InterfacePtr<Environment> object(const QString &label)
    {
        const InterfacePtr<IPluginObject> object(create(u'{' + label + u'}'));
        return queryInterface<Environment>(object.get());
    }

    /// A project for each entry, "b1" for a build environment, "x1" for an execution environment, both or none. The
    /// first project makes the queries. A "!" marks those that have the interface.
    void makeProjects(const QString &projects)
    {
        for (const QString &each : projects.split(u';')) {
            Project *project = addProject(u"p%1"_s.arg(m_workspace->count()), {}, {});
            for (QString label : each.split(u' ', Qt::SkipEmptyParts)) {
                const QSet<QUuid> more = label.endsWith(u'!') ? QSet<QUuid>{IMemory::Iid} : QSet<QUuid>{};
                label.remove(u'!');
                if (label.startsWith(u'b')) {
                    buildScript(label, more);
                    project->setBuildEnvironment(object<IBuildEnvironment>(label).get());
                } else {
                    executionScript(label, more);
                    project->setExecutionEnvironment(object<IExecutionEnvironment>(label).get());
                }
            }
        }
        m_query = shareInterface(new IQueryPluginInterfaceImpl(m_activity.get(), m_workspace->project(0)));
    }

    /// Queries with an index and returns the label of the found object, whose reference is released.
    QString find(int index)
    {
        QUnknownInterface *found = reinterpret_cast<QUnknownInterface *>(this);
        if (m_query->queryInterface(IMemory::Iid, &found, index) != QS_OK)
            return u"failed"_s;
        if (!found)
            return {};
        m_stub->takeCalls();
        static_cast<void>(static_cast<IMemory *>(found)->regions());
        found->release();
        return m_stub->takeCalls().value(0).section(u'.', 0, 0);
    }

    /// Releases the references of hits that were stored for @p index and then replaced, which are not released
    /// otherwise.
    void releaseReplaced(int index)
    {
        QList<QUnknownInterface *> hits;
        for (int i = 1; i < m_workspace->count(); ++i) {
            if (queryInterface<IMemory>(m_workspace->project(i)->buildInterface()))
                hits += m_workspace->project(i)->buildInterface();
            if (queryInterface<IMemory>(m_workspace->project(i)->executionInterface()))
                hits += m_workspace->project(i)->executionInterface();
        }
        for (qsizetype i = qMax(index, 1) - 1; i < hits.size() - 1; ++i)
            hits[i]->release();
    }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup()
    {
        m_query.reset();
        tearDown();
    }

    void projectThatIsRemovedDuringAQuestionIsStillAsked()
    {
        makeProjects(u";b1!;b2!"_s);
        m_stub->script(u"{b1}"_s).on[u"queryInterface"_s] = [this] {
            m_stub->script(u"{b1}"_s).on.clear();
            m_workspace->removeProject(m_workspace->project(2));
        };
        QCOMPARE(m_query->interfaceCount(IMemory::Iid), 2);
        QCOMPARE(m_query->interfaceCount(IMemory::Iid), 1);
    }

    void lastHitFromTheIndexOnIsReturned_data()
    {
        QTest::addColumn<QString>("projects");
        QTest::addColumn<QStringList>("found"); // for the indices 0, 1 and so on
        QTest::addColumn<int>("count");
        QTest::newRow("no other project") << u"b0! x0!"_s << QStringList{{}, {}} << 0;
        QTest::newRow("no object has it") << u";b1 x1"_s << QStringList{{}, {}} << 0;
        QTest::newRow("one") << u"b0!;x1!"_s << QStringList{u"x1"_s, u"x1"_s, {}} << 1;
        QTest::newRow("two") << u"x0!;x1!;x2!"_s << QStringList{u"x2"_s, u"x2"_s, u"x2"_s, {}} << 2;
        QTest::newRow("build before execution") << u";b1! x1!"_s << QStringList{u"x1"_s, u"x1"_s, u"x1"_s, {}} << 2;
        QTest::newRow("between others") << u";b1;b2! x2;b3 x3"_s << QStringList{u"b2"_s, u"b2"_s, {}} << 1;
    }

    void lastHitFromTheIndexOnIsReturned()
    {
        QFETCH(QString, projects);
        QFETCH(QStringList, found);
        QFETCH(int, count);
        makeProjects(projects);
        QCOMPARE(m_query->interfaceCount(IMemory::Iid), count);
        for (int index = 0; index < found.size(); ++index) {
            QCOMPARE(find(index), found[index]);
            releaseReplaced(index);
        }
    }

    void withTheCountAsIndexNothingIsReplaced()
    {
        makeProjects(u"x0!;x1!;x2!;x3!"_s);
        QCOMPARE(find(m_query->interfaceCount(IMemory::Iid)), u"x3"_s);
        m_query.reset();
        dropWorkspace();
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void replacedHitIsNeverReleased()
    {
        makeProjects(u"x0!;x1!;x2!"_s);
        QCOMPARE(find(1), u"x2"_s);
        m_query.reset();
        const auto x1 = shareInterface(m_workspace->project(1)->executionInterface());
        dropWorkspace();
        QCOMPARE(m_stub->objectCount(), 1);
        QVERIFY(m_stub->object(u"x1"_s));
        x1->release(); // the reference that was not released
    }

    void nullResultPointerIsRefused()
    {
        makeProjects(u";x1!"_s);
        QCOMPARE(m_query->queryInterface(IMemory::Iid, nullptr, 1), QE_NOINTERFACE);
        m_query.reset();
        dropWorkspace();
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void removedProjectsAreNotFound()
    {
        makeProjects(u";x1!"_s);
        QCOMPARE(m_query->interfaceCount(IMemory::Iid), 1);
        m_workspace->removeProject(m_workspace->project(1));
        QCOMPARE(m_query->interfaceCount(IMemory::Iid), 0);
        QCOMPARE(find(1), QString());
    }

    void afterTheWorkspaceIsClosedNothingIsFound()
    {
        makeProjects(u";x1!"_s);
        dropWorkspace();
        QCOMPARE(m_query->interfaceCount(IMemory::Iid), 0);
        QCOMPARE(find(1), QString());
    }

    void queryFindsItsOwnInterfaceAndTheCommonOneOnly()
    {
        makeProjects(u";x1!"_s);
        QUnknownInterface *out = nullptr;
        for (const QUuid &id : {QUnknownInterface::Iid, IQueryPluginInterface::Iid}) {
            QCOMPARE(m_query->queryInterface(id, &out), QS_OK);
            QCOMPARE(out, m_query.get());
            out->release();
        }
        QCOMPARE(m_query->queryInterface(IMemory::Iid, &out), QE_NOINTERFACE);
    }

    void nullProjectFailsAnAssertion()
    {
        expectAssert(u"selfProject"_s);
        m_query = shareInterface(new IQueryPluginInterfaceImpl(m_activity.get(), nullptr));
    }
};

QTEST_MAIN(IQueryPluginInterfaceImplTest)
#include "tst_iqueryplugininterfaceimpl.moc"
