#include "../plugins/stub/stub.h"
#include "ibreakpoints.h"
#include "ibuildenvironment.h"
#include "iexecutionenvironment.h"
#include "navigator.h"
#include "ordinaryuser.h"
#include "projectfile.h"
#include "projectfolder.h"
#include "projecttree.h"
#include "replacedialog.h"
#include "sessionkeeper.h"
#include "windowfixture.h"
#include "windowmenus.h"
#include <QAction>
#include <QComboBox>
#include <QListWidget>
#include <QPluginLoader>
#include <QPrintDialog>
#include <QProgressDialog>
#include <QTextBrowser>
#include <QTreeWidget>

// Every dialog and every message box: the workspace closes while it is open, and then the user answers it.

using namespace Qt::StringLiterals;

namespace {
StubControl *stub()
{
    return qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
}

/// Plug-ins "fw" and "dsp", which run programs, and "cc", which builds.
struct Plugins
{
    Plugins()
    {
        stub()->reset();
        for (const QString &name : {u"fw"_s, u"dsp"_s, u"cc"_s}) {
            StubScript &script = stub()->script(u'{' + name + u'}');
            script.label = name;
            script.offers =
                name == "cc"_L1 ? QSet{IBuildEnvironment::Iid} : QSet{IExecutionEnvironment::Iid, IBreakpoints::Iid};
        }
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
    }
};

/// A window with the workspace "all" of the projects "fw" and "dsp" and the open file "main.c"; and the files of
/// another workspace.
class Fixture : private Plugins, public WindowFixture
{
public:
    Fixture()
    {
        write(u"main.c"_s, "one\ntwo\n");
        for (const QString &name : {u"fw"_s, u"dsp"_s})
            writeBound(name, "buildenvironment='{cc}' executionenvironment='{" + name.toLatin1() + "}'");
        all = writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s, u"dsp.vnp"_s});
        writeProject(u"other/other.vnp"_s, {u"main.c"_s});
        other = writeWorkspace(u"other/other.vnw"_s, {u"other.vnp"_s});
        writeProject(u"chosen.vnp"_s);
        write(u"chosen.c"_s, "chosen\n");
        reopen();
    }

    void reopen() const
    {
        QVERIFY(window->openWorkspace(all, false));
        QVERIFY(window->openFile(path(u"main.c"_s), false));
    }
    void writeBound(const QString &name, const QByteArray &environments) const
    {
        write(name + u".vnp"_s, "<project " + environments
                                    + "><folder name='src'><file path='main.c'/></folder><properties "
                                      "currentconfiguration='Debug'><configuration name='Debug'/>"
                                      "<configuration name='Release'/></properties></project>");
    }

    /// Writes a template, and the answer to the next dialog, which makes the project @p name of it.
    void makeProject(const QString &name) const
    {
        installation.write(u"images/projecttemplate.svg"_s, "<svg xmlns='http://www.w3.org/2000/svg'/>");
        installation.write(u"templates/group/plain/project.vnp"_s, "<project><file path='main.c'/></project>");
        installation.write(u"templates/group/plain/main.c"_s, "int main;");
        settings()->setValue(u"Paths/NewProjects"_s, path(u"home"_s));
        QDir().mkpath(path(u"home"_s)); // the dialog would ask whether to create it
        answers->prepend([name](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>(u"TemplateIconView"_s);
            auto *tree = dialog->findChild<QTreeWidget *>(u"TemplateListView"_s);
            tree->setCurrentItem(tree->findItems(u"group"_s, Qt::MatchExactly).value(0));
            list->setCurrentItem(list->findItems(u"plain"_s, Qt::MatchExactly).value(0));
            dialog->findChild<QLineEdit *>(u"NameLineEdit"_s)->setText(name);
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection); // it may show a question itself
        });
    }
    /// Writes examples that cannot be changed where they are, and follows the link of the start page to the first one.
    void openExample()
    {
        installation.write(u"help/html/index.html"_s, "<html><body>home</body></html>");
        installation.write(u"examples/one/one.vnw"_s, "<workspace><project path='other.vnp'/></workspace>");
        installation.write(u"examples/one/other.vnp"_s,
                           "<project><properties currentconfiguration='Default'><configuration name='Default'/>"
                           "</properties></project>");
        QFile::setPermissions(installation.path(u"examples/one"_s), QFile::ReadOwner | QFile::ExeOwner);
        discard();
        restart();
        reopen();
        QVERIFY(window->workspace()->openHelp(installation.path(u"help/html/index.html"_s)));
        auto *browser = window->viewManager()->currentView()->findChild<QTextBrowser *>(u"HelpBrowser"_s);
        Q_EMIT browser->anchorClicked(QUrl(u"command:openWorkspace?../examples/one/one.vnw"_s));
        QTRY_VERIFY(answers->allGiven()); // the link is followed when its event has been handled
        QFile::setPermissions(installation.path(u"examples/one"_s),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    void useMenus(const QString &xml)
    {
        installation.write(u"config/uiconfig.xml"_s, xml.toUtf8());
        restart();
    }

    static StubScript &script(const QString &label) { return stub()->script(u'{' + label + u'}'); }
    [[nodiscard]] Project *project() const { return window->projectWorkspace()->project(0); }
    void change() const { project()->addFiles({path(u"added.c"_s)}, nullptr); }
    void set(ActivityState state) const { window->activity().setState(state); }

    /// Selects a row of the tree: the project, or its folder.
    [[nodiscard]] ProjectTree *select(bool folder) const
    {
        auto *tree = window->findChild<ProjectTree *>();
        tree->clearSelection();
        QTreeWidgetItem *row = tree->topLevelItem(0)->child(0);
        (folder ? row->child(0) : row)->setSelected(true);
        return tree;
    }

    QString all;
    QString other;
};

using Command = std::function<void(Fixture &)>;

void click(QDialog *dialog, const char *name)
{
    if (auto *button = dialog->findChild<QAbstractButton *>(QString::fromLatin1(name)))
        button->click();
}

/// Agrees to everything, with "typed", the file "chosen" or the directory "other" as the answer.
void agree(const Fixture &f, QDialog *dialog)
{
    if (auto *box = qobject_cast<QMessageBox *>(dialog)) {
        for (const auto button : {QMessageBox::Yes, QMessageBox::Ok}) {
            if (box->button(button))
                return box->button(button)->click();
        }
    } else if (auto *chooser = qobject_cast<QFileDialog *>(dialog)) {
        const bool project = chooser->objectName() == "insertProjectDialog"_L1;
        const bool workspace = chooser->objectName() == "openWorkspaceDialog"_L1;
        const bool directory = chooser->fileMode() == QFileDialog::Directory;
        const QString file = project     ? u"chosen.vnp"_s
                             : workspace ? u"other/other.vnw"_s
                             : directory ? u"other"_s
                                         : u"chosen.c"_s;
        chooser->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(f.path(file));
        QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection); // it may show a question itself
    } else if (auto *progress = qobject_cast<QProgressDialog *>(dialog)) {
        progress->cancel();
    } else if (qobject_cast<QPrintDialog *>(dialog)) {
        dialog->reject(); // there is no printer
    } else if (dialog->findChild<QAbstractButton *>(u"BuildButton"_s)) {
        click(dialog, "BuildButton");
        if (dialog->isVisible())
            dialog->reject();
    } else {
        for (QLineEdit *edit : dialog->findChildren<QLineEdit *>()) {
            if (edit->objectName() != u"VirtualEnvironmentEdit"_s) // must name an environment
                edit->setText(u"typed"_s);
        }
        QMetaObject::invokeMethod(dialog, "accept");
        dialog->reject(); // if it has refused that
    }
}

