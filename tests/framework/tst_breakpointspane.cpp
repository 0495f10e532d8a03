#include "breakpointsdock.h"
#include "breakpointspane.h"
#include "debugdocksfixture.h"
#include "listview.h"
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

/// The window "Breakpoints" with the stub's processors.
class BreakpointsPaneTest : public QObject, protected DebugDocksFixture
{
    Q_OBJECT

private:
    std::unique_ptr<BreakpointsDock> m_dock;

    DockWindow *dock() const { return m_dock->dock(); }
    BreakpointsPane *pane() const { return dock()->findChild<BreakpointsPane *>(); }
    ListView *list() const { return pane()->findChild<ListView *>(); }
    QString label(const QString &name) const
    {
        const auto *found = pane()->findChild<QLabel *>(name);
        return found->isVisible() ? found->text() : QString();
    }
    StubScript &stub() { return scriptOf(u"one"_s); }
    void select(int row, int column = 0) const { list()->setCurrentItem(list()->topLevelItem(row), column); }
    void press(int key) const { QTest::keyClick(list(), Qt::Key(key)); }
    void enter(int row, int column, const QString &text) const
    {
        select(row, column);
        press(Qt::Key_F2);
        QVERIFY(list()->renameEdit());
        list()->renameEdit()->setText(text);
        QTest::keyClick(list()->renameEdit(), Qt::Key_Return);
    }
    /// The changes that were requested.
    QString changes()
    {
        QStringList lines = story().split(u'\n');
        lines = lines.filter(u".set"_s);
        return lines.join(u'\n');
    }

