#include "currentlocation.h"
#include "debugmarkers.h"
#include "environmentkey.h"
#include "markedviews.h"
#include "stubfixture.h"
#include "tabbedviewmanager.h"
#include "workspace.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The margins of several views, by the name of the document.
class DebugMarkersTest : public QObject, protected StubFixture
{
    Q_OBJECT

private:
    std::unique_ptr<TabbedViewManager> m_views;
    std::unique_ptr<Workspace> m_documents;

    /// Adds the new current project, with a processor of its name.
    Project *addProcessor(const QString &name, const QList<BreakpointRecord> &breakpoints = {},
                          const QString &contents = {})
    {
        executionScript(name, {IBreakpoints::Iid}).breakpoints = breakpoints;
        Project *project = addProject(name, {}, {}, contents);
        const InterfacePtr<IPluginObject> object(create(u'{' + name + u'}'));
        project->setExecutionEnvironment(queryInterface<IExecutionEnvironment>(object.get()).get());
        m_stub->takeCalls();
        return project;
    }
    StubScript &scriptOf(const QString &name) { return m_stub->script(u'{' + name + u'}'); }

    static QString disassemblyOf(const Project *project)
    {
        return disassemblyName(project->executionInterface(), project->name());
    }

    MarkedView *open(const QString &name)
    {
        m_documents->openDocument(isDisassemblyName(name) ? name : path(name), true);
        return qobject_cast<MarkedView *>(m_views->currentView());
    }

    void markBreakpoints() { refreshBreakpointMarkers(*m_activity, *m_views); }

private Q_SLOTS:
    void init()
    {
        setUp();
        forgetCurrentLocations();
        m_views = std::make_unique<TabbedViewManager>();
        m_documents = std::make_unique<Workspace>();
        m_documents->setViewManager(m_views.get());
        m_documents->addTemplate(new MarkedTemplate);
    }

    void cleanup()
    {
        m_views->closeAll();
        m_documents.reset();
        m_views.reset();
        tearDown();
    }

    // Names

    void anEnvironmentNamesFilesFromItsProject()
    {
        const Project *project = addProcessor(u"fw"_s);
        QCOMPARE(debugPath(*project, path(u"main.c"_s)), u"main.c"_s);
        QCOMPARE(debugPath(*project, path(u"src/main.c"_s)), u"src/main.c"_s);
        QCOMPARE(debugPath(*project, disassemblyOf(project)), disassemblyOf(project));
        QCOMPARE(debugPath(*project, u"disassembler:"_s), u"disassembler:"_s);
    }

    void aDisassemblyBelongsToOneProcessor()
    {
        const Project *one = addProcessor(u"one"_s);
        const Project *two = addProcessor(u"two"_s);
        QVERIFY(!isForeignDisassembly(disassemblyOf(one), one->executionInterface()));
        QVERIFY(isForeignDisassembly(disassemblyOf(one), two->executionInterface()));
        QVERIFY(isForeignDisassembly(disassemblyOf(one), nullptr));
        QVERIFY(isForeignDisassembly(u"disassembler:0xffffffff:one"_s, one->executionInterface()));
        QVERIFY(!isForeignDisassembly(u"disassembler:"_s, one->executionInterface()));
        QVERIFY(!isForeignDisassembly(u"main.c"_s, one->executionInterface()));
    }

    // The position of the program