/// Operates the next dialog by a function that opens another dialog: not at once, since the timer of the answers must
/// fire for that one.
void operate(const Fixture &f, const std::function<void(QDialog *)> &use)
{
    f.answers->prepend([use](QDialog *dialog) { QTimer::singleShot(0, dialog, [use, dialog] { use(dialog); }); });
}

/// Opens a dialog that a dialog asks in turn, by clicking @p button in it.
Command nested(const Command &command, const char *button)
{
    return [command, button](Fixture &f) {
        operate(f, [button](QDialog *dialog) {
            if (auto *list = dialog->findChild<QListWidget *>())
                list->setCurrentRow(0);
            click(dialog, button);
            dialog->reject();
        });
        command(f);
    };
}

/// An action that only the menus of the product have.
Command helpAction(const char *name)
{
    return [name](Fixture &f) {
        f.discard();
        f.useMenus(QStringLiteral("<ui><actions><action name=\"%1\" slot=\"none\"><text>A</text></action></actions>"
                                  "<toolbars/><menus/></ui>")
                       .arg(QLatin1StringView(name)));
        f.reopen();
        f.window->findChild<QAction *>(QLatin1StringView(name))->trigger();
    };
}
} // namespace
Q_DECLARE_METATYPE(Command)

class ModalDialogsTest : public QObject
{
    Q_OBJECT

private:
    static void addFileRows();
    static void addProjectRows();
    static void addTreeRows();
    static void addBuildRows();
    static void addDebugRows();
    static void addOtherRows();

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void answerAfterTheWorkspaceHasClosedChangesNothing_data()
    {
        QTest::addColumn<Command>("command");
        addFileRows();
        addProjectRows();
        addTreeRows();
        addBuildRows();
        addDebugRows();
        addOtherRows();
    }

