#include "buildcontrol.h"
#include "document.h"
#include "documenttemplate.h"
#include "fakeservices.h"
#include "idebugbuild.h"
#include "iextensioncommands.h"
#include "iprojectpopulate.h"
#include "ipropertydefinitions.h"
#include "navigator.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "stubfixture.h"
#include "treetext.h"
#include "workspace.h"
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {
class MemoryTemplate : public DocumentTemplate
{
public:
    MemoryTemplate() : DocumentTemplate({}, {}, {}) {}
    bool canOpen(const QString &) override { return false; }
    Document *createDocument() override { return nullptr; }
    View *createView(Document *) override { return nullptr; }
    QString extension() override { return {}; }
};

/// A document in memory that records when it is saved.
class NotedDocument : public Document
{
public:
    NotedDocument(DocumentTemplate *docTemplate, const QString &filename,
                  const std::function<void(const QString &)> &note)
        : Document(docTemplate), m_filename(filename), m_note(note)
    {}
    bool open(const QString &) override { return true; }
    bool create(const QString &) override { return true; }
    bool save() override
    {
        m_note(u"document.save "_s + title());
        setModified(false);
        return true;
    }
    bool saveAs(const QString &) override { return true; }
    QDateTime lastModified() override { return {}; }
    QString filename() override { return m_filename; }
    QString title() override { return QFileInfo(m_filename).fileName(); }
    bool isNewerOnDisk() override { return newer; }

    bool newer = false;

private:
    const QString m_filename;
    const std::function<void(const QString &)> m_note;
};
} // namespace

/// Builds from the command to their end. The calls of the plug-in and of the window are recorded in one list.
class BuildControlTest : public QObject, protected StubFixture, public FakeServices
{
    Q_OBJECT

private:
    std::unique_ptr<FakeTreeHost> m_window;
    Navigator *m_navigator = nullptr;
    OutputWindow *m_output = nullptr;
    QAction *m_compile = nullptr;
    MemoryTemplate m_template;
    std::unique_ptr<Workspace> m_documents;
    std::unique_ptr<BuildControl> m_control;
    bool m_savesAll = true;
    std::function<void()> m_whileSaving;
    QStringList m_story;
    QList<bool> m_compileAvailable;
    QStringList m_status; ///< texts of the status bar

    // WindowServices
    Workspace *workspace() const override { return m_documents.get(); }
    Navigator *navigator() const override { return m_navigator; }
    OutputWindow *outputWindow() const override { return m_output; }
    QWidget *dialogParent() override { return m_window.get(); }
    void showOutputDock() override { note(u"window.showOutputDock"_s); }
    void showMessage(const QString &text, int) override { m_status.append(text); }
    bool fileSaveAll() override
    {
        note(u"window.fileSaveAll"_s);
        if (m_whileSaving)
            m_whileSaving();
        return m_savesAll;
    }
    void checkFileChanges() override { note(u"window.checkFileChanges"_s); }

    void noteState(ActivityState state)
    {
        const bool front = m_output->currentPage() == m_output->page(OutputWindow::Build);
        const QString page = m_output->page(OutputWindow::Build)->toPlainText();
        note(u"window.state %1"_s.arg(state)
             + (state == StateBuilding && front && page.isEmpty() ? u", clear page"_s : u""_s));
    }
    void be(ActivityState state)
    {
        m_activity->setState(state);
        story();
        m_compileAvailable.clear();
    }
    QAction *action(const QString &name) const override { return m_window->action(name); }

    void note(const QString &text) { m_story += m_stub->takeCalls() + QStringList{text}; }

    /// The calls of the window and of plug-ins since the last time, in order, one per line.
    QString story()
    {
        m_story += m_stub->takeCalls();
        return std::exchange(m_story, {}).join(u'\n');
    }

    template <typename Environment = IBuildEnvironment>
    InterfacePtr<Environment> object(const QString &label)
    {
        const InterfacePtr<IPluginObject> object(create(u'{' + label + u'}'));
        return queryInterface<Environment>(object.get());
    }

    /// Adds the new current project, with a build environment of its name and the configurations Debug and Release.
    Project *addBuildProject(const QString &name, const QString &files = {}, const QSet<QUuid> &more = {})
    {
        QString contents;
        for (const QString &file : files.split(u' ', Qt::SkipEmptyParts))
            contents += u"<file path=\"%1\"/>"_s.arg(file);
        contents += u"<properties currentconfiguration=\"Debug\"><configuration name=\"Debug\">"
                    "<property key=\"buildMatch\">(line): (file);</property></configuration>"
                    "<configuration name=\"Release\"/></properties>"_s;
        buildScript(name, more);
        Project *project = addProject(name, {}, {}, contents);
        project->setBuildEnvironment(object(name).get());
        project->setModified(false);
        return project;
    }

    NotedDocument *addDocument(const QString &name, bool modified)
    {
        auto *document = new NotedDocument(&m_template, path(name), [this](const QString &text) { note(text); });
        document->setParent(m_documents.get()); // deleted before the list of documents
        m_documents->addDocument(document);
        document->setModified(modified);
        return document;
    }

    /// The place that the build page now finds in @p line; empty if there is none.
    QString lookup(const QString &line)
    {
        m_output->clearPage(OutputWindow::Build);
        m_output->outputLine(OutputWindow::Build, line);
        QString file;
        int number = 0;
        const bool found = m_output->page(OutputWindow::Build)->lookup(file, number);
        return found ? u"%1 at %2"_s.arg(file).arg(number) : QString();
    }

    void call(const QString &command)
    {
        QVERIFY(QMetaObject::invokeMethod(m_control.get(), command.toLatin1().constData(), Qt::DirectConnection));
    }

    void giveNavigatorTheFocus()
    {
        m_navigator->showWorkspace();
        m_window->show();
        tree()->setFocus();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
        QTRY_VERIFY(tree()->hasFocus());
    }

