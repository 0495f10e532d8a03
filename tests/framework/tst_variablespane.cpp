#include "debugdocksfixture.h"
#include "variablelist.h"
#include "variablespane.h"
#include <QAction>
#include <QClipboard>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTest>

using namespace Qt::StringLiterals;

/// The window "Variables" with the stub's processors.
class VariablesPaneTest : public QObject, protected DebugDocksFixture
{
    Q_OBJECT

private:
    DockWindow *dock() const { return m_windows->dock(DebugWindows::Variables); }
    VariablesPane *pane() const { return dock()->findChild<VariablesPane *>(); }
    VariableList *list() const { return pane()->findChild<VariableList *>(); }
    QLabel *label(const QString &name) const { return pane()->findChild<QLabel *>(name); }
    QTreeWidgetItem *row(int index) const { return list()->topLevelItem(index); }
    StubScript &stub() { return scriptOf(u"one"_s); }
    void select(QTreeWidgetItem *item) const { list()->setCurrentItem(static_cast<ListViewItem *>(item)); }
    void press(int key) const { QTest::keyClick(list(), Qt::Key(key)); }
    /// Edits the value of the selected row.
    void enter(const QString &text) const
    {
        press(Qt::Key_F2);
        QLineEdit *edit = list()->renameEdit();
        QVERIFY(edit);
        edit->setText(text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    /// The names of the rows on screen whose value is bold.
    QString bold() const
    {
        QStringList names;
        for (QTreeWidgetItem *item = row(0); item; item = list()->itemBelow(item)) {
            if (item->font(1).bold())
                names.append(item->text(0));
        }
        return names.join(u' ');
    }
    /// Chooses an item of a submenu of the context menu.
    void chooseFormat(const QString &submenu, const QString &text) const
    {
        QTest::keyClick(list(), Qt::Key_F10, Qt::ShiftModifier);
        pane()->findChild<QMenu *>(u"variableMenu"_s)->hide();
        auto *menu = pane()->findChild<QMenu *>(submenu);
        Q_EMIT menu->aboutToShow();
        for (QAction *action : menu->actions()) {
            if (action->text() == text)
                return action->trigger();
        }
        qWarning("no such format");
    }

    static VariableInfo scalar(const QString &name, const QString &value, const QString &type = u"int"_s)
    {
        return {name, name, type, value, true, true, 0, 0};
    }
    static VariableInfo tree(const QString &name, const QString &type, int members)
    {
        return {name, name, type, u"{...}"_s, true, false, members, 0};
    }
    static VariableInfo member(const QString &name, const QString &expression, const QString &value)
    {
        return {name, expression, u"int"_s, value, true, true, 0, 0};
    }
    Project *addVariables()
    {
        Project *project = addProcessor(u"one"_s, {IVariables::Iid, ICallStack::Iid});
        stub().place = StackPlace{1, 0};
        stub().formats = IVariables::Hexadecimal | IVariables::Binary;
        stub().scopeVariables[IVariables::Locals] = {scalar(u"i"_s, u"3"_s), tree(u"origin"_s, u"struct Point"_s, 2),
                                                     tree(u"table"_s, u"int [900]"_s, 900)};
        stub().members[u"origin"_s] = {member(u"x"_s, u"origin.x"_s, u"1"_s), member(u"y"_s, u"origin.y"_s, u"2"_s)};
        for (int i = 0; i < 900; ++i)
            stub().members[u"table"_s].append(member(u"[%1]"_s.arg(i), u"table[%1]"_s.arg(i), QString::number(i * i)));
        Q_EMIT m_activity->projectsChanged();
        story();
        return project;
    }

private Q_SLOTS:
    void init()
    {
        setUp();
        dock()->show();
    }
    void cleanup() { tearDown(); }

    void variablesHaveValuesAndTypes()
    {
        addVariables();
        pause();
        QCOMPARE(pane()->objectName(), u"one/variablesView"_s);
        QCOMPARE(pane()->text(), u"i = 3\norigin = {...}\ntable = {...}\n"_s);
        QCOMPARE(row(1)->text(2), u"struct Point"_s);
        QCOMPARE(bold(), QString());
        QCOMPARE(list()->accessibleName(), u"Variables"_s);
        QVERIFY(m_window->findChild<QAction *>(u"debugToggleVariablesWindow"_s));
    }

    void withoutAnInterfaceALineSaysSo()
    {
        addProcessor(u"one"_s);
        Q_EMIT m_activity->projectsChanged();
        pause();
        QCOMPARE(pane()->note(), u"The debugger of this project does not offer variables."_s);
        QVERIFY(label(u"note"_s)->isVisible());
    }

    void functionWithoutVariablesSaysSo()
    {
        addVariables();
        stub().scopeVariables.clear();
        pause();
        QCOMPARE(pane()->note(), u"There are no variables."_s);
        stub().failure = u"No symbols."_s;
        pause();
        QCOMPARE(pane()->note(), u"No symbols."_s);
    }

    void hiddenDockAsksNothing()
    {
        addVariables();
        dock()->hide();
        pause();
        QVERIFY(!story().contains(u"requestScope"_s));
        dock()->show();
        QTRY_COMPARE(list()->topLevelItemCount(), 3);
    }

    void membersAreReadWhenARowIsOpened()
    {
        addVariables();
        pause();
        QVERIFY(!story().contains(u"requestChildren"_s));
        select(row(1));
        press(Qt::Key_Right);
        QCOMPARE(pane()->text(), u"i = 3\norigin = {...}\n  x = 1\n  y = 2\ntable = {...}\n"_s);
        pause(); // it stays open
        QCOMPARE(story().count(u"requestChildren(origin, 0, 100, 0)"_s), 2);
        QVERIFY(row(1)->isExpanded());
        press(Qt::Key_Left);
        pause();
        QVERIFY(!story().contains(u"requestChildren"_s));
    }

    void largeArraysAreReadInPortions()
    {
        addVariables();
        pause();
        select(row(2));
        press(Qt::Key_Right);
        QCOMPARE(row(2)->childCount(), 101);
        QCOMPARE(row(2)->child(100)->text(0), u"… 800 more"_s);
        select(row(2)->child(100));
        press(Qt::Key_Return);
        QCOMPARE(row(2)->childCount(), 201);
        QCOMPARE(row(2)->child(150)->text(1), u"22500"_s);
        QCOMPARE(row(2)->child(200)->text(0), u"… 700 more"_s);
        const QPoint centre = list()->visualItemRect(row(2)->child(200)).center();
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, centre);
        QCOMPARE(row(2)->childCount(), 301);
        story();
        pause(); // reads as many as are shown
        QVERIFY(story().contains(u"requestChildren(table, 0, 300, 0)"_s));
        QCOMPARE(row(2)->childCount(), 301);
    }

    void manyVariablesAreReadInPortions()
    {
        addVariables();
        QList<VariableInfo> many;
        for (int i = 0; i < 150; ++i)
            many.append(scalar(u"v%1"_s.arg(i), u"0"_s));
        stub().scopeVariables[IVariables::Locals] = many;
        pause();
        QCOMPARE(list()->topLevelItemCount(), 101);
        select(row(100));
        press(Qt::Key_Return);
        QTRY_COMPARE(list()->topLevelItemCount(), 150);
    }

    void changedValuesAreBold()
    {
        addVariables();
        pause();
        row(1)->setExpanded(true);
        stub().scopeVariables[IVariables::Locals][0].value = u"4"_s;
        stub().members[u"origin"_s][1].value = u"5"_s;
        pause();
        QCOMPARE(bold(), u"i y"_s);
        m_windows->updateData(); // the program has not run
        QCOMPARE(bold(), u"i y"_s);
        pause();
        QCOMPARE(bold(), QString());
    }

    void valuesAreComparedWithTheLastStopAfterALongRun()
    {
        addVariables();
        pause();
        row(1)->setExpanded(true);
        m_activity->setState(StateRunning);
        QTRY_COMPARE(list()->topLevelItemCount(), 0);
        stub().scopeVariables[IVariables::Locals][0].value = u"4"_s;
        stub().members[u"origin"_s][1].value = u"5"_s;
        stub().scopeVariables[IVariables::Locals].append(scalar(u"more"_s, u"1"_s));
        pause();
        QTRY_COMPARE(bold(), u"i y"_s);
        m_activity->setState(StateRunning);
        QTRY_COMPARE(list()->topLevelItemCount(), 0);
        stub().place = StackPlace{1, 1}; // another function
        stub().scopeVariables[IVariables::Locals][0].value = u"5"_s;
        pause();
        QTRY_COMPARE(list()->topLevelItemCount(), 4);
        QCOMPARE(bold(), QString());
    }

    void rowsFollowTheVariablesInScope()
    {
        addVariables();
        pause();
        row(1)->setExpanded(true);
        QList<VariableInfo> &locals = stub().scopeVariables[IVariables::Locals];
        const QList<VariableInfo> before = locals;
        locals.prepend(scalar(u"inner"_s, u"9"_s));
        pause();
        QCOMPARE(pane()->text(), u"inner = 9\ni = 3\norigin = {...}\n  x = 1\n  y = 2\ntable = {...}\n"_s);
        QCOMPARE(bold(), QString());
        locals = {scalar(u"other"_s, u"1"_s)};
        pause();
        QCOMPARE(pane()->text(), u"other = 1\n"_s);
        locals = before;
        pause(); // it was open in this function
        QCOMPARE(pane()->text(), u"i = 3\norigin = {...}\n  x = 1\n  y = 2\ntable = {...}\n"_s);
    }

    void pointerThatIsNullForAWhileIsOpenedAgain()
    {
        addVariables();
        pause();
        row(1)->setExpanded(true);
        VariableInfo &origin = stub().scopeVariables[IVariables::Locals][1];
        origin.children = 0;
        pause();
        QCOMPARE(row(1)->childCount(), 0);
        origin.children = -1;
        pause();
        QCOMPARE(row(1)->childCount(), 2);
    }

    void editedValueIsAssignedAndAllWindowsAreRefreshed()
    {
        addVariables();
        m_windows->dock(DebugWindows::CallStack)->show();
        pause();
        select(row(0));
        story();
        enter(u"2 * 21"_s);
        const QString calls = story();
        QVERIFY(calls.contains(u"one.assign(i, 2 * 21, 0)"_s));
        QVERIFY(calls.contains(u"requestThreads"_s));
        QCOMPARE(row(0)->text(1), u"2 * 21"_s);
        QTRY_COMPARE(bold(), u"i"_s);
        enter(u"2 * 21"_s); // the same
        QVERIFY(!story().contains(u"assign"_s));
    }

    void membersAreEditedByADoubleClick()
    {
        addVariables();
        pause();
        row(1)->setExpanded(true);
        const QRect cell = list()->visualItemRect(row(1)->child(0));
        const QPoint value(list()->header()->sectionPosition(1) + 5, cell.center().y());
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {}, value);
        QTest::mouseDClick(list()->viewport(), Qt::LeftButton, {}, value);
        QVERIFY(list()->renameEdit());
        list()->renameEdit()->setText(u"8"_s);
        QTest::keyClick(list()->renameEdit(), Qt::Key_Return);
        QCOMPARE(stub().members.value(u"origin"_s).first().value, u"8"_s);
        QCOMPARE(row(1)->child(0)->text(1), u"8"_s);
    }