    void answerAfterTheWorkspaceHasClosedChangesNothing()
    {
        QFETCH(const Command, command);
        for (const bool another : {false, true}) {
            Fixture f;
            const QByteArray workspace = f.read(u"other/other.vnw"_s);
            const QByteArray project = f.read(u"other/other.vnp"_s);
            bool asked = false;
            f.answers->meet([&](QDialog *dialog) {
                asked = true;
                const QPointer<QDialog> alive(dialog);
                f.discard();
                if (another)
                    QVERIFY(f.window->openWorkspace(f.other, false));
                stub()->takeCalls();
                if (alive)
                    agree(f, alive);
            });
            command(f);
            QCoreApplication::processEvents();
            QVERIFY(asked);
            QCOMPARE(f.read(u"other/other.vnw"_s), workspace);
            QCOMPARE(f.read(u"other/other.vnp"_s), project);
            if (another) {
                QCOMPARE(f.projects(), QStringList(u"other"_s));
                QVERIFY(!f.window->projectWorkspace()->isModified());
                QVERIFY(!f.window->activity().currentProject()->isModified());
                QCOMPARE(f.window->activity().state(), StateIdle);
            }
            const QRegularExpression work(u"\\.(build|clean|compile|start|run|pause|setBreakpoint)\\("_s);
            QCOMPARE(stub()->takeCalls().filter(work), QStringList());
        }
    }
};

namespace {
void row(const char *name, const Command &command)
{
    QTest::newRow(name) << command;
}
} // namespace

void ModalDialogsTest::addFileRows()
{
    row("open file", [](auto &f) { f.window->fileOpen(); });
    row("save as", [](auto &f) { f.window->fileSaveAs(); });
    row("save as over an open file", [](auto &f) {
        f.open(u"second.c"_s);
        f.answers->prepend([](QDialog *box) { static_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click(); });
        f.answers->prepend([&f](QDialog *dialog) {
            for (auto *view : dialog->findChildren<QAbstractItemView *>())
                view->clearSelection(); // the present name is selected
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(f.path(u"main.c"_s));
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection); // it asks whether to overwrite
        });
        f.window->fileSaveAs();
    });
    row("directory of a new file", nested([](Fixture &f) { f.window->fileNew(); }, "browseButton"));
    row("insert file", [](auto &f) { f.window->editInsertFile(); });
    row("print", [](auto &f) { f.window->filePrint(); });
    row("revert", [](auto &f) { f.window->fileRevert(); });
    row("close a file with changes", [](auto &f) {
        f.type(u"x"_s);
        f.window->fileClose();
    });
    row("close a file with changes over a newer one", [](auto &f) {
        f.type(u"x"_s);
        f.changeOutside(u"main.c"_s, "new\n");
        f.answers->prepend([](QDialog *box) { static_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click(); });
        f.window->fileClose();
    });
    row("revert of a missing file", [](auto &f) {
        QFile::remove(f.path(u"main.c"_s));
        f.window->fileRevert();
    });
    row("save over a newer file", [](auto &f) {
        f.changeOutside(u"main.c"_s, "new\n");
        f.window->fileSave();
    });
    row("save all over newer files", [](auto &f) {
        f.changeOutside(u"main.c"_s, "new\n");
        (void)f.window->fileSaveAll();
    });
    row("file that cannot be written", [](auto &f) {
        f.open(u"gone/a.c"_s);
        QDir(f.path(u"gone"_s)).removeRecursively();
        f.window->fileSave();
    });
    row("file that does not exist", [](auto &f) { (void)f.window->openFile(f.path(u"missing.c"_s), false); });
    row("file that cannot be opened", [](auto &f) { (void)f.window->openFile(f.path(u"other"_s), false); });
    row("file that was changed outside", [](auto &f) {
        f.changeOutside(u"main.c"_s, "new\n");
        f.activate();
    });
}

