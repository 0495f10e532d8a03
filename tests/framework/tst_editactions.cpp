#include "finddialog.h"
#include "outputpage.h"
#include "outputwindow.h"
#include "productmenus.h"
#include <QComboBox>

// From the keys and menus of the product to the text of the view in front.

using namespace Qt::StringLiterals;

namespace {
class EditActions : public ProductMenus
{
public:
    /// Opens a file, the focus being in its text.
    void edit(const QString &name, const QByteArray &content) const
    {
        open(name, content);
        view()->setFocus();
    }

    /// Selects from the start of line @p first to the end of line @p last; they count from 1.
    void selectLines(int first, int last) const
    {
        const QTextDocument *text = view()->textDocument()->text();
        QTextCursor cursor(text->findBlockByNumber(first - 1));
        cursor.setPosition(text->findBlockByNumber(last).position() - 1, QTextCursor::KeepAnchor);
        view()->currentEdit()->setTextCursor(cursor);
    }

    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const
    {
        QTest::keyClick(view()->currentEdit(), Qt::Key(key), modifiers);
    }

    /// The selected text and its line.
    [[nodiscard]] QString selection() const
    {
        const QTextCursor cursor = view()->currentEdit()->textCursor();
        const int line = cursor.document()->findBlock(cursor.selectionStart()).blockNumber() + 1;
        return u"%1 in %2"_s.arg(cursor.selectedText()).arg(line);
    }

    /// The file in front and its line.
    [[nodiscard]] QString place() const
    {
        return u"%1 %2"_s.arg(document()->title()).arg(view()->currentEdit()->textCursor().blockNumber() + 1);
    }
};
} // namespace

class EditActionsTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    // Lines

    void tabIndentsSelectedLinesAndShiftTabUnindentsThem()
    {
        const EditActions f;
        f.edit(u"a.c"_s, "one\ntwo\nthree\n");
        f.selectLines(1, 2);
        f.press(Qt::Key_Tab);
        QCOMPARE(f.text(), u"\tone\n\ttwo\nthree\n"_s);
        f.press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
    }

    void shiftTabStaysInTheText()
    {
        const EditActions f;
        f.edit(u"a.c"_s, "        one\n");
        f.press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(f.text(), u"    one\n"_s);
        QVERIFY(f.view()->currentEdit()->hasFocus());
    }

    void unindentCommandActsOnTheSelectedLines()
    {
        const EditActions f;
        f.edit(u"a.c"_s, "    one\n    two\n    three\n");
        f.selectLines(1, 2);
        f.action(u"editUnindent"_s)->trigger();
        QCOMPARE(f.text(), u"one\ntwo\n    three\n"_s);
    }

    void textThatIsReadOnlyIsNotUnindented()
    {
        const EditActions f;
        f.edit(u"a.c"_s, "    one\n");
        f.view()->currentEdit()->setReadOnly(true);
        f.action(u"editUnindent"_s)->trigger();
        f.press(Qt::Key_Backtab, Qt::ShiftModifier);
        QCOMPARE(f.text(), u"    one\n"_s);
    }

    void commentIsThatOfTheLanguage_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("status");
        QTest::newRow("C") << u"a.c"_s << u"// one\n// two\nthree\n"_s << QString();
        QTest::newRow("Python") << u"a.py"_s << u"# one\n# two\nthree\n"_s << QString();
        QTest::newRow("no comments") << u"a.txt"_s << u"one\ntwo\nthree\n"_s
                                     << u"Files of this kind have no line comments"_s;
    }
    void commentIsThatOfTheLanguage()
    {
        QFETCH(const QString, file);
        const EditActions f;
        f.edit(file, "one\ntwo\nthree\n");
        f.selectLines(1, 2);
        f.action(u"editComment"_s)->trigger();
        QTEST(f.text(), "text");
        QTEST(f.status(), "status");
        f.action(u"editUncomment"_s)->trigger();
        QCOMPARE(f.text(), u"one\ntwo\nthree\n"_s);
    }

    // Searches

    void lastSearchIsRepeatedInBothDirections()
    {
        const EditActions f;
        f.edit(u"a.c"_s, "one\ntwo one\nthree one\n");
        f.action(u"editFind"_s)->trigger();
        auto *dialog = f.window->findChild<FindDialog *>();
        dialog->findChild<QComboBox *>(u"FindWhatCombo"_s)->setEditText(u"one"_s);
        dialog->hide();
        f.view()->setFocus();
        f.action(u"editFindNext"_s)->trigger();
        QCOMPARE(f.selection(), u"one in 1"_s);
        f.action(u"editFindNext"_s)->trigger();
        QCOMPARE(f.selection(), u"one in 2"_s);
        f.press(Qt::Key_F3);
        QCOMPARE(f.selection(), u"one in 3"_s);
        f.action(u"editFindPrevious"_s)->trigger();
        QCOMPARE(f.selection(), u"one in 2"_s);
        f.press(Qt::Key_F3, Qt::ShiftModifier);
        QCOMPARE(f.selection(), u"one in 1"_s);
    }

    // Messages of a build

    void messageKeysGoThroughErrorsWhoseFilesExist()
    {
        const EditActions f;
        f.write(u"b.c"_s, "1\n2\n3\n4\n");
        f.edit(u"a.c"_s, "1\n2\n3\n");
        OutputPage *page = f.window->outputWindow()->page(OutputWindow::Build);
        for (const QString &line :
             {u"Compiling a.c(1)\n"_s, f.path(u"a.c"_s) + u"(2): error: x\n"_s,
              f.path(u"gone.c"_s) + u"(1): error: x\n"_s, f.path(u"b.c"_s) + u"(4): warning: x\n"_s, u"Done\n"_s})
            page->outputLine(line);
        auto *dock = f.window->findChild<QWidget *>(u"outputDockWindow"_s);
        dock->hide();
        f.action(u"editNextMessage"_s)->trigger();
        QCOMPARE(f.place(), u"a.c 2"_s);
        QVERIFY(dock->isVisible());
        f.press(Qt::Key_F8);
        QCOMPARE(f.place(), u"b.c 4"_s);
        f.press(Qt::Key_F8, Qt::ShiftModifier);
        QCOMPARE(f.place(), u"a.c 2"_s);
        f.action(u"editPreviousMessage"_s)->trigger();
        QCOMPARE(f.place(), u"b.c 4"_s); // behind the first is the last
        QCOMPARE(f.status(), QString());
        QVERIFY(f.answers->shown.isEmpty());
    }

    void missingMessageIsReported()
    {
        const EditActions f;
        f.edit(u"a.c"_s, "1\n");
        f.window->outputWindow()->outputLine(OutputWindow::Build, f.path(u"gone.c"_s) + u"(1): error: x\n"_s);
        f.action(u"editNextMessage"_s)->trigger();
        QCOMPARE(f.status(), u"No line of the output leads to a source file"_s);
        QCOMPARE(f.openFiles(), QStringList(u"a.c"_s));
    }
};

int main(int argc, char **argv)
{
    EditActionsTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_editactions.moc"