    void refusedValueIsPutBackAndTheReasonIsShown()
    {
        addVariables();
        pause();
        select(row(0));
        stub().on[u"assign"_s] = [this] { stub().failure = u"No symbol \"nonsense\"."_s; };
        stub().on[u"requestScope"_s] = [this] { stub().failure.clear(); };
        enter(u"nonsense"_s);
        QTRY_COMPARE(row(0)->text(1), u"3"_s);
        QVERIFY(label(u"message"_s)->isVisible());
        QCOMPARE(label(u"message"_s)->text(), u"The value cannot be changed: No symbol \"nonsense\"."_s);
        pause();
        QVERIFY(!label(u"message"_s)->isVisible());
    }

    void structuresCannotBeEdited()
    {
        addVariables();
        pause();
        select(row(1));
        press(Qt::Key_F2);
        QVERIFY(!list()->renameEdit());
    }

    void valueIsNotReplacedWhileTheUserTypes()
    {
        addVariables();
        pause();
        select(row(0));
        press(Qt::Key_F2);
        list()->renameEdit()->setText(u"12"_s);
        m_windows->updateData();
        QVERIFY(list()->renameEdit());
        QCOMPARE(list()->renameEdit()->text(), u"12"_s);
    }

    void formatOfAllIsRequested()
    {
        addVariables();
        pause();
        row(1)->setExpanded(true);
        select(row(0));
        story();
        stub().on[u"requestValue"_s] = [this] { stub().scopeVariables[IVariables::Locals][0].value = u"0x3"_s; };
        chooseFormat(u"formatOfAll"_s, u"Hexadecimal"_s);
        const QString calls = story();
        QVERIFY(calls.contains(u"requestValue(i, 4)"_s));
        QVERIFY(calls.contains(u"requestChildren(origin, 0, 100, 4)"_s));
        QTRY_COMPARE(row(0)->text(1), u"0x3"_s);
        QCOMPARE(bold(), QString()); // another form of the same value
        chooseFormat(u"formatOfAll"_s, u"Natural"_s);
        QVERIFY(!story().contains(u"requestValue"_s));
    }

