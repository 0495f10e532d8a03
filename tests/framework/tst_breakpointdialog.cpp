#include "breakpointdialog.h"
#include "breakpointtext.h"
#include "dialoganswers.h"
#include "dialogprobe.h"
#include "ibreakpoints.h"
#include "isourcemapping.h"
#include "isymbols64.h"
#include "projecttreeitem.h"
#include "stubfixture.h"
#include <QHeaderView>
#include <QLineEdit>

using namespace Qt::StringLiterals;

/// The dialog that shows and changes the breakpoints of all projects.
class BreakpointDialogTest : public QObject, protected StubFixture
{
    Q_OBJECT

private:
    std::unique_ptr<BreakpointDialog> m_dialog;
    std::unique_ptr<DialogAnswers> m_answers;

    /// A project "<label>.vnp" with main.c and <label>.c, whose environment has these breakpoints.
    Project *add(const QString &label, const QList<BreakpointRecord> &records, bool offers = true)
    {
        StubScript &script = executionScript(label, offers ? QSet<QUuid>{IBreakpoints::Iid} : QSet<QUuid>());
        script.breakpoints = records;
        Project *project = addProject(label, {}, label,
                                      u"<file path=\"main.c\"/><file path=\"%1.c\"/>"
                                      u"<properties><configuration name=\"Debug\"/></properties>"_s.arg(label));
        project->addFiles({path(u"main.c"_s), path(label + u".c"_s)}, nullptr);
        project->setCurrentConfiguration(u"Debug"_s);
        const InterfacePtr<IPluginObject> object(create(u'{' + label + u'}'));
        const auto environment = queryInterface<IExecutionEnvironment>(object.get());
        project->setExecutionInterface(environment.get());
        return project;
    }

    void open()
    {
        m_dialog = std::make_unique<BreakpointDialog>(*m_activity, nullptr, u"breakpointDialog"_s);
        m_dialog->show();
        m_stub->takeCalls();
    }

    ListView *list() { return m_dialog->findChild<ListView *>(u"BreakpointList"_s); }
    QLineEdit *edit() { return m_dialog->findChild<QLineEdit *>(u"LocationEdit"_s); }
    void click(const char *name) { button(*m_dialog, name)->click(); }
    void select(int row) { list()->setCurrentItem(list()->topLevelItem(row)); }
    void check(int row, bool on) { list()->topLevelItem(row)->setCheckState(0, on ? Qt::Checked : Qt::Unchecked); }
    void retype(const QString &text)
    {
        edit()->selectAll();
        if (text.isEmpty())
            QTest::keyClick(edit(), Qt::Key_Delete);
        else
            QTest::keyClicks(edit(), text);
    }

    /// The rows, the current one with a star; "-" for a row without a check box.
    QString rows()
    {
        QString text;
        for (const ListViewItem *item = list()->firstChild(); item; item = item->itemBelow()) {
            const QVariant box = item->data(0, Qt::CheckStateRole);
            text += item == list()->currentItem() ? u'*' : u' ';
            text += !box.isValid() ? u"- "_s : box.toInt() == Qt::Checked ? u"[x] "_s : u"[ ] "_s;
            text += item->text(0) + (item->text(1).isEmpty() ? QString() : u" | "_s + item->text(1)) + u'\n';
        }
        return text;
    }

    /// The calls, without the directory of the projects.
    QStringList takeCalls()
    {
        QStringList calls = m_stub->takeCalls();
        return calls.replaceInStrings(m_directory->path(), u"~"_s);
    }

    [[nodiscard]] bool isOpen() const { return m_dialog->isVisible(); }

private Q_SLOTS:
    void init()
    {
        setUp();
        m_answers = std::make_unique<DialogAnswers>();
    }
    void cleanup()
    {
        m_answers.reset();
        m_dialog.reset();
        tearDown();
    }

