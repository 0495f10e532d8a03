#include "../plugins/stub/stub.h"
#include "commandlinewindow.h"
#include "ibuildenvironment.h"
#include "scriptfixture.h"
#include "scriptprojectfile.h"
#include "scriptprojectfolder.h"
#include "scriptprojectproperties.h"
#include <QPluginLoader>
#include <QTest>
using namespace Qt::StringLiterals;

namespace {
/// The plug-in's tool chain "cc", which the next windows know.
struct ToolChain
{
    ToolChain()
    {
        stub->reset();
        stub->script(u"{cc}"_s).label = u"cc"_s;
        stub->script(u"{cc}"_s).offers = {IBuildEnvironment::Iid};
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
    }
    /// The builds since the last call.
    [[nodiscard]] QString builds() const { return stub->takeCalls().filter(u".build("_s).join(u' '); }

    StubControl *stub = qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
};
} // namespace

/// The script objects of projects, folders, files and properties.
class ScriptProjectsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void values_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("result");
        QTest::newRow("name") << u"p.name"_s << u"'sample'"_s;
        QTest::newRow("base path") << u"p.basePath == base"_s << u"True"_s;
        QTest::newRow("folders") << u"[f.name for f in p.folders]"_s << u"['Sources', 'Headers']"_s;
        QTest::newRow("subfolders") << u"[f.name for f in p.folders[0].folders]"_s << u"['Drivers']"_s;
        QTest::newRow("no subfolders") << u"p.folders[1].folders"_s << u"[]"_s;
        QTest::newRow("extensions") << u"p.folders[0].extensions"_s << u"['c', 'cpp']"_s;
        QTest::newRow("files of the root") << u"[f.name for f in p.files]"_s << u"['readme.txt']"_s;
        QTest::newRow("files of a folder") << u"[f.path for f in p.folders[0].files]"_s << u"['main.c']"_s;
        QTest::newRow("file of a subfolder")
            << u"[(f.name, f.path) for f in p.folders[0].folders[0].files]"_s << u"[('uart.c', 'lib/uart.c')]"_s;
        QTest::newRow("objects in lists are new") << u"p.folders[0] is p.folders[0]"_s << u"False"_s;
        QTest::newRow("lists are new") << u"p.folders.clear() or len(p.folders)"_s << u"2"_s;
        QTest::newRow("configurations in the order of the store") << u"p.configurations"_s << u"['Debug', 'Release']"_s;
        QTest::newRow("current configuration") << u"p.currentConfiguration"_s << u"'Release'"_s;
        QTest::newRow("not modified") << u"p.isModified"_s << u"0"_s;
        QTest::newRow("test of a folder") << u"p.folders[0].test('ä')"_s << u"'ä'"_s;
        QTest::newRow("test of a file") << u"p.files[0].test('')"_s << u"''"_s;
        QTest::newRow("property") << u"p.properties.property('level', 'Debug')"_s << u"'0'"_s;
        QTest::newRow("unknown property") << u"p.properties.property('x', 'Debug')"_s << u"''"_s;
        QTest::newRow("property of an unknown configuration") << u"p.properties.property('level', 'x')"_s << u"''"_s;
        QTest::newRow("keys") << u"p.properties.propertyKeys('Release')"_s << u"['define', 'level']"_s;
        QTest::newRow("property of a file") << u"p.files[0].properties.property('own', 'Debug')"_s << u"'1'"_s;
        QTest::newRow("file inherits from the project")
            << u"p.files[0].properties.property('level', 'Debug')"_s << u"'0'"_s;
        QTest::newRow("keys of a file") << u"p.files[0].properties.propertyKeys('Debug')"_s << u"['own']"_s;
        QTest::newRow("set a property") << u"p.properties.setProperty('level', 'ä€', 'Debug'), "
                                           "p.properties.property('level', 'Debug'), p.isModified"_s
                                        << u"(None, 'ä€', 1)"_s;
        QTest::newRow("set a property of a file") << u"p.files[0].properties.setProperty('own', '2', 'Debug'), "
                                                     "p.files[0].properties.property('own', 'Debug'), p.isModified"_s
                                                  << u"(None, '2', 1)"_s;
        QTest::newRow("set creates the configuration")
            << u"p.properties.setProperty('a', 'b', 'New'), p.configurations"_s
            << u"(None, ['Debug', 'New', 'Release'])"_s;
        QTest::newRow("added file goes to its folder")
            << u"p.addFile(base + '/new.c'), [f.path for f in p.folders[0].files]"_s
            << u"(None, ['main.c', 'new.c'])"_s;
        QTest::newRow("added file without folder goes to the root")
            << u"p.addFile(base + '/x/new.txt'), [f.path for f in p.files]"_s
            << u"(None, ['readme.txt', 'x/new.txt'])"_s;
        QTest::newRow("file is added twice") << u"p.addFile(base + '/main.c'), [f.path for f in p.folders[0].files]"_s
                                             << u"(None, ['main.c', 'main.c'])"_s;
        QTest::newRow("read-only") << u"p.name = 'x'"_s << u"AttributeError"_s;
    }
    void values()
    {
        QFETCH(QString, code);
        QFETCH(QString, result);
        ScriptFixture f;
        f.openWorkspace();
        f.run("p = app.projects[0]; base = " + f.quoted(QString()) + ".rstrip('/')");
        const QString actual = f.attempt(code);
        QCOMPARE(result.endsWith(u"Error"_s) ? actual.section(u':', 0, 0) : actual, result);
    }

    void keysOfAnUnknownConfiguration()
    {
        ScriptFixture f;
        f.openWorkspace();
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: "_s));
        QCOMPARE(f.attempt(u"app.projects[0].properties.propertyKeys('x')"_s), u"[]"_s);
    }

    void saves()
    {
        ScriptFixture f;
        f.openWorkspace();
        QCOMPARE(f.run("p = app.projects[0]; p.properties.setProperty('level', '9', 'Debug')\n"
                       "print(p.save(), p.isModified)"),
                 u"None 0\n"_s);
        QVERIFY(f.read(u"sample.vnp"_s).contains(">9<"));
    }

    /// The error does not stop the script, and cannot be caught.
    void failedSaveIsReportedWhenTheScriptHasEnded()
    {
        ScriptFixture f;
        f.openWorkspace();
        QVERIFY(QFile::remove(f.path(u"sample.vnp"_s)));
        QVERIFY(QDir().mkdir(f.path(u"sample.vnp"_s)));
        QCOMPARE(f.run("try: print(app.projects[0].save())\nexcept OSError: print('caught')\nprint('on')"),
                 u"None\non\nOSError: Could not save project\n"_s);
        f.run("app.onWorkspaceLoaded = lambda: (app.projects[0].save(), print('handled'))");
        f.window->activity().projects().first()->setModified(false);
        QVERIFY(QDir().rmdir(f.path(u"sample.vnp"_s)));
        f.write(u"sample.vnp"_s, "<project/>");
        f.openWorkspace();
        QCOMPARE(f.printed(), u"handled\n"_s);
    }

    void failedSaveInAHandlerIsReportedAfterIt_data()
    {
        QTest::addColumn<QByteArray>("script");
        QTest::newRow("event") << "app.onCurrentProjectChanged = fail\napp.currentProject = app.projects[1]\n"_ba;
        QTest::newRow("signal") << "button = app.createUI('QPushButton'); button.onClicked = fail; button.click()\n"_ba;
    }
    void failedSaveInAHandlerIsReportedAfterIt()
    {
        QFETCH(QByteArray, script);
        ScriptFixture f;
        f.openWorkspace();
        QVERIFY(QFile::remove(f.path(u"sample.vnp"_s)));
        QVERIFY(QDir().mkdir(f.path(u"sample.vnp"_s)));
        QCOMPARE(
            f.run("def fail(*sender):\n    app.projects[0].save()\n    print('handled')\n" + script + "print('on')"),
            u"handled\nOSError: Could not save project\non\n"_s);
    }

    void failedSaveOfAFileOrConsoleLineIsReportedAfterIt()
    {
        ScriptFixture f;
        f.openWorkspace();
        QVERIFY(QFile::remove(f.path(u"sample.vnp"_s)));
        QVERIFY(QDir().mkdir(f.path(u"sample.vnp"_s)));
        f.window->runPyFile(f.write(u"save.py"_s, "from varnel import app\napp.projects[0].save()\nprint('on')\n"));
        QCOMPARE(f.printed(), u"on\nOSError: Could not save project\n"_s);
        auto *console = f.window->findChild<CommandLineWindow *>();
        QVERIFY(console);
        for (const QString &line : {u"from varnel import app"_s, u"app.projects[0].save(); print('on')"_s}) {
            QTest::keyClicks(console, line);
            QTest::keyClick(console, Qt::Key_Return);
        }
        QCOMPARE(f.printed(), u"on\nOSError: Could not save project\n"_s);
    }

    void interfaceOfAnObjectIsAsserted()
    {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"theIface\""_s));
        const ScriptProjectFile file{InterfacePtr<IProjectFile>()};
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"theIface\""_s));
        const ScriptProjectFolder folder{InterfacePtr<IProjectFolder>()};
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^ASSERT: \"theIface\""_s));
        const ScriptProjectProperties properties{InterfacePtr<IProjectProperties>()};
    }

    void buildActsOnTheCurrentProject()
    {
        const ToolChain toolChain;
        ScriptFixture f;
        for (const QString &name : {u"one.vnp"_s, u"two.vnp"_s})
            f.write(name, "<project buildenvironment='{cc}'><properties currentconfiguration='" + name.first(3).toUtf8()
                              + "'/></project>");
        QVERIFY(f.window->openWorkspace(f.writeWorkspace(u"builds.vnw"_s, {u"one.vnp"_s, u"two.vnp"_s}), false));
        (void)toolChain.builds();
        QCOMPARE(f.attempt(u"app.projects[1].build(1), app.state"_s), u"(None, 1)"_s);
        QCOMPARE(toolChain.builds(), u"cc.build([one], true)"_s);
        f.window->activity().setState(StateIdle);
        QCOMPARE(f.attempt(u"app.projects[1].build()"_s), u"None"_s);
        QCOMPARE(toolChain.builds(), u"cc.build([one], false)"_s);
        f.window->activity().setState(StateIdle);
    }

    void buildWithoutToolChainShowsAMessage()
    {
        ScriptFixture f;
        f.openWorkspace();
        f.answers->press(QMessageBox::Ok);
        QCOMPARE(f.attempt(u"app.projects[1].build(0)"_s), u"None"_s);
        QCOMPARE(f.answers->shown,
                 QStringList{u"The project cannot be built.\n\nNo build environment is available."_s});
    }
};

QTEST_APPLESS_MAIN(ScriptProjectsTest)
#include "tst_scriptprojects.moc"
