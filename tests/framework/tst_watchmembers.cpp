#include "../emptyenvironment.h"
#include "fakedebugenvironment.h"
#include "ivariables.h"
#include "projecttreeitem.h"
#include "watchmembers.h"
#include "watchwindow.h"
#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
/// An environment with variables that it reads later or at once.
class TreeEnvironment : public EmptyEnvironment<IVariables>
{
public:
    ProgramStatus programStatus() override { return ProgramPaused; }
    int evaluate(const QString &expression, QString &result) override
    {
        result = values.value(expression, u"{...}"_s);
        return 0;
    }

    int formats() override { return Hexadecimal; }
    int scopes() override { return 0; }
    void requestScope(const DebugRequest &, const StackPlace &, int, int, int, int, IDebugReplies *) override {}
    void requestChildren(const DebugRequest &request, const StackPlace &, const QString &expression, int first,
                         int count, int format, IDebugReplies *replies) override
    {
        log.append(u"%1[%2+%3]%4"_s.arg(expression)
                       .arg(first)
                       .arg(count)
                       .arg(format ? u" format %1"_s.arg(format) : QString()));
        const QList<VariableInfo> all = members.value(expression);
        later(replies, [request, portion = all.mid(first, count), more = first + count < all.size()](
                           IDebugReplies *to) { to->variables(request, portion, more); });
    }
    void requestValue(const DebugRequest &request, const StackPlace &, const QString &expression, int,
                      IDebugReplies *replies) override
    {
        asked += expression;
        if (onValue)
            onValue();
        VariableInfo info;
        info.expression = expression;
        info.children = int(members.value(expression).size());
        const bool known = members.contains(expression);
        later(replies, [request, info, known](IDebugReplies *to) {
            if (known)
                to->value(request, info);
            else
                to->failed(request, u"unknown"_s);
        });
    }
    void assign(const DebugRequest &request, const StackPlace &, const QString &expression, const QString &value, int,
                IDebugReplies *replies) override
    {
        log.append(expression + u":="_s + value);
        for (QList<VariableInfo> &list : members) {
            for (VariableInfo &each : list) {
                if (each.expression == expression && value != "bad"_L1)
                    each.value = value;
            }
        }
        later(replies, [request, bad = value == "bad"_L1](IDebugReplies *to) {
            if (bad)
                to->failed(request, u"bad"_s);
            else
                to->value(request, {});
        });
    }

    static VariableInfo member(const QString &name, const QString &expression, const QString &value, int children = 0)
    {
        VariableInfo info;
        info.name = name;
        info.expression = expression;
        info.value = value;
        info.type = u"int"_s;
        info.children = children;
        info.writable = children == 0;
        return info;
    }
    void answer()
    {
        while (!waiting.isEmpty()) {
            const auto next = waiting.takeFirst();
            next.second(next.first.get());
        }
    }

    QHash<QString, QString> values; ///< of watches
    QHash<QString, QList<VariableInfo>> members;
    QStringList asked; ///< whether they have members
    bool atOnce = false;
    std::function<void()> onValue;
    QStringList log;

private:
    using Answer = std::function<void(IDebugReplies *)>;
    void later(IDebugReplies *replies, const Answer &give)
    {
        if (atOnce)
            return give(replies);
        waiting.append({std::shared_ptr<IDebugReplies>(shareInterface(replies)), give});
    }

public:
    QList<std::pair<std::shared_ptr<IDebugReplies>, Answer>> waiting;
};
} // namespace