    Project *addBreakpoints(const QSet<QUuid> &offers = {IBreakpoints::Iid, IBreakpointDetails::Iid})
    {
        Project *project = addProcessor(u"one"_s, offers);
        stub().detailFeatures = IBreakpointDetails::Condition | IBreakpointDetails::HitCount
                                | IBreakpointDetails::LogText | IBreakpointDetails::DataWrite
                                | IBreakpointDetails::DataRead;
        stub().breakpoints = {{{{path(u"main.c"_s), 7}}, BreakpointEnabled},
                              {{{path(u"uart.c"_s), 12}}, BreakpointDisabled}};
        BreakpointDetails details;
        details.condition = u"i > 3"_s;
        details.hits = 2;
        stub().details.insert(path(u"main.c:7"_s), details);
        Q_EMIT m_activity->projectsChanged();
        story();
        return project;
    }
    QTimer *refreshTimer() const { return pane()->findChild<QTimer *>(QString(), Qt::FindDirectChildrenOnly); }
    QString first() const { return u"[x] main.c, 7|i > 3|||2| - one\n"_s; }
    QString second() const { return u"[ ] uart.c, 12||||0| - one\n"_s; }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_dock = std::make_unique<BreakpointsDock>(*m_activity, static_cast<WindowServices &>(*this), *m_control);
        m_mainWindow->resize(1000, 700);
        dock()->show();
    }
    void cleanup()
    {
        dropWorkspace();
        m_dock.reset();
        tearDown();
    }

    void menuItemShowsAndHidesTheDock()
    {
        auto *action = m_window->findChild<QAction *>(u"debugToggleBreakpointsWindow"_s);
        QVERIFY(action && action->isChecked());
        action->trigger();
        QVERIFY(dock()->isHidden());
    }

    void breakpointsOfAllProjectsAreListed()
    {
        addBreakpoints();
        addProcessor(u"two"_s, {IBreakpoints::Iid});
        scriptOf(u"two"_s).breakpoints = {{{{u"disassembler:"_s, 0x101}}, BreakpointEnabled}};
        Q_EMIT m_activity->projectsChanged();
        QTRY_COMPARE(pane()->text(), first() + second() + u"[x] 0x00000100||||| - two\n"_s);
        QCOMPARE(label(u"limits"_s), u"The debugger of this project does not offer conditions and data breakpoints."_s);
        QCOMPARE(list()->accessibleName(), u"Breakpoints"_s);
    }

    void listFollowsReports()
    {
        addBreakpoints();
        QTRY_COMPARE(pane()->text(), first() + second());
        stub().breakpoints.removeLast();
        m_control->breakpointsChanged();
        QTRY_COMPARE(pane()->text(), first());
        dropWorkspace();
        QCOMPARE(pane()->text(), QString());
    }

    void hiddenListAsksNothing()
    {
        addBreakpoints();
        QTRY_COMPARE(pane()->text(), first() + second());
        dock()->hide();
        stub().breakpoints.removeLast();
        m_control->breakpointsChanged();
        QVERIFY(!refreshTimer()->isActive());
        QCOMPARE(list()->topLevelItemCount(), 2);
        dock()->show();
        QTRY_COMPARE(list()->topLevelItemCount(), 1);
    }

    void spaceAndTheCheckBoxEnableAndDisable()
    {
        addBreakpoints();
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        select(0, 3);
        press(Qt::Key_Space);
        QCOMPARE(changes(), u"one.setBreakpoint(main.c, 7, 2)"_s);
        const QRect cell = list()->visualItemRect(list()->topLevelItem(1));
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, QPoint(10, cell.center().y()));
        QCOMPARE(changes(), u"one.setBreakpoint(uart.c, 12, 1)"_s);
    }

    void deleteRemovesABreakpoint()
    {
        addBreakpoints();
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        select(1);
        press(Qt::Key_Delete);
        QCOMPARE(changes(), u"one.setBreakpoint(uart.c, 12, 0)"_s);
    }

    void refusedChangeIsReportedAndTheListIsReadAgain()
    {
        addBreakpoints();
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        stub().setBreakpointResult = 1;
        select(0);
        press(Qt::Key_Space);
        QCOMPARE(label(u"message"_s), u"The breakpoint could not be modified."_s);
        QTRY_COMPARE(pane()->text(), first() + second());
    }

    void runningProgramRefusesChanges()
    {
        addBreakpoints();
        m_activity->setState(StateRunning);
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        select(0);
        press(Qt::Key_Delete);
        press(Qt::Key_Space);
        enter(0, 1, u"x"_s);
        QCOMPARE(changes(), QString());
        QCOMPARE(label(u"message"_s), u"Breakpoints cannot be modified while the processor is running."_s);
        QTRY_COMPARE(pane()->text(), first() + second());
    }

    void detailsAreEditedInTheirCells()
    {
        addBreakpoints();
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        enter(0, 1, u" i > 5 "_s);
        QCOMPARE(changes(), u"one.setDetails(main.c, 7, i > 5, 0, )"_s);
        QTRY_COMPARE(pane()->text(), u"[x] main.c, 7|i > 5|||2| - one\n"_s + second());
        enter(0, 2, u"10"_s);
        QCOMPARE(changes(), u"one.setDetails(main.c, 7, i > 5, 10, )"_s);
        QTRY_VERIFY(pane()->text().startsWith(u"[x] main.c, 7|i > 5|10|"_s));
        enter(0, 3, u"i is {i}"_s);
        QCOMPARE(changes(), u"one.setDetails(main.c, 7, i > 5, 10, i is {i})"_s);
        QTRY_VERIFY(pane()->text().startsWith(u"[x] main.c, 7|i > 5|10|i is {i}|"_s));
        enter(0, 2, u"many"_s);
        QCOMPARE(changes(), QString());
        QCOMPARE(label(u"message"_s), u"'many' is not a number of hits."_s);
        QTRY_VERIFY(pane()->text().startsWith(u"[x] main.c, 7|i > 5|10|"_s));
        select(0, 4);
        press(Qt::Key_F2); // the hits
        QVERIFY(!list()->renameEdit());
    }

    void refusedConditionIsReported()
    {
        addBreakpoints();
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        stub().refusal = u"No symbol \"k\" in current context."_s;
        enter(0, 1, u"k == 1"_s);
        QCOMPARE(label(u"message"_s), u"The breakpoint could not be modified: No symbol \"k\" in current context."_s);
        QTRY_COMPARE(pane()->text(), first() + second());
    }

    void refusedBreakpointIsShownAsNotSet()
    {
        addBreakpoints();
        MarkedView *view = open(u"main.c"_s);
        BreakpointDetails details;
        details.set = false;
        details.problem = u"The target has no room."_s;
        stub().details.insert(path(u"main.c:7"_s), details);
        m_control->breakpointsChanged();
        QTRY_VERIFY(pane()->text().startsWith(u"[x] main.c, 7 (not set)|"_s));
        QVERIFY(list()->topLevelItem(0)->font(0).italic());
        QCOMPARE(list()->topLevelItem(0)->toolTip(0), u"The target has no room."_s);
        QVERIFY(view->hasMarker(7, IViewWithMarkers::DisabledBreakpointMarker));
        QVERIFY(!view->hasMarker(7, IViewWithMarkers::EnabledBreakpointMarker));
        QVERIFY(m_control->breakpointToolTip(path(u"main.c"_s), 7).contains(u"The target has no room."_s));
    }

    void conditionIsInTheToolTipOfTheMargin()
    {
        addBreakpoints();
        QVERIFY(m_control->breakpointToolTip(path(u"main.c"_s), 7).contains(u"i &gt; 3"_s));
        QCOMPARE(m_control->breakpointToolTip(path(u"uart.c"_s), 12), QString()); // a plain one of the only project
    }

    void dataBreakpointsAreAddedAndChanged()
    {
        addBreakpoints();
        stub().limits.data = 4;
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        auto *expression = pane()->findChild<QLineEdit *>(u"dataExpression"_s);
        QVERIFY(expression->isVisible());
        QTest::keyClicks(expression, u"counter"_s);
        pane()->findChild<QComboBox *>(u"dataAccess"_s)->setCurrentIndex(2);
        QTest::mouseClick(pane()->findChild<QPushButton *>(u"dataAdd"_s), Qt::LeftButton);
        QCOMPARE(changes(), u"one.setDataBreakpoint(0, counter, 3, 1)"_s);
        QCOMPARE(expression->text(), QString());
        QTRY_COMPARE(pane()->text(), first() + second() + u"[x] counter is read or written||||0| - one\n"_s);
        QCOMPARE(label(u"limits"_s), u"Data breakpoints: 0 of 4 used."_s);
        select(2);
        press(Qt::Key_Space);
        QCOMPARE(changes(), u"one.setDataBreakpoint(1, counter, 3, 2)"_s);
        QTRY_VERIFY(pane()->text().contains(u"[ ] counter"_s));
        enter(2, 1, u"counter > 9"_s);
        QTRY_VERIFY(pane()->text().contains(u"|counter > 9|"_s));
        select(2, 3);
        press(Qt::Key_F2); // it has no text
        QVERIFY(!list()->renameEdit());
        story();
        press(Qt::Key_Delete);
        QCOMPARE(changes(), u"one.setDataBreakpoint(1, counter, 3, 0)"_s);
        QTRY_COMPARE(pane()->text(), first() + second());
    }

    void refusedDataBreakpointIsReported()
    {
        addBreakpoints();
        stub().refusal = u"The target cannot watch these data."_s;
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        auto *expression = pane()->findChild<QLineEdit *>(u"dataExpression"_s);
        QTest::keyClicks(expression, u"counter\r"_s);
        QCOMPARE(label(u"message"_s), u"The breakpoint could not be set: The target cannot watch these data."_s);
        QCOMPARE(expression->text(), u"counter"_s);
    }

    void dataRowIsHiddenWhereItIsNotOffered()
    {
        addBreakpoints({IBreakpoints::Iid});
        QTRY_COMPARE(pane()->text(), u"[x] main.c, 7||||| - one\n[ ] uart.c, 12||||| - one\n"_s);
        QVERIFY(!pane()->findChild<QWidget *>(u"dataRow"_s)->isVisible());
        select(0, 1);
        press(Qt::Key_F2);
        QVERIFY(!list()->renameEdit());
    }

    void returnShowsTheLine()
    {
        addBreakpoints();
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        select(0);
        press(Qt::Key_Return);
        QCOMPARE(front(), u"main.c"_s);
    }

    void listIsNotReplacedWhileTheUserTypes()
    {
        addBreakpoints();
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        select(0, 1);
        press(Qt::Key_F2);
        list()->renameEdit()->setText(u"new"_s);
        QSignalSpy due(refreshTimer(), &QTimer::timeout);
        m_control->breakpointsChanged();
        QTRY_VERIFY(due.size() > 1);
        QVERIFY(list()->renameEdit());
        QCOMPARE(list()->renameEdit()->text(), u"new"_s);
    }

    void environmentMayThrowOrCloseTheWorkspace()
    {
        addBreakpoints();
        QTRY_COMPARE(list()->topLevelItemCount(), 2);
        stub().on[u"setDetails"_s] = throwError;
        expectException("IBreakpointDetails::setDetails");
        enter(0, 1, u"x"_s);
        QTRY_COMPARE(pane()->text(), first() + second());
        stub().on[u"setBreakpoint"_s] = [this] { closeWorkspace(); };
        select(0);
        press(Qt::Key_Delete);
        QTRY_COMPARE(pane()->text(), QString());
    }
};

QTEST_MAIN(BreakpointsPaneTest)
#include "tst_breakpointspane.moc"
