#include "../../plugins/stub/stub.h"
#include "activity.h"
#include "baseindent.h"
#include "callplugin.h"
#include "documenttemplate.h"
#include "extensioncommands.h"
#include "guardedtemplate.h"
#include "ibuildenvironment.h"
#include "icustomdocumentplugin.h"
#include "idebugbuild.h"
#include "idockextension.h"
#include "iexecutionenvironment.h"
#include "iextensioncommands.h"
#include "ihost.h"
#include "imakefilegenerator.h"
#include "interfaceobject.h"
#include "iprojectproperties.h"
#include "iworkspaceclient.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "syntaxhighlighter.h"
#include "textdocumenttemplate.h"
#include "windowfixture.h"
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPluginLoader>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QStatusBar>
#include <QTextBlock>
#include <QThread>
#include <QToolButton>

using namespace Qt::StringLiterals;
using Status = IExecutionEnvironment;

namespace {
StubControl *stub()
{
    return qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
}

StubScript &script(const QString &label)
{
    return stub()->script(u'{' + label + u'}');
}

/// A main window with one or two projects, "fw" and "dsp", with a processor and a tool chain each ("fw-cc", "dsp-cc").
class PluginWindow : public WindowFixture
{
public:
    /// @p more sets what the program reads when it starts.
    explicit PluginWindow(int projects = 1, const std::function<void()> &more = {})
        : WindowFixture((prepare(more), QList<QByteArray>{"varnel"}))
    {
        write(u"main.c"_s, "one\ntwo\nthree\n");
        QStringList files;
        for (const QByteArray &name : QByteArrayList{"fw", "dsp"}.first(projects)) {
            files += QString::fromLatin1(name) + u".vnp"_s;
            write(files.last(), "<project buildenvironment='{" + name + "-cc}' executionenvironment='{" + name
                                    + "}'><file path='main.c'/><properties currentconfiguration='Debug'>"
                                      "<configuration name='Debug'/></properties></project>");
        }
        writeWorkspace(u"all.vnw"_s, files);
    }

    ~PluginWindow()
    {
        for (const QString &label : {u"fw"_s, u"dsp"_s, u"fw-cc"_s, u"dsp-cc"_s})
            script(label).on.clear();
    }

    void openAll() const
    {
        QVERIFY(window->openWorkspace(path(u"all.vnw"_s), false));
        QVERIFY(window->openFile(path(u"main.c"_s), false));
        stub()->takeCalls();
    }

    [[nodiscard]] ActivityState state() const { return window->activity().state(); }
    static void report(const QString &name, IExecutionEnvironment::ProgramStatus status)
    {
        stub()->object(name)->executionEvents->programStatusChanged(status);
    }
    void startSession() const
    {
        openAll();
        window->debugRun();
        report(u"fw"_s, Status::ProgramPaused);
        QCOMPARE(state(), StatePaused);
        stub()->takeCalls();
    }

    [[nodiscard]] QString page(const QString &name) const
    {
        const OutputPage *page = window->findChild<OutputWindow *>()->page(name);
        return page ? page->toPlainText() : QString();
    }

private:
    static void prepare(const std::function<void()> &more)
    {
        stub()->reset();
        if (more)
            more();
        for (const QString &name : {u"fw"_s, u"dsp"_s}) {
            script(name).label = name;
            script(name).offers = {IExecutionEnvironment::Iid, IBreakpoints::Iid, IWorkspaceClient::Iid};
            script(name).location = {u"main.c"_s, 2};
            script(name).canAttach = true;
            script(name + u"-cc"_s).label = name + u"-cc"_s;
            script(name + u"-cc"_s).offers = {IBuildEnvironment::Iid};
        }
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
    }
};

int count(const QString &call)
{
    return int(stub()->takeCalls().count(call));
}

/// Records the events of the host.
class Events : public InterfaceObject<IHostEvents, IProgressCancel>
{
public:
    void filesChanged() override { react(u"files"_s, onFiles); }
    void propertyChanged(const QString &key, const QString &configuration) override
    {
        react(u"property %1 of %2"_s.arg(key, configuration), onProperty);
    }
    void configurationChanged(const QString &configuration) override { log += u"configuration "_s + configuration; }
    void currentProjectChanged(bool own) override { log += u"current %1"_s.arg(own); }
    void cancelled(int progress) override { react(u"cancelled %1"_s.arg(progress), onCancelled); }

    QStringList log;
    std::function<void()> onFiles;
    std::function<void()> onProperty;
    std::function<void()> onCancelled;
    int depth = 0;
    int maximumDepth = 0;

private:
    void react(const QString &event, const std::function<void()> &reaction)
    {
        log += event;
        maximumDepth = qMax(maximumDepth, ++depth);
        if (reaction)
            reaction();
        --depth;
    }
};

/// A page with one widget.
class Page : public InterfaceObject<IOptionsPage>
{
public:
    QString title() override { return u"Probe"_s; }
    QWidget *createPage() override { return new QLineEdit(u"text"_s); }
    void apply(QWidget *page) override { applied = static_cast<QLineEdit *>(page)->text(); }

    QString applied;
};

/// A document that runs a function when it is asked whether its file is newer.
class PictureDocument : public Document
{
public:
    PictureDocument(DocumentTemplate *docTemplate, std::function<void()> asked)
        : Document(docTemplate), m_asked(std::move(asked))
    {}
    bool open(const QString &filename) override { return create(filename); }
    bool create(const QString &filename) override
    {
        m_name = filename;
        return true;
    }
    bool save() override { return true; }
    bool saveAs(const QString &) override { return true; }
    QDateTime lastModified() override { return {}; }
    QString filename() override { return m_name; }
    QString title() override { return m_name; }
    bool isNewerOnDisk() override
    {
        m_asked();
        return false;
    }

private:
    const std::function<void()> m_asked;
    QString m_name;
};

class PictureView : public View
{
public:
    using View::View;
    void print() override {}
    bool queryInterface(const QString &, void **) override { return false; }
    using View::update;
    void update(View *, bool) override {}
};

class PictureTemplate : public DocumentTemplate
{
public:
    explicit PictureTemplate(std::function<void()> asked)
        : DocumentTemplate(u"Picture"_s, {}, {}), m_asked(std::move(asked))
    {}
    bool canOpen(const QString &) override { return false; }
    Document *createDocument() override { return new PictureDocument(this, m_asked); }
    View *createView(Document *document) override { return new PictureView(document); }
    QString extension() override { return u"picture"_s; }

private:
    const std::function<void()> m_asked;
};
/// A language that is derived from the template of text documents.
class Language : public TextDocumentTemplate
{
public:
    Language()
        : TextDocumentTemplate(u"Assembler"_s, {}, {}, {u"asm"_s}, std::make_unique<SyntaxHighlighter>(),
                               std::make_unique<BaseIndent>())
    {}
    bool canOpen(const QString &filename) override
    {
        if (throws)
            throw std::runtime_error("boom");
        return TextDocumentTemplate::canOpen(filename);
    }