void ModalDialogsTest::addProjectRows()
{
    row("open workspace", [](auto &f) { f.window->projectOpen(); });
    row("recent workspace that cannot be opened", [](auto &f) {
        const QString file = f.writeWorkspace(u"gone.vnw"_s, {u"fw.vnp"_s});
        QVERIFY(f.window->openWorkspace(file, true));
        QFile::remove(file);
        f.window->template findChild<WindowMenus *>()->recentWorkspaceSelected(0);
    });
    row("project with a workspace", [](auto &f) {
        f.writeWorkspace(u"fw.vnw"_s, {u"fw.vnp"_s});
        (void)f.window->openProject(f.path(u"fw.vnp"_s), false);
    });
    row("save changes", [](auto &f) {
        f.change();
        (void)f.window->closeWorkspace();
    });
    row("project that cannot be saved", [](auto &f) {
        QFile::remove(f.path(u"fw.vnp"_s));
        QDir().mkpath(f.path(u"fw.vnp"_s));
        f.window->projectSave();
    });
    row("workspace that cannot be saved", [](auto &f) {
        QFile::remove(f.all);
        QDir().mkpath(f.all);
        f.window->projectSave();
    });
    row("save over a newer project", [](auto &f) {
        f.changeOutside(u"fw.vnp"_s, "<project/>");
        f.window->projectSave();
    });
    row("save over a newer workspace", [](auto &f) {
        f.changeOutside(u"all.vnw"_s, "<workspace/>");
        f.window->projectSave();
    });
    row("project that was changed outside", [](auto &f) {
        f.changeOutside(u"fw.vnp"_s, "<project/>");
        f.activate();
    });
    row("workspace that was changed outside", [](auto &f) {
        f.changeOutside(u"all.vnw"_s, "<workspace/>");
        f.activate();
    });
    row("insert files", [](auto &f) { f.window->projectInsertFiles(); });
    row("insert project", [](auto &f) { f.window->projectInsertProject(); });
    row("missing build environment", [](auto &f) {
        f.writeBound(u"fw"_s, "buildenvironment='{none}'");
        (void)f.window->openWorkspace(f.all, false);
    });
    row("missing execution environment", [](auto &f) {
        f.writeBound(u"fw"_s, "executionenvironment='{none}'");
        (void)f.window->openWorkspace(f.all, false);
    });
    row("build environment that fails", [](auto &f) {
        f.script(u"cc"_s).initialised = false;
        (void)f.window->openWorkspace(f.all, false);
    });
    row("execution environment that fails", [](auto &f) {
        f.script(u"fw"_s).initialised = false;
        (void)f.window->openWorkspace(f.all, false);
    });
    row("missing environment of an inserted project", [](auto &f) {
        f.writeBound(u"new"_s, "buildenvironment='{none}'");
        f.answers->prepend([&f](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(u"fileNameEdit"_s)->setText(f.path(u"new.vnp"_s));
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        });
        f.window->projectInsertProject();
    });
    row("scripts of a workspace", [](auto &f) {
        f.writeProject(u"scripted/fw.vnp"_s, {u"boot.py"_s},
                       "<properties><configuration name='Default'><property key='runAtProjectLoad'>1</property>"
                       "</configuration></properties>");
        (void)f.window->openWorkspace(f.writeWorkspace(u"scripted/all.vnw"_s, {u"fw.vnp"_s}), false);
    });
}

