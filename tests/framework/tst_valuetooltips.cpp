#include "../workspace/editorfixture.h"
#include "stubfixture.h"
#include "valuetooltips.h"
#include <QHelpEvent>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

/// The values of expressions below the mouse pointer.
class ValueToolTipsTest : public QObject, private StubFixture
{
    Q_OBJECT

private:
    std::unique_ptr<EditorFixture> m_editor;
    std::unique_ptr<ValueToolTips> m_toolTips;

    StubScript &stub() { return m_stub->script(u"{one}"_s); }
    TextViewEdit *edit() const { return m_editor->edit(); }
    /// Points at a column of the first line.
    void pointAt(int column) const
    {
        QTextCursor cursor(edit()->document());
        cursor.setPosition(column);
        const QPoint place = edit()->cursorRect(cursor).center();
        QHelpEvent event(QEvent::ToolTip, place, edit()->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(edit()->viewport(), &event);
    }
    void moveCursorTo(int column) const
    {
        QTextCursor cursor(edit()->document());
        cursor.setPosition(column);
        edit()->setTextCursor(cursor);
    }
    static QString shown() { return QToolTip::isVisible() ? QToolTip::text() : QString(); }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_editor = std::make_unique<EditorFixture>(u"total = origin.x + 3;\n"_s);
        m_toolTips = std::make_unique<ValueToolTips>(*m_activity);
        StubScript &script = executionScript(u"one"_s, {IVariables::Iid});
        script.scopeVariables[IVariables::Locals] = {
            {u"total"_s, u"total"_s, u"int"_s, u"5"_s, true, true, 0, 0},
            {u"origin"_s, u"origin"_s, u"Point"_s, u"{...}"_s, true, false, 2, 0}};
        script.members[u"origin"_s] = {{u"x"_s, u"origin.x"_s, u"int"_s, u"<1>"_s, true, true, 0, 0},
                                       {u"y"_s, u"origin.y"_s, u"int"_s, u"2"_s, true, true, 0, 0}};
        Project *project = addProject(u"one"_s, {}, u"one"_s);
        project->setExecutionEnvironment(
            queryInterface<IExecutionEnvironment>(InterfacePtr<IPluginObject>(create(u"{one}"_s)).get()).get());
        m_activity->setState(StatePaused);
        m_stub->takeCalls();
    }
    void cleanup()
    {
        QToolTip::hideText();
        m_toolTips.reset();
        m_editor.reset();
        tearDown();
    }

    void valueIsShown()
    {
        pointAt(2);
        QTRY_COMPARE(shown(), u"<pre>total = 5</pre>"_s);
    }

    void membersOfAStructureAreListed()
    {
        pointAt(10);
        QTRY_COMPARE(shown(), u"<pre>origin = {...}\nx = &lt;1&gt;\ny = 2</pre>"_s);
    }

    void memberIsOneExpression()
    {
        pointAt(15);
        QTRY_COMPARE(shown(), u"<pre>origin.x = &lt;1&gt;</pre>"_s);
    }

    void valueAtTheCursorIsShownOnCommand()
    {
        edit()->window()->show();
        QApplication::setActiveWindow(edit()->window());
        edit()->setFocus();
        QVERIFY(edit()->hasFocus());
        moveCursorTo(2);
        m_toolTips->showAtCursor();
        QTRY_COMPARE(shown(), u"<pre>total = 5</pre>"_s);
        moveCursorTo(19); // a number
        m_toolTips->showAtCursor();
        QCOMPARE(shown(), u"<pre>There is no expression at the cursor.</pre>"_s);
        m_activity->setState(StateRunning);
        moveCursorTo(2);
        m_toolTips->showAtCursor();
        QCOMPARE(shown(), u"<pre>The value is not known.</pre>"_s);
    }

    void toolTipOfTheCurrentCellIsShownOnCommand()
    {
        QTreeWidget list;
        list.setColumnCount(2);
        auto *item = new QTreeWidgetItem(&list, {u"CR1"_s, u"0x0"_s});
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        item->setToolTip(0, u"Control register"_s);
        item->setToolTip(1, u"Its value"_s);
        list.show();
        QApplication::setActiveWindow(&list);
        list.setFocus();
        list.setCurrentItem(nullptr);
        m_toolTips->showAtCursor();
        QCOMPARE(shown(), QString());
        list.setCurrentItem(item, 1);
        m_toolTips->showAtCursor();
        QTRY_COMPARE(shown(), u"Its value"_s);
        list.setCurrentItem(item, 0);
        list.editItem(item, 0); // the focus is in the editor of the cell
        QVERIFY(qobject_cast<QLineEdit *>(QApplication::focusWidget()));
        m_toolTips->showAtCursor();
        QTRY_COMPARE(shown(), u"Control register"_s);
        QVERIFY(m_stub->takeCalls().filter(u"requestValue"_s).isEmpty());
    }

    void otherPlacesHaveNoToolTip()
    {
        pointAt(19); // a number
        pointAt(6);  // a blank
        QVERIFY(m_stub->takeCalls().filter(u"requestValue"_s).isEmpty());
        QCOMPARE(shown(), QString());
    }

    void runningProgramIsNotAsked()
    {
        m_activity->setState(StateRunning);
        m_stub->takeCalls();
        pointAt(2);
        QVERIFY(m_stub->takeCalls().filter(u"requestValue"_s).isEmpty());
    }

    void unknownNameHasNoToolTip()
    {
        stub().failure = u"No symbol."_s;
        pointAt(2);
        QCOMPARE(m_stub->takeCalls().filter(u"requestValue"_s).size(), 1);
        QCOMPARE(shown(), QString());
    }

    void selectionIsAnExpression()
    {
        QTextCursor cursor(edit()->document());
        cursor.setPosition(8);
        cursor.setPosition(20, QTextCursor::KeepAnchor);
        edit()->setTextCursor(cursor);
        pointAt(10);
        QVERIFY(m_stub->takeCalls().contains(u"one.requestValue(origin.x + 3, 0)"_s));
    }

    void lateAnswerIsIgnoredWhenThePointerHasMoved()
    {
        stub().answersLater = true;
        pointAt(2);
        QMouseEvent move(QEvent::MouseMove, QPointF(1, 1), QPointF(1, 1), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(edit()->viewport(), &move);
        stub().answerAll();
        QCOMPARE(shown(), QString());
    }

    void lateAnswerIsIgnoredAfterTheEditorIsGone()
    {
        stub().answersLater = true;
        pointAt(2);
        m_editor.reset();
        stub().answerAll();
        QCOMPARE(shown(), QString());
    }
};

QTEST_MAIN(ValueToolTipsTest)
#include "tst_valuetooltips.moc"