    void listWithoutBreakpointsHasOneRow()
    {
        add(u"fw"_s, {});
        open();
        QCOMPARE(m_dialog->objectName(), u"breakpointDialog"_s);
        QCOMPARE(m_dialog->windowTitle(), u"Breakpoints"_s);
        QCOMPARE(rows(), u"*- Add new breakpoint here\n"_s);
        QVERIFY(static_cast<ProjectTreeItem *>(list()->currentItem())->isItalic());
        QCOMPARE(edit()->text(), QString());
        QVERIFY(!button(*m_dialog, "ClearButton")->isEnabled());
        QVERIFY(!button(*m_dialog, "ClearAllButton")->isEnabled());
    }

    void rowShowsTheFirstPlaceOfABreakpoint()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}, {u"inline.h"_s, 3}}, 1},
                      {{}, 1},
                      {{{u"uart.c"_s, 12}}, 2},
                      {{{u"disassembler:0x00001234:fw"_s, 0x1AC1}}, 1},
                      {{{u"several.c"_s, 1}}, 3}});
        open();
        QCOMPARE(rows(), u" [x] main.c, 7\n [ ] uart.c, 12\n [x] disassembler, 0x1ac0\n [ ] several.c, 1\n"
                         "*- Add new breakpoint here\n"_s);
        QVERIFY(list()->header()->isHidden());
        QCOMPARE(list()->columnCount(), 1);
        QCOMPARE(list()->headerItem()->text(0), u"Breakpoint"_s);
        QCOMPARE(list()->itemMargin(), 1);
        QCOMPARE(edit()->text(), QString());
        QVERIFY(!button(*m_dialog, "ClearButton")->isEnabled());
        QVERIFY(button(*m_dialog, "ClearAllButton")->isEnabled());
    }

    void severalProjectsHaveTheirNamesInTheList()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}});
        add(u"mute"_s, {{{{u"main.c"_s, 8}}, 1}}, false);
        add(u"boot"_s, {{{{u"main.c"_s, 9}}, 2}});
        open();
        QCOMPARE(rows(), u" [x] main.c, 7 | [fw.vnp - Debug]\n [ ] main.c, 9 | [boot.vnp - Debug]\n"
                         "*- Add new breakpoint here\n"_s);
        QCOMPARE(list()->columnCount(), 2);
        QCOMPARE(list()->headerItem()->text(1), u"Breakpoint"_s);
        QVERIFY(list()->columnWidth(1) >= 100);
    }

    void longPlacesKeepTheProjectColumnVisible()
    {
        const QString longName(80, u'x');
        add(u"fw"_s, {{{{longName, 7}}, 1}});
        add(longName, {{{{u"main.c"_s, 8}}, 1}});
        open();
        const QFontMetrics metrics = list()->fontMetrics();
        QVERIFY(list()->columnWidth(0) > metrics.horizontalAdvance(longName));
        QVERIFY(list()->columnWidth(1) > metrics.horizontalAdvance(u"[%1.vnp - Debug]"_s.arg(longName)));
        QCOMPARE(list()->header()->length(), list()->columnWidth(0) + list()->columnWidth(1));
    }

    void projectNameIsTheFirstWordOfItsFile()
    {
        add(u"my firmware"_s, {{{{u"main.c"_s, 7}}, 1}})->setCurrentConfiguration(u"Debug 2"_s);
        add(u"boot"_s, {});
        open();
        QCOMPARE(rows(), u" [x] main.c, 7 | [my - Debug 2]\n*- Add new breakpoint here\n"_s);
    }

    void currentRowIsShownInTheEdit()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}});
        open();
        select(0);
        QCOMPARE(edit()->text(), u"main.c, 7"_s);
        QVERIFY(button(*m_dialog, "ClearButton")->isEnabled());
        select(1);
        QCOMPARE(edit()->text(), QString());
        QVERIFY(!button(*m_dialog, "ClearButton")->isEnabled());
        QCOMPARE(rows(), u" [x] main.c, 7\n*- Add new breakpoint here\n"_s);
    }

    void typingInTheLastRowAddsARow()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}});
        open();
        retype(u"main.c, 12"_s);
        QCOMPARE(rows(), u" [x] main.c, 7\n*[x] main.c, 12\n - Add new breakpoint here\n"_s);
        QVERIFY(button(*m_dialog, "ClearButton")->isEnabled());
    }

    void spaceTogglesTheCheckBoxOfTheRow()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}});
        open();
        select(0);
        QTest::keyClick(list(), Qt::Key_Space);
        QCOMPARE(rows(), u"*[ ] main.c, 7\n - Add new breakpoint here\n"_s);
        QCOMPARE(edit()->text(), u"main.c, 7"_s);
        QTest::keyClick(list(), Qt::Key_Space);
        QCOMPARE(rows(), u"*[x] main.c, 7\n - Add new breakpoint here\n"_s);
        select(1);
        QTest::keyClick(list(), Qt::Key_Space); // nothing to toggle
        QCOMPARE(rows(), u" [x] main.c, 7\n*- Add new breakpoint here\n"_s);
    }

    void deleteRemovesTheRow()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}, {{{u"uart.c"_s, 3}}, 1}});
        open();
        select(0);
        QTest::keyClick(list(), Qt::Key_Delete);
        QVERIFY(!rows().contains(u"main.c"_s));
        QVERIFY(rows().contains(u"uart.c"_s));
    }

    void otherKeysAreHandledByTheList()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}});
        open();
        for (Qt::Key key : {Qt::Key_Up, Qt::Key_F3})
            QTest::keyClick(list(), key);
        QCOMPARE(rows(), u"*[x] main.c, 7\n - Add new breakpoint here\n"_s);
        QCOMPARE(edit()->text(), u"main.c, 7"_s);
    }

    void textTypedInTheListGoesToTheEdit()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}});
        open();
        showActive(*m_dialog);
        select(0);
        list()->setFocus();
        QTest::keyClick(list(), Qt::Key_Down);
        QCOMPARE(list()->currentItem()->text(0), u"Add new breakpoint here"_s);
        QTest::keyClick(list(), 'u');
        QCOMPARE(QApplication::focusWidget(), edit());
        QTest::keyClicks(edit(), u"art.c, 3"_s);
        QCOMPARE(rows(), u" [x] main.c, 7\n*[x] uart.c, 3\n - Add new breakpoint here\n"_s);
        list()->setFocus();
        QTest::keyClick(list(), 'x');
        QCOMPARE(rows(), u" [x] main.c, 7\n*[x] x\n - Add new breakpoint here\n"_s);
    }

    void acceptSetsTheNewBreakpoint_data()
    {
        QTest::addColumn<QString>("text"); // typed in the last row
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("file") << u"main.c, 12"_s << QStringList{u"fw.setBreakpoint(~/main.c, 12, 1)"_s};
        QTest::newRow("no blank") << u"main.c,12"_s << QStringList{u"fw.setBreakpoint(~/main.c, 12, 1)"_s};
        QTest::newRow("address") << u"DISASSEMBLER, 0x1F"_s << QStringList{u"fw.setBreakpoint(disassembler:, 32, 1)"_s};
        QTest::newRow("nothing") << QString() << QStringList();
    }

    void acceptSetsTheNewBreakpoint()
    {
        QFETCH(QString, text);
        add(u"fw"_s, {});
        open();
        retype(u"x"_s);
        retype(text);
        click("OKButton");
        QTEST(takeCalls(), "calls");
        QVERIFY(!isOpen());
        QCOMPARE(m_dialog->result(), int(QDialog::Accepted));
        QCOMPARE(m_answers->shown, QStringList());
    }

    void acceptClearsAndSetsAnOldBreakpoint()
    {
        add(u"fw"_s,
            {{{{u"main.c"_s, 7}}, 1}, {{{u"disassembler:0x00001234:fw"_s, 17}}, 2}, {{{u"/lib/q.c"_s, 1}}, 1}});
        open();
        check(0, false);
        select(2);
        retype(QString());
        click("OKButton");
        QCOMPARE(takeCalls(),
                 (QStringList{u"fw.setBreakpoint(main.c, 7, 0)"_s, u"fw.setBreakpoint(~/main.c, 7, 2)"_s,
                              u"fw.setBreakpoint(disassembler:0x00001234:fw, 17, 0)"_s,
                              u"fw.setBreakpoint(disassembler:, 17, 2)"_s, u"fw.setBreakpoint(/lib/q.c, 1, 0)"_s}));
        QVERIFY(!isOpen());
    }

    void returnAccepts_data()
    {
        QTest::addColumn<bool>("inList");
        QTest::newRow("edit") << false;
        QTest::newRow("list") << true;
    }

    void returnAccepts()
    {
        QFETCH(bool, inList);
        add(u"fw"_s, {});
        open();
        retype(u"main.c, 12"_s);
        QTest::keyClick(inList ? static_cast<QWidget *>(list()) : edit(), Qt::Key_Return);
        QVERIFY(!isOpen());
        QCOMPARE(takeCalls(), QStringList{u"fw.setBreakpoint(~/main.c, 12, 1)"_s});
    }

    void clearedBreakpointsAreRemovedLast()
    {
        add(u"fw"_s, {{{{u"a.c"_s, 1}}, 1}, {{{u"b.c"_s, 2}}, 1}});
        open();
        select(0);
        click("ClearButton");
        QCOMPARE(rows(), u"*[x] b.c, 2\n - Add new breakpoint here\n"_s);
        QCOMPARE(edit()->text(), u"b.c, 2"_s);
        QCOMPARE(takeCalls(), QStringList());
        click("OKButton");
        QCOMPARE(takeCalls(), (QStringList{u"fw.setBreakpoint(b.c, 2, 0)"_s, u"fw.setBreakpoint(~/b.c, 2, 1)"_s,
                                           u"fw.setBreakpoint(a.c, 1, 0)"_s}));
    }

    void clearAllRemovesAllBreakpoints()
    {
        add(u"fw"_s, {{{{u"a.c"_s, 1}}, 1}, {{{u"b.c"_s, 2}}, 1}});
        open();
        retype(u"new.c, 1"_s);
        click("ClearAllButton");
        QCOMPARE(rows(), u"*- Add new breakpoint here\n"_s);
        QCOMPARE(edit()->text(), QString());
        QVERIFY(!button(*m_dialog, "ClearButton")->isEnabled());
        QVERIFY(!button(*m_dialog, "ClearAllButton")->isEnabled());
        click("OKButton");
        QCOMPARE(takeCalls(), (QStringList{u"fw.setBreakpoint(a.c, 1, 0)"_s, u"fw.setBreakpoint(b.c, 2, 0)"_s}));
    }

    void cancellingChangesNothing_data()
    {
        QTest::addColumn<bool>("byKey");
        QTest::newRow("button") << false;
        QTest::newRow("Escape") << true;
    }

    void cancellingChangesNothing()
    {
        QFETCH(bool, byKey);
        add(u"fw"_s, {{{{u"a.c"_s, 1}}, 1}});
        open();
        click("ClearAllButton");
        retype(u"main.c, 12"_s);
        if (byKey)
            QTest::keyClick(edit(), Qt::Key_Escape);
        else
            click("CancelButton");
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
        QVERIFY(!isOpen());
        QCOMPARE(takeCalls(), QStringList());
    }

    void failuresKeepTheDialogOpen_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("result"); // result of setBreakpoint()
        QTest::addColumn<QString>("message");
        const QString syntax = u"The breakpoint syntax is not valid. Specify breakpoints as:\n\n[file], [line] OR\n"
                               "disassembler, 0x[addr]"_s;
        QTest::newRow("no comma") << u"main.c 12"_s << 0 << syntax;
        QTest::newRow("no line") << u"main.c, x"_s << 0 << syntax;
        QTest::newRow("a line too large") << u"main.c, 99999999999"_s << 0 << syntax;
        QTest::newRow("no address") << u"disassembler, 0x"_s << 0 << syntax;
        QTest::newRow("no function") << u"Motor::"_s << 0 << syntax;
        QTest::newRow("no class") << u"a.b"_s << 0 << syntax;
        QTest::newRow("refused") << u"main.c, 12"_s << 1 << u"The breakpoint could not be set."_s;
    }

    void failuresKeepTheDialogOpen()
    {
        QFETCH(QString, text);
        QFETCH(int, result);
        QFETCH(QString, message);
        add(u"fw"_s, {{{{u"last.c"_s, 1}}, 1}});
        m_stub->script(u"{fw}"_s).setBreakpointResult = result;
        open();
        showActive(*m_dialog);
        select(0);
        retype(text);
        select(1);
        list()->setFocus();
        m_answers->press(QMessageBox::Ok);
        click("OKButton");
        QCOMPARE(m_answers->shown, QStringList{message});
        QCOMPARE(m_answers->lastBox(), u"information Varnel [Ok]"_s);
        QCOMPARE(list()->currentItem(), list()->firstChild());
        QVERIFY(isOpen());
        QCOMPARE(edit()->text(), text);
        QCOMPARE(m_dialog->focusWidget(), edit());
        QCOMPARE(takeCalls().first(), u"fw.setBreakpoint(last.c, 1, 0)"_s); // removed in any case
    }

    void fileOutsideAllProjectsIsRefused_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("file");
        QTest::newRow("in no project") << u"other.c, 1"_s << u"other.c"_s;
        QTest::newRow("none") << u", 1"_s << QString();
        QTest::newRow("called like addresses") << u"disassembler:, 5"_s << u"disassembler:"_s;
        QTest::newRow("with a mark") << u"%1.c, 5"_s << u"%1.c"_s;
    }

    void fileOutsideAllProjectsIsRefused()
    {
        QFETCH(QString, text);
        QFETCH(QString, file);
        add(u"fw"_s, {{{{u"last.c"_s, 1}}, 1}});
        open();
        retype(text);
        m_answers->press(QMessageBox::Ok);
        click("OKButton");
        QCOMPARE(m_answers->shown, QStringList{u"Breakpoints cannot be set in file:\n\n'"_s + file + u"'."_s});
        QCOMPARE(m_answers->lastBox(), u"information Varnel [Ok]"_s);
        QVERIFY(isOpen());
        QCOMPARE(edit()->text(), text);
        QCOMPARE(takeCalls(),
                 (QStringList{u"fw.setBreakpoint(last.c, 1, 0)"_s, u"fw.setBreakpoint(~/last.c, 1, 1)"_s}));
    }

    /// Only a new breakpoint is assigned to a project.
    void breakpointOfAProjectMayHaveAnyFile()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 1}}, 2}});
        add(u"boot"_s, {});
        open();
        select(0);
        retype(u"../lib/other.c, 4"_s);
        click("OKButton");
        const QString other = QDir::cleanPath(m_directory->filePath(u"../lib/other.c"_s));
        QCOMPARE(takeCalls(),
                 (QStringList{u"fw.setBreakpoint(main.c, 1, 0)"_s, u"fw.setBreakpoint(%1, 4, 2)"_s.arg(other)}));
        QCOMPARE(m_answers->shown, QStringList());
        QVERIFY(!isOpen());
    }

    void absolutePathIsUnchanged()
    {
        add(u"fw"_s, {{{{u"/lib/./q.c"_s, 1}}, 1}});
        open();
        click("OKButton");
        QCOMPARE(takeCalls(),
                 (QStringList{u"fw.setBreakpoint(/lib/./q.c, 1, 0)"_s, u"fw.setBreakpoint(/lib/./q.c, 1, 1)"_s}));
    }

    void functionIsSetAtItsLine()
    {
        add(u"fw"_s, {});
        StubScript &script = m_stub->script(u"{fw}"_s);
        script.offers.insert(ISourceMapping::Iid);
        script.symbols = {{u"Motor::start"_s, 0x100}};
        script.sourceLines = {{0x100, {path(u"motor.cpp"_s), 12}}};
        open();
        retype(u" Motor::start "_s);
        click("OKButton");
        QCOMPARE(takeCalls(), (QStringList{u"fw.symbolAddress(Motor::start)"_s, u"fw.sourceLocation(256, 1)"_s,
                                           u"fw.setBreakpoint(~/motor.cpp, 12, 1)"_s}));
        QCOMPARE(m_answers->shown, QStringList());
        QVERIFY(!isOpen());
    }

    void functionWithAWideAddressIsSetAtItsLine()
    {
        add(u"fw"_s, {});
        StubScript &script = m_stub->script(u"{fw}"_s);
        script.offers.insert(ISymbols64::Iid);
        script.wideSymbols = {{u"main"_s, 0x1'0000'0010}, {u"counter"_s, 0x1'0000'2000}};
        script.wideLines = {{0x1'0000'0010, {path(u"main.c"_s), 3}}};
        open();
        retype(u"main"_s);
        click("OKButton");
        QCOMPARE(takeCalls(), (QStringList{u"fw.symbolAddress(main)"_s, u"fw.sourceLocation(4294967312, 1)"_s,
                                           u"fw.setBreakpoint(~/main.c, 3, 1)"_s}));
    }

    void functionIsSearchedInTheCurrentProjectFirst()
    {
        for (const QString &label : {u"boot"_s, u"fw"_s, u"dsp"_s}) {
            add(label, {});
            StubScript &script = m_stub->script(u'{' + label + u'}');
            script.offers.insert(ISourceMapping::Iid);
            if (label == u"fw")
                continue;
            script.symbols = {{u"main"_s, 0x10}};
            script.sourceLines = {{0x10, {path(u"main.c"_s), 3}}};
        }
        m_workspace->setCurrentProject(1);
        open();
        retype(u"main"_s);
        click("OKButton");
        QCOMPARE(takeCalls(), (QStringList{u"fw.symbolAddress(main)"_s, u"boot.symbolAddress(main)"_s,
                                           u"boot.sourceLocation(16, 1)"_s, u"boot.setBreakpoint(~/main.c, 3, 1)"_s}));
    }

    void breakpointOfAProjectMovesToAFunctionOfIt()
    {
        for (const QString &label : {u"fw"_s, u"dsp"_s}) {
            add(label, {{{{label + u".c"_s, 1}}, 2}});
            StubScript &script = m_stub->script(u'{' + label + u'}');
            script.offers.insert(ISourceMapping::Iid);
            script.symbols = {{u"main"_s, 0x10}};
            script.sourceLines = {{0x10, {path(u"main.c"_s), 3}}};
        }
        open();
        select(0);
        retype(u"main"_s);
        click("OKButton");
        QVERIFY(takeCalls().contains(u"fw.setBreakpoint(~/main.c, 3, 2)"_s));
    }

    void unsuitableFunctionIsReported_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        const QString unknown = u"The function '%1' is not known.\n\nFunctions are found in the program of a debug "
                                "session. Before one, specify breakpoints as [file], [line]."_s;
        QTest::newRow("unknown") << u"nothing"_s << unknown.arg(u"nothing"_s);
        QTest::newRow("of a class") << u"Motor::~Motor"_s << unknown.arg(u"Motor::~Motor"_s);
        QTest::newRow("with arguments") << u"ns::max<int>(int, int)"_s << unknown.arg(u"ns::max<int>(int, int)"_s);
        QTest::newRow("without source") << u"counter"_s
                                        << u"'counter' is not a function with source lines. Its address is 0x2000."_s;
    }

    void unsuitableFunctionIsReported()
    {
        QFETCH(QString, text);
        QFETCH(QString, message);
        add(u"mute"_s, {});
        add(u"fw"_s, {});
        StubScript &script = m_stub->script(u"{fw}"_s);
        script.offers.insert(ISourceMapping::Iid);
        script.symbols = {{u"counter"_s, 0x2000}};
        open();
        showActive(*m_dialog);
        retype(text);
        m_answers->press(QMessageBox::Ok);
        click("OKButton");
        QCOMPARE(m_answers->shown, QStringList{message});
        QVERIFY(isOpen());
        QCOMPARE(edit()->text(), text);
        QCOMPARE(m_dialog->focusWidget(), edit());
        QCOMPARE(takeCalls().filter(u"setBreakpoint"_s), QStringList());
    }

    void appliedBreakpointsStayAfterAFailure()
    {
        add(u"fw"_s, {{{{u"a.c"_s, 1}}, 1}, {{{u"b.c"_s, 2}}, 1}, {{{u"c.c"_s, 3}}, 1}});
        open();
        select(2);
        click("ClearButton");
        select(1);
        retype(u"nonsense"_s);
        select(0);
        m_answers->press(QMessageBox::Ok);
        click("OKButton");
        QCOMPARE(takeCalls(), (QStringList{u"fw.setBreakpoint(a.c, 1, 0)"_s, u"fw.setBreakpoint(~/a.c, 1, 1)"_s,
                                           u"fw.setBreakpoint(b.c, 2, 0)"_s}));
        QCOMPARE(edit()->text(), u"nonsense"_s);
        retype(u"b.c, 20"_s);
        click("OKButton");
        QCOMPARE(takeCalls(), (QStringList{u"fw.setBreakpoint(a.c, 1, 0)"_s, u"fw.setBreakpoint(~/a.c, 1, 1)"_s,
                                           u"fw.setBreakpoint(b.c, 2, 0)"_s, u"fw.setBreakpoint(~/b.c, 20, 1)"_s,
                                           u"fw.setBreakpoint(c.c, 3, 0)"_s}));
        QVERIFY(!isOpen());
    }

    void missingInterfaceFailsWithoutAMessage_data()
    {
        QTest::addColumn<QString>("text");
        QTest::newRow("file") << u"main.c, 1"_s;
        QTest::newRow("address") << u"disassembler, 0x10"_s;
    }

    void missingInterfaceFailsWithoutAMessage()
    {
        QFETCH(QString, text);
        add(u"fw"_s, {}, false);
        open();
        retype(text);
        click("OKButton");
        QVERIFY(isOpen());
        QCOMPARE(m_answers->shown, QStringList());
        QCOMPARE(takeCalls(), QStringList());
    }

    void fileOfSeveralProjectsIsSetInTheCurrentOne()
    {
        add(u"fw"_s, {});
        add(u"boot"_s, {});
        m_workspace->setCurrentProject(1);
        open();
        retype(u"main.c, 5"_s);
        m_answers->press(QMessageBox::Ok);
        click("OKButton");
        QCOMPARE(m_answers->shown,
                 QStringList{u"The file you have specified is included in more than one project.\n\nmain.c\n\nThe "
                             "breakpoint will be set in the currently active project (boot.vnp - Debug)"_s});
        QCOMPARE(takeCalls(), QStringList{u"boot.setBreakpoint(~/main.c, 5, 1)"_s});
    }

    void fileOfOneProjectIsSetInIt()
    {
        add(u"fw"_s, {});
        add(u"boot"_s, {});
        open();
        retype(u"fw.c, 5"_s);
        click("OKButton");
        QCOMPARE(takeCalls(), QStringList{u"fw.setBreakpoint(~/fw.c, 5, 1)"_s});
    }

    void newAddressIsSetInTheCurrentProject()
    {
        add(u"fw"_s, {{{{u"disassembler:"_s, 2}}, 1}});
        add(u"boot"_s, {});
        open();
        retype(u"disassembler, 0x10"_s);
        click("OKButton");
        QCOMPARE(takeCalls(),
                 (QStringList{u"fw.setBreakpoint(disassembler:, 2, 0)"_s, u"fw.setBreakpoint(disassembler:, 2, 1)"_s,
                              u"boot.setBreakpoint(disassembler:, 17, 1)"_s}));
    }

    void addressOfAProjectWithoutEnvironmentIsSetInTheCurrentOne()
    {
        Project *fw = add(u"fw"_s, {{{{u"disassembler:"_s, 2}}, 1}});
        Project *boot = add(u"boot"_s, {});
        open();
        fw->setExecutionInterface(nullptr);
        click("OKButton");
        QCOMPARE(takeCalls(), QStringList{u"boot.setBreakpoint(disassembler:, 2, 1)"_s});
        QVERIFY(!isOpen());

        open();
        retype(u"disassembler, 0x10"_s);
        boot->setExecutionInterface(nullptr);
        click("OKButton");
        QVERIFY(isOpen());
        QCOMPARE(takeCalls(), QStringList());
        QCOMPARE(m_answers->shown, QStringList());
    }

    void deletedProjectIsNotUsed()
    {
        Project *fw = add(u"fw"_s, {{{{u"disassembler:"_s, 2}}, 1}, {{{u"main.c"_s, 3}}, 1}});
        add(u"boot"_s, {});
        open();
        m_workspace->removeProject(fw);
        click("OKButton");
        QCOMPARE(takeCalls(),
                 (QStringList{u"boot.setBreakpoint(disassembler:, 2, 1)"_s, u"boot.setBreakpoint(~/main.c, 3, 1)"_s}));
    }

    void exceptionCountsAsAFailure()
    {
        add(u"fw"_s, {});
        open();
        m_stub->script(u"{fw}"_s).on[u"setBreakpoint"_s] = throwError;
        retype(u"main.c, 1"_s);
        m_answers->press(QMessageBox::Ok);
        expectException("IBreakpoints::setBreakpoint");
        click("OKButton");
        QCOMPARE(m_answers->shown, QStringList{u"The breakpoint could not be set."_s});
    }

    void closedWorkspaceSetsNothing()
    {
        dropWorkspace();
        expectAssert(u"workspace"_s);
        BreakpointDialog dialog(*m_activity, nullptr, u"breakpointDialog"_s);
        dialog.accept();
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
    }

    void closingTheWorkspaceRejectsTheDialog()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}});
        open();
        m_dialog->show();
        dropWorkspace();
        QVERIFY(!m_dialog->isVisible());
        QCOMPARE(m_dialog->result(), int(QDialog::Rejected));
    }

    void listGrowsWithTheDialog()
    {
        add(u"fw"_s, {});
        open();
        const QSize before = list()->size();
        const QSize more(200, 100);
        m_dialog->resize(m_dialog->size() + more);
        QCOMPARE(list()->size(), before + more);
        QCOMPARE(edit()->width(), list()->width());
    }

    void textsHaveEnoughSpace()
    {
        add(u"fw"_s, {{{{u"main.c"_s, 7}}, 1}});
        open();
        showActive(*m_dialog);
        QVERIFY(showsAllTexts(*m_dialog));
        QCOMPARE(m_dialog->findChild<QLabel *>(u"TextLabel2"_s)->text(), u"Location:"_s);
        QCOMPARE(m_dialog->findChild<QLabel *>(u"TextLabel1"_s)->text(), u"Breakpoints:"_s);
        QCOMPARE(textsOf<QPushButton>(*m_dialog), (QStringList{u"OK"_s, u"Cancel"_s, u"Clear"_s, u"Clear All"_s}));
        QVERIFY(m_dialog->findChild<QPushButton *>(u"OKButton"_s)->isDefault());
        select(0);
        edit()->setFocus();
        QCOMPARE(tabOrder(*m_dialog), (QStringList{u"LocationEdit"_s, u"BreakpointList"_s, u"ClearButton"_s,
                                                   u"ClearAllButton"_s, u"OKButton"_s, u"CancelButton"_s}));
    }
};

QTEST_MAIN(BreakpointDialogTest)
#include "tst_breakpointdialog.moc"
