#include "../project/modeltext.h"
#include "activity.h"
#include "fakeservices.h"
#include "popupmenu.h"
#include "project.h"
#include "tabbedviewmanager.h"
#include "toolscommands.h"
#include <csignal>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

class ToolsCommandsTest : public QObject, public FakeServices
{
    Q_OBJECT

private:
    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<ToolsCommands> m_commands;
    std::unique_ptr<PopupMenu> m_menu;
    std::unique_ptr<ViewManager> m_views;
    Activity m_activity;
    QString m_output;

    ViewManager *viewManager() const override { return m_views.get(); }
    QSettings &settings() const override { return *m_settings; }

    /// A menu with two fixed items, like those of the UI file.
    void open()
    {
        m_commands = std::make_unique<ToolsCommands>(m_activity, *this);
        connect(m_commands.get(), &ToolsCommands::output, this, [this](const QString &text) { m_output += text; });
        m_menu = std::make_unique<PopupMenu>();
        m_menu->addAction(u"Customise"_s);
        m_menu->addAction(u"Options"_s);
    }

    void add(const QString &name, const QString &command, const QString &arguments = {})
    {
        m_commands->tools().add(name, command, arguments, {});
    }

    /// The items of the menu, those that are disabled in brackets.
    QStringList items()
    {
        m_commands->updateMenu(m_menu.get());
        QStringList texts;
        for (const QAction *action : m_menu->actions()) {
            const QString text = action->isSeparator() ? u"-"_s : action->text();
            texts << (action->isEnabled() ? text : u'[' + text + u']');
        }
        return texts;
    }
    void choose(const QString &text)
    {
        for (QAction *action : m_menu->actions()) {
            if (action->text() == text)
                return action->trigger();
        }
        QFAIL("no such item");
    }

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s));
        m_directory = std::make_unique<QTemporaryDir>();
        m_settings = std::make_unique<QSettings>(m_directory->filePath(u"s.ini"_s), QSettings::IniFormat);
        m_views = std::make_unique<TabbedViewManager>();
        m_output.clear();
    }
    void cleanup()
    {
        m_menu.reset();
        m_commands.reset();
        if (m_activity.workspace())
            m_activity.closeWorkspace();
        m_views.reset();
    }

    void toolsAreLoadedFromTheSettings()
    {
        m_settings->setValue(u"Tools/tool0name"_s, u"Count"_s);
        m_settings->setValue(u"Tools/tool1name"_s, u"Sort"_s);
        open();
        QCOMPARE(items(), (QStringList{u"&1 Count"_s, u"&2 Sort"_s, u"-"_s, u"Customise"_s, u"Options"_s}));
        QCOMPARE(items().size(), 5); // filled again
    }

    void withoutToolsThereIsNoSeparatorAtTheTop()
    {
        open();
        QCOMPARE(items(), (QStringList{u"Customise"_s, u"Options"_s}));
        add(u"A"_s, {});
        QCOMPARE(items().size(), 4);
        m_commands->updateMenu(nullptr); // a UI file without this menu
        m_commands->tools().setEntries({});
        QCOMPARE(items(), (QStringList{u"Customise"_s, u"Options"_s}));
    }

    void anItemRunsItsTool()
    {
        open();
        add(u"A"_s, u"/no/a"_s);
        add(u"B"_s, u"/no/b"_s, u"$(ProjectName)$(FileName)"_s);
        items();
        auto workspace = std::make_unique<ProjectWorkspace>(m_directory->filePath(u"all.vnw"_s));
        workspace->addProject(new Project(u"main"_s, m_directory->path()));
        m_activity.openWorkspace(std::move(workspace));
        choose(u"&2 B"_s);
        QCOMPARE(m_output, u"Running '/no/b main'...\nCould not start process\n"_s);
    }

    void aNumberWithoutAToolDoesNothing()
    {
        open();
        add(u"A"_s, u"/no/a"_s);
        m_commands->execute(-1);
        m_commands->execute(1);
        QCOMPARE(m_output, QString());
    }

    void aRunningToolIsDisabledAndCanBeStopped()
    {
        open();
        add(u"A&B"_s, u"/bin/sleep"_s, u"30"_s);
        add(u"C"_s, u"/bin/true"_s);
        items();
        choose(u"&1 A&&B"_s);
        QCOMPARE(items(),
                 (QStringList{u"[&1 A&&B]"_s, u"&2 C"_s, u"Stop A&&B"_s, u"-"_s, u"Customise"_s, u"Options"_s}));
        const QString output = m_output;
        m_commands->execute(0);
        QCOMPARE(m_output, output); // refused silently
        choose(u"Stop A&&B"_s);
        QTRY_VERIFY(m_output.endsWith(u"exited prematurely\n"_s));
        QCOMPARE(items(), (QStringList{u"&1 A&&B"_s, u"&2 C"_s, u"-"_s, u"Customise"_s, u"Options"_s}));
    }

    void aRunningToolThatWasRemovedCanBeStopped()
    {
        open();
        add(u"A"_s, u"/bin/sleep"_s, u"30"_s);
        m_commands->execute(0);
        m_commands->tools().setEntries({});
        QCOMPARE(items(), (QStringList{u"Stop A"_s, u"-"_s, u"Customise"_s, u"Options"_s}));
        choose(u"Stop A"_s);
        QTRY_VERIFY(m_output.endsWith(u"exited prematurely\n"_s));
        QCOMPARE(items(), (QStringList{u"Customise"_s, u"Options"_s}));
    }

    void aStopForAToolThatHasEndedMeanwhileDoesNothing()
    {
        open();
        add(u"A"_s, u"/bin/sleep"_s, u"30"_s);
        m_commands->execute(0);
        items();
        m_commands->tools().stop(1);
        QTRY_VERIFY(m_output.endsWith(u"exited prematurely\n"_s));
        choose(u"Stop A"_s);
        QCOMPARE(m_output.count(u'\n'), 2);
    }

    void theMacros_data()
    {
        QTest::addColumn<bool>("hasProject");
        QTest::addColumn<QString>("document");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("nothing open") << false << QString()
                                      << QStringList{u"FileDir="_s,  u"FileExt="_s,    u"FileName="_s,
                                                     u"FilePath="_s, u"ProjectDir="_s, u"ProjectName="_s};
        QTest::newRow("project") << true << QString()
                                 << QStringList{u"FileDir="_s,  u"FileExt="_s,         u"FileName="_s,
                                                u"FilePath="_s, u"ProjectDir=/fw x"_s, u"ProjectName=board.v2"_s};
        QTest::newRow("document") << false << u"/src/main.c"_s
                                  << QStringList{u"FileDir=/src"_s,         u"FileExt=c"_s,   u"FileName=main"_s,
                                                 u"FilePath=/src/main.c"_s, u"ProjectDir="_s, u"ProjectName="_s};
        QTest::newRow("several dots") << false << u"/a.tar.gz"_s
                                      << QStringList{u"FileDir=/"_s,          u"FileExt=tar.gz"_s, u"FileName=a.tar"_s,
                                                     u"FilePath=/a.tar.gz"_s, u"ProjectDir="_s,    u"ProjectName="_s};
        QTest::newRow("no dot") << false << u"/src/Makefile"_s
                                << QStringList{u"FileDir=/src"_s,           u"FileExt="_s,    u"FileName=Makefile"_s,
                                               u"FilePath=/src/Makefile"_s, u"ProjectDir="_s, u"ProjectName="_s};
    }
    void theMacros()
    {
        QFETCH(bool, hasProject);
        QFETCH(QString, document);
        const Project project(u"board.v2"_s, u"/fw x"_s);
        const ExternalTool::Macros macros = toolMacros(hasProject ? &project : nullptr, document);
        QStringList lines;
        for (const auto &[name, value] : macros.asKeyValueRange())
            lines << name + u'=' + value;
        QTEST(lines, "expected");
    }

    void processKeepsRunningAfterTheCommandsAreDeleted()
    {
        open();
        add(u"A"_s, u"/bin/sleep"_s, u"30"_s);
        m_commands->execute(0);
        const auto process = pid_t(m_commands->tools().tools().at(0)->processId());
        m_commands.reset();
        QCOMPARE(::kill(process, 0), 0);
        QCOMPARE(::kill(process, SIGKILL), 0);
        QTRY_VERIFY(::kill(process, 0) != 0);
    }
};

QTEST_MAIN(ToolsCommandsTest)
#include "tst_toolscommands.moc"
