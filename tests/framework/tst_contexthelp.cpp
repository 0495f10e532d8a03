#include "contexthelp.h"
#include "helpdialog.h"
#include "windowfixture.h"
#include <QAction>
#include <QCheckBox>
#include <QKeySequenceEdit>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBrowser>
#include <QWhatsThis>

// Key F1 in the whole window.

using namespace Qt::StringLiterals;

namespace {
const QByteArray uiFile = R"(<ui><actions>
<action name="helpHome" accel="F1"><text>Home</text></action>
<action name="fileNew"><text>New</text><whatsthis>Creates a &lt;file&gt;.</whatsthis></action>
<action name="fileSaveAll"><text>Save All</text><whatsthis>Saves all.</whatsthis></action>
</actions><menus><menu name="fileMenu" displayname="File"><action name="fileNew"/><action name="fileSaveAll"/></menu></menus></ui>)";

const QByteArray table = R"(<helppages><action name="fileNew" page="files.html#new"/>
<window name="outputWindow" page="output.html"/><window name="pane" page="pane.html"/>
<window name="QLineEdit" page="edit.html"/><window name="dialog" page="files.html#new"/></helppages>)";

/// A window with pages of help for one command and several windows.
class ContextFixture : public WindowFixture
{
public:
    ContextFixture()
    {
        installation.write(u"config/uiconfig.xml"_s, uiFile);
        installation.write(u"config/helppages.xml"_s, table);
        page(u"index.html"_s, "home");
        page(u"output.html"_s, "output");
        page(u"files.html"_s, QByteArray("<p>files</p>").repeated(200) + "<h2 id='new'>new</h2>");
        restart();
        window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
    }

    void page(const QString &name, const QByteArray &body) const
    {
        installation.write(u"help/html/"_s + name, "<html><body>" + body + "</body></html>\n");
    }
    [[nodiscard]] QTextBrowser *browser() const
    {
        const View *view = window->viewManager()->currentView();
        return view ? view->findChild<QTextBrowser *>(u"HelpBrowser"_s) : nullptr;
    }
    [[nodiscard]] QString shownPage() const { return browser() ? browser()->source().fileName() : u"(none)"_s; }
    [[nodiscard]] QMenu *fileMenu() const { return window->findChild<QMenu *>(u"fileMenu"_s); }
    void openMenu(int item) const
    {
        fileMenu()->popup(window->mapToGlobal(QPoint(50, 50)));
        fileMenu()->setActiveAction(fileMenu()->actions().at(item));
    }
    /// The toolkit's window with an explanation; null if there is none.
    static QWidget *explanation()
    {
        for (QWidget *each : QApplication::topLevelWidgets()) {
            if (each->inherits("QWhatsThat") && each->isVisible())
                return each;
        }
        return nullptr;
    }
};
} // namespace