void ModalDialogsTest::addTreeRows()
{
    row("remove project", [](auto &f) { f.select(false)->removeProject(); });
    row("changes of a removed project", [](auto &f) {
        f.change();
        f.answers->prepend([](QDialog *box) { static_cast<QMessageBox *>(box)->button(QMessageBox::Ok)->click(); });
        f.select(false)->removeProject();
    });
    row("add files to folder", [](auto &f) { f.select(true)->addFilesToFolder(); });
    row("properties of a folder", [](auto &f) { f.select(true)->folderProperties(); });
    row("properties of a project", [](auto &f) { f.window->projectProperties(); });
    row("properties of a file",
        [](auto &f) { f.window->displayFileProperties(f.project()->folders().first()->files().first()); });
}

void ModalDialogsTest::addBuildRows()
{
    const Command edit = [](Fixture &f) { f.window->buildConfigurationsEdit(); };
    row("no build environment", [](auto &f) {
        f.project()->setBuildInterface(nullptr);
        f.window->buildBuild();
    });
    row("batch build", [](auto &f) { f.window->buildBatchBuild(); });
    row("new configuration", [](auto &f) { f.window->buildConfigurationsNew(); });
    row("edit configurations", edit);
    row("rename configuration", nested(edit, "RenameButton"));
    row("remove configuration", nested(edit, "RemoveButton"));
    row("newer file to be compiled", [](auto &f) {
        f.type(u"x"_s);
        f.changeOutside(u"main.c"_s, "new\n");
        f.window->fileSelected(u"main.c"_s);
        f.window->buildCompileFile();
    });
    row("project that cannot be saved for a compilation", [](auto &f) {
        f.change();
        QFile::remove(f.path(u"fw.vnp"_s));
        QDir().mkpath(f.path(u"fw.vnp"_s));
        f.window->fileSelected(u"main.c"_s);
        f.window->buildCompileFile();
    });
}

void ModalDialogsTest::addDebugRows()
{
    row("project needs rebuilding", [](auto &f) {
        f.script(u"cc"_s).upToDate = false;
        f.window->debugRun();
    });
    row("debugger does not start", [](auto &f) {
        f.script(u"fw"_s).started = false;
        f.window->debugRun();
    });
    row("one processor or all", [](auto &f) {
        for (const QString &key : {u"Debug/action0"_s, u"Debug/action1"_s})
            f.settings()->setValue(key, 2);
        f.discard();
        f.restart();
        f.reopen();
        f.set(StateRunning);
        f.window->debugPause();
    });
    row("no source for the next statement", [](auto &f) {
        f.script(u"fw"_s).location = {u"missing.c"_s, 1};
        f.set(StatePaused);
    });
    row("hit in another project", [](auto &f) {
        f.set(StateRunning);
        stub()->object(u"dsp"_s)->executionEvents->programStatusChanged(IExecutionEnvironment::ProgramBreakpointHit);
    });
    row("breakpoints", [](auto &f) { f.window->debugBreakpoints(); });
    row("breakpoints without a workspace", [](auto &f) {
        f.discard();
        f.window->debugBreakpoints();
    });
    row("breakpoint of wrong syntax", [](auto &f) {
        operate(f, [](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(u"LocationEdit"_s)->setText(u"nowhere"_s);
            dialog->accept();
        });
        f.window->debugBreakpoints();
    });
    row("breakpoint in a file of two projects", [](auto &f) {
        operate(f, [&f](QDialog *dialog) {
            dialog->findChild<QLineEdit *>(u"LocationEdit"_s)->setText(f.path(u"main.c"_s) + u", 1"_s);
            dialog->accept();
        });
        f.window->debugBreakpoints();
    });
    row("breakpoint while the program runs", [](auto &f) {
        f.set(StateRunning);
        f.window->debugToggleBreakpoint();
    });
    row("breakpoint that is refused", [](auto &f) {
        f.script(u"fw"_s).setBreakpointResult = -1;
        f.window->debugToggleBreakpoint();
    });
}

