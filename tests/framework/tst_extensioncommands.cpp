#include "extensioncommands.h"
#include "stubfixture.h"
#include <QTest>

using namespace Qt::StringLiterals;

/// The commands that plug-ins add to the menus, and their execution.
class ExtensionCommandsTest : public QObject, protected StubFixture
{
    Q_OBJECT

private:
    template <typename Environment>
    InterfacePtr<Environment> object(const QString &label)
    {
        const InterfacePtr<IPluginObject> object(create(u'{' + label + u'}'));
        return queryInterface<Environment>(object.get());
    }

    /// Commands with these names; "-" before one disables it, "+" ticks it.
    static QList<ExtensionCommand> commandsOf(const QString &names)
    {
        QList<ExtensionCommand> commands;
        for (QString name : names.split(u' ', Qt::SkipEmptyParts)) {
            const bool enabled = !name.startsWith(u'-');
            const bool checked = name.startsWith(u'+');
            name.remove(u'-').remove(u'+');
            commands.append({.id = name,
                             .text = name.toUpper(),
                             .whatsThis = u"does "_s + name,
                             .enabled = enabled,
                             .checked = checked});
        }
        return commands;
    }

    Project *addBuildProject(const QString &commands)
    {
        buildScript(u"b"_s, {IExtensionCommands::Iid}).commands = commandsOf(commands);
        Project *project = addProject(u"fw"_s, {}, {});
        project->setBuildEnvironment(object<IBuildEnvironment>(u"b"_s).get());
        return project;
    }

    /// A project "p0", "p1" and so on for each entry; "none" offers no commands.
    void addDebugProjects(const QString &commands)
    {
        for (const QString &each : commands.split(u';')) {
            const QString name = u"p%1"_s.arg(m_workspace->count());
            const QSet<QUuid> more = each == u"none"_s ? QSet<QUuid>{} : QSet<QUuid>{IExtensionCommands::Iid};
            executionScript(name, more).commands = commandsOf(each);
            addProject(name, {}, {})->setExecutionEnvironment(object<IExecutionEnvironment>(name).get());
        }
    }

    QStringList executed()
    {
        QStringList calls = m_stub->takeCalls();
        calls.removeIf([](const QString &call) { return call.endsWith(u".commands()"_s); });
        return calls.replaceInStrings(u".execute"_s, QString());
    }

    static QString textOf(const QList<MenuEntry> &entries)
    {
        QStringList texts;
        for (const MenuEntry &entry : entries) {
            const QString text =
                (entry.checked.value_or(false) ? u"[x] "_s : u"[ ] "_s) + entry.text + u": "_s + entry.whatsThis;
            texts.append(entry.enabled ? text : u'(' + text + u')');
        }
        return texts.join(u", "_s);
    }

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void buildMenuShowsTheCommandsWithTheirFlags()
    {
        QCOMPARE(textOf(buildExtensionEntries(addBuildProject(u"a -b +c"_s))),
                 u"[ ] A: does a, ([ ] B: does b), [x] C: does c"_s);
    }

    void withoutEnvironmentOrInterfaceThereAreNoBuildEntries()
    {
        QCOMPARE(buildExtensionEntries(nullptr).size(), 0);
        Project *project = addProject(u"fw"_s, {}, {});
        QCOMPARE(buildExtensionEntries(project).size(), 0);
        buildScript(u"b"_s).commands = commandsOf(u"a"_s);
        project->setBuildEnvironment(object<IBuildEnvironment>(u"b"_s).get());
        QCOMPARE(buildExtensionEntries(project).size(), 0);
    }

