#include "dynamicmenus.h"
#include <QTest>

using namespace Qt::StringLiterals;
using namespace DynamicMenus;

namespace {
QString itemText(const QAction *action)
{
    if (action->isSeparator())
        return u"-"_s;
    QString text = action->text();
    if (action->isCheckable())
        text.prepend(action->isChecked() ? u"[x] "_s : u"[ ] "_s);
    return action->isEnabled() ? text : u'(' + text + u')';
}

/// The menu as text: one item per line, check marks in brackets, disabled items in parentheses, "-" for a separator.
QString contents(const PopupMenu &menu)
{
    QStringList lines;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions)
        lines.append(itemText(action));
    return lines.join(u'\n');
}

QString ids(const PopupMenu &menu)
{
    QStringList result;
    for (int i = 0; i < menu.actions().size(); ++i)
        result.append(QString::number(menu.idAt(i)));
    return result.join(u' ');
}
} // namespace

class DynamicMenusTest : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<QObject> m_window;
    std::unique_ptr<PopupMenu> m_menu;
    QList<int> m_activated;

    Activated record()
    {
        return [this](int id) { m_activated.append(id); };
    }

    /// Adds the items of the UI file: actions of the window by their texts, and separators.
    void declare(const QStringList &texts)
    {
        for (const QString &text : texts)
            m_menu->addAction(new QAction(text, m_window.get()));
        const QList<QAction *> actions = m_menu->actions();
        for (QAction *action : actions) {
            if (action->text() == u"-"_s) {
                action->setText({});
                action->setSeparator(true);
            }
        }
    }

    void chooseLast() { m_menu->actions().constLast()->trigger(); }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u".?"_s));
        m_window = std::make_unique<QObject>();
        m_menu = std::make_unique<PopupMenu>();
        m_activated.clear();
    }

    void numbersCountFromOne()
    {
        QCOMPARE(numberedText(0, u"/a/b.c"_s), u"&1 /a/b.c"_s);
        QCOMPARE(numberedText(11, u"100%1"_s), u"&12 100%1"_s);
        QCOMPARE(numberedText(0, u"/a&b/c.c"_s), u"&1 /a&&b/c.c"_s);
        QCOMPARE(commandText(u"&Flash"_s, u"a&b"_s, 2), u"&Flash (a&&b)"_s);
    }

    void commandShowsItsProjectIfThereAreSeveral()
    {
        QCOMPARE(commandText(u"Reset"_s, u"core0"_s, 1), u"Reset"_s);
        QCOMPARE(commandText(u"Reset"_s, u"core0"_s, 2), u"Reset (core0)"_s);
        QCOMPARE(commandText(u"%1"_s, u"%2"_s, 2), u"%1 (%2)"_s);
    }

    void recentListReplacesAllItemsOfTheMenu()
    {
        declare({u"stale"_s, u"-"_s});
        fillRecentList(m_menu.get(), {u"/a/b.c"_s, u"/a/c.c"_s}, true, record());
        QCOMPARE(contents(*m_menu), u"&1 /a/b.c\n&2 /a/c.c"_s);
        QCOMPARE(ids(*m_menu), u"0 1"_s);
        chooseLast();
        QCOMPARE(m_activated, QList<int>{1});
    }

    void recentListCanBeDisabled()
    {
        fillRecentList(m_menu.get(), {u"/a.vnw"_s}, false, record());
        QCOMPARE(contents(*m_menu), u"(&1 /a.vnw)"_s);
        fillRecentList(m_menu.get(), {u"/a.vnw"_s}, true, record());
        QCOMPARE(contents(*m_menu), u"&1 /a.vnw"_s);
    }

    void anEmptyRecentListEmptiesTheMenu()
    {
        declare({u"stale"_s});
        fillRecentList(m_menu.get(), {}, true, record());
        QVERIFY(m_menu->isEmpty());
    }

    void windowsFollowASeparator()
    {
        declare({u"Close"_s});
        fillWindowMenu(m_menu.get(), {{.text = u"a.c"_s, .checked = false}, {.text = u"b.c"_s, .checked = true}},
                       record());
        QCOMPARE(contents(*m_menu), u"Close\n-\n[ ] &1 a.c\n[x] &2 b.c"_s);
        QCOMPARE(ids(*m_menu), u"-1 -1 0 1"_s);
        fillWindowMenu(m_menu.get(), {{.text = u"b.c"_s, .checked = true}}, record());
        QCOMPARE(contents(*m_menu), u"Close\n-\n[x] &1 b.c"_s);
        fillWindowMenu(m_menu.get(), {}, record());
        QCOMPARE(contents(*m_menu), u"Close"_s);
    }

    void choosingAWindowPassesItsIndex()
    {
        fillWindowMenu(m_menu.get(), {{.text = u"a.c"_s}, {.text = u"b.c"_s}, {.text = u"c.c"_s}}, record());
        chooseLast();
        QCOMPARE(m_activated, QList<int>{2});
    }

    void toolsAreAtTheTopBeforeASeparator()
    {
        declare({u"Options..."_s});
        fillToolsMenu(m_menu.get(), {u"Terminal"_s, u"Flash"_s}, record());
        QCOMPARE(contents(*m_menu), u"&1 Terminal\n&2 Flash\n-\nOptions..."_s);
        QCOMPARE(ids(*m_menu), u"0 1 -1 -1"_s);
        m_menu->actions()[1]->trigger();
        QCOMPARE(m_activated, QList<int>{1});
    }

    void withoutToolsThereIsNoSeparatorAtTheTop()
    {
        declare({u"Options..."_s});
        fillToolsMenu(m_menu.get(), {u"Terminal"_s}, record());
        fillToolsMenu(m_menu.get(), {}, record());
        QCOMPARE(contents(*m_menu), u"Options..."_s);
    }

    void theFilesOwnSeparatorsStayIfNoItemWasRemoved_data()
    {
        QTest::addColumn<QString>("menu");
        QTest::newRow("at the end") << u"windows"_s;
        QTest::newRow("at the top") << u"tools"_s;
    }

    void theFilesOwnSeparatorsStayIfNoItemWasRemoved()
    {
        QFETCH(QString, menu);
        declare({u"-"_s, u"Options..."_s, u"-"_s});
        for (int i = 0; i < 3; ++i)
            menu == u"tools"_s ? fillToolsMenu(m_menu.get(), {}, record()) : fillAtEnd(m_menu.get(), {}, record());
        QCOMPARE(contents(*m_menu), u"-\nOptions...\n-"_s);
    }

    void rebuildRemovesOneItemBesidesTheDynamicOnes()
    {
        declare({u"Options..."_s, u"-"_s});
        fillAtEnd(m_menu.get(), {{.text = u"a"_s}}, record());
        QCOMPARE(contents(*m_menu), u"Options...\n-\n-\na"_s);
        fillAtEnd(m_menu.get(), {}, record());
        QCOMPARE(contents(*m_menu), u"Options...\n-"_s);
    }

    void rebuildingTwiceChangesNothing()
    {
        declare({u"Build"_s});
        for (int i = 0; i < 3; ++i)
            fillAtEnd(m_menu.get(), {{.text = u"Upload"_s}}, record());
        QCOMPARE(contents(*m_menu), u"Build\n-\nUpload"_s);
        fillAtEnd(m_menu.get(), {}, record());
        for (int i = 0; i < 3; ++i)
            fillToolsMenu(m_menu.get(), {u"Flash"_s}, record());
        QCOMPARE(contents(*m_menu), u"&1 Flash\n-\nBuild"_s);
    }

    void commandsShowTheirFlags()
    {
        const QList<MenuEntry> entries{{.text = u"Plain"_s, .whatsThis = u"Plainly."_s},
                                       {.text = u"Off"_s, .checked = false},
                                       {.text = u"On"_s, .checked = true, .enabled = false}};
        fillAtEnd(m_menu.get(), entries, record());
        QCOMPARE(contents(*m_menu), u"-\nPlain\n[ ] Off\n([x] On)"_s);
        QCOMPARE(m_menu->item(0)->whatsThis(), u"Plainly."_s);
        QVERIFY(m_menu->item(1)->whatsThis().isEmpty());
    }

    void groupsFollowSeparatorsAndContinueTheNumbers()
    {
        declare({u"Run"_s});
        fillGroupsAtEnd(m_menu.get(), {{{.text = u"a"_s}, {.text = u"b"_s}}, {}, {{.text = u"c"_s}}}, record());
        QCOMPARE(contents(*m_menu), u"Run\n-\na\nb\n-\nc"_s);
        QCOMPARE(ids(*m_menu), u"-1 -1 0 1 -1 2"_s);
        chooseLast();
        QCOMPARE(m_activated, QList<int>{2});
    }

    void noTrailingSeparatorIsLeftBehindGroups()
    {
        declare({u"-"_s, u"Run"_s, u"-"_s, u"-"_s});
        fillGroupsAtEnd(m_menu.get(), {}, record());
        QCOMPARE(contents(*m_menu), u"-\nRun"_s);
        fillGroupsAtEnd(m_menu.get(), {{{.text = u"a"_s}}}, record());
        fillGroupsAtEnd(m_menu.get(), {{}, {}}, record());
        QCOMPARE(contents(*m_menu), u"-\nRun"_s);
    }

    void separatorsBetweenGroupsAreNotRepeated()
    {
        declare({u"Run"_s, u"-"_s});
        for (int i = 0; i < 3; ++i)
            fillGroupsAtEnd(m_menu.get(), {{{.text = u"a"_s}}, {{.text = u"b"_s}}}, record());
        QCOMPARE(contents(*m_menu), u"Run\n-\na\n-\nb"_s);
    }

    void aMenuOfSeparatorsOnlyIsEmptiedByGroups()
    {
        declare({u"-"_s, u"-"_s});
        fillGroupsAtEnd(m_menu.get(), {}, record());
        QVERIFY(m_menu->isEmpty());
    }

    void plainItemsHaveNoSeparator()
    {
        declare({u"Edit..."_s});
        for (int i = 0; i < 2; ++i) {
            fillPlain(m_menu.get(), {{.text = u"Default"_s, .checked = true}, {.text = u"Tests"_s, .checked = false}},
                      record());
            QCOMPARE(contents(*m_menu), u"Edit...\n[x] Default\n[ ] Tests"_s);
        }
        QCOMPARE(ids(*m_menu), u"-1 0 1"_s);
        chooseLast();
        QCOMPARE(m_activated, QList<int>{1});
        fillPlain(m_menu.get(), {}, record());
        QCOMPARE(contents(*m_menu), u"Edit..."_s);
    }

    void menuThatTheFileLacksIsIgnored()
    {
        fillRecentList(nullptr, {u"a"_s}, true, record());
        fillWindowMenu(nullptr, {{.text = u"a"_s}}, record());
        fillToolsMenu(nullptr, {u"a"_s}, record());
        fillAtEnd(nullptr, {{.text = u"a"_s}}, record());
        fillGroupsAtEnd(nullptr, {{{.text = u"a"_s}}}, record());
        fillPlain(nullptr, {{.text = u"a"_s}}, record());
    }
};

QTEST_MAIN(DynamicMenusTest)
#include "tst_dynamicmenus.moc"
