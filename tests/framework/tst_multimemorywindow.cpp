#include "debugcontents.h"
#include "debugpane.h"
#include "debugwindows.h"
#include "dockwindow.h"
#include "fakeservices.h"
#include "imemory.h"
#include "memoryedit.h"
#include "memorywindow.h"
#include "multimemorywindow.h"
#include "project.h"
#include "projectworkspace.h"
#include "stubfixture.h"
#include <QComboBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

// The memory windows of processors in their dock, from the state of the program to the calls of the plug-in.

using namespace Qt::StringLiterals;

namespace {
class FakeWindow : public QMainWindow, public FakeServices
{
public:
    DockWindow *addDock(const QString &objectName, const QString &caption, Qt::DockWidgetArea area) override
    {
        auto *dock = new DockWindow(objectName, caption, this);
        addDockWidget(area, dock);
        return dock;
    }
};
} // namespace

class MultiMemoryWindowTest : public QObject, private StubFixture
{
    Q_OBJECT

private:
    std::unique_ptr<FakeWindow> m_window;
    std::unique_ptr<DebugWindows> m_windows;

    Project *addProcessor(const QString &name, const QSet<QUuid> &offers = {IMemory::Iid})
    {
        StubScript &script = executionScript(name, offers);
        script.regions = {{u"RAM"_s, 3, 0, 0, 0x100, 0x1FF, false, IMemory::Byte}};
        for (uint i = 0; i < 0x100; ++i)
            script.memory[0x100 + i] = i;
        Project *project = addProject(name, {}, {});
        const InterfacePtr<IPluginObject> object(create(u'{' + name + u'}'));
        project->setExecutionEnvironment(queryInterface<IExecutionEnvironment>(object.get()).get());
        project->setModified(false);
        panes()->workspaceChanged();
        m_stub->takeCalls();
        return project;
    }
    MultiMemoryWindow *panes() const { return m_window->findChild<MultiMemoryWindow *>(u"memoryWindow"_s); }
    MemoryEdit *edit(int pane = 0) const { return panes()->widgets().at(pane)->findChild<MemoryEdit *>(); }
    void show() const
    {
        m_windows->toggle(DebugWindows::Memory);
        QCoreApplication::processEvents();
    }

    /// The calls to memories, with their processors, and without what depends on the size of the window.
    QString calls() const
    {
        QStringList calls = m_stub->takeCalls();
        calls.removeIf([](const QString &call) {
            return !call.contains(u".regions"_s) && !call.contains(u".readBlock"_s) && !call.contains(u".write"_s);
        });
        for (QString &call : calls)
            call = call.contains(u"write"_s) ? call : call.section(u'(', 0, 0);
        calls.removeDuplicates(); // a dock takes its size in several steps
        return calls.join(u' ');
    }

private Q_SLOTS:
    void init()
    {
        StubFixture::setUp();
        m_window = std::make_unique<FakeWindow>();
        m_windows = std::make_unique<DebugWindows>(*m_activity, *m_window);
        addDebugContents(*m_windows, *m_activity);
        m_window->resize(900, 600);
        m_window->show();
    }

    void cleanup()
    {
        StubFixture::dropWorkspace();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_windows.reset();
        m_window.reset();
        StubFixture::tearDown();
    }

    void memoryIsReadWhenTheProgramIsPausedAndTheDockVisible()
    {
        addProcessor(u"fw"_s);
        m_activity->setState(StateRunning);
        m_windows->updateData();
        QCOMPARE(calls(), QString()); // hidden
        show();
        QCOMPARE(calls(), u"fw.regions"_s); // running
        QVERIFY(edit()->toPlainText().startsWith(u"100 ??"_s));
        m_activity->setState(StatePaused);
        m_windows->updateData();
        QCOMPARE(calls(), u"fw.regions fw.readBlock"_s);
        QVERIFY(edit()->toPlainText().startsWith(u"100 00 01 02"_s));
        m_windows->toggle(DebugWindows::Memory);
        m_windows->updateData();
        QCOMPARE(calls(), QString());
    }

    void writtenWordsReachThePlugIn()
    {
        addProcessor(u"fw"_s);
        m_activity->setState(StatePaused);
        show();
        calls();
        edit()->setCursorPosition(0, 4);
        QTest::keyClicks(edit(), u"AB"_s);
        QTest::mouseClick(panes()->findChild<QPushButton *>(u"memoryWrite"_s), Qt::LeftButton);
        QCOMPARE(calls(), u"fw.write(3, 1, 256, 171, false) fw.readBlock"_s);
        QVERIFY(edit()->toPlainText().startsWith(u"100 AB 01 02"_s));
    }