class ContextHelpTest : public QObject
{
    Q_OBJECT
private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"^(?!This plugin does not support)"_s)); }

    void keyShowsThePageOfTheWindowWithTheFocus()
    {
        const ContextFixture f;
        auto *output = f.window->findChild<QWidget *>(u"outputWindow"_s);
        auto *inside = new QWidget(output);
        inside->setFocusPolicy(Qt::StrongFocus);
        inside->show();
        inside->setFocus();
        QTest::keyClick(inside, Qt::Key_F1);
        QCOMPARE(f.shownPage(), u"output.html"_s);
    }

    void keyShowsTheFirstPageElsewhere()
    {
        const ContextFixture f;
        f.open(u"a.c"_s);
        QTest::keyClick(f.window->focusWidget(), Qt::Key_F1);
        QCOMPARE(f.shownPage(), u"index.html"_s);
    }

    void keyWithModifiersIsNotForHelp()
    {
        const ContextFixture f;
        auto *output = f.window->findChild<QWidget *>(u"outputWindow"_s);
        QTest::keyClick(output, Qt::Key_F1, Qt::ShiftModifier);
        QCOMPARE(f.shownPage(), u"(none)"_s);
    }

    void keyThatBelongsToAnotherCommandIsLeftToIt_data()
    {
        QTest::addColumn<QString>("keys");
        QTest::newRow("one stroke") << u"F1"_s;
        QTest::newRow("two strokes") << u"F1, F1"_s;
    }

    void keyThatBelongsToAnotherCommandIsLeftToIt()
    {
        QFETCH(const QString, keys);
        const ContextFixture f;
        f.window->findChild<QAction *>(u"helpHome"_s)->setShortcuts(QList<QKeySequence>());
        auto *command = f.window->findChild<QAction *>(u"fileSaveAll"_s);
        command->setShortcut(QKeySequence(keys));
        const QSignalSpy triggered(command, &QAction::triggered);
        auto *inside = new QWidget(f.window->findChild<QWidget *>(u"outputWindow"_s));
        inside->setFocusPolicy(Qt::StrongFocus);
        inside->show();
        inside->setFocus();
        for (int stroke = 0; stroke < command->shortcut().count(); ++stroke)
            QTest::keyClick(inside, Qt::Key_F1);
        QCOMPARE(triggered.size(), 1);
        QCOMPARE(f.shownPage(), u"(none)"_s);
    }

    void keyOfACommandThatIsNowhereInTheWindowShowsHelp()
    {
        const ContextFixture f;
        QAction unused(f.window.get());
        unused.setShortcut(Qt::Key_F1);
        QTest::keyClick(f.window->findChild<QWidget *>(u"outputWindow"_s), Qt::Key_F1);
        QCOMPARE(f.shownPage(), u"output.html"_s);
    }

    void dialogKeepsTheKeyThatACommandHas()
    {
        const ContextFixture f;
        f.window->findChild<QAction *>(u"fileSaveAll"_s)->setShortcut(Qt::Key_F1);
        QDialog dialog(f.window.get());
        dialog.setObjectName(u"dialog"_s);
        auto *edit = new QCheckBox(&dialog);
        dialog.setModal(true); // no command can run
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClick(edit, Qt::Key_F1);
        QCOMPARE(dialog.findChildren<QTextBrowser *>(u"HelpBrowser"_s).size(), 1);
    }

    void keyCanBeEnteredWhereKeysAreChosen()
    {
        const ContextFixture f;
        QDialog dialog(f.window.get());
        dialog.setObjectName(u"dialog"_s);
        auto *edit = new QKeySequenceEdit(&dialog);
        dialog.setModal(true);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        QTest::keyClick(edit, Qt::Key_F1);
        QCOMPARE(edit->keySequence(), QKeySequence(Qt::Key_F1));
        QVERIFY(dialog.findChildren<QTextBrowser *>(u"HelpBrowser"_s).isEmpty());
    }

    void nearestWindowDecides_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("page");
        QTest::newRow("own name") << u"pane"_s << u"pane.html"_s;
        QTest::newRow("behind the project's name") << u"thermostat/pane"_s << u"pane.html"_s;
        QTest::newRow("unknown") << u"other"_s << u"output.html"_s;
    }

    void nearestWindowDecides()
    {
        QFETCH(QString, name);
        const ContextFixture f;
        QWidget window;
        const ContextHelp own(f.installation.path(u"config/helppages.xml"_s), &window);
        QWidget outer;
        outer.setObjectName(u"outputWindow"_s);
        auto *inner = new QWidget(&outer);
        inner->setObjectName(name);
        QTEST(own.pageOf(new QWidget(inner)), "page");
        QCOMPARE(own.pageOf(new QLineEdit(inner)), u"edit.html"_s); // by its class
        QCOMPARE(own.pageOf(nullptr), QString());
    }

    void explanationEndsWithALinkToThePage()
    {
        const ContextFixture f;
        const QString text = f.window->findChild<QAction *>(u"fileNew"_s)->whatsThis();
        QVERIFY2(text.startsWith(u"<p>Creates a &lt;file&gt;.</p>"_s), qPrintable(text));
        QVERIFY(text.contains(u"href=\"help:files.html#new\""_s));
        QCOMPARE(f.window->findChild<QAction *>(u"fileSaveAll"_s)->whatsThis(), u"Saves all."_s); // no page
    }

    void secondKeyInAMenuLeadsToThePage()
    {
        const ContextFixture f;
        f.openMenu(0);
        QTest::keyClick(f.fileMenu(), Qt::Key_F1);
        QTRY_VERIFY(ContextFixture::explanation());
        QCOMPARE(f.shownPage(), u"(none)"_s);
        QTest::keyClick(ContextFixture::explanation(), Qt::Key_F1);
        QCOMPARE(f.shownPage(), u"files.html"_s);
        QTRY_VERIFY(!ContextFixture::explanation());
        QTRY_VERIFY(f.browser()->verticalScrollBar()->value() > 0); // at the anchor
    }

    void keyInAMenuWithoutAnEntryInFrontDoesNothing()
    {
        const ContextFixture f;
        f.fileMenu()->popup(f.window->mapToGlobal(QPoint(50, 50)));
        f.fileMenu()->setActiveAction(nullptr);
        QTest::keyClick(f.fileMenu(), Qt::Key_F1);
        QCOMPARE(f.shownPage(), u"(none)"_s);
        QVERIFY(!ContextFixture::explanation());
        f.fileMenu()->close();
    }

    void secondKeyForACommandWithoutAPageDoesNothing()
    {
        const ContextFixture f;
        f.openMenu(0);
        QTest::keyClick(f.fileMenu(), Qt::Key_F1);
        QTRY_VERIFY(ContextFixture::explanation());
        QTest::keyClick(ContextFixture::explanation(), Qt::Key_Escape);
        f.openMenu(1);
        QTest::keyClick(f.fileMenu(), Qt::Key_F1);
        QTRY_VERIFY(ContextFixture::explanation());
        QTest::keyClick(ContextFixture::explanation(), Qt::Key_F1);
        QCOMPARE(f.shownPage(), u"(none)"_s);
        QTRY_VERIFY(!ContextFixture::explanation());
    }

    void keyInALaterExplanationDoesNotLeadToAnEarlierPage_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("page");
        QTest::newRow("followed") << Qt::Key_F1 << u"files.html"_s;
        QTest::newRow("closed") << Qt::Key_Escape << u"(none)"_s;
    }

    void keyInALaterExplanationDoesNotLeadToAnEarlierPage()
    {
        QFETCH(const Qt::Key, key);
        const ContextFixture f;
        f.openMenu(0);
        QTest::keyClick(f.fileMenu(), Qt::Key_F1);
        QTRY_VERIFY(ContextFixture::explanation());
        QTest::keyClick(ContextFixture::explanation(), key);
        QTEST(f.shownPage(), "page");
        QTRY_VERIFY(!ContextFixture::explanation());
        f.window->viewManager()->closeAll();
        QWhatsThis::showText(f.window->mapToGlobal(QPoint(50, 50)), u"something else"_s, f.window.get());
        QTRY_VERIFY(ContextFixture::explanation());
        QTest::keyClick(ContextFixture::explanation(), Qt::Key_F1);
        QCOMPARE(f.shownPage(), u"(none)"_s);
        QTRY_VERIFY(!ContextFixture::explanation());
    }

    void linkInAnExplanationLeadsToThePage()
    {
        const ContextFixture f;
        QWhatsThisClickedEvent foreign(u"page:files.html"_s);
        QCoreApplication::sendEvent(f.fileMenu(), &foreign);
        QCOMPARE(f.shownPage(), u"(none)"_s);
        QWhatsThisClickedEvent click(u"help:files.html#new"_s);
        QCoreApplication::sendEvent(f.fileMenu(), &click);
        QCOMPARE(f.shownPage(), u"files.html"_s);
    }

    void modalDialogGetsAPageBesideIt()
    {
        const ContextFixture f;
        QDialog dialog(f.window.get());
        dialog.setObjectName(u"dialog"_s);
        auto *edit = new QCheckBox(&dialog);
        dialog.setModal(true);
        dialog.show();
        QVERIFY(QTest::qWaitForWindowActive(&dialog));
        for (int times = 0; times < 2; ++times) {
            QTest::keyClick(edit, Qt::Key_F1);
            QCOMPARE(f.shownPage(), u"(none)"_s); // the window with the documents is blocked
            const auto pages = dialog.findChildren<QTextBrowser *>(u"HelpBrowser"_s);
            QCOMPARE(pages.size(), 1);
            QCOMPARE(pages.first()->source().fileName(), u"files.html"_s);
            QCOMPARE(pages.first()->accessibleName(), u"Help page"_s);
        }
    }

    void commandLinkBesideADialogIsReported()
    {
        const ContextFixture f;
        QDialog dialog(f.window.get());
        dialog.show();
        HelpDialog::showPage(QUrl::fromLocalFile(f.installation.path(u"help/html/files.html"_s)), &dialog);
        f.answers->press(QMessageBox::Ok);
        Q_EMIT dialog.findChild<QTextBrowser *>(u"HelpBrowser"_s)->anchorClicked(QUrl(u"command:fileNew"_s));
        QCOMPARE(f.answers->shown.value(0), u"This link cannot be followed:\ncommand:fileNew"_s);
    }

    void windowWithoutATableHasNoPages()
    {
        const WindowFixture f;
        QTest::keyClick(f.window->findChild<QWidget *>(u"outputWindow"_s), Qt::Key_F1);
        QVERIFY(!f.window->viewManager()->currentView());
    }
};

int main(int argc, char **argv)
{
    ContextHelpTest test; // makes an application in each function
    return QTest::qExec(&test, argc, argv);
}
#include "tst_contexthelp.moc"