    void thePlaceIsMarkedInEveryViewOfIt()
    {
        const Project *project = addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).location = {u"src/main.c"_s, 7};
        MarkedView *first = open(u"src/main.c"_s);
        m_views->newView();
        auto *second = qobject_cast<MarkedView *>(m_views->currentView());
        MarkedView *other = open(u"main.c"_s);
        open(u"notes.blank"_s);
        refreshExecutionMarker(project, *m_views);
        QCOMPARE(first->marks(), u"7=8"_s);
        QCOMPARE(second->marks(), u"7=8"_s);
        QCOMPARE(other->marks(), QString());
    }

    void thePlaceMayHaveAFullPath()
    {
        const Project *project = addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).location = {path(u"main.c"_s), 7};
        MarkedView *view = open(u"main.c"_s);
        refreshExecutionMarker(project, *m_views);
        QCOMPARE(view->marks(), u"7=8"_s);
    }

    void theMarkerMovesAndLeavesBreakpointsAlone()
    {
        const Project *project = addProcessor(u"fw"_s);
        MarkedView *view = open(u"main.c"_s);
        view->setMarker(7, IViewWithMarkers::EnabledBreakpointMarker, true, true);
        scriptOf(u"fw"_s).location = {u"main.c"_s, 7};
        refreshExecutionMarker(project, *m_views);
        QCOMPARE(view->marks(), u"7=9*"_s);
        scriptOf(u"fw"_s).location = {u"main.c"_s, 8};
        forgetCurrentLocations(); // as after a step
        refreshExecutionMarker(project, *m_views);
        QCOMPARE(view->marks(), u"7=1* 8=8"_s);
        clearExecutionMarker(*m_views);
        QCOMPARE(view->marks(), u"7=1*"_s);
    }

    void unknownLocationOnlyRemovesTheMarker_data()
    {
        QTest::addColumn<QString>("why");
        for (const QString &why : {u"unknown"_s, u"no project"_s, u"no processor"_s, u"exception"_s})
            QTest::newRow(qPrintable(why)) << why;
    }

    void unknownLocationOnlyRemovesTheMarker()
    {
        QFETCH(QString, why);
        Project *project = addProcessor(u"fw"_s);
        MarkedView *view = open(u"main.c"_s);
        view->setMarker(3, IViewWithMarkers::CurrentLineMarker, true, false);
        if (why == u"no processor"_s)
            project->setExecutionEnvironment(nullptr);
        if (why == u"exception"_s) {
            scriptOf(u"fw"_s).location = {u"main.c"_s, 7};
            scriptOf(u"fw"_s).on[u"currentLocation"_s] = throwError;
            expectException("IExecutionEnvironment::currentLocation");
        }
        refreshExecutionMarker(why == u"no project"_s ? nullptr : project, *m_views);
        QCOMPARE(view->marks(), QString());
    }

    void eachDisassemblyIsMarkedByItsProcessorOnly()
    {
        const Project *one = addProcessor(u"one"_s);
        const Project *two = addProcessor(u"two"_s);
        for (const Project *project : {one, two}) {
            for (const Project *seen : {one, two})
                scriptOf(project->name()).locationsFrom[disassemblyOf(seen)] = {disassemblyOf(seen), 0x11};
        }
        MarkedView *first = open(disassemblyOf(one));
        MarkedView *second = open(disassemblyOf(two));
        m_stub->takeCalls();
        refreshExecutionMarker(two, *m_views);
        QCOMPARE(m_stub->takeCalls(), QStringList(u"two.currentLocation()"_s)); // not for the other disassembly
        QCOMPARE(first->marks(), QString());
        QCOMPARE(second->marks(), u"17=8"_s);
        refreshExecutionMarker(one, *m_views);
        QCOMPARE(first->marks(), u"17=8"_s);
        QCOMPARE(second->marks(), QString());
    }

    void viewMayCloseDuringTheQueryOfTheLocation()
    {
        const Project *project = addProcessor(u"fw"_s);
        scriptOf(u"fw"_s).location = {u"main.c"_s, 7};
        open(u"main.c"_s);
        open(u"other.c"_s);
        scriptOf(u"fw"_s).on[u"currentLocation"_s] = [this] { m_views->closeAll(); };
        refreshExecutionMarker(project, *m_views);
        QVERIFY(m_views->views().isEmpty());
    }

    // Breakpoints

    void theStateChoosesTheMarker_data()
    {
        QTest::addColumn<QList<int>>("states"); // of breakpoints on the line
        QTest::addColumn<QString>("marks");
        QTest::newRow("removed") << QList<int>{0} << QString();
        QTest::newRow("enabled") << QList<int>{1} << u"5=1"_s;
        QTest::newRow("disabled") << QList<int>{2} << u"5=2"_s;
        QTest::newRow("several") << QList<int>{3} << QString();
        QTest::newRow("unheard of") << QList<int>{4, -1} << QString();
        QTest::newRow("twice enabled") << QList<int>{1, 1} << u"5=1"_s;
        QTest::newRow("enabled and disabled") << QList<int>{1, 2} << u"5=4"_s;
        QTest::newRow("disabled and enabled") << QList<int>{2, 1} << u"5=4"_s;
        QTest::newRow("mixed stays mixed when enabled") << QList<int>{1, 2, 1} << u"5=4"_s;
        QTest::newRow("mixed stays mixed when disabled") << QList<int>{2, 1, 2} << u"5=4"_s;
        QTest::newRow("several change nothing") << QList<int>{1, 3, 0} << u"5=1"_s;
    }

    void theStateChoosesTheMarker()
    {
        QFETCH(const QList<int>, states);
        QList<BreakpointRecord> records;
        for (const int state : states)
            records.append({{{u"main.c"_s, 5}}, state});
        addProcessor(u"fw"_s, records);
        MarkedView *view = open(u"main.c"_s);
        markBreakpoints();
        QTEST(view->marks(), "marks");
    }

    void everyPlaceOfABreakpointIsMarked()
    {
        addProcessor(u"fw"_s, {{{{u"main.c"_s, 5}, {u"inline.h"_s, 9}, {path(u"main.c"_s), 6}}, 1}, {{}, 1}});
        MarkedView *main = open(u"main.c"_s);
        MarkedView *header = open(u"inline.h"_s);
        markBreakpoints();
        QCOMPARE(main->marks(), u"5=1 6=1"_s);
        QCOMPARE(header->marks(), u"9=1"_s);
    }

    void oldBreakpointMarkersAreRemovedAndOthersKept()
    {
        addProcessor(u"fw"_s, {{{{u"main.c"_s, 5}}, 1}});
        MarkedView *view = open(u"main.c"_s);
        view->setMarker(5, IViewWithMarkers::DisabledBreakpointMarker, true, true);
        view->setMarker(6,
                        IViewWithMarkers::MultipleBreakpointMarker | IViewWithMarkers::LookupMarker
                            | IViewWithMarkers::CurrentLineMarker,
                        true, false);
        markBreakpoints();
        QCOMPARE(view->marks(), u"5=1 6=24"_s);
    }

    void breakpointsOfTheCurrentProjectAreMarkedLast_data()
    {
        QTest::addColumn<int>("foreign"); // states of the breakpoints on one line
        QTest::addColumn<int>("own");
        QTest::addColumn<QString>("marks");
        QTest::newRow("only another's") << 1 << 0 << u"5=1*"_s;
        QTest::newRow("only its own") << 0 << 1 << u"5=1"_s;
        QTest::newRow("both") << 2 << 2 << u"5=2"_s;
        QTest::newRow("mixed") << 1 << 2 << u"5=4"_s;
        QTest::newRow("its own has no marker") << 2 << 3 << u"5=2*"_s;
        QTest::newRow("another's has no marker") << 3 << 2 << u"5=2"_s;
    }

    void breakpointsOfTheCurrentProjectAreMarkedLast()
    {
        QFETCH(int, foreign);
        QFETCH(int, own);
        addProcessor(u"own"_s, {{{{u"main.c"_s, 5}}, own}});
        addProcessor(u"foreign"_s, {{{{u"main.c"_s, 5}}, foreign}});
        m_workspace->setCurrentProject(0);
        m_stub->takeCalls();
        MarkedView *view = open(u"main.c"_s);
        markBreakpoints();
        QCOMPARE(m_stub->takeCalls(), (QStringList{u"foreign.breakpoints()"_s, u"own.breakpoints()"_s}));
        QTEST(view->marks(), "marks");
    }

    void mixedBreakpointsOfOtherProjectsAreForeign()
    {
        addProcessor(u"one"_s, {{{{u"main.c"_s, 5}}, 1}});
        addProcessor(u"two"_s, {{{{u"main.c"_s, 5}}, 2}});
        addProcessor(u"three"_s);
        MarkedView *view = open(u"main.c"_s);
        markBreakpoints();
        QCOMPARE(view->marks(), u"5=4*"_s);
    }

    void breakpointsInADisassemblyAreThoseOfItsProcessor()
    {
        const Project *one = addProcessor(u"one"_s);
        const Project *two = addProcessor(u"two"_s);
        scriptOf(u"one"_s).breakpoints = {{{{u"disassembler:"_s, 5}}, 1}, {{{disassemblyOf(one), 6}}, 2}};
        scriptOf(u"two"_s).breakpoints = {{{{u"disassembler:"_s, 7}}, 1}};
        MarkedView *first = open(disassemblyOf(one));
        MarkedView *second = open(disassemblyOf(two));
        MarkedView *unknown = open(u"disassembler:0xffffffff:one"_s);
        markBreakpoints();
        QCOMPARE(first->marks(), u"5=1* 6=2*"_s);
        QCOMPARE(second->marks(), u"7=1"_s);
        QCOMPARE(unknown->marks(), QString());
    }

    void projectsWithoutBreakpointsAreSkipped()
    {
        addProcessor(u"one"_s, {{{{u"main.c"_s, 5}}, 1}});
        scriptOf(u"one"_s).offers.remove(IBreakpoints::Iid);
        addProject(u"two"_s, {}, {});
        addProcessor(u"three"_s, {{{{u"main.c"_s, 6}}, 1}});
        scriptOf(u"three"_s).on[u"breakpoints"_s] = throwError;
        addProcessor(u"four"_s, {{{{u"main.c"_s, 7}}, 1}});
        MarkedView *view = open(u"main.c"_s);
        expectException("IBreakpoints::breakpoints");
        markBreakpoints();
        QCOMPARE(view->marks(), u"7=1"_s);
    }

    void anEmptyWorkspaceClearsTheMarkers()
    {
        MarkedView *view = open(u"main.c"_s);
        view->setMarker(5, IViewWithMarkers::EnabledBreakpointMarker, true, false);
        markBreakpoints();
        QCOMPARE(view->marks(), QString());
    }

    // Tool tips

    void aToolTipNeedsTwoProjects()
    {
        QCOMPARE(breakpointToolTip(*m_activity, path(u"main.c"_s), 5), QString());
        addProcessor(u"one"_s, {{{{u"main.c"_s, 5}}, 1}});
        QCOMPARE(breakpointToolTip(*m_activity, path(u"main.c"_s), 5), QString());
    }

    void aToolTipListsTheProjectsOfTheFile()
    {
        const auto file = u"<file path=\"main.c\"/>"_s;
        addProcessor(u"one"_s, {{{{u"main.c"_s, 5}}, 1}, {{{u"main.c"_s, 6}}, 2}}, file);
        addProcessor(u"two"_s, {{{{u"other.c"_s, 1}, {path(u"main.c"_s), 5}}, 2}, {{{u"main.c"_s, 5}}, 3}}, file);
        addProcessor(u"three"_s, {{{{u"main.c"_s, 5}}, 1}}); // has the breakpoint but not the file
        QCOMPARE(breakpointToolTip(*m_activity, path(u"main.c"_s), 5),
                 u"<b>Breakpoint status</b><br>Enabled [one]<br>Disabled [two]<br>Multiple [two]<br>"_s);
        QCOMPARE(breakpointToolTip(*m_activity, path(u"main.c"_s), 6),
                 u"<b>Breakpoint status</b><br>Disabled [one]<br>"_s);
        QCOMPARE(breakpointToolTip(*m_activity, path(u"main.c"_s), 7), QString());
        m_workspace->setCurrentProject(1); // is listed first then
        QCOMPARE(breakpointToolTip(*m_activity, path(u"main.c"_s), 5),
                 u"<b>Breakpoint status</b><br>Disabled [two]<br>Multiple [two]<br>Enabled [one]<br>"_s);
    }

    void fileOfNoProjectCountsAsTheCurrentProjects()
    {
        addProcessor(u"one"_s, {{{{u"main.c"_s, 5}}, 1}});
        addProcessor(u"two"_s, {{{{u"main.c"_s, 5}}, 0}});
        QCOMPARE(breakpointToolTip(*m_activity, path(u"main.c"_s), 5),
                 u"<b>Breakpoint status</b><br>Removed [two]<br>"_s);
    }

    void aBreakpointIsListedOnce()
    {
        addProcessor(u"one"_s);
        addProcessor(u"two"_s, {{{{u"main.c"_s, 5}, {path(u"main.c"_s), 5}}, 1}});
        QCOMPARE(breakpointToolTip(*m_activity, path(u"main.c"_s), 5),
                 u"<b>Breakpoint status</b><br>Enabled [two]<br>"_s);
    }
};

QTEST_MAIN(DebugMarkersTest)
#include "tst_debugmarkers.moc"