void ModalDialogsTest::addOtherRows()
{
    const Command findInFiles = [](Fixture &f) { f.window->editFindInFiles(); };
    const Command options = [](Fixture &f) { f.window->toolsOptions(); };
    row("find in files", findInFiles);
    row("directory to find in", nested(findInFiles, "BrowseButton"));
    row("text that is not found", [](auto &f) { f.window->find(u"missing"_s, false, false, true, true); });
    row("text to replace that is not found", [](auto &f) {
        f.window->editReplace();
        auto *dialog = f.window->template findChild<ReplaceDialog *>();
        dialog->template findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"missing"_s);
        click(dialog, "FindNextButton");
        dialog->reject();
    });
    row("selection that is too large to be copied", [](auto &f) {
        f.answers->prepend([](QDialog *box) { static_cast<QMessageBox *>(box)->button(QMessageBox::Ok)->click(); });
        (void)f.window->openFile(f.write(u"large.txt"_s, QByteArray(64, 'x').append('\n').repeated(300'000)), false);
        View *view = f.window->viewManager()->currentView();
        view->selectAll();
        view->copy();
    });
    row("directory of a new project", nested([](Fixture &f) { f.window->projectNew(); }, "BrowseButton"));
    row("template copied over a file", [](auto &f) {
        f.write(u"home/other/main.c"_s, "mine");
        f.makeProject(u"other"_s);
        f.window->projectNew();
    });
    row("template that takes long to copy", [](auto &f) {
        f.makeProject(u"unwanted"_s);
        QFile large(f.installation.path(u"templates/group/plain/large.bin"_s));
        QVERIFY(large.open(QIODevice::WriteOnly) && large.resize(4'000'000'000)); // without blocks on the disk
        f.window->projectNew();
    });
    row("template that cannot be copied", [](auto &f) {
        f.write(u"home/unwanted"_s, "a file where the directory would be");
        f.makeProject(u"unwanted"_s);
        f.window->projectNew();
    });
    row("examples that cannot be changed", [](auto &f) { f.openExample(); });
    row("examples that cannot be copied", [](auto &f) {
        f.installation.write(u"varnel-examples"_s, "a file where the directory would be");
        f.answers->prepend([](QDialog *box) { static_cast<QMessageBox *>(box)->button(QMessageBox::Yes)->click(); });
        f.openExample();
    });
    row("template that exists already", [](auto &f) {
        f.installation.write(u"mytemplates/mine/old.c"_s, "old");
        f.answers->prepend([](QDialog *dialog) {
            static_cast<QInputDialog *>(dialog)->setTextValue(u"mine"_s);
            dialog->accept();
        });
        Q_EMIT f.window->template findChild<Navigator *>()->saveAsTemplate(f.project());
    });
    row("search in the help", [](auto &f) { f.window->helpSearch(); });
    row("plug-ins", helpAction("helpPlugins"));
    row("about box", [](auto &f) {
        f.installation.copy(QStringLiteral(TESTBRANDING), u"bin/libbranding.so"_s);
        f.window->helpAbout();
    });
    row("problem report", helpAction("helpReport"));
    row("go to line", [](auto &f) { f.window->viewGotoLine(); });
    row("options", options);
    row("colour of a text", nested(options, "ForegroundButton"));
    row("recovery", [](auto &f) {
        const QString swap = f.installation.path(u"state/Ostrand Labs/Varnel/swap"_s);
        QDir().mkpath(swap);
        QFile file(swap + u"/lost.swap"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QDataStream stream(&file);
        stream.setVersion(QDataStream::Qt_6_4);
        stream << quint32(0x56535731) << f.path(u"lost.c"_s) << QDateTime::currentDateTimeUtc() << QByteArray("x");
        file.close();
        f.window->sessions().disable();
        f.window->continueLastRun();
    });
    row("file that is too large",
        [](auto &f) { (void)f.window->openFile(f.write(u"large.txt"_s, QByteArray(10'000'001, 'x')), false); });
    row("file that is no text",
        [](auto &f) { (void)f.window->openFile(f.write(u"binary.txt"_s, QByteArray("a\0b\n", 4)), false); });
}

int main(int argc, char *argv[])
{
    if (!becomeOrdinaryUser())
        qFatal("examples cannot be protected from this user");
    ModalDialogsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_modaldialogs.moc"