    void step3IsAlignedWithItsMask()
    {
        addProcessor(u"fw"_s);
        executionScript(u"fw"_s, {IMemory::Iid}).regions = {
            {u"RAM"_s, 3, 0, 0, 0x100, 0x1FF, false, IMemory::Byte | IMemory::Word24}};
        m_activity->setState(StatePaused);
        show();
        auto *window = static_cast<MemoryWindow *>(panes()->widgets().constFirst());
        window->selectWord24View();
        m_stub->takeCalls();
        auto *box = window->findChild<QComboBox *>(u"memoryAddress"_s);
        box->lineEdit()->selectAll();
        QTest::keyClicks(box, u"0x147\r"_s); // which has the focus
        const QStringList reads = m_stub->takeCalls().filter(u"readBlock"_s);
        QCOMPARE(reads.size(), 1);
        QVERIFY2(reads.constFirst().startsWith(u"fw.readBlock(3, 8, 325, "_s), qPrintable(reads.constFirst()));
    }

    void onlyTheTabInFrontIsRead()
    {
        addProcessor(u"fw"_s);
        addProcessor(u"dsp"_s); // now the current one
        m_activity->setState(StatePaused);
        show();
        QCOMPARE(calls(), u"dsp.regions dsp.readBlock"_s);
        panes()->findChild<QTabWidget *>()->setCurrentIndex(0);
        QCoreApplication::processEvents();
        QCOMPARE(calls(), u"fw.regions fw.readBlock"_s);
    }

    void writesRefreshTheOtherMemoriesThatAreVisible()
    {
        addProcessor(u"fw"_s);
        addProcessor(u"dsp"_s);
        m_activity->setState(StatePaused);
        show();
        auto *tabs = panes()->findChild<QTabWidget *>();
        tabs->setCurrentIndex(0);
        QCoreApplication::processEvents();
        calls();
        edit(0)->setCursorPosition(0, 4);
        QTest::keyClicks(edit(0), u"1\r"_s);
        QCOMPARE(calls(), u"fw.write(3, 1, 256, 16, false) fw.readBlock"_s);
        tabs->setCurrentIndex(1); // it was hidden, so it is read now
        QCoreApplication::processEvents();
        QCOMPARE(calls(), u"dsp.regions dsp.readBlock"_s);
    }

    void environmentsWithoutMemoryHaveNoPane()
    {
        addProcessor(u"fw"_s, {});
        QCOMPARE(panes()->widgets().size(), 0);
        addProcessor(u"dsp"_s);
        QCOMPARE(panes()->widgets().size(), 1);
    }

    void noProcessorShowsAnIdlePane()
    {
        panes()->workspaceChanged();
        QCOMPARE(panes()->widgets().size(), 1);
        show();
        QCOMPARE(edit()->toPlainText(), QString());
        QCOMPARE(calls(), QString());
    }

    void plugInsThatThrowAreReportedOnly()
    {
        addProcessor(u"fw"_s);
        StubScript &script = m_stub->script(u"{fw}"_s);
        script.on[u"regions"_s] = throwError;
        expectException("IMemory::regions");
        show();
        QCOMPARE(edit()->toPlainText(), QString());
        script.on.clear();
        m_windows->updateData();
        QVERIFY(edit()->toPlainText().startsWith(u"100 ??"_s));
    }

    void workspaceMayCloseWhileAPlugInIsAsked()
    {
        addProcessor(u"fw"_s);
        m_activity->setState(StatePaused);
        StubScript &script = m_stub->script(u"{fw}"_s);
        bool closed = false;
        script.on[u"readBlock"_s] = [&] {
            if (!std::exchange(closed, true))
                m_activity->closeWorkspace();
        };
        show();
        QVERIFY(closed);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(m_stub->objectCount(), 0);
        QCOMPARE(edit()->toPlainText(), QString());
    }

    void fontAndColoursReachPanesMadeLater()
    {
        addProcessor(u"fw"_s);
        QFont font = edit()->font();
        font.setPointSize(17);
        m_windows->setAppearance({font, u"#dcdcdc"_s, u"#1e1f22"_s});
        QCOMPARE(edit()->font().pointSize(), 17);
        addProcessor(u"dsp"_s);
        for (const int pane : {0, 1}) {
            QCOMPARE(edit(pane)->font().pointSize(), 17);
            QCOMPARE(edit(pane)->palette().color(QPalette::Base).name(), u"#1e1f22"_s);
        }
    }
};

QTEST_MAIN(MultiMemoryWindowTest)
#include "tst_multimemorywindow.moc"
