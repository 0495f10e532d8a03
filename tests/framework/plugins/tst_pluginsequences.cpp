#include "../../plugins/stub/stub.h"
#include "activity.h"
#include "ibuildenvironment.h"
#include "idebugbuild.h"
#include "iexecutionenvironment.h"
#include "imultiprocessorsync.h"
#include "ipropertydefinitions.h"
#include "iworkspaceclient.h"
#include "windowfixture.h"
#include <QPluginLoader>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {
StubControl *stub()
{
    return qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
}

/// Replaces equal lines behind each other by one with their number.
QStringList collapsed(const QStringList &lines)
{
    QStringList result;
    for (qsizetype at = 0; at < lines.size();) {
        qsizetype next = at;
        while (next < lines.size() && lines[next] == lines[at])
            ++next;
        result.append(next - at > 1 ? lines[at] + u" (%1 times)"_s.arg(next - at) : lines[at]);
        at = next;
    }
    return result;
}
} // namespace

/// The charts of docs/plugin-sequences.md are what the program does.
class PluginSequencesTest : public QObject
{
    Q_OBJECT

    std::unique_ptr<WindowFixture> f;
    QStringList m_chart;

    static void prepareScripts(bool second)
    {
        stub()->reset();
        for (const QString &name : second ? QStringList{u"fw"_s, u"two"_s} : QStringList{u"fw"_s}) {
            StubScript &fw = stub()->script(u'{' + name + u'}');
            fw.label = name;
            fw.offers = {IExecutionEnvironment::Iid, IBreakpoints::Iid, IMemory::Iid, IRegisters::Iid,
                         IWorkspaceClient::Iid};
            fw.location = {u"main.c"_s, 2};
            fw.regions = {{u"RAM"_s, 1, 0, 0, 0x100, 0x1ff, false, IMemory::Byte}};
            fw.registers = {{u"r0"_s, 32, {}, 4, 4, {}, false}};
            if (second)
                fw.offers << IMultiProcessorSync::Iid;
            fw.group = u"probe"_s;
            fw.syncOperations = 0xf000f;
        }
        StubScript &cc = stub()->script(u"{cc}"_s);
        cc.label = u"cc"_s;
        cc.offers = {IBuildEnvironment::Iid, IDebugBuild::Iid, IWorkspaceClient::Iid};
        cc.on[u"buildForDebug"_s] = [] {
            QTimer::singleShot(0, qApp, [] { stub()->object(u"cc"_s)->buildEvents->buildFinished(true); });
        };
    }

