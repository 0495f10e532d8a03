#include "../plugins/stub/stub.h"
#include "ibreakpointdetails.h"
#include "iexecutionenvironment.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "windowfixture.h"
#include <QDirIterator>
#include <QMessageBox>
#include <QPluginLoader>
#include <QPushButton>

// Breakpoints of an environment that keeps none itself: they follow the text, and come back with the workspace.

using namespace Qt::StringLiterals;

namespace {
StubControl *stub()
{
    return qobject_cast<StubControl *>(QPluginLoader(QStringLiteral(TESTPLUGIN_STUB)).instance());
}

StubScript &script()
{
    return stub()->script(u"{fw}"_s);
}

/// As environments must, after each change.
void report()
{
    if (StubObjectState *environment = stub()->object(u"fw"_s); environment && environment->executionEvents)
        environment->executionEvents->breakpointsChanged();
}

struct Plugin
{
    Plugin()
    {
        stub()->reset();
        script().label = u"fw"_s;
        script().offers = {IExecutionEnvironment::Iid, IBreakpoints::Iid};
        script().keepsBreakpoints = true;
        script().on.insert(u"setBreakpoint"_s, &report);
        script().location = {u"main.c"_s, 1};
        QCoreApplication::addLibraryPath(QFileInfo(QStringLiteral(TESTPLUGIN_STUB)).path());
    }
};

class BreakpointWindow : private Plugin, public WindowFixture
{
public:
    BreakpointWindow()
    {
        write(u"main.c"_s, "one\ntwo\nthree\nfour\nfive\n");
        write(u"fw.vnp"_s, "<project executionenvironment='{fw}'><file path='main.c'/></project>");
        openWorkspace();
        window->openFile(path(u"main.c"_s), false);
    }

    void openWorkspace() const { QVERIFY(window->openWorkspace(writeWorkspace(u"all.vnw"_s, {u"fw.vnp"_s}), false)); }

    /// "2 4-" for an enabled one in line 2 and a disabled one in line 4.
    static QString lines()
    {
        QStringList texts;
        for (const BreakpointRecord &record : script().breakpoints)
            texts += QString::number(record.locations.first().line)
                     + (record.state == BreakpointDisabled ? u"-"_s : QString());
        texts.sort();
        return texts.join(u' ');
    }
    /// The lines with a marker of an enabled breakpoint.
    [[nodiscard]] QString marked() const
    {
        QStringList texts;
        for (int line = 1; line <= view()->textDocument()->text()->blockCount(); ++line) {
            if (view()->hasMarker(line, IViewWithMarkers::EnabledBreakpointMarker))
                texts += QString::number(line);
        }
        return texts.join(u' ');
    }

    void toggle(int line) const
    {
        view()->gotoLine(line);
        window->debugToggleBreakpoint();
    }
    void insertLineAt(int line) const
    {
        QTextCursor cursor(view()->textDocument()->text()->findBlockByNumber(line - 1));
        cursor.insertText(u"new\n"_s);
        QCoreApplication::processEvents();
    }
    void removeLine(int line) const
    {
        QTextCursor cursor(view()->textDocument()->text()->findBlockByNumber(line - 1));
        cursor.movePosition(QTextCursor::NextBlock, QTextCursor::KeepAnchor);
        cursor.removeSelectedText();
        QCoreApplication::processEvents();
    }
    void undo() const
    {
        view()->undo();
        QCoreApplication::processEvents();
    }
    void redo() const
    {
        view()->redo();
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QString debugOutput() const
    {
        return window->outputWindow()->page(OutputWindow::Debug)->toPlainText();
    }
};
} // namespace

class BreakpointLinesTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Edits