    void formatOfARowHoldsForItsMembersAndSurvivesAStep()
    {
        addVariables();
        pause();
        row(1)->setExpanded(true);
        select(row(1));
        story();
        chooseFormat(u"formatOfRow"_s, u"Binary"_s);
        QVERIFY(story().contains(u"requestChildren(origin, 0, 100, 8)"_s));
        pause();
        const QString calls = story();
        QVERIFY(calls.contains(u"requestChildren(origin, 0, 100, 8)"_s));
        QVERIFY(!calls.contains(u"requestValue"_s));
        auto *menu = pane()->findChild<QMenu *>(u"formatOfRow"_s);
        Q_EMIT menu->aboutToShow();
        QStringList items;
        for (const QAction *action : menu->actions())
            items.append((action->isChecked() ? u"*"_s : QString()) + action->text());
        QCOMPARE(items, (QStringList{u"Natural"_s, u"Hexadecimal"_s, u"*Binary"_s}));
    }

    void otherScopesAreOffered()
    {
        addVariables();
        QVERIFY(!pane()->findChild<QWidget *>(u"variableScope"_s)->isVisible());
        stub().scopes = 1 << IVariables::Locals | 1 << IVariables::Globals;
        stub().scopeVariables[IVariables::Globals] = {scalar(u"ticks"_s, u"77"_s)};
        Q_EMIT m_activity->projectsChanged();
        pause();
        auto *scope = pane()->findChild<QWidget *>(u"variableScope"_s);
        QVERIFY(scope->isVisible());
        QTest::keyClick(scope, Qt::Key_End);
        QCOMPARE(pane()->text(), u"ticks = 77\n"_s);
    }