    ProjectTree *tree() { return m_navigator->findChild<ProjectTree *>(u"ProjectTree"_s); }

    /// Uses the next dialog, and rejects it if it is still there.
    void whenAsked(const std::function<void(QDialog *)> &use)
    {
        QTimer::singleShot(0, this, [use] {
            auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
            QVERIFY(dialog);
            use(dialog);
            if (dialog->isVisible())
                dialog->reject();
        });
    }

    static void click(QDialog *dialog, const QString &button) { dialog->findChild<QPushButton *>(button)->click(); }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_window = std::make_unique<FakeTreeHost>();
        m_window->resize(400, 400);
        m_navigator = new Navigator(*m_activity, *m_window, m_window.get());
        m_navigator->resize(200, 400);
        m_output = new OutputWindow(m_window.get());
        m_output->setGeometry(200, 0, 200, 400);
        m_output->outputLine(OutputWindow::Build, u"old\n"_s);
        m_output->displayPage(OutputWindow::Debug);
        m_compile = m_window->addAction(u"buildCompileFile"_s);
        m_compile->setText(u"&Compile %1"_s);
        m_documents = std::make_unique<Workspace>();
        connect(m_activity.get(), &Activity::stateEntering, m_window.get(),
                [this](ActivityState state) { noteState(state); });
        m_control = std::make_unique<BuildControl>(*m_activity, *this);
        connect(m_control.get(), &BuildControl::compileAvailable, this,
                [this](bool available) { m_compileAvailable += available; });
        m_savesAll = true;
        m_whileSaving = nullptr;
        m_story.clear();
        m_compileAvailable.clear();
        m_status.clear();
    }

    void cleanup()
    {
        qDeleteAll(m_documents->findChildren<Document *>(Qt::FindDirectChildrenOnly));
        m_documents.reset();
        tearDown();
        m_control.reset();
        m_window.reset();
    }

    // Build, rebuild, clean

    void commandSavesClearsThePageAndCallsThePlugin_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("call");
        QTest::newRow("build") << u"buildBuild"_s << u"fw.build([Debug], false)"_s;
        QTest::newRow("rebuild") << u"buildRebuild"_s << u"fw.build([Debug], true)"_s;
        QTest::newRow("clean") << u"buildClean"_s << u"fw.clean([Debug])"_s;
    }

    void commandSavesClearsThePageAndCallsThePlugin()
    {
        QFETCH(QString, command);
        QFETCH(QString, call);
        addBuildProject(u"other"_s);
        addBuildProject(u"fw"_s);
        this->call(command);
        QCOMPARE(story(), u"window.showOutputDock\n"
                          "window.fileSaveAll\n"
                          "window.state 2, clear page\n"_s
                              + call);
        QCOMPARE(lookup(u"12: a.c;\n"_s), u"a.c at 12"_s);
    }

    void theCurrentConfigurationIsBuilt()
    {
        Project *project = addBuildProject(u"fw"_s);
        project->setCurrentConfiguration(u"Release"_s);
        m_control->buildBuild();
        QVERIFY(story().endsWith(u"fw.build([Release], false)"_s));
        QCOMPARE(lookup(u"12: a.c;\n"_s), QString());
        QCOMPARE(lookup(u"a.c(12)\n"_s), u"a.c at 12"_s); // the default pattern of a project without one
    }

    void buildPatternIsNotGreedy()
    {
        Project *project = addBuildProject(u"fw"_s);
        project->properties()->setProperty(u"buildMatch"_s, u"(file)\\((line)\\)"_s, u"Debug"_s);
        m_control->buildBuild();
        QCOMPARE(lookup(u"a.c(1) b.c(2)\n"_s), u"a.c at 1"_s);
    }

    void failedSaveStopsTheCommandBeforeThePageIsCleared_data()
    {
        QTest::addColumn<QString>("command");
        for (const QString &command : {u"buildBuild"_s, u"buildRebuild"_s, u"buildClean"_s})
            QTest::newRow(qPrintable(command)) << command;
    }

    void failedSaveStopsTheCommandBeforeThePageIsCleared()
    {
        QFETCH(QString, command);
        addBuildProject(u"fw"_s);
        m_savesAll = false;
        call(command);
        QCOMPARE(story(), u"window.showOutputDock\nwindow.fileSaveAll"_s);
        QCOMPARE(m_output->page(OutputWindow::Build)->toPlainText(), u"old"_s);
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void withoutEnvironmentBuildShowsAMessageAndCleanDoesNot_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<bool>("shows");
        QTest::newRow("build") << u"buildBuild"_s << true;
        QTest::newRow("rebuild") << u"buildRebuild"_s << true;
        QTest::newRow("clean") << u"buildClean"_s << false;
    }

    void withoutEnvironmentBuildShowsAMessageAndCleanDoesNot()
    {
        QFETCH(QString, command);
        QFETCH(bool, shows);
        addProject(u"fw"_s, {}, {});
        answer(QMessageBox::Ok, shows);
        call(command);
        const QString message = u"information Varnel: The project cannot be built.\n\n"
                                "No build environment is available."_s;
        QCOMPARE(takeMessages(), shows ? QStringList{message} : QStringList());
        QCOMPARE(story(), u"window.showOutputDock"_s);
    }

    void withoutWorkspaceOrProjectBuildShowsAMessageAndCleanDoesNot()
    {
        answer();
        m_control->buildBuild(); // an empty workspace
        QCOMPARE(takeMessages().size(), 1);
        m_control->buildClean();
        dropWorkspace();
        story();
        answer();
        expectAssert(u"workspace"_s);
        m_control->buildRebuild();
        QCOMPARE(takeMessages().size(), 1);
        expectAssert(u"workspace"_s);
        m_control->buildClean();
        QVERIFY(!story().contains(u"fileSaveAll"_s));
    }

    void projectRemovedWhileFilesAreSavedIsNotBuilt()
    {
        Project *project = addBuildProject(u"fw"_s);
        m_whileSaving = [&] { m_workspace->removeProject(project); };
        m_control->buildBuild();
        QCOMPARE(story(), u"window.showOutputDock\nwindow.fileSaveAll"_s);
    }

    void buildMayFinishInsideTheCall()
    {
        addBuildProject(u"fw"_s);
        m_stub->script(u"{fw}"_s).on[u"build"_s] = [&] { m_control->buildFinished(true); };
        m_control->buildBuild();
        QCOMPARE(story(), u"window.showOutputDock\n"
                          "window.fileSaveAll\n"
                          "window.state 2, clear page\n"
                          "fw.build([Debug], false)\n"
                          "window.state 1\n"
                          "window.checkFileChanges"_s);
    }

    void pluginMayCloseTheWorkspaceInsideTheCall()
    {
        addBuildProject(u"fw"_s);
        m_stub->script(u"{fw}"_s).on[u"build"_s] = [&] { dropWorkspace(); };
        m_control->buildBuild();
        QCOMPARE(m_stub->objectCount(), 0);
    }

    void exceptionEndsTheBuildAsAFailure_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("call");
        QTest::newRow("build") << u"buildBuild"_s << u"build"_s;
        QTest::newRow("clean") << u"buildClean"_s << u"clean"_s;
        QTest::newRow("compile") << u"buildCompileFile"_s << u"compile"_s;
    }

    void exceptionEndsTheBuildAsAFailure()
    {
        QFETCH(QString, command);
        QFETCH(QString, call);
        addBuildProject(u"fw"_s, u"main.c"_s);
        m_control->setCurrentFile(path(u"main.c"_s));
        m_control->buildFinished(true);
        m_stub->script(u"{fw}"_s).on[call] = throwError;
        expectException(qPrintable(u"IBuildEnvironment::"_s + call));
        this->call(command);
        QCOMPARE(m_activity->state(), StateIdle);
        QVERIFY(!m_control->buildSucceeded());
    }

    // The project selected in the navigator

    void altCommandsActOnTheProjectSelectedInTheNavigator_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("call");
        QTest::newRow("build") << u"buildBuildAlt"_s << u"fw.build([Debug], false)"_s;
        QTest::newRow("rebuild") << u"buildRebuildAlt"_s << u"fw.build([Debug], true)"_s;
        QTest::newRow("clean") << u"buildCleanAlt"_s << u"fw.clean([Debug])"_s;
    }

    void altCommandsActOnTheProjectSelectedInTheNavigator()
    {
        QFETCH(QString, command);
        QFETCH(QString, call);
        addBuildProject(u"fw"_s);
        addBuildProject(u"current"_s);
        giveNavigatorTheFocus();
        select(*tree(), {u" - fw"_s});
        this->call(command);
        QCOMPARE(story(), u"window.fileSaveAll\nwindow.state 2, clear page\n"_s + call);
    }

    void altCommandsDoNothingWithoutTheFocus_data()
    {
        QTest::addColumn<QString>("command");
        for (const QString &command : {u"buildBuildAlt"_s, u"buildRebuildAlt"_s, u"buildCleanAlt"_s})
            QTest::newRow(qPrintable(command)) << command;
    }

    void altCommandsDoNothingWithoutTheFocus()
    {
        QFETCH(QString, command);
        addBuildProject(u"fw"_s);
        giveNavigatorTheFocus();
        select(*tree(), {u" - fw"_s});
        m_output->page(OutputWindow::Debug)->setFocus();
        QTRY_VERIFY(!tree()->hasFocus());
        call(command);
        QCOMPARE(story(), QString());
    }

    void altCommandsWithoutASelectedProjectBuildNothing()
    {
        addBuildProject(u"fw"_s);
        giveNavigatorTheFocus();
        tree()->clearSelection();
        answer();
        m_control->buildBuildAlt();
        QCOMPARE(takeMessages().size(), 1);
        m_control->buildCleanAlt();
        QCOMPARE(story(), QString());
    }

    // Stop and end

    void statusBarShowsTheProgressAndTheOutcome_data()
    {
        QTest::addColumn<bool>("success");
        QTest::addColumn<bool>("stops");
        QTest::addColumn<QString>("outcome");
        const QString counts = u": 1 error, 2 warnings"_s;
        QTest::newRow("finished") << true << false << u"^Build finished in \\d+\\.\\d s"_s + counts + u'$';
        QTest::newRow("failed") << false << false << u"^Build failed after \\d+\\.\\d s"_s + counts + u'$';
        QTest::newRow("stopped") << false << true << u"^Build stopped after \\d+\\.\\d s"_s + counts + u'$';
    }
    void statusBarShowsTheProgressAndTheOutcome()
    {
        QFETCH(const bool, success);
        QFETCH(const bool, stops);
        QFETCH(const QString, outcome);
        addBuildProject(u"fw"_s)->setCurrentConfiguration(u"Release"_s); // has no pattern of its own
        m_output->outputLine(OutputWindow::Build, u"[1/9] Compiling early.c\n"_s);
        QCOMPARE(m_status, QStringList()); // nothing is being built
        m_control->buildBuild();
        for (const QString &line : {u"[3/17] Compiling a.c\n"_s, u"a.c(3): error: x\n"_s, u"a.c(4): warning: y\n"_s,
                                    u"a.c(5): warning: z\n"_s})
            m_output->outputLine(OutputWindow::Build, line);
        QCOMPARE(m_status, QStringList(u"Building: 3 of 17"_s));
        if (stops)
            m_control->buildStopBuild();
        m_control->buildFinished(success);
        QVERIFY2(QRegularExpression(outcome).match(m_status.last()).hasMatch(), qPrintable(m_status.last()));
    }

    void failedBuildShowsItsFirstError_data()
    {
        QTest::addColumn<bool>("success");
        QTest::addColumn<bool>("stops");
        QTest::addColumn<bool>("shown");
        QTest::newRow("failed") << false << false << true;
        QTest::newRow("finished") << true << false << false;
        QTest::newRow("stopped") << false << true << false;
    }
    void failedBuildShowsItsFirstError()
    {
        QFETCH(const bool, success);
        QFETCH(const bool, stops);
        QFETCH(const bool, shown);
        addBuildProject(u"fw"_s)->setCurrentConfiguration(u"Release"_s);
        m_control->buildBuild();
        for (int i = 0; i < 200; ++i)
            m_output->outputLine(OutputWindow::Build, i == 20 ? u"a.c(3): error: x\n"_s : u"gcc\n"_s);
        if (stops)
            m_control->buildStopBuild();
        m_control->buildFinished(success);
        const QScrollBar *bar = m_output->page(OutputWindow::Build)->verticalScrollBar();
        QTRY_VERIFY(bar->maximum() > 20);
        QCOMPARE(bar->value(), shown ? 18 : bar->maximum());
    }

    void stopIsSentToTheCurrentProjectOnlyAndKeepsTheState()
    {
        addBuildProject(u"other"_s);
        addBuildProject(u"fw"_s);
        m_control->buildBuild();
        story();
        m_control->buildStopBuild();
        QCOMPARE(story(), u"fw.stop()"_s);
        QVERIFY(m_control->buildStopped());
        QCOMPARE(m_activity->state(), StateBuilding);
        m_control->buildFinished(false);
        QCOMPARE(m_activity->state(), StateIdle);
        QVERIFY(m_control->buildStopped());
    }

    void stopWithoutWorkspaceProjectOrEnvironmentOnlySetsTheFlag()
    {
        m_control->buildStopBuild();
        addProject(u"fw"_s, {}, {});
        m_control->buildStopBuild();
        dropWorkspace();
        story();
        m_control->buildStopBuild();
        QVERIFY(m_control->buildStopped());
        QCOMPARE(story(), QString());
    }

    void exceptionInStopIsReportedAndTheFlagSet()
    {
        addBuildProject(u"fw"_s);
        m_stub->script(u"{fw}"_s).on[u"stop"_s] = throwError;
        expectException("IBuildEnvironment::stop");
        m_control->buildStopBuild();
        QVERIFY(m_control->buildStopped());
    }

    void buildClearsTheStopFlagAndCleanDoesNot()
    {
        addBuildProject(u"fw"_s);
        m_control->buildStopBuild();
        m_control->buildClean();
        QVERIFY(m_control->buildStopped());
        m_control->buildFinished(false);
        m_control->buildBuild();
        QVERIFY(!m_control->buildStopped());
        m_control->buildStopBuild();
        m_control->buildFinished(false);
        m_control->buildRebuild();
        QVERIFY(!m_control->buildStopped());
        m_control->buildStopBuild();
        m_control->clearBuildStopped();
        QVERIFY(!m_control->buildStopped());
    }

    void buildClearsTheStopFlagEvenIfNothingCanBeBuilt()
    {
        addProject(u"fw"_s, {}, {});
        m_control->buildStopBuild();
        answer();
        m_control->buildBuild();
        QVERIFY(!m_control->buildStopped());
    }

    void endOfABuildSetsIdleThenChecksForChangedFiles_data()
    {
        QTest::addColumn<bool>("success");
        QTest::newRow("success") << true;
        QTest::newRow("failure") << false;
    }

    void endOfABuildSetsIdleThenChecksForChangedFiles()
    {
        QFETCH(bool, success);
        be(StateBuilding);
        m_control->buildFinished(!success);
        be(StateBuilding);
        story();
        m_control->buildFinished(success);
        QCOMPARE(story(), u"window.state 1\nwindow.checkFileChanges"_s);
        QCOMPARE(m_control->buildSucceeded(), success);
    }

    void endOfABuildOutsideTheBuildingStateKeepsTheState_data()
    {
        QTest::addColumn<int>("state");
        for (const int state : {0, 1, 3, 4, 5, 6, 7})
            QTest::newRow(qPrintable(QString::number(state))) << state;
    }

    void endOfABuildOutsideTheBuildingStateKeepsTheState()
    {
        QFETCH(int, state);
        be(ActivityState(state));
        m_control->buildFinished(true);
        QCOMPARE(story(), u"window.checkFileChanges"_s);
        QVERIFY(m_control->buildSucceeded());
    }

    void endReportedWhileTheWorkspaceIsDeletedIsIgnored()
    {
        addBuildProject(u"fw"_s);
        m_control->buildBuild();
        story();
        m_stub->script(u"{fw}"_s).on[u"delete"_s] = [&] { m_control->buildFinished(false); };
        dropWorkspace();
        story();
        QCOMPARE(story(), QString());
    }

    // New contents

    void xmlFeedbackReplacesTheCurrentProjectAndUpdatesTheTree()
    {
        Project *other = addBuildProject(u"other"_s, u"o.c"_s);
        Project *project = addBuildProject(u"fw"_s, u"a.c b.c"_s);
        giveNavigatorTheFocus();
        select(*tree(), {u"a.c"_s});
        m_control->xmlFeedback(u"<project><file path=\"new.c\"/></project>"_s);
        QCOMPARE(treeOf(*project), u"new.c\n"_s);
        QCOMPARE(treeOf(*other), u"o.c\n"_s);
        QVERIFY(project->isModified());
        QVERIFY(shown(*tree()).contains(u"new.c"_s));
        QVERIFY(!shown(*tree()).contains(u"a.c"_s));
    }

    void invalidXmlFeedbackChangesNothingAndIsReported()
    {
        Project *project = addBuildProject(u"fw"_s, u"a.c"_s);
        giveNavigatorTheFocus();
        m_control->xmlFeedback(u"<project"_s);
        QCOMPARE(treeOf(*project), u"a.c\n"_s);
        QCOMPARE(m_output->page(OutputWindow::Build)->toPlainText(),
                 u"old\nThe contents that the build environment has sent for project 'fw' cannot be read: "
                 "Premature end of document. (line 1)"_s);
    }

    void xmlFeedbackWithoutAProjectIsIgnored()
    {
        m_control->xmlFeedback(u"<project/>"_s);
        dropWorkspace();
        story();
        m_control->xmlFeedback(u"<project/>"_s);
        QCOMPARE(story(), QString());
    }

    // One file

    void compileSavesTheProjectAndTheFileOnly()
    {
        Project *project = addBuildProject(u"fw"_s, u"main.c"_s);
        project->setModified(true);
        const Document *main = addDocument(u"main.c"_s, true);
        const Document *other = addDocument(u"other.c"_s, true);
        m_control->setCurrentFile(path(u"main.c"_s));
        story();
        m_control->buildCompileFile();
        QCOMPARE(story(), u"document.save main.c\n"
                          "window.state 2, clear page\n"
                          "fw.compile(%1, Debug)"_s.arg(path(u"main.c"_s)));
        QVERIFY(!project->isModified());
        QVERIFY(!main->modified());
        QVERIFY(other->modified());
        QCOMPARE(lookup(u"12: a.c;\n"_s), u"a.c at 12"_s);
    }

    void fileWithARelativePathIsCompiledByThatPath()
    {
        addBuildProject(u"fw"_s, u"src/main.c"_s);
        addDocument(u"src/main.c"_s, true);
        m_control->setCurrentFile(u"src/main.c"_s);
        story();
        m_control->buildCompileFile();
        QCOMPARE(story(), u"document.save main.c\n"
                          "window.state 2, clear page\n"
                          "fw.compile(src/main.c, Debug)"_s);
    }

    void compileDoesNotSaveUnmodifiedFiles()
    {
        Project *project = addBuildProject(u"fw"_s, u"main.c"_s);
        addDocument(u"main.c"_s, false);
        QVERIFY(QFile::remove(project->fileName()));
        m_control->setCurrentFile(path(u"main.c"_s));
        m_control->buildCompileFile();
        QVERIFY(!story().contains(u"save"_s));
        QVERIFY(!QFile::exists(project->fileName()));
    }

    void newerFileIsOverwrittenForACompilationOnlyIfConfirmed_data()
    {
        QTest::addColumn<bool>("overwrites");
        QTest::newRow("overwrites") << true;
        QTest::newRow("keeps") << false;
    }
    void newerFileIsOverwrittenForACompilationOnlyIfConfirmed()
    {
        QFETCH(const bool, overwrites);
        addBuildProject(u"fw"_s, u"main.c"_s);
        addDocument(u"main.c"_s, true)->newer = true;
        m_control->setCurrentFile(path(u"main.c"_s));
        story();
        answer(overwrites ? QMessageBox::Ok : QMessageBox::Cancel);
        m_control->buildCompileFile();
        const QStringList messages = takeMessages();
        QVERIFY(messages.value(0).startsWith(u"information Varnel: A newer version of this file exists on disk:"_s));
        QCOMPARE(messages.size(), 1);
        QCOMPARE(story(), overwrites ? u"document.save main.c\n"
                                       "window.state 2, clear page\n"
                                       "fw.compile(%1, Debug)"_s.arg(path(u"main.c"_s))
                                     : QString());
    }

    void unsavableProjectShowsAMessageAndTheFileIsCompiled()
    {
        Project *project = addBuildProject(u"fw"_s, u"main.c"_s);
        project->setModified(true);
        m_directory->remove(); // so that the project cannot be saved
        m_control->setCurrentFile(path(u"main.c"_s));
        answer();
        m_control->buildCompileFile();
        QCOMPARE(takeMessages(), QStringList{u"warning Varnel: The project ' - fw' could not be saved.\n\n"
                                             "Please make sure that the project file is not read-only.\n\n"
                                             "No such file or directory"_s});
        QVERIFY(story().endsWith(u"fw.compile(%1, Debug)"_s.arg(path(u"main.c"_s))));
    }

    void aFileOfTwoProjectsIsCompiledByTheCurrentOne_data()
    {
        QTest::addColumn<int>("current");
        QTest::addColumn<QString>("compiler");
        QTest::newRow("the first is current") << 0 << u"a"_s;
        QTest::newRow("the second is current") << 1 << u"b"_s;
        QTest::newRow("neither is current") << 2 << u"a"_s;
    }

    void aFileOfTwoProjectsIsCompiledByTheCurrentOne()
    {
        QFETCH(int, current);
        QFETCH(QString, compiler);
        addBuildProject(u"a"_s, u"shared.c"_s);
        addBuildProject(u"b"_s, u"shared.c"_s);
        addBuildProject(u"c"_s);
        m_workspace->setCurrentProject(current);
        m_control->setCurrentFile(path(u"shared.c"_s));
        story();
        m_control->buildCompileFile();
        QVERIFY(story().endsWith(compiler + u".compile(%1, Debug)"_s.arg(path(u"shared.c"_s))));
    }

    void compileWithoutFileProjectOrEnvironmentDoesNothing()
    {
        addBuildProject(u"fw"_s, u"main.c"_s);
        m_control->buildCompileFile(); // no file
        m_control->setCurrentFile(path(u"elsewhere.c"_s));
        m_control->buildCompileFile(); // no project
        addProject(u"plain"_s, {}, {}, u"<file path=\"plain.c\"/>"_s);
        m_control->setCurrentFile(path(u"plain.c"_s));
        m_control->buildCompileFile(); // no environment
        QCOMPARE(story(), QString());
        dropWorkspace();
        story();
        expectAssert(u"workspace"_s);
        m_control->buildCompileFile();
        QCOMPARE(story(), QString());
    }

    void theCompileCommandNamesTheCurrentFile()
    {
        QCOMPARE(m_compile->text(), u"&Compile file"_s);
        m_control->setCurrentFile(u"/work/src/main.c"_s);
        QCOMPARE(m_compile->text(), u"&Compile main.c"_s);
        m_control->setCurrentFile(u"uart.c"_s);
        QCOMPARE(m_compile->text(), u"&Compile uart.c"_s);
        m_control->setCurrentFile({});
        QCOMPARE(m_compile->text(), u"&Compile file"_s);
    }

    void compileAvailableIsEmittedWithoutACompileAction()
    {
        delete m_compile;
        m_control->setCurrentFile(u"/work/src/main.c"_s);
        QCOMPARE(m_compileAvailable, QList<bool>{false});
        QCOMPARE(m_control->currentFile(), u"/work/src/main.c"_s);
    }

    void compileIsAvailableIfThePluginCanCompile_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<int>("state");
        QTest::addColumn<bool>("canCompile");
        QTest::addColumn<bool>("asked");
        QTest::addColumn<bool>("available");
        QTest::newRow("yes") << u"main.c"_s << 1 << true << true << true;
        QTest::newRow("the plug-in returns false") << u"main.c"_s << 1 << false << true << false;
        QTest::newRow("while building") << u"main.c"_s << 2 << true << false << false;
        QTest::newRow("in a session") << u"main.c"_s << 5 << true << true << true;
        QTest::newRow("a file of no project") << u"else.c"_s << 1 << true << false << false;
        QTest::newRow("no environment") << u"plain.c"_s << 1 << true << false << false;
        QTest::newRow("no file") << QString() << 1 << true << false << false;
    }

    void compileIsAvailableIfThePluginCanCompile()
    {
        QFETCH(QString, file);
        QFETCH(int, state);
        QFETCH(bool, canCompile);
        QFETCH(bool, asked);
        QFETCH(bool, available);
        addProject(u"plain"_s, {}, {}, u"<file path=\"plain.c\"/>"_s);
        addBuildProject(u"fw"_s, u"main.c"_s);
        m_stub->script(u"{fw}"_s).canCompile = canCompile;
        be(ActivityState(state));
        m_control->setCurrentFile(file.isEmpty() ? QString() : path(file));
        QCOMPARE(m_compileAvailable, QList<bool>{available});
        QCOMPARE(story(), asked ? u"fw.canCompile(%1, Debug)"_s.arg(path(file)) : QString());
        m_activity->setState(ActivityState(state));
        QCOMPARE(m_compileAvailable, (QList<bool>{available, available}));
    }

    void exceptionInCanCompileCountsAsNo()
    {
        addBuildProject(u"fw"_s, u"main.c"_s);
        m_compileAvailable.clear();
        m_stub->script(u"{fw}"_s).on[u"canCompile"_s] = throwError;
        expectException("IBuildEnvironment::canCompile");
        m_control->setCurrentFile(path(u"main.c"_s));
        QCOMPARE(m_compileAvailable, QList<bool>{false});
    }

    // Batch build

    void buildingStateIsSetBeforeTheBatchDialogOpens()
    {
        addBuildProject(u"fw"_s);
        whenAsked([&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"newConfigurationDialog"_s);
            QCOMPARE(dialog->windowTitle(), u"Batch Build"_s);
            QCOMPARE(story(), u"window.fileSaveAll\nwindow.showOutputDock\nwindow.state 2, clear page"_s);
            QCOMPARE(lookup(u"12: a.c;\n"_s), u"a.c at 12"_s);
            click(dialog, u"RebuildButton"_s);
        });
        m_control->buildBatchBuild();
        QCOMPARE(story(), u"fw.build([Debug Release], true)"_s);
        QCOMPARE(m_activity->state(), StateBuilding);
    }

    void rejectedBatchDialogReturnsToIdle()
    {
        addBuildProject(u"fw"_s);
        whenAsked([&](QDialog *dialog) { dialog->reject(); });
        m_control->buildBatchBuild();
        QCOMPARE(story(), u"window.fileSaveAll\n"
                          "window.showOutputDock\n"
                          "window.state 2, clear page\n"
                          "window.state 1"_s);
        QCOMPARE(m_output->page(OutputWindow::Build)->toPlainText(), QString());
    }

    void batchThatEndsInsideTheCallStaysIdle()
    {
        addBuildProject(u"fw"_s);
        m_stub->script(u"{fw}"_s).on[u"clean"_s] = [&] { m_control->buildFinished(true); };
        whenAsked([&](QDialog *dialog) { click(dialog, u"CleanButton"_s); });
        m_control->buildBatchBuild();
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void aBatchThatCannotBeStartedReturnsToIdle()
    {
        addBuildProject(u"fw"_s);
        m_stub->script(u"{fw}"_s).on[u"build"_s] = throwError;
        expectException("IBuildEnvironment::build");
        whenAsked([&](QDialog *dialog) { click(dialog, u"BuildButton"_s); });
        m_control->buildBatchBuild();
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void batchWithoutEnvironmentFailsAnAssertion()
    {
        addProject(u"fw"_s, {}, {});
        expectAssert(u"buildEnvironment"_s);
        whenAsked([&](QDialog *dialog) { click(dialog, u"BuildButton"_s); });
        m_control->buildBatchBuild();
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void failedSaveStopsTheBatch()
    {
        addBuildProject(u"fw"_s);
        m_savesAll = false;
        m_control->buildBatchBuild();
        QCOMPARE(story(), u"window.fileSaveAll"_s);
    }

    void commandsWithoutAProjectFailAnAssertion_data()
    {
        QTest::addColumn<QString>("command");
        for (const QString &command :
             {u"buildBatchBuild"_s, u"buildConfigurationsNew"_s, u"buildConfigurationsEdit"_s, u"projectRepopulate"_s})
            QTest::newRow(qPrintable(command)) << command;
    }

    void commandsWithoutAProjectFailAnAssertion()
    {
        QFETCH(QString, command);
        expectAssert(u"project"_s);
        call(command);
        dropWorkspace();
        story();
        expectAssert(u"workspace"_s);
        call(command);
        QCOMPARE(story(), QString());
    }

    // Configurations, population, work before a session

    void configurationDialogsEditTheCurrentProject()
    {
        Project *project = addBuildProject(u"fw"_s);
        whenAsked([&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"newConfigurationDialog"_s);
            dialog->findChild<QLineEdit *>(u"ConfigNameEdit"_s)->setText(u"Test"_s);
            dialog->accept();
        });
        m_control->buildConfigurationsNew();
        QCOMPARE(project->properties()->configurations().join(u' '), u"Debug Release Test"_s);
        whenAsked([&](QDialog *dialog) {
            QCOMPARE(dialog->objectName(), u"editConfigurationsDialog"_s);
            dialog->reject();
        });
        m_control->buildConfigurationsEdit();
    }

    void repopulateCallsTheEnvironmentOfTheCurrentProject()
    {
        addBuildProject(u"fw"_s, {}, {IProjectPopulate::Iid});
        m_output->displayPage(OutputWindow::Debug);
        m_control->projectRepopulate();
        QCOMPARE(story(), u"window.showOutputDock\nfw.populate(Debug)"_s);
        QCOMPARE(m_output->currentPage(), m_output->page(OutputWindow::Build)); // which is not cleared
        addBuildProject(u"plain"_s);
        m_control->projectRepopulate();
        QCOMPARE(story(), u"window.showOutputDock"_s);
    }

    void extensionCommandBringsUpTheBuildPage()
    {
        addBuildProject(u"fw"_s, {}, {IExtensionCommands::Iid});
        m_stub->script(u"{fw}"_s).commands = {{u"sizes"_s, u"Show Sizes"_s, {}, true, false}};
        m_output->displayPage(OutputWindow::Debug);
        m_control->executeExtensionCommand(0);
        QCOMPARE(story(), u"window.showOutputDock\nfw.commands()\nfw.execute(sizes)"_s);
        QCOMPARE(m_output->currentPage(), m_output->page(OutputWindow::Build));
    }

    void missingPatternIsTheDefaultOfTheEnvironment()
    {
        Project *project = addBuildProject(u"fw"_s, {}, {IPropertyDefinitions::Iid});
        m_stub->script(u"{fw}"_s).propertyDefinitions =
            u"<group><propertygroup><property key=\"other\" defaultvalue=\"x\"/>"
            "<property key=\"buildMatch\" defaultvalue=\"(file)@(line);\"/></propertygroup></group>"_s;
        project->setCurrentConfiguration(u"Release"_s);
        m_control->buildBuild();
        QCOMPARE(lookup(u"main.c@12;"_s), u"main.c at 12"_s);
        QVERIFY(project->properties()->property(u"buildMatch"_s, u"Release"_s).isNull()); // nothing is stored
        project->setCurrentConfiguration(u"Debug"_s);
        m_control->buildFinished(true);
        m_control->buildBuild();
        QCOMPARE(lookup(u"12: main.c;"_s), u"main.c at 12"_s); // its own pattern
    }

    void allProjectsAreBuiltOneAfterTheOther()
    {
        addBuildProject(u"first"_s);
        addProject(u"plain"_s, {}, {});
        addBuildProject(u"last"_s);
        m_control->buildAllProjects();
        const QString first = story();
        QVERIFY2(first.contains(u"first.build([Debug], false)"_s), qPrintable(first));
        QString seen;
        m_control->buildFinished(false);
        QCOMPARE(m_activity->state(), StateBuilding);
        QTRY_VERIFY((seen += story()).endsWith(u"last.build([Debug], false)"_s));
        m_control->buildFinished(true);
        QCOMPARE(m_activity->state(), StateIdle);
        QVERIFY(!m_control->buildSucceeded()); // not all
        m_control->buildAllProjects();
        m_control->buildFinished(true);
        seen.clear();
        QTRY_VERIFY((seen += story()).endsWith(u"last.build([Debug], false)"_s));
        m_control->buildFinished(true);
        QVERIFY(m_control->buildSucceeded());
        QCOMPARE(m_activity->state(), StateIdle);
        story();
    }

    void stopEndsTheBuildOfAllProjects()
    {
        addBuildProject(u"first"_s);
        addBuildProject(u"last"_s);
        m_control->buildAllProjects();
        story();
        m_control->buildStopBuild();
        QCOMPARE(story(), u"last.stop()\nfirst.stop()"_s); // the current one, and the one that builds
        m_control->buildFinished(false);
        QCOMPARE(m_activity->state(), StateIdle);
        QCoreApplication::processEvents();
        QVERIFY(!story().contains(u"last.build"_s));
        m_control->buildBuild();
        m_control->buildFinished(true);
        QVERIFY(m_control->buildSucceeded()); // the stopped one is over
        story();
    }

    void projectRemovedBeforeItsTurnIsSkipped()
    {
        addBuildProject(u"first"_s);
        Project *gone = addBuildProject(u"last"_s);
        m_control->buildAllProjects();
        gone->setBuildEnvironment(nullptr);
        m_control->buildFinished(true);
        QCOMPARE(m_activity->state(), StateIdle);
        story();
    }

    void commandsDuringABuildAreRefused_data()
    {
        QTest::addColumn<QString>("command");
        for (const char *command :
             {"buildBuild", "buildRebuild", "buildClean", "buildAllProjects", "buildBatchBuild", "buildCompileFile"})
            QTest::newRow(command) << QString::fromLatin1(command);
    }
    void commandsDuringABuildAreRefused()
    {
        QFETCH(QString, command);
        addBuildProject(u"b"_s);
        addBuildProject(u"a"_s, u"one.c"_s);
        m_control->setCurrentFile(path(u"one.c"_s));
        m_control->buildBuild();
        m_output->outputLine(OutputWindow::Build, u"[1/2] one.c\n"_s);
        m_activity->workspace()->setCurrentProject(m_activity->workspace()->project(0));
        story();
        call(command);
        const QString calls = story();
        QVERIFY2(!calls.contains(u"a."_s) && !calls.contains(u"b."_s) && !calls.contains(u"fileSaveAll"_s),
                 qPrintable(calls));
        QCOMPARE(m_output->page(OutputWindow::Build)->toPlainText(), u"[1/2] one.c\nA build is running already."_s);
        QCOMPARE(m_activity->state(), StateBuilding);
        m_control->buildFinished(true);
        QVERIFY(m_control->buildSucceeded() && !m_control->buildStopped());
    }

    void buildThatBeginsWhileFilesAreSavedIsNotDisturbed()
    {
        addBuildProject(u"a"_s);
        m_whileSaving = [this] {
            m_whileSaving = nullptr;
            m_control->buildRebuild();
        };
        m_control->buildBuild();
        QCOMPARE(story().count(u"a.build("_s), 1);
        m_control->buildFinished(true);
        QCOMPARE(m_activity->state(), StateIdle);
    }

    /// The environment is released with the project and cannot report its end any more.
    void removalOfTheBuildingProjectEndsTheBuild()
    {
        addBuildProject(u"b"_s);
        const Project *building = addBuildProject(u"a"_s);
        m_control->buildBuild();
        story();
        m_activity->workspace()->removeProject(building);
        QVERIFY(story().contains(u"a.stop()"_s));
        QCOMPARE(m_activity->state(), StateIdle);
        QVERIFY(!m_control->buildSucceeded());
        QVERIFY(m_control->buildStopped());
        m_control->buildBuild();
        QVERIFY(story().contains(u"b.build("_s));
        m_control->buildFinished(true);
    }

    void removalOfAnotherProjectLeavesTheBuild()
    {
        const Project *other = addBuildProject(u"b"_s);
        addBuildProject(u"a"_s);
        m_control->buildBuild();
        m_activity->workspace()->removeProject(other);
        QCOMPARE(m_activity->state(), StateBuilding);
        QVERIFY(!story().contains(u"stop()"_s));
        m_control->buildFinished(true);
        QVERIFY(m_control->buildSucceeded());
    }

    void buildOfAClosedWorkspaceIsForgotten()
    {
        addBuildProject(u"a"_s);
        addBuildProject(u"b"_s);
        m_control->buildAllProjects();
        m_control->buildStopBuild();
        dropWorkspace();
        m_activity->openWorkspace(std::make_unique<ProjectWorkspace>(path(u"next.vnw"_s)));
        m_workspace = m_activity->workspace();
        m_status.clear();
        addBuildProject(u"c"_s);
        m_control->buildBuild();
        m_control->buildFinished(true);
        QVERIFY(m_control->buildSucceeded());
        QCOMPARE(m_status.size(), 1);
        QVERIFY2(m_status.first().startsWith(u"Build finished in 0."_s), qPrintable(m_status.first()));
        QVERIFY(!story().contains(u"b.build("_s));
    }

    void stopReachesAProjectThatIsNotCurrentAnyMore()
    {
        addBuildProject(u"first"_s);
        addBuildProject(u"last"_s);
        m_control->buildBuild();
        m_activity->workspace()->setCurrentProject(0);
        story();
        m_control->buildStopBuild();
        QCOMPARE(story(), u"first.stop()\nlast.stop()"_s);
    }

    void buildForDebugWithoutAStepIsNotReportedAsABuild()
    {
        Project *project = addBuildProject(u"fw"_s, {}, {IDebugBuild::Iid});
        m_status.clear();
        QVERIFY(m_control->buildForDebug(project));
        m_output->outputLine(OutputWindow::Build, u"'build/fw' is used as it is, older than its sources.\n"_s);
        m_control->buildFinished(true);
        QCOMPARE(m_status, QStringList());
        QVERIFY(m_control->buildForDebug(project));
        m_output->outputLine(OutputWindow::Build, u"[1/1] Compiling main.c\n"_s);
        m_control->buildFinished(true);
        QVERIFY(m_status.value(1).startsWith(u"Build finished in "_s));
        m_status.clear();
        QVERIFY(m_control->buildForDebug(project));
        m_control->buildFinished(false);
        QVERIFY(m_status.value(0).startsWith(u"Build failed after "_s));
    }

    void buildForDebugSetsTheBuildingState()
    {
        Project *project = addBuildProject(u"fw"_s, {}, {IDebugBuild::Iid});
        m_control->buildStopBuild();
        story();
        QVERIFY(m_control->buildForDebug(project));
        QCOMPARE(story(), u"window.state 2\nfw.buildForDebug(Debug)"_s); // the page is not cleared
        QCOMPARE(m_output->currentPage(), m_output->page(OutputWindow::Build));
        QVERIFY(!m_control->buildStopped());
        m_stub->script(u"{fw}"_s).on[u"buildForDebug"_s] = throwError;
        expectException("IDebugBuild::buildForDebug");
        QVERIFY(m_control->buildForDebug(project));
        QCOMPARE(m_activity->state(), StateIdle);
    }

    void buildForDebugWithoutTheInterfaceDoesNothing()
    {
        Project *project = addBuildProject(u"fw"_s);
        m_control->buildStopBuild();
        story();
        QVERIFY(!m_control->buildForDebug(project));
        QVERIFY(!m_control->buildForDebug(addProject(u"plain"_s, {}, {})));
        QVERIFY(!m_control->buildForDebug(nullptr));
        QCOMPARE(story(), QString());
        QVERIFY(m_control->buildStopped());
    }
};

QTEST_MAIN(BuildControlTest)
#include "tst_buildcontrol.moc"