    void breakpointFollowsInsertedAndRemovedLines()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.toggle(3);
        f.insertLineAt(1);
        QCOMPARE(f.lines(), u"3 4"_s);
        QCOMPARE(f.marked(), u"3 4"_s);
        f.insertLineAt(4); // in front of the second one only
        QCOMPARE(f.lines(), u"3 5"_s);
        f.removeLine(1);
        f.removeLine(1);
        QCOMPARE(f.lines(), u"1 3"_s);
        QCOMPARE(f.marked(), u"1 3"_s);
        f.undo();
        f.undo();
        QCOMPARE(f.lines(), u"3 5"_s);
    }

    void breakpointsOfALargeFileStayWhileItIsLoading()
    {
        const BreakpointWindow f;
        f.window->fileClose();
        f.open(u"main.c"_s, QByteArray("some words in a line\n").repeated(20'000));
        const int last = f.view()->textDocument()->text()->blockCount(); // until more is loaded
        for (const int line : {2, last, 9'000})
            f.toggle(line);
        const QString expected = u"2 %1 9000"_s.arg(last);
        QVERIFY(f.view()->textDocument()->isLoading());
        QCOMPARE(f.marked(), expected);
        QTRY_VERIFY(!f.view()->textDocument()->isLoading());
        QCoreApplication::processEvents();
        QCOMPARE(f.marked(), expected);
        f.insertLineAt(1);
        QCOMPARE(f.marked(), u"3 %1 9001"_s.arg(last + 1));
    }

    void typingInTheLineDoesNotMoveIt()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.view()->gotoLine(2);
        f.type(u"abc"_s);
        QTest::keyClick(f.view()->currentEdit(), Qt::Key_Return); // ends the line "abc" in front of the text
        QCoreApplication::processEvents();
        QCOMPARE(f.lines(), u"2"_s);
        f.view()->gotoLine(2);
        QTest::keyClick(f.view()->currentEdit(), Qt::Key_Return); // the whole line goes down
        QCoreApplication::processEvents();
        QCOMPARE(f.lines(), u"3"_s);
    }

    void disabledOneAndItsDetailsFollow()
    {
        BreakpointWindow f;
        script().offers += IBreakpointDetails::Iid;
        f.toggle(2);
        f.toggle(2);
        BreakpointDetails details;
        details.condition = u"i > 3"_s;
        details.logText = u"here"_s;
        script().details.insert(f.path(u"main.c"_s) + u":2"_s, details);
        f.insertLineAt(1);
        QCOMPARE(f.lines(), u"3-"_s);
        const BreakpointDetails moved = script().details.value(f.path(u"main.c"_s) + u":3"_s);
        QCOMPARE(moved.condition, u"i > 3"_s);
        QCOMPARE(moved.logText, u"here"_s);
    }

    void breakpointOfARemovedLineGoesToTheNextOne()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.removeLine(2);
        QCOMPARE(f.lines(), u"2"_s);
        QCOMPARE(f.marked(), u"2"_s);
    }

    void removalThatIsUndoneGivesTheLineItsBreakpointAgain()
    {
        const BreakpointWindow f;
        f.toggle(2);
        for (int i = 0; i < 2; ++i) { // with the same result the second time
            f.removeLine(2);
            f.insertLineAt(1);
            f.removeLine(3); // again that of the breakpoint
            QCOMPARE(f.lines(), u"3"_s);
            f.undo();
            QCOMPARE(f.lines(), u"3"_s);
            QCOMPARE(f.marked(), u"3"_s);
            f.undo();
            QCOMPARE(f.lines(), u"2"_s);
            f.undo();
            QCOMPARE(f.lines(), u"2"_s);
            QCOMPARE(f.marked(), u"2"_s);
        }
        f.removeLine(2);
        f.undo();
        f.redo();
        QCOMPARE(f.lines(), u"2"_s);
        f.undo();
        f.removeLine(1);
        QCOMPARE(f.lines(), u"1"_s);
        f.undo();
        QCOMPARE(f.lines(), u"2"_s);
        QCOMPARE(f.marked(), u"2"_s);
    }

    void insertionThatIsUndoneAndRepeatedLeavesTheBreakpointAtItsText()
    {
        const BreakpointWindow f;
        f.insertLineAt(2);
        f.toggle(2);
        f.undo(); // the line is gone, its breakpoint at the next one
        QCOMPARE(f.lines(), u"2"_s);
        f.redo();
        QCOMPARE(f.lines(), u"3"_s);
        QCOMPARE(f.marked(), u"3"_s);
    }

    void replacedTextKeepsTheLines()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.toggle(5);
        f.view()->selectAll();
        f.type(u"a\nb\nc\n"_s);
        QCoreApplication::processEvents();
        QCOMPARE(f.lines(), u"2 4"_s); // the text has four lines now
    }

    void refusedLineLeavesTheBreakpointWhereItWas()
    {
        const BreakpointWindow f;
        f.toggle(2);
        int calls = 0;
        script().on.insert(u"setBreakpoint"_s, [&calls] {
            script().setBreakpointResult = ++calls == 2 ? 1 : 0;
            report();
        });
        script().keepsBreakpoints = false;
        f.insertLineAt(1);
        QCOMPARE(calls, 3); // out of line 2, refused in line 3, back into line 2
        QCOMPARE(f.marked(), u"2"_s);
    }

    void discardedChangesGiveTheLinesBack()
    {
        BreakpointWindow f;
        f.toggle(2);
        f.insertLineAt(1);
        QCOMPARE(f.lines(), u"3"_s);
        f.answers->press(QMessageBox::No);
        f.window->fileClose();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCOMPARE(f.lines(), u"2"_s);
        f.window->openFile(f.path(u"main.c"_s), false);
        QCOMPARE(f.marked(), u"2"_s);
    }

    void savedChangesStay()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.insertLineAt(1);
        f.window->fileSave();
        f.window->fileClose();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCOMPARE(f.lines(), u"3"_s);
    }

    void reloadedFileGivesTheLinesBack()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.insertLineAt(1);
        f.window->workspace()->reopenDocument(f.path(u"main.c"_s));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCoreApplication::processEvents();
        QCOMPARE(f.lines(), u"2"_s);
        QCOMPARE(f.marked(), u"2"_s);
    }

    /// The program was built from the text before the change.
    void sessionKeepsItsLinesUntilItEnds()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.window->debugRun();
        stub()->object(u"fw"_s)->executionEvents->programStatusChanged(IExecutionEnvironment::ProgramPaused);
        QCOMPARE(f.window->activity().state(), StatePaused);
        f.insertLineAt(1);
        stub()->object(u"fw"_s)->executionEvents->breakpointsChanged();
        QCOMPARE(f.lines(), u"2"_s);
        QCOMPARE(f.marked(), u"3"_s);
        f.toggle(3); // the same one
        QCOMPARE(f.lines(), u"2-"_s);
        f.window->debugStop();
        QCoreApplication::processEvents();
        QCOMPARE(f.lines(), u"3-"_s);
    }

    void closingTheWorkspaceWhileABreakpointMovesIsPossible()
    {
        const BreakpointWindow f;
        f.toggle(2);
        bool closed = false;
        script().on.insert(u"setBreakpoint"_s, [&] {
            if (!std::exchange(closed, true))
                f.discard();
        });
        f.insertLineAt(1);
        QTRY_VERIFY(!f.window->projectWorkspace()); // after the call
        QVERIFY(closed);
    }

    // The next start

    void breakpointsComeBackWithTheWorkspace()
    {
        BreakpointWindow f;
        script().offers += IBreakpointDetails::Iid;
        f.toggle(2);
        f.toggle(4);
        f.toggle(4);
        BreakpointDetails details;
        details.condition = u"i > 3"_s;
        details.hitCount = 7;
        script().details.insert(f.path(u"main.c"_s) + u":2"_s, details);
        DataBreakpoint data;
        data.expression = u"counter"_s;
        data.address = 0xffffffff80001234;
        data.size = 4;
        data.access = DataBreakpoint::ReadWrite;
        script().dataBreakpoints = {data};
        script().breakpoints.append({{{u"disassembler:"_s, 0x101}}, BreakpointEnabled});
        f.window->closeWorkspace();
        script().breakpoints.clear(); // a new object of the plug-in has none
        script().details.clear();
        script().dataBreakpoints.clear();
        f.openWorkspace();
        QCOMPARE(f.lines(), u"2 257 4-"_s);
        const BreakpointDetails restored = script().details.value(f.path(u"main.c"_s) + u":2"_s);
        QCOMPARE(restored.condition, u"i > 3"_s);
        QCOMPARE(restored.hitCount, 7u);
        QCOMPARE(script().dataBreakpoints.size(), 1);
        QCOMPARE(script().dataBreakpoints.first().expression, u"counter"_s);
        QCOMPARE(script().dataBreakpoints.first().address, 0xffffffff80001234);
        QCOMPARE(script().dataBreakpoints.first().access, int(DataBreakpoint::ReadWrite));
        QVERIFY(f.debugOutput().isEmpty());
    }

    /// An environment may keep its breakpoints itself.
    void dataBreakpointsThatAreThereAreNotSetTwice()
    {
        BreakpointWindow f;
        script().offers += IBreakpointDetails::Iid;
        DataBreakpoint named{1, u"counter"_s, 0x100, 4, DataBreakpoint::Write, BreakpointEnabled, {}};
        DataBreakpoint read = named;
        read.id = 3;
        read.access = DataBreakpoint::Read;
        DataBreakpoint unnamed{2, {}, 0x200, 4, DataBreakpoint::Write, BreakpointEnabled, {}};
        script().dataBreakpoints = {named, unnamed, read};
        f.window->closeWorkspace();
        script().dataBreakpoints = {named, unnamed};
        f.openWorkspace();
        QStringList all;
        for (const DataBreakpoint &each : std::as_const(script().dataBreakpoints))
            all.append(each.expression + u' ' + QString::number(each.address, 16) + u' '
                       + QString::number(each.access));
        all.sort();
        QCOMPARE(all, (QStringList{u" 200 %1"_s.arg(int(DataBreakpoint::Write)),
                                   u"counter 100 %1"_s.arg(int(DataBreakpoint::Read)),
                                   u"counter 100 %1"_s.arg(int(DataBreakpoint::Write))}));
    }

    void breakpointsComeBackAfterARestart()
    {
        BreakpointWindow f;
        f.toggle(3);
        f.restart();
        script().breakpoints.clear();
        f.openWorkspace(); // and with it the file
        QCOMPARE(f.lines(), u"3"_s);
        QCOMPARE(f.marked(), u"3"_s);
    }

    void changedTextComesBackWithItsBreakpoints_data()
    {
        QTest::addColumn<bool>("windowCloses");
        QTest::addColumn<bool>("debugs");
        QTest::addColumn<bool>("saves");
        QTest::addColumn<QString>("lines");
        for (const bool windowCloses : {false, true}) {
            for (const bool debugs : {false, true}) {
                for (const bool saves : {false, true})
                    QTest::addRow("%s %s, text %s", windowCloses ? "window" : "workspace",
                                  debugs ? "in a session" : "idle", saves ? "saved" : "dropped")
                        << windowCloses << debugs << saves << (saves ? u"3"_s : u"2"_s);
            }
        }
    }
    void changedTextComesBackWithItsBreakpoints()
    {
        QFETCH(bool, windowCloses);
        QFETCH(bool, debugs);
        QFETCH(bool, saves);
        QFETCH(QString, lines);
        BreakpointWindow f;
        f.toggle(2);
        if (debugs) {
            f.window->debugRun();
            stub()->object(u"fw"_s)->executionEvents->programStatusChanged(IExecutionEnvironment::ProgramPaused);
        }
        f.insertLineAt(1);
        f.answers->press(saves ? QMessageBox::Yes : QMessageBox::No);
        if (windowCloses)
            f.restart();
        else
            f.window->closeWorkspace();
        script().breakpoints.clear();
        f.openWorkspace();
        QCOMPARE(f.lines(), lines);
        QCOMPARE(f.marked(), lines);
    }

    void refusedBreakpointIsReported()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.window->closeWorkspace();
        script().breakpoints.clear();
        script().setBreakpointResult = 1;
        f.openWorkspace();
        QVERIFY(f.debugOutput().contains(u"The breakpoint at main.c, 2 could not be set again."_s));
    }

    void refusedBreakpointIsReportedWithItsWholePath()
    {
        const BreakpointWindow f;
        f.write(u"fw.vnp"_s, "<project executionenvironment='{fw}'><file path='100%2.c'/></project>");
        f.window->closeWorkspace();
        f.openWorkspace();
        f.open(u"100%2.c"_s);
        f.toggle(2);
        f.window->closeWorkspace();
        script().breakpoints.clear();
        script().setBreakpointResult = 1;
        f.openWorkspace();
        QVERIFY2(f.debugOutput().contains(u"The breakpoint at 100%2.c, 2 could not be set again."_s),
                 qPrintable(f.debugOutput()));
    }

    /// For example when the library of the plug-in was not found in between.
    void breakpointsOfAMissingEnvironmentAreKept()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.window->closeWorkspace();
        script().breakpoints.clear();
        script().offers = {IExecutionEnvironment::Iid};
        f.openWorkspace();
        QCOMPARE(f.lines(), QString());
        f.window->closeWorkspace();
        script().offers += IBreakpoints::Iid;
        f.openWorkspace();
        QCOMPARE(f.lines(), u"2"_s);
    }

    void sessionFileWithOtherContentsIsIgnored()
    {
        const BreakpointWindow f;
        f.toggle(2);
        f.window->closeWorkspace();
        script().breakpoints.clear();
        QDirIterator walk(f.installation.path(u"state"_s), {u"*.json"_s}, QDir::Files, QDirIterator::Subdirectories);
        int changed = 0;
        while (walk.hasNext()) {
            QFile file(walk.next());
            QVERIFY(file.open(QIODevice::ReadWrite));
            QByteArray text = file.readAll();
            changed += text.contains("\"line\": 2");
            text.replace("\"line\": 2", "\"line\": -7");
            file.resize(0);
            file.seek(0);
            file.write(text);
        }
        QCOMPARE(changed, 1);
        f.openWorkspace();
        QCOMPARE(f.lines(), QString());
        QVERIFY(f.debugOutput().isEmpty());
    }
};

int main(int argc, char **argv)
{
    BreakpointLinesTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_breakpointlines.moc"