    void buildCommandIsExecutedIfEnabled_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("first") << 0 << QStringList{u"b(a)"_s};
        QTest::newRow("disabled") << 1 << QStringList{};
        QTest::newRow("last") << 2 << QStringList{u"b(c)"_s};
        QTest::newRow("there were more when the menu opened") << 3 << QStringList{};
        QTest::newRow("negative") << -1 << QStringList{};
    }

    void buildCommandIsExecutedIfEnabled()
    {
        QFETCH(int, index);
        QFETCH(QStringList, calls);
        executeBuildExtension(addBuildProject(u"a -b c"_s), index);
        QCOMPARE(executed(), calls);
    }

    void buildCommandWithoutTheInterfaceFailsAnAssertion()
    {
        expectAssert(u"commandsIFace"_s);
        executeBuildExtension(addProject(u"fw"_s, {}, {}), 0);
        expectAssert(u"commandsIFace"_s);
        executeBuildExtension(nullptr, 0);
    }

    void theDebugMenuHasAGroupForEachProjectThatOffersCommands()
    {
        addDebugProjects(u"a;none;;b +c"_s);
        QStringList groups;
        for (const QList<MenuEntry> &group : debugExtensionEntries(*m_activity))
            groups += textOf(group);
        QCOMPARE(groups, (QStringList{u"[ ] A (p0): does a"_s, {}, u"[ ] B (p3): does b, [x] C (p3): does c"_s}));
        dropWorkspace();
        QCOMPARE(debugExtensionEntries(*m_activity).size(), 0);
    }

    void offeredCommandsAreThoseOfTheCurrentProjectFirst()
    {
        addDebugProjects(u"a;b a/c"_s);
        m_workspace->setCurrentProject(1);
        QStringList offered;
        for (const OfferedCommand &command : offeredCommands(*m_activity))
            offered.append(command.name + u' ' + command.text);
        QCOMPARE(offered, (QStringList{u"plugin_b B"_s, u"plugin_a_c A/C"_s, u"plugin_a A"_s}));
        dropWorkspace();
        QVERIFY(offeredCommands(*m_activity).isEmpty());
    }

    void offeredCommandIsExecutedWhereItIsEnabled_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("in the current project") << u"plugin_a"_s << QStringList{u"p0(a)"_s};
        QTest::newRow("only the other one is enabled") << u"plugin_b"_s << QStringList{u"p1(b)"_s};
        QTest::newRow("disabled in both") << u"plugin_c"_s << QStringList{};
        QTest::newRow("unknown") << u"plugin_d"_s << QStringList{};
    }

    void offeredCommandIsExecutedWhereItIsEnabled()
    {
        QFETCH(const QString, name);
        addDebugProjects(u"a -b -c;a b -c"_s);
        m_workspace->setCurrentProject(0);
        executeOffered(*m_activity, name);
        QStringList calls = executed();
        calls.removeAll(u"p0.canAttach()"_s); // of the change of the current project
        QTEST(calls, "calls");
    }

    void withOneProjectItsNameIsLeftOut()
    {
        addDebugProjects(u"a"_s);
        QCOMPARE(textOf(debugExtensionEntries(*m_activity).first()), u"[ ] A: does a"_s);
    }

    void aDebugCommandRunsInTheFirstProjectThatHasItAndInLaterOnes_data()
    {
        QTest::addColumn<QString>("commands");
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("first") << u"a b;c"_s << 1 << QStringList{u"p0(b)"_s};
        QTest::newRow("second") << u"a b;c d"_s << 3 << QStringList{u"p1(d)"_s};
        QTest::newRow("also in a later one") << u"a b;c d"_s << 1 << QStringList{u"p0(b)"_s, u"p1(d)"_s};
        QTest::newRow("a short list counts down even after the hit")
            << u"a b;c;d e"_s << 1 << QStringList{u"p0(b)"_s, u"p2(d)"_s};
        QTest::newRow("empty and absent lists") << u";none;a"_s << 0 << QStringList{u"p2(a)"_s};
        QTest::newRow("disabled here, enabled there") << u"-a;b"_s << 0 << QStringList{u"p1(b)"_s};
        QTest::newRow("beyond all") << u"a;b"_s << 2 << QStringList{};
        QTest::newRow("negative") << u"a;b"_s << -1 << QStringList{};
    }

    void aDebugCommandRunsInTheFirstProjectThatHasItAndInLaterOnes()
    {
        QFETCH(QString, commands);
        QFETCH(int, index);
        QFETCH(QStringList, calls);
        addDebugProjects(commands);
        executeDebugExtension(*m_activity, index);
        QCOMPARE(executed(), calls);
    }

    void aCommandMayCloseTheWorkspace()
    {
        addDebugProjects(u"a;b"_s);
        m_stub->script(u"{p0}"_s).on[u"execute"_s] = [&] { dropWorkspace(); };
        executeDebugExtension(*m_activity, 0);
        QCOMPARE(executed(), QStringList{u"p0(a)"_s});
        QCOMPARE(m_stub->objectCount(), 0);
        executeDebugExtension(*m_activity, 0);
    }

    void exceptionsOfThePluginAreReported()
    {
        Project *project = addBuildProject(u"a"_s);
        addDebugProjects(u"a"_s);
        for (const QString &feature : {u"{b}"_s, u"{p1}"_s})
            m_stub->script(feature).on[u"execute"_s] = throwError;
        expectException("IExtensionCommands::execute");
        executeBuildExtension(project, 0);
        expectException("IExtensionCommands::execute");
        executeDebugExtension(*m_activity, 0);
        for (const QString &feature : {u"{b}"_s, u"{p1}"_s})
            m_stub->script(feature).on[u"commands"_s] = throwError;
        expectException("IExtensionCommands::commands");
        QCOMPARE(buildExtensionEntries(project).size(), 0);
        expectException("IExtensionCommands::commands");
        QCOMPARE(textOf(debugExtensionEntries(*m_activity).first()), QString());
    }
};

QTEST_MAIN(ExtensionCommandsTest)
#include "tst_extensioncommands.moc"