    void anotherFunctionHasOtherVariables()
    {
        addVariables();
        pause();
        stub().place = StackPlace{1, 1};
        stub().scopeVariables[IVariables::Locals][0].value = u"100"_s;
        m_control->showPlace(m_activity->currentEnvironment().get());
        QCOMPARE(row(0)->text(1), u"100"_s);
        QCOMPARE(bold(), QString());
    }

    void lateAnswersOfAnEarlierStopAreIgnored()
    {
        addVariables();
        stub().answersLater = true;
        pause();
        const auto early = std::exchange(stub().answers, {});
        stub().scopeVariables[IVariables::Locals] = {scalar(u"now"_s, u"1"_s)};
        pause();
        stub().answerAll();
        for (const auto &answer : early)
            answer();
        QCOMPARE(pane()->text(), u"now = 1\n"_s);
        m_activity->setState(StateRunning);
        QTRY_COMPARE(pane()->note(), u"The program is not paused."_s);
    }

    void valueKeepsItsWidth()
    {
        addVariables();
        stub().scopeVariables[IVariables::Locals][0].name = QString(300, u'n');
        pause();
        QHeaderView *header = list()->header();
        header->resizeSection(0, 5000);
        header->resizeSection(2, 5000);
        QVERIFY(header->sectionSize(1) >= list()->viewport()->width() * 29 / 100);
        QVERIFY(header->sectionPosition(1) < list()->viewport()->width() / 2);
        m_mainWindow->resize(400, 300);
        QVERIFY(header->sectionSize(1) >= list()->viewport()->width() * 29 / 100);
    }

    void hugeValuesAreCutOff()
    {
        addVariables();
        stub().scopeVariables[IVariables::Locals][0].value = QString(1000000, u'x');
        pause();
        QCOMPARE(row(0)->text(1).size(), 10001);
        QVERIFY(row(0)->text(1).endsWith(u'…'));
    }

    void unavailableValuesAreItalic()
    {
        addVariables();
        VariableInfo &info = stub().scopeVariables[IVariables::Locals][0];
        info.available = info.writable = false;
        info.value = u"<optimized out>"_s;
        pause();
        QVERIFY(row(0)->font(1).italic());
        select(row(0));
        press(Qt::Key_F2);
        QVERIFY(!list()->renameEdit());
    }

    void environmentMayThrowOrCloseTheWorkspace()
    {
        addVariables();
        stub().on[u"requestScope"_s] = throwError;
        expectException("IVariables::requestScope");
        pause();
        stub().on.clear();
        pause();
        stub().on[u"requestChildren"_s] = [this] { closeWorkspace(); };
        select(row(1));
        press(Qt::Key_Right);
        QVERIFY(!m_activity->workspace());
        QTRY_COMPARE(pane()->note(), u"There is no program to be debugged."_s);
    }

    void valueIsCopied()
    {
        addVariables();
        pause();
        select(row(0));
        pane()->findChild<QMenu *>(u"variableMenu"_s)->actions().at(1)->trigger();
        QCOMPARE(QGuiApplication::clipboard()->text(), u"3"_s);
    }
};

QTEST_MAIN(VariablesPaneTest)
#include "tst_variablespane.moc"
