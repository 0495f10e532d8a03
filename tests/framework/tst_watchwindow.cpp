#include "../workspace/editorfixture.h"
#include "fakedebugenvironment.h"
#include "popupmenu.h"
#include "projecttreeitem.h"
#include "watchlistview.h"
#include "watchwindow.h"
#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

class WatchWindowTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WatchWindow> m_window;
    WatchListView *m_list = nullptr;
    InterfacePtr<FakeDebugEnvironment> m_plugin;
    int m_alive = 0; ///< fake plug-ins

    ProjectTreeItem *row(int index) const { return static_cast<ProjectTreeItem *>(m_list->topLevelItem(index)); }
    int last() const { return m_list->topLevelItemCount() - 1; }

    /// The rows: "expression = value", "*" for a bold one, "/" for an italic one.
    QString rows() const
    {
        QStringList texts;
        for (int i = 0; i <= last(); ++i)
            texts += u"%1 = %2%3%4"_s.arg(row(i)->text(0), row(i)->text(1), row(i)->isBold() ? u"*"_s : QString(),
                                          row(i)->isItalic() ? u"/"_s : QString());
        return texts.join(u'\n');
    }
    static inline const QString Placeholder = u"Click to add new = /"_s;

    void click(int index, int column)
    {
        const QRect cell = m_list->visualItemRect(row(index));
        QTest::mouseClick(m_list->viewport(), Qt::LeftButton, {},
                          QPoint(m_list->columnViewportPosition(column) + 5, cell.center().y()));
    }
    /// Clicks a cell, types a text and presses Return.
    void enter(int index, int column, const QString &text)
    {
        click(index, column);
        QLineEdit *edit = m_list->renameEdit();
        QVERIFY(edit);
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    void drop(QMimeData *data)
    {
        const QPoint point(10, 100);
        QDragEnterEvent enterEvent(point, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, {});
        QApplication::sendEvent(m_list->viewport(), &enterEvent);
        if (!enterEvent.isAccepted())
            return;
        QDropEvent event(point, Qt::CopyAction | Qt::MoveAction, data, Qt::LeftButton, {});
        QApplication::sendEvent(m_list->viewport(), &event);
        QCOMPARE(event.dropAction(), Qt::CopyAction); // the text stays where it was
    }
    PopupMenu *rightClick(const QPoint &point)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, m_list->viewport()->mapToGlobal(point));
        QApplication::sendEvent(m_list->viewport(), &event);
        return qobject_cast<PopupMenu *>(QApplication::activePopupWidget());
    }

    static void expectException()
    {
        QTest::ignoreMessage(QtWarningMsg, "IExecutionEnvironment::evaluate: an exception has left the plug-in (boom)");
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_plugin.reset(new FakeDebugEnvironment(&m_alive));
        m_plugin->values = {{u"x"_s, u"1"_s}, {u"count"_s, u"7"_s}};
        m_window = std::make_unique<WatchWindow>();
        m_list = m_window->findChild<WatchListView *>(u"watchListView"_s);
        m_window->setEnvironment(m_plugin.get());
        m_window->resize(400, 300);
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        m_list->setFocus();
    }

    void cleanup()
    {
        m_window.reset();
        m_plugin.reset();
        QCOMPARE(m_alive, 0);
    }

    void listHasItsTitlesAndSettings()
    {
        QCOMPARE(m_list->headerItem()->text(0), u"Watch"_s);
        QCOMPARE(m_list->headerItem()->text(1), u"Value"_s);
        QVERIFY(m_list->header()->stretchLastSection());
        QVERIFY(!m_list->isSortingEnabled());
        QCOMPARE(m_list->itemMargin(), 2);
        QCOMPARE(m_list->defaultRenameAction(), ListView::Accept);
        QCOMPARE(m_list->accessibleName(), u"Watches"_s);
        QCOMPARE(rows(), Placeholder);
        QVERIFY(row(0)->isRenameEnabled(0) && !row(0)->isRenameEnabled(1));
    }

    void expressionsAreShownWholeInUpToHalfOfTheList()
    {
        const auto width = [this] { return m_list->header()->sectionSize(0); };
        const QString longer = u"regulator->proportional"_s;
        m_window->resize(600, 300);
        const int before = width();
        enter(0, 0, longer);
        QTRY_VERIFY(width() > before);
        QVERIFY(width() > QFontMetrics(m_list->font()).horizontalAdvance(longer));
        m_window->addItem(longer + longer + longer);
        QTRY_COMPARE(width(), m_list->viewport()->width() / 2);
        m_list->setCurrentItem(row(1));
        m_window->removeWatch();
        QTRY_VERIFY(width() < m_list->viewport()->width() / 2);
        m_list->header()->resizeSection(0, 50); // by the user
        m_window->addItem(longer);
        QCoreApplication::processEvents();
        QCOMPARE(width(), 50);
    }

    void typedExpressionIsEvaluatedAboveANewPlaceholder()
    {
        const QSignalSpy changed(m_window.get(), &WatchWindow::watchesChanged);
        enter(0, 0, u"x"_s);
        QCOMPARE(rows(), u"x = 1*\n"_s + Placeholder);
        QVERIFY(row(0)->isRenameEnabled(1));
        QCOMPARE(m_window->watches(), QStringList(u"x"_s));
        QCOMPARE(changed.size(), 1);
    }

    void refusedValueIsReportedAndNotMarked()
    {
        enter(0, 0, u"x"_s);
        m_window->update();
        QCOMPARE(rows(), u"x = 1\n"_s + Placeholder);
        const QSignalSpy messages(m_window.get(), &WatchWindow::message);
        m_plugin->refused = u"x=zzz"_s;
        enter(0, 1, u"zzz"_s);
        QCOMPARE(rows(), u"x = 1\n"_s + Placeholder);
        QCOMPARE(messages.size(), 1);
        QCOMPARE(messages.first().first().toString(), u"The value cannot be changed: no number"_s);
        enter(0, 1, u"5"_s);
        QCOMPARE(messages.size(), 1);
        m_plugin->values.insert(u"x"_s, u"6"_s);
        m_window->update();
        QCOMPARE(rows(), u"x = 6*\n"_s + Placeholder);
    }

    void clickOnThePlaceholderEmptiesIt()
    {
        click(0, 1);
        QVERIFY(m_list->renameEdit());
        QCOMPARE(m_list->renameEdit()->text(), QString());
        QCOMPARE(m_list->currentColumn(), 0);
    }

    void nothingTypedLeavesOnePlaceholder()
    {
        enter(0, 0, {});
        QCOMPARE(rows(), Placeholder);
        enter(0, 0, {});
        QCOMPARE(rows(), Placeholder);
        QCOMPARE(m_plugin->calls, QStringList());
    }

    void escapeLeavesThePlaceholder()
    {
        click(0, 0);
        QTest::keyClicks(m_list->renameEdit(), u"x"_s);
        QTest::keyClick(m_list->renameEdit(), Qt::Key_Escape);
        QCOMPARE(rows(), Placeholder);
    }

    void losingTheFocusAcceptsTheText()
    {
        click(0, 0);
        QTest::keyClicks(m_list->renameEdit(), u"x"_s);
        QLineEdit other(m_window.get());
        other.show();
        other.setFocus();
        QCOMPARE(rows(), u"x = 1*\n"_s + Placeholder);
    }

    void keysAddEditAndRemoveWatches()
    {
        m_list->setCurrentItem(row(0));
        QTest::keyClick(m_list, Qt::Key_F2);
        QCOMPARE(m_list->renameEdit()->text(), QString());
        QTest::keyClicks(m_list->renameEdit(), u"x"_s);
        QTest::keyClick(m_list->renameEdit(), Qt::Key_Return);
        QCOMPARE(m_list->currentItem(), row(0));
        QTest::keyClick(m_list, Qt::Key_Right);
        QTest::keyClick(m_list, Qt::Key_Return);
        QCOMPARE(m_list->renameEdit()->text(), u"1"_s);
        QTest::keyClicks(m_list->renameEdit(), u"5"_s);
        QTest::keyClick(m_list->renameEdit(), Qt::Key_Return);
        QCOMPARE(rows(), u"x = 5\n"_s + Placeholder);
        QTest::keyClick(m_list, Qt::Key_Delete);
        QCOMPARE(rows(), Placeholder);
        QTest::keyClick(m_list, Qt::Key_Delete);
        QCOMPARE(rows(), Placeholder);
    }

    void withoutEnvironmentValuesAreQuestionMarks()
    {
        m_window->setEnvironment(nullptr);
        enter(0, 0, u"x"_s);
        QCOMPARE(rows(), u"x = ????*\n"_s + Placeholder);
        enter(0, 1, u"5"_s);
        QCOMPARE(rows(), u"x = ????*\n"_s + Placeholder);
        m_window->update();
        QCOMPARE(rows(), u"x = ????\n"_s + Placeholder);
        QCOMPARE(m_plugin->calls, QStringList());
    }

    void changedValueIsBoldUntilTheNextUpdate()
    {
        m_window->setWatches({u"x"_s, u"count"_s});
        m_window->update();
        QCOMPARE(rows(), u"x = 1\ncount = 7\n"_s + Placeholder);
        m_plugin->values.insert(u"x"_s, u"2"_s);
        m_window->update();
        QCOMPARE(rows(), u"x = 2*\ncount = 7\n"_s + Placeholder);
        m_window->update();
        QCOMPARE(rows(), u"x = 2\ncount = 7\n"_s + Placeholder);
    }

    void failedEvaluationShowsTheTextOfTheEnvironment()
    {
        enter(0, 0, u"nothing"_s);
        QCOMPARE(rows(), u"nothing = no symbol*\n"_s + Placeholder);
    }

    void changedExpressionIsEvaluated()
    {
        enter(0, 0, u"x"_s);
        enter(0, 0, u"count"_s);
        QCOMPARE(rows(), u"count = 7*\n"_s + Placeholder);
    }

    void typedValueIsAssigned()
    {
        enter(0, 0, u"x"_s);
        const QSignalSpy written(m_window.get(), &DebugPane::doUpdate);
        m_plugin->calls.clear();
        enter(0, 1, u"5"_s);
        QCOMPARE(m_plugin->calls, (QStringList{u"x=5"_s, u"x"_s}));
        QCOMPARE(row(0)->text(1), u"5"_s);
        QCOMPARE(written.size(), 1);
    }

    void assignmentLeavesOutTheFormat_data()
    {
        QTest::addColumn<QString>("watch");
        QTest::addColumn<QString>("expression");
        QTest::newRow("no format") << u"x"_s << u"x"_s;
        QTest::newRow("format") << u"x,x"_s << u"x"_s;
        QTest::newRow("blanks") << u"a[1] , t "_s << u"a[1]"_s;
        QTest::newRow("last comma only") << u"f(a,b),c"_s << u"f(a,b)"_s;
        QTest::newRow("no letter of a format") << u"a,b"_s << u"a,b"_s;
        QTest::newRow("longer name") << u"a,xx"_s << u"a,xx"_s;
        QTest::newRow("inside brackets") << u"a[b,x]"_s << u"a[b,x]"_s;
    }

    void assignmentLeavesOutTheFormat()
    {
        QFETCH(QString, watch);
        QTEST(assignedExpression(watch), "expression");
    }

    void droppedTextBecomesAWatch()
    {
        QMimeData data;
        data.setText(u"count"_s);
        drop(&data);
        QCOMPARE(rows(), u"count = 7*\n"_s + Placeholder);
    }

    void droppedLinesBecomeOneExpression()
    {
        QMimeData data;
        data.setText(u"  a +\n\tb\n"_s);
        drop(&data);
        QCOMPARE(m_window->watches(), QStringList(u"a + b"_s));
        data.setText(u" \n "_s);
        drop(&data);
        QCOMPARE(m_window->watches(), QStringList(u"a + b"_s));
    }

    void blanksInALiteralAreDroppedAsTheyAre()
    {
        QMimeData data;
        data.setText(u" equal(name, \"a  b\") "_s);
        drop(&data);
        QCOMPARE(m_window->watches(), QStringList(u"equal(name, \"a  b\")"_s));
    }

    void selectionOfAnEditorCanBeDropped()
    {
        const QString text = u"if (count > 1)\n    count = 0;\n"_s;
        const EditorFixture editor(text);
        editor.putCursor(0, 4, 0, 9);
        editor.edit()->copy(); // the data that is dragged, too
        QMimeData data;
        for (const QString &format : QApplication::clipboard()->mimeData()->formats())
            data.setData(format, QApplication::clipboard()->mimeData()->data(format));
        drop(&data);
        QCOMPARE(rows(), u"count = 7*\n"_s + Placeholder);
        QCOMPARE(editor.text(), text);
    }

    void otherDataCannotBeDropped()
    {
        QMimeData data;
        data.setData(u"application/octet-stream"_s, "x");
        drop(&data);
        QCOMPARE(rows(), Placeholder);
    }

    void dropWhileTypingKeepsBoth()
    {
        click(0, 0);
        QTest::keyClicks(m_list->renameEdit(), u"x"_s);
        m_window->addItem(u"count"_s);
        QCOMPARE(m_window->watches(), (QStringList{u"x"_s, u"count"_s}));
    }

    void menuRemovesAWatch()
    {
        m_window->setWatches({u"x"_s, u"count"_s});
        PopupMenu *menu = rightClick(m_list->visualItemRect(row(0)).center());
        QVERIFY(menu);
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().constFirst()->text(), u"Remove Watch"_s);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(m_window->watches(), QStringList(u"count"_s));
    }

    void placeholderAndEmptySpaceHaveNoMenu()
    {
        QVERIFY(!rightClick(m_list->visualItemRect(row(0)).center()));
        QVERIFY(!rightClick(QPoint(10, m_list->viewport()->height() - 5)));
        m_list->setCurrentItem(row(0));
        m_window->removeWatch();
        QCOMPARE(rows(), Placeholder);
    }

    void flagTogglesEachTimeTheMenuIsShown()
    {
        m_window->setWatches({u"x"_s});
        QVERIFY(m_window->menuFlag());
        for (const bool expected : {false, true}) {
            PopupMenu *menu = rightClick(m_list->visualItemRect(row(0)).center());
            QVERIFY(menu);
            QCOMPARE(m_window->menuFlag(), expected);
            QCOMPARE(menu->actions().size(), 1);
            menu->close();
        }
    }

    void watchesOfAHiddenPaneAreEvaluatedWhenItAppears()
    {
        m_window->hide();
        m_window->setEnvironment(nullptr);
        m_window->setWatches({u"x"_s});
        QCOMPARE(row(0)->text(1), QString());
        m_window->show();
        QTRY_COMPARE(row(0)->text(1), u"????"_s);
    }

    void watchesGoWithTheirEnvironment()
    {
        enter(0, 0, u"x"_s);
        const QSignalSpy changed(m_window.get(), &WatchWindow::watchesChanged);
        m_window->setEnvironment(m_plugin.get());
        QCOMPARE(rows(), Placeholder);
        QCOMPARE(changed.size(), 0);
        m_plugin.reset();
        QCOMPARE(m_alive, 1);
        m_window->releaseEnvironment();
        QCOMPARE(m_alive, 0);
    }

    void environmentMayChangeWhileTheUserTypes()
    {
        enter(0, 0, u"x"_s);
        click(0, 1);
        QVERIFY(m_list->renameEdit());
        m_window->setEnvironment(nullptr);
        QCOMPARE(rows(), Placeholder);
    }

    void updateLeavesWhatIsBeingTyped()
    {
        enter(0, 0, u"x"_s);
        click(0, 1);
        QTest::keyClicks(m_list->renameEdit(), u"55"_s);
        m_plugin->values.insert(u"x"_s, u"2"_s);
        m_window->update();
        QCOMPARE(m_list->renameEdit()->text(), u"55"_s);
    }

    void valueOfSeveralLinesIsShownInOne()
    {
        m_plugin->values.insert(u"x"_s, u"{a = 1,\r\n b = 2}"_s);
        enter(0, 0, u"x"_s);
        QCOMPARE(row(0)->text(1), u"{a = 1,   b = 2}"_s);
        m_plugin->values.insert(u"x"_s, QString(1'000'000, u'x'));
        m_window->update();
        QCOMPARE(row(0)->text(1).size(), 10000);
        QCOMPARE(m_list->visualItemRect(row(0)).height(), m_list->visualItemRect(row(1)).height());
    }

    void exceptionShowsNoValue()
    {
        m_window->setWatches({u"x"_s});
        m_plugin->onEvaluate = [] { throw std::runtime_error("boom"); };
        expectException();
        m_window->update();
        QCOMPARE(row(0)->text(1), QString());
    }

    void pluginMayCallBackWhileItEvaluates_data()
    {
        QTest::addColumn<int>("call");
        QTest::newRow("update") << 0;
        QTest::newRow("release") << 1;
        QTest::newRow("other watches") << 2;
        QTest::newRow("delete the pane") << 3;
    }

    void pluginMayCallBackWhileItEvaluates()
    {
        QFETCH(int, call);
        m_window->setWatches({u"x"_s, u"count"_s});
        m_plugin->calls.clear();
        bool isCalled = false;
        m_plugin->onEvaluate = [this, call, &isCalled] {
            if (std::exchange(isCalled, true))
                return;
            if (call == 0)
                m_window->update();
            else if (call == 1)
                m_window->releaseEnvironment();
            else if (call == 2)
                m_window->setWatches({u"count"_s});
            else
                m_window.reset();
        };
        m_window->update();
        const QStringList calls[] = {{u"x"_s, u"count"_s}, {u"x"_s}, {u"x"_s}, {u"x"_s}};
        QCOMPARE(m_plugin->calls, calls[call]);
        if (m_window)
            QCOMPARE(m_window->watches().size(), call == 0 ? 2 : call == 1 ? 0 : 1);
    }

    void textShowsTheRows()
    {
        m_window->setWatches({u"x"_s});
        QCOMPARE(m_window->text(), u"x = 1\nClick to add new = \n"_s);
    }
};

QTEST_MAIN(WatchWindowTest)
#include "tst_watchwindow.moc"