/// Structures and arrays as trees in the watch window.
class WatchMembersTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<WatchWindow> m_window;
    InterfacePtr<TreeEnvironment> m_plugin;

    ListView *list() const { return m_window->findChild<ListView *>(); }
    ListViewItem *watch(int index = 0) const { return static_cast<ListViewItem *>(list()->topLevelItem(index)); }
    static ListViewItem *child(ListViewItem *row, int index) { return static_cast<ListViewItem *>(row->child(index)); }
    void refresh() const
    {
        m_window->update();
        m_plugin->answer();
    }
    void open(ListViewItem *row) const
    {
        row->setOpen(true);
        m_plugin->answer();
    }
    void click(const ListViewItem *row, int column) const
    {
        list()->scrollToItem(row);
        const QRect cell = list()->visualItemRect(row);
        QTest::mouseClick(list()->viewport(), Qt::LeftButton, {},
                          QPoint(std::max(cell.left(), list()->columnViewportPosition(column)) + 5, cell.center().y()));
    }
    void enter(const ListViewItem *row, const QString &text) const
    {
        click(row, 1);
        QLineEdit *edit = list()->renameEdit();
        QVERIFY(edit);
        edit->selectAll();
        QTest::keyClicks(edit, text);
        QTest::keyClick(edit, Qt::Key_Return);
    }
    /// The rows on screen without the placeholder.
    QString rows() const { return m_window->text().section(u'\n', 0, -3); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_plugin = InterfacePtr<TreeEnvironment>(new TreeEnvironment);
        m_plugin->members = {{u"point"_s,
                              {TreeEnvironment::member(u"x"_s, u"(point).x"_s, u"1"_s),
                               TreeEnvironment::member(u"next"_s, u"(point).next"_s, u"{...}"_s, 1)}},
                             {u"(point).next"_s, {TreeEnvironment::member(u"y"_s, u"(point).next.y"_s, u"2"_s)}},
                             {u"number"_s, {}}};
        m_window = std::make_unique<WatchWindow>();
        m_window->resize(400, 400);
        m_window->setEnvironment(m_plugin.get());
        m_window->setWatches({u"point"_s, u"number"_s});
        m_window->show();
        refresh();
    }
    void cleanup()
    {
        m_window.reset();
        m_plugin->waiting.clear();
        m_plugin->onValue = {};
        m_plugin.reset();
    }

    void onlyWatchesWithMembersCanBeOpened()
    {
        QVERIFY(list()->rootIsDecorated());
        QCOMPARE(watch(0)->childIndicatorPolicy(), QTreeWidgetItem::ShowIndicator);
        QCOMPARE(watch(1)->childIndicatorPolicy(), QTreeWidgetItem::DontShowIndicator);
        QCOMPARE(m_plugin->log, QStringList()); // members are read when they are shown
    }

    void environmentWithoutTreesHasPlainRows()
    {
        int alive = 0;
        const InterfacePtr<FakeDebugEnvironment> other(new FakeDebugEnvironment(&alive));
        m_window->setEnvironment(other.get());
        QVERIFY(!list()->rootIsDecorated());
        m_window->setEnvironment(nullptr);
    }

    void openedRowsShowTheirMembers()
    {
        open(watch());
        QCOMPARE(rows(), u"point = {...}\n  x = 1\n  next = {...}\nnumber = {...}"_s);
        QCOMPARE(child(watch(), 0)->toolTip(0), u"int"_s);
        open(child(watch(), 1));
        QCOMPARE(rows(), u"point = {...}\n  x = 1\n  next = {...}\n    y = 2\nnumber = {...}"_s);
        QCOMPARE(m_plugin->log, (QStringList{u"point[0+100]"_s, u"(point).next[0+100]"_s}));
    }

    void keysOpenAndClose()
    {
        list()->setCurrentItem(watch());
        QTest::keyClick(list(), Qt::Key_Plus);
        m_plugin->answer();
        QVERIFY(watch()->isOpen());
        QCOMPARE(watch()->childCount(), 2);
        QTest::keyClick(list(), Qt::Key_Minus);
        QVERIFY(!watch()->isOpen());
    }

    void openRowsStayOpenAndMarkChanges()
    {
        open(watch());
        open(child(watch(), 1));
        m_plugin->members[u"(point).next"_s][0].value = u"3"_s;
        refresh();
        QCOMPARE(rows(), u"point = {...}\n  x = 1\n  next = {...}\n    y = 3\nnumber = {...}"_s);
        const auto isBold = [](ListViewItem *row) { return static_cast<ProjectTreeItem *>(row)->isBold(); };
        QVERIFY(isBold(child(child(watch(), 1), 0)));
        QVERIFY(!isBold(child(watch(), 0)));
        refresh();
        QVERIFY(!isBold(child(child(watch(), 1), 0)));
    }

    void closedRowsAreReadAgainWhenTheyOpen()
    {
        open(watch());
        watch()->setOpen(false);
        m_plugin->members[u"point"_s][0].value = u"9"_s;
        m_plugin->log.clear();
        refresh();
        QCOMPARE(m_plugin->log, QStringList());
        open(watch());
        QCOMPARE(child(watch(), 0)->text(1), u"9"_s);
    }

    void membersThatAreGoneLoseTheirRows()
    {
        open(watch());
        m_plugin->members[u"point"_s].removeFirst();
        refresh();
        QCOMPARE(rows(), u"point = {...}\n  next = {...}\nnumber = {...}"_s);
    }

    void variableOutOfScopeIsOpenedAgainWhenItIsBack()
    {
        open(watch());
        const auto members = m_plugin->members.take(u"point"_s);
        refresh();
        QCOMPARE(rows(), u"point = {...}\nnumber = {...}"_s);
        m_plugin->members.insert(u"point"_s, members);
        refresh();
        QCOMPARE(rows(), u"point = {...}\n  x = 1\n  next = {...}\nnumber = {...}"_s);
        watch()->setOpen(false);
        refresh();
        QVERIFY(!watch()->isOpen()); // as the user left it
    }

    void longArraysAreReadInPortions()
    {
        QList<VariableInfo> elements;
        for (int i = 0; i < 250; ++i)
            elements.append(TreeEnvironment::member(u"[%1]"_s.arg(i), u"point[%1]"_s.arg(i), QString::number(i)));
        m_plugin->members[u"point"_s] = elements;
        refresh();
        open(watch());
        QCOMPARE(watch()->childCount(), 101);
        QCOMPARE(child(watch(), 100)->text(0), u"Show more"_s);
        click(child(watch(), 100), 0);
        m_plugin->answer();
        QCOMPARE(watch()->childCount(), 201);
        list()->setCurrentItem(child(watch(), 200));
        QTest::keyClick(list(), Qt::Key_Return);
        m_plugin->answer();
        QCOMPARE(watch()->childCount(), 250);
        QCOMPARE(child(watch(), 249)->text(1), u"249"_s);
        QCOMPARE(m_plugin->log, (QStringList{u"point[0+100]"_s, u"point[100+100]"_s, u"point[200+100]"_s}));
        m_plugin->log.clear();
        refresh();
        QCOMPARE(m_plugin->log, QStringList{u"point[0+250]"_s});
        QCOMPARE(watch()->childCount(), 250);
    }

    void typedValueIsAssignedAndAllPanesAreRefreshed()
    {
        open(watch());
        const QSignalSpy updates(m_window.get(), &DebugPane::doUpdate);
        enter(child(watch(), 0), u"5"_s);
        m_plugin->answer();
        QCOMPARE(updates.size(), 1);
        m_plugin->answer();
        QVERIFY(m_plugin->log.contains(u"(point).x:=5"_s));
        QCOMPARE(child(watch(), 0)->text(1), u"5"_s);
        enter(child(watch(), 0), u"bad"_s);
        m_plugin->answer();
        m_plugin->answer();
        QCOMPARE(child(watch(), 0)->text(1), u"5"_s); // as it is in the target
    }

    void refusedValueIsReportedAndTheOldOneIsNoChange()
    {
        open(watch());
        const QSignalSpy messages(m_window.get(), &DebugPane::message);
        enter(child(watch(), 0), u"bad"_s);
        m_plugin->answer();
        m_plugin->answer();
        QCOMPARE(messages, (QList<QVariantList>{{u"The value cannot be changed: bad"_s}}));
        QCOMPARE(child(watch(), 0)->text(1), u"1"_s);
        QCOMPARE(m_window->changed(), QString());
        m_plugin->members[u"point"_s][0].value = u"8"_s;
        refresh();
        QCOMPARE(m_window->changed().trimmed(), u"x"_s);
    }

    void structuresAndNamesOfMembersCannotBeEdited()
    {
        open(watch());
        click(child(watch(), 1), 1);
        QVERIFY(!list()->renameEdit());
        click(child(watch(), 0), 0);
        QVERIFY(!list()->renameEdit());
    }

    void rowIsNotReplacedWhileTheUserTypes()
    {
        open(watch());
        click(child(watch(), 0), 1);
        QTest::keyClicks(list()->renameEdit(), u"77"_s);
        m_plugin->members[u"point"_s][0].value = u"8"_s;
        refresh();
        QVERIFY(list()->renameEdit());
        QVERIFY(list()->renameEdit()->text().endsWith(u"77"_s));
        QTest::keyClick(list()->renameEdit(), Qt::Key_Escape);
    }

    void membersAreNoWatches()
    {
        open(watch());
        list()->setCurrentItem(child(watch(), 0));
        QTest::keyClick(list(), Qt::Key_Delete);
        QCOMPARE(watch()->childCount(), 2);
        QCOMPARE(m_window->watches(), (QStringList{u"point"_s, u"number"_s}));
    }

    void menuOfAMemberRemovesItsWatch()
    {
        open(watch());
        open(child(watch(), 1));
        m_window->contextMenuRequested(child(child(watch(), 1), 0), {}, 0);
        QWidget *menu = QApplication::activePopupWidget();
        QVERIFY(menu);
        QTest::keyClick(menu, Qt::Key_Down);
        QTest::keyClick(menu, Qt::Key_Return);
        QCOMPARE(m_window->watches(), QStringList(u"number"_s));
    }

    void numbersAreAskedForMembersOnce()
    {
        m_plugin->values.insert(u"number"_s, u"-12"_s);
        refresh();
        m_plugin->asked.clear();
        m_plugin->values.insert(u"number"_s, u"1.5e+10"_s);
        refresh();
        QCOMPARE(m_plugin->asked, QStringList(u"point"_s));
        m_plugin->asked.clear();
        m_plugin->values.insert(u"number"_s, u"{...}"_s); // another variable of that name, in another function
        m_plugin->members[u"number"_s] = {TreeEnvironment::member(u"x"_s, u"(number).x"_s, u"1"_s)};
        refresh();
        QCOMPARE(m_plugin->asked, (QStringList{u"point"_s, u"number"_s}));
        QCOMPARE(watch(1)->childIndicatorPolicy(), QTreeWidgetItem::ShowIndicator);
        m_plugin->asked.clear();
        m_plugin->values.insert(u"number"_s, u"7"_s); // a structure that is shown as a number
        refresh();
        refresh();
        QCOMPARE(m_plugin->asked, (QStringList{u"point"_s, u"number"_s, u"point"_s, u"number"_s}));
    }

    void addressesAreAskedForMembersEachTime()
    {
        m_plugin->values.insert(u"number"_s, u"0x20000000"_s);
        refresh();
        m_plugin->asked.clear();
        refresh();
        QCOMPARE(m_plugin->asked, (QStringList{u"point"_s, u"number"_s}));
    }

    void newAndRenamedWatchesGetTheirMembers()
    {
        m_plugin->members[u"other"_s] = {TreeEnvironment::member(u"z"_s, u"(other).z"_s, u"6"_s)};
        m_window->addItem(u"other"_s);
        m_plugin->answer();
        open(watch(2));
        QCOMPARE(child(watch(2), 0)->text(1), u"6"_s);
    }

    void formatLetterAppliesToMembers()
    {
        m_window->setWatches({u"point,x"_s});
        refresh();
        open(watch());
        QCOMPARE(m_plugin->log, QStringList{u"point[0+100] format %1"_s.arg(int(IVariables::Hexadecimal))});
        QCOMPARE(watchFormat(u"a, d"_s), int(IVariables::SignedDecimal));
        QCOMPARE(watchFormat(u"a,u"_s), int(IVariables::UnsignedDecimal));
        QCOMPARE(watchFormat(u"a,o"_s), int(IVariables::Octal));
        QCOMPARE(watchFormat(u"a,t"_s), int(IVariables::Binary));
        QCOMPARE(watchFormat(u"a,c"_s), int(IVariables::Character));
        QCOMPARE(watchFormat(u"a,s"_s), int(IVariables::Natural));
        QCOMPARE(watchFormat(u"x"_s), int(IVariables::Natural));
    }

    void oldAnswersAreIgnored()
    {
        open(watch());
        m_window->update();
        auto old = std::exchange(m_plugin->waiting, {});
        m_plugin->members[u"point"_s].clear();
        refresh();
        for (const auto &[replies, give] : old)
            give(replies.get());
        QCOMPARE(rows(), u"point = {...}\nnumber = {...}"_s);
    }

    void answersAfterTheWindowAreIgnored()
    {
        m_window->update();
        m_window.reset();
        m_plugin->answer();
    }

    void answersToRemovedRowsAreIgnored()
    {
        m_window->update();
        list()->setCurrentItem(watch());
        m_window->removeWatch();
        m_plugin->answer();
        QCOMPARE(rows(), u"number = {...}"_s);
    }

    void answersMayComeAtOnce()
    {
        m_plugin->atOnce = true;
        m_window->update();
        watch()->setOpen(true);
        child(watch(), 1)->setOpen(true);
        QCOMPARE(rows(), u"point = {...}\n  x = 1\n  next = {...}\n    y = 2\nnumber = {...}"_s);
        m_window->update();
        QCOMPARE(rows(), u"point = {...}\n  x = 1\n  next = {...}\n    y = 2\nnumber = {...}"_s);
    }

    void pluginMayThrowOrDeleteTheWindow()
    {
        m_plugin->onValue = [] { throw std::runtime_error("boom"); };
        for (int i = 0; i < 2; ++i)
            QTest::ignoreMessage(QtWarningMsg, "IVariables::requestValue: an exception has left the plug-in (boom)");
        m_window->update();
        m_plugin->onValue = [this] { m_window.reset(); };
        m_window->update();
        QVERIFY(!m_window);
    }

    void pluginMayAskForARefreshWhileItIsAsked()
    {
        m_plugin->atOnce = true;
        bool again = true;
        m_plugin->onValue = [this, &again] {
            if (std::exchange(again, false))
                m_window->update();
        };
        m_window->update();
        watch()->setOpen(true);
        QCOMPARE(watch()->childCount(), 2);
    }
};

QTEST_MAIN(WatchMembersTest)
#include "tst_watchmembers.moc"