    static inline bool throws = false;
};
} // namespace

/// Reports of plug-ins in all situations, and the services that the window offers to them.
class PluginReportsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support|IDEApplication::loadPixmap)"_s));
    }

    // Reports from inside a call

    void breakpointsThatReportAChangeAreReadOnceMore()
    {
        const PluginWindow f;
        f.startSession();
        script(u"fw"_s).on[u"breakpoints"_s] = [] { stub()->object(u"fw"_s)->executionEvents->breakpointsChanged(); };
        f.report(u"fw"_s, Status::ProgramPaused);
        QCoreApplication::processEvents();
        QVERIFY(count(u"fw.breakpoints()"_s) < 10);
        QCOMPARE(f.state(), StatePaused);
    }

    void fileThatIsOpenedInAQuestionDoesNotRepeatIt_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("call");
        QTest::newRow("breakpoints") << u"fw"_s << u"breakpoints"_s;
        QTest::newRow("location") << u"fw"_s << u"currentLocation"_s;
        QTest::newRow("compilation") << u"fw-cc"_s << u"canCompile"_s;
    }

    void fileThatIsOpenedInAQuestionDoesNotRepeatIt()
    {
        QFETCH(QString, label);
        QFETCH(QString, call);
        const PluginWindow f;
        f.write(u"b.c"_s, "one\n");
        f.startSession();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        script(label).on[call] = [&] {
            QVERIFY(host->openFile(u"b.c"_s, 1, 1));
            QVERIFY(host->openFile(u"main.c"_s, 2, 1));
        };
        f.report(u"fw"_s, Status::ProgramPaused);
        QVERIFY(f.window->openFile(f.path(u"b.c"_s), false));
        QCoreApplication::processEvents();
        int calls = 0;
        const QStringList all = stub()->takeCalls();
        for (const QString &made : all)
            calls += made.startsWith(label + u'.' + call + u'(');
        QVERIFY(calls > 0);
        QVERIFY2(calls < 30, qPrintable(QString::number(calls)));
        QCOMPARE(f.state(), StatePaused);
    }

    void locationThatReportsAStopDoesNotRepeatIt()
    {
        const PluginWindow f;
        f.startSession();
        script(u"fw"_s).on[u"currentLocation"_s] = [&] { f.report(u"fw"_s, Status::ProgramPaused); };
        f.report(u"fw"_s, Status::ProgramPaused);
        QCoreApplication::processEvents();
        QVERIFY(count(u"fw.currentLocation()"_s) < 20);
        QCOMPARE(f.state(), StatePaused);
    }

    void attachQuestionThatReportsAStateDoesNotRepeatIt()
    {
        const PluginWindow f;
        f.startSession();
        script(u"fw"_s).on[u"canAttach"_s] = [&] { f.report(u"fw"_s, Status::ProgramFinished); };
        f.report(u"fw"_s, Status::ProgramRunning);
        QCoreApplication::processEvents();
        QCOMPARE(f.state(), StateFinished);
    }

    /// An expression that calls a function of the program runs it for a moment.
    void statusThatReturnsWhileItIsHandledIsShown()
    {
        const PluginWindow f;
        f.startSession();
        script(u"fw"_s).on[u"currentLocation"_s] = [&] {
            f.report(u"fw"_s, Status::ProgramRunning);
            f.report(u"fw"_s, Status::ProgramPaused);
        };
        f.report(u"fw"_s, Status::ProgramPaused);
        bool delivered = false; // after all reports that wait
        QTimer::singleShot(AfterCallDelay, f.window.get(), [&] { delivered = true; });
        QTRY_VERIFY(delivered);
        QCOMPARE(f.state(), StatePaused);
    }

    void reportOfAnotherThreadIsShown()
    {
        const PluginWindow f;
        f.startSession();
        const std::unique_ptr<QThread> thread(QThread::create([&] {
            stub()->object(u"fw"_s)->executionEvents->feedback(u"from a thread\n"_s, {}, false);
            f.report(u"fw"_s, Status::ProgramRunning);
        }));
        thread->start();
        QVERIFY(thread->wait());
        QTRY_COMPARE(f.state(), StateRunning);
        QVERIFY(f.page(u"Debug"_s).contains(u"from a thread"_s));
    }

    // Exceptions

    void exceptionIsShownOnThePageOfItsInterface()
    {
        const PluginWindow f;
        f.openAll();
        script(u"fw-cc"_s).on[u"build"_s] = [] { throw std::runtime_error("no licence"); };
        QTest::ignoreMessage(QtWarningMsg, "IBuildEnvironment::build: an exception has left the plug-in (no licence)");
        f.window->buildBuild();
        QCOMPARE(f.page(u"Build"_s), u"The plug-in 'Stub' has failed in IBuildEnvironment::build: no licence"_s);
        script(u"fw"_s).on[u"start"_s] = [] { throw std::runtime_error("no probe"); };
        QTest::ignoreMessage(QtWarningMsg,
                             "IExecutionEnvironment::start: an exception has left the plug-in (no probe)");
        f.answers->press(QMessageBox::Ok);
        f.window->debugRun();
        QVERIFY(
            f.page(u"Debug"_s).endsWith(u"The plug-in 'Stub' has failed in IExecutionEnvironment::start: no probe"_s));
    }

    /// As one that comes with each paint event.
    void exceptionThatComesAllTheTimeDoesNotFillThePage()
    {
        const PluginWindow f;
        f.openAll();
        script(u"fw"_s).on[u"programStatus"_s] = [] { throw std::runtime_error("no probe"); };
        const Activity::Environment environment = f.window->activity().currentEnvironment();
        for (int i = 0; i < 200; ++i) {
            QTest::ignoreMessage(QtWarningMsg,
                                 "IExecutionEnvironment::programStatus: an exception has left the plug-in (no probe)");
            (void)askPlugin<&IExecutionEnvironment::programStatus>(environment);
        }
        const qsizetype lines = f.page(u"Debug"_s).count(u"no probe"_s);
        QVERIFY(lines > 0 && lines < 100);
    }

    void exceptionIsShownOnThePageOfTheCommand_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("call");
        QTest::addColumn<QString>("operation");
        QTest::addColumn<QStringList>("pages");
        const QStringList build{u"Build"_s};
        QTest::newRow("makefiles") << u"fw-cc"_s << u"makefiles"_s << u"IMakefileGenerator::makefiles"_s << build;
        QTest::newRow("build before a session") << u"fw-cc"_s << u"buildForDebug"_s << u"IDebugBuild::buildForDebug"_s
                                                << QStringList{u"Build"_s, u"Debug"_s};
        QTest::newRow("command of a build environment")
            << u"fw-cc"_s << u"execute"_s << u"IExtensionCommands::execute"_s << build;
        QTest::newRow("command of an execution environment")
            << u"fw"_s << u"execute"_s << u"IExtensionCommands::execute"_s << QStringList{u"Debug"_s};
    }

    void exceptionIsShownOnThePageOfTheCommand()
    {
        QFETCH(QString, label);
        QFETCH(QString, call);
        QFETCH(QString, operation);
        QFETCH(QStringList, pages);
        const PluginWindow f;
        for (const QString &each : {u"fw"_s, u"fw-cc"_s}) {
            script(each).offers += IExtensionCommands::Iid;
            script(each).commands = {{u"check"_s, u"Check"_s, {}, true, false}};
        }
        script(u"fw-cc"_s).offers += {IMakefileGenerator::Iid, IDebugBuild::Iid};
        f.openAll();
        script(label).on[call] = [] { throw std::runtime_error("no licence"); };
        QTest::ignoreMessage(QtWarningMsg,
                             qPrintable(operation + u": an exception has left the plug-in (no licence)"_s));
        if (call == "makefiles"_L1) {
            f.window->projectGenerateMakefile();
        } else if (call == "execute"_L1) {
            const Activity &activity = f.window->activity();
            label == "fw"_L1 ? executeDebugExtension(activity, 0) : executeBuildExtension(activity.currentProject(), 0);
        } else {
            f.answers->press(QMessageBox::Ok); // the start has failed
            f.window->debugRun();
        }
        for (const QString &page : {u"Build"_s, u"Debug"_s})
            QCOMPARE(f.page(page).contains(u"has failed in %1: no licence"_s.arg(operation)), pages.contains(page));
    }

    void exceptionInAnEventOfAPluginsObjectIsCaught()
    {
        struct Thrower : QObject
        {
            bool event(QEvent *) override { throw std::runtime_error("slot"); }
        };
        const PluginWindow f;
        Thrower thrower;
        QTest::ignoreMessage(QtWarningMsg, "QObject::event: an exception has left the plug-in (slot)");
        QEvent event(QEvent::User);
        QCoreApplication::sendEvent(&thrower, &event);
        QVERIFY(f.page(u"Debug"_s).contains(u"has failed in QObject::event: slot"_s));
    }

    void exceptionOfAnUnknownTypeInAnEventIsCaught()
    {
        struct Thrower : QObject
        {
            bool event(QEvent *) override { throw 42; }
        };
        const PluginWindow f;
        Thrower thrower;
        QTest::ignoreMessage(QtWarningMsg, "QObject::event: an exception has left the plug-in (unknown exception)");
        QEvent event(QEvent::User);
        QCoreApplication::sendEvent(&thrower, &event);
        QVERIFY(f.page(u"Debug"_s).contains(u"has failed in QObject::event: unknown exception"_s));
    }

    // Builds in a session

    void sessionSurvivesACompilation()
    {
        const PluginWindow f;
        f.startSession();
        f.window->buildCompileFile();
        QCOMPARE(f.state(), StateBuilding);
        stub()->object(u"fw-cc"_s)->buildEvents->buildFinished(true);
        QCOMPARE(f.state(), StatePaused);
        f.window->debugStepOver();
        QCOMPARE(f.state(), StateRunning);
        QCOMPARE(count(u"fw.start(false)"_s), 0);
    }

    void sessionSurvivesAStoppedCompilation()
    {
        const PluginWindow f;
        f.startSession();
        f.window->buildCompileFile();
        f.window->buildStopBuild();
        stub()->object(u"fw-cc"_s)->buildEvents->buildFinished(false);
        QCOMPARE(f.state(), StatePaused);
        f.window->debugStepOver();
        QCOMPARE(f.state(), StateRunning);
        const QStringList calls = stub()->takeCalls();
        QVERIFY(calls.contains(u"fw.stepOver(main.c)"_s));
        QVERIFY(!calls.contains(u"fw.start(false)"_s));
    }

    void reportDuringACompilationIsShownAfterIt()
    {
        const PluginWindow f;
        f.startSession();
        f.window->debugRun();
        QCOMPARE(f.state(), StateRunning);
        f.window->buildCompileFile();
        f.report(u"fw"_s, Status::ProgramFinished);
        stub()->object(u"fw-cc"_s)->buildEvents->buildFinished(true);
        QCOMPARE(f.state(), StateFinished);
    }

    void earlierReportDoesNotReplaceTheStateAfterACompilation()
    {
        const PluginWindow f;
        f.startSession();
        f.window->debugRun(); // running, although the last report was a pause
        f.window->buildCompileFile();
        stub()->object(u"fw-cc"_s)->buildEvents->buildFinished(true);
        QCOMPARE(f.state(), StateRunning);
    }

    void compilationInASessionKeepsWhatTheUserSees()
    {
        const PluginWindow f;
        f.startSession();
        stub()->object(u"fw"_s)->executionEvents->statusInfo(u"12 cycles"_s, 1);
        f.view()->gotoLine(3);
        const auto *output = f.window->findChild<QDockWidget *>(u"outputDockWindow"_s);
        const auto shown = [&] {
            QStringList names;
            for (const QDockWidget *dock : f.window->findChildren<QDockWidget *>()) {
                if (!dock->isHidden() && dock != output)
                    names += dock->objectName();
            }
            for (const QLabel *label : f.window->statusBar()->findChildren<QLabel *>()) {
                if (!label->isHidden() && label->text() == "12 cycles"_L1)
                    names += label->text();
            }
            return names;
        };
        const QStringList before = shown();
        QVERIFY(before.contains(u"12 cycles"_s));
        f.window->buildCompileFile();
        QCOMPARE(f.state(), StateBuilding);
        QCOMPARE(shown(), before);
        stub()->object(u"fw-cc"_s)->buildEvents->buildFinished(true);
        QCOMPARE(f.state(), StatePaused);
        QCOMPARE(shown(), before);
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 2);
    }

    void stopDuringACompilationIsShownAfterIt()
    {
        const PluginWindow f;
        f.startSession();
        f.view()->gotoLine(3);
        f.window->buildCompileFile();
        script(u"fw"_s).location = {u"main.c"_s, 1};
        f.report(u"fw"_s, Status::ProgramPaused);
        stub()->object(u"fw-cc"_s)->buildEvents->buildFinished(true);
        QCOMPARE(f.state(), StatePaused);
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 0);
    }

    void workspaceThatIsClosedDuringACompilationEndsTheSession()
    {
        const PluginWindow f;
        f.startSession();
        f.window->buildCompileFile();
        QVERIFY(f.window->closeWorkspace());
        QVERIFY(stub()->takeCalls().contains(u"fw.stop()"_s));
    }

    // The contents of a project

    void contentsAreThoseOfTheSendersProject()
    {
        const PluginWindow f(2);
        f.openAll();
        const QList<QPointer<Project>> projects = f.window->activity().projects();
        QCOMPARE(f.window->activity().currentProject(), projects[0].data());
        stub()->object(u"dsp-cc"_s)->buildEvents->xmlFeedback(u"<project><file path='new.c'/></project>"_s);
        QVERIFY(projects[0]->containsFile(f.path(u"main.c"_s)));
        QVERIFY(projects[1]->containsFile(f.path(u"new.c"_s)));
        QVERIFY(!projects[1]->containsFile(f.path(u"main.c"_s)));
    }

    void contentsMayArriveInsideACall_data()
    {
        QTest::addColumn<QString>("label");
        QTest::addColumn<QString>("call");
        for (const QString &call : {u"build"_s, u"stop"_s, u"canCompile"_s})
            QTest::newRow(qPrintable(call)) << u"fw-cc"_s << call;
        for (const QString &call : {u"canAttach"_s, u"start"_s, u"currentLocation"_s, u"breakpoints"_s})
            QTest::newRow(qPrintable(call)) << u"fw"_s << call;
    }

    void contentsMayArriveInsideACall()
    {
        QFETCH(QString, label);
        QFETCH(QString, call);
        const PluginWindow f;
        f.openAll();
        const auto events = shareInterface(stub()->object(u"fw-cc"_s)->buildEvents.get());
        Project *project = f.window->activity().currentProject();
        bool duringCall = false;
        script(label).on[call] = [&] {
            script(label).on.clear();
            events->xmlFeedback(u"<project><file path='new.c'/></project>"_s);
            duringCall = project->containsFile(f.path(u"new.c"_s));
        };
        f.window->buildBuild();
        f.window->buildStopBuild();
        events->buildFinished(true);
        f.window->debugRun();
        f.report(u"fw"_s, Status::ProgramPaused);
        QVERIFY(script(label).on.isEmpty());
        QVERIFY(!duringCall);
        QTRY_VERIFY(project->containsFile(f.path(u"new.c"_s)));
        QVERIFY(!project->containsFile(f.path(u"main.c"_s)));
        QCOMPARE(f.state(), StatePaused);
    }

    void unreadableContentsChangeNothingAndAreReported()
    {
        const PluginWindow f;
        f.openAll();
        stub()->object(u"fw-cc"_s)->buildEvents->xmlFeedback(u"<project><file path='new.c'>"_s);
        QVERIFY(f.window->activity().currentProject()->containsFile(f.path(u"main.c"_s)));
        QVERIFY(!f.window->activity().currentProject()->isModified());
        QVERIFY(
            f.page(u"Build"_s)
                .startsWith(u"The contents that the build environment has sent for project 'fw' cannot be read: "_s));
    }

    void contentsWithFoldersThatAreTooDeepChangeNothingAndAreReported()
    {
        const PluginWindow f;
        f.openAll();
        const QString deep =
            u"<project>"_s + u"<folder name='f'>"_s.repeated(1001) + u"</folder>"_s.repeated(1001) + u"</project>"_s;
        stub()->object(u"fw-cc"_s)->buildEvents->xmlFeedback(deep);
        const Project *project = f.window->activity().currentProject();
        QVERIFY(project->containsFile(f.path(u"main.c"_s)));
        QVERIFY(project->openedOK());
        QVERIFY(!project->isModified());
        QVERIFY(f.page(u"Build"_s).contains(u"Folders are nested too deeply."_s));
    }

    // Starts

    void laterEnvironmentThatCannotStartStopsTheEarlierOnes()
    {
        const PluginWindow f(2);
        f.openAll();
        script(u"dsp"_s).started = false;
        f.answers->press(QMessageBox::Ok);
        f.window->debugRun();
        const QStringList calls = stub()->takeCalls();
        QVERIFY(calls.contains(u"fw.start(false)"_s));
        QVERIFY(calls.contains(u"fw.stop()"_s));
        QVERIFY(!calls.contains(u"dsp.stop()"_s));
        QCOMPARE(f.state(), StateIdle);
    }

    void attachWithoutAReportTakesTheStatus_data()
    {
        QTest::addColumn<int>("projects");
        QTest::addColumn<int>("status");
        QTest::addColumn<int>("state");
        QTest::newRow("paused") << 1 << int(Status::ProgramPaused) << int(StatePaused);
        QTest::newRow("running, two projects") << 2 << int(Status::ProgramRunning) << int(StateRunning);
        QTest::newRow("foreign number") << 1 << 77 << int(StateUnknown);
    }

    void attachWithoutAReportTakesTheStatus()
    {
        QFETCH(int, projects);
        QFETCH(int, status);
        QFETCH(int, state);
        const PluginWindow f(projects);
        f.openAll();
        script(u"fw"_s).programStatus = Status::ProgramStatus(status);
        f.window->debugAttach();
        QCOMPARE(int(f.state()), state);
        f.window->debugStop();
        QCOMPARE(f.state(), StateIdle);
    }

    void startInTheBackgroundShowsItsSteps()
    {
        const PluginWindow f;
        f.openAll();
        script(u"fw"_s).offers += IProgressiveStart::Iid;
        QString label;
        script(u"fw"_s).on[u"startInBackground"_s] = [&] {
            QTimer::singleShot(0, f.window.get(), [&] {
                stub()->object(u"fw"_s)->progress->progress(u"Loading"_s, 40);
                const auto *dialog = f.window->findChild<QProgressDialog *>();
                label = u"%1 %2"_s.arg(dialog->labelText()).arg(dialog->value());
                stub()->object(u"fw"_s)->progress->finished(true, {});
                stub()->object(u"fw"_s)->progress->finished(false, u"second"_s);
            });
        };
        f.window->debugRun();
        QCOMPARE(label, u"Loading 40"_s);
        QCOMPARE(f.state(), StateRunning);
        QVERIFY(!f.window->findChild<QProgressDialog *>());
        stub()->object(u"fw"_s)->progress.reset();
    }

    void failureInTheBackgroundShowsItsReason()
    {
        const PluginWindow f;
        f.openAll();
        script(u"fw"_s).offers += IProgressiveStart::Iid;
        script(u"fw"_s).on[u"startInBackground"_s] = [] {
            stub()->object(u"fw"_s)->progress->finished(false, u"No probe was found."_s);
        };
        f.answers->press(QMessageBox::Ok);
        f.window->debugRun();
        QVERIFY(f.page(u"Debug"_s).contains(u"No probe was found."_s));
        QCOMPARE(f.state(), StateIdle);
        stub()->object(u"fw"_s)->progress.reset();
    }

    void startInTheBackgroundCanBeCancelled()
    {
        const PluginWindow f;
        f.openAll();
        script(u"fw"_s).offers += IProgressiveStart::Iid;
        script(u"fw"_s).on[u"startInBackground"_s] = [&] {
            QTimer::singleShot(0, f.window.get(),
                               [&] { f.window->findChild<QProgressDialog *>()->findChild<QPushButton *>()->click(); });
        };
        f.window->debugRun();
        QCOMPARE(f.state(), StateIdle);
        const QStringList calls = stub()->takeCalls();
        QVERIFY(calls.indexOf(u"fw.cancelStart()"_s) > 0);
        QVERIFY(calls.indexOf(u"fw.stop()"_s) > calls.indexOf(u"fw.cancelStart()"_s));
        QVERIFY(f.answers->shown.isEmpty());
        stub()->object(u"fw"_s)->progress->finished(true, {}); // too late
        stub()->object(u"fw"_s)->progress.reset();
    }

    void workspaceCanBeClosedDuringAStartInTheBackground()
    {
        const PluginWindow f;
        f.openAll();
        script(u"fw"_s).offers += IProgressiveStart::Iid;
        script(u"fw"_s).on[u"startInBackground"_s] = [&] {
            QTimer::singleShot(0, f.window.get(), [&] {
                stub()->object(u"fw"_s)->progress.reset();
                f.window->closeWorkspace();
            });
        };
        f.window->debugRun();
        QCOMPARE(f.state(), StateNoWorkspace);
        QCOMPARE(stub()->objectCount(), 0);
    }

    void restartInTheBackgroundEndsWithItsReport()
    {
        const PluginWindow f;
        f.startSession();
        script(u"fw"_s).on[u"restart"_s] = [&] { f.report(u"fw"_s, Status::ProgramRunning); };
        f.window->debugRestart();
        QCOMPARE(f.state(), StateRunning);
        f.report(u"fw"_s, Status::ProgramPaused);
        QCOMPARE(f.state(), StatePaused);
        script(u"fw"_s).on.clear();
        f.window->debugRestart();
        QCOMPARE(f.state(), StatePaused);
    }

    // The host

    void hostIsReachedThroughTheQueryObject()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        QVERIFY(host);
        QCOMPARE(host->hostVersion(), u"2.9.0"_s);
        QVERIFY(!queryInterface<IBuildEvents>(stub()->object(u"fw"_s)->query.get()));
    }

    void hostOpensAFileAtAColumn()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        QVERIFY(host->openFile(u"main.c"_s, 3, 4));
        const QTextCursor cursor = f.view()->currentEdit()->textCursor();
        QCOMPARE(cursor.blockNumber(), 2);
        QCOMPARE(cursor.positionInBlock(), 3);
        QVERIFY(host->openFile(f.path(u"main.c"_s), 1, 99));
        QCOMPARE(f.view()->currentEdit()->textCursor().positionInBlock(), 3); // at the end of "one"
        QVERIFY(!host->openFile({}, 1, 1));
    }

    /// The call may come while the window is painted or while its docks are arranged.
    void fileThatIsOpenedInsideACallAppearsAfterIt()
    {
        const PluginWindow f;
        f.openAll();
        const QString other = f.write(u"other.c"_s, "one\ntwo\n");
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        QStringList during;
        bool known = false;
        bool missing = true;
        script(u"fw"_s).on[u"canAttach"_s] = [&] {
            script(u"fw"_s).on.clear();
            known = host->openFile(other, 2, 0);
            missing = host->openFile(f.path(u"missing.c"_s), 1, 0);
            during = f.openFiles();
        };
        f.answers->press(QMessageBox::Ok); // there is no such file
        f.window->buildBuild();
        QVERIFY(known && !missing);
        QCOMPARE(during, QStringList{u"main.c"_s});
        QTRY_VERIFY(f.openFiles().contains(u"other.c"_s));
        QTRY_VERIFY(f.answers->allGiven());
    }

    void fileThatIsOpenedTwiceInAQuestionShowsTheSecondPlace()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        script(u"fw"_s).on[u"canAttach"_s] = [&] {
            script(u"fw"_s).on.clear();
            host->openFile(u"main.c"_s, 3, 1);
            host->openFile(u"main.c"_s, 2, 2);
        };
        f.window->buildBuild();
        const auto place = [&] {
            const QTextCursor cursor = f.view()->currentEdit()->textCursor();
            return std::pair(cursor.blockNumber(), cursor.positionInBlock());
        };
        QTRY_COMPARE(place(), std::pair(1, 1));
    }

    void lastMessageStays()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        script(u"fw-cc"_s).on[u"build"_s] = [&] { host->showMessage(u"Building"_s, 0); };
        f.window->buildBuild();
        host->showMessage(u"make was not found"_s, 0);
        QTRY_COMPARE(f.window->statusBar()->currentMessage(), u"make was not found"_s);
        bool delivered = false; // after all changes that wait
        QTimer::singleShot(AfterCallDelay, f.window.get(), [&] { delivered = true; });
        QTRY_VERIFY(delivered);
        QCOMPARE(f.window->statusBar()->currentMessage(), u"make was not found"_s);
    }

    void messageThatReturnsInsideAQuestionStays()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        script(u"fw"_s).on[u"canAttach"_s] = [&] {
            script(u"fw"_s).on.clear();
            for (const QString &text : {u"Connected"_s, u"Reading"_s, u"Connected"_s})
                host->showMessage(text, 0);
        };
        f.window->buildBuild();
        QTRY_COMPARE(f.window->statusBar()->currentMessage(), u"Connected"_s);
        bool delivered = false;
        QTimer::singleShot(AfterCallDelay, f.window.get(), [&] { delivered = true; });
        QTRY_VERIFY(delivered);
        QCOMPARE(f.window->statusBar()->currentMessage(), u"Connected"_s);
    }

    void diagnosticsAreListedAndOpenTheirPlaces()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        host->output(u"Check"_s, u"text\n"_s);
        host->setDiagnostics(u"Check"_s, {{Diagnostic::Note, {}, 0, 0, u"2 messages"_s, {}},
                                          {Diagnostic::Warning, u"main.c"_s, 3, 2, u"unused"_s, u"-Wunused"_s},
                                          {Diagnostic::Error, u"main.c"_s, 2, 0, u"expected\n;"_s, {}}});
        QCOMPARE(f.page(u"Check"_s), u"text\nmain.c:2: error: expected ;\nmain.c:3:2: warning: unused [-Wunused]\n"
                                     "note: 2 messages"_s);
        host->showOutput(u"Check"_s);
        const auto *output = f.window->findChild<OutputWindow *>();
        QCOMPARE(output->currentPage(), output->page(u"Check"_s));
        f.window->editLookupNextLine();
        f.window->editLookupNextLine();
        QCOMPARE(f.view()->currentEdit()->textCursor().blockNumber(), 2);
        QCOMPARE(f.view()->currentEdit()->textCursor().positionInBlock(), 1);
        host->setDiagnostics(u"Check"_s, {});
        QCOMPARE(f.page(u"Check"_s), u"text"_s);
        host->setDiagnostics(u"Other"_s, {});
        QVERIFY(!output->page(u"Other"_s));
    }

    void diagnosticsOfOtherProjectsStay()
    {
        const PluginWindow f(2);
        f.openAll();
        const auto fw = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const auto dsp = queryInterface<IHost>(stub()->object(u"dsp"_s)->query.get());
        fw->setDiagnostics(u"Check"_s, {{Diagnostic::Error, {}, 0, 0, u"1"_s, {}}});
        dsp->setDiagnostics(u"Check"_s, {{Diagnostic::Error, {}, 0, 0, u"2"_s, {}}});
        fw->setDiagnostics(u"Check"_s, {{Diagnostic::Note, {}, 0, 0, u"3"_s, {}}});
        QCOMPARE(f.page(u"Check"_s), u"error: 2\nnote: 3"_s);
    }

    void diagnosticsOnTheBuildPageKeepItsOutput()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const auto events = shareInterface(stub()->object(u"fw-cc"_s)->buildEvents.get());
        events->feedback(u"main.c(1): error: a\n"_s);
        host->setDiagnostics({}, {{Diagnostic::Warning, u"main.c"_s, 1, 0, u"old"_s, {}}});
        events->feedback(u"link"_s);
        host->setDiagnostics({}, {{Diagnostic::Warning, u"main.c"_s, 1, 0, u"new"_s, {}}});
        QCOMPARE(f.page(u"Build"_s), u"main.c(1): error: a\nlink\nmain.c:1: warning: new"_s);
        const auto *page = f.window->findChild<OutputWindow *>()->page(OutputWindow::Build);
        QCOMPARE(page->errors(), 1);
    }

    void failureBeforeThereIsAWindowIsShownInIt()
    {
        stub()->reset();
        stub()->hooks().onCall = [](const QString &call) {
            if (call == "IPluginFactory::featureList"_L1)
                throw std::runtime_error("no licence");
        };
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
        QTest::ignoreMessage(QtWarningMsg,
                             QRegularExpression(u"^IPluginFactory::featureList \\(.*stub.*\\): an exception "
                                                "has left the plug-in \\(no licence\\)$"_s));
        const WindowFixture f;
        stub()->hooks() = {};
        const QString text = f.window->findChild<OutputWindow *>()->page(OutputWindow::Debug)->toPlainText();
        QVERIFY2(text.startsWith(u"The plug-in 'Stub' has failed in IPluginFactory::featureList ("_s),
                 qPrintable(text));
        QVERIFY2(text.contains(u"): no licence"_s), qPrintable(text));
    }

    void outcomeOfWorkIsShown()
    {
        const PluginWindow f;
        f.openAll();
        const auto finish = [](bool success) {
            const auto events = shareInterface(stub()->object(u"fw-cc"_s)->buildEvents.get());
            events->feedback(u"[3/17] Compiling main.c\n"_s);
            events->buildFinished(success);
        };
        const auto shown = [&] { return f.window->statusBar()->currentMessage().section(u' ', 0, 1); };
        f.window->buildBuild();
        f.window->buildStopBuild();
        finish(false);
        QCOMPARE(shown(), u"Build stopped"_s);
        f.window->buildClean(); // keeps the mark of the stopped build
        finish(true);
        QCOMPARE(shown(), u"Build finished"_s);
        f.window->buildBuild();
        finish(false);
        QCOMPARE(shown(), u"Build failed"_s);
        f.answers->meet([](QDialog *dialog) { dialog->findChild<QPushButton *>(u"BuildButton"_s)->click(); });
        f.window->buildBatchBuild();
        QCOMPARE(f.state(), StateBuilding);
        finish(true);
        QCOMPARE(shown(), u"Build finished"_s);
    }

    void progressIsShownAndCancelled()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const InterfacePtr<Events> events(new Events);
        const int number = host->beginProgress(u"Flashing"_s, events.get());
        auto *widget = f.window->statusBar()->findChild<QWidget *>(u"PluginProgress%1"_s.arg(number));
        QVERIFY(widget);
        host->setProgress(number, 40);
        QCOMPARE(widget->findChild<QProgressBar *>()->value(), 40);
        widget->findChild<QToolButton *>()->click();
        widget->findChild<QToolButton *>()->click();
        QCOMPARE(events->log, QStringList(u"cancelled %1"_s.arg(number)));
        const QPointer<QWidget> shown(widget);
        host->endProgress(number);
        host->endProgress(number);
        host->setProgress(number, 50);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!shown);
    }

    /// Its button is in its event then.
    void progressOfAProjectThatIsRemovedWhenItIsCancelledIsDeletedLater()
    {
        const PluginWindow f(2);
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const InterfacePtr<Events> events(new Events);
        const int number = host->beginProgress(u"Flashing"_s, events.get());
        const QPointer<QWidget> widget = f.window->statusBar()->findChild<QWidget *>(u"PluginProgress%1"_s.arg(number));
        QVERIFY(widget);
        bool existed = false;
        bool hidden = false;
        events->onCancelled = [&] {
            f.window->projectWorkspace()->removeProject(f.window->activity().projects()[0]);
            existed = widget;
            hidden = !widget || widget->isHidden();
        };
        widget->findChild<QToolButton *>()->click();
        QVERIFY(existed && hidden);
        events->addRef();
        QCOMPARE(events->release(), 1ul);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!widget);
    }

    void settingsAreThoseOfThePlugin()
    {
        const PluginWindow f(2);
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const auto other = queryInterface<IHost>(stub()->object(u"dsp"_s)->query.get());
        QCOMPARE(host->setting(u"probe/port"_s, 7), QVariant(7));
        host->setSetting(u"probe/port"_s, 8);
        QCOMPARE(host->setting(u"probe/port"_s, 7).toInt(), 8);
        QCOMPARE(f.settings()->value(u"Plugins/fw/probe/port"_s).toInt(), 8);
        QCOMPARE(other->setting(u"probe/port"_s, 7), QVariant(7));
        host->setSetting(u"probe/port"_s, {});
        QVERIFY(!f.settings()->contains(u"Plugins/fw/probe/port"_s));
    }

    void optionsPageIsShownAndApplied()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const InterfacePtr<Page> page(new Page);
        host->addOptionsPage(page.get());
        f.answers->meet([](QDialog *dialog) {
            const auto *tabs = dialog->findChild<QTabWidget *>();
            QCOMPARE(tabs->tabText(tabs->count() - 1), u"Probe"_s);
            static_cast<QLineEdit *>(tabs->widget(tabs->count() - 1))->setText(u"changed"_s);
            dialog->accept();
        });
        f.window->toolsOptions();
        QCOMPARE(page->applied, u"changed"_s);
        f.window->closeWorkspace();
        page->addRef();
        QCOMPARE(page->release(), 1ul);
    }

    void eventsOfTheProjectAreReported()
    {
        const PluginWindow f(2);
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const InterfacePtr<Events> events(new Events);
        host->addEvents(events.get());
        Project *project = f.window->activity().projects()[0];
        project->addFiles({f.path(u"b.c"_s)}, nullptr);
        project->properties()->setProperty(u"key"_s, u"value"_s, u"Debug"_s);
        project->setCurrentConfiguration(u"Release"_s);
        f.window->projectWorkspace()->setCurrentProject(1);
        f.window->projectWorkspace()->setCurrentProject(0);
        QCOMPARE(events->log, (QStringList{u"files"_s, u"property key of Debug"_s, u"configuration Release"_s,
                                           u"current 0"_s, u"current 1"_s}));
        events->log.clear();
        host->removeEvents(events.get());
        project->setCurrentConfiguration(u"Debug"_s);
        QVERIFY(events->log.isEmpty());
        events->addRef();
        QCOMPARE(events->release(), 1ul);
    }

    void otherChangesOfTheProjectAreReported()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const InterfacePtr<Events> events(new Events);
        Project *project = f.window->activity().projects()[0];
        project->properties()->setProperty(u"key"_s, u"value"_s, u"Debug"_s);
        project->save();
        host->addEvents(events.get());
        const auto log = [&] { return std::exchange(events->log, {}); };
        project->properties()->setProperty(u"key"_s, u"value"_s, u"Debug"_s);
        QCOMPARE(log(), QStringList());
        project->properties()->removeProperty(u"key"_s, u"Debug"_s);
        QCOMPARE(log(), QStringList(u"property key of Debug"_s));
        project->properties()->addConfiguration(u"Release"_s);
        QCOMPARE(log(), QStringList(u"configuration Debug"_s));
        project->properties()->removeConfiguration(u"Release"_s);
        QCOMPARE(log(), QStringList(u"configuration Debug"_s));
        stub()->object(u"fw-cc"_s)->buildEvents->xmlFeedback(u"<project><file path='new.c'/></project>"_s);
        QCOMPARE(log(), (QStringList{u"files"_s, u"configuration Debug"_s}));
        f.window->activity().reloadProject(project);
        QCOMPARE(log(), (QStringList{u"files"_s, u"configuration Debug"_s, u"current 1"_s}));
    }

    void receiverOfEventsMayMakeChanges()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const auto project = shareInterface(stub()->object(u"fw"_s)->project.get());
        const InterfacePtr<IProjectProperties> properties(project->properties());
        const InterfacePtr<Events> events(new Events);
        events->onProperty = [&] {
            if (events->log.size() < 20) // a property that is derived from another one, and a number that changes
                properties->setProperty(u"derived"_s, u"value"_s, u"Debug"_s);
        };
        events->onFiles = [&] {
            if (events->log.size() < 20)
                project->addFiles({f.path(u"%1.c"_s.arg(events->log.size()))});
        };
        host->addEvents(events.get());
        properties->setProperty(u"key"_s, u"value"_s, u"Debug"_s);
        QTRY_COMPARE(events->log, (QStringList{u"property key of Debug"_s, u"property derived of Debug"_s}));
        events->log.clear();
        project->addFiles({f.path(u"b.c"_s)});
        QVERIFY(events->log.size() < 3); // the others follow from the event loop
        QTRY_COMPARE(events->log.size(), 20);
        QCOMPARE(events->depth, 0);
        QCOMPARE(events->maximumDepth, 1);
    }

    /// Another reference to the old plug-in objects must not keep what they have added to the window.
    void hostOfAnUnboundProjectDoesNothing_data()
    {
        QTest::addColumn<bool>("removed");
        QTest::newRow("reloaded with another option") << false;
        QTest::newRow("removed") << true;
    }

    void hostOfAnUnboundProjectDoesNothing()
    {
        QFETCH(bool, removed);
        const PluginWindow f(2);
        f.openAll();
        const auto query = shareInterface(stub()->object(u"fw"_s)->query.get());
        const auto host = queryInterface<IHost>(query.get());
        const InterfacePtr<Events> events(new Events);
        const InterfacePtr<Page> page(new Page);
        host->addEvents(events.get());
        host->addOptionsPage(page.get());
        host->setSetting(u"port"_s, 8);
        const QPointer<Project> project = f.window->activity().projects()[0];
        if (removed) {
            f.window->projectWorkspace()->removeProject(project);
        } else {
            QByteArray content = f.read(u"fw.vnp"_s);
            f.write(u"fw.vnp"_s,
                    content.replace("executionenvironment=", "buildenvironmentoption='x' executionenvironment="));
            QVERIFY(f.window->activity().currentProject() == project);
            f.window->activity().reloadProject(project);
        }
        events->addRef();
        QCOMPARE(events->release(), 1ul);
        page->addRef();
        QCOMPARE(page->release(), 1ul);
        QCOMPARE(host->setting(u"port"_s, 3), QVariant(3));
        host->addEvents(events.get());
        events->addRef();
        QCOMPARE(events->release(), 1ul);
        if (!removed) {
            const auto newHost = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
            QCOMPARE(newHost->setting(u"port"_s, 3).toInt(), 8);
        }
    }

    void hostWithoutItsProjectDoesNothing()
    {
        const PluginWindow f;
        f.openAll();
        const auto host = queryInterface<IHost>(stub()->object(u"fw"_s)->query.get());
        const InterfacePtr<Events> events(new Events);
        host->addEvents(events.get());
        f.discard();
        events->addRef();
        QCOMPARE(events->release(), 1ul);
        QVERIFY(!host->openFile(u"main.c"_s, 1, 1));
        host->output({}, u"late\n"_s);
        host->showMessage(u"late"_s, 0);
        host->endProgress(host->beginProgress(u"late"_s, events.get()));
        host->addOptionsPage(nullptr);
        QCOMPARE(host->setting(u"key"_s, 3), QVariant(3));
        QCOMPARE(f.page(u"Build"_s), QString());
    }

    // Documents

    /// A function of a document may run an event loop, in which the user closes another one.
    void documentsThatCloseWhileAllAreCheckedAreLeftOut()
    {
        const PluginWindow f;
        f.openAll();
        int asked = 0;
        auto kind = std::make_unique<PictureTemplate>([&] {
            ++asked;
            for (const QPointer<View> &view : f.window->viewManager()->views().guarded()) {
                if (view && view != f.window->viewManager()->currentView())
                    view->close();
            }
        });
        f.window->workspace()->addTemplate(guardedTemplate(std::move(kind)).release());
        for (const QString &name : {u"a.picture"_s, u"b.picture"_s, u"c.picture"_s}) {
            f.write(name, "x");
            QVERIFY(f.window->workspace()->newDocument(f.window->workspace()->templates().last(), f.path(name)));
        }
        f.window->fileSaveAll();
        QVERIFY2(asked < 3, "a document without a view was asked");
        QTRY_COMPARE(f.window->viewManager()->views().size(), 1);
    }

    /// A template of text documents represents itself, also one that a plug-in has derived from it.
    void exceptionOfALanguageDoesNotEndTheCreationOfAFile()
    {
        const PluginWindow f(1, [] {
            script(u"language"_s).type = IPluginObject::CustomDocument;
            script(u"language"_s).offers = {ICustomDocumentPlugin::Iid};
            script(u"language"_s).documentTemplate = [] { return new Language; };
        });
        f.installation.write(u"data/filetemplates/start/template.xml"_s,
                             "<template><displayname>Start</displayname></template>");
        f.installation.write(u"data/filetemplates/start/$name$.start"_s, "text");
        f.openAll();
        Language::throws = true;
        QTest::ignoreMessage(QtWarningMsg, "DocumentTemplate::canOpen: an exception has left the plug-in (boom)");
        const auto choose = [](QDialog *dialog) {
            auto *list = dialog->findChild<QListWidget *>(u"fileIconView"_s);
            list->setCurrentItem(list->findItems(u"Start"_s, Qt::MatchExactly).value(0));
            dialog->findChild<QLineEdit *>(u"nameEdit"_s)->setText(u"new"_s);
            QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
        };
        f.answers->meet(choose);
        f.window->fileNew();
        QVERIFY(f.answers->allGiven());
        Language::throws = false;
        QVERIFY(f.window->viewManager()->currentDocument()->filename().endsWith("/new.start"_L1));
    }

    void emptyFileIsNotAdded()
    {
        const PluginWindow f;
        f.openAll();
        stub()->object(u"fw"_s)->project->addFiles({QString(), f.path(u"b.c"_s)});
        QCOMPARE(f.window->activity().currentProject()->files({}, nullptr).size(), 2);
    }
};

int main(int argc, char **argv)
{
    PluginReportsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pluginreports.moc"