    void takeCalls()
    {
        QCoreApplication::processEvents();
        static const QRegularExpression address(u"0x[0-9a-f]+"_s);
        const QStringList calls = stub()->takeCalls();
        for (QString call : calls)
            m_chart.append(u"    "_s + call.replace(f->path(QString()), u"PROJECT"_s).replace(address, u"…"_s));
    }
    void user(const QString &deed, const std::function<void()> &act)
    {
        m_chart.append(u"User: "_s + deed);
        act();
        takeCalls();
    }
    void report(IExecutionEnvironment::ProgramStatus status, const QString &name)
    {
        m_chart.append(u"Plug-in: programStatusChanged(%1)"_s.arg(name));
        stub()->object(u"fw"_s)->executionEvents->programStatusChanged(status);
        takeCalls();
    }
    void finishBuild()
    {
        m_chart.append(u"Plug-in: buildFinished(true)"_s);
        stub()->object(u"cc"_s)->buildEvents->buildFinished(true);
        takeCalls();
    }
    void openWorkspace()
    {
        user(u"opens the workspace"_s, [this] { QVERIFY(f->window->openWorkspace(f->path(u"all.vnw"_s), false)); });
    }
    void openFile()
    {
        user(u"opens main.c"_s, [this] { f->window->openFile(f->path(u"main.c"_s), false); });
    }
    void startSession()
    {
        user(u"starts the debugger (F5)"_s, [this] { f->window->debugRun(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
    }

    // The stories

    void open() { openWorkspace(); }
    void file()
    {
        openFile();
        user(u"closes it"_s, [this] { f->window->fileClose(); });
    }
    void build()
    {
        openFile();
        user(u"builds"_s, [this] { f->window->buildBuild(); });
        finishBuild();
        user(u"compiles main.c"_s, [this] { f->window->buildCompileFile(); });
        finishBuild();
        user(u"cleans"_s, [this] { f->window->buildClean(); });
        finishBuild();
        user(u"builds and stops the build"_s, [this] {
            f->window->buildBuild();
            f->window->buildStopBuild();
        });
        finishBuild();
    }
    void session()
    {
        startSession();
        user(u"steps over a line (F10)"_s, [this] { f->window->debugStepOver(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
        user(u"continues (F5)"_s, [this] { f->window->debugRun(); });
        report(IExecutionEnvironment::ProgramBreakpointHit, u"ProgramBreakpointHit"_s);
        user(u"restarts"_s, [this] { f->window->debugRestart(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
        user(u"stops the session"_s, [this] { f->window->debugStop(); });
    }
    void breakpoints()
    {
        openFile();
        user(u"toggles a breakpoint (F9)"_s, [this] { f->window->debugToggleBreakpoint(); });
        m_chart.append(u"Plug-in: breakpointsChanged()"_s);
        stub()->object(u"fw"_s)->executionEvents->breakpointsChanged();
        takeCalls();
    }
    void windows()
    {
        startSession();
        user(u"shows the registers"_s, [this] {
            f->window->debugToggleRegisterWindow(true);
            f->window->grab();
        });
        user(u"steps over a line (F10)"_s, [this] { f->window->debugStepOver(); });
        report(IExecutionEnvironment::ProgramPaused, u"ProgramPaused"_s);
    }
    void sync()
    {
        startSession();
        user(u"pauses"_s, [this] {
            f->window->debugRun();
            f->window->debugPause();
        });
    }
    void close()
    {
        startSession();
        user(u"closes the workspace"_s, [this] { f->window->closeWorkspace(); });
    }

private Q_SLOTS:
    void cleanup() { f.reset(); }

    void chartIsRecorded_data()
    {
        QTest::addColumn<QString>("story");
        for (const char *story : {"open", "file", "build", "session", "breakpoints", "windows", "sync", "close"})
            QTest::newRow(story) << QString::fromLatin1(story);
    }

    /// With VARNEL_WRITE_DOCS this writes the charts.
    void chartIsRecorded()
    {
        QFETCH(QString, story);
        static const QHash<QString, void (PluginSequencesTest::*)()> stories{
            {u"open"_s, &PluginSequencesTest::open},
            {u"file"_s, &PluginSequencesTest::file},
            {u"build"_s, &PluginSequencesTest::build},
            {u"session"_s, &PluginSequencesTest::session},
            {u"breakpoints"_s, &PluginSequencesTest::breakpoints},
            {u"windows"_s, &PluginSequencesTest::windows},
            {u"sync"_s, &PluginSequencesTest::sync},
            {u"close"_s, &PluginSequencesTest::close}};
        const bool second = story == "sync"_L1;
        prepareScripts(second);
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
        f = std::make_unique<WindowFixture>();
        f->write(u"main.c"_s, "one\ntwo\nthree\n");
        const QByteArray contents = "<file path='main.c'/><properties currentconfiguration='Debug'><configuration "
                                    "name='Debug'/></properties></project>";
        f->write(u"fw.vnp"_s, "<project buildenvironment='{cc}' executionenvironment='{fw}'>" + contents);
        f->write(u"two.vnp"_s, "<project executionenvironment='{two}'>" + contents);
        f->writeWorkspace(u"all.vnw"_s, second ? QStringList{u"fw.vnp"_s, u"two.vnp"_s} : QStringList{u"fw.vnp"_s});
        stub()->takeCalls();
        m_chart.clear();
        if (story != "open"_L1) {
            openWorkspace();
            m_chart.clear();
        }
        (this->*stories[story])();
        compareWithDocumentation(story, collapsed(m_chart).join(u'\n') + u'\n');
    }

private:
    static void compareWithDocumentation(const QString &story, const QString &chart)
    {
        QFile file(QStringLiteral(VARNEL_SOURCE_DIR "/docs/plugin-sequences.md"));
        const bool writes = qEnvironmentVariableIsSet("VARNEL_WRITE_DOCS");
        QVERIFY(file.open(writes ? QIODevice::ReadWrite : QIODevice::ReadOnly));
        QString text = QString::fromUtf8(file.readAll());
        const QString head = u"```sequence "_s + story + u'\n';
        const qsizetype start = text.indexOf(head) + head.size();
        const qsizetype end = text.indexOf(u"```"_s, start);
        QVERIFY(text.contains(head) && end >= start);
        if (writes) {
            text.replace(start, end - start, chart);
            file.resize(0);
            file.seek(0);
            file.write(text.toUtf8());
        } else {
            QCOMPARE(text.mid(start, end - start), chart);
        }
    }
};

int main(int argc, char **argv)
{
    PluginSequencesTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_pluginsequences.moc"
